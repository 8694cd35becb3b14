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

// 41 x 150 nodes with 8% nulls: more rows than one block of the averager.
TestGrid RandomGrid(std::mt19937& rng) {
  TestGrid g;
  g.ncols = 41;
  g.nrows = 150;
  g.xll = 2500.25;
  g.yll = -730.5;
  g.cell = 0.75;
  std::uniform_real_distribution<double> u(0.0, 1.0);
  for (int i = 0; i < g.ncols * g.nrows; ++i)
    g.values.push_back(u(rng) < 0.08 ? g.noData : static_cast<float>(50.0 + 20.0 * u(rng)));
  return g;
}

// Uniform points over and around the grid, half of them snapped to node lines,
// some exactly on nodes, edges and corners, and a few that are not numbers.
std::vector<HU_HYBGPoint> RandomPoints(const TestGrid& g, std::mt19937& rng, int count) {
  std::uniform_real_distribution<double> u(-0.05, 1.05);
  std::uniform_int_distribution<int> pick(0, 9);
  const double w = (g.ncols - 1) * g.cell, h = (g.nrows - 1) * g.cell;
  std::vector<HU_HYBGPoint> points;
  for (int i = 0; i < count; ++i) {
    double x = g.xll + u(rng) * w, y = g.yll + u(rng) * h;
    const int kind = pick(rng);
    if (kind <= 2) x = g.xll + std::round((x - g.xll) / g.cell) * g.cell;
    if (kind >= 2 && kind <= 4) y = g.yll + std::round((y - g.yll) / g.cell) * g.cell;
    if (kind == 5) x = g.xll + w;
    if (kind == 6) y = g.yll + h;
    if (kind == 7) x = g.xll + (std::round((x - g.xll) / g.cell) + 0.5) * g.cell;
    if (i % 997 == 0) x = NAN;
    points.push_back({x, y});
  }
  return points;
}

// Stars (concave), rectangles on node lines, and scribbles that cross themselves;
// vertices often sit exactly on node positions.
std::vector<std::unique_ptr<CHU_DPolygon>> RandomPolygons(const TestGrid& g, std::mt19937& rng, int count) {
  std::uniform_real_distribution<double> u(0.0, 1.0);
  const double w = (g.ncols - 1) * g.cell, h = (g.nrows - 1) * g.cell;
  auto snap = [&](double v, double origin) { return origin + std::round((v - origin) / g.cell) * g.cell; };
  std::vector<std::unique_ptr<CHU_DPolygon>> polygons;
  for (int i = 0; i < count; ++i) {
    auto p = std::make_unique<CHU_DPolygon>();
    const double cx = g.xll - 2.0 + (w + 4.0) * u(rng), cy = g.yll - 2.0 + (h + 4.0) * u(rng);
    const int shape = i % 3;
    const int n = shape == 1 ? 4 : 3 + static_cast<int>(u(rng) * 30);
    const double size = 0.3 + 12.0 * u(rng);
    for (int k = 0; k < n; ++k) {
      double x, y;
      if (shape == 1) {
        x = cx + ((k == 1 || k == 2) ? size : 0.0);
        y = cy + (k >= 2 ? size * 0.7 : 0.0);
      } else if (shape == 0) {
        const double angle = 6.283185307179586 * k / n, radius = size * (k % 2 ? 0.4 + 0.6 * u(rng) : 1.0);
        x = cx + radius * std::cos(angle);
        y = cy + radius * std::sin(angle);
      } else {
        x = cx + size * (u(rng) - 0.5);
        y = cy + size * (u(rng) - 0.5);
      }
      if (shape == 1 || u(rng) < 0.4) x = snap(x, g.xll);
      if (shape == 1 || u(rng) < 0.4) y = snap(y, g.yll);
      p->AddPt(x, y, 0.0);
    }
    if (i % 5 == 0) p->AddPt(*p->GetAt(0));  // closing repeat
    polygons.push_back(std::move(p));
  }
  return polygons;
}

class BatchIdentityTest : public ::testing::TestWithParam<int> {
 protected:
  hytest::TempDir dir;
  std::mt19937 rng{2024};
};

TEST_P(BatchIdentityTest, SamplerGivesTheReadersAnswerForEveryPoint) {
  const TestGrid g = RandomGrid(rng);
  const std::string path = dir.Write("g.hybg", hytest::GridFileBytes(g));
  const std::vector<HU_HYBGPoint> points = RandomPoints(g, rng, 6000);
  for (HYBG_ValueInterpolationMethod method : {HYBG_NEAREST, HYBG_BILINEAR}) {
    CHU_HYBGBatchPointSampler sampler(path, GetParam());
    const std::vector<HU_HYBGPointAnswer> answers = sampler.Sample(points, method);
    CHU_HYBinaryGridFile reader(path);
    ASSERT_EQ(answers.size(), points.size());
    for (std::size_t i = 0; i < points.size(); ++i) {
      float value = 0.0f;
      const HYBG_ResultCode code = reader.GetZValue(points[i].x, points[i].y, value, method);
      ASSERT_EQ(answers[i].code, code) << "point " << i << " method " << method;
      if (code == HYBG_OK) {
        ASSERT_EQ(std::bit_cast<std::uint32_t>(answers[i].value), std::bit_cast<std::uint32_t>(value));
      }
    }
    EXPECT_EQ(sampler.GetLastError(), reader.GetLastError());
  }
}

