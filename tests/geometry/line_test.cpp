#include "hy_util/geometry/line.h"

#include <gtest/gtest.h>

TEST(LineTest, TwoPointConstructorAndSetLineUseDifferentIntercepts) {
  const CHU_DPoint a(0, 1);
  const CHU_DPoint b(2, 5);
  const CHU_DLine made(a, b);
  EXPECT_EQ(made.Slope(), 2.0);
  EXPECT_EQ(made.Y0(), 1.0);
  CHU_DLine set;
  set.SetLine(&a, &b);
  EXPECT_EQ(set.Slope(), 2.0);
  EXPECT_EQ(set.Y0(), -1.0);  // p1.y * (1 - slope)
  EXPECT_FALSE(set.IsVertical());
}

TEST(LineTest, VerticalLinesKeepTheirXAndADirectionMarker) {
  const CHU_DLine up(CHU_DPoint(3, 0), CHU_DPoint(3, 5));
  EXPECT_TRUE(up.IsVertical());
  EXPECT_EQ(up.Y0(), 3.0);
  EXPECT_EQ(up.Slope(), 9999999999.0);
  EXPECT_EQ(CHU_DLine(CHU_DPoint(3, 5), CHU_DPoint(3, 0)).Slope(), -9999999999.0);
  EXPECT_EQ(CHU_DLine(CHU_DPoint(3, 5), CHU_DPoint(3, 5)).Slope(), -9999999999.0);
  EXPECT_EQ(up.Val(7.5), 7.5);
  EXPECT_EQ(up.DistFromPoint(CHU_DPoint(1, 9)), 2.0);
  const CHU_DLine flagged(1, 4.0);
  EXPECT_EQ(flagged.Slope(), -99999999999.0);
  EXPECT_EQ(flagged.Y0(), 4.0);
}

TEST(LineTest, SlopeInterceptConstructorCallsEveryNonZeroSlopeVertical) {
  EXPECT_TRUE(CHU_DLine(0.5, 2.0).IsVertical());
  EXPECT_FALSE(CHU_DLine(0.0, 2.0).IsVertical());
  const CHU_DLine throughPoint(CHU_DPoint(2, 3), 0.5);
  EXPECT_FALSE(throughPoint.IsVertical());
  EXPECT_EQ(throughPoint.Y0(), 2.0);
  EXPECT_EQ(throughPoint.FirstPoint().x, -99999.0);  // the point is not kept
}

TEST(LineTest, OnLineOfAVerticalLineComparesXWithY) {
  const CHU_DLine vertical(CHU_DPoint(3, 0), CHU_DPoint(3, 5));
  EXPECT_TRUE(vertical.OnLine(CHU_DPoint(4, 4)));
  EXPECT_FALSE(vertical.OnLine(CHU_DPoint(3, 0)));
  const CHU_DLine sloped(CHU_DPoint(0, 1), CHU_DPoint(2, 5));
  EXPECT_TRUE(sloped.OnLine(CHU_DPoint(1, 3.0009)));
  EXPECT_FALSE(sloped.OnLine(CHU_DPoint(1, 3.0011)));  // strict
}

TEST(LineTest, ParallelAndPerpendicularLinesPassThroughThePoint) {
  const CHU_DLine sloped(CHU_DPoint(0, 0), CHU_DPoint(1, 2));
  const CHU_DPoint p(1, 1);
  EXPECT_EQ(sloped.Parallel(p)->Val(3.0), 5.0);
  EXPECT_EQ(sloped.Vertical(p)->Slope(), -0.5);
  const CHU_DLine flat(CHU_DPoint(0, 0), CHU_DPoint(1, 0));
  EXPECT_TRUE(flat.Vertical(p)->IsVertical());
  EXPECT_EQ(flat.Vertical(p)->Y0(), 1.0);
  const CHU_DLine vertical(CHU_DPoint(3, 0), CHU_DPoint(3, 5));
  EXPECT_EQ(vertical.Parallel(p)->Y0(), 1.0);
  EXPECT_EQ(vertical.Vertical(p)->Slope(), 0.0);
  EXPECT_EQ(vertical.Vertical(p)->Y0(), 1.0);
}

