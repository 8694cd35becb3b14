// "hyutil grid sample" and "hyutil grid average" run as a user runs them.

#include <gtest/gtest.h>

#include <cstdio>
#include <string>

#include "grids/binary_grid_test_writer.h"
#include "support/temp_dir.h"

#ifdef HYUTIL_PATH

namespace {

struct ToolRun {
  int status;
  std::string out;
  std::string err;
};

class GridQueryToolTest : public ::testing::Test {
 protected:
  void SetUp() override {
    hytest::TestGrid g;
    g.ncols = 5;
    g.nrows = 4;
    for (int r = 0; r < g.nrows; ++r)
      for (int c = 0; c < g.ncols; ++c) g.values.push_back(static_cast<float>(10 * r + c) + 0.1f);
    g.values[12] = g.noData;  // row 2, column 2: (2, 1)
    grid = dir.Write("g.hybg", hytest::GridFileBytes(g));
  }

  ToolRun Hyutil(const std::string& args, const std::string& input = "") {
    const std::string errFile = dir.File("stderr.txt");
    std::string command = std::string(HYUTIL_PATH) + " " + args + " 2>" + errFile;
    if (!input.empty()) command = "printf '" + input + "' | " + command;
    ToolRun run;
    FILE* pipe = popen(command.c_str(), "r");
    char buffer[4096];
    for (std::size_t n; (n = std::fread(buffer, 1, sizeof buffer, pipe)) > 0;) run.out.append(buffer, n);
    const int status = pclose(pipe);
    run.status = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    run.err = hytest::ReadFileBytes(errFile);
    return run;
  }

  hytest::TempDir dir;
  std::string grid;
};

TEST_F(GridQueryToolTest, SamplePrintsOneCsvRowPerPointInInputOrder) {
  const std::string points = dir.Write("p.txt", "# gauges\n1 2\n\n2,1\n-1 0\n2.5, 1.5\n");
  for (const char* mode : {"", " --one-by-one"}) {
    const ToolRun run = Hyutil("grid sample " + grid + " --points " + points + " --method bilinear" + mode);
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(run.out, "x,y,code,value\n1,2,0,11.1000004\n2,1,2,\n-1,0,2,\n2.5,1.5,0,17.6000004\n") << mode;
    EXPECT_EQ(run.err, "");
  }
}

TEST_F(GridQueryToolTest, SampleReadsStandardInputAndSinglePointsWithNegativeCoordinates) {
  EXPECT_EQ(Hyutil("grid sample " + grid + " --points - --json", "0 3\\n").out,
            "[\n  {\n    \"x\": 0.0,\n    \"y\": 3.0,\n    \"code\": 0,\n    \"value\": 0.100000001\n  }\n]\n");
  EXPECT_EQ(Hyutil("grid sample " + grid + " -0.5 2").out, "x,y,code,value\n-0.5,2,2,\n");
}

TEST_F(GridQueryToolTest, AverageGivesCodesValuesAndNoValueForHoles) {
  const std::string polygons = dir.Write(
      "p.wkt",
      "POLYGON((0.5 0.5, 3.5 0.5, 3.5 2.5, 0.5 2.5, 0.5 0.5))\n"
      "POLYGON((0 0,4 0,4 3,0 3),(1 1,2 1,2 2,1 2))\n"
      "POLYGON((10 10, 11 10, 11 11))\n"
      "POLYGON((1.2 1.2, 1.8 1.2, 1.5 1.8))\n");
  for (const char* mode : {"", " --one-by-one"}) {
    const ToolRun run = Hyutil("grid average " + grid + " --polygons " + polygons + mode);
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(run.out, "id,code,value\n0,3,16.1000004\n1,1,\n2,2,\n3,0,\n") << mode;
    EXPECT_NE(run.err.find("p.wkt:2: polygon with holes"), std::string::npos);
  }
}

TEST_F(GridQueryToolTest, DamagedRowsPrintTheLastErrorOnceAndExitZero) {
  std::string bytes = hytest::ReadFileBytes(grid);
  hytest::WriteU32At(bytes, hytest::OffsetEntryPosition(1), 0xFFFFFFF0u);
  const std::string bad = dir.Write("bad.hybg", bytes);
  const ToolRun run = Hyutil("grid sample " + bad + " 1 2");
  EXPECT_EQ(run.status, 0);
  EXPECT_EQ(run.out, "x,y,code,value\n1,2,1,\n");
  EXPECT_EQ(run.err, "hyutil: HY binary grid file '" + bad +
                         "' may be corrupt: could not seek to file offset 4294967280 (0xFFFFFFF0).\n");
}

TEST_F(GridQueryToolTest, UnreadableInputsExitOneAndBadArgumentsExitTwo) {
  EXPECT_EQ(Hyutil("grid sample " + dir.File("missing.hybg") + " 1 1").status, 1);
  EXPECT_EQ(Hyutil("grid sample " + grid + " --points " + dir.File("none.txt")).status, 1);
  EXPECT_EQ(Hyutil("grid sample " + grid + " --points " + dir.Write("x.txt", "1 a\n")).status, 1);
  EXPECT_EQ(Hyutil("grid average " + grid + " --polygons " + dir.Write("l.wkt", "LINESTRING(0 0,1 1)\n")).status, 1);
  EXPECT_EQ(Hyutil("grid sample " + grid).status, 2);
  EXPECT_EQ(Hyutil("grid sample " + grid + " 1 1 --method cubic").status, 2);
  EXPECT_EQ(Hyutil("grid average " + grid).status, 2);
}

}  // namespace

#endif  // HYUTIL_PATH
