#include "hy_util/formats/shp_export.h"

#include <cstddef>

CHU_SHPExport::CHU_SHPExport(const std::string& path) { m_path = path; }

CHU_SHPExport::~CHU_SHPExport() { CloseFiles(); }

bool CHU_SHPExport::CreateFiles() {
  if (m_nExportShapeType == 0) return false;
  CloseFiles();
  m_hSHP.reset(SHPCreate(m_path.c_str(), m_nExportShapeType));
  m_hDBF.reset(DBFCreate(m_path.c_str()));
  if (!m_hSHP || !m_hDBF) {
    CloseFiles();
    return false;
  }
  m_nShapeType = m_nExportShapeType;
  return true;
}

void CHU_SHPExport::CloseFiles() {
  m_hSHP.reset();
  m_hDBF.reset();
  m_nShapes = 0;
  m_nFields = 0;
}

bool CHU_SHPExport::AddField(const std::string& name, DBFFieldType type, int width, int decimals) {
  if (!m_hDBF || name.empty() || width <= 0 || decimals < 0) return false;
  if (DBFAddField(m_hDBF.get(), name.c_str(), type, width, decimals) < 0) return false;
  m_nFields = DBFGetFieldCount(m_hDBF.get());
  return true;
}

bool CHU_SHPExport::AddStringField(const std::string& name, int width) { return AddField(name, FTString, width, 0); }

bool CHU_SHPExport::AddIntField(const std::string& name, int width) { return AddField(name, FTInteger, width, 0); }

bool CHU_SHPExport::AddDoubleField(const std::string& name, int width, int decimals) {
  return AddField(name, FTDouble, width, decimals);
}

bool CHU_SHPExport::CreateRecord(int record, int field, int value) {
  if (!m_hDBF || record < 0 || field < 0 || field >= m_nFields) return false;
  return DBFWriteIntegerAttribute(m_hDBF.get(), record, field, value) != 0;
}

bool CHU_SHPExport::CreateRecord(int record, int field, double value) {
  if (!m_hDBF || record < 0 || field < 0 || field >= m_nFields) return false;
  return DBFWriteDoubleAttribute(m_hDBF.get(), record, field, value) != 0;
}

bool CHU_SHPExport::CreateRecord(int record, int field, const std::string& value) {
  if (!m_hDBF || record < 0 || value.empty() || field < 0 || field >= m_nFields) return false;
  return DBFWriteStringAttribute(m_hDBF.get(), record, field, value.c_str()) != 0;
}

void CHU_SHPExport::AppendVertex(const CHU_DPoint& p) {
  m_x.push_back(p.x);
  m_y.push_back(p.y);
  m_z.push_back(p.z);
}

void CHU_SHPExport::WriteShape(int shapeId, bool rewind) {
  if (!m_hSHP) return;
  const int nVertices = static_cast<int>(m_x.size());
  HU_SHPObjectPtr shape(SHPCreateObject(m_nExportShapeType, shapeId, static_cast<int>(m_partStarts.size()),
                                        m_partStarts.data(), nullptr, nVertices, m_x.data(), m_y.data(),
                                        m_z.data(), nullptr));
  if (!shape) return;
  if (rewind) SHPRewindObject(m_hSHP.get(), shape.get());
  SHPComputeExtents(shape.get());
  if (SHPWriteObject(m_hSHP.get(), -1, shape.get()) >= 0) ++m_nShapes;
}

bool CHU_SHPExport::CreatePoint(int shapeId, const CHU_DPoint* point) {
  if (m_nExportShapeType == 0 || shapeId < 0 || !point) return false;
  m_x.clear(), m_y.clear(), m_z.clear(), m_partStarts.clear();
  AppendVertex(*point);
  WriteShape(shapeId);
  return true;
}

bool CHU_SHPExport::CreateChain(int shapeId, const CHU_DPolyLine* chain, const std::vector<double>* zValues) {
  if (m_nExportShapeType == 0 || shapeId < 0 || !chain || chain->GetCount() < 2) return false;
  const bool givenZ = zValues && !zValues->empty();
  m_x.clear(), m_y.clear(), m_z.clear();
  m_partStarts.assign(1, 0);
  for (int i = 0; i < chain->GetCount(); ++i) {
    AppendVertex(*chain->GetAt(i));
    if (givenZ) m_z.back() = (*zValues)[static_cast<std::size_t>(i) % zValues->size()];
  }
  WriteShape(shapeId);
  return true;
}

bool CHU_SHPExport::CreatePolyline(int shapeId, const CHU_DPolyLine* line, const std::vector<double>* zValues) {
  return CreateChain(shapeId, line, zValues);
}

bool CHU_SHPExport::CreatePolygon(int shapeId, const CHU_DPolygon* polygon, const std::vector<double>* zValues) {
  return CreateChain(shapeId, polygon, zValues);
}

bool CHU_SHPExport::CreateParts(int shapeId, const std::vector<const CHU_DPolyLine*>& parts, bool rings) {
  if (m_nExportShapeType == 0 || shapeId < 0) return false;
  m_x.clear(), m_y.clear(), m_z.clear(), m_partStarts.clear();
  for (const CHU_DPolyLine* part : parts) {
    if (!part || part->GetCount() < 2) continue;
    m_partStarts.push_back(static_cast<int>(m_x.size()));
    for (int i = 0; i < part->GetCount(); ++i) AppendVertex(*part->GetAt(i));
    const CHU_DPoint& first = *part->GetAt(0);
    const CHU_DPoint& last = *part->GetAt(part->GetCount() - 1);
    if (rings && (first.x != last.x || first.y != last.y)) AppendVertex(first);
  }
  if (m_partStarts.empty()) return false;
  WriteShape(shapeId, rings);
  return true;
}

bool CHU_SHPExport::CreatePolylineParts(int shapeId, const std::vector<const CHU_DPolyLine*>& parts) {
  return CreateParts(shapeId, parts, false);
}

bool CHU_SHPExport::CreatePolygonRings(int shapeId, const std::vector<const CHU_DPolyLine*>& rings) {
  return CreateParts(shapeId, rings, true);
}

bool CHU_SHPExport::CreateMultiPoint(int shapeId, const CHU_DPolyLine& points) {
  if (m_nExportShapeType == 0 || shapeId < 0 || points.GetCount() == 0) return false;
  m_x.clear(), m_y.clear(), m_z.clear(), m_partStarts.clear();
  for (int i = 0; i < points.GetCount(); ++i) AppendVertex(*points.GetAt(i));
  WriteShape(shapeId);
  return true;
}
