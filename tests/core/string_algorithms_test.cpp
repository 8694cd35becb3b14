#include "hy_util/core/string_algorithms.h"

#include <string>
#include <vector>

#include <gtest/gtest.h>

using HyUtility::CStringAlgorithms;
using Tokens = std::vector<std::string>;

namespace {

// Recognizers leave the position on the last character they accept.
bool Word(const std::string& text, std::size_t& position, void* context) {
  const std::string& separators = *static_cast<const std::string*>(context);
  if (separators.find(text[position]) != std::string::npos || text[position] == '"') return false;
  while (position + 1 < text.size() && separators.find(text[position + 1]) == std::string::npos &&
         text[position + 1] != '"') {
    ++position;
  }
  return true;
}

bool DoubleQuote(const std::string& text, std::size_t& position, void*) {
  return text[position] == '"';
}

// Accepts "<<" as an opening and ">>" as a closing quote: two characters each.
bool OpenAngles(const std::string& text, std::size_t& position, void*) {
  if (text.compare(position, 2, "<<") != 0) return false;
  ++position;
  return true;
}
bool CloseAngles(const std::string& text, std::size_t& position, void*) {
  if (text.compare(position, 2, ">>") != 0) return false;
  ++position;
  return true;
}

bool Never(const std::string&, std::size_t&, void*) { return false; }

// Claims a match but moves the position backwards.
bool Backwards(const std::string&, std::size_t& position, void*) {
  position = position > 0 ? position - 1 : 0;
  return position == 0;
}

Tokens SplitWords(const std::string& text, std::string separators = " ,") {
  return CStringAlgorithms::Split(text, Word, DoubleQuote, DoubleQuote, &separators);
}

TEST(StringAlgorithmsTest, UnclaimedCharactersSeparateTokens) {
  EXPECT_EQ(SplitWords("  alpha, beta ,,gamma "), (Tokens{"alpha", "beta", "gamma"}));
  EXPECT_EQ(SplitWords(""), Tokens{});
  EXPECT_EQ(SplitWords(" ,, "), Tokens{});
  EXPECT_EQ(SplitWords("x"), Tokens{"x"});
}

TEST(StringAlgorithmsTest, QuotesGroupTextUpToTheClosingQuote) {
  EXPECT_EQ(SplitWords(R"(a "b, c" d)"), (Tokens{"a", "b, c", "d"}));
  EXPECT_EQ(SplitWords(R"("" x)"), (Tokens{"", "x"}));         // empty quoted token
  EXPECT_EQ(SplitWords(R"(a "open to end)"), (Tokens{"a", "open to end"}));
  EXPECT_EQ(SplitWords(R"(ab"cd"ef)"), (Tokens{"ab", "cd", "ef"}));
}

TEST(StringAlgorithmsTest, RecognisedLengthsOfSeveralCharactersAreHonoured) {
  std::string separators = " ";
  EXPECT_EQ(CStringAlgorithms::Split("<<a b>> c <<d", Word, OpenAngles, CloseAngles, &separators),
            (Tokens{"a b", "c", "d"}));
}

TEST(StringAlgorithmsTest, MoveToNextTokenStopsAtTokenStarts) {
  std::string separators = " ";
  std::size_t position = 0;
  ASSERT_TRUE(CStringAlgorithms::MoveToNextToken("   ab", position, Word, DoubleQuote,
                                                 DoubleQuote, &separators));
  EXPECT_EQ(position, 3u);
  EXPECT_TRUE(CStringAlgorithms::MoveToNextToken("   ab", position, Word, DoubleQuote,
                                                 DoubleQuote, &separators));
  EXPECT_EQ(position, 3u);  // already at a token
  position = 2;
  EXPECT_FALSE(CStringAlgorithms::MoveToNextToken("ab  ", position, Word, DoubleQuote,
                                                  DoubleQuote, &separators));
  EXPECT_EQ(position, 4u);
}

TEST(StringAlgorithmsTest, FaultyOrMissingRecognizersCannotStallTheLoop) {
  EXPECT_EQ(CStringAlgorithms::Split("abc", Never, nullptr, nullptr, nullptr), Tokens{});
  EXPECT_EQ(CStringAlgorithms::Split("abc", Backwards, Never, Never, nullptr), Tokens{"a"});
}

}  // namespace
