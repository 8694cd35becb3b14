#pragma once
// CHU_GridConverter: converts an ESRI ASCII or float grid into the binary grid
// file, compressing rows on several threads.
//
// This class is our addition beside CHU_File_EsriGrid::ConvertToHYBinaryGridFile,
// for large grids. It streams: rows are read one at a time (see grid_row_source.h)
// and at most a small window of rows is in flight, so memory stays bounded (a few
// MiB at 8000 x 8000) whatever the grid's size. Rows are written in order; with
// the zlib codec the file is byte for byte the same whatever the thread count,
// and the same as the classic converter's for a grid of complete one-row lines.
// The libdeflate codec is faster and writes standard zlib streams too.
//
// Unlike the classic converter, a row is always ncols values, whatever the line
// breaks (like it, a line holding more than ncols values gives only its first
// ncols, with one warning naming the first such line): input that ends before nrows x ncols values is refused as cut short
// (so a damaged header cannot make a huge file out of a small one), and values
// beyond the last row are ignored with a warning. A row that would start beyond the
// 32-bit offset limit stops the conversion; on any failure the partial output
// file is removed. Progress goes to the host's progress display once per 1% of
// the rows (the caption is set when the header is read). One converter object is
// for one thread at a time; it starts and joins its own worker threads.

#include <cstdint>
#include <string>
#include <vector>

#include "hy_util/grids/binary_grid_writer.h"
#include "hy_util/grids/grid_row_codec.h"

class IHU_GridRowSource;

struct HU_GridConvertOptions {
  // 1: everything on the calling thread. N > 1: N threads compress while the
  // calling thread reads and writes.
  int threads = 1;
  HU_GridCodec codec = HU_GridCodec::Zlib;
  int libdeflateLevel = CHU_GridRowCompressor::kDefaultLibdeflateLevel;
  // Largest offset at which a row may start; lowered by tests.
  std::uint64_t maxRowOffset = CHU_HYBinaryGridWriter::kMaxRowOffset;
};

class CHU_GridConverter {
 public:
  explicit CHU_GridConverter(HU_GridConvertOptions options = {});

  // Converts input (.asc, or .flt with its .hdr) into output. False with
  // GetLastError naming the file and the fault.
  bool Convert(const std::string& input, const std::string& output);

  const std::string& GetLastError() const { return error_; }
  // Things a caller should know about a conversion that succeeded.
  const std::vector<std::string>& GetWarnings() const { return warnings_; }
  // The header of the grid converted last.
  const HU_HYBGHeader& GetHeader() const { return header_; }
  std::uint64_t GetOutputSize() const { return outputSize_; }

 private:
  class Pipeline;

  bool ReadRow(IHU_GridRowSource& source, int row, float* values);
  bool ConvertRows(IHU_GridRowSource& source, CHU_HYBinaryGridWriter& writer);
  bool WriteRow(CHU_HYBinaryGridWriter& writer, int row, const std::vector<std::uint8_t>& packed);
  void ReportProgress(int rowsWritten, int& lastReported) const;
  void CollectWarnings(IHU_GridRowSource& source, const std::string& input);

  HU_GridConvertOptions options_;
  std::string input_;
  std::string output_;
  std::string error_;
  std::vector<std::string> warnings_;
  HU_HYBGHeader header_;
  std::uint64_t outputSize_ = 0;
};
