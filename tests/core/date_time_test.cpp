#include "hy_util/core/date_time.h"

#include <gtest/gtest.h>

#include <chrono>
#include <random>
#include <string>

#include "support/recording_application.h"

using HU_LIB::HU_DateTime;

namespace {

// Restores the module's process-wide settings after each test.
class DateTimeTest : public ::testing::Test {
 protected:
  ~DateTimeTest() override {
    HU_DateTime::set_date_fmt("dd/mm/yy");
    HU_DateTime::set_normalyear();
  }
  hytest::RecordingApplication app;
};

// Independent oracle: days since 1 January 1900 (day 1) through <chrono>.
long ChronoDays(int day, int month, int year) {
  using namespace std::chrono;
  const sys_days date{std::chrono::year{year} / month / day};
  const sys_days before{std::chrono::year{1899} / 12 / 31};
  return static_cast<long>((date - before).count());
}

struct TimeCase {
  const char* text;
  long expected;
};

class StrToTimeTest : public DateTimeTest, public ::testing::WithParamInterface<TimeCase> {};

}  // namespace

TEST_F(DateTimeTest, TwoDigitYearsGetTheCenturyOfTheYearXxSetting) {
  EXPECT_EQ(HU_DateTime::Yr2ToYr4(18), 1918);
  app.SetProfileString("CONFIG", "YEAR_XX", "2000");
  EXPECT_EQ(HU_DateTime::Yr2ToYr4(18), 2018);
  EXPECT_EQ(HU_DateTime::Yr2ToYr4(118), 118);
  app.SetProfileString("CONFIG", "YEAR_XX", "2100");
  EXPECT_EQ(HU_DateTime::Yr2ToYr4(18), 1918);
}

TEST_F(DateTimeTest, DefaultOrderAndEncodingFollowTheDateFormatSetting) {
  std::string text;
  EXPECT_EQ(HU_DateTime::GetDefaultDateOrder(), 0);
  HU_DateTime::EncodeDate(5, 3, 2019, text);
  EXPECT_EQ(text, "05/03/2019");
  app.SetProfileString("CONFIG", "DATE_FORMAT", "mm/dd/yyyy");
  EXPECT_EQ(HU_DateTime::GetDefaultDateOrder(), 1);
  HU_DateTime::EncodeDate(5, 3, 2019, text);
  EXPECT_EQ(text, "03/05/2019");
  app.SetProfileString("CONFIG", "DATE_FORMAT", "YYYY/MM/DD");
  HU_DateTime::EncodeDate(5, 3, 2019, text);
  EXPECT_EQ(text, "2019/03/05");
}

TEST_F(DateTimeTest, DateFormatPatternSetsSeparatorOrderAndShortTexts) {
  HU_DateTime::set_date_fmt("MM-DD-YYYY");
  EXPECT_EQ(HU_DateTime::get_date_fmt(), "mm-dd-yy");
  EXPECT_EQ(HU_DateTime::get_date_order(), 1);
  std::string text;
  HU_DateTime::date_to_str(4, 7, 2019, text);
  EXPECT_EQ(text, "07-04-19");
  HU_DateTime::set_date_fmt("yyyymmdd");  // no separator: "/"
  EXPECT_EQ(HU_DateTime::get_date_fmt(), "yy/mm/dd");
  HU_DateTime::day_to_date(HU_DateTime::calc_days(9, 8, 2021), text);
  EXPECT_EQ(text, "21/08/09");
  HU_DateTime::set_date_fmt("x.y");
  EXPECT_EQ(HU_DateTime::get_date_order(), 0);
  HU_DateTime::time_to_str(HU_DateTime::calc_time(7, 5, 30), text);
  EXPECT_EQ(text, "07:05");
}

TEST_F(DateTimeTest, StrToDateAppliesTheTwoDigitYearRules) {
  int d = 0, m = 0, y = 0;
  EXPECT_EQ(HU_DateTime::str_to_date("31/12/49", d, m, y), HU_DateTime::calc_days(31, 12, 2049));
  EXPECT_EQ(y, 149);
  EXPECT_GT(HU_DateTime::str_to_date("1.1-50", d, m, y), 0);
  EXPECT_EQ(y, 50);
  EXPECT_GT(HU_DateTime::str_to_date("1/1/2020", d, m, y), 0);
  EXPECT_EQ(y, 120);
  EXPECT_EQ(HU_DateTime::str_to_date("1/1/50x", d, m, y), -1);
  EXPECT_EQ(HU_DateTime::str_to_date("31/2/20", d, m, y), -1);
  EXPECT_FALSE(HU_DateTime::is_valid_date("1//2/20"));
  HU_DateTime::set_date_fmt("mm/dd/yy");
  EXPECT_EQ(HU_DateTime::date_to_day("12/31/99"), HU_DateTime::calc_days(31, 12, 1999));
}

