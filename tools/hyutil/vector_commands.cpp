// "hyutil vector": shapefiles and MapInfo MIF/MID pairs.
//
//   hyutil vector info FILE [--json]      format, objects by kind, bounds, columns
//   hyutil vector dump FILE [--json]      every object with vertices and row (GeoJSON)
//   hyutil vector convert IN OUT [--quiet]  shapefile <-> MIF/MID
//
// Files are read one object at a time; --json of dump is written as it is read.

#include <unistd.h>

#include <nlohmann/json.hpp>

#include <charconv>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <filesystem>
#include <iostream>
#include <map>
#include <memory>
#include <string>

#include "commands.h"
#include "hy_util/geometry/polygon.h"
#include "vector_layers.h"

namespace hyutil {
namespace {

using Json = nlohmann::ordered_json;

// The shortest text that reads back as the same double.
std::string Number(double value) {
  char text[32];
  const auto result = std::to_chars(text, text + sizeof text, value);
  return std::string(text, result.ptr);
}

const char* TypeName(VectorColumn::Type type) {
  switch (type) {
    case VectorColumn::String: return "string";
    case VectorColumn::Integer: return "integer";
    case VectorColumn::Double: return "double";
    default: return "other";
  }
}

// Text for JSON, which must be UTF-8. dBASE tables and MIF files of older programs
// hold 8-bit text in a Windows code page; text that is not valid UTF-8 is read as
// Latin-1, whose characters map one to one onto the first 256 code points.
bool IsUtf8(const std::string& text) {
  for (std::size_t i = 0; i < text.size();) {
    const auto c = static_cast<unsigned char>(text[i]);
    const std::size_t length = c < 0x80 ? 1 : (c >> 5) == 0x6 ? 2 : (c >> 4) == 0xE ? 3 : (c >> 3) == 0x1E ? 4 : 0;
    if (length == 0 || i + length > text.size()) return false;
    for (std::size_t k = 1; k < length; ++k)
      if ((static_cast<unsigned char>(text[i + k]) >> 6) != 0x2) return false;
    i += length;
  }
  return true;
}

std::string JsonText(const std::string& text) {
  if (IsUtf8(text)) return text;
  std::string utf8;
  for (char ch : text) {
    const auto c = static_cast<unsigned char>(ch);
    if (c < 0x80) {
      utf8 += ch;
    } else {
      utf8 += static_cast<char>(0xC0 | (c >> 6));
      utf8 += static_cast<char>(0x80 | (c & 0x3F));
    }
  }
  return utf8;
}

// Progress on standard error while a person watches: objects read, and the share
// of the file when the reader knows it.
class Progress {
 public:
  Progress(const std::string& label, bool enabled) : label_(label), enabled_(enabled && isatty(STDERR_FILENO)) {}
  ~Progress() {
    if (drawn_) std::fputc('\n', stderr);
  }
  void Step(const VectorReader& reader) {
    if (!enabled_ || ++count_ % 4096 != 0) return;
    const auto now = std::chrono::steady_clock::now();
    if (drawn_ && now - last_ < std::chrono::milliseconds(100)) return;
    last_ = now;
    const double share = reader.Progress();
    if (share >= 0) std::fprintf(stderr, "\r%s: %lld objects, %3.0f%% ", label_.c_str(), count_, 100 * share);
    else std::fprintf(stderr, "\r%s: %lld objects ", label_.c_str(), count_);
    drawn_ = true;
  }

