#pragma once
// CHU_CubicSpline2D: a cubic spline through a tabulated function y(x) (rating
// curves, stage-storage tables), one cubic per interval between neighbouring points.
//
// Types:
//   ST_NATURAL               the classical interpolating spline, zero second
//                            derivative at both ends; slope constraints are ignored.
//   ST_CONSTRAINED           slopes from the neighbouring secants (zero at local
//                            extrema), so the curve never overshoots the data between
//                            points; a point may be given a fixed first derivative
//                            (which may then make it overshoot).
//   ST_CONSTRAINED_MONOTONE  as ST_CONSTRAINED, then slopes are made non-negative and
//                            no steeper than the secant to their left, so the curve
//                            through non-decreasing data never decreases.
// The constrained types keep their polynomials in absolute x, so a table far from
// x = 0 loses digits to cancellation; the natural type works relative to each
// interval's start.
//
// ComputeY uses the first interval whose right end is at or beyond x; outside the
// table the end cubics are extrapolated. It first tries the interval of the previous
// call and the one after it (queries that sweep along the curve hit them), and
// otherwise finds the interval by binary search. The remembered interval is only a
// guess kept in a relaxed atomic, so a spline may be evaluated from several threads.
//
// Degenerate tables have a defined answer: no points gives NaN everywhere; one
// point gives its y everywhere; x values that are not finite or not strictly
// increasing make the table invalid (IsValid() false) and ComputeY answer NaN.
// Constraint indices outside the table are ignored. Two points without constraints
// give the straight line through them (the end-slope rule would otherwise define
// each end slope by the other). An unknown type value evaluates to 0.
// The monotone pass assumes rising data: on falling data it keeps the slopes at the
// (negative) left secants and the curve can overshoot.

#include <atomic>
#include <cstddef>
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

  // The interval ComputeY uses for x: 0 to n - 2 (the last one for NaN, which no
  // right end reaches), or -1 when the table has fewer than two points or is invalid.
  int GetInterval(double x) const;

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

  // The interval of the last evaluation; copies start from the source's guess.
  class IntervalHint {
   public:
    IntervalHint() = default;
    IntervalHint(const IntervalHint& other) : value_(other.Get()) {}
    IntervalHint& operator=(const IntervalHint& other) {
      Set(other.Get());
      return *this;
    }
    std::size_t Get() const { return value_.load(std::memory_order_relaxed); }
    void Set(std::size_t i) const { value_.store(i, std::memory_order_relaxed); }

   private:
    mutable std::atomic<std::size_t> value_{0};
  };

  bool InInterval(std::size_t i, double x) const;
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
  IntervalHint m_hint;
};
