#include "hy_util/grids/binary_grid_file.h"

#include <gtest/gtest.h>

#include <cmath>
#include <filesystem>
#include <random>

#include "grids/binary_grid_test_writer.h"
#include "hy_util/geometry/polygon.h"
#include "support/temp_dir.h"

namespace {

using hytest::TestGrid;

// 4 columns x 3 rows at (100, 200) with 10 m cells: x 100..130, y 200..220.
TestGrid SmallGrid() {
  TestGrid g;
  g.ncols = 4;
  g.nrows = 3;
  g.xll = 100.0;
  g.yll = 200.0;
  g.cell = 10.0;
  for (int r = 0; r < g.nrows; ++r)
    for (int c = 0; c < g.ncols; ++c) g.values.push_back(static_cast<float>(3 * r * r + 7 * c + r * c + 0.25));
  return g;
}

CHU_DPolygon Polygon(std::initializer_list<std::pair<double, double>> vertices) {
  CHU_DPolygon p;
  for (const auto& [x, y] : vertices) p.AddPt(x, y, 0.0);
  return p;
}

class BinaryGridFileTest : public ::testing::Test {
 protected:
  std::string Write(const TestGrid& g, const std::vector<std::string>& rows = {}) {
    return dir.Write("grid.hybg", hytest::GridFileBytes(g, rows));
  }
  hytest::TempDir dir;
  TestGrid grid = SmallGrid();
};

// ---- Header ----

// A header cut short at each field, or with one 32-bit field replaced.
struct HeaderCase {
  std::size_t length;       // bytes kept
  std::size_t patchAt;      // position of the replaced field
  std::uint32_t patchValue;  // 0: nothing replaced
  const char* message;      // '%s' is the file name
};

class HeaderFailureTest : public BinaryGridFileTest, public ::testing::WithParamInterface<HeaderCase> {};

TEST_P(HeaderFailureTest, ReportsWhatIsWrongWithTheHeader) {
  std::string bytes = hytest::GridFileBytes(grid).substr(0, GetParam().length);
  if (GetParam().patchValue != 0) hytest::WriteU32At(bytes, GetParam().patchAt, GetParam().patchValue);
  const std::string path = dir.Write("bad.hybg", bytes);
  CHU_HYBinaryGridFile reader(path);
  float value = 0.0f;
  EXPECT_EQ(reader.GetZValue(110.0, 210.0, value, HYBG_NEAREST), HYBG_ERROR);
  char expected[512];
  std::snprintf(expected, sizeof expected, GetParam().message, path.c_str());
  EXPECT_EQ(reader.GetLastError(), expected);
}

constexpr std::size_t kAll = 1000;

INSTANTIATE_TEST_SUITE_P(
    EachField, HeaderFailureTest,
    ::testing::Values(
        HeaderCase{0, 0, 0, "Couldn't read magic number from header of grid file '%s'."},
        HeaderCase{3, 0, 0, "Couldn't read magic number from header of grid file '%s'."},
        HeaderCase{7, 0, 0, "Couldn't read version number from header of grid file '%s'."},
        HeaderCase{8, 0, 0, "Couldn't read number of columns from header of grid file '%s'."},
        HeaderCase{15, 0, 0, "Couldn't read number of rows from header of grid file '%s'."},
        HeaderCase{16, 0, 0, "Couldn't read lower-left X coordinate from header of grid file '%s'."},
        HeaderCase{31, 0, 0, "Couldn't read lower-left Y coordinate from header of grid file '%s'."},
        HeaderCase{39, 0, 0, "Couldn't read cell size from header of grid file '%s'."},
        HeaderCase{40, 0, 0, "Couldn't read no-data value from header of grid file '%s'."},
        HeaderCase{44, 0, 0, "Couldn't read array of row offsets from header of grid file '%s'."},
        HeaderCase{55, 0, 0, "Couldn't read array of row offsets from header of grid file '%s'."},
        HeaderCase{kAll, 0, 0x44434241u,
                   "File '%s' is not an HY binary grid file or has been corrupted: first 4 bytes are 0x44434241."},
        HeaderCase{kAll, 4, 2, "HY binary grid file '%s' is a different version (2) to expected (3)."},
        HeaderCase{kAll, 12, 0x7fffffffu, "Couldn't read array of row offsets from header of grid file '%s'."}));

TEST_F(BinaryGridFileTest, UnusableShapesAreRefusedBeforeAnythingIsAllocated) {
  for (auto spoil : std::vector<void (*)(TestGrid&)>{
           [](TestGrid& g) { g.ncols = 0; }, [](TestGrid& g) { g.ncols = 2000000000; },
           [](TestGrid& g) { g.cell = 0.0; }, [](TestGrid& g) { g.cell = -1.0; },
           [](TestGrid& g) { g.cell = NAN; }, [](TestGrid& g) { g.xll = INFINITY; },
           [](TestGrid& g) { g.cell = 1e308; }}) {
    TestGrid bad = grid;
    std::string bytes = hytest::GridFileBytes(grid);
    spoil(bad);
    bytes.replace(0, 44, hytest::HeaderBytes(bad));
    const std::string path = dir.Write("bad.hybg", bytes);
    CHU_HYBinaryGridFile reader(path);
    float value = 0.0f;
    EXPECT_EQ(reader.GetZValue(110.0, 210.0, value, HYBG_NEAREST), HYBG_ERROR);
    EXPECT_EQ(reader.GetLastError().rfind("HY binary grid file '" + path + "' has an unusable header", 0), 0u);
  }
}

TEST_F(BinaryGridFileTest, MissingFileIsReportedAndTheHeaderIsReadAgainLater) {
  const std::string path = dir.File("later.hybg");
  CHU_HYBinaryGridFile reader(path);
  float value = 0.0f;
  EXPECT_EQ(reader.GetZValue(110.0, 210.0, value, HYBG_NEAREST), HYBG_ERROR);
  EXPECT_EQ(reader.GetLastError(), "Couldn't open HY binary grid file '" + path + "' for read access.");
  dir.Write("later.hybg", hytest::GridFileBytes(grid));
  EXPECT_EQ(reader.GetZValue(110.0, 210.0, value, HYBG_NEAREST), HYBG_OK);
  EXPECT_EQ(value, grid.At(1, 1));
}

// ---- Each query opens the file ----

TEST_F(BinaryGridFileTest, EveryQueryReadsTheFileAfreshAndOutOfBoundsNeedsNoFile) {
  const std::string path = Write(grid);
  CHU_HYBinaryGridFile reader(path);
  float value = 0.0f;
  ASSERT_EQ(reader.GetZValue(100.0, 220.0, value, HYBG_NEAREST), HYBG_OK);
  TestGrid changed = grid;
  changed.values[0] = 42.0f;
  Write(changed);
  EXPECT_EQ(reader.GetZValue(100.0, 220.0, value, HYBG_NEAREST), HYBG_OK);
  EXPECT_EQ(value, 42.0f);
  std::filesystem::remove(path);
  EXPECT_EQ(reader.GetZValue(99.0, 220.0, value, HYBG_NEAREST), HYBG_NO_DATA);
  EXPECT_EQ(reader.GetZValue(100.0, 220.0, value, HYBG_NEAREST), HYBG_ERROR);
  EXPECT_EQ(reader.GetLastError(), "Couldn't open HY binary grid file '" + path + "' for read access.");
}

TEST_F(BinaryGridFileTest, CopiesKeepTheLoadedHeaderAndTheirOwnOffsetTable) {
  const std::string path = Write(grid);
  CHU_HYBinaryGridFile copy("other");
  float value = 0.0f;
  {
    CHU_HYBinaryGridFile original(path);
    ASSERT_EQ(original.GetZValue(110.0, 210.0, value, HYBG_NEAREST), HYBG_OK);
    copy = original;
  }
  std::filesystem::remove(path);
  CHU_HYBinaryGridFile second(copy);
  // Loaded header: the bounds check answers without opening the missing file.
  EXPECT_EQ(second.GetZValue(500.0, 210.0, value, HYBG_NEAREST), HYBG_NO_DATA);
  Write(grid);
  EXPECT_EQ(second.GetZValue(130.0, 200.0, value, HYBG_NEAREST), HYBG_OK);
  EXPECT_EQ(value, grid.At(2, 3));
}

// ---- Nearest ----

TEST_F(BinaryGridFileTest, NearestAtEveryNodeGivesThatNode) {
  CHU_HYBinaryGridFile reader(Write(grid));
  for (int r = 0; r < grid.nrows; ++r) {
    for (int c = 0; c < grid.ncols; ++c) {
      float value = 0.0f;
      ASSERT_EQ(reader.GetZValue(grid.NodeX(c), grid.NodeY(r), value, HYBG_NEAREST), HYBG_OK);
      EXPECT_EQ(value, grid.At(r, c)) << r << "," << c;
    }
  }
}

TEST_F(BinaryGridFileTest, NearestTieGoesWestAndNorthAndPastTheMiddleGoesEastAndSouth) {
  CHU_HYBinaryGridFile reader(Write(grid));
  float value = 0.0f;
  ASSERT_EQ(reader.GetZValue(115.0, 205.0, value, HYBG_NEAREST), HYBG_OK);
  EXPECT_EQ(value, grid.At(1, 1));
  ASSERT_EQ(reader.GetZValue(115.001, 204.999, value, HYBG_NEAREST), HYBG_OK);
  EXPECT_EQ(value, grid.At(2, 2));
}

TEST_F(BinaryGridFileTest, BoundsAreInsideAndBeyondIsNoDataWithTheBoundsMessage) {
  CHU_HYBinaryGridFile reader(Write(grid));
  float value = 0.0f;
  EXPECT_EQ(reader.GetZValue(130.0, 220.0, value, HYBG_BILINEAR), HYBG_OK);
  EXPECT_EQ(value, grid.At(0, 3));
  value = 7.0f;
  EXPECT_EQ(reader.GetZValue(130.0001, 210.0, value, HYBG_NEAREST), HYBG_NO_DATA);
  EXPECT_EQ(value, 7.0f);
  EXPECT_EQ(reader.GetLastError(),
            "Given longitude, latitude coordinates (130.0001, 210.0000) are outside bounds of grid (in file '" +
                dir.File("grid.hybg") + "'). Bounds of grid are (100.0000, 200.0000) to (130.0000, 220.0000).");
  EXPECT_EQ(reader.GetZValue(NAN, 210.0, value, HYBG_NEAREST), HYBG_NO_DATA);
}

TEST_F(BinaryGridFileTest, NullNodeIsNoDataAndLeavesTheValue) {
  grid.values[5] = grid.noData;  // row 1, column 1
  CHU_HYBinaryGridFile reader(Write(grid));
  float value = 3.0f;
  EXPECT_EQ(reader.GetZValue(111.0, 209.0, value, HYBG_NEAREST), HYBG_NO_DATA);
  EXPECT_EQ(value, 3.0f);
  EXPECT_EQ(reader.GetLastError(), "Grid file '" + dir.File("grid.hybg") +
                                       "' contains no data for given longitude, latitude coordinates "
                                       "(111.0000, 209.0000).");
  EXPECT_EQ(reader.GetZValue(111.0, 209.0, value, static_cast<HYBG_ValueInterpolationMethod>(7)), HYBG_NO_DATA);
}

// ---- Bilinear ----

TEST_F(BinaryGridFileTest, BilinearOnTheEastAndSouthEdgesInterpolatesAlongTheEdge) {
  CHU_HYBinaryGridFile reader(Write(grid));
  float value = 0.0f;
  ASSERT_EQ(reader.GetZValue(130.0, 212.5, value, HYBG_BILINEAR), HYBG_OK);
  EXPECT_NEAR(value, 0.25 * grid.At(0, 3) + 0.75 * grid.At(1, 3), 1e-5);
  ASSERT_EQ(reader.GetZValue(107.5, 200.0, value, HYBG_BILINEAR), HYBG_OK);
  EXPECT_NEAR(value, 0.25 * grid.At(2, 0) + 0.75 * grid.At(2, 1), 1e-5);
}

TEST_F(BinaryGridFileTest, BilinearExactlyOnANodeWithNullNeighboursGivesTheNode) {
  for (float& v : grid.values) v = grid.noData;
  grid.values[5] = 12.5f;
  CHU_HYBinaryGridFile reader(Write(grid));
  float value = 0.0f;
  ASSERT_EQ(reader.GetZValue(110.0, 210.0, value, HYBG_BILINEAR), HYBG_OK);
  EXPECT_EQ(value, 12.5f);
  EXPECT_EQ(reader.GetZValue(110.5, 210.0, value, HYBG_BILINEAR), HYBG_NO_DATA);
}

// Every combination of valid nodes in one cell, at points spread over the cell,
// against an independent computation: bilinear with four nodes, the plane through
// three inside their triangle, the line through two adjacent ones, nothing else.
class BilinearMaskTest : public BinaryGridFileTest, public ::testing::WithParamInterface<int> {};

bool Expected(int mask, const float z[4], double tx, double ty, double& out) {
  const double px[4] = {0, 1, 0, 1}, py[4] = {0, 0, 1, 1};  // UL UR LL LR; ty grows southwards
  std::vector<int> valid;
  for (int i = 0; i < 4; ++i)
    if (mask & (1 << i)) valid.push_back(i);
  if (valid.size() == 4) {
    out = z[0] * (1 - tx) * (1 - ty) + z[1] * tx * (1 - ty) + z[2] * (1 - tx) * ty + z[3] * tx * ty;
    return true;
  }
  if (valid.size() == 3) {
    const int a = valid[0], b = valid[1], c = valid[2];
    const double det = (py[b] - py[c]) * (px[a] - px[c]) + (px[c] - px[b]) * (py[a] - py[c]);
    const double wa = ((py[b] - py[c]) * (tx - px[c]) + (px[c] - px[b]) * (ty - py[c])) / det;
    const double wb = ((py[c] - py[a]) * (tx - px[c]) + (px[a] - px[c]) * (ty - py[c])) / det;
    const double wc = 1 - wa - wb;
    if (wa < -1e-12 || wb < -1e-12 || wc < -1e-12) return false;
    out = wa * z[a] + wb * z[b] + wc * z[c];
    return true;
  }
  if (valid.size() == 2) {
    const int a = valid[0], b = valid[1];
    if (px[a] == px[b] && tx == px[a]) {
      out = z[a] * (1 - ty) + z[b] * ty;
      return true;
    }
    if (py[a] == py[b] && ty == py[a]) {
      out = z[a] * (1 - tx) + z[b] * tx;
      return true;
    }
  }
  return false;
}

TEST_P(BilinearMaskTest, MatchesAnIndependentInterpolation) {
  const int mask = GetParam();
  // The cell between rows 0-1 and columns 0-1; the nodes outside it are valid.
  const float z[4] = {11.0f, 23.0f, 37.0f, 5.0f};
  const int index[4] = {0, 1, 4, 5};
  for (int i = 0; i < 4; ++i) grid.values[index[i]] = (mask & (1 << i)) ? z[i] : grid.noData;
  CHU_HYBinaryGridFile reader(Write(grid));
  const double fractions[][2] = {{0.25, 0.25}, {0.75, 0.25}, {0.25, 0.75}, {0.75, 0.75}, {0.5, 0.0},
                                 {0.0, 0.5},   {0.5, 0.5},   {0.625, 0.25}, {0.25, 0.625}, {0.875, 0.125}};
  for (const auto& f : fractions) {
    float value = -1.0f;
    double expected = 0.0;
    const bool ok = Expected(mask, z, f[0], f[1], expected);
    const HYBG_ResultCode code = reader.GetZValue(100.0 + 10.0 * f[0], 220.0 - 10.0 * f[1], value, HYBG_BILINEAR);
    ASSERT_EQ(code, ok ? HYBG_OK : HYBG_NO_DATA) << "mask " << mask << " at " << f[0] << "," << f[1];
    if (ok) {
      EXPECT_NEAR(value, expected, 1e-4) << "mask " << mask << " at " << f[0] << "," << f[1];
    }
  }
}

INSTANTIATE_TEST_SUITE_P(AllMasks, BilinearMaskTest, ::testing::Range(0, 16));

// ---- Polygon average ----

struct Reference {
  HYBG_ResultCode code;
  bool hasAverage;
  float average;
};

// Every node of the grid against the polygon, independent of the reader's ranges.
Reference BruteForce(const TestGrid& g, const CHU_DPolygon& p) {
  double left = 1e300, right = -1e300, bottom = 1e300, top = -1e300;
  for (int i = 0; i < p.GetCount(); ++i) {
    left = std::min(left, p.GetAt(i)->x), right = std::max(right, p.GetAt(i)->x);
    bottom = std::min(bottom, p.GetAt(i)->y), top = std::max(top, p.GetAt(i)->y);
  }
  const double xmax = g.NodeX(g.ncols - 1), ymax = g.NodeY(0);
  if (right < g.xll || left > xmax || top < g.yll || bottom > ymax) return {HYBG_NO_DATA, false, 0.0f};
  bool partial = left <= g.xll || right >= xmax || bottom <= g.yll || top >= ymax;
  double sum = 0.0;
  long count = 0;
  for (int r = 0; r < g.nrows; ++r) {
    for (int c = 0; c < g.ncols; ++c) {
      if (!p.PtInPoly(CHU_DPoint(g.NodeX(c), g.NodeY(r)))) continue;
      if (g.At(r, c) == g.noData) {
        partial = true;
      } else {
        sum += g.At(r, c);
        ++count;
      }
    }
  }
  const float average = count > 0 ? static_cast<float>(sum / count) : 0.0f;
  if (!partial) return {HYBG_OK, count > 0, average};
  return {count > 0 ? HYBG_PARTIAL : HYBG_NO_DATA, count > 0, average};
}

TEST_F(BinaryGridFileTest, AverageOfRandomPolygonsMatchesABruteForceReference) {
  TestGrid big;
  big.ncols = 23;
  big.nrows = 17;
  big.xll = -50.0;
  big.yll = 1000.0;
  big.cell = 2.5;
  std::mt19937 rng(11);
  std::uniform_real_distribution<double> u(0.0, 1.0);
  for (int i = 0; i < big.ncols * big.nrows; ++i) big.values.push_back(u(rng) < 0.1 ? big.noData : 100.0f * u(rng));
  CHU_HYBinaryGridFile reader(Write(big));
  for (int i = 0; i < 300; ++i) {
    CHU_DPolygon p;
    const int n = 3 + static_cast<int>(u(rng) * 8);
    const double cx = -60.0 + 70.0 * u(rng), cy = 990.0 + 55.0 * u(rng);
    for (int k = 0; k < n; ++k) {
      const double angle = 6.283185307179586 * k / n, radius = 2.0 + 25.0 * u(rng);
      double x = cx + radius * std::cos(angle), y = cy + radius * std::sin(angle);
      if (u(rng) < 0.5) x = big.xll + std::round((x - big.xll) / big.cell) * big.cell;  // on node lines
      if (u(rng) < 0.5) y = big.yll + std::round((y - big.yll) / big.cell) * big.cell;
      p.AddPt(x, y, 0.0);
    }
    const Reference ref = BruteForce(big, p);
    float average = -123.0f;
    ASSERT_EQ(reader.GetAverageZValueOverPolygon(p, average), ref.code) << "polygon " << i;
    EXPECT_EQ(average, ref.hasAverage ? ref.average : -123.0f) << "polygon " << i;
  }
}

TEST_F(BinaryGridFileTest, PolygonTouchingTheEdgeIsPartialAlthoughAllNodesHaveData) {
  CHU_HYBinaryGridFile reader(Write(grid));
  float average = 0.0f;
  EXPECT_EQ(reader.GetAverageZValueOverPolygon(Polygon({{100, 205}, {125, 205}, {125, 215}, {100, 215}}), average),
            HYBG_PARTIAL);
  EXPECT_EQ(average, static_cast<float>((static_cast<double>(grid.At(1, 1)) + grid.At(1, 2)) / 2));
  EXPECT_EQ(reader.GetLastError(),
            "Polygon partially covers a null-data area of the grid (in file '" + dir.File("grid.hybg") + "').");
}

TEST_F(BinaryGridFileTest, PolygonEnclosingNoNodeIsOkAndLeavesTheAverage) {
  CHU_HYBinaryGridFile reader(Write(grid));
  float average = 99.0f;
  EXPECT_EQ(reader.GetAverageZValueOverPolygon(Polygon({{101, 201}, {109, 201}, {109, 209}}), average), HYBG_OK);
  EXPECT_EQ(average, 99.0f);
}

TEST_F(BinaryGridFileTest, PolygonOverNullsOnlyIsNoDataAndOutsideIsNoDataWithBounds) {
  grid.values[5] = grid.noData;
  CHU_HYBinaryGridFile reader(Write(grid));
  float average = 99.0f;
  EXPECT_EQ(reader.GetAverageZValueOverPolygon(Polygon({{105, 205}, {115, 205}, {115, 215}, {105, 215}}), average),
            HYBG_NO_DATA);
  EXPECT_EQ(reader.GetLastError(),
            "Polygon entirely covers a null-data area of the grid (in file '" + dir.File("grid.hybg") + "').");
  EXPECT_EQ(reader.GetAverageZValueOverPolygon(Polygon({{131, 205}, {140, 205}, {140, 215}}), average), HYBG_NO_DATA);
  EXPECT_EQ(reader.GetLastError(), "Polygon is outside bounds of grid (in file '" + dir.File("grid.hybg") +
                                       "'). Bounds of grid are (100.0000, 200.0000) to (130.0000, 220.0000).");
  EXPECT_EQ(reader.GetAverageZValueOverPolygon(CHU_DPolygon(), average), HYBG_NO_DATA);
  EXPECT_EQ(average, 99.0f);
}

// ---- Damaged rows ----

struct CorruptionCase {
  const char* name;
  void (*spoil)(std::string& bytes, const TestGrid& g);
  const char* message;  // after "HY binary grid file '<path>' may be corrupt: "
};

class CorruptRowTest : public BinaryGridFileTest, public ::testing::WithParamInterface<CorruptionCase> {};

TEST_P(CorruptRowTest, PointAndPolygonQueriesFailWithTheRowMessage) {
  std::string bytes = hytest::GridFileBytes(grid);
  GetParam().spoil(bytes, grid);
  const std::string path = dir.Write("bad.hybg", bytes);
  CHU_HYBinaryGridFile reader(path);
  float value = 0.0f;
  const std::string expected = "HY binary grid file '" + path + "' may be corrupt: " + GetParam().message;
  EXPECT_EQ(reader.GetZValue(110.0, 210.0, value, HYBG_NEAREST), HYBG_ERROR);
  EXPECT_EQ(reader.GetLastError(), expected);
  EXPECT_EQ(reader.GetAverageZValueOverPolygon(Polygon({{105, 205}, {115, 205}, {115, 215}}), value), HYBG_ERROR);
  EXPECT_EQ(reader.GetLastError(), expected);
  EXPECT_EQ(reader.GetZValue(110.0, 220.0, value, HYBG_NEAREST), HYBG_OK);  // other rows still read
}

INSTANTIATE_TEST_SUITE_P(
    EachStep, CorruptRowTest,
    ::testing::Values(
        CorruptionCase{"OffsetBeyondTheFile",
                       [](std::string& b, const TestGrid&) { hytest::WriteU32At(b, hytest::OffsetEntryPosition(1), 0xFFFFFFF0u); },
                       "could not seek to file offset 4294967280 (0xFFFFFFF0)."},
        CorruptionCase{"LengthCutOff",
                       [](std::string& b, const TestGrid&) {
                         hytest::WriteU32At(b, hytest::OffsetEntryPosition(1), static_cast<std::uint32_t>(b.size() - 2));
                       },
                       "could not read length of compressed data for row #1."},
        CorruptionCase{"LengthPastTheEnd",
                       [](std::string& b, const TestGrid&) {
                         hytest::WriteU32At(b, hytest::ReadU32At(b, hytest::OffsetEntryPosition(1)), 0x7FFFFFFFu);
                       },
                       "could not read compressed data for row #1."},
        CorruptionCase{"GarbageStream",
                       [](std::string& b, const TestGrid&) {
                         const std::size_t at = hytest::ReadU32At(b, hytest::OffsetEntryPosition(1)) + 4;
                         for (std::size_t i = at; i < at + 6; ++i) b[i] = static_cast<char>(0xA5);
                       },
                       "could not decompress data for row #1."}),
    [](const auto& info) { return std::string(info.param.name); });

TEST_F(BinaryGridFileTest, RowInflatingPastItsWidthIsCorruptAndAShortRowReadsAsNoData) {
  std::vector<float> longRow(grid.ncols + 1, 1.0f), shortRow(grid.ncols - 1, 2.0f);
  std::vector<std::string> streams(grid.nrows);
  streams[0] = hytest::ZlibStream(longRow.data(), 4 * longRow.size());
  streams[1] = hytest::ZlibStream(shortRow.data(), 4 * shortRow.size());
  const std::string path = Write(grid, streams);
  CHU_HYBinaryGridFile reader(path);
  float value = 0.0f;
  EXPECT_EQ(reader.GetZValue(100.0, 220.0, value, HYBG_NEAREST), HYBG_ERROR);
  EXPECT_EQ(reader.GetLastError(),
            "HY binary grid file '" + path + "' may be corrupt: could not decompress data for row #0.");
  EXPECT_EQ(reader.GetZValue(120.0, 210.0, value, HYBG_NEAREST), HYBG_OK);
  EXPECT_EQ(value, 2.0f);
  EXPECT_EQ(reader.GetZValue(130.0, 210.0, value, HYBG_NEAREST), HYBG_NO_DATA);
}

}  // namespace
