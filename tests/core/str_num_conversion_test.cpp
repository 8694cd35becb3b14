#include "hy_util/core/str_num_conversion.h"

#include <clocale>
#include <limits>
#include <string>

#include <gtest/gtest.h>

using HU_LIB::HU_StrNumConversion;

namespace {

TEST(StrNumConversionTest, StringToFloatReadsTheLongestLeadingNumber) {
  EXPECT_FLOAT_EQ(HU_StrNumConversion::StringToFloat("  2.5m", -1.0f), 2.5f);
  EXPECT_FLOAT_EQ(HU_StrNumConversion::StringToFloat("+1e3", -1.0f), 1000.0f);
  EXPECT_FLOAT_EQ(HU_StrNumConversion::StringToFloat("-.25", -1.0f), -0.25f);
  EXPECT_FLOAT_EQ(HU_StrNumConversion::StringToFloat("7e", -1.0f), 7.0f);  // "e" not part of it
  EXPECT_FLOAT_EQ(HU_StrNumConversion::StringToFloat("abc", -1.0f), -1.0f);
  EXPECT_FLOAT_EQ(HU_StrNumConversion::StringToFloat("", -1.0f), -1.0f);
  EXPECT_FLOAT_EQ(HU_StrNumConversion::StringToFloat("+-1", -1.0f), -1.0f);
  EXPECT_FLOAT_EQ(HU_StrNumConversion::StringToFloat("1e60", -1.0f), -1.0f);  // out of range
}

TEST(StrNumConversionTest, StringToIntReadsBaseTenWithDefaultOnOverflow) {
  EXPECT_EQ(HU_StrNumConversion::StringToInt(" 42 apples", -1), 42);
  EXPECT_EQ(HU_StrNumConversion::StringToInt("+7", -1), 7);
  EXPECT_EQ(HU_StrNumConversion::StringToInt("-2147483648", -1), std::numeric_limits<int>::min());
  EXPECT_EQ(HU_StrNumConversion::StringToInt("2147483648", -1), -1);
  EXPECT_EQ(HU_StrNumConversion::StringToInt("3.9", -1), 3);
  EXPECT_EQ(HU_StrNumConversion::StringToInt("0x10", -1), 0);  // decimal only
  EXPECT_EQ(HU_StrNumConversion::StringToInt("x", -1), -1);
}

TEST(StrNumConversionTest, FloatToStringWritesTheAskedDecimals) {
  EXPECT_EQ(HU_StrNumConversion::FloatToString(2.5f, 3), "2.500");
  EXPECT_EQ(HU_StrNumConversion::FloatToString(-0.125f, 2), "-0.12");  // ties to even
  EXPECT_EQ(HU_StrNumConversion::FloatToString(3.0f, 0), "3");
  EXPECT_EQ(HU_StrNumConversion::FloatToString(1.5f), "1.500000");
  EXPECT_EQ(HU_StrNumConversion::FloatToString(1e20f, 2), "100000002004087734272.00");
  EXPECT_EQ(HU_StrNumConversion::IntToString(-12), "-12");
}

TEST(StrNumConversionTest, FloatToStringIgnoresTheProcessLocale) {
  const std::string saved = std::setlocale(LC_NUMERIC, nullptr);
  if (std::setlocale(LC_NUMERIC, "de_DE.UTF-8") == nullptr) GTEST_SKIP() << "no de_DE.UTF-8";
  const std::string text = HU_StrNumConversion::FloatToString(2.5f, 1);
  const float back = HU_StrNumConversion::StringToFloat("2.5", 0.0f);
  std::setlocale(LC_NUMERIC, saved.c_str());
  EXPECT_EQ(text, "2.5");
  EXPECT_FLOAT_EQ(back, 2.5f);
}

TEST(StrNumConversionTest, CountDecimalPlacesCountsAfterTheFirstPoint) {
  EXPECT_EQ(HU_StrNumConversion::CountDecimalPlaces("3.250"), 3u);
  EXPECT_EQ(HU_StrNumConversion::CountDecimalPlaces("12"), 0u);
  EXPECT_EQ(HU_StrNumConversion::CountDecimalPlaces("1.2.3"), 3u);
}

}  // namespace
