#include "hy_util/core/text_file.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <string>
#include <vector>

#include "support/temp_dir.h"

namespace {

constexpr unsigned int kRead = HU_modeRead | HU_shareDenyWrite | HU_typeText;

std::vector<std::string> AllLines(const std::string& path, bool skipComments,
                                  const char* markers = "") {
  CHU_File file(path.c_str(), kRead);
  file.SetCommentMarkers(markers);
  std::vector<std::string> lines;
  std::string line;
  while (file.ReadLine(line, skipComments)) lines.push_back(line);
  return lines;
}

// 16-bit little-endian text with a byte-order mark; each char is one code unit.
std::string Utf16(const std::u16string& text) {
  std::string bytes = "\xFF\xFE";
  for (char16_t c : text) {
    bytes.push_back(static_cast<char>(c & 0xFF));
    bytes.push_back(static_cast<char>(c >> 8));
  }
  return bytes;
}

using Lines = std::vector<std::string>;

}  // namespace

TEST(TextFileTest, FirstLineIsReturnedWholeAfterTheEncodingCheck) {
  hytest::TempDir dir;
  const auto path = dir.Write("a.asc", "ncols 5\nnrows 3");
  EXPECT_EQ(AllLines(path, false), (Lines{"ncols 5", "nrows 3"}));
}

TEST(TextFileTest, CrLfLineEndsAreRemovedInNarrowText) {
  hytest::TempDir dir;
  const auto path = dir.Write("a.txt", "a b\r\n\r\nc\r\n");
  EXPECT_EQ(AllLines(path, false), (Lines{"a b", "", "c"}));
}

TEST(TextFileTest, FirstByteCarriageReturnGivesAnEmptyFirstLine) {
  hytest::TempDir dir;
  EXPECT_EQ(AllLines(dir.Write("a.txt", "\r\nx\n"), false), (Lines{"", "x"}));
  EXPECT_EQ(AllLines(dir.Write("b.txt", "\rx\n"), false), (Lines{"", "x"}));
  EXPECT_EQ(AllLines(dir.Write("c.txt", "\nx"), false), (Lines{"", "x"}));
}

TEST(TextFileTest, EmptyAndMissingFilesGiveNoLines) {
  hytest::TempDir dir;
  EXPECT_TRUE(AllLines(dir.Write("empty.txt", ""), false).empty());
  CHU_File missing(dir.File("none.txt").c_str(), kRead);
  EXPECT_FALSE(missing.FileOpened());
  std::string line;
  EXPECT_FALSE(missing.ReadLine(line, false));
  CHU_File unnamed("", kRead);
  EXPECT_FALSE(unnamed.FileOpened());
}

TEST(TextFileTest, CommentLinesAreSkippedAfterTrimmingButEmptyLinesAreKept) {
  hytest::TempDir dir;
  const auto path = dir.Write("a.txt", "! note\n  # also\n\n a ! b \nlast");
  EXPECT_EQ(AllLines(path, true, "!#"), (Lines{"", "a ! b", "last"}));
  EXPECT_EQ(AllLines(path, true, ""), (Lines{"! note", "# also", "", "a ! b", "last"}));
  EXPECT_EQ(AllLines(path, false, "!#").front(), "! note");
}

TEST(TextFileTest, WideTextKeepsLowBytesAndHandlesLineEnds) {
  hytest::TempDir dir;
  const auto path = dir.Write("w.txt", Utf16(u"AB\r\n\u0141x\nlast"));
  EXPECT_EQ(AllLines(path, false), (Lines{"AB", "Ax", "last"}));
}

TEST(TextFileTest, WideTextCarriageReturnWithoutLineFeedKeepsTheNextCharacter) {
  hytest::TempDir dir;
  EXPECT_EQ(AllLines(dir.Write("w.txt", Utf16(u"a\rb\r")), false), (Lines{"a", "b"}));
}

TEST(TextFileTest, WideTextEndingInsideACharacterDropsTheOddByte) {
  hytest::TempDir dir;
  std::string bytes = Utf16(u"ab\ncd");
  bytes.push_back('e');
  EXPECT_EQ(AllLines(dir.Write("w.txt", bytes), false), (Lines{"ab", "cd"}));
  EXPECT_TRUE(AllLines(dir.Write("x.txt", "\xFF"), false).empty());
  EXPECT_TRUE(AllLines(dir.Write("y.txt", "\xFF\xFE"), false).empty());
}

TEST(TextFileTest, Utf8ByteOrderMarkIsTakenAsWideText) {
  hytest::TempDir dir;
  // EF BB is skipped as the mark; BF 'a' becomes one 16-bit character with low byte BF.
  const auto lines = AllLines(dir.Write("u.txt", "\xEF\xBB\xBF" "a"), false);
  EXPECT_EQ(lines, (Lines{"\xBF"}));
}

