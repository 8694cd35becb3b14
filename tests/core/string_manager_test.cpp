#include "hy_util/core/string_manager.h"

#include <clocale>
#include <filesystem>
#include <string>

#include <boost/property_tree/exceptions.hpp>
#include <gtest/gtest.h>

#include "support/recording_application.h"
#include "support/temp_dir.h"

namespace {

const std::string kLangData = std::string(HY_TEST_DATA_DIR) + "/lang";

// Each test starts from an empty table, with the test host's application directory
// on the language test data, and leaves the process locale as it found it.
class StringManagerTest : public ::testing::Test {
 protected:
  void SetUp() override {
    savedLocale_ = std::setlocale(LC_ALL, nullptr);
    app_.SetAppDirectory(kLangData);
    manager().UnloadStrings();
  }
  void TearDown() override {
    manager().UnloadStrings();
    std::setlocale(LC_ALL, savedLocale_.c_str());
  }
  static CStringManager& manager() { return CStringManager::Instance(); }

  hytest::RecordingApplication app_;

 private:
  std::string savedLocale_;
};

TEST_F(StringManagerTest, KeysAreTrimmedCaseSensitiveAndPrefixedByDlg) {
  manager().LoadStrings("escapes_and_prefixes.xml");
  ASSERT_TRUE(manager().IsLoaded());
  EXPECT_EQ(CStringManager::GetStr("HYSTR_PADDED"), "Padded key");  // id had blanks
  EXPECT_EQ(CStringManager::GetStr(" \tHYSTR_PLAIN  "), "Plain text");
  EXPECT_EQ(CStringManager::GetStr("hystr_plain"), "lower-case key");
  EXPECT_EQ(CStringManager::GetStr("HYSTR_SPACED_TEXT"), "  kept as written  ");
  EXPECT_EQ(CStringManager::GetStr("HYSTR_REPLACED"), "second");  // later entry wins
  EXPECT_EQ(CStringManager::GetStr("HYSTR_UNICODE"), "Überflutung 浸水");
  EXPECT_EQ(CStringManager::GetStr("PFX_NAME"), "Prefixed name");  // dlg IDD_ABC,PFX_
  EXPECT_EQ(CStringManager::GetStr("B,CNAME"), "Second comma kept");  // dlg A,B,C
  EXPECT_EQ(CStringManager::GetStr("NAME"), "NAME");
  EXPECT_EQ(CStringManager::GetStr("HYSTR_OTHER_ELEMENT"), "HYSTR_OTHER_ELEMENT");
}

TEST_F(StringManagerTest, TextsAreUnescapedOneReplacementAfterAnother) {
  manager().LoadStrings("escapes_and_prefixes.xml");
  // The XML reader turns &amp;amp;lt; into &amp;lt;, which the replacements leave as
  // &lt; because "&lt;" is replaced before "&amp;".
  EXPECT_EQ(CStringManager::GetStr("HYSTR_AMP_LT"), "&lt;");
  EXPECT_EQ(CStringManager::GetStr("HYSTR_AMP_QUOT"), "&quot;");
  EXPECT_EQ(CStringManager::GetStr("HYSTR_ENTITIES"), "<a> 'b' \"c\" d");
  EXPECT_EQ(CStringManager::GetStr("HYSTR_CONTROL"),
            "one\ntwo\tthree\rfour \"q\" back\\\\slash");  // "\\" is not an escape
}

TEST_F(StringManagerTest, UnknownKeyShowsAsItselfInTheSameBuffer) {
  char* first = manager().GetString("HYSTR_DLOG_BMP");
  char* second = manager().GetString("  HYSTR_DLOG_BMP ");
  EXPECT_STREQ(first, "HYSTR_DLOG_BMP");
  EXPECT_EQ(first, second);
}

TEST_F(StringManagerTest, MissingFileKeepsTheTableAndUnloadEmptiesIt) {
  manager().LoadStrings("escapes_and_prefixes.xml");
  manager().LoadStrings("no_such_file.xml");
  EXPECT_TRUE(manager().IsLoaded());
  EXPECT_EQ(CStringManager::GetStr("HYSTR_PLAIN"), "Plain text");
  manager().UnloadStrings();
  EXPECT_FALSE(manager().IsLoaded());
  EXPECT_EQ(CStringManager::GetStr("HYSTR_PLAIN"), "HYSTR_PLAIN");
}

TEST_F(StringManagerTest, MalformedFilesThrowWithTheTableClearedAndBadTextsAreLeftOut) {
  manager().LoadStrings("escapes_and_prefixes.xml");
  EXPECT_THROW(manager().LoadStrings("malformed.xml"), boost::property_tree::ptree_error);
  EXPECT_FALSE(manager().IsLoaded());
  EXPECT_EQ(CStringManager::GetStr("HYSTR_PLAIN"), "HYSTR_PLAIN");

  EXPECT_THROW(manager().LoadStrings("missing_id_after_one_entry.xml"),
               boost::property_tree::ptree_error);
  EXPECT_FALSE(manager().IsLoaded());
  EXPECT_EQ(CStringManager::GetStr("HYSTR_BEFORE_FAULT"), "read before the fault");
  EXPECT_EQ(CStringManager::GetStr("HYSTR_AFTER_FAULT"), "HYSTR_AFTER_FAULT");

  manager().LoadStrings("invalid_utf8_texts.xml");  // such entries are left out
  EXPECT_TRUE(manager().IsLoaded());
  EXPECT_EQ(CStringManager::GetStr("HYSTR_VALID"), "valid");
  EXPECT_EQ(CStringManager::GetStr("HYSTR_BAD_BYTES"), "HYSTR_BAD_BYTES");
}

TEST_F(StringManagerTest, JapaneseTagSwitchesTheProcessLocale) {
  locale_t probe = newlocale(LC_ALL_MASK, "ja_JP.UTF-8", static_cast<locale_t>(0));
  if (probe == static_cast<locale_t>(0)) GTEST_SKIP() << "locale ja_JP.UTF-8 is not installed";
  freelocale(probe);
  std::setlocale(LC_ALL, "C");

  manager().LoadStrings("tag_upper_case_ja.xml");
  EXPECT_STREQ(std::setlocale(LC_ALL, nullptr), "C");  // tags compare case-sensitively
  manager().LoadStrings("tag_ja.xml");
  EXPECT_STREQ(std::setlocale(LC_ALL, nullptr), "ja_JP.UTF-8");
}

TEST_F(StringManagerTest, LanguageListSkipsDirectoriesAndReportsBadFiles) {
  manager().LoadStrings("escapes_and_prefixes.xml");  // for the message's format
  hytest::TempDir dir;
  std::filesystem::copy_file(kLangData + "/tag_ja.xml", dir.File("ja.xml"));
  std::filesystem::copy_file(kLangData + "/escapes_and_prefixes.xml", dir.File("en-GB.XML"));
  std::filesystem::copy_file(kLangData + "/malformed.xml", dir.File("broken.xml"));
  std::filesystem::create_directory(dir.File("x.xml"));
  dir.Write("notes.txt", "<hystrings language=\"no\"/>");
  dir.Write("no_root.xml", "<other language=\"no\"/>");
  app_.SetAppDirectory(dir.path().string());

  const std::vector<std::string> expected = {"en-GB", "ja"};
  EXPECT_EQ(manager().GetAvailableLanguages(), expected);
  ASSERT_EQ(app_.messages.size(), 2u);
  EXPECT_EQ(app_.messages[0].text, "Bad language file: " + dir.File("broken.xml") + " (100%)");
  EXPECT_EQ(app_.messages[0].kind, HU_MessageKind::Error);
  EXPECT_EQ(app_.messages[1].text, "Bad language file: " + dir.File("no_root.xml") + " (100%)");

  hytest::TempDir empty;
  app_.SetAppDirectory(empty.path().string());
  EXPECT_TRUE(manager().GetAvailableLanguages().empty());
}

}  // namespace
