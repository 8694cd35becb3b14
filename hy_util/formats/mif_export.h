#pragma once
// CHU_MIDMIFFileExport: writes points, polylines and polygons with one row of
// attribute values each to a MapInfo Interchange pair: the MIF file (header and
// graphic objects) and the MID file (one row per object, in object order).
//
// Output, byte for byte, with "\n" line ends and numbers in the C locale's form:
//   Version <version>
//   Charset "<charset>"            (quoted by HU_Strings::QuoteString)
//   Delimiter "<delimiter>"
//   CoordSys <text> Bounds (<left>, <bottom>)(<right>, <top>)   ("%f")
//   Columns <n>, one "  <name> <type>" line per column, then Data
// Point: "Point x y" ("%.2f") and a Symbol line (the point's symbol when above 0,
// else 34). Polyline: a blank line, "Pline <n>", n vertex lines, "    Pen (1,2,0)".
// Polygon: a blank line, "Region  1" (two blanks), the vertex count plus one, the
// vertices and the first vertex again (always: a ring that already ends on its
// first vertex repeats it once more), Pen, Brush and "    Center x y" with the
// ring's centroid.
// MID rows: each value formatted by its column's type (Integer "%d", Char quoted,
// Float and Double with size decimals or three when size is negative) and joined
// with "," whatever delimiter the header declares (callers rely on the fixed
// separator; declare "," to have the rows read back as written). Char values are
// quoted the library's way, with a backslash before a quote or backslash inside;
// MapInfo (and CHU_MIDMIFFileImport) read a doubled quote instead, so a value that
// holds a double quote or a backslash does not read back as it was written.
//
// The unit hooks (AdjustUnits...) answer whether metric-to-US conversion is asked
// for (unit flag A 0 and unit flag B 1) but change no value: the files are written
// in the model's units.

#include <cstdio>
#include <memory>
#include <string>
#include <vector>

#include "hy_util/formats/mid_mif_file.h"
#include "hy_util/geometry/point.h"
#include "hy_util/geometry/polygon.h"
#include "hy_util/geometry/polyline.h"
#include "hy_util/geometry/rect.h"

class CHU_MIDMIFFileExport : public CHU_MIDMIFFile {
 public:
  // The MID path comes first.
  CHU_MIDMIFFileExport(std::string midPath, std::string mifPath, int unitFlagA, int unitFlagB);
  ~CHU_MIDMIFFileExport() override;
  CHU_MIDMIFFileExport(const CHU_MIDMIFFileExport&) = delete;
  CHU_MIDMIFFileExport& operator=(const CHU_MIDMIFFileExport&) = delete;

  // Creates (truncates) both files, the MID first; false when a path is empty or
  // either file cannot be created. CloseFiles flushes and closes both; false when
  // a write failed on the way (a full disk shows here).
  bool OpenFiles();
  bool CloseFiles();

  void SetHeader(const std::string& version, const std::string& charset, const std::string& delimiter,
                 const std::string& coordSys, const CHU_DRect& bounds);
  bool ExHeader();

  // One object and its values (one per column). ExPoint is false, with its MIF
  // lines written, when the value count differs from the column count; ExPline and
  // ExRegion are false only for an object without vertices (the row is then still
  // not written when its value count is wrong).
  bool ExPoint(const CHU_DPoint& point, const std::vector<std::string>& values);
  bool ExPline(const CHU_DPolyLine& line, const std::vector<std::string>& values);
  bool ExRegion(const CHU_DPolygon& polygon, const std::vector<std::string>& values);
  // Several sections as one object: "Pline Multiple n" with a vertex count line
  // before each section (one section is written as ExPline writes it), and a
  // region of several rings ("Region  n", each ring closed by repetition, the
  // centre from the first ring). Sections and rings without vertices are left out;
  // false when none is left.
  bool ExPline(const CHU_DPolyLineArray& sections, const std::vector<std::string>& values);
  bool ExRegion(const CHU_DPolygonArray& rings, const std::vector<std::string>& values);
  // Whole-array forms kept for callers of the older interface: they write nothing
  // and answer false.
  bool ExPoints(const CHU_DPointArray& points, const std::vector<std::vector<std::string>>& values);
  bool ExLines(const CHU_DPolyLineArray& lines, const std::vector<std::vector<std::string>>& values);
  bool ExPolygons(const CHU_DPolygonArray& polygons, const std::vector<std::vector<std::string>>& values);

 protected:
  void OutStringMIF(const std::string& text);
  void OutStringMID(const std::string& text);
  // One MID row; false (nothing written) when the value count differs from the
  // column count.
  bool OutDataMID(const std::vector<std::string>& values);
  bool AdjustUnitsDRect(CHU_DRect& rect) const;
  bool AdjustUnitsVal(double& value, const std::string& units) const;
  bool AdjustUnitsPt(CHU_DPoint& point) const;

 private:
  struct Closer {
    void operator()(std::FILE* f) const { std::fclose(f); }
  };
  using FilePtr = std::unique_ptr<std::FILE, Closer>;

  bool UnitConversionAsked() const { return m_unitFlagA == 0 && m_unitFlagB == 1; }
  // The row as OutDataMID writes it; adjustValues applies AdjustUnitsVal.
  std::string FormatRow(const std::vector<std::string>& values, bool adjustValues) const;
  void AppendSection(std::string& out, const CHU_DPolyLine& line) const;
  void AppendRing(std::string& out, const CHU_DPolygon& ring) const;
  static void AppendXY(std::string& out, double x, double y);
  static std::string Quoted(const std::string& text);

  std::string m_midPath;
  std::string m_mifPath;
  int m_unitFlagA;
  int m_unitFlagB;
  FilePtr m_mid;
  FilePtr m_mif;
  bool m_writeFailed = false;

  std::string m_version;
  std::string m_charset;
  std::string m_delimiter;
  std::string m_coordSys;
  CHU_DRect m_bounds;
};
