// Import of hand-written MIF/MID pairs: the keyword table, every reader, the
// header, MID rows with delimiters and quotes, elevations, and damaged files.

#include <gtest/gtest.h>

#include <algorithm>

#include "hy_util/formats/mif_import.h"
#include "mif_test_shapes.h"
#include "support/recording_application.h"
#include "support/temp_dir.h"

using namespace miftest;

namespace {

// The data file's bytes with every LF turned into CR LF.
std::string WithCrLf(const std::string& bytes) {
  std::string out;
  for (const char c : bytes) {
    if (c == '\n') out += '\r';
    out += c;
  }
  return out;
}

// A copy of a data pair in a scratch folder, with LF or CR LF line ends.
struct Pair {
  hytest::TempDir dir;
  std::string mid;
  std::string mif;
  Pair(const std::string& name, bool crlf) {
    auto copy = [&](const std::string& ext) {
      const std::string bytes = hytest::ReadFileBytes(DataFile(name + ext));
      return dir.Write(name + ext, crlf ? WithCrLf(bytes) : bytes);
    };
    mid = copy(".mid");
    mif = copy(".mif");
  }
};

// A pair written from text, for the damaged-file cases.
struct TextPair {
  hytest::TempDir dir;
  std::string mid;
  std::string mif;
  TextPair(const std::string& mifText, const std::string& midText)
      : mid(dir.Write("t.mid", midText)), mif(dir.Write("t.mif", mifText)) {}
};

const std::string kHeader = "Version 300\nCharset \"Neutral\"\nDelimiter \",\"\nColumns 1\n  Name Char(10)\nData\n";

}  // namespace

class MifKeywordTable : public testing::TestWithParam<bool> {};

TEST_P(MifKeywordTable, EveryKeywordGivesItsCodePartCountAndRow) {
  Pair pair("import_every_keyword", GetParam());
  CHU_MIDMIFFileImport in(pair.mid, pair.mif, 1, 0);
  ASSERT_TRUE(in.OpenFiles());
  ASSERT_TRUE(in.ReadHeader()) << in.GetLastError();

  struct Expected {
    int code;
    int parts;
    const char* name;  // first MID value
  };
  const Expected expected[] = {
      {MIF_POINT, 1, "point"},           // second token "1.5" read as an integer
      {MIF_LINE, 0, "line; with delimiter"},
      {MIF_PLINE, 3, "pline"},
      {MIF_PLINE, 1, "two\nlines"},      // no second token
      {MIF_PLINE, 2, "say \"multi\""},   // "Pline Multiple 2"
      {MIF_REGION, 2, "holed"},
      {MIF_REGION, 1, "padded"},
      {MIF_RECT, 10, "rect"},
      {MIF_ROUNDRECT, 0, "roundrect"},
      {MIF_ELLIPSE, 0, "ellipse"},
      {MIF_ARC, 0, "arc"},
      {MIF_TEXT, 1, "text"},
      {MIF_MULTIPOINT, 2, "multipoint"},
      {MIF_COLLECTION, 2, "collection"},
      {MIF_PLINE, 2, "collection"},      // members share the collection's row
      {MIF_POINT, 3, "collection"},
      {MIF_POINT, 4, "last"},
  };
  for (const Expected& e : expected) {
    SCOPED_TRACE(e.name);
    EXPECT_EQ(in.ReadNextDataType(), e.code);
    EXPECT_EQ(in.GetNumOfParts(), e.parts);
    EXPECT_EQ(in.GetMIDValue(0), e.name);
  }
  EXPECT_EQ(in.ReadNextDataType(), MIF_END_OF_FILE);
  EXPECT_EQ(in.ReadNextDataType(), MIF_END_OF_FILE);
}

INSTANTIATE_TEST_SUITE_P(LineEnds, MifKeywordTable, testing::Values(false, true),
                         [](const auto& info) { return info.param ? "CrLf" : "Lf"; });

