#include "hy_util/geometry/min_area_rect.h"

#include <gtest/gtest.h>

#include <boost/geometry.hpp>
#include <boost/geometry/geometries/multi_point.hpp>
#include <boost/geometry/geometries/point_xy.hpp>
#include <boost/geometry/geometries/polygon.hpp>
#include <cmath>
#include <limits>
#include <random>

namespace bg = boost::geometry;
using HU_LIB::HU_MinAreaRect;
using HU_LIB::HU_PlanePt;
using HU_LIB::HU_RectCorners;

namespace {

using BPoint = bg::model::d2::point_xy<double>;

// Brute force over every edge of Boost.Geometry's hull: the smallest box that
// has one side along that edge.
double BruteForceMinArea(const std::vector<HU_PlanePt>& points) {
  bg::model::multi_point<BPoint> mp;
  for (const auto& p : points) mp.push_back(BPoint(p.x, p.y));
  bg::model::polygon<BPoint> hull;
  bg::convex_hull(mp, hull);
  const auto& ring = hull.outer();
  double best = std::numeric_limits<double>::infinity();
  for (std::size_t i = 0; i + 1 < ring.size(); ++i) {
    const double ex = ring[i + 1].x() - ring[i].x(), ey = ring[i + 1].y() - ring[i].y();
    const double len = std::hypot(ex, ey);
    if (len == 0.0) continue;
    double minU = 0, maxU = 0, minV = 0, maxV = 0;
    for (const auto& q : ring) {
      const double dx = q.x() - ring[i].x(), dy = q.y() - ring[i].y();
      const double u = (dx * ex + dy * ey) / len, v = (dy * ex - dx * ey) / len;
      minU = std::min(minU, u), maxU = std::max(maxU, u);
      minV = std::min(minV, v), maxV = std::max(maxV, v);
    }
    best = std::min(best, (maxU - minU) * (maxV - minV));
  }
  return best;
}

// Every point lies inside the rectangle (within tol of its sides).
void ExpectEncloses(const HU_RectCorners& r, const std::vector<HU_PlanePt>& points, double tol) {
  for (int s = 0; s < 4; ++s) {
    const HU_PlanePt& a = r.corner[s];
    const HU_PlanePt& b = r.corner[(s + 1) % 4];
    for (const auto& p : points) {
      const double side = (b.x - a.x) * (p.y - a.y) - (b.y - a.y) * (p.x - a.x);
      ASSERT_GE(side / std::hypot(b.x - a.x, b.y - a.y), -tol) << "side " << s;
    }
  }
}

double Dist(const HU_PlanePt& a, const HU_PlanePt& b) { return std::hypot(b.x - a.x, b.y - a.y); }

}  // namespace

TEST(MinAreaRect, MatchesBruteForceOnRandomPointSets) {
  std::mt19937_64 rng(20240611);
  for (int trial = 0; trial < 200; ++trial) {
    const int n = 3 + static_cast<int>(rng() % 200);
    // Offsets like map grid coordinates test cancellation as well as the shape.
    const double ox = (trial % 2) ? 512000.0 : 0.0, oy = (trial % 2) ? 6.9e6 : 0.0;
    std::normal_distribution<double> nx(0.0, 1.0 + trial % 7), ny(0.0, 0.2 + trial % 3);
    const double angle = 0.1 * trial;
    std::vector<HU_PlanePt> pts;
    for (int i = 0; i < n; ++i) {
      const double u = nx(rng), v = ny(rng);
      pts.push_back({ox + u * std::cos(angle) - v * std::sin(angle), oy + u * std::sin(angle) + v * std::cos(angle)});
    }
    const HU_RectCorners r = HU_MinAreaRect::Compute(pts);
    const double expected = BruteForceMinArea(pts);
    ASSERT_NEAR(r.area, expected, 1e-9 * std::max(1.0, expected)) << "trial " << trial;
    // The corners describe that area and form a right-angled, anticlockwise box.
    EXPECT_NEAR(Dist(r.corner[0], r.corner[1]) * Dist(r.corner[0], r.corner[3]), r.area, 1e-6 * std::max(1.0, r.area));
    EXPECT_NEAR(Dist(r.corner[0], r.corner[2]), Dist(r.corner[1], r.corner[3]), 1e-6);
    ExpectEncloses(r, pts, 1e-6);
  }
}

TEST(MinAreaRect, DegenerateSetsGiveZeroArea) {
  const double nan = std::numeric_limits<double>::quiet_NaN();
  EXPECT_EQ(HU_MinAreaRect::Compute({}).count, 0);
  EXPECT_EQ(HU_MinAreaRect::Compute({{nan, nan}}).count, 0);
  const HU_RectCorners square = HU_MinAreaRect::Compute({{0, 0}, {nan, 9}, {2, 0}, {1, 0}, {2, 2}, {0, 2}, {0, 0}});
  EXPECT_EQ(square.count, 4);
  EXPECT_DOUBLE_EQ(square.area, 4.0);

  const HU_RectCorners one = HU_MinAreaRect::Compute({{3, 4}, {3, 4}, {3, 4}});
  EXPECT_EQ(one.count, 1);
  EXPECT_EQ(one.area, 0.0);
  EXPECT_EQ(one.corner[2].x, 3.0);

  const HU_RectCorners line = HU_MinAreaRect::Compute({{0, 0}, {1, 1}, {3, 3}, {2, 2}});
  EXPECT_EQ(line.area, 0.0);
  EXPECT_EQ(line.corner[0].x, 0.0);
  EXPECT_EQ(line.corner[1].x, 3.0);
  EXPECT_EQ(line.corner[3].x, 0.0);
}
