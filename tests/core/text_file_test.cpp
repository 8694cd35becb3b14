#include "hy_util/core/text_file.h"

#include <cerrno>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "support/temp_dir.h"

namespace {

using Lines = std::vector<std::string>;
constexpr unsigned int kRead = HU_modeRead | HU_shareDenyWrite | HU_typeText;

Lines AllLines(const std::string& path, bool skipComments, const char* markers = "") {
  CHU_File file(path.c_str(), kRead);
  file.SetCommentMarkers(markers);
  Lines lines;
  for (std::string line; file.ReadLine(line, skipComments);) lines.push_back(line);
  return lines;
}

// 16-bit little-endian text with a byte-order mark; each char is one code unit.
std::string Utf16(const std::u16string& text) {
  std::string bytes = "\xFF\xFE";
  for (char16_t c : text) bytes += {static_cast<char>(c & 0xFF), static_cast<char>(c >> 8)};
  return bytes;
}

TEST(TextFileTest, ReadsEveryLineWithoutItsLineEnd) {
  const std::pair<std::string, Lines> cases[] = {
      // The first byte is consumed by the encoding check and put back in front.
      {"ncols 5\nnrows 3", {"ncols 5", "nrows 3"}}, {"a b\r\n\r\nc\r\n", {"a b", "", "c"}},
      {"\r\nx\n", {"", "x"}}, {"\rx\n", {"", "x"}}, {"", {}},  // a first byte CR: empty line
      {std::string("a\0b\x01\x7F\n\0\0", 8), {std::string("a\0b\x01\x7F", 5), std::string(2, 0)}},
      // 16-bit text keeps the low byte: U+0141 comes out as 'A'.
      {Utf16(u"AB\r\n\u0141x\nlast"), {"AB", "Ax", "last"}}, {Utf16(u"a\rb\r"), {"a", "b"}},
      {Utf16(u"ab\ncd") + "e", {"ab", "cd"}}, {"\xFF", {}},  // ends inside a character
      // A UTF-8 mark is taken as 16-bit text: EF BB skipped, BF 'a' is one character.
      {"\xEF\xBB\xBF" "a", {"\xBF"}}};
  hytest::TempDir dir;
  for (const auto& [bytes, lines] : cases)
    EXPECT_EQ(AllLines(dir.Write("f.txt", bytes), false), lines) << testing::PrintToString(bytes);
}

TEST(TextFileTest, MissingUnnamedAndClosedFilesGiveNoLines) {
  hytest::TempDir dir;
  CHU_File missing(dir.File("none.txt").c_str(), kRead), unnamed("", kRead),
      closed(dir.Write("a.txt", "a\n").c_str(), kRead);
  closed.Close();
  std::string line;
  for (CHU_File* file : {&missing, &unnamed, &closed})
    EXPECT_FALSE(file->FileOpened() || file->ReadLine(line, false));
}

TEST(TextFileTest, CommentLinesAreSkippedAfterTrimmingButEmptyLinesAreKept) {
  hytest::TempDir dir;
  const auto path = dir.Write("a.txt", "! note\n  # also\n\n a ! b \nlast");
  EXPECT_EQ(AllLines(path, true, "!#"), (Lines{"", "a ! b", "last"}));
  EXPECT_EQ(AllLines(path, true, ""), (Lines{"! note", "# also", "", "a ! b", "last"}));
}

TEST(TextFileTest, TokensSkipRunsOfSeparatorsAndCountTheTrimmedLine) {
  hytest::TempDir dir;
  CHU_File file(dir.Write("t.txt", "# header\n1,, 2  3\n   \nsingle\n").c_str(), " ,", kRead);
  file.SetCommentMarkers("#");
  std::vector<Lines> lines;
  int chars = 0;
  for (Lines tokens; file.ReadLine(tokens, chars);) lines.push_back(tokens);
  EXPECT_EQ(lines, (std::vector<Lines>{{"1", "2", "3"}, {}, {"single"}}));
  EXPECT_EQ(chars, 14);  // "1,, 2  3" and "single"
  CHU_File whole(dir.Write("w.txt", "  a b  \n").c_str(), kRead);
  Lines tokens;
  ASSERT_TRUE(whole.ReadLine(tokens, chars));
  EXPECT_EQ(tokens, (Lines{"a b"}));  // no separators: the trimmed line is one token
}

// The ESRI header reader gives its first data line back by seeking to its start.
TEST(TextFileTest, SeekingToLineStartRereadsTheLine) {
  for (const std::string& bytes :
       {std::string("ncols 3\n1 2 3\n4 5 6\n"), std::string("ncols 3\r\n# c\r\n  1 2 3  \r\n4\r\n"),
        std::string("ncols 3\n1 2 3"), Utf16(u"ncols 3\r\n1 2 3\r\n4 5 6\r\n"),
        Utf16(u"ncols 3\n#\n1 2 3")}) {
    hytest::TempDir dir;
    CHU_File file(dir.Write("g.asc", bytes).c_str(), " \t", kRead);
    file.SetCommentMarkers("#");
    Lines header, first, again;
    int chars = 0;
    ASSERT_TRUE(file.ReadLine(header, chars) && file.ReadLine(first, chars));
    ASSERT_TRUE(file.Seek(file.GetLineStart(), SEEK_SET) && file.ReadLine(again, chars));
    EXPECT_EQ(again, first) << testing::PrintToString(bytes);
  }
}

TEST(TextFileTest, MultiMegabyteLinesAreReturnedWhole) {
  hytest::TempDir dir;
  const std::string longLine(3 * 1048576 + 17, 'x');
  const std::string wideLine(1048576 + 3, 'y');
  EXPECT_EQ(AllLines(dir.Write("a.txt", "a\n" + longLine + "\nb"), false),
            (Lines{"a", longLine, "b"}));
  EXPECT_EQ(AllLines(dir.Write("w.txt", Utf16({wideLine.begin(), wideLine.end()})), false),
            (Lines{wideLine}));
}

TEST(TextFileTest, ReadErrorInNarrowTextThrowsWithErrno) {
  hytest::TempDir dir;
  CHU_File file(dir.path().string().c_str(), kRead);  // a directory opens but cannot be read
  std::string line;
  try {
    file.ReadString(line);
    ADD_FAILURE() << "no exception";
  } catch (const CHU_FileException& e) {
    EXPECT_EQ(e.ErrorNumber(), EISDIR);
  }
}

}  // namespace
