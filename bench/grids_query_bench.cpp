// Batch against one-by-one queries on a synthetic 2000 x 2000 terrain grid:
// nearest-node sampling of random points and averages under random polygons.

#include <benchmark/benchmark.h>
#include <zlib.h>

#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <memory>
#include <random>
#include <string>
#include <vector>

#include "hy_util/geometry/polygon.h"
#include "hy_util/grids/batch_point_sampler.h"
#include "hy_util/grids/batch_polygon_averager.h"
#include "hy_util/grids/binary_grid_file.h"

namespace {

constexpr int kSize = 2000;
constexpr double kCell = 5.0;

template <typename T>
void Put(std::string& out, T value) {
  char raw[sizeof(T)];
  std::memcpy(raw, &value, sizeof(T));
  out.append(raw, sizeof(T));
}

// A smooth surface with some noise, written once per process.
const std::string& GridPath() {
  static const std::string path = [] {
    const std::string p = (std::filesystem::temp_directory_path() / "hy_grids_query_bench.hybg").string();
    std::string header, records;
    header += "HYBG";
    Put(header, std::int32_t{3});
    Put(header, std::int32_t{kSize});
    Put(header, std::int32_t{kSize});
    Put(header, 300000.0);
    Put(header, 6000000.0);
    Put(header, kCell);
    Put(header, -9999.0f);
    std::vector<std::uint32_t> offsets;
    std::vector<float> row(kSize);
    std::vector<Bytef> packed(compressBound(4 * kSize));
    std::mt19937 rng(1);
    std::uniform_real_distribution<float> noise(-0.05f, 0.05f);
    for (int r = 0; r < kSize; ++r) {
      for (int c = 0; c < kSize; ++c) row[c] = 50.0f + 10.0f * std::sin(r * 0.01f) * std::cos(c * 0.013f) + noise(rng);
      uLongf length = packed.size();
      compress2(packed.data(), &length, reinterpret_cast<const Bytef*>(row.data()), 4 * kSize, 6);
      offsets.push_back(static_cast<std::uint32_t>(44 + 4 * kSize + records.size()));
      Put(records, static_cast<std::uint32_t>(length));
      records.append(reinterpret_cast<const char*>(packed.data()), length);
    }
    for (std::uint32_t o : offsets) Put(header, o);
    std::FILE* f = std::fopen(p.c_str(), "wb");
    std::fwrite(header.data(), 1, header.size(), f);
    std::fwrite(records.data(), 1, records.size(), f);
    std::fclose(f);
    return p;
  }();
  return path;
}

std::vector<HU_HYBGPoint> RandomPoints(int count) {
  std::mt19937 rng(2);
  std::uniform_real_distribution<double> u(0.0, (kSize - 1) * kCell);
  std::vector<HU_HYBGPoint> points(static_cast<std::size_t>(count));
  for (HU_HYBGPoint& p : points) p = {300000.0 + u(rng), 6000000.0 + u(rng)};
  return points;
}

// Stars of 6 to 40 vertices covering roughly 500 to 50,000 cells.
std::vector<std::unique_ptr<CHU_DPolygon>> RandomPolygons(int count) {
  std::mt19937 rng(3);
  std::uniform_real_distribution<double> u(0.0, 1.0);
  std::vector<std::unique_ptr<CHU_DPolygon>> polygons;
  for (int i = 0; i < count; ++i) {
    auto p = std::make_unique<CHU_DPolygon>();
    const int n = 6 + static_cast<int>(u(rng) * 35);
    const double radius = kCell * (15.0 + 110.0 * u(rng));
    const double cx = 300000.0 + radius + u(rng) * ((kSize - 1) * kCell - 2 * radius);
    const double cy = 6000000.0 + radius + u(rng) * ((kSize - 1) * kCell - 2 * radius);
    for (int k = 0; k < n; ++k) {
      const double a = 6.283185307179586 * k / n, r = radius * (k % 2 ? 0.5 + 0.5 * u(rng) : 1.0);
      p->AddPt(cx + r * std::cos(a), cy + r * std::sin(a), 0.0);
    }
    polygons.push_back(std::move(p));
  }
  return polygons;
}

void BM_SampleBatch(benchmark::State& state) {
  const auto points = RandomPoints(100000);
  GridPath();  // the file is written outside the timed loop
  for (auto _ : state) {
    CHU_HYBGBatchPointSampler sampler(GridPath(), static_cast<int>(state.range(0)));
    benchmark::DoNotOptimize(sampler.Sample(points, HYBG_NEAREST));
  }
  state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(points.size()));
}
BENCHMARK(BM_SampleBatch)->Arg(1)->Arg(2)->Unit(benchmark::kMillisecond);

void BM_SampleOneByOne(benchmark::State& state) {
  const auto points = RandomPoints(2000);
  for (auto _ : state) {
    CHU_HYBinaryGridFile reader(GridPath());
    float value = 0.0f;
    for (const HU_HYBGPoint& p : points) benchmark::DoNotOptimize(reader.GetZValue(p.x, p.y, value, HYBG_NEAREST));
  }
  state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(points.size()));
}
BENCHMARK(BM_SampleOneByOne)->Unit(benchmark::kMillisecond);

void BM_AverageBatch(benchmark::State& state) {
  const auto polygons = RandomPolygons(1000);
  std::vector<const CHU_DPolygon*> pointers;
  for (const auto& p : polygons) pointers.push_back(p.get());
  for (auto _ : state) {
    CHU_HYBGBatchPolygonAverager averager(GridPath(), static_cast<int>(state.range(0)));
    benchmark::DoNotOptimize(averager.Average(pointers));
  }
  state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(pointers.size()));
}
BENCHMARK(BM_AverageBatch)->Arg(1)->Arg(2)->Unit(benchmark::kMillisecond);

void BM_AverageOneByOne(benchmark::State& state) {
  const auto polygons = RandomPolygons(50);
  for (auto _ : state) {
    CHU_HYBinaryGridFile reader(GridPath());
    float average = 0.0f;
    for (const auto& p : polygons) benchmark::DoNotOptimize(reader.GetAverageZValueOverPolygon(*p, average));
  }
  state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(polygons.size()));
}
BENCHMARK(BM_AverageOneByOne)->Unit(benchmark::kMillisecond);

}  // namespace

BENCHMARK_MAIN();
