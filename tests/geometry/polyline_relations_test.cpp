// Relations of chains to other shapes: intersection points, and inside/outside
// tests against polygons and rectangles.

#include <gtest/gtest.h>

#include <algorithm>
#include <random>

#include "geometry/shapes.h"

namespace {

// The points found and their chain parameters, rounded to 1e-9 for comparison.
std::pair<XYs, std::vector<double>> Hits(const CHU_CopyableArray<CHU_DPoint>& points,
                                         const CHU_CopyableArray<double>& params) {
  const auto round = [](double v) { return std::round(v * 1e9) / 1e9; };
  std::pair<XYs, std::vector<double>> out;
  for (const CHU_DPoint& p : points) out.first.emplace_back(round(p.x), round(p.y));
  for (double t : params) out.second.push_back(round(t));
  return out;
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

TEST(PolyLineIntersections, LineHitsComeInChainOrderWithSegmentPlusFractionParameters) {
  const CHU_DPolyLine zigzag = Chain({{0, 0}, {2, 2}, {4, 0}, {6, 2}});
  CHU_CopyableArray<double> params;
  const auto hits = zigzag.GetIntersectionsWithLine(CHU_DPoint(6, 1), CHU_DPoint(0, 1), &params);
  EXPECT_EQ(Hits(hits, params), std::pair(XYs{{1, 1}, {3, 1}, {5, 1}}, std::vector{0.5, 1.5, 2.5}));
}

TEST(PolyLineIntersections, AVertexIsReportedOnceAndAnOverlapByBothEnds) {
  CHU_CopyableArray<double> params;
  auto hits = Chain({{0, 0}, {2, 2}, {4, 0}}).GetIntersectionsWithLine(CHU_DPoint(0, 2), CHU_DPoint(4, 2), &params);
  EXPECT_EQ(Hits(hits, params), std::pair(XYs{{2, 2}}, std::vector{1.0}));  // touches the apex only
  const CHU_DPolyLine straight = Chain({{0, 0}, {4, 0}, {8, 0}});
  hits = straight.GetIntersectionsWithLine(CHU_DPoint(6, 0), CHU_DPoint(2, 0), &params);
  EXPECT_EQ(Hits(hits, params), std::pair(XYs{{2, 0}, {4, 0}, {6, 0}}, std::vector{0.5, 1.0, 1.5}));
  EXPECT_TRUE(straight.GetIntersectionsWithLine(CHU_DPoint(0, 1), CHU_DPoint(8, 1)).empty());
}

TEST(PolyLineIntersections, PolygonsIncludeTheirClosingEdgeAndMeetTheirFirstVertexOnce) {
  const CHU_DPolygon square = Ring({{0, 0}, {2, 0}, {2, 2}, {0, 2}});
  CHU_CopyableArray<double> params;
  auto hits = square.GetIntersectionsWithLine(CHU_DPoint(-1, 1), CHU_DPoint(3, 1), &params);
  EXPECT_EQ(Hits(hits, params), std::pair(XYs{{2, 1}, {0, 1}}, std::vector{1.5, 3.5}));
  hits = square.GetIntersectionsWithLine(CHU_DPoint(-1, -1), CHU_DPoint(3, 3), &params);
  EXPECT_EQ(Hits(hits, params), std::pair(XYs{{0, 0}, {2, 2}}, std::vector{0.0, 2.0}));
  // A chain against a ring meets the ring's closing edge too.
  hits = Chain({{-1, 1}, {3, 1}}).GetIntersectionsWithPoly(square, &params);
  EXPECT_EQ(Hits(hits, params), std::pair(XYs{{0, 1}, {2, 1}}, std::vector{0.25, 0.75}));
  EXPECT_EQ(Chain({{-1, 1}, {3, 1}}).GetIntersectionsWithPoly(Chain({{0, 0}, {2, 0}, {2, 2}, {0, 2}})).size(), 1u);  // open
}

TEST(PolyLineIntersections, DegenerateChainsNeverFailHard) {
  const double nan = std::nan("");
  EXPECT_EQ(Chain({{1, 1}, {1, 1}, {1, 1}}).GetIntersectionsWithLine(CHU_DPoint(0, 0), CHU_DPoint(2, 2)).size(), 1u);
  EXPECT_TRUE(CHU_DPolyLine().GetIntersectionsWithPoly(UnitSquare()).empty());
  EXPECT_TRUE(Chain({{0.5, 0}}).GetIntersectionsWithPoly(UnitSquare()).empty());  // no segment
  EXPECT_TRUE(Chain({{0, 0}, {nan, 1}, {2, 0}}).GetIntersectionsWithLine(CHU_DPoint(0, 5), CHU_DPoint(2, 5)).empty());
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
      const CHU_DPoint& s = *mine.GetAt(segment);
      const CHU_DPoint& e = *mine.GetAt(segment + 1);
      ASSERT_NEAR(std::hypot(hits[k].x - s.x - t * (e.x - s.x), hits[k].y - s.y - t * (e.y - s.y)), 0.0, 1e-8);
      ASSERT_TRUE(other.PtOnPoly(hits[k], 1e-8, nullptr, nullptr));
    }
  }
}

