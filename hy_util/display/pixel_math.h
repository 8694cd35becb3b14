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

// origin + trunc(offset) and origin - trunc(offset), saturating. Summed as doubles,
// which are exact for every pixel position an int can hold.
inline int Add(int origin, double offset) { return Trunc(origin + std::trunc(offset)); }
inline int Sub(int origin, double offset) { return Trunc(origin - std::trunc(offset)); }

inline double Div(double numerator, double denominator) {
  return denominator == 0.0 ? 0.0 : numerator / denominator;
}

}  // namespace HU_PixelMath
