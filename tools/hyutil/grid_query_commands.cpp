// "hyutil grid sample" and "hyutil grid average": values of a binary grid file at
// points and means under polygons, as CSV (or JSON) on standard output. By default
// the batch classes answer; --one-by-one asks the reader once per query, which
// gives the same answers and is there for comparison.

#include <boost/geometry.hpp>
#include <boost/geometry/geometries/point_xy.hpp>
#include <boost/geometry/geometries/polygon.hpp>
#include <nlohmann/json.hpp>

#include <bit>
#include <charconv>
#include <cstdio>
#include <fstream>
#include <iostream>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "commands.h"
#include "hy_util/geometry/polygon.h"
#include "hy_util/grids/batch_point_sampler.h"
#include "hy_util/grids/batch_polygon_averager.h"
#include "hy_util/grids/binary_grid_file.h"
#include "hy_util/grids/binary_grid_format.h"
#include "vector_layers.h"

namespace hyutil {
namespace {

std::string Trim(const std::string& text) {
  const auto first = text.find_first_not_of(" \t\r\n");
  if (first == std::string::npos) return {};
  return text.substr(first, text.find_last_not_of(" \t\r\n") - first + 1);
}

bool ParseNumber(const std::string& text, double& value) {
  const char* end = text.data() + text.size();
  const auto [ptr, ec] = std::from_chars(text.data(), end, value);
  return ec == std::errc() && ptr == end;
}

// The grid must open and have a readable header; per-query failures beyond that
// are reported per point or polygon.
void CheckGrid(const std::string& path) {
  CHU_StdioFile file;
  if (!file.Open(path, HU_modeRead | HU_typeBinary))
    throw InputError{"cannot open grid file '" + path + "' for reading"};
  HU_HYBGHeader header;
  std::vector<std::uint32_t> offsets;
  std::string error;
  if (!HU_ReadHYBGHeader(file, path, header, offsets, error)) throw InputError{error};
}

std::string FormatValue(float value) {
  char text[32];
  std::snprintf(text, sizeof text, "%.9g", static_cast<double>(value));
  return text;
}

// The result code as a word, so that a reader of the CSV need not look it up.
const char* StatusWord(HYBG_ResultCode code) {
  switch (code) {
    case HYBG_OK: return "ok";
    case HYBG_ERROR: return "error";
    case HYBG_NO_DATA: return "no_data";
    case HYBG_PARTIAL: return "partial";
  }
  return "unknown";
}

// A CSV field, quoted when it holds a separator, a quote or a line end.
std::string CsvField(const std::string& text) {
  if (text.find_first_of(",\"\r\n") == std::string::npos) return text;
  std::string quoted = "\"";
  for (char c : text) quoted += c == '"' ? std::string("\"\"") : std::string(1, c);
  return quoted + "\"";
}

nlohmann::ordered_json JsonValue(bool has, float value) {
  if (!has) return nullptr;
  double shortest = 0.0;
  ParseNumber(FormatValue(value), shortest);
  return shortest;
}

// ---- sample ----

struct SampleOptions {
  std::string grid;
  std::string method = "nearest";
  bool oneByOne = false;
  std::vector<std::string> coordinates;
  std::string pointsFile;
  bool json = false;
};

struct PointInput {
  std::vector<HU_HYBGPoint> points;
  std::vector<std::pair<std::string, std::string>> texts;  // as given, for the CSV
};

void AddPoint(PointInput& in, const std::string& xs, const std::string& ys, const std::string& where) {
  HU_HYBGPoint p;
  if (!ParseNumber(xs, p.x) || !ParseNumber(ys, p.y))
    throw InputError{where + ": expected a point as 'x y' or 'x,y'"};
  in.points.push_back(p);
  in.texts.emplace_back(xs, ys);
}

void ReadPointLines(std::istream& stream, const std::string& name, PointInput& in) {
  std::string line;
  for (int number = 1; std::getline(stream, line); ++number) {
    line = Trim(line);
    if (line.empty() || line[0] == '#') continue;
    const auto split = line.find_first_of(", \t");
    const std::string where = name + ":" + std::to_string(number);
    if (split == std::string::npos) throw InputError{where + ": expected a point as 'x y' or 'x,y'"};
    std::string rest = Trim(line.substr(split + 1));
    if (line[split] != ',' && !rest.empty() && rest[0] == ',') rest = Trim(rest.substr(1));
    AddPoint(in, line.substr(0, split), rest, where);
  }
  if (stream.bad()) throw InputError{"cannot read points file '" + name + "'"};
}

PointInput ReadPoints(const SampleOptions& o) {
  PointInput in;
  if (!o.coordinates.empty()) {
    AddPoint(in, o.coordinates[0], o.coordinates[1], "coordinates");
    return in;
  }
  if (o.pointsFile == "-") {
    ReadPointLines(std::cin, "standard input", in);
    return in;
  }
  std::ifstream file(o.pointsFile);
  if (!file) throw InputError{"cannot open points file '" + o.pointsFile + "' for reading"};
  ReadPointLines(file, o.pointsFile, in);
  return in;
}

std::vector<HU_HYBGPointAnswer> SampleGrid(const SampleOptions& o, const PointInput& in, std::string& lastError) {
  const auto method = o.method == "bilinear" ? HYBG_BILINEAR : HYBG_NEAREST;
  if (!o.oneByOne) {
    CHU_HYBGBatchPointSampler sampler(o.grid);
    auto answers = sampler.Sample(in.points, method);
    lastError = sampler.GetLastError();
    return answers;
  }
  CHU_HYBinaryGridFile reader(o.grid);
  std::vector<HU_HYBGPointAnswer> answers;
  for (const HU_HYBGPoint& p : in.points) {
    HU_HYBGPointAnswer a;
    a.code = reader.GetZValue(p.x, p.y, a.value, method);
    answers.push_back(a);
  }
  lastError = reader.GetLastError();
  return answers;
}

void PrintSamples(const SampleOptions& o, const PointInput& in, const std::vector<HU_HYBGPointAnswer>& answers) {
  if (o.json) {
    nlohmann::ordered_json out = nlohmann::ordered_json::array();
    for (std::size_t i = 0; i < answers.size(); ++i)
      out.push_back({{"x", in.points[i].x},
                     {"y", in.points[i].y},
                     {"code", static_cast<int>(answers[i].code)},
                     {"status", StatusWord(answers[i].code)},
                     {"value", JsonValue(answers[i].code == HYBG_OK, answers[i].value)}});
    std::cout << out.dump(2) << '\n';
    return;
  }
  std::string text = "x,y,code,status,value\n";
  for (std::size_t i = 0; i < answers.size(); ++i) {
    text += in.texts[i].first + "," + in.texts[i].second + "," + std::to_string(static_cast<int>(answers[i].code)) +
            "," + StatusWord(answers[i].code) + "," + (answers[i].code == HYBG_OK ? FormatValue(answers[i].value) : "") +
            "\n";
  }
  std::fwrite(text.data(), 1, text.size(), stdout);
}

template <typename Answer>
void ReportErrors(const std::vector<Answer>& answers, const std::string& lastError) {
  for (const Answer& a : answers) {
    if (a.code == HYBG_ERROR) {
      std::fprintf(stderr, "hyutil: %s\n", lastError.c_str());
      return;
    }
  }
}

int RunSample(const SampleOptions& o) {
  if (o.coordinates.empty() == o.pointsFile.empty()) {
    std::fprintf(stderr, "hyutil grid sample: give either X Y or --points FILE\n");
    return kExitUsage;
  }
  double number = 0.0;
  for (const std::string& c : o.coordinates) {
    if (!ParseNumber(c, number)) {
      std::fprintf(stderr, "hyutil grid sample: the coordinate '%s' is not a number\n", c.c_str());
      return kExitUsage;
    }
  }
  CheckGrid(o.grid);
  const PointInput in = ReadPoints(o);
  std::string lastError;
  const auto answers = SampleGrid(o, in, lastError);
  PrintSamples(o, in, answers);
  ReportErrors(answers, lastError);
  return kExitOk;
}

// ---- average ----

using WktPoint = boost::geometry::model::d2::point_xy<double>;
using WktPolygon = boost::geometry::model::polygon<WktPoint>;

struct PolygonLine {
  int id;
  std::unique_ptr<CHU_DPolygon> polygon;  // null when the polygon has holes or several parts
  std::string where;                      // for messages: "FILE:LINE" or the object's place
  std::string label;                      // first attribute of a shapefile or MIF object
};

struct PolygonInput {
  std::vector<PolygonLine> lines;
  std::string labelColumn;  // name of the attribute column given beside each answer; empty for none
};

// Polygons of a shapefile or MIF/MID file, one per polygon object in file order,
// numbered by their object index. Objects of other kinds are passed over with one
// warning.
PolygonInput ReadVectorPolygons(const std::string& path) {
  std::unique_ptr<VectorReader> reader = OpenVectorReader(path);
  PolygonInput in;
  if (!reader->Columns().empty()) in.labelColumn = reader->Columns()[0].name;
  VectorFeature f;
  int index = 0, others = 0;
  while (reader->Next(f)) {
    if (f.container) continue;
    const int id = index++;
    if (f.kind != VectorKind::Polygon) {
      ++others;
      continue;
    }
    PolygonLine entry{id, nullptr, f.where, f.values.empty() ? std::string() : f.values[0]};
    if (f.parts.size() == 1) {
      entry.polygon = std::make_unique<CHU_DPolygon>();
      const CHU_DPolyLine& ring = *f.parts[0];
      for (int i = 0; i < ring.GetCount(); ++i) entry.polygon->AddPt(ring.GetAt(i)->x, ring.GetAt(i)->y, 0.0);
    }
    in.lines.push_back(std::move(entry));
  }
  for (const std::string& w : reader->warnings) std::fprintf(stderr, "hyutil: warning: %s\n", w.c_str());
  if (others > 0)
    std::fprintf(stderr, "hyutil: warning: %s: %d object%s that %s not polygons passed over\n", path.c_str(), others,
                 others == 1 ? "" : "s", others == 1 ? "is" : "are");
  return in;
}

std::vector<PolygonLine> ReadPolygons(const std::string& path) {
  std::ifstream file(path);
  if (!file) throw InputError{"cannot open polygons file '" + path + "' for reading"};
  std::vector<PolygonLine> lines;
  std::string line;
  for (int index = 0; std::getline(file, line); ++index) {
    line = Trim(line);
    if (line.empty() || line[0] == '#') continue;
    WktPolygon wkt;
    try {
      boost::geometry::read_wkt(line, wkt);
    } catch (const std::exception& e) {
      throw InputError{path + ":" + std::to_string(index + 1) + ": not a WKT POLYGON (" + e.what() + ")"};
    }
    PolygonLine entry{index, nullptr, path + ":" + std::to_string(index + 1), {}};
    if (wkt.inners().empty()) {
      entry.polygon = std::make_unique<CHU_DPolygon>();
      for (const WktPoint& p : wkt.outer()) entry.polygon->AddPt(p.x(), p.y(), 0.0);
    }
    lines.push_back(std::move(entry));
  }
  if (file.bad()) throw InputError{"cannot read polygons file '" + path + "'"};
  return lines;
}

std::vector<HU_HYBGPolygonAnswer> AverageGrid(const std::string& grid, bool oneByOne,
                                              const std::vector<PolygonLine>& lines, std::string& lastError) {
  std::vector<const CHU_DPolygon*> polygons;
  for (const PolygonLine& l : lines)
    if (l.polygon) polygons.push_back(l.polygon.get());
  std::vector<HU_HYBGPolygonAnswer> found;
  if (!oneByOne) {
    CHU_HYBGBatchPolygonAverager averager(grid);
    found = averager.Average(polygons);
    lastError = averager.GetLastError();
  } else {
    CHU_HYBinaryGridFile reader(grid);
    // The reader leaves the average untouched when it sets none: a NaN with a
    // payload that no division yields tells the two apart.
    const float untouched = std::bit_cast<float>(0x7FC0DEADu);
    for (const CHU_DPolygon* p : polygons) {
      HU_HYBGPolygonAnswer a;
      float average = untouched;
      a.code = reader.GetAverageZValueOverPolygon(*p, average);
      a.hasAverage = std::bit_cast<std::uint32_t>(average) != 0x7FC0DEADu;
      a.average = average;
      found.push_back(a);
    }
    lastError = reader.GetLastError();
  }
  std::vector<HU_HYBGPolygonAnswer> answers;
  std::size_t next = 0;
  for (const PolygonLine& l : lines) answers.push_back(l.polygon ? found[next++] : HU_HYBGPolygonAnswer{});
  return answers;
}

// A polygon that was not asked about (holes, several parts) is "unsupported".
const char* AverageStatus(const PolygonLine& line, const HU_HYBGPolygonAnswer& answer) {
  return line.polygon ? StatusWord(answer.code) : "unsupported";
}

void PrintAverages(bool json, const PolygonInput& in, const std::vector<HU_HYBGPolygonAnswer>& answers) {
  const std::vector<PolygonLine>& lines = in.lines;
  const bool labels = !in.labelColumn.empty();
  if (json) {
    nlohmann::ordered_json out = nlohmann::ordered_json::array();
    for (std::size_t i = 0; i < answers.size(); ++i) {
      nlohmann::ordered_json entry = {{"id", lines[i].id}};
      if (labels) entry["label"] = lines[i].label;
      entry["code"] = static_cast<int>(answers[i].code);
      entry["status"] = AverageStatus(lines[i], answers[i]);
      entry["value"] = JsonValue(answers[i].hasAverage, answers[i].average);
      out.push_back(entry);
    }
    std::cout << out.dump(2) << '\n';
    return;
  }
  std::string text = labels ? "id," + CsvField(in.labelColumn) + ",code,status,value\n" : "id,code,status,value\n";
  for (std::size_t i = 0; i < answers.size(); ++i) {
    text += std::to_string(lines[i].id) + "," + (labels ? CsvField(lines[i].label) + "," : "") +
            std::to_string(static_cast<int>(answers[i].code)) + "," + AverageStatus(lines[i], answers[i]) + "," +
            (answers[i].hasAverage ? FormatValue(answers[i].average) : "") + "\n";
  }
  std::fwrite(text.data(), 1, text.size(), stdout);
}

int RunAverage(const std::string& grid, const std::string& polygonsFile, bool oneByOne, bool json) {
  CheckGrid(grid);
  PolygonInput in;
  if (IsShapefilePath(polygonsFile) || IsMifPath(polygonsFile)) in = ReadVectorPolygons(polygonsFile);
  else in.lines = ReadPolygons(polygonsFile);
  const std::vector<PolygonLine>& lines = in.lines;
  for (const PolygonLine& l : lines)
    if (!l.polygon)
      std::fprintf(stderr, "hyutil: %s: polygon with holes or several parts is not supported\n", l.where.c_str());
  std::string lastError;
  const auto answers = AverageGrid(grid, oneByOne, lines, lastError);
  PrintAverages(json, in, answers);
  bool libraryError = false;
  for (std::size_t i = 0; i < answers.size(); ++i) libraryError |= lines[i].polygon && answers[i].code == HYBG_ERROR;
  if (libraryError) std::fprintf(stderr, "hyutil: %s\n", lastError.c_str());
  return kExitOk;
}

}  // namespace

void AddGridQueryCommands(CLI::App& grid, int& exitCode) {
  auto sample = std::make_shared<SampleOptions>();
  CLI::App* s = grid.add_subcommand("sample", "Values of a binary grid file at points, as CSV");
  s->add_option("GRID", sample->grid, "Binary grid file")->required();
  s->add_option("X Y", sample->coordinates, "One point")->expected(2);
  s->add_option("--method", sample->method, "nearest (default) or bilinear")
      ->check(CLI::IsMember({"nearest", "bilinear"}));
  s->add_flag("--one-by-one", sample->oneByOne, "Ask the reader once per point instead of the batch sampler");
  s->add_option("--points", sample->pointsFile, "File of points, one 'x y' or 'x,y' per line; - for standard input");
  s->add_flag("--json", sample->json, "JSON instead of CSV");
  s->callback([sample, &exitCode] {
    exitCode = RunReportingInputErrors([&] { return RunSample(*sample); });
  });

  struct AverageOptions {
    std::string grid, polygons;
    bool oneByOne = false, json = false;
  };
  auto average = std::make_shared<AverageOptions>();
  CLI::App* a = grid.add_subcommand("average", "Mean of a binary grid file under polygons, as CSV");
  a->add_option("GRID", average->grid, "Binary grid file")->required();
  a->add_option("--polygons", average->polygons,
                "Text file with one WKT POLYGON per line, a polygon shapefile (.shp) or a MIF/MID file (.mif, .mid)")
      ->required();
  a->add_flag("--one-by-one", average->oneByOne, "Ask the reader once per polygon instead of the batch averager");
  a->add_flag("--json", average->json, "JSON instead of CSV");
  a->callback([average, &exitCode] {
    exitCode = RunReportingInputErrors(
        [&] { return RunAverage(average->grid, average->polygons, average->oneByOne, average->json); });
  });
}

}  // namespace hyutil
