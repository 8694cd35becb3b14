#include "hy_util/core/str_num_conversion.h"

#include <charconv>
#include <system_error>
#include <vector>

namespace HU_LIB {

namespace {

bool IsBlank(char c) {
  return c == ' ' || c == '\t' || c == '\n' || c == '\v' || c == '\f' || c == '\r';
}

// Start of the number: after leading white space and a "+" that from_chars would
// refuse ("-" is left for from_chars itself).
const char* NumberStart(const std::string& text) {
  const char* p = text.data();
  const char* end = p + text.size();
  while (p != end && IsBlank(*p)) ++p;
  if (p != end && *p == '+' && p + 1 != end && *(p + 1) != '-' && *(p + 1) != '+') ++p;
  return p;
}

template <typename T>
T ParseLeading(const std::string& text, T defaultValue) {
  const char* first = NumberStart(text);
  T value{};
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
  return ParseLeading<float>(text, defaultValue);
}

int HU_StrNumConversion::StringToInt(const std::string& text, int defaultValue) {
  return ParseLeading<int>(text, defaultValue);
}

std::size_t HU_StrNumConversion::CountDecimalPlaces(const std::string& text) {
  const std::size_t point = text.find('.');
  return point == std::string::npos ? 0 : text.size() - point - 1;
}

}  // namespace HU_LIB
