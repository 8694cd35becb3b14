#include "hy_util/geometry/polyline.h"

#include <gtest/gtest.h>

#include <random>

#include "geometry/shapes.h"
#include "hy_util/geometry/line.h"

namespace {

// (0,0) - (3,0) - (3,4): segment lengths 3 and 4.
const CHU_DPolyLine& Elbow() {
  static const CHU_DPolyLine elbow = Chain({{0, 0}, {3, 0}, {3, 4}});
  return elbow;
}

// The result of a walk along the chain and where it left out (9, 9 when untouched).
using Walk = std::pair<int, XY>;
template <class Call>
Walk Walked(Call call) {
  CHU_DPoint out(9, 9);
  const int result = call(&out);
  return {result, At(out)};
}

}  // namespace

TEST(PolyLine, EmptyAndSingleVertexChainsFindNothing) {
  for (const CHU_DPolyLine& chain : {CHU_DPolyLine(), Chain({{2, 3}})}) {
    CHU_DPoint out(9, 9);
    double rest;
    EXPECT_EQ(std::tuple(chain.GetLength(), chain.GetAtPercent(0.5, &out), chain.GetCenter(&out),
                         chain.PtOnPoly(CHU_DPoint(2, 3), 1.0, &out, &out),
                         chain.GetConnectedVertices(0.0, &out, &out, rest), At(out)),
              std::tuple(0.0, -1, -1, false, false, XY(9, 9)));
  }
  CHU_DRect rect(1, 2, 3, 4);
  EXPECT_EQ(std::tuple(CHU_DPolyLine().GetLengthToPoint({0, 0}, 1.0), Chain({{2, 3}}).GetLengthToPoint({5, 5}, 1.0),
                       CHU_DPolyLine().GetExtent(&rect), rect.Left()),
            std::tuple(-1.0, 0.0, false, 1.0));  // the rectangle is untouched
}

TEST(PolyLine, StorageOwnsStableCopiesAndAddPtWithTwoPointsInsertsAfterAMatch) {
  CHU_DPolyLine chain = Elbow();
  const CHU_DPoint* middle = chain.GetAt(1);
  const CHU_Colour& c = *middle->GetColour();  // AddPt from coordinates gives white
  EXPECT_EQ((std::array{c.red, c.green, c.blue, c.alpha, int(c.packed), int{middle->GetSymbol()}}),
            (std::array{255, 255, 255, 255, 0xFFFFFF, -1}));
  chain.AddPt(CHU_DPoint(9, 9), CHU_DPoint(3, 0, 0), CHU_DPoint());
  chain.AddPt(CHU_DPoint(7, 7), CHU_DPoint(3, 0, 1), CHU_DPoint());  // z differs: no match
  EXPECT_EQ(Coords(chain), (XYs{{0, 0}, {3, 0}, {9, 9}, {3, 4}}));
  EXPECT_EQ(chain.GetAt(1), middle);  // other vertices keep their addresses
  chain.ReverseOrder();
  EXPECT_EQ(chain.GetAt(2), middle);  // pointers swapped, not points copied
  const CHU_DPolyLine copy(chain);  // deep: unchanged by the edits below
  chain.RemoveAt(0);
  chain.RemoveAt(17);  // out of range: ignored
  chain.SetAt(0, CHU_DPoint(-1, -1));
  chain.SetSize(2);
  EXPECT_EQ(std::pair(Coords(chain), Coords(copy)), std::pair(XYs{{-1, -1}, {3, 0}}, XYs{{3, 4}, {9, 9}, {3, 0}, {0, 0}}));
}

TEST(PolyLine, GetAtPercentClampsAndReturnsTheSegmentStartEvenOnAnExactVertexHit) {
  const CHU_DPolyLine square = Chain({{0, 0}, {4, 0}, {4, 4}}), two = Chain({{0, 0}, {1, 1}});
  EXPECT_EQ(Walked([](CHU_DPoint* o) { return Elbow().GetAtPercent(0.0, o); }), Walk(0, {0, 0}));
  EXPECT_EQ(Walked([](CHU_DPoint* o) { return Elbow().GetAtPercent(-3.0, o); }), Walk(0, {0, 0}));
  EXPECT_EQ(Walked([](CHU_DPoint* o) { return Elbow().GetAtPercent(1.0, o); }), Walk(1, {3, 4}));
  EXPECT_EQ(Walked([&](CHU_DPoint* o) { return square.GetAtPercent(0.5, o); }), Walk(0, {4, 0}));
  EXPECT_EQ(Walked([&](CHU_DPoint* o) { return two.GetAtPercent(1.0, o); }), Walk(0, {1, 1}));
  EXPECT_EQ(Walked([](CHU_DPoint* o) { return Elbow().GetAtPercent(50, o); }), Walk(1, {3, 0.5}));
  EXPECT_EQ(Walked([](CHU_DPoint* o) { return Elbow().GetAtPercent(150, o); }), Walk(1, {3, 4}));
}

