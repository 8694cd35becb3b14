// The batch sampler and averager against the one-by-one reader: the same code and
// the same bits for every point and polygon, and the same last error text.

#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <memory>
#include <random>

#include "grids/binary_grid_test_writer.h"
#include "hy_util/geometry/polygon.h"
#include "hy_util/grids/batch_point_sampler.h"
#include "hy_util/grids/batch_polygon_averager.h"
#include "hy_util/grids/binary_grid_file.h"
#include "support/temp_dir.h"

namespace {

using hytest::TestGrid;
using Polygons = std::vector<std::unique_ptr<CHU_DPolygon>>;

std::uint32_t Bits(float v) { return std::bit_cast<std::uint32_t>(v); }

// 41 x 150 nodes with 8% nulls: more rows than one block of the averager.
TestGrid RandomGrid(std::mt19937& rng) {
  std::uniform_real_distribution<double> u(0.0, 1.0);
  return hytest::MakeGrid(41, 150, 2500.25, -730.5, 0.75, [&](int, int) {
    return u(rng) < 0.08 ? -9999.0f : static_cast<float>(50.0 + 20.0 * u(rng));
  });
}

double Snap(const TestGrid& g, double v, double origin) { return origin + std::round((v - origin) / g.cell) * g.cell; }

// Uniform points over and around the grid, many snapped to node lines, on the
// east and north edges or halfway between nodes, and a few that are not numbers.
std::vector<HU_HYBGPoint> RandomPoints(const TestGrid& g, std::mt19937& rng, int count) {
  std::uniform_real_distribution<double> u(-0.05, 1.05);
  const double w = (g.ncols - 1) * g.cell, h = (g.nrows - 1) * g.cell;
  std::vector<HU_HYBGPoint> points;
  for (int i = 0; i < count; ++i) {
    double x = g.xll + u(rng) * w, y = g.yll + u(rng) * h;
    const int kind = static_cast<int>(rng() % 10);
    if (kind <= 2) x = Snap(g, x, g.xll);
    if (kind >= 2 && kind <= 4) y = Snap(g, y, g.yll);
    if (kind == 5) x = g.xll + w;
    if (kind == 6) y = g.yll + h;
    if (kind == 7) x = Snap(g, x, g.xll) + 0.5 * g.cell;
    points.push_back({i % 997 == 0 ? NAN : x, y});
  }
  return points;
}

// Concave stars, rectangles on node lines and self-crossing scribbles, their
// vertices often exactly on node positions; some repeat the first vertex.
Polygons RandomPolygons(const TestGrid& g, std::mt19937& rng, int count) {
  std::uniform_real_distribution<double> u(0.0, 1.0);
  const double w = (g.ncols - 1) * g.cell, h = (g.nrows - 1) * g.cell;
  Polygons polygons;
  for (int i = 0; i < count; ++i) {
    auto p = std::make_unique<CHU_DPolygon>();
    const double cx = g.xll - 2.0 + (w + 4.0) * u(rng), cy = g.yll - 2.0 + (h + 4.0) * u(rng);
    const int shape = i % 3, n = shape == 1 ? 4 : 3 + static_cast<int>(u(rng) * 30);
    const double size = 0.3 + 12.0 * u(rng);
    for (int k = 0; k < n; ++k) {
      const double angle = 6.283185307179586 * k / n, radius = size * (k % 2 ? 0.4 + 0.6 * u(rng) : 1.0);
      double x = shape == 0 ? cx + radius * std::cos(angle) : cx + size * (u(rng) - 0.5);
      double y = shape == 0 ? cy + radius * std::sin(angle) : cy + size * (u(rng) - 0.5);
      if (shape == 1) x = cx + ((k == 1 || k == 2) ? size : 0.0), y = cy + (k >= 2 ? size * 0.7 : 0.0);
      p->AddPt(shape == 1 || u(rng) < 0.4 ? Snap(g, x, g.xll) : x, shape == 1 || u(rng) < 0.4 ? Snap(g, y, g.yll) : y, 0.0);
    }
    if (i % 5 == 0) p->AddPt(*p->GetAt(0));
    polygons.push_back(std::move(p));
  }
  return polygons;
}

// Compares every answer of the batch classes with the reader's on the file at path.
// Returns how many averages were set and how many answers were errors.
std::pair<int, int> ExpectSameAnswers(const std::string& path, const std::vector<HU_HYBGPoint>& points, const Polygons& polygons,
                      int threads) {
  CHU_HYBinaryGridFile reader(path);
  int withAverage = 0, errors = 0;
  for (HYBG_ValueInterpolationMethod method : {HYBG_NEAREST, HYBG_BILINEAR}) {
    CHU_HYBGBatchPointSampler sampler(path, threads);
    const std::vector<HU_HYBGPointAnswer> answers = sampler.Sample(points, method);
    for (std::size_t i = 0; i < points.size(); ++i) {
      float value = 0.0f;
      const HYBG_ResultCode code = reader.GetZValue(points[i].x, points[i].y, value, method);
      EXPECT_EQ(answers[i].code, code) << "point " << i << " method " << method;
      if (code == HYBG_OK) { EXPECT_EQ(Bits(answers[i].value), Bits(value)) << "point " << i; }
      errors += answers[i].code == HYBG_ERROR;
    }
    EXPECT_EQ(sampler.GetLastError(), reader.GetLastError());
  }
  std::vector<const CHU_DPolygon*> pointers;
  for (const auto& p : polygons) pointers.push_back(p.get());
  CHU_HYBGBatchPolygonAverager averager(path, threads);
  const std::vector<HU_HYBGPolygonAnswer> answers = averager.Average(pointers);
  for (std::size_t i = 0; i < polygons.size(); ++i) {
    float average = -1.0e30f;
    EXPECT_EQ(answers[i].code, reader.GetAverageZValueOverPolygon(*polygons[i], average)) << "polygon " << i;
    EXPECT_EQ(answers[i].hasAverage, average != -1.0e30f) << "polygon " << i;
    if (answers[i].hasAverage) { EXPECT_EQ(Bits(answers[i].average), Bits(average)) << "polygon " << i; }
    withAverage += answers[i].hasAverage;
    errors += answers[i].code == HYBG_ERROR;
  }
  EXPECT_EQ(averager.GetLastError(), reader.GetLastError());
  return {withAverage, errors};
}

class BatchIdentityTest : public ::testing::TestWithParam<int> {};

TEST_P(BatchIdentityTest, BatchClassesGiveTheReadersAnswerForEveryPointAndPolygon) {
  hytest::TempDir dir;
  std::mt19937 rng(2024);
  const TestGrid g = RandomGrid(rng);
  const auto points = RandomPoints(g, rng, 6000);
  const auto polygons = RandomPolygons(g, rng, 2500);
  const auto [averages, errors] = ExpectSameAnswers(dir.Write("g.hybg", hytest::GridFileBytes(g)), points, polygons, GetParam());
  EXPECT_GT(averages, 1000);  // most polygons meet data: the comparison is not empty
  EXPECT_EQ(errors, 0);
}

INSTANTIATE_TEST_SUITE_P(OneAndThreeThreads, BatchIdentityTest, ::testing::Values(1, 3));

TEST(BatchDamageTest, DamagedRowsAndHeadersFailAsTheReaderDoes) {
  hytest::TempDir dir;
  std::mt19937 rng(5);
  const TestGrid g = RandomGrid(rng);
  std::string bytes = hytest::GridFileBytes(g);
  bytes[hytest::ReadU32At(bytes, hytest::OffsetEntryPosition(40)) + 4] = 0x01;  // not a zlib header
  hytest::WriteU32At(bytes, hytest::OffsetEntryPosition(90), 0xFFFFFF00u);       // beyond the file
  const auto points = RandomPoints(g, rng, 3000);
  const auto polygons = RandomPolygons(g, rng, 400);
  EXPECT_GT(ExpectSameAnswers(dir.Write("d.hybg", bytes), points, polygons, 2).second, 0);
  EXPECT_EQ(ExpectSameAnswers(dir.Write("cut.hybg", bytes.substr(0, 30)), points, polygons, 2).second, 6400);
}

}  // namespace
