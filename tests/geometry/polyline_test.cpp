#include "hy_util/geometry/polyline.h"

#include <gtest/gtest.h>

#include <cmath>
#include <initializer_list>
#include <random>
#include <utility>

#include "hy_util/geometry/line.h"

namespace {

CHU_DPolyLine Chain(std::initializer_list<std::pair<double, double>> points) {
  CHU_DPolyLine chain;
  for (const auto& [x, y] : points) chain.AddPt(x, y, 0.0);
  return chain;
}

// (0,0) - (3,0) - (3,4): segment lengths 3 and 4.
CHU_DPolyLine Elbow() { return Chain({{0, 0}, {3, 0}, {3, 4}}); }

}  // namespace

TEST(PolyLineTest, EmptyAndSingleVertexChainsFindNothing) {
  CHU_DPolyLine empty;
  CHU_DPoint out(9, 9, 9);
  CHU_DRect rect(1, 2, 3, 4);
  EXPECT_EQ(empty.GetLength(), 0.0);
  EXPECT_EQ(empty.GetAtPercent(0.5, &out), -1);
  EXPECT_EQ(empty.GetLengthToPoint(CHU_DPoint(0, 0), 1.0), -1.0);
  EXPECT_FALSE(empty.PtOnPoly(CHU_DPoint(0, 0), 1.0, &out, &out));
  EXPECT_FALSE(empty.GetExtent(&rect));
  EXPECT_EQ(rect.Left(), 1.0);
  EXPECT_EQ(empty.GetCenter(&out), -1);
  EXPECT_EQ(empty.GetAt(0), nullptr);
  const CHU_DPolyLine single = Chain({{2, 3}});
  EXPECT_EQ(single.GetLength(), 0.0);
  EXPECT_EQ(single.GetLengthToPoint(CHU_DPoint(5, 5), 1.0), 0.0);
  EXPECT_EQ(single.GetAtPercent(1.0, &out), -1);
  EXPECT_FALSE(single.PtOnPoly(CHU_DPoint(2, 3), 1.0, &out, &out));
  double rest = 0.0;
  EXPECT_FALSE(single.GetConnectedVertices(0.0, &out, &out, rest));
  EXPECT_EQ(out.x, 9.0);
  EXPECT_TRUE(single.GetExtent(&rect));
  EXPECT_EQ(rect.Width(), 0.0);
}

TEST(PolyLineTest, StorageOwnsStableCopies) {
  CHU_DPolyLine chain = Elbow();
  const CHU_DPoint* middle = chain.GetAt(1);
  chain.AddPt(CHU_DPoint(9, 9), CHU_DPoint(3, 0, 0), CHU_DPoint());
  EXPECT_EQ(chain.GetAt(2)->x, 9.0);
  EXPECT_EQ(chain.GetAt(1), middle);  // other vertices keep their addresses
  chain.AddPt(CHU_DPoint(7, 7), CHU_DPoint(3, 0, 1), CHU_DPoint());  // z differs: no match
  EXPECT_EQ(chain.GetCount(), 4);
  chain.ReverseOrder();
  EXPECT_EQ(chain.GetAt(2), middle);
  EXPECT_EQ(chain.GetAt(0)->y, 4.0);
  const CHU_DPolyLine copy(chain);
  EXPECT_NE(copy.GetAt(0), chain.GetAt(0));
  EXPECT_EQ(copy.GetAt(0)->y, 4.0);
  chain.RemoveAt(0);
  chain.RemoveAt(17);  // ignored
  chain.SetAt(0, CHU_DPoint(-1, -1));
  EXPECT_EQ(chain.GetCount(), 3);
  EXPECT_EQ(chain.GetAt(0)->x, -1.0);
  EXPECT_EQ(copy.GetCount(), 4);
  chain.SetSize(1);
  EXPECT_EQ(chain.GetCount(), 1);
  chain.SetSize(1000);
  EXPECT_EQ(chain.GetCount(), 1);
}