 private:
  std::string label_;
  bool enabled_;
  bool drawn_ = false;
  long long count_ = 0;
  std::chrono::steady_clock::time_point last_;
};

void PrintWarnings(const std::vector<std::string>& warnings) {
  for (const std::string& w : warnings) std::fprintf(stderr, "hyutil: warning: %s\n", w.c_str());
}

// ---- info ----

struct KindCount {
  long long objects = 0;
  long long parts = 0;
  long long vertices = 0;
};

struct LayerSummary {
  std::map<std::string, KindCount> kinds;  // by the format's own kind name
  std::map<std::string, long long> skipped;
  long long collections = 0;
  long long objects = 0;
  long long nulls = 0;
  bool haveBounds = false;
  std::array<double, 4> bounds{0, 0, 0, 0};  // of the vertices read
};

void AddToBounds(LayerSummary& s, const CHU_DPolyLine& chain) {
  for (int i = 0; i < chain.GetCount(); ++i) {
    const CHU_DPoint& p = *chain.GetAt(i);
    if (!s.haveBounds) {
      s.bounds = {p.x, p.y, p.x, p.y};
      s.haveBounds = true;
    }
    s.bounds = {std::min(s.bounds[0], p.x), std::min(s.bounds[1], p.y), std::max(s.bounds[2], p.x),
                std::max(s.bounds[3], p.y)};
  }
}

LayerSummary Summarise(VectorReader& reader, const std::string& label) {
  LayerSummary s;
  VectorFeature f;
  Progress progress(label, true);
  while (reader.Next(f)) {
    progress.Step(reader);
    if (f.container) {
      ++s.collections;
      continue;
    }
    ++s.objects;
    if (f.kind == VectorKind::Skipped) {
      ++s.skipped[f.kindName];
      continue;
    }
    if (f.kind == VectorKind::Null) {
      ++s.nulls;
      continue;
    }
    KindCount& k = s.kinds[f.kindName];
    ++k.objects;
    k.parts += static_cast<long long>(f.partCount);
    k.vertices += f.vertexCount;
    for (const auto& p : f.parts) AddToBounds(s, *p);
  }
  return s;
}

const char* PartWord(const std::string& kind) {
  static const std::map<std::string, const char*> words = {
      {"Region", "rings"}, {"Polygon", "rings"}, {"PolygonZ", "rings"}, {"PolygonM", "rings"},
      {"Pline", "sections"}, {"Arc", "parts"}, {"ArcZ", "parts"}, {"ArcM", "parts"}};
  const auto found = words.find(kind);
  return found == words.end() ? nullptr : found->second;
}

int RunInfo(const std::string& path, bool json) {
  std::unique_ptr<VectorReader> reader = OpenVectorReader(path);
  const auto header = reader->HeaderBounds();
  // The vertices are only needed for bounds that the header does not give.
  reader->SetVerticesWanted(!header);
  const LayerSummary s = Summarise(*reader, std::filesystem::path(path).filename().string());
  const std::array<double, 4> bounds = header ? *header : s.bounds;
  const bool haveBounds = header || s.haveBounds;
  if (json) {
    Json out;
    out["file"] = JsonText(path);
    out["format"] = reader->Format();
    out["objects"] = s.objects;
    Json kinds = Json::object();
    for (const auto& [name, k] : s.kinds) {
      Json entry = {{"objects", k.objects}, {"vertices", k.vertices}};
      if (const char* word = PartWord(name)) entry[word] = k.parts;
      kinds[name] = entry;
    }
    out["kinds"] = kinds;
    out["null"] = s.nulls;
    out["collections"] = s.collections;
    out["skipped"] = s.skipped.empty() ? Json::object() : Json(s.skipped);
    out["bounds"] = haveBounds ? Json{{"xmin", bounds[0]}, {"ymin", bounds[1]}, {"xmax", bounds[2]}, {"ymax", bounds[3]}}
                               : Json(nullptr);
    out["coordsys"] = JsonText(reader->CoordSys());
    Json columns = Json::array();
    for (const VectorColumn& c : reader->Columns()) {
      Json column = {{"name", JsonText(c.name)}, {"type", TypeName(c.type)}, {"file_type", JsonText(c.fileType)}};
      column["width"] = c.width > 0 ? Json(c.width) : Json(nullptr);
      column["decimals"] = c.decimals >= 0 ? Json(c.decimals) : Json(nullptr);
      columns.push_back(column);
    }
    out["columns"] = columns;
    std::cout << out.dump(2) << '\n';
  } else {
    std::printf("file:     %s\nformat:   %s\nobjects:  %lld\n", path.c_str(), reader->Format().c_str(), s.objects);
    for (const auto& [name, k] : s.kinds) {
      std::printf("  %-12s %lld", (name + ":").c_str(), k.objects);
      if (const char* word = PartWord(name)) std::printf(" (%lld %s)", k.parts, word);
      std::printf(", %lld vertices\n", k.vertices);
    }
    if (s.nulls > 0) std::printf("  %-12s %lld\n", "no geometry:", s.nulls);
    if (s.collections > 0)
      std::printf("  %-12s %lld (their members are counted by kind)\n", "Collection:", s.collections);
    for (const auto& [name, count] : s.skipped) std::printf("  %-12s %lld (skipped)\n", (name + ":").c_str(), count);
    if (haveBounds)
      std::printf("bounds:   %s %s to %s %s\n", Number(bounds[0]).c_str(), Number(bounds[1]).c_str(),
                  Number(bounds[2]).c_str(), Number(bounds[3]).c_str());
    std::printf("coordsys: %s\n", reader->CoordSys().empty() ? "(none)" : reader->CoordSys().c_str());
    std::printf("columns:  %zu\n", reader->Columns().size());
    for (const VectorColumn& c : reader->Columns()) {
      std::string size = c.width > 0 ? "width " + std::to_string(c.width) : "";
      if (c.decimals >= 0) size += (size.empty() ? "" : ", ") + std::to_string(c.decimals) + " decimals";
      std::printf("  %-12s %-8s %-12s %s\n", c.name.c_str(), TypeName(c.type), c.fileType.c_str(), size.c_str());
    }
  }
  PrintWarnings(reader->warnings);
  return kExitOk;
}

// ---- dump ----

Json Position(const CHU_DPoint& p, bool z) {
  Json position = {p.x, p.y};
  if (z) position.push_back(p.z);
  return position;
}

Json Positions(const CHU_DPolyLine& chain, bool z, bool closeRing) {
  Json positions = Json::array();
  for (int i = 0; i < chain.GetCount(); ++i) positions.push_back(Position(*chain.GetAt(i), z));
  if (closeRing && chain.GetCount() > 0) {
    const CHU_DPoint& first = *chain.GetAt(0);
    const CHU_DPoint& last = *chain.GetAt(chain.GetCount() - 1);
    if (first.x != last.x || first.y != last.y) positions.push_back(Position(first, z));
  }
  return positions;
}

// Rings as polygons with holes: a ring inside an odd number of the other rings is
// a hole of the smallest ring around it; the others are outer rings. This reads a
// MIF region (rings in any order and winding) and a shapefile polygon alike.
Json PolygonGeometry(const VectorFeature& f) {
  const std::size_t n = f.parts.size();
  std::vector<double> area(n);
  for (std::size_t i = 0; i < n; ++i) area[i] = static_cast<const CHU_DPolygon&>(*f.parts[i]).GetArea();
  std::vector<int> depth(n, 0), parent(n, -1);
  for (std::size_t i = 0; i < n; ++i) {
    if (f.parts[i]->GetCount() == 0) continue;
    const CHU_DPoint& probe = *f.parts[i]->GetAt(0);
    for (std::size_t j = 0; j < n; ++j) {
      if (i == j || area[j] <= area[i]) continue;
      if (!static_cast<const CHU_DPolygon&>(*f.parts[j]).PtInPoly(probe)) continue;
      ++depth[i];
      if (parent[i] < 0 || area[j] < area[static_cast<std::size_t>(parent[i])]) parent[i] = static_cast<int>(j);
    }
  }
  std::vector<int> polygonOf(n, -1);
  Json polygons = Json::array();
  for (std::size_t i = 0; i < n; ++i) {
    if (depth[i] % 2 != 0) continue;
    polygonOf[i] = static_cast<int>(polygons.size());
    polygons.push_back(Json::array({Positions(*f.parts[i], f.hasZ, true)}));
  }
  for (std::size_t i = 0; i < n; ++i) {
    if (depth[i] % 2 == 0) continue;
    const int outer = polygonOf[static_cast<std::size_t>(parent[i])];
    if (outer >= 0) polygons[static_cast<std::size_t>(outer)].push_back(Positions(*f.parts[i], f.hasZ, true));
  }
  if (polygons.size() == 1) return {{"type", "Polygon"}, {"coordinates", polygons[0]}};
  return {{"type", "MultiPolygon"}, {"coordinates", polygons}};
}

Json Geometry(const VectorFeature& f) {
  switch (f.kind) {
    case VectorKind::Point: return {{"type", "Point"}, {"coordinates", Position(*f.parts[0]->GetAt(0), f.hasZ)}};
    case VectorKind::MultiPoint: return {{"type", "MultiPoint"}, {"coordinates", Positions(*f.parts[0], f.hasZ, false)}};
    case VectorKind::Line:
    case VectorKind::Polyline: {
      if (f.parts.size() == 1) return {{"type", "LineString"}, {"coordinates", Positions(*f.parts[0], f.hasZ, false)}};
      Json lines = Json::array();
      for (const auto& p : f.parts) lines.push_back(Positions(*p, f.hasZ, false));
      return {{"type", "MultiLineString"}, {"coordinates", lines}};
    }
    case VectorKind::Polygon: return PolygonGeometry(f);
    default: return nullptr;
  }
}

Json Properties(const std::vector<VectorColumn>& columns, const std::vector<std::string>& values) {
  Json properties = Json::object();
  for (std::size_t c = 0; c < columns.size(); ++c) {
    const std::string& v = c < values.size() ? values[c] : std::string();
    Json value = JsonText(v);
    if (columns[c].type == VectorColumn::Integer || columns[c].type == VectorColumn::Double) {
      double number = 0.0;
      const char* begin = v.data() + (!v.empty() && v[0] == '+');
      const auto [ptr, ec] = std::from_chars(begin, v.data() + v.size(), number);
      value = v.empty() || ec != std::errc() || ptr != v.data() + v.size() || !std::isfinite(number) ? Json(nullptr)
              : columns[c].type == VectorColumn::Integer && number == std::trunc(number) && std::fabs(number) < 9e15
                  ? Json(static_cast<long long>(number))
                  : Json(number);
    }
    properties[JsonText(columns[c].name)] = value;
  }
  return properties;
}

void DumpText(const VectorFeature& f, long long index, const std::vector<VectorColumn>& columns) {
  std::string text = "#" + std::to_string(index) + " " + f.kindName;
  if (f.kind == VectorKind::Skipped) text += " (skipped)";
  if (f.parts.size() > 1) text += " (" + std::to_string(f.parts.size()) + " parts)";
  text += "\n";
  for (std::size_t c = 0; c < columns.size(); ++c)
    text += "  " + columns[c].name + " = " + (c < f.values.size() ? f.values[c] : std::string()) + "\n";
  for (std::size_t p = 0; p < f.parts.size(); ++p) {
    const CHU_DPolyLine& chain = *f.parts[p];
    if (f.kind != VectorKind::Point && f.kind != VectorKind::MultiPoint)
      text += "  part " + std::to_string(p + 1) + ": " + std::to_string(chain.GetCount()) + " vertices\n";
    for (int i = 0; i < chain.GetCount(); ++i) {
      const CHU_DPoint& v = *chain.GetAt(i);
      text += "    " + Number(v.x) + " " + Number(v.y) + (f.hasZ ? " " + Number(v.z) : "") + "\n";
    }
  }
  std::fwrite(text.data(), 1, text.size(), stdout);
}

int RunDump(const std::string& path, bool json) {
  std::unique_ptr<VectorReader> reader = OpenVectorReader(path);
  const std::vector<VectorColumn>& columns = reader->Columns();
  VectorFeature f;
  long long index = 0;
  if (json) std::fputs("{\"type\":\"FeatureCollection\",\"features\":[", stdout);
  for (; reader->Next(f); ++index) {
    if (f.container) {
      --index;
      continue;
    }
    if (!json) {
      DumpText(f, index, columns);
      continue;
    }
    const Json feature = {{"type", "Feature"}, {"properties", Properties(columns, f.values)}, {"geometry", Geometry(f)}};
    const std::string text = (index > 0 ? ",\n" : "\n") + feature.dump();
    std::fwrite(text.data(), 1, text.size(), stdout);
  }
  if (json) std::fputs("\n]}\n", stdout);
  PrintWarnings(reader->warnings);
  return kExitOk;
}

// ---- convert ----

bool SameFile(const std::string& a, const std::string& b) {
  std::error_code ec;
  return std::filesystem::equivalent(a, b, ec);
}

int RunConvert(const std::string& input, const std::string& output, bool quiet) {
  if (SameFile(input, output)) {
    std::fprintf(stderr, "hyutil: IN and OUT are the same file '%s'\n", input.c_str());
    return kExitUsage;
  }
  if (!IsShapefilePath(output) && !IsMifPath(output)) {
    std::fprintf(stderr, "hyutil: OUT '%s' must end in .shp, .mif or .mid\n", output.c_str());
    return kExitUsage;
  }
  const auto start = std::chrono::steady_clock::now();
  std::unique_ptr<VectorReader> reader = OpenVectorReader(input);
  // A MIF header states the bounds before the objects; when the input's header
  // gives none, a first pass finds them.
  std::array<double, 4> bounds{0, 0, 0, 0};
  if (const auto header = reader->HeaderBounds()) {
    bounds = *header;
  } else if (IsMifPath(output)) {
    std::unique_ptr<VectorReader> first = OpenVectorReader(input);
    const LayerSummary s = Summarise(*first, "bounds");
    bounds = s.bounds;
  }
  std::unique_ptr<VectorWriter> writer = CreateVectorWriter(output, *reader, bounds);
  VectorFeature f;
  long long objects = 0;
  {
    Progress progress(std::filesystem::path(input).filename().string(), !quiet);
    while (reader->Next(f)) {
      progress.Step(*reader);
      objects += f.container ? 0 : 1;
      writer->Write(f);
    }
  }
  const std::vector<std::string> written = writer->Finish();
  PrintWarnings(reader->warnings);
  PrintWarnings(writer->warnings);
  if (!quiet) {
    const double seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
    std::printf("read %lld object%s from %s in %.2f s; wrote:\n", objects, objects == 1 ? "" : "s", input.c_str(),
                seconds);
    for (const std::string& w : written) std::printf("  %s\n", w.c_str());
    if (written.empty()) std::printf("  nothing\n");
  }
  return kExitOk;
}

}  // namespace

void AddVectorCommands(CLI::App& app, int& exitCode) {
  CLI::App* vector = app.add_subcommand("vector", "Inspect, dump and convert shapefiles and MapInfo MIF/MID files");
  vector->require_subcommand(1);

  auto info = std::make_shared<std::pair<std::string, bool>>();
  CLI::App* i = vector->add_subcommand("info", "Format, objects by kind, bounds, coordinate system and columns");
  i->add_option("FILE", info->first, "Shapefile (.shp) or MIF/MID file (.mif or .mid)")->required();
  i->add_flag("--json", info->second, "JSON instead of text");
  i->callback([info, &exitCode] {
    exitCode = RunReportingInputErrors([&] { return RunInfo(info->first, info->second); });
  });

  auto dump = std::make_shared<std::pair<std::string, bool>>();
  CLI::App* d = vector->add_subcommand("dump", "Every object with its vertices and attribute row");
  d->add_option("FILE", dump->first, "Shapefile (.shp) or MIF/MID file (.mif or .mid)")->required();
  d->add_flag("--json", dump->second, "GeoJSON FeatureCollection instead of text");
  d->callback([dump, &exitCode] {
    exitCode = RunReportingInputErrors([&] { return RunDump(dump->first, dump->second); });
  });

  struct ConvertOptions {
    std::string input, output;
    bool quiet = false;
  };
  auto convert = std::make_shared<ConvertOptions>();
  CLI::App* c = vector->add_subcommand("convert", "Shapefile to MIF/MID or back, attributes with their types");
  c->add_option("IN", convert->input, "Shapefile (.shp) or MIF/MID file (.mif or .mid)")->required();
  c->add_option("OUT", convert->output,
                "Output .shp (one shapefile per kind of object when there are several) or .mif/.mid")
      ->required();
  c->add_flag("--quiet", convert->quiet, "No progress and no summary");
  c->callback([convert, &exitCode] {
    exitCode = RunReportingInputErrors([&] { return RunConvert(convert->input, convert->output, convert->quiet); });
  });
}

}  // namespace hyutil
