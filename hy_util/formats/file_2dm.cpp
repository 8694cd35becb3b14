#include "hy_util/formats/file_2dm.h"

#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <condition_variable>
#include <memory>
#include <mutex>
#include <cstring>
#include <system_error>
#include <limits>
#include <new>
#include <stdexcept>
#include <string_view>
#include <thread>

#include "hy_util/formats/c_number_scan.h"
#include "hy_util/units/units_setting.h"

namespace {

constexpr double kFeetPerMetre = 3.28084;
// Bytes read at a time, a sixteenth of the file within these bounds, so that the
// buffers stay small beside the tables; each block is parsed in two halves.
constexpr std::int64_t kMinBlockSize = std::int64_t{256} << 10;
constexpr std::int64_t kMaxBlockSize = std::int64_t{2} << 20;
// Blocks smaller than this are not worth a second thread.
constexpr std::size_t kParallelMinimum = std::size_t{64} << 10;
constexpr std::size_t kMaxSkippedKinds = 64;
constexpr std::size_t kMaxCardNameLength = 24;

bool UnitsToFeet() { return HU_GetUnitsSetting() == 0; }

// Node ids in the file are 1-based; E4Q and E3T store them zero-based.
std::int32_t ZeroBased(std::int32_t id) {
  return static_cast<std::int32_t>(static_cast<std::uint32_t>(id) - 1u);
}

}  // namespace

// One card as parsed, before it is applied to the tables.
struct CHU_File2DM::Card {
  enum Kind : std::uint8_t { kGrid, kNode, kQuad, kTriangle };
  Kind kind;
  std::int32_t line;     // zero-based, within the part of the block it came from
  std::int32_t ints[5];  // ND: id; E4Q: id and nodes; E3T: id and nodes; MESH2D: nx, ny
  double reals[3];       // ND: x, y, z; MESH2D: width, height, offset
};

// The cards of the part of a block parsed by the worker thread, in file order,
// and the first words of the lines that are no card read here.
struct CHU_File2DM::ParsedPart {
  std::vector<Card> cards;
  std::vector<std::string_view> others;
  std::int64_t lines = 0;

  void Clear() {
    cards.clear();
    others.clear();
    lines = 0;
  }
};

// A thread that parses the tail of a block into a list of cards when it gets to
// it in time. The reading thread offers the tail, parses the head, then takes the
// tail back. When the worker has not started on it, or has not finished by the
// deadline (a busy machine gave it no core), the reading thread parses the tail
// itself instead of waiting; the worker's late result is dropped. The worker reads
// its own copy of the tail from the file, so that it never touches the reading
// thread's buffer, and is offered nothing while it is still busy.
class CHU_File2DM::TailWorker {
 public:
  using Clock = std::chrono::steady_clock;

  explicit TailWorker(int fd) : fd_(fd), thread_([this] { Run(); }) {}
  ~TailWorker() {
    {
      std::lock_guard<std::mutex> lock(mutex_);
      stop_ = true;
    }
    changed_.notify_all();
    thread_.join();
  }
  TailWorker(const TailWorker&) = delete;
  TailWorker& operator=(const TailWorker&) = delete;

  // Offers the bytes at [offset, offset + length) of the file; false while the
  // worker is still busy with a tail it was too late for.
  bool Offer(std::int64_t offset, std::size_t length, double factor) {
    {
      std::lock_guard<std::mutex> lock(mutex_);
      if (state_ != kIdle) return false;
      offset_ = offset, length_ = length, factor_ = factor;
      state_ = kOffered;
      start_ = Clock::now();
    }
    changed_.notify_all();
    return true;
  }

