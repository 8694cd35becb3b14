#include "hy_util/platform/process.h"

#include <gtest/gtest.h>

#include <cerrno>

TEST(ProcessTest, CommandLinesSplitAtRunsOfBlanksWithoutQuoting) {
  using Words = std::vector<std::string>;
  EXPECT_EQ(HU_SplitCommandLine("  gedit \t --new-window  \"a b\" "),
            (Words{"gedit", "--new-window", "\"a", "b\""}));
  EXPECT_TRUE(HU_SplitCommandLine(" \t ").empty());
}

TEST(ProcessTest, StartingFailsWithErrnoForMissingProgramsAndEmptyCommands) {
  errno = 0;
  EXPECT_EQ(HU_StartProcess({"/nonexistent/editor", "x"}), -1);
  EXPECT_EQ(errno, ENOENT);
  EXPECT_EQ(HU_StartProcess({}), -1);
  EXPECT_EQ(errno, EINVAL);
  EXPECT_GT(HU_StartProcess({"true"}), 0);
  HU_WaitForStartedProcesses();
}
