#include "hy_util/geometry/point.h"

#include <gtest/gtest.h>

#include <memory>

#include "hy_util/geometry/point3d.h"

TEST(PointTest, DefaultsMarkEverythingUnset) {
  const CHU_DPoint p;
  EXPECT_EQ(p.x, -99999.0);
  EXPECT_EQ(p.y, -99999.0);
  EXPECT_EQ(p.z, -99999.0);
  EXPECT_EQ(p.GetSymbol(), -1);
  EXPECT_EQ(p.GetColour()->alpha, 255);
  EXPECT_EQ(p.GetColour()->packed, 0u);
  EXPECT_EQ(p.GetItemData(), nullptr);
  const CHU_DPoint screen(CHU_ScreenPoint(12, -4));
  EXPECT_EQ(screen.z, -99999.0);
  const CHU_DPoint3D q;
  EXPECT_EQ(q.x, 0.0);  // a bare 3-D point starts at the origin
  EXPECT_EQ(q.z, 0.0);
}

TEST(PointTest, AssignmentKeepsThePackedColourButCopyConstructionDoesNot) {
  CHU_DPoint red(1, 2, 3, 0x0000FF);
  int tag = 0;
  red.SetItemData(&tag);
  red.SetSymbol(7);
  CHU_DPoint green(0, 0, 0, 0x00FF00);
  green = red;
  EXPECT_EQ(green.GetColour()->packed, 0x00FF00u);
  EXPECT_EQ(green.GetColour()->red, 255);
  EXPECT_EQ(green.GetColour()->green, 0);
  EXPECT_EQ(green.GetColor(), 0x0000FFu);  // rebuilt from the components
  EXPECT_EQ(green.GetItemData(), &tag);
  EXPECT_EQ(green.GetSymbol(), 7);
  EXPECT_EQ(green.z, 3.0);

  const CHU_DPoint copy(red);
  EXPECT_EQ(copy.GetColour()->packed, 0x0000FFu);
  const CHU_DPoint fromPointer(&red);
  EXPECT_EQ(fromPointer.GetColour()->packed, 0x0000FFu);
  EXPECT_EQ(CHU_DPoint(static_cast<const CHU_DPoint*>(nullptr)).x, -99999.0);
}

TEST(PointTest, SetColorSplitsThePackedValueAndDropsTheHighByte) {
  CHU_DPoint p;
  p.GetColour()->alpha = 3;
  p.SetColor(0xFF123456u);
  EXPECT_EQ(p.GetColorR(), 0x56);
  EXPECT_EQ(p.GetColorG(), 0x34);
  EXPECT_EQ(p.GetColorB(), 0x12);
  EXPECT_EQ(p.GetColour()->alpha, 255);
  EXPECT_EQ(p.GetColour()->packed, 0x00123456u);
}

TEST(PointTest, EqualityTestsAreInclusiveAndTwoDIgnoresZ) {
  const CHU_DPoint origin(0, 0, 0);
  const CHU_DPoint atTolerance(1e-10, -1e-10, 1e-10);
  const CHU_DPoint beyond(1.1e-10, 0, 0);
  const CHU_DPoint higher(0, 0, 5);
  EXPECT_TRUE(origin.IsApproxEqual(atTolerance, false));
  EXPECT_FALSE(origin.IsApproxEqual(&beyond, false));
  EXPECT_TRUE(origin.IsApproxEqual(higher, true));
  EXPECT_FALSE(origin.IsApproxEqual(higher, false));
  EXPECT_FALSE(origin == higher);  // == always compares z
  EXPECT_TRUE(origin.IsEqual(&higher, 0.5, true));
  EXPECT_TRUE(origin.IsEqual(&higher, 5.0, false));
  EXPECT_FALSE(origin.IsEqual(nullptr, 1.0, true));
}

TEST(PointTest, GeometryValuesAreCreatedByClassName) {
  for (const char* name : {"CHU_DPoint", "CHU_DPoint3D", "CHU_DRect", "CHU_DPolyLine"}) {
    const std::unique_ptr<CHU_Object> object = CHU_RuntimeClassRegistry::Create(name);
    ASSERT_NE(object, nullptr) << name;
    EXPECT_STREQ(object->GetRuntimeClassName(), name);
  }
}
