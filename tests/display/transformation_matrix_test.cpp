// World-to-device mapping: the pixel rule, round trips, printer switching, the
// saved-state stack and what copies carry over.

#include <gtest/gtest.h>

#include <climits>
#include <cmath>
#include <random>
#include <tuple>

#include "hy_util/display/transformation_matrix.h"
#include "hy_util/units/units_setting.h"
#include "support/recording_application.h"

namespace {

using Matrix = CHU_TransformationMatrix;

std::pair<int, int> Device(const Matrix& m, double x, double y) {
  CHU_ScreenPoint p;
  m.D2W2V(CHU_DPoint(x, y), p);
  return {p.x, p.y};
}

std::tuple<double, double, double> World(const Matrix& m, int x, int y) {
  CHU_DPoint w(5, 5, 5);
  m.D2V2W(CHU_ScreenPoint(x, y), w);
  return {w.x, w.y, w.z};
}

std::tuple<int, int, int, int> Origins(const Matrix& m) {
  int dx, dy, px, py;
  m.GetDisplayOrigin(&dx, &dy);
  m.GetPrinterOrigin(&px, &py);
  return {dx, dy, px, py};
}

// A matrix on a 96 dpi screen in metres, at scale 1000 around (1000, 2000).
struct MetricView : ::testing::Test {
  hytest::RecordingApplication host;
  Matrix m;
  MetricView() {
    m.put_Scale(1000);
    m.SetWorldOrigin(1000, 2000);
  }
};

}  // namespace

TEST_F(MetricView, OneMetreOnPaperIsAMillimetreTruncatedToWholePixelsAndLengthsIgnoreOrigins) {
  EXPECT_EQ(m.get_ProjectUnits(), HU_UNITS_NOT_SET);  // no host value: metres
  EXPECT_EQ(Device(m, 1001, 1999), std::pair(3, 3));  // 3.78 pixels each way
  EXPECT_EQ(Device(m, 999, 2001), std::pair(-3, -3));
  EXPECT_EQ(World(m, 0, 0), std::tuple(1000.0, 2000.0, -99999.0));
  m.SetDisplayOrigin(10, 20);
  EXPECT_EQ(Device(m, 1001, 1999), std::pair(13, 23));
  CHU_ScreenRect r;
  m.D2W2V(CHU_DRect(1000, 2000, 1010, 1990), r);
  EXPECT_EQ(std::tuple(r.left, r.top, r.right, r.bottom), std::tuple(10, 20, 47, 57));
  CHU_DRect back;
  m.D2V2W(&r, &back);
  EXPECT_EQ(std::tuple(back.Left(), back.Top()), std::tuple(1000.0, 2000.0));
  EXPECT_NEAR(back.Right(), 1009.79, 0.01);

  // Lengths ignore the origins and the y flip.
  m.SetDisplayOrigin(40, 40);
  CHU_ScreenPoint px;
  m.D2W2VLength(CHU_DPoint(10, 20), px);
  EXPECT_EQ(std::tuple(px.x, px.y, m.D2W2VLengthX(10)), std::tuple(37, 75, 37));
  CHU_DPoint len;
  m.D2V2WLength(CHU_ScreenPoint(-378, 378), len);
  EXPECT_TRUE(std::abs(len.x + 100.0) < 0.02 && std::abs(len.y - 100.0) < 0.02) << len.x << " " << len.y;
}

