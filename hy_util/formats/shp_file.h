#pragma once
// CHU_SHP: reads an ESRI shapefile (the .shp geometry with its .shx index and the
// .dbf attribute table) into the library's points, polylines and polygons.
//
// shapelib does the file work; this class maps its objects to CHU_DPoint,
// CHU_DPolyLine and CHU_DPolygon. Every part of a line or polygon shape becomes a
// separate object, so the outer ring and the holes of a polygon come out as separate
// CHU_DPolygon objects. Vertices carry the shape's z for the Z types and -99999.0
// otherwise.
//
// Opening failures are shown through the application's message box with the stop
// kind ("Unable to open: %s and/or %s", "Invalid Shape file DBF", ...) and leave the
// handles empty; later queries then answer false, 0 or "Invalid/Undefined Data".
// Before shapelib reads anything, the headers of the three files and each record's
// place in the .shp file are checked against the real file sizes, so a damaged or
// hostile file is refused instead of making shapelib allocate what the file claims.
// A record that cannot be read yields nothing.

#include <shapefil.h>

#include <cstdint>
#include <string>

#include "hy_util/formats/shp_handles.h"
#include "hy_util/geometry/point.h"
#include "hy_util/geometry/polygon.h"
#include "hy_util/geometry/polyline.h"
#include "hy_util/geometry/rect.h"
#include "hy_util/platform/object.h"

class CHU_SHP : public CHU_Object {
  HU_DECLARE_DYNCREATE(CHU_SHP)

 public:
  // Opens nothing.
  CHU_SHP() = default;
  // Opens the geometry (path with or without its ".shp") and the attribute table
  // beside it, showing a message for each that fails.
  explicit CHU_SHP(const std::string& path);
  ~CHU_SHP() override = default;
  CHU_SHP(const CHU_SHP&) = delete;
  CHU_SHP& operator=(const CHU_SHP&) = delete;

  // ---- Geometry ----
  int GetNumObjects() const { return m_nShapes; }
  // The file's bounds from its header.
  void GetBounds(double& minX, double& minY, double& maxX, double& maxY) const;
  // The shape type of the file (SHPT_*), 0 when nothing is open.
  int GetShapeType() const { return m_nShapeType; }
  // The shape type of one object (a null shape is 0), 0 when it cannot be read.
  int GetObjectType(int index) const;
  SHPHandle GetSHPHandle() const { return m_hSHP.get(); }
  DBFHandle GetDBFHandle() const { return m_hDBF.get(); }

  // One object as shapelib reads it, after checking that its record lies inside the
  // file and that its part starts are in order within its vertices; null otherwise.
  HU_SHPObjectPtr ReadObject(int index) const;

  // The first vertex of the shape; false (point unchanged) when there is none.
  bool GetPoint(int index, CHU_DPoint& point) const;
  // Appends every vertex as a new point; returns the number appended.
  int GetMultiPoint(int index, CHU_DPointArray& points) const;
  // Arc shapes (types 3 and 13): appends one polyline per part; returns the number
  // appended (0 for other types or an unreadable record).
  int GetPolyLine(int index, CHU_DPolyLineArray& lines) const;
  // Polygon shapes (types 5 and 15): appends one polygon per ring, as stored (rings
  // are neither closed nor re-oriented); returns the number appended.
  int GetPolygon(int index, CHU_DPolygonArray& polygons) const;

  // ---- Attributes ----
  int GetNumDataItems() const { return m_nFields; }
  int GetNumRecords() const;
  // "string", "int", "double", or "Invalid/Undefined Data" for any other field type,
  // a field out of range or no table.
  void GetDataType(int field, std::string& text) const;
  // "NAME (12 Char)", "NAME (Integer)", "NAME (Double)".
  void GetDataStr(int field, std::string& text) const;
  // The field name.
  void GetDataStrShort(int field, std::string& text) const;
  // The attribute as text (as stored, without padding); false when it cannot be read.
  bool GetSHPData(int record, int field, std::string& text) const;
  // Compares the attribute with value by the field's type: text exactly, integers and
  // doubles by their parsed values ("007" equals "7").
  bool CompareShapeData(int record, int field, const std::string& value) const;

  // Writes the diagnostic dump "shapef.txt" (file header and each shape's type,
  // counts and bounds) in the current directory, or at the given path.
  bool WriteData() const;
  bool WriteData(const std::string& path) const;

 protected:
  // True when the shape's bounding box and the rectangle overlap, edges included.
  bool IsSHPObjectInRect(const SHPObject* shape, const CHU_DRect& rect) const;

  // Field type (FTString, FTInteger, FTDouble, ...) with name and width; FTInvalid
  // when the field is out of range or no table is open.
  DBFFieldType GetFieldInfo(int field, std::string* name, int* width, int* decimals) const;

  HU_SHPHandlePtr m_hSHP;
  int m_nShapeType = 0;
  int m_nShapes = 0;
  double m_adfMinBound[4] = {0, 0, 0, 0};
  double m_adfMaxBound[4] = {0, 0, 0, 0};
  std::string m_path;
  HU_DBFHandlePtr m_hDBF;
  int m_nFields = 0;
  // A record index for derived readers that walk the file; -1 until one is chosen.
  int m_nIndex = -1;

 private:
  void OpenGeometry(const std::string& path);
  void OpenTable(const std::string& path);
  std::uint64_t m_shpFileSize = 0;
};
