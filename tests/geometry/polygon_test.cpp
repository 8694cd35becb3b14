#include "hy_util/geometry/polygon.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <limits>
#include <numbers>

#include "geometry/shapes.h"

TEST(Polygon, AreaCentroidAndPerimeterFollowTheVertexOrderAndIgnoreADoubledFirstVertex) {
  const std::pair<CHU_DPolygon, double> rings[] = {{UnitSquare(), 1.0},
                                                   {Ring({{0, 1}, {1, 1}, {1, 0}, {0, 0}}), -1.0},
                                                   {Ring({{0, 0}, {1, 0}, {1, 1}, {0, 1}, {0, 0}}), 1.0}};
  for (const auto& [ring, signedArea] : rings) {
    CHU_DPoint c(7.0, 7.0, 7.0);
    ASSERT_TRUE(ring.GetCentroid(&c));
    EXPECT_EQ((std::array{ring.GetSignedArea(), ring.GetArea(), ring.GetLength(), c.x, c.y, c.z}),
              (std::array{signedArea, 1.0, 4.0, 0.5, 0.5, 7.0}));  // the centroid writes x and y only
  }
}

TEST(Polygon, CentroidOfAZeroAreaRingIsTheMeanOfItsStoredVertices) {
  CHU_DPoint c, d;
  EXPECT_TRUE(Ring({{0, 0}, {1, 0}, {2, 0}}).GetCentroid(&c) && Ring({{0, 0}, {0, 0}, {3, 0}}).GetCentroid(&d));
  EXPECT_EQ(XYs({At(c), At(d)}), (XYs{{1, 0}, {1, 0}}));  // a repeated vertex counts twice
  EXPECT_FALSE(CHU_DPolygon().GetCentroid(&c));
}

TEST(Polygon, ReorderVerticesReversesOnlyWhenTheOrientationDiffers) {
  CHU_DPolygon square = UnitSquare(), flat = Ring({{0, 0}, {1, 0}, {2, 0}});
  square.ReorderVertices(VO_CLOCKWISE);
  square.ReorderVertices(VO_CLOCKWISE);  // already clockwise: unchanged
  flat.ReorderVertices(VO_CLOCKWISE);
  EXPECT_EQ(std::pair(Coords(square), flat.GetAt(0)->x), std::pair(XYs{{0, 1}, {1, 1}, {1, 0}, {0, 0}}, 2.0))
      << "a ring of zero area counts as anticlockwise";
}

TEST(Polygon, PtInPolyPutsTheRightAndTopEdgesInsideAndTheLeftAndBottomOutside) {
  const std::pair<CHU_DPoint, bool> cases[] = {{{1, 0.5}, true}, {{0, 0.5}, false}, {{0.5, 1}, true}, {{0.5, 0}, false},
                                               {{1, 1}, true},   {{0, 0}, false},   {{1, 0}, false},  {{0, 1}, false}};
  for (const CHU_DPolygon& ring : {UnitSquare(), Ring({{0, 1}, {1, 1}, {1, 0}, {0, 0}})}) {  // either direction
    for (const auto& [p, inside] : cases) EXPECT_EQ(ring.PtInPoly(p), inside) << p.x << ", " << p.y;
  }
}

TEST(Polygon, PtInPolyCountsARayThroughAVertexOnceAndAPointOnAnEdgeAsCrossingIt) {
  const CHU_DPolygon diamond = Ring({{0, -1}, {1, 0}, {0, 1}, {-1, 0}});
  const CHU_DPolygon notch = Ring({{0, 0}, {4, 0}, {4, 2}, {2, 1}, {0, 2}});  // reflex vertex (2, 1)
  EXPECT_EQ((std::array{diamond.PtInPoly({0, 0}), diamond.PtInPoly({0.5, 0.5}), notch.PtInPoly({1, 1}),
                        notch.PtInPoly({3, 1}), notch.PtInPoly({-1, 1}), CHU_DPolygon().PtInPoly({0, 0})}),
            (std::array{true, true, true, true, false, false}));  // (0.5, 0.5) lies on a sloped edge
}

