#pragma once
// Row sources for the grid converter: the rows of an ESRI ASCII or float grid,
// one at a time, north to south, as float32 values.
//
// The header is read by the ESRI grid classes (same keywords, same checks, same
// progress start). The ASCII source then reads the values as one stream from a
// large buffer rather than line by line: a row is the next ncols values whatever
// the line breaks, so files with one value per line or wrapped rows convert as
// well as one-row-per-line files; only a line holding more than ncols values is
// cut to its first ncols, as the classic converter cuts it. As in the ESRI readers, values are split at
// blanks and tabs (and line ends), a line whose first token is not a number is
// skipped, and a token that is not a number reads as the no-data value (counted
// in BadTokens). The float source reads raw little-endian float32 rows.
// Values that the file lacks read as the no-data value; the caller sees how many
// were read. 16-bit (UTF-16) text grids are not read by this source.

#include <cstdint>
#include <cstdio>
#include <memory>
#include <string>

#include "hy_util/grids/binary_grid_writer.h"

class IHU_GridRowSource {
 public:
  virtual ~IHU_GridRowSource() = default;

  const HU_HYBGHeader& Header() const { return header_; }
  // Fills row[0..ncols-1]; valuesRead is the number of values the file held for
  // it (the rest are no-data). False, with GetLastError, on a read failure.
  virtual bool ReadRow(float* row, std::size_t& valuesRead) = 0;
  // Values that were left in the file after the last row (0 when unknown).
  virtual std::int64_t ExtraValues() { return 0; }
  std::int64_t BadTokens() const { return badTokens_; }
  // Values dropped because their line held more than ncols values, and the number
  // (from 1) of the first such line in the file; both 0 when there were none.
  std::int64_t LongLineValues() const { return longLineValues_; }
  std::int64_t FirstLongLine() const { return firstLongLine_; }
  const std::string& GetLastError() const { return error_; }

 protected:
  HU_HYBGHeader header_;
  std::int64_t badTokens_ = 0;
  std::int64_t longLineValues_ = 0;
  std::int64_t firstLongLine_ = 0;
  std::string error_;
};

// Opens path as a float grid (by CHU_File_EsriGrid_Helper::isFltFile) or an ASCII
// grid and reads its header. nullptr with the reason in error when it cannot.
std::unique_ptr<IHU_GridRowSource> HU_OpenGridRowSource(const std::string& path, std::string& error);
