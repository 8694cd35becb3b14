// "hyutil boundary": topology clean-up of breaklines, boundaries and points before
// meshing.
//
//   hyutil boundary clean IN... --tolerance T [--out FILE] [--json]
//
// Every object of the inputs (shapefiles or MIF/MID pairs) goes into one boundary
// mesh, corners at equal positions sharing a vertex. Each cluster of vertices
// within T of one another (square box, z ignored) is then welded into its earliest
// vertex; lines and rings that collapse are dropped, and vertices no element uses
// any more go with them. The report gives the counts; --out writes the cleaned
// objects (a shapefile per kind of object when there are several, or one MIF/MID).
// Objects keep their attribute rows when all inputs have the same columns;
// otherwise the output has the columns SOURCE (input file) and FID (object number).

#include <unistd.h>

#include <nlohmann/json.hpp>

#include <chrono>
#include <cmath>
#include <cstdio>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "commands.h"
#include "hy_util/mesh/boundary_mesh.h"
#include "vector_layers.h"

namespace hyutil {
namespace {

using Json = nlohmann::ordered_json;

// The mesh of the clean-up. A point takes the vertex already at its position, as
// line and ring corners do under weld mode 0, so a point on a corner is shared.
class CleanMesh : public CHU_DBoundaryMesh {
 public:
  int AddSharedPoint(const CHU_DPoint& point) {
    const int vertex = FindVertex(point, -1);
    return vertex >= 0 ? AddPoint(vertex, 0, -1) : AddPoint(point, 0);
  }
};

// One input object and the mesh elements made from its parts.
struct SourceObject {
  VectorKind kind;
  std::string kindName;
  bool hasZ;
  std::vector<std::string> values;
  std::vector<int> elements;
};

struct CleanReport {
  long long objects = 0, skipped = 0, partsRejected = 0;
  int verticesBefore = 0, verticesAfter = 0, elementsBefore = 0, elementsAfter = 0;
  long long welds = 0, verticesMerged = 0, orphansRemoved = 0;
};

// A progress line on standard error while a person watches.
class Progress {
 public:
  explicit Progress(bool enabled) : enabled_(enabled && isatty(STDERR_FILENO)) {}
  ~Progress() { Done(); }
  // True every 1024th step when a line may be drawn (at most ten a second).
  bool Due(long long step) {
    if (!enabled_ || step % 1024 != 0) return false;
    const auto now = std::chrono::steady_clock::now();
    if (drawn_ && now - last_ < std::chrono::milliseconds(100)) return false;
    last_ = now;
    return true;
  }
  void Show(const std::string& text) {
    std::fprintf(stderr, "\r%-60s", text.c_str());
    drawn_ = true;
  }
  void Done() {
    if (drawn_) std::fputc('\n', stderr);
    drawn_ = false;
  }

 private:
  bool enabled_;
  bool drawn_ = false;
  std::chrono::steady_clock::time_point last_;
};

// The column source of the output when the inputs' columns differ.
class SyntheticColumns : public VectorReader {
 public:
  SyntheticColumns() {
    columns_.push_back({"SOURCE", VectorColumn::String, 254, -1, "Char(254)"});
    columns_.push_back({"FID", VectorColumn::Integer, 9, -1, "Integer"});
  }
  std::string Format() const override { return "cleaned boundary"; }
  const std::vector<VectorColumn>& Columns() const override { return columns_; }
  std::optional<std::array<double, 4>> HeaderBounds() const override { return std::nullopt; }
  std::string CoordSys() const override { return ""; }
  bool Next(VectorFeature&) override { return false; }
  double Progress() const override { return 1.0; }

