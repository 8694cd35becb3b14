#include "hy_util/core/str_num_conversion.h"

#include <locale.h>

#include <cerrno>
#include <charconv>
#include <cstdlib>
#include <system_error>
#include <vector>

namespace HU_LIB {

namespace {

bool IsBlank(char c) {
  return c == ' ' || c == '\t' || c == '\n' || c == '\v' || c == '\f' || c == '\r';
}

// Start of an integer: after leading white space and a "+" that from_chars would
// refuse ("-" is left for from_chars itself).
const char* NumberStart(const std::string& text) {
  const char* p = text.data();
  const char* end = p + text.size();
  while (p != end && IsBlank(*p)) ++p;
  if (p != end && *p == '+' && p + 1 != end && *(p + 1) != '-' && *(p + 1) != '+') ++p;
  return p;
}

int ParseLeadingInt(const std::string& text, int defaultValue) {
  const char* first = NumberStart(text);
  int value = 0;
  const auto [ptr, ec] = std::from_chars(first, text.data() + text.size(), value);
  if (ec != std::errc() || ptr == first) return defaultValue;
  return value;
}

}  // namespace

std::string HU_StrNumConversion::FloatToString(float value, int precision) {
  if (precision < 0) return FloatToString(value);
  // Room for the 39 integer digits of the largest float, a sign and a point.
  std::vector<char> buffer(static_cast<std::size_t>(precision) + 48);
  const auto [end, ec] = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value,
                                       std::chars_format::fixed, precision);
  if (ec != std::errc()) return std::to_string(value);
  return std::string(buffer.data(), end);
}

std::string HU_StrNumConversion::FloatToString(float value) { return FloatToString(value, 6); }

std::string HU_StrNumConversion::IntToString(int value) { return std::to_string(value); }

float HU_StrNumConversion::StringToFloat(const std::string& text, float defaultValue) {
  // strtof's rules (hexadecimal, "inf" and "nan" included) in the "C" locale, so a
  // "." is the decimal point whatever the user's settings.
  static const locale_t classic = newlocale(LC_ALL_MASK, "C", static_cast<locale_t>(0));
  const char* first = text.c_str();
  char* end = nullptr;
  errno = 0;
  const float value = strtof_l(first, &end, classic);
  if (end == first || errno == ERANGE) return defaultValue;
  return value;
}

int HU_StrNumConversion::StringToInt(const std::string& text, int defaultValue) {
  return ParseLeadingInt(text, defaultValue);
}

std::size_t HU_StrNumConversion::CountDecimalPlaces(const std::string& text) {
  const std::size_t point = text.find('.');
  return point == std::string::npos ? 0 : text.size() - point - 1;
}

}  // namespace HU_LIB
