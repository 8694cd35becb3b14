#include <gtest/gtest.h>

#include <cmath>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <optional>
#include <random>
#include <sstream>
#include <tuple>

#include "hy_util/formats/file_2dm.h"
#include "hy_util/units/units_setting.h"
#include "support/recording_application.h"
#include "support/temp_dir.h"

namespace {

// Opens and reads the text as a 2DM file; the reader keeps its tables after the
// file is gone.
struct Mesh {
  hytest::TempDir dir;
  CHU_File2DM file;
  bool read = false;
  explicit Mesh(const std::string& text, bool parallel = true) {
    file.SetParallelRead(parallel);
    read = file.Open(dir.Write("mesh.2dm", text).c_str()) && file.Read();
  }
};

struct Xyz {
  double x, y, z;
  bool operator==(const Xyz&) const = default;
  friend std::ostream& operator<<(std::ostream& os, const Xyz& p) { return os << p.x << "," << p.y << "," << p.z; }
};
Xyz At(const CHU_File2DM& f, int index) {
  const CHU_DPoint p = f.GetNodeFromIndex(index);
  return {p.x, p.y, p.z};
}

// A 2 x 1 grid of unit cells with vertical offset 10, numbered from 1 as
// modelling packages write it.
const std::string kTwoCells =
    "MESH2D 0.0 0.0 0.0 2 1 1.0 1.0 10.0\n"
    "ND 1 0 0 1\nND 2 1 0 2\nND 3 2 0 3\nND 4 0 1 4\nND 5 1 1 5\nND 6 2 1 6\n"
    "E4Q 1 1 2 5 4 1 0 0\n"
    "E4Q 2 2 3 6 5 1 0 0\n";

TEST(File2DMTest, CellsAreStoredAtTheirWrittenIdAndTheLastOneGrowsTheTable) {
  Mesh m(kTwoCells);
  ASSERT_TRUE(m.read);
  const CHU_File2DM& f = m.file;
  EXPECT_EQ(std::tuple(f.GetNbrCellsX(), f.GetNbrCellsY(), f.GetCellWidth(), f.GetVertexCount(), f.GetLineCount()),
            std::tuple(2u, 1u, 1.0f, 6, 9));
  EXPECT_EQ(f.GetCellCount(), 3);  // id 2 = nx * ny grew the table by one
  // Record 0 stays empty in a 1-based numbering; (0, 1) is index nx * 1 + 0; (1, 1) is beyond the table.
  EXPECT_EQ(std::tuple(f.GetCellIndex(0, 0), f.GetCellIndex(1, 0), f.GetCellIndex(0, 1), f.GetCellIndex(1, 1)),
            std::tuple(-1, 1, 2, -1));
  int nodes[4];
  ASSERT_TRUE(f.GetNodeIndices(2, nodes));
  EXPECT_EQ(std::vector<int>(nodes, nodes + 4), (std::vector<int>{1, 2, 5, 4}));
  EXPECT_FALSE(f.GetNodeIndices(0, nodes) || f.GetNodeIndices(3, nodes));
  ASSERT_TRUE(f.GetNodeIndices(1, 0, nodes));
  EXPECT_EQ(nodes[0], 0);
  double x0, y0, x1, y1;
  ASSERT_TRUE(f.GetCellExtents(2, x0, y0, x1, y1));
  EXPECT_EQ(std::tuple(x0, y0, x1, y1), std::tuple(1.0, 0.0, 2.0, 1.0));
  EXPECT_FALSE(f.GetCellExtents(0, x0, y0, x1, y1));
  const CHU_DPoint first = f.GetNode(0, 1), none = f.GetNode(0, 0);  // cell 2's first node is node 2
  EXPECT_EQ((Xyz{first.x, first.y, first.z}), (Xyz{1, 0, 2}));
  EXPECT_EQ((Xyz{none.x, none.y, none.z}), (Xyz{0, 0, 0}));
  EXPECT_EQ(At(f, 5), (Xyz{2, 1, 6}));
  EXPECT_EQ(At(f, 6), (Xyz{-99999, -99999, -99999}));
  EXPECT_EQ(At(f, -1), At(f, 6));
  f.GetExtents(x0, y0, x1, y1);
  EXPECT_EQ(std::tuple(x0, y0, x1, y1), std::tuple(0.0, 0.0, 2.0, 1.0));
}

TEST(File2DMTest, WhatTheFileHoldsDecidesWhetherReadSucceeds) {
  EXPECT_FALSE(Mesh("").read);
  EXPECT_FALSE(Mesh("E4Q 1 1 2 3 4\nE3T 1 1 2 3\n# no grid, no nodes\n").read);
  EXPECT_FALSE(Mesh("mesh2d 0 0 0 1 1 1 1\nnd 1 0 0 0\n").read);  // card names are case-sensitive
  Mesh gridOnly("MESH2D\n");  // as some packages write it: no numbers at all
  ASSERT_TRUE(gridOnly.read);
  EXPECT_EQ(std::pair(gridOnly.file.GetVertexCount(), gridOnly.file.GetCellCount()), std::pair(0, 0));
  double x0, y0, x1, y1;
  gridOnly.file.GetExtents(x0, y0, x1, y1);
  EXPECT_EQ(x0, -99999);
  EXPECT_EQ(gridOnly.file.GetMinElevation(), -99999);
  CHU_File2DM notOpened;
  EXPECT_FALSE(notOpened.Read() || notOpened.Open("/nonexistent/mesh.2dm"));
}

TEST(File2DMTest, NodeOnlyFileAndNumberingGaps) {
  Mesh m("ND 1 5 6 7\nND 2 8 9 10\nND 4 -1 3 2\nE4Q 0 1 2 4 1\n");
  ASSERT_TRUE(m.read);
  const CHU_File2DM& f = m.file;
  EXPECT_EQ(f.GetVertexCount(), 4);
  EXPECT_EQ(At(f, 2), (Xyz{0, 0, 0}));  // the gap is an unset node at the origin
  // E4Q 0 made the table.
  EXPECT_EQ(std::tuple(f.GetNbrCellsX(), f.GetCellCount(), f.GetCellIndex(0, 0)), std::tuple(0u, 1, 0));
  double x0, y0, x1, y1;
  f.GetExtents(x0, y0, x1, y1);
  EXPECT_EQ(std::tuple(x0, y0, x1, y1), std::tuple(-1.0, 0.0, 8.0, 9.0));  // the gap node takes part
  // A node written twice keeps its last position; the table ends at the highest id.
  Mesh twice("ND 3 1 1 1\nND 1 0 0 0\nND 3 2 2 2\n");
  EXPECT_EQ(twice.file.GetVertexCount(), 3);
  EXPECT_EQ(At(twice.file, 2), (Xyz{2, 2, 2}));
}

TEST(File2DMTest, SharedTriangleNodesAreLoweredOnce) {
  Mesh m("MESH2D 0 0 0 1 1 1 1 2.5\nND 1 0 0 10\nND 2 1 0 20\nND 3 0 1 30\nND 4 1 1 40\n"
         "E3T 7 1 2 3\nE3T 8 2 4 3\nND 4 1 1 50\nE3T 9 4 3 2\n");
  ASSERT_TRUE(m.read);
  const CHU_File2DM& f = m.file;
  EXPECT_EQ(f.GetNbrTCells(), 3);
  // Node 2 is used by all three triangles; node 4 was written again after its lowering: lowered again.
  EXPECT_EQ((std::vector<double>{At(f, 0).z, At(f, 1).z, At(f, 2).z, At(f, 3).z}),
            (std::vector<double>{7.5, 17.5, 27.5, 47.5}));
  EXPECT_EQ(std::pair(f.GetTCellID(1), f.GetTCellID(3)), std::pair(8, -1));
  int tri[3];
  ASSERT_TRUE(f.GetTCellIndices(1, tri));
  EXPECT_EQ(std::vector<int>(tri, tri + 3), (std::vector<int>{1, 3, 2}));
  EXPECT_FALSE(f.GetTCellIndices(-1, tri));
}

TEST(File2DMTest, ElevationRangeSkipsZeroForTheLowestAnd99999ForTheHighest) {
  Mesh m("ND 1 0 0 5\nND 2 0 0 0\nND 3 0 0 99999\nND 4 0 0 3\nND 5 0 0 120\nND 6 0 0 -0.0\n");
  EXPECT_EQ(std::pair(m.file.GetMinElevation(), m.file.GetMaxElevation()), std::pair(3.0, 120.0));
  Mesh zeroFirst("ND 1 0 0 0\nND 2 0 0 4\n");
  EXPECT_EQ(zeroFirst.file.GetMinElevation(), 0);  // the first node's z is where both start
  Mesh missingFirst("ND 1 0 0 99999\nND 2 0 0 4\n");
  EXPECT_EQ(missingFirst.file.GetMaxElevation(), 99999);
}

TEST(File2DMTest, UnitsSettingZeroConvertsMetresToFeet) {
  for (const std::optional<int> units : {std::optional<int>(), std::optional<int>(1), std::optional<int>(0)}) {
    hytest::RecordingApplication app;  // "Units" not set: nothing converted
    if (units) app.SetGlobalInt(HU_UNITS_SETTING, *units);
    Mesh m("MESH2D 0 0 0 1 1 2 3 4\nND 1 1 2 3\n");
    const double f = units == 0 ? 3.28084 : 1.0;
    EXPECT_EQ(At(m.file, 0), (Xyz{1 * f, 2 * f, 3 * f})) << units.value_or(-1);
    EXPECT_EQ(std::tuple(m.file.GetCellWidth(), m.file.GetCellHeight(), m.file.GetVerticalOffset()),
              std::tuple(static_cast<float>(2 * f), static_cast<float>(3 * f), static_cast<float>(4 * f)));
    double x = 1, y = 2, z = 3;
    CHU_File2DM::AdjustDataUnitsXYZ(x, y, z);
    EXPECT_EQ((Xyz{x, y, z}), (Xyz{f, 2 * f, 3 * f}));
  }
}

TEST(File2DMTest, OtherLinesAreSkippedAndCountedByTheirFirstWord) {
  Mesh m("MESH2D 0 0 0 1 1 1 1\r\nNO_MOVE_EQ9_CENTER_NODE\r\n\r\n  ND\t1 0.5 0.25 9 2 0. 0.\r\n"
         "E2L 1 1 2 1\nE2L 2 2 3 1\nNS 1 2 -3\n# comment\nND1 9 9 9\n");
  ASSERT_TRUE(m.read);
  EXPECT_EQ(At(m.file, 0), (Xyz{0.5, 0.25, 9}));  // CR LF, tab and leading blanks are white space
  EXPECT_EQ(m.file.GetSkippedCards(),
            (std::vector<std::pair<std::string, std::int64_t>>{
                {"NO_MOVE_EQ9_CENTER_NODE", 1}, {"E2L", 2}, {"NS", 1}, {"#", 1}, {"ND1", 1}}));
  EXPECT_EQ(m.file.GetLineCount(), 9);
}

TEST(File2DMTest, SizesFromTheFileAreBounded) {
  // A declared grid far larger than its nodes, as real files have: honoured.
  Mesh real("MESH2D 0 0 0 200 300 1 1\nND 1 0 0 1\nND 5 1 1 1\nE4Q 60001 1 2 3 4\n");
  ASSERT_TRUE(real.read);
  EXPECT_EQ(std::tuple(real.file.GetVertexCount(), real.file.GetCellCount(), real.file.GetCellIndex(1, 300),
                       real.file.GetRefusedCount()),
            std::tuple(5, 60002, 60001, 0));

  // Ids and grids no file of this size can justify: refused and counted.
  Mesh hostile("ND 1 0 0 0\nND 2000000000 1 1 1\nE4Q 2000000000 1 1 1 1\nE4Q -5 1 1 1 1\nND 0 1 1 1\n"
               "MESH2D 0 0 0 70000 70000 1 1\nMESH2D 0 0 0 -1 5 1 1\nND 2 3 3 3\n");
  ASSERT_TRUE(hostile.read);
  EXPECT_EQ(std::tuple(hostile.file.GetVertexCount(), hostile.file.GetCellCount(), hostile.file.GetNbrCellsX(),
                       hostile.file.GetRefusedCount(), hostile.file.GetFirstRefusedLine()),
            std::tuple(2, 0, 0u, 6, 2));
  EXPECT_NE(hostile.file.GetFirstRefusedReason().find("2000000000"), std::string::npos);
  // A file as large as its ids: the numbering is believed.
  std::string padded = "ND 100000 1 1 1\n" + std::string(400000, '\n');
  Mesh sparse(padded);
  EXPECT_EQ(sparse.file.GetVertexCount(), 100000);
}

// A file cut anywhere (the writer still busy, a truncated copy) reads what its
// complete cards say, or fails when no ND or MESH2D card is left.
TEST(File2DMTest, AFileCutAnywhereReadsItsCompleteCards) {
  for (std::size_t cut = 0; cut <= kTwoCells.size(); ++cut) {
    const std::string part = kTwoCells.substr(0, cut);
    Mesh m(part);
    EXPECT_EQ(m.read, cut >= 6) << cut;  // "MESH2D" complete
    if (!m.read) continue;
    const std::string whole = part.substr(0, part.rfind('\n') + 1);  // empty when there is no line end
    int complete = 0;
    for (std::size_t at = whole.find("ND "); at != std::string::npos; at = whole.find("ND ", at + 1)) ++complete;
    EXPECT_GE(m.file.GetVertexCount(), complete) << cut;
    EXPECT_LE(m.file.GetVertexCount(), complete + 1) << cut;  // the card cut after its id counts too
  }
}

TEST(File2DMTest, LongLinesAndBlockBoundariesChangeNothing) {
  std::ostringstream text;
  text << "MESH2D 0 0 0 300 300 1 1 0.5\n# " << std::string(5 << 20, 'x') << "\n";
  for (int id = 1; id <= 90601; ++id) text << "ND " << id << " " << id % 301 << ".125 " << id / 301 << ".5 " << id * 0.001 << "\n";
  for (int id = 1; id <= 90000; ++id) text << "E4Q " << id << " " << id << " " << id + 1 << " " << id + 302 << " " << id + 301 << " 1\n";
  text << "E3T 1 1 2 3\nND -1 0 0 0\n";
  Mesh parallel(text.str(), true);
  Mesh serial(text.str(), false);
  ASSERT_TRUE(parallel.read && serial.read);
  EXPECT_EQ(parallel.file.GetX(), serial.file.GetX());
  EXPECT_EQ(parallel.file.GetZ(), serial.file.GetZ());
  EXPECT_EQ(std::pair(parallel.file.GetVertexCount(), parallel.file.GetCellCount()), std::pair(90601, 90001));
  int a[4];
  ASSERT_TRUE(parallel.file.GetNodeIndices(90000, a));
  EXPECT_EQ(a[3], 90300);
  EXPECT_EQ(At(parallel.file, 0).z, 0.001 - 0.5);
  EXPECT_EQ(parallel.file.GetLineCount(), 2 + 90601 + 90000 + 2);
  EXPECT_EQ(parallel.file.GetFirstRefusedLine(), 2 + 90601 + 90000 + 2);  // line numbers run across blocks
  EXPECT_EQ(serial.file.GetFirstRefusedLine(), parallel.file.GetFirstRefusedLine());
}

// Every number the reader gives equals what sscanf with the card's format reads
// from the same line, for random well-formed and oddly written numbers.
TEST(File2DMTest, NumbersAreThoseSscanfReads) {
  std::mt19937_64 rng(20261123);
  auto real = [&rng]() -> std::string {
    char text[64];
    std::uniform_real_distribution<double> map(-1e6, 1e7);
    const double v = map(rng);
    switch (rng() % 8) {
      case 0: std::snprintf(text, sizeof text, "%.17g", v); break;
      case 1: std::snprintf(text, sizeof text, "%.6e", v / 1e6); break;
      case 2: std::snprintf(text, sizeof text, "%+.2f", v); break;
      case 3: std::snprintf(text, sizeof text, "%.0f.", v); break;
      case 4: std::snprintf(text, sizeof text, "%.20f", v / 3e9); break;  // more digits than the fast path takes
      case 5: std::snprintf(text, sizeof text, "%a", v); break;
      default: std::snprintf(text, sizeof text, "%.3f", v); break;
    }
    return text;
  };
  auto integer = [&rng]() -> std::string {
    const auto r = rng();
    switch (r % 6) {
      case 0: return std::to_string(static_cast<std::int64_t>(r >> 1));  // wraps as glibc stores it
      case 1: return "-" + std::to_string(r % 100000);
      case 2: return "+" + std::to_string(r % 1000);
      default: return std::to_string(r % 3000 + 1);
    }
  };
  std::string text = "MESH2D " + real() + " " + real() + " " + real() + " 1 1 " + real() + " " + real() + " " + real() + "\n";
  float fx, fy, fz, w, h, off;
  int nx = 0, ny = 0;
  char card[8];
  ASSERT_EQ(std::sscanf(text.c_str(), "%6s %f %f %f %d %d %f %f %f", card, &fx, &fy, &fz, &nx, &ny, &w, &h, &off), 9);
  std::vector<std::string> nodeLines;
  const int nodes = 3000;
  for (int id = 1; id <= nodes; ++id) nodeLines.push_back("ND " + std::to_string(id) + " " + real() + " " + real() + " " + real());
  std::vector<std::string> cellLines;
  for (int id = 0; id < 500; ++id)
    cellLines.push_back("E4Q " + std::to_string(id) + " " + integer() + " " + integer() + " " + integer() + " " + integer() + " 1 0 0");
  for (const auto& l : nodeLines) text += l + "\n";
  for (const auto& l : cellLines) text += l + "\n";
  Mesh m(text);
  ASSERT_TRUE(m.read);
  EXPECT_EQ(m.file.GetCellWidth(), w);
  EXPECT_EQ(m.file.GetCellHeight(), h);
  EXPECT_EQ(m.file.GetVerticalOffset(), off);
  ASSERT_EQ(m.file.GetVertexCount(), nodes);
  for (int i = 0; i < nodes; ++i) {
    int id;
    double x, y, z;
    ASSERT_EQ(std::sscanf(nodeLines[static_cast<std::size_t>(i)].c_str(), "%2s %d %lf %lf %lf", card, &id, &x, &y, &z), 5);
    ASSERT_EQ(At(m.file, i), (Xyz{x, y, z})) << nodeLines[static_cast<std::size_t>(i)];
  }
  for (int i = 0; i < 500; ++i) {
    int id, n[4], extra[3];
    ASSERT_EQ(std::sscanf(cellLines[static_cast<std::size_t>(i)].c_str(), "%3s %d %d %d %d %d %d %d %d", card, &id, &n[0],
                          &n[1], &n[2], &n[3], &extra[0], &extra[1], &extra[2]),
              9);
    int got[4];
    ASSERT_TRUE(m.file.GetNodeIndices(i, got));
    for (int k = 0; k < 4; ++k)
      ASSERT_EQ(got[k], static_cast<int>(static_cast<unsigned>(n[k]) - 1u)) << cellLines[static_cast<std::size_t>(i)];
  }
}

// Malformed numbers: the reader stops a card where sscanf stops, and what is not
// read is 0.
TEST(File2DMTest, MalformedCardsReadAsFarAsSscanfDoes) {
  const std::vector<std::string> lines = {
      "ND 1 1.5x 2 3", "ND 1 1e 2 3",    "ND 1 0x1p3 inf -nan", "ND 1 .5 -. 7", "ND 1 1e400 -1e-400 infinity",
      "ND 1 0x 1 1",   "ND 1 +-1 2 3",   "ND 1 1.5.5 2 3",      "ND 1 infinit 2 3", "ND 1 12345678901234567890 1 1",
      "ND 1 2",        "ND 1 1E+ 1 1",
  };
  for (const std::string& line : lines) {
    // sscanf's string ends at a NUL; the reader's line must end there too
    const std::string withNul = line == "ND 1 2" ? std::string("ND 1 2\0 3 4", 11) : line;
    Mesh m(withNul + "\n");
    ASSERT_TRUE(m.read) << line;
    double v[3] = {0, 0, 0};
    char card[4];
    int id;
    std::sscanf(line.c_str(), "%2s %d %lf %lf %lf", card, &id, &v[0], &v[1], &v[2]);
    const Xyz got = At(m.file, 0);
    const double g[3] = {got.x, got.y, got.z};
    for (int k = 0; k < 3; ++k) {
      if (std::isnan(v[k])) EXPECT_TRUE(std::isnan(g[k])) << line;
      else EXPECT_EQ(g[k], v[k]) << line << " field " << k;
    }
  }
}

// Real files from other software: each reads, with one node per ND id.
TEST(File2DMTest, CorpusFilesRead) {
  std::error_code ec;
  int files = 0;
  for (const auto& entry : std::filesystem::directory_iterator(HY_CORPUS_DIR "/2dm", ec)) {
    if (entry.path().extension() != ".2dm") continue;
    ++files;
    std::ifstream in(entry.path());
    std::string line;
    int ndLines = 0, highest = 0;
    while (std::getline(in, line)) {
      int id;
      char card[4];
      if (std::sscanf(line.c_str(), "%2s %d", card, &id) == 2 && std::string(card) == "ND" && line[2] == ' ') {
        ++ndLines;
        highest = std::max(highest, id);
      }
    }
    CHU_File2DM f;
    ASSERT_TRUE(f.Open(entry.path().c_str()));
    EXPECT_TRUE(f.Read()) << entry.path();
    EXPECT_EQ(f.GetVertexCount(), highest) << entry.path();  // the table ends at the highest id
    EXPECT_LE(ndLines, f.GetVertexCount());
    EXPECT_EQ(f.GetRefusedCount(), 0);
  }
  if (files == 0) GTEST_SKIP() << "no sample meshes in " HY_CORPUS_DIR "/2dm";
}

}  // namespace