TEST_P(BatchIdentityTest, AveragerGivesTheReadersAnswerForEveryPolygon) {
  const TestGrid g = RandomGrid(rng);
  const std::string path = dir.Write("g.hybg", hytest::GridFileBytes(g));
  const auto polygons = RandomPolygons(g, rng, 2500);
  std::vector<const CHU_DPolygon*> pointers;
  for (const auto& p : polygons) pointers.push_back(p.get());
  CHU_HYBGBatchPolygonAverager averager(path, GetParam());
  const std::vector<HU_HYBGPolygonAnswer> answers = averager.Average(pointers);
  CHU_HYBinaryGridFile reader(path);
  int withAverage = 0;
  for (std::size_t i = 0; i < polygons.size(); ++i) {
    float average = -1.0e30f;
    const HYBG_ResultCode code = reader.GetAverageZValueOverPolygon(*polygons[i], average);
    ASSERT_EQ(answers[i].code, code) << "polygon " << i;
    ASSERT_EQ(answers[i].hasAverage, average != -1.0e30f) << "polygon " << i;
    if (answers[i].hasAverage) {
      ++withAverage;
      ASSERT_EQ(std::bit_cast<std::uint32_t>(answers[i].average), std::bit_cast<std::uint32_t>(average)) << i;
    }
  }
  EXPECT_GT(withAverage, 1000);
  EXPECT_EQ(averager.GetLastError(), reader.GetLastError());
}

INSTANTIATE_TEST_SUITE_P(OneAndThreeThreads, BatchIdentityTest, ::testing::Values(1, 3));

// Exact node rows and columns of a rectangle are where the half-open edge rule
// decides: the east and north sides are in, the west and south sides out.
TEST(BatchAveragerTest, NodesOnRectangleSidesFollowTheHalfOpenRule) {
  hytest::TempDir dir;
  TestGrid g;
  g.ncols = 6;
  g.nrows = 6;
  g.cell = 1.0;
  for (int i = 0; i < 36; ++i) g.values.push_back(static_cast<float>(1 << (i % 20)));
  const std::string path = dir.Write("r.hybg", hytest::GridFileBytes(g));
  CHU_DPolygon square;
  for (auto [x, y] : {std::pair{1.0, 1.0}, {4.0, 1.0}, {4.0, 4.0}, {1.0, 4.0}}) square.AddPt(x, y, 0.0);
  const CHU_DPolygon* list[] = {&square};
  const auto answers = CHU_HYBGBatchPolygonAverager(path, 1).Average(list);
  double sum = 0.0;
  for (int r = 1; r <= 3; ++r)      // y = 4, 3, 2
    for (int c = 2; c <= 4; ++c) sum += g.At(r, c);  // x = 2, 3, 4
  ASSERT_EQ(answers[0].code, HYBG_OK);
  EXPECT_EQ(answers[0].average, static_cast<float>(sum / 9));
}

TEST(BatchDamageTest, DamagedRowsAndHeadersFailSafelyOnEveryPath) {
  hytest::TempDir dir;
  std::mt19937 rng(5);
  const TestGrid g = RandomGrid(rng);
  std::string bytes = hytest::GridFileBytes(g);
  const std::size_t row40 = hytest::ReadU32At(bytes, hytest::OffsetEntryPosition(40)) + 4;
  bytes[row40] = 0x01;  // not a zlib header
  hytest::WriteU32At(bytes, hytest::OffsetEntryPosition(90), 0xFFFFFF00u);
  const std::string path = dir.Write("d.hybg", bytes);
  const std::vector<HU_HYBGPoint> points = RandomPoints(g, rng, 3000);
  const auto polygons = RandomPolygons(g, rng, 400);
  std::vector<const CHU_DPolygon*> pointers;
  for (const auto& p : polygons) pointers.push_back(p.get());

  CHU_HYBinaryGridFile reader(path);
  const auto answers = CHU_HYBGBatchPointSampler(path, 2).Sample(points, HYBG_BILINEAR);
  int errors = 0;
  for (std::size_t i = 0; i < points.size(); ++i) {
    float value = 0.0f;
    ASSERT_EQ(answers[i].code, reader.GetZValue(points[i].x, points[i].y, value, HYBG_BILINEAR)) << i;
    errors += answers[i].code == HYBG_ERROR;
  }
  EXPECT_GT(errors, 0);
  CHU_HYBGBatchPolygonAverager averager(path, 2);
  const auto averages = averager.Average(pointers);
  for (std::size_t i = 0; i < polygons.size(); ++i) {
    float average = 0.0f;
    ASSERT_EQ(averages[i].code, reader.GetAverageZValueOverPolygon(*polygons[i], average)) << i;
  }
  EXPECT_EQ(averager.GetLastError(), reader.GetLastError());

  const std::string cut = dir.Write("cut.hybg", bytes.substr(0, 30));
  const auto none = CHU_HYBGBatchPointSampler(cut).Sample(points, HYBG_NEAREST);
  EXPECT_EQ(none.front().code, HYBG_ERROR);
  CHU_HYBGBatchPolygonAverager cutAverager(cut);
  EXPECT_EQ(cutAverager.Average(pointers).back().code, HYBG_ERROR);
  EXPECT_EQ(cutAverager.GetLastError(), "Couldn't read lower-left Y coordinate from header of grid file '" + cut + "'.");
}

}  // namespace
