// "hyutil vector" and "hyutil grid average" on shapefiles and MIF/MID files, run
// as a user runs them.
#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

#include <tuple>

#include "formats/shp_test_files.h"
#include "grids/binary_grid_test_writer.h"
#include "hy_util/formats/shp_export.h"
#include "support/run_hyutil.h"

#ifdef HYUTIL_PATH

namespace {

using hytest::ToolRun;

class VectorToolTest : public ::testing::Test {
 protected:
  ToolRun Hyutil(const std::string& args) { return hytest::RunHyutil(dir, args); }

  // Two polygon objects: a square with a hole ("Pond", depth 2.5, 3 lanes) and a
  // triangle ("Field, north", 0.125, -1).
  std::string WritePolygons(const std::string& name) {
    const std::string base = dir.File(name);
    hytest::WriteShapes(base, SHPT_POLYGON,
                        {hytest::SquareWithHole(), {{0}, {20, 30, 25, 20}, {1, 1, 6, 1}, {}}});
    HU_DBFHandlePtr dbf(DBFCreate(base.c_str()));
    DBFAddField(dbf.get(), "NAME", FTString, 20, 0);
    DBFAddField(dbf.get(), "DEPTH", FTDouble, 12, 3);
    DBFAddField(dbf.get(), "LANES", FTInteger, 4, 0);
    for (const auto& [row, name, depth, lanes] :
         {std::tuple(0, "Pond", 2.5, 3), std::tuple(1, "Field, north", 0.125, -1)}) {
      DBFWriteStringAttribute(dbf.get(), row, 0, name);
      DBFWriteDoubleAttribute(dbf.get(), row, 1, depth);
      DBFWriteIntegerAttribute(dbf.get(), row, 2, lanes);
    }
    return base + ".shp";
  }

