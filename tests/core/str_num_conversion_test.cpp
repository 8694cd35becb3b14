#include "hy_util/core/str_num_conversion.h"

#include <clocale>
#include <string>

#include <gtest/gtest.h>

using HU_LIB::HU_StrNumConversion;

namespace {

TEST(StrNumConversionTest, ParsingReadsTheLongestLeadingNumberOrGivesTheDefault) {
  EXPECT_FLOAT_EQ(HU_StrNumConversion::StringToFloat("  2.5m", -1), 2.5f);
  EXPECT_FLOAT_EQ(HU_StrNumConversion::StringToFloat("+1e3", -1), 1000.0f);
  EXPECT_FLOAT_EQ(HU_StrNumConversion::StringToFloat("7e", -1), 7.0f);  // "e" not part of it
  EXPECT_FLOAT_EQ(HU_StrNumConversion::StringToFloat("+-1", -1), -1.0f);
  EXPECT_FLOAT_EQ(HU_StrNumConversion::StringToFloat("1e60", -1), -1.0f);  // out of range
  EXPECT_EQ(HU_StrNumConversion::StringToInt(" 42 apples", -1), 42);
  EXPECT_EQ(HU_StrNumConversion::StringToInt("+7", -1), 7);
  EXPECT_EQ(HU_StrNumConversion::StringToInt("3.9", -1), 3);
  EXPECT_EQ(HU_StrNumConversion::StringToInt("2147483648", -1), -1);  // overflow
  EXPECT_EQ(HU_StrNumConversion::StringToInt("", -1), -1);
  EXPECT_EQ(HU_StrNumConversion::CountDecimalPlaces("3.250"), 3u);
  EXPECT_EQ(HU_StrNumConversion::CountDecimalPlaces("12"), 0u);
}

TEST(StrNumConversionTest, FormattingWritesTheAskedDecimalsWithAPointInAnyLocale) {
  const std::string saved = std::setlocale(LC_NUMERIC, nullptr);
  std::setlocale(LC_NUMERIC, "de_DE.UTF-8");  // comma locale when installed
  EXPECT_EQ(HU_StrNumConversion::FloatToString(2.5f, 3), "2.500");
  EXPECT_EQ(HU_StrNumConversion::FloatToString(-0.125f, 2), "-0.12");  // exact tie to even
  EXPECT_EQ(HU_StrNumConversion::FloatToString(3.0f, 0), "3");
  EXPECT_EQ(HU_StrNumConversion::FloatToString(1.5f), "1.500000");
  EXPECT_EQ(HU_StrNumConversion::FloatToString(1e20f, 2), "100000002004087734272.00");
  EXPECT_FLOAT_EQ(HU_StrNumConversion::StringToFloat("2.5", 0), 2.5f);
  std::setlocale(LC_NUMERIC, saved.c_str());
}

}  // namespace
