// "hyutil curve": a cubic spline through a tabulated curve (a rating curve, a
// stage-storage table) evaluated at given x values or at evenly spaced samples, as
// text, CSV or JSON, optionally drawn as an SVG chart.
//
// The table has two columns, x and y, separated by a comma or by blanks; '#' starts
// a comment; a first line whose two fields are not numbers is a header naming the
// axes. x must increase strictly from row to row.

#include <nlohmann/json.hpp>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <memory>
#include <string>
#include <vector>

#include "commands.h"
#include "hy_util/geometry/cubic_spline.h"
#include "number_text.h"
#include "svg_plot.h"

namespace hyutil {
namespace {

constexpr std::uintmax_t kLargestTable = 256u << 20;  // bytes; tables are far smaller
constexpr long long kMostSamples = 10'000'000;
constexpr int kPlotSamples = 600;

struct CurveOptions {
  std::string table;
  std::vector<std::string> at;
  long long samples = 0;
  std::string type = "natural";
  std::vector<std::string> slopes;
  bool json = false, csv = false;
  std::string svg;
};

struct CurveTable {
  std::vector<double> x, y;
  std::vector<int> lines;  // file line of each point
  std::string xName = "x", yName = "y";
  bool hasHeader = false;
};

std::string Trim(std::string_view text) {
  const auto first = text.find_first_not_of(" \t\r\n");
  if (first == std::string_view::npos) return {};
  return std::string(text.substr(first, text.find_last_not_of(" \t\r\n") - first + 1));
}

// Fields split at commas when there are any, else at runs of blanks.
std::vector<std::string> Fields(const std::string& line) {
  std::vector<std::string> fields;
  if (line.find(',') != std::string::npos) {
    std::size_t start = 0;
    for (std::size_t comma; (comma = line.find(',', start)) != std::string::npos; start = comma + 1)
      fields.push_back(Trim(std::string_view(line).substr(start, comma - start)));
    fields.push_back(Trim(std::string_view(line).substr(start)));
    return fields;
  }
  std::size_t pos = 0;
  while ((pos = line.find_first_not_of(" \t", pos)) != std::string::npos) {
    const std::size_t end = line.find_first_of(" \t", pos);
    fields.push_back(line.substr(pos, end - pos));
    pos = end;
  }
  return fields;
}

void AddRow(CurveTable& t, const std::vector<std::string>& f, const std::string& where, int line) {
  double x = 0, y = 0;
  const bool xOk = ParseDouble(f[0], x), yOk = ParseDouble(f[1], y);
  if (!xOk && !yOk && t.x.empty() && !t.hasHeader) {
    t.hasHeader = true;
    t.xName = f[0].empty() ? "x" : f[0];
    t.yName = f[1].empty() ? "y" : f[1];
    return;
  }
  if (!xOk) throw InputError{where + ": '" + Printable(f[0]) + "' is not a number"};
  if (!yOk) throw InputError{where + ": '" + Printable(f[1]) + "' is not a number"};
  if (!std::isfinite(x) || !std::isfinite(y))
    throw InputError{where + ": x and y must be finite numbers, found " + f[0] + ", " + f[1]};
  if (!t.x.empty() && !(x > t.x.back())) {
    throw InputError{where + ": x " + f[0] + (x == t.x.back() ? " repeats" : " is below") + " the x of line " +
                     std::to_string(t.lines.back()) + "; x must increase"};
  }
  t.x.push_back(x);
  t.y.push_back(y);
  t.lines.push_back(line);
}

CurveTable ReadTable(const std::string& path) {
  std::error_code ec;
  const auto size = std::filesystem::file_size(path, ec);
  std::ifstream file(path, std::ios::binary);
  if (ec || !file) throw InputError{"cannot open curve table '" + path + "' for reading"};
  if (size > kLargestTable) throw InputError{path + ": too large for a curve table (" + std::to_string(size) + " bytes)"};
  CurveTable t;
  std::string text;
  for (int number = 1; std::getline(file, text); ++number) {
    if (number == 1 && text.rfind("\xEF\xBB\xBF", 0) == 0) text.erase(0, 3);
    const std::string line = Trim(std::string_view(text).substr(0, text.find('#')));
    if (line.empty()) continue;
    const std::vector<std::string> fields = Fields(line);
    const std::string where = path + ":" + std::to_string(number);
    if (fields.size() != 2)
      throw InputError{where + ": expected two columns (x, y), found " + std::to_string(fields.size())};
    AddRow(t, fields, where, number);
  }
  if (file.bad()) throw InputError{"cannot read curve table '" + path + "'"};
  if (t.x.size() < 2)
    throw InputError{path + ": a curve needs at least two points, found " + std::to_string(t.x.size())};
  return t;
}

CHU_CubicSpline2D::SplineType TypeOf(const std::string& name) {
  if (name == "constrained") return CHU_CubicSpline2D::ST_CONSTRAINED;
  if (name == "monotone") return CHU_CubicSpline2D::ST_CONSTRAINED_MONOTONE;
  return CHU_CubicSpline2D::ST_NATURAL;
}

struct Slope {
  int index;
  double value;
};

// "I=S" arguments; a problem is a usage error, reported here.
bool ParseSlopes(const std::vector<std::string>& texts, std::size_t points, std::vector<Slope>& slopes) {
  for (const std::string& text : texts) {
    const auto equals = text.find('=');
    double index = 0;
    Slope s{};
    if (equals == std::string::npos || !ParseDouble(std::string_view(text).substr(0, equals), index) ||
        !ParseDouble(std::string_view(text).substr(equals + 1), s.value) || index != std::floor(index)) {
      std::fprintf(stderr, "hyutil: --slope expects INDEX=SLOPE, got '%s'\n", Printable(text).c_str());
      return false;
    }
    if (index < 0 || index >= static_cast<double>(points) || !std::isfinite(s.value)) {
      std::fprintf(stderr, "hyutil: --slope %s: the index must name one of the %zu points (0 to %zu) and the slope be finite\n",
                   Printable(text).c_str(), points, points - 1);
      return false;
    }
    s.index = static_cast<int>(index);
    slopes.push_back(s);
  }
  return true;
}

bool QueryXs(const CurveOptions& o, const CurveTable& t, std::vector<double>& xs) {
  for (const std::string& text : o.at) {
    double x = 0;
    if (!ParseDouble(text, x)) {
      std::fprintf(stderr, "hyutil: --at: '%s' is not a number\n", Printable(text).c_str());
      return false;
    }
    xs.push_back(x);
  }
  const double lo = t.x.front(), hi = t.x.back();
  for (long long i = 0; i < o.samples; ++i)
    xs.push_back(o.samples == 1 ? lo : i == o.samples - 1 ? hi : lo + (hi - lo) * static_cast<double>(i) / static_cast<double>(o.samples - 1));
  return true;
}

void PrintValues(const CurveOptions& o, const CurveTable& t, const CHU_CubicSpline2D& spline, const std::vector<double>& xs) {
  if (o.json) {
    nlohmann::ordered_json values = nlohmann::ordered_json::array();
    for (const double x : xs) values.push_back({{"x", x}, {"y", spline.ComputeY(x)}});
    const nlohmann::ordered_json out = {{"table", o.table},           {"type", o.type},
                                        {"points", t.x.size()},       {"x_name", t.xName},
                                        {"y_name", t.yName},          {"values", values}};
    std::cout << out.dump(2) << '\n';
    return;
  }
  const char* separator = o.csv ? "," : "\t";  // header names may hold blanks
  std::string text = t.xName + separator + t.yName + "\n";
  for (const double x : xs) {
    text += ShortestText(x) + separator + ShortestText(spline.ComputeY(x)) + "\n";
    if (text.size() > (1u << 16)) std::fputs(text.c_str(), stdout), text.clear();
  }
  std::fputs(text.c_str(), stdout);
}

bool WriteSvg(const CurveOptions& o, const CurveTable& t, const CHU_CubicSpline2D& spline,
              const std::vector<double>& xs) {
  double lo = t.x.front(), hi = t.x.back();
  SvgSeries queried{"values asked for", "#d62728", true, {}};
  if (!o.at.empty()) {
    for (const double x : xs) {
      if (!std::isfinite(x)) continue;
      lo = std::min(lo, x), hi = std::max(hi, x);
      queried.points.emplace_back(x, spline.ComputeY(x));
    }
  }
  SvgSeries curve{o.type + " cubic spline", "#ff7f0e", false, {}};
  for (int i = 0; i <= kPlotSamples; ++i) {
    const double x = lo + (hi - lo) * i / kPlotSamples;
    curve.points.emplace_back(x, spline.ComputeY(x));
  }
  SvgSeries table{"table points", "#1f77b4", true, {}};
  for (std::size_t i = 0; i < t.x.size(); ++i) table.points.emplace_back(t.x[i], t.y[i]);
  SvgPlot plot{std::filesystem::path(o.table).filename().string() + ": " + o.type + " cubic spline", t.xName,
               t.yName, {curve, table}};
  if (!queried.points.empty()) plot.series.push_back(queried);
  std::ofstream file(o.svg, std::ios::binary);
  file << RenderSvg(plot);
  file.close();
  if (!file) {
    std::fprintf(stderr, "hyutil: cannot write '%s'\n", o.svg.c_str());
    return false;
  }
  return true;
}

int RunCurve(const CurveOptions& o) {
  if (o.at.empty() && o.samples == 0 && o.svg.empty()) {
    std::fprintf(stderr, "hyutil: curve: give --at X..., --samples N or --svg FILE\n");
    return kExitUsage;
  }
  const CurveTable t = ReadTable(o.table);
  std::vector<Slope> slopes;
  std::vector<double> xs;
  if (!ParseSlopes(o.slopes, t.x.size(), slopes) || !QueryXs(o, t, xs)) return kExitUsage;
  CHU_CubicSpline2D spline(static_cast<int>(t.x.size()), t.x.data(), t.y.data(), TypeOf(o.type));
  if (!slopes.empty() && spline.GetType() == CHU_CubicSpline2D::ST_NATURAL)
    std::fprintf(stderr, "hyutil: the natural spline ignores --slope; use --type constrained or monotone\n");
  for (const Slope& s : slopes) spline.AddFirstDerivativeConstraint(s.index, s.value);
  if (!xs.empty()) PrintValues(o, t, spline, xs);
  if (!o.svg.empty() && !WriteSvg(o, t, spline, xs)) return kExitInputError;
  return kExitOk;
}

}  // namespace

void AddCurveCommands(CLI::App& app, int& exitCode) {
  auto o = std::make_shared<CurveOptions>();
  CLI::App* c = app.add_subcommand("curve", "Interpolate a tabulated curve with a cubic spline");
  c->add_option("TABLE", o->table, "Two-column x,y table (CSV or blank-separated, # comments, optional header)")
      ->required();
  auto* at = c->add_option("--at", o->at, "x values to evaluate at")->expected(1, -1)->allow_extra_args();
  c->add_option("--samples", o->samples, "N evenly spaced x values over the table's range")
      ->check(CLI::Range(1LL, kMostSamples))
      ->excludes(at);
  c->add_option("--type", o->type, "natural (default), constrained or monotone")
      ->check(CLI::IsMember({"natural", "constrained", "monotone"}));
  c->add_option("--slope", o->slopes, "Fixed first derivative at a point, INDEX=SLOPE (zero-based; repeatable)");
  auto* json = c->add_flag("--json", o->json, "JSON output");
  c->add_flag("--csv", o->csv, "CSV output with a header line")->excludes(json);
  c->add_option("--svg", o->svg, "Also draw the table and the curve into this SVG file");
  c->callback([o, &exitCode] { exitCode = RunReportingInputErrors([&] { return RunCurve(*o); }); });
}

}  // namespace hyutil
