#include "hy_util/geometry/math.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <random>

#include "hy_util/geometry/line.h"

using HU_LIB::HU_Math;

namespace {

double DistanceToSegment(const CHU_DPoint& p, const CHU_DPoint& s, const CHU_DPoint& e) {
  return std::sqrt(HU_Math::SquaredDistanceToSegment(p, s, e));
}

// Exact for the small integer coordinates the randomized test uses.
int Orientation(const CHU_DPoint& a, const CHU_DPoint& b, const CHU_DPoint& c) {
  const double cross = (b.x - a.x) * (c.y - a.y) - (b.y - a.y) * (c.x - a.x);
  return (cross > 0) - (cross < 0);
}

bool WithinBox(const CHU_DPoint& p, const CHU_DPoint& s, const CHU_DPoint& e) {
  return std::min(s.x, e.x) <= p.x && p.x <= std::max(s.x, e.x) && std::min(s.y, e.y) <= p.y &&
         p.y <= std::max(s.y, e.y);
}

bool SegmentsMeet(const CHU_DPoint& a1, const CHU_DPoint& a2, const CHU_DPoint& b1, const CHU_DPoint& b2) {
  const int o1 = Orientation(a1, a2, b1), o2 = Orientation(a1, a2, b2);
  const int o3 = Orientation(b1, b2, a1), o4 = Orientation(b1, b2, a2);
  if (o1 != o2 && o3 != o4) return true;
  return (o1 == 0 && WithinBox(b1, a1, a2)) || (o2 == 0 && WithinBox(b2, a1, a2)) ||
         (o3 == 0 && WithinBox(a1, b1, b2)) || (o4 == 0 && WithinBox(a2, b1, b2));
}

}  // namespace

TEST(InterpolatePtTriTest, AxisDirectionsAreExactAndACoincidentTargetMovesDown) {
  const CHU_DPoint origin(0, 0, 7);
  CHU_DPoint out(0, 0, 7);
  const CHU_DPoint diagonal(3, 4);
  HU_Math::InterpolatePtTri(5, &origin, &diagonal, &out);
  EXPECT_DOUBLE_EQ(out.x, 3.0);
  EXPECT_DOUBLE_EQ(out.y, 4.0);
  EXPECT_EQ(out.z, 7.0);  // the general case leaves z alone
  const CHU_DPoint below(0, -2);
  HU_Math::InterpolatePtTri(5, &origin, &below, &out);
  EXPECT_EQ(out.y, -5.0);
  EXPECT_EQ(out.z, -99999.0);
  const CHU_DPoint same(1, 1);
  HU_Math::InterpolatePtTri(5, &same, &same, &out);
  EXPECT_EQ(out.x, 1.0);
  EXPECT_EQ(out.y, -4.0);
}

TEST(SegmentHelpersTest, InterpolationAndFractionRoundTrip) {
  std::mt19937 rng(11);
  std::uniform_real_distribution<double> coord(-1e4, 1e4);
  std::uniform_real_distribution<double> unit(0.0, 1.0);
  for (int i = 0; i < 2000; ++i) {
    const CHU_DPoint p(coord(rng), coord(rng)), q(coord(rng), coord(rng));
    const double length = CHU_DLine::SegmentLength(p, q);
    const double fraction = unit(rng);
    CHU_DPoint out;
    HU_Math::InterpolatePtTri(fraction * length, &p, &q, &out);
    ASSERT_LE(DistanceToSegment(out, p, q), 1e-8) << i;
    ASSERT_NEAR(HU_Math::GetFractionalDistance(out, p, q), fraction, 1e-9) << i;
  }
}

TEST(GetIntersectionOfLinesTest, CrossingTouchingAndOverlappingSegments) {
  CHU_DPoint o1, o2;
  ASSERT_TRUE(HU_Math::GetIntersectionOfLines({0, 0}, {1, 1}, {0, 1}, {1, 0}, o1, o2, false));
  EXPECT_DOUBLE_EQ(o1.x, 0.5);
  EXPECT_DOUBLE_EQ(o2.y, 0.5);
  ASSERT_TRUE(HU_Math::GetIntersectionOfLines({0, 0}, {1, 0}, {1, 0}, {1, 1}, o1, o2, false));
  EXPECT_EQ(o1.x, 1.0);
  ASSERT_TRUE(HU_Math::GetIntersectionOfLines({0, 0}, {2, 0}, {1, 0}, {3, 0}, o1, o2, false));
  EXPECT_EQ(o1.x, 1.0);
  EXPECT_EQ(o2.x, 2.0);
  ASSERT_TRUE(HU_Math::GetIntersectionOfLines({0, 0}, {2, 0}, {1, 0}, {3, 0}, o1, o2, true));
  EXPECT_EQ(o1.x, 0.0);
  EXPECT_EQ(o2.x, 3.0);
  EXPECT_FALSE(HU_Math::GetIntersectionOfLines({0, 0}, {2, 0}, {0, 1}, {2, 1}, o1, o2, true));
  EXPECT_FALSE(HU_Math::GetIntersectionOfLines({0, 0}, {1, 0}, {2, -1}, {2, 1}, o1, o2, false));
  EXPECT_TRUE(HU_Math::GetIntersectionOfLines({0, 0}, {1, 0}, {2, -1}, {2, 1}, o1, o2, true));
  EXPECT_EQ(o1.x, 2.0);
}

