#pragma once
// The hyutil tool is a set of command groups, one file per subsystem; each file
// adds its subcommands to the application. A command reports its outcome through
// the shared exit code: 0 ran, 1 an input could not be opened, read or parsed,
// 2 bad arguments.

#include <CLI/CLI.hpp>

namespace hyutil {

enum ExitCode { kExitOk = 0, kExitInputError = 1, kExitUsage = 2 };

void AddLangCommands(CLI::App& app, int& exitCode);

}  // namespace hyutil
