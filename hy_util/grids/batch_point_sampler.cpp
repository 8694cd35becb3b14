#include "hy_util/grids/batch_point_sampler.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <thread>

#include "hy_util/grids/binary_grid_lookup.h"
#include "hy_util/platform/file.h"

namespace {

constexpr int kOpenFailed = -2;  // failed-row marker: the worker could not open the file
constexpr std::size_t kMinTasksPerThread = 2048;

}  // namespace

int HU_HYBGResolveThreads(int requested) {
  if (requested > 0) return requested;
  const unsigned cores = std::thread::hardware_concurrency();
  return cores == 0 ? 1 : static_cast<int>(cores);
}

struct CHU_HYBGBatchPointSampler::Task {
  int firstRow;  // the first row the point reads: tasks are sorted by it
  int index;     // the point's position in the caller's list
};

// One thread's share of the work: its own file handle, row reader and a small
// cache of inflated rows. Tasks arrive in row order, so four slots mean every row
// is inflated once per worker.
class CHU_HYBGBatchPointSampler::Worker {
 public:
  Worker(const std::string& fileName, const HU_HYBGHeader& header, const std::vector<std::uint32_t>& offsets)
      : fileName_(fileName), header_(header), reader_(fileName, header, offsets, HU_HYBGInflater::Libdeflate) {}

  bool Open() {
    if (!file_.Open(fileName_, HU_modeRead | HU_typeBinary)) return false;
    fileSize_ = file_.GetLength();
    return true;
  }

  // The inflated row, or nullptr when it cannot be read (error gets the message).
  const float* Row(int row, std::string& error) {
    ++clock_;
    Slot* victim = &slots_[0];
    for (Slot& slot : slots_) {
      if (slot.row == row) {
        slot.lastUse = clock_;
        if (!slot.ok) error = slot.error;
        return slot.ok ? slot.values.data() : nullptr;
      }
      if (slot.lastUse < victim->lastUse) victim = &slot;
    }
    victim->row = row;
    victim->lastUse = clock_;
    victim->values.resize(static_cast<std::size_t>(header_.ncols));
    victim->ok = reader_.ReadRow(file_, fileSize_, row, victim->values.data(), victim->error);
    if (!victim->ok) error = victim->error;
    return victim->ok ? victim->values.data() : nullptr;
  }

  // The answer for one point inside the grid; failedRow gets the row that failed.
  HU_HYBGPointAnswer Answer(const HU_HYBGPoint& p, HYBG_ValueInterpolationMethod method, int& failedRow) {
    const HU_HYBGCell cell = HU_HYBGLocate(header_, HU_HYBGGetBounds(header_), p.x, p.y);
    if (method == HYBG_BILINEAR && !HU_HYBGIsOnUpperLeftNode(cell, p.x, p.y)) return Bilinear(p, cell, failedRow);
    int row = 0;
    int column = 0;
    HU_HYBGNearestNode(cell, p.x, p.y, row, column);
    std::string error;
    const float* values = Row(row, error);
    if (values == nullptr) {
      failedRow = row;
      return {HYBG_ERROR, 0.0f};
    }
    const float node = values[column];
    if (node != header_.noData) return {HYBG_OK, node};
    return {HYBG_NO_DATA, 0.0f};
  }

 private:
  struct Slot {
    int row = -1;
    bool ok = false;
    std::uint64_t lastUse = 0;
    std::vector<float> values;
    std::string error;
  };

  HU_HYBGPointAnswer Bilinear(const HU_HYBGPoint& p, const HU_HYBGCell& cell, int& failedRow) {
    std::string error;
    const float* upper = Row(cell.r0, error);
    if (upper == nullptr) {
      failedRow = cell.r0;
      return {HYBG_ERROR, 0.0f};
    }
    const float zUL = upper[cell.c0];
    const float zURread = upper[cell.c1];
    const float* lower = Row(cell.r1, error);
    if (lower == nullptr) {
      failedRow = cell.r1;
      return {HYBG_ERROR, 0.0f};
    }
    const float nd = header_.noData;
    const bool oneColumn = cell.c1 == cell.c0;
    const bool oneRow = cell.r1 == cell.r0;
    const float zUR = oneColumn ? nd : zURread;
    const float zLL = oneRow ? nd : lower[cell.c0];
    const float zLR = oneColumn || oneRow ? nd : lower[cell.c1];
    float result = 0.0f;
    if (HU_HYBGInterpolate(zUL, zUR, zLL, zLR, nd, header_.cellSize, p.x, p.y, cell, result))
      return {HYBG_OK, result};
    return {HYBG_NO_DATA, 0.0f};
  }

  const std::string& fileName_;
  const HU_HYBGHeader& header_;
  CHU_HYBGRowReader reader_;
  CHU_StdioFile file_;
  std::int64_t fileSize_ = 0;
  std::array<Slot, 4> slots_;
  std::uint64_t clock_ = 0;
};

