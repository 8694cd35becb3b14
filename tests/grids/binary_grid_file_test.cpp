#include "hy_util/grids/binary_grid_file.h"

#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <cstring>
#include <filesystem>
#include <random>

#include "grids/binary_grid_test_writer.h"
#include "hy_util/geometry/polygon.h"
#include "hy_util/geometry/rect.h"
#include "support/temp_dir.h"

namespace {

using hytest::TestGrid;

CHU_DPolygon Polygon(std::initializer_list<std::pair<double, double>> vertices) {
  CHU_DPolygon p;
  for (const auto& [x, y] : vertices) p.AddPt(x, y, 0.0);
  return p;
}

// A 4 x 3 grid at (100, 200) with 10 m cells: x 100..130, y 200..220, distinct values.
class BinaryGridFileTest : public ::testing::Test {
 protected:
  std::string Write(const TestGrid& g, const std::vector<std::string>& rows = {}) {
    return dir.Write("grid.hybg", hytest::GridFileBytes(g, rows));
  }
  std::string WriteBytes(const std::string& bytes) { return dir.Write("grid.hybg", bytes); }
  // The grid's file with the field at byte position at set to v.
  template <typename T>
  std::string Patched(std::size_t at, T v) const {
    std::string bytes = hytest::GridFileBytes(grid);
    std::memcpy(bytes.data() + at, &v, sizeof v);
    return bytes;
  }
  // The code of a nearest-node query at (x, y); value receives the answer.
  HYBG_ResultCode Nearest(CHU_HYBinaryGridFile& reader, double x, double y) {
    return reader.GetZValue(x, y, value, HYBG_NEAREST);
  }
  std::string Path() const { return dir.File("grid.hybg"); }
  // The text with its "%s" replaced by the grid file's path.
  std::string Named(std::string text) const { return text.replace(text.find("%s"), 2, Path()); }