TEST(MifImportTest, HeaderTextsColumnsAndWrappedBounds) {
  Pair pair("import_every_keyword", false);
  CHU_MIDMIFFileImport in(pair.mid, pair.mif, 1, 0);
  ASSERT_TRUE(in.OpenFiles());
  ASSERT_TRUE(in.ReadHeader());
  EXPECT_EQ(in.GetVersion(), "300");
  EXPECT_EQ(in.GetCharset(), "\"WindowsLatin1\"");
  EXPECT_EQ(in.GetDelimiter(), "\";\"");
  EXPECT_EQ(in.GetDelimiterChar(), ';');
  EXPECT_EQ(in.GetCoordSys(), "NonEarth Units \"m\"");  // Bounds on the next line belong to it
  double x0, y0, x1, y1;
  ASSERT_TRUE(in.GetBounds(x0, y0, x1, y1));
  EXPECT_EQ(std::vector<double>({x0, y0, x1, y1}), std::vector<double>({-10.5, -20, 110, 220.25}));

  ASSERT_EQ(in.GetNumDataItems(), 4);
  std::vector<std::string> described;
  for (int i = 0; i < 4; ++i) in.GetDataStr(i, described.emplace_back());
  EXPECT_EQ(described, std::vector<std::string>({"Name Char(20)", "Depth Float", "Count Integer", "Built Undefined"}));
  EXPECT_EQ(in.GetDataItem(1)->GetSize(), -1);  // written back with three decimals
  EXPECT_EQ(in.GetDataItem(4), nullptr);
}

