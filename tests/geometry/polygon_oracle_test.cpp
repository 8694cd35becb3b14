// Randomized checks of the polygon measures and predicates against independent
// oracles: Boost.Geometry on random simple (star-shaped) rings, and a brute-force
// search for the minimum-area rectangle.

// Boost.Geometry 1.74 trips GCC's flow analysis inside its own headers.
#if defined(__GNUC__) && !defined(__clang__)
#pragma GCC diagnostic ignored "-Wmaybe-uninitialized"
#endif
#include <boost/geometry.hpp>
#include <boost/geometry/geometries/point_xy.hpp>
#include <boost/geometry/geometries/ring.hpp>

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <numbers>
#include <random>

#include "hy_util/geometry/polygon.h"

namespace bg = boost::geometry;

namespace {

using BPoint = bg::model::d2::point_xy<double>;
using BRing = bg::model::ring<BPoint, false, false>;  // anticlockwise, open: signed areas agree

// A simple ring: points at random radii around a centre, sorted by angle, in a
// random direction so that both orientations are covered.
CHU_DPolygon RandomStarRing(std::mt19937_64& rng, int n, double cx, double cy, double scale) {
  std::uniform_real_distribution<double> angle(0.0, 2 * std::numbers::pi), radius(0.2 * scale, scale);
  std::vector<double> angles(n);
  std::generate(angles.begin(), angles.end(), [&] { return angle(rng); });
  std::sort(angles.begin(), angles.end());
  if (rng() % 2) std::reverse(angles.begin(), angles.end());
  CHU_DPolygon ring;
  for (double a : angles) {
    const double r = radius(rng);
    ring.AddPt(cx + r * std::cos(a), cy + r * std::sin(a), 0.0);
  }
  return ring;
}

// One side of a minimum-area rectangle lies along a hull edge, so trying the
// direction through every pair of vertices finds its area.
double BruteForceMinArea(const CHU_DPolygon& cloud) {
  double best = std::numeric_limits<double>::infinity();
  for (int i = 0; i < cloud.GetCount(); ++i) {
    for (int j = i + 1; j < cloud.GetCount(); ++j) {
      const CHU_DPoint &a = *cloud.GetAt(i), &b = *cloud.GetAt(j);
      const double len = std::hypot(b.x - a.x, b.y - a.y), ex = (b.x - a.x) / len, ey = (b.y - a.y) / len;
      double minU = 0, maxU = 0, minV = 0, maxV = 0;
      for (int k = 0; k < cloud.GetCount() && len > 0; ++k) {
        const double dx = cloud.GetAt(k)->x - a.x, dy = cloud.GetAt(k)->y - a.y;
        minU = std::min(minU, dx * ex + dy * ey), maxU = std::max(maxU, dx * ex + dy * ey);
        minV = std::min(minV, dy * ex - dx * ey), maxV = std::max(maxV, dy * ex - dx * ey);
      }
      if (len > 0) best = std::min(best, (maxU - minU) * (maxV - minV));
    }
  }
  return best;
}

}  // namespace

TEST(PolygonOracle, MinimumAreaRectangleMatchesABruteForceSearchAndHoldsEveryVertex) {
  std::mt19937_64 rng(20240611);
  for (int trial = 0; trial < 200; ++trial) {
    // Elongated clouds at every angle, half of them at map coordinates.
    const double ox = (trial % 2) ? 512000.0 : 0.0, oy = (trial % 2) ? 6.9e6 : 0.0, angle = 0.1 * trial;
    std::normal_distribution<double> nu(0.0, 1.0 + trial % 7), nv(0.0, 0.2 + trial % 3);
    CHU_DPolygon cloud, box;
    for (int i = 3 + static_cast<int>(rng() % 40); i > 0; --i) {
      const double u = nu(rng), v = nv(rng);
      cloud.AddPt(ox + u * std::cos(angle) - v * std::sin(angle), oy + u * std::sin(angle) + v * std::cos(angle), 0);
    }
    const double area = cloud.GetMinimunAreaRectangleArea(), expected = BruteForceMinArea(cloud);
    ASSERT_NEAR(area, expected, 1e-9 * std::max(1.0, expected)) << "trial " << trial;
    ASSERT_TRUE(cloud.GetMinimunAreaRectangle(&box));
    EXPECT_NEAR(box.GetSignedArea(), area, 1e-6 * std::max(1.0, area));  // anticlockwise corners of that area
    for (int k = 0; k < cloud.GetCount(); ++k) {
      ASSERT_TRUE(box.PtInPoly(*cloud.GetAt(k)) || box.PtOnPoly(*cloud.GetAt(k), 1e-6, nullptr, nullptr)) << trial;
    }
  }
}

TEST(PolygonOracle, SignedAreaCentroidAndPointInPolygonAgreeWithBoost) {
  std::mt19937_64 rng(97531);
  for (int trial = 0; trial < 300; ++trial) {
    // Map-like offsets too; the oracle works near the origin, where it loses no precision.
    const double ox = (trial % 3 == 0) ? 350000.0 : 0.0, oy = -ox / 2;
    const CHU_DPolygon polygon = RandomStarRing(rng, 3 + static_cast<int>(rng() % 60), ox, oy, 1.0 + trial % 10);
    BRing ring;
    for (int i = 0; i < polygon.GetCount(); ++i) ring.push_back(BPoint(polygon.GetAt(i)->x - ox, polygon.GetAt(i)->y - oy));
    const double area = bg::area(ring);
    ASSERT_NEAR(polygon.GetSignedArea(), area, 1e-12 * std::max(1.0, std::fabs(area))) << "trial " << trial;
    if (std::fabs(area) < 1e-6) continue;

    BPoint expected;
    bg::centroid(ring, expected);
    CHU_DPoint centroid;
    ASSERT_TRUE(polygon.GetCentroid(&centroid));
    EXPECT_NEAR(std::hypot(centroid.x - ox - expected.x(), centroid.y - oy - expected.y()), 0.0, 1e-9) << trial;

    CHU_DRect extent;
    ASSERT_TRUE(polygon.GetExtent(&extent));
    std::uniform_real_distribution<double> px(extent.Left() - 0.5, extent.Right() + 0.5);
    std::uniform_real_distribution<double> py(extent.Bottom() - 0.5, extent.Top() + 0.5);
    for (int k = 0; k < 200; ++k) {
      const CHU_DPoint p(px(rng), py(rng));
      if (polygon.PtOnPoly(p, 1e-7, nullptr, nullptr)) continue;  // the boundary rules differ
      ASSERT_EQ(polygon.PtInPoly(p), bg::within(BPoint(p.x - ox, p.y - oy), ring)) << p.x << ", " << p.y;
    }
  }
}
