#pragma once
// CHU_MIDMIFFileImport: reads a MapInfo Interchange pair, the MIF file (header and
// graphic objects) and its MID file (one attribute row per object), into points,
// polylines and polygons. The caller drives the reading: ReadHeader, then
// ReadNextDataType for each object and the reader that suits its code.
//
// Format notes. MIF lines are split at blanks; keywords are matched ignoring letter
// case, as MapInfo writes "Pline" and other programs "PLINE" or "pline".
// - Header, up to "Data": "Version", "Charset" and "Delimiter" keep the rest of
//   their line as text; "CoordSys" keeps the rest of its line and of any following
//   lines that start with no header keyword (a clause may be wrapped over lines),
//   and "Bounds (x1, y1) (x2, y2)" in it gives the minimum and maximum. "Columns n"
//   is followed by n column lines "name type[(width)]"; the types Integer, Char,
//   Float and Double are known (Char keeps its width, the others get size -1, so a
//   writer gives them three decimals), every other type (Smallint, Decimal,
//   Logical, Date, ...) is kept as undefined and read as text. "Index", "Unique"
//   and "Transform" lines are passed over.
// - Objects: the keyword table of ReadNextDataType. A keyword line's second token
//   is the object's part count (1 when absent; for "Pline Multiple n" it is n).
//   The coordinate and style lines of an object never start with a keyword, so
//   lines left over after an object are passed over on the way to the next one.
//   The members of a "Collection n" are reported one by one and share the
//   collection's single MID row.
// - A region ring is a count line and that many vertex lines, the last repeating
//   the first; the repeated vertex is not kept, so a ring of count n becomes a
//   polygon of n - 1 vertices. A Pline without a count on its keyword line takes
//   it from the next line. ReadPLine gives "Pline Multiple" as one polyline
//   without vertices; ReadPLineSections gives its sections.
// - MID rows are split at the header's delimiter (first character of its quoted
//   text; "," when none); a value in double quotes may hold the delimiter, line
//   ends and doubled quotes. LF and CR LF both end a line in either file.
// - Elevations: with an elevation column set (SetElevationColumn), the column's
//   value in the object's row gives z: it is split at blanks and vertex i of the
//   object (counted over all its rings or sections, in file order) takes number
//   i modulo their count, so one number serves every vertex and one number per
//   vertex gives each its own; a value that is not a number gives -9999.0.
//   Without a column, polylines and regions get z -9999.0 and points keep the
//   unset z of CHU_DPoint.
// - Units: with unit flag A 0 and unit flag B 1 every x, y and z read (and the
//   bounds) is converted from metres to feet; otherwise values are used as read.
//
// Bad input: a vertex line that does not hold two numbers, or the end of the file
// inside an object, makes the object's reader answer false and append nothing;
// the offending line is given back so the next ReadNextDataType can resynchronise
// on it. Counts from the file are never used to allocate ahead, a MID row cannot
// grow past kMaxRowBytes through an unterminated quote, and values beyond the
// column count are dropped. ReadHeader answers false with GetLastError() naming
// the file and line when the header cannot be used.

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "hy_util/formats/mid_mif_file.h"
#include "hy_util/formats/mid_mif_line_reader.h"
#include "hy_util/geometry/point.h"
#include "hy_util/geometry/polygon.h"
#include "hy_util/geometry/polyline.h"
#include "hy_util/geometry/rect.h"
#include "hy_util/platform/copyable_array.h"

// Object codes answered by ReadNextDataType; MIF_ARC and MIF_MULTIPOINT extend the
// classic table for the objects of newer MIF versions.
enum MIFObjectType {
  MIF_END_OF_FILE = -1,
  MIF_POINT = 0,
  MIF_LINE = 1,
  MIF_PLINE = 2,
  MIF_REGION = 3,
  MIF_ELLIPSE = 4,
  MIF_RECT = 5,
  MIF_ROUNDRECT = 6,
  MIF_MULTIPLE = 7,
  MIF_COLLECTION = 8,
  MIF_TEXT = 9,
  MIF_ARC = 10,
  MIF_MULTIPOINT = 11,
};

class CHU_MIDMIFFileImport : public CHU_MIDMIFFile {
 public:
  static constexpr double kNoElevation = -9999.0;
  static constexpr std::size_t kMaxRowBytes = std::size_t{1} << 20;

  // The MID path comes first, as for CHU_MIDMIFFileExport.
  CHU_MIDMIFFileImport(std::string midPath, std::string mifPath, int unitFlagA, int unitFlagB);

  // Opens the MIF file (required) and the MID file when it exists; a table without
  // columns needs no MID file, which ReadHeader checks.
  bool OpenFiles();
  void CloseFiles();

  bool ReadHeader();
  // Minimum x, minimum y, maximum x, maximum y; zeros until bounds were read.
  bool GetBounds(double& minX, double& minY, double& maxX, double& maxY) const;
  const std::string& GetVersion() const { return m_version; }
  const std::string& GetCharset() const { return m_charset; }
  const std::string& GetDelimiter() const { return m_delimiter; }
  char GetDelimiterChar() const { return m_delimiterChar; }
  // The coordinate system clause without "Bounds" and what follows it.
  const std::string& GetCoordSys() const { return m_coordSys; }
  // The column's type as the header wrote it ("Decimal(10,2)", "Char (50)",
  // "Logical"), for callers that map the types this library keeps as undefined.
  std::string GetColumnTypeText(int column) const;
  // The text inside double quotes, a doubled quote read as one ("\"WindowsLatin1\""
  // gives WindowsLatin1); a text that does not start with a quote as it is.
  static std::string Unquote(std::string_view text);