TEST(MifImportTest, ReadersGiveTheGeometryOfTheirObject) {
  Pair pair("import_every_keyword", false);
  CHU_MIDMIFFileImport in(pair.mid, pair.mif, 1, 0);
  ASSERT_TRUE(in.OpenFiles());
  ASSERT_TRUE(in.ReadHeader());

  std::string rest;
  ASSERT_EQ(in.ReadNextDataType(&rest), MIF_POINT);
  EXPECT_EQ(rest, "1.5 2.5");
  CHU_DPointArray points;
  EXPECT_FALSE(in.ReadLine(*std::make_unique<CHU_DPolyLine>()));  // a reader of another kind refuses
  ASSERT_TRUE(in.ReadPoint(points));
  EXPECT_EQ(points.back()->x, 1.5);
  EXPECT_EQ(points.back()->y, 2.5);
  EXPECT_EQ(points.back()->z, CHU_DPoint::C_NULL_VALL);

  ASSERT_EQ(in.ReadNextDataType(), MIF_LINE);
  CHU_DPolyLineArray lines;
  ASSERT_TRUE(in.ReadLine(lines));
  EXPECT_EQ(Coords(*lines.back()), XYs({{0, 0}, {10, 10}}));
  EXPECT_EQ(lines.back()->GetAt(0)->z, CHU_MIDMIFFileImport::kNoElevation);

  ASSERT_EQ(in.ReadNextDataType(), MIF_PLINE);
  ASSERT_TRUE(in.ReadPLine(lines));
  EXPECT_EQ(Coords(*lines.back()), XYs({{0, 0}, {5, 5}, {10, 0}}));

  ASSERT_EQ(in.ReadNextDataType(), MIF_PLINE);
  CHU_DPolyLine counted;
  ASSERT_TRUE(in.ReadPLine(counted));  // the count stands on the next line
  EXPECT_EQ(Coords(counted), XYs({{1, 1}, {2, 2}}));

  ASSERT_EQ(in.ReadNextDataType(), MIF_PLINE);
  const std::size_t before = lines.size();
  ASSERT_TRUE(in.ReadPLine(lines));  // "Pline Multiple": one polyline without vertices
  EXPECT_EQ(lines.back()->GetCount(), 0);
  EXPECT_EQ(lines.size(), before + 1);

  ASSERT_EQ(in.ReadNextDataType(), MIF_REGION);
  CHU_DPolygonArray polygons;
  ASSERT_TRUE(in.ReadRegion(polygons));  // rings of 5 and 4 lines give 4 and 3 vertices
  ASSERT_EQ(polygons.size(), 2u);
  EXPECT_EQ(Coords(*polygons[0]), XYs({{0, 0}, {10, 0}, {10, 10}, {0, 10}}));
  EXPECT_EQ(Coords(*polygons[1]), XYs({{2, 2}, {4, 2}, {3, 4}}));

  ASSERT_EQ(in.ReadNextDataType(), MIF_REGION);
  CHU_DPolygon single;
  ASSERT_TRUE(in.ReadRegion(single));
  EXPECT_EQ(Coords(single), XYs({{0, 0}, {1, 0}, {0, 1}}));

  CHU_DRect rect;
  ASSERT_EQ(in.ReadNextDataType(), MIF_RECT);
  ASSERT_TRUE(in.ReadRect(rect));  // corners given in any order
  EXPECT_EQ(std::vector<double>({rect.Left(), rect.Top(), rect.Right(), rect.Bottom()}),
            std::vector<double>({0, 20, 10, 0}));
  ASSERT_EQ(in.ReadNextDataType(), MIF_ROUNDRECT);
  ASSERT_TRUE(in.ReadRect(rect));
  EXPECT_EQ(rect.Right(), 4);

  ASSERT_EQ(in.ReadNextDataType(), MIF_ELLIPSE);
  ASSERT_EQ(in.ReadNextDataType(), MIF_ARC);  // its angle line is passed over
  ASSERT_EQ(in.ReadNextDataType(), MIF_TEXT);
  std::string text;
  ASSERT_TRUE(in.ReadText(text, rect));
  EXPECT_EQ(text, "Say \"hi\"");
  EXPECT_EQ(std::vector<double>({rect.Left(), rect.Top(), rect.Right(), rect.Bottom()}),
            std::vector<double>({1, 4, 3, 2}));

  ASSERT_EQ(in.ReadNextDataType(), MIF_MULTIPOINT);
  ASSERT_TRUE(in.ReadMultiPoint(points));
  ASSERT_EQ(points.size(), 3u);
  EXPECT_EQ(points[2]->x, 9);

  ASSERT_EQ(in.ReadNextDataType(), MIF_COLLECTION);
  EXPECT_TRUE(in.InCollection());
  ASSERT_EQ(in.ReadNextDataType(), MIF_PLINE);
  ASSERT_TRUE(in.ReadPLineSections(lines));
  EXPECT_EQ(Coords(*lines.back()), XYs({{0, 0}, {1, 1}}));
  double x = 0, y = 0;
  ASSERT_EQ(in.ReadNextDataType(), MIF_POINT);
  ASSERT_TRUE(in.ReadPoint(x, y));
  EXPECT_EQ(x, 3);
  ASSERT_EQ(in.ReadNextDataType(), MIF_POINT);
  EXPECT_FALSE(in.InCollection());
}

TEST(MifImportTest, PlineMultipleSectionsAreReadAsSeparatePolylines) {
  Pair pair("import_every_keyword", false);
  CHU_MIDMIFFileImport in(pair.mid, pair.mif, 1, 0);
  ASSERT_TRUE(in.OpenFiles());
  ASSERT_TRUE(in.ReadHeader());
  for (int i = 0; i < 5; ++i) in.ReadNextDataType();
  CHU_DPolyLineArray sections;
  ASSERT_TRUE(in.ReadPLineSections(sections));
  ASSERT_EQ(sections.size(), 2u);
  EXPECT_EQ(Coords(*sections[0]), XYs({{0, 0}, {1, 0}}));
  EXPECT_EQ(Coords(*sections[1]), XYs({{5, 5}, {6, 6}, {7, 5}}));
}

