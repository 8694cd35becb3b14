#include "hy_util/geometry/cubic_spline.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace {

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

bool StrictlyIncreasingAndFinite(const std::vector<double>& x) {
  for (std::size_t i = 0; i < x.size(); ++i) {
    if (!std::isfinite(x[i])) return false;
    if (i > 0 && !(x[i] > x[i - 1])) return false;
  }
  return true;
}

// Index of the first of `count` sorted values at or above x, or count when there is
// none (NaN included, which nothing reaches). The halving step is a conditional move
// rather than a branch (random queries would mispredict half the branches), and on
// long tables the memory of the following step is requested ahead.
std::size_t LowerBound(const double* values, std::size_t count, double x) {
  if (count == 0) return 0;
  const double* base = values;
  while (count > 1) {
    const std::size_t half = count / 2;
    // Both places the next step may look at, fetched while this step decides.
    const std::size_t nextHalf = (count - half) / 2;
    __builtin_prefetch(base + nextHalf);
    __builtin_prefetch(base + half + nextHalf);
    base = x <= base[half - 1] ? base : base + half;
    count -= half;
  }
  return static_cast<std::size_t>(base - values) + (x <= *base ? 0 : 1);
}

}  // namespace

CHU_CubicSpline2D::CHU_CubicSpline2D(int n, const double* xs, const double* ys, SplineType type)
    : m_type(type) {
  if (n > 0 && xs != nullptr && ys != nullptr) {
    m_x.assign(xs, xs + n);
    m_y.assign(ys, ys + n);
  }
  Build();
}

void CHU_CubicSpline2D::AddFirstDerivativeConstraint(int i, double slope) {
  if (i < 0 || static_cast<std::size_t>(i) >= m_x.size()) return;
  if (m_constrained.empty()) {
    m_constrained.assign(m_x.size(), 0);
    m_slopes.assign(m_x.size(), 0.0);
  }
  m_constrained[static_cast<std::size_t>(i)] = 1;
  m_slopes[static_cast<std::size_t>(i)] = slope;
  Build();
}

void CHU_CubicSpline2D::RemoveFirstDerivativeConstraint(int i) {
  if (m_constrained.empty() || i < 0 || static_cast<std::size_t>(i) >= m_x.size()) return;
  m_constrained[static_cast<std::size_t>(i)] = 0;
  m_slopes[static_cast<std::size_t>(i)] = 0.0;
  Build();
}

double CHU_CubicSpline2D::GetMinX() const { return m_x.empty() ? kNaN : m_x.front(); }
double CHU_CubicSpline2D::GetMaxX() const { return m_x.empty() ? kNaN : m_x.back(); }

// Whether interval i is the first one with x <= x(i+1): x lies in (x(i), x(i+1)],
// the first interval reaching down to -infinity and the last up to +infinity.
bool CHU_CubicSpline2D::InInterval(std::size_t i, double x) const {
  const std::size_t last = m_x.size() - 2;
  return i <= last && (i == 0 || x > m_x[i]) && (i == last || x <= m_x[i + 1]);
}

std::size_t CHU_CubicSpline2D::FindInterval(double x) const {
  const std::size_t hint = m_hint.Get();
  if (InInterval(hint, x)) return hint;
  if (InInterval(hint + 1, x)) {
    m_hint.Set(hint + 1);
    return hint + 1;
  }
  // A lower bound over the interior points x(1) .. x(n-2); past them, the last interval.
  const std::size_t i = LowerBound(m_x.data() + 1, m_x.size() - 2, x);
  m_hint.Set(i);
  return i;
}

int CHU_CubicSpline2D::GetInterval(double x) const {
  if (!m_valid || m_x.size() < 2) return -1;
  return static_cast<int>(FindInterval(x));
}

double CHU_CubicSpline2D::ComputeY(double x) const {
  if (!m_valid) return kNaN;
  if (m_x.size() == 1) return m_y.front();
  const std::size_t i = FindInterval(x);
  const Cubic& c = m_coefficients[i];
  double t;
  switch (m_type) {
    case ST_NATURAL: t = x - m_x[i]; break;
    case ST_CONSTRAINED:
    case ST_CONSTRAINED_MONOTONE: t = x; break;
    default: return 0.0;
  }
  return ((c.cubic * t + c.quadratic) * t + c.linear) * t + c.constant;
}

void CHU_CubicSpline2D::Build() {
  m_coefficients.clear();
  m_valid = !m_x.empty() && StrictlyIncreasingAndFinite(m_x);
  if (!m_valid || m_x.size() < 2) return;
  m_coefficients.resize(m_x.size() - 1);
  switch (m_type) {
    case ST_NATURAL: BuildNatural(); break;
    case ST_CONSTRAINED: BuildConstrained(false); break;
    case ST_CONSTRAINED_MONOTONE: BuildConstrained(true); break;
    default: break;  // unknown types evaluate to 0
  }
}

