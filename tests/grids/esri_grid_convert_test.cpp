#include <gtest/gtest.h>

#include <bit>
#include <filesystem>

#include "binary_grid_test_reader.h"
#include "hy_util/grids/esri_grid_ascii.h"
#include "hy_util/grids/esri_grid_binary.h"
#include "hy_util/grids/esri_grid_helper.h"
#include "hy_util/grids/grid_converter.h"
#include "support/recording_application.h"
#include "support/temp_dir.h"

namespace {

const std::string kHeader = "ncols 3\nnrows 2\nxllcorner 100\nyllcorner 200\ncellsize 10\nNODATA_value -9\n";
const std::string kPrefix = "CHU_File_EsriGrid::ConvertToHYBinaryGridFile(): ";

class EsriGridConvertTest : public ::testing::Test {
 protected:
  // Converts an ASCII grid of the given text; the result of the conversion.
  bool ConvertAscii(const std::string& text) {
    CHU_File_EsriGridASCII grid(dir.Write("g.asc", text).c_str());
    return grid.ConvertToHYBinaryGridFile(Output());
  }
  std::string Output() const { return dir.File("g.hybg"); }
  hytest::DecodedGrid Decoded() const {
    hytest::DecodedGrid grid;
    std::string why;
    EXPECT_TRUE(hytest::DecodeBinaryGrid(hytest::ReadFileBytes(Output()), grid, why)) << why;
    return grid;
  }
  std::vector<std::string> Messages() const {
    std::vector<std::string> texts;
    for (const auto& m : app.messages) texts.push_back(m.kind == HU_MessageKind::Ok ? m.text : "(not OK) " + m.text);
    return texts;
  }

