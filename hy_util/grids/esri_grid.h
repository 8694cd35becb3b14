#pragma once
// CHU_File_EsriGrid: common base of the ESRI ASCII and float grid readers.
//
// Format: a keyword header (see CHU_File_EsriGridHeader) and nrows rows of ncols
// values, the first row the northernmost, each row west to east. The node in row
// r and column c lies at x = xllcenter + c * cellsize and
// y = yllcenter + (nrows - 1 - r) * cellsize. This base reads the text form
// (values split at blanks and tabs, numbers parsed whatever the process locale);
// CHU_File_EsriGridASCII and CHU_File_EsriGridBinary add what differs.
//
// Reading gives one CHU_DPoint (x, y, value) per node holding data, in arrays that
// the caller owns; a value equal to the no-data value is counted but gives no
// point. A data line is a line whose first token is a number (IsValidToken); other
// lines are skipped. A token that is not a number counts as read but gives no
// point. Progress is reported to the host once per 1% of the rows.
//
// ConvertToHYBinaryGridFile writes the binary grid file: the header, a zero
// offset table, then one compressed record per data line, and finally the real
// offset table. It keeps the classic converter's behaviour exactly: each text line
// is one row, a short line gives a short record, and when values are missing
// their count is reported and that many no-data values are written as doubles
// just after the offset table (over the first records; the padding never grows
// the file, so a header claiming a huge grid cannot fill the disk). Beyond that, a row that would start past the
// 32-bit offset limit stops the conversion (and the path variant removes the
// partial file); the limit can be lowered for tests.

#include <cstdint>
#include <cstdio>
#include <memory>
#include <string>
#include <vector>

#include "hy_util/core/text_file.h"
#include "hy_util/geometry/point.h"
#include "hy_util/grids/esri_grid_header.h"

class CHU_HYBinaryGridWriter;

// Points handed to the caller, who owns them.
using HU_GridPointArray = std::vector<std::unique_ptr<CHU_DPoint>>;

class CHU_File_EsriGrid : public CHU_File {
 public:
  CHU_File_EsriGrid(const char* path, unsigned int flags);
  ~CHU_File_EsriGrid() override;

  using CHU_File::ReadLine;

  // Raw values of the next row into row[0..ncols-1]; the base does nothing.
  virtual bool ReadRowData(float* row);
  // The points of the next data row; lines that are not data are counted in
  // *skipped (when given). False at end of file.
  virtual bool ReadLine(HU_GridPointArray& points, int* skipped);
  // Checks the data part of the file; the base has nothing to check.
  virtual bool CheckData(int* blocks);
  virtual bool ReadHeader();
  // The points of the whole grid, values taken in order regardless of line breaks
  // up to the end of the file.
  virtual bool ReadData(HU_GridPointArray& points, int* skipped);
  virtual bool WriteHeader();
  virtual bool WriteNextData(const std::string& text);
  virtual bool WriteNextData(float value);
  virtual bool ConvertToHYBinaryGridFile(std::FILE* stream);
  virtual bool ConvertToHYBinaryGridFile(const std::string& path);
  virtual bool IsSingleFile() const;

  // A data line starts with a number.
  static bool IsValidToken(const std::string& token);

  std::int32_t GetColCount() const;
  std::int32_t GetRowCount() const;
  double GetXllCenter() const;
  double GetYllCenter() const;
  double GetCellSize() const;
  double GetNoDataValue() const;
  std::int64_t GetPointsRead() const { return pointsRead_; }
  // The header object, or nullptr before ReadHeader or CreateHeader.
  CHU_File_EsriGridHeader* GetHeader() const { return header_.get(); }
  // A fresh header to fill in before writing a grid.
  CHU_File_EsriGridHeader& CreateHeader();

  // Path of the header file: the grid itself for single-file grids, else the
  // grid's name with its extension replaced by ".hdr".
  virtual std::string HeaderPath() const;

  // Lowers the largest row offset a conversion may write (tests; default 4 GiB - 1).
  void SetMaxRowOffset(std::uint64_t maxRowOffset) { maxRowOffset_ = maxRowOffset; }

 protected:
  // Advances the row index and moves the progress display every 1% of the rows.
  void AdvanceRow();
  // y of the node row about to be read.
  double CurrentRowY() const;
  // Appends a point for a value unless it is the no-data value.
  void AddPoint(HU_GridPointArray& points, double x, double y, double value);
  // Writes one compressed row; false (with the message shown) when it cannot.
  bool WriteCompressedRow(CHU_HYBinaryGridWriter& writer, int row, const float* values, std::size_t count,
                          std::vector<std::uint8_t>& packed);
  // Reads the next data line's tokens; false at end of file.
  bool ReadDataTokens(std::vector<std::string>& tokens, int* skipped);
  // Shows a conversion message to the user.
  static void ShowConversionMessage(const std::string& text);
  // Writes the row records of the conversion and counts the values read.
  virtual bool ConvertRows(CHU_HYBinaryGridWriter& writer, std::int64_t& valuesRead);
  // Called when values are missing, with the stream just after the offset table
  // (at position) and the end of the file written so far.
  virtual bool WriteMissingValues(std::FILE* stream, std::int64_t missing, std::int64_t position,
                                  std::int64_t end);
  bool IsNoData(double value) const;

  std::unique_ptr<CHU_File_EsriGridHeader> header_;
  std::int64_t pointsRead_ = 0;
  int row_ = 0;          // index of the next row to read
  int progressRow_ = 0;  // row index at the last progress update
  std::uint64_t maxRowOffset_ = 0xFFFFFFFFull;
};
