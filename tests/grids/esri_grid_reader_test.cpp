#include <gtest/gtest.h>

#include <cstring>

#include "hy_util/grids/esri_grid_ascii.h"
#include "hy_util/grids/esri_grid_binary.h"
#include "hy_util/grids/esri_grid_helper.h"
#include "support/recording_application.h"
#include "support/temp_dir.h"

namespace {

// A 3 x 2 grid with corner (100, 200) and cell 10: node centres at x 105, 115,
// 125 and y 215 (row 0), 205 (row 1).
const std::string kHeader = "ncols 3\nnrows 2\nxllcorner 100\nyllcorner 200\ncellsize 10\nNODATA_value -9\n";

struct Node {
  double x, y, z;
  bool operator==(const Node&) const = default;
  friend std::ostream& operator<<(std::ostream& os, const Node& n) { return os << n.x << "," << n.y << ":" << n.z; }
};

std::vector<Node> Nodes(const HU_GridPointArray& points) {
  std::vector<Node> nodes;
  for (const auto& p : points) nodes.push_back({p->x, p->y, p->z});
  return nodes;
}

std::string FloatBytes(const std::vector<float>& values) {
  return std::string(reinterpret_cast<const char*>(values.data()), values.size() * 4);
}

TEST(EsriGridAsciiTest, ReadLineGivesOneRowOfPointsAndSkipsOtherLines) {
  hytest::TempDir dir;
  CHU_File_EsriGridASCII grid(dir.Write("g.asc", kHeader + "\n# note\n1 -9 3 99\n\t4 5\tx\n").c_str());
  ASSERT_TRUE(grid.ReadHeader());
  HU_GridPointArray points;
  int skipped = 0;
  ASSERT_TRUE(grid.ReadLine(points, &skipped));
  EXPECT_EQ(skipped, 2);                                                         // the blank and the comment line
  EXPECT_EQ(Nodes(points), (std::vector<Node>{{105, 215, 1}, {125, 215, 3}}));  // -9 is no data, 99 extra
  ASSERT_TRUE(grid.ReadLine(points, &skipped));
  EXPECT_EQ(Nodes(points), (std::vector<Node>{{105, 205, 4}, {115, 205, 5}}));  // "x" is no number
  EXPECT_EQ(grid.GetPointsRead(), 6);
  EXPECT_FALSE(grid.ReadLine(points, &skipped));
  EXPECT_TRUE(points.empty());
}

TEST(EsriGridAsciiTest, ReadDataTakesValuesRegardlessOfLineBreaksToTheEndOfTheFile) {
  hytest::TempDir dir;
  CHU_File_EsriGridASCII grid(dir.Write("g.asc", kHeader + "1\n2\n3 4\n-9\n6 7\n").c_str());
  ASSERT_TRUE(grid.ReadHeader());
  HU_GridPointArray points;
  ASSERT_TRUE(grid.ReadData(points, nullptr));
  EXPECT_EQ(Nodes(points), (std::vector<Node>{{105, 215, 1}, {115, 215, 2}, {125, 215, 3}, {105, 205, 4},
                                             {125, 205, 6}, {105, 195, 7}}));  // 7 lies beyond the last row
  EXPECT_EQ(grid.GetPointsRead(), 7);
}

TEST(EsriGridAsciiTest, ProgressMovesOncePerPercentOfRowsAndStopsAtEndOfFile) {
  hytest::RecordingApplication app;
  hytest::TempDir dir;
  std::string text = "ncols 1\nnrows 250\nxllcorner 0\nyllcorner 0\ncellsize 1\n";
  for (int r = 0; r < 250; ++r) text += "1\n";
  CHU_File_EsriGridASCII grid(dir.Write("g.asc", text).c_str());
  ASSERT_TRUE(grid.ReadHeader());
  HU_GridPointArray points;
  while (grid.ReadLine(points, nullptr)) {
  }
  ASSERT_EQ(app.progressPositions.size(), 83u);  // every (250 + 99) / 100 = 3 rows
  EXPECT_EQ(app.progressPositions.back(), 249);
  EXPECT_EQ(app.progressStops, 1);
}

TEST(EsriGridAsciiTest, WritesHeaderAndValuesInTheCLocaleFormat) {
  hytest::TempDir dir;
  {
    CHU_File_EsriGridASCII grid(dir.File("out.asc").c_str(), HU_modeWrite | HU_modeCreate);
    grid.CreateHeader().SetCellSize(5);
    ASSERT_TRUE(grid.WriteHeader());
    EXPECT_TRUE(grid.WriteNextData(1.23456f) && grid.WriteNextData(-0.5f) && grid.WriteNextData(std::string("\n")));
  }
  EXPECT_NE(hytest::ReadFileBytes(dir.File("out.asc")).find("cellsize        5.000\nNODATA_value    -9999.000\n1.235 -0.500 \n"),
            std::string::npos);
}

TEST(EsriGridBinaryTest, ReadsRowsOfFloatsWithTheHeaderBesideAndChecksForWholeGrids) {
  hytest::RecordingApplication app;
  hytest::TempDir dir;
  dir.Write("g.hdr", kHeader + "byteorder LSBFIRST\n");
  CHU_File_EsriGridBinary grid(dir.Write("g.flt", FloatBytes({1, -9, 3, 4, 5, 6.5f, 7, 8, 9, 10, 11, 12, 13})).c_str());
  ASSERT_TRUE(grid.ReadHeader());
  HU_GridPointArray points;
  ASSERT_TRUE(grid.ReadLine(points, nullptr));
  EXPECT_EQ(Nodes(points), (std::vector<Node>{{105, 215, 1}, {125, 215, 3}}));
  ASSERT_TRUE(grid.ReadData(points, nullptr));  // from the start, up to the short last row
  EXPECT_EQ(points.size(), 11u);
  EXPECT_EQ(Nodes(points).back(), (Node{125, 185, 12}));
  EXPECT_EQ(app.progressStops, 1);  // by the short read
  int blocks = 0;
  EXPECT_FALSE(grid.CheckData(&blocks));  // 13 values: two grids of 6 and one left over
  EXPECT_EQ(blocks, 2);
  dir.Write("h.hdr", kHeader);
  CHU_File_EsriGridBinary whole(dir.Write("h.flt", FloatBytes({1, 2, 3, 4, 5, 6})).c_str());
  EXPECT_TRUE(whole.ReadHeader() && whole.CheckData(&blocks));
}

TEST(EsriGridHelperTest, ExtensionOrHeaderCompanionDecidesTheForm) {
  hytest::TempDir dir;
  dir.Write("a.hdr", "");
  dir.Write("plain.hdr", "");
  const std::pair<const char*, bool> cases[] = {
      {"x.flt", true}, {"x.FLT", true}, {"a.asc", false} /* even with a.hdr beside it */, {"a.txt", false},
      {"a.bil", true}, {"b.bil", false}, {"plain", true}, {"other", false}};
  for (const auto& [name, flt] : cases) EXPECT_EQ(CHU_File_EsriGrid_Helper::isFltFile(dir.File(name)), flt) << name;
}

}  // namespace
