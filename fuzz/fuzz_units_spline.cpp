// Arbitrary bytes as unit names, as a spline table and as a view mapping.
//
// The whole input is looked up as a unit name in both tables (any length, any
// bytes, NULs included) and split as a unit pair. Then the bytes are read as
// doubles: a spline type and slope constraint, x,y pairs for a table, query x
// values, and a scale, origins and points for a transformation matrix. Nothing
// may crash or trip the sanitizers (a float-to-int overflow included); a valid
// table must interpolate its own points.

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>
#include <vector>

#include "hy_util/display/transformation_matrix.h"
#include "hy_util/geometry/cubic_spline.h"
#include "hy_util/units/units_convert.h"

namespace {

void LookUpUnits(std::string_view unit) {
  std::string name;
  CHU_UnitsConvert::UnitsConvert(unit, 1.5, &name);
  CHU_UnitsConvert::UnitsConvert_Size(2.5, unit, &name);
  CHU_UnitsConvert::UnitsConvert_US_To_Metric(3.5, unit, nullptr);
  CHU_DRect rect(1, 2, 3, 4);
  CHU_UnitsConvert::UnitsConvert_US_To_Metric(rect, unit, &name);
  CHU_UnitsConvert::GetToUnits(unit, name);
}

std::vector<double> Doubles(const std::uint8_t* data, std::size_t size) {
  std::vector<double> values(size / sizeof(double));
  if (!values.empty()) std::memcpy(values.data(), data, values.size() * sizeof(double));
  return values;
}

// Small tables of moderate values with gaps that are not tiny: the natural spline
// must pass through their points to well within rounding.
bool Tame(const std::vector<double>& xs, const std::vector<double>& ys) {
  if (xs.size() > 64) return false;
  for (std::size_t i = 0; i < xs.size(); ++i) {
    if (!(std::abs(xs[i]) < 1e6 && std::abs(ys[i]) < 1e6)) return false;
    if (i > 0 && !(xs[i] - xs[i - 1] > 1e-3)) return false;
  }
  return true;
}

void Interpolate(const std::vector<double>& v, std::uint8_t selector) {
  const auto type = static_cast<CHU_CubicSpline2D::SplineType>(selector % 4);
  const std::size_t n = v.size() / 3;
  const std::vector<double> xs(v.begin(), v.begin() + n), ys(v.begin() + n, v.begin() + 2 * n);
  CHU_CubicSpline2D spline(static_cast<int>(n), xs.data(), ys.data(), type);
  if (n > 0) spline.AddFirstDerivativeConstraint(selector % static_cast<int>(n), v[2 * n]);
  for (std::size_t i = 2 * n; i < v.size(); ++i) spline.ComputeY(v[i]);
  if (!spline.IsValid() || type != CHU_CubicSpline2D::ST_NATURAL || !Tame(xs, ys)) return;
  for (std::size_t i = 0; i < n; ++i) {
    if (!(std::abs(spline.ComputeY(xs[i]) - ys[i]) <= 1e-3)) __builtin_trap();
  }
}

// A pixel position from any double: NaN and infinities give 0.
int Pixel(double v, double limit) { return std::isfinite(v) ? static_cast<int>(std::fmod(v, limit)) : 0; }

void MapView(const std::vector<double>& v) {
  if (v.size() < 6) return;
  CHU_TransformationMatrix m;
  m.put_Scale(v[0]);
  m.SetWorldOrigin(v[1], v[2]);
  m.SetDisplayOrigin(Pixel(v[3], 1e9), Pixel(v[4], 1e9));
  m.V2WMapping(Pixel(v[5], 1e6), v[0]);
  for (std::size_t i = 0; i + 1 < v.size(); i += 2) {
    CHU_ScreenPoint device;
    m.D2W2V(CHU_DPoint(v[i], v[i + 1]), device);
    CHU_DPoint world;
    m.D2V2W(device, world);
    m.D2W2VLengthX(v[i]);
    m.PointstoSC(static_cast<float>(std::fmod(v[i], 1e30)));
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  LookUpUnits(std::string_view(reinterpret_cast<const char*>(data), size));
  if (size < 1) return 0;
  const std::vector<double> values = Doubles(data + 1, size - 1);
  Interpolate(values, data[0]);
  MapView(values);
  return 0;
}