  hytest::TempDir dir;
  TestGrid grid = hytest::MakeGrid(4, 3, 100.0, 200.0, 10.0, [](int r, int c) { return 3 * r * r + 7 * c + r * c + 0.25f; });
  float value = 0.0f;
};

// ---- Header ----

TEST_F(BinaryGridFileTest, HeaderCutShortWithAWrongFieldOrAnUnusableShapeIsRefusedWithItsMessage) {
  const std::string whole = hytest::GridFileBytes(grid);
  std::vector<std::pair<std::string, std::string>> cases = {
      {Patched(0, 0x44434241u), "File '%s' is not an HY binary grid file or has been corrupted: first 4 bytes are 0x44434241."},
      {Patched(4, 2), "HY binary grid file '%s' is a different version (2) to expected (3)."},
      {Patched(12, 0x7fffffff), "Couldn't read array of row offsets from header of grid file '%s'."}};  // huge nrows
  // Shapes no reader could work on are refused before anything is allocated.
  const std::string unusable = "HY binary grid file '%s' has an unusable header: ";
  for (const auto& [bytes, shape] : std::vector<std::pair<std::string, std::string>>{
           {Patched(8, 0), "0 columns, 3 rows, cell size 10, lower-left node (100, 200)."},
           {Patched(8, 2000000000), "2000000000 columns, 3 rows, cell size 10, lower-left node (100, 200)."},
           {Patched(32, 0.0), "4 columns, 3 rows, cell size 0, lower-left node (100, 200)."},
           {Patched(32, -1.0), "4 columns, 3 rows, cell size -1, lower-left node (100, 200)."},
           {Patched(32, 1e308), "4 columns, 3 rows, cell size 1e+308, lower-left node (100, 200)."},  // extent overflows
           {Patched(32, double{NAN}), "4 columns, 3 rows, cell size nan, lower-left node (100, 200)."},
           {Patched(16, double{INFINITY}), "4 columns, 3 rows, cell size 10, lower-left node (inf, 200)."}})
    cases.emplace_back(bytes, unusable + shape);
  for (const auto& [length, field] : std::vector<std::pair<std::size_t, std::string>>{
           {0, "magic number"}, {3, "magic number"}, {7, "version number"}, {8, "number of columns"},
           {15, "number of rows"}, {16, "lower-left X coordinate"}, {31, "lower-left Y coordinate"},
           {39, "cell size"}, {40, "no-data value"}, {44, "array of row offsets"}, {55, "array of row offsets"}})
    cases.emplace_back(whole.substr(0, length), "Couldn't read " + field + " from header of grid file '%s'.");
  for (const auto& [bytes, message] : cases) {
    CHU_HYBinaryGridFile reader(WriteBytes(bytes));
    EXPECT_EQ(Nearest(reader, 110, 210), HYBG_ERROR);
    EXPECT_EQ(reader.GetLastError(), Named(message));
  }
}

// ---- Each query opens the file; the header is read once; copies keep it ----

TEST_F(BinaryGridFileTest, EveryQueryOpensTheFileAFailedHeaderIsReadAgainAndCopiesKeepTheLoadedOne) {
  CHU_HYBinaryGridFile copy("other");
  {
    CHU_HYBinaryGridFile reader(Path());
    EXPECT_EQ(Nearest(reader, 110, 210), HYBG_ERROR);
    EXPECT_EQ(reader.GetLastError(), Named("Couldn't open HY binary grid file '%s' for read access."));
    Write(grid);
    ASSERT_EQ(Nearest(reader, 100, 220), HYBG_OK);
    grid.values[0] = 42.0f;
    Write(grid);
    ASSERT_EQ(Nearest(reader, 100, 220), HYBG_OK);
    EXPECT_EQ(value, 42.0f);
    copy = reader;
  }
  std::filesystem::remove(Path());
  EXPECT_EQ(Nearest(copy, 99, 220), HYBG_NO_DATA);  // the copied bounds need no file
  EXPECT_EQ(Nearest(copy, 100, 220), HYBG_ERROR);
  Write(grid);
  CHU_HYBinaryGridFile second(copy);
  EXPECT_EQ(Nearest(second, 130, 200), HYBG_OK);  // through the copied offset table
  EXPECT_EQ(value, grid.At(2, 3));
}

// ---- Point values ----

TEST_F(BinaryGridFileTest, PointValuesComeFromTheNearestOrSurroundingNodesOrGiveNoDataWithTheirMessage) {
  grid.values[5] = grid.noData;  // node (110, 210)
  CHU_HYBinaryGridFile reader(Write(grid));
  const auto bad = static_cast<HYBG_ValueInterpolationMethod>(7);
  const struct {
    double x, y;
    HYBG_ValueInterpolationMethod method;
    HYBG_ResultCode code;
    double value;  // 7 when left untouched
    std::string message;
  } cases[] = {
      {130, 220, HYBG_BILINEAR, HYBG_OK, grid.At(0, 3), ""},  // north-east corner
      {130, 212.5, HYBG_BILINEAR, HYBG_OK, 0.25 * grid.At(0, 3) + 0.75 * grid.At(1, 3), ""},  // along the east edge
      {107.5, 200, HYBG_BILINEAR, HYBG_OK, 0.25 * grid.At(2, 0) + 0.75 * grid.At(2, 1), ""},  // along the south edge
      {130.0001, 210, HYBG_NEAREST, HYBG_NO_DATA, 7,
       "Given longitude, latitude coordinates (130.0001, 210.0000) are outside bounds of grid (in file '%s'). Bounds "
       "of grid are (100.0000, 200.0000) to (130.0000, 220.0000)."},
      {NAN, 210, HYBG_NEAREST, HYBG_NO_DATA, 7, ""},
      {111, 209, HYBG_NEAREST, HYBG_NO_DATA, 7,
       "Grid file '%s' contains no data for given longitude, latitude coordinates (111.0000, 209.0000)."},
      {115, 205, HYBG_NEAREST, HYBG_NO_DATA, 7, ""},  // a tie goes to the west column and north row: the null node
      {115.001, 204.999, HYBG_NEAREST, HYBG_OK, grid.At(2, 2), ""},
      {120, 210, bad, HYBG_NO_DATA, 7, ""}};
  for (const auto& c : cases) {
    value = 7.0f;
    EXPECT_EQ(reader.GetZValue(c.x, c.y, value, c.method), c.code) << c.x << "," << c.y;
    EXPECT_NEAR(value, c.value, 1e-5) << c.x << "," << c.y;
    if (!c.message.empty()) { EXPECT_EQ(reader.GetLastError(), Named(c.message)); }
  }
  for (int r = 0; r < grid.nrows; ++r) {
    for (int c = 0; c < grid.ncols; ++c) {
      value = 7.0f;
      EXPECT_EQ(Nearest(reader, grid.NodeX(c), grid.NodeY(r)), grid.At(r, c) == grid.noData ? HYBG_NO_DATA : HYBG_OK);
      EXPECT_EQ(value, grid.At(r, c) == grid.noData ? 7.0f : grid.At(r, c)) << r << "," << c;
    }
  }
}

TEST_F(BinaryGridFileTest, BilinearExactlyOnANodeWithNullNeighboursGivesTheNode) {
  for (float& v : grid.values) v = grid.noData;
  grid.values[5] = 12.5f;
  CHU_HYBinaryGridFile reader(Write(grid));
  ASSERT_EQ(reader.GetZValue(110, 210, value, HYBG_BILINEAR), HYBG_OK);
  EXPECT_EQ(value, 12.5f);
  EXPECT_EQ(reader.GetZValue(110.5, 210, value, HYBG_BILINEAR), HYBG_NO_DATA);  // no fall-back to the node
}

// The value expected in a unit cell from the valid ones of z (UL, UR, LL, LR; node
// i at x = i & 1, y = i >> 1 growing southwards): bilinear with four nodes, the
// plane through three inside their right triangle, linear on the side joining two.
bool Expected(int mask, const float z[4], double tx, double ty, double& out) {
  const auto px = [](int i) { return static_cast<double>(i & 1); };
  const auto py = [](int i) { return static_cast<double>(i >> 1); };
  const int count = std::popcount(static_cast<unsigned>(mask));
  if (count == 4) {
    out = z[0] * (1 - tx) * (1 - ty) + z[1] * tx * (1 - ty) + z[2] * (1 - tx) * ty + z[3] * tx * ty;
    return true;
  }
  if (count == 3) {  // o: the right-angle node, opposite the missing one
    const int o = 3 - std::countr_zero(static_cast<unsigned>(~mask & 15));
    const double ax = std::fabs(tx - px(o)), ay = std::fabs(ty - py(o));
    out = z[o] + (z[o ^ 1] - z[o]) * ax + (z[o ^ 2] - z[o]) * ay;
    return ax + ay <= 1 + 1e-12;
  }
  const int a = std::countr_zero(static_cast<unsigned>(mask)), b = 31 - std::countl_zero(static_cast<unsigned>(mask));
  if (count != 2 || (a ^ b) == 3) return false;  // one node, none, or a diagonal pair
  const bool sameRow = (a ^ b) == 1;
  const double t = sameRow ? tx - px(a) : ty - py(a);
  out = z[a] * (1 - t) + z[b] * t;
  return sameRow ? ty == py(a) : tx == px(a);
}

class BilinearMaskTest : public BinaryGridFileTest, public ::testing::WithParamInterface<int> {};

TEST_P(BilinearMaskTest, MatchesAnIndependentInterpolation) {
  const int mask = GetParam();
  const float z[4] = {11.0f, 23.0f, 37.0f, 5.0f};  // the cell of rows 0-1, columns 0-1
  const int index[4] = {0, 1, 4, 5};
  for (int i = 0; i < 4; ++i) grid.values[index[i]] = (mask & (1 << i)) ? z[i] : grid.noData;
  CHU_HYBinaryGridFile reader(Write(grid));
  const double fractions[][2] = {{0.25, 0.25}, {0.75, 0.25}, {0.25, 0.75}, {0.75, 0.75},  {0.5, 0.0},
                                 {0.0, 0.5},   {0.5, 0.5},   {0.625, 0.25}, {0.25, 0.625}, {0.875, 0.125}};
  for (const auto& f : fractions) {
    double expected = 0.0;
    const bool ok = Expected(mask, z, f[0], f[1], expected);
    ASSERT_EQ(reader.GetZValue(100 + 10 * f[0], 220 - 10 * f[1], value, HYBG_BILINEAR), ok ? HYBG_OK : HYBG_NO_DATA)
        << "mask " << mask << " at " << f[0] << "," << f[1];
    if (ok) { EXPECT_NEAR(value, expected, 1e-4) << "mask " << mask << " at " << f[0] << "," << f[1]; }
  }
}

INSTANTIATE_TEST_SUITE_P(AllMasks, BilinearMaskTest, ::testing::Range(0, 16));

// ---- Polygon average ----

// The code and average from every node of the grid, independent of the reader's ranges.
std::pair<HYBG_ResultCode, float> BruteForce(const TestGrid& g, const CHU_DPolygon& p, float untouched) {
  CHU_DRect e;
  p.GetExtent(&e);
  const double xmax = g.NodeX(g.ncols - 1), ymax = g.NodeY(0);
  if (e.Right() < g.xll || e.Left() > xmax || e.Top() < g.yll || e.Bottom() > ymax) return {HYBG_NO_DATA, untouched};
  bool partial = e.Left() <= g.xll || e.Right() >= xmax || e.Bottom() <= g.yll || e.Top() >= ymax;
  double sum = 0.0;
  long count = 0;
  for (int r = 0; r < g.nrows; ++r) {
    for (int c = 0; c < g.ncols; ++c) {
      if (!p.PtInPoly(CHU_DPoint(g.NodeX(c), g.NodeY(r)))) continue;
      partial |= g.At(r, c) == g.noData;
      if (g.At(r, c) != g.noData) sum += g.At(r, c), ++count;
    }
  }
  const float average = count > 0 ? static_cast<float>(sum / count) : untouched;
  return {!partial ? HYBG_OK : count > 0 ? HYBG_PARTIAL : HYBG_NO_DATA, average};
}

TEST_F(BinaryGridFileTest, AverageOfRandomPolygonsMatchesABruteForceReference) {
  std::mt19937 rng(11);
  std::uniform_real_distribution<double> u(0.0, 1.0);
  const TestGrid big = hytest::MakeGrid(23, 17, -50.0, 1000.0, 2.5, [&](int, int) {
    return u(rng) < 0.1 ? -9999.0f : static_cast<float>(100.0 * u(rng));
  });
  CHU_HYBinaryGridFile reader(Write(big));
  auto snap = [](double v, double origin) { return origin + std::round((v - origin) / 2.5) * 2.5; };
  for (int i = 0; i < 300; ++i) {
    CHU_DPolygon p;
    const int n = 3 + static_cast<int>(u(rng) * 8);
    const double cx = -60.0 + 70.0 * u(rng), cy = 990.0 + 55.0 * u(rng);
    for (int k = 0; k < n; ++k) {
      const double angle = 6.283185307179586 * k / n, radius = 2.0 + 25.0 * u(rng);
      const double x = cx + radius * std::cos(angle), y = cy + radius * std::sin(angle);
      p.AddPt(u(rng) < 0.5 ? snap(x, big.xll) : x, u(rng) < 0.5 ? snap(y, big.yll) : y, 0.0);  // often on node lines
    }
    const auto [code, expected] = BruteForce(big, p, -123.0f);
    float average = -123.0f;
    ASSERT_EQ(reader.GetAverageZValueOverPolygon(p, average), code) << "polygon " << i;
    EXPECT_EQ(average, expected) << "polygon " << i;
  }
}

TEST_F(BinaryGridFileTest, PolygonCodesAndMessagesFollowTheNodesItEncloses) {
  grid.values[6] = grid.noData;  // node (120, 210)
  const struct {
    CHU_DPolygon polygon;
    HYBG_ResultCode code;
    float average;  // 99 when left untouched
    std::string message;
  } cases[] = {
      {Polygon({{100, 205}, {115, 205}, {115, 215}, {100, 215}}), HYBG_PARTIAL, grid.At(1, 1),
       Named("Polygon partially covers a null-data area of the grid (in file '%s').")},  // only touches the west edge
      {Polygon({{101, 201}, {109, 201}, {109, 209}}), HYBG_OK, 99.0f, ""},  // encloses no node
      {Polygon({{115, 205}, {125, 205}, {125, 215}, {115, 215}}), HYBG_NO_DATA, 99.0f,
       Named("Polygon entirely covers a null-data area of the grid (in file '%s').")},
      {Polygon({{131, 205}, {140, 205}, {140, 215}}), HYBG_NO_DATA, 99.0f,
       Named("Polygon is outside bounds of grid (in file '%s'). Bounds of grid are (100.0000, 200.0000) to "
             "(130.0000, 220.0000).")},
      {CHU_DPolygon(), HYBG_NO_DATA, 99.0f, ""}};  // no extent
  CHU_HYBinaryGridFile reader(Write(grid));
  for (const auto& c : cases) {
    float average = 99.0f;
    EXPECT_EQ(reader.GetAverageZValueOverPolygon(c.polygon, average), c.code) << c.message;
    EXPECT_EQ(average, c.average) << c.message;
    if (!c.message.empty()) { EXPECT_EQ(reader.GetLastError(), c.message); }
  }
}

// ---- Damaged rows ----

TEST_F(BinaryGridFileTest, DamagedRowFailsPointAndPolygonQueriesWithTheRowMessage) {
  const std::size_t entry = hytest::OffsetEntryPosition(1), size = hytest::GridFileBytes(grid).size();
  const std::size_t record = hytest::ReadU32At(hytest::GridFileBytes(grid), entry);  // row 1's length field
  const std::vector<float> longRow(grid.ncols + 1, 1.0f);
  const std::pair<std::string, std::string> damages[] = {
      {Patched(entry, 0xFFFFFFF0u), "could not seek to file offset 4294967280 (0xFFFFFFF0)."},
      {Patched(entry, static_cast<std::uint32_t>(size - 2)), "could not read length of compressed data for row #1."},
      {Patched(record, 0x7FFFFFFFu), "could not read compressed data for row #1."},
      {Patched(record + 4, 0xA5A5A5A5u), "could not decompress data for row #1."},
      {hytest::GridFileBytes(grid, {"", hytest::ZlibStream(longRow.data(), 4 * longRow.size())}),
       "could not decompress data for row #1."}};  // inflates past the row's width
  for (const auto& [bytes, message] : damages) {
    CHU_HYBinaryGridFile reader(WriteBytes(bytes));
    const std::string expected = Named("HY binary grid file '%s' may be corrupt: ") + message;
    EXPECT_EQ(Nearest(reader, 110, 210), HYBG_ERROR);
    EXPECT_EQ(reader.GetLastError(), expected);
    EXPECT_EQ(reader.GetAverageZValueOverPolygon(Polygon({{105, 205}, {115, 205}, {115, 215}}), value), HYBG_ERROR);
    EXPECT_EQ(reader.GetLastError(), expected);
    EXPECT_EQ(Nearest(reader, 110, 220), HYBG_OK);  // other rows still read
  }
}

TEST_F(BinaryGridFileTest, RowInflatingShortOfItsWidthReadsAsNoDataBeyond) {
  const std::vector<float> shortRow(grid.ncols - 1, 2.0f);
  CHU_HYBinaryGridFile reader(Write(grid, {hytest::ZlibStream(shortRow.data(), 4 * shortRow.size())}));
  EXPECT_EQ(Nearest(reader, 120, 220), HYBG_OK);
  EXPECT_EQ(value, 2.0f);
  EXPECT_EQ(Nearest(reader, 130, 220), HYBG_NO_DATA);
}

}  // namespace
