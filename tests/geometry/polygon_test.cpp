#include "hy_util/geometry/polygon.h"

#include <gtest/gtest.h>

#include <cmath>
#include <initializer_list>
#include <limits>
#include <numbers>
#include <utility>

namespace {

CHU_DPolygon Ring(std::initializer_list<std::pair<double, double>> xy) {
  CHU_DPolygon polygon;
  for (auto [x, y] : xy) polygon.AddPt(x, y, 0.0);
  return polygon;
}

CHU_DPolygon UnitSquare() { return Ring({{0, 0}, {1, 0}, {1, 1}, {0, 1}}); }

CHU_DPoint Pt(double x, double y) { return CHU_DPoint(x, y); }

std::vector<std::pair<double, double>> Coords(const CHU_DPolygon& polygon) {
  std::vector<std::pair<double, double>> out;
  for (int i = 0; i < polygon.GetCount(); ++i) out.emplace_back(polygon.GetAt(i)->x, polygon.GetAt(i)->y);
  return out;
}

using Coordinates = std::vector<std::pair<double, double>>;

}  // namespace

TEST(Polygon, AreaAndCentroidFollowTheVertexOrderAndIgnoreADoubledFirstVertex) {
  CHU_DPolygon anticlockwise = UnitSquare();
  CHU_DPolygon clockwise = Ring({{0, 1}, {1, 1}, {1, 0}, {0, 0}});
  CHU_DPolygon doubled = Ring({{0, 0}, {1, 0}, {1, 1}, {0, 1}, {0, 0}});
  EXPECT_EQ(anticlockwise.GetSignedArea(), 1.0);
  EXPECT_EQ(clockwise.GetSignedArea(), -1.0);
  EXPECT_EQ(clockwise.GetArea(), 1.0);
  EXPECT_EQ(doubled.GetSignedArea(), 1.0);
  for (const CHU_DPolygon* polygon : {&anticlockwise, &clockwise, &doubled}) {
    CHU_DPoint c(7.0, 7.0, 7.0);
    ASSERT_TRUE(polygon->GetCentroid(&c));
    EXPECT_EQ(c.x, 0.5);
    EXPECT_EQ(c.y, 0.5);
    EXPECT_EQ(c.z, 7.0);  // only x and y are written
    EXPECT_EQ(polygon->GetLength(), 4.0);
  }
}

TEST(Polygon, CentroidOfAZeroAreaRingIsTheMeanOfItsStoredVertices) {
  CHU_DPoint c;
  ASSERT_TRUE(Ring({{0, 0}, {1, 0}, {2, 0}}).GetCentroid(&c));
  EXPECT_EQ(c.x, 1.0);
  EXPECT_EQ(c.y, 0.0);
  ASSERT_TRUE(Ring({{0, 0}, {0, 0}, {3, 0}}).GetCentroid(&c));  // repeats count twice
  EXPECT_EQ(c.x, 1.0);
  EXPECT_FALSE(CHU_DPolygon().GetCentroid(&c));
  EXPECT_FALSE(UnitSquare().GetCentroid(nullptr));
}

TEST(Polygon, ReorderVerticesReversesOnlyWhenTheOrientationDiffers) {
  CHU_DPolygon square = UnitSquare();
  square.ReorderVertices(VO_CLOCKWISE);
  const Coordinates reversed{{0, 1}, {1, 1}, {1, 0}, {0, 0}};
  EXPECT_EQ(Coords(square), reversed);
  square.ReorderVertices(VO_CLOCKWISE);
  EXPECT_EQ(Coords(square), reversed);
  square.ReorderVertices(VO_ANTICLOCKWISE);
  EXPECT_EQ(square.GetSignedArea(), 1.0);

  CHU_DPolygon flat = Ring({{0, 0}, {1, 0}, {2, 0}});  // zero area counts as anticlockwise
  flat.ReorderVertices(VO_CLOCKWISE);
  EXPECT_EQ(flat.GetAt(0)->x, 2.0);
}

struct PtInPolyCase {
  double x, y;
  bool inside;
};

