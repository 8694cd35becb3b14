// Device scale: pixels against millimetres and points, truncating and never dividing
// by zero.

#include <gtest/gtest.h>

#include <climits>
#include <cmath>
#include <tuple>

#include "hy_util/display/scale_info.h"

TEST(ScaleInfo, At96PixelsPerInchAnInchIs96PixelsWhateverItsUnit) {
  const CHU_ScaleInfo s(CHU_DeviceContext(96, 96));
  EXPECT_EQ(std::pair(s.MMtoSC(25.4), s.PointstoSC(72.0f)), std::pair(96, 96));
  EXPECT_EQ(s.SCtoPoints(96), 72.0);
  EXPECT_DOUBLE_EQ(s.SCtoMM(96), 25.4);
  // Truncated toward zero, not rounded.
  EXPECT_EQ(std::pair(s.MMtoSC(95.99 / (96 / 25.4)), s.MMtoSC(-25.3)), std::pair(95, -95));
}

TEST(ScaleInfo, UnequalAxesUseTheMeanForLengthsAndTheirOwnDensityForPoints) {
  const CHU_ScaleInfo s(CHU_DeviceContext(100, 300));
  EXPECT_EQ(std::pair(s.MMtoSC(25.5), s.PointstoSC(36.0f)), std::pair(200, 100));
  EXPECT_EQ(s.SCtoPoints(200), 72.0);
  CHU_ScreenPoint device;
  s.MMtoSC(CHU_DPoint(25.5, 2.6), device);
  EXPECT_EQ(std::pair(device.x, device.y), std::pair(100, 30));
  CHU_DPoint mm(0, 0, 7);
  s.SCtoMM(CHU_ScreenPoint(100, 300), mm);
  EXPECT_EQ(std::tuple(mm.x, mm.y, mm.z), std::tuple(25.4, 25.4, 7.0));
}

TEST(ScaleInfo, AZeroResolutionDeviceGivesZeroAndHugeLengthsSaturate) {
  const CHU_ScaleInfo zero(CHU_DeviceContext(0, 0));
  EXPECT_EQ(std::tuple(zero.SCtoMM(50), zero.SCtoPoints(50), zero.MMtoSC(10.0)), std::tuple(0.0, 0.0, 0));
  const CHU_ScaleInfo s(CHU_DeviceContext(96, 96));
  EXPECT_EQ(std::tuple(s.MMtoSC(1e300), s.PointstoSC(-1e30f), s.MMtoSC(std::nan(""))), std::tuple(INT_MAX, INT_MIN, 0));
}
