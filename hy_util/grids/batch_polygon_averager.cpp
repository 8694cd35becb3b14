#include "hy_util/grids/batch_polygon_averager.h"

#include <algorithm>
#include <barrier>
#include <cfloat>
#include <cmath>
#include <thread>

#include "hy_util/geometry/point.h"
#include "hy_util/geometry/polygon.h"
#include "hy_util/geometry/rect.h"
#include "hy_util/grids/batch_point_sampler.h"
#include "hy_util/grids/binary_grid_lookup.h"
#include "hy_util/platform/file.h"

namespace {

constexpr int kMaxBlockRows = 64;
constexpr std::size_t kBlockBytes = 8u << 20;  // inflated rows held at once

struct Edge {
  double ax, ay, bx, by;
};

// Where a node row meets an edge: nodes with x <= at count the edge. Nodes within
// band of at are re-tested with PtInPoly.
struct Crossing {
  double at;
  double band;
  bool operator<(const Crossing& other) const { return at < other.at; }
};

// Per-thread scratch space for one row of one polygon.
struct RowScratch {
  std::vector<Crossing> crossings;
  std::vector<double> sortedAt;
  std::vector<std::pair<int, bool>> overrides;
  std::vector<char> inside;
};

}  // namespace

struct CHU_HYBGBatchPolygonAverager::Job {
  const CHU_DPolygon* polygon = nullptr;
  int index = 0;
  HU_HYBGPolygonRange range;
  std::vector<Edge> edges;
  bool nodeByNode = false;  // a vertex is not finite: use the point test on every node
  double sum = 0.0;
  std::int64_t count = 0;
  bool metNull = false;
  bool failed = false;
  std::string error;
};

// A block of consecutive rows, inflated together.
struct CHU_HYBGBatchPolygonAverager::Block {
  int firstRow = 0;
  int rowCount = 0;
  std::vector<int> jobs;     // jobs whose row range meets the block, in job order
  std::vector<char> needed;  // per row of the block: some job reads it
};

namespace {

class RowAccumulator {
 public:
  RowAccumulator(const HU_HYBGHeader& header, const HU_HYBGBounds& bounds) : h_(header), b_(bounds) {}

  // Adds the inside nodes of row r of a polygon to its sum, west to east.
  template <typename JobT>
  void Add(JobT& job, int r, const float* values, RowScratch& scratch) const {
    const double py = b_.ymax - r * h_.cellSize;
    const int c0 = job.range.c0;
    const int c1 = job.range.c1;
    auto take = [&](int c) {
      const float v = values[c];
      if (v == h_.noData) {
        job.metNull = true;
      } else {
        ++job.count;
        job.sum += v;
      }
    };
    if (job.nodeByNode) {
      for (int c = c0; c <= c1; ++c)
        if (job.polygon->PtInPoly(CHU_DPoint(X(c), py))) take(c);
      return;
    }
    FindCrossings(job.edges, py, scratch);
    FindOverrides(*job.polygon, py, c0, c1, scratch);
    if (scratch.overrides.empty()) {
      ForEachSpan(c0, c1, scratch, [&](int lo, int hi) {
        for (int c = lo; c <= hi; ++c) take(c);
      });
      return;
    }
    scratch.inside.assign(static_cast<std::size_t>(c1 - c0 + 1), 0);
    ForEachSpan(c0, c1, scratch, [&](int lo, int hi) {
      std::fill(scratch.inside.begin() + (lo - c0), scratch.inside.begin() + (hi - c0 + 1), 1);
    });
    for (const auto& [c, in] : scratch.overrides) scratch.inside[static_cast<std::size_t>(c - c0)] = in ? 1 : 0;
    for (int c = c0; c <= c1; ++c)
      if (scratch.inside[static_cast<std::size_t>(c - c0)]) take(c);
  }

 private:
  double X(int c) const { return b_.xmin + c * h_.cellSize; }