class UnitSquarePtInPoly : public testing::TestWithParam<PtInPolyCase> {};

TEST_P(UnitSquarePtInPoly, FollowsTheHalfOpenEdgeRule) {
  const PtInPolyCase c = GetParam();
  EXPECT_EQ(UnitSquare().PtInPoly(Pt(c.x, c.y)), c.inside);
  // The rule does not depend on the direction the ring runs in.
  EXPECT_EQ(Ring({{0, 1}, {1, 1}, {1, 0}, {0, 0}}).PtInPoly(Pt(c.x, c.y)), c.inside);
}

INSTANTIATE_TEST_SUITE_P(Polygon, UnitSquarePtInPoly,
                         testing::Values(PtInPolyCase{0.5, 0.5, true}, PtInPolyCase{2, 0.5, false},
                                         PtInPolyCase{-1, 0.5, false}, PtInPolyCase{1, 0.5, true},
                                         PtInPolyCase{0, 0.5, false}, PtInPolyCase{0.5, 1, true},
                                         PtInPolyCase{0.5, 0, false}, PtInPolyCase{1, 1, true},
                                         PtInPolyCase{0, 0, false}, PtInPolyCase{1, 0, false},
                                         PtInPolyCase{0, 1, false}, PtInPolyCase{0.5, 1.5, false}));

TEST(Polygon, PtInPolyCountsARayThroughAVertexOnce) {
  // A diamond: the ray from the centre passes exactly through the right vertex.
  const CHU_DPolygon diamond = Ring({{0, -1}, {1, 0}, {0, 1}, {-1, 0}});
  EXPECT_TRUE(diamond.PtInPoly(Pt(0, 0)));
  EXPECT_FALSE(diamond.PtInPoly(Pt(-2, 0)));
  // A notch whose reflex vertex lies on the ray.
  const CHU_DPolygon notch = Ring({{0, 0}, {4, 0}, {4, 2}, {2, 1}, {0, 2}});
  EXPECT_TRUE(notch.PtInPoly(Pt(1, 1)));
  EXPECT_TRUE(notch.PtInPoly(Pt(3, 1)));
  EXPECT_FALSE(notch.PtInPoly(Pt(-1, 1)));
  EXPECT_FALSE(notch.PtInPoly(Pt(3, 1.9)));
  EXPECT_FALSE(CHU_DPolygon().PtInPoly(Pt(0, 0)));
}

TEST(Polygon, PtOnPolyFindsTheFirstEdgeWithinTheToleranceClosingEdgeIncluded) {
  const CHU_DPolygon square = UnitSquare();
  CHU_DPoint start;
  CHU_DPoint end;
  ASSERT_TRUE(square.PtOnPoly(Pt(0.5, 1.05), 0.1, &start, &end));
  EXPECT_EQ(std::make_pair(start.x, start.y), std::make_pair(1.0, 1.0));
  EXPECT_EQ(std::make_pair(end.x, end.y), std::make_pair(0.0, 1.0));
  ASSERT_TRUE(square.PtOnPoly(Pt(-0.05, 0.5), 0.1, &start, &end));
  EXPECT_EQ(std::make_pair(start.x, start.y), std::make_pair(0.0, 1.0));
  EXPECT_EQ(std::make_pair(end.x, end.y), std::make_pair(0.0, 0.0));
  EXPECT_TRUE(square.PtOnPoly(Pt(0.5, -0.25), 0.25, &start, &end));  // distance == tolerance
  EXPECT_FALSE(square.PtOnPoly(Pt(0.5, 0.5), 0.1, &start, &end));

  const CHU_DPolygon single = Ring({{2, 2}});
  EXPECT_TRUE(single.PtOnPoly(Pt(2.3, 2.4), 0.5, &start, &end));
  EXPECT_FALSE(single.PtOnPoly(Pt(2.3, 2.4), 0.49, &start, &end));
  EXPECT_FALSE(CHU_DPolygon().PtOnPoly(Pt(0, 0), 1.0, &start, &end));
}

