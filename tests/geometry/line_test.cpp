#include "hy_util/geometry/line.h"

#include <gtest/gtest.h>

#include <array>
#include <tuple>
#include <utility>

namespace {

std::pair<double, double> SlopeAndY0(const CHU_DLine& line) { return {line.Slope(), line.Y0()}; }

}  // namespace

TEST(Line, TwoPointConstructorAndSetLineUseDifferentIntercepts) {
  const CHU_DPoint a(0, 1), b(2, 5);
  CHU_DLine set;
  set.SetLine(&a, &b);
  EXPECT_EQ(SlopeAndY0(CHU_DLine(a, b)), std::make_pair(2.0, 1.0));
  EXPECT_EQ(SlopeAndY0(set), std::make_pair(2.0, -1.0));  // p1.y * (1 - slope)
}

TEST(Line, VerticalLinesKeepTheirXAndADirectionMarker) {
  const CHU_DLine up(CHU_DPoint(3, 0), CHU_DPoint(3, 5));
  EXPECT_TRUE(up.IsVertical());
  EXPECT_EQ(SlopeAndY0(up), std::make_pair(9999999999.0, 3.0));
  EXPECT_EQ(CHU_DLine(CHU_DPoint(3, 5), CHU_DPoint(3, 0)).Slope(), -9999999999.0);
  EXPECT_EQ(CHU_DLine(CHU_DPoint(3, 5), CHU_DPoint(3, 5)).Slope(), -9999999999.0);  // coincident points
  EXPECT_EQ(std::make_pair(up.Val(7.5), up.DistFromPoint(CHU_DPoint(1, 9))), std::make_pair(7.5, 2.0));
  EXPECT_EQ(SlopeAndY0(CHU_DLine(1, 4.0)), std::make_pair(-99999999999.0, 4.0));
}

TEST(Line, SlopeInterceptConstructorCallsEveryNonZeroSlopeVertical) {
  EXPECT_TRUE(CHU_DLine(0.5, 2.0).IsVertical());
  EXPECT_FALSE(CHU_DLine(0.0, 2.0).IsVertical());
  const CHU_DLine throughPoint(CHU_DPoint(2, 3), 0.5);
  EXPECT_EQ(std::make_tuple(throughPoint.IsVertical(), throughPoint.Y0(), throughPoint.FirstPoint().x),
            std::make_tuple(false, 2.0, -99999.0));  // the point is not kept
}

TEST(Line, OnLineIsStrictAndOnAVerticalLineComparesXWithY) {
  const CHU_DLine vertical(CHU_DPoint(3, 0), CHU_DPoint(3, 5));
  const CHU_DLine sloped(CHU_DPoint(0, 1), CHU_DPoint(2, 5));
  EXPECT_TRUE(vertical.OnLine(CHU_DPoint(4, 4)));
  EXPECT_FALSE(vertical.OnLine(CHU_DPoint(3, 0)));
  EXPECT_TRUE(sloped.OnLine(CHU_DPoint(1, 3.0009)));
  EXPECT_FALSE(sloped.OnLine(CHU_DPoint(1, 3.0011)));
}

TEST(Line, ParallelAndPerpendicularLinesPassThroughThePoint) {
  const CHU_DLine sloped(CHU_DPoint(0, 0), CHU_DPoint(1, 2));
  const CHU_DLine flat(CHU_DPoint(0, 0), CHU_DPoint(1, 0));
  const CHU_DLine vertical(CHU_DPoint(3, 0), CHU_DPoint(3, 5));
  const CHU_DPoint p(1, 1);
  EXPECT_EQ(SlopeAndY0(*sloped.Parallel(p)), std::make_pair(2.0, -1.0));
  EXPECT_EQ(SlopeAndY0(*sloped.Vertical(p)), std::make_pair(-0.5, 1.5));
  EXPECT_EQ(std::make_pair(flat.Vertical(p)->IsVertical(), flat.Vertical(p)->Y0()), std::make_pair(true, 1.0));
  EXPECT_EQ(std::make_pair(vertical.Parallel(p)->IsVertical(), vertical.Parallel(p)->Y0()), std::make_pair(true, 1.0));
  EXPECT_EQ(SlopeAndY0(*vertical.Vertical(p)), std::make_pair(0.0, 1.0));
}

TEST(Line, StoredPointsAreAssignedSoTheirPackedColourStaysEmpty) {
  CHU_DLine target;
  target = CHU_DLine(CHU_DPoint(0, 0, 0, 0x0000FF), CHU_DPoint(1, 1));
  EXPECT_EQ(std::make_pair(target.FirstPoint().GetColour()->red, target.FirstPoint().GetColour()->packed),
            std::make_pair(255, 0u));
}

TEST(Line, SegmentPlaneIntersectionIsWrittenOffTheSegmentButOnlyTrueOnIt) {
  const CHU_DPoint a(0, 0, 1), b(1, 0, 1), c(0, 1, 1);  // the plane z = 1
  CHU_DPoint out, beyond, parallel(9, 9, 9);
  EXPECT_TRUE(CHU_DLine(CHU_DPoint(2, 3, 0), CHU_DPoint(2, 3, 4)).IntersectPlane(a, b, c, &out));
  EXPECT_FALSE(CHU_DLine(CHU_DPoint(2, 3, 2), CHU_DPoint(2, 3, 4)).IntersectPlane(a, b, c, &beyond));
  EXPECT_FALSE(CHU_DLine(CHU_DPoint(0, 0, 0), CHU_DPoint(5, 0, 0)).IntersectPlane(a, b, c, &parallel));
  EXPECT_EQ((std::array{out.x, out.y, out.z, beyond.z, parallel.z}), (std::array{2.0, 3.0, 1.0, 1.0, 9.0}))
      << "written although beyond the segment, untouched when parallel";
}

TEST(Line, LineSegmentIntersectGivesItsCodeAndWritesOnlyACrossing) {
  struct Case {
    CHU_DPoint p1, p2, p3, p4;
    int code;
  };
  const Case cases[] = {
      {{0, 0}, {1, 0}, {1, 0}, {1, 1}, 0},            // touching at an end
      {{0, 0}, {2, 0}, {1, 0}, {3, 0}, 2},            // collinear overlap
      {{0, 0}, {2, 0}, {0, 1}, {2, 1}, 3},            // parallel apart
      {{0, 0}, {1, 0}, {0, -0.0004}, {1, 0.0004}, 3}  // crossing, but |denominator| <= 0.001
  };
  for (const Case& c : cases) {
    CHU_DPoint out(7, 7, 7, 0x123456);
    EXPECT_EQ(CHU_DLine::LineSegmentIntersect(c.p1, c.p2, c.p3, c.p4, out), c.code) << c.p3.x << "," << c.p3.y;
    const CHU_DPoint expected = c.code == 0 ? CHU_DPoint(1, 0, -99999.0) : CHU_DPoint(7, 7, 7);
    EXPECT_TRUE(out == expected && out.GetColour()->packed == 0x123456u) << c.p3.x << "," << c.p3.y;
  }
}
