#include "hy_util/grids/binary_grid_writer.h"

#include <bit>
#include <cstring>

namespace {

// Appends the little-endian bytes of an integer or an IEEE value.
template <typename T>
void PutLittleEndian(std::vector<std::uint8_t>& out, T value) {
  static_assert(sizeof(T) == 4 || sizeof(T) == 8);
  std::uint64_t bits = 0;
  std::memcpy(&bits, &value, sizeof(T));  // the low bytes of bits, on either byte order
  if constexpr (sizeof(T) == 4 && std::endian::native == std::endian::big) bits >>= 32;
  for (std::size_t i = 0; i < sizeof(T); ++i) out.push_back(static_cast<std::uint8_t>(bits >> (8 * i)));
}

}  // namespace

CHU_HYBinaryGridWriter::CHU_HYBinaryGridWriter(std::FILE* stream, std::uint64_t maxRowOffset)
    : stream_(stream), maxRowOffset_(maxRowOffset) {}

bool CHU_HYBinaryGridWriter::Put(const void* data, std::size_t size) {
  if (size == 0) return true;
  if (std::fwrite(data, 1, size, stream_) != size) return false;
  end_ += size;
  return true;
}

HU_GridWriteStatus CHU_HYBinaryGridWriter::WriteHeader(const HU_HYBGHeader& header) {
  const off_t start = ftello(stream_);
  end_ = start > 0 ? static_cast<std::uint64_t>(start) : 0;
  std::vector<std::uint8_t> bytes;
  PutLittleEndian(bytes, HYBG_FILE_MAGIC);
  PutLittleEndian(bytes, HYBG_FILE_VERSION);
  PutLittleEndian(bytes, header.ncols);
  PutLittleEndian(bytes, header.nrows);
  PutLittleEndian(bytes, header.xllcenter);
  PutLittleEndian(bytes, header.yllcenter);
  PutLittleEndian(bytes, header.cellSize);
  PutLittleEndian(bytes, header.noData);
  if (!Put(bytes.data(), bytes.size())) return HU_GridWriteStatus::HeaderFailed;

  tableStart_ = static_cast<std::int64_t>(end_);
  offsets_.assign(header.nrows > 0 ? static_cast<std::size_t>(header.nrows) : 0, 0);
  if (!Put(offsets_.data(), offsets_.size() * 4)) return HU_GridWriteStatus::InitialZerosFailed;
  return HU_GridWriteStatus::Ok;
}

HU_GridWriteStatus CHU_HYBinaryGridWriter::WriteRow(int row, const std::uint8_t* data, std::uint32_t length) {
  if (end_ > maxRowOffset_) return HU_GridWriteStatus::TooLarge;
  if (row >= 0 && static_cast<std::size_t>(row) < offsets_.size()) {
    offsets_[static_cast<std::size_t>(row)] = static_cast<std::uint32_t>(end_);
  }
  std::vector<std::uint8_t> prefix;
  PutLittleEndian(prefix, length);
  if (!Put(prefix.data(), prefix.size()) || !Put(data, length)) return HU_GridWriteStatus::RowFailed;
  return HU_GridWriteStatus::Ok;
}

HU_GridWriteStatus CHU_HYBinaryGridWriter::WriteOffsetTable() {
  if (fseeko(stream_, static_cast<off_t>(tableStart_), SEEK_SET) != 0) {
    return HU_GridWriteStatus::SeekBackFailed;
  }
  std::vector<std::uint8_t> bytes;
  bytes.reserve(offsets_.size() * 4);
  for (std::uint32_t offset : offsets_) PutLittleEndian(bytes, offset);
  if (bytes.empty()) return HU_GridWriteStatus::Ok;
  if (std::fwrite(bytes.data(), 1, bytes.size(), stream_) != bytes.size()) {
    return HU_GridWriteStatus::OffsetTableFailed;
  }
  return HU_GridWriteStatus::Ok;
}
