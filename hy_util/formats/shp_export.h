#pragma once
// CHU_SHPExport: writes points, polylines or polygons with their attribute rows to
// an ESRI shapefile (.shp, .shx and .dbf beside each other; shapelib adds the
// extensions to the path given).
//
// Usage: SetShapeType (SHPT_POINT, SHPT_ARC, SHPT_POLYGON or a Z type), CreateFiles,
// the fields (AddStringField, AddIntField, AddDoubleField) before any record, then
// one Create... call per object and CreateRecord per attribute value. Every object
// is written with the one shape type set; nothing checks that it suits the
// geometry. Each object is one part, written as it is: a polygon's ring is neither
// closed nor re-oriented. The files are complete once CloseFiles (or the
// destructor) has run.

#include <string>
#include <vector>

#include "hy_util/formats/shp_file.h"

class CHU_SHPExport : public CHU_SHP {
 public:
  explicit CHU_SHPExport(const std::string& path);
  ~CHU_SHPExport() override;

  void SetShapeType(int shapeType) { m_nExportShapeType = shapeType; }
  int GetExportShapeType() const { return m_nExportShapeType; }
  // Creates the three files; false when no shape type was set or either shapelib
  // create call fails.
  bool CreateFiles();
  void CloseFiles();

  // A field needs an open table, a name, a width above 0 and, for doubles, decimals
  // of at least 0. Names longer than 10 characters are cut by shapelib.
  bool AddStringField(const std::string& name, int width);
  bool AddIntField(const std::string& name, int width);
  bool AddDoubleField(const std::string& name, int width, int decimals);

  // One attribute of one record (record = the object's index). A string is written
  // only for a record of at least 0 and a non-empty value. False when nothing was
  // written or shapelib refused the value (for instance a number too wide for its
  // field).
  bool CreateRecord(int record, int field, int value);
  bool CreateRecord(int record, int field, double value);
  bool CreateRecord(int record, int field, const std::string& value);
  bool CreateRecord(int record, int field, const char* value) { return CreateRecord(record, field, std::string(value ? value : "")); }

  // Appends one object. Vertex i takes zValues[i % size] when zValues is given and
  // not empty, else its own z. False without a shape type, for a negative shape id,
  // a null object or a chain of fewer than 2 vertices; true otherwise, even when
  // shapelib could not write the object.
  bool CreatePoint(int shapeId, const CHU_DPoint* point);
  bool CreatePolyline(int shapeId, const CHU_DPolyLine* line, const std::vector<double>* zValues = nullptr);
  bool CreatePolygon(int shapeId, const CHU_DPolygon* polygon, const std::vector<double>* zValues = nullptr);

  // Several chains as one object of several parts, vertices with their own z.
  // Chains of fewer than 2 vertices are left out; false when none is left (or for
  // the preconditions above).
  // CreatePolylineParts writes the parts as they are. CreatePolygonRings writes
  // rings in the shapefile's own convention, whatever their source: each ring is
  // closed (its first vertex repeated when the last differs) and the rings are
  // wound by shapelib's SHPRewindObject, outer rings clockwise and holes (rings
  // inside another) anticlockwise.
  bool CreatePolylineParts(int shapeId, const std::vector<const CHU_DPolyLine*>& parts);
  bool CreatePolygonRings(int shapeId, const std::vector<const CHU_DPolyLine*>& rings);
  // Every vertex of the chain as one multipoint object; false for an empty chain.
  bool CreateMultiPoint(int shapeId, const CHU_DPolyLine& points);

 private:
  bool AddField(const std::string& name, DBFFieldType type, int width, int decimals);
  bool CreateChain(int shapeId, const CHU_DPolyLine* chain, const std::vector<double>* zValues);
  bool CreateParts(int shapeId, const std::vector<const CHU_DPolyLine*>& parts, bool rings);
  void AppendVertex(const CHU_DPoint& p);
  void WriteShape(int shapeId, bool rewind = false);

  int m_nExportShapeType = 0;
  // Coordinate and part buffers reused from object to object.
  std::vector<double> m_x, m_y, m_z;
  std::vector<int> m_partStarts;
};
