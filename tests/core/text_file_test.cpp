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

struct LinesCase {
  const char* name;
  std::string bytes;
  Lines lines;
};

class TextFileLinesTest : public ::testing::TestWithParam<LinesCase> {};

TEST_P(TextFileLinesTest, ReadsEveryLineWithoutItsLineEnd) {
  hytest::TempDir dir;
  EXPECT_EQ(AllLines(dir.Write("f.txt", GetParam().bytes), false), GetParam().lines);
}

INSTANTIATE_TEST_SUITE_P(
    Files, TextFileLinesTest,
    ::testing::Values(
        // The first byte is consumed by the encoding check and put back in front.
        LinesCase{"FirstLineWhole", "ncols 5\nnrows 3", {"ncols 5", "nrows 3"}},
        LinesCase{"CrLf", "a b\r\n\r\nc\r\n", {"a b", "", "c"}},
        LinesCase{"FirstCrLf", "\r\nx\n", {"", "x"}},
        LinesCase{"FirstLoneCr", "\rx\n", {"", "x"}},
        LinesCase{"FirstLf", "\nx", {"", "x"}},
        LinesCase{"Empty", "", {}},
        LinesCase{"Junk", std::string("a\0b\x01\x7F\n\0\0", 8),
                  {std::string("a\0b\x01\x7F", 5), std::string("\0\0", 2)}},
        // 16-bit text keeps the low byte: U+0141 comes out as 'A'.
        LinesCase{"Wide", Utf16(u"AB\r\n\u0141x\nlast"), {"AB", "Ax", "last"}},
        LinesCase{"WideLoneCr", Utf16(u"a\rb\r"), {"a", "b"}},
        LinesCase{"WideOddLastByte", Utf16(u"ab\ncd") + "e", {"ab", "cd"}},
        LinesCase{"WideOneByte", "\xFF", {}},
        // A UTF-8 mark is taken as 16-bit text: EF BB skipped, BF 'a' is one character.
        LinesCase{"Utf8Mark", "\xEF\xBB\xBF" "a", {"\xBF"}}),
    [](const auto& info) { return std::string(info.param.name); });

TEST(TextFileTest, EmptyAndMissingFilesGiveNoLines) {
  hytest::TempDir dir;
  EXPECT_TRUE(AllLines(dir.Write("empty.txt", ""), false).empty());
  CHU_File missing(dir.File("none.txt").c_str(), kRead);
  EXPECT_FALSE(missing.FileOpened());
  std::string line;
  EXPECT_FALSE(missing.ReadLine(line, false));
  CHU_File unnamed("", kRead);
  EXPECT_FALSE(unnamed.FileOpened());
  CHU_File closed(dir.Write("a.txt", "a\nb\n").c_str(), kRead);
  closed.Close();
  EXPECT_FALSE(closed.FileOpened() || closed.ReadLine(line, false));
}

TEST(TextFileTest, CommentLinesAreSkippedAfterTrimmingButEmptyLinesAreKept) {
  hytest::TempDir dir;
  const auto path = dir.Write("a.txt", "! note\n  # also\n\n a ! b \nlast");
  EXPECT_EQ(AllLines(path, true, "!#"), (Lines{"", "a ! b", "last"}));
  EXPECT_EQ(AllLines(path, true, ""), (Lines{"! note", "# also", "", "a ! b", "last"}));
  EXPECT_EQ(AllLines(path, false, "!#").front(), "! note");
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
  EXPECT_EQ(chars, 8);  // the trimmed line "1,, 2  3"
  ASSERT_TRUE(file.ReadLine(tokens, chars));
  EXPECT_TRUE(tokens.empty());
  ASSERT_TRUE(file.ReadLine(tokens, chars));
  EXPECT_TRUE(tokens.empty());
  ASSERT_TRUE(file.ReadLine(tokens, chars));
  EXPECT_EQ(tokens, (Lines{"single"}));
  EXPECT_FALSE(file.ReadLine(tokens, chars));
  EXPECT_TRUE(tokens.empty());

  CHU_File whole(dir.Write("w.txt", "  a b  \n").c_str(), kRead);  // no separators
  ASSERT_TRUE(whole.ReadLine(tokens, chars));
  EXPECT_EQ(tokens, (Lines{"a b"}));
}

// Seeking to the line start must give the line just read back, whatever its line
// end, blanks and the comments before it.
class TextFileSeekBackTest : public ::testing::TestWithParam<std::string> {};

TEST_P(TextFileSeekBackTest, SeekingToLineStartRereadsTheLine) {
  hytest::TempDir dir;
  const auto path = dir.Write("g.asc", GetParam());
  CHU_File file(path.c_str(), " \t", kRead);
  file.SetCommentMarkers("#");
  std::vector<std::string> tokens;
  int chars = 0;
  ASSERT_TRUE(file.ReadLine(tokens, chars));  // header line
  ASSERT_TRUE(file.ReadLine(tokens, chars));
  const auto first = tokens;
  ASSERT_TRUE(file.Seek(file.GetLineStart(), SEEK_SET));
  ASSERT_TRUE(file.ReadLine(tokens, chars));
  EXPECT_EQ(tokens, first);
}

INSTANTIATE_TEST_SUITE_P(
    LineEnds, TextFileSeekBackTest,
    ::testing::Values("ncols 3\n1 2 3\n4 5 6\n", "ncols 3\r\n1 2 3\r\n4 5 6\r\n",
                      "ncols 3\r\n# c\r\n  1 2 3  \r\n4\r\n", "ncols 3\n1 2 3",
                      Utf16(u"ncols 3\r\n1 2 3\r\n4 5 6\r\n"), Utf16(u"ncols 3\n#\n1 2 3")));

TEST(TextFileTest, MultiMegabyteLinesAreReturnedWhole) {
  hytest::TempDir dir;
  const std::string longLine(3 * 1048576 + 17, 'x');
  const std::string wideLine(1048576 + 3, 'y');
  EXPECT_EQ(AllLines(dir.Write("a.txt", "a\n" + longLine + "\nb"), false),
            (Lines{"a", longLine, "b"}));
  EXPECT_EQ(AllLines(dir.Write("w.txt", Utf16(std::u16string(wideLine.begin(), wideLine.end()))), false),
            (Lines{wideLine}));
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
