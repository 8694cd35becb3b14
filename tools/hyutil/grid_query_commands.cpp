#include "commands.h"

namespace hyutil {

void AddGridQueryCommands(CLI::App& grid, int& exitCode) {
  (void)grid;
  (void)exitCode;
}

}  // namespace hyutil
