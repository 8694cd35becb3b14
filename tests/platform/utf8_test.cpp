#include "hy_util/platform/utf8.h"

#include <string>

#include <gtest/gtest.h>

namespace {

TEST(Utf8Test, OnlyWellFormedSequencesAreValid) {
  for (const char* valid : {"", "plain", "\xc3\xbc", "\xe6\xb5\xb8", "\xf0\x9f\x8c\x8a",
                            "\xef\xbf\xbf", "\xf4\x8f\xbf\xbf"}) {
    EXPECT_TRUE(HU_IsValidUtf8(valid)) << valid;
  }
  const char* invalid[] = {"\x80",         "\xc3\x28",     "\xc3",  // stray, bad, truncated
                           "\xe6\xb5",     "\xc0\xaf",             // truncated, overlong
                           "\xe0\x80\xaf", "\xf0\x8f\xbf\xbf",     // overlong
                           "\xed\xa0\x80",                         // surrogate
                           "\xf4\x90\x80\x80", "\xf5\x80\x80\x80", "\xff"};  // too large
  for (const char* bytes : invalid) EXPECT_FALSE(HU_IsValidUtf8(bytes)) << bytes;
}

TEST(Utf8Test, ConversionKeepsValidTextAndLeavesOutputAloneOnFailure) {
  std::string out = "previous";
  EXPECT_TRUE(HU_Utf8ToNarrow("Flut \xe6\xb5\xb8", out));
  EXPECT_EQ(out, "Flut \xe6\xb5\xb8");
  EXPECT_FALSE(HU_Utf8ToNarrow("bad \xc3", out));
  EXPECT_EQ(out, "Flut \xe6\xb5\xb8");
}

}  // namespace