TEST(PolyLineTest, AddPtFromCoordinatesGivesWhiteAttributes) {
  const CHU_DPolyLine chain = Chain({{1, 2}});
  const CHU_Colour* colour = chain.GetAt(0)->GetColour();
  EXPECT_EQ(colour->red, 255);
  EXPECT_EQ(colour->alpha, 255);
  EXPECT_EQ(colour->packed, 0xFFFFFFu);
  EXPECT_EQ(chain.GetAt(0)->GetSymbol(), -1);
}

TEST(PolyLineTest, GetAtPercentClampsAndHitsVerticesExactly) {
  const CHU_DPolyLine chain = Elbow();
  CHU_DPoint out;
  EXPECT_EQ(chain.GetAtPercent(0.0, &out), 0);
  EXPECT_EQ(out.x, 0.0);
  EXPECT_EQ(chain.GetAtPercent(-3.0, &out), 0);
  EXPECT_EQ(chain.GetAtPercent(1.0, &out), 1);
  EXPECT_EQ(out.y, 4.0);
  EXPECT_EQ(Chain({{0, 0}, {4, 0}, {4, 4}}).GetAtPercent(0.5, &out), 0);  // the elbow, hit exactly
  EXPECT_EQ(out.x, 4.0);
  EXPECT_EQ(chain.GetAtPercent(0.5, &out), 1);
  EXPECT_DOUBLE_EQ(out.y, 0.5);
  EXPECT_EQ(chain.GetAtPercent(50, &out), 1);
  EXPECT_EQ(chain.GetAtPercent(150, &out), chain.GetAtPercent(100, &out));
  const CHU_DPolyLine two = Chain({{0, 0}, {1, 1}});
  EXPECT_EQ(two.GetAtPercent(1.0, &out), 0);
  EXPECT_EQ(out.x, 1.0);
}

TEST(PolyLineTest, GetAtPercentAgreesWithLengthOnRandomChains) {
  std::mt19937 rng(3);
  std::uniform_real_distribution<double> coord(-50, 50);
  std::uniform_real_distribution<double> unit(0, 1);
  for (int c = 0; c < 50; ++c) {
    CHU_DPolyLine chain;
    for (int i = 0; i < 20; ++i) chain.AddPt(coord(rng), coord(rng), 0);
    for (int k = 0; k < 20; ++k) {
      const double p = unit(rng);
      CHU_DPoint at;
      const int segment = chain.GetAtPercent(p, &at);
      ASSERT_GE(segment, 0);
      // Re-measure: the length up to the reported segment plus the rest of the way.
      double before = 0.0;
      for (int i = 1; i <= segment; ++i) before += CHU_DLine::SegmentLength(*chain.GetAt(i - 1), *chain.GetAt(i));
      const double along = before + CHU_DLine::SegmentLength(*chain.GetAt(segment), at);
      ASSERT_NEAR(along, p * chain.GetLength(), 1e-9);
    }
  }
}

TEST(PolyLineTest, GetPosAlongPolylineKeepsItsOwnResults) {
  const CHU_DPolyLine chain = Elbow();
  CHU_DPoint out(9, 9);
  EXPECT_EQ(chain.GetPosAlongPolyline(0.0, &out), -1);
  EXPECT_EQ(out.x, 0.0);  // found although the result is -1
  EXPECT_EQ(chain.GetPosAlongPolyline(3.0, &out), 1);
  EXPECT_EQ(chain.GetPosAlongPolyline(7.0, &out), 2);
  EXPECT_EQ(chain.GetPosAlongPolyline(5.0, &out), 0);  // inside the segment ending at vertex 2
  EXPECT_EQ(out.y, 2.0);
  CHU_DPoint untouched(9, 9);
  EXPECT_EQ(chain.GetPosAlongPolyline(7.5, &untouched), -1);
  EXPECT_EQ(untouched.x, 9.0);
  EXPECT_EQ(chain.GetPosAlongPolyline(1, &out), 2);  // n times the length
  EXPECT_EQ(chain.GetPosAlongPolyline(2, &untouched), -1);
  EXPECT_EQ(untouched.x, 9.0);
  EXPECT_EQ(chain.GetCenter(&out), 0);  // 3.5 lies on the second segment
  EXPECT_DOUBLE_EQ(out.y, 0.5);
}

