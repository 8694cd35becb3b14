#include <gtest/gtest.h>

#include <cstring>
#include <filesystem>

#include "binary_grid_test_reader.h"
#include "hy_util/grids/esri_grid_ascii.h"
#include "hy_util/grids/esri_grid_binary.h"
#include "support/recording_application.h"
#include "support/temp_dir.h"

namespace {

const std::string kHeader = "ncols 3\nnrows 2\nxllcorner 100\nyllcorner 200\ncellsize 10\nNODATA_value -9\n";
const char* const kPrefix = "CHU_File_EsriGrid::ConvertToHYBinaryGridFile(): ";

hytest::DecodedGrid Decode(const std::string& path) {
  hytest::DecodedGrid grid;
  std::string why;
  EXPECT_TRUE(hytest::DecodeBinaryGrid(hytest::ReadFileBytes(path), grid, why)) << why;
  return grid;
}

TEST(EsriGridConvertTest, AsciiGridBecomesHeaderOffsetTableAndOneStreamPerRow) {
  hytest::RecordingApplication app;
  hytest::TempDir dir;
  CHU_File_EsriGridASCII grid(dir.Write("g.asc", kHeader + "1.5 -9 3\n\n4 5 6e2 7\n").c_str());
  ASSERT_TRUE(grid.ConvertToHYBinaryGridFile(dir.File("g.hybg")));
  const hytest::DecodedGrid out = Decode(dir.File("g.hybg"));
  EXPECT_EQ(out.magic, "HYBG");
  EXPECT_EQ(out.version, 3);
  EXPECT_EQ(out.ncols, 3);
  EXPECT_EQ(out.nrows, 2);
  EXPECT_EQ(out.xll, 105.0);
  EXPECT_EQ(out.yll, 205.0);
  EXPECT_EQ(out.cellSize, 10.0);
  EXPECT_EQ(out.noData, -9.0f);
  ASSERT_EQ(out.offsets.size(), 2u);
  EXPECT_EQ(out.offsets[0], 52u);                         // just after the table
  EXPECT_EQ(out.offsets[1], 52u + 4 + out.lengths[0]);   // records follow each other
  EXPECT_EQ(out.rows[0], (std::vector<float>{1.5f, -9, 3}));  // no-data is kept as it is
  EXPECT_EQ(out.rows[1], (std::vector<float>{4, 5, 600}));    // the extra value is dropped
  EXPECT_TRUE(app.messages.empty());
  EXPECT_EQ(app.progressStops, 1);
}

TEST(EsriGridConvertTest, MissingValuesAreReportedAndPaddedAfterTheOffsetTable) {
  hytest::RecordingApplication app;
  hytest::TempDir dir;
  CHU_File_EsriGridASCII grid(dir.Write("g.asc", kHeader + "1 2 3\n4 5\n").c_str());
  ASSERT_TRUE(grid.ConvertToHYBinaryGridFile(dir.File("g.hybg")));
  ASSERT_EQ(app.messages.size(), 1u);
  EXPECT_EQ(app.messages[0].text, std::string(kPrefix) + "missing 1 of 6 expected values!");
  EXPECT_EQ(app.messages[0].kind, HU_MessageKind::Ok);

  // The classic converter writes the padding where the first record starts.
  const std::string bytes = hytest::ReadFileBytes(dir.File("g.hybg"));
  double padding = 0;
  std::memcpy(&padding, bytes.data() + 52, 8);
  EXPECT_EQ(padding, -9.0);
  EXPECT_EQ(hytest::DecodeField<std::uint32_t>(bytes, 44), 52u);  // the table itself is intact
}

TEST(EsriGridConvertTest, PaddingForAHugeClaimStaysWithinTheFileWritten) {
  hytest::RecordingApplication app;
  hytest::TempDir dir;
  CHU_File_EsriGridASCII grid(
      dir.Write("g.asc", "ncols 1000000\nnrows 1000000\nxllcorner 0\nyllcorner 0\ncellsize 1\n1 2\n").c_str());
  ASSERT_TRUE(grid.ConvertToHYBinaryGridFile(dir.File("g.hybg")));
  EXPECT_EQ(app.messages[0].text, std::string(kPrefix) + "missing 999999999998 of 1000000000000 expected values!");
  EXPECT_LT(std::filesystem::file_size(dir.File("g.hybg")), 4000100u);  // header, table and one record
}

TEST(EsriGridConvertTest, ShortLinesGiveShortRecords) {
  hytest::TempDir dir;
  CHU_File_EsriGridASCII grid(dir.Write("g.asc", kHeader + "1 2 3\n4 5\n6\n").c_str());
  ASSERT_TRUE(grid.ConvertToHYBinaryGridFile(dir.File("g.hybg")));  // 6 values: nothing missing
  const hytest::DecodedGrid out = Decode(dir.File("g.hybg"));
  EXPECT_EQ(out.rows[1], (std::vector<float>{4, 5}));
}

TEST(EsriGridConvertTest, ConversionStopsBeforeARowWouldStartBeyondTheOffsetLimit) {
  hytest::RecordingApplication app;
  hytest::TempDir dir;
  CHU_File_EsriGridASCII grid(dir.Write("g.asc", kHeader + "1 2 3\n4 5 6\n").c_str());
  grid.SetMaxRowOffset(60);  // row 0 starts at 52, row 1 would start later than 60
  EXPECT_FALSE(grid.ConvertToHYBinaryGridFile(dir.File("g.hybg")));
  EXPECT_FALSE(std::filesystem::exists(dir.File("g.hybg")));
  ASSERT_EQ(app.messages.size(), 1u);
  EXPECT_NE(app.messages[0].text.find("would pass 4 GiB at row 1"), std::string::npos);
  EXPECT_EQ(app.progressStops, 1);
}

std::string FloatBytes(const std::vector<float>& values) {
  std::string bytes(values.size() * 4, '\0');
  std::memcpy(bytes.data(), values.data(), bytes.size());
  return bytes;
}

TEST(EsriGridConvertTest, FloatGridRowsAreCompressedWhole) {
  hytest::RecordingApplication app;
  hytest::TempDir dir;
  dir.Write("g.hdr", kHeader);
  CHU_File_EsriGridBinary grid(dir.Write("g.flt", FloatBytes({1, 2, 3, 4, -9, 6})).c_str());
  ASSERT_TRUE(grid.ConvertToHYBinaryGridFile(dir.File("g.hybg")));
  const hytest::DecodedGrid out = Decode(dir.File("g.hybg"));
  EXPECT_EQ(out.rows[0], (std::vector<float>{1, 2, 3}));
  EXPECT_EQ(out.rows[1], (std::vector<float>{4, -9, 6}));
  EXPECT_TRUE(app.messages.empty());
}

TEST(EsriGridConvertTest, ShortFloatDataIsReportedAndNotConverted) {
  hytest::RecordingApplication app;
  hytest::TempDir dir;
  dir.Write("g.hdr", "ncols 100000\nnrows 100000\nxllcorner 0\nyllcorner 0\ncellsize 1\n");
  CHU_File_EsriGridBinary grid(dir.Write("g.flt", FloatBytes({1, 2, 3, 4})).c_str());
  EXPECT_FALSE(grid.ConvertToHYBinaryGridFile(dir.File("g.hybg")));
  EXPECT_FALSE(std::filesystem::exists(dir.File("g.hybg")));
  ASSERT_EQ(app.messages.size(), 1u);
  EXPECT_EQ(app.messages[0].text, std::string(kPrefix) + "missing 9999999996 of 10000000000 expected values!");
}

}  // namespace
