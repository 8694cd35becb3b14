#include "hy_util/core/date_time.h"

#include <chrono>
#include <climits>
#include <random>
#include <string>

#include <gtest/gtest.h>

#include "support/recording_application.h"

using DT = HU_LIB::HU_DateTime;

namespace {

// Restores the module's process-wide settings after each test.
class DateTimeTest : public ::testing::Test {
 protected:
  ~DateTimeTest() override {
    DT::set_date_fmt("dd/mm/yy");
    DT::set_normalyear();
  }
  hytest::RecordingApplication app;
};

TEST_F(DateTimeTest, DatesAreWrittenAndReadInTheOrderOfTheDateFormatSetting) {
  const std::pair<const char*, const char*> cases[] = {
      {"", "05/03/2019"}, {"mm/dd/yyyy", "03/05/2019"}, {"YYYY/MM/DD", "2019/03/05"}};
  for (const auto& [format, expected] : cases) {
    app.SetProfileString("CONFIG", "DATE_FORMAT", format);
    std::string text;
    int d = 0, m = 0, y = 0;
    DT::EncodeDate(5, 3, 2019, text);
    EXPECT_TRUE(text == expected && DT::DecodeDate(text, d, m, y) == 3 && d == 5 && m == 3)
        << text << " read as " << d << "/" << m << "/" << y;
  }
  int h = 9, mi = 9, s = 9;
  EXPECT_EQ(DT::DecodeTime("7.5", h, mi, s), 2);
  EXPECT_EQ(s, 0);  // outputs are zeroed before reading
}

TEST_F(DateTimeTest, DateFormatPatternSetsSeparatorAndOrder) {
  // The separator is looked for after lower-case d, m and y only.
  const std::pair<const char*, const char*> cases[] = {
      {"mm-dd-yyyy", "mm-dd-yy"}, {"MM-DD-YYYY", "mm/dd/yy"}, {"yyyymmdd", "yy/mm/dd"},
      {"x.y", "dd/mm/yy"}};
  for (const auto& [pattern, format] : cases) {
    DT::set_date_fmt(pattern);
    EXPECT_EQ(DT::get_date_fmt(), format) << pattern;
  }
  EXPECT_EQ(DT::decode_order("D"), -1);  // case-sensitive
  DT::set_date_fmt("mm-dd-yyyy");
  std::string date, time;
  DT::day_to_date(DT::calc_days(4, 7, 2019), date);
  DT::time_to_str(DT::calc_time(7, 5, 30), time);
  EXPECT_EQ(date + " " + time, "07-04-19 07:05");  // two-digit parts
}

TEST_F(DateTimeTest, StrToDateReadsTwoDigitYearsBelowFiftyAsThisCentury) {
  // The year as stored (an offset from 1900), or -1 when the text is rejected.
  const std::pair<const char*, int> cases[] = {{"31/12/49", 149}, {"1.1-50", 50}, {"1/1/2020", 120},
                                               {"1/1/50x", -1}, {"31/2/20", -1}, {"1//2/20", -1}};
  for (const auto& [text, year] : cases) {
    int d = 0, m = 0, y = 0;
    EXPECT_EQ(DT::str_to_date(text, d, m, y) < 0 ? -1 : y, year) << text;
  }
  DT::set_date_fmt("mm/dd/yy");
  EXPECT_EQ(DT::date_to_day("12/31/99"), DT::calc_days(31, 12, 1999));
}

TEST_F(DateTimeTest, StrToTimeAddsTwelveHoursForPmAndRejectsTwentyFour) {
  const std::pair<const char*, long> cases[] = {  // twelve p.m. becomes 24:00 and is rejected
      {"1:30p", 810}, {"1:30A", 90}, {"12:00p", -1}, {"12:00a", 720}, {"7", 420}, {"", 0},
      {"23.59", 1439}, {"24:00", -1}, {"1:60", -1}, {"-1:00", -1}, {"2147483647:00p", -1}};
  for (const auto& [text, minutes] : cases) {
    int h = 0, m = 0;
    EXPECT_EQ(DT::str_to_time(text, h, m), minutes < 0 ? -1 : minutes * 6000) << text;
  }
}

TEST_F(DateTimeTest, ClockTimesAreHundredthsAndLargerUnitsTruncate) {
  EXPECT_EQ(DT::calc_time(23, 59, 59), 8639900);
  EXPECT_EQ(DT::calc_time(24, 0, 0), -1);
  EXPECT_EQ(DT::abs_time("10:20:30"), (10 * 60 + 20) * 6000L);  // the second reader
  EXPECT_EQ(DT::make_abs_time(1, 6000, 1), 1441);
  EXPECT_EQ(DT::make_abs_time(1, 719999, 2), 25);
  EXPECT_EQ(DT::make_abs_time(1, 100, 3), 0);             // unknown unit
  EXPECT_EQ(DT::make_abs_time(LONG_MAX / 2, 0, 0), -1);  // overflow
  int d = 0, h = 0, m = 0, s = 0;
  DT::DecHrsToDHMS(DT::DHMSToDecHrs(2, 1, 15, 27), d, h, m, s);
  EXPECT_TRUE(d == 2 && h == 1 && m == 15 && s == 27) << d << " " << h << ":" << m << ":" << s;
}

TEST_F(DateTimeTest, DayCountsStartAtOneOnFirstJanuary1900AndRejectBadDates) {
  EXPECT_TRUE(DT::is_leapyear(100) && !DT::is_leapyear(0) && !DT::is_leapyear(2100));
  DT::set_leapyear();
  EXPECT_EQ(DT::days_per_month(1, 1900), 28);
  EXPECT_EQ(DT::num_days(1), 29);  // restored after days_per_month
  EXPECT_EQ(DT::calc_days(1, 1, 0), 1);
  EXPECT_EQ(DT::day_of_week(1), 1);  // a Monday
  const int bad[][3] = {{29, 2, 1900}, {0, 1, 2000}, {1, 13, 2000}, {1, 1, -1}};
  for (const auto& b : bad) EXPECT_EQ(DT::calc_days(b[0], b[1], b[2]), -1) << b[0] << "/" << b[1];
}

// Oracle: <chrono> counts the days; calc_dmy and calc_days must invert each other.
TEST_F(DateTimeTest, DayCountsMatchTheCalendarAndRoundTripOverCenturies) {
  using namespace std::chrono;
  const sys_days epoch{std::chrono::year{1899} / 12 / 31};
  std::mt19937 rng(12345);
  std::uniform_int_distribution<long> pick(1, DT::calc_days(31, 12, 9999));
  for (int i = 0; i < 20000; ++i) {
    const long days = i < 1000 ? i + 1 : pick(rng);
    int d = 0, m = 0, y = 0;
    DT::calc_dmy(days, d, m, y);
    const sys_days date{std::chrono::year{y < 1001 ? y + 1900 : y} / m / d};
    ASSERT_EQ((date - epoch).count(), days) << d << "/" << m << "/" << y;
    ASSERT_EQ(DT::calc_days(d, m, y), days);
  }
  EXPECT_EQ(DT::date_to_julday(15, 10, 1582), 2299161);
}

// Two-digit years of timestamps take the century of the "YEAR_XX" setting.
TEST_F(DateTimeTest, TimestampsWithoutATimeAreAtMidnight) {
  const std::string a = DT::MakeTimestamp(31, 12, 2019, 23, 59, 0);
  EXPECT_EQ(a, "31/12/2019 23:59:00");
  long seconds = 0;
  ASSERT_TRUE(DT::GetDifferenceBetweenTimestamps("1/3/2020 6:00", "28/2/2020", seconds));
  EXPECT_EQ(seconds, -(86400 * 2 + 6 * 3600));
  EXPECT_FALSE(DT::GetDifferenceBetweenTimestamps(a, "31/2/2020", seconds));
  EXPECT_EQ(DT::CompareTimestamps(a, "01/01/20"), 1);  // 1920 by default
  app.SetProfileString("CONFIG", "YEAR_XX", "2000");
  EXPECT_EQ(DT::CompareTimestamps(a, "01/01/20 00:00:00"), -1);
  EXPECT_EQ(DT::CompareTimestamps("junk", a), -1);
}

}  // namespace