  // True when the worker parsed the tail: its cards are in Part() until the next
  // offer. False when the tail is the caller's again. Throws std::bad_alloc when
  // the worker ran out of memory.
  bool TakeBack(Clock::time_point deadline, double& seconds) {
    std::unique_lock<std::mutex> lock(mutex_);
    if (state_ == kOffered) {
      state_ = kIdle;
      return false;
    }
    if (!changed_.wait_until(lock, deadline, [this] { return state_ == kDone; })) {
      late_ = true;  // the worker drops its result and becomes idle when it ends
      return false;
    }
    state_ = kIdle;
    seconds = std::chrono::duration<double>(end_ - start_).count();
    if (failed_) throw std::bad_alloc();
    return complete_;
  }

  const ParsedPart& Part() const { return part_; }

 private:
  enum State { kIdle, kOffered, kTaken, kDone };

  void Run() {
    std::unique_lock<std::mutex> lock(mutex_);
    for (;;) {
      changed_.wait(lock, [this] { return stop_ || state_ == kOffered; });
      if (stop_) return;
      state_ = kTaken;
      const std::int64_t offset = offset_;
      const std::size_t length = length_;
      const double factor = factor_;
      lock.unlock();
      bool failed = false;
      bool complete = false;
      try {
        complete = ParseTail(offset, length, factor);
      } catch (const std::bad_alloc&) {
        failed = true;
      }
      lock.lock();
      end_ = Clock::now();
      if (late_) {
        late_ = false;
        state_ = kIdle;
      } else {
        failed_ = failed;
        complete_ = complete;
        state_ = kDone;
      }
      changed_.notify_all();
    }
  }

  // False when the file no longer holds all of the tail.
  bool ParseTail(std::int64_t offset, std::size_t length, double factor) {
    part_.Clear();
    text_.resize(length);
    std::size_t got = 0;
    while (got < length) {
      const ssize_t n = pread(fd_, text_.data() + got, length - got, static_cast<off_t>(offset) + static_cast<off_t>(got));
      if (n <= 0) return false;
      got += static_cast<std::size_t>(n);
    }
    part_.cards.reserve(length / 32);
    part_.lines = ParseLines(text_.data(), text_.data() + length, factor,
                             [this](const Card& card) { part_.cards.push_back(card); }, part_.others);
    return true;
  }

  const int fd_;
  std::mutex mutex_;
  std::condition_variable changed_;
  State state_ = kIdle;
  bool stop_ = false;
  bool late_ = false;
  bool failed_ = false;
  bool complete_ = false;
  std::int64_t offset_ = 0;
  std::size_t length_ = 0;
  double factor_ = 1.0;
  Clock::time_point start_, end_;
  std::vector<char> text_;  // the worker's copy of the tail
  ParsedPart part_;
  std::thread thread_;  // last: starts when everything it reads is ready
};

namespace {

using hu_cscan::ScanDouble;
using hu_cscan::ScanFloat;
using hu_cscan::ScanInt;

// Reads up to `count` ints; the ones not read stay 0.
const char* ScanInts(const char* p, const char* end, std::int32_t* values, int count) {
  for (int i = 0; i < count && p; ++i) p = ScanInt(p, end, values[i]);
  return p;
}

// "ND" "%d %lf %lf %lf".
void ParseNode(const char* p, const char* end, double factor, std::int32_t* ints, double* reals) {
  p = ScanInt(p, end, ints[0]);
  for (int i = 0; i < 3 && p; ++i) p = ScanDouble(p, end, reals[i]);
  if (factor != 1.0)
    for (int i = 0; i < 3; ++i) reals[i] *= factor;
}

// "MESH2D" "%f %f %f %d %d %f %f %f": the three first numbers are not kept.
void ParseGrid(const char* p, const char* end, std::int32_t* ints, double* reals) {
  float ignored = 0;
  for (int i = 0; i < 3 && p; ++i) p = ScanFloat(p, end, ignored);
  if (p) p = ScanInts(p, end, ints, 2);
  for (int i = 0; i < 3 && p; ++i) {
    float value = 0;
    p = ScanFloat(p, end, value);
    if (p) reals[i] = value;
  }
}

// The first word of a line: up to white space or a NUL (where sscanf's string ends).
std::string_view FirstWord(const char*& p, const char* end) {
  p = hu_cscan::SkipSpace(p, end);
  const char* const start = p;
  while (p != end && !hu_cscan::IsSpace(*p) && *p != '\0') ++p;
  return {start, static_cast<std::size_t>(p - start)};
}

}  // namespace