TEST(Polygon, PtOnPolyReportsTheFirstEdgeWithinTheToleranceClosingEdgeIncluded) {
  const CHU_DPolygon square = UnitSquare(), single = Ring({{2, 2}});
  CHU_DPoint s1, e1, s2, e2, any;
  ASSERT_TRUE(square.PtOnPoly({0.5, 1.05}, 0.1, &s1, &e1) && square.PtOnPoly({-0.05, 0.5}, 0.1, &s2, &e2));
  EXPECT_EQ(XYs({At(s1), At(e1), At(s2), At(e2)}), (XYs{{1, 1}, {0, 1}, {0, 1}, {0, 0}}));  // then the closing edge
  EXPECT_EQ((std::array{square.PtOnPoly({0.5, -0.25}, 0.25, &any, &any), square.PtOnPoly({0.5, 0.5}, 0.1, &any, &any),
                        single.PtOnPoly({2.3, 2.4}, 0.5, &any, &any), single.PtOnPoly({2.3, 2.4}, 0.49, &any, &any)}),
            (std::array{true, false, true, false}));  // inclusive; one vertex: the distance to it
}

TEST(Polygon, PolyInPolyTestsOnlyTheVertices) {
  const CHU_DPolygon u = Ring({{0, 0}, {3, 0}, {3, 3}, {2, 3}, {2, 1}, {1, 1}, {1, 3}, {0, 3}});
  EXPECT_EQ((std::array{u.PolyInPoly(Ring({{0.5, 2}, {2.5, 2}, {2.5, 0.5}})), u.PolyInPoly(Ring({{0.5, 2}, {1.5, 2}})),
                        u.PolyInPoly(CHU_DPolygon())}),
            (std::array{true, false, true}));  // the first has an edge across the gap
}

TEST(Polygon, ExtremeVerticesKeepTheFirstOnTies) {
  const CHU_DPolygon p = Ring({{0, 0}, {2, 0}, {2, 5}, {-1, 5}});
  CHU_DPoint out;
  EXPECT_EQ((std::array{p.GetPt_MaxX(out), p.GetPt_MaxY(out), p.GetPt_MinY(out), p.GetPt_MinX(out)}),
            (std::array{1, 2, 0, 3}));
  EXPECT_EQ(At(out), XY(-1, 5));  // copied out by the last call
  EXPECT_EQ(CHU_DPolygon().GetPt_MaxX(out), -1);
}

TEST(Polygon, AssignmentAppendsCoordinatesOnlyAndCopiesTheRectangleCache) {
  CHU_DPolygon source = Ring({{0, 0}, {4, 0}, {4, 1}});
  source.GetAt(0)->SetSymbol(7);
  source.SetDataVal(3.5);
  const double area = source.GetMinimunAreaRectangleArea();
  CHU_DPolygon target = Ring({{9, 9}}), copy;
  target = source;
  CHU_DPolygon::CopyPolygon(source, copy);
  EXPECT_EQ(Coords(target), (XYs{{9, 9}, {0, 0}, {4, 0}, {4, 1}}));
  EXPECT_EQ(std::tuple(int{target.GetAt(1)->GetSymbol()}, target.GetDataVal(), target.GetMinimunAreaRectangleArea()),
            std::tuple(-1, 0.0, area));  // the source's rectangle, not the concatenated ring's
  EXPECT_EQ(std::pair(int{copy.GetAt(0)->GetSymbol()}, copy.GetDataVal()), std::pair(7, 0.0));  // CopyPolygon: whole points
}

