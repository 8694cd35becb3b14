// Walk and search costs on a long vertex chain (10^6 vertices): GetLength,
// GetAtPercent and PtOnPoly each visit the segments in order, so all three are
// linear in the vertex count.

#include <benchmark/benchmark.h>

#include <random>

#include "hy_util/geometry/polyline.h"

namespace {

constexpr int kVertices = 1000000;

// A random walk with steps of up to one unit, like a digitised alignment.
const CHU_DPolyLine& LongChain() {
  static const CHU_DPolyLine chain = [] {
    CHU_DPolyLine built;
    built.InitialNumberOfPoints(kVertices);
    std::mt19937 rng(17);
    std::uniform_real_distribution<double> step(-1.0, 1.0);
    double x = 0.0, y = 0.0;
    for (int i = 0; i < kVertices; ++i) {
      built.AddPt(x, y, 0.0);
      x += step(rng) + 0.5;
      y += step(rng);
    }
    return built;
  }();
  return chain;
}

void BM_GetLength(benchmark::State& state) {
  const CHU_DPolyLine& chain = LongChain();
  for (auto _ : state) benchmark::DoNotOptimize(chain.GetLength());
  state.SetItemsProcessed(state.iterations() * kVertices);
}

void BM_GetAtPercent(benchmark::State& state) {
  const CHU_DPolyLine& chain = LongChain();
  const double fraction = static_cast<double>(state.range(0)) / 100.0;
  CHU_DPoint out;
  for (auto _ : state) benchmark::DoNotOptimize(chain.GetAtPercent(fraction, &out));
  state.SetItemsProcessed(state.iterations() * kVertices);
}

// The point lies beside the last segment only, so the whole chain is searched.
void BM_PtOnPoly(benchmark::State& state) {
  const CHU_DPolyLine& chain = LongChain();
  const CHU_DPoint* last = chain.GetAt(chain.GetCount() - 1);
  const CHU_DPoint probe(last->x, last->y + 1e-4);
  CHU_DPoint start, end;
  for (auto _ : state) benchmark::DoNotOptimize(chain.PtOnPoly(probe, 1e-3, &start, &end));
  state.SetItemsProcessed(state.iterations() * kVertices);
}

}  // namespace

BENCHMARK(BM_GetLength)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_GetAtPercent)->Arg(50)->Arg(100)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_PtOnPoly)->Unit(benchmark::kMillisecond);

BENCHMARK_MAIN();
