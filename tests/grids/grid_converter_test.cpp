#include "hy_util/grids/grid_converter.h"

#include <gtest/gtest.h>
#include <zlib.h>

#include <algorithm>
#include <cctype>
#include <charconv>
#include <cstring>
#include <filesystem>
#include <random>

#include "binary_grid_test_reader.h"
#include "hy_util/grids/esri_grid_ascii.h"
#include "hy_util/grids/grid_text_number.h"
#include "support/recording_application.h"
#include "support/temp_dir.h"

namespace {

// A random grid whose values are exact in float and in "%.3f" text.
struct Grid {
  int ncols = 0, nrows = 0;
  std::vector<float> values;
};

Grid RandomGrid(int ncols, int nrows, unsigned seed) {
  std::mt19937 random(seed);
  std::uniform_int_distribution<int> quarter(-4000, 40000);
  Grid g{ncols, nrows, {}};
  for (int i = 0; i < ncols * nrows; ++i) {
    g.values.push_back(random() % 17 == 0 ? -9999.0f : static_cast<float>(quarter(random)) * 0.25f);
  }
  return g;
}

std::string HeaderText(const Grid& g) {
  return "ncols " + std::to_string(g.ncols) + "\nnrows " + std::to_string(g.nrows) +
         "\nxllcorner 1000\nyllcorner 2000\ncellsize 2\nNODATA_value -9999\n";
}

std::string Number(float v) {
  char text[32];
  std::snprintf(text, sizeof text, "%.3f", v);
  return text;
}

// One row per line, or (wrapped) one value per line with CR LF and blank lines.
std::string AsciiText(const Grid& g, bool wrapped) {
  std::string text = HeaderText(g);
  for (int r = 0; r < g.nrows; ++r) {
    for (int c = 0; c < g.ncols; ++c) {
      text += Number(g.values[static_cast<std::size_t>(r) * g.ncols + c]) + (wrapped ? "\r\n\r\n" : " ");
    }
    if (!wrapped) text += "\n";
  }
  return text;
}

// The grid's text with each value in one of several spellings of the same number:
// plain, zero-padded, always signed, with an exponent, and with more digits than
// the fast decimal path takes; every 50th line is preceded by a line of words.
std::string MixedText(const Grid& g, unsigned seed) {
  static const char* const kFormats[] = {"%.3f", "%010.3f", "%+.2f", "%.9e", "%.20f"};
  std::mt19937 random(seed);
  std::string text = HeaderText(g);
  char number[64];
  for (int r = 0; r < g.nrows; ++r) {
    if (r % 50 == 7) text += "words at the start\tof a line 1 2 3\n";
    for (int c = 0; c < g.ncols; ++c) {
      std::snprintf(number, sizeof number, kFormats[random() % 5], g.values[static_cast<std::size_t>(r) * g.ncols + c]);
      text += number;
      text += random() % 3 == 0 ? "\t" : " ";
    }
    text += "\n";
  }
  return text;
}

std::string Convert(const std::string& input, const std::string& output, HU_GridConvertOptions options) {
  CHU_GridConverter converter(options);
  EXPECT_TRUE(converter.Convert(input, output)) << converter.GetLastError();
  EXPECT_TRUE(converter.GetWarnings().empty());
  return hytest::ReadFileBytes(output);
}

std::vector<float> DecodedValues(const std::string& bytes) {
  hytest::DecodedGrid grid;
  std::string why;
  EXPECT_TRUE(hytest::DecodeBinaryGrid(bytes, grid, why)) << why;
  std::vector<float> values;
  for (const auto& row : grid.rows) values.insert(values.end(), row.begin(), row.end());
  return values;
}

TEST(GridConverterTest, ThreadedZlibOutputEqualsSingleThreadedAndClassicOutput) {
  hytest::TempDir dir;
  const Grid g = RandomGrid(157, 211, 7);
  const std::string input = dir.Write("g.asc", AsciiText(g, false));
  CHU_File_EsriGridASCII classic(input.c_str());
  ASSERT_TRUE(classic.ConvertToHYBinaryGridFile(dir.File("classic.hybg")));
  const std::string reference = hytest::ReadFileBytes(dir.File("classic.hybg"));
  for (int threads : {1, 2, 3, 8}) {
    EXPECT_EQ(Convert(input, dir.File("t.hybg"), {.threads = threads}), reference) << threads << " threads";
  }
  EXPECT_EQ(DecodedValues(reference), g.values);
}

TEST(GridConverterTest, WrappedRowsAndFloatGridsGiveTheSameFile) {
  hytest::TempDir dir;
  const Grid g = RandomGrid(31, 17, 11);
  const std::string reference = Convert(dir.Write("g.asc", AsciiText(g, false)), dir.File("a.hybg"), {});
  EXPECT_EQ(Convert(dir.Write("w.asc", AsciiText(g, true)), dir.File("w.hybg"), {.threads = 2}), reference);
  dir.Write("f.hdr", HeaderText(g));
  std::string raw(g.values.size() * 4, '\0');
  std::memcpy(raw.data(), g.values.data(), raw.size());
  EXPECT_EQ(Convert(dir.Write("f.flt", raw), dir.File("f.hybg"), {.threads = 3}), reference);
}

TEST(GridConverterTest, AReusedZlibCompressorWritesWhatCompress2Writes) {
  // Rows of varied length and content through one compressor, each compared with a
  // fresh compress2 at level 9: empty, short, smooth, and random bytes that do
  // not compress at all.
  std::mt19937 random(21);
  CHU_GridRowCompressor compressor(HU_GridCodec::Zlib);
  for (std::size_t size : {0u, 3u, 40000u, 7u, 65536u, 16000u}) {
    std::vector<std::uint8_t> row(size);
    const bool smooth = size % 2 == 0;
    for (std::size_t i = 0; i < size; ++i) row[i] = static_cast<std::uint8_t>(smooth ? i / 100 : random());
    uLongf length = compressBound(static_cast<uLong>(size));
    std::vector<std::uint8_t> expected(length);
    ASSERT_EQ(compress2(expected.data(), &length, row.data(), static_cast<uLong>(size), 9), Z_OK);
    expected.resize(length);
    std::vector<std::uint8_t> packed;
    ASSERT_TRUE(compressor.Compress(row.data(), size, packed));
    EXPECT_EQ(packed, expected) << size << " bytes";
  }
}

TEST(GridConverterTest, PlainDecimalsReadAsFromCharsReadsThem) {
  std::mt19937 random(13);
  std::vector<std::string> tokens = {"0",    "-0",   "-0.000", "1.",  ".5",     "-.5", "007.250", "123456789012345",
                                     "0.000000000000001", "9999.99999999999", "3.14159", "-9999"};
  const std::string digits = "0123456789";
  for (int i = 0; i < 20000; ++i) {
    std::string token = random() % 2 ? "-" : "";
    const int whole = static_cast<int>(random() % 9), fraction = static_cast<int>(random() % 9);
    for (int d = 0; d < whole; ++d) token += digits[random() % 10];
    if (fraction > 0 || whole == 0) token += '.';
    for (int d = 0; d < fraction; ++d) token += digits[random() % 10];
    tokens.push_back(token);
  }
  for (const std::string& token : tokens) {
    double expected = 0.0;
    const auto [end, ec] = std::from_chars(token.data(), token.data() + token.size(), expected);
    const bool number = ec == std::errc() && end == token.data() + token.size();
    double value = 0.0;
    ASSERT_EQ(HU_ParseGridNumber(token, value), number) << token;
    if (number) {
      ASSERT_EQ(std::memcmp(&value, &expected, sizeof value), 0) << token;
    }
    // In the reader's buffer the scan must stop exactly at the token's end.
    const std::string text = token + " 9876543210.98765";
    const char* const stop = HU_ScanPlainDecimal(text.data(), text.data() + text.size(), value);
    const bool shortNumber = number && std::count_if(token.begin(), token.end(), ::isdigit) <= 15;
    ASSERT_EQ(stop == text.data() + token.size(), shortNumber) << token;
    if (shortNumber) {
      ASSERT_EQ(std::memcmp(&value, &expected, sizeof value), 0) << token;
    }
  }
}

TEST(GridConverterTest, EverySpellingOfANumberReadsAsItsValueAcrossBufferBlocks) {
  hytest::TempDir dir;
  const Grid g = RandomGrid(360, 400, 17);  // about 2 MiB of text: the reader refills mid-token
  const std::string reference = Convert(dir.Write("g.asc", AsciiText(g, false)), dir.File("g.hybg"), {});
  const std::string mixed = dir.Write("m.asc", MixedText(g, 4));
  for (int threads : {1, 2}) {
    EXPECT_EQ(Convert(mixed, dir.File("m.hybg"), {.threads = threads}), reference) << threads << " threads";
  }
  EXPECT_EQ(DecodedValues(reference), g.values);
}

TEST(GridConverterTest, LibdeflateStreamsInflateToTheSameRows) {
  hytest::TempDir dir;
  const Grid g = RandomGrid(250, 40, 3);
  const std::string input = dir.Write("g.asc", AsciiText(g, false));
  for (int level : {1, 6, 12}) {
    const std::string bytes = Convert(
        input, dir.File("d.hybg"), {.threads = 2, .codec = HU_GridCodec::Libdeflate, .libdeflateLevel = level});
    EXPECT_EQ(DecodedValues(bytes), g.values) << "level " << level;
  }
}

TEST(GridConverterTest, ShortInputIsRefusedAndLongOrDirtyInputWarned) {
  hytest::TempDir dir;
  const std::string header = "ncols 3\nnrows 2\nxllcenter 0\nyllcenter 0\ncellsize 1\nNODATA_value -1\n";
  CHU_GridConverter converter;
  EXPECT_FALSE(converter.Convert(dir.Write("short.asc", header + "1 2 3\n4\n"), dir.File("s.hybg")));
  EXPECT_NE(converter.GetLastError().find("short.asc' ends after 4 of the 6 values its header gives"),
            std::string::npos);
  EXPECT_FALSE(std::filesystem::exists(dir.File("s.hybg")));

  // A line of more than ncols values gives its first ncols; the rest of the line
  // is dropped, with one warning naming the first such line (line 7 of the file).
  ASSERT_TRUE(converter.Convert(dir.Write("long.asc", header + "1 2 3 4\nskip me\n5 x 7 8\n"), dir.File("l.hybg")));
  EXPECT_EQ(DecodedValues(hytest::ReadFileBytes(dir.File("l.hybg"))), (std::vector<float>{1, 2, 3, 5, -1, 7}));
  ASSERT_EQ(converter.GetWarnings().size(), 2u);
  EXPECT_NE(converter.GetWarnings()[0].find("long.asc' line 7 holds more than 3 values"), std::string::npos)
      << converter.GetWarnings()[0];
  EXPECT_NE(converter.GetWarnings()[0].find("(2 in all)"), std::string::npos);
  EXPECT_NE(converter.GetWarnings()[1].find("1 values are not numbers"), std::string::npos);

  // Rows wrapped over short lines still read as a stream; values past the last row
  // are extra, not long-line values.
  ASSERT_TRUE(converter.Convert(dir.Write("wrap.asc", header + "1 2\n3 4\n5 6\n7\n"), dir.File("w.hybg")));
  EXPECT_EQ(DecodedValues(hytest::ReadFileBytes(dir.File("w.hybg"))), (std::vector<float>{1, 2, 3, 4, 5, 6}));
  ASSERT_EQ(converter.GetWarnings().size(), 1u);
  EXPECT_NE(converter.GetWarnings()[0].find("1 more values"), std::string::npos);
}

TEST(GridConverterTest, OutputThatWouldPassTheOffsetLimitIsStoppedAndRemoved) {
  hytest::TempDir dir;
  const Grid g = RandomGrid(20, 50, 5);
  const std::string input = dir.Write("g.asc", AsciiText(g, false));
  for (int threads : {1, 2}) {
    CHU_GridConverter converter({.threads = threads, .maxRowOffset = 1000});
    EXPECT_FALSE(converter.Convert(input, dir.File("big.hybg")));
    EXPECT_NE(converter.GetLastError().find("big.hybg' would pass 1001 bytes at row"), std::string::npos)
        << converter.GetLastError();
    EXPECT_FALSE(std::filesystem::exists(dir.File("big.hybg")));
  }
}

TEST(GridConverterTest, FailuresNameTheFileAndSayWhatIsWrong) {
  hytest::TempDir dir;
  CHU_GridConverter converter;
  EXPECT_FALSE(converter.Convert(dir.File("none.asc"), dir.File("o.hybg")));
  EXPECT_NE(converter.GetLastError().find("cannot open '" + dir.File("none.asc") + "'"), std::string::npos);
  EXPECT_FALSE(converter.Convert(dir.Write("bad.asc", "ncols 2\nnrows 2\n1 2\n"), dir.File("o.hybg")));
  EXPECT_NE(converter.GetLastError().find("bad.asc' does not start with a valid ESRI grid header"),
            std::string::npos);
  dir.Write("lonely.flt", "");
  EXPECT_FALSE(converter.Convert(dir.File("lonely.flt"), dir.File("o.hybg")));
  EXPECT_NE(converter.GetLastError().find("lonely.hdr' is missing or not a valid"), std::string::npos);
  const std::string good = dir.Write("good.asc", AsciiText(RandomGrid(2, 2, 1), false));
  EXPECT_FALSE(converter.Convert(good, dir.File("no/dir/o.hybg")));
  EXPECT_NE(converter.GetLastError().find("cannot create '" + dir.File("no/dir/o.hybg") + "'"), std::string::npos);
}

TEST(GridConverterTest, ProgressRunsToTheLastRowAndStops) {
  hytest::RecordingApplication app;
  hytest::TempDir dir;
  const std::string input = dir.Write("g.asc", AsciiText(RandomGrid(3, 300, 2), false));
  CHU_GridConverter converter({.threads = 2});
  ASSERT_TRUE(converter.Convert(input, dir.File("g.hybg")));
  EXPECT_EQ(app.progressSteps, 300);
  ASSERT_EQ(app.progressPositions.size(), 100u);
  EXPECT_EQ(app.progressPositions.back(), 300);
  EXPECT_EQ(app.progressStops, 1);
}

}  // namespace
