#include "hy_util/platform/locale.h"

#include <clocale>
#include <string>

#include <gtest/gtest.h>

namespace {

TEST(LocaleTest, WindowsNamesPairWithPosixUtf8Locales) {
  EXPECT_EQ(HU_PosixLocaleFor("Japanese_Japan.932"), "ja_JP.UTF-8");
  EXPECT_EQ(HU_PosixLocaleFor("Chinese-Simplified_China.936"), "zh_CN.UTF-8");
  EXPECT_EQ(HU_PosixLocaleFor("Korean_Korea.949"), "ko_KR.UTF-8");
  EXPECT_EQ(HU_PosixLocaleFor("German_Germany.1252"), "");
}

TEST(LocaleTest, UnknownOrEmptyNamesLeaveTheLocaleAlone) {
  const std::string before = std::setlocale(LC_ALL, nullptr);
  EXPECT_EQ(HU_SetProcessLocale("Klingon_Space.999"), "");
  EXPECT_EQ(HU_SetProcessLocale(""), "");  // not the environment's locale
  EXPECT_EQ(std::setlocale(LC_ALL, nullptr), before);
}

TEST(LocaleTest, KnownNameFallsBackToItsPosixLocale) {
  const std::string before = std::setlocale(LC_ALL, nullptr);
  const std::string set = HU_SetProcessLocale("Korean_Korea.949");
  const std::string now = std::setlocale(LC_ALL, nullptr);
  std::setlocale(LC_ALL, before.c_str());
  if (set.empty()) {
    EXPECT_EQ(now, before);  // neither name exists here
  } else {
    EXPECT_EQ(set, "ko_KR.UTF-8");
    EXPECT_EQ(now, "ko_KR.UTF-8");
  }
}

}  // namespace
