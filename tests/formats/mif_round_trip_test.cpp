// Library geometry written by the exporter and read back by the importer.

#include <gtest/gtest.h>

#include <random>

#include "hy_util/formats/mif_export.h"
#include "hy_util/formats/mif_import.h"
#include "mif_test_shapes.h"
#include "support/temp_dir.h"

using namespace miftest;

namespace {

// One object as written: its kind, its rings or sections, its row.
struct Written {
  int code;
  std::vector<XYs> parts;
  std::vector<std::string> row;
};

// Reads every object back as the same description (multi-part objects by sections).
std::vector<Written> ReadBack(CHU_MIDMIFFileImport& in) {
  std::vector<Written> out;
  for (int code = in.ReadNextDataType(); code != MIF_END_OF_FILE; code = in.ReadNextDataType()) {
    Written object{code, {}, in.GetMIDRow()};
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
  std::uniform_int_distribution<int> hundredths(-10000000, 10000000);
  std::uniform_int_distribution<int> kinds(0, 4);
  std::uniform_int_distribution<int> sizes(1, 12);
  auto coordinate = [&] { return hundredths(random) / 100.0; };
  auto part = [&](int minimum) {
    XYs xy(static_cast<std::size_t>(std::max(minimum, sizes(random))));
    for (auto& p : xy) p = {coordinate(), coordinate()};
    return xy;
  };

  hytest::TempDir dir;
  const std::string mid = dir.File("r.mid");
  const std::string mif = dir.File("r.mif");
  CHU_MIDMIFFileExport out(mid, mif, 0, 0);
  ASSERT_TRUE(out.OpenFiles());
  out.AddDataItem("ID", 0, 0);
  out.AddDataItem("NAME", 1, 30);
  out.AddDataItem("DEPTH", 2, 2);
  out.AddDataItem("LEVEL", 3, -1);
  out.SetHeader("300", "Neutral", ",", "NonEarth Units \"m\"", CHU_DRect(-1e5, 1e5, 1e5, -1e5));
  ASSERT_TRUE(out.ExHeader());

  std::vector<Written> written;
  for (int i = 0; i < 300; ++i) {
    Written object{0, {}, {std::to_string(i - 150), "name, (" + std::to_string(i) + ")", "1.25", "-2.500"}};
    auto line = std::make_unique<CHU_DPolyLine>();
    auto ring = std::make_unique<CHU_DPolygon>();
    CHU_DPolyLineArray sections;
    CHU_DPolygonArray rings;
    switch (kinds(random)) {
      case 0:
        object.code = MIF_POINT;
        object.parts.push_back(part(1));
        object.parts[0].resize(1);
        out.ExPoint(CHU_DPoint(object.parts[0][0].first, object.parts[0][0].second), object.row);
        break;
      case 1:
        object.code = MIF_PLINE;
        object.parts.push_back(part(2));
        for (auto [x, y] : object.parts[0]) line->AddPt(x, y, 0);
        out.ExPline(*line, object.row);
        break;
      case 2:
        object.code = MIF_PLINE;
        for (int s = 0; s < 3; ++s) {
          object.parts.push_back(part(2));
          sections.push_back(std::make_unique<CHU_DPolyLine>());
          for (auto [x, y] : object.parts.back()) sections.back()->AddPt(x, y, 0);
        }
        out.ExPline(sections, object.row);
        break;
      case 3:
        object.code = MIF_REGION;
        object.parts.push_back(part(3));
        for (auto [x, y] : object.parts[0]) ring->AddPt(x, y, 0);
        out.ExRegion(*ring, object.row);
        break;
      default:
        object.code = MIF_REGION;
        for (int r = 0; r < 2; ++r) {
          object.parts.push_back(part(3));
          rings.push_back(std::make_unique<CHU_DPolygon>());
          for (auto [x, y] : object.parts.back()) rings.back()->AddPt(x, y, 0);
        }
        out.ExRegion(rings, object.row);
        break;
    }
    written.push_back(std::move(object));
  }
  ASSERT_TRUE(out.CloseFiles());

  CHU_MIDMIFFileImport in(mid, mif, 0, 0);
  ASSERT_TRUE(in.OpenFiles());
  ASSERT_TRUE(in.ReadHeader()) << in.GetLastError();
  ASSERT_EQ(in.GetNumDataItems(), 4);
  EXPECT_EQ(in.GetDataItem(0)->GetType(), CHU_MIDMIFData::kInteger);
  EXPECT_EQ(in.GetDataItem(1)->GetType(), CHU_MIDMIFData::kChar);
  EXPECT_EQ(in.GetDataItem(1)->GetSize(), 30);
  EXPECT_EQ(in.GetDataItem(2)->GetType(), CHU_MIDMIFData::kFloat);
  EXPECT_EQ(in.GetDataItem(3)->GetType(), CHU_MIDMIFData::kDouble);
  double x0, y0, x1, y1;
  ASSERT_TRUE(in.GetBounds(x0, y0, x1, y1));
  EXPECT_EQ(std::vector<double>({x0, y0, x1, y1}), std::vector<double>({-1e5, -1e5, 1e5, 1e5}));

  const std::vector<Written> read = ReadBack(in);
  ASSERT_EQ(read.size(), written.size());
  for (std::size_t i = 0; i < read.size(); ++i) {
    SCOPED_TRACE(i);
    EXPECT_EQ(read[i].code, written[i].code);
    EXPECT_EQ(read[i].parts, written[i].parts);
    EXPECT_EQ(read[i].row, written[i].row);
  }
}