TEST_F(DateTimeTest, DecodeReadsInTheDefaultOrderAndCountsFields) {
  int d = 0, m = 0, y = 0, h = 9, mi = 9, s = 9;
  app.SetProfileString("CONFIG", "DATE_FORMAT", "YYYY/MM/DD");
  EXPECT_EQ(HU_DateTime::DecodeDate("2019/03/05", d, m, y), 3);
  EXPECT_EQ(d * 10000 + m * 100 + (y - 2000), 50319);
  EXPECT_EQ(HU_DateTime::DecodeDate("2019/03", d, m, y), 2);
  EXPECT_EQ(HU_DateTime::DecodeTime("7.5", h, mi, s), 2);
  EXPECT_EQ(h * 10000 + mi * 100 + s, 70500);
}

TEST_P(StrToTimeTest, ReadsClockTimes) {
  int h = 0, m = 0;
  EXPECT_EQ(HU_DateTime::str_to_time(GetParam().text, h, m), GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(
    Texts, StrToTimeTest,
    ::testing::Values(TimeCase{"1:30p", (13 * 60 + 30) * 6000L}, TimeCase{"1:30A", 90 * 6000L},
                      TimeCase{"12:00p", -1}, TimeCase{"12:00a", 720 * 6000L},
                      TimeCase{"7", 7 * 60 * 6000L}, TimeCase{"", 0}, TimeCase{"23.59", 1439 * 6000L},
                      TimeCase{"24:00", -1}, TimeCase{"1:60", -1}, TimeCase{"-1:00", -1},
                      TimeCase{"2147483647:00p", -1}));

TEST_F(DateTimeTest, ClockTimesInHundredthsAndAbsoluteTimes) {
  EXPECT_EQ(HU_DateTime::calc_time(23, 59, 59), 8639900);
  EXPECT_EQ(HU_DateTime::calc_time(24, 0, 0), -1);
  EXPECT_EQ(HU_DateTime::calc_time(0, 0, -1), -1);
  EXPECT_EQ(HU_DateTime::abs_time("10:20:30"), (10 * 60 + 20) * 6000L);
  EXPECT_FALSE(HU_DateTime::is_valid_time("25:00:00"));
  EXPECT_EQ(HU_DateTime::make_abs_time(1, 6000, 1), 1441);
  EXPECT_EQ(HU_DateTime::make_abs_time(2, 8639900, 0), 2 * 86400 + 86399);
  EXPECT_EQ(HU_DateTime::make_abs_time(1, 720000, 2), 26);
  EXPECT_EQ(HU_DateTime::make_abs_time(1, 100, 3), 0);
  EXPECT_EQ(HU_DateTime::make_abs_time(LONG_MAX / 2, 0, 0), -1);
}

TEST_F(DateTimeTest, LeapYearsAndMonthLengths) {
  EXPECT_TRUE(HU_DateTime::is_leapyear(100));
  EXPECT_FALSE(HU_DateTime::is_leapyear(0));
  EXPECT_FALSE(HU_DateTime::is_leapyear(2100));
  EXPECT_TRUE(HU_DateTime::is_leapyear(124));
  HU_DateTime::set_leapyear();
  EXPECT_EQ(HU_DateTime::days_per_month(1, 1900), 28);
  EXPECT_EQ(HU_DateTime::num_days(1), 29);  // restored after days_per_month
  EXPECT_EQ(HU_DateTime::days_per_month(1, 2000), 29);
  EXPECT_EQ(HU_DateTime::num_days(12), -1);
}

TEST_F(DateTimeTest, DayCountsStartAtOneOnFirstJanuary1900AndRejectBadDates) {
  EXPECT_EQ(HU_DateTime::calc_days(1, 1, 0), 1);
  EXPECT_EQ(HU_DateTime::calc_days(1, 1, 1900), 1);
  EXPECT_EQ(HU_DateTime::calc_days(1, 3, 1900), 60);
  EXPECT_EQ(HU_DateTime::day_of_week(1), 1);  // a Monday
  EXPECT_EQ(HU_DateTime::day_of_week(HU_DateTime::calc_days(1, 1, 2000)), 6);
  EXPECT_EQ(HU_DateTime::calc_days(29, 2, 1900), -1);
  EXPECT_EQ(HU_DateTime::calc_days(0, 1, 2000), -1);
  EXPECT_EQ(HU_DateTime::calc_days(1, 13, 2000), -1);
  EXPECT_EQ(HU_DateTime::calc_days(1, 1, -1), -1);
  EXPECT_EQ(HU_DateTime::calc_days(1, 1, 1500), -1);
  int d = 9, m = 9, y = 9;
  HU_DateTime::calc_dmy(0, d, m, y);
  EXPECT_EQ(d + m + y, 0);
}

TEST_F(DateTimeTest, DayCountsMatchTheCalendarAndRoundTripOverCenturies) {
  std::mt19937 rng(12345);
  const long last = HU_DateTime::calc_days(31, 12, 9999);
  std::uniform_int_distribution<long> pick(1, last);
  for (int i = 0; i < 20000; ++i) {
    const long days = i < 1000 ? i + 1 : pick(rng);
    int d = 0, m = 0, y = 0;
    HU_DateTime::calc_dmy(days, d, m, y);
    const int full = y < 1001 ? y + 1900 : y;
    ASSERT_EQ(ChronoDays(d, m, full), days) << d << "/" << m << "/" << y;
    ASSERT_EQ(HU_DateTime::calc_days(d, m, y), days);
  }
  int d = 0, m = 0, y = 0;
  HU_DateTime::calc_dmy(HU_DateTime::calc_days(31, 12, 2900), d, m, y);
  EXPECT_EQ(y, 1000);
  HU_DateTime::calc_dmy(HU_DateTime::calc_days(1, 1, 2901), d, m, y);
  EXPECT_EQ(y, 2901);
}

TEST_F(DateTimeTest, JulianDayNumbersOfKnownDates) {
  EXPECT_EQ(HU_DateTime::date_to_julday(1, 1, 2000), 2451545);
  EXPECT_EQ(HU_DateTime::date_to_julday(15, 10, 1582), 2299161);
  EXPECT_EQ(HU_DateTime::date_to_julday(31, 12, 1899), 2415020);
  int d = 0, m = 0, y = 0;
  HU_DateTime::julday_to_date(2440588, d, m, y);
  EXPECT_EQ(y * 10000 + m * 100 + d, 19700101);
  std::mt19937 rng(7);
  std::uniform_int_distribution<long> pick(0, 5000000);
  for (int i = 0; i < 5000; ++i) {
    const long jd = pick(rng);
    HU_DateTime::julday_to_date(jd, d, m, y);
    ASSERT_EQ(HU_DateTime::date_to_julday(d, m, y), jd);
  }
}

TEST_F(DateTimeTest, DecimalHoursConversions) {
  EXPECT_DOUBLE_EQ(HU_DateTime::DHMSToDecHrs(1, 1, 30, 36), 25.51);
  int d = 0, h = 0, m = 0, s = 0;
  HU_DateTime::DecHrsToHMS(25.51, h, m, s);
  EXPECT_EQ(h * 10000 + m * 100 + s, 253036);
  HU_DateTime::DecHrsToDHMS(49.2575, d, h, m, s);
  EXPECT_EQ(d * 1000000 + h * 10000 + m * 100 + s, 2011527);
  HU_DateTime::DecHrsToHMS(1e300, h, m, s);
  EXPECT_EQ(h + m + s, 0);
}

TEST_F(DateTimeTest, TimestampsSplitCompareAndSubtract) {
  const std::string a = HU_DateTime::MakeTimestamp(31, 12, 2019, 23, 59, 0);
  EXPECT_EQ(a, "31/12/2019 23:59:00");
  EXPECT_EQ(HU_DateTime::GetDateFromTimestamp(a), "31/12/2019");
  EXPECT_EQ(HU_DateTime::GetTimeFromTimestamp(a), "23:59:00");
  EXPECT_EQ(HU_DateTime::GetTimeFromTimestamp(" 1/1/2020 "), "00:00:00");
  long seconds = 0;
  ASSERT_TRUE(HU_DateTime::GetDifferenceBetweenTimestamps(a, "1/1/2020", seconds));
  EXPECT_EQ(seconds, 60);
  ASSERT_TRUE(HU_DateTime::GetDifferenceBetweenTimestamps("1/3/2020 6:00", "28/2/2020", seconds));
  EXPECT_EQ(seconds, -(86400 * 2 + 6 * 3600));
  EXPECT_FALSE(HU_DateTime::GetDifferenceBetweenTimestamps(a, "31/2/2020", seconds));
  EXPECT_EQ(HU_DateTime::CompareTimestamps(a, "01/01/20 00:00:00"), 1);  // 20 is 1920 by default
  app.SetProfileString("CONFIG", "YEAR_XX", "2000");
  EXPECT_EQ(HU_DateTime::CompareTimestamps(a, "01/01/20 00:00:00"), -1);
  EXPECT_EQ(HU_DateTime::CompareTimestamps(a, "01/01/2020 00:00:00"), -1);
  EXPECT_EQ(HU_DateTime::CompareTimestamps("01/01/2020", "1/1/2020 00:00:00"), 0);
  EXPECT_EQ(HU_DateTime::CompareTimestamps("junk", a), -1);
  EXPECT_EQ(HU_DateTime::CompareTimestamps("junk", "more junk"), 0);
}
