// CHU_SHPExport: what is written reads back through CHU_SHP unchanged, and the
// writer's preconditions refuse what it cannot write.
#include <gtest/gtest.h>

#include <tuple>

#include "formats/shp_test_files.h"
#include "hy_util/formats/shp_export.h"
#include "support/recording_application.h"
#include "support/temp_dir.h"

namespace {

using Vertex = std::tuple<double, double, double>;

CHU_DPolygon Triangle() {
  CHU_DPolygon p;
  p.AddPt(0.25, 0.5, 1);
  p.AddPt(10, 0.5, 2);
  p.AddPt(5, 8.125, 3);
  return p;
}

CHU_DPolygon Square(double x0, double y0, double size, bool clockwise) {
  CHU_DPolygon p;
  const double xs[] = {x0, x0 + size, x0 + size, x0}, ys[] = {y0, y0, y0 + size, y0 + size};
  for (int i = 0; i < 4; ++i) {
    const int at = clockwise ? 3 - i : i;
    p.AddPt(xs[at], ys[at], i);
  }
  return p;
}

std::vector<Vertex> Vertices(const CHU_DPolyLine& chain) {
  std::vector<Vertex> out;
  for (int i = 0; i < chain.GetCount(); ++i) out.emplace_back(chain.GetAt(i)->x, chain.GetAt(i)->y, chain.GetAt(i)->z);
  return out;
}

class ShpExportTest : public ::testing::Test {
 protected:
  hytest::RecordingApplication app;
  hytest::TempDir dir;
};

TEST_F(ShpExportTest, EveryKindRoundTripsWithItsAttributes) {
  const double kNull = CHU_DPoint::C_NULL_VALL;
  struct Case {
    int type;
    std::vector<Vertex> expected;
  };
  const Case cases[] = {
      {SHPT_POINT, {{0.25, 0.5, kNull}}},
      {SHPT_POINTZ, {{0.25, 0.5, 1}}},
      {SHPT_ARC, {{0.25, 0.5, kNull}, {10, 0.5, kNull}, {5, 8.125, kNull}}},
      {SHPT_ARCZ, {{0.25, 0.5, 1}, {10, 0.5, 2}, {5, 8.125, 3}}},
      {SHPT_POLYGON, {{0.25, 0.5, kNull}, {10, 0.5, kNull}, {5, 8.125, kNull}}},
      {SHPT_POLYGONZ, {{0.25, 0.5, 1}, {10, 0.5, 2}, {5, 8.125, 3}}},
  };
  for (const Case& c : cases) {
    const std::string base = dir.File("k" + std::to_string(c.type));
    {
      CHU_SHPExport out(base);
      out.SetShapeType(c.type);
      ASSERT_TRUE(out.CreateFiles());
      ASSERT_TRUE(out.AddStringField("NAME", 16));
      ASSERT_TRUE(out.AddIntField("COUNT", 6));
      ASSERT_TRUE(out.AddDoubleField("LEVEL", 12, 3));
      const CHU_DPolygon t = Triangle();
      for (int id = 0; id < 2; ++id) {
        if (c.type == SHPT_POINT || c.type == SHPT_POINTZ) EXPECT_TRUE(out.CreatePoint(id, t.GetAt(0)));
        else if (c.type == SHPT_ARC || c.type == SHPT_ARCZ) EXPECT_TRUE(out.CreatePolyline(id, &t));
        else EXPECT_TRUE(out.CreatePolygon(id, &t));
        EXPECT_TRUE(out.CreateRecord(id, 0, std::string(id == 0 ? "Culvert \"A\"" : "B")));
        EXPECT_TRUE(out.CreateRecord(id, 1, -42 - id));
        EXPECT_TRUE(out.CreateRecord(id, 2, 12.375 + id));
      }
    }
    CHU_SHP in(base + ".shp");
    ASSERT_EQ(in.GetNumObjects(), 2) << c.type;
    EXPECT_EQ(in.GetObjectType(1), c.type);
    std::vector<Vertex> got;
    if (c.type == SHPT_POINT || c.type == SHPT_POINTZ) {
      CHU_DPoint p;
      EXPECT_TRUE(in.GetPoint(1, p));
      got = {{p.x, p.y, p.z}};
    } else if (c.type == SHPT_ARC || c.type == SHPT_ARCZ) {
      CHU_DPolyLineArray lines;
      EXPECT_EQ(in.GetPolyLine(1, lines), 1);
      got = Vertices(*lines[0]);
    } else {
      CHU_DPolygonArray polygons;
      EXPECT_EQ(in.GetPolygon(1, polygons), 1);
      got = Vertices(*polygons[0]);
    }
    EXPECT_EQ(got, c.expected) << c.type;
    std::vector<std::string> values(3);
    for (int f = 0; f < 3; ++f) in.GetSHPData(0, f, values[static_cast<std::size_t>(f)]);
    EXPECT_EQ(hytest::DataTypes(in, 3), (std::vector<std::string>{"string", "int", "double"}));
    EXPECT_EQ(values, (std::vector<std::string>{"Culvert \"A\"", "-42", "12.375"}));
    EXPECT_TRUE(in.CompareShapeData(1, 2, "13.375"));
  }
}

TEST_F(ShpExportTest, ZValuesRepeatOverTheVerticesAndRingsAreWrittenAsGiven) {
  {
    CHU_SHPExport out(dir.File("z.shp"));
    out.SetShapeType(SHPT_POLYGONZ);
    ASSERT_TRUE(out.CreateFiles());
    const CHU_DPolygon t = Triangle();
    const std::vector<double> one{7.5}, two{1, -1}, none;
    EXPECT_TRUE(out.CreatePolygon(0, &t, &one));
    EXPECT_TRUE(out.CreatePolygon(1, &t, &two));
    EXPECT_TRUE(out.CreatePolygon(2, &t, &none));
  }
  CHU_SHP in(dir.File("z.shp"));
  CHU_DPolygonArray polygons;
  for (int i = 0; i < 3; ++i) EXPECT_EQ(in.GetPolygon(i, polygons), 1);
  ASSERT_EQ(polygons.size(), 3u);
  const std::vector<std::vector<double>> z = {{7.5, 7.5, 7.5}, {1, -1, 1}, {1, 2, 3}};
  for (std::size_t i = 0; i < 3; ++i) {
    EXPECT_EQ(polygons[i]->GetCount(), 3);  // not closed by the writer
    for (int v = 0; v < 3; ++v) EXPECT_EQ(polygons[i]->GetAt(v)->z, z[i][static_cast<std::size_t>(v)]) << i;
  }
}

TEST_F(ShpExportTest, PreconditionsRefuseWhatCannotBeWritten) {
  CHU_SHPExport untyped(dir.File("u.shp"));
  EXPECT_FALSE(untyped.CreateFiles());
  EXPECT_FALSE(untyped.AddIntField("N", 4));
  const CHU_DPolygon t = Triangle();
  EXPECT_FALSE(untyped.CreatePolygon(0, &t));

  CHU_SHPExport out(dir.File("p.shp"));
  out.SetShapeType(SHPT_ARC);
  ASSERT_TRUE(out.CreateFiles());
  EXPECT_FALSE(out.AddStringField("", 10));
  EXPECT_FALSE(out.AddStringField("S", 0));
  EXPECT_FALSE(out.AddDoubleField("D", 10, -1));
  ASSERT_TRUE(out.AddStringField("S", 10));
  CHU_DPolyLine single;
  single.AddPt(1, 1, 1);
  EXPECT_FALSE(out.CreatePolyline(-1, &t));
  EXPECT_FALSE(out.CreatePolyline(0, nullptr));
  EXPECT_FALSE(out.CreatePolyline(0, &single));
  EXPECT_FALSE(out.CreateRecord(-1, 0, std::string("x")));
  EXPECT_FALSE(out.CreateRecord(0, 0, std::string()));
  EXPECT_FALSE(out.CreateRecord(0, 1, std::string("no such field")));
  EXPECT_TRUE(out.CreatePolyline(0, &t));
  out.CloseFiles();
  CHU_SHP in(dir.File("p.shp"));
  EXPECT_EQ(in.GetNumObjects(), 1);
  EXPECT_EQ(in.GetNumRecords(), 0);  // no attribute was written
  EXPECT_TRUE(app.messages.empty());
}

TEST_F(ShpExportTest, RingsAreClosedAndWoundAsShapefilesWantAndPartsKeptAsGiven) {
  {
    CHU_SHPExport rings(dir.File("rings.shp"));
    rings.SetShapeType(SHPT_POLYGON);
    ASSERT_TRUE(rings.CreateFiles());
    const CHU_DPolygon outer = Square(0, 0, 10, false), hole = Square(2, 2, 2, true), tiny = Square(0, 0, 0, false);
    CHU_DPolyLine single;
    single.AddPt(1, 1, 1);
    EXPECT_TRUE(rings.CreatePolygonRings(0, {&outer, &single, &hole}));
    EXPECT_FALSE(rings.CreatePolygonRings(1, {&single}));
    CHU_SHPExport lines(dir.File("lines.shp"));
    lines.SetShapeType(SHPT_ARCZ);
    ASSERT_TRUE(lines.CreateFiles());
    EXPECT_TRUE(lines.CreatePolylineParts(0, {&outer, &hole}));
    CHU_SHPExport multi(dir.File("multi.shp"));
    multi.SetShapeType(SHPT_MULTIPOINTZ);
    ASSERT_TRUE(multi.CreateFiles());
    EXPECT_TRUE(multi.CreateMultiPoint(0, outer));
    EXPECT_FALSE(multi.CreateMultiPoint(1, CHU_DPolyLine()));
  }
  CHU_SHP rings(dir.File("rings.shp"));
  ASSERT_EQ(rings.GetNumObjects(), 1);
  CHU_DPolygonArray polygons;
  ASSERT_EQ(rings.GetPolygon(0, polygons), 2);
  for (const auto& ring : polygons) {
    ASSERT_EQ(ring->GetCount(), 5);
    EXPECT_EQ(Vertices(*ring).front(), Vertices(*ring).back());
  }
  EXPECT_LT(polygons[0]->GetSignedArea(), 0);  // outer ring clockwise
  EXPECT_GT(polygons[1]->GetSignedArea(), 0);  // hole anticlockwise

  CHU_SHP lines(dir.File("lines.shp"));
  CHU_DPolyLineArray parts;
  ASSERT_EQ(lines.GetPolyLine(0, parts), 2);
  EXPECT_EQ(Vertices(*parts[1]), Vertices(Square(2, 2, 2, true)));

  CHU_SHP multi(dir.File("multi.shp"));
  CHU_DPointArray points;
  ASSERT_EQ(multi.GetMultiPoint(0, points), 4);
  EXPECT_EQ(std::make_tuple(points[2]->x, points[2]->y, points[2]->z), std::make_tuple(10.0, 10.0, 2.0));
}

}  // namespace
