#include "hy_util/grids/grid_converter.h"

#include <algorithm>
#include <cerrno>
#include <condition_variable>
#include <cstdio>
#include <cstring>
#include <deque>
#include <mutex>
#include <thread>

#include "hy_util/grids/grid_row_source.h"
#include "hy_util/platform/application.h"

namespace {

// Rows in flight are limited to about this many bytes of raw and packed values.
constexpr std::size_t kWindowBytes = 8u << 20;
// The output stream's buffer: row records are a few KiB, so a large buffer turns
// thousands of small writes into a few large ones.
constexpr std::size_t kOutputBufferBytes = 1u << 20;

// Enough rows in flight to keep every worker busy while the reader runs ahead
// (a row costs about as much to compress as to read and parse several), within
// the memory window.
int WindowRows(std::size_t ncols, int threads) {
  const std::size_t slotBytes = ncols * sizeof(float) * 2 + 1024;
  const int byMemory = static_cast<int>(std::min<std::size_t>(kWindowBytes / slotBytes, 1 << 16));
  return std::clamp(byMemory, 2 * threads, 8 * threads);
}

std::string Quoted(const std::string& path) {
  std::string quoted(1, '\'');
  quoted += path;
  quoted += '\'';
  return quoted;
}

}  // namespace

// Compresses rows on worker threads. The caller fills a row's slot, submits it,
// and later waits for that row; a slot is reused only after its row was taken
// back, so at most the window's rows are held at once.
class CHU_GridConverter::Pipeline {
 public:
  Pipeline(const HU_GridConvertOptions& options, std::size_t ncols, int windowRows) : slots_(windowRows) {
    for (Slot& slot : slots_) slot.values.resize(ncols);
    for (int i = 0; i < options.threads; ++i) {
      workers_.emplace_back([this, options] { Work(options); });
    }
  }

  ~Pipeline() {
    {
      std::lock_guard<std::mutex> lock(mutex_);
      stop_ = true;
    }
    workCv_.notify_all();
    for (std::thread& worker : workers_) worker.join();
  }

  Pipeline(const Pipeline&) = delete;
  Pipeline& operator=(const Pipeline&) = delete;

  int Window() const { return static_cast<int>(slots_.size()); }
  float* Values(int row) { return SlotOf(row).values.data(); }

  void Submit(int row) {
    {
      std::lock_guard<std::mutex> lock(mutex_);
      SlotOf(row).state = State::Pending;
      pending_.push_back(row);
    }
    workCv_.notify_one();
  }

  // The packed bytes of row once compressed, or nullptr when the codec failed.
  const std::vector<std::uint8_t>* Wait(int row) {
    Slot& slot = SlotOf(row);
    std::unique_lock<std::mutex> lock(mutex_);
    doneCv_.wait(lock, [&] { return slot.state == State::Done || slot.state == State::Failed; });
    return slot.state == State::Done ? &slot.packed : nullptr;
  }

 private:
  enum class State { Free, Pending, Done, Failed };
  struct Slot {
    std::vector<float> values;
    std::vector<std::uint8_t> packed;
    State state = State::Free;
  };

  Slot& SlotOf(int row) { return slots_[static_cast<std::size_t>(row) % slots_.size()]; }

  void Work(const HU_GridConvertOptions& options) {
    CHU_GridRowCompressor compressor(options.codec, options.libdeflateLevel);
    for (;;) {
      int row = 0;
      {
        std::unique_lock<std::mutex> lock(mutex_);
        workCv_.wait(lock, [&] { return stop_ || !pending_.empty(); });
        if (stop_) return;
        row = pending_.front();
        pending_.pop_front();
      }
      Slot& slot = SlotOf(row);
      const bool packed = compressor.Compress(slot.values.data(), slot.values.size() * sizeof(float), slot.packed);
      {
        std::lock_guard<std::mutex> lock(mutex_);
        slot.state = packed ? State::Done : State::Failed;
      }
      doneCv_.notify_all();
    }
  }

  std::vector<Slot> slots_;
  std::vector<std::thread> workers_;
  std::mutex mutex_;
  std::condition_variable workCv_;
  std::condition_variable doneCv_;
  std::deque<int> pending_;
  bool stop_ = false;
};

CHU_GridConverter::CHU_GridConverter(HU_GridConvertOptions options) : options_(options) {
  options_.threads = std::clamp(options_.threads, 1, 256);
}

void CHU_GridConverter::ReportProgress(int rowsWritten, int& lastReported) const {
  if (rowsWritten - lastReported >= (header_.nrows + 99) / 100) {
    HU_GetApplication().ProgressSetPos(rowsWritten);
    lastReported = rowsWritten;
  }
}

bool CHU_GridConverter::WriteRow(CHU_HYBinaryGridWriter& writer, int row, const std::vector<std::uint8_t>& packed) {
  const HU_GridWriteStatus status = writer.WriteRow(row, packed.data(), static_cast<std::uint32_t>(packed.size()));
  if (status == HU_GridWriteStatus::TooLarge) {
    const std::string limit = options_.maxRowOffset == CHU_HYBinaryGridWriter::kMaxRowOffset
                                  ? std::string("4 GiB")
                                  : std::to_string(options_.maxRowOffset + 1) + " bytes";
    error_ = Quoted(output_) + " would pass " + limit + " at row " + std::to_string(row) +
             " (row offsets are 32-bit): conversion stopped and the partial file removed";
  } else if (status != HU_GridWriteStatus::Ok) {
    error_ = "cannot write " + Quoted(output_) + ": " + std::strerror(errno);
  }
  return status == HU_GridWriteStatus::Ok;
}

