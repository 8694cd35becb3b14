// Cubic splines: the natural spline against GNU Scientific Library's, the shape
// guarantees of the constrained types on random data, extrapolation, constraints and
// degenerate tables.

#include <gsl/gsl_errno.h>
#include <gsl/gsl_spline.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <memory>
#include <random>
#include <tuple>
#include <vector>

#include "hy_util/geometry/cubic_spline.h"

namespace {

using Spline = CHU_CubicSpline2D;

struct Table {
  std::vector<double> x, y;
  Spline Make(Spline::SplineType type) const {
    return Spline(static_cast<int>(x.size()), x.data(), y.data(), type);
  }
};

// Increasing x with uneven gaps and y of mixed sign. With tinyGaps every seventh gap
// is a hundred times narrower (the constrained types, whose cubics are in absolute x,
// lose too many digits on those to be checked tightly).
Table RandomTable(std::mt19937& rng, int n, double xStart, bool tinyGaps) {
  std::uniform_real_distribution<double> gap(0.5, 10.0), value(-50.0, 50.0);
  Table t;
  double x = xStart;
  for (int i = 0; i < n; ++i) {
    t.x.push_back(x);
    t.y.push_back(value(rng));
    x += gap(rng) * (tinyGaps && i % 7 == 3 ? 0.01 : 1.0);
  }
  return t;
}

// The cubic through four points, evaluated at x (Lagrange form): an independent way
// to continue an interval's polynomial outside the table.
double CubicThrough(const double (&px)[4], const double (&py)[4], double x) {
  double sum = 0.0;
  for (int i = 0; i < 4; ++i) {
    double term = py[i];
    for (int j = 0; j < 4; ++j) {
      if (j != i) term *= (x - px[j]) / (px[i] - px[j]);
    }
    sum += term;
  }
  return sum;
}

constexpr Spline::SplineType kTypes[] = {Spline::ST_NATURAL, Spline::ST_CONSTRAINED,
                                         Spline::ST_CONSTRAINED_MONOTONE};

}  // namespace

TEST(CubicSpline, NaturalSplineAgreesWithGslOnRandomTables) {
  gsl_set_error_handler_off();
  std::mt19937 rng(42);
  for (int trial = 0; trial < 60; ++trial) {
    const int n = 3 + trial % 40;
    const Table t = RandomTable(rng, n, -100.0 + trial, true);
    const Spline spline = t.Make(Spline::ST_NATURAL);
    std::unique_ptr<gsl_spline, decltype(&gsl_spline_free)> oracle(
        gsl_spline_alloc(gsl_interp_cspline, static_cast<size_t>(n)), gsl_spline_free);
    ASSERT_EQ(gsl_spline_init(oracle.get(), t.x.data(), t.y.data(), static_cast<size_t>(n)), 0);
    std::uniform_real_distribution<double> at(t.x.front(), t.x.back());
    std::vector<double> queries(t.x);
    for (int q = 0; q < 200; ++q) queries.push_back(at(rng));
    for (double x : queries) {
      const double expected = gsl_spline_eval(oracle.get(), x, nullptr);
      ASSERT_NEAR(spline.ComputeY(x), expected, 1e-9 * std::max(1.0, std::abs(expected)))
          << "n " << n << " x " << x;
    }
  }
}

TEST(CubicSpline, ConstrainedSplineStaysBetweenNeighbouringPoints) {
  std::mt19937 rng(3);
  for (int trial = 0; trial < 40; ++trial) {
    Table t = RandomTable(rng, 2 + trial % 25, trial * 0.5, false);
    if (trial % 5 == 0) t.y[t.y.size() / 2] = t.y[t.y.size() / 2 - 1];  // a flat interval
    const Spline spline = t.Make(Spline::ST_CONSTRAINED);
    for (size_t i = 0; i + 1 < t.x.size(); ++i) {
      const double lo = std::min(t.y[i], t.y[i + 1]), hi = std::max(t.y[i], t.y[i + 1]);
      const double slack = 1e-5;  // cancellation in absolute x; a real overshoot is far larger
      EXPECT_NEAR(spline.ComputeY(t.x[i]), t.y[i], slack);
      for (int k = 1; k < 20; ++k) {
        const double y = spline.ComputeY(t.x[i] + (t.x[i + 1] - t.x[i]) * k / 20.0);
        ASSERT_GE(y, lo - slack) << "trial " << trial << " interval " << i;
        ASSERT_LE(y, hi + slack) << "trial " << trial << " interval " << i;
      }
    }
  }
}

