#pragma once
// Numbers read the way the C runtime's sscanf ("%d", "%f", "%lf") and strtod read
// them in the "C" locale, without their cost and without the process's locale.
//
// The exchange formats of this subsystem are defined by what those C functions
// read: "12.5abc" is 12.5 followed by "abc", "1e" is 1, "0x1p3" is 8, "inf" and
// "nan" are numbers, an int that overflows wraps as glibc stores it. These helpers
// give exactly those values, so that a reader built on them returns the same
// numbers a sscanf-based reader would, while plain decimals ("-12.345", the
// overwhelming majority in model files) take a fast path: up to 15 digits form an
// integer a double holds exactly, and one division by an exact power of ten gives
// the correctly rounded value, the same double strtod gives.
//
// Every scanner takes [p, end), skips leading white space as "%d" and "%f" do,
// and returns where the number ended, or nullptr when no number could be read
// (the value is then left alone, as sscanf leaves it).

#include <charconv>
#include <cmath>
#include <cstdint>
#include <limits>
#include <system_error>

#include "hy_util/core/plain_decimal.h"

namespace hu_cscan {

inline bool IsSpace(char c) { return c == ' ' || (c >= '\t' && c <= '\r'); }
inline bool IsDigit(char c) { return static_cast<unsigned char>(c - '0') < 10; }
inline bool IsHexDigit(char c) {
  return IsDigit(c) || static_cast<unsigned char>((c | 0x20) - 'a') < 6;
}
inline char Lower(char c) { return static_cast<char>(c | 0x20); }

inline const char* SkipSpace(const char* p, const char* end) {
  while (p != end && IsSpace(*p)) ++p;
  return p;
}

// "%d": optional sign and decimal digits. The digits are read as a 64-bit long
// (saturating, as strtol does) and then stored into 32 bits, which wraps: glibc
// reads 4294967297 as 1 and 99999999999999999999 as -1.
inline const char* ScanInt(const char* p, const char* end, std::int32_t& value) {
  p = SkipSpace(p, end);
  bool negative = false;
  if (p != end && (*p == '-' || *p == '+')) negative = *p++ == '-';
  const char* const digits = p;
  std::uint64_t magnitude = 0;
  bool saturated = false;
  // Up to 19 digits cannot overflow 64 bits; only longer numbers need the check.
  for (const char* quick = end - p > 19 ? p + 19 : end; p != quick && IsDigit(*p); ++p)
    magnitude = magnitude * 10 + static_cast<unsigned>(*p - '0');
  for (; p != end && IsDigit(*p); ++p) {
    const unsigned d = static_cast<unsigned>(*p - '0');
    if (magnitude > (std::numeric_limits<std::uint64_t>::max() - d) / 10) saturated = true;
    else magnitude = magnitude * 10 + d;
  }
  if (p == digits) return nullptr;
  constexpr std::uint64_t kLongMax = static_cast<std::uint64_t>(std::numeric_limits<std::int64_t>::max());
  std::int64_t wide;
  if (negative) wide = saturated || magnitude > kLongMax ? std::numeric_limits<std::int64_t>::min()
                                                         : -static_cast<std::int64_t>(magnitude);
  else wide = saturated || magnitude > kLongMax ? std::numeric_limits<std::int64_t>::max()
                                                : static_cast<std::int64_t>(magnitude);
  value = static_cast<std::int32_t>(static_cast<std::uint32_t>(static_cast<std::uint64_t>(wide)));
  return p;
}

// The extent of a real number as scanf collects it, and how to convert it.
struct RealText {
  const char* start = nullptr;  // first character after the sign
  const char* end = nullptr;    // one past the last character scanf consumes
  bool negative = false;
  enum Kind { kDecimal, kHex, kInfinity, kNaN } kind = kDecimal;
};

inline bool MatchWord(const char*& p, const char* end, const char* word) {
  const char* q = p;
  for (; *word; ++word, ++q)
    if (q == end || Lower(*q) != *word) return false;
  p = q;
  return true;
}

// The characters "%f" consumes: sign, then "inf"/"infinity"/"nan" (any case), a
// hexadecimal "0x" number with an optional "p" exponent, or decimal digits with an
// optional point and "e" exponent. At least one mantissa digit is needed; an
// exponent letter is consumed even when no digits follow it ("1e" reads as 1).
inline bool MatchReal(const char* p, const char* end, RealText& text) {
  p = SkipSpace(p, end);
  if (p != end && (*p == '-' || *p == '+')) text.negative = *p++ == '-';
  text.start = p;
  if (p == end) return false;
  if (Lower(*p) == 'i') {
    if (!MatchWord(p, end, "inf")) return false;
    if (p != end && Lower(*p) == 'i' && !MatchWord(p, end, "inity")) return false;
    text.kind = RealText::kInfinity;
  } else if (Lower(*p) == 'n') {
    if (!MatchWord(p, end, "nan")) return false;
    text.kind = RealText::kNaN;
  } else {
    const bool hex = *p == '0' && p + 1 != end && Lower(p[1]) == 'x';
    if (hex) p += 2;
    const auto isMantissaDigit = hex ? IsHexDigit : IsDigit;
    int digits = 0;
    for (; p != end && isMantissaDigit(*p); ++p) ++digits;
    if (p != end && *p == '.')
      for (++p; p != end && isMantissaDigit(*p); ++p) ++digits;
    if (digits == 0) return false;
    if (p != end && Lower(*p) == (hex ? 'p' : 'e')) {
      ++p;
      if (p != end && (*p == '-' || *p == '+')) ++p;
      while (p != end && IsDigit(*p)) ++p;
    }
    text.kind = hex ? RealText::kHex : RealText::kDecimal;
  }
  text.end = p;
  return true;
}

// True when a decimal or hexadecimal mantissa-and-exponent text is of large
// magnitude (its value overflows rather than underflows when out of range).
inline bool IsLargeMagnitude(const RealText& text) {
  const bool hex = text.kind == RealText::kHex;
  const char* p = text.start + (hex ? 2 : 0);
  const auto isMantissaDigit = hex ? IsHexDigit : IsDigit;
  long position = 0;  // digits before the point, after leading zeros; minus zeros after it
  bool seen = false;
  for (; p != text.end && isMantissaDigit(*p); ++p) {
    if (*p != '0') seen = true;
    if (seen) ++position;
  }
  if (p != text.end && *p == '.')
    for (++p; p != text.end && isMantissaDigit(*p); ++p) {
      if (*p != '0') seen = true;
      if (!seen) --position;
    }
  long exponent = 0;
  if (p != text.end && Lower(*p) == (hex ? 'p' : 'e')) {
    ++p;
    const bool negative = p != text.end && *p == '-';
    if (p != text.end && (*p == '-' || *p == '+')) ++p;
    for (; p != text.end && IsDigit(*p); ++p) exponent = exponent < 100000000 ? exponent * 10 + (*p - '0') : exponent;
    if (negative) exponent = -exponent;
  }
  return position + exponent > 0;
}

template <class Real>
Real ConvertReal(const RealText& text) {
  Real magnitude = 0;
  if (text.kind == RealText::kInfinity) {
    magnitude = std::numeric_limits<Real>::infinity();
  } else if (text.kind == RealText::kNaN) {
    magnitude = std::numeric_limits<Real>::quiet_NaN();
  } else {
    const bool hex = text.kind == RealText::kHex;
    const char* first = text.start + (hex ? 2 : 0);
    const auto [stop, ec] = std::from_chars(first, text.end, magnitude,
                                            hex ? std::chars_format::hex : std::chars_format::general);
    (void)stop;
    if (ec == std::errc::result_out_of_range)
      magnitude = IsLargeMagnitude(text) ? std::numeric_limits<Real>::infinity() : Real(0);
    else if (ec != std::errc())
      magnitude = 0;  // "0x." and the like: no digits where from_chars wants them
  }
  return text.negative ? -magnitude : magnitude;
}

// A plain decimal ("-12.345", at most 15 digits, no exponent) from p, which is
// not white space. Returns where it stopped, or nullptr when the text is not plain
// and must take the general path.
inline const char* ScanPlainDecimal(const char* p, const char* end, double& value) {
  double plain = 0.0;
  const char* const stop = HU_ScanPlainDecimal(p, end, plain);
  if (stop == nullptr || (stop != end && (Lower(*stop) == 'e' || Lower(*stop) == 'x'))) return nullptr;
  value = plain;
  return stop;
}

// "%lf".
inline const char* ScanDouble(const char* p, const char* end, double& value) {
  p = SkipSpace(p, end);
  if (const char* stop = ScanPlainDecimal(p, end, value)) return stop;
  RealText text;
  if (!MatchReal(p, end, text)) return nullptr;
  value = ConvertReal<double>(text);
  return text.end;
}

// "%f" into a float: the decimal text rounded once, straight to float, as strtof
// does (not through a double).
inline const char* ScanFloat(const char* p, const char* end, float& value) {
  RealText text;
  if (!MatchReal(p, end, text)) return nullptr;
  value = ConvertReal<float>(text);
  return text.end;
}

// strtod's value of a text: the longest number at its start, 0 when there is none.
// It differs from "%lf" only where scanf gives up and strtod backs off: "0x" is 0
// and "infinit" is infinity.
inline double StrToD(const char* p, const char* end) {
  double value = 0;
  if (ScanDouble(p, end, value)) return value;
  p = SkipSpace(p, end);
  const bool negative = p != end && *p == '-';
  if (p != end && (*p == '-' || *p == '+')) ++p;
  if (MatchWord(p, end, "inf")) return negative ? -HUGE_VAL : HUGE_VAL;
  return p != end && *p == '0' && negative ? -0.0 : 0.0;
}

}  // namespace hu_cscan
