#include "hy_util/core/string_algorithms.h"

#include <string>
#include <vector>

#include <gtest/gtest.h>

using HyUtility::CStringAlgorithms;
using Tokens = std::vector<std::string>;

namespace {

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
// "<<" opens and ">>" closes: two characters each.
bool TwoChars(const std::string& text, std::size_t& position, const char* pair) {
  if (text.compare(position, 2, pair) != 0) return false;
  ++position;
  return true;
}
bool OpenAngles(const std::string& t, std::size_t& p, void*) { return TwoChars(t, p, "<<"); }
bool CloseAngles(const std::string& t, std::size_t& p, void*) { return TwoChars(t, p, ">>"); }
bool Never(const std::string&, std::size_t&, void*) { return false; }
bool Backwards(const std::string&, std::size_t& position, void*) {
  position = position > 0 ? position - 1 : 0;
  return position == 0;
}

Tokens SplitWords(const std::string& text) {
  return CStringAlgorithms::Split(text, Word, DoubleQuote, DoubleQuote, nullptr);
}

TEST(StringAlgorithmsTest, UnclaimedCharactersSeparateAndQuotesGroup) {
  EXPECT_EQ(SplitWords("  alpha, beta ,,gamma "), (Tokens{"alpha", "beta", "gamma"}));
  EXPECT_EQ(SplitWords(" ,, "), Tokens{});
  EXPECT_EQ(SplitWords(R"(a "b, c" d)"), (Tokens{"a", "b, c", "d"}));
  EXPECT_EQ(SplitWords(R"("" x)"), (Tokens{"", "x"}));  // empty quoted token
  EXPECT_EQ(SplitWords(R"(a "open to end)"), (Tokens{"a", "open to end"}));
  EXPECT_EQ(SplitWords(R"(ab"cd"ef)"), (Tokens{"ab", "cd", "ef"}));
}

TEST(StringAlgorithmsTest, QuotesOfSeveralCharactersAreSkippedWhole) {
  EXPECT_EQ(CStringAlgorithms::Split("<<a b>> c <<d", Word, OpenAngles, CloseAngles, nullptr),
            (Tokens{"a b", "c", "d"}));
}

TEST(StringAlgorithmsTest, MoveToNextTokenStopsAtTokenStarts) {
  std::size_t position = 0;
  EXPECT_TRUE(CStringAlgorithms::MoveToNextToken("   ab", position, Word, DoubleQuote,
                                                 DoubleQuote, nullptr));
  EXPECT_EQ(position, 3u);
  position = 2;
  EXPECT_FALSE(CStringAlgorithms::MoveToNextToken("ab  ", position, Word, DoubleQuote,
                                                  DoubleQuote, nullptr));
  EXPECT_EQ(position, 4u);
}

TEST(StringAlgorithmsTest, FaultyOrMissingRecognizersCannotStallTheLoop) {
  EXPECT_EQ(CStringAlgorithms::Split("abc", Never, nullptr, nullptr, nullptr), Tokens{});
  EXPECT_EQ(CStringAlgorithms::Split("abc", Backwards, Never, Never, nullptr), Tokens{"a"});
}

}  // namespace
