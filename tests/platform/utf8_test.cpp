#include "hy_util/platform/utf8.h"

#include <string>

#include <gtest/gtest.h>

namespace {

struct Utf8Case {
  const char* bytes;
  bool valid;
};

class Utf8Test : public ::testing::TestWithParam<Utf8Case> {};

TEST_P(Utf8Test, ValidityFollowsTheWellFormedByteSequences) {
  EXPECT_EQ(HU_IsValidUtf8(GetParam().bytes), GetParam().valid) << GetParam().bytes;
}

INSTANTIATE_TEST_SUITE_P(
    Sequences, Utf8Test,
    ::testing::Values(Utf8Case{"", true}, Utf8Case{"plain ascii", true},
                      Utf8Case{"\xc3\xbc", true},              // u with diaeresis
                      Utf8Case{"\xe6\xb5\xb8", true},          // CJK
                      Utf8Case{"\xf0\x9f\x8c\x8a", true},      // outside the BMP
                      Utf8Case{"\xef\xbf\xbf", true},          // U+FFFF
                      Utf8Case{"\xf4\x8f\xbf\xbf", true},      // U+10FFFF
                      Utf8Case{"\x80", false},                 // stray continuation
                      Utf8Case{"\xc3\x28", false},             // bad continuation
                      Utf8Case{"\xc3", false},                 // truncated
                      Utf8Case{"\xe6\xb5", false},             // truncated
                      Utf8Case{"\xc0\xaf", false},             // overlong "/"
                      Utf8Case{"\xe0\x80\xaf", false},         // overlong
                      Utf8Case{"\xf0\x8f\xbf\xbf", false},     // overlong
                      Utf8Case{"\xed\xa0\x80", false},         // surrogate
                      Utf8Case{"\xf4\x90\x80\x80", false},     // above U+10FFFF
                      Utf8Case{"\xf5\x80\x80\x80", false},
                      Utf8Case{"\xff", false}));

TEST(Utf8ConversionTest, ConversionKeepsValidTextAndLeavesOutputAloneOnFailure) {
  std::string out = "previous";
  EXPECT_TRUE(HU_Utf8ToNarrow("Flut \xe6\xb5\xb8", out));
  EXPECT_EQ(out, "Flut \xe6\xb5\xb8");
  EXPECT_FALSE(HU_Utf8ToNarrow("bad \xc3", out));
  EXPECT_EQ(out, "Flut \xe6\xb5\xb8");
  EXPECT_TRUE(HU_Utf8ToNarrow(std::string("nul\0inside", 10), out));  // embedded NUL is valid
  EXPECT_EQ(out.size(), 10u);
}

}  // namespace
