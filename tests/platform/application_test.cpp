#include "hy_util/platform/application.h"

#include <gtest/gtest.h>

#include "support/recording_application.h"

TEST(ApplicationTest, DefaultInstanceAnswersWithDefaultsUntilValuesAreSet) {
  CHU_DefaultApplication app;
  EXPECT_FALSE(app.GetAppDirectory().empty());
  EXPECT_EQ(app.GetProfileString("CONFIG", "DATE_FORMAT", "dd/mm/yy"), "dd/mm/yy");
  EXPECT_EQ(app.GetGlobalInt("Units", 0), 0);
  app.SetProfileString("CONFIG", "DATE_FORMAT", "mm/dd/yyyy");
  app.SetGlobalInt("Units", 1);
  app.SetGlobalFlag("F_TUFLOW_UNIT_SELECTED", true);
  EXPECT_EQ(app.GetProfileString("CONFIG", "DATE_FORMAT", ""), "mm/dd/yyyy");
  EXPECT_EQ(app.GetProfileString("config", "DATE_FORMAT", "x"), "x");  // sections are exact
  EXPECT_EQ(app.GetGlobalInt("Units", 0), 1);
  EXPECT_TRUE(app.GetGlobalFlag("F_TUFLOW_UNIT_SELECTED", false));
}

TEST(ApplicationTest, InstalledHostIsCurrentUntilItIsRemoved) {
  IHU_Application* before = &HU_GetApplication();
  {
    hytest::RecordingApplication host;
    EXPECT_EQ(&HU_GetApplication(), &host);
    HU_GetApplication().ShowMessage("hello", HU_MessageKind::Error);
    ASSERT_EQ(host.messages.size(), 1u);
    EXPECT_EQ(host.messages[0].text, "hello");
    EXPECT_EQ(host.messages[0].kind, HU_MessageKind::Error);
  }
  EXPECT_EQ(&HU_GetApplication(), before);
}
