// MIF files written by other software: each reads without a failure, with the
// object kinds and vertex counts that OGR's ogrinfo reports for the same file.
// Skipped when the corpus folder or ogrinfo is absent.

#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <set>
#include <sstream>

#include "hy_util/formats/mif_import.h"

namespace {

// One object as OGR names its geometry, and its vertex count (-1: not compared,
// for the curves OGR approximates by its own choice of vertices).
struct Feature {
  std::string kind;
  int vertices;
  bool operator==(const Feature&) const = default;
};

std::ostream& operator<<(std::ostream& os, const Feature& f) { return os << f.kind << "/" << f.vertices; }

template <class Chains>
int CountChains(const Chains& chains, int extraPerChain) {
  int n = 0;
  for (const auto& chain : chains) n += chain->GetCount() + extraPerChain;
  return n;
}

// Reads one object at the current keyword; regions count each ring's repeated
// closing vertex, which the reader drops and OGR keeps.
Feature ReadObject(CHU_MIDMIFFileImport& in, int code) {
  CHU_DPointArray points;
  CHU_DPolyLineArray lines;
  CHU_DPolygonArray rings;
  CHU_DRect rect;
  std::string text;
  switch (code) {
    case MIF_POINT: return {"POINT", in.ReadPoint(points) ? 1 : 0};
    case MIF_TEXT: return {"POINT", in.ReadText(text, rect) ? 1 : 0};
    case MIF_LINE: return {"LINESTRING", in.ReadLine(lines) ? 2 : 0};
    case MIF_PLINE:
      if (!in.ReadPLineSections(lines)) return {"failed", 0};
      return {lines.size() > 1 ? "MULTILINESTRING" : "LINESTRING", CountChains(lines, 0)};
    case MIF_REGION:
      if (!in.ReadRegion(rings)) return {"failed", 0};
      return {"POLYGON", CountChains(rings, 1)};
    case MIF_RECT: return {"POLYGON", in.ReadRect(rect) ? 5 : 0};
    case MIF_MULTIPOINT: return {"MULTIPOINT", in.ReadMultiPoint(points) ? static_cast<int>(points.size()) : 0};
    case MIF_ROUNDRECT:
    case MIF_ELLIPSE: return {"POLYGON", -1};
    case MIF_ARC: return {"LINESTRING", -1};
    default: return {"other", -1};
  }
}

std::vector<Feature> ReadWithLibrary(const std::string& mifPath) {
  std::string midPath = mifPath;
  midPath.replace(midPath.size() - 3, 3, "mid");
  CHU_MIDMIFFileImport in(midPath, mifPath, 1, 0);
  EXPECT_TRUE(in.OpenFiles());
  EXPECT_TRUE(in.ReadHeader()) << in.GetLastError();
  std::vector<Feature> features;
  for (int code = in.ReadNextDataType(); code != MIF_END_OF_FILE; code = in.ReadNextDataType()) {
    if (code == MIF_COLLECTION) {
      Feature all{"GEOMETRYCOLLECTION", 0};
      for (int i = in.GetNumOfParts(); i > 0; --i) all.vertices += ReadObject(in, in.ReadNextDataType()).vertices;
      features.push_back(all);
      continue;
    }
    features.push_back(ReadObject(in, code));
  }
  return features;
}

bool HaveOgrInfo() { return std::system("command -v ogrinfo >/dev/null 2>&1") == 0; }

// Geometry kinds and vertex counts from ogrinfo's WKT, one entry per feature
// (a coordinate pair is two numbers; the rest of the WKT is words and brackets).
std::vector<Feature> ReadWithOgr(const std::string& mifPath) {
  std::vector<Feature> features;
  std::FILE* pipe = popen(("ogrinfo -ro -al -q '" + mifPath + "' 2>/dev/null").c_str(), "r");
  if (pipe == nullptr) return features;
  static const std::set<std::string> kKinds = {"POINT", "LINESTRING", "POLYGON", "MULTIPOINT",
                                               "MULTILINESTRING", "MULTIPOLYGON", "GEOMETRYCOLLECTION"};
  char buffer[1 << 16];
  std::string line;
  while (std::fgets(buffer, sizeof buffer, pipe) != nullptr) {
    line += buffer;
    if (line.back() != '\n') continue;
    if (line.rfind("OGRFeature(", 0) == 0) features.push_back({"none", 0});
    std::replace_if(line.begin(), line.end(), [](char c) { return c == '(' || c == ')' || c == ','; }, ' ');
    std::istringstream words(line);
    std::string kind, token;
    words >> kind;
    if (!features.empty() && line.rfind("  ", 0) == 0 && kKinds.count(kind) > 0) {
      int numbers = 0;
      while (words >> token) numbers += std::isdigit(static_cast<unsigned char>(token.back())) != 0;
      features.back() = {kind == "MULTIPOLYGON" ? "POLYGON" : kind, numbers / 2};
    }
    line.clear();
  }
  pclose(pipe);
  return features;
}

}  // namespace

TEST(MifCorpusTest, EveryFileAgreesWithOgrOnObjectsAndVertices) {
  const std::filesystem::path folder = std::filesystem::path(HY_CORPUS_DIR) / "vector";
  if (!std::filesystem::is_directory(folder)) GTEST_SKIP() << "no corpus at " << folder;
  if (!HaveOgrInfo()) GTEST_SKIP() << "ogrinfo is not installed";
  int files = 0;
  for (const auto& entry : std::filesystem::directory_iterator(folder)) {
    if (entry.path().extension() != ".mif") continue;
    ++files;
    const std::string path = entry.path().string();
    SCOPED_TRACE(path);
    std::vector<Feature> ours = ReadWithLibrary(path);
    std::vector<Feature> ogr = ReadWithOgr(path);
    ASSERT_EQ(ours.size(), ogr.size());
    for (std::size_t i = 0; i < ours.size(); ++i) {
      if (ours[i].vertices < 0) ogr[i].vertices = -1;  // curves: OGR's own vertices
      EXPECT_EQ(ours[i], ogr[i]) << "object " << i + 1;
    }
  }
  EXPECT_GT(files, 0);
}