TEST(MifImportTest, MidRowsHonourDelimiterQuotesAndColumnCount) {
  Pair pair("import_every_keyword", false);
  CHU_MIDMIFFileImport in(pair.mid, pair.mif, 1, 0);
  ASSERT_TRUE(in.OpenFiles());
  ASSERT_TRUE(in.ReadHeader());
  in.ReadNextDataType();
  EXPECT_EQ(in.GetMIDRow(), std::vector<std::string>({"point", "1.5", "1", "20200101"}));
  in.ReadNextDataType();
  EXPECT_EQ(in.GetMIDRow(), std::vector<std::string>({"line; with delimiter", "2", "2", ""}));
  in.ReadNextDataType();
  EXPECT_EQ(in.GetMIDValueCount(), 3);  // a short row: the missing value reads empty
  EXPECT_EQ(in.GetMIDValue(3), "");
  EXPECT_EQ(in.GetMIDValue(-1), "");
  for (int i = 0; i < 11; ++i) in.ReadNextDataType();
  EXPECT_EQ(in.GetMIDValue(0), "collection");
  EXPECT_EQ(in.GetMIDValueCount(), 5);  // values beyond the columns are counted, not kept
  EXPECT_EQ(in.GetMIDRow().size(), 4u);
}

TEST(MifImportTest, ElevationsComeFromTheChosenColumn) {
  Pair pair("import_elevations", false);
  CHU_MIDMIFFileImport in(pair.mid, pair.mif, 1, 0);
  ASSERT_TRUE(in.OpenFiles());
  ASSERT_TRUE(in.ReadHeader());
  EXPECT_FALSE(in.SetElevationColumn(std::string("Height")));
  ASSERT_TRUE(in.SetElevationColumn(std::string("z")));
  EXPECT_EQ(in.GetElevationColumn(), 1);

  auto zs = [](const CHU_DPolyLine& chain) {
    std::vector<double> out;
    for (int i = 0; i < chain.GetCount(); ++i) out.push_back(chain.GetAt(i)->z);
    return out;
  };
  CHU_DPointArray points;
  in.ReadNextDataType();
  ASSERT_TRUE(in.ReadPoint(points));
  EXPECT_EQ(points[0]->z, 5.5);
  CHU_DPolyLineArray lines;
  in.ReadNextDataType();
  ASSERT_TRUE(in.ReadPLine(lines));
  EXPECT_EQ(zs(*lines.back()), std::vector<double>({1, 2, 3}));  // one value per vertex
  in.ReadNextDataType();
  ASSERT_TRUE(in.ReadPLine(lines));
  EXPECT_EQ(zs(*lines.back()), std::vector<double>({1, 2, 1, 2}));  // fewer values repeat
  CHU_DPolygonArray rings;
  in.ReadNextDataType();
  ASSERT_TRUE(in.ReadRegion(rings));
  EXPECT_EQ(zs(*rings[0]), std::vector<double>({7, 7, 7}));
  EXPECT_EQ(zs(*rings[1]), std::vector<double>({7, 7, 7}));  // counted over every ring
  in.ReadNextDataType();
  ASSERT_TRUE(in.ReadLine(lines));
  EXPECT_EQ(zs(*lines.back()), std::vector<double>({-9999.0, -9999.0}));  // not a number

  // An index beyond the columns is no column at all.
  CHU_MIDMIFFileImport other(pair.mid, pair.mif, 1, 0);
  ASSERT_TRUE(other.OpenFiles());
  ASSERT_TRUE(other.ReadHeader());
  other.SetElevationColumn(2);
  CHU_DPointArray plain;
  other.ReadNextDataType();
  ASSERT_TRUE(other.ReadPoint(plain));
  EXPECT_EQ(plain[0]->z, CHU_DPoint::C_NULL_VALL);
  other.ReadNextDataType();
  ASSERT_TRUE(other.ReadPLine(lines));
  EXPECT_EQ(zs(*lines.back()), std::vector<double>(3, -9999.0));
}