TEST(PolylineRelations, ClassifyChainsAgainstAConcaveRing) {
  const std::pair<const char*, CHU_DPolyLine> chains[] = {
      {"within one arm", Chain({{0.2, 0.5}, {0.5, 2.5}, {0.8, 2}})},
      {"a single vertex inside", Chain({{2.5, 2}})},
      {"bridging the gap between the arms", Chain({{0.5, 2}, {2.5, 2}})},
      {"crossing the outer side", Chain({{0.5, 0.5}, {-2, 0.5}})},
      {"crossing both arms, all vertices outside", Chain({{-1, 2}, {4, 2}})},
      {"far away", Chain({{5, 5}, {6, 7}})},
      {"in the gap, clear of the arms", Chain({{1.5, 2}, {1.5, 2.8}})},
      {"around the ring without touching it", Chain({{-1, -1}, {4, -1}, {4, 4}, {-1, 4}, {-1, -1}})},
  };
  const std::array<bool, 4> expected[] = {{true, true, false, false},  {true, true, false, false},
                                          {false, true, true, false},  {false, true, true, false},
                                          {false, true, true, false},  {false, false, true, true},
                                          {false, false, true, true},  {false, false, true, true}};
  for (int i = 0; i < 8; ++i) EXPECT_EQ(Relations(chains[i].second, U()), expected[i]) << chains[i].first;
}

TEST(PolylineRelations, ToleranceIsAnInclusiveDistanceToTheBoundary) {
  const CHU_DPolyLine hugging = Chain({{-0.1, 0.5}, {-0.1, 2.5}});  // 0.1 outside the left side
  EXPECT_TRUE(hugging.IsPartiallyOutsidePolygon(U(), 0.05));
  EXPECT_FALSE(hugging.IsPartiallyOutsidePolygon(U(), 0.125));
  EXPECT_TRUE(hugging.IsCompletelyOutsidePolygon(U(), 0.05));
  EXPECT_FALSE(hugging.IsCompletelyOutsidePolygon(U(), 0.125));
}

TEST(PolylineRelations, ARingThatEnclosesThePolygonOverlapsItButTheOpenChainDoesNot) {
  const CHU_DPolygon around = Ring({{-1, -1}, {4, -1}, {4, 4}, {-1, 4}});
  const CHU_DPolyLine open = Chain({{-1, -1}, {4, -1}, {4, 4}, {-1, 4}});
  EXPECT_EQ(Relations(around, U()), (std::array{false, true, true, false}));
  EXPECT_EQ(Relations(open, U()), (std::array{false, false, true, true}));
}

TEST(PolylineRelations, EmptyShapesAreNeitherInsideNorOutside) {
  const CHU_DPolyLine line = Chain({{0.5, 0.5}, {0.6, 0.6}});
  EXPECT_EQ(Relations(CHU_DPolyLine(), U()), (std::array{false, false, false, false}));
  EXPECT_EQ(Relations(line, CHU_DPolygon()), (std::array{false, false, true, true}));
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
