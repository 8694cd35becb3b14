#include "hy_util/geometry/rect.h"

#include <gtest/gtest.h>

#include "hy_util/geometry/polyline.h"

namespace {

void ExpectRect(const CHU_DRect& r, double left, double top, double right, double bottom) {
  EXPECT_EQ(r.Left(), left);
  EXPECT_EQ(r.Top(), top);
  EXPECT_EQ(r.Right(), right);
  EXPECT_EQ(r.Bottom(), bottom);
}

}  // namespace

TEST(RectTest, ValuesAreStoredAsGivenUnlessBuiltFromTwoPoints) {
  ExpectRect(CHU_DRect(), 1, 0, 0, 1);
  ExpectRect(CHU_DRect(CHU_DPoint(5, 1), CHU_DPoint(2, 7)), 5, 1, 2, 7);
  CHU_DRect r;
  r.SetRect(CHU_DPoint(5, 1), CHU_DPoint(2, 7));
  ExpectRect(r, 2, 7, 5, 1);
  CHU_DRect inverted(5, 1, 2, 7);
  inverted.Normalise();
  ExpectRect(inverted, 2, 7, 5, 1);
  EXPECT_EQ(inverted.Width(), 3.0);
  EXPECT_EQ(CHU_DRect(5, 1, 2, 7).Height(), 6.0);
  const CHU_DPoint centre = CHU_DRect(0, 10, 4, 0).CenterPoint();
  EXPECT_EQ(centre.x, 2.0);
  EXPECT_EQ(centre.y, 5.0);
  EXPECT_EQ(centre.z, -99999.0);
}

TEST(RectTest, InflateGrowsOutwardAndUnionDoesNotSkipTheDefault) {
  CHU_DRect r(0, 10, 10, 0);
  r.InflateRect(1, 2);
  ExpectRect(r, -1, 12, 11, -2);
  CHU_DRect fromDefault;
  fromDefault.UnionRect(CHU_DRect(5, 8, 6, 7));
  ExpectRect(fromDefault, 1, 8, 6, 1);  // the default's corners leak into the union
  CHU_DRect sum(0, 1, 1, 0);
  sum + CHU_DRect(2, 3, 3, 2);
  ExpectRect(sum, 0, 3, 3, 0);
}

TEST(RectTest, TouchingRectanglesIntersectAndAreNotSeparated) {
  CHU_DRect a(0, 10, 10, 0);
  EXPECT_TRUE(a.IntersectRect(CHU_DRect(10, 20, 20, 10)));
  ExpectRect(a, 10, 10, 10, 10);
  CHU_DRect b(0, 10, 10, 0);
  EXPECT_FALSE(b.IntersectRect(CHU_DRect(11, 20, 20, 11)));
  ExpectRect(b, 0, 10, 10, 0);
  const CHU_DRect base(0, 10, 10, 0);
  EXPECT_EQ(CHU_DRect(20, 5, 30, 0).InsideRect(base), 1);
  EXPECT_EQ(CHU_DRect(-30, 5, -20, 0).InsideRect(base), 2);
  EXPECT_EQ(CHU_DRect(0, -5, 10, -8).InsideRect(base), 4);
  EXPECT_EQ(CHU_DRect(20, 30, 30, 20).InsideRect(base), 9);
  EXPECT_EQ(CHU_DRect(10, 20, 20, 10).InsideRect(base), 0);
}

TEST(RectTest, EdgesCountAsInsideButPolyInRectTestsOnlyVertices) {
  const CHU_DRect r(0, 10, 10, 0);
  EXPECT_TRUE(r.PtInRect(CHU_DPoint(0, 5)));
  EXPECT_TRUE(r.PtInRect(CHU_DPoint(10, 10)));
  EXPECT_FALSE(r.PtInRect(CHU_DPoint(10.0001, 5)));
  EXPECT_FALSE(r.PtInRect(nullptr));
  CHU_DPolyLine crossing;
  crossing.AddPt(-5, 5, 0);
  crossing.AddPt(15, 5, 0);
  EXPECT_FALSE(r.PolyInRect(&crossing));
  crossing.AddPt(10, 0, 0);
  EXPECT_TRUE(r.PolyInRect(&crossing));
  CHU_DPolyLine empty;
  EXPECT_FALSE(r.PolyInRect(&empty));
}