TEST(PolyLine, GetAtPercentAgreesWithLengthOnRandomChains) {
  std::mt19937 rng(3);
  std::uniform_real_distribution<double> coord(-50, 50), unit(0, 1);
  for (int c = 0; c < 1000; ++c) {
    CHU_DPolyLine chain;
    for (int i = 0; i < 20; ++i) chain.AddPt(coord(rng), coord(rng), 0);
    const double p = unit(rng);
    CHU_DPoint at;
    const int segment = chain.GetAtPercent(p, &at);
    ASSERT_GE(segment, 0);
    // Re-measure: the length up to the reported segment plus the rest of the way.
    double along = CHU_DLine::SegmentLength(*chain.GetAt(segment), at);
    for (int i = 1; i <= segment; ++i) along += CHU_DLine::SegmentLength(*chain.GetAt(i - 1), *chain.GetAt(i));
    ASSERT_NEAR(along, p * chain.GetLength(), 1e-9) << c;
  }
}

TEST(PolyLine, GetPosAlongPolylineAndGetCenterKeepTheirOwnResults) {
  const std::pair<double, Walk> cases[] = {
      {0.0, {-1, {0, 0}}},  // found, although the result is -1
      {3.0, {1, {3, 0}}},   {5.0, {0, {3, 2}}},  // inside the segment ending at vertex 2
      {7.0, {2, {3, 4}}},   {7.5, {-1, {9, 9}}}, // beyond the end: untouched
  };
  for (auto [d, walk] : cases) EXPECT_EQ(Walked([d](CHU_DPoint* o) { return Elbow().GetPosAlongPolyline(d, o); }), walk);
  EXPECT_EQ(Walked([](CHU_DPoint* o) { return Elbow().GetPosAlongPolyline(1, o); }), Walk(2, {3, 4}));  // n lengths
  EXPECT_EQ(Walked([](CHU_DPoint* o) { return Elbow().GetPosAlongPolyline(2, o); }), Walk(-1, {9, 9}));
  EXPECT_EQ(Walked([](CHU_DPoint* o) { return Elbow().GetCenter(o); }), Walk(0, {3, 0.5}));
}

TEST(PolyLine, GetConnectedVerticesByDistanceTakesTheFirstSegmentReachingIt) {
  CHU_DPoint a, b, c, d;
  double rest1 = 0.0, rest2 = 0.0;
  ASSERT_TRUE(Elbow().GetConnectedVertices(3.0, &a, &b, rest1) && Elbow().GetConnectedVertices(5.0, &c, &d, rest2));
  EXPECT_EQ(std::tuple(At(a), At(b), rest1, At(c), At(d), rest2),
            std::tuple(XY(0, 0), XY(3, 0), 3.0, XY(3, 0), XY(3, 4), 2.0));
  EXPECT_FALSE(Elbow().GetConnectedVertices(7.1, &a, &b, rest1));
}

TEST(PolyLine, PtOnPolyTakesTheFirstSegmentWithinToleranceAndPtOnVertexASquareBox) {
  const CHU_DPolyLine chain = Chain({{0, 0}, {2, 0}, {2, 2}, {0, 2}});
  CHU_DPoint start, end;
  ASSERT_TRUE(chain.PtOnPoly(CHU_DPoint(1, 1), 1.0, &start, &end));  // equidistant from all three
  EXPECT_EQ(XYs({At(start), At(end)}), (XYs{{0, 0}, {2, 0}}));
  EXPECT_EQ((std::array{chain.PtOnPoly({1, 0}, 0.0, &start, &end), chain.PtOnPoly({3, 1}, 1.0, &start, &end),
                        chain.PtOnPoly({0, 1}, 0.5, &start, &end), chain.PtOnPoly({std::nan(""), 1}, 1.0, &start, &end)}),
            (std::array{true, true, false, false}));  // tolerance inclusive, no closing edge, NaN
  EXPECT_EQ(Walked([&](CHU_DPoint* o) { return chain.PtOnVertex({2.5, 1.5}, 0.5, *o); }), Walk(2, {2, 2}));  // box corner
  EXPECT_EQ(std::pair(chain.PtOnVertex({2.6, 2}, 0.5), chain.PtOnVertex({0, 0, 0}, -1.0)), std::pair(false, true));
}

TEST(PolyLine, GetLengthToPointMeasuresToTheFootOrToTheNullPoint) {
  EXPECT_DOUBLE_EQ(Elbow().GetLengthToPoint({4, 2}, 1.0), 5.0);
  EXPECT_DOUBLE_EQ(Elbow().GetLengthToPoint({1, 0.5}, 1.0), 1.0);
  EXPECT_DOUBLE_EQ(Elbow().GetLengthToPoint({1, 0}, 1.0), std::hypot(99999.0, 99999.0));  // on the segment's line
  EXPECT_EQ(Elbow().GetLengthToPoint({50, 50}, 1.0), 7.0);  // nothing near: the whole length
  EXPECT_EQ(Chain({{1, 1}, {1, 1}, {4, 1}}).GetLengthToPoint({1.5, 1.5}, 1.0), 0.0);  // zero-length segment
}
