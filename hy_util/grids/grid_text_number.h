#pragma once
// Numbers in ESRI grid text, parsed without the process's locale (a host may set
// a decimal-comma one), so that it never changes what is read.
//
// A number is the whole token in the C syntax of strtod: optional sign, digits
// with an optional point ("1.", ".5E+02" are fine), optional exponent, or the
// words "nan" and "inf". Anything left over makes the token not a number.
//
// Grid text is mostly short plain decimals ("-12.345"), so those take the fast
// path of HU_ScanPlainDecimal; everything else (exponents, long digit strings,
// words) goes to std::from_chars.

#include <charconv>
#include <cmath>
#include <string_view>
#include <system_error>

#include "hy_util/core/plain_decimal.h"

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
