#pragma once
// A small writer of HY binary grid files for tests, independent of the library's
// converter, so that expected answers come from the test's own values. Bytes are
// built by hand: "HYBG", version, ncols, nrows, x, y, cell size, no-data, the row
// offset table, then per row a length and a zlib stream of the row's floats.

#include <zlib.h>

#include <cstdint>
#include <cstring>
#include <functional>
#include <string>
#include <vector>

namespace hytest {

struct TestGrid {
  int ncols = 0, nrows = 0;
  double xll = 0.0, yll = 0.0, cell = 1.0;
  float noData = -9999.0f;
  std::vector<float> values;  // row-major, row 0 = north

  float At(int row, int col) const { return values[static_cast<std::size_t>(row) * ncols + col]; }
  double NodeX(int col) const { return xll + col * cell; }
  double NodeY(int row) const { return yll + (nrows - 1) * cell - row * cell; }
};

// A grid whose node (row, column) holds value(row, column).
inline TestGrid MakeGrid(int ncols, int nrows, double xll, double yll, double cell,
                         const std::function<float(int, int)>& value) {
  TestGrid g{ncols, nrows, xll, yll, cell, -9999.0f, {}};
  for (int r = 0; r < nrows; ++r)
    for (int c = 0; c < ncols; ++c) g.values.push_back(value(r, c));
  return g;
}

// Appends the values' bytes in the host's (little-endian) order.
template <typename... T>
void AppendRaw(std::string& bytes, T... values) {
  (bytes.append(reinterpret_cast<const char*>(&values), sizeof(T)), ...);
}

inline std::string HeaderBytes(const TestGrid& g) {
  std::string bytes;
  AppendRaw(bytes, 0x47425948u, std::int32_t{3}, std::int32_t{g.ncols}, std::int32_t{g.nrows}, g.xll, g.yll, g.cell, g.noData);
  return bytes;
}

inline std::string ZlibStream(const void* data, std::size_t size) {
  uLongf length = compressBound(static_cast<uLong>(size));
  std::string out(length, '\0');
  compress2(reinterpret_cast<Bytef*>(out.data()), &length, static_cast<const Bytef*>(data), static_cast<uLong>(size), 9);
  out.resize(length);
  return out;
}

// The whole file. rowStreams, when given, replaces the compressed record of a row.
inline std::string GridFileBytes(const TestGrid& g, const std::vector<std::string>& rowStreams = {}) {
  std::string bytes = HeaderBytes(g), records;
  const std::size_t tableEnd = bytes.size() + 4 * static_cast<std::size_t>(g.nrows);
  for (int r = 0; r < g.nrows; ++r) {
    AppendRaw(bytes, static_cast<std::uint32_t>(tableEnd + records.size()));
    const bool replaced = r < static_cast<int>(rowStreams.size()) && !rowStreams[r].empty();
    const std::string stream =
        replaced ? rowStreams[r] : ZlibStream(&g.values[static_cast<std::size_t>(r) * g.ncols], 4 * g.ncols);
    AppendRaw(records, static_cast<std::uint32_t>(stream.size()));
    records += stream;
  }
  return bytes + records;
}

// Offset of row r's entry in the offset table.
inline std::size_t OffsetEntryPosition(int row) { return 44 + 4 * static_cast<std::size_t>(row); }

inline std::uint32_t ReadU32At(const std::string& bytes, std::size_t pos) {
  std::uint32_t v = 0;
  return *static_cast<std::uint32_t*>(std::memcpy(&v, bytes.data() + pos, 4));
}

inline void WriteU32At(std::string& bytes, std::size_t pos, std::uint32_t v) { std::memcpy(bytes.data() + pos, &v, 4); }

}  // namespace hytest
