#include "hy_util/core/localization.h"

#include <clocale>
#include <string>

#include <gtest/gtest.h>

namespace {

// A locale object owned by the test; null when the locale is not installed.
struct OwnedLocale {
  explicit OwnedLocale(const char* name)
      : locale(newlocale(LC_ALL_MASK, name, static_cast<locale_t>(0))) {}
  ~OwnedLocale() {
    if (locale != static_cast<locale_t>(0)) freelocale(locale);
  }
  locale_t locale;
};

TEST(LocalizationTest, ChoosingCreatesTheUserDefaultOnlyWhenNoneIsGiven) {
  OwnedLocale c("C");
  locale_t chosen = static_cast<locale_t>(0);
  bool created = true;
  CHU_Localization::ChooseLocaleToUse(c.locale, chosen, created);
  EXPECT_EQ(chosen, c.locale);
  EXPECT_FALSE(created);

  CHU_Localization::ChooseLocaleToUse(static_cast<locale_t>(0), chosen, created);
  EXPECT_NE(chosen, static_cast<locale_t>(0));
  EXPECT_TRUE(created);
  freelocale(chosen);
}

TEST(LocalizationTest, NumbersFollowTheGivenLocaleNotTheProcessLocale) {
  OwnedLocale c("C");
  EXPECT_EQ(CHU_Localization::DoubleToString_l(-1234.5, c.locale), "-1234.500000");
  EXPECT_DOUBLE_EQ(CHU_Localization::StringToDouble_l(" 2.75e1x", c.locale), 27.5);
  EXPECT_DOUBLE_EQ(CHU_Localization::StringToDouble_l("abc", c.locale), 0.0);

  OwnedLocale german("de_DE.UTF-8");
  if (german.locale == static_cast<locale_t>(0)) GTEST_SKIP() << "no de_DE.UTF-8 locale";
  EXPECT_EQ(CHU_Localization::DoubleToString_l(2.5, german.locale), "2,500000");
  EXPECT_DOUBLE_EQ(CHU_Localization::StringToDouble_l("2,5", german.locale), 2.5);
  EXPECT_EQ(CHU_Localization::DoubleToString_l(2.5, c.locale), "2.500000");  // thread restored
}

TEST(LocalizationTest, UserDefaultDecimalSymbolIsOneOfTheUsualSeparators) {
  const std::string symbol = CHU_Localization::GetSystemDecimalSymbol();
  EXPECT_TRUE(symbol == "." || symbol == ",") << symbol;
  EXPECT_STREQ(std::setlocale(LC_NUMERIC, nullptr), "C");  // process locale untouched
}

}  // namespace
