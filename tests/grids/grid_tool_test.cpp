// The "hyutil grid" commands run as a user runs them.
#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

#include <cstdio>
#include <filesystem>
#include <sys/wait.h>

#include "grids/binary_grid_test_writer.h"
#include "support/temp_dir.h"

#ifdef HYUTIL_PATH

namespace {

const std::string kAscii = "ncols 3\nnrows 2\nxllcorner 100\nyllcorner 200\ncellsize 10\nNODATA_value -9\n1 2 3\n4 -9 6\n";

struct ToolRun {
  int status = -1;
  std::string out, err;
};

// A 5 x 4 binary grid at (0, 0) with 1 m cells, node (r, c) = 10 r + c + 0.1 and
// a null node at (2, 1).
class GridToolTest : public ::testing::Test {
 protected:
  void SetUp() override {
    hytest::TestGrid g = hytest::MakeGrid(5, 4, 0, 0, 1, [](int r, int c) { return 10.0f * r + c + 0.1f; });
    g.values[12] = g.noData;
    grid = dir.Write("g.hybg", hytest::GridFileBytes(g));
  }

  // Runs hyutil with the arguments, standard input from a file holding input.
  ToolRun Hyutil(const std::string& args, const std::string& input = "") {
    const std::string command = std::string(HYUTIL_PATH) + " " + args + " <" + dir.Write("stdin.txt", input) + " >" +
                                dir.File("stdout.txt") + " 2>" + dir.File("stderr.txt");
    const int raw = std::system(command.c_str());
    return {WIFEXITED(raw) ? WEXITSTATUS(raw) : -1, hytest::ReadFileBytes(dir.File("stdout.txt")),
            hytest::ReadFileBytes(dir.File("stderr.txt"))};
  }

