#pragma once
// CHU_File_EsriGridHeader: the keyword header of an ESRI grid.
//
// Format: one "keyword value" pair per line, separated by blanks or tabs, in any
// order: ncols, nrows, xllcenter or xllcorner, yllcenter or yllcorner, cellsize,
// and optionally NODATA_value. Keywords are matched exactly (case included).
// The header is complete once ncols, nrows, cellsize and one form of each
// lower-left coordinate were seen; reading stops at NODATA_value when complete,
// or at the first other line, which is then given back to the data reader
// (so a header without NODATA_value ends at the first row of values). A missing
// centre is derived from the corner (corner + half a cell); when both are given,
// the centre wins. Empty lines are skipped.
//
// The ASCII grid's header is read from the grid's own open file; the float grid's
// header is this object's own ".hdr" file. Reading "nrows" starts the host's
// progress display over nrows steps. Beyond the classic reader, a complete header
// is also checked for sane values (counts from 1 to kMaxDimension, a positive
// finite cell size, finite coordinates), so that no reader allocates or loops on
// what a damaged header claims.
//
// Writing always gives the centre form in six lines with three decimals, in the
// C locale's format whatever the process locale is.

#include <cstdint>
#include <cstdio>
#include <string>

#include "hy_util/core/text_file.h"

class CHU_File_EsriGridHeader : public CHU_File {
 public:
  static constexpr std::int32_t kMaxDimension = 1000000;
  static constexpr double kDefaultNoData = -9999.0;

  // Opens path for reading unless it is empty (a header that is only written,
  // or read from another file).
  explicit CHU_File_EsriGridHeader(const char* path,
                                   unsigned int flags = HU_modeRead | HU_shareDenyNone | HU_typeText);

  // Reads the header from this object's own file; progressRow is set to 0 when
  // "nrows" is read.
  bool Read(int& progressRow);
  // Reads the header from another open text file, which is left at the first
  // data line.
  bool Read(CHU_File& source, int& progressRow);

  bool Write(std::FILE* stream) const;
  // Writes (replacing) this object's own file.
  bool Write() const;

  std::int32_t GetColCount() const { return ncols_; }
  std::int32_t GetRowCount() const { return nrows_; }
  double GetXllCenter() const { return xllcenter_; }
  double GetYllCenter() const { return yllcenter_; }
  double GetXllCorner() const { return xllcorner_; }
  double GetYllCorner() const { return yllcorner_; }
  double GetCellSize() const { return cellsize_; }
  double GetNoDataValue() const { return nodata_; }

  void SetColCount(std::int32_t ncols) { ncols_ = ncols; }
  void SetRowCount(std::int32_t nrows) { nrows_ = nrows; }
  void SetXllCenter(double x) { xllcenter_ = x; }
  void SetYllCenter(double y) { yllcenter_ = y; }
  void SetCellSize(double size) { cellsize_ = size; }
  void SetNoDataValue(double value) { nodata_ = value; }

 private:
  enum class Keyword { None, Ncols, Nrows, XllCenter, YllCenter, XllCorner, YllCorner, CellSize, NoData };

  void Reset();
  static Keyword Lookup(const std::string& word);
  bool Apply(Keyword keyword, const std::string& value, int& progressRow);
  bool IsComplete() const;
  bool HasSaneValues() const;
  void DeriveCentres();
  bool Finish();
  bool Fail();

  std::string path_;
  std::int32_t ncols_ = -1;
  std::int32_t nrows_ = -1;
  double xllcenter_ = 0.0;
  double yllcenter_ = 0.0;
  double xllcorner_ = 0.0;
  double yllcorner_ = 0.0;
  double cellsize_ = 0.0;
  double nodata_ = kDefaultNoData;
  bool seenNcols_ = false, seenNrows_ = false, seenCellSize_ = false;
  bool seenXCenter_ = false, seenYCenter_ = false, seenXCorner_ = false, seenYCorner_ = false;
  bool progressStarted_ = false;
};
