#pragma once
// The fast path of the library's number readers: a plain decimal ("-12.345") with
// at most 15 digits forms an integer that a double holds exactly, and dividing it
// by the exact power of ten gives the correctly rounded value, the same double
// that strtod and std::from_chars give. Model and grid text is mostly such
// numbers; the readers send everything else to their general path.

#include <cstdint>

namespace hu_plain_decimal {

inline constexpr double kPowersOfTen[16] = {1e0, 1e1, 1e2,  1e3,  1e4,  1e5,  1e6,  1e7,
                                            1e8, 1e9, 1e10, 1e11, 1e12, 1e13, 1e14, 1e15};

inline bool IsDigit(char ch) { return static_cast<unsigned char>(ch - '0') < 10; }

}  // namespace hu_plain_decimal

// Reads a plain decimal (optional '-', digits, optional '.' and digits, at most 15
// digits in all) from the start of [first, last). Returns where it stopped, or
// nullptr when the text does not start with one; the caller checks that the token
// ends there.
inline const char* HU_ScanPlainDecimal(const char* first, const char* last, double& value) {
  using hu_plain_decimal::IsDigit;
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
  const double magnitude = static_cast<double>(mantissa) / hu_plain_decimal::kPowersOfTen[fractionDigits];
  value = negative ? -magnitude : magnitude;
  return p;
}