TEST(CubicSpline, MonotoneVariantNeverDecreasesOnNonDecreasingData) {
  std::mt19937 rng(11);
  std::uniform_real_distribution<double> rise(0.0, 20.0);
  for (int trial = 0; trial < 40; ++trial) {
    Table t = RandomTable(rng, 2 + trial % 30, -3.0, false);
    double y = -10.0;
    for (size_t i = 0; i < t.y.size(); ++i) {
      y += (i % 4 == 2) ? 0.0 : rise(rng) * (i % 3 == 0 ? 30.0 : 1.0);  // flats and jumps
      t.y[i] = y;
    }
    const Spline spline = t.Make(Spline::ST_CONSTRAINED_MONOTONE);
    double previous = spline.ComputeY(t.x.front());
    for (int k = 1; k <= 2000; ++k) {
      const double x = t.x.front() + (t.x.back() - t.x.front()) * k / 2000.0;
      const double value = spline.ComputeY(x);
      ASSERT_GE(value, previous - 1e-6 * std::max(1.0, std::abs(value))) << "trial " << trial << " x " << x;
      previous = value;
    }
  }
}

TEST(CubicSpline, OutsideTheTableEveryTypeContinuesItsEndCubics) {
  const Table t{{0.0, 1.0, 2.5, 3.0, 5.0}, {1.0, 3.0, 2.0, 4.0, 4.5}};
  for (Spline::SplineType type : kTypes) {
    const Spline spline = t.Make(type);
    for (const auto& [a, b, outside] : {std::tuple(0.0, 1.0, -2.0), std::tuple(3.0, 5.0, 7.5)}) {
      double px[4], py[4];
      for (int k = 0; k < 4; ++k) {
        px[k] = a + (b - a) * (k + 0.5) / 4.0;
        py[k] = spline.ComputeY(px[k]);
      }
      EXPECT_NEAR(spline.ComputeY(outside), CubicThrough(px, py, outside), 1e-9) << "type " << type;
    }
  }
}

TEST(CubicSpline, SlopeConstraintsBindOnlyTheConstrainedTypes) {
  const Table t{{0.0, 1.0, 2.0, 4.0}, {0.0, 1.0, 0.5, 2.0}};
  auto slopeAt = [](const Spline& s, double x) { return (s.ComputeY(x + 1e-6) - s.ComputeY(x - 1e-6)) / 2e-6; };
  Spline constrained = t.Make(Spline::ST_CONSTRAINED);
  const double before = constrained.ComputeY(1.5);
  EXPECT_NEAR(slopeAt(constrained, 1.0), 0.0, 1e-6);  // local maximum
  constrained.AddFirstDerivativeConstraint(1, 2.0);
  EXPECT_NEAR(slopeAt(constrained, 1.0), 2.0, 1e-5);
  const Spline copy = constrained;
  constrained.RemoveFirstDerivativeConstraint(1);
  EXPECT_DOUBLE_EQ(constrained.ComputeY(1.5), before);
  EXPECT_NEAR(slopeAt(copy, 1.0), 2.0, 1e-5);  // the copy kept its own constraints
  constrained.AddFirstDerivativeConstraint(99, 5.0);  // out of range: ignored
  constrained.AddFirstDerivativeConstraint(-1, 5.0);
  EXPECT_DOUBLE_EQ(constrained.ComputeY(1.5), before);

  Spline natural = t.Make(Spline::ST_NATURAL);
  const double naturalBefore = natural.ComputeY(1.5);
  natural.AddFirstDerivativeConstraint(1, 2.0);
  EXPECT_EQ(natural.ComputeY(1.5), naturalBefore);

  Spline monotone = t.Make(Spline::ST_CONSTRAINED_MONOTONE);
  monotone.AddFirstDerivativeConstraint(0, -3.0);  // the monotone pass lifts it to 0
  EXPECT_NEAR(slopeAt(monotone, 0.0), 0.0, 1e-5);
}

