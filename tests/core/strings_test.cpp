#include "hy_util/core/strings.h"

#include <clocale>
#include <cstring>
#include <random>
#include <regex>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "hy_util/core/str_num_conversion.h"
#include "hy_util/core/string_algorithms.h"

using Num = HU_LIB::HU_StrNumConversion;
using HU_LIB::HU_Strings;
using HyUtility::CStringAlgorithms;
using Tokens = std::vector<std::string>;

namespace {

TEST(StringsTest, IntegerTestNeedsNoDigitWithoutASign) {
  const std::pair<const char*, bool> cases[] = {
      {"", true}, {"   ", true}, {" 42 ", true}, {"-7", true}, {"+", false}, {"4 2", false},
      {"12.", false}, {"0x1A", false}};
  for (const auto& [text, isInt] : cases) EXPECT_EQ(HU_Strings::IsStringInt(text), isInt) << text;
  EXPECT_TRUE(HU_Strings::IsNumericString(".5"));
  EXPECT_TRUE(HU_Strings::IsNullString(static_cast<const char*>(nullptr)));
}

// An independent description of a real number, checked on random short texts.
TEST(StringsTest, IsStringRealMatchesARegularExpressionOnRandomTexts) {
  const std::regex real(R"(\s*[+-]?(\d+\.\d*|\.\d+|\d+(?=[eE]))([eE][+-]?\d+)?\s*)");
  const std::string alphabet = "01.eE+- x\t";
  std::mt19937 random(12345);
  for (int i = 0; i < 20000; ++i) {
    std::string text(random() % 7, ' ');
    for (char& c : text) c = alphabet[random() % alphabet.size()];
    ASSERT_EQ(HU_Strings::IsStringReal(text), std::regex_match(text, real)) << '"' << text << '"';
  }
}

TEST(StringsTest, SuffixesTrailingZerosAndCharactersOfASetAreRewritten) {
  char buffer[10] = "m.v2.dat";
  EXPECT_TRUE(HU_Strings::NewSuffix(buffer, sizeof buffer, '.', ".bak"));
  EXPECT_FALSE(HU_Strings::NewSuffix(buffer, sizeof buffer, '.', ".backup"));
  EXPECT_STREQ(buffer, "m.v2.bak");  // the last separator; untouched when it does not fit
  std::string text = "model";
  HU_Strings::NewSuffix(text, '.', ".bak");
  EXPECT_EQ(text, "model.bak");
  char number[] = "100";
  HU_Strings::RemoveTrailZero(number);
  EXPECT_STREQ(number, "1");  // the decimal point is not looked at
  EXPECT_FALSE(HU_Strings::ContainsAnyCharacterFromSet("ab", "/:"));
  EXPECT_EQ(HU_Strings::ReplaceInvalidCharactersHex("a/b:c\t", "/:\t"), "a2fb3ac9");
  EXPECT_EQ(HU_Strings::ReplaceInvalidCharactersHex("\xe9", "\xe9"), "e9");  // unsigned
}

TEST(StringsTest, QuotingDoublesBackslashesBeforeEscapingQuotes) {
  std::string text = R"(C:\dir\"a" b)";
  HU_Strings::QuoteString(text);
  EXPECT_EQ(text, R"("C:\\dir\\\"a\" b")");
  char buffer[HU_LIB::HU_QUOTE_BUFFER_SIZE] = "it's", empty[HU_LIB::HU_QUOTE_BUFFER_SIZE] = "";
  HU_Strings::_QuoteString(buffer, true, '\'', '\\', 0);
  HU_Strings::_QuoteString(empty, true, '"', '"', 0);
  EXPECT_STREQ(buffer, R"('it\'s')");
  EXPECT_STREQ(empty, "\" \"");  // one blank for an empty text
}

TEST(StringsDeathTest, QuotingBeyond255CharactersStopsTheProcess) {
  std::string fits(253, 'a');  // 253 + 2 quotes = 255
  HU_Strings::QuoteString(fits);
  EXPECT_EQ(fits.size(), 255u);
  std::string tooLong(127, '\\');  // doubled to 254, plus 2 quotes
  EXPECT_DEATH(HU_Strings::QuoteString(tooLong), "at most 255 fit");
  char buffer[HU_LIB::HU_QUOTE_BUFFER_SIZE] = {};
  std::memset(buffer, '"', 200);  // each quote gets an escape character
  EXPECT_DEATH(HU_Strings::_QuoteString(buffer, false, '"', '"', 0), "_QuoteString");
}

