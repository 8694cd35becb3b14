#include "hy_util/geometry/point.h"

#include <gtest/gtest.h>

#include <array>
#include <memory>
#include <tuple>

#include "hy_util/geometry/point3d.h"

TEST(Point, DefaultsMarkTheCoordinatesUnsetButA3DPointStartsAtTheOrigin) {
  const CHU_DPoint p;
  const CHU_DPoint3D q;
  EXPECT_EQ((std::array{p.x, p.y, p.z}), (std::array{-99999.0, -99999.0, -99999.0}));
  EXPECT_EQ(p.GetSymbol(), -1);
  EXPECT_EQ(p.GetColour()->alpha, 255);
  EXPECT_EQ((std::array{q.x, q.y, q.z}), (std::array{0.0, 0.0, 0.0}));
}

TEST(Point, AssignmentKeepsThePackedColourWhileCopyConstructionCopiesIt) {
  CHU_DPoint red(1, 2, 3, 0x0000FF), green(0, 0, 0, 0x00FF00);
  red.SetItemData(&red);
  red.SetSymbol(7);
  green = red;
  EXPECT_EQ(green.GetColour()->packed, 0x00FF00u);
  EXPECT_EQ(green.GetColor(), 0x0000FFu);  // rebuilt from the copied components
  EXPECT_EQ(std::make_tuple(green.z, green.GetItemData(), int{green.GetSymbol()}), std::make_tuple(3.0, (void*)&red, 7));
  EXPECT_EQ(CHU_DPoint(red).GetColour()->packed, 0x0000FFu);
  EXPECT_EQ(CHU_DPoint(&red).GetColour()->packed, 0x0000FFu);
}

TEST(Point, SetColorSplitsThePackedValueAndDropsTheHighByte) {
  CHU_DPoint p;
  p.GetColour()->alpha = 3;
  p.SetColor(0xFF123456u);
  EXPECT_EQ(p.GetColorR() | p.GetColorG() << 8 | p.GetColorB() << 16, 0x123456);
  EXPECT_EQ(p.GetColour()->alpha, 255);
  EXPECT_EQ(p.GetColour()->packed, 0x00123456u);
}

TEST(Point, EqualityTestsAreInclusiveAndTwoDIgnoresZ) {
  const CHU_DPoint origin(0, 0, 0), higher(0, 0, 5);
  const CHU_DPoint atTolerance(1e-10, -1e-10, 1e-10), beyond(1.1e-10, 0, 0);
  EXPECT_TRUE(origin.IsApproxEqual(atTolerance, false));
  EXPECT_FALSE(origin.IsApproxEqual(&beyond, false));
  EXPECT_TRUE(origin.IsApproxEqual(higher, true));
  EXPECT_FALSE(origin.IsApproxEqual(higher, false));
  EXPECT_FALSE(origin == higher);  // == always compares z
  EXPECT_TRUE(origin.IsEqual(&higher, 5.0, false));
  EXPECT_FALSE(origin.IsEqual(nullptr, 1.0, true));
}

TEST(Point, GeometryValuesAreCreatedByClassName) {
  for (const char* name : {"CHU_DPoint", "CHU_DPoint3D", "CHU_DRect", "CHU_DPolyLine", "CHU_DPolygon"}) {
    const std::unique_ptr<CHU_Object> object = CHU_RuntimeClassRegistry::Create(name);
    ASSERT_NE(object, nullptr) << name;
    EXPECT_STREQ(object->GetRuntimeClassName(), name);
  }
}
