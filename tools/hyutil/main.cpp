#include <cstdio>
#include <exception>

#include "commands.h"
#include "hy_util/version.h"

int main(int argc, char** argv) {
  CLI::App app{"hyutil: flood-modelling file utilities (hy_util " HY_UTIL_VERSION ")", "hyutil"};
  app.set_version_flag("--version", "hyutil " HY_UTIL_VERSION);
  app.require_subcommand(1);

  int exitCode = hyutil::kExitOk;
  hyutil::AddLangCommands(app, exitCode);
  hyutil::AddGridCommands(app, exitCode);
  hyutil::AddVectorCommands(app, exitCode);
  hyutil::AddBoundaryCommands(app, exitCode);
  hyutil::AddUnitsCommands(app, exitCode);
  hyutil::AddCurveCommands(app, exitCode);
  hyutil::AddMeshCommands(app, exitCode);
  hyutil::AddRunCommands(app, exitCode);

  try {
    app.parse(argc, argv);
  } catch (const CLI::ParseError& e) {
    const int rc = app.exit(e);
    return rc == 0 ? hyutil::kExitOk : hyutil::kExitUsage;
  } catch (const std::exception& e) {
    std::fprintf(stderr, "hyutil: %s\n", e.what());
    return hyutil::kExitInputError;
  }
  return exitCode;
}
