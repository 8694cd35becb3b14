#pragma once
// CHU_HYBinaryGridFile: reader of the HY binary grid file (see binary_grid_format.h
// for the layout), for sampling a large terrain grid at points and averaging it
// under polygons without loading the raster. Every query opens the file, reads the
// header once per object (a failed read is retried on the next query), inflates
// only the rows it needs and closes the file again. Failures come back as a result
// code with the text kept for GetLastError(); a later failure replaces the text,
// success leaves it. Copies own their own row offset table.
//
// Choices of this implementation:
// - The header is checked before anything is allocated: at least one column and
//   row, a row that a file of this size could hold, a positive finite cell size
//   and a finite extent; a header failing that is refused like a damaged one
//   (HYBG_ERROR). Point coordinates that are not finite count as outside the grid,
//   and so does a polygon whose extent is not finite.
// - A row stream that inflates to fewer than ncols values is accepted, the rest of
//   the row reading as no-data; one that inflates to more, or fails, is an error.
// - A row that cannot be read during a polygon average ends the query with
//   HYBG_ERROR and the row's message, rather than averaging stale values.
// One object is for one thread at a time; distinct objects may read one file.

#include <cstdint>
#include <string>
#include <vector>

#include "hy_util/grids/binary_grid_format.h"

class CHU_DPolygon;
class CHU_StdioFile;

enum HYBG_ResultCode {
  HYBG_OK = 0,        // a value was produced
  HYBG_ERROR = 1,     // the file could not be opened, the header was bad, or a row could not be read
  HYBG_NO_DATA = 2,   // outside the grid, or no valid data under the point or polygon
  HYBG_PARTIAL = 3,   // average computed, but the polygon meets null data or reaches the grid's edge
};

// Fixed to int so that any method value a caller passes is well defined; values
// other than these two give HYBG_NO_DATA.
enum HYBG_ValueInterpolationMethod : int {
  HYBG_NEAREST = 0,   // value of the nearest node
  HYBG_BILINEAR = 1,  // bilinear among the four surrounding nodes, with fall-backs for null nodes
};

class CHU_HYBinaryGridFile {
 public:
  static constexpr std::int32_t CurrentVersion = HYBG_FILE_VERSION;

  explicit CHU_HYBinaryGridFile(const std::string& fileName);
  CHU_HYBinaryGridFile(const CHU_HYBinaryGridFile& other) = default;
  CHU_HYBinaryGridFile& operator=(const CHU_HYBinaryGridFile& other) = default;
  ~CHU_HYBinaryGridFile() = default;

  // The value at (x, y) by the method. value is written only with HYBG_OK.
  HYBG_ResultCode GetZValue(double x, double y, float& value, HYBG_ValueInterpolationMethod method);
  // Mean of the valid nodes that pass the polygon's PtInPoly. average is written
  // when at least one valid node was found (HYBG_OK or HYBG_PARTIAL); HYBG_PARTIAL
  // also whenever the polygon's extent touches the grid's edge.
  HYBG_ResultCode GetAverageZValueOverPolygon(const CHU_DPolygon& polygon, float& average);

  std::string GetLastError() const { return m_lastError; }

 private:
  bool ReadHeader();
  bool OpenForQuery(CHU_StdioFile& file, std::int64_t& fileSize);
  bool ReadValuesFromRow(CHU_StdioFile& file, std::int64_t fileSize, int row, int c0, int c1, float* out);
  bool PerformBilinearInterpolation(float zUL, float zUR, float zLL, float zLR, double x, double y,
                                    double x0, double y0, double x1, double y1, float& result);
  HYBG_ResultCode BilinearValue(CHU_StdioFile& file, std::int64_t fileSize, double x, double y, float& value);
  HYBG_ResultCode NearestValue(CHU_StdioFile& file, std::int64_t fileSize, double x, double y, float& value);
  HYBG_ResultCode SumInsideNodes(const CHU_DPolygon& polygon, CHU_StdioFile& file, std::int64_t fileSize,
                                 int c0, int c1, int r0, int r1, double& sum, std::int64_t& count,
                                 bool& metNull);

  std::string m_fileName;
  bool m_headerLoaded = false;
  HU_HYBGHeader m_header;  // ncols, nrows, lower-left x and y, cell size, no-data value
  std::vector<std::uint32_t> m_rowOffsets;
  std::string m_lastError;
};
