#include "hy_util/grids/esri_grid_header.h"

#include <gtest/gtest.h>

#include "hy_util/core/string_manager.h"
#include "hy_util/grids/esri_grid_ascii.h"
#include "support/recording_application.h"
#include "support/temp_dir.h"

namespace {

struct HeaderRead {
  bool ok = false;
  std::int32_t ncols = 0, nrows = 0;
  double xll = 0, yll = 0, cellSize = 0, noData = 0;
};

HeaderRead ReadHeaderText(const std::string& text) {
  hytest::TempDir dir;
  CHU_File_EsriGridHeader header(dir.Write("grid.hdr", text).c_str());
  int progressRow = 5;
  HeaderRead r;
  r.ok = header.Read(progressRow);
  r.ncols = header.GetColCount();
  r.nrows = header.GetRowCount();
  r.xll = header.GetXllCenter();
  r.yll = header.GetYllCenter();
  r.cellSize = header.GetCellSize();
  r.noData = header.GetNoDataValue();
  return r;
}

TEST(EsriGridHeaderTest, KeywordsAreReadInAnyOrderAndCornersBecomeCentres) {
  const HeaderRead r = ReadHeaderText(
      "cellsize 10\nNODATA_value -1\nyllcorner 200\n\nxllcorner\t100\nnrows 3\nncols 4\n");
  EXPECT_TRUE(r.ok);
  EXPECT_EQ(r.ncols, 4);
  EXPECT_EQ(r.nrows, 3);
  EXPECT_EQ(r.xll, 105.0);  // corner + half a cell
  EXPECT_EQ(r.yll, 205.0);
  EXPECT_EQ(r.cellSize, 10.0);
  EXPECT_EQ(r.noData, -1.0);
}

TEST(EsriGridHeaderTest, CentreWinsOverCornerAndNoDataDefaults) {
  const HeaderRead r = ReadHeaderText(
      "ncols 2\r\nnrows 2\r\nxllcorner 100\r\nxllcenter 7.5\r\nyllcenter 3\r\nyllcorner 0\r\ncellsize 2.5\r\n");
  EXPECT_TRUE(r.ok);  // ends at end of file: NODATA_value is optional
  EXPECT_EQ(r.xll, 7.5);
  EXPECT_EQ(r.yll, 3.0);
  EXPECT_EQ(r.noData, -9999.0);
}

TEST(EsriGridHeaderTest, NumbersInOtherNotationsAreRead) {
  const HeaderRead r = ReadHeaderText(
      "ncols 15.0\nnrows +12\nxllcorner 0.100000E+06\nyllcorner .65E6\ncellsize .500E+02\nNODATA_value nan\n");
  EXPECT_TRUE(r.ok);
  EXPECT_EQ(r.ncols, 15);
  EXPECT_EQ(r.nrows, 12);
  EXPECT_EQ(r.xll, 100025.0);
  EXPECT_EQ(r.yll, 650025.0);
  EXPECT_TRUE(std::isnan(r.noData));
}

class EsriGridHeaderFailureTest : public testing::TestWithParam<std::pair<const char*, std::string>> {};

TEST_P(EsriGridHeaderFailureTest, HeaderIsRefused) {
  EXPECT_FALSE(ReadHeaderText(GetParam().second).ok) << GetParam().first;
}

const std::string kTail = "xllcorner 0\nyllcorner 0\ncellsize 1\n";

INSTANTIATE_TEST_SUITE_P(
    BadHeaders, EsriGridHeaderFailureTest,
    testing::Values(
        std::make_pair("empty file", std::string()),
        std::make_pair("no cell size", std::string("ncols 2\nnrows 2\nxllcorner 0\nyllcorner 0\n")),
        std::make_pair("data before the header is complete", std::string("ncols 2\nnrows 2\n1 2\n") + kTail),
        std::make_pair("three tokens on a keyword line", "ncols 2 3\nnrows 2\n" + kTail),
        std::make_pair("lower-case keyword", "NCOLS 2\nnrows 2\n" + kTail),
        std::make_pair("value not a number", "ncols two\nnrows 2\n" + kTail),
        std::make_pair("too many columns", "ncols 1000001\nnrows 2\n" + kTail),
        std::make_pair("zero cell size", std::string("ncols 2\nnrows 2\nxllcorner 0\nyllcorner 0\ncellsize 0\n")),
        std::make_pair("corner not finite", std::string("ncols 2\nnrows 2\nxllcorner nan\nyllcorner 0\ncellsize 1\n"))));

TEST(EsriGridHeaderTest, ReadingNrowsStartsProgressAndAFailedHeaderStopsIt) {
  hytest::RecordingApplication app;
  EXPECT_TRUE(ReadHeaderText("ncols 3\nnrows 250\n" + kTail).ok);
  ASSERT_EQ(app.progressCaptions.size(), 1u);
  EXPECT_EQ(app.progressCaptions[0], CStringManager::GetStr("HYSTR_PROGRESS_READING_GRID_FILE"));
  EXPECT_EQ(app.progressSteps, 250);
  EXPECT_EQ(app.progressStops, 0);

  EXPECT_FALSE(ReadHeaderText("ncols 3\nnrows 250\nxllcorner 0\n").ok);
  EXPECT_EQ(app.progressStops, 1);
}

TEST(EsriGridHeaderTest, FirstDataLineIsGivenBackWhenNoDataValueIsMissing) {
  hytest::TempDir dir;
  // Leading blanks and CR LF: the line must come back whole.
  CHU_File_EsriGridASCII grid(dir.Write("g.asc", "ncols 2\r\nnrows 1\r\n" + kTail + "  7.5 8\r\n").c_str());
  ASSERT_TRUE(grid.ReadHeader());
  float row[2] = {0, 0};
  ASSERT_TRUE(grid.ReadRowData(row));
  EXPECT_EQ(row[0], 7.5f);
  EXPECT_EQ(row[1], 8.0f);
}

TEST(EsriGridHeaderTest, WritesSixCentreLinesWithThreeDecimals) {
  hytest::TempDir dir;
  CHU_File_EsriGridHeader header(dir.File("out.hdr").c_str(), HU_modeWrite | HU_modeCreate);
  header.SetColCount(4);
  header.SetRowCount(3);
  header.SetXllCenter(105.0);
  header.SetYllCenter(-2.25);
  header.SetCellSize(0.0005);
  header.SetNoDataValue(-9999);
  ASSERT_TRUE(header.Write());
  EXPECT_EQ(hytest::ReadFileBytes(dir.File("out.hdr")),
            "ncols           4\n"
            "nrows           3\n"
            "xllcenter       105.000\n"
            "yllcenter       -2.250\n"
            "cellsize        0.001\n"
            "NODATA_value    -9999.000\n");
}

}  // namespace