void CHU_CubicSpline2D::BuildNatural() {
  const std::size_t n = m_x.size();
  std::vector<double> h(n - 1), secant(n - 1);
  for (std::size_t i = 0; i + 1 < n; ++i) {
    h[i] = m_x[i + 1] - m_x[i];
    secant[i] = (m_y[i + 1] - m_y[i]) / h[i];
  }
  // Second derivatives M at the points, M(0) = M(n-1) = 0. The interior ones solve a
  // symmetric, diagonally dominant tridiagonal system (Thomas algorithm).
  std::vector<double> m(n, 0.0);
  if (n > 2) {
    std::vector<double> diagonal(n), rhs(n);
    for (std::size_t i = 1; i + 1 < n; ++i) {
      diagonal[i] = 2.0 * (h[i - 1] + h[i]);
      rhs[i] = 6.0 * (secant[i] - secant[i - 1]);
    }
    for (std::size_t i = 2; i + 1 < n; ++i) {
      const double factor = h[i - 1] / diagonal[i - 1];
      diagonal[i] -= factor * h[i - 1];
      rhs[i] -= factor * rhs[i - 1];
    }
    for (std::size_t i = n - 2; i >= 1; --i) {
      m[i] = (rhs[i] - h[i] * m[i + 1]) / diagonal[i];
    }
  }
  for (std::size_t i = 0; i + 1 < n; ++i) {
    Cubic& c = m_coefficients[i];
    c.cubic = (m[i + 1] - m[i]) / (6.0 * h[i]);
    c.quadratic = m[i] / 2.0;
    c.linear = secant[i] - (2.0 * m[i] + m[i + 1]) * h[i] / 6.0;
    c.constant = m_y[i];
  }
}

std::vector<double> CHU_CubicSpline2D::ConstrainedSlopes(bool monotone) const {
  const std::size_t n = m_x.size();
  auto h = [&](std::size_t i) { return m_x[i + 1] - m_x[i]; };
  auto dy = [&](std::size_t i) { return m_y[i + 1] - m_y[i]; };
  std::vector<double> s(n, 0.0);
  for (std::size_t i = 0; i < n; ++i) {
    if (IsConstrained(i)) s[i] = m_slopes[i];
  }
  for (std::size_t i = 1; i + 1 < n; ++i) {
    if (IsConstrained(i)) continue;
    const double left = dy(i - 1), right = dy(i);
    const bool extremum = left == 0.0 || right == 0.0 || (left > 0.0) != (right > 0.0);
    s[i] = extremum ? 0.0 : 2.0 / (h(i) / right + h(i - 1) / left);
  }
  if (n == 2 && !IsConstrained(0) && !IsConstrained(1)) {
    s[0] = s[1] = dy(0) / h(0);
  } else {
    if (!IsConstrained(0)) s[0] = 3.0 * dy(0) / (2.0 * h(0)) - s[1] / 2.0;
    if (!IsConstrained(n - 1)) s[n - 1] = 3.0 * dy(n - 2) / (2.0 * h(n - 2)) - s[n - 2] / 2.0;
  }
  if (monotone) {
    for (std::size_t i = 0; i < n; ++i) {
      if (s[i] < 0.0) s[i] = 0.0;
      if (i > 0 && s[i] > dy(i - 1) / h(i - 1)) s[i] = dy(i - 1) / h(i - 1);
    }
  }
  return s;
}

void CHU_CubicSpline2D::BuildConstrained(bool monotone) {
  const std::vector<double> s = ConstrainedSlopes(monotone);
  for (std::size_t i = 0; i + 1 < m_x.size(); ++i) {
    const double x0 = m_x[i], x1 = m_x[i + 1];
    const double h = x1 - x0, dy = m_y[i + 1] - m_y[i];
    // Second derivatives at the interval's two ends, from the end slopes.
    const double left = (3.0 * dy - (2.0 * s[i] + s[i + 1]) * h) * 2.0 / (h * h);
    const double right = ((2.0 * s[i + 1] + s[i]) * h - 3.0 * dy) * 2.0 / (h * h);
    Cubic& c = m_coefficients[i];
    c.cubic = (right - left) / (6.0 * h);
    c.quadratic = (x1 * left - x0 * right) / (2.0 * h);
    c.linear = (dy - (x1 * x1 - x0 * x0) * c.quadratic - (x1 * x1 * x1 - x0 * x0 * x0) * c.cubic) / h;
    c.constant = m_y[i] - c.linear * x0 - c.quadratic * x0 * x0 - c.cubic * x0 * x0 * x0;
  }
}
