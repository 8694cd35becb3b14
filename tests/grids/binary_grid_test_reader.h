#pragma once
// A plain reader of the binary grid file for checking what the converters write:
// no library code, just the layout read field by field and each row record
// inflated with zlib. Inflated rows keep their length, so short records show.

#include <zlib.h>

#include <cstdint>
#include <cstring>
#include <string>
#include <vector>

namespace hytest {

struct DecodedGrid {
  std::string magic;
  std::int32_t version = 0, ncols = 0, nrows = 0;
  double xll = 0, yll = 0, cellSize = 0;
  float noData = 0;
  std::vector<std::uint32_t> offsets, lengths;
  std::vector<std::vector<float>> rows;
};

// The field of type T at byte position at; zero past the end.
template <typename T>
T DecodeField(const std::string& bytes, std::size_t at) {
  T value{};
  if (at + sizeof(T) <= bytes.size()) std::memcpy(&value, bytes.data() + at, sizeof(T));
  return value;
}

// Decodes the file's bytes; false with the reason when a field or record is
// missing or a stream does not inflate.
inline bool DecodeBinaryGrid(const std::string& bytes, DecodedGrid& grid, std::string& why) {
  if (bytes.size() < 44) return (why = "short header"), false;
  grid.magic = bytes.substr(0, 4);
  grid.version = DecodeField<std::int32_t>(bytes, 4), grid.ncols = DecodeField<std::int32_t>(bytes, 8);
  grid.nrows = DecodeField<std::int32_t>(bytes, 12), grid.xll = DecodeField<double>(bytes, 16);
  grid.yll = DecodeField<double>(bytes, 24), grid.cellSize = DecodeField<double>(bytes, 32);
  grid.noData = DecodeField<float>(bytes, 40);
  if (grid.nrows < 0 || 44 + 4 * static_cast<std::size_t>(grid.nrows) > bytes.size()) return (why = "short offset table"), false;
  for (int r = 0; r < grid.nrows; ++r) {
    const std::uint32_t offset = DecodeField<std::uint32_t>(bytes, 44 + 4 * static_cast<std::size_t>(r));
    const std::uint32_t length = DecodeField<std::uint32_t>(bytes, offset);
    if (std::size_t{offset} + 4 + length > bytes.size()) return (why = "row " + std::to_string(r) + " past end"), false;
    std::vector<float> row(static_cast<std::size_t>(grid.ncols));
    uLongf size = static_cast<uLongf>(row.size() * 4);
    if (uncompress(reinterpret_cast<Bytef*>(row.data()), &size, reinterpret_cast<const Bytef*>(bytes.data() + offset + 4),
                   length) != Z_OK)
      return (why = "row " + std::to_string(r) + " does not inflate"), false;
    row.resize(size / 4);
    grid.offsets.push_back(offset), grid.lengths.push_back(length), grid.rows.push_back(std::move(row));
  }
  return true;
}

}  // namespace hytest
