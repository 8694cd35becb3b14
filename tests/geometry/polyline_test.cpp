#include "hy_util/geometry/polyline.h"

#include <gtest/gtest.h>

#include <cmath>
#include <random>
#include <tuple>

#include "geometry/shapes.h"
#include "hy_util/geometry/line.h"

namespace {

// (0,0) - (3,0) - (3,4): segment lengths 3 and 4.
CHU_DPolyLine Elbow() { return Chain({{0, 0}, {3, 0}, {3, 4}}); }

// The result of a walk along the chain and where it left out (9, 9 when untouched).
template <class Walk>
std::pair<int, XY> Walked(Walk walk) {
  CHU_DPoint out(9, 9);
  const int result = walk(&out);
  return {result, At(out)};
}

}  // namespace

TEST(PolyLine, EmptyAndSingleVertexChainsFindNothing) {
  for (const CHU_DPolyLine& chain : {CHU_DPolyLine(), Chain({{2, 3}})}) {
    CHU_DPoint out(9, 9);
    double rest = 0.0;
    EXPECT_EQ(std::tuple(chain.GetLength(), chain.GetAtPercent(0.5, &out), chain.GetCenter(&out),
                         chain.PtOnPoly(CHU_DPoint(2, 3), 1.0, &out, &out),
                         chain.GetConnectedVertices(0.0, &out, &out, rest), At(out)),
              std::tuple(0.0, -1, -1, false, false, XY(9, 9)));
  }
  CHU_DRect rect(1, 2, 3, 4);
  EXPECT_EQ(CHU_DPolyLine().GetLengthToPoint(CHU_DPoint(0, 0), 1.0), -1.0);
  EXPECT_EQ(Chain({{2, 3}}).GetLengthToPoint(CHU_DPoint(5, 5), 1.0), 0.0);
  EXPECT_FALSE(CHU_DPolyLine().GetExtent(&rect));
  EXPECT_EQ(rect.Left(), 1.0);  // untouched
}

TEST(PolyLine, StorageOwnsStableCopiesAndAddPtWithTwoPointsInsertsAfterAMatch) {
  CHU_DPolyLine chain = Elbow();
  const CHU_DPoint* middle = chain.GetAt(1);
  chain.AddPt(CHU_DPoint(9, 9), CHU_DPoint(3, 0, 0), CHU_DPoint());
  chain.AddPt(CHU_DPoint(7, 7), CHU_DPoint(3, 0, 1), CHU_DPoint());  // z differs: no match
  EXPECT_EQ(Coords(chain), (XYs{{0, 0}, {3, 0}, {9, 9}, {3, 4}}));
  EXPECT_EQ(chain.GetAt(1), middle);  // other vertices keep their addresses
  chain.ReverseOrder();
  EXPECT_EQ(chain.GetAt(2), middle);  // pointers swapped, not points copied
  const CHU_DPolyLine copy(chain);
  EXPECT_NE(copy.GetAt(0), chain.GetAt(0));
  chain.RemoveAt(0);
  chain.RemoveAt(17);  // out of range: ignored
  chain.SetAt(0, CHU_DPoint(-1, -1));
  chain.SetSize(2);
  EXPECT_EQ(Coords(chain), (XYs{{-1, -1}, {3, 0}}));
  EXPECT_EQ(Coords(copy), (XYs{{3, 4}, {9, 9}, {3, 0}, {0, 0}}));
}

TEST(PolyLine, AddPtFromCoordinatesGivesWhiteAttributes) {
  const CHU_DPolyLine chain = Chain({{1, 2}});
  const CHU_Colour* colour = chain.GetAt(0)->GetColour();
  EXPECT_EQ((std::array{colour->red, colour->green, colour->blue, colour->alpha}), (std::array{255, 255, 255, 255}));
  EXPECT_EQ(colour->packed, 0xFFFFFFu);
  EXPECT_EQ(chain.GetAt(0)->GetSymbol(), -1);
}

TEST(PolyLine, GetAtPercentClampsAndReturnsTheSegmentStartEvenOnAnExactVertexHit) {
  const CHU_DPolyLine elbow = Elbow(), square = Chain({{0, 0}, {4, 0}, {4, 4}}), two = Chain({{0, 0}, {1, 1}});
  EXPECT_EQ(Walked([&](CHU_DPoint* o) { return elbow.GetAtPercent(0.0, o); }), std::pair(0, XY(0, 0)));
  EXPECT_EQ(Walked([&](CHU_DPoint* o) { return elbow.GetAtPercent(-3.0, o); }), std::pair(0, XY(0, 0)));
  EXPECT_EQ(Walked([&](CHU_DPoint* o) { return elbow.GetAtPercent(1.0, o); }), std::pair(1, XY(3, 4)));
  EXPECT_EQ(Walked([&](CHU_DPoint* o) { return square.GetAtPercent(0.5, o); }), std::pair(0, XY(4, 0)));
  EXPECT_EQ(Walked([&](CHU_DPoint* o) { return elbow.GetAtPercent(50, o); }), std::pair(1, XY(3, 0.5)));
  EXPECT_EQ(Walked([&](CHU_DPoint* o) { return elbow.GetAtPercent(150, o); }), std::pair(1, XY(3, 4)));
  EXPECT_EQ(Walked([&](CHU_DPoint* o) { return two.GetAtPercent(1.0, o); }), std::pair(0, XY(1, 1)));
}

