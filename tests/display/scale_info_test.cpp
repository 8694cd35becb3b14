// Device scale: pixels against millimetres and points, truncating and never dividing
// by zero.

#include <gtest/gtest.h>

#include <climits>
#include <cmath>
#include <tuple>

#include "hy_util/display/scale_info.h"

TEST(ScaleInfo, At96PixelsPerInchAnInchIs96PixelsWhateverItsUnit) {
  const CHU_ScaleInfo s(CHU_DeviceContext(96, 96));
  EXPECT_EQ(s.MMtoSC(25.4), 96);
  EXPECT_EQ(s.PointstoSC(72.0f), 96);
  EXPECT_EQ(s.SCtoPoints(96), 72.0);
  EXPECT_DOUBLE_EQ(s.SCtoMM(96), 25.4);
  EXPECT_EQ(s.MMtoSC(95.99 / (96 / 25.4)), 95);  // truncated, not rounded
  EXPECT_EQ(s.MMtoSC(-25.3), -95);               // toward zero
}

TEST(ScaleInfo, UnequalAxesUseTheMeanForLengthsAndTheirOwnDensityForPoints) {
  const CHU_ScaleInfo s(CHU_DeviceContext(100, 300));
  EXPECT_EQ(s.MMtoSC(25.5), 200);
  EXPECT_EQ(s.PointstoSC(36.0f), 100);
  EXPECT_EQ(s.SCtoPoints(200), 72.0);
  CHU_ScreenPoint device;
  s.MMtoSC(CHU_DPoint(25.5, 2.6), device);
  EXPECT_EQ(std::pair(device.x, device.y), std::pair(100, 30));
  CHU_DPoint mm(0, 0, 7);
  s.SCtoMM(CHU_ScreenPoint(100, 300), mm);
  EXPECT_DOUBLE_EQ(mm.x, 25.4);
  EXPECT_DOUBLE_EQ(mm.y, 25.4);
  EXPECT_EQ(mm.z, 7.0);
}

TEST(ScaleInfo, AZeroResolutionDeviceGivesZeroAndHugeLengthsSaturate) {
  const CHU_ScaleInfo zero(CHU_DeviceContext(0, 0));
  EXPECT_EQ(zero.SCtoMM(50), 0.0);
  EXPECT_EQ(zero.SCtoPoints(50), 0.0);
  EXPECT_EQ(zero.MMtoSC(10.0), 0);
  const CHU_ScaleInfo s(CHU_DeviceContext(96, 96));
  EXPECT_EQ(s.MMtoSC(1e300), INT_MAX);
  EXPECT_EQ(s.PointstoSC(-1e30f), INT_MIN);
  EXPECT_EQ(s.MMtoSC(std::nan("")), 0);
}
