// "hyutil grid info" and "hyutil grid convert": the header of an ESRI ASCII,
// ESRI float or binary grid file, and conversion of an ESRI grid into the binary
// grid file with a progress bar on standard error.
//
//   hyutil grid info FILE [--json]
//   hyutil grid convert INPUT OUTPUT [--threads N] [--codec zlib|libdeflate] [--quiet]

#include <unistd.h>

#include <nlohmann/json.hpp>

#include <chrono>
#include <cstdio>
#include <filesystem>
#include <memory>
#include <string>
#include <thread>

#include "commands.h"
#include "hy_util/grids/binary_grid_format.h"
#include "hy_util/grids/esri_grid_helper.h"
#include "hy_util/grids/grid_converter.h"
#include "hy_util/platform/application.h"

namespace hyutil {
namespace {

// What info reports, whatever the kind of file.
struct GridInfo {
  std::string path;
  std::string format;
  HU_HYBGHeader header;
  std::int64_t fileSize = -1;
  bool binary = false;
};

// The path in single quotes, for messages.
std::string Quoted(const std::string& path) {
  std::string quoted(1, '\'');
  quoted += path;
  quoted += '\'';
  return quoted;
}

std::int64_t FileSize(const std::string& path) {
  std::error_code ec;
  const auto size = std::filesystem::file_size(path, ec);
  return ec ? -1 : static_cast<std::int64_t>(size);
}

bool StartsWithMagic(const std::string& path) {
  CHU_StdioFile file;
  char magic[4] = {};
  return file.Open(path, HU_modeRead | HU_typeBinary) && file.Read(magic, 4) == 4 &&
         std::string(magic, 4) == "HYBG";
}

GridInfo BinaryInfo(const std::string& path) {
  GridInfo info{path, "HY binary grid", {}, FileSize(path), true};
  CHU_StdioFile file;
  if (!file.Open(path, HU_modeRead | HU_typeBinary)) throw InputError{"cannot open " + Quoted(path) + " for reading"};
  std::vector<std::uint32_t> offsets;
  std::string error;
  if (!HU_ReadHYBGHeader(file, path, info.header, offsets, error)) throw InputError{error};
  return info;
}

GridInfo EsriInfo(const std::string& path) {
  const auto grid = CHU_File_EsriGrid_Helper::open(path);
  if (!grid) throw InputError{"cannot open " + Quoted(path) + " for reading"};
  const bool flt = !grid->IsSingleFile();
  if (!grid->ReadHeader()) {
    throw InputError{Quoted(grid->HeaderPath()) + " is " + (flt ? "missing or " : "") +
                     "not a valid ESRI grid header (ncols, nrows, xllcorner or xllcenter, yllcorner or "
                     "yllcenter and cellsize are needed)"};
  }
  GridInfo info{path, flt ? "ESRI float grid" : "ESRI ASCII grid", {}, FileSize(path), false};
  info.header = {grid->GetColCount(), grid->GetRowCount(), grid->GetXllCenter(), grid->GetYllCenter(),
                 grid->GetCellSize(), static_cast<float>(grid->GetNoDataValue())};
  return info;
}

GridInfo ReadInfo(const std::string& path) {
  if (!std::filesystem::exists(path)) throw InputError{Quoted(path) + " does not exist"};
  return StartsWithMagic(path) ? BinaryInfo(path) : EsriInfo(path);
}

// Bounds of the node (cell-centre) positions, as the binary grid defines them.
struct Bounds {
  double xmin, ymin, xmax, ymax;
};

Bounds NodeBounds(const HU_HYBGHeader& h) {
  return {h.xllcenter, h.yllcenter, h.xllcenter + (h.ncols - 1) * h.cellSize,
          h.yllcenter + (h.nrows - 1) * h.cellSize};
}

double ValueBytes(const HU_HYBGHeader& h) { return 4.0 * h.ncols * static_cast<double>(h.nrows); }

void PrintInfoJson(const GridInfo& info) {
  const HU_HYBGHeader& h = info.header;
  const Bounds b = NodeBounds(h);
  nlohmann::ordered_json out = {{"file", info.path},
                                {"format", info.format},
                                {"columns", h.ncols},
                                {"rows", h.nrows},
                                {"xllcenter", h.xllcenter},
                                {"yllcenter", h.yllcenter},
                                {"cellsize", h.cellSize},
                                {"nodata", static_cast<double>(h.noData)},
                                {"bounds", {{"xmin", b.xmin}, {"ymin", b.ymin}, {"xmax", b.xmax}, {"ymax", b.ymax}}}};
  if (info.binary) {
    out["file_size"] = info.fileSize;
    out["compression_ratio"] = info.fileSize > 0 ? ValueBytes(h) / static_cast<double>(info.fileSize) : 0.0;
  }
  std::printf("%s\n", out.dump(2).c_str());
}

void PrintInfoText(const GridInfo& info) {
  const HU_HYBGHeader& h = info.header;
  const Bounds b = NodeBounds(h);
  std::printf("file:        %s\n", info.path.c_str());
  std::printf("format:      %s\n", info.format.c_str());
  std::printf("columns:     %d\n", h.ncols);
  std::printf("rows:        %d\n", h.nrows);
  std::printf("lower-left:  %.10g %.10g (centre of the lower-left cell)\n", h.xllcenter, h.yllcenter);
  std::printf("cell size:   %.10g\n", h.cellSize);
  std::printf("no-data:     %.9g\n", static_cast<double>(h.noData));
  std::printf("bounds:      %.10g %.10g to %.10g %.10g (cell centres)\n", b.xmin, b.ymin, b.xmax, b.ymax);
  if (info.binary) {
    std::printf("file size:   %lld bytes\n", static_cast<long long>(info.fileSize));
    std::printf("compression: %.2f : 1 (of %.0f bytes of float32 values)\n",
                info.fileSize > 0 ? ValueBytes(h) / static_cast<double>(info.fileSize) : 0.0, ValueBytes(h));
  }
}

// The host for convert: draws the progress display as one line on standard error.
class ProgressBar : public CHU_DefaultApplication {
 public:
  explicit ProgressBar(std::string label) : label_(std::move(label)) {}