bool CHU_GridConverter::ReadRow(IHU_GridRowSource& source, int row, float* values) {
  std::size_t got = 0;
  if (!source.ReadRow(values, got)) return (error_ = source.GetLastError()), false;
  if (got == static_cast<std::size_t>(header_.ncols)) return true;
  const std::int64_t valuesRead = static_cast<std::int64_t>(row) * header_.ncols + static_cast<std::int64_t>(got);
  error_ = Quoted(input_) + " ends after " + std::to_string(valuesRead) + " of the " +
           std::to_string(static_cast<std::int64_t>(header_.nrows) * header_.ncols) + " values its header gives (" +
           std::to_string(header_.nrows) + " rows x " + std::to_string(header_.ncols) +
           " columns): the file is cut short or its header is wrong";
  return false;
}

bool CHU_GridConverter::ConvertRows(IHU_GridRowSource& source, CHU_HYBinaryGridWriter& writer) {
  const std::size_t ncols = static_cast<std::size_t>(header_.ncols);
  int lastReported = 0;
  if (options_.threads == 1) {
    CHU_GridRowCompressor compressor(options_.codec, options_.libdeflateLevel);
    std::vector<float> values(ncols);
    std::vector<std::uint8_t> packed;
    for (int row = 0; row < header_.nrows; ++row) {
      if (!ReadRow(source, row, values.data())) return false;
      if (!compressor.Compress(values.data(), ncols * sizeof(float), packed)) {
        return (error_ = "cannot compress row " + std::to_string(row)), false;
      }
      if (!WriteRow(writer, row, packed)) return false;
      ReportProgress(row + 1, lastReported);
    }
    return true;
  }
  Pipeline pipeline(options_, ncols, WindowRows(ncols, options_.threads));
  int nextRead = 0;
  for (int row = 0; row < header_.nrows; ++row) {
    for (; nextRead < header_.nrows && nextRead < row + pipeline.Window(); ++nextRead) {
      if (!ReadRow(source, nextRead, pipeline.Values(nextRead))) return false;
      pipeline.Submit(nextRead);
    }
    const std::vector<std::uint8_t>* packed = pipeline.Wait(row);
    if (packed == nullptr) return (error_ = "cannot compress row " + std::to_string(row)), false;
    if (!WriteRow(writer, row, *packed)) return false;
    ReportProgress(row + 1, lastReported);
  }
  return true;
}

void CHU_GridConverter::CollectWarnings(IHU_GridRowSource& source, const std::string& input) {
  if (const std::int64_t extra = source.ExtraValues(); extra > 0) {
    warnings_.push_back(Quoted(input) + " holds " + std::to_string(extra) +
                        " more values than its header says; they were ignored");
  }
  if (source.LongLineValues() > 0) {
    warnings_.push_back(Quoted(input) + " line " + std::to_string(source.FirstLongLine()) + " holds more than " +
                        std::to_string(source.Header().ncols) + " values (ncols); the values after the first " +
                        std::to_string(source.Header().ncols) + " of each such line were ignored (" +
                        std::to_string(source.LongLineValues()) + " in all)");
  }
  if (source.BadTokens() > 0) {
    warnings_.push_back(Quoted(input) + ": " + std::to_string(source.BadTokens()) +
                        " values are not numbers and were written as no-data");
  }
}

bool CHU_GridConverter::Convert(const std::string& input, const std::string& output) {
  error_.clear();
  warnings_.clear();
  input_ = input;
  output_ = output;
  outputSize_ = 0;
  std::unique_ptr<IHU_GridRowSource> source = HU_OpenGridRowSource(input, error_);
  if (!source) return false;
  header_ = source->Header();
  std::FILE* stream = std::fopen(output.c_str(), "wb");
  if (stream == nullptr) {
    error_ = "cannot create " + Quoted(output) + ": " + std::strerror(errno);
    HU_GetApplication().ProgressStop();
    return false;
  }
  std::setvbuf(stream, nullptr, _IOFBF, kOutputBufferBytes);
  CHU_HYBinaryGridWriter writer(stream, options_.maxRowOffset);
  bool converted = writer.WriteHeader(header_) == HU_GridWriteStatus::Ok && ConvertRows(*source, writer) &&
                   writer.WriteOffsetTable() == HU_GridWriteStatus::Ok;
  if (!converted && error_.empty()) error_ = "cannot write " + Quoted(output) + ": " + std::strerror(errno);
  outputSize_ = writer.BytesWritten();
  if (std::fclose(stream) != 0 && converted) {
    converted = false;
    error_ = "cannot write " + Quoted(output) + ": " + std::strerror(errno);
  }
  if (converted) {
    CollectWarnings(*source, input);
  } else {
    std::remove(output.c_str());
  }
  HU_GetApplication().ProgressStop();
  return converted;
}
