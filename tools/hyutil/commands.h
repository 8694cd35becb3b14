#pragma once
// The hyutil tool is a set of command groups, one file per subsystem; each file
// adds its subcommands to the application. A command reports its outcome through
// the shared exit code: 0 ran, 1 an input could not be opened, read or parsed,
// 2 bad arguments.

#include <CLI/CLI.hpp>

#include <cstdio>
#include <functional>
#include <string>

namespace hyutil {

enum ExitCode { kExitOk = 0, kExitInputError = 1, kExitUsage = 2 };

// An input problem: the message names the file and says what is wrong.
struct InputError {
  std::string message;
};

// Runs a command; an InputError it throws is printed on standard error and ends
// the command with kExitInputError.
inline int RunReportingInputErrors(const std::function<int()>& command) {
  try {
    return command();
  } catch (const InputError& e) {
    std::fprintf(stderr, "hyutil: %s\n", e.message.c_str());
    return kExitInputError;
  }
}

void AddLangCommands(CLI::App& app, int& exitCode);

// "hyutil grid ...": the group is made in grid_commands.cpp; the file commands
// (info, convert) and the query commands (sample, average) live in their own files.
void AddGridCommands(CLI::App& app, int& exitCode);
void AddGridFileCommands(CLI::App& grid, int& exitCode);
void AddGridQueryCommands(CLI::App& grid, int& exitCode);

// "hyutil vector ...": shapefiles and MIF/MID files (vector_commands.cpp).
void AddVectorCommands(CLI::App& app, int& exitCode);
// "hyutil units ..." (convert, list) and "hyutil curve".
void AddUnitsCommands(CLI::App& app, int& exitCode);
void AddCurveCommands(CLI::App& app, int& exitCode);
// "hyutil mesh ..." (2DM files) and "hyutil run ..." (TUFLOW run summaries).
void AddMeshCommands(CLI::App& app, int& exitCode);
void AddRunCommands(CLI::App& app, int& exitCode);

// "hyutil boundary ...": boundary-mesh clean-up of GIS layers (boundary_commands.cpp).
void AddBoundaryCommands(CLI::App& app, int& exitCode);

}  // namespace hyutil
