#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
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
