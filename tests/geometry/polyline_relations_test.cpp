// Relations of chains to other shapes: intersection points, and inside/outside
// tests against polygons and rectangles.

#include <gtest/gtest.h>

#include <algorithm>
#include <random>

#include "geometry/shapes.h"

namespace {

// Points where a chain meets a segment or another shape, with their chain
// parameters, rounded to 1e-9 for comparison.
using Hits = std::pair<XYs, std::vector<double>>;
Hits Rounded(const CHU_CopyableArray<CHU_DPoint>& points, const CHU_CopyableArray<double>& params) {
  const auto round = [](double v) { return std::round(v * 1e9) / 1e9; };
  Hits out;
  for (const CHU_DPoint& p : points) out.first.emplace_back(round(p.x), round(p.y));
  for (double t : params) out.second.push_back(round(t));
  return out;
}
Hits LineHits(const CHU_DPolyLine& chain, const CHU_DPoint& a, const CHU_DPoint& b) {
  CHU_CopyableArray<double> params;
  const auto points = chain.GetIntersectionsWithLine(a, b, &params);
  return Rounded(points, params);
}
Hits PolyHits(const CHU_DPolyLine& chain, const CHU_DPolyLine& other) {
  CHU_CopyableArray<double> params;
  const auto points = chain.GetIntersectionsWithPoly(other, &params);
  return Rounded(points, params);
}

// A U-shaped ring: two arms x in [0, 1] and [2, 3] over y in [1, 3], joined below.
const CHU_DPolygon& U() {
  static const CHU_DPolygon u = Ring({{0, 0}, {3, 0}, {3, 3}, {2, 3}, {2, 1}, {1, 1}, {1, 3}, {0, 3}});
  return u;
}

// Inside, partially inside, partially outside, completely outside (tol 0.01).
std::array<bool, 4> Relations(const CHU_DPolyLine& chain, const CHU_DPolygon& polygon) {
  return {chain.IsInsidePolygon(polygon), chain.IsPartiallyInsidePolygon(polygon),
          chain.IsPartiallyOutsidePolygon(polygon, 0.01), chain.IsCompletelyOutsidePolygon(polygon, 0.01)};
}

}  // namespace

TEST(PolyLineIntersections, HitsComeOnceEachInChainOrderWithSegmentPlusFractionParameters) {
  const CHU_DPolygon square = Ring({{0, 0}, {2, 0}, {2, 2}, {0, 2}});
  const CHU_DPolyLine straight = Chain({{0, 0}, {4, 0}, {8, 0}}), across = Chain({{-1, 1}, {3, 1}});
  EXPECT_EQ(LineHits(Chain({{0, 0}, {2, 2}, {4, 0}, {6, 2}}), {6, 1}, {0, 1}), Hits({{1, 1}, {3, 1}, {5, 1}}, {0.5, 1.5, 2.5}));
  EXPECT_EQ(LineHits(Chain({{0, 0}, {2, 2}, {4, 0}}), {0, 2}, {4, 2}), Hits({{2, 2}}, {1.0}));  // the apex, once
  EXPECT_EQ(LineHits(straight, {6, 0}, {2, 0}), Hits({{2, 0}, {4, 0}, {6, 0}}, {0.5, 1.0, 1.5}));  // overlap ends, vertex
  EXPECT_EQ(LineHits(straight, {0, 1}, {8, 1}), Hits());
  EXPECT_EQ(LineHits(square, {-1, 1}, {3, 1}), Hits({{2, 1}, {0, 1}}, {1.5, 3.5}));  // on the closing edge
  EXPECT_EQ(LineHits(square, {-1, -1}, {3, 3}), Hits({{0, 0}, {2, 2}}, {0.0, 2.0}));  // the first vertex, once
  EXPECT_EQ(PolyHits(across, square), Hits({{0, 1}, {2, 1}}, {0.25, 0.75}));
  EXPECT_EQ(PolyHits(across, Chain({{0, 0}, {2, 0}, {2, 2}, {0, 2}})), Hits({{2, 1}}, {0.75}));  // open: no closing edge
}

TEST(PolyLineIntersections, DegenerateChainsNeverFailHard) {
  EXPECT_EQ(LineHits(Chain({{1, 1}, {1, 1}, {1, 1}}), {0, 0}, {2, 2}).first, (XYs{{1, 1}}));
  EXPECT_EQ(PolyHits(CHU_DPolyLine(), UnitSquare()), Hits());
  EXPECT_EQ(PolyHits(Chain({{0.5, 0}}), UnitSquare()), Hits());  // no segment
  EXPECT_EQ(LineHits(Chain({{0, 0}, {std::nan(""), 1}, {2, 0}}), {0, 5}, {2, 5}), Hits());
}

