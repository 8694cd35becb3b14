#include "hy_util/core/string_manager_helper.h"

#include <string>

#include <gtest/gtest.h>

#include "hy_util/core/string_manager.h"
#include "support/recording_application.h"

namespace {

const char kDeleteMessage[] = "HYSTR_GRID_FILE_DELETE_CONTENTS_DLOG_MESSAGE";

// With no language file loaded every key shows as itself, which makes the order of
// the parts visible.
class StringManagerHelperTest : public ::testing::Test {
 protected:
  void SetUp() override { CStringManager::Instance().UnloadStrings(); }
  void SetLanguage(const std::string& language) {
    app_.SetProfileString("LANGUAGE", "DefaultLanguage", language);
  }
  hytest::RecordingApplication app_;
};

struct WordOrder {
  const char* language;
  const char* message;
};

class ApplySemanticsTest : public StringManagerHelperTest,
                           public ::testing::WithParamInterface<WordOrder> {};

TEST_P(ApplySemanticsTest, PartsFollowTheLanguagesWordOrder) {
  SetLanguage(GetParam().language);
  std::string out;
  const char* text = CStringManagerHelper::ApplySemantics(kDeleteMessage, out, 3);
  EXPECT_EQ(out, GetParam().message);
  EXPECT_EQ(text, out.c_str());
}

INSTANTIATE_TEST_SUITE_P(
    Languages, ApplySemanticsTest,
    ::testing::Values(
        WordOrder{"ja", "3 HYSTR_DELETE_CONFIRM_NUMBER_OF_POLYGONS HYSTR_DELETE_CONFIRM_POLYGONS "
                        "HYSTR_DELETE_CONFIRM_DELETED"},
        WordOrder{"JA", "3 HYSTR_DELETE_CONFIRM_NUMBER_OF_POLYGONS HYSTR_DELETE_CONFIRM_POLYGONS "
                        "HYSTR_DELETE_CONFIRM_DELETED"},
        WordOrder{"ko", "3 HYSTR_DELETE_CONFIRM_POLYGONS HYSTR_DELETE_CONFIRM_DELETED"},
        WordOrder{"Ch", "3 HYSTR_DELETE_CONFIRM_POLYGONS HYSTR_DELETE_CONFIRM_DELETED"},
        WordOrder{"en-US", "HYSTR_DELETE_CONFIRM_DELETED 3 HYSTR_DELETE_CONFIRM_POLYGONS"},
        WordOrder{"ja-JP", "HYSTR_DELETE_CONFIRM_DELETED 3 HYSTR_DELETE_CONFIRM_POLYGONS"}));

TEST_F(StringManagerHelperTest, DefaultLanguageIsEnglishAndOtherKeysLeaveTheTextAlone) {
  std::string out = "unchanged";
  CStringManagerHelper::ApplySemantics("HYSTR_OTHER", out, 3);
  EXPECT_EQ(out, "unchanged");
  CStringManagerHelper::ApplySemantics(kDeleteMessage, out, -2);
  EXPECT_EQ(out, "HYSTR_DELETE_CONFIRM_DELETED -2 HYSTR_DELETE_CONFIRM_POLYGONS");
}

struct RefTitle {
  int id;
  const char* title;
};

class ConvertNameListRefTitleTest : public StringManagerHelperTest,
                                    public ::testing::WithParamInterface<RefTitle> {};

TEST_P(ConvertNameListRefTitleTest, IdentifierGivesItsTitle) {
  std::string out;
  const std::string result =
      CStringManagerHelper::ConvertNameListRefTitle("Caller's title", GetParam().id, out);
  EXPECT_EQ(out, GetParam().title);
  EXPECT_EQ(result, out);
}

INSTANTIATE_TEST_SUITE_P(
    Identifiers, ConvertNameListRefTitleTest,
    ::testing::Values(RefTitle{10000, "HYSTR_USER_DEFINED_FILES"},
                      RefTitle{10001, "HYSTR_DLOG_USER_HYDBREAK"},
                      RefTitle{10002, "HYSTR_DLOG_HYTABLES"}, RefTitle{10003, "HYSTR_DLOG_HC12"},
                      RefTitle{10004, "HYSTR_DLOG_HC12"}, RefTitle{10005, "HYSTR_DLOG_RATF"},
                      RefTitle{10006, "Caller's title"},  // deliberately absent
                      RefTitle{10007, "HYSTR_NATURAL_SECTION_SHAPES_TITLE"},
                      RefTitle{10008, "HYSTR_DLOG_ROUGH"}, RefTitle{10009, "HYSTR_DLOG_RDII"},
                      RefTitle{10010, "HYSTR_DLOG_WSPG_CHANNEL_TYPE"},
                      RefTitle{10011, "HYSTR_DLOG_2D_INFILTRATION"},
                      RefTitle{10012, "HYSTR_NATURAL_SECTION_SHAPES_TITLE"},
                      RefTitle{10013, "HYSTR_DLOG_BRDG_SHAPES"},
                      RefTitle{10014, "HYSTR_DLOG_LID_WSUD"},
                      RefTitle{10015, "HYSTR_DLOG_USER_HAZ_CLASSI"},
                      RefTitle{10016, "HYSTR_DLOG_USER_HAZ_VAL"}, RefTitle{2041, "HYSTR_DLOG_BMP"},
                      RefTitle{10017, "Caller's title"}, RefTitle{0, "Caller's title"}));

}  // namespace
