// Randomized checks of the polygon measures and predicates against Boost.Geometry
// on random simple (star-shaped) rings.

// Boost.Geometry 1.74 pulls in deprecated Boost headers and trips GCC's flow
// analysis inside them.
#if defined(__GNUC__) && !defined(__clang__)
#pragma GCC diagnostic ignored "-Wmaybe-uninitialized"
#endif
#include <boost/geometry.hpp>
#include <boost/geometry/geometries/multi_polygon.hpp>
#include <boost/geometry/geometries/point_xy.hpp>
#include <boost/geometry/geometries/polygon.hpp>

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <numbers>
#include <random>

#include "hy_util/geometry/polygon.h"

namespace bg = boost::geometry;

namespace {

using BPoint = bg::model::d2::point_xy<double>;
// Anticlockwise open rings: bg::area is then positive exactly when ours is.
using BRing = bg::model::ring<BPoint, false, false>;
using BPolygon = bg::model::polygon<BPoint, false, false>;

// A simple ring: points at random radii around a centre, sorted by angle. The
// direction is random so that both orientations are covered.
CHU_DPolygon RandomStarRing(std::mt19937_64& rng, int n, double cx, double cy, double scale) {
  std::uniform_real_distribution<double> angle(0.0, 2 * std::numbers::pi);
  std::uniform_real_distribution<double> radius(0.2 * scale, scale);
  std::vector<double> angles(static_cast<std::size_t>(n));
  for (double& a : angles) a = angle(rng);
  std::sort(angles.begin(), angles.end());
  if (rng() % 2) std::reverse(angles.begin(), angles.end());
  CHU_DPolygon ring;
  for (double a : angles) {
    const double r = radius(rng);
    ring.AddPt(cx + r * std::cos(a), cy + r * std::sin(a), 0.0);
  }
  return ring;
}

BRing ToBoostRing(const CHU_DPolygon& polygon, double ox = 0.0, double oy = 0.0) {
  BRing ring;
  for (int i = 0; i < polygon.GetCount(); ++i) {
    ring.push_back(BPoint(polygon.GetAt(i)->x - ox, polygon.GetAt(i)->y - oy));
  }
  return ring;
}

BPolygon ToBoostPolygon(const CHU_DPolygon& polygon) {
  BPolygon out;
  out.outer() = ToBoostRing(polygon);
  bg::correct(out);
  return out;
}

}  // namespace

TEST(PolygonOracle, SignedAreaCentroidAndPointInPolygonAgreeWithBoost) {
  std::mt19937_64 rng(97531);
  for (int trial = 0; trial < 300; ++trial) {
    const int n = 3 + static_cast<int>(rng() % 60);
    const double cx = (trial % 3 == 0) ? 350000.0 : 0.0;  // map-like offsets too
    const CHU_DPolygon polygon = RandomStarRing(rng, n, cx, -cx / 2, 1.0 + trial % 10);
    // The oracle works near the origin, where it loses no precision.
    const double ox = cx, oy = -cx / 2;
    const BRing ring = ToBoostRing(polygon, ox, oy);
    const double area = bg::area(ring);
    ASSERT_NEAR(polygon.GetSignedArea(), area, 1e-12 * std::max(1.0, std::fabs(area))) << "trial " << trial;
    if (std::fabs(area) < 1e-6) continue;

    BPoint expected;
    bg::centroid(ring, expected);
    CHU_DPoint centroid;
    ASSERT_TRUE(polygon.GetCentroid(&centroid));
    EXPECT_NEAR(centroid.x, expected.x() + ox, 1e-9);
    EXPECT_NEAR(centroid.y, expected.y() + oy, 1e-9);

    CHU_DRect extent;
    ASSERT_TRUE(polygon.GetExtent(&extent));
    std::uniform_real_distribution<double> px(extent.Left() - 0.5, extent.Right() + 0.5);
    std::uniform_real_distribution<double> py(extent.Bottom() - 0.5, extent.Top() + 0.5);
    for (int k = 0; k < 200; ++k) {
      const CHU_DPoint p(px(rng), py(rng));
      if (polygon.PtOnPoly(p, 1e-7, nullptr, nullptr)) continue;  // the boundary rules differ
      ASSERT_EQ(polygon.PtInPoly(p), bg::within(BPoint(p.x - ox, p.y - oy), ring))
          << "trial " << trial << " point " << p.x << ", " << p.y;
    }
  }
}

TEST(PolygonOracle, ClipPiecesCoverTheIntersectionBoostComputes) {
  std::mt19937_64 rng(24680);
  for (int trial = 0; trial < 60; ++trial) {
    const CHU_DPolygon a = RandomStarRing(rng, 5 + static_cast<int>(rng() % 30), 0.0, 0.0, 2.0);
    const CHU_DPolygon b = RandomStarRing(rng, 5 + static_cast<int>(rng() % 30), 0.8, 0.3, 2.0);
    CHU_DPolygonArray pieces;
    const int count = a.ClipToPolygon(&pieces, &b);
    ASSERT_GE(count, 0);
    ASSERT_EQ(static_cast<int>(pieces.size()), count);

    bg::model::multi_polygon<BPolygon> expected;
    bg::intersection(ToBoostPolygon(a), ToBoostPolygon(b), expected);
    double total = 0.0;
    for (const auto& piece : pieces) {
      EXPECT_GT(piece->GetSignedArea(), 0.0);  // pieces run anticlockwise
      total += piece->GetSignedArea();
    }
    EXPECT_NEAR(total, bg::area(expected), 1e-9);

    // Independently: sample points that lie in both rings by PtInPoly must lie in
    // some piece, and the hit rate estimates the pieces' area.
    std::uniform_real_distribution<double> u(-2.5, 3.5);
    int inBoth = 0;
    const int samples = 4000;
    for (int k = 0; k < samples; ++k) {
      const CHU_DPoint p(u(rng), u(rng));
      if (!a.PtInPoly(p) || !b.PtInPoly(p)) continue;
      ++inBoth;
      const bool inPiece = std::any_of(pieces.begin(), pieces.end(), [&](const auto& piece) {
        return piece->PtInPoly(p) || piece->PtOnPoly(p, 1e-9, nullptr, nullptr);
      });
      EXPECT_TRUE(inPiece) << p.x << ", " << p.y;
    }
    EXPECT_NEAR(36.0 * inBoth / samples, total, 0.6);
  }
}
