#include "hy_util/core/string_manager_helper.h"

#include <string>

#include <gtest/gtest.h>

#include "hy_util/core/string_manager.h"
#include "support/recording_application.h"

namespace {

// With no language file loaded every key shows as itself, which makes the order of
// the parts visible.
class StringManagerHelperTest : public ::testing::Test {
 protected:
  void SetUp() override { CStringManager::Instance().UnloadStrings(); }
  hytest::RecordingApplication app_;
};

TEST_F(StringManagerHelperTest, DeleteMessageFollowsTheLanguagesWordOrder) {
  const std::string ja = "3 HYSTR_DELETE_CONFIRM_NUMBER_OF_POLYGONS HYSTR_DELETE_CONFIRM_POLYGONS "
                         "HYSTR_DELETE_CONFIRM_DELETED";
  const std::string koCh = "3 HYSTR_DELETE_CONFIRM_POLYGONS HYSTR_DELETE_CONFIRM_DELETED";
  const std::string other = "HYSTR_DELETE_CONFIRM_DELETED 3 HYSTR_DELETE_CONFIRM_POLYGONS";
  const std::pair<const char*, std::string> cases[] = {
      {"ja", ja}, {"JA", ja}, {"ko", koCh}, {"Ch", koCh}, {"en-US", other}, {"ja-JP", other}};
  for (const auto& [language, expected] : cases) {
    app_.SetProfileString("LANGUAGE", "DefaultLanguage", language);
    std::string out;
    const char* text =
        CStringManagerHelper::ApplySemantics("HYSTR_GRID_FILE_DELETE_CONTENTS_DLOG_MESSAGE", out, 3);
    EXPECT_EQ(out, expected) << language;
    EXPECT_EQ(text, out.c_str());
  }
  std::string untouched = "unchanged";
  CStringManagerHelper::ApplySemantics("HYSTR_OTHER", untouched, 3);
  EXPECT_EQ(untouched, "unchanged");
}

TEST_F(StringManagerHelperTest, ReferenceIdentifiersGiveTheirTitles) {
  const std::pair<int, std::string> cases[] = {
      {10000, "HYSTR_USER_DEFINED_FILES"}, {10003, "HYSTR_DLOG_HC12"},
      {10004, "HYSTR_DLOG_HC12"},          {10005, "HYSTR_DLOG_RATF"},
      {10006, "Caller's title"},  // deliberately absent
      {10007, "HYSTR_NATURAL_SECTION_SHAPES_TITLE"},
      {10012, "HYSTR_NATURAL_SECTION_SHAPES_TITLE"},
      {10016, "HYSTR_DLOG_USER_HAZ_VAL"},  {2041, "HYSTR_DLOG_BMP"},
      {10017, "Caller's title"},           {0, "Caller's title"}};
  for (const auto& [id, expected] : cases) {
    std::string out;
    EXPECT_EQ(CStringManagerHelper::ConvertNameListRefTitle("Caller's title", id, out), expected)
        << id;
    EXPECT_EQ(out, expected) << id;
  }
}

}  // namespace
