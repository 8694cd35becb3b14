#include "hy_util/geometry/rect.h"

#include <gtest/gtest.h>

#include <array>

#include "geometry/shapes.h"

namespace {

using Box = std::array<double, 4>;  // left, top, right, bottom
Box Ltrb(const CHU_DRect& r) { return {r.Left(), r.Top(), r.Right(), r.Bottom()}; }

}  // namespace

TEST(Rect, ValuesAreStoredAsGivenUnlessSetFromTwoPointsOrNormalised) {
  EXPECT_EQ(Ltrb(CHU_DRect()), (Box{1, 0, 0, 1}));  // inverted and empty
  EXPECT_EQ(Ltrb(CHU_DRect(CHU_DPoint(5, 1), CHU_DPoint(2, 7))), (Box{5, 1, 2, 7}));
  CHU_DRect r;
  r.SetRect(CHU_DPoint(5, 1), CHU_DPoint(2, 7));
  EXPECT_EQ(Ltrb(r), (Box{2, 7, 5, 1}));
  CHU_DRect inverted(5, 1, 2, 7);
  inverted.Normalise();
  EXPECT_EQ(Ltrb(inverted), (Box{2, 7, 5, 1}));
}

TEST(Rect, InflateGrowsOutwardAndUnionDoesNotSkipTheDefault) {
  CHU_DRect r(0, 10, 10, 0);
  r.InflateRect(1, 2);
  EXPECT_EQ(Ltrb(r), (Box{-1, 12, 11, -2}));
  CHU_DRect fromDefault;
  fromDefault + CHU_DRect(5, 8, 6, 7);
  EXPECT_EQ(Ltrb(fromDefault), (Box{1, 8, 6, 1}));  // the default's values leak into the union
}

TEST(Rect, TouchingRectanglesIntersectAndAreNotSeparated) {
  CHU_DRect a(0, 10, 10, 0);
  EXPECT_TRUE(a.IntersectRect(CHU_DRect(10, 20, 20, 10)));
  EXPECT_EQ(Ltrb(a), (Box{10, 10, 10, 10}));
  CHU_DRect b(0, 10, 10, 0);
  EXPECT_FALSE(b.IntersectRect(CHU_DRect(11, 20, 20, 11)));
  EXPECT_EQ(Ltrb(b), (Box{0, 10, 10, 0}));  // unchanged
  const std::pair<CHU_DRect, int> separations[] = {
      {{20, 5, 30, 0}, 1}, {{-30, 5, -20, 0}, 2}, {{0, -5, 10, -8}, 4}, {{20, 30, 30, 20}, 9}, {{10, 20, 20, 10}, 0}};
  for (const auto& [r, code] : separations) EXPECT_EQ(r.InsideRect(b), code) << r.Left() << "," << r.Top();
}

TEST(Rect, EdgesCountAsInsideButPolyInRectTestsOnlyVertices) {
  const CHU_DRect r(0, 10, 10, 0);
  EXPECT_TRUE(r.PtInRect(CHU_DPoint(0, 5)));
  EXPECT_TRUE(r.PtInRect(CHU_DPoint(10, 10)));
  EXPECT_FALSE(r.PtInRect(CHU_DPoint(10.0001, 5)));
  const CHU_DPolyLine crossing = Chain({{-5, 5}, {15, 5}}), touching = Chain({{-5, 5}, {10, 0}});
  EXPECT_FALSE(r.PolyInRect(&crossing));  // no vertex inside
  EXPECT_TRUE(r.PolyInRect(&touching));
}
