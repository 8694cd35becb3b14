// The 2DM reader against its physical limits and a sscanf reader; driven by
// bench/file_2dm_bench.sh, which runs each mode in its own process so that peak
// memory can be measured per mode.
//
//   bench_file_2dm make CELLS FILE   writes a MESH2D grid of about CELLS quads
//   bench_file_2dm MODE FILE [REPEATS]
//     read      CHU_File2DM::Open + Read (blocks, two threads)
//     read1     the same on one thread
//     sscanf    fgets and sscanf per line with the card formats, into the same tables
//     scan      from_chars over every number of the file, nothing stored
//     baseline  nothing: the process's own memory
// A mode prints "seconds MB/s table-MiB", the best of REPEATS runs.

#include <charconv>
#include <chrono>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <functional>
#include <string>
#include <vector>

#include "hy_util/formats/file_2dm.h"

namespace {

double FileMegabytes(const char* path) {
  std::FILE* f = std::fopen(path, "rb");
  if (!f) return 0;
  std::fseek(f, 0, SEEK_END);
  const double mb = static_cast<double>(std::ftell(f)) / 1e6;
  std::fclose(f);
  return mb;
}

// A regular grid at map scale, three decimals, numbered from 1.
int Make(long cells, const char* path) {
  const long nx = std::lround(std::sqrt(static_cast<double>(cells) * 1.5));
  const long ny = cells / nx;
  std::FILE* out = std::fopen(path, "w");
  if (!out) return 1;
  std::fprintf(out, "MESH2D 381000.000 6168000.000 0.000000 %ld %ld 2.000 2.000 0.000\n", nx, ny);
  long id = 1;
  for (long j = 0; j <= ny; ++j)
    for (long i = 0; i <= nx; ++i, ++id)
      std::fprintf(out, "ND %ld %.3f %.3f %.3f\n", id, 381000.0 + 2.0 * i + 0.001 * (id % 7),
                   6168000.0 + 2.0 * j + 0.001 * (id % 11), 35.0 + 5.0 * std::sin(0.01 * i) * std::cos(0.013 * j));
  id = 1;
  for (long j = 0; j < ny; ++j)
    for (long i = 0; i < nx; ++i, ++id) {
      const long n = j * (nx + 1) + i + 1;
      std::fprintf(out, "E4Q %ld %ld %ld %ld %ld 1\n", id, n, n + 1, n + nx + 2, n + nx + 1);
    }
  return std::fclose(out) == 0 ? 0 : 1;
}

struct Tables {
  std::vector<double> x, y, z;
  std::vector<std::int32_t> cells;  // id and four indices per cell
  double MiB() const {
    return static_cast<double>((x.size() + y.size() + z.size()) * 8 + x.size() + cells.size() * 4) / (1 << 20);
  }
};

// The plain reader: one line at a time, one sscanf per card.
double SscanfRead(const char* path) {
  std::FILE* f = std::fopen(path, "r");
  if (!f) return 0;
  Tables t;
  char line[512], card[8];
  while (std::fgets(line, sizeof line, f)) {
    if (std::strncmp(line, "ND ", 3) == 0) {
      int id;
      double x, y, z;
      if (std::sscanf(line, "%2s %d %lf %lf %lf", card, &id, &x, &y, &z) != 5 || id < 1) continue;
      const auto k = static_cast<std::size_t>(id);
      if (k > t.x.size()) t.x.resize(k), t.y.resize(k), t.z.resize(k);
      t.x[k - 1] = x, t.y[k - 1] = y, t.z[k - 1] = z;
    } else if (std::strncmp(line, "E4Q ", 4) == 0) {
      int v[9];
      if (std::sscanf(line, "%3s %d %d %d %d %d %d %d %d", card, &v[0], &v[1], &v[2], &v[3], &v[4], &v[5], &v[6],
                      &v[7]) < 6 || v[0] < 0)
        continue;
      const auto k = static_cast<std::size_t>(v[0]) * 5;
      if (k + 5 > t.cells.size()) t.cells.resize(k + 5, -1);
      for (int i = 0; i < 5; ++i) t.cells[k + static_cast<std::size_t>(i)] = i == 0 ? v[0] : v[i] - 1;
    }
  }
  std::fclose(f);
  return t.MiB();
}

// Every number of the file through from_chars, in large blocks, nothing kept.
double Scan(const char* path) {
  std::FILE* f = std::fopen(path, "rb");
  if (!f) return 0;
  std::vector<char> block(std::size_t{4} << 20);
  std::size_t held = 0;
  double sum = 0;
  for (;;) {
    const std::size_t got = std::fread(block.data() + held, 1, block.size() - held, f);
    const std::size_t size = held + got;
    std::size_t end = size;
    if (got != 0)
      while (end > 0 && block[end - 1] != '\n') --end;
    const char* p = block.data();
    const char* const stop = p + end;
    while (p < stop) {
      while (p < stop && (*p == ' ' || *p == '\n')) ++p;
      const char* word = p;
      while (p < stop && *p != ' ' && *p != '\n') ++p;
      double v;
      if (std::from_chars(word, p, v).ec == std::errc()) sum += v;
    }
    held = size - end;
    std::memmove(block.data(), block.data() + end, held);
    if (got == 0) break;
  }
  std::fclose(f);
  return sum == 42 ? 1 : 0;  // keeps the sum alive
}

double LibraryRead(const char* path, bool parallel) {
  CHU_File2DM mesh;
  mesh.SetParallelRead(parallel);
  if (!mesh.Open(path) || !mesh.Read()) return 0;
  return static_cast<double>(mesh.GetVertexCount()) * 25.0 / (1 << 20) +
         static_cast<double>(mesh.GetCellRecords().size()) * sizeof(CHU_File2DM::CellRecord) / (1 << 20);
}

}  // namespace

int main(int argc, char** argv) {
  if (argc >= 4 && std::strcmp(argv[1], "make") == 0) return Make(std::atol(argv[2]), argv[3]);
  if (argc < 3) {
    std::fprintf(stderr, "usage: bench_file_2dm make CELLS FILE | read|read1|sscanf|scan|baseline FILE [REPEATS]\n");
    return 2;
  }
  const std::string mode = argv[1];
  const char* path = argv[2];
  const int repeats = argc > 3 ? std::atoi(argv[3]) : 3;
  std::function<double()> run;
  if (mode == "read") run = [path] { return LibraryRead(path, true); };
  else if (mode == "read1") run = [path] { return LibraryRead(path, false); };
  else if (mode == "sscanf") run = [path] { return SscanfRead(path); };
  else if (mode == "scan") run = [path] { return Scan(path); };
  else if (mode == "baseline") run = [] { return 0.0; };
  else return 2;
  double best = 1e30, tables = 0;
  for (int r = 0; r < repeats; ++r) {
    const auto start = std::chrono::steady_clock::now();
    tables = run();
    best = std::min(best, std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count());
  }
  std::printf("%.4f %.1f %.1f\n", best, FileMegabytes(path) / best, tables);
  return 0;
}
