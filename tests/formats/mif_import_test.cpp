// Import of hand-written MIF/MID pairs: the keyword table, the readers the round
// trip cannot reach, the header, MID rows, elevations, units and damaged files.

#include <gtest/gtest.h>

#include <algorithm>

#include "hy_util/formats/mif_import.h"
#include "mif_test_shapes.h"
#include "support/recording_application.h"
#include "support/temp_dir.h"

using namespace miftest;

namespace {

// A MIF/MID pair in a scratch folder, opened and its header read.
struct Opened {
  hytest::TempDir dir;
  std::string mid;
  std::string mif;
  std::unique_ptr<CHU_MIDMIFFileImport> in;

  Opened(const std::string& mifText, const std::string& midText, int unitA = 1, int unitB = 0)
      : mid(dir.Write("t.mid", midText)), mif(dir.Write("t.mif", mifText)),
        in(std::make_unique<CHU_MIDMIFFileImport>(mid, mif, unitA, unitB)) {
    EXPECT_TRUE(in->OpenFiles());
    EXPECT_TRUE(in->ReadHeader()) << in->GetLastError();
  }
  // A data pair, optionally with every LF turned into CR LF.
  static std::string Data(const std::string& name, bool crlf = false) {
    std::string out;
    for (const char c : hytest::ReadFileBytes(DataFile(name))) {
      if (c == '\n' && crlf) out += '\r';
      out += c;
    }
    return out;
  }
};

Opened OpenData(const std::string& name, bool crlf = false) {
  return Opened(Opened::Data(name + ".mif", crlf), Opened::Data(name + ".mid", crlf));
}

std::vector<double> Zs(const CHU_DPolyLine& chain) {
  std::vector<double> out;
  for (int i = 0; i < chain.GetCount(); ++i) out.push_back(chain.GetAt(i)->z);
  return out;
}

std::vector<double> Edges(const CHU_DRect& r) { return {r.Left(), r.Top(), r.Right(), r.Bottom()}; }

const std::string kHeader = "Version 300\nCharset \"Neutral\"\nDelimiter \",\"\nColumns 1\n  Name Char(10)\nData\n";

}  // namespace

class MifKeywordTable : public testing::TestWithParam<bool> {};

TEST_P(MifKeywordTable, EveryKeywordGivesItsCodePartCountAndRow) {
  Opened file = OpenData("import_every_keyword", GetParam());
  struct Expected {
    int code;
    int parts;
    const char* name;  // first MID value: quoted, with the delimiter, over two lines, padded
  };
  const Expected expected[] = {
      {MIF_POINT, 1, "point"},  // second token "1.5" read as an integer
      {MIF_LINE, 0, "line; with delimiter"},
      {MIF_PLINE, 3, "pline"},
      {MIF_PLINE, 1, "two\nlines"},  // no second token
      {MIF_PLINE, 2, "say \"multi\""},  // "Pline Multiple 2"
      {MIF_REGION, 2, "holed"},
      {MIF_REGION, 1, "padded"},
      {MIF_RECT, 10, "rect"},
      {MIF_ROUNDRECT, 0, "roundrect"},
      {MIF_ELLIPSE, 0, "ellipse"},
      {MIF_ARC, 0, "arc"},
      {MIF_TEXT, 1, "text"},
      {MIF_MULTIPOINT, 2, "multipoint"},
      {MIF_COLLECTION, 2, "collection"},
      {MIF_PLINE, 2, "collection"},  // members share the collection's row
      {MIF_POINT, 3, "collection"},
      {MIF_POINT, 4, "last"},
  };
  for (const Expected& e : expected) {
    SCOPED_TRACE(e.name);
    EXPECT_EQ(file.in->ReadNextDataType(), e.code);
    EXPECT_EQ(file.in->GetNumOfParts(), e.parts);
    EXPECT_EQ(file.in->GetMIDValue(0), e.name);
  }
  EXPECT_EQ(file.in->ReadNextDataType(), MIF_END_OF_FILE);
  EXPECT_EQ(file.in->ReadNextDataType(), MIF_END_OF_FILE);
}

