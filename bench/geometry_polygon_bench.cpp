// PtInPoly against Boost.Geometry's within on the same rings and points, and the
// growth of the minimum-area rectangle with the number of points. After the
// benchmark table, prints the PtInPoly / within time ratio per ring size (goal:
// at most 1.0) and the rectangle's time / (n log2 n), which stays flat for
// n log n growth.

// Boost.Geometry 1.74 trips GCC's flow analysis inside its own headers.
#if defined(__GNUC__) && !defined(__clang__)
#pragma GCC diagnostic ignored "-Wmaybe-uninitialized"
#endif
#include <boost/geometry.hpp>
#include <boost/geometry/geometries/point_xy.hpp>
#include <boost/geometry/geometries/polygon.hpp>

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <map>
#include <numbers>
#include <random>
#include <string>

#include "hy_util/geometry/polygon.h"

namespace bg = boost::geometry;

namespace {

using BPoint = bg::model::d2::point_xy<double>;
using BPolygon = bg::model::polygon<BPoint>;

constexpr int kQueryPoints = 256;

// A star-shaped ring of n vertices with a jagged outline, around (5e5, 6e6).
CHU_DPolygon MakeRing(int n) {
  std::mt19937_64 rng(static_cast<unsigned>(n));
  std::uniform_real_distribution<double> radius(500.0, 1000.0);
  CHU_DPolygon ring;
  for (int i = 0; i < n; ++i) {
    const double a = 2 * std::numbers::pi * i / n;
    const double r = radius(rng);
    ring.AddPt(5e5 + r * std::cos(a), 6e6 + r * std::sin(a), 0.0);
  }
  return ring;
}

BPolygon ToBoost(const CHU_DPolygon& ring) {
  BPolygon out;
  for (int i = 0; i < ring.GetCount(); ++i) out.outer().push_back(BPoint(ring.GetAt(i)->x, ring.GetAt(i)->y));
  bg::correct(out);
  return out;
}

std::vector<CHU_DPoint> QueryPoints() {
  std::mt19937_64 rng(7);
  std::uniform_real_distribution<double> d(-1100.0, 1100.0);
  std::vector<CHU_DPoint> points;
  for (int i = 0; i < kQueryPoints; ++i) points.emplace_back(5e5 + d(rng), 6e6 + d(rng));
  return points;
}

void BM_PtInPoly(benchmark::State& state) {
  const CHU_DPolygon ring = MakeRing(static_cast<int>(state.range(0)));
  const std::vector<CHU_DPoint> points = QueryPoints();
  for (auto _ : state) {
    int inside = 0;
    for (const CHU_DPoint& p : points) inside += ring.PtInPoly(p) ? 1 : 0;
    benchmark::DoNotOptimize(inside);
  }
  state.SetItemsProcessed(state.iterations() * kQueryPoints);
}

void BM_BoostWithin(benchmark::State& state) {
  const BPolygon ring = ToBoost(MakeRing(static_cast<int>(state.range(0))));
  std::vector<BPoint> points;
  for (const CHU_DPoint& p : QueryPoints()) points.emplace_back(p.x, p.y);
  for (auto _ : state) {
    int inside = 0;
    for (const BPoint& p : points) inside += bg::within(p, ring) ? 1 : 0;
    benchmark::DoNotOptimize(inside);
  }
  state.SetItemsProcessed(state.iterations() * kQueryPoints);
}

void BM_MinAreaRect(benchmark::State& state) {
  std::mt19937_64 rng(11);
  std::normal_distribution<double> d(0.0, 100.0);
  CHU_DPolygon cloud;
  for (int64_t i = 0; i < state.range(0); ++i) cloud.AddPt(3e5 + d(rng), 6e6 + 0.3 * d(rng), 0.0);
  for (auto _ : state) {
    cloud.CalcMinimumAreaRect();  // always recomputes
    benchmark::DoNotOptimize(cloud.GetMinimunAreaRectangleArea());
  }
}

BENCHMARK(BM_PtInPoly)->Arg(10)->Arg(1000)->Arg(100000);
BENCHMARK(BM_BoostWithin)->Arg(10)->Arg(1000)->Arg(100000);
BENCHMARK(BM_MinAreaRect)->Arg(100000)->Arg(1000000)->Unit(benchmark::kMillisecond);

// Keeps each run's CPU time per iteration (in ns) by name for the summary; CPU
// time, because the wall clock of a shared machine also counts other work.
class SummaryReporter : public benchmark::ConsoleReporter {
 public:
  void ReportRuns(const std::vector<Run>& runs) override {
    for (const Run& run : runs) {
      if (run.run_type == Run::RT_Iteration) {
        nanos[run.benchmark_name()] = run.GetAdjustedCPUTime() *
                                      (run.time_unit == benchmark::kMillisecond ? 1e6 : 1.0);
      }
    }
    ConsoleReporter::ReportRuns(runs);
  }
  std::map<std::string, double> nanos;
};

void PrintSummary(const std::map<std::string, double>& nanos) {
  for (const char* n : {"10", "1000", "100000"}) {
    const auto ours = nanos.find(std::string("BM_PtInPoly/") + n);
    const auto boost = nanos.find(std::string("BM_BoostWithin/") + n);
    if (ours == nanos.end() || boost == nanos.end()) continue;
    std::printf("PtInPoly / within, %6s vertices: %.3f (%.1f ns vs %.1f ns per point)\n", n,
                ours->second / boost->second, ours->second / kQueryPoints, boost->second / kQueryPoints);
  }
  for (const char* n : {"100000", "1000000"}) {
    const auto t = nanos.find(std::string("BM_MinAreaRect/") + n);
    if (t == nanos.end()) continue;
    const double count = std::stod(n);
    std::printf("minimum-area rectangle, %7s points: %.1f ms, time / (n log2 n) = %.2f ns\n", n,
                t->second / 1e6, t->second / (count * std::log2(count)));
  }
}

}  // namespace

int main(int argc, char** argv) {
  benchmark::Initialize(&argc, argv);
  if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
  SummaryReporter reporter;
  benchmark::RunSpecifiedBenchmarks(&reporter);
  benchmark::Shutdown();
  PrintSummary(reporter.nanos);
  return 0;
}