CHU_File2DM::CHU_File2DM() = default;

CHU_File2DM::~CHU_File2DM() { Close(); }

bool CHU_File2DM::Open(const char* fileName) {
  Close();
  lineCount_ = 0;
  fileOpen_ = fileName != nullptr && file_.Open(fileName, HU_modeRead | HU_shareDenyWrite | HU_typeBinary);
  return fileOpen_;
}

bool CHU_File2DM::Close() {
  if (fileOpen_) file_.Close();
  fileOpen_ = false;
  std::vector<char>().swap(block_);
  return true;
}

void CHU_File2DM::Clear() {
  x_.clear();
  y_.clear();
  z_.clear();
  lowered_.clear();
  cells_.clear();
  triangles_.clear();
  nodeCount_ = gridNodes_ = 0;
  cellCount_ = 0;
  gridCells_ = 0;
  highestNodeId_ = -1;
  lineCount_ = 0;
  minX_ = minY_ = maxX_ = maxY_ = CHU_DPoint::C_NULL_VALL;
  skipped_.clear();
  refusedCount_ = 0;
  firstRefusedLine_ = 0;
  firstRefusedReason_.clear();
}

bool CHU_File2DM::Read() {
  Clear();
  if (!fileOpen_) return false;
  try {
    if (!file_.Seek(0, SEEK_SET)) return false;
    fileSize_ = std::max<std::int64_t>(file_.GetLength(), 0);
    cores_ = std::thread::hardware_concurrency();
    workerShare_ = 0.5;
    if (!ReadBlocks()) return false;
  } catch (const std::bad_alloc&) {
    Clear();
    return false;
  } catch (const std::length_error&) {
    Clear();
    return false;
  }
  if (highestNodeId_ < 0) return false;
  const auto nodes = static_cast<std::size_t>(highestNodeId_);
  if (nodes < x_.size()) {
    for (auto* v : {&x_, &y_, &z_}) {
      v->resize(nodes);
      if (v->capacity() > nodes + nodes / 4) v->shrink_to_fit();
    }
    lowered_.resize(nodes);
  }
  nodeCount_ = highestNodeId_;
  ComputeExtents();
  return true;
}

// Reads the file in blocks that end at a line end; a line longer than a block
// makes the buffer grow to hold it.
bool CHU_File2DM::ReadBlocks() {
  std::vector<char>& buffer = block_;
  // A small file is read in one go with a buffer of its size.
  const std::int64_t blockSize = std::clamp(fileSize_ / 16, kMinBlockSize, kMaxBlockSize);
  buffer.resize(static_cast<std::size_t>(std::min(blockSize, fileSize_ + 1)));
  std::size_t held = 0;
  std::int64_t bufferStart = 0;  // file offset of the buffer's first byte
  std::unique_ptr<TailWorker> worker;
  if (parallel_ && cores_ > 1 && fileSize_ >= static_cast<std::int64_t>(kParallelMinimum) &&
      file_.Stream() != nullptr) {
    try {
      worker = std::make_unique<TailWorker>(fileno(file_.Stream()));
    } catch (const std::system_error&) {
      // no thread to be had: one thread reads
    }
  }
  bool atEnd = false;
  while (!atEnd) {
    if (held == buffer.size()) buffer.resize(buffer.size() * 2);
    const std::size_t got = file_.Read(buffer.data() + held, buffer.size() - held);
    if (got == 0 && file_.HasError()) return false;
    atEnd = got == 0;
    const std::size_t filled = held + got;
    std::size_t complete = filled;
    if (!atEnd) {
      const char* data = buffer.data();
      const void* lastEnd = memrchr(data + held, '\n', got);
      if (lastEnd == nullptr) {  // no line end yet: keep reading into a larger buffer
        held = filled;
        continue;
      }
      complete = static_cast<std::size_t>(static_cast<const char*>(lastEnd) - data) + 1;
    }
    if (complete > 0) ReadBlock(buffer.data(), buffer.data() + complete, bufferStart, worker.get());
    bufferStart += static_cast<std::int64_t>(complete);
    held = filled - complete;
    std::memmove(buffer.data(), buffer.data() + complete, held);
  }
  return true;
}

