// The value types: points, rectangles and lines.

#include <gtest/gtest.h>

#include <memory>

#include "geometry/shapes.h"
#include "hy_util/geometry/line.h"
#include "hy_util/geometry/point3d.h"

namespace {

using Box = std::array<double, 4>;  // left, top, right, bottom
Box Ltrb(const CHU_DRect& r) { return {r.Left(), r.Top(), r.Right(), r.Bottom()}; }
std::pair<bool, Box> Intersected(CHU_DRect r, const CHU_DRect& other) {
  const bool met = r.IntersectRect(other);
  return {met, Ltrb(r)};
}
std::pair<double, double> SlopeAndY0(const CHU_DLine& line) { return {line.Slope(), line.Y0()}; }

}  // namespace

TEST(Point, DefaultsMarkTheCoordinatesUnsetButA3DPointStartsAtTheOrigin) {
  const CHU_DPoint p;
  const CHU_DPoint3D q;
  EXPECT_EQ(std::tuple(p.x, p.y, p.z, int{p.GetSymbol()}, p.GetColour()->alpha),
            std::tuple(-99999.0, -99999.0, -99999.0, -1, 255));
  EXPECT_EQ((std::array{q.x, q.y, q.z}), (std::array{0.0, 0.0, 0.0}));
}

TEST(Point, AssignmentKeepsThePackedColourWhileCopyConstructionCopiesIt) {
  CHU_DPoint red(1, 2, 3, 0x0000FF), green(0, 0, 0, 0x00FF00);
  red.SetItemData(&red);
  red.SetSymbol(7);
  green = red;
  EXPECT_EQ(std::tuple(green.GetColour()->packed, green.GetColor(), green.z, green.GetItemData(), int{green.GetSymbol()}),
            std::tuple(0x00FF00u, 0x0000FFu, 3.0, static_cast<void*>(&red), 7));  // GetColor rebuilds from the components
  EXPECT_EQ(std::pair(CHU_DPoint(red).GetColour()->packed, CHU_DPoint(&red).GetColour()->packed),
            std::pair(0x0000FFu, 0x0000FFu));
}

TEST(Point, SetColorSplitsThePackedValueAndDropsTheHighByte) {
  CHU_DPoint p;
  p.GetColour()->alpha = 3;
  p.SetColor(0xFF123456u);
  EXPECT_EQ((std::array<unsigned, 5>{p.GetColorR(), p.GetColorG(), p.GetColorB(), unsigned(p.GetColour()->alpha),
                                     p.GetColour()->packed}),
            (std::array<unsigned, 5>{0x56, 0x34, 0x12, 255, 0x123456}));
}

TEST(Point, EqualityTestsAreInclusiveAndTwoDIgnoresZ) {
  const CHU_DPoint origin(0, 0, 0), higher(0, 0, 5);
  const CHU_DPoint atTolerance(1e-10, -1e-10, 1e-10), beyond(1.1e-10, 0, 0);
  EXPECT_EQ((std::array{origin.IsApproxEqual(atTolerance, false), origin.IsApproxEqual(&beyond, false),
                        origin.IsApproxEqual(higher, true), origin.IsApproxEqual(higher, false), origin == higher,
                        origin.IsEqual(&higher, 5.0, false), origin.IsEqual(nullptr, 1.0, true)}),
            (std::array{true, false, true, false, false, true, false}));  // == always compares z
}

TEST(Point, GeometryValuesAreCreatedByClassName) {
  for (const char* name : {"CHU_DPoint", "CHU_DPoint3D", "CHU_DRect", "CHU_DPolyLine", "CHU_DPolygon"}) {
    const std::unique_ptr<CHU_Object> object = CHU_RuntimeClassRegistry::Create(name);
    EXPECT_STREQ(object ? object->GetRuntimeClassName() : "(not created)", name);
  }
}

TEST(Rect, ValuesAreStoredAsGivenUnlessSetFromTwoPointsOrNormalised) {
  EXPECT_EQ(Ltrb(CHU_DRect()), (Box{1, 0, 0, 1}));  // inverted and empty
  EXPECT_EQ(Ltrb(CHU_DRect(CHU_DPoint(5, 1), CHU_DPoint(2, 7))), (Box{5, 1, 2, 7}));
  CHU_DRect r, inverted(5, 1, 2, 7);
  r.SetRect(CHU_DPoint(5, 1), CHU_DPoint(2, 7));
  inverted.Normalise();
  EXPECT_EQ(std::pair(Ltrb(r), Ltrb(inverted)), std::pair(Box{2, 7, 5, 1}, Box{2, 7, 5, 1}));
}

TEST(Rect, InflateGrowsOutwardAndUnionDoesNotSkipTheDefault) {
  CHU_DRect r(0, 10, 10, 0), fromDefault;
  r.InflateRect(1, 2);
  fromDefault + CHU_DRect(5, 8, 6, 7);
  EXPECT_EQ(std::pair(Ltrb(r), Ltrb(fromDefault)), std::pair(Box{-1, 12, 11, -2}, Box{1, 8, 6, 1}))
      << "the default's values leak into the union";
}

