#include "hy_util/core/date_time.h"

#include <algorithm>
#include <cctype>
#include <charconv>
#include <climits>
#include <cmath>
#include <cstdio>

#include "hy_util/platform/application.h"

namespace HU_LIB {

namespace {

// Process-wide settings of this module.
std::string g_dateFormat = "dd/mm/yy";
std::string g_dateSeparator = "/";
int g_dateOrder = 0;
std::string g_timeFormat = "hh:mm";
int g_daysOfFebruary = 28;

constexpr int kMonthDays[12] = {31, 0, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};

// Scans text with the C runtime's scanf rules; the number of fields converted
// (0 also when the text is empty).
template <typename... Out>
int ScanText(const std::string& text, const char* pattern, Out... out) {
  const int n = std::sscanf(text.c_str(), pattern, out...);
  return n < 0 ? 0 : n;
}

std::string ToLower(std::string text) {
  std::transform(text.begin(), text.end(), text.begin(),
                 [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
  return text;
}

int FullYear(int year) { return year < 1001 ? year + 1900 : year; }

// Fields of a date text in the given order (0 d-m-y, 1 m-d-y, 2 y-m-d).
void AssignInOrder(int order, int a, int b, int c, int& day, int& month, int& year) {
  if (order == 1) {
    month = a, day = b, year = c;
  } else if (order == 2) {
    year = a, month = b, day = c;
  } else {
    day = a, month = b, year = c;
  }
}

// Julian day number of a Gregorian date (Fliegel and Van Flandern).
constexpr long JulianDay(long d, long m, long y) {
  const long a = (m - 14) / 12;
  return d - 32075 + 1461 * (y + 4800 + a) / 4 + 367 * (m - 2 - a * 12) / 12 -
         3 * ((y + 4900 + a) / 100) / 4;
}

constexpr long kJulianDayBeforeEpoch = JulianDay(31, 12, 1899);
static_assert(kJulianDayBeforeEpoch == 2415020);
// Largest day count whose year still fits an int.
constexpr long kMaxDays = JulianDay(31, 12, INT_MAX) - kJulianDayBeforeEpoch;

// The second clock reader: hours, a colon, minutes, a colon or point, seconds.
long ReadClockWithSeconds(const std::string& text) {
  int h = 0, m = 0, s = 0;
  if (ScanText(text, "%d%*1[:]%d%*1[:.]%d", &h, &m, &s) != 3) return -1;
  return HU_DateTime::calc_time(h, m, s);
}

std::string Trimmed(const std::string& text) {
  const std::size_t first = text.find_first_not_of(" \t");
  if (first == std::string::npos) return {};
  return text.substr(first, text.find_last_not_of(" \t") - first + 1);
}

bool TimestampSeconds(const std::string& timestamp, long& seconds) {
  int day = 0, month = 0, year = 0;
  if (HU_DateTime::DecodeDate(HU_DateTime::GetDateFromTimestamp(timestamp), day, month, year) != 3)
    return false;
  if (year < 100) year = HU_DateTime::Yr2ToYr4(year);
  const long days = HU_DateTime::calc_days(day, month, year);
  int hours = 0, minutes = 0, secs = 0;
  if (days < 0 ||
      HU_DateTime::DecodeTime(HU_DateTime::GetTimeFromTimestamp(timestamp), hours, minutes, secs) < 2)
    return false;
  const long time = HU_DateTime::calc_time(hours, minutes, secs);
  if (time < 0) return false;
  seconds = HU_DateTime::make_abs_time(days, time, 0);
  return seconds >= 0;
}

}  // namespace

// ---- Settings ---------------------------------------------------------------

std::string HU_DateTime::GetDefaultDateFormat() {
  return HU_GetApplication().GetProfileString("CONFIG", "DATE_FORMAT", "DD/MM/YYYY");
}

int HU_DateTime::GetDefaultDateOrder() {
  const std::string format = ToLower(GetDefaultDateFormat());
  if (format == "mm/dd/yyyy") return 1;
  if (format == "yyyy/mm/dd") return 2;
  return 0;
}

int HU_DateTime::Yr2ToYr4(int year) {
  if (year >= 100) return year;
  const std::string setting = Trimmed(HU_GetApplication().GetProfileString("CONFIG", "YEAR_XX", ""));
  int century = 0;
  const auto [end, ec] = std::from_chars(setting.data(), setting.data() + setting.size(), century);
  const bool is2000 = ec == std::errc() && end == setting.data() + setting.size() && century == 2000;
  return (is2000 ? 2000 : 1900) + year;
}

// ---- Writing ----------------------------------------------------------------

void HU_DateTime::EncodeDate(int order, int day, int month, int year, std::string& text) {
  char buffer[64];
  if (order == 1) {
    std::snprintf(buffer, sizeof buffer, "%02d/%02d/%4d", month, day, year);
  } else if (order == 2) {
    std::snprintf(buffer, sizeof buffer, "%4d/%02d/%02d", year, month, day);
  } else {
    std::snprintf(buffer, sizeof buffer, "%02d/%02d/%4d", day, month, year);
  }
  text = buffer;
}

void HU_DateTime::EncodeDate(int day, int month, int year, std::string& text) {
  EncodeDate(GetDefaultDateOrder(), day, month, year, text);
}

void HU_DateTime::set_date_fmt(const std::string& pattern) {
  // The separator follows the leading run of lower-case pattern letters, so an
  // upper-case pattern has none and gets "/"; the order is judged after
  // lower-casing.
  char separator = '/';
  if (ScanText(pattern, "%*[dmy]%c", &separator) != 1) separator = '/';
  g_dateSeparator = std::string(1, separator);
  const int order = decode_order(ToLower(pattern));
  g_dateOrder = order < 0 ? 0 : order;
  static const char* const kPatterns[] = {"dd%smm%syy", "mm%sdd%syy", "yy%smm%sdd"};
  char buffer[32];
  std::snprintf(buffer, sizeof buffer, kPatterns[g_dateOrder], g_dateSeparator.c_str(),
                g_dateSeparator.c_str());
  g_dateFormat = buffer;
}

std::string HU_DateTime::get_date_fmt() { return g_dateFormat; }
std::string HU_DateTime::get_date_sep() { return g_dateSeparator; }
int HU_DateTime::get_date_order() { return g_dateOrder; }

int HU_DateTime::decode_order(const std::string& text) {
  if (text.empty()) return -1;
  switch (text.front()) {
    case 'd': return 0;
    case 'm': return 1;
    case 'y': return 2;
    default: return -1;
  }
}

void HU_DateTime::date_to_str(int day, int month, int year, std::string& text) {
  int parts[3] = {day, month, year % 100};
  if (g_dateOrder == 1) {
    parts[0] = month, parts[1] = day;
  } else if (g_dateOrder == 2) {
    parts[0] = year % 100, parts[2] = day;
  }
  const char* sep = g_dateSeparator.c_str();
  char buffer[64];
  std::snprintf(buffer, sizeof buffer, "%02d%s%02d%s%02d", parts[0], sep, parts[1], sep, parts[2]);
  text = buffer;
}

void HU_DateTime::day_to_date(long days, std::string& text) {
  int day = 0, month = 0, year = 0;
  calc_dmy(days, day, month, year);
  date_to_str(day, month, year, text);
}

void HU_DateTime::time_to_str(long hundredths, std::string& text) {
  const std::size_t sepAt = g_timeFormat.find_first_not_of("hms");
  const std::string sep = sepAt == std::string::npos ? ":" : g_timeFormat.substr(sepAt, 1);
  char buffer[64];
  std::snprintf(buffer, sizeof buffer, "%02ld%s%02ld", hundredths / 360000, sep.c_str(),
                (hundredths / 6000) % 60);
  text = buffer;
}

// ---- Reading ----------------------------------------------------------------

long HU_DateTime::str_to_date(const std::string& text, int& day, int& month, int& year) {
  int a = 0, b = 0, c = 0;
  std::string rest(text.size() + 1, '\0');
  if (ScanText(text, "%d%*1[./-]%d%*1[./-]%d%s", &a, &b, &c, rest.data()) != 3) return -1;
  AssignInOrder(g_dateOrder, a, b, c, day, month, year);
  if (year < 50) year += 2000;
  if (year >= 1001) year -= 1900;
  return calc_days(day, month, year);
}

int HU_DateTime::DecodeDate(const std::string& text, int& day, int& month, int& year) {
  int a = 0, b = 0, c = 0;
  std::string rest(text.size() + 1, '\0');
  const int n = ScanText(text, "%d%*1[./-]%d%*1[./-]%d%s", &a, &b, &c, rest.data());
  if (n >= 3) AssignInOrder(GetDefaultDateOrder(), a, b, c, day, month, year);
  return n;
}

int HU_DateTime::DecodeTime(const std::string& text, int& hours, int& minutes, int& seconds) {
  hours = minutes = seconds = 0;
  return ScanText(text, "%d%*[:.]%d%*[:.]%d", &hours, &minutes, &seconds);
}

long HU_DateTime::str_to_time(const std::string& text, int& hours, int& minutes) {
  int h = 0, m = 0;
  char meridiem[2] = {};
  const int n = ScanText(text, "%d%*[:.]%d%1[aApP]", &h, &m, meridiem);
  if (h < 0 || h >= 24 || m < 0 || m >= 60) return -1;
  // Twelve with a "p" becomes 24 and is rejected below.
  if (n == 3 && (meridiem[0] == 'p' || meridiem[0] == 'P')) h += 12;
  if (h >= 24) return -1;
  hours = h;
  minutes = m;
  return (h * 60L + m) * 6000L;
}

long HU_DateTime::calc_time(int hours, int minutes, int seconds) {
  if (hours < 0 || hours > 23 || minutes < 0 || minutes > 59 || seconds < 0 || seconds > 59)
    return -1;
  return ((hours * 60L + minutes) * 60L + seconds) * 100L;
}

bool HU_DateTime::is_valid_time(const std::string& text) { return abs_time(text) >= 0; }

bool HU_DateTime::is_valid_date(const std::string& text) { return date_to_day(text) >= 0; }

long HU_DateTime::abs_time(const std::string& text) {
  int hours = 0, minutes = 0;
  const long time = str_to_time(text, hours, minutes);
  return time >= 0 ? time : ReadClockWithSeconds(text);
}

long HU_DateTime::date_to_day(const std::string& text) {
  int day = 0, month = 0, year = 0;
  return str_to_date(text, day, month, year);
}

// ---- Calendar ---------------------------------------------------------------

int HU_DateTime::num_days(int monthIndex) {
  if (monthIndex < 0 || monthIndex > 11) return -1;
  return monthIndex == 1 ? g_daysOfFebruary : kMonthDays[monthIndex];
}

void HU_DateTime::set_normalyear() { g_daysOfFebruary = 28; }
void HU_DateTime::set_leapyear() { g_daysOfFebruary = 29; }

bool HU_DateTime::is_leapyear(int year) {
  const long full = year < 1001 ? year + 1900L : year;
  return (full % 4 == 0 && full % 100 != 0) || full % 400 == 0;
}

int HU_DateTime::days_per_month(int monthIndex, int year) {
  const int saved = g_daysOfFebruary;
  g_daysOfFebruary = is_leapyear(year) ? 29 : 28;
  const int days = num_days(monthIndex);
  g_daysOfFebruary = saved;
  return days;
}

long HU_DateTime::calc_days(int day, int month, int year) {
  if (year < 0 || month < 1 || month > 12) return -1;
  const int full = FullYear(year);
  if (full < 1900 || day < 1 || day > days_per_month(month - 1, year)) return -1;
  return date_to_julday(day, month, full) - kJulianDayBeforeEpoch;
}

void HU_DateTime::calc_dmy(long days, int& day, int& month, int& year) {
  if (days < 1 || days > kMaxDays) {
    day = month = year = 0;
    return;
  }
  int full = 0;
  julday_to_date(days + kJulianDayBeforeEpoch, day, month, full);
  year = full - 1900 < 1001 ? full - 1900 : full;
}

long HU_DateTime::make_abs_time(long days, long hundredths, int unit) {
  long perDay = 0, divisor = 1;
  switch (unit) {
    case 0: perDay = 86400, divisor = 100; break;
    case 1: perDay = 1440, divisor = 6000; break;
    case 2: perDay = 24, divisor = 360000; break;
    default: return 0;
  }
  long result = 0;
  // Overflow cannot come from real dates; report it rather than wrap.
  if (__builtin_mul_overflow(days, perDay, &result) ||
      __builtin_add_overflow(result, hundredths / divisor, &result))
    return -1;
  return result;
}

long HU_DateTime::date_to_julday(int day, int month, int year) {
  return JulianDay(day, month, year);
}

void HU_DateTime::julday_to_date(long julianDay, int& day, int& month, int& year) {
  if (julianDay < 0 || julianDay > kMaxDays + kJulianDayBeforeEpoch) {
    day = month = year = 0;
    return;
  }
  long l = julianDay + 68569;
  const long n = 4 * l / 146097;
  l -= (146097 * n + 3) / 4;
  const long i = 4000 * (l + 1) / 1461001;
  l = l - 1461 * i / 4 + 31;
  const long j = 80 * l / 2447;
  day = static_cast<int>(l - 2447 * j / 80);
  l = j / 11;
  month = static_cast<int>(j + 2 - 12 * l);
  year = static_cast<int>(100 * (n - 49) + i + l);
}

int HU_DateTime::day_of_week(long days) { return static_cast<int>(((days % 7) + 7) % 7); }

// ---- Decimal hours ------------------------------------------------------------

double HU_DateTime::DHMSToDecHrs(int days, int hours, int minutes, double seconds) {
  return days * 24.0 + hours + minutes / 60.0 + seconds / 3600.0;
}

namespace {

// Whole seconds of the decimal hours, or 0 when they do not fit the int parts.
long long RoundedSeconds(double decimalHours) {
  if (!std::isfinite(decimalHours) || std::fabs(decimalHours) > INT_MAX) return 0;
  return std::llround(decimalHours * 3600.0);
}

}  // namespace

void HU_DateTime::DecHrsToHMS(double decimalHours, int& hours, int& minutes, int& seconds) {
  const long long total = RoundedSeconds(decimalHours);
  hours = static_cast<int>(total / 3600);
  minutes = static_cast<int>(total / 60 % 60);
  seconds = static_cast<int>(total % 60);
}

void HU_DateTime::DecHrsToDHMS(double decimalHours, int& days, int& hours, int& minutes,
                               int& seconds) {
  const long long total = RoundedSeconds(decimalHours);
  days = static_cast<int>(total / 86400);
  hours = static_cast<int>(total / 3600 % 24);
  minutes = static_cast<int>(total / 60 % 60);
  seconds = static_cast<int>(total % 60);
}

// ---- Timestamps ---------------------------------------------------------------

std::string HU_DateTime::MakeTimestamp(int day, int month, int year, int hours, int minutes,
                                       int seconds) {
  std::string date;
  EncodeDate(day, month, year, date);
  char time[48];
  std::snprintf(time, sizeof time, " %02d:%02d:%02d", hours, minutes, seconds);
  return date + time;
}

std::string HU_DateTime::GetDateFromTimestamp(const std::string& timestamp) {
  const std::string text = Trimmed(timestamp);
  return text.substr(0, text.find_first_of(" \t"));
}

std::string HU_DateTime::GetTimeFromTimestamp(const std::string& timestamp) {
  const std::string text = Trimmed(timestamp);
  const std::size_t blank = text.find_first_of(" \t");
  const std::string time = blank == std::string::npos ? std::string() : Trimmed(text.substr(blank));
  return time.empty() ? "00:00:00" : time;
}

int HU_DateTime::CompareTimestamps(const std::string& first, const std::string& second) {
  long a = 0, b = 0;
  const bool readA = TimestampSeconds(first, a);
  const bool readB = TimestampSeconds(second, b);
  if (readA != readB) return readA ? 1 : -1;
  if (!readA || a == b) return 0;
  return a < b ? -1 : 1;
}

bool HU_DateTime::GetDifferenceBetweenTimestamps(const std::string& first,
                                                 const std::string& second, long& seconds) {
  long a = 0, b = 0;
  if (!TimestampSeconds(first, a) || !TimestampSeconds(second, b)) return false;
  seconds = b - a;
  return true;
}

}  // namespace HU_LIB