INSTANTIATE_TEST_SUITE_P(LineEnds, MifKeywordTable, testing::Values(false, true),
                         [](const auto& info) { return info.param ? "CrLf" : "Lf"; });

TEST(MifImportTest, HeaderTextsColumnsAndWrappedBounds) {
  Opened file = OpenData("import_every_keyword");
  CHU_MIDMIFFileImport& in = *file.in;
  EXPECT_EQ(std::vector<std::string>({in.GetVersion(), in.GetCharset(), in.GetDelimiter()}),
            std::vector<std::string>({"300", "\"WindowsLatin1\"", "\";\""}));
  EXPECT_EQ(in.GetDelimiterChar(), ';');
  EXPECT_EQ(in.GetCoordSys(), "NonEarth Units \"m\"");  // Bounds on the next line belong to it
  EXPECT_EQ(Bounds(in), std::vector<double>({-10.5, -20, 110, 220.25}));
  EXPECT_EQ(Columns(in, 4),
            std::vector<std::string>({"Name Char(20)", "Depth Float", "Count Integer", "Built Undefined"}));
  EXPECT_EQ(in.GetColumnTypeText(0), "char (20)");
  EXPECT_EQ(CHU_MIDMIFFileImport::Unquote(in.GetCharset()), "WindowsLatin1");
  EXPECT_EQ(in.GetDataItem(1)->GetSize(), -1);  // written back with three decimals
}

TEST(MifImportTest, ReadersOfTheObjectsARoundTripCannotMake) {
  Opened file = OpenData("import_every_keyword");
  CHU_MIDMIFFileImport& in = *file.in;
  std::string rest;
  CHU_DPointArray points;
  CHU_DPolyLineArray lines;
  CHU_DPolygonArray polygons;
  ASSERT_EQ(in.ReadNextDataType(&rest), MIF_POINT);
  EXPECT_EQ(rest, "1.5 2.5");
  EXPECT_FALSE(in.ReadLine(lines));  // a reader of another kind refuses
  ASSERT_TRUE(in.ReadPoint(points));
  EXPECT_EQ(points.back()->z, CHU_DPoint::C_NULL_VALL);

  ASSERT_EQ(in.ReadNextDataType(), MIF_LINE);
  CHU_DPolyLine line;
  ASSERT_TRUE(in.ReadLine(line));
  EXPECT_EQ(Coords(line), XYs({{0, 0}, {10, 10}}));
  EXPECT_EQ(Zs(line), std::vector<double>(2, CHU_MIDMIFFileImport::kNoElevation));

  in.ReadNextDataType();
  ASSERT_EQ(in.ReadNextDataType(), MIF_PLINE);
  ASSERT_TRUE(in.ReadPLine(line));  // the count stands on the next line
  EXPECT_EQ(Coords(line), XYs({{1, 1}, {2, 2}}));
  ASSERT_EQ(in.ReadNextDataType(), MIF_PLINE);
  ASSERT_TRUE(in.ReadPLine(lines));  // "Pline Multiple": one polyline without vertices
  ASSERT_EQ(lines.size(), 1u);
  EXPECT_EQ(lines[0]->GetCount(), 0);

  ASSERT_EQ(in.ReadNextDataType(), MIF_REGION);
  ASSERT_TRUE(in.ReadRegion(polygons));  // rings of 5 and 4 lines give 4 and 3 vertices
  ASSERT_EQ(polygons.size(), 2u);
  EXPECT_EQ(Coords(*polygons[1]), XYs({{2, 2}, {4, 2}, {3, 4}}));
  ASSERT_EQ(in.ReadNextDataType(), MIF_REGION);
  CHU_DPolygon single;
  ASSERT_TRUE(in.ReadRegion(single));
  EXPECT_EQ(Coords(single), XYs({{0, 0}, {1, 0}, {0, 1}}));

  CHU_DRect rect;
  ASSERT_EQ(in.ReadNextDataType(), MIF_RECT);
  ASSERT_TRUE(in.ReadRect(rect));  // corners given in any order
  EXPECT_EQ(Edges(rect), std::vector<double>({0, 20, 10, 0}));
  ASSERT_EQ(in.ReadNextDataType(), MIF_ROUNDRECT);
  ASSERT_TRUE(in.ReadRect(rect));
  EXPECT_EQ(Edges(rect), std::vector<double>({0, 4, 4, 0}));
  in.ReadNextDataType();
  ASSERT_EQ(in.ReadNextDataType(), MIF_ARC);  // its angle line is passed over
  ASSERT_EQ(in.ReadNextDataType(), MIF_TEXT);
  std::string text;
  ASSERT_TRUE(in.ReadText(text, rect));
  EXPECT_EQ(text, "Say \"hi\"");
  EXPECT_EQ(Edges(rect), std::vector<double>({1, 4, 3, 2}));

  ASSERT_EQ(in.ReadNextDataType(), MIF_MULTIPOINT);
  ASSERT_TRUE(in.ReadMultiPoint(points));
  ASSERT_EQ(points.size(), 3u);
  EXPECT_EQ(points[2]->y, 10);
  ASSERT_EQ(in.ReadNextDataType(), MIF_COLLECTION);
  EXPECT_TRUE(in.InCollection());
  in.ReadNextDataType();
  in.ReadNextDataType();
  ASSERT_EQ(in.ReadNextDataType(), MIF_POINT);
  EXPECT_FALSE(in.InCollection());
}

