#pragma once
// Starting helper programs (such as the user's text editor) without a shell.
//
// A command line is split at blanks and tabs, with no quoting, and the program is
// looked up on PATH. Started programs run on their own; the library does not wait
// for them, but collects the ones that have ended whenever it starts another, so
// they do not linger as zombies.

#include <sys/types.h>

#include <string>
#include <vector>

// The words of a command line, split at runs of blanks and tabs.
std::vector<std::string> HU_SplitCommandLine(const std::string& commandLine);

// Starts arguments[0] (found on PATH) with the arguments, in the environment of
// this process. Returns the process id, or -1 with errno set when the program
// cannot be started (an empty list gives EINVAL).
pid_t HU_StartProcess(const std::vector<std::string>& arguments);

// Waits until every program started by HU_StartProcess has ended.
void HU_WaitForStartedProcesses();
