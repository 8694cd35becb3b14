// "hyutil mesh": a 2DM mesh file's summary and its node and cell tables.
//
//   hyutil mesh info FILE.2dm [--json]
//   hyutil mesh nodes FILE.2dm [--csv|--json]
//   hyutil mesh cells FILE.2dm [--csv|--json]
//
// The tables are written as they stream out, so a mesh of millions of cells does
// not need a second copy in memory. Numbers are written in their shortest form
// that reads back to the same double.

#include <nlohmann/json.hpp>

#include <charconv>
#include <cmath>
#include <cstdio>
#include <filesystem>
#include <memory>
#include <string>

#include "commands.h"
#include "hy_util/formats/file_2dm.h"

namespace hyutil {
namespace {

std::string Quoted(const std::string& path) { return "'" + path + "'"; }

// The shortest text that reads back as the same double.
std::string Shortest(double value) {
  char text[32];
  const auto [end, ec] = std::to_chars(text, text + sizeof text, value);
  return ec == std::errc() ? std::string(text, end) : std::string("nan");
}

std::string JsonNumber(double value) { return std::isfinite(value) ? Shortest(value) : "null"; }

// Reads the mesh or explains why not; refused cards are warned about.
std::unique_ptr<CHU_File2DM> ReadMesh(const std::string& path) {
  if (!std::filesystem::exists(path)) throw InputError{Quoted(path) + " does not exist"};
  auto mesh = std::make_unique<CHU_File2DM>();
  if (!mesh->Open(path.c_str())) throw InputError{"cannot open " + Quoted(path) + " for reading"};
  if (!mesh->Read())
    throw InputError{Quoted(path) + " is not a 2DM mesh: no MESH2D or ND card in its " +
                     std::to_string(mesh->GetLineCount()) + " lines"};
  mesh->Close();
  if (mesh->GetRefusedCount() > 0)
    std::fprintf(stderr, "hyutil: warning: %s line %lld: %s (%lld card%s refused in all)\n", Quoted(path).c_str(),
                 static_cast<long long>(mesh->GetFirstRefusedLine()), mesh->GetFirstRefusedReason().c_str(),
                 static_cast<long long>(mesh->GetRefusedCount()), mesh->GetRefusedCount() == 1 ? "" : "s");
  return mesh;
}

std::int64_t UsedCells(const CHU_File2DM& mesh) {
  std::int64_t used = 0;
  for (const auto& cell : mesh.GetCellRecords()) used += cell.id >= 0;
  return used;
}

void PrintInfoJson(const std::string& path, const CHU_File2DM& m) {
  double x0, y0, x1, y1;
  m.GetExtents(x0, y0, x1, y1);
  nlohmann::ordered_json skipped = nlohmann::ordered_json::object();
  for (const auto& [card, count] : m.GetSkippedCards()) skipped[card] = count;
  const nlohmann::ordered_json out = {
      {"file", path},
      {"lines", m.GetLineCount()},
      {"nodes", m.GetVertexCount()},
      {"cells", {{"table", m.GetCellCount()}, {"used", UsedCells(m)}}},
      {"triangles", m.GetNbrTCells()},
      {"grid",
       {{"nx", m.GetNbrCellsX()},
        {"ny", m.GetNbrCellsY()},
        {"cell_width", m.GetCellWidth()},
        {"cell_height", m.GetCellHeight()},
        {"vertical_offset", m.GetVerticalOffset()}}},
      {"extents", {{"xmin", x0}, {"ymin", y0}, {"xmax", x1}, {"ymax", y1}}},
      {"elevation", {{"min", m.GetMinElevation()}, {"max", m.GetMaxElevation()}}},
      {"skipped_cards", skipped},
      {"refused_cards", m.GetRefusedCount()}};
  std::printf("%s\n", out.dump(2).c_str());
}

void PrintInfoText(const std::string& path, const CHU_File2DM& m) {
  double x0, y0, x1, y1;
  m.GetExtents(x0, y0, x1, y1);
  std::printf("file:        %s (%d lines)\n", path.c_str(), m.GetLineCount());
  std::printf("grid:        %u x %u cells of %.6g x %.6g, vertical offset %.6g\n", m.GetNbrCellsX(), m.GetNbrCellsY(),
              static_cast<double>(m.GetCellWidth()), static_cast<double>(m.GetCellHeight()),
              static_cast<double>(m.GetVerticalOffset()));
  std::printf("nodes:       %d\n", m.GetVertexCount());
  std::printf("cells:       %lld in a table of %d\n", static_cast<long long>(UsedCells(m)), m.GetCellCount());
  std::printf("triangles:   %d\n", m.GetNbrTCells());
  std::printf("extents:     %.10g %.10g to %.10g %.10g\n", x0, y0, x1, y1);
  std::printf("elevation:   %.10g to %.10g (0 ignored for the lowest, 99999 for the highest)\n", m.GetMinElevation(),
              m.GetMaxElevation());
  std::string skipped;
  for (const auto& [card, count] : m.GetSkippedCards())
    skipped += (skipped.empty() ? "" : ", ") + card + " " + std::to_string(count);
  std::printf("skipped:     %s\n", skipped.empty() ? "nothing" : skipped.c_str());
  if (m.GetRefusedCount() > 0)
    std::printf("refused:     %lld card(s), the first on line %lld\n", static_cast<long long>(m.GetRefusedCount()),
                static_cast<long long>(m.GetFirstRefusedLine()));
}

enum class TableFormat { kText, kCsv, kJson };

void PrintNodes(const CHU_File2DM& m, TableFormat format) {
  const auto& x = m.GetX();
  const auto& y = m.GetY();
  const auto& z = m.GetZ();
  if (format == TableFormat::kCsv) std::printf("index,id,x,y,z\n");
  if (format == TableFormat::kText) std::printf("%10s %10s %18s %18s %14s\n", "index", "id", "x", "y", "z");
  if (format == TableFormat::kJson) std::printf("[");
  for (std::size_t i = 0; i < x.size(); ++i) {
    switch (format) {
      case TableFormat::kCsv:
        std::printf("%zu,%zu,%s,%s,%s\n", i, i + 1, Shortest(x[i]).c_str(), Shortest(y[i]).c_str(), Shortest(z[i]).c_str());
        break;
      case TableFormat::kText:
        std::printf("%10zu %10zu %18s %18s %14s\n", i, i + 1, Shortest(x[i]).c_str(), Shortest(y[i]).c_str(),
                    Shortest(z[i]).c_str());
        break;
      case TableFormat::kJson:
        std::printf("%s\n  {\"index\": %zu, \"id\": %zu, \"x\": %s, \"y\": %s, \"z\": %s}", i ? "," : "", i, i + 1,
                    JsonNumber(x[i]).c_str(), JsonNumber(y[i]).c_str(), JsonNumber(z[i]).c_str());
        break;
    }
  }
  if (format == TableFormat::kJson) std::printf("\n]\n");
}

// Only records that hold a cell: a table numbered from 1 has an empty record 0.
void PrintCells(const CHU_File2DM& m, TableFormat format) {
  const auto& cells = m.GetCellRecords();
  if (format == TableFormat::kCsv) std::printf("index,id,node1,node2,node3,node4\n");
  if (format == TableFormat::kText)
    std::printf("%10s %10s %10s %10s %10s %10s\n", "index", "id", "node1", "node2", "node3", "node4");
  if (format == TableFormat::kJson) std::printf("[");
  bool first = true;
  for (std::size_t i = 0; i < cells.size(); ++i) {
    const auto& c = cells[i];
    if (c.id < 0) continue;
    const int* n = c.nodes;
    switch (format) {
      case TableFormat::kCsv: std::printf("%zu,%d,%d,%d,%d,%d\n", i, c.id, n[0], n[1], n[2], n[3]); break;
      case TableFormat::kText:
        std::printf("%10zu %10d %10d %10d %10d %10d\n", i, c.id, n[0], n[1], n[2], n[3]);
        break;
      case TableFormat::kJson:
        std::printf("%s\n  {\"index\": %zu, \"id\": %d, \"nodes\": [%d, %d, %d, %d]}", first ? "" : ",", i, c.id, n[0],
                    n[1], n[2], n[3]);
        break;
    }
    first = false;
  }
  if (format == TableFormat::kJson) std::printf("\n]\n");
}

struct TableOptions {
  std::string path;
  bool csv = false;
  bool json = false;
  TableFormat Format() const { return json ? TableFormat::kJson : csv ? TableFormat::kCsv : TableFormat::kText; }
};

void AddTableCommand(CLI::App& mesh, const char* name, const char* description, int& exitCode,
                     void (*print)(const CHU_File2DM&, TableFormat)) {
  auto options = std::make_shared<TableOptions>();
  CLI::App* c = mesh.add_subcommand(name, description);
  c->add_option("FILE", options->path, "2DM mesh file")->required();
  auto* csv = c->add_flag("--csv", options->csv, "Comma-separated values with a header line");
  c->add_flag("--json", options->json, "A JSON array of objects")->excludes(csv);
  c->callback([options, &exitCode, print] {
    exitCode = RunReportingInputErrors([&] {
      const auto m = ReadMesh(options->path);
      print(*m, options->Format());
      return kExitOk;
    });
  });
}

}  // namespace

void AddMeshCommands(CLI::App& app, int& exitCode) {
  CLI::App* mesh = app.add_subcommand("mesh", "Inspect 2DM mesh files");
  mesh->require_subcommand(1);

  auto info = std::make_shared<std::pair<std::string, bool>>();
  CLI::App* i = mesh->add_subcommand("info", "Counts, grid, extents, elevation range and skipped cards of a 2DM file");
  i->add_option("FILE", info->first, "2DM mesh file")->required();
  i->add_flag("--json", info->second, "JSON instead of text");
  i->callback([info, &exitCode] {
    exitCode = RunReportingInputErrors([&] {
      const auto m = ReadMesh(info->first);
      info->second ? PrintInfoJson(info->first, *m) : PrintInfoText(info->first, *m);
      return kExitOk;
    });
  });

  AddTableCommand(*mesh, "nodes", "The node table: zero-based index, id, x, y, z", exitCode, PrintNodes);
  AddTableCommand(*mesh, "cells", "The cell table: cell index (= id), id, four zero-based node indices", exitCode,
                  PrintCells);
}

}  // namespace hyutil
