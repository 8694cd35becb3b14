#include <gtest/gtest.h>

#include <cmath>
#include <initializer_list>
#include <random>
#include <utility>

#include "hy_util/geometry/math.h"
#include "hy_util/geometry/polyline.h"

namespace {

CHU_DPolyLine Chain(std::initializer_list<std::pair<double, double>> points) {
  CHU_DPolyLine chain;
  for (const auto& [x, y] : points) chain.AddPt(x, y, 0.0);
  return chain;
}

// A chain that answers as a closed ring, to exercise the closing edge.
class Ring : public CHU_DPolyLine {
 public:
  bool IsClosed() const override { return true; }
};

Ring Square() {
  Ring ring;
  for (const auto& [x, y] : {std::pair{0.0, 0.0}, {2.0, 0.0}, {2.0, 2.0}, {0.0, 2.0}}) ring.AddPt(x, y, 0.0);
  return ring;
}

}  // namespace

TEST(PolyLineIntersectionsTest, LineHitsComeInChainOrderWithChainParameters) {
  const CHU_DPolyLine zigzag = Chain({{0, 0}, {2, 2}, {4, 0}, {6, 2}});
  CHU_CopyableArray<double> params;
  const auto hits = zigzag.GetIntersectionsWithLine(CHU_DPoint(6, 1), CHU_DPoint(0, 1), &params);
  ASSERT_EQ(hits.GetSize(), 3);
  ASSERT_EQ(params.GetSize(), 3);
  EXPECT_DOUBLE_EQ(hits[0].x, 1.0);
  EXPECT_DOUBLE_EQ(hits[1].x, 3.0);
  EXPECT_DOUBLE_EQ(hits[2].x, 5.0);
  EXPECT_DOUBLE_EQ(params[0], 0.5);
  EXPECT_DOUBLE_EQ(params[1], 1.5);
  EXPECT_DOUBLE_EQ(params[2], 2.5);
}

TEST(PolyLineIntersectionsTest, AVertexIsReportedOnceAndOverlapsByBothEnds) {
  const CHU_DPolyLine chain = Chain({{0, 0}, {2, 2}, {4, 0}});
  CHU_CopyableArray<double> params;
  auto hits = chain.GetIntersectionsWithLine(CHU_DPoint(0, 2), CHU_DPoint(4, 2), &params);
  ASSERT_EQ(hits.GetSize(), 1);  // touches the apex only
  EXPECT_DOUBLE_EQ(params[0], 1.0);
  const CHU_DPolyLine straight = Chain({{0, 0}, {4, 0}, {8, 0}});
  hits = straight.GetIntersectionsWithLine(CHU_DPoint(6, 0), CHU_DPoint(2, 0), &params);
  ASSERT_EQ(hits.GetSize(), 3);  // overlap ends plus the vertex inside the overlap
  EXPECT_EQ(hits[0].x, 2.0);
  EXPECT_EQ(hits[1].x, 4.0);
  EXPECT_EQ(hits[2].x, 6.0);
  EXPECT_TRUE(straight.GetIntersectionsWithLine(CHU_DPoint(0, 1), CHU_DPoint(8, 1)).empty());
}

TEST(PolyLineIntersectionsTest, ClosedRingsIncludeTheClosingEdgeOnce) {
  const Ring square = Square();
  CHU_CopyableArray<double> params;
  const auto hits = square.GetIntersectionsWithLine(CHU_DPoint(-1, 1), CHU_DPoint(3, 1), &params);
  ASSERT_EQ(hits.GetSize(), 2);
  EXPECT_DOUBLE_EQ(params[0], 1.5);
  EXPECT_DOUBLE_EQ(params[1], 3.5);  // on the closing edge
  // Through two corners: (0,0) starts the ring and is not repeated at its end.
  const auto diagonal = square.GetIntersectionsWithLine(CHU_DPoint(-1, -1), CHU_DPoint(3, 3), &params);
  ASSERT_EQ(diagonal.GetSize(), 2);
  EXPECT_EQ(params[0], 0.0);
  EXPECT_EQ(params[1], 2.0);
}

TEST(PolyLineIntersectionsTest, ChainAgainstChainAndRing) {
  const CHU_DPolyLine cut = Chain({{1, -1}, {1, 3}});
  const Ring square = Square();
  CHU_CopyableArray<double> params;
  const auto hits = cut.GetIntersectionsWithPoly(square, &params);
  ASSERT_EQ(hits.GetSize(), 2);
  EXPECT_EQ(hits[0].y, 0.0);
  EXPECT_EQ(hits[1].y, 2.0);
  EXPECT_DOUBLE_EQ(params[1], 0.75);
  const CHU_DPolyLine open = Chain({{0, 1}, {0, 0}, {2, 0}});  // square without the closing edge
  EXPECT_EQ(Chain({{-1, 0.5}, {3, 0.5}}).GetIntersectionsWithPoly(open).GetSize(), 1);
  EXPECT_EQ(Chain({{-1, 0.5}, {3, 0.5}}).GetIntersectionsWithPoly(square).GetSize(), 2);
}

TEST(PolyLineIntersectionsTest, DegenerateChainsNeverFailHard) {
  const CHU_DPolyLine repeated = Chain({{1, 1}, {1, 1}, {1, 1}});
  EXPECT_EQ(repeated.GetIntersectionsWithLine(CHU_DPoint(0, 0), CHU_DPoint(2, 2)).GetSize(), 1);
  EXPECT_TRUE(CHU_DPolyLine().GetIntersectionsWithPoly(Square()).empty());
  EXPECT_TRUE(Chain({{1, 1}}).GetIntersectionsWithPoly(Square()).empty());
  const double nan = std::nan("");
  const CHU_DPolyLine broken = Chain({{0, 0}, {nan, 1}, {2, 0}});
  EXPECT_TRUE(broken.GetIntersectionsWithLine(CHU_DPoint(0, 5), CHU_DPoint(2, 5)).empty());
}

// Every reported point lies on both shapes, and its parameter names its place on
// this chain.
TEST(PolyLineIntersectionsTest, RandomChainsReportPointsOnBothShapesInOrder) {
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
      if (k > 0) {
        ASSERT_GT(params[k], params[k - 1]);
      }
      const int segment = static_cast<int>(std::min(params[k], mine.GetCount() - 1.5));
      const double t = params[k] - segment;
      const CHU_DPoint& s = *mine.GetAt(segment);
      const CHU_DPoint& e = *mine.GetAt(segment + 1);
      ASSERT_NEAR(hits[k].x, s.x + t * (e.x - s.x), 1e-8);
      ASSERT_NEAR(hits[k].y, s.y + t * (e.y - s.y), 1e-8);
      ASSERT_TRUE(other.PtOnPoly(hits[k], 1e-8, nullptr, nullptr));
    }
  }
}
