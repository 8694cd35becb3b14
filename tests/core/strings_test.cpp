#include "hy_util/core/strings.h"

#include <cstring>
#include <random>
#include <regex>
#include <string>

#include <gtest/gtest.h>

using HU_LIB::HU_Strings;

namespace {

TEST(StringsTest, IntAndRealTestsFollowTheTable) {
  struct Case {
    const char* text;
    bool isInt, isReal;
  };
  const Case cases[] = {
      {"", true, false}, {"   ", true, false},  // no digit needed without a sign
      {" 42 ", true, false}, {"-7", true, false}, {"+", false, false}, {"4 2", false, false},
      {"12", true, false}, {"12.", false, true}, {".5", false, true}, {"1e5", false, true},
      {"1e", false, false}, {".", false, false}, {"-0.5E-3", false, true}, {"e5", false, false},
      {"\t+3.25e+2\n", false, true}, {"1.2.3", false, false}, {"0x1A", false, false}};
  for (const Case& c : cases) {
    EXPECT_EQ(HU_Strings::IsStringInt(c.text), c.isInt) << '"' << c.text << '"';
    EXPECT_EQ(HU_Strings::IsStringReal(std::string(c.text)), c.isReal) << '"' << c.text << '"';
    EXPECT_EQ(HU_Strings::IsNumericString(c.text), c.isInt || c.isReal) << '"' << c.text << '"';
  }
  EXPECT_TRUE(HU_Strings::IsNullString(static_cast<const char*>(nullptr)));
  EXPECT_FALSE(HU_Strings::IsNullString(" "));
}

// An independent description of a real number, checked on random short texts.
TEST(StringsTest, IsStringRealMatchesARegularExpressionOnRandomTexts) {
  const std::regex real(R"(\s*[+-]?(\d+\.\d*|\.\d+|\d+(?=[eE]))([eE][+-]?\d+)?\s*)");
  const std::string alphabet = "01.eE+- x";
  std::mt19937 random(12345);
  for (int i = 0; i < 20000; ++i) {
    std::string text(random() % 7, ' ');
    for (char& c : text) c = alphabet[random() % alphabet.size()];
    ASSERT_EQ(HU_Strings::IsStringReal(text), std::regex_match(text, real)) << '"' << text << '"';
  }
}

TEST(StringsTest, NewSuffixReplacesFromTheLastSeparatorOrAppends) {
  char buffer[32] = "model.v2.dat";
  EXPECT_TRUE(HU_Strings::NewSuffix(buffer, sizeof buffer, '.', ".bak"));
  EXPECT_STREQ(buffer, "model.v2.bak");
  char small[10] = "model";
  EXPECT_TRUE(HU_Strings::NewSuffix(small, sizeof small, '.', ".bak"));
  EXPECT_STREQ(small, "model.bak");
  EXPECT_FALSE(HU_Strings::NewSuffix(small, sizeof small, '.', ".backup"));
  EXPECT_STREQ(small, "model.bak");  // untouched when the result does not fit
}

TEST(StringsTest, RemoveTrailZeroLooksOnlyAtZeros) {
  std::string a = "1.500", b = "100";
  HU_Strings::RemoveTrailZero(a);
  HU_Strings::RemoveTrailZero(b);
  EXPECT_EQ(a, "1.5");
  EXPECT_EQ(b, "1");
}

TEST(StringsTest, QuotingEscapesAsItsFlagsSay) {
  std::string text = R"(C:\dir\"a" b)";
  HU_Strings::QuoteString(text);
  EXPECT_EQ(text, R"("C:\\dir\\\"a\" b")");  // backslashes doubled before quotes escaped
  char buffer[HU_LIB::HU_QUOTE_BUFFER_SIZE] = "it's";
  HU_Strings::_QuoteString(buffer, true, '\'', '\\', 0);
  EXPECT_STREQ(buffer, R"('it\'s')");
  char empty[HU_LIB::HU_QUOTE_BUFFER_SIZE] = "";
  HU_Strings::_QuoteString(empty, true, '"', '"', 0);
  EXPECT_STREQ(empty, "\" \"");  // one blank for an empty text
}

TEST(StringsDeathTest, QuotingBeyond255CharactersStopsTheProcess) {
  std::string fits(253, 'a');  // 253 + 2 quotes = 255
  HU_Strings::QuoteString(fits);
  EXPECT_EQ(fits.size(), 255u);
  std::string tooLong(127, '\\');  // doubled to 254, plus 2 quotes
  EXPECT_DEATH(HU_Strings::QuoteString(tooLong), "at most 255 fit");
  char buffer[HU_LIB::HU_QUOTE_BUFFER_SIZE];
  std::memset(buffer, '"', 200);
  buffer[200] = '\0';
  EXPECT_DEATH(HU_Strings::_QuoteString(buffer, false, '"', '"', 0), "_QuoteString");
}

TEST(StringsTest, CharacterSetsAndHexReplacement) {
  EXPECT_TRUE(HU_Strings::ContainsAnyCharacterFromSet("a/b", "/:"));
  EXPECT_FALSE(HU_Strings::ContainsAnyCharacterFromSet("ab", "/:"));
  EXPECT_EQ(HU_Strings::ReplaceInvalidCharactersHex("a/b:c", "/:"), "a2fb3ac");
  EXPECT_EQ(HU_Strings::ReplaceInvalidCharactersHex("a\tb", "\t"), "a9b");
  EXPECT_EQ(HU_Strings::ReplaceInvalidCharactersHex("\xe9", "\xe9"), "e9");  // unsigned
}

}  // namespace
