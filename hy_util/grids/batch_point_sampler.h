#pragma once
// CHU_HYBGBatchPointSampler: a class of our own, beyond the reader itself, that
// answers many point queries on one HY binary grid file at once. Points are
// worked through in row order, so each row they need is inflated once and held in
// a small row cache (a few rows per worker thread); the work can be split over
// several threads, each with its own file handle.
//
// Every answer (code and value) is exactly what CHU_HYBinaryGridFile::GetZValue
// gives for that point on a freshly constructed reader: both go through the same
// cell, nearest-node and interpolation functions. GetLastError() afterwards holds
// the text that a fresh reader would hold after the same points were asked one by
// one in order. Rows are inflated with libdeflate: on a damaged file a row may be
// judged differently from the reader's zlib path, but every path fails safely.

#include <span>
#include <string>
#include <vector>

#include "hy_util/grids/binary_grid_file.h"

// A point of a batch query, in grid coordinates.
struct HU_HYBGPoint {
  double x = 0.0;
  double y = 0.0;
};

// The answer for one point: value is meaningful only when code is HYBG_OK.
struct HU_HYBGPointAnswer {
  HYBG_ResultCode code = HYBG_ERROR;
  float value = 0.0f;
};

class CHU_HYBGBatchPointSampler {
 public:
  // threads = 0 uses every core; 1 works on the calling thread only.
  explicit CHU_HYBGBatchPointSampler(const std::string& fileName, int threads = 0);

  // answers[i] answers points[i].
  std::vector<HU_HYBGPointAnswer> Sample(std::span<const HU_HYBGPoint> points,
                                         HYBG_ValueInterpolationMethod method);

  std::string GetLastError() const { return m_lastError; }

 private:
  struct Task;
  class Worker;

  void RunTasks(const std::vector<Task>& tasks, HYBG_ValueInterpolationMethod method,
                std::span<const HU_HYBGPoint> points, std::vector<HU_HYBGPointAnswer>& answers,
                std::vector<int>& failedRows);
  void SetLastError(std::span<const HU_HYBGPoint> points, const std::vector<HU_HYBGPointAnswer>& answers,
                    const std::vector<int>& failedRows);

  std::string m_fileName;
  int m_threads;
  HU_HYBGHeader m_header;
  std::vector<std::uint32_t> m_rowOffsets;
  std::string m_lastError;
};

// The number of worker threads for a request: 0 means every core.
int HU_HYBGResolveThreads(int requested);