TEST(TransformationMatrix, RoundTripsStayWithinOnePixelAtEveryScaleDensityAndUnit) {
  struct Case {
    int ppiX, ppiY, units;
    double scale;
  };
  const Case cases[] = {{96, 96, 0, 1000}, {96, 96, 1, 500}, {300, 150, 0, 25},
                        {72, 600, 1, 10000}, {120, 120, 0, 0.5}};
  std::mt19937 rng(7);
  std::uniform_real_distribution<double> coordinate(-5e4, 5e4);
  for (const Case& c : cases) {
    hytest::RecordingApplication host;
    host.SetScreenResolution(c.ppiX, c.ppiY);
    host.SetGlobalInt(HU_UNITS_SETTING, c.units);
    Matrix m;
    m.put_Scale(c.scale);
    m.SetWorldOrigin(2500.5, -1200.25);
    m.SetDisplayOrigin(300, 200);
    const double worldPerPixelX = c.scale / (c.units == 1 ? c.ppiX * 12.0 : c.ppiX / 25.4 * 1000);
    const double worldPerPixelY = c.scale / (c.units == 1 ? c.ppiY * 12.0 : c.ppiY / 25.4 * 1000);
    for (int i = 0; i < 200; ++i) {
      const CHU_DPoint w(2500.5 + coordinate(rng) * worldPerPixelX,
                         -1200.25 + coordinate(rng) * worldPerPixelY);
      CHU_ScreenPoint d;
      m.D2W2V(&w, &d);
      CHU_DPoint back;
      m.D2V2W(&d, &back);
      ASSERT_LE(std::abs(back.x - w.x), worldPerPixelX * (1 + 1e-9)) << c.ppiX << " " << c.scale;
      ASSERT_LE(std::abs(back.y - w.y), worldPerPixelY * (1 + 1e-9)) << c.ppiY << " " << c.scale;
    }
  }
}

TEST(TransformationMatrix, PaperConversionsFollowProjectUnitsAndScale) {
  hytest::RecordingApplication host;
  host.SetGlobalInt(HU_UNITS_SETTING, 1);
  Matrix m;
  EXPECT_EQ(m.get_ProjectUnits(), 1);
  EXPECT_DOUBLE_EQ(m.WCtoMM(1.0), 304.8);
  EXPECT_DOUBLE_EQ(m.MMtoWC(m.WCtoMM(1.0)), 1.0);
  EXPECT_DOUBLE_EQ(m.WCtoPoints(1.0), 864.0);
  m.put_ProjectUnits(0);
  m.put_Scale(200);
  EXPECT_DOUBLE_EQ(m.WCtoMM(1.0), 5.0);
  EXPECT_DOUBLE_EQ(m.MMtoWC(5.0), 1.0);
  EXPECT_DOUBLE_EQ(m.WCtoPoints(25.4), 360.0);
}

TEST(TransformationMatrix, MappingAViewUsesTheHorizontalDensityForBothScales) {
  hytest::RecordingApplication host;
  host.SetScreenResolution(100, 200);
  Matrix m;
  const double k = 100 / 25.4 * 1000;
  m.V2WMapping(100, 50.0);
  EXPECT_DOUBLE_EQ(m.get_Scale(), 50.0 / (100 / k));
  m.V2WMapping(100, 100, 50.0, 50.0);
  CHU_DPoint len;
  m.D2V2WLength(CHU_ScreenPoint(100, 100), len);
  EXPECT_EQ(std::pair(len.x, len.y), std::pair(50.0, 25.0));  // the y scale came from the x density
  m.V2WMapping(0, 50.0);                                  // degenerate: unchanged
  EXPECT_DOUBLE_EQ(m.get_Scale(), 50.0 / (100 / k));
}

TEST(TransformationMatrix, APrinterTakesOverWorldToDeviceButNotDeviceToWorld) {
  hytest::RecordingApplication host;
  Matrix m;
  m.SetDisplayOrigin(5, 5);
  m.SetPrinterOrigin(100, 100);
  EXPECT_EQ(Device(m, 0, 0), std::pair(5, 5));
  const CHU_DeviceContext printer(600, 600);
  m.SetPrinterScaleInfo(&printer);
  EXPECT_EQ(Device(m, 0, 0), std::pair(100, 100));
  EXPECT_EQ(Device(m, 1, 0).first, 100 + 23622);  // 1 m at 600 dpi
  EXPECT_EQ(m.MMtoSC(25.4), 600);
  m.SetDisplayOrigin(7, 7);  // the printer origin stays current
  EXPECT_EQ(Device(m, 0, 0), std::pair(100, 100));
  EXPECT_EQ(World(m, 7, 7), std::tuple(0.0, 0.0, -99999.0));  // display densities and origin
  CHU_DRect paper;
  m.D2P2W(CHU_ScreenRect(100, 100, 23722, 100), paper);
  EXPECT_NEAR(paper.Right(), 1.0, 1e-4);
  m.SetPrinterScaleInfo(nullptr);
  EXPECT_EQ(Device(m, 0, 0), std::pair(7, 7));
  EXPECT_EQ(m.MMtoSC(25.4), 96);
  CHU_DRect untouched(1, 2, 3, 4);
  m.D2P2W(CHU_ScreenRect(1, 1, 1, 1), untouched);  // no printer: nothing written
  EXPECT_EQ(untouched.Right(), 3.0);
}

