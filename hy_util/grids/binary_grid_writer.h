#pragma once
// CHU_HYBinaryGridWriter: writes the binary grid file layout to an open stream.
//
// The file is a 44-byte little-endian header ("HYBG", version 3, ncols, nrows,
// lower-left centre x and y, cell size as float64, no-data as float32), a table
// of nrows uint32 absolute row offsets, then one record per row: a uint32 length
// and that many bytes of zlib stream. The writer puts a zero table first, appends
// the records as the caller hands them over, and fills the table in at the end.
//
// Row offsets are 32-bit, so a file cannot place a row beyond 4 GiB; the writer
// refuses the first row that would start past the limit instead of writing a
// corrupt table (the limit can be lowered, which tests use). The stream is not
// owned; the writer keeps its own count of the bytes written, so the stream must
// not be moved by anyone else between the calls.

#include <cstdint>
#include <cstdio>
#include <vector>

#include "hy_util/grids/binary_grid_format.h"

enum class HU_GridWriteStatus {
  Ok,
  HeaderFailed,         // the fixed header could not be written
  InitialZerosFailed,   // the placeholder offset table could not be written
  RowFailed,            // a row record could not be written
  TooLarge,             // a row would start beyond the largest 32-bit offset
  SeekBackFailed,       // could not return to the offset table
  OffsetTableFailed,    // the real offset table could not be written
};

class CHU_HYBinaryGridWriter {
 public:
  static constexpr std::uint64_t kMaxRowOffset = 0xFFFFFFFFull;

  explicit CHU_HYBinaryGridWriter(std::FILE* stream, std::uint64_t maxRowOffset = kMaxRowOffset);

  // Writes the header and a zero offset table of header.nrows entries.
  HU_GridWriteStatus WriteHeader(const HU_HYBGHeader& header);

  // Appends one row record. The offset is recorded when row is within the table;
  // records beyond it are written but unreachable (as the classic converter does).
  HU_GridWriteStatus WriteRow(int row, const std::uint8_t* data, std::uint32_t length);

  // Seeks back to the table and writes the recorded offsets; the stream is left
  // just after the table.
  HU_GridWriteStatus WriteOffsetTable();

  std::uint64_t BytesWritten() const { return end_; }
  std::int64_t TableEnd() const { return tableStart_ + static_cast<std::int64_t>(offsets_.size()) * 4; }

 private:
  bool Put(const void* data, std::size_t size);

  std::FILE* stream_;
  std::uint64_t maxRowOffset_;
  std::int64_t tableStart_ = 0;  // stream position of the offset table
  std::uint64_t end_ = 0;        // stream position after the last byte written
  std::vector<std::uint32_t> offsets_;
};
