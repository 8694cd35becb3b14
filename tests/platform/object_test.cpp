#include "hy_util/platform/object.h"

#include <gtest/gtest.h>

namespace {

class Widget : public CHU_Object {
  HU_DECLARE_DYNCREATE(Widget)
 public:
  int value = 7;
};
HU_IMPLEMENT_DYNCREATE(Widget)

}  // namespace

TEST(RuntimeClassTest, RegisteredClassIsCreatedByName) {
  Widget::RegisterRuntimeClass();
  auto object = CHU_RuntimeClassRegistry::Create("Widget");
  ASSERT_NE(object, nullptr);
  EXPECT_STREQ(object->GetRuntimeClassName(), "Widget");
  EXPECT_TRUE(object->IsKindOf("Widget"));
  EXPECT_FALSE(object->IsKindOf("widget"));
  EXPECT_EQ(dynamic_cast<Widget&>(*object).value, 7);
  EXPECT_EQ(CHU_RuntimeClassRegistry::Create("NoSuchClass"), nullptr);
}