 private:
  std::vector<VectorColumn> columns_;
};

bool SameColumns(const std::vector<VectorColumn>& a, const std::vector<VectorColumn>& b) {
  if (a.size() != b.size()) return false;
  for (std::size_t i = 0; i < a.size(); ++i) {
    if (a[i].name != b[i].name || a[i].type != b[i].type) return false;
  }
  return true;
}

// Adds the parts of one object; parts the mesh rejects (too few distinct
// corners) are counted. Readers fill z of a 2D layer differently by kind, so z is
// set unset there: corners of a point layer and a line layer at the same (x, y)
// then share a vertex.
void AddObject(CleanMesh& mesh, VectorFeature& f, SourceObject& object, CleanReport& report) {
  for (const auto& part : f.parts) {
    if (!f.hasZ) {
      for (int i = 0; i < part->GetCount(); ++i) part->GetAt(i)->z = CHU_DPoint::C_NULL_VALL;
    }
    int id = -1;
    switch (f.kind) {
      case VectorKind::Point:
      case VectorKind::MultiPoint:
        for (int i = 0; i < part->GetCount(); ++i) {
          id = mesh.AddSharedPoint(*part->GetAt(i));
          if (id >= 0) object.elements.push_back(id);
        }
        continue;
      case VectorKind::Polygon: {
        CHU_DPolygon ring;
        for (int i = 0; i < part->GetCount(); ++i) ring.AddPt(*part->GetAt(i));
        id = mesh.AddPolygon(&ring, 0, CHU_DBoundaryMesh::WELD_EXISTING);
        break;
      }
      default: id = mesh.AddPolyline(part.get(), 0, CHU_DBoundaryMesh::WELD_EXISTING); break;
    }
    if (id >= 0) {
      object.elements.push_back(id);
    } else {
      ++report.partsRejected;
    }
  }
}

// Welds every vertex's cluster, visiting vertices in map order, until a pass
// changes nothing.
void WeldClusters(CHU_DBoundaryMesh& mesh, double tolerance, CleanReport& report, bool showProgress) {
  Progress progress(showProgress);
  for (int pass = 0; pass < 16; ++pass) {
    std::vector<int> ids;
    for (auto it = mesh.GetVertexIDIterator(); it.HasNext();) ids.push_back(it.Next());
    long long weldsThisPass = 0, step = 0;
    for (int id : ids) {
      if (progress.Due(++step)) {
        progress.Show("welding: pass " + std::to_string(pass + 1) + ", vertex " + std::to_string(step) + " of " +
                      std::to_string(ids.size()));
      }
      const CHU_DPoint* at = mesh.GetVertexPosition(id);
      if (at == nullptr) continue;
      const CHU_DPoint position = *at;
      const std::size_t near = mesh.FindAllVerticesNearPosition(position, tolerance).size();
      if (near < 2) continue;
      const int before = mesh.GetVertexCount();
      if (!mesh.WeldVertices(position, tolerance)) continue;
      ++weldsThisPass;
      report.verticesMerged += static_cast<long long>(near) - 1;
      report.orphansRemoved += before - mesh.GetVertexCount() - (static_cast<long long>(near) - 1);
    }
    report.welds += weldsThisPass;
    if (weldsThisPass == 0) break;
  }
}

// The surviving parts of an object, as one feature for the writer.
bool RebuildFeature(const CHU_DBoundaryMesh& mesh, const SourceObject& object, VectorFeature& f) {
  f = VectorFeature{};
  f.kind = object.kind;
  f.kindName = object.kindName;
  f.hasZ = object.hasZ;
  f.values = object.values;
  auto points = std::make_unique<CHU_DPolyLine>();
  for (int id : object.elements) {
    if (!mesh.IsValidElementID(id)) continue;
    CHU_DPoint p;
    auto ring = std::make_unique<CHU_DPolygon>();
    auto line = std::make_unique<CHU_DPolyLine>();
    if (mesh.GetPoint(id, p)) {
      points->AddPt(p);
    } else if (mesh.GetPolygon(id, ring.get())) {
      f.parts.push_back(std::move(ring));
    } else if (mesh.GetPolyline(id, line.get())) {
      f.parts.push_back(std::move(line));
    }
  }
  if (points->GetCount() > 0) {
    if (points->GetCount() > 1) f.kind = VectorKind::MultiPoint;
    f.parts.push_back(std::move(points));
  }
  return !f.parts.empty();
}

void PrintReport(const CleanReport& r, double tolerance, const std::vector<std::string>& written, bool json) {
  if (json) {
    Json out;
    out["tolerance"] = tolerance;
    out["objects_read"] = r.objects;
    out["objects_skipped"] = r.skipped;
    out["parts_rejected"] = r.partsRejected;
    out["vertices_before"] = r.verticesBefore;
    out["vertices_after"] = r.verticesAfter;
    out["welds"] = r.welds;
    out["vertices_merged"] = r.verticesMerged;
    out["elements_before"] = r.elementsBefore;
    out["elements_dropped"] = r.elementsBefore - r.elementsAfter;
    out["orphaned_vertices_removed"] = r.orphansRemoved;
    out["written"] = written;
    std::printf("%s\n", out.dump(2).c_str());
    return;
  }
  std::printf("objects read:        %lld (%lld without usable geometry, %lld parts too small for the mesh)\n",
              r.objects, r.skipped, r.partsRejected);
  std::printf("vertices before:     %d (corners at equal positions already shared)\n", r.verticesBefore);
  std::printf("welds:               %lld, merging %lld vertices within %g\n", r.welds, r.verticesMerged, tolerance);
  std::printf("elements dropped:    %d of %d (collapsed by a weld)\n", r.elementsBefore - r.elementsAfter,
              r.elementsBefore);
  std::printf("orphaned vertices:   %lld removed\n", r.orphansRemoved);
  std::printf("vertices after:      %d\n", r.verticesAfter);
  for (const std::string& w : written) std::printf("wrote %s\n", w.c_str());
}

int RunClean(const std::vector<std::string>& inputs, double tolerance, const std::string& output, bool json) {
  if (!output.empty() && !IsShapefilePath(output) && !IsMifPath(output)) {
    std::fprintf(stderr, "hyutil: --out '%s' must end in .shp, .mif or .mid\n", output.c_str());
    return kExitUsage;
  }
  CleanMesh mesh;
  CleanReport report;
  std::vector<SourceObject> objects;
  std::vector<std::unique_ptr<VectorReader>> readers;
  bool sameColumns = true;
  {
    Progress progress(!json);
    for (const std::string& input : inputs) {
      readers.push_back(OpenVectorReader(input));
      VectorReader& reader = *readers.back();
      sameColumns = sameColumns && SameColumns(reader.Columns(), readers.front()->Columns());
      const std::string name = std::filesystem::path(input).filename().string();
      VectorFeature f;
      long long fid = 0;
      while (reader.Next(f)) {
        if (f.container) continue;
        ++report.objects;
        if (progress.Due(report.objects)) {
          const double share = reader.Progress();
          progress.Show("reading " + name + ": " + std::to_string(report.objects) + " objects" +
                        (share >= 0 ? ", " + std::to_string(static_cast<int>(100 * share)) + "%" : ""));
        }
        SourceObject object{f.kind, f.kindName, f.hasZ, f.values, {}};
        object.values.push_back(input);
        object.values.push_back(std::to_string(fid++));
        if (f.kind == VectorKind::Null || f.kind == VectorKind::Skipped) {
          ++report.skipped;
          continue;
        }
        AddObject(mesh, f, object, report);
        objects.push_back(std::move(object));
      }
      for (const std::string& w : reader.warnings) std::fprintf(stderr, "hyutil: warning: %s\n", w.c_str());
    }
  }
  report.verticesBefore = mesh.GetVertexCount();
  report.elementsBefore = mesh.GetElementCount();
  WeldClusters(mesh, tolerance, report, !json);
  report.verticesAfter = mesh.GetVertexCount();
  report.elementsAfter = mesh.GetElementCount();

  std::vector<std::string> written;
  if (!output.empty()) {
    SyntheticColumns synthetic;
    const VectorReader& columns = sameColumns ? *readers.front() : synthetic;
    const std::size_t own = readers.front()->Columns().size();
    CHU_DRect extent;
    std::array<double, 4> bounds{0, 0, 0, 0};
    if (mesh.GetExtents(extent)) bounds = {extent.Left(), extent.Bottom(), extent.Right(), extent.Top()};
    std::unique_ptr<VectorWriter> writer = CreateVectorWriter(output, columns, bounds);
    VectorFeature f;
    for (const SourceObject& object : objects) {
      if (!RebuildFeature(mesh, object, f)) continue;
      // The row: the input's own values, or SOURCE and FID (kept at the end).
      if (sameColumns) {
        f.values.resize(own);
      } else {
        f.values.erase(f.values.begin(), f.values.end() - 2);
      }
      writer->Write(f);
    }
    written = writer->Finish();
    for (const std::string& w : writer->warnings) std::fprintf(stderr, "hyutil: warning: %s\n", w.c_str());
  }
  PrintReport(report, tolerance, written, json);
  return kExitOk;
}

}  // namespace

void AddBoundaryCommands(CLI::App& app, int& exitCode) {
  CLI::App* boundary = app.add_subcommand("boundary", "Clean up breaklines, boundaries and points before meshing");
  boundary->require_subcommand(1);

  struct CleanArgs {
    std::vector<std::string> inputs;
    double tolerance = 0.0;
    std::string output;
    bool json = false;
  };
  auto clean = std::make_shared<CleanArgs>();
  CLI::App* c = boundary->add_subcommand(
      "clean", "Weld vertices within a tolerance, drop what collapses, report and optionally write the result");
  c->add_option("IN", clean->inputs, "Shapefiles (.shp) or MIF/MID files (.mif or .mid)")->required();
  c->add_option("--tolerance", clean->tolerance, "Weld distance in map units (square box, z ignored)")
      ->required()
      ->check(CLI::NonNegativeNumber);
  c->add_option("--out", clean->output,
                "Output .shp (one shapefile per kind of object when there are several) or .mif/.mid");
  c->add_flag("--json", clean->json, "The report as JSON");
  c->callback([clean, &exitCode] {
    exitCode = RunReportingInputErrors(
        [&] { return RunClean(clean->inputs, clean->tolerance, clean->output, clean->json); });
  });
}

}  // namespace hyutil
