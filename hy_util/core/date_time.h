#pragma once
// HU_LIB::HU_DateTime: dates and clock times in the user's chosen order.
//
// Dates are kept as day, month (1-12) and year, as a day count, or as a Julian day
// number; times of day in hundredths of a second. A year below 1001 is an offset
// from 1900 (118 is 2018); 1001 or more is a full year.
//
// Settings: the date format, separator and order, the time format and the days of
// February are process-wide (single-threaded use). The application's "CONFIG"
// settings "DATE_FORMAT" and "YEAR_XX" give the default order and the century of
// two-digit years.
//
// Choices made here:
// - Day count epoch: 1 January 1900 is day 1 (31 December 1899 would be day 0).
//   calc_days and calc_dmy use the Gregorian rules throughout and are exact
//   inverses for every day count from 1 on. calc_dmy gives the year as an offset
//   from 1900 while that is below 1001 and as the full year from 2901 on, the two
//   forms every function here accepts. day_of_week gives 0 for Sunday through 6 for
//   Saturday (day 1 was a Monday).
// - Texts are scanned with the C runtime's scanf rules on the patterns of each
//   reader. Clock readers reject negative hours, minutes or seconds. Date texts
//   are read in the order of set_date_fmt (str_to_date) or of the "DATE_FORMAT"
//   setting (DecodeDate, the counterpart of the three-argument EncodeDate).
// - set_date_fmt takes the order from the pattern's first letter in either case,
//   but finds the separator only after lower-case letters: "DD.MM.YY" gives the
//   order day-month-year with the separator "/". decode_order is case-sensitive.
// - date_to_str writes the year as its last two digits, in the set order.
// - Day counts outside 1 .. the last day of year INT_MAX give day, month and year 0
//   from calc_dmy; make_abs_time gives -1 when the result would overflow.
// - Timestamps: the date as EncodeDate writes it in the default order (four-digit
//   year), one blank, then "hh:mm:ss", e.g. "31/12/2019 23:59:00". When reading, the
//   time may be left out (it is then "00:00:00"), may omit the seconds, and a
//   two-digit year is widened with Yr2ToYr4. A timestamp that cannot be read
//   compares before every readable one.

#include <string>

namespace HU_LIB {

class HU_DateTime {
 public:
  // Settings from the application configuration.
  static std::string GetDefaultDateFormat();
  static int GetDefaultDateOrder();
  static int Yr2ToYr4(int year);

  // Writing dates and times.
  static void EncodeDate(int order, int day, int month, int year, std::string& text);
  static void EncodeDate(int day, int month, int year, std::string& text);
  static void set_date_fmt(const std::string& pattern);
  static std::string get_date_fmt();
  static std::string get_date_sep();
  static int get_date_order();
  static int decode_order(const std::string& text);
  static void date_to_str(int day, int month, int year, std::string& text);
  static void day_to_date(long days, std::string& text);
  static void time_to_str(long hundredths, std::string& text);

  // Reading dates and times. str_to_date and str_to_time return the day count or
  // the time in hundredths, or -1; DecodeDate and DecodeTime the fields read.
  // str_to_time reads "h[:mm][a|p]": a text without a number is 0:00, "p" adds 12
  // hours (so "12:00p" is 24:00 and rejected). str_to_date keeps a year below 50
  // as 20xx and gives the year as an offset from 1900.
  static long str_to_date(const std::string& text, int& day, int& month, int& year);
  static int DecodeDate(const std::string& text, int& day, int& month, int& year);
  static int DecodeTime(const std::string& text, int& hours, int& minutes, int& seconds);
  static long str_to_time(const std::string& text, int& hours, int& minutes);
  static long calc_time(int hours, int minutes, int seconds);
  static bool is_valid_time(const std::string& text);
  static bool is_valid_date(const std::string& text);
  static long abs_time(const std::string& text);
  static long date_to_day(const std::string& text);

  // Calendar arithmetic.
  static int num_days(int monthIndex);
  static void set_normalyear();
  static void set_leapyear();
  static bool is_leapyear(int year);
  static int days_per_month(int monthIndex, int year);
  static long calc_days(int day, int month, int year);
  static void calc_dmy(long days, int& day, int& month, int& year);
  static long make_abs_time(long days, long hundredths, int unit);
  static long date_to_julday(int day, int month, int year);
  static void julday_to_date(long julianDay, int& day, int& month, int& year);
  static int day_of_week(long days);

  // Decimal hours.
  static double DHMSToDecHrs(int days, int hours, int minutes, double seconds);
  // Splits decimal hours, rounded to the nearest second; negative values give
  // negative parts.
  static void DecHrsToHMS(double decimalHours, int& hours, int& minutes, int& seconds);
  static void DecHrsToDHMS(double decimalHours, int& days, int& hours, int& minutes,
                           int& seconds);

  // Timestamps (see above).
  static std::string MakeTimestamp(int day, int month, int year, int hours, int minutes,
                                   int seconds);
  static std::string GetDateFromTimestamp(const std::string& timestamp);
  static std::string GetTimeFromTimestamp(const std::string& timestamp);
  // -1, 0 or 1 as the first timestamp is earlier than, the same as or later than the
  // second.
  static int CompareTimestamps(const std::string& first, const std::string& second);
  // Seconds from the first timestamp to the second; false when either cannot be read.
  static bool GetDifferenceBetweenTimestamps(const std::string& first, const std::string& second,
                                             long& seconds);
};

}  // namespace HU_LIB