TEST(MifImportTest, ReadPointsCollectsEveryPointWithProgress) {
  hytest::RecordingApplication app;
  Pair pair("import_every_keyword", false);
  CHU_MIDMIFFileImport in(pair.mid, pair.mif, 1, 0);
  ASSERT_TRUE(in.OpenFiles());
  ASSERT_TRUE(in.ReadHeader());
  CHU_DPointArray points;
  EXPECT_EQ(in.ReadPoints(points, true), 5);  // three points and a multipoint of two
  EXPECT_EQ(points.back()->x, 4);
  EXPECT_EQ(app.progressSteps, 100);
  EXPECT_EQ(app.progressStops, 1);
  ASSERT_FALSE(app.progressPositions.empty());
  EXPECT_EQ(app.progressPositions.back(), 100);
  EXPECT_TRUE(std::is_sorted(app.progressPositions.begin(), app.progressPositions.end()));
}

TEST(MifImportTest, UnusableHeadersAreRefusedWithTheirReason) {
  struct Case {
    const char* mif;
    bool writeMid;
    const char* message;  // part of GetLastError()
  };
  const Case cases[] = {
      {"Version 300\nColumns 0\n", true, "does not end with a \"Data\" line"},
      {"Version 300\nColumns -2\nData\n", true, "line 2: the column count -2 is negative"},
      {"Columns 2\n a Char(5)\n", true, "line 2: the file ends inside the column list"},
      {"Columns 1\n a Integer\nData\n", false, "cannot be opened"},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.mif);
    hytest::TempDir dir;
    const std::string mif = dir.Write("t.mif", c.mif);
    const std::string mid = c.writeMid ? dir.Write("t.mid", "") : dir.File("t.mid");
    CHU_MIDMIFFileImport in(mid, mif, 1, 0);
    ASSERT_TRUE(in.OpenFiles());
    EXPECT_FALSE(in.ReadHeader());
    EXPECT_NE(in.GetLastError().find(c.message), std::string::npos) << in.GetLastError();
    EXPECT_NE(in.GetLastError().find(mif), std::string::npos);
  }

  hytest::TempDir dir;
  CHU_MIDMIFFileImport missing(dir.File("a.mid"), dir.File("a.mif"), 1, 0);
  EXPECT_FALSE(missing.OpenFiles());
  EXPECT_FALSE(missing.ReadHeader());
  EXPECT_EQ(missing.ReadNextDataType(), MIF_END_OF_FILE);

  // No columns need no MID file; a clause without Bounds leaves them unset.
  const std::string mif = dir.Write("b.mif", "CoordSys Earth Projection 1, 104\nColumns 0\nData\nPoint 1 2\n");
  CHU_MIDMIFFileImport bare(dir.File("b.mid"), mif, 1, 0);
  ASSERT_TRUE(bare.OpenFiles());
  ASSERT_TRUE(bare.ReadHeader());
  double x0 = 1, y0 = 1, x1 = 1, y1 = 1;
  EXPECT_FALSE(bare.GetBounds(x0, y0, x1, y1));
  EXPECT_EQ(x0 + y0 + x1 + y1, 0.0);
  EXPECT_EQ(bare.GetCoordSys(), "Earth Projection 1, 104");
  EXPECT_EQ(bare.ReadNextDataType(), MIF_POINT);
  EXPECT_FALSE(bare.ReadMIDData());
}