  hytest::TempDir dir;
  std::string grid;
};

TEST_F(GridToolTest, InfoDescribesEachKindOfGridFileAndConvertWritesTheBinaryOne) {
  const std::string asc = dir.Write("a.asc", kAscii);
  const ToolRun text = Hyutil("grid info " + asc);
  EXPECT_EQ(text.status, 0) << text.err;
  EXPECT_NE(text.out.find("format:      ESRI ASCII grid\ncolumns:     3\nrows:        2\n"), std::string::npos);
  EXPECT_NE(text.out.find("bounds:      105 205 to 125 215 (cell centres)"), std::string::npos);

  const ToolRun convert = Hyutil("grid convert --codec libdeflate " + asc + " " + dir.File("a.hybg"));
  ASSERT_EQ(convert.status, 0) << convert.err;
  EXPECT_NE(convert.out.find("3 columns x 2 rows"), std::string::npos);
  EXPECT_EQ(convert.err, "");  // no progress bar when standard error is not a terminal
  const auto json = nlohmann::json::parse(Hyutil("grid info --json " + dir.File("a.hybg")).out);
  EXPECT_EQ(std::tie(json["format"], json["nodata"], json["bounds"]["ymax"], json["file_size"]),
            std::make_tuple("HY binary grid", -9.0, 215.0, std::filesystem::file_size(dir.File("a.hybg"))));
  EXPECT_DOUBLE_EQ(json["compression_ratio"].get<double>(), 24.0 / json["file_size"].get<double>());  // 6 floats

  dir.Write("f.hdr", "ncols 1\nnrows 1\nxllcenter 0\nyllcenter 0\ncellsize 1\n");
  const ToolRun flt = Hyutil("grid info --json " + dir.Write("f.flt", std::string(4, '\0')));
  EXPECT_EQ(nlohmann::json::parse(flt.out)["format"], "ESRI float grid");
}

TEST_F(GridToolTest, SamplePrintsOneCsvRowPerPointInInputOrderAndTheLastErrorOnce) {
  const std::string points = dir.Write("p.txt", "# gauges\n1 2\n\n2,1\n-1 0\n2.5, 1.5\n");
  for (const char* mode : {"", " --one-by-one"}) {
    const ToolRun run = Hyutil("grid sample " + grid + " --points " + points + " --method bilinear" + mode);
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(run.out,
              "x,y,code,status,value\n1,2,0,ok,11.1000004\n2,1,2,no_data,\n-1,0,2,no_data,\n"
              "2.5,1.5,0,ok,17.6000004\n")
        << mode;
    EXPECT_EQ(run.err, "");
  }
  EXPECT_EQ(Hyutil("grid sample " + grid + " --points - --json", "0 3\n").out,
            "[\n  {\n    \"x\": 0.0,\n    \"y\": 3.0,\n    \"code\": 0,\n    \"status\": \"ok\",\n    \"value\": 0.100000001\n  }\n]\n");
  EXPECT_EQ(Hyutil("grid sample " + grid + " -0.5 2").out, "x,y,code,status,value\n-0.5,2,2,no_data,\n");

  std::string bytes = hytest::ReadFileBytes(grid);
  hytest::WriteU32At(bytes, hytest::OffsetEntryPosition(1), 0xFFFFFFF0u);
  const std::string bad = dir.Write("bad.hybg", bytes);
  const ToolRun damaged = Hyutil("grid sample " + bad + " --points " + dir.Write("q.txt", "1 2\n1 2\n"));
  EXPECT_EQ(damaged.status, 0);  // the command ran: errors are per point
  EXPECT_EQ(damaged.out, "x,y,code,status,value\n1,2,1,error,\n1,2,1,error,\n");
  EXPECT_EQ(damaged.err,
            "hyutil: HY binary grid file '" + bad + "' may be corrupt: could not seek to file offset 4294967280 (0xFFFFFFF0).\n");
}

TEST_F(GridToolTest, AverageGivesCodesValuesAndNoValueForHoles) {
  const std::string polygons = dir.Write("p.wkt",
                                         "POLYGON((0.5 0.5, 3.5 0.5, 3.5 2.5, 0.5 2.5, 0.5 0.5))\n"
                                         "POLYGON((0 0,4 0,4 3,0 3),(1 1,2 1,2 2,1 2))\n"
                                         "POLYGON((10 10, 11 10, 11 11))\nPOLYGON((1.2 1.2, 1.8 1.2, 1.5 1.8))\n");
  for (const char* mode : {"", " --one-by-one"}) {
    const ToolRun run = Hyutil("grid average " + grid + " --polygons " + polygons + mode);
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(run.out, "id,code,status,value\n0,3,partial,16.1000004\n1,1,unsupported,\n2,2,no_data,\n3,0,ok,\n") << mode;
    EXPECT_NE(run.err.find("p.wkt:2: polygon with holes"), std::string::npos);
  }
}

TEST_F(GridToolTest, UnreadableInputsExitOneNamingTheFileAndBadArgumentsExitTwo) {
  const std::string asc = dir.Write("a.asc", kAscii);
  const std::pair<std::string, std::string> unreadable[] = {
      {"grid convert " + dir.File("none.asc") + " " + dir.File("o.hybg"), dir.File("none.asc")},
      {"grid info " + dir.Write("bad.asc", "ncols 3\n1 2 3\n"), "bad.asc' is not a valid ESRI grid header"},
      {"grid convert " + dir.Write("s.asc", "ncols 2\nnrows 2\nxllcenter 0\nyllcenter 0\ncellsize 1\n1 2 3\n") + " " +
           dir.File("s.hybg"),
       "'" + dir.File("s.asc") + "' ends after 2 of the 4 values"},
      {"grid sample " + dir.File("missing.hybg") + " 1 1", "missing.hybg"},
      {"grid sample " + grid + " --points " + dir.Write("x.txt", "1 a\n"), "x.txt:1"},
      {"grid average " + grid + " --polygons " + dir.Write("l.wkt", "LINESTRING(0 0,1 1)\n"), "l.wkt:1"}};
  for (const auto& [args, named] : unreadable) {
    const ToolRun run = Hyutil(args);
    EXPECT_EQ(run.status, 1) << args;
    EXPECT_NE(run.err.find(named), std::string::npos) << run.err;
  }
  const std::string badArguments[] = {
      "grid convert --codec zip " + asc + " " + dir.File("o.hybg"), "grid convert --threads 0 " + asc + " " + dir.File("o.hybg"),
      "grid convert " + asc + " " + asc /* would destroy its input */, "grid sample " + grid,
      "grid sample " + grid + " 1 1 --method cubic", "grid sample " + grid + " 1 north", "grid average " + grid};
  for (const std::string& args : badArguments) EXPECT_EQ(Hyutil(args).status, 2) << args;
  EXPECT_EQ(hytest::ReadFileBytes(asc), kAscii);
}

}  // namespace

#endif  // HYUTIL_PATH
