// Library geometry written by the exporter and read back by the importer.

#include <gtest/gtest.h>

#include <random>

#include "hy_util/formats/mif_export.h"
#include "hy_util/formats/mif_import.h"
#include "mif_test_shapes.h"
#include "support/temp_dir.h"

using namespace miftest;

namespace {

// One object: its kind, its rings or sections, its row.
struct Object {
  int code;
  std::vector<XYs> parts;
  std::vector<std::string> row;
  bool operator==(const Object&) const = default;
};

std::vector<Object> ReadBack(CHU_MIDMIFFileImport& in) {
  std::vector<Object> out;
  for (int code = in.ReadNextDataType(); code != MIF_END_OF_FILE; code = in.ReadNextDataType()) {
    Object object{code, {}, in.GetMIDRow()};
    CHU_DPointArray points;
    CHU_DPolyLineArray lines;
    CHU_DPolygonArray rings;
    if (code == MIF_POINT && in.ReadPoint(points)) object.parts.push_back({{points[0]->x, points[0]->y}});
    if (code == MIF_PLINE && in.ReadPLineSections(lines)) {
      for (const auto& line : lines) object.parts.push_back(Coords(*line));
    }
    if (code == MIF_REGION && in.ReadRegion(rings)) {
      for (const auto& ring : rings) object.parts.push_back(Coords(*ring));
    }
    out.push_back(std::move(object));
  }
  return out;
}

}  // namespace

TEST(MifRoundTripTest, RandomObjectsComeBackWithTheirVerticesAndValues) {
  std::mt19937 random(20261123);
  // Coordinates in hundredths, which "%.2f" writes exactly and the reader parses
  // back to the same double.
  std::uniform_int_distribution<int> hundredths(-10000000, 10000000), kinds(0, 2), sizes(3, 12), counts(1, 3);
  const int kKinds[] = {MIF_POINT, MIF_PLINE, MIF_REGION};
  auto part = [&] {
    XYs xy(static_cast<std::size_t>(sizes(random)));
    for (auto& p : xy) p = {hundredths(random) / 100.0, hundredths(random) / 100.0};
    return xy;
  };

  hytest::TempDir dir;
  CHU_MIDMIFFileExport out(dir.File("r.mid"), dir.File("r.mif"), 0, 0);
  ASSERT_TRUE(out.OpenFiles());
  out.AddDataItem("ID", 0, 0);
  out.AddDataItem("NAME", 1, 30);
  out.AddDataItem("DEPTH", 2, 2);
  out.AddDataItem("LEVEL", 3, -1);
  out.SetHeader("300", "Neutral", ",", "NonEarth Units \"m\"", CHU_DRect(-1e5, 1e5, 1e5, -1e5));
  ASSERT_TRUE(out.ExHeader());

  std::vector<Object> written;
  for (int i = 0; i < 300; ++i) {
    Object object{kKinds[kinds(random)], {},
                  {std::to_string(i - 150), "name, (" + std::to_string(i) + ")", "1.25", "-2.500"}};
    const int parts = object.code == MIF_POINT ? 1 : counts(random);
    for (int p = 0; p < parts; ++p) object.parts.push_back(part());
    if (object.code == MIF_POINT) {
      object.parts[0].resize(1);
      out.ExPoint(CHU_DPoint(object.parts[0][0].first, object.parts[0][0].second), object.row);
    } else if (object.code == MIF_PLINE) {
      CHU_DPolyLineArray sections;
      for (const XYs& section : object.parts) sections.push_back(Make(section));
      parts == 1 ? out.ExPline(*sections[0], object.row) : out.ExPline(sections, object.row);
    } else {
      CHU_DPolygonArray rings;
      for (const XYs& ring : object.parts) rings.push_back(Make<CHU_DPolygon>(ring));
      parts == 1 ? out.ExRegion(*rings[0], object.row) : out.ExRegion(rings, object.row);
    }
    written.push_back(std::move(object));
  }
  ASSERT_TRUE(out.CloseFiles());

  CHU_MIDMIFFileImport in(dir.File("r.mid"), dir.File("r.mif"), 0, 0);
  ASSERT_TRUE(in.OpenFiles());
  ASSERT_TRUE(in.ReadHeader()) << in.GetLastError();
  EXPECT_EQ(Columns(in, 4), std::vector<std::string>({"ID Integer", "NAME Char(30)", "DEPTH Float", "LEVEL Double"}));
  EXPECT_EQ(Bounds(in), std::vector<double>({-1e5, -1e5, 1e5, 1e5}));
  const std::vector<Object> read = ReadBack(in);
  ASSERT_EQ(read.size(), written.size());
  for (std::size_t i = 0; i < read.size(); ++i) EXPECT_EQ(read[i], written[i]) << "object " << i;
}
