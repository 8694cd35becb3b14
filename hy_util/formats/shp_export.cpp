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

void CHU_SHPExport::WriteShape(int shapeId, int nVertices) {
  if (!m_hSHP) return;
  const int partStart = 0;
  HU_SHPObjectPtr shape(SHPCreateObject(m_nExportShapeType, shapeId, nVertices > 1 ? 1 : 0, &partStart, nullptr,
                                        nVertices, m_x.data(), m_y.data(), m_z.data(), nullptr));
  if (!shape) return;
  SHPComputeExtents(shape.get());
  if (SHPWriteObject(m_hSHP.get(), -1, shape.get()) >= 0) ++m_nShapes;
}

bool CHU_SHPExport::CreatePoint(int shapeId, const CHU_DPoint* point) {
  if (m_nExportShapeType == 0 || shapeId < 0 || !point) return false;
  m_x.assign(1, point->x);
  m_y.assign(1, point->y);
  m_z.assign(1, point->z);
  WriteShape(shapeId, 1);
  return true;
}

bool CHU_SHPExport::CreateChain(int shapeId, const CHU_DPolyLine* chain, const std::vector<double>* zValues) {
  if (m_nExportShapeType == 0 || shapeId < 0 || !chain || chain->GetCount() < 2) return false;
  const int count = chain->GetCount();
  const bool givenZ = zValues && !zValues->empty();
  m_x.resize(static_cast<std::size_t>(count));
  m_y.resize(static_cast<std::size_t>(count));
  m_z.resize(static_cast<std::size_t>(count));
  for (int i = 0; i < count; ++i) {
    const CHU_DPoint* p = chain->GetAt(i);
    const auto at = static_cast<std::size_t>(i);
    m_x[at] = p->x;
    m_y[at] = p->y;
    m_z[at] = givenZ ? (*zValues)[at % zValues->size()] : p->z;
  }
  WriteShape(shapeId, count);
  return true;
}

bool CHU_SHPExport::CreatePolyline(int shapeId, const CHU_DPolyLine* line, const std::vector<double>* zValues) {
  return CreateChain(shapeId, line, zValues);
}

bool CHU_SHPExport::CreatePolygon(int shapeId, const CHU_DPolygon* polygon, const std::vector<double>* zValues) {
  return CreateChain(shapeId, polygon, zValues);
}