TEST(MifImportTest, DamagedObjectsAreRefusedAndReadingResumesAtTheNextObject) {
  struct Case {
    const char* objects;
    int code;
  };
  // Each object is followed by "Point 9 9", which must still be found.
  const Case cases[] = {
      {"Pline 1000000000\n0 0\n1 1\n", MIF_PLINE},  // count beyond the file
      {"Pline -5\n", MIF_PLINE},
      {"Pline\nmany\n", MIF_PLINE},                 // count line not a number
      {"Pline 3\n0 0\n1\n", MIF_PLINE},             // vertex line with one number
      {"Pline 3\n0 0\n1 1\n", MIF_PLINE},           // cut short by the next object
      {"Pline Multiple 2\n2\n0 0\n1 1\n", MIF_PLINE},  // a section missing
      {"Region 3\n4\n0 0\n1 0\n0 1\n0 0\n", MIF_REGION},  // rings missing
      {"Region 1\n-4\n", MIF_REGION},
      {"Region 1\n4\n0 0\nx y\n", MIF_REGION},
      {"MultiPoint 4\n1 1\n", MIF_MULTIPOINT},
      {"Line 0 0 1\n", MIF_LINE},
      {"Line 0 0 a b\n", MIF_LINE},
      {"Rect 0 0\n", MIF_RECT},
      {"Text\n", MIF_TEXT},
      {"Point 1\n", MIF_POINT},
      {"Point x y\n", MIF_POINT},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.objects);
    TextPair pair(kHeader + c.objects + "Point 9 9\n", "\"bad\"\n\"next\"\n");
    CHU_MIDMIFFileImport in(pair.mid, pair.mif, 1, 0);
    ASSERT_TRUE(in.OpenFiles());
    ASSERT_TRUE(in.ReadHeader());
    ASSERT_EQ(in.ReadNextDataType(), c.code);
    CHU_DPointArray points;
    points.push_back(std::make_unique<CHU_DPoint>(1, 1));
    CHU_DPolyLineArray lines(1);
    CHU_DPolygonArray polygons(1);
    CHU_DRect rect;
    std::string text = "kept";
    const bool read = in.ReadPLineSections(lines) || in.ReadPLine(lines) || in.ReadRegion(polygons) ||
                      in.ReadMultiPoint(points) || in.ReadLine(lines) || in.ReadRect(rect) ||
                      in.ReadText(text, rect) || in.ReadPoint(points);
    EXPECT_FALSE(read);
    EXPECT_EQ(points.size(), 1u);  // nothing the caller had is lost, nothing half-read added
    EXPECT_EQ(lines.size(), 1u);
    EXPECT_EQ(polygons.size(), 1u);
    EXPECT_EQ(text, "kept");
    ASSERT_EQ(in.ReadNextDataType(), MIF_POINT);
    EXPECT_EQ(in.GetMIDValue(0), "next");
    ASSERT_TRUE(in.ReadPoint(points));
    EXPECT_EQ(points.back()->x, 9);
  }
}

TEST(MifImportTest, RegionsWithoutRingsOrVerticesAreEmptyNotFailures) {
  TextPair pair(kHeader + "Region 0\nRegion 2\n0\n1\n5 5\nPoint 1 1\n", "a\nb\nc\n");
  CHU_MIDMIFFileImport in(pair.mid, pair.mif, 1, 0);
  ASSERT_TRUE(in.OpenFiles());
  ASSERT_TRUE(in.ReadHeader());
  CHU_DPolygonArray polygons;
  ASSERT_EQ(in.ReadNextDataType(), MIF_REGION);
  EXPECT_TRUE(in.ReadRegion(polygons));
  EXPECT_TRUE(polygons.empty());
  CHU_DPolygon one;
  EXPECT_FALSE(in.ReadRegion(one));  // the single-ring form needs a ring
  ASSERT_EQ(in.ReadNextDataType(), MIF_REGION);
  ASSERT_TRUE(in.ReadRegion(polygons));  // a ring of 0 lines and one of a lone vertex
  ASSERT_EQ(polygons.size(), 2u);
  EXPECT_EQ(polygons[0]->GetCount() + polygons[1]->GetCount(), 0);
  EXPECT_EQ(in.ReadNextDataType(), MIF_POINT);
}