TEST(GetIntersectionOfLinesTest, ZeroLengthSegments) {
  CHU_DPoint o1, o2;
  // A point a is measured from a to b1: the negated parameter -0.5 is off b.
  EXPECT_FALSE(HU_Math::GetIntersectionOfLines({1, 0}, {1, 0}, {0, 0}, {2, 0}, o1, o2, false));
  EXPECT_TRUE(HU_Math::GetIntersectionOfLines({1, 0}, {1, 0}, {0, 0}, {2, 0}, o1, o2, true));
  EXPECT_TRUE(HU_Math::GetIntersectionOfLines({0, 0}, {2, 0}, {1, 0}, {1, 0}, o1, o2, false));
  EXPECT_EQ(o1.x, 1.0);
  EXPECT_FALSE(HU_Math::GetIntersectionOfLines({0, 0}, {2, 0}, {1, 1}, {1, 1}, o1, o2, true));
  EXPECT_TRUE(HU_Math::GetIntersectionOfLines({3, 3}, {3, 3}, {3, 3}, {3, 3}, o1, o2, false));
  EXPECT_FALSE(HU_Math::GetIntersectionOfLines({3, 3}, {3, 3}, {3, 4}, {3, 4}, o1, o2, false));
  const double nan = std::nan("");
  EXPECT_FALSE(HU_Math::GetIntersectionOfLines({nan, 0}, {1, 1}, {0, 1}, {1, 0}, o1, o2, false));
}

// Small integer coordinates give many touching, collinear and parallel pairs, and
// an exact orientation oracle.
TEST(GetIntersectionOfLinesTest, AgreesWithAnExactOracleAndItsPointsLieOnBothSegments) {
  std::mt19937 rng(5);
  std::uniform_int_distribution<int> coord(-4, 4);
  int met = 0;
  for (int i = 0; i < 20000; ++i) {
    const CHU_DPoint a1(coord(rng), coord(rng)), a2(coord(rng), coord(rng));
    const CHU_DPoint b1(coord(rng), coord(rng)), b2(coord(rng), coord(rng));
    if (a1.x == a2.x && a1.y == a2.y) continue;  // a point a follows its own sign rule
    CHU_DPoint o1, o2;
    const bool found = HU_Math::GetIntersectionOfLines(a1, a2, b1, b2, o1, o2, false);
    ASSERT_EQ(found, SegmentsMeet(a1, a2, b1, b2)) << i;
    if (!found) continue;
    ++met;
    for (const CHU_DPoint* o : {&o1, &o2}) {
      ASSERT_LE(DistanceToSegment(*o, a1, a2), 1e-9) << i;
      ASSERT_LE(DistanceToSegment(*o, b1, b2), 1e-9) << i;
    }
    ASSERT_LE(HU_Math::GetFractionalDistance(o1, a1, a2), HU_Math::GetFractionalDistance(o2, a1, a2)) << i;
  }
  EXPECT_GT(met, 1000);
}

TEST(GetIntersectionOfLinesTest, AgreesWithLineSegmentIntersectOnWellConditionedCrossings) {
  std::mt19937 rng(9);
  std::uniform_real_distribution<double> coord(-100.0, 100.0);
  for (int i = 0; i < 20000; ++i) {
    const CHU_DPoint a1(coord(rng), coord(rng)), a2(coord(rng), coord(rng));
    const CHU_DPoint b1(coord(rng), coord(rng)), b2(coord(rng), coord(rng));
    CHU_DPoint o1, o2, reference;
    const bool found = HU_Math::GetIntersectionOfLines(a1, a2, b1, b2, o1, o2, false);
    const int code = CHU_DLine::LineSegmentIntersect(a1, a2, b1, b2, reference);
    if (code >= 2) continue;
    ASSERT_EQ(found, code == 0) << i;
    if (!found) continue;
    ASSERT_NEAR(o1.x, reference.x, 1e-8) << i;
    ASSERT_NEAR(o1.y, reference.y, 1e-8) << i;
    const double t = HU_Math::GetFractionalDistance(o1, a1, a2);
    ASSERT_GE(t, -1e-9) << i;
    ASSERT_LE(t, 1.0 + 1e-9) << i;
  }
}
