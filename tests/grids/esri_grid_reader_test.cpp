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
};

std::vector<Node> Nodes(const HU_GridPointArray& points) {
  std::vector<Node> nodes;
  for (const auto& p : points) nodes.push_back({p->x, p->y, p->z});
  return nodes;
}

TEST(EsriGridAsciiTest, ReadLineGivesOneRowOfPointsAndSkipsOtherLines) {
  hytest::TempDir dir;
  CHU_File_EsriGridASCII grid(
      dir.Write("g.asc", kHeader + "\n# note\n1 -9 3 99\n\t4 5\tx\n").c_str());
  ASSERT_TRUE(grid.ReadHeader());
  HU_GridPointArray points;
  int skipped = 0;
  ASSERT_TRUE(grid.ReadLine(points, &skipped));
  EXPECT_EQ(skipped, 2);  // the blank line and the comment line
  EXPECT_EQ(Nodes(points), (std::vector<Node>{{105, 215, 1}, {125, 215, 3}}));  // -9 is no data, 99 extra
  ASSERT_TRUE(grid.ReadLine(points, &skipped));
  EXPECT_EQ(Nodes(points), (std::vector<Node>{{105, 205, 4}, {115, 205, 5}}));  // "x" is no number
  EXPECT_EQ(grid.GetPointsRead(), 6);
  EXPECT_FALSE(grid.ReadLine(points, &skipped));
  EXPECT_TRUE(points.empty());
}

TEST(EsriGridAsciiTest, ReadDataTakesValuesRegardlessOfLineBreaks) {
  hytest::TempDir dir;
  CHU_File_EsriGridASCII grid(dir.Write("g.asc", kHeader + "1\n2\n3 4\n-9\n6 7 8\n").c_str());
  ASSERT_TRUE(grid.ReadHeader());
  HU_GridPointArray points;
  ASSERT_TRUE(grid.ReadData(points, nullptr));
  EXPECT_EQ(Nodes(points), (std::vector<Node>{{105, 215, 1}, {115, 215, 2}, {125, 215, 3}, {105, 205, 4},
                                             {125, 205, 6}, {105, 195, 7}, {115, 195, 8}}));  // read to the end
  EXPECT_EQ(grid.GetPointsRead(), 8);
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
  ASSERT_EQ(app.progressPositions.size(), 83u);  // every 3 rows: (250 + 99) / 100
  EXPECT_EQ(app.progressPositions.front(), 3);
  EXPECT_EQ(app.progressPositions.back(), 249);
  EXPECT_EQ(app.progressSteps, 250);
  EXPECT_EQ(app.progressStops, 1);
}

TEST(EsriGridAsciiTest, WritesHeaderAndValuesInTheCLocaleFormat) {
  hytest::TempDir dir;
  const std::string path = dir.File("out.asc");
  {
    CHU_File_EsriGridASCII grid(path.c_str(), HU_modeWrite | HU_modeCreate);
    CHU_File_EsriGridHeader& header = grid.CreateHeader();
    header.SetColCount(2);
    header.SetRowCount(1);
    header.SetCellSize(5);
    ASSERT_TRUE(grid.WriteHeader());
    EXPECT_TRUE(grid.WriteNextData(1.23456f));
    EXPECT_TRUE(grid.WriteNextData(-0.5f));
    EXPECT_TRUE(grid.WriteNextData(std::string("\n")));
  }
  const std::string text = hytest::ReadFileBytes(path);
  EXPECT_NE(text.find("cellsize        5.000\nNODATA_value    -9999.000\n1.235 -0.500 \n"), std::string::npos);
}

std::string FloatBytes(const std::vector<float>& values) {
  std::string bytes(values.size() * 4, '\0');
  std::memcpy(bytes.data(), values.data(), bytes.size());
  return bytes;
}

TEST(EsriGridBinaryTest, ReadsRowsOfFloatsWithTheHeaderBeside) {
  hytest::RecordingApplication app;
  hytest::TempDir dir;
  dir.Write("g.hdr", kHeader + "byteorder LSBFIRST\n");
  CHU_File_EsriGridBinary grid(dir.Write("g.flt", FloatBytes({1, -9, 3, 4, 5, 6.5f})).c_str());
  ASSERT_TRUE(grid.ReadHeader());
  HU_GridPointArray points;
  ASSERT_TRUE(grid.ReadLine(points, nullptr));
  EXPECT_EQ(Nodes(points), (std::vector<Node>{{105, 215, 1}, {125, 215, 3}}));
  ASSERT_TRUE(grid.ReadData(points, nullptr));
  EXPECT_EQ(points.size(), 5u);
  EXPECT_EQ(Nodes(points).back(), (Node{125, 205, 6.5}));
  int blocks = 0;
  EXPECT_TRUE(grid.CheckData(&blocks));
  EXPECT_EQ(blocks, 1);
  EXPECT_EQ(app.progressCaptions.size(), 1u);
}

TEST(EsriGridBinaryTest, ShortDataFailsTheRowAndTheCheck) {
  hytest::RecordingApplication app;
  hytest::TempDir dir;
  dir.Write("g.hdr", kHeader);
  CHU_File_EsriGridBinary grid(dir.Write("g.flt", FloatBytes({1, 2, 3, 4, 5})).c_str());
  ASSERT_TRUE(grid.ReadHeader());
  HU_GridPointArray points;
  EXPECT_TRUE(grid.ReadLine(points, nullptr));
  EXPECT_FALSE(grid.ReadLine(points, nullptr));
  EXPECT_EQ(app.progressStops, 1);
  int blocks = -1;
  EXPECT_FALSE(grid.CheckData(&blocks));
  EXPECT_EQ(blocks, 0);
}

TEST(EsriGridHelperTest, ExtensionOrHeaderCompanionDecidesTheForm) {
  hytest::TempDir dir;
  dir.Write("a.hdr", "");
  dir.Write("plain.hdr", "");
  EXPECT_TRUE(CHU_File_EsriGrid_Helper::isFltFile(dir.File("x.flt")));
  EXPECT_TRUE(CHU_File_EsriGrid_Helper::isFltFile(dir.File("x.FLT")));
  EXPECT_FALSE(CHU_File_EsriGrid_Helper::isFltFile(dir.File("a.asc")));  // even with a.hdr beside it
  EXPECT_FALSE(CHU_File_EsriGrid_Helper::isFltFile(dir.File("a.txt")));
  EXPECT_TRUE(CHU_File_EsriGrid_Helper::isFltFile(dir.File("a.bil")));  // a.hdr exists
  EXPECT_FALSE(CHU_File_EsriGrid_Helper::isFltFile(dir.File("b.bil")));
  EXPECT_TRUE(CHU_File_EsriGrid_Helper::isFltFile(dir.File("plain")));  // plain.hdr exists
  EXPECT_FALSE(CHU_File_EsriGrid_Helper::isFltFile(dir.File("other")));
}

}  // namespace
