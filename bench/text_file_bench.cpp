// Reading speed of the text file reader: one line of several megabytes (the time
// must grow linearly with the line) and a grid-like file read as tokens.

#include <benchmark/benchmark.h>

#include <cstdio>
#include <string>
#include <unistd.h>
#include <vector>

#include "hy_util/core/text_file.h"

namespace {

std::string WriteScratch(const std::string& name, const std::string& bytes) {
  const std::string path = "/tmp/bench_text_file_" + std::to_string(getpid()) + "_" + name;
  std::FILE* f = std::fopen(path.c_str(), "wb");
  if (f != nullptr) {
    std::fwrite(bytes.data(), 1, bytes.size(), f);
    std::fclose(f);
  }
  return path;
}

void BM_ReadOneLongLine(benchmark::State& state) {
  const auto size = static_cast<std::size_t>(state.range(0));
  const std::string path = WriteScratch("long.txt", std::string(size, 'x') + "\n");
  std::string line;
  for (auto _ : state) {
    CHU_File file(path.c_str(), HU_modeRead);
    file.ReadLine(line, false);
    benchmark::DoNotOptimize(line.data());
  }
  state.SetComplexityN(state.range(0));
  state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations() * size));
  std::remove(path.c_str());
}
BENCHMARK(BM_ReadOneLongLine)->RangeMultiplier(2)->Range(1 << 20, 16 << 20)->Complexity(benchmark::oN);

void BM_ReadGridTokens(benchmark::State& state) {
  std::string grid = "ncols 200\nnrows 2000\n";
  std::string row;
  for (int c = 0; c < 200; ++c) row += "12.345 ";
  for (int r = 0; r < 2000; ++r) grid += row + "\r\n";
  const std::string path = WriteScratch("grid.asc", grid);
  std::vector<std::string> tokens;
  for (auto _ : state) {
    CHU_File file(path.c_str(), " ", HU_modeRead);
    int chars = 0;
    while (file.ReadLine(tokens, chars)) benchmark::DoNotOptimize(tokens.data());
  }
  state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations() * grid.size()));
  std::remove(path.c_str());
}
BENCHMARK(BM_ReadGridTokens);

}  // namespace

BENCHMARK_MAIN();
