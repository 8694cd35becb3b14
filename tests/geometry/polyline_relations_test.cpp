#include <gtest/gtest.h>

#include <initializer_list>
#include <utility>

#include "hy_util/geometry/polygon.h"
#include "hy_util/geometry/polyline.h"

namespace {

template <class Shape = CHU_DPolyLine>
Shape Make(std::initializer_list<std::pair<double, double>> xy) {
  Shape shape;
  for (auto [x, y] : xy) shape.AddPt(x, y, 0.0);
  return shape;
}

// A U-shaped ring: two arms x in [0, 1] and [2, 3] over y in [1, 3], joined below.
const CHU_DPolygon& U() {
  static const CHU_DPolygon u =
      Make<CHU_DPolygon>({{0, 0}, {3, 0}, {3, 3}, {2, 3}, {2, 1}, {1, 1}, {1, 3}, {0, 3}});
  return u;
}

struct Relation {
  const char* name;
  CHU_DPolyLine chain;
  bool inside, partiallyInside, partiallyOutside, completelyOutside;
};

}  // namespace

TEST(PolylineRelations, ClassifyChainsAgainstAConcaveRing) {
  const Relation cases[] = {
      {"within one arm", Make({{0.2, 0.5}, {0.5, 2.5}, {0.8, 2}}), true, true, false, false},
      {"bridging the gap between the arms", Make({{0.5, 2}, {2.5, 2}}), false, true, true, false},
      {"crossing the outer side", Make({{0.5, 0.5}, {-2, 0.5}}), false, true, true, false},
      {"far away", Make({{5, 5}, {6, 7}}), false, false, true, true},
      {"in the gap, clear of the arms", Make({{1.5, 2}, {1.5, 2.8}}), false, false, true, true},
      {"a single vertex inside", Make({{2.5, 2}}), true, true, false, false},
      {"crossing both arms, all vertices outside", Make({{-1, 2}, {4, 2}}), false, true, true, false},
      {"around the ring without touching it", Make({{-1, -1}, {4, -1}, {4, 4}, {-1, 4}, {-1, -1}}), false,
       false, true, true},
  };
  for (const Relation& c : cases) {
    SCOPED_TRACE(c.name);
    EXPECT_EQ(c.chain.IsInsidePolygon(U()), c.inside);
    EXPECT_EQ(c.chain.IsPartiallyInsidePolygon(U()), c.partiallyInside);
    EXPECT_EQ(c.chain.IsPartiallyOutsidePolygon(U(), 0.01), c.partiallyOutside);
    EXPECT_EQ(c.chain.IsCompletelyOutsidePolygon(U(), 0.01), c.completelyOutside);
  }
}

TEST(PolylineRelations, ToleranceIsAnInclusiveDistanceToTheBoundary) {
  // Just outside the left side of the ring, 0.1 away.
  const CHU_DPolyLine hugging = Make({{-0.1, 0.5}, {-0.1, 2.5}});
  EXPECT_TRUE(hugging.IsPartiallyOutsidePolygon(U(), 0.05));
  EXPECT_FALSE(hugging.IsPartiallyOutsidePolygon(U(), 0.125));
  EXPECT_TRUE(hugging.IsCompletelyOutsidePolygon(U(), 0.05));
  EXPECT_FALSE(hugging.IsCompletelyOutsidePolygon(U(), 0.125));
}

TEST(PolylineRelations, ARingThatEnclosesThePolygonOverlapsIt) {
  const auto around = Make<CHU_DPolygon>({{-1, -1}, {4, -1}, {4, 4}, {-1, 4}});
  EXPECT_TRUE(around.IsPartiallyInsidePolygon(U()));
  EXPECT_FALSE(around.IsCompletelyOutsidePolygon(U(), 0.0));
  EXPECT_FALSE(around.IsInsidePolygon(U()));
  // The open chain with the same vertices misses the closing edge and stays outside.
  const CHU_DPolyLine open = Make({{-1, -1}, {4, -1}, {4, 4}, {-1, 4}});
  EXPECT_TRUE(open.IsCompletelyOutsidePolygon(U(), 0.0));
}

TEST(PolylineRelations, EmptyShapesAreNeitherInsideNorOutside) {
  const CHU_DPolyLine empty;
  EXPECT_FALSE(empty.IsInsidePolygon(U()));
  EXPECT_FALSE(empty.IsPartiallyInsidePolygon(U()));
  EXPECT_FALSE(empty.IsPartiallyOutsidePolygon(U(), 0.0));
  EXPECT_FALSE(empty.IsCompletelyOutsidePolygon(U(), 0.0));
  const CHU_DPolyLine line = Make({{0.5, 0.5}, {0.6, 0.6}});
  EXPECT_FALSE(line.IsInsidePolygon(CHU_DPolygon()));
  EXPECT_TRUE(line.IsCompletelyOutsidePolygon(CHU_DPolygon(), 1.0));
}

TEST(PolylineRelations, RectOnPolyFindsAnyPartOfTheChainInTheRectangle) {
  const CHU_DRect rect(0, 1, 1, 0);  // left, top, right, bottom
  EXPECT_TRUE(Make({{0.5, 0.5}}).RectOnPoly(rect));
  EXPECT_TRUE(Make({{-1, 0.5}, {2, 0.5}}).RectOnPoly(rect));  // passes through, no vertex inside
  EXPECT_TRUE(Make({{1, 2}, {1, 1}}).RectOnPoly(rect));        // touches a corner
  EXPECT_FALSE(Make({{1.5, -1}, {3, 2}}).RectOnPoly(rect));
  EXPECT_FALSE(Make({{-1, 0.5}, {2, 0.5}}).RectOnPoly(CHU_DRect()));  // the inverted default is empty
  // A ring around the rectangle holds it; the open chain with those vertices does not.
  EXPECT_TRUE(Make<CHU_DPolygon>({{-5, -5}, {5, -5}, {5, 5}, {-5, 5}}).RectOnPoly(rect));
  EXPECT_FALSE(Make({{-5, -5}, {5, -5}, {5, 5}, {-5, 5}}).RectOnPoly(rect));
  EXPECT_FALSE(CHU_DPolyLine().RectOnPoly(rect));
}