TEST(Polygon, PolyInPolyTestsOnlyTheVertices) {
  const CHU_DPolygon u = Ring({{0, 0}, {3, 0}, {3, 3}, {2, 3}, {2, 1}, {1, 1}, {1, 3}, {0, 3}});
  // Both ends inside the arms of the U; the edge between them crosses the gap.
  EXPECT_TRUE(u.PolyInPoly(Ring({{0.5, 2}, {2.5, 2}, {2.5, 0.5}})));
  EXPECT_FALSE(u.PolyInPoly(Ring({{0.5, 2}, {1.5, 2}})));
  EXPECT_TRUE(u.PolyInPoly(CHU_DPolygon()));
}

TEST(Polygon, ExtremeVerticesKeepTheFirstOnTies) {
  const CHU_DPolygon p = Ring({{0, 0}, {2, 0}, {2, 5}, {-1, 5}});
  CHU_DPoint out;
  EXPECT_EQ(p.GetPt_MaxX(out), 1);
  EXPECT_EQ(p.GetPt_MaxY(out), 2);
  EXPECT_EQ(p.GetPt_MinX(out), 3);
  EXPECT_EQ(out.x, -1.0);
  EXPECT_EQ(CHU_DPolygon().GetPt_MaxX(out), -1);
}

TEST(Polygon, AssignmentAppendsCoordinatesOnlyAndCopiesTheRectangleCache) {
  CHU_DPolygon source = Ring({{0, 0}, {4, 0}, {4, 1}});
  source.GetAt(0)->SetSymbol(7);
  source.SetDataVal(3.5);
  const double area = source.GetMinimunAreaRectangleArea();
  CHU_DPolygon target = Ring({{9, 9}});
  target = source;
  ASSERT_EQ(target.GetCount(), 4);
  EXPECT_EQ(target.GetAt(0)->x, 9.0);
  EXPECT_EQ(target.GetAt(1)->x, 0.0);
  EXPECT_EQ(target.GetAt(1)->GetSymbol(), -1);
  EXPECT_EQ(target.GetDataVal(), 0.0);
  // The copied cache describes the source, not the concatenated ring.
  EXPECT_EQ(target.GetMinimunAreaRectangleArea(), area);

  CHU_DPolygon copy;
  CHU_DPolygon::CopyPolygon(source, copy);
  EXPECT_EQ(copy.GetAt(0)->GetSymbol(), 7);
  EXPECT_EQ(copy.GetDataVal(), 0.0);
  CHU_DPolygon::CopyPolygon(copy, copy);  // copying onto itself keeps the ring
  EXPECT_EQ(copy.GetCount(), 3);
}

TEST(Polygon, OnlyAddPtInvalidatesTheRectangleCache) {
  CHU_DPolygon p = Ring({{0, 0}, {2, 0}, {2, 1}, {0, 1}});
  EXPECT_DOUBLE_EQ(p.GetMinimunAreaRectangleArea(), 2.0);
  CHU_DPoint far(10, 10);
  p.SetAt(2, far);
  p.InsertAt(1, far);
  p.RemoveAt(0);
  p.ReverseOrder();
  EXPECT_DOUBLE_EQ(p.GetMinimunAreaRectangleArea(), 2.0);
  p.RemoveAll();
  EXPECT_DOUBLE_EQ(p.GetMinimunAreaRectangleArea(), 2.0);
  p.AddPt(0, 0, 0);
  EXPECT_EQ(p.GetMinimunAreaRectangleArea(), 0.0);
}

