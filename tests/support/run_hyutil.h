#pragma once
// Runs the hyutil tool as a user would, capturing its exit status and both output
// streams through files in a scratch directory.

#include <sys/wait.h>

#include <cstdlib>
#include <string>

#include "support/temp_dir.h"

namespace hytest {

struct ToolRun {
  int status = -1;
  std::string out, err;
};

#ifdef HYUTIL_PATH
inline ToolRun RunHyutil(const TempDir& dir, const std::string& args) {
  const std::string command = std::string(HYUTIL_PATH) + " " + args + " </dev/null >" + dir.File("stdout.txt") +
                              " 2>" + dir.File("stderr.txt");
  const int raw = std::system(command.c_str());
  return {WIFEXITED(raw) ? WEXITSTATUS(raw) : -1, ReadFileBytes(dir.File("stdout.txt")),
          ReadFileBytes(dir.File("stderr.txt"))};
}
#endif

}  // namespace hytest