// Parses the lines of [from, to) in order, handing each card to the sink and
// collecting the first words of other lines; returns the number of lines.
template <class Sink>
std::int64_t CHU_File2DM::ParseLines(const char* from, const char* to, double factor, Sink&& sink,
                                     std::vector<std::string_view>& others) {
  std::int64_t lines = 0;
  while (from != to) {
    const char* lineEnd = static_cast<const char*>(std::memchr(from, '\n', static_cast<std::size_t>(to - from)));
    if (lineEnd == nullptr) lineEnd = to;
    ParseLine(from, lineEnd, static_cast<std::int32_t>(lines), factor, sink, others);
    ++lines;
    from = lineEnd == to ? to : lineEnd + 1;
  }
  return lines;
}

// Applies the cards of a block in file order. With a worker, the tail of the
// block is offered to it while this thread parses and applies the head; the
// worker's list of cards is applied after it. The tail's share follows how fast
// each side went on the block before.
void CHU_File2DM::ReadBlock(const char* first, const char* last, std::int64_t offset, TailWorker* worker) {
  using Clock = TailWorker::Clock;
  const double factor = UnitsToFeet() ? kFeetPerMetre : 1.0;
  const auto size = static_cast<std::size_t>(last - first);
  const char* middle = last;
  if (worker != nullptr && size >= kParallelMinimum) {
    const auto head = static_cast<std::size_t>(static_cast<double>(size) * (1.0 - workerShare_));
    const void* lineEnd = std::memchr(first + head, '\n', size - head);
    if (lineEnd != nullptr) middle = static_cast<const char*>(lineEnd) + 1;
  }
  if (middle != last &&
      !worker->Offer(offset + (middle - first), static_cast<std::size_t>(last - middle), factor))
    middle = last;  // the worker is still busy with a tail it was too late for
  const Clock::time_point start = Clock::now();
  ParseAndApply(first, middle, factor);
  if (middle == last) return;
  const Clock::time_point headEnd = Clock::now();
  // The worker had as long as the head took; it gets half as long again.
  double tailSeconds = 0;
  if (!worker->TakeBack(headEnd + (headEnd - start) / 2 + std::chrono::microseconds(200), tailSeconds)) {
    workerShare_ = std::max(1.0 / 16, workerShare_ * 0.75);
    ParseAndApply(middle, last, factor);
    return;
  }
  const ParsedPart& part = worker->Part();
  const std::int64_t partFirstLine = lineCount_ + 1;
  for (const Card& card : part.cards) Apply(card, partFirstLine + card.line);
  FinishPart(part.others, part.lines);
  // Bytes per second on each side, and the share that would have ended both together.
  const double headSeconds = std::chrono::duration<double>(headEnd - start).count();
  const double headRate = static_cast<double>(middle - first) / std::max(1e-9, headSeconds);
  const double tailRate = static_cast<double>(last - middle) / std::max(1e-9, tailSeconds);
  workerShare_ = std::clamp(0.5 * workerShare_ + 0.5 * tailRate / (headRate + tailRate), 1.0 / 16, 0.75);
}

void CHU_File2DM::ParseAndApply(const char* first, const char* last, double factor) {
  std::vector<std::string_view> others;
  const std::int64_t firstLine = lineCount_ + 1;
  const std::int64_t lines =
      ParseLines(first, last, factor, [this, firstLine](const Card& card) { Apply(card, firstLine + card.line); },
                 others);
  FinishPart(others, lines);
}

