#include "hy_util/core/localization.h"

#include <clocale>
#include <string>

#include <gtest/gtest.h>

namespace {

TEST(LocalizationTest, NumbersFollowTheGivenLocaleAndLeaveTheProcessAlone) {
  const locale_t c = newlocale(LC_ALL_MASK, "C", static_cast<locale_t>(0));
  EXPECT_EQ(CHU_Localization::DoubleToString_l(-1234.5, c), "-1234.500000");
  EXPECT_DOUBLE_EQ(CHU_Localization::StringToDouble_l(" 2.75e1x", c), 27.5);
  const locale_t german = newlocale(LC_ALL_MASK, "de_DE.UTF-8", static_cast<locale_t>(0));
  if (german != static_cast<locale_t>(0)) {
    EXPECT_EQ(CHU_Localization::DoubleToString_l(2.5, german), "2,500000");
    EXPECT_DOUBLE_EQ(CHU_Localization::StringToDouble_l("2,5", german), 2.5);
    EXPECT_EQ(CHU_Localization::DoubleToString_l(2.5, c), "2.500000");  // thread restored
    freelocale(german);
  }
  freelocale(c);
  const std::string symbol = CHU_Localization::GetSystemDecimalSymbol();
  EXPECT_TRUE(symbol == "." || symbol == ",") << symbol;
  EXPECT_STREQ(std::setlocale(LC_NUMERIC, nullptr), "C");
}

}  // namespace
