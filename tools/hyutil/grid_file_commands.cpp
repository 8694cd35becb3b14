#include "commands.h"

namespace hyutil {

void AddGridFileCommands(CLI::App& grid, int& exitCode) {
  (void)grid;
  (void)exitCode;
}

}  // namespace hyutil
