#pragma once
// Arithmetic shared by the device conversions. Pixel results are truncated toward
// zero, never rounded. Values that do not fit an int saturate at its limits and NaN
// gives 0, so a degenerate mapping yields a far-off pixel instead of undefined
// behaviour. Divisions by a zero density or scale give 0 instead of infinity.

#include <climits>
#include <cmath>

namespace HU_PixelMath {

inline int Trunc(double value) {
  if (std::isnan(value)) return 0;
  if (value >= static_cast<double>(INT_MAX)) return INT_MAX;
  if (value <= static_cast<double>(INT_MIN)) return INT_MIN;
  return static_cast<int>(value);
}

inline int Clamp(long long value) {
  if (value > INT_MAX) return INT_MAX;
  if (value < INT_MIN) return INT_MIN;
  return static_cast<int>(value);
}

// origin + offset and origin - offset, saturating.
inline int Add(int origin, int offset) { return Clamp(static_cast<long long>(origin) + offset); }
inline int Sub(int origin, int offset) { return Clamp(static_cast<long long>(origin) - offset); }

inline double Div(double numerator, double denominator) {
  return denominator == 0.0 ? 0.0 : numerator / denominator;
}

}  // namespace HU_PixelMath