TEST(Rect, TouchingRectanglesIntersectAndAreNotSeparated) {
  const CHU_DRect b(0, 10, 10, 0);
  EXPECT_EQ(Intersected(b, {10, 20, 20, 10}), std::pair(true, Box{10, 10, 10, 10}));
  EXPECT_EQ(Intersected(b, {11, 20, 20, 11}), std::pair(false, Box{0, 10, 10, 0}));  // unchanged
  const std::pair<CHU_DRect, int> separations[] = {
      {{20, 5, 30, 0}, 1}, {{-30, 5, -20, 0}, 2}, {{0, -5, 10, -8}, 4}, {{20, 30, 30, 20}, 9}, {{10, 20, 20, 10}, 0}};
  for (const auto& [r, code] : separations) EXPECT_EQ(r.InsideRect(b), code) << r.Left() << "," << r.Top();
}

TEST(Rect, EdgesCountAsInsideButPolyInRectTestsOnlyVertices) {
  const CHU_DRect r(0, 10, 10, 0);
  const CHU_DPolyLine crossing = Chain({{-5, 5}, {15, 5}}), touching = Chain({{-5, 5}, {10, 0}});
  EXPECT_EQ((std::array{r.PtInRect({0, 5}), r.PtInRect({10, 10}), r.PtInRect({10.0001, 5}), r.PolyInRect(&crossing),
                        r.PolyInRect(&touching)}),
            (std::array{true, true, false, false, true}));  // a crossing chain without a vertex inside is not in
}

TEST(Line, TwoPointConstructorAndSetLineUseDifferentIntercepts) {
  const CHU_DPoint a(0, 1), b(2, 5);
  CHU_DLine set;
  set.SetLine(&a, &b);
  EXPECT_EQ(SlopeAndY0(CHU_DLine(a, b)), std::make_pair(2.0, 1.0));
  EXPECT_EQ(SlopeAndY0(set), std::make_pair(2.0, -1.0));  // p1.y * (1 - slope)
}

TEST(Line, VerticalLinesKeepTheirXAndADirectionMarker) {
  const CHU_DLine up(CHU_DPoint(3, 0), CHU_DPoint(3, 5));
  EXPECT_EQ(std::tuple(up.IsVertical(), up.Slope(), up.Y0(), up.Val(7.5), up.DistFromPoint({1, 9})),
            std::tuple(true, 9999999999.0, 3.0, 7.5, 2.0));
  EXPECT_EQ(std::pair(CHU_DLine({3, 5}, {3, 0}).Slope(), CHU_DLine({3, 5}, {3, 5}).Slope()),
            std::pair(-9999999999.0, -9999999999.0));  // downwards, and coincident points
  EXPECT_EQ(SlopeAndY0(CHU_DLine(1, 4.0)), std::make_pair(-99999999999.0, 4.0));
}

TEST(Line, SlopeInterceptConstructorCallsEveryNonZeroSlopeVertical) {
  EXPECT_EQ(std::pair(CHU_DLine(0.5, 2.0).IsVertical(), CHU_DLine(0.0, 2.0).IsVertical()), std::pair(true, false));
  const CHU_DLine throughPoint(CHU_DPoint(2, 3), 0.5);
  EXPECT_EQ(std::make_tuple(throughPoint.IsVertical(), throughPoint.Y0(), throughPoint.FirstPoint().x),
            std::make_tuple(false, 2.0, -99999.0));  // the point is not kept
}

TEST(Line, OnLineIsStrictAndOnAVerticalLineComparesXWithY) {
  const CHU_DLine vertical({3, 0}, {3, 5}), sloped({0, 1}, {2, 5});
  EXPECT_EQ((std::array{vertical.OnLine({4, 4}), vertical.OnLine({3, 0}), sloped.OnLine({1, 3.0009}),
                        sloped.OnLine({1, 3.0011})}),
            (std::array{true, false, true, false}));
}

TEST(Line, ParallelAndPerpendicularLinesPassThroughThePoint) {
  const CHU_DLine sloped({0, 0}, {1, 2}), flat({0, 0}, {1, 0}), vertical({3, 0}, {3, 5});
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
  const struct {
    CHU_DPoint p1, p2, p3, p4;
    int code;
  } cases[] = {
      {{0, 0}, {1, 0}, {1, 0}, {1, 1}, 0},            // touching at an end
      {{0, 0}, {2, 0}, {1, 0}, {3, 0}, 2},            // collinear overlap
      {{0, 0}, {1, 0}, {0, 1}, {0, 1}, 2},            // one zero numerator is enough
      {{0, 0}, {2, 0}, {0, 1}, {2, 1}, 3},            // parallel apart
      {{0, 0}, {1, 0}, {0, -0.0004}, {1, 0.0004}, 3}  // crossing, but |denominator| <= 0.001
  };
  for (const auto& c : cases) {
    CHU_DPoint out(7, 7, 7, 0x123456);
    const int code = CHU_DLine::LineSegmentIntersect(c.p1, c.p2, c.p3, c.p4, out);
    EXPECT_EQ(std::tuple(code, out.x, out.y, out.z, out.GetColour()->packed),
              c.code == 0 ? std::tuple(0, 1.0, 0.0, -99999.0, 0x123456u) : std::tuple(c.code, 7.0, 7.0, 7.0, 0x123456u));
  }
}