  // The same edge test as PtInPoly, reduced to a threshold on x for this row.
  static void FindCrossings(const std::vector<Edge>& edges, double py, RowScratch& scratch) {
    scratch.crossings.clear();
    for (const Edge& e : edges) {
      if ((e.ay < py) == (e.by < py)) continue;
      const double maxX = e.ax > e.bx ? e.ax : e.bx;
      if (e.ax == e.bx) {
        scratch.crossings.push_back({e.ax, 64 * DBL_EPSILON * std::fabs(e.ax)});
        continue;
      }
      const double at = e.ax + (e.bx - e.ax) * (py - e.ay) / (e.by - e.ay);
      if (std::isnan(at)) continue;
      const double slope = std::fabs(e.bx - e.ax) / std::fabs(e.by - e.ay);
      const double scale = std::fabs(e.ax) + std::fabs(e.bx) + std::fabs(at) +
                           (std::fabs(e.ay) + std::fabs(e.by) + std::fabs(py)) * slope;
      scratch.crossings.push_back({at < maxX ? at : maxX, 64 * DBL_EPSILON * scale});
    }
    std::sort(scratch.crossings.begin(), scratch.crossings.end());
    scratch.sortedAt.clear();
    for (const Crossing& k : scratch.crossings) scratch.sortedAt.push_back(k.at);
  }

  // The last column in [c0 - 1, c1] whose node x is <= t (node x grows with c).
  int LastColumnAtOrBefore(double t, int c0, int c1) const {
    if (!(X(c0) <= t)) return c0 - 1;
    if (X(c1) <= t) return c1;
    const double q = std::floor((t - b_.xmin) / h_.cellSize);
    int g = q < c0 ? c0 : (q > c1 ? c1 : static_cast<int>(q));
    while (g < c1 && X(g + 1) <= t) ++g;
    while (g > c0 && X(g) > t) --g;
    return g;
  }

  // Inside by the crossings: an odd number of crossings at or east of the node.
  static bool InsideBySpans(const RowScratch& scratch, double px) {
    const auto before = std::lower_bound(scratch.sortedAt.begin(), scratch.sortedAt.end(), px);
    return ((scratch.sortedAt.end() - before) & 1) != 0;
  }

  // Calls span(lo, hi) for each run of inside columns, west to east.
  template <typename SpanFn>
  void ForEachSpan(int c0, int c1, const RowScratch& scratch, SpanFn span) const {
    const std::vector<double>& at = scratch.sortedAt;
    const std::size_t k = at.size();
    for (std::size_t i = 0; i < k; ++i) {
      if (((k - i) & 1) == 0) continue;
      const int lo = i == 0 ? c0 : LastColumnAtOrBefore(at[i - 1], c0, c1) + 1;
      const int hi = LastColumnAtOrBefore(at[i], c0, c1);
      if (lo <= hi) span(lo, hi);
    }
  }

  // Nodes next to a crossing, within its rounding band, whose point test differs
  // from the spans.
  void FindOverrides(const CHU_DPolygon& polygon, double py, int c0, int c1, RowScratch& scratch) const {
    scratch.overrides.clear();
    for (const Crossing& k : scratch.crossings) {
      const int last = LastColumnAtOrBefore(k.at, c0, c1);
      for (int c = std::max(last, c0); c <= std::min(last + 1, c1); ++c) {
        const double px = X(c);
        if (!(std::fabs(px - k.at) <= k.band)) continue;
        const bool exact = polygon.PtInPoly(CHU_DPoint(px, py));
        if (exact != InsideBySpans(scratch, px)) scratch.overrides.emplace_back(c, exact);
      }
    }
  }

  const HU_HYBGHeader& h_;
  const HU_HYBGBounds& b_;
};

bool AllFinite(const CHU_DPolygon& polygon) {
  for (int i = 0; i < polygon.GetCount(); ++i) {
    const CHU_DPoint* p = polygon.GetAt(i);
    if (!std::isfinite(p->x) || !std::isfinite(p->y)) return false;
  }
  return true;
}

}  // namespace

CHU_HYBGBatchPolygonAverager::CHU_HYBGBatchPolygonAverager(const std::string& fileName, int threads)
    : m_fileName(fileName), m_threads(HU_HYBGResolveThreads(threads)) {}