TEST(Polygon, MinimumRectangleAnglesComeFromTheCornersAroundIt) {
  CHU_DPolygon box = Ring({{0, 0}, {3, 0}, {3, 1}, {0, 1}});
  CHU_DPolygon corners;
  ASSERT_TRUE(box.GetMinimunAreaRectangle(&corners));
  EXPECT_DOUBLE_EQ(corners.GetSignedArea(), 3.0);  // four corners, anticlockwise
  // A vertical side gives +-pi/2 through the infinite quotient.
  EXPECT_DOUBLE_EQ(std::fabs(box.GetMinimunAreaRectangleAngleHorz()) + std::fabs(box.GetMinimunAreaRectangleAngleVert()),
                   std::numbers::pi / 2);

  const double c = std::cos(0.3), s = std::sin(0.3);
  CHU_DPolygon tilted;
  for (auto [u, w] : {std::pair{0.0, 0.0}, {4.0, 0.0}, {4.0, 1.0}, {0.0, 1.0}}) tilted.AddPt(u * c - w * s, u * s + w * c, 0);
  EXPECT_NEAR(tilted.GetMinimunAreaRectangleArea(), 4.0, 1e-12);
  const double angles[] = {tilted.GetMinimunAreaRectangleAngleHorz(), tilted.GetMinimunAreaRectangleAngleVert()};
  EXPECT_NEAR(std::fabs(angles[0] - angles[1]), std::numbers::pi / 2, 1e-12);
  EXPECT_TRUE(std::fabs(angles[0] - 0.3) < 1e-12 || std::fabs(angles[1] - 0.3) < 1e-12);
  EXPECT_FALSE(tilted.GetMinimunAreaRectangle(nullptr));
}

TEST(Polygon, FirstVertexDoublingIsAnIdentityTestSoCopiesAreNeverRecognised) {
  const CHU_DPolygon triangle = Ring({{0, 0}, {1, 0}, {1, 1}});
  EXPECT_FALSE(CHU_DPolygon::PolygonIsFirstVertexDoubled(triangle));
  const CHU_DPolygon byValue = Ring({{0, 0}, {1, 0}, {1, 1}, {0, 0}});
  EXPECT_FALSE(CHU_DPolygon::PolygonIsFirstVertexDoubled(byValue));

  CHU_DPolygon out = Ring({{9, 9}});
  CHU_DPolygon::PolygonConvertToNotFirstVertexDoubled(triangle, out);
  EXPECT_EQ(Coords(out), (Coordinates{{0, 0}, {1, 0}}));
  CHU_DPolygon::PolygonConvertToNotFirstVertexDoubled(Ring({{5, 5}}), out);
  EXPECT_EQ(out.GetCount(), 0);

  CHU_DPolygon once;
  CHU_DPolygon::PolygonConvertToFirstVertexDoubledIfNeeded(triangle, once);
  EXPECT_EQ(Coords(once), (Coordinates{{0, 0}, {1, 0}, {1, 1}, {0, 0}}));
  EXPECT_NE(once.GetAt(0), once.GetAt(3));
  CHU_DPolygon twice;
  CHU_DPolygon::PolygonConvertToFirstVertexDoubledIfNeeded(once, twice);
  EXPECT_EQ(twice.GetCount(), 5);
  CHU_DPolygon::PolygonConvertToNotFirstVertexDoubledIfNeeded(twice, out);
  EXPECT_EQ(out.GetCount(), 5);  // not recognised, so copied unchanged
}

TEST(Polygon, ClipLineToPolyKeepsInsideEndsThenTakesEdgeCrossings) {
  const CHU_DPolygon square = Ring({{0, 0}, {4, 0}, {4, 4}, {0, 4}});
  CHU_DPoint outA(-1, -1);
  CHU_DPoint outB(-1, -1);
  EXPECT_TRUE(square.ClipLineToPoly(Pt(1, 1), Pt(3, 2), &outA, &outB));
  EXPECT_EQ(std::make_pair(outA.x, outB.x), std::make_pair(1.0, 3.0));

  EXPECT_TRUE(square.ClipLineToPoly(Pt(2, 2), Pt(6, 2), &outA, &outB));
  EXPECT_EQ(std::make_pair(outA.x, outA.y), std::make_pair(2.0, 2.0));
  EXPECT_EQ(std::make_pair(outB.x, outB.y), std::make_pair(4.0, 2.0));

  // Both ends outside: crossings in edge order (the closing edge x = 0 comes last).
  EXPECT_TRUE(square.ClipLineToPoly(Pt(-2, 1), Pt(6, 1), &outA, &outB));
  EXPECT_EQ(std::make_pair(outA.x, outB.x), std::make_pair(4.0, 0.0));

  // Touching the corner (4, 4), which two edges share: it is held once.
  outB = Pt(-1, -1);
  EXPECT_TRUE(square.ClipLineToPoly(Pt(6, 2), Pt(2, 6), &outA, &outB));
  EXPECT_EQ(std::make_pair(outA.x, outA.y), std::make_pair(4.0, 4.0));
  EXPECT_EQ(outB.x, -1.0);

  CHU_DPoint untouchedA(7, 7);
  CHU_DPoint untouchedB(8, 8);
  EXPECT_TRUE(square.ClipLineToPoly(Pt(10, 10), Pt(12, 10), &untouchedA, &untouchedB));
  EXPECT_EQ(std::make_pair(untouchedA.x, untouchedB.x), std::make_pair(7.0, 8.0));
}

