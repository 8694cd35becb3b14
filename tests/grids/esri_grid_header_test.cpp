#include "hy_util/grids/esri_grid_header.h"

#include <gtest/gtest.h>

#include <clocale>

#include "binary_grid_test_reader.h"
#include "hy_util/core/string_manager.h"
#include "hy_util/grids/esri_grid_ascii.h"
#include "hy_util/grids/grid_converter.h"
#include "support/recording_application.h"
#include "support/temp_dir.h"

namespace {

// Switches the process to a decimal-comma locale for one test, if one is installed.
class DecimalCommaLocale {
 public:
  DecimalCommaLocale() : previous_(std::setlocale(LC_ALL, nullptr)) {
    for (const char* name : {"de_DE.UTF-8", "de_DE.utf8", "fr_FR.UTF-8", "de_DE"})
      if (std::setlocale(LC_ALL, name) != nullptr && *std::localeconv()->decimal_point == ',') return;
    std::setlocale(LC_ALL, previous_.c_str());
  }
  ~DecimalCommaLocale() { std::setlocale(LC_ALL, previous_.c_str()); }

 private:
  std::string previous_;
};

// Every test runs under a decimal-comma locale when one is installed: numbers in
// grid text must read and write the same whatever the process locale is.
class EsriGridHeaderTest : public ::testing::Test {
  DecimalCommaLocale locale_;
};

// The header read from text: ok, ncols, nrows, xllcenter, yllcenter, cell size, no-data.
using HeaderRead = std::tuple<bool, int, int, double, double, double, double>;

HeaderRead ReadHeaderText(const std::string& text) {
  hytest::TempDir dir;
  CHU_File_EsriGridHeader h(dir.Write("grid.hdr", text).c_str());
  int progressRow = 5;
  const bool ok = h.Read(progressRow);
  return {ok, h.GetColCount(), h.GetRowCount(), h.GetXllCenter(), h.GetYllCenter(), h.GetCellSize(), h.GetNoDataValue()};
}

const std::string kTail = "xllcorner 0\nyllcorner 0\ncellsize 1\n";

TEST_F(EsriGridHeaderTest, KeywordsComeInAnyOrderCornersBecomeCentresAndTheCentreWins) {
  EXPECT_EQ(ReadHeaderText("cellsize 10\nNODATA_value -1\nyllcorner 200\n\nxllcorner\t100\nnrows 3\nncols 4\n"),
            HeaderRead(true, 4, 3, 105, 205, 10, -1));  // corner + half a cell
  EXPECT_EQ(ReadHeaderText("ncols 2\r\nnrows 2\r\nxllcorner 100\r\nxllcenter 7.5\r\nyllcenter 3\r\nyllcorner 0\r\n"
                           "cellsize 2.5\r\n"),
            HeaderRead(true, 2, 2, 7.5, 3, 2.5, -9999));  // ends at end of file: NODATA_value is optional
  EXPECT_EQ(ReadHeaderText("ncols 15.0\nnrows +12\nxllcorner 0.100000E+06\nyllcorner .65E6\ncellsize .500E+02\n"),
            HeaderRead(true, 15, 12, 100025, 650025, 50, -9999));
  EXPECT_TRUE(std::isnan(std::get<6>(ReadHeaderText("ncols 1\nnrows 1\n" + kTail + "NODATA_value nan\n"))));
}

TEST_F(EsriGridHeaderTest, IncompleteOrImplausibleHeadersAreRefused) {
  const std::string texts[] = {
      "", "ncols 2\nnrows 2\nxllcorner 0\nyllcorner 0\n",  // no cell size
      "ncols 2\nnrows 2\n1 2\n" + kTail,                 // data before the header is complete
      "ncols 2 3\nnrows 2\n" + kTail,                    // three tokens: not a header line
      "NCOLS 2\nnrows 2\n" + kTail, "ncols two\nnrows 2\n" + kTail, "ncols 1000001\nnrows 2\n" + kTail,
      "ncols 2\nnrows 2\nxllcorner 0\nyllcorner 0\ncellsize 0\n",
      "ncols 2\nnrows 2\nxllcorner nan\nyllcorner 0\ncellsize 1\n"};
  for (const std::string& text : texts) EXPECT_FALSE(std::get<0>(ReadHeaderText(text))) << text;
}

TEST_F(EsriGridHeaderTest, ReadingNrowsStartsProgressAndAFailedHeaderStopsIt) {
  hytest::RecordingApplication app;
  EXPECT_TRUE(std::get<0>(ReadHeaderText("ncols 3\nnrows 250\n" + kTail)));
  EXPECT_EQ(app.progressCaptions, std::vector<std::string>{CStringManager::GetStr("HYSTR_PROGRESS_READING_GRID_FILE")});
  EXPECT_EQ(app.progressSteps, 250);
  EXPECT_EQ(app.progressStops, 0);
  EXPECT_FALSE(std::get<0>(ReadHeaderText("ncols 3\nnrows 250\nxllcorner 0\n")));
  EXPECT_EQ(app.progressStops, 1);
}

TEST_F(EsriGridHeaderTest, FirstDataLineIsGivenBackWholeWhenNoDataValueIsMissing) {
  hytest::TempDir dir;
  CHU_File_EsriGridASCII grid(dir.Write("g.asc", "ncols 2\r\nnrows 1\r\n" + kTail + "  7.5 8\r\n").c_str());
  ASSERT_TRUE(grid.ReadHeader());
  float row[2] = {0, 0};
  ASSERT_TRUE(grid.ReadRowData(row));
  EXPECT_EQ(std::vector<float>(row, row + 2), (std::vector<float>{7.5f, 8.0f}));
}

TEST_F(EsriGridHeaderTest, WritesSixCentreLinesWithThreeDecimals) {
  hytest::TempDir dir;
  CHU_File_EsriGridHeader header(dir.File("out.hdr").c_str(), HU_modeWrite | HU_modeCreate);
  header.SetColCount(4);
  header.SetRowCount(3);
  header.SetXllCenter(105.0);
  header.SetYllCenter(-2.25);
  header.SetCellSize(0.0005);
  ASSERT_TRUE(header.Write());
  EXPECT_EQ(hytest::ReadFileBytes(dir.File("out.hdr")),
            "ncols           4\nnrows           3\nxllcenter       105.000\nyllcenter       -2.250\n"
            "cellsize        0.001\nNODATA_value    -9999.000\n");
}

TEST_F(EsriGridHeaderTest, ConverterReadsNumbersTheSameUnderAnyLocale) {
  hytest::TempDir dir;
  const std::string input = dir.Write("g.asc", "ncols 2\nnrows 1\nxllcorner 0.5\nyllcorner 0\ncellsize 0.25\n1.75 -2.5e1\n");
  CHU_GridConverter converter;
  ASSERT_TRUE(converter.Convert(input, dir.File("g.hybg"))) << converter.GetLastError();
  hytest::DecodedGrid out;
  std::string why;
  ASSERT_TRUE(hytest::DecodeBinaryGrid(hytest::ReadFileBytes(dir.File("g.hybg")), out, why)) << why;
  EXPECT_EQ(std::tie(out.xll, out.rows[0]), std::make_tuple(0.625, std::vector<float>{1.75f, -25.0f}));
}

}  // namespace
