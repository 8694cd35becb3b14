// CHU_SHP on shapefiles written by shapelib directly: parts, holes, Z, multipoints,
// attribute descriptions, the dump, and damaged or missing companions.
#include <gtest/gtest.h>

#include <array>
#include <tuple>
#include <filesystem>
#include <fstream>

#include "formats/shp_test_files.h"
#include "hy_util/formats/shp_file.h"
#include "support/recording_application.h"
#include "support/temp_dir.h"

namespace {

using hytest::TestShape;

std::vector<std::tuple<double, double, double>> Vertices(const CHU_DPolyLine& chain) {
  std::vector<std::tuple<double, double, double>> out;
  for (int i = 0; i < chain.GetCount(); ++i) out.emplace_back(chain.GetAt(i)->x, chain.GetAt(i)->y, chain.GetAt(i)->z);
  return out;
}

class ShpReaderTest : public ::testing::Test {
 protected:
  hytest::RecordingApplication app;
  hytest::TempDir dir;
};

TEST_F(ShpReaderTest, EachRingOrPartBecomesItsOwnObjectWithZOnlyForZTypes) {
  struct Case {
    int type;
    bool polygon;
    bool withZ;
  };
  for (const Case c : {Case{SHPT_POLYGON, true, false}, Case{SHPT_POLYGONZ, true, true}, Case{SHPT_ARC, false, false},
                       Case{SHPT_ARCZ, false, true}}) {
    const std::string base = dir.File("t" + std::to_string(c.type));
    hytest::WriteShapes(base, c.type, {hytest::SquareWithHole()}, {"a"});
    CHU_SHP shp(base + ".shp");
    ASSERT_EQ(shp.GetNumObjects(), 1);
    EXPECT_EQ(shp.GetObjectType(0), c.type);

    CHU_DPolygonArray polygons;
    polygons.push_back(std::make_unique<CHU_DPolygon>());  // the caller's own object stays
    CHU_DPolyLineArray lines;
    EXPECT_EQ(shp.GetPolygon(0, polygons), c.polygon ? 2 : 0) << c.type;
    EXPECT_EQ(shp.GetPolyLine(0, lines), c.polygon ? 0 : 2) << c.type;
    std::vector<CHU_DPolyLine*> parts;
    for (std::size_t i = 1; i < polygons.size(); ++i) parts.push_back(polygons[i].get());
    for (auto& l : lines) parts.push_back(l.get());
    ASSERT_EQ(parts.size(), 2u);
    const double z1 = c.withZ ? 1 : CHU_DPoint::C_NULL_VALL, z10 = c.withZ ? 10 : CHU_DPoint::C_NULL_VALL;
    EXPECT_EQ(parts[0]->GetCount(), 5);
    EXPECT_EQ(Vertices(*parts[0])[0], std::make_tuple(0.0, 0.0, z1));
    EXPECT_EQ(Vertices(*parts[1])[4], std::make_tuple(2.0, 2.0, z10));
    EXPECT_EQ(polygons[0]->GetCount(), 0);
  }
}

TEST_F(ShpReaderTest, PointsAndMultipointsCarryZOnlyWhenTheTypeHasIt) {
  const TestShape three{{}, {1, 2, 3}, {4, 5, 6}, {7, 8, 9}};
  for (int type : {SHPT_MULTIPOINT, SHPT_MULTIPOINTZ}) {
    const std::string base = dir.File("m" + std::to_string(type));
    hytest::WriteShapes(base, type, {three}, {"m"});
    CHU_SHP shp(base + ".shp");
    CHU_DPointArray points;
    ASSERT_EQ(shp.GetMultiPoint(0, points), 3);
    const double z = type == SHPT_MULTIPOINTZ ? 9 : CHU_DPoint::C_NULL_VALL;
    EXPECT_EQ(std::make_tuple(points[2]->x, points[2]->y, points[2]->z), std::make_tuple(3.0, 6.0, z));
    CHU_DPoint first(-1, -1, -1);
    EXPECT_TRUE(shp.GetPoint(0, first));
    EXPECT_EQ(std::make_tuple(first.x, first.y), std::make_tuple(1.0, 4.0));
    CHU_DPolyLineArray lines;
    EXPECT_EQ(shp.GetPolyLine(0, lines), 0);
  }
  // A null shape has no vertex: the point is left as it was.
  hytest::WriteShapes(dir.File("n"), SHPT_POINT, {TestShape{}}, {"n"});
  CHU_SHP shp(dir.File("n.shp"));
  CHU_DPoint kept(5, 6, 7);
  EXPECT_FALSE(shp.GetPoint(0, kept));
  EXPECT_EQ(std::make_tuple(kept.x, kept.y, kept.z), std::make_tuple(5.0, 6.0, 7.0));
  EXPECT_FALSE(shp.GetPoint(1, kept));
}

TEST_F(ShpReaderTest, OpeningFailuresShowTheirStopMessagesAndLeaveAnEmptyReader) {
  hytest::WriteShapes(dir.File("nodbf"), SHPT_POINT, {TestShape{{}, {1}, {2}, {}}});
  hytest::WriteShapes(dir.File("plain"), SHPT_POINT, {TestShape{{}, {1}, {2}, {}}}, {"p"});
  std::filesystem::copy_file(dir.File("plain.shp"), dir.File("noshx.shp"));
  struct Case {
    std::string path;
    std::vector<std::string> messages;
    int objects;
  };
  const std::string missing = dir.File("missing.shp");
  const Case cases[] = {
      {"no_dot_anywhere", {"Invalid Shape Index filename"}, 0},
      {missing, {"Unable to open: " + missing + " and/or " + dir.File("missing.shx")}, 0},
      {dir.File("noshx.shp"), {"Unable to open: " + dir.File("noshx.shp") + " and/or " + dir.File("noshx.shx")}, 0},
      {dir.File("nodbf.shp"), {"Invalid Shape file DBF"}, 1},
      {dir.File("plain.shp"), {}, 1},
  };
  for (const Case& c : cases) {
    app.messages.clear();
    CHU_SHP shp(c.path);
    std::vector<std::string> texts;
    for (const auto& m : app.messages) {
      texts.push_back(m.text);
      EXPECT_EQ(m.kind, HU_MessageKind::Stop);
    }
    EXPECT_EQ(texts, c.messages) << c.path;
    EXPECT_EQ(shp.GetNumObjects(), c.objects) << c.path;
    if (c.messages.empty()) continue;
    std::string text;
    shp.GetDataType(0, text);
    EXPECT_EQ(text, "Invalid/Undefined Data");
    EXPECT_EQ(shp.GetNumDataItems(), 0);
    EXPECT_FALSE(shp.GetSHPData(0, 0, text));
  }
  // A path without a "." opens the geometry (shapelib adds ".shp"), but gives the
  // table no name.
  app.messages.clear();
  CHU_SHP bare(dir.File("plain"));
  if (dir.File("plain").find('.') == std::string::npos) {
    EXPECT_EQ(bare.GetNumObjects(), 1);
    ASSERT_EQ(app.messages.size(), 1u);
    EXPECT_EQ(app.messages[0].text, "Invalid Shape file DBF name");
  }
}

// Byte offsets in a one-polygon file written by WriteShapes.
constexpr long kShxRecordLength = 104, kShxFileLength = 24;
constexpr long kShpNumParts = 144, kShpNumPoints = 148, kShpSecondPartStart = 156;
constexpr long kDbfRecordLength = 10;

void Patch(const std::string& path, long offset, const std::string& bytes) {
  std::fstream f(path, std::ios::in | std::ios::out | std::ios::binary);
  f.seekp(offset);
  f.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
}

std::string LittleEndian(std::uint32_t v) { return {char(v), char(v >> 8), char(v >> 16), char(v >> 24)}; }
std::string BigEndian(std::uint32_t v) { return {char(v >> 24), char(v >> 16), char(v >> 8), char(v)}; }

TEST_F(ShpReaderTest, DamagedFilesAreRefusedWithoutTouchingWhatTheCallerHas) {
  struct Case {
    const char* what;
    const char* extension;
    long offset;
    std::string bytes;
    bool opens;
  };
  const Case cases[] = {
      {"part start beyond the vertex count", ".shp", kShpSecondPartStart, LittleEndian(11), true},
      {"negative part start", ".shp", kShpSecondPartStart, LittleEndian(0xFFFFFFFB), true},
      {"vertex count beyond the record", ".shp", kShpNumPoints, LittleEndian(40000000), true},
      {"negative part count", ".shp", kShpNumParts, LittleEndian(0xFFFFFFFF), true},
      {"record length beyond the file", ".shx", kShxRecordLength, BigEndian(0x7FFFFFF0), false},
      {"record offset beyond the file", ".shx", kShxRecordLength - 4, BigEndian(0x40000000), true},
      {"index longer than its file", ".shx", kShxFileLength, BigEndian(0x7FFFFFF0), false},
  };
  for (const Case& c : cases) {
    const std::string base = dir.File("d");
    hytest::WriteShapes(base, SHPT_POLYGON, {hytest::SquareWithHole()}, {"d"});
    Patch(base + c.extension, c.offset, c.bytes);
    app.messages.clear();
    CHU_SHP shp(base + ".shp");
    EXPECT_EQ(shp.GetNumObjects(), c.opens ? 1 : 0) << c.what;
    EXPECT_EQ(app.messages.size(), c.opens ? 0u : 1u) << c.what;
    CHU_DPolygonArray polygons;
    polygons.push_back(std::make_unique<CHU_DPolygon>());
    polygons[0]->AddPt(1, 2, 3);
    EXPECT_EQ(std::pair(shp.GetPolygon(0, polygons), shp.GetObjectType(0)), std::pair(0, 0)) << c.what;
    ASSERT_EQ(polygons.size(), 1u);
    EXPECT_EQ(polygons[0]->GetCount(), 1);
    EXPECT_TRUE(shp.WriteData(dir.File("dump.txt")));
  }
}

TEST_F(ShpReaderTest, TableWhoseRecordLengthDisagreesWithItsSize) {
  const std::string base = dir.File("r");
  hytest::WriteShapes(base, SHPT_POINT, {TestShape{{}, {1}, {2}, {}}, TestShape{{}, {3}, {4}, {}}}, {"one", "two"});
  // Longer records than the file holds: the first reads (as garbage), the second is
  // past the end and cannot be read.
  Patch(base + ".dbf", kDbfRecordLength, std::string("\x14\x00", 2));
  {
    CHU_SHP shp(base + ".shp");
    std::string text;
    EXPECT_EQ(shp.GetNumDataItems(), 1);
    EXPECT_TRUE(shp.GetSHPData(0, 0, text));
    EXPECT_FALSE(shp.GetSHPData(1, 0, text) || shp.CompareShapeData(1, 0, "two"));
  }
  // Records shorter than their fields: the table is refused.
  Patch(base + ".dbf", kDbfRecordLength, std::string("\x04\x00", 2));
  app.messages.clear();
  CHU_SHP shp(base + ".shp");
  EXPECT_EQ(std::pair(shp.GetNumObjects(), shp.GetNumDataItems()), std::pair(2, 0));
  ASSERT_EQ(app.messages.size(), 1u);
  EXPECT_EQ(app.messages[0].text, "Invalid Shape file DBF");
}

TEST_F(ShpReaderTest, AttributeDescriptionsAndComparisonsFollowTheFieldType) {
  const std::string base = dir.File("attr");
  hytest::WriteShapes(base, SHPT_POINT, {TestShape{{}, {1}, {2}, {}}});
  {
    HU_DBFHandlePtr dbf(DBFCreate(base.c_str()));
    DBFAddField(dbf.get(), "STREET", FTString, 12, 0);
    DBFAddField(dbf.get(), "LANES", FTInteger, 5, 0);
    DBFAddField(dbf.get(), "LEVEL", FTDouble, 10, 3);
    DBFAddField(dbf.get(), "OPEN", FTLogical, 1, 0);
    DBFWriteStringAttribute(dbf.get(), 0, 0, "Main St");
    DBFWriteIntegerAttribute(dbf.get(), 0, 1, 7);
    DBFWriteDoubleAttribute(dbf.get(), 0, 2, 2.5);
    DBFWriteLogicalAttribute(dbf.get(), 0, 3, 'T');
  }
  CHU_SHP shp(base + ".shp");
  ASSERT_EQ(shp.GetNumDataItems(), 4);
  const std::vector<std::array<std::string, 3>> expected = {
      {"string", "STREET (12 Char)", "STREET"},
      {"int", "LANES (Integer)", "LANES"},
      {"double", "LEVEL (Double)", "LEVEL"},
      {"Invalid/Undefined Data", "Invalid/Undefined Data", "Invalid/Undefined Data"},
      {"Invalid/Undefined Data", "Invalid/Undefined Data", "Invalid/Undefined Data"},
  };
  for (int field = 0; field < 5; ++field) {
    std::array<std::string, 3> got;
    shp.GetDataType(field, got[0]);
    shp.GetDataStr(field, got[1]);
    shp.GetDataStrShort(field, got[2]);
    EXPECT_EQ(got, expected[static_cast<std::size_t>(field)]) << field;
  }
  struct Compare {
    int record, field;
    const char* value;
    bool equal;
  };
  for (const Compare c : {Compare{0, 0, "Main St", true}, Compare{0, 0, "Main St ", false},
                          Compare{0, 0, "main st", false}, Compare{0, 1, "007", true}, Compare{0, 1, " 7", true},
                          Compare{0, 1, "8", false}, Compare{0, 2, "2.50", true}, Compare{0, 2, "2.5001", false},
                          Compare{0, 3, "T", false}, Compare{-1, 0, "Main St", false}, Compare{0, 4, "", false},
                          Compare{1, 0, "Main St", false}})
    EXPECT_EQ(shp.CompareShapeData(c.record, c.field, c.value), c.equal) << c.field << " " << c.value;
}

TEST_F(ShpReaderTest, DumpListsHeaderAndEachShapeWithoutVertices) {
  hytest::WriteShapes(dir.File("dump"), SHPT_POLYGON,
                      {hytest::SquareWithHole(), TestShape{{0}, {-1.5, -1, -2, -1.5}, {-2, 3.25, 1, -2}, {}}}, {"a", "b"});
  CHU_SHP shp(dir.File("dump.shp"));
  const auto previous = std::filesystem::current_path();
  std::filesystem::current_path(dir.path());
  EXPECT_TRUE(shp.WriteData());
  std::filesystem::current_path(previous);
  EXPECT_EQ(hytest::ReadFileBytes(dir.File("shapef.txt")),
            "Shapefile Type: Polygon   # of Shapes: 2\n\n"
            "File Bounds Min : (      -2.000,      -2.000,0,0)\n"
            "File Bounds Max : (      10.000,      10.000,0,0)\n"
            "\nShape:0 (Polygon)  nVertices=10, nParts=2\n"
            "  Bounds:(       0.000,       0.000, 0, 0)\n"
            "      to (      10.000,      10.000, 0, 0)\n\n"
            "\nShape:1 (Polygon)  nVertices=4, nParts=1\n"
            "  Bounds:(      -2.000,      -2.000, 0, 0)\n"
            "      to (      -1.000,       3.250, 0, 0)\n\n");
}

class RectProbe : public CHU_SHP {
 public:
  using CHU_SHP::CHU_SHP;
  using CHU_SHP::IsSHPObjectInRect;
};

TEST_F(ShpReaderTest, RectangleTestCountsTouchingEdgesAsOverlap) {
  hytest::WriteShapes(dir.File("rect"), SHPT_POLYGON, {hytest::SquareWithHole()});
  RectProbe shp(dir.File("rect.shp"));
  const HU_SHPObjectPtr shape = shp.ReadObject(0);
  ASSERT_TRUE(shape);
  struct Case {
    double left, top, right, bottom;
    bool inside;
  };
  for (const Case c : {Case{10, 20, 20, 10, true}, Case{-5, 0, 0, -5, true}, Case{10.01, 5, 20, 0, false},
                       Case{2, -0.01, 3, -1, false}, Case{2, 8, 3, 1, true}})
    EXPECT_EQ(shp.IsSHPObjectInRect(shape.get(), CHU_DRect(c.left, c.top, c.right, c.bottom)), c.inside) << c.left;
  EXPECT_FALSE(shp.IsSHPObjectInRect(nullptr, CHU_DRect(0, 10, 10, 0)));
}

TEST_F(ShpReaderTest, CreatableByRuntimeClassName) {
  const auto object = CHU_RuntimeClassRegistry::Create("CHU_SHP");
  ASSERT_TRUE(object);
  EXPECT_TRUE(object->IsKindOf("CHU_SHP"));
  EXPECT_EQ(static_cast<CHU_SHP*>(object.get())->GetNumObjects(), 0);
}

}  // namespace
