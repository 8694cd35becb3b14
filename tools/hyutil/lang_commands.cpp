#include "commands.h"

namespace hyutil {

void AddLangCommands(CLI::App& app, int& exitCode) {
  (void)app;
  (void)exitCode;
}

}  // namespace hyutil