  hytest::TempDir dir;
};

TEST_F(VectorToolTest, InfoCountsKindsRingsAndColumns) {
  const std::string shp = WritePolygons("p");
  const ToolRun text = Hyutil("vector info " + shp);
  EXPECT_EQ(text.status, 0) << text.err;
  EXPECT_NE(text.out.find("format:   ESRI shapefile (Polygon)\nobjects:  2\n  Polygon:     2 (3 rings), 14 vertices\n"
                          "bounds:   0 0 to 30 10\n"),
            std::string::npos)
      << text.out;
  const auto json = nlohmann::json::parse(Hyutil("vector info --json " + shp).out);
  EXPECT_EQ(json["kinds"]["Polygon"]["rings"], 3);
  EXPECT_EQ(json["columns"][1]["type"], "double");
  EXPECT_EQ(json["columns"][1]["decimals"], 3);
  EXPECT_EQ(json["columns"][2]["type"], "integer");
}

TEST_F(VectorToolTest, ConvertToMifAndBackKeepsRingsValuesAndTypes) {
  const std::string shp = WritePolygons("p");
  const ToolRun toMif = Hyutil("vector convert --quiet " + shp + " " + dir.File("p.mif"));
  ASSERT_EQ(toMif.status, 0) << toMif.err;
  const std::string mif = hytest::ReadFileBytes(dir.File("p.mif"));
  EXPECT_NE(mif.find("Columns 3\n  NAME Char(20)\n  DEPTH Float\n  LANES Integer\nData\n"), std::string::npos) << mif;
  // Closed rings are written once closed: 5 stored vertices give a count of 5.
  EXPECT_NE(mif.find("Region  2\n5\n0.00 0.00\n"), std::string::npos) << mif;
  EXPECT_EQ(hytest::ReadFileBytes(dir.File("p.mid")), "\"Pond\",2.500,3\n\"Field, north\",0.125,-1\n");

  const ToolRun back = Hyutil("vector convert " + dir.File("p.mif") + " " + dir.File("back.shp"));
  ASSERT_EQ(back.status, 0) << back.err;
  EXPECT_NE(back.out.find(dir.File("back.shp") + " (2 polygons)"), std::string::npos) << back.out;
  CHU_SHP in(dir.File("back.shp"));
  CHU_DPolygonArray rings;
  ASSERT_EQ(in.GetPolygon(0, rings), 2);
  EXPECT_EQ(rings[0]->GetCount(), 5);
  EXPECT_LT(rings[0]->GetSignedArea(), 0);  // outer ring clockwise, as shapefiles want
  EXPECT_EQ(hytest::DataTypes(in, 3), (std::vector<std::string>{"string", "double", "int"}));
  EXPECT_TRUE(in.CompareShapeData(1, 0, "Field, north"));
  EXPECT_TRUE(in.CompareShapeData(1, 1, "0.125"));
  EXPECT_TRUE(in.CompareShapeData(1, 2, "-1"));
}

TEST_F(VectorToolTest, MixedMifIsSplitIntoOneShapefilePerKind) {
  const std::string mif = dir.Write("m.mif",
                                    "Version 300\nCharset \"Neutral\"\nDelimiter \",\"\nColumns 1\n  ID Integer\nData\n"
                                    "Point 1 2\nPline 2\n0 0\n1 1\nText \"label\"\n 0 0 1 1\n"
                                    "Region 1\n4\n0 0\n1 0\n0 1\n0 0\nPoint 3 4\n");
  dir.Write("m.mid", "1\n2\n3\n4\n   5\n");  // values aligned with blanks, as some writers do
  const ToolRun run = Hyutil("vector convert " + mif + " " + dir.File("out.shp"));
  ASSERT_EQ(run.status, 0) << run.err;
  for (const char* name : {"out_points.shp (2 points)", "out_lines.shp (1 line)", "out_polygons.shp (1 polygon)"})
    EXPECT_NE(run.out.find(name), std::string::npos) << run.out;
  EXPECT_NE(run.err.find("1 object of kind Text not written"), std::string::npos) << run.err;
  CHU_SHP points(dir.File("out_points.shp"));
  EXPECT_TRUE(points.CompareShapeData(1, 0, "5"));
}

TEST_F(VectorToolTest, DumpJsonIsGeoJsonWithHolesInsideTheirPolygons) {
  const ToolRun run = Hyutil("vector dump --json " + WritePolygons("p"));
  ASSERT_EQ(run.status, 0) << run.err;
  const auto json = nlohmann::json::parse(run.out);
  EXPECT_EQ(json["type"], "FeatureCollection");
  const auto& first = json["features"][0];
  EXPECT_EQ(first["geometry"]["type"], "Polygon");
  EXPECT_EQ(first["geometry"]["coordinates"].size(), 2u);
  EXPECT_EQ(first["geometry"]["coordinates"][1][0], nlohmann::json::array({2.0, 2.0}));
  EXPECT_EQ(first["properties"], nlohmann::json::parse(R"({"NAME":"Pond","DEPTH":2.5,"LANES":3})"));

  // Latin-1 text of an older table comes out as UTF-8, as JSON must be.
  hytest::WriteShapes(dir.File("latin"), SHPT_POINT, {{{}, {1}, {2}, {}}}, {"Caf\xe9"});
  const auto latin = nlohmann::json::parse(Hyutil("vector dump --json " + dir.File("latin.shp")).out);
  EXPECT_EQ(latin["features"][0]["properties"]["NAME"], "Caf\xc3\xa9");

  // Two rings side by side are two polygons.
  hytest::WriteShapes(dir.File("two"), SHPT_POLYGON,
                      {{{0, 4}, {0, 0, 1, 0, 5, 5, 6, 5}, {0, 1, 0, 0, 5, 6, 5, 5}, {}}}, {"x"});
  const auto two = nlohmann::json::parse(Hyutil("vector dump --json " + dir.File("two.shp")).out);
  EXPECT_EQ(two["features"][0]["geometry"]["type"], "MultiPolygon");
  EXPECT_EQ(two["features"][0]["geometry"]["coordinates"].size(), 2u);
}

TEST_F(VectorToolTest, BadInputsExitOneAndBadArgumentsTwo) {
  const std::string shp = WritePolygons("p");
  const std::pair<std::string, std::string> unreadable[] = {
      {"vector info " + dir.File("none.shp"), "Unable to open: " + dir.File("none.shp")},
      {"vector dump " + dir.Write("x.txt", "POINT (1 2)\n"), "x.txt' is neither a shapefile"},
      {"vector info " + dir.Write("h.mif", "Version 300\nColumns x\n"), "h.mif"}};
  for (const auto& [args, named] : unreadable) {
    const ToolRun run = Hyutil(args);
    EXPECT_EQ(run.status, 1) << args;
    EXPECT_NE(run.err.find(named), std::string::npos) << run.err;
  }
  EXPECT_EQ(Hyutil("vector convert " + shp + " " + shp).status, 2);
  EXPECT_EQ(Hyutil("vector convert " + shp + " " + dir.File("o.gpkg")).status, 2);
  EXPECT_EQ(Hyutil("vector info").status, 2);
}

TEST_F(VectorToolTest, GridAverageTakesPolygonsFromAShapefileWithTheirFirstAttribute) {
  hytest::TestGrid g = hytest::MakeGrid(40, 20, 0, 0, 1, [](int, int c) { return static_cast<float>(c); });
  const std::string grid = dir.Write("g.hybg", hytest::GridFileBytes(g));
  const ToolRun run = Hyutil("grid average " + grid + " --polygons " + WritePolygons("p"));
  EXPECT_EQ(run.status, 0) << run.err;
  EXPECT_EQ(run.out.substr(0, run.out.find('\n')), "id,NAME,code,status,value");
  EXPECT_NE(run.out.find("\n0,Pond,1,unsupported,\n1,\"Field, north\",0,ok,25"), std::string::npos) << run.out;
  EXPECT_NE(run.err.find("shape 0: polygon with holes or several parts is not supported"), std::string::npos)
      << run.err;
  const auto json = nlohmann::json::parse(Hyutil("grid average --json " + grid + " --polygons " + dir.File("p.shp")).out);
  EXPECT_EQ(json[1]["label"], "Field, north");
  EXPECT_EQ(json[1]["status"], "ok");
}

}  // namespace

#endif  // HYUTIL_PATH
