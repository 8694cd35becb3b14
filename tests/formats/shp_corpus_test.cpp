// Every shapefile in the shared corpus of files written by other software reads
// without a crash, with the feature and vertex counts that GDAL's ogrinfo reports.
#include <gtest/gtest.h>

#include <cctype>
#include <cstdio>
#include <filesystem>
#include <memory>
#include <regex>

#include "hy_util/formats/shp_file.h"
#include "support/recording_application.h"
#include "support/temp_dir.h"

namespace {

namespace fs = std::filesystem;

struct Counts {
  bool opened = false;
  int features = 0;
  long long vertices = 0;
};

// Coordinate tuples in a WKT text: each innermost bracket holds commas + 1 of them.
long long WktVertices(const std::string& wkt) {
  long long total = 0;
  int commas = 0;
  bool numbers = false;
  for (char ch : wkt) {
    if (ch == '(') {
      commas = 0;
      numbers = false;
    } else if (ch == ',') {
      ++commas;
    } else if (std::isdigit(static_cast<unsigned char>(ch))) {
      numbers = true;
    } else if (ch == ')' && numbers) {
      total += commas + 1;
      numbers = false;
    }
  }
  return total;
}

bool HaveOgrinfo() { return std::system("command -v ogrinfo >/dev/null 2>&1") == 0; }

Counts OgrCounts(const std::string& path) {
  const std::string command = "ogrinfo -ro -al -q '" + path + "' 2>/dev/null";
  std::unique_ptr<FILE, int (*)(FILE*)> pipe(popen(command.c_str(), "r"), &pclose);
  Counts counts;
  if (!pipe) return counts;
  static const std::regex geometry(
      R"(^  (POINT|LINESTRING|POLYGON|MULTIPOINT|MULTILINESTRING|MULTIPOLYGON|GEOMETRYCOLLECTION)( Z| M| ZM)? [(E])");
  std::string line;
  char buffer[65536];
  while (std::fgets(buffer, sizeof buffer, pipe.get())) {
    line += buffer;
    if (line.empty() || line.back() != '\n') continue;
    if (line.rfind("Layer name:", 0) == 0) counts.opened = true;
    if (line.rfind("OGRFeature(", 0) == 0) ++counts.features;
    if (std::regex_search(line, geometry)) counts.vertices += WktVertices(line);
    line.clear();
  }
  return counts;
}

std::vector<std::string> CorpusShapefiles() {
  std::vector<std::string> paths;
  const fs::path dir = fs::path(HY_CORPUS_DIR) / "vector";
  if (!fs::is_directory(dir)) return paths;
  for (const auto& entry : fs::directory_iterator(dir))
    if (entry.path().extension() == ".shp") paths.push_back(entry.path().string());
  std::sort(paths.begin(), paths.end());
  return paths;
}

TEST(ShpCorpusTest, EveryFileReadsWithOgrinfosCounts) {
  const auto paths = CorpusShapefiles();
  if (paths.empty()) GTEST_SKIP() << "no corpus at " << HY_CORPUS_DIR;
  const bool oracle = HaveOgrinfo();
  hytest::RecordingApplication app;
  hytest::TempDir dir;
  for (const std::string& path : paths) {
    CHU_SHP shp(path);
    Counts ours{shp.GetSHPHandle() != nullptr, shp.GetNumObjects(), 0};
    for (int i = 0; i < shp.GetNumObjects(); ++i) {
      if (const HU_SHPObjectPtr shape = shp.ReadObject(i)) ours.vertices += shape->nVertices;
      // Every reader on every object, whatever its type: nothing may crash.
      CHU_DPoint point;
      CHU_DPointArray points;
      CHU_DPolyLineArray lines;
      CHU_DPolygonArray polygons;
      shp.GetPoint(i, point);
      shp.GetMultiPoint(i, points);
      shp.GetPolyLine(i, lines);
      shp.GetPolygon(i, polygons);
      std::string text;
      for (int f = 0; f < shp.GetNumDataItems(); ++f) shp.GetSHPData(i, f, text);
    }
    EXPECT_TRUE(shp.WriteData(dir.File("shapef.txt")) || !ours.opened);
    if (!oracle) continue;
    const Counts ogr = OgrCounts(path);
    EXPECT_EQ(ours.opened, ogr.opened) << path;
    EXPECT_EQ(ours.features, ogr.features) << path;
    EXPECT_EQ(ours.vertices, ogr.vertices) << path;
  }
  if (!oracle) GTEST_SKIP() << "ogrinfo not installed: files read, counts not compared";
}

}  // namespace