TEST(Polygon, OnlyAddPtInvalidatesTheRectangleCache) {
  CHU_DPolygon p = Ring({{0, 0}, {2, 0}, {2, 1}, {0, 1}});
  EXPECT_DOUBLE_EQ(p.GetMinimunAreaRectangleArea(), 2.0);
  p.SetAt(2, CHU_DPoint(10, 10));
  p.InsertAt(1, CHU_DPoint(10, 10));
  p.RemoveAt(0);
  p.ReverseOrder();
  p.RemoveAll();
  const double kept = p.GetMinimunAreaRectangleArea();
  p.AddPt(0, 0, 0);
  EXPECT_EQ(std::pair(kept, p.GetMinimunAreaRectangleArea()), std::pair(2.0, 0.0));
}

TEST(Polygon, MinimumRectangleAnglesComeFromTheCornersAroundIt) {
  CHU_DPolygon box = Ring({{0, 0}, {3, 0}, {3, 1}, {0, 1}});
  EXPECT_DOUBLE_EQ(std::fabs(box.GetMinimunAreaRectangleAngleHorz() - box.GetMinimunAreaRectangleAngleVert()),
                   std::numbers::pi / 2);  // a vertical side gives +-pi/2 through the infinite quotient
  const double c = std::cos(0.3), s = std::sin(0.3);
  CHU_DPolygon tilted;
  for (auto [u, w] : {XY{0, 0}, {4, 0}, {4, 1}, {0, 1}}) tilted.AddPt(u * c - w * s, u * s + w * c, 0);
  const double h = tilted.GetMinimunAreaRectangleAngleHorz(), v = tilted.GetMinimunAreaRectangleAngleVert();
  EXPECT_NEAR(std::min(std::fabs(h - 0.3), std::fabs(v - 0.3)) + std::fabs(std::fabs(h - v) - std::numbers::pi / 2), 0.0,
              1e-12);  // one side at 0.3 rad, the other square to it
}

TEST(Polygon, FirstVertexDoublingIsAnIdentityTestSoCopiesAreNeverRecognised) {
  const CHU_DPolygon triangle = Ring({{0, 0}, {1, 0}, {1, 1}});
  EXPECT_FALSE(CHU_DPolygon::PolygonIsFirstVertexDoubled(Ring({{0, 0}, {1, 0}, {1, 1}, {0, 0}})));  // by value only
  CHU_DPolygon out = Ring({{9, 9}}), single = Ring({{9, 9}}), once, twice, back;
  CHU_DPolygon::PolygonConvertToNotFirstVertexDoubled(triangle, out);
  CHU_DPolygon::PolygonConvertToNotFirstVertexDoubled(Ring({{5, 5}}), single);
  EXPECT_EQ(std::pair(Coords(out), single.GetCount()), std::pair(XYs{{0, 0}, {1, 0}}, 0));
  CHU_DPolygon::PolygonConvertToFirstVertexDoubledIfNeeded(triangle, once);
  EXPECT_EQ(Coords(once), (XYs{{0, 0}, {1, 0}, {1, 1}, {0, 0}}));
  CHU_DPolygon::PolygonConvertToFirstVertexDoubledIfNeeded(once, twice);
  CHU_DPolygon::PolygonConvertToNotFirstVertexDoubledIfNeeded(twice, back);
  EXPECT_EQ(std::pair(twice.GetCount(), back.GetCount()), std::pair(5, 5));  // the closing copy is never recognised
}

TEST(Polygon, ClipLineToPolyKeepsInsideEndsThenTakesEdgeCrossingsInEdgeOrder) {
  const CHU_DPolygon square = Ring({{0, 0}, {4, 0}, {4, 4}, {0, 4}});
  const XY none(-9, -9);  // an output with no point is left alone
  const XYs cases[] = {  // a, b, outA, outB
      {{1, 1}, {3, 2}, {1, 1}, {3, 2}},
      {{2, 2}, {6, 2}, {2, 2}, {4, 2}},
      {{-2, 1}, {6, 1}, {4, 1}, {0, 1}},  // the closing edge x = 0 comes last
      {{6, 2}, {2, 6}, {4, 4}, none},     // the corner two edges share is held once
      {{10, 10}, {12, 10}, none, none},
  };
  for (const XYs& c : cases) {
    CHU_DPoint outA(-9, -9), outB(-9, -9);
    EXPECT_TRUE(square.ClipLineToPoly({c[0].first, c[0].second}, {c[1].first, c[1].second}, &outA, &outB));
    EXPECT_EQ(XYs({At(outA), At(outB)}), XYs({c[2], c[3]})) << c[0].first << ", " << c[0].second;
  }
}