TEST(LineTest, StoredPointsAreAssignedSoTheirPackedColourStaysEmpty) {
  const CHU_DLine line(CHU_DPoint(0, 0, 0, 0x0000FF), CHU_DPoint(1, 1));
  EXPECT_EQ(line.FirstPoint().GetColour()->red, 255);
  EXPECT_EQ(line.FirstPoint().GetColour()->packed, 0u);
  CHU_DLine target;
  target = line;
  EXPECT_EQ(target.FirstPoint().GetColour()->red, 255);
  EXPECT_EQ(target.SecondPoint().x, 1.0);
}

TEST(LineTest, SegmentPlaneIntersectionIsLimitedToTheSegment) {
  const CHU_DPoint a(0, 0, 1), b(1, 0, 1), c(0, 1, 1);  // the plane z = 1
  CHU_DPoint out;
  EXPECT_TRUE(CHU_DLine(CHU_DPoint(2, 3, 0), CHU_DPoint(2, 3, 4)).IntersectPlane(a, b, c, &out));
  EXPECT_DOUBLE_EQ(out.z, 1.0);
  EXPECT_EQ(out.x, 2.0);
  EXPECT_FALSE(CHU_DLine(CHU_DPoint(2, 3, 2), CHU_DPoint(2, 3, 4)).IntersectPlane(a, b, c, &out));
  EXPECT_DOUBLE_EQ(out.z, 1.0);  // written although outside the segment
  CHU_DPoint untouched(9, 9, 9);
  EXPECT_FALSE(CHU_DLine(CHU_DPoint(0, 0, 0), CHU_DPoint(5, 0, 0)).IntersectPlane(a, b, c, &untouched));
  EXPECT_EQ(untouched.x, 9.0);  // parallel to the plane
}

struct SegmentCase {
  const char* name;
  CHU_DPoint p1, p2, p3, p4;
  int code;
};

class LineSegmentIntersectTest : public testing::TestWithParam<SegmentCase> {};

TEST_P(LineSegmentIntersectTest, GivesTheDocumentedCode) {
  const SegmentCase& c = GetParam();
  CHU_DPoint out(7, 7, 7);
  EXPECT_EQ(CHU_DLine::LineSegmentIntersect(c.p1, c.p2, c.p3, c.p4, out), c.code);
  if (c.code != 0) {
    EXPECT_EQ(out.x, 7.0);  // untouched
  }
}

INSTANTIATE_TEST_SUITE_P(
    Codes, LineSegmentIntersectTest,
    testing::Values(
        SegmentCase{"TouchAtEnd", {0, 0}, {1, 0}, {1, 0}, {1, 1}, 0},
        SegmentCase{"CrossOutside", {0, 0}, {1, 0}, {2, -1}, {2, 1}, 1},
        SegmentCase{"CollinearOverlap", {0, 0}, {2, 0}, {1, 0}, {3, 0}, 2},
        SegmentCase{"ParallelApart", {0, 0}, {2, 0}, {0, 1}, {2, 1}, 3},
        SegmentCase{"ShallowCrossingCountsAsParallel", {0, 0}, {1, 0}, {0, -0.0004}, {1, 0.0004}, 3}),
    [](const testing::TestParamInfo<SegmentCase>& info) { return info.param.name; });

TEST(LineSegmentIntersectTest, WritesOnlyTheCrossingCoordinates) {
  CHU_DPoint out(0, 0, 5, 0x123456);
  ASSERT_EQ(CHU_DLine::LineSegmentIntersect({0, 0}, {1, 0}, {1, 0}, {1, 1}, out), 0);
  EXPECT_EQ(out.x, 1.0);
  EXPECT_EQ(out.y, 0.0);
  EXPECT_EQ(out.z, -99999.0);
  EXPECT_EQ(out.GetColour()->packed, 0x123456u);
}
