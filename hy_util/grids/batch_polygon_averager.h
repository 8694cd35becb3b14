#pragma once
// CHU_HYBGBatchPolygonAverager: a class of our own, beyond the reader itself, that
// averages one HY binary grid file under many polygons at once.
//
// The rows that any polygon's extent covers are inflated once each, in blocks of
// rows, and every polygon takes its share of each block. Within a row the nodes
// inside a polygon are found as spans between the edge crossings of that row
// rather than by a point test per node. The crossings are computed with the very
// expression of CHU_DPolygon::PtInPoly (a node counts an edge when it lies on or
// left of the crossing, with the half-open rule for edge ends), and any node that
// lies within rounding distance of a crossing is re-tested with PtInPoly itself,
// so the inside nodes are exactly those of the point test. Nodes are summed row by
// row, west to east, as CHU_HYBinaryGridFile::GetAverageZValueOverPolygon sums
// them, so code and average are bit-identical to it on an intact file. A polygon
// with a vertex that is not a finite number is tested node by node.
//
// With several threads, the rows of a block are inflated in parallel and the
// polygons are then shared out, each polygon's sum staying on one thread in row
// order. Memory is bounded by one block of rows per call. Rows are inflated with
// libdeflate; on a damaged file every polygon whose rows cannot be read gets
// HYBG_ERROR.

#include <span>
#include <string>
#include <vector>

#include "hy_util/grids/binary_grid_file.h"

// The answer for one polygon: average is meaningful only when hasAverage is set,
// which is when the reader would have written its average argument.
struct HU_HYBGPolygonAnswer {
  HYBG_ResultCode code = HYBG_ERROR;
  float average = 0.0f;
  bool hasAverage = false;
};

class CHU_HYBGBatchPolygonAverager {
 public:
  // threads = 0 uses every core; 1 works on the calling thread only.
  explicit CHU_HYBGBatchPolygonAverager(const std::string& fileName, int threads = 0);
  ~CHU_HYBGBatchPolygonAverager();

  // answers[i] answers polygons[i]; a null pointer counts as a polygon without extent.
  std::vector<HU_HYBGPolygonAnswer> Average(std::span<const CHU_DPolygon* const> polygons);

  // The text a fresh CHU_HYBinaryGridFile would hold after the same polygons were
  // averaged one by one in order.
  std::string GetLastError() const { return m_lastError; }

 private:
  struct Job;
  struct Block;

  std::vector<Job> PrepareJobs(std::span<const CHU_DPolygon* const> polygons,
                               std::vector<HU_HYBGPolygonAnswer>& answers);
  void RunBlocks(std::vector<Job>& jobs);
  void Finish(std::vector<Job>& jobs, std::vector<HU_HYBGPolygonAnswer>& answers);

  std::string m_fileName;
  int m_threads;
  HU_HYBGHeader m_header;
  std::vector<std::uint32_t> m_rowOffsets;
  std::string m_lastError;
};