TEST(TransformationMatrix, PopRestoresWhatThePushSavedAndCountsTheStates) {
  hytest::RecordingApplication host;
  Matrix m;
  m.put_Scale(250);
  m.SetWorldOrigin(10, 20);
  m.SetDisplayOrigin(3, 4);
  m.PushMatrix(true);
  EXPECT_EQ(std::tuple(m.get_Scale(), Origins(m)), std::tuple(1.0, std::tuple(0, 0, 0, 0)));
  EXPECT_EQ(Device(m, 0, 0), std::pair(3, 4));  // Identity keeps the current origin
  m.PushMatrix(false);
  m.put_Scale(9);
  EXPECT_FALSE(m.PopMatrix());
  EXPECT_EQ(m.get_Scale(), 1.0);
  EXPECT_TRUE(m.PopMatrix());
  double wx, wy;
  m.GetWorldOrigin(&wx, &wy);
  EXPECT_EQ(std::tuple(m.get_Scale(), wx, wy), std::tuple(250.0, 10.0, 20.0));
  EXPECT_EQ(Origins(m), std::tuple(3, 4, 0, 0));
  EXPECT_TRUE(m.PopMatrix());  // nothing saved: unchanged
  for (int i = 0; i < 7; ++i) m.PushMatrix(false);
  EXPECT_EQ(m.GetSavedStateCount(), Matrix::kMaxSavedStates);
}

TEST(TransformationMatrix, CopiesCarryDensitiesAndOriginsButNotThePrinterOrigin) {
  hytest::RecordingApplication host;
  Matrix source;
  source.SetDisplayOrigin(11, 12);
  source.SetPrinterOrigin(50, 60);
  source.put_Scale(1000);
  const CHU_DeviceContext printer(300, 300);
  source.SetPrinterScaleInfo(&printer);

  host.SetScreenResolution(48, 48);  // copies keep the source's display values
  const Matrix copy(source);
  EXPECT_EQ(std::tuple(Origins(copy), copy.HasPrinterScaleInfo()), std::tuple(std::tuple(11, 12, 0, 0), true));
  EXPECT_EQ(Device(copy, 1000, 0), std::pair(50 + 11811, 60));  // printer current, current origin copied
  CHU_DPoint w;
  copy.D2V2W(CHU_ScreenPoint(11 + 3779, 12), w);
  EXPECT_NEAR(w.x, 999.86, 0.01);  // the source's 96 dpi display, not the 48 dpi screen

  Matrix plain;
  plain.SetPrinterScaleInfo(&printer);
  plain = Matrix();  // a source without a printer: display current, own printer kept
  EXPECT_EQ(std::pair(plain.HasPrinterScaleInfo(), plain.MMtoSC(25.4)), std::pair(true, 48));
  plain.SetDisplayOrigin(9, 9);  // while a printer exists the current origin stays
  EXPECT_EQ(Device(plain, 0, 0), std::pair(0, 0));
}

TEST(TransformationMatrix, DegenerateScalesAndNullArgumentsAreHarmless) {
  hytest::RecordingApplication host;
  host.SetScreenResolution(0, 0);
  Matrix m;
  m.put_Scale(0);
  EXPECT_EQ(Device(m, 1e300, -1e300), std::pair(0, 0));
  EXPECT_EQ(World(m, 100, 100), std::tuple(0.0, 0.0, -99999.0));
  EXPECT_EQ(m.SCtoMM(10), 0.0);
  host.SetScreenResolution(96, 96);
  Matrix big;
  big.put_Scale(1e-300);
  EXPECT_EQ(Device(big, 1, 1), std::pair(INT_MAX, INT_MIN));
  big.SetDisplayOrigin(INT_MAX, INT_MIN);
  EXPECT_EQ(Device(big, 1, -1), std::pair(INT_MAX, INT_MAX));
  big.D2W2V(static_cast<CHU_DPoint*>(nullptr), nullptr);
  big.GetWorldOrigin(nullptr, nullptr);
  big.MMtoSC(static_cast<CHU_DRect*>(nullptr), nullptr);
}