TEST(StrNumConversionTest, ParsingReadsTheLongestLeadingNumberOrGivesTheDefault) {
  const std::pair<const char*, float> floats[] = {
      {"  2.5m", 2.5f}, {"+1e3", 1000.0f}, {"7e", 7.0f},  // "e" without digits is not read
      {"0x10", 16.0f},  {"+-1", -9.0f},    {"1e60", -9.0f}, {"", -9.0f}};
  for (const auto& [text, value] : floats) EXPECT_FLOAT_EQ(Num::StringToFloat(text, -9), value);
  const std::pair<const char*, int> ints[] = {
      {" 42 apples", 42}, {"+7", 7}, {"3.9", 3}, {"2147483648", -9}, {"", -9}};
  for (const auto& [text, value] : ints) EXPECT_EQ(Num::StringToInt(text, -9), value) << text;
  EXPECT_EQ(Num::CountDecimalPlaces("3.250"), 3u);
  EXPECT_EQ(Num::CountDecimalPlaces("12"), 0u);
}

TEST(StrNumConversionTest, NumbersAreWrittenAndReadWithAPointInAnyLocale) {
  const std::string saved = std::setlocale(LC_NUMERIC, nullptr);
  std::setlocale(LC_NUMERIC, "de_DE.UTF-8");  // comma locale when installed
  EXPECT_EQ(Num::FloatToString(2.5f, 3), "2.500");
  EXPECT_EQ(Num::FloatToString(-0.125f, 2), "-0.12");  // exact tie to even
  EXPECT_EQ(Num::FloatToString(1.5f), "1.500000");
  EXPECT_EQ(Num::FloatToString(1e20f, 2), "100000002004087734272.00");  // beyond 15 characters
  EXPECT_FLOAT_EQ(Num::StringToFloat("2.5", 0), 2.5f);
  std::setlocale(LC_NUMERIC, saved.c_str());
}

// Recognizers leave the position on the last character they accept. A word is a
// run of characters that are neither blanks, commas nor double quotes.
bool IsWordChar(char c) { return c != ' ' && c != ',' && c != '"'; }
bool Word(const std::string& text, std::size_t& position, void*) {
  if (!IsWordChar(text[position])) return false;
  while (position + 1 < text.size() && IsWordChar(text[position + 1])) ++position;
  return true;
}
bool DoubleQuote(const std::string& text, std::size_t& position, void*) {
  return text[position] == '"';
}
// Two characters given by the context: a quote longer than one character.
bool Pair(const std::string& text, std::size_t& position, void* pair) {
  if (text.compare(position, 2, static_cast<const char*>(pair)) != 0) return false;
  return ++position != 0;  // left on the second character
}
bool Never(const std::string&, std::size_t&, void*) { return false; }
bool Backwards(const std::string&, std::size_t& position, void*) {
  position = position > 0 ? position - 1 : 0;
  return position == 0;
}

TEST(StringAlgorithmsTest, UnclaimedCharactersSeparateAndQuotesGroup) {
  const std::pair<const char*, Tokens> cases[] = {
      {"  alpha, beta ,,gamma ", {"alpha", "beta", "gamma"}},
      {" ,, ", {}},
      {R"(a "b, c" d)", {"a", "b, c", "d"}},
      {R"("" x)", {"", "x"}},  // empty quoted token
      {R"(a "open to end)", {"a", "open to end"}},
      {R"(ab"cd"ef)", {"ab", "cd", "ef"}}};
  for (const auto& [text, tokens] : cases)
    EXPECT_EQ(CStringAlgorithms::Split(text, Word, DoubleQuote, DoubleQuote, nullptr), tokens);
}

TEST(StringAlgorithmsTest, QuotesOfSeveralCharactersAreSkippedWhole) {
  char pair[] = "<<";
  EXPECT_EQ(CStringAlgorithms::Split("<<a b<< c <<d", Word, Pair, Pair, pair),
            (Tokens{"a b", "c", "d"}));
}

TEST(StringAlgorithmsTest, MoveToNextTokenStopsAtTokenStartsOrTheEnd) {
  std::size_t at = 0, end = 2;
  EXPECT_TRUE(CStringAlgorithms::MoveToNextToken("   ab", at, Word, DoubleQuote, Never, nullptr));
  EXPECT_FALSE(CStringAlgorithms::MoveToNextToken("ab  ", end, Word, DoubleQuote, Never, nullptr));
  EXPECT_EQ(at, 3u);   // the token's first character
  EXPECT_EQ(end, 4u);  // the end of the text
}

TEST(StringAlgorithmsTest, FaultyOrMissingRecognizersCannotStallTheLoop) {
  EXPECT_EQ(CStringAlgorithms::Split("abc", Never, nullptr, nullptr, nullptr), Tokens{});
  EXPECT_EQ(CStringAlgorithms::Split("abc", Backwards, Never, Never, nullptr), Tokens{"a"});
}

}  // namespace
