// The "hyutil lang" commands, run as a separate process.

#include <sys/wait.h>

#include <cstdio>
#include <string>

#include <gtest/gtest.h>

#include "support/temp_dir.h"

#ifdef HYUTIL_PATH

namespace {

const std::string kLang = " " HY_TEST_DATA_DIR "/lang ";

struct ToolRun {
  int exitCode;
  std::string output;
};

ToolRun RunTool(const std::string& arguments) {
  FILE* pipe = popen((HYUTIL_PATH " " + arguments + " 2>/dev/null").c_str(), "r");
  if (pipe == nullptr) return {-1, {}};
  std::string output;
  char buffer[4096];
  for (std::size_t n; (n = std::fread(buffer, 1, sizeof buffer, pipe)) > 0;) output.append(buffer, n);
  const int status = pclose(pipe);
  return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, output};
}

TEST(LangToolTest, ListAndGetPrintTagsAndEscapedTexts) {
  hytest::TempDir dir;
  dir.Write("a.xml", "<hystrings language=\"en-US\"/>");
  dir.Write("b.xml", "<hystrings language=\"ja\"/>");
  const ToolRun list = RunTool("lang list " + dir.path().string());
  EXPECT_EQ(list.exitCode, 0);
  EXPECT_EQ(list.output, "en-US\nja\n");

  const ToolRun get = RunTool("lang get" + kLang + "escapes_and_prefixes.xml HYSTR_CONTROL NOT_THERE");
  EXPECT_EQ(get.exitCode, 0);
  EXPECT_EQ(get.output, "HYSTR_CONTROL\tone\\ntwo\\tthree\\rfour \"q\" back\\\\\\\\slash\n"
                        "NOT_THERE\tNOT_THERE\n");
  const ToolRun json = RunTool("lang get" + kLang + "escapes_and_prefixes.xml PFX_NAME --json");
  EXPECT_EQ(json.output, "{\n  \"PFX_NAME\": \"Prefixed name\"\n}\n");
}

TEST(LangToolTest, ExitCodesTellInputProblemsFromBadArguments) {
  EXPECT_EQ(RunTool("lang get" + kLang + "no_such.xml K").exitCode, 1);
  EXPECT_EQ(RunTool("lang get" + kLang + "malformed.xml K").exitCode, 1);
  EXPECT_EQ(RunTool("lang list /no/such/dir").exitCode, 1);
  EXPECT_EQ(RunTool("lang get" + kLang + "escapes_and_prefixes.xml").exitCode, 2);  // no key
}

}  // namespace

#endif  // HYUTIL_PATH