  hytest::RecordingApplication app;
  hytest::TempDir dir;
};

TEST_F(EsriGridConvertTest, AsciiGridBecomesHeaderOffsetTableAndOneStreamPerLine) {
  ASSERT_TRUE(ConvertAscii(kHeader + "1.5 -9 3\n\n4 5 6e2 7\n"));
  const hytest::DecodedGrid out = Decoded();
  EXPECT_EQ(std::tie(out.magic, out.version, out.ncols, out.nrows, out.xll, out.yll, out.cellSize, out.noData),
            std::make_tuple("HYBG", 3, 3, 2, 105.0, 205.0, 10.0, -9.0f));
  EXPECT_EQ(out.offsets, (std::vector<std::uint32_t>{52, 52 + 4 + out.lengths[0]}));  // just after the table, in turn
  EXPECT_EQ(out.rows, (std::vector<std::vector<float>>{{1.5f, -9, 3}, {4, 5, 600}}));  // the extra value is dropped
  EXPECT_TRUE(app.messages.empty());
  EXPECT_EQ(app.progressStops, 1);
}

TEST_F(EsriGridConvertTest, ShortLinesGiveShortRecordsAndMissingValuesArePaddedAfterTheTable) {
  ASSERT_TRUE(ConvertAscii(kHeader + "1 2 3\n4 5\n6\n"));  // 6 values: nothing missing
  EXPECT_EQ(Decoded().rows[1], (std::vector<float>{4, 5}));
  EXPECT_TRUE(app.messages.empty());

  ASSERT_TRUE(ConvertAscii(kHeader + "1 2 3\n4 5\n"));
  EXPECT_EQ(Messages(), std::vector<std::string>{kPrefix + "missing 1 of 6 expected values!"});
  const std::string bytes = hytest::ReadFileBytes(Output());
  EXPECT_EQ(hytest::DecodeField<double>(bytes, 52), -9.0);  // a double where the first record starts
  EXPECT_EQ(hytest::DecodeField<std::uint32_t>(bytes, 44), 52u);

  app.messages.clear();  // a huge claim: the padding stays within the file written
  ASSERT_TRUE(ConvertAscii("ncols 1000000\nnrows 1000000\nxllcorner 0\nyllcorner 0\ncellsize 1\n1 2\n"));
  EXPECT_EQ(Messages(), std::vector<std::string>{kPrefix + "missing 999999999998 of 1000000000000 expected values!"});
  EXPECT_LT(std::filesystem::file_size(Output()), 4000100u);  // header, table and one record
}

TEST_F(EsriGridConvertTest, ConversionStopsBeforeARowWouldStartBeyondTheOffsetLimit) {
  CHU_File_EsriGridASCII grid(dir.Write("g.asc", kHeader + "1 2 3\n4 5 6\n").c_str());
  grid.SetMaxRowOffset(60);  // row 0 starts at 52, row 1 after 60
  EXPECT_FALSE(grid.ConvertToHYBinaryGridFile(Output()));
  EXPECT_FALSE(std::filesystem::exists(Output()));
  EXPECT_EQ(Messages(), std::vector<std::string>{kPrefix + "the output file would pass 4 GiB at row 1 (row offsets "
                                                           "are 32-bit); conversion stopped!"});
  EXPECT_EQ(app.progressStops, 1);
}

TEST_F(EsriGridConvertTest, FloatGridRowsAreCompressedWholeAndShortDataIsRefused) {
  dir.Write("g.hdr", kHeader);
  const std::vector<float> values = {1, 2, 3, 4, -9, 6};
  dir.Write("g.flt", std::string(reinterpret_cast<const char*>(values.data()), 24));
  ASSERT_TRUE(CHU_File_EsriGridBinary(dir.File("g.flt").c_str()).ConvertToHYBinaryGridFile(Output()));
  EXPECT_EQ(Decoded().rows, (std::vector<std::vector<float>>{{1, 2, 3}, {4, -9, 6}}));

  dir.Write("g.hdr", "ncols 100000\nnrows 100000\nxllcorner 0\nyllcorner 0\ncellsize 1\n");
  EXPECT_FALSE(CHU_File_EsriGridBinary(dir.File("g.flt").c_str()).ConvertToHYBinaryGridFile(Output()));
  EXPECT_FALSE(std::filesystem::exists(Output()));
  EXPECT_EQ(Messages(), std::vector<std::string>{kPrefix + "missing 9999999994 of 10000000000 expected values!"});
}

// Grids written by other software (the shared sample corpus, read in place and
// skipped when absent): every one reads and converts, and the converter keeps
// exactly the values that whole-grid reading gives.
TEST(EsriGridCorpusTest, EverySampleReadsAndConvertsToTheSameValues) {
  hytest::TempDir dir;
  int samples = 0;
  std::error_code ec;
  for (const auto& entry : std::filesystem::directory_iterator(HY_CORPUS_DIR "/grids", ec)) {
    const std::string path = entry.path().string(), ext = entry.path().extension().string();
    if (ext != ".asc" && ext != ".flt") continue;
    SCOPED_TRACE(path);
    ++samples;
    const auto grid = CHU_File_EsriGrid_Helper::open(path);
    HU_GridPointArray points;
    ASSERT_TRUE(grid && grid->ReadHeader() && grid->ReadData(points, nullptr));
    std::vector<std::uint32_t> expected, converted;  // bits, so that NaN values compare equal
    for (const auto& p : points) expected.push_back(std::bit_cast<std::uint32_t>(static_cast<float>(p->z)));
    CHU_GridConverter converter({.threads = 2});
    ASSERT_TRUE(converter.Convert(path, dir.File("fast.hybg"))) << converter.GetLastError();
    hytest::DecodedGrid out;
    std::string why;
    ASSERT_TRUE(hytest::DecodeBinaryGrid(hytest::ReadFileBytes(dir.File("fast.hybg")), out, why)) << why;
    for (const auto& row : out.rows)
      for (float v : row)
        if (v != out.noData) converted.push_back(std::bit_cast<std::uint32_t>(v));
    EXPECT_EQ(converted, expected);
    EXPECT_FALSE(expected.empty());
    EXPECT_TRUE(CHU_File_EsriGrid_Helper::open(path)->ConvertToHYBinaryGridFile(dir.File("classic.hybg")));
  }
  if (samples == 0) GTEST_SKIP() << "no sample grids in " HY_CORPUS_DIR "/grids";
}

}  // namespace