  void ProgressStart(const std::string&, int steps) override {
    steps_ = steps;
    start_ = std::chrono::steady_clock::now();
  }
  void ProgressSetPos(int position) override {
    if (steps_ <= 0) return;
    const double seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - start_).count();
    const double rate = seconds > 0 ? position / seconds : 0.0;
    const int left = rate > 0 ? static_cast<int>((steps_ - position) / rate + 0.5) : 0;
    const int percent = static_cast<int>(100.0 * position / steps_);
    const int filled = percent / 5;
    std::fprintf(stderr, "\r%s [%s%s] %d/%d rows %3d%% %.0f rows/s %d:%02d left ", label_.c_str(),
                 std::string(static_cast<std::size_t>(filled), '#').c_str(),
                 std::string(static_cast<std::size_t>(20 - filled), '.').c_str(), position, steps_, percent, rate,
                 left / 60, left % 60);
    drawn_ = true;
  }
  void ProgressStop() override {
    if (drawn_) std::fputc('\n', stderr);
    drawn_ = false;
  }

 private:
  std::string label_;
  int steps_ = 0;
  bool drawn_ = false;
  std::chrono::steady_clock::time_point start_;
};

struct ConvertOptions {
  std::string input;
  std::string output;
  int threads = 0;
  std::string codec = "zlib";
  bool quiet = false;
};

bool SameFile(const std::string& a, const std::string& b) {
  std::error_code ec;
  return std::filesystem::equivalent(a, b, ec);
}

int RunConvert(const ConvertOptions& o) {
  if (SameFile(o.input, o.output)) {
    std::fprintf(stderr, "hyutil: INPUT and OUTPUT are the same file '%s'\n", o.input.c_str());
    return kExitUsage;
  }
  HU_GridConvertOptions options;
  options.threads = o.threads > 0 ? o.threads : static_cast<int>(std::max(1u, std::thread::hardware_concurrency()));
  HU_ParseGridCodec(o.codec, options.codec);
  std::unique_ptr<ProgressBar> bar;
  if (!o.quiet && isatty(STDERR_FILENO)) {
    bar = std::make_unique<ProgressBar>(std::filesystem::path(o.input).filename().string());
    HU_SetApplication(bar.get());
  }
  const auto start = std::chrono::steady_clock::now();
  CHU_GridConverter converter(options);
  const bool converted = converter.Convert(o.input, o.output);
  HU_SetApplication(nullptr);
  if (!converted) {
    std::fprintf(stderr, "hyutil: %s\n", converter.GetLastError().c_str());
    return kExitInputError;
  }
  for (const std::string& warning : converter.GetWarnings()) std::fprintf(stderr, "hyutil: warning: %s\n", warning.c_str());
  if (!o.quiet) {
    const HU_HYBGHeader& h = converter.GetHeader();
    const double seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
    std::printf("%s: %d columns x %d rows, %llu bytes (%.2f : 1, %s, %d thread%s) in %.2f s\n", o.output.c_str(),
                h.ncols, h.nrows, static_cast<unsigned long long>(converter.GetOutputSize()),
                ValueBytes(h) / static_cast<double>(converter.GetOutputSize()), o.codec.c_str(), options.threads,
                options.threads == 1 ? "" : "s", seconds);
  }
  return kExitOk;
}

int RunInfo(const std::string& path, bool json) {
  const GridInfo info = ReadInfo(path);
  json ? PrintInfoJson(info) : PrintInfoText(info);
  return kExitOk;
}

}  // namespace

void AddGridFileCommands(CLI::App& grid, int& exitCode) {
  auto info = std::make_shared<std::pair<std::string, bool>>();
  CLI::App* i = grid.add_subcommand("info", "Header of an ESRI ASCII, ESRI float or binary grid file");
  i->add_option("FILE", info->first, "Grid file (.asc, .flt, or binary grid)")->required();
  i->add_flag("--json", info->second, "JSON instead of text");
  i->callback([info, &exitCode] {
    exitCode = RunReportingInputErrors([&] { return RunInfo(info->first, info->second); });
  });

  auto convert = std::make_shared<ConvertOptions>();
  CLI::App* c = grid.add_subcommand("convert", "Convert an ESRI ASCII or float grid into a binary grid file");
  c->add_option("INPUT", convert->input, "ESRI grid (.asc, or .flt beside its .hdr)")->required();
  c->add_option("OUTPUT", convert->output, "Binary grid file to write")->required();
  c->add_option("--threads", convert->threads, "Compressing threads (default: all cores)")
      ->check(CLI::Range(1, 256));
  c->add_option("--codec", convert->codec, "zlib (level 9, default) or libdeflate (faster)")
      ->check(CLI::IsMember({"zlib", "libdeflate"}));
  c->add_flag("--quiet", convert->quiet, "No progress bar and no summary");
  c->callback([convert, &exitCode] { exitCode = RunConvert(*convert); });
}

}  // namespace hyutil