TEST(MifImportTest, ElevationsComeFromTheChosenColumn) {
  Opened file = OpenData("import_elevations");
  CHU_MIDMIFFileImport& in = *file.in;
  EXPECT_FALSE(in.SetElevationColumn(std::string("Height")));
  ASSERT_TRUE(in.SetElevationColumn(std::string("z")));
  CHU_DPointArray points;
  CHU_DPolyLineArray lines;
  CHU_DPolygonArray rings;
  in.ReadNextDataType();
  ASSERT_TRUE(in.ReadPoint(points));
  EXPECT_EQ(points[0]->z, 5.5);
  in.ReadNextDataType();
  ASSERT_TRUE(in.ReadPLine(lines));
  EXPECT_EQ(Zs(*lines.back()), std::vector<double>({1, 2, 3}));  // one value per vertex
  in.ReadNextDataType();
  ASSERT_TRUE(in.ReadPLine(lines));
  EXPECT_EQ(Zs(*lines.back()), std::vector<double>({1, 2, 1, 2}));  // fewer values repeat
  in.ReadNextDataType();
  ASSERT_TRUE(in.ReadRegion(rings));
  EXPECT_EQ(Zs(*rings[1]), std::vector<double>({7, 7, 7}));  // counted over every ring
  in.ReadNextDataType();
  ASSERT_TRUE(in.ReadLine(lines));
  EXPECT_EQ(Zs(*lines.back()), std::vector<double>({-9999.0, -9999.0}));  // not a number
}

TEST(MifImportTest, UnitFlagsAskingForUsUnitsConvertEveryValueReadFromMetres) {
  Opened file("CoordSys NonEarth Bounds (0, -1) (10, 2)\nColumns 1\nz Char(9)\nData\nPline 2\n0 10\n-1 0\n",
              "\"4 5\"\n", 0, 1);
  file.in->SetElevationColumn(0);
  const double ft = 3.28084;
  EXPECT_EQ(Bounds(*file.in), std::vector<double>({0, -ft, 10 * ft, 2 * ft}));
  CHU_DPolyLine line;
  file.in->ReadNextDataType();
  ASSERT_TRUE(file.in->ReadPLine(line));
  EXPECT_EQ(Coords(line), XYs({{0, 10 * ft}, {-ft, 0}}));
  EXPECT_EQ(Zs(line), std::vector<double>({4 * ft, 5 * ft}));
  for (auto [a, b] : {std::pair{1, 0}, std::pair{0, 0}, std::pair{1, 1}}) {
    EXPECT_EQ(CHU_MIDMIFFileImport(file.mid, file.mif, a, b).AdjustUnit(1.0), 1.0);
  }
}

