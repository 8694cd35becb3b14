#pragma once
// CHU_File_EsriGridASCII: the ESRI ASCII grid, header and values in one text file.
//
// Format: the keyword header (ncols, nrows, xllcenter/xllcorner,
// yllcenter/yllcorner, cellsize, optional NODATA_value), then the values as text
// separated by blanks or tabs, normally one row per line, north to south. Lines
// may end in LF or CR LF. Values are written with three decimals and a blank.
// Reading is done by CHU_File_EsriGrid; this class adds the raw row reader and
// the writers.

#include "hy_util/grids/esri_grid.h"

class CHU_File_EsriGridASCII : public CHU_File_EsriGrid {
 public:
  explicit CHU_File_EsriGridASCII(const char* path,
                                  unsigned int flags = HU_modeRead | HU_shareDenyNone | HU_typeText);

  // The next text line's first min(ncols, tokens) values as floats (a token that
  // is not a number gives the no-data value). False at end of file, or on a line
  // without tokens.
  bool ReadRowData(float* row) override;
  // Writes the header (centre form) at the current position of the grid's file.
  bool WriteHeader() override;
  // Writes the text as it stands.
  bool WriteNextData(const std::string& text) override;
  // Writes "%.3f " in the C locale's format.
  bool WriteNextData(float value) override;
  bool IsSingleFile() const override { return true; }
};