TEST(CubicSpline, DegenerateTablesAnswerWithoutDividingByZero) {
  const double xs[] = {1.0, 2.0, 2.0, 3.0};
  const double ys[] = {1.0, 2.0, 3.0, 4.0};
  const double nanX[] = {1.0, std::nan(""), 3.0};
  const double decreasing[] = {3.0, 2.0, 1.0};
  for (Spline::SplineType type : kTypes) {
    EXPECT_EQ(Spline(1, xs, ys, type).ComputeY(-7.0), 1.0);
    EXPECT_FALSE(Spline(4, xs, ys, type).IsValid());
    // Empty, negative-sized, missing, repeated-x, NaN-x and decreasing tables: no value.
    const double answers[] = {Spline(0, xs, ys, type).ComputeY(1.0), Spline(-4, xs, ys, type).GetMinX(),
                              Spline(3, nullptr, ys, type).ComputeY(1.0), Spline(4, xs, ys, type).ComputeY(1.5),
                              Spline(3, nanX, ys, type).ComputeY(1.5), Spline(3, decreasing, ys, type).ComputeY(1.5)};
    for (int i = 0; i < 6; ++i) EXPECT_TRUE(std::isnan(answers[i])) << "type " << type << " table " << i;
    const Spline line(2, xs, ys, type);  // two points: the straight line
    EXPECT_NEAR(line.ComputeY(1.25), 1.25, 1e-12);
    EXPECT_NEAR(line.ComputeY(4.0), 4.0, 1e-12);
    EXPECT_EQ(std::pair(line.GetMinX(), line.GetMaxX()), std::pair(1.0, 2.0));
  }
  const Spline unknown(3, ys, ys, static_cast<Spline::SplineType>(7));
  EXPECT_EQ(unknown.ComputeY(2.5), 0.0);
}

TEST(CubicSpline, TheIntervalIsTheFirstWhoseRightEndReachesXWhateverCameBefore) {
  std::mt19937 rng(5);
  for (const int n : {2, 3, 4, 7, 30, 64, 65}) {
    const Table t = RandomTable(rng, n, -20.0, false);
    std::vector<double> xs = t.x;
    for (int i = 0; i + 1 < n; ++i) xs.push_back((t.x[i] + t.x[i + 1]) / 2);
    xs.insert(xs.end(), {t.x.front() - 3.0, t.x.back() + 3.0});
    const Spline spline = t.Make(Spline::ST_CONSTRAINED);
    for (int pass = 0; pass < 3; ++pass) {  // ascending, descending, shuffled
      if (pass < 2) std::sort(xs.begin(), xs.end(), [&](double a, double b) { return pass == 0 ? a < b : a > b; });
      if (pass == 2) std::shuffle(xs.begin(), xs.end(), rng);
      for (double x : xs) {
        int linear = 0;
        while (linear < n - 2 && !(x <= t.x[linear + 1])) ++linear;
        ASSERT_EQ(spline.GetInterval(x), linear) << "n " << n << " x " << x << " pass " << pass;
      }
    }
    EXPECT_EQ(spline.GetInterval(std::nan("")), n - 2);
  }
  EXPECT_EQ(Table({{1.0}, {2.0}}).Make(Spline::ST_NATURAL).GetInterval(1.0), -1);
}