// Every reported point lies on both shapes, and its parameter names its place on
// this chain, increasing along it.
TEST(PolyLineIntersections, RandomChainsReportPointsOnBothShapesInOrder) {
  std::mt19937 rng(21);
  std::uniform_real_distribution<double> coord(-10, 10);
  for (int c = 0; c < 200; ++c) {
    CHU_DPolyLine mine, other;
    for (int i = 0; i < 8; ++i) mine.AddPt(coord(rng), coord(rng), 0);
    for (int i = 0; i < 5; ++i) other.AddPt(coord(rng), coord(rng), 0);
    CHU_CopyableArray<double> params;
    const auto hits = mine.GetIntersectionsWithPoly(other, &params);
    ASSERT_EQ(hits.GetSize(), params.GetSize());
    for (int k = 0; k < hits.GetSize(); ++k) {
      ASSERT_TRUE(k == 0 || params[k] > params[k - 1]);
      const int segment = static_cast<int>(std::min(params[k], mine.GetCount() - 1.5));
      const double t = params[k] - segment;
      const CHU_DPoint &s = *mine.GetAt(segment), &e = *mine.GetAt(segment + 1);
      ASSERT_NEAR(std::hypot(hits[k].x - s.x - t * (e.x - s.x), hits[k].y - s.y - t * (e.y - s.y)), 0.0, 1e-8);
      ASSERT_TRUE(other.PtOnPoly(hits[k], 1e-8, nullptr, nullptr));
    }
  }
}

TEST(PolylineRelations, ClassifyChainsAgainstAConcaveRing) {
  const std::tuple<const char*, CHU_DPolyLine, std::array<bool, 4>> cases[] = {
      {"within one arm", Chain({{0.2, 0.5}, {0.5, 2.5}, {0.8, 2}}), {true, true, false, false}},
      {"a single vertex inside", Chain({{2.5, 2}}), {true, true, false, false}},
      {"bridging the gap between the arms", Chain({{0.5, 2}, {2.5, 2}}), {false, true, true, false}},
      {"crossing the outer side", Chain({{0.5, 0.5}, {-2, 0.5}}), {false, true, true, false}},
      {"crossing both arms, all vertices outside", Chain({{-1, 2}, {4, 2}}), {false, true, true, false}},
      {"far away", Chain({{5, 5}, {6, 7}}), {false, false, true, true}},
      {"in the gap, clear of the arms", Chain({{1.5, 2}, {1.5, 2.8}}), {false, false, true, true}},
      {"around without touching", Chain({{-1, -1}, {4, -1}, {4, 4}, {-1, 4}, {-1, -1}}), {false, false, true, true}},
  };
  for (const auto& [name, chain, expected] : cases) EXPECT_EQ(Relations(chain, U()), expected) << name;
}

TEST(PolylineRelations, ToleranceIsAnInclusiveDistanceToTheBoundary) {
  const CHU_DPolyLine hugging = Chain({{-0.1, 0.5}, {-0.1, 2.5}});  // 0.1 outside the left side
  EXPECT_EQ((std::array{hugging.IsPartiallyOutsidePolygon(U(), 0.05), hugging.IsPartiallyOutsidePolygon(U(), 0.125),
                        hugging.IsCompletelyOutsidePolygon(U(), 0.05), hugging.IsCompletelyOutsidePolygon(U(), 0.125)}),
            (std::array{true, false, true, false}));
}

TEST(PolylineRelations, ARingThatEnclosesThePolygonOverlapsItButTheOpenChainDoesNotAndEmptyShapesAreNeither) {
  EXPECT_EQ(Relations(Ring({{-1, -1}, {4, -1}, {4, 4}, {-1, 4}}), U()), (std::array{false, true, true, false}));
  EXPECT_EQ(Relations(Chain({{-1, -1}, {4, -1}, {4, 4}, {-1, 4}}), U()), (std::array{false, false, true, true}));
  EXPECT_EQ(Relations(CHU_DPolyLine(), U()), (std::array{false, false, false, false}));
  EXPECT_EQ(Relations(Chain({{0.5, 0.5}, {0.6, 0.6}}), CHU_DPolygon()), (std::array{false, false, true, true}));
}

TEST(PolylineRelations, RectOnPolyFindsAnyPartOfTheChainInTheRectangle) {
  const CHU_DRect rect(0, 1, 1, 0);  // left, top, right, bottom
  EXPECT_TRUE(Chain({{0.5, 0.5}}).RectOnPoly(rect));
  EXPECT_TRUE(Chain({{-1, 0.5}, {2, 0.5}}).RectOnPoly(rect));  // passes through, no vertex inside
  EXPECT_TRUE(Chain({{1, 2}, {1, 1}}).RectOnPoly(rect));        // touches a corner
  EXPECT_FALSE(Chain({{1.5, -1}, {3, 2}}).RectOnPoly(rect));
  EXPECT_FALSE(Chain({{-1, 0.5}, {2, 0.5}}).RectOnPoly(CHU_DRect()));  // the inverted default is empty
  EXPECT_TRUE(Ring({{-5, -5}, {5, -5}, {5, 5}, {-5, 5}}).RectOnPoly(rect));  // a ring around it holds it
  EXPECT_FALSE(Chain({{-5, -5}, {5, -5}, {5, 5}, {-5, 5}}).RectOnPoly(rect));
}