TEST(MifImportTest, BrokenMidRowsStayWithinTheirRow) {
  struct Case {
    const char* mid;
    std::vector<std::string> first;
    std::string second;  // first value of the next row
  };
  const Case cases[] = {
      {"\"open,1\n2\n", {"open,1\n2\n"}, ""},  // unterminated quote runs to the end
      {"a\"b\",\"c\"\"\"\"d\"x,e\nn\n", {"a\"b\"", "c\"\"d", "e"}, "n"},  // quotes inside plain text stay
      {"\n\n", {""}, ""},
      {",,,,,,,,,,,,,,,,,,,\nz\n", {"", "", ""}, "z"},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.mid);
    const std::string mif = "Columns 3\na Char(1)\nb Char(1)\nc Char(1)\nData\nPoint 1 1\nPoint 2 2\n";
    TextPair pair(mif, c.mid);
    CHU_MIDMIFFileImport in(pair.mid, pair.mif, 1, 0);
    ASSERT_TRUE(in.OpenFiles());
    ASSERT_TRUE(in.ReadHeader());
    ASSERT_EQ(in.ReadNextDataType(), MIF_POINT);
    EXPECT_EQ(in.GetMIDRow(), c.first);
    ASSERT_EQ(in.ReadNextDataType(), MIF_POINT);
    EXPECT_EQ(in.GetMIDValue(0), c.second);
  }

  // A quote left open cannot swallow more than one row's worth of the file.
  std::string huge = "\"open\n";
  while (huge.size() < 3 * CHU_MIDMIFFileImport::kMaxRowBytes) huge += std::string(1000, 'x') + "\n";
  TextPair pair("Columns 1\na Char(1)\nData\nPoint 1 1\nPoint 2 2\n", huge + "after\n");
  CHU_MIDMIFFileImport in(pair.mid, pair.mif, 1, 0);
  ASSERT_TRUE(in.OpenFiles());
  ASSERT_TRUE(in.ReadHeader());
  in.ReadNextDataType();
  EXPECT_LE(in.GetMIDValue(0).size(), CHU_MIDMIFFileImport::kMaxRowBytes + 1000);
  in.ReadNextDataType();
  EXPECT_EQ(in.GetMIDValue(0).substr(0, 3), "xxx");
}

TEST(MifImportTest, UnitFlagsAskingForUsUnitsConvertEveryCoordinateReadFromMetres) {
  TextPair pair("CoordSys NonEarth Units \"m\" Bounds (0, -1) (10, 2)\nColumns 1\nz Char(9)\nData\n"
                "Point 1 2\nPline 2\n0 10\n-1 0\n",
                "3\n\"4 5\"\n");
  CHU_MIDMIFFileImport in(pair.mid, pair.mif, 0, 1);
  ASSERT_TRUE(in.OpenFiles());
  ASSERT_TRUE(in.ReadHeader());
  in.SetElevationColumn(0);
  const double ft = 3.28084;
  double x0, y0, x1, y1;
  ASSERT_TRUE(in.GetBounds(x0, y0, x1, y1));
  EXPECT_EQ(std::vector<double>({x0, y0, x1, y1}), std::vector<double>({0, -ft, 10 * ft, 2 * ft}));
  CHU_DPointArray points;
  in.ReadNextDataType();
  ASSERT_TRUE(in.ReadPoint(points));
  EXPECT_EQ(std::vector<double>({points[0]->x, points[0]->y, points[0]->z}), std::vector<double>({ft, 2 * ft, 3 * ft}));
  CHU_DPolyLineArray lines;
  in.ReadNextDataType();
  ASSERT_TRUE(in.ReadPLine(lines));
  EXPECT_EQ(Coords(*lines[0]), XYs({{0, 10 * ft}, {-ft, 0}}));
  EXPECT_EQ(lines[0]->GetAt(1)->z, 5 * ft);
  EXPECT_EQ(in.AdjustUnit(1.0), ft);
  // Any other pair of flags reads values as they are.
  for (auto [a, b] : {std::pair{1, 0}, std::pair{0, 0}, std::pair{1, 1}}) {
    EXPECT_EQ(CHU_MIDMIFFileImport(pair.mid, pair.mif, a, b).AdjustUnit(1.0), 1.0);
  }
}