template <class Sink>
void CHU_File2DM::ParseLine(const char* p, const char* end, std::int32_t line, double factor, Sink& sink,
                            std::vector<std::string_view>& others) {
  const std::string_view name = FirstWord(p, end);
  if (name.empty()) return;
  Card card{};
  card.line = line;
  if (name == "ND") {
    card.kind = Card::kNode;
    ParseNode(p, end, factor, card.ints, card.reals);
  } else if (name == "E4Q") {
    card.kind = Card::kQuad;
    ScanInts(p, end, card.ints, 5);  // the three trailing integers are not used
  } else if (name == "E3T") {
    card.kind = Card::kTriangle;
    ScanInts(p, end, card.ints, 4);
  } else if (name == "MESH2D") {
    card.kind = Card::kGrid;
    ParseGrid(p, end, card.ints, card.reals);
  } else {
    others.push_back(name);
    return;
  }
  sink(card);
}

void CHU_File2DM::Apply(const Card& card, std::int64_t line) {
  switch (card.kind) {
    case Card::kNode: ApplyNode(card, line); break;
    case Card::kQuad: ApplyQuad(card, line); break;
    case Card::kTriangle: ApplyTriangle(card); break;
    case Card::kGrid: ApplyGrid(card, line); break;
  }
}

void CHU_File2DM::FinishPart(const std::vector<std::string_view>& others, std::int64_t lines) {
  for (std::string_view name : others) CountSkipped(std::string(name.substr(0, kMaxCardNameLength)), 1);
  const std::int64_t total = lineCount_ + lines;
  lineCount_ = static_cast<std::int32_t>(std::min<std::int64_t>(total, std::numeric_limits<std::int32_t>::max()));
}

void CHU_File2DM::CountSkipped(const std::string& name, std::int64_t count) {
  for (auto& [kind, n] : skipped_)
    if (kind == name) {
      n += count;
      return;
    }
  if (skipped_.size() < kMaxSkippedKinds) skipped_.emplace_back(name, count);
  else if (skipped_.back().first == "...") skipped_.back().second += count;
  else skipped_.back() = {"...", skipped_.back().second + count};
}

void CHU_File2DM::Refuse(std::int64_t line, std::string reason) {
  if (refusedCount_++ == 0) {
    firstRefusedLine_ = line;
    firstRefusedReason_ = std::move(reason);
  }
}

// The size an id may grow a table to beyond the declared grid.
static std::int64_t IdBound(std::int64_t fileSize) { return CHU_File2DM::kMinIdBound + fileSize / 4; }

void CHU_File2DM::ApplyGrid(const Card& card, std::int64_t line) {
  const std::int64_t nx = card.ints[0];
  const std::int64_t ny = card.ints[1];
  if (nx < 0 || ny < 0 || (nx + 1) * (ny + 1) > kMaxGridNodes) {
    Refuse(line, "MESH2D grid of " + std::to_string(nx) + " x " + std::to_string(ny) +
                     " cells is negative or larger than " + std::to_string(kMaxGridNodes) + " nodes");
    return;
  }
  const double factor = UnitsToFeet() ? kFeetPerMetre : 1.0;
  nx_ = static_cast<std::int32_t>(nx);
  ny_ = static_cast<std::int32_t>(ny);
  cellWidth_ = static_cast<float>(card.reals[0] * factor);
  cellHeight_ = static_cast<float>(card.reals[1] * factor);
  verticalOffset_ = static_cast<float>(card.reals[2] * factor);
  nodeCount_ = gridNodes_ = (nx + 1) * (ny + 1);
  cellCount_ = static_cast<std::int32_t>(nx * ny);
  gridCells_ = cellCount_;
  const auto declaredNodes = static_cast<std::size_t>(nodeCount_);
  if (x_.size() > declaredNodes) {
    for (auto* v : {&x_, &y_, &z_}) v->resize(declaredNodes);
    lowered_.resize(declaredNodes);
  }
  const auto bound = static_cast<std::size_t>(IdBound(fileSize_));
  const std::size_t nodeReserve = std::min(declaredNodes, bound);
  for (auto* v : {&x_, &y_, &z_}) v->reserve(nodeReserve);
  lowered_.reserve(nodeReserve);
  cells_.clear();  // every cell of the new grid is empty
  cells_.reserve(std::min(static_cast<std::size_t>(cellCount_) + 1, bound));
  highestNodeId_ = 0;
}

