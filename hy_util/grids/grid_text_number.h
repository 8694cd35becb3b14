#pragma once
// Numbers in ESRI grid text, parsed without the process's locale (a host may set
// a decimal-comma one), so that it never changes what is read.
//
// A number is the whole token in the C syntax of strtod: optional sign, digits
// with an optional point ("1.", ".5E+02" are fine), optional exponent, or the
// words "nan" and "inf". Anything left over makes the token not a number.
//
// Grid text is mostly short plain decimals ("-12.345"), so those take a fast
// path: with at most 15 digits the digits form an integer that a double holds
// exactly, and dividing it by the exact power of ten gives the correctly rounded
// value, the same double that std::from_chars gives. Everything else (exponents,
// long digit strings, words) goes to std::from_chars.

#include <charconv>
#include <cmath>
#include <cstdint>
#include <string_view>
#include <system_error>

namespace hu_grid_text {

inline constexpr double kPowersOfTen[16] = {1e0, 1e1, 1e2,  1e3,  1e4,  1e5,  1e6,  1e7,
                                            1e8, 1e9, 1e10, 1e11, 1e12, 1e13, 1e14, 1e15};

inline bool IsDigit(char ch) { return static_cast<unsigned char>(ch - '0') < 10; }

}  // namespace hu_grid_text

// Reads a plain decimal (optional '-', digits, optional '.' and digits, at most 15
// digits in all) from the start of [first, last). Returns where it stopped, or
// nullptr when the text does not start with one; the caller checks that the token
// ends there.
inline const char* HU_ScanPlainDecimal(const char* first, const char* last, double& value) {
  using hu_grid_text::IsDigit;
  const bool negative = first != last && *first == '-';
  const char* p = first + (negative ? 1 : 0);
  std::uint64_t mantissa = 0;
  const char* const digitsStart = p;
  for (; p != last && IsDigit(*p); ++p) mantissa = mantissa * 10 + static_cast<unsigned>(*p - '0');
  int digits = static_cast<int>(p - digitsStart);
  int fractionDigits = 0;
  if (p != last && *p == '.') {
    const char* const fractionStart = ++p;
    for (; p != last && IsDigit(*p); ++p) mantissa = mantissa * 10 + static_cast<unsigned>(*p - '0');
    fractionDigits = static_cast<int>(p - fractionStart);
    digits += fractionDigits;
  }
  if (digits == 0 || digits > 15) return nullptr;
  const double magnitude = static_cast<double>(mantissa) / hu_grid_text::kPowersOfTen[fractionDigits];
  value = negative ? -magnitude : magnitude;
  return p;
}

inline bool HU_ParseGridNumber(std::string_view token, double& value) {
  const char* first = token.data();
  const char* last = first + token.size();
  if (HU_ScanPlainDecimal(first, last, value) == last) return true;
  if (first != last && *first == '+') {  // from_chars takes no plus sign
    ++first;
    if (first != last && *first == '-') return false;
  }
  if (first == last) return false;
  const auto [end, ec] = std::from_chars(first, last, value);
  if (ec == std::errc::result_out_of_range && end == last) {
    // Beyond the range of a double: infinity, or zero for a tiny negative exponent,
    // as strtod gives.
    const std::string_view digits(first, static_cast<std::size_t>(last - first));
    const std::size_t e = digits.find_first_of("eE");
    const bool tiny = e != std::string_view::npos && e + 1 < digits.size() && digits[e + 1] == '-';
    const bool negative = *first == '-';
    value = tiny ? (negative ? -0.0 : 0.0) : (negative ? -HUGE_VAL : HUGE_VAL);
    return true;
  }
  return ec == std::errc() && end == last;
}

// An integer token; a real with no fractional part ("15.0") is accepted too.
inline bool HU_ParseGridInteger(std::string_view token, std::int32_t& value) {
  double real = 0.0;
  if (!HU_ParseGridNumber(token, real) || !std::isfinite(real)) return false;
  if (real != std::trunc(real) || real < -2147483648.0 || real > 2147483647.0) return false;
  value = static_cast<std::int32_t>(real);
  return true;
}
