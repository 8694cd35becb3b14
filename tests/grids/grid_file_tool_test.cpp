// The "hyutil grid info" and "hyutil grid convert" commands, run as a user would.
#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

#include <cstdio>
#include <cstring>
#include <filesystem>
#include <sys/wait.h>

#include "support/temp_dir.h"

#ifdef HYUTIL_PATH

namespace {

struct ToolRun {
  int status = -1;
  std::string out;
  std::string err;
};

ToolRun Hyutil(const hytest::TempDir& dir, const std::string& args) {
  const std::string outFile = dir.File("stdout.txt");
  const std::string errFile = dir.File("stderr.txt");
  const std::string command = std::string(HYUTIL_PATH) + " " + args + " >" + outFile + " 2>" + errFile;
  const int raw = std::system(command.c_str());
  return {WIFEXITED(raw) ? WEXITSTATUS(raw) : -1, hytest::ReadFileBytes(outFile), hytest::ReadFileBytes(errFile)};
}

const std::string kGrid = "ncols 3\nnrows 2\nxllcorner 100\nyllcorner 200\ncellsize 10\nNODATA_value -9\n"
                          "1 2 3\n4 -9 6\n";

TEST(GridFileToolTest, InfoDescribesEachKindOfGridFile) {
  hytest::TempDir dir;
  const std::string asc = dir.Write("g.asc", kGrid);
  const ToolRun text = Hyutil(dir, "grid info " + asc);
  EXPECT_EQ(text.status, 0) << text.err;
  EXPECT_NE(text.out.find("format:      ESRI ASCII grid\ncolumns:     3\nrows:        2\n"), std::string::npos);
  EXPECT_NE(text.out.find("bounds:      105 205 to 125 215 (cell centres)"), std::string::npos);

  const ToolRun convert = Hyutil(dir, "grid convert --codec libdeflate " + asc + " " + dir.File("g.hybg"));
  ASSERT_EQ(convert.status, 0) << convert.err;
  EXPECT_NE(convert.out.find("3 columns x 2 rows"), std::string::npos);
  EXPECT_EQ(convert.err, "");  // no progress bar when standard error is not a terminal
  const ToolRun binary = Hyutil(dir, "grid info --json " + dir.File("g.hybg"));
  ASSERT_EQ(binary.status, 0) << binary.err;
  const auto json = nlohmann::json::parse(binary.out);
  EXPECT_EQ(json["format"], "HY binary grid");
  EXPECT_EQ(json["columns"], 3);
  EXPECT_EQ(json["nodata"], -9.0);
  EXPECT_EQ(json["bounds"]["ymax"], 215.0);
  EXPECT_EQ(json["file_size"], std::filesystem::file_size(dir.File("g.hybg")));
  EXPECT_GT(json["compression_ratio"].get<double>(), 0.0);

  dir.Write("f.hdr", "ncols 1\nnrows 1\nxllcenter 0\nyllcenter 0\ncellsize 1\n");
  const ToolRun flt = Hyutil(dir, "grid info --json " + dir.Write("f.flt", std::string(4, '\0')));
  EXPECT_EQ(nlohmann::json::parse(flt.out)["format"], "ESRI float grid");
}

TEST(GridFileToolTest, ProblemsGiveTheDocumentedExitStatusAndNameTheFile) {
  hytest::TempDir dir;
  const std::string asc = dir.Write("g.asc", kGrid);
  const ToolRun missing = Hyutil(dir, "grid convert " + dir.File("none.asc") + " " + dir.File("o.hybg"));
  EXPECT_EQ(missing.status, 1);
  EXPECT_NE(missing.err.find(dir.File("none.asc")), std::string::npos);
  const ToolRun bad = Hyutil(dir, "grid info " + dir.Write("bad.asc", "ncols 3\n1 2 3\n"));
  EXPECT_EQ(bad.status, 1);
  EXPECT_NE(bad.err.find("bad.asc' is not a valid ESRI grid header"), std::string::npos);
  const ToolRun short_ = Hyutil(dir, "grid convert " + dir.Write("s.asc", "ncols 2\nnrows 2\nxllcenter 0\nyllcenter 0\n"
                                                               "cellsize 1\n1 2 3\n") + " " + dir.File("s.hybg"));
  EXPECT_EQ(short_.status, 1);
  EXPECT_NE(short_.err.find("'" + dir.File("s.asc") + "' ends after 3 of the 4 values"), std::string::npos);

  EXPECT_EQ(Hyutil(dir, "grid convert --codec zip " + asc + " " + dir.File("o.hybg")).status, 2);
  EXPECT_EQ(Hyutil(dir, "grid convert --threads 0 " + asc + " " + dir.File("o.hybg")).status, 2);
  EXPECT_EQ(Hyutil(dir, "grid convert " + asc + " " + asc).status, 2);  // would destroy its input
  EXPECT_EQ(hytest::ReadFileBytes(asc), kGrid);
}

}  // namespace

#endif  // HYUTIL_PATH