bool CHU_File2DM::GrowNodes(std::int64_t size) {
  if (size <= static_cast<std::int64_t>(x_.size())) return true;
  if (size > gridNodes_ + IdBound(fileSize_)) return false;
  const auto n = static_cast<std::size_t>(size);
  for (auto* v : {&x_, &y_, &z_}) v->resize(n, 0.0);
  lowered_.resize(n, 0);
  return true;
}

void CHU_File2DM::ApplyNode(const Card& card, std::int64_t line) {
  const std::int32_t id = card.ints[0];
  if (id >= 1 && static_cast<std::size_t>(id) == x_.size() + 1) {  // the usual case: the next node
    x_.push_back(card.reals[0]);
    y_.push_back(card.reals[1]);
    z_.push_back(card.reals[2]);
    lowered_.push_back(0);
  } else {
    if (id < 1 || !GrowNodes(id)) {
      Refuse(line, "ND id " + std::to_string(id) + (id < 1 ? " is below 1" : " lies far beyond the file's nodes"));
      return;
    }
    const auto index = static_cast<std::size_t>(id - 1);
    x_[index] = card.reals[0];
    y_[index] = card.reals[1];
    z_[index] = card.reals[2];
    lowered_[index] = 0;
  }
  highestNodeId_ = std::max(highestNodeId_, id);
  nodeCount_ = std::max<std::int64_t>(nodeCount_, id);
}

void CHU_File2DM::ApplyQuad(const Card& card, std::int64_t line) {
  const std::int32_t id = card.ints[0];
  if (id < 0) {
    Refuse(line, "E4Q id " + std::to_string(id) + " is negative");
    return;
  }
  if (static_cast<std::size_t>(id) >= cells_.size()) {
    if (std::int64_t{id} >= gridCells_ + IdBound(fileSize_)) {
      Refuse(line, "E4Q id " + std::to_string(id) + " lies far beyond the file's cells");
      return;
    }
    if (static_cast<std::size_t>(id) == cells_.size()) cells_.emplace_back();  // the usual case: the next cell
    else cells_.resize(static_cast<std::size_t>(id) + 1);
    cellCount_ = std::max(cellCount_, id + 1);
  }
  CellRecord& cell = cells_[static_cast<std::size_t>(id)];
  cell.id = id;
  for (int k = 0; k < 4; ++k) cell.nodes[k] = ZeroBased(card.ints[k + 1]);
}

void CHU_File2DM::ApplyTriangle(const Card& card) {
  TriangleRecord triangle;
  triangle.id = card.ints[0];
  for (int k = 0; k < 3; ++k) triangle.nodes[k] = ZeroBased(card.ints[k + 1]);
  triangles_.push_back(triangle);
  // Each node is lowered once, however many triangles share it; a node inside the
  // declared grid that has no ND card yet is lowered from 0.
  for (const std::int32_t node : triangle.nodes) {
    if (node < 0 || node >= nodeCount_ || !GrowNodes(std::int64_t{node} + 1)) continue;
    const auto index = static_cast<std::size_t>(node);
    if (lowered_[index]) continue;
    z_[index] -= verticalOffset_;
    lowered_[index] = 1;
  }
}

void CHU_File2DM::ComputeExtents() {
  if (x_.empty()) {
    minX_ = minY_ = maxX_ = maxY_ = CHU_DPoint::C_NULL_VALL;
    return;
  }
  const auto [minX, maxX] = std::minmax_element(x_.begin(), x_.end());
  const auto [minY, maxY] = std::minmax_element(y_.begin(), y_.end());
  minX_ = *minX;
  maxX_ = *maxX;
  minY_ = *minY;
  maxY_ = *maxY;
}