TEST(TextFileTest, TokensSkipRunsOfSeparatorsAndComments) {
  hytest::TempDir dir;
  const auto path = dir.Write("t.txt", "# header\n1,, 2  3\n\n   \nsingle\n");
  CHU_File file(path.c_str(), " ,", kRead);
  file.SetCommentMarkers("#");
  std::vector<std::string> tokens;
  int chars = 0;
  ASSERT_TRUE(file.ReadLine(tokens, chars));
  EXPECT_EQ(tokens, (Lines{"1", "2", "3"}));
  ASSERT_TRUE(file.ReadLine(tokens, chars));
  EXPECT_TRUE(tokens.empty());
  ASSERT_TRUE(file.ReadLine(tokens, chars));
  EXPECT_TRUE(tokens.empty());
  ASSERT_TRUE(file.ReadLine(tokens, chars));
  EXPECT_EQ(tokens, (Lines{"single"}));
  EXPECT_FALSE(file.ReadLine(tokens, chars));
  EXPECT_TRUE(tokens.empty());
}

TEST(TextFileTest, WithoutSeparatorsTheTrimmedLineIsTheOneToken) {
  hytest::TempDir dir;
  const auto path = dir.Write("t.txt", "  a b  \n");
  CHU_File file(path.c_str(), kRead);
  std::vector<std::string> tokens;
  int chars = 0;
  ASSERT_TRUE(file.ReadLine(tokens, chars));
  EXPECT_EQ(tokens, (Lines{"a b"}));
}

// Seeking back by the characters read must land on the start of the line just
// read, whatever its line end, blanks and the comments before it.
class TextFileSeekBackTest : public ::testing::TestWithParam<std::string> {};

TEST_P(TextFileSeekBackTest, SeekingBackByCharactersReadRereadsTheLine) {
  hytest::TempDir dir;
  const auto path = dir.Write("g.asc", GetParam());
  CHU_File file(path.c_str(), " \t", kRead);
  file.SetCommentMarkers("#");
  std::vector<std::string> tokens;
  int chars = 0;
  ASSERT_TRUE(file.ReadLine(tokens, chars));  // header line
  int lineChars = 0;
  ASSERT_TRUE(file.ReadLine(tokens, lineChars));
  const auto first = tokens;
  ASSERT_TRUE(file.Seek(-lineChars, SEEK_CUR));
  ASSERT_TRUE(file.ReadLine(tokens, chars));
  EXPECT_EQ(tokens, first);
}

INSTANTIATE_TEST_SUITE_P(
    LineEnds, TextFileSeekBackTest,
    ::testing::Values("ncols 3\n1 2 3\n4 5 6\n", "ncols 3\r\n1 2 3\r\n4 5 6\r\n",
                      "ncols 3\r\n# c\r\n  1 2 3  \r\n4\r\n", "ncols 3\n1 2 3",
                      Utf16(u"ncols 3\r\n1 2 3\r\n4 5 6\r\n"), Utf16(u"ncols 3\n#\n1 2 3")));

TEST(TextFileTest, CharactersReadOfTheFirstLineCountTheWholeLine) {
  hytest::TempDir dir;
  const auto path = dir.Write("g.asc", "ncols 3\r\nx\n");
  CHU_File file(path.c_str(), " ", kRead);
  std::vector<std::string> tokens;
  int chars = 5;
  ASSERT_TRUE(file.ReadLine(tokens, chars));
  EXPECT_EQ(chars, 5 + 9);
}

TEST(TextFileTest, MultiMegabyteLinesAreReturnedWhole) {
  hytest::TempDir dir;
  const std::string longLine(3 * 1048576 + 17, 'x');
  const std::string wideLine(1048576 + 3, 'y');
  EXPECT_EQ(AllLines(dir.Write("a.txt", "a\n" + longLine + "\nb"), false),
            (Lines{"a", longLine, "b"}));
  EXPECT_EQ(AllLines(dir.Write("w.txt", Utf16(std::u16string(wideLine.begin(), wideLine.end()))), false),
            (Lines{wideLine}));
}

TEST(TextFileTest, BinaryJunkIsReadWithoutLosingBytes) {
  hytest::TempDir dir;
  const std::string junk("a\0b\x01\x7F\n\0\0", 8);
  EXPECT_EQ(AllLines(dir.Write("j.bin", junk), false),
            (Lines{std::string("a\0b\x01\x7F", 5), std::string("\0\0", 2)}));
}

TEST(TextFileTest, ReadErrorInNarrowTextThrowsWithErrno) {
  hytest::TempDir dir;
  CHU_File file(dir.path().string().c_str(), kRead);  // a directory opens but cannot be read
  ASSERT_TRUE(file.FileOpened());
  std::string line;
  try {
    file.ReadString(line);
    FAIL() << "no exception";
  } catch (const CHU_FileException& e) {
    EXPECT_EQ(e.ErrorNumber(), EISDIR);
  }
}

TEST(TextFileTest, CloseEndsReading) {
  hytest::TempDir dir;
  CHU_File file(dir.Write("a.txt", "a\nb\n").c_str(), kRead);
  std::string line;
  ASSERT_TRUE(file.ReadLine(line, false));
  file.Close();
  EXPECT_FALSE(file.FileOpened());
  EXPECT_FALSE(file.ReadLine(line, false));
  file.Close();
}