TEST(PolyLineTest, GetConnectedVerticesByDistance) {
  const CHU_DPolyLine chain = Elbow();
  CHU_DPoint a, b;
  double rest = 0.0;
  ASSERT_TRUE(chain.GetConnectedVertices(3.0, &a, &b, rest));
  EXPECT_EQ(b.x, 3.0);
  EXPECT_EQ(b.y, 0.0);  // the first segment reaching the distance
  EXPECT_EQ(rest, 3.0);
  ASSERT_TRUE(chain.GetConnectedVertices(5.0, &a, &b, rest));
  EXPECT_EQ(b.y, 4.0);
  EXPECT_EQ(rest, 2.0);
  EXPECT_FALSE(chain.GetConnectedVertices(7.1, &a, &b, rest));
}

TEST(PolyLineTest, PtOnPolyTakesTheFirstSegmentWithinTolerance) {
  const CHU_DPolyLine chain = Chain({{0, 0}, {2, 0}, {2, 2}, {0, 2}});
  CHU_DPoint start, end;
  EXPECT_TRUE(chain.PtOnPoly(CHU_DPoint(1, 0), 0.0, &start, &end));
  ASSERT_TRUE(chain.PtOnPoly(CHU_DPoint(1, 1), 1.0, &start, &end));  // equidistant from all three
  EXPECT_EQ(start.x, 0.0);
  EXPECT_EQ(end.x, 2.0);
  EXPECT_TRUE(chain.PtOnPoly(CHU_DPoint(3, 1), 1.0, &start, &end));  // exactly at the tolerance
  EXPECT_FALSE(chain.PtOnPoly(CHU_DPoint(0, 1), 0.5, &start, &end));  // no closing edge
  CHU_DPoint a, b;
  EXPECT_TRUE(chain.GetConnectedVertices(&start, &a, &b, 0.1));
  EXPECT_FALSE(chain.PtOnPoly(CHU_DPoint(std::nan(""), 1), 1.0, &start, &end));
}

TEST(PolyLineTest, PtOnVertexMatchesInASquareBox) {
  const CHU_DPolyLine chain = Chain({{0, 0}, {4, 4}});
  CHU_DPoint out;
  EXPECT_EQ(chain.PtOnVertex(CHU_DPoint(4.5, 3.5), 0.5, out), 1);
  EXPECT_EQ(out.x, 4.0);
  EXPECT_FALSE(chain.PtOnVertex(CHU_DPoint(4.6, 4), 0.5));
  EXPECT_TRUE(chain.PtOnVertex(CHU_DPoint(0, 0, 0), -1.0));  // exact equality needs no tolerance
}

TEST(PolyLineTest, GetLengthToPointMeasuresToTheFootOrTheNullPoint) {
  const CHU_DPolyLine chain = Elbow();
  EXPECT_DOUBLE_EQ(chain.GetLengthToPoint(CHU_DPoint(4, 2), 1.0), 5.0);
  EXPECT_DOUBLE_EQ(chain.GetLengthToPoint(CHU_DPoint(1, 0.5), 1.0), 1.0);
  // Exactly on the first segment's line: the foot stays at (-99999, -99999).
  EXPECT_DOUBLE_EQ(chain.GetLengthToPoint(CHU_DPoint(1, 0), 1.0), std::hypot(99999.0, 99999.0));
  EXPECT_EQ(chain.GetLengthToPoint(CHU_DPoint(50, 50), 1.0), 7.0);  // nothing near: whole length
  const CHU_DPolyLine repeated = Chain({{1, 1}, {1, 1}, {4, 1}});
  EXPECT_EQ(repeated.GetLengthToPoint(CHU_DPoint(1.5, 1.5), 1.0), 0.0);
}