std::int32_t CHU_File2DM::GetCellIndex(int i, int j) const {
  const std::int64_t index = std::int64_t{nx_} * j + i;
  if (index < 0 || index >= static_cast<std::int64_t>(cells_.size())) return -1;
  return cells_[static_cast<std::size_t>(index)].id;
}

bool CHU_File2DM::GetNodeIndices(int cellIndex, int indices[4]) const {
  if (cellIndex < 0 || static_cast<std::size_t>(cellIndex) >= cells_.size()) return false;
  const CellRecord& cell = cells_[static_cast<std::size_t>(cellIndex)];
  if (cell.id < 0) return false;
  std::copy(cell.nodes, cell.nodes + 4, indices);
  return true;
}

bool CHU_File2DM::GetNodeIndices(int i, int j, int indices[4]) const {
  const std::int64_t index = std::int64_t{nx_} * j + i;
  if (index < 0 || index > std::numeric_limits<int>::max()) return false;
  return GetNodeIndices(static_cast<int>(index), indices);
}

bool CHU_File2DM::GetCellExtents(int cellIndex, double& minX, double& minY, double& maxX, double& maxY) const {
  int nodes[4];
  if (!GetNodeIndices(cellIndex, nodes)) return false;
  for (const int node : nodes)
    if (node < 0 || node >= GetVertexCount()) return false;
  minX = maxX = x_[static_cast<std::size_t>(nodes[0])];
  minY = maxY = y_[static_cast<std::size_t>(nodes[0])];
  for (const int node : nodes) {
    const auto k = static_cast<std::size_t>(node);
    minX = std::min(minX, x_[k]);
    maxX = std::max(maxX, x_[k]);
    minY = std::min(minY, y_[k]);
    maxY = std::max(maxY, y_[k]);
  }
  return true;
}

CHU_DPoint CHU_File2DM::GetNode(int i, int j) const {
  int nodes[4];
  if (!GetNodeIndices(i, j, nodes)) return CHU_DPoint(0, 0, 0);
  return GetNodeFromIndex(nodes[0]);
}

std::int32_t CHU_File2DM::GetTCellID(int index) const {
  if (index < 0 || index >= GetNbrTCells()) return -1;
  return triangles_[static_cast<std::size_t>(index)].id;
}

bool CHU_File2DM::GetTCellIndices(int index, int indices[3]) const {
  if (index < 0 || index >= GetNbrTCells()) return false;
  const TriangleRecord& triangle = triangles_[static_cast<std::size_t>(index)];
  std::copy(triangle.nodes, triangle.nodes + 3, indices);
  return true;
}

CHU_DPoint CHU_File2DM::GetNodeFromIndex(int index) const {
  if (index < 0 || index >= GetVertexCount()) return CHU_DPoint();
  const auto k = static_cast<std::size_t>(index);
  return CHU_DPoint(x_[k], y_[k], z_[k]);
}

void CHU_File2DM::GetExtents(double& minX, double& minY, double& maxX, double& maxY) const {
  minX = minX_;
  minY = minY_;
  maxX = maxX_;
  maxY = maxY_;
}

double CHU_File2DM::GetMinElevation() const {
  if (z_.empty()) return CHU_DPoint::C_NULL_VALL;
  double lowest = z_.front();
  for (const double z : z_)
    if (z != 0.0 && z < lowest) lowest = z;
  return lowest;
}

double CHU_File2DM::GetMaxElevation() const {
  if (z_.empty()) return CHU_DPoint::C_NULL_VALL;
  double highest = z_.front();
  for (const double z : z_)
    if (z != 99999.0 && z > highest) highest = z;
  return highest;
}

void CHU_File2DM::AdjustDataUnitsXYZ(double& x, double& y, double& z) {
  if (!UnitsToFeet()) return;
  x *= kFeetPerMetre;
  y *= kFeetPerMetre;
  z *= kFeetPerMetre;
}