TEST(MifImportTest, ReadPointsCollectsEveryPointWithProgress) {
  hytest::RecordingApplication app;
  Opened file = OpenData("import_every_keyword");
  CHU_DPointArray points;
  EXPECT_EQ(file.in->ReadPoints(points, true), 5);  // three points and a multipoint of two
  EXPECT_EQ(std::pair(app.progressSteps, app.progressStops), std::pair(100, 1));
  ASSERT_FALSE(app.progressPositions.empty());
  EXPECT_EQ(app.progressPositions.back(), 100);
  EXPECT_TRUE(std::is_sorted(app.progressPositions.begin(), app.progressPositions.end()));
}

TEST(MifImportTest, UnusableHeadersAreRefusedWithTheirReason) {
  struct Case {
    const char* mif;
    bool writeMid;
    const char* message;  // part of GetLastError(), which also names the MIF file
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
    CHU_MIDMIFFileImport in(c.writeMid ? dir.Write("t.mid", "") : dir.File("t.mid"), mif, 1, 0);
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

  // No columns need no MID file; a clause without Bounds leaves them unset; a
  // byte-order mark does not hide the first keyword.
  const std::string bom = "\xEF\xBB\xBF";
  CHU_MIDMIFFileImport bare(dir.File("b.mid"),
                            dir.Write("b.mif", bom + "Version 300\r\nCoordSys Earth Projection 1, 104\nData\n"), 1, 0);
  ASSERT_TRUE(bare.OpenFiles());
  ASSERT_TRUE(bare.ReadHeader());
  double x0 = 1, y0 = 1, x1 = 1, y1 = 1;
  EXPECT_FALSE(bare.GetBounds(x0, y0, x1, y1));
  EXPECT_EQ(std::vector<double>({x0, y0, x1, y1}), std::vector<double>(4, 0.0));
  EXPECT_EQ(bare.GetCoordSys(), "Earth Projection 1, 104");
  EXPECT_EQ(bare.GetVersion(), "300");
  EXPECT_FALSE(bare.ReadMIDData());
}

TEST(MifImportTest, DamagedObjectsAreRefusedAndReadingResumesAtTheNextObject) {
  const char* const cases[] = {
      "Pline 1000000000\n0 0\n1 1\n",  // count beyond the file
      "Pline -5\n",
      "Pline\nmany\n",        // count line not a number
      "Pline 3\n0 0\n1\n",    // vertex line with one number
      "Pline 3\n0 0\n1 1\n",  // cut short by the next object
      "Pline Multiple 2\n2\n0 0\n1 1\n",  // a section missing
      "Region 3\n4\n0 0\n1 0\n0 1\n0 0\n",  // rings missing
      "Region 1\n-4\n",
      "Region 1\n4\n0 0\nx y\n",
      "MultiPoint 4\n1 1\n",
      "Line 0 0 1\n",
      "Line 0 0 a b\n",
      "Rect 0 0\n",
      "Text\n",
      "Point 1\n",
  };
  for (const char* objects : cases) {
    SCOPED_TRACE(objects);
    // Each object is followed by "Point 9 9", which must still be found.
    Opened file(kHeader + objects + "Point 9 9\n", "\"bad\"\n\"next\"\n");
    CHU_MIDMIFFileImport& in = *file.in;
    ASSERT_NE(in.ReadNextDataType(), MIF_END_OF_FILE);
    CHU_DPointArray points(1);
    CHU_DPolyLineArray lines(1);
    CHU_DPolygonArray polygons(1);
    CHU_DRect rect;
    std::string text = "kept";
    EXPECT_FALSE(in.ReadPLineSections(lines) || in.ReadPLine(lines) || in.ReadRegion(polygons) ||
                 in.ReadMultiPoint(points) || in.ReadLine(lines) || in.ReadRect(rect) || in.ReadText(text, rect) ||
                 in.ReadPoint(points));
    // Nothing the caller had is lost, nothing half-read is added.
    EXPECT_EQ(points.size() + lines.size() + polygons.size(), 3u);
    EXPECT_EQ(text, "kept");
    ASSERT_EQ(in.ReadNextDataType(), MIF_POINT);
    EXPECT_EQ(in.GetMIDValue(0), "next");
    ASSERT_TRUE(in.ReadPoint(points));
    EXPECT_EQ(points.back()->x, 9);
  }
}

TEST(MifImportTest, RegionsWithoutRingsOrVerticesAreEmptyNotFailures) {
  Opened file(kHeader + "Region 0\nRegion 2\n0\n1\n5 5\nPoint 1 1\n", "a\nb\nc\n");
  CHU_MIDMIFFileImport& in = *file.in;
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

TEST(MifImportTest, MidRowsKeepToTheirColumnsAndTheirRow) {
  struct Case {
    const char* mid;
    std::vector<std::string> first;
    int count;           // values the row held
    std::string second;  // first value of the next row
  };
  const Case cases[] = {
      {"\"open,1\n2\n", {"open,1\n2\n"}, 1, ""},  // an unterminated quote runs to the end
      {"a\"b\",\"c\"\"\"\"d\"x,e\nn\n", {"a\"b\"", "c\"\"d", "e"}, 3, "n"},  // quotes inside plain text stay
      {"a,b\nn\n", {"a", "b"}, 2, "n"},                  // a short row
      {"a,b,c,d,e\nn\n", {"a", "b", "c"}, 5, "n"},        // values beyond the columns are not kept
      {",,,,,,,,,,,,,,,,,,,\nz\n", {"", "", ""}, 20, "z"},
      {"\n\n", {""}, 1, ""},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.mid);
    Opened file("Columns 3\na Char(1)\nb Char(1)\nc Char(1)\nData\nPoint 1 1\nPoint 2 2\n", c.mid);
    ASSERT_EQ(file.in->ReadNextDataType(), MIF_POINT);
    EXPECT_EQ(file.in->GetMIDRow(), c.first);
    EXPECT_EQ(file.in->GetMIDValueCount(), c.count);
    EXPECT_EQ(file.in->GetMIDValue(2), c.first.size() > 2 ? c.first[2] : "");
    ASSERT_EQ(file.in->ReadNextDataType(), MIF_POINT);
    EXPECT_EQ(file.in->GetMIDValue(0), c.second);
  }

  // A MIF line without an end cannot claim all memory: reading stops there.
  std::string endless = kHeader + "Point 1 1\n";
  endless.resize(endless.size() + CHU_MIDMIFLineReader::kMaxLineBytes + 1, '7');
  Opened longLine(endless + "\nPoint 2 2\n", "a\nb\n");
  EXPECT_EQ(longLine.in->ReadNextDataType(), MIF_POINT);
  EXPECT_EQ(longLine.in->ReadNextDataType(), MIF_END_OF_FILE);
  EXPECT_TRUE(longLine.in->HasReadError());
  EXPECT_NE(longLine.in->GetLastError().find("line 8: the line cannot be read or is longer"), std::string::npos);

  // A quote left open cannot swallow more than one row's worth of the file.
  std::string huge = "\"open\n";
  while (huge.size() < 3 * CHU_MIDMIFFileImport::kMaxRowBytes) huge += std::string(1000, 'x') + "\n";
  Opened file("Columns 1\na Char(1)\nData\nPoint 1 1\nPoint 2 2\n", huge);
  file.in->ReadNextDataType();
  EXPECT_LE(file.in->GetMIDValue(0).size(), CHU_MIDMIFFileImport::kMaxRowBytes + 1000);
  file.in->ReadNextDataType();
  EXPECT_EQ(file.in->GetMIDValue(0).substr(0, 3), "xxx");
}