CHU_HYBGBatchPolygonAverager::~CHU_HYBGBatchPolygonAverager() = default;

std::vector<HU_HYBGPolygonAnswer> CHU_HYBGBatchPolygonAverager::Average(
    std::span<const CHU_DPolygon* const> polygons) {
  std::vector<HU_HYBGPolygonAnswer> answers(polygons.size());
  if (polygons.empty()) return answers;
  CHU_StdioFile file;
  if (!file.Open(m_fileName, HU_modeRead | HU_typeBinary)) {
    m_lastError = HU_HYBGOpenMessage(m_fileName);
    return answers;
  }
  if (!HU_ReadHYBGHeader(file, m_fileName, m_header, m_rowOffsets, m_lastError)) return answers;
  file.Close();
  std::vector<Job> jobs = PrepareJobs(polygons, answers);
  RunBlocks(jobs);
  Finish(jobs, answers);
  return answers;
}

std::vector<CHU_HYBGBatchPolygonAverager::Job> CHU_HYBGBatchPolygonAverager::PrepareJobs(
    std::span<const CHU_DPolygon* const> polygons, std::vector<HU_HYBGPolygonAnswer>& answers) {
  const HU_HYBGBounds bounds = HU_HYBGGetBounds(m_header);
  std::vector<Job> jobs;
  for (std::size_t i = 0; i < polygons.size(); ++i) {
    answers[i].code = HYBG_NO_DATA;  // outside, unless a job below says otherwise
    const CHU_DPolygon* polygon = polygons[i];
    CHU_DRect extent;
    Job job;
    if (polygon == nullptr || !polygon->GetExtent(&extent) ||
        !HU_HYBGGetPolygonRange(m_header, bounds, extent.Left(), extent.Top(), extent.Right(), extent.Bottom(),
                                job.range))
      continue;
    job.polygon = polygon;
    job.index = static_cast<int>(i);
    job.metNull = job.range.touchesEdge;
    job.nodeByNode = !AllFinite(*polygon);
    const int n = polygon->GetCount();
    for (int k = 0; k < n && !job.nodeByNode; ++k) {
      const CHU_DPoint* a = polygon->GetAt(k == 0 ? n - 1 : k - 1);
      const CHU_DPoint* b = polygon->GetAt(k);
      job.edges.push_back({a->x, a->y, b->x, b->y});
    }
    jobs.push_back(std::move(job));
  }
  return jobs;
}

