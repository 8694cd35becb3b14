#include "hy_util/geometry/math.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>

#include "geometry/shapes.h"
#include "hy_util/geometry/line.h"

using HU_LIB::HU_Math;

namespace {

// Exact orientation test for small integer coordinates.
int Side(const CHU_DPoint& a, const CHU_DPoint& b, const CHU_DPoint& c) {
  const double cross = (b.x - a.x) * (c.y - a.y) - (b.y - a.y) * (c.x - a.x);
  return (cross > 0) - (cross < 0);
}

bool InBox(const CHU_DPoint& p, const CHU_DPoint& s, const CHU_DPoint& e) {
  return std::min(s.x, e.x) <= p.x && p.x <= std::max(s.x, e.x) && std::min(s.y, e.y) <= p.y && p.y <= std::max(s.y, e.y);
}

bool SegmentsMeet(const CHU_DPoint& a1, const CHU_DPoint& a2, const CHU_DPoint& b1, const CHU_DPoint& b2) {
  const int o1 = Side(a1, a2, b1), o2 = Side(a1, a2, b2), o3 = Side(b1, b2, a1), o4 = Side(b1, b2, a2);
  return (o1 != o2 && o3 != o4) || (o1 == 0 && InBox(b1, a1, a2)) || (o2 == 0 && InBox(b2, a1, a2)) ||
         (o3 == 0 && InBox(a1, b1, b2)) || (o4 == 0 && InBox(a2, b1, b2));
}

}  // namespace

TEST(InterpolatePtTri, AxisDirectionsAreExactAndACoincidentTargetMovesDown) {
  const CHU_DPoint origin(0, 0), diagonal(3, 4), below(0, -2), same(1, 1);
  CHU_DPoint general(0, 0, 7), axis, coincident;
  HU_Math::InterpolatePtTri(5, &origin, &diagonal, &general);
  HU_Math::InterpolatePtTri(5, &origin, &below, &axis);
  HU_Math::InterpolatePtTri(5, &same, &same, &coincident);
  EXPECT_EQ(std::tuple(general.z, axis.x, axis.y, axis.z, At(coincident)), std::tuple(7.0, 0.0, -5.0, -99999.0, XY(1, -4)))
      << "the general case leaves z alone";
}

TEST(SegmentHelpers, InterpolationAndFractionRoundTripOnRandomSegments) {
  std::mt19937 rng(11);
  std::uniform_real_distribution<double> coord(-1e4, 1e4), unit(0.0, 1.0);
  for (int i = 0; i < 2000; ++i) {
    const CHU_DPoint p(coord(rng), coord(rng)), q(coord(rng), coord(rng));
    const double fraction = unit(rng);
    CHU_DPoint out;
    HU_Math::InterpolatePtTri(fraction * CHU_DLine::SegmentLength(p, q), &p, &q, &out);
    ASSERT_LE(HU_Math::SquaredDistanceToSegment(out, p, q), 1e-16) << i;
    ASSERT_NEAR(HU_Math::GetFractionalDistance(out, p, q), fraction, 1e-9) << i;
  }
  EXPECT_EQ(HU_Math::GetFractionalDistance({5, 9}, {0, 0}, {10, 0}), 0.5);  // y is not used
  EXPECT_EQ(HU_Math::GetFractionalDistance({5, 9}, {1, 1}, {1, 1}), 0.0);
}

TEST(GetIntersectionOfLines, GivesTheCrossingTheSharedStretchOrWithExtendTheUnion) {
  const XY none(9, 9);  // outputs are left alone when nothing is found
  const struct {
    CHU_DPoint a1, a2, b1, b2;
    bool extend, found;
    XY out1, out2;
  } cases[] = {
      {{0, 0}, {1, 1}, {0, 1}, {1, 0}, false, true, {0.5, 0.5}, {0.5, 0.5}},
      {{0, 0}, {2, 0}, {1, 0}, {3, 0}, false, true, {1, 0}, {2, 0}},  // collinear: the shared stretch
      {{0, 0}, {2, 0}, {1, 0}, {3, 0}, true, true, {0, 0}, {3, 0}},   // collinear: the union
      {{0, 0}, {2, 0}, {0, 1}, {2, 1}, true, false, none, none},      // parallel apart, even extended
      {{0, 0}, {1, 0}, {2, -1}, {2, 1}, true, true, {2, 0}, {2, 0}},   // crossing beyond a, extended
      {{1, 0}, {1, 0}, {0, 0}, {2, 0}, false, false, none, none},   // point a: parameter negated to -0.5
      {{1, 0}, {1, 0}, {0, 0}, {2, 0}, true, true, {1, 0}, {1, 0}},
      {{0, 0}, {2, 0}, {1, 1}, {1, 1}, true, false, none, none},
      {{3, 3}, {3, 3}, {3, 3}, {3, 3}, false, true, {3, 3}, {3, 3}},
      {{3, 3}, {3, 3}, {3, 4}, {3, 4}, false, false, none, none},
      {{std::nan(""), 0}, {1, 1}, {0, 1}, {1, 0}, false, false, none, none},
  };
  for (const auto& c : cases) {
    CHU_DPoint o1(9, 9), o2(9, 9);
    const bool found = HU_Math::GetIntersectionOfLines(c.a1, c.a2, c.b1, c.b2, o1, o2, c.extend);
    EXPECT_EQ(std::tuple(found, At(o1), At(o2)), std::tuple(c.found, c.out1, c.out2))
        << "case " << &c - cases;
  }
}

// Small integer coordinates give many touching, collinear and parallel pairs, and
// make |denominator| <= 0.001 of LineSegmentIntersect mean exactly parallel.
TEST(GetIntersectionOfLines, AndLineSegmentIntersectAgreeWithAnExactOracleAndTheirPointsLieOnBothSegments) {
  std::mt19937 rng(5);
  std::uniform_int_distribution<int> coord(-4, 4);
  int met = 0;
  for (int i = 0; i < 20000; ++i) {
    const CHU_DPoint a1(coord(rng), coord(rng)), a2(coord(rng), coord(rng));
    const CHU_DPoint b1(coord(rng), coord(rng)), b2(coord(rng), coord(rng));
    if (a1 == a2) continue;  // a point a follows its own sign rule
    CHU_DPoint o1, o2, crossing;
    const bool found = HU_Math::GetIntersectionOfLines(a1, a2, b1, b2, o1, o2, false);
    const int code = CHU_DLine::LineSegmentIntersect(a1, a2, b1, b2, crossing);
    ASSERT_EQ(found, SegmentsMeet(a1, a2, b1, b2)) << i;
    if (code < 2) {
      ASSERT_EQ(code == 0, found) << i;
    }
    if (!found) continue;
    ++met;
    for (const CHU_DPoint* o : {&o1, &o2, code == 0 ? &crossing : &o1}) {
      ASSERT_LE(HU_Math::SquaredDistanceToSegment(*o, a1, a2) + HU_Math::SquaredDistanceToSegment(*o, b1, b2), 1e-18) << i;
    }
    ASSERT_LE(HU_Math::GetFractionalDistance(o1, a1, a2), HU_Math::GetFractionalDistance(o2, a1, a2)) << i;
  }
  EXPECT_GT(met, 1000);
}