TEST(Polygon, ClipToPolygonReturnsOwnedPiecesOrMinusOneForBadRings) {
  const CHU_DPolygon u = Ring({{0, 0}, {3, 0}, {3, 3}, {2, 3}, {2, 1}, {1, 1}, {1, 3}, {0, 3}});
  const CHU_DPolygon bar = Ring({{-1, 2.5}, {4, 2.5}, {4, 2}, {-1, 2}});  // clockwise
  CHU_DPolygonArray pieces;
  ASSERT_EQ(u.ClipToPolygon(&pieces, &bar), 2);
  EXPECT_EQ((std::array{pieces[0]->GetCount(), pieces[1]->GetCount()}), (std::array{4, 4}));
  EXPECT_EQ((std::array{pieces[0]->GetSignedArea(), pieces[1]->GetSignedArea()}), (std::array{0.5, 0.5}));  // anticlockwise
  // Apart, no area, self-crossing, NaN, no clip ring; none adds a piece.
  EXPECT_EQ((std::array{Ring({{10, 10}, {11, 10}, {11, 11}}).ClipToPolygon(&pieces, &bar),
                        Ring({{0, 0}, {1, 0}, {2, 0}}).ClipToPolygon(&pieces, &bar),
                        Ring({{0, 0}, {2, 2}, {2, 0}, {0, 2}}).ClipToPolygon(&pieces, &bar),
                        Ring({{0, 0}, {std::nan(""), 1}, {1, 1}}).ClipToPolygon(&pieces, &bar),
                        u.ClipToPolygon(&pieces, nullptr), static_cast<int>(pieces.size())}),
            (std::array{0, 0, -1, -1, -1, 2}));
}

TEST(Polygon, MinimumRectangleOfDegenerateRingsHasZeroAreaAndLeavesOutNonFiniteVertices) {
  CHU_DPolygon square = Ring({{0, 0}, {std::nan(""), 9}, {2, 0}, {1, 0}, {2, 2}, {0, 2}, {0, 0}});
  CHU_DPolygon line = Ring({{0, 0}, {1, 1}, {3, 3}, {2, 2}}), corners;
  EXPECT_DOUBLE_EQ(square.GetMinimunAreaRectangleArea(), 4.0);
  ASSERT_TRUE(line.GetMinimunAreaRectangle(&corners));
  EXPECT_EQ(Coords(corners), (XYs{{0, 0}, {3, 3}, {3, 3}, {0, 0}}));  // c0 = c3 and c1 = c2 at the two ends
}

TEST(Polygon, DegenerateRingsNeverCrashLoopOrReadOutOfBounds) {
  const double nan = std::numeric_limits<double>::quiet_NaN();
  for (CHU_DPolygon ring : {CHU_DPolygon(), Ring({{1, 1}}), Ring({{1, 1}, {1, 1}, {1, 1}}), Ring({{0, 0}, {1, 1}, {2, 2}}),
                            Ring({{nan, 0}, {1, nan}, {2, 2}}), Ring({{0, 0}, {1, 0}, {1, 0}, {1, 1}, {1, 1}})}) {
    CHU_DPoint out, other;
    CHU_DPolygonArray pieces;
    ring.ReorderVertices(VO_CLOCKWISE);
    ring.PtInPoly(out);
    ring.PtOnPoly(out, 0.1, &out, &other);
    ring.ClipLineToPoly(CHU_DPoint(-1, 0), CHU_DPoint(3, 3), &out, &other);
    ring.GetCentroid(&out);
    EXPECT_LE(ring.ClipToPolygon(&pieces, &ring), 1);
    EXPECT_GE(ring.GetMinimunAreaRectangleArea(), 0.0);
  }
}
