#pragma once
// CHU_CubicSpline2D: a cubic spline through a tabulated function y(x) (rating
// curves, stage-storage tables), one cubic per interval between neighbouring points.
//
// Types:
//   ST_NATURAL               the classical interpolating spline, zero second
//                            derivative at both ends; slope constraints are ignored.
//   ST_CONSTRAINED           slopes from the neighbouring secants (zero at local
//                            extrema), so the curve never overshoots the data between
//                            points; a point may be given a fixed first derivative.
//   ST_CONSTRAINED_MONOTONE  as ST_CONSTRAINED, then slopes are made non-negative and
//                            no steeper than the secant to their left, so the curve
//                            through non-decreasing data never decreases.
// The constrained types keep their polynomials in absolute x, so a table far from
// x = 0 loses digits to cancellation; the natural type works relative to each
// interval's start.
//
// ComputeY finds the interval by binary search: the first interval whose right end
// is at or beyond x. Outside the table the end cubics are extrapolated.
//
// Degenerate tables, which the classic class left undefined, are defined here:
// no points gives NaN everywhere; one point gives its y everywhere; x values that
// are not finite or not strictly increasing make the table invalid (IsValid()
// false) and ComputeY answer NaN. Constraint indices outside the table are ignored.
// Two points without constraints give the straight line through them (the end-slope
// rule would otherwise define each end slope by the other).

#include <cstdint>
#include <vector>

class CHU_CubicSpline2D {
 public:
  enum SplineType : std::int32_t {
    ST_NATURAL = 0,
    ST_CONSTRAINED = 1,
    ST_CONSTRAINED_MONOTONE = 2,
  };

  // Copies n points from the caller's arrays (null arrays or n < 0 give no points).
  CHU_CubicSpline2D(int n, const double* xs, const double* ys, SplineType type);
  CHU_CubicSpline2D(const CHU_CubicSpline2D&) = default;
  CHU_CubicSpline2D& operator=(const CHU_CubicSpline2D&) = default;
  virtual ~CHU_CubicSpline2D() = default;

  // Fixes the first derivative at point i and rebuilds.
  virtual void AddFirstDerivativeConstraint(int i, double slope);
  // Frees point i again and rebuilds; nothing happens before the first constraint.
  virtual void RemoveFirstDerivativeConstraint(int i);
  virtual double ComputeY(double x) const;

  double GetMinX() const;
  double GetMaxX() const;
  int GetCount() const { return static_cast<int>(m_x.size()); }
  SplineType GetType() const { return m_type; }
  bool IsValid() const { return m_valid; }

 protected:
  virtual void Build();

 private:
  // One interval's polynomial: cubic·t³ + quadratic·t² + linear·t + constant.
  struct Cubic {
    double cubic;
    double quadratic;
    double linear;
    double constant;
  };

  std::size_t FindInterval(double x) const;
  void BuildNatural();
  void BuildConstrained(bool monotone);
  std::vector<double> ConstrainedSlopes(bool monotone) const;
  bool IsConstrained(std::size_t i) const { return !m_constrained.empty() && m_constrained[i]; }

  SplineType m_type;
  std::vector<double> m_x;
  std::vector<double> m_y;
  std::vector<Cubic> m_coefficients;        // n - 1 entries
  std::vector<std::uint8_t> m_constrained;  // empty until the first constraint
  std::vector<double> m_slopes;
  bool m_valid = false;
};