CHU_HYBGBatchPointSampler::CHU_HYBGBatchPointSampler(const std::string& fileName, int threads)
    : m_fileName(fileName), m_threads(HU_HYBGResolveThreads(threads)) {}

std::vector<HU_HYBGPointAnswer> CHU_HYBGBatchPointSampler::Sample(std::span<const HU_HYBGPoint> points,
                                                                  HYBG_ValueInterpolationMethod method) {
  std::vector<HU_HYBGPointAnswer> answers(points.size());
  CHU_StdioFile file;
  if (!file.Open(m_fileName, HU_modeRead | HU_typeBinary)) {
    if (!points.empty()) m_lastError = HU_HYBGOpenMessage(m_fileName);
    return answers;
  }
  std::string headerError;
  if (!HU_ReadHYBGHeader(file, m_fileName, m_header, m_rowOffsets, headerError)) {
    if (!points.empty()) m_lastError = headerError;
    return answers;
  }
  file.Close();

  const HU_HYBGBounds bounds = HU_HYBGGetBounds(m_header);
  const bool knownMethod = method == HYBG_NEAREST || method == HYBG_BILINEAR;
  std::vector<Task> tasks;
  tasks.reserve(points.size());
  for (std::size_t i = 0; i < points.size(); ++i) {
    const HU_HYBGPoint& p = points[i];
    answers[i].code = HYBG_NO_DATA;
    if (!knownMethod || !HU_HYBGContains(bounds, p.x, p.y)) continue;
    const HU_HYBGCell cell = HU_HYBGLocate(m_header, bounds, p.x, p.y);
    int row = cell.r0;
    int column = 0;
    if (method == HYBG_NEAREST || HU_HYBGIsOnUpperLeftNode(cell, p.x, p.y))
      HU_HYBGNearestNode(cell, p.x, p.y, row, column);
    tasks.push_back({row, static_cast<int>(i)});
  }
  std::stable_sort(tasks.begin(), tasks.end(), [](const Task& a, const Task& b) { return a.firstRow < b.firstRow; });

  std::vector<int> failedRows(points.size(), -1);
  RunTasks(tasks, method, points, answers, failedRows);
  SetLastError(points, answers, failedRows);
  return answers;
}

void CHU_HYBGBatchPointSampler::RunTasks(const std::vector<Task>& tasks, HYBG_ValueInterpolationMethod method,
                                         std::span<const HU_HYBGPoint> points,
                                         std::vector<HU_HYBGPointAnswer>& answers, std::vector<int>& failedRows) {
  const std::size_t byLoad = tasks.size() / kMinTasksPerThread + 1;
  const std::size_t threads = std::min<std::size_t>(static_cast<std::size_t>(m_threads), byLoad);
  auto work = [&](std::size_t begin, std::size_t end) {
    Worker worker(m_fileName, m_header, m_rowOffsets);
    const bool open = worker.Open();
    for (std::size_t t = begin; t < end; ++t) {
      const auto i = static_cast<std::size_t>(tasks[t].index);
      if (!open) {
        answers[i] = {HYBG_ERROR, 0.0f};
        failedRows[i] = kOpenFailed;
        continue;
      }
      answers[i] = worker.Answer(points[i], method, failedRows[i]);
    }
  };
  std::vector<std::thread> pool;
  const std::size_t share = (tasks.size() + threads - 1) / threads;
  for (std::size_t k = 1; k < threads; ++k)
    pool.emplace_back(work, std::min(tasks.size(), k * share), std::min(tasks.size(), (k + 1) * share));
  work(0, std::min(tasks.size(), share));
  for (std::thread& t : pool) t.join();
}

void CHU_HYBGBatchPointSampler::SetLastError(std::span<const HU_HYBGPoint> points,
                                             const std::vector<HU_HYBGPointAnswer>& answers,
                                             const std::vector<int>& failedRows) {
  const HU_HYBGBounds bounds = HU_HYBGGetBounds(m_header);
  for (std::size_t i = answers.size(); i-- > 0;) {
    const HU_HYBGPoint& p = points[i];
    if (answers[i].code == HYBG_OK) continue;
    if (answers[i].code == HYBG_NO_DATA) {
      m_lastError = HU_HYBGContains(bounds, p.x, p.y) ? HU_HYBGPointNoDataMessage(m_fileName, p.x, p.y)
                                                      : HU_HYBGPointOutsideMessage(m_fileName, p.x, p.y, bounds);
      return;
    }
    Worker worker(m_fileName, m_header, m_rowOffsets);
    if (failedRows[i] < 0 || !worker.Open()) {
      m_lastError = HU_HYBGOpenMessage(m_fileName);
      return;
    }
    worker.Row(failedRows[i], m_lastError);
    return;
  }
}
