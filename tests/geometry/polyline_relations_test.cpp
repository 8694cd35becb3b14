#include <gtest/gtest.h>

#include <array>

#include "geometry/shapes.h"

namespace {

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