TEST(Polygon, ClipToPolygonReturnsOwnedPiecesOrMinusOne) {
  const CHU_DPolygon u = Ring({{0, 0}, {3, 0}, {3, 3}, {2, 3}, {2, 1}, {1, 1}, {1, 3}, {0, 3}});
  const CHU_DPolygon bar = Ring({{-1, 2}, {4, 2}, {4, 2.5}, {-1, 2.5}});
  CHU_DPolygonArray pieces;
  ASSERT_EQ(u.ClipToPolygon(&pieces, &bar), 2);
  ASSERT_EQ(pieces.size(), 2u);
  for (const auto& piece : pieces) {
    EXPECT_DOUBLE_EQ(piece->GetSignedArea(), 0.5);
    EXPECT_EQ(piece->GetCount(), 4);
  }
  EXPECT_EQ(Ring({{10, 10}, {11, 10}, {11, 11}}).ClipToPolygon(&pieces, &bar), 0);
  EXPECT_EQ(Ring({{0, 0}, {1, 0}, {2, 0}}).ClipToPolygon(&pieces, &bar), 0);

  const CHU_DPolygon bowTie = Ring({{0, 0}, {2, 2}, {2, 0}, {0, 2}});
  EXPECT_EQ(bowTie.ClipToPolygon(&pieces, &bar), -1);
  EXPECT_EQ(Ring({{0, 0}, {std::nan(""), 1}, {1, 1}}).ClipToPolygon(&pieces, &bar), -1);
  EXPECT_EQ(u.ClipToPolygon(nullptr, &bar), -1);
  EXPECT_EQ(u.ClipToPolygon(&pieces, nullptr), -1);
  EXPECT_EQ(pieces.size(), 2u);
}

TEST(Polygon, IntersectionsIncludeTheClosingEdge) {
  CHU_CopyableArray<double> params;
  const auto points = UnitSquare().GetIntersectionsWithLine(Pt(-1, 0.5), Pt(2, 0.5), &params);
  ASSERT_EQ(points.GetSize(), 2);
  EXPECT_DOUBLE_EQ(params[1], 3.5);
}

TEST(Polygon, DegenerateRingsNeverFailHard) {
  const double nan = std::numeric_limits<double>::quiet_NaN();
  const CHU_DPolygon rings[] = {CHU_DPolygon(), Ring({{1, 1}}), Ring({{1, 1}, {1, 1}, {1, 1}}),
                                Ring({{0, 0}, {1, 1}, {2, 2}, {3, 3}}), Ring({{nan, 0}, {1, nan}, {2, 2}}),
                                Ring({{0, 0}, {1, 0}, {1, 0}, {1, 1}, {1, 1}})};
  for (CHU_DPolygon ring : rings) {
    CHU_DPoint out;
    CHU_DPoint other;
    ring.PtInPoly(Pt(0.5, 0.5));
    ring.PtOnPoly(Pt(0.5, 0.5), 0.1, &out, &other);
    ring.GetCentroid(&out);
    ring.ClipLineToPoly(Pt(-1, 0), Pt(3, 3), &out, &other);
    EXPECT_GE(ring.GetMinimunAreaRectangleArea(), 0.0);
    CHU_DPolygonArray pieces;
    EXPECT_LE(ring.ClipToPolygon(&pieces, &ring), 1);
    ring.ReorderVertices(VO_CLOCKWISE);
  }
}
