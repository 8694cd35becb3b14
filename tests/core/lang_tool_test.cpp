// The "hyutil lang" commands, run as a separate process.

#include <sys/wait.h>

#include <cstdio>
#include <string>

#include <gtest/gtest.h>

#include "support/temp_dir.h"

#ifdef HYUTIL_PATH

namespace {

const std::string kLangData = std::string(HY_TEST_DATA_DIR) + "/lang";

struct ToolRun {
  int exitCode;
  std::string output;
};

ToolRun RunTool(const std::string& arguments) {
  const std::string command = std::string(HYUTIL_PATH) + " " + arguments + " 2>/dev/null";
  FILE* pipe = popen(command.c_str(), "r");
  if (pipe == nullptr) return {-1, {}};
  std::string output;
  char buffer[4096];
  for (std::size_t n; (n = std::fread(buffer, 1, sizeof buffer, pipe)) > 0;) output.append(buffer, n);
  const int status = pclose(pipe);
  return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, output};
}

TEST(LangToolTest, ListPrintsTheTagOfEachLanguageFile) {
  hytest::TempDir dir;
  dir.Write("a.xml", "<hystrings language=\"en-US\"/>");
  dir.Write("b.xml", "<hystrings language=\"ja\"/>");
  const ToolRun run = RunTool("lang list " + dir.path().string());
  EXPECT_EQ(run.exitCode, 0);
  EXPECT_EQ(run.output, "en-US\nja\n");
}

TEST(LangToolTest, GetPrintsEscapedTextsAndUnknownKeysAsThemselves) {
  const ToolRun run = RunTool("lang get " + kLangData +
                          " escapes_and_prefixes.xml HYSTR_CONTROL PFX_NAME HYSTR_NOT_THERE");
  EXPECT_EQ(run.exitCode, 0);
  EXPECT_EQ(run.output,
            "HYSTR_CONTROL\tone\\ntwo\\tthree\\rfour \"q\" back\\\\\\\\slash\n"
            "PFX_NAME\tPrefixed name\n"
            "HYSTR_NOT_THERE\tHYSTR_NOT_THERE\n");
}

TEST(LangToolTest, GetWritesOneJsonObject) {
  const ToolRun run =
      RunTool("lang get " + kLangData + " escapes_and_prefixes.xml HYSTR_PLAIN HYSTR_AMP_QUOT --json");
  EXPECT_EQ(run.exitCode, 0);
  EXPECT_EQ(run.output, "{\n  \"HYSTR_PLAIN\": \"Plain text\",\n  \"HYSTR_AMP_QUOT\": \"&quot;\"\n}\n");
}

TEST(LangToolTest, ExitCodesTellInputProblemsFromBadArguments) {
  EXPECT_EQ(RunTool("lang get " + kLangData + " no_such.xml K").exitCode, 1);
  EXPECT_EQ(RunTool("lang get " + kLangData + " malformed.xml K").exitCode, 1);
  EXPECT_EQ(RunTool("lang list " + kLangData + "/no_such_dir").exitCode, 1);
  EXPECT_EQ(RunTool("lang get " + kLangData + " escapes_and_prefixes.xml").exitCode, 2);
  EXPECT_EQ(RunTool("lang list").exitCode, 2);
}

}  // namespace

#endif  // HYUTIL_PATH
