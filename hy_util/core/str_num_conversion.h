#pragma once
// HU_LIB::HU_StrNumConversion: numbers to and from standard strings.
//
// Parsing follows the C runtime's strtof and strtol rules in the "C" locale (these
// texts come from files, so "." is always the decimal point): leading white space
// and a sign are accepted, then the longest number that can be read; anything after
// it is ignored. Failures never raise: the caller's default comes back when no
// number can be read or the value is out of range.

#include <cstddef>
#include <string>

namespace HU_LIB {

class HU_StrNumConversion {
 public:
  HU_StrNumConversion() = delete;

  // The value with exactly `precision` decimals, as "%.3f" gives for 3, but always
  // with a "." whatever the process locale (these texts go into files). Text longer
  // than the classic 16-character buffer is returned in full; a negative precision
  // falls back to the one-argument form.
  static std::string FloatToString(float value, int precision);
  // Six decimals, as "%f" would give.
  static std::string FloatToString(float value);
  static std::string IntToString(int value);

  static float StringToFloat(const std::string& text, float defaultValue);
  static int StringToInt(const std::string& text, int defaultValue);

  // Characters after the first "."; 0 when there is none.
  static std::size_t CountDecimalPlaces(const std::string& text);
};

}  // namespace HU_LIB
