#pragma once
// CHU_File_EsriGridBinary: the ESRI float grid, a ".flt" data file beside a
// ".hdr" keyword header of the same name.
//
// Format: the data file holds nrows x ncols float32 values, row by row from the
// north, west to east, little-endian, with no header of its own. The ".hdr" file
// holds the same keywords as an ASCII grid's header; a "byteorder" line after
// NODATA_value is not read, and big-endian ("MSBFIRST") data is not supported.
// A value equal to the no-data value (compared in double) gives no point.

#include <vector>

#include "hy_util/grids/esri_grid.h"

class CHU_File_EsriGridBinary : public CHU_File_EsriGrid {
 public:
  explicit CHU_File_EsriGridBinary(const char* path,
                                   unsigned int flags = HU_modeRead | HU_shareDenyNone | HU_typeBinary);

  // Reads ncols values into row; always true (a short read leaves the rest as it was).
  bool ReadRowData(float* row) override;
  // The points of the next row; a short read stops the progress display and fails.
  bool ReadLine(HU_GridPointArray& points, int* skipped) override;
  // Reads the data file to its end in blocks of nrows x ncols values; false when
  // the last block is short or there is none. *blocks receives the number of
  // whole blocks.
  bool CheckData(int* blocks) override;
  // The points of the whole grid, row after row from the start of the data file
  // to its end.
  bool ReadData(HU_GridPointArray& points, int* skipped) override;
  // Writes nothing.
  bool WriteNextData(const std::string& text) override;
  // Writes the value as four raw bytes.
  bool WriteNextData(float value) override;
  bool IsSingleFile() const override { return false; }

 protected:
  // Converts whole rows; a data file shorter than the header says is reported
  // as missing values and not converted.
  bool ConvertRows(CHU_HYBinaryGridWriter& writer, std::int64_t& valuesRead) override;
  // Rows of a float grid are always whole, so nothing is padded.
  bool WriteMissingValues(std::FILE*, std::int64_t, std::int64_t, std::int64_t) override { return true; }

 private:
  // Reads up to one row of values into row; the number of whole values read.
  std::size_t ReadRawRow(float* row);

  std::vector<float> rowBuffer_;
};