  // Moves to the next object and reads its MID row; the object's code, or
  // MIF_END_OF_FILE. pointRest receives the text after "Point" on a point line.
  int ReadNextDataType(std::string* pointRest = nullptr);
  int GetNumOfParts() const { return m_numParts; }
  // True while reporting the members of a collection (they share its MID row).
  bool InCollection() const { return m_collectionMembersLeft > 0 || m_inCollectionMember; }

  bool ReadPoint(CHU_DPointArray& points);
  bool ReadPoint(CHU_CopyableArray<CHU_DPoint>& points);
  bool ReadPoint(double& x, double& y);
  // "MultiPoint n" and its n vertex lines, each point appended.
  bool ReadMultiPoint(CHU_DPointArray& points);
  // "Line x1 y1 x2 y2" as a polyline of two vertices.
  bool ReadLine(CHU_DPolyLine& line);
  bool ReadLine(CHU_DPolyLineArray& lines);
  bool ReadPLine(CHU_DPolyLine& line);
  bool ReadPLine(CHU_DPolyLineArray& lines);
  // Every section of a "Pline" or "Pline Multiple n" as its own polyline.
  bool ReadPLineSections(CHU_DPolyLineArray& lines);
  // The first ring only; the other rings' lines are passed over later.
  bool ReadRegion(CHU_DPolygon& polygon);
  bool ReadRegion(CHU_DPolygonArray& polygons);
  // "Rect" or "RoundRect" x1 y1 x2 y2 as a rectangle with left <= right and
  // bottom <= top (a RoundRect's corner radius is dropped).
  bool ReadRect(CHU_DRect& rect);
  // "Text "string"" followed by the x1 y1 x2 y2 of its box: the string without its
  // quotes (a doubled quote kept as one) and the box as ReadRect gives it.
  bool ReadText(std::string& text, CHU_DRect& box);
  // Reads on to the end of the file, appending every point and multipoint vertex;
  // other objects are passed over. With showProgress the host's progress display
  // follows the MIF file position in 100 steps. Answers the number of points read.
  int ReadPoints(CHU_DPointArray& points, bool showProgress = false);

  // Reads the next MID row; false at the end of the MID file (or without one).
  bool ReadMIDData();
  const std::vector<std::string>& GetMIDRow() const { return m_midRow; }
  // Value of a column in the current row; empty when the row is short.
  std::string GetMIDValue(int column) const;
  // Number of values the current row held, including any beyond the columns.
  int GetMIDValueCount() const { return static_cast<int>(m_midValueCount); }

  // The column whose values give vertex elevations; -1 (the default) for none.
  // The name form matches ignoring case and answers whether a column was found.
  void SetElevationColumn(int column) { m_elevationColumn = column; }
  bool SetElevationColumn(const std::string& name);
  int GetElevationColumn() const { return m_elevationColumn; }

  // Converts one coordinate under the unit flags (see the class note).
  double AdjustUnit(double value) const;

  const std::string& GetLastError() const { return m_lastError; }
  // True when reading the MIF file stopped at a line it could not take (over
  // CHU_MIDMIFLineReader::kMaxLineBytes, or a read error) rather than at its end;
  // GetLastError() names the line.
  bool HasReadError() const { return m_mif.Failed(); }
  // Line number of the MIF line read last, for messages.
  std::int64_t GetLineNumber() const { return m_mif.LineNumber(); }
  // Byte position reached in the MIF file and its length, for progress displays.
  std::int64_t GetMIFPosition() const { return m_mif.Position(); }
  std::int64_t GetMIFLength() const { return m_mif.Length(); }
  const std::string& GetMIFPath() const { return m_mifPath; }
  const std::string& GetMIDPath() const { return m_midPath; }

 private:
  bool NextLine();
  void GiveBack() { m_givenBack = true; }
  bool ReadVertex(double& x, double& y);
  bool ReadCount(int& count);
  // The numbers after the keyword on the current line, continued on following
  // lines when the keyword line holds fewer than wanted.
  bool ReadNumbers(std::size_t wanted, std::vector<double>& numbers);
  bool CurrentKeywordIs(std::initializer_list<const char*> keywords) const;
  bool ReadRing(int count, CHU_DPolygon& ring);
  bool ReadSection(int count, CHU_DPolyLine& line);
  void ResetHeader();
  // At "Data": the coordinate system clause, and the MID file the columns need.
  bool FinishHeader(const std::string& coordClause);
  void ParseCoordSys(const std::string& clause);
  bool ReadColumns(int count);
  void SetHeaderError(const std::string& what);
  // Fills the z of the vertices from the elevation column, or the default z.
  void ApplyElevations(CHU_DPolyLine& chain, int& vertexIndex, double noValue) const;
  double ElevationFor(int vertexIndex, double noValue) const;
  void BeginElevations();

  std::string m_midPath;
  std::string m_mifPath;
  int m_unitFlagA;
  int m_unitFlagB;
  CHU_MIDMIFLineReader m_mif;
  CHU_MIDMIFLineReader m_mid;

  std::string m_version;
  std::string m_charset;
  std::string m_delimiter;
  char m_delimiterChar = ',';
  std::string m_coordSys;
  bool m_boundsRead = false;
  double m_minX = 0.0, m_minY = 0.0, m_maxX = 0.0, m_maxY = 0.0;

  std::string m_line;
  bool m_givenBack = false;
  int m_numParts = 0;
  int m_collectionMembersLeft = 0;
  bool m_inCollectionMember = false;
  int m_elevationColumn = -1;
  std::vector<std::string> m_columnTypes;
  std::vector<std::string> m_midRow;
  std::size_t m_midValueCount = 0;
  std::vector<double> m_elevations;
  std::string m_lastError;
};