TEST(PolyLine, GetAtPercentAgreesWithLengthOnRandomChains) {
  std::mt19937 rng(3);
  std::uniform_real_distribution<double> coord(-50, 50), unit(0, 1);
  for (int c = 0; c < 50; ++c) {
    CHU_DPolyLine chain;
    for (int i = 0; i < 20; ++i) chain.AddPt(coord(rng), coord(rng), 0);
    for (int k = 0; k < 20; ++k) {
      const double p = unit(rng);
      CHU_DPoint at;
      const int segment = chain.GetAtPercent(p, &at);
      ASSERT_GE(segment, 0);
      // Re-measure: the length up to the reported segment plus the rest of the way.
      double along = CHU_DLine::SegmentLength(*chain.GetAt(segment), at);
      for (int i = 1; i <= segment; ++i) along += CHU_DLine::SegmentLength(*chain.GetAt(i - 1), *chain.GetAt(i));
      ASSERT_NEAR(along, p * chain.GetLength(), 1e-9);
    }
  }
}

TEST(PolyLine, GetPosAlongPolylineAndGetCenterKeepTheirOwnResults) {
  const CHU_DPolyLine chain = Elbow();
  const std::pair<double, std::pair<int, XY>> cases[] = {
      {0.0, {-1, {0, 0}}},  // found, although the result is -1
      {3.0, {1, {3, 0}}},
      {5.0, {0, {3, 2}}},   // inside the segment ending at vertex 2
      {7.0, {2, {3, 4}}},
      {7.5, {-1, {9, 9}}},  // beyond the end: untouched
  };
  for (const auto& [distance, expected] : cases) {
    EXPECT_EQ(Walked([&](CHU_DPoint* o) { return chain.GetPosAlongPolyline(distance, o); }), expected) << distance;
  }
  EXPECT_EQ(Walked([&](CHU_DPoint* o) { return chain.GetPosAlongPolyline(1, o); }), std::pair(2, XY(3, 4)));
  EXPECT_EQ(Walked([&](CHU_DPoint* o) { return chain.GetPosAlongPolyline(2, o); }), std::pair(-1, XY(9, 9)));
  EXPECT_EQ(Walked([&](CHU_DPoint* o) { return chain.GetCenter(o); }), std::pair(0, XY(3, 0.5)));
}

TEST(PolyLine, GetConnectedVerticesByDistanceTakesTheFirstSegmentReachingIt) {
  const CHU_DPolyLine chain = Elbow();
  CHU_DPoint a, b;
  double rest = 0.0;
  ASSERT_TRUE(chain.GetConnectedVertices(3.0, &a, &b, rest));
  EXPECT_EQ(std::tuple(At(a), At(b), rest), std::tuple(XY(0, 0), XY(3, 0), 3.0));
  ASSERT_TRUE(chain.GetConnectedVertices(5.0, &a, &b, rest));
  EXPECT_EQ(std::tuple(At(a), At(b), rest), std::tuple(XY(3, 0), XY(3, 4), 2.0));
  EXPECT_FALSE(chain.GetConnectedVertices(7.1, &a, &b, rest));
}

TEST(PolyLine, PtOnPolyTakesTheFirstSegmentWithinToleranceAndHasNoClosingEdge) {
  const CHU_DPolyLine chain = Chain({{0, 0}, {2, 0}, {2, 2}, {0, 2}});
  CHU_DPoint start, end;
  EXPECT_TRUE(chain.PtOnPoly(CHU_DPoint(1, 0), 0.0, &start, &end));
  ASSERT_TRUE(chain.PtOnPoly(CHU_DPoint(1, 1), 1.0, &start, &end));  // equidistant from all three
  EXPECT_EQ(XYs({At(start), At(end)}), (XYs{{0, 0}, {2, 0}}));
  EXPECT_TRUE(chain.PtOnPoly(CHU_DPoint(3, 1), 1.0, &start, &end));  // exactly at the tolerance
  EXPECT_FALSE(chain.PtOnPoly(CHU_DPoint(0, 1), 0.5, &start, &end));
  EXPECT_FALSE(chain.PtOnPoly(CHU_DPoint(std::nan(""), 1), 1.0, &start, &end));
}

TEST(PolyLine, PtOnVertexMatchesInASquareBoxOrByExactEquality) {
  const CHU_DPolyLine chain = Chain({{0, 0}, {4, 4}});
  CHU_DPoint out;
  EXPECT_EQ(chain.PtOnVertex(CHU_DPoint(4.5, 3.5), 0.5, out), 1);  // a corner of the box
  EXPECT_EQ(out.x, 4.0);
  EXPECT_FALSE(chain.PtOnVertex(CHU_DPoint(4.6, 4), 0.5));
  EXPECT_TRUE(chain.PtOnVertex(CHU_DPoint(0, 0, 0), -1.0));
}

TEST(PolyLine, GetLengthToPointMeasuresToTheFootOrToTheNullPoint) {
  const CHU_DPolyLine chain = Elbow();
  EXPECT_DOUBLE_EQ(chain.GetLengthToPoint(CHU_DPoint(4, 2), 1.0), 5.0);
  EXPECT_DOUBLE_EQ(chain.GetLengthToPoint(CHU_DPoint(1, 0.5), 1.0), 1.0);
  EXPECT_DOUBLE_EQ(chain.GetLengthToPoint(CHU_DPoint(1, 0), 1.0), std::hypot(99999.0, 99999.0));  // on the line
  EXPECT_EQ(chain.GetLengthToPoint(CHU_DPoint(50, 50), 1.0), 7.0);  // nothing near: the whole length
  EXPECT_EQ(Chain({{1, 1}, {1, 1}, {4, 1}}).GetLengthToPoint(CHU_DPoint(1.5, 1.5), 1.0), 0.0);  // zero-length segment
}
