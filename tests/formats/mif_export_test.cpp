// The exporter's bytes against hand-written files, and its refusals.

#include <gtest/gtest.h>

#include "hy_util/formats/mif_export.h"
#include "mif_test_shapes.h"
#include "support/temp_dir.h"

using namespace miftest;

namespace {

struct ExportFiles {
  hytest::TempDir dir;
  std::string mid = dir.File("out.mid");
  std::string mif = dir.File("out.mif");
};

void ExpectSameBytes(const std::string& written, const std::string& expectedName) {
  EXPECT_EQ(hytest::ReadFileBytes(written), hytest::ReadFileBytes(DataFile(expectedName))) << expectedName;
}

}  // namespace

TEST(MifExportTest, EveryColumnTypeAndObjectKindIsWrittenToTheByte) {
  ExportFiles files;
  CHU_MIDMIFFileExport out(files.mid, files.mif, 0, 1);  // flags that ask for units change nothing
  ASSERT_TRUE(out.OpenFiles());
  out.AddDataItem("ID", 0, 0);
  out.AddDataItem("NAME", 1, 20);
  out.AddDataItem("DEPTH", 2, 2);
  out.AddDataItem("LEVEL", 3, -1);  // three decimals
  out.AddDataItem(CHU_MIDMIFData("COUNT", "m", 2, 0));  // no decimals; units text kept as is
  out.AddDataItem("FLAG", 7, 0);    // written as text
  out.SetHeader("300", "WindowsLatin1", ";", "NonEarth Units \"m\"", CHU_DRect(100, 250.5, 300.25, 50));
  ASSERT_TRUE(out.ExHeader());

  CHU_DPoint plain(101.25, 202.5);
  plain.SetSymbol(0);  // symbol 0 or below gives the default 34
  EXPECT_TRUE(out.ExPoint(plain, {"7", "Main \"St\"", "1.5", "2.25", "3.7", "x"}));
  CHU_DPoint marked(-0.001, 0.999);
  marked.SetSymbol(5);
  EXPECT_TRUE(out.ExPoint(marked, {"-3", "C:\\drain", "", "abc", "0.2", ""}));
  // 10.125 is exact in binary: "%.2f" rounds it to even.
  EXPECT_TRUE(out.ExPline(*Make({{0, 0}, {10, 0}, {10, 10.125}}), {"12abc", "", "1234.567", "-0.5", "0.9", "7"}));
  EXPECT_TRUE(out.ExRegion(*Make<CHU_DPolygon>({{0, 0}, {10, 0}, {10, 10}, {0, 10}}), {"0", "ring", "", "", "", " "}));
  // A ring already closed is closed once more.
  EXPECT_TRUE(out.ExRegion(*Make<CHU_DPolygon>({{0, 0}, {4, 0}, {4, 2}, {0, 2}, {0, 0}}),
                           {"5", "closed", "10", "1", "2.5", "y"}));
  // A point with the wrong number of values keeps its MIF lines but gets no row.
  EXPECT_FALSE(out.ExPoint(CHU_DPoint(1, 2), {"1", "2", "3", "4", "5"}));

  // Objects without vertices and the whole-array forms write nothing.
  EXPECT_FALSE(out.ExPline(CHU_DPolyLine(), {"1", "", "", "", "", ""}));
  EXPECT_FALSE(out.ExRegion(CHU_DPolygon(), {"1", "", "", "", "", ""}));
  CHU_DPointArray points(1);
  points[0] = std::make_unique<CHU_DPoint>(1, 1);
  EXPECT_FALSE(out.ExPoints(points, {{"1", "", "", "", "", ""}}));
  EXPECT_TRUE(out.CloseFiles());

  ExpectSameBytes(files.mif, "export_every_kind.mif");
  ExpectSameBytes(files.mid, "export_every_kind.mid");
}

TEST(MifExportTest, SectionsAndRingsOfOneObjectAreWrittenTogether) {
  ExportFiles files;
  CHU_MIDMIFFileExport out(files.mid, files.mif, 1, 0);
  ASSERT_TRUE(out.OpenFiles());
  out.AddDataItem("NAME", 1, 10);
  out.SetHeader("300", "Neutral", ",", "NonEarth Units \"m\"", CHU_DRect(0, 10, 10, 0));
  ASSERT_TRUE(out.ExHeader());

  CHU_DPolyLineArray sections;
  sections.push_back(Make({{0, 0}, {1, 1}}));
  sections.push_back(std::make_unique<CHU_DPolyLine>());  // left out
  sections.push_back(Make({{2, 2}, {3, 3}, {4, 2}}));
  EXPECT_TRUE(out.ExPline(sections, {"lines"}));
  CHU_DPolygonArray rings;
  rings.push_back(Make<CHU_DPolygon>({{0, 0}, {10, 0}, {10, 10}, {0, 10}}));
  rings.push_back(Make<CHU_DPolygon>({{2, 2}, {4, 2}, {3, 4}}));
  EXPECT_TRUE(out.ExRegion(rings, {"holed"}));
  EXPECT_FALSE(out.ExRegion(CHU_DPolygonArray(), {"none"}));
  EXPECT_TRUE(out.CloseFiles());

  ExpectSameBytes(files.mif, "export_multi_part.mif");
  ExpectSameBytes(files.mid, "export_multi_part.mid");
}

TEST(MifExportTest, OpeningNeedsBothPathsAndWritableFiles) {
  hytest::TempDir dir;
  EXPECT_FALSE(CHU_MIDMIFFileExport("", dir.File("a.mif"), 0, 0).OpenFiles());
  EXPECT_FALSE(CHU_MIDMIFFileExport(dir.File("a.mid"), "", 0, 0).OpenFiles());
  EXPECT_FALSE(CHU_MIDMIFFileExport(dir.File("a.mid"), dir.File("no/such/dir/a.mif"), 0, 0).OpenFiles());
  // Nothing is written while the files are closed.
  CHU_MIDMIFFileExport closed(dir.File("b.mid"), dir.File("b.mif"), 0, 0);
  EXPECT_FALSE(closed.ExHeader());
}

TEST(MifExportTest, CharValuesBeyondTheClassicQuoteBufferAreWrittenWhole) {
  ExportFiles files;
  CHU_MIDMIFFileExport out(files.mid, files.mif, 0, 0);
  ASSERT_TRUE(out.OpenFiles());
  out.AddDataItem("NOTE", 1, 254);
  ASSERT_TRUE(out.ExPoint(CHU_DPoint(0, 0), {std::string(300, 'a') + "\""}));
  EXPECT_TRUE(out.CloseFiles());
  EXPECT_EQ(hytest::ReadFileBytes(files.mid), "\"" + std::string(300, 'a') + "\\\"\"\n");
}
