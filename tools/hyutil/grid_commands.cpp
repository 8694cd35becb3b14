#include "commands.h"

namespace hyutil {

void AddGridCommands(CLI::App& app, int& exitCode) {
  CLI::App* grid = app.add_subcommand("grid", "Inspect, convert and query terrain grids");
  grid->require_subcommand(1);
  AddGridFileCommands(*grid, exitCode);
  AddGridQueryCommands(*grid, exitCode);
}

}  // namespace hyutil
