#include "hy_util/platform/process.h"

#include <spawn.h>
#include <sys/wait.h>

#include <algorithm>
#include <cerrno>

extern char** environ;

namespace {

// Programs started and not yet collected.
std::vector<pid_t> g_started;

void CollectEnded(bool wait) {
  std::erase_if(g_started, [wait](pid_t pid) {
    int status = 0;
    pid_t result = 0;
    do {
      result = waitpid(pid, &status, wait ? 0 : WNOHANG);
    } while (result < 0 && errno == EINTR);
    // A pid that is no longer ours (ECHILD) is dropped as well.
    return result != 0;
  });
}

}  // namespace

std::vector<std::string> HU_SplitCommandLine(const std::string& commandLine) {
  std::vector<std::string> words;
  const char* blanks = " \t";
  std::size_t pos = commandLine.find_first_not_of(blanks);
  while (pos != std::string::npos) {
    const std::size_t end = commandLine.find_first_of(blanks, pos);
    words.push_back(commandLine.substr(pos, end == std::string::npos ? end : end - pos));
    pos = end == std::string::npos ? end : commandLine.find_first_not_of(blanks, end);
  }
  return words;
}

pid_t HU_StartProcess(const std::vector<std::string>& arguments) {
  CollectEnded(false);
  if (arguments.empty()) {
    errno = EINVAL;
    return -1;
  }
  std::vector<char*> argv;
  argv.reserve(arguments.size() + 1);
  for (const std::string& word : arguments) argv.push_back(const_cast<char*>(word.c_str()));
  argv.push_back(nullptr);

  pid_t pid = -1;
  const int error = posix_spawnp(&pid, argv[0], nullptr, nullptr, argv.data(), environ);
  if (error != 0) {
    errno = error;
    return -1;
  }
  g_started.push_back(pid);
  return pid;
}

void HU_WaitForStartedProcesses() { CollectEnded(true); }
