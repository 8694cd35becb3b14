#include "hy_util/core/string_manager.h"

#include <sys/wait.h>

#include <clocale>
#include <cstdio>
#include <filesystem>
#include <regex>
#include <string>

#include <boost/property_tree/exceptions.hpp>
#include <gtest/gtest.h>

#include "hy_util/core/localization.h"
#include "hy_util/core/string_manager_helper.h"
#include "support/recording_application.h"
#include "support/temp_dir.h"

namespace {

using boost::property_tree::ptree_error;
const std::string kLangData = std::string(HY_TEST_DATA_DIR) + "/lang";

// Each test starts from an empty table, with the test host's application directory
// on the language test data, and leaves the process locale as it found it.
class StringManagerTest : public ::testing::Test {
 protected:
  StringManagerTest() : savedLocale_(std::setlocale(LC_ALL, nullptr)) {
    app_.SetAppDirectory(kLangData);
    manager.UnloadStrings();
  }
  ~StringManagerTest() override {
    manager.UnloadStrings();
    std::setlocale(LC_ALL, savedLocale_.c_str());
  }

  CStringManager& manager = CStringManager::Instance();
  hytest::RecordingApplication app_;

 private:
  std::string savedLocale_;
};

TEST_F(StringManagerTest, KeysAreTrimmedCaseSensitivePrefixedByDlgAndTextsUnescaped) {
  manager.LoadStrings("escapes_and_prefixes.xml");
  ASSERT_TRUE(manager.IsLoaded());
  const std::pair<const char*, const char*> cases[] = {
      {"HYSTR_PADDED", "Padded key"}, {" \tHYSTR_PLAIN  ", "Plain text"}, {"NAME", "NAME"},
      {"hystr_plain", "lower-case key"}, {"HYSTR_SPACED_TEXT", "  kept as written  "},
      {"HYSTR_REPLACED", "second"}, {"HYSTR_UNICODE", "Überflutung 浸水"},  // a later entry wins
      {"PFX_NAME", "Prefixed name"}, {"B,CNAME", "Second comma kept"},  // dlg X,PFX_ and A,B,C
      {"HYSTR_OTHER_ELEMENT", "HYSTR_OTHER_ELEMENT"},  // not a "string" element
      // The reader turns &amp;amp;lt; into &amp;lt;, which stays &lt; because "&lt;"
      // is replaced before "&amp;".
      {"HYSTR_AMP_LT", "&lt;"}, {"HYSTR_AMP_QUOT", "&quot;"}, {"HYSTR_ENTITIES", "<a> 'b' \"c\" d"},
      {"HYSTR_CONTROL", "one\ntwo\tthree\rfour \"q\" back\\\\slash"}};  // "\\" is no escape
  for (const auto& [key, text] : cases) EXPECT_EQ(CStringManager::GetStr(key), text) << key;
}

TEST_F(StringManagerTest, UnknownKeyShowsAsItselfInTheSameBuffer) {
  char* first = manager.GetString("HYSTR_DLOG_BMP");
  EXPECT_STREQ(first, "HYSTR_DLOG_BMP");
  EXPECT_EQ(manager.GetString("  HYSTR_DLOG_BMP "), first);
}

TEST_F(StringManagerTest, MissingFileKeepsTheTableAndUnloadEmptiesIt) {
  manager.LoadStrings("escapes_and_prefixes.xml");
  manager.LoadStrings("no_such_file.xml");
  EXPECT_TRUE(manager.IsLoaded() && CStringManager::GetStr("HYSTR_PLAIN") == "Plain text");
  manager.UnloadStrings();
  EXPECT_EQ(CStringManager::GetStr("HYSTR_PLAIN"), "HYSTR_PLAIN");
}

TEST_F(StringManagerTest, MalformedFilesThrowAfterTheEntriesBeforeTheFault) {
  EXPECT_THROW(manager.LoadStrings("malformed.xml"), ptree_error);
  EXPECT_THROW(manager.LoadStrings("missing_id_after_one_entry.xml"), ptree_error);
  EXPECT_FALSE(manager.IsLoaded());
  EXPECT_EQ(CStringManager::GetStr("HYSTR_BEFORE_FAULT"), "read before the fault");
  EXPECT_EQ(CStringManager::GetStr("HYSTR_AFTER_FAULT"), "HYSTR_AFTER_FAULT");
  manager.LoadStrings("invalid_utf8_texts.xml");
  EXPECT_EQ(CStringManager::GetStr("HYSTR_VALID"), "valid");
  EXPECT_EQ(CStringManager::GetStr("HYSTR_BAD_BYTES"), "HYSTR_BAD_BYTES");  // left out
}

TEST_F(StringManagerTest, OnlyTheLowerCaseJapaneseTagSwitchesTheProcessLocale) {
  if (!std::setlocale(LC_ALL, "ja_JP.UTF-8")) GTEST_SKIP() << "ja_JP.UTF-8 is not installed";
  std::setlocale(LC_ALL, "C");
  manager.LoadStrings("tag_upper_case_ja.xml");
  EXPECT_STREQ(std::setlocale(LC_ALL, nullptr), "C");
  manager.LoadStrings("tag_ja.xml");
  EXPECT_STREQ(std::setlocale(LC_ALL, nullptr), "ja_JP.UTF-8");
}

TEST_F(StringManagerTest, LanguageListSkipsDirectoriesAndReportsBadFiles) {
  manager.LoadStrings("escapes_and_prefixes.xml");  // for the message's format
  hytest::TempDir dir;
  dir.Write("ja.xml", "<hystrings language=\"ja\"/>");
  dir.Write("en-GB.XML", "<hystrings language=\"en-GB\"/>");
  dir.Write("notes.txt", "<hystrings language=\"no\"/>");
  dir.Write("broken.xml", "<hystrings language=\"no\">");
  dir.Write("no_root.xml", "<other language=\"no\"/>");
  std::filesystem::create_directory(dir.File("x.xml"));
  app_.SetAppDirectory(dir.path().string());
  EXPECT_EQ(manager.GetAvailableLanguages(), (std::vector<std::string>{"en-GB", "ja"}));
  ASSERT_EQ(app_.messages.size(), 2u);
  EXPECT_EQ(app_.messages[0].text, "Bad language file: " + dir.File("broken.xml") + " (100%)");
  EXPECT_EQ(app_.messages[1].kind, HU_MessageKind::Error);
  hytest::TempDir empty;
  app_.SetAppDirectory(empty.path().string());
  EXPECT_TRUE(manager.GetAvailableLanguages().empty());  // the list is rebuilt
}

// With no language file loaded every key shows as itself, which makes the order of
// the parts visible.
TEST_F(StringManagerTest, DeleteMessageFollowsTheLanguagesWordOrder) {
  const std::string p = "HYSTR_DELETE_CONFIRM_POLYGONS", d = "HYSTR_DELETE_CONFIRM_DELETED";
  const std::string ja = "3 HYSTR_DELETE_CONFIRM_NUMBER_OF_POLYGONS " + p + " " + d;
  const std::pair<const char*, std::string> cases[] = {
      {"JA", ja}, {"ko", "3 " + p + " " + d}, {"Ch", "3 " + p + " " + d}, {"ja-JP", d + " 3 " + p}};
  for (const auto& [language, expected] : cases) {
    app_.SetProfileString("LANGUAGE", "DefaultLanguage", language);
    std::string out;
    CStringManagerHelper::ApplySemantics("HYSTR_GRID_FILE_DELETE_CONTENTS_DLOG_MESSAGE", out, 3);
    EXPECT_EQ(out, expected) << language;
  }
  std::string untouched = "unchanged";
  EXPECT_STREQ(CStringManagerHelper::ApplySemantics("HYSTR_OTHER", untouched, 3), "unchanged");
}

TEST_F(StringManagerTest, ReferenceIdentifiersGiveTheirTitles) {
  const std::pair<int, std::string> cases[] = {
      {10004, "HYSTR_DLOG_HC12"}, {2041, "HYSTR_DLOG_BMP"}, {10006, "Caller's"}};  // 10006 absent
  for (const auto& [id, expected] : cases) {
    std::string out;
    EXPECT_EQ(CStringManagerHelper::ConvertNameListRefTitle("Caller's", id, out) + "|" + out,
              expected + "|" + expected);  // returned and stored
  }
}

TEST(LocalizationTest, NumbersFollowTheGivenLocaleAndLeaveTheProcessAlone) {
  const locale_t german = newlocale(LC_ALL_MASK, "de_DE.UTF-8", static_cast<locale_t>(0));
  if (german == static_cast<locale_t>(0)) GTEST_SKIP() << "locale de_DE.UTF-8 is not installed";
  EXPECT_EQ(CHU_Localization::DoubleToString_l(-1234.5, german), "-1234,500000");
  EXPECT_DOUBLE_EQ(CHU_Localization::StringToDouble_l(" 2,75e1x", german), 27.5);
  freelocale(german);
  EXPECT_EQ(std::to_string(2.5), "2.500000");  // the thread's locale is back
}

// The English file shipped with the library knows every key the sources ask for.
TEST_F(StringManagerTest, EveryKeyUsedInTheSourcesHasAnEnglishText) {
  app_.SetAppDirectory(HY_SOURCE_DIR "/lang");
  ASSERT_NO_THROW(manager.LoadStrings("en-US.xml"));
  const std::regex literal("\"(HYSTR_[A-Z0-9_]+)\"");
  int found = 0;
  for (const char* root : {HY_SOURCE_DIR "/hy_util", HY_SOURCE_DIR "/tools"}) {
    for (const auto& entry : std::filesystem::recursive_directory_iterator(root)) {
      if (entry.path().extension() != ".h" && entry.path().extension() != ".cpp") continue;
      const std::string source = hytest::ReadFileBytes(entry.path().string());
      for (std::sregex_iterator m(source.begin(), source.end(), literal), end; m != end;
           ++m, ++found) {
        const std::string key = (*m)[1].str(), text = CStringManager::GetStr(key);
        EXPECT_FALSE(text.empty() || text == key) << key << " in " << entry.path().string();
      }
    }
  }
  EXPECT_GT(found, 0);
}

#ifdef HYUTIL_PATH

const std::string kLang = " " + kLangData + " ";

// The tool's standard output followed by its exit status in brackets.
std::string RunTool(const std::string& arguments) {
  FILE* pipe = popen((HYUTIL_PATH " " + arguments + " 2>/dev/null").c_str(), "r");
  if (pipe == nullptr) return "popen failed";
  std::string output;
  char buffer[4096];
  for (std::size_t n; (n = std::fread(buffer, 1, sizeof buffer, pipe)) > 0;)
    output.append(buffer, n);
  const int status = pclose(pipe);
  return output + "[" + std::to_string(WIFEXITED(status) ? WEXITSTATUS(status) : -1) + "]";
}

TEST(LangToolTest, ListAndGetPrintTagsAndEscapedTexts) {
  // The tags of the test files in name order; malformed.xml is reported and skipped.
  EXPECT_EQ(RunTool("lang list" + kLang), "en-GB\nen-US\nen-US\nja\nJA\n[0]");
  EXPECT_EQ(RunTool("lang get" + kLang + "escapes_and_prefixes.xml HYSTR_CONTROL NOT_THERE"),
            "HYSTR_CONTROL\tone\\ntwo\\tthree\\rfour \"q\" back\\\\\\\\slash\n"
            "NOT_THERE\tNOT_THERE\n[0]");
  EXPECT_EQ(RunTool("lang get" + kLang + "escapes_and_prefixes.xml PFX_NAME --json"),
            "{\n  \"PFX_NAME\": \"Prefixed name\"\n}\n[0]");
}

TEST(LangToolTest, ExitCodesTellInputProblemsFromBadArguments) {
  EXPECT_EQ(RunTool("lang get" + kLang + "no_such.xml K"), "[1]");
  EXPECT_EQ(RunTool("lang get" + kLang + "malformed.xml K"), "[1]");
  EXPECT_EQ(RunTool("lang list /no/such/dir"), "[1]");
  EXPECT_EQ(RunTool("lang get" + kLang + "escapes_and_prefixes.xml"), "[2]");  // no key
}

#endif  // HYUTIL_PATH

}  // namespace
