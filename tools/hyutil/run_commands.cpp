// "hyutil run": a TUFLOW run summary as a short report, a live progress display
// while the engine rewrites it, or a mass-balance plot.
//
//   hyutil run FILE [--json]
//   hyutil run FILE --watch [--interval S]
//   hyutil run FILE --svg OUT.svg
//
// Watching re-reads the file every interval. The engine may be in the middle of
// rewriting it, so a reading counts only when the file did not change while it
// was read, ends with a line end and names a status; otherwise the last good
// values stay on screen. Watching stops when the status says the run ended
// (finished, failed, unstable, interrupted ...) or on Ctrl-C.

#include <sys/stat.h>
#include <unistd.h>

#include <nlohmann/json.hpp>

#include <algorithm>
#include <atomic>
#include <cctype>
#include <chrono>
#include <csignal>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <memory>
#include <string>
#include <thread>

#include "commands.h"
#include "hy_util/formats/tuflow_summary.h"
#include "run_plot.h"

namespace hyutil {
namespace {

using HU_LIB::HU_TuFlowSummary;

std::string Quoted(const std::string& path) { return "'" + path + "'"; }

std::unique_ptr<HU_TuFlowSummary> ReadSummary(const std::string& path) {
  if (!std::filesystem::exists(path)) throw InputError{Quoted(path) + " does not exist"};
  auto summary = HU_TuFlowSummary::Load(path);
  if (!summary) throw InputError{"cannot read " + Quoted(path)};
  return summary;
}

std::vector<double> List(const HU_TuFlowSummary& s, void (HU_TuFlowSummary::*getter)(CHU_CopyableArray<double>&) const) {
  CHU_CopyableArray<double> values;
  (s.*getter)(values);
  return {values.begin(), values.end()};
}

std::string Lower(std::string text) {
  for (char& c : text) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
  return text;
}

// Statuses with which the engine ends a run, successfully or not.
bool RunEnded(const std::string& status) {
  const std::string s = Lower(status);
  for (const char* word : {"finish", "complete", "fail", "unstable", "interrupt", "error", "stop", "terminat", "abort"})
    if (s.find(word) != std::string::npos) return true;
  return false;
}

void PrintJson(const std::string& path, const HU_TuFlowSummary& s) {
  CHU_CopyableArray<HU_LIB::SingleDomainSummary> domains;
  s.GetDomainSummaries(domains);
  nlohmann::ordered_json domainList = nlohmann::ordered_json::array();
  for (const auto& d : domains) domainList.push_back({{"cell_size", d.cellSize}, {"timestep", d.timestep}});
  const nlohmann::ordered_json out = {
      {"file", path},
      {"control_file", s.GetControlFile()},
      {"log_file", s.GetLogFile()},
      {"build", s.GetBuildVersion()},
      {"status", s.GetSimulationStatus()},
      {"percent_complete", s.GetPercentComplete()},
      {"simulation_time", s.GetSimulationTime()},
      {"start_time", s.GetSimStartTime()},
      {"end_time", s.GetSimEndTime()},
      {"computational_steps", s.GetComputationalSteps()},
      {"cpu_time", s.GetCPUTime()},
      {"clock_time", s.GetClockTime()},
      {"remaining_time", s.GetRemainingTime()},
      {"warnings", {{"prior", s.GetWarningsPriorToSim()}, {"during", s.GetWarningsDuringSim()}}},
      {"checks", {{"prior", s.GetChecksPriorToSim()}, {"during", s.GetChecksDuringSim()}}},
      {"negative_depths", {{"1d", s.Get1DNegativeDepths()}, {"2d", s.Get2DNegativeDepths()}}},
      {"1d", {{"nodes", s.GetNum1DNodes()}, {"channels", s.GetNum1DChannels()}}},
      {"domains", {{"count", s.GetNum2DDomains()}, {"list", domainList}}},
      {"map_output",
       {{"start", s.GetStartMapOutput()}, {"interval", s.GetMapOutputInterval()}, {"count", s.GetNumberOfMapOutputs()}}},
      {"summary",
       {{"interval", s.GetSummaryOutputInterval()},
        {"count", s.GetNumOfSummaryValues()},
        {"flow_in", List(s, &HU_TuFlowSummary::GetFlowInValuesMetric)},
        {"flow_out", List(s, &HU_TuFlowSummary::GetFlowOutValuesMetric)},
        {"volume_change", List(s, &HU_TuFlowSummary::GetChangeInVolumeValuesMetric)},
        {"cumulative_mass_error", List(s, &HU_TuFlowSummary::GetCulumativeMassErrorValues)}}}};
  std::printf("%s\n", out.dump(2).c_str());
}

void PrintReport(const std::string& path, const HU_TuFlowSummary& s) {
  std::printf("file:            %s\n", path.c_str());
  if (!s.GetControlFile().empty()) std::printf("control file:    %s\n", s.GetControlFile().c_str());
  if (!s.GetBuildVersion().empty()) std::printf("build:           %s\n", s.GetBuildVersion().c_str());
  std::printf("status:          %s\n", s.GetSimulationStatus().empty() ? "(none)" : s.GetSimulationStatus().c_str());
  std::printf("progress:        %.1f %% complete\n", s.GetPercentComplete());
  std::printf("simulation time: %.4g h (from %.4g h to %.4g h), %.0f steps\n", s.GetSimulationTime(),
              s.GetSimStartTime(), s.GetSimEndTime(), s.GetComputationalSteps());
  std::printf("clock time:      %.4g h (CPU %.4g h), about %.4g h remaining\n", s.GetClockTime(), s.GetCPUTime(),
              s.GetRemainingTime());
  std::printf("warnings:        %d before, %d during the simulation\n", s.GetWarningsPriorToSim(),
              s.GetWarningsDuringSim());
  std::printf("checks:          %d before, %d during the simulation\n", s.GetChecksPriorToSim(), s.GetChecksDuringSim());
  std::printf("negative depths: 1D %d, 2D %d\n", s.Get1DNegativeDepths(), s.Get2DNegativeDepths());
  if (s.GetNum1DNodes() || s.GetNum1DChannels())
    std::printf("1D network:      %d nodes, %d channels\n", s.GetNum1DNodes(), s.GetNum1DChannels());
  CHU_CopyableArray<HU_LIB::SingleDomainSummary> domains;
  s.GetDomainSummaries(domains);
  std::printf("2D domains:      %d", s.GetNum2DDomains());
  for (std::size_t i = 0; i < domains.size(); ++i)
    std::printf("%s cell %.4g, timestep %.4g", i ? ";" : ":", domains[i].cellSize, domains[i].timestep);
  std::printf("\n");
  std::printf("map output:      %d outputs from %.4g h every %.4g s\n", s.GetNumberOfMapOutputs(), s.GetStartMapOutput(),
              s.GetMapOutputInterval());
  const auto cme = List(s, &HU_TuFlowSummary::GetCulumativeMassErrorValues);
  if (cme.empty()) std::printf("mass error:      no values yet\n");
  else
    std::printf("mass error:      final cumulative %.4g %% (%zu values every %.4g s)\n", cme.back(), cme.size(),
                s.GetSummaryOutputInterval());
}

// ---- watching --------------------------------------------------------------

std::atomic<bool> interrupted{false};

extern "C" void OnInterrupt(int) { interrupted = true; }

struct FileStamp {
  off_t size = -1;
  timespec modified{};
  bool operator==(const FileStamp& o) const {
    return size == o.size && modified.tv_sec == o.modified.tv_sec && modified.tv_nsec == o.modified.tv_nsec;
  }
};

FileStamp Stamp(const std::string& path) {
  struct stat st {};
  if (stat(path.c_str(), &st) != 0) return {};
  return {st.st_size, st.st_mtim};
}

// Line ends in the file, and whether it ends with one.
std::pair<std::int64_t, bool> LineEnds(const std::string& path) {
  std::ifstream in(path, std::ios::binary);
  std::int64_t count = 0;
  char last = 0;
  char block[65536];
  while (in.read(block, sizeof block) || in.gcount() > 0) {
    const auto got = static_cast<std::size_t>(in.gcount());
    count += std::count(block, block + got, '\n');
    last = block[got - 1];
  }
  return {count, last == '\n'};
}

// A reading of a file that stood still while it was read and looks whole: it ends
// with a line end, names a status and has no fewer lines than the last whole one
// (a summary only grows while the run goes on).
std::unique_ptr<HU_TuFlowSummary> ReadWhole(const std::string& path, std::int64_t& lines) {
  const FileStamp before = Stamp(path);
  if (before.size <= 0) return nullptr;
  const auto [count, endsWithLineEnd] = LineEnds(path);
  auto summary = HU_TuFlowSummary::Load(path);
  if (!summary || !(Stamp(path) == before) || !endsWithLineEnd || count < lines ||
      summary->GetSimulationStatus().empty())
    return nullptr;
  lines = count;
  return summary;
}

std::string ProgressLine(const HU_TuFlowSummary& s, bool stale, int width) {
  const double percent = std::clamp(s.GetPercentComplete(), 0.0, 100.0);
  const int filled = static_cast<int>(percent / 100.0 * width + 0.5);
  char text[256];
  char end[32] = "";
  if (s.GetSimEndTime() > 0) std::snprintf(end, sizeof end, " of %.4g", s.GetSimEndTime());
  std::snprintf(text, sizeof text, "[%s%s] %5.1f%%  sim %.4g%s h  remaining %.3g h  %s%s",
                std::string(static_cast<std::size_t>(filled), '#').c_str(),
                std::string(static_cast<std::size_t>(width - filled), '.').c_str(), percent, s.GetSimulationTime(), end,
                s.GetRemainingTime(), s.GetSimulationStatus().c_str(), stale ? "  (file being written)" : "");
  return text;
}

int Watch(const std::string& path, double interval) {
  if (!std::filesystem::exists(path)) throw InputError{Quoted(path) + " does not exist"};
  const bool terminal = isatty(STDOUT_FILENO) != 0;
  struct sigaction action {};
  action.sa_handler = OnInterrupt;
  sigaction(SIGINT, &action, nullptr);
  std::unique_ptr<HU_TuFlowSummary> good;
  std::string shown;
  bool settled = false;
  std::int64_t lines = 0;
  for (;;) {
    auto fresh = ReadWhole(path, lines);
    const bool stale = !fresh;
    if (fresh) good = std::move(fresh);
    const std::string line = good ? ProgressLine(*good, stale, 30) : "waiting for " + Quoted(path) + " to be written";
    if (terminal) {
      std::printf("\r\033[K%s", line.c_str());
    } else if (line != shown && !stale) {
      std::printf("%s\n", line.c_str());
      shown = line;
    }
    std::fflush(stdout);
    if (good && RunEnded(good->GetSimulationStatus())) {
      // The engine writes the status first: give it one more interval to finish the file.
      if (!settled) {
        settled = true;
        std::this_thread::sleep_for(std::chrono::duration<double>(std::min(interval, 2.0)));
        continue;
      }
      break;
    }
    for (double waited = 0; waited < interval && !interrupted; waited += 0.05)
      std::this_thread::sleep_for(std::chrono::milliseconds(50));
    if (interrupted) break;
  }
  if (terminal) std::printf("\n");
  if (interrupted) std::printf("stopped watching %s\n", path.c_str());
  std::signal(SIGINT, SIG_DFL);
  return kExitOk;
}

struct RunOptions {
  std::string path;
  bool json = false;
  bool watch = false;
  double interval = 2.0;
  std::string svg;
};

int Run(const RunOptions& o) {
  if (o.watch) return Watch(o.path, o.interval);
  const auto summary = ReadSummary(o.path);
  if (!o.svg.empty()) {
    std::ofstream out(o.svg, std::ios::binary);
    out << MassBalanceSvg(*summary, std::filesystem::path(o.path).filename().string());
    if (!out.flush()) throw InputError{"cannot write " + Quoted(o.svg)};
    std::printf("%s: mass balance of %zu summary values\n", o.svg.c_str(),
                List(*summary, &HU_TuFlowSummary::GetCulumativeMassErrorValues).size());
    return kExitOk;
  }
  o.json ? PrintJson(o.path, *summary) : PrintReport(o.path, *summary);
  return kExitOk;
}

}  // namespace

void AddRunCommands(CLI::App& app, int& exitCode) {
  auto options = std::make_shared<RunOptions>();
  CLI::App* run = app.add_subcommand("run", "Report, watch or plot a TUFLOW run summary");
  run->add_option("FILE", options->path, "Run summary written by the engine")->required();
  auto* json = run->add_flag("--json", options->json, "JSON instead of text");
  auto* watch = run->add_flag("--watch", options->watch, "Follow the run as the engine rewrites the file")->excludes(json);
  run->add_option("--interval", options->interval, "Seconds between readings when watching (default 2)")
      ->check(CLI::Range(0.05, 3600.0))
      ->needs(watch);
  run->add_option("--svg", options->svg, "Write a plot of the mass balance to this SVG file")
      ->excludes(json)
      ->excludes(watch);
  run->callback([options, &exitCode] { exitCode = RunReportingInputErrors([&] { return Run(*options); }); });
}

}  // namespace hyutil
