// "hyutil boundary clean" run as a user runs it, on the example layer of
// breaklines, regions and points digitised with small gaps.
#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

#include "support/run_hyutil.h"

#ifdef HYUTIL_PATH

namespace {

class BoundaryToolTest : public ::testing::Test {
 protected:
  int Hyutil(const std::string& args, std::string* out = nullptr) {
    hytest::ToolRun run = hytest::RunHyutil(dir, args);
    if (out != nullptr) *out = std::move(run.out);
    return run.status;
  }

  const std::string example = std::string(HY_SOURCE_DIR) + "/examples/breaklines.mif";
  hytest::TempDir dir;
};

TEST_F(BoundaryToolTest, CleansTheExampleAndTheResultNeedsNoFurtherWelds) {
  std::string out;
  ASSERT_EQ(Hyutil("boundary clean " + example + " --tolerance 0.5 --json --out " + dir.File("clean.shp"), &out), 0)
      << hytest::ReadFileBytes(dir.File("stderr.txt"));
  const auto report = nlohmann::json::parse(out);
  EXPECT_EQ(report["vertices_before"], 23);
  EXPECT_EQ(report["welds"], 7);
  EXPECT_EQ(report["vertices_merged"], 9);
  EXPECT_EQ(report["elements_dropped"], 2);  // the survey stub and the digitising blob
  EXPECT_EQ(report["orphaned_vertices_removed"], 1);
  EXPECT_EQ(report["vertices_after"], 13);
  EXPECT_EQ(report["written"].size(), 3u);  // lines, points and polygons

  // The cleaned layers together: corners now coincide exactly, so nothing is
  // welded and the shared corners are already shared vertices.
  ASSERT_EQ(Hyutil("boundary clean " + dir.File("clean_lines.shp") + " " + dir.File("clean_polygons.shp") + " " +
                       dir.File("clean_points.shp") + " --tolerance 0.5 --json",
                   &out),
            0);
  const auto again = nlohmann::json::parse(out);
  EXPECT_EQ(again["welds"], 0);
  EXPECT_EQ(again["vertices_before"], 13);

  ASSERT_EQ(Hyutil("boundary clean " + example + " --tolerance 0.5 --out " + dir.File("clean.mif"), &out), 0);
  EXPECT_NE(out.find("vertices after:      13"), std::string::npos) << out;
  EXPECT_NE(hytest::ReadFileBytes(dir.File("clean.mid")).find("\"carpark\""), std::string::npos);
}

TEST_F(BoundaryToolTest, BadArgumentsAndMissingInputsGetTheirExitCodes) {
  EXPECT_EQ(Hyutil("boundary clean " + example + " --tolerance -1"), 2);
  EXPECT_EQ(Hyutil("boundary clean " + example), 2);
  EXPECT_EQ(Hyutil("boundary clean " + example + " --tolerance 1 --out " + dir.File("x.txt")), 2);
  EXPECT_EQ(Hyutil("boundary clean " + dir.File("missing.shp") + " --tolerance 1"), 1);
  EXPECT_NE(hytest::ReadFileBytes(dir.File("stderr.txt")).find("missing.shp"), std::string::npos);
}

}  // namespace

#endif