void CHU_HYBGBatchPolygonAverager::RunBlocks(std::vector<Job>& jobs) {
  const std::size_t rowBytes = static_cast<std::size_t>(m_header.ncols) * sizeof(float);
  const int blockRows = static_cast<int>(std::clamp<std::size_t>(kBlockBytes / rowBytes, 1, kMaxBlockRows));
  std::vector<Block> blocks((static_cast<std::size_t>(m_header.nrows) + blockRows - 1) / blockRows);
  for (std::size_t b = 0; b < blocks.size(); ++b) {
    blocks[b].firstRow = static_cast<int>(b) * blockRows;
    blocks[b].rowCount = std::min(blockRows, m_header.nrows - blocks[b].firstRow);
  }
  for (std::size_t j = 0; j < jobs.size(); ++j) {
    if (jobs[j].range.c1 < jobs[j].range.c0) continue;
    for (int b = jobs[j].range.r0 / blockRows; b <= jobs[j].range.r1 / blockRows; ++b) {
      Block& block = blocks[static_cast<std::size_t>(b)];
      block.jobs.push_back(static_cast<int>(j));
      block.needed.resize(static_cast<std::size_t>(block.rowCount), 0);
      const int from = std::max(jobs[j].range.r0, block.firstRow) - block.firstRow;
      const int to = std::min(jobs[j].range.r1, block.firstRow + block.rowCount - 1) - block.firstRow;
      std::fill(block.needed.begin() + from, block.needed.begin() + to + 1, 1);
    }
  }
  std::erase_if(blocks, [](const Block& b) { return b.jobs.empty(); });
  if (blocks.empty()) return;

  const int threads = std::max(1, std::min(m_threads, static_cast<int>(blocks.size() * blockRows)));
  std::vector<float> rows(static_cast<std::size_t>(blockRows) * m_header.ncols);
  std::vector<char> rowOk(static_cast<std::size_t>(blockRows));
  std::vector<std::string> rowError(static_cast<std::size_t>(blockRows));
  const HU_HYBGBounds bounds = HU_HYBGGetBounds(m_header);
  const RowAccumulator accumulator(m_header, bounds);
  std::barrier sync(threads);

  auto work = [&](int t) {
    CHU_StdioFile file;
    const bool open = file.Open(m_fileName, HU_modeRead | HU_typeBinary);
    const std::int64_t fileSize = open ? file.GetLength() : 0;
    CHU_HYBGRowReader reader(m_fileName, m_header, m_rowOffsets, HU_HYBGInflater::Libdeflate);
    RowScratch scratch;
    for (const Block& block : blocks) {
      for (int i = t; i < block.rowCount; i += threads) {
        if (!block.needed[static_cast<std::size_t>(i)]) continue;
        float* out = rows.data() + static_cast<std::size_t>(i) * m_header.ncols;
        std::string& error = rowError[static_cast<std::size_t>(i)];
        rowOk[static_cast<std::size_t>(i)] =
            open ? reader.ReadRow(file, fileSize, block.firstRow + i, out, error) : false;
        if (!open) error = HU_HYBGOpenMessage(m_fileName);
      }
      sync.arrive_and_wait();
      for (std::size_t k = static_cast<std::size_t>(t); k < block.jobs.size(); k += threads) {
        Job& job = jobs[static_cast<std::size_t>(block.jobs[k])];
        const int from = std::max(job.range.r0, block.firstRow);
        const int to = std::min(job.range.r1, block.firstRow + block.rowCount - 1);
        for (int r = from; r <= to && !job.failed; ++r) {
          const std::size_t i = static_cast<std::size_t>(r - block.firstRow);
          if (!rowOk[i]) {
            job.failed = true;
            job.error = rowError[i];
            break;
          }
          accumulator.Add(job, r, rows.data() + i * m_header.ncols, scratch);
        }
      }
      sync.arrive_and_wait();
    }
  };
  std::vector<std::thread> pool;
  for (int t = 1; t < threads; ++t) pool.emplace_back(work, t);
  work(0);
  for (std::thread& th : pool) th.join();
}

void CHU_HYBGBatchPolygonAverager::Finish(std::vector<Job>& jobs, std::vector<HU_HYBGPolygonAnswer>& answers) {
  std::vector<int> jobOf(answers.size(), -1);
  for (std::size_t j = 0; j < jobs.size(); ++j) {
    const Job& job = jobs[j];
    HU_HYBGPolygonAnswer& answer = answers[static_cast<std::size_t>(job.index)];
    jobOf[static_cast<std::size_t>(job.index)] = static_cast<int>(j);
    if (job.failed) {
      answer.code = HYBG_ERROR;
      continue;
    }
    answer.hasAverage = job.count > 0;
    if (answer.hasAverage) answer.average = static_cast<float>(job.sum / static_cast<double>(job.count));
    answer.code = !job.metNull ? HYBG_OK : (job.count == 0 ? HYBG_NO_DATA : HYBG_PARTIAL);
  }
  for (std::size_t i = answers.size(); i-- > 0;) {
    if (answers[i].code == HYBG_OK) continue;
    const int j = jobOf[i];
    if (j < 0) {
      m_lastError = HU_HYBGPolygonOutsideMessage(m_fileName, HU_HYBGGetBounds(m_header));
    } else if (jobs[static_cast<std::size_t>(j)].failed) {
      m_lastError = jobs[static_cast<std::size_t>(j)].error;
    } else {
      m_lastError = HU_HYBGPolygonNullDataMessage(m_fileName, answers[i].code == HYBG_NO_DATA);
    }
    return;
  }
}
