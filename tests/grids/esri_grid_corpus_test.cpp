// Grids written by other software (the shared sample corpus, read in place and
// skipped when absent): every one must read and convert, and the converter must
// keep exactly the values the point reader sees.
#include <gtest/gtest.h>

#include <bit>
#include <filesystem>

#include "binary_grid_test_reader.h"
#include "hy_util/grids/esri_grid_helper.h"
#include "hy_util/grids/grid_converter.h"
#include "support/temp_dir.h"

namespace {

std::vector<std::string> CorpusGrids() {
  std::vector<std::string> paths;
  std::error_code ec;
  for (const auto& entry : std::filesystem::directory_iterator(HY_CORPUS_DIR "/grids", ec)) {
    const std::string ext = entry.path().extension().string();
    if (ext == ".asc" || ext == ".flt") paths.push_back(entry.path().string());
  }
  return paths;
}

// The bits of the data values of the converted file in node order, no-data left out.
std::vector<std::uint32_t> ConvertedData(const std::string& input, const std::string& output) {
  CHU_GridConverter converter({.threads = 2});
  EXPECT_TRUE(converter.Convert(input, output)) << converter.GetLastError();
  hytest::DecodedGrid grid;
  std::string why;
  EXPECT_TRUE(hytest::DecodeBinaryGrid(hytest::ReadFileBytes(output), grid, why)) << why;
  std::vector<std::uint32_t> data;
  for (const auto& row : grid.rows) {
    for (float v : row) {
      if (v != grid.noData) data.push_back(std::bit_cast<std::uint32_t>(v));
    }
  }
  return data;
}

TEST(EsriGridCorpusTest, EverySampleReadsAndConvertsToTheSameValues) {
  const std::vector<std::string> paths = CorpusGrids();
  if (paths.empty()) GTEST_SKIP() << "no sample grids in " HY_CORPUS_DIR "/grids";
  hytest::TempDir dir;
  for (const std::string& path : paths) {
    SCOPED_TRACE(path);
    const auto grid = CHU_File_EsriGrid_Helper::open(path);
    ASSERT_NE(grid, nullptr);
    ASSERT_TRUE(grid->ReadHeader());
    HU_GridPointArray points;
    ASSERT_TRUE(grid->ReadData(points, nullptr));
    std::vector<std::uint32_t> expected;  // bits, so that NaN values compare equal
    for (const auto& p : points) expected.push_back(std::bit_cast<std::uint32_t>(static_cast<float>(p->z)));
    EXPECT_FALSE(expected.empty());
    EXPECT_EQ(ConvertedData(path, dir.File("fast.hybg")), expected);

    const auto classic = CHU_File_EsriGrid_Helper::open(path);
    EXPECT_TRUE(classic->ConvertToHYBinaryGridFile(dir.File("classic.hybg")));
  }
}

}  // namespace
