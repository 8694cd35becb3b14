// Selection and snapping: the searches an editing tool makes once per click.

#include <algorithm>
#include <cmath>

#include "hy_util/geometry/math.h"
#include "hy_util/mesh/boundary_mesh.h"

using HU_LIB::HU_Math;

double CHU_DBoundaryMesh::SelectionDistance(const CHU_DBoundaryMeshElement* element, const CHU_DPoint& position,
                                            double tolerance) const {
  if (const auto* point = dynamic_cast<const CHU_DBoundaryMeshPoint*>(element)) {
    const CHU_DPoint& p = point->GetVertex()->GetPosition();
    if (!HU_VertexIndex::InBox(p, position, tolerance)) return -1.0;
    return (p.x - position.x) * (p.x - position.x) + (p.y - position.y) * (p.y - position.y);
  }
  const auto* line = dynamic_cast<const CHU_DBoundaryMeshPolyline*>(element);
  if (line == nullptr) return -1.0;
  const auto& vertices = line->GetVertices();
  double best = INFINITY;
  for (std::size_t i = 1; i < vertices.size(); ++i) {
    best = std::min(best, HU_Math::SquaredDistanceToSegment(position, vertices[i - 1]->GetPosition(),
                                                            vertices[i]->GetPosition()));
  }
  if (best <= tolerance * tolerance) return best;
  if (dynamic_cast<const CHU_DBoundaryMeshPolygon*>(element) != nullptr) {
    CHU_DPolygon ring;
    GetPolygon(element->GetID(), &ring);
    if (ring.PtInPoly(position)) return best;
  }
  return -1.0;
}

int CHU_DBoundaryMesh::FindByPosition(Kind kind, const CHU_DPoint& position, double tolerance, int type, int setId,
                                      bool selectedOnly) const {
  if (!(tolerance >= 0.0)) return -1;
  int bestId = -1;
  double bestDistance = 0.0;
  for (const auto& entry : m_elements) {
    if (!Accepts(entry.object, kind, type, setId) || (selectedOnly && !entry.object->IsSelected())) continue;
    const double distance = SelectionDistance(entry.object, position, tolerance);
    if (distance < 0.0 || std::isnan(distance)) continue;
    if (bestId < 0 || distance < bestDistance) bestId = entry.id, bestDistance = distance;
  }
  return bestId;
}

int CHU_DBoundaryMesh::SelectByPosition(Kind kind, const CHU_DPoint& position, double tolerance, int type,
                                        int setId) {
  const int id = FindByPosition(kind, position, tolerance, type, setId, false);
  if (id >= 0) m_elements.Find(id)->SetSelected(true);
  return id;
}

int CHU_DBoundaryMesh::SelectPoint(const CHU_DPoint& position, double tolerance, int type, int setId) {
  return SelectByPosition(Kind::Point, position, tolerance, type, setId);
}
int CHU_DBoundaryMesh::SelectPolyline(const CHU_DPoint& position, double tolerance, int type, int setId) {
  return SelectByPosition(Kind::Polyline, position, tolerance, type, setId);
}
int CHU_DBoundaryMesh::SelectPolygon(const CHU_DPoint& position, double tolerance, int type, int setId) {
  return SelectByPosition(Kind::Polygon, position, tolerance, type, setId);
}

int CHU_DBoundaryMesh::SelectByRect(Kind kind, const CHU_DRect& rect, int type, int setId) {
  CHU_DRect box(rect);
  box.Normalise();
  int selected = 0;
  for (const auto& entry : m_elements) {
    CHU_DBoundaryMeshElement* element = entry.object;
    if (!Accepts(element, kind, type, setId) || element->IsSelected()) continue;
    std::vector<int> ids;
    element->GetVertexIDList(ids);
    const bool inside = !ids.empty() && std::all_of(ids.begin(), ids.end(), [&](int id) {
      return box.PtInRect(m_vertices.Find(id)->GetPosition());
    });
    if (inside) element->SetSelected(true), ++selected;
  }
  return selected;
}

int CHU_DBoundaryMesh::SelectPoint(const CHU_DRect& rect, int type, int setId) {
  return SelectByRect(Kind::Point, rect, type, setId);
}
int CHU_DBoundaryMesh::SelectPolyline(const CHU_DRect& rect, int type, int setId) {
  return SelectByRect(Kind::Polyline, rect, type, setId);
}
int CHU_DBoundaryMesh::SelectPolygon(const CHU_DRect& rect, int type, int setId) {
  return SelectByRect(Kind::Polygon, rect, type, setId);
}

bool CHU_DBoundaryMesh::SelectVertex(const CHU_DPoint& position, double tolerance, bool selectedElementsOnly,
                                     int type, int setId) {
  m_lastSelectedVertex = -1;
  DeselectAllVertices();
  CHU_DBoundaryMeshVertex* best = nullptr;
  double bestDistance = 0.0;
  for (CHU_DBoundaryMeshVertex* vertex : VerticesNear(position, tolerance)) {
    if (type != -1 && !vertex->IsAttachedToElementOfType(type, setId)) continue;
    if (selectedElementsOnly && !vertex->IsAttachedToSelectedElement(type)) continue;
    const double dx = vertex->GetPosition().x - position.x, dy = vertex->GetPosition().y - position.y;
    const double distance = dx * dx + dy * dy;
    if (best == nullptr || distance < bestDistance) best = vertex, bestDistance = distance;
  }
  if (best == nullptr) return false;
  best->SetSelected(true);
  m_selectedVertices.push_back(best->GetID());
  m_lastSelectedVertex = best->GetID();
  return true;
}

bool CHU_DBoundaryMesh::DeselectElement(int id) {
  CHU_DBoundaryMeshElement* element = m_elements.Find(id);
  if (element != nullptr) element->SetSelected(false);
  return element != nullptr;
}

int CHU_DBoundaryMesh::DeselectAllElementsOfType(int type, int setId) {
  int count = 0;
  for (const auto& entry : m_elements) {
    if (!Accepts(entry.object, Kind::Any, type, setId) || !entry.object->IsSelected()) continue;
    entry.object->SetSelected(false);
    ++count;
  }
  return count;
}

void CHU_DBoundaryMesh::DeselectAllVertices() {
  for (int id : m_selectedVertices) {
    if (CHU_DBoundaryMeshVertex* vertex = m_vertices.Find(id)) vertex->SetSelected(false);
  }
  m_selectedVertices.clear();
}

bool CHU_DBoundaryMesh::IsElementSelected(int id) const {
  const CHU_DBoundaryMeshElement* element = m_elements.Find(id);
  return element != nullptr && element->IsSelected();
}

int CHU_DBoundaryMesh::GetSelectedPointCount(int type, int setId) const {
  return CountKind(Kind::Point, type, setId, true);
}
int CHU_DBoundaryMesh::GetSelectedPolylineCount(int type, int setId) const {
  return CountKind(Kind::Polyline, type, setId, true);
}
int CHU_DBoundaryMesh::GetSelectedPolygonCount(int type, int setId) const {
  return CountKind(Kind::Polygon, type, setId, true);
}

int CHU_DBoundaryMesh::GetSelectedPointID(int type, int setId) const {
  const std::vector<int> ids = CollectIDs(Kind::Point, type, setId, true);
  return ids.empty() ? -1 : ids.front();
}
int CHU_DBoundaryMesh::GetSelectedPolylineID(int type, int setId) const {
  const std::vector<int> ids = CollectIDs(Kind::Polyline, type, setId, true);
  return ids.empty() ? -1 : ids.front();
}
int CHU_DBoundaryMesh::GetSelectedPolygonID(int type, int setId) const {
  const std::vector<int> ids = CollectIDs(Kind::Polygon, type, setId, true);
  return ids.empty() ? -1 : ids.front();
}

int CHU_DBoundaryMesh::GetSelectedPointIDAtPoint(const CHU_DPoint& position, double tolerance, int type,
                                                 int setId) const {
  return FindByPosition(Kind::Point, position, tolerance, type, setId, true);
}
int CHU_DBoundaryMesh::GetSelectedPolylineIDAtPoint(const CHU_DPoint& position, double tolerance, int type,
                                                    int setId) const {
  return FindByPosition(Kind::Polyline, position, tolerance, type, setId, true);
}
int CHU_DBoundaryMesh::GetSelectedPolygonIDAtPoint(const CHU_DPoint& position, double tolerance, int type,
                                                   int setId) const {
  return FindByPosition(Kind::Polygon, position, tolerance, type, setId, true);
}

int CHU_DBoundaryMesh::GetAllSelectedPointIDs(std::vector<int>& ids, int type, int setId) const {
  const std::vector<int> found = CollectIDs(Kind::Point, type, setId, true);
  ids.insert(ids.end(), found.begin(), found.end());
  return static_cast<int>(found.size());
}
int CHU_DBoundaryMesh::GetAllSelectedPolylineIDs(std::vector<int>& ids, int type, int setId) const {
  const std::vector<int> found = CollectIDs(Kind::Polyline, type, setId, true);
  ids.insert(ids.end(), found.begin(), found.end());
  return static_cast<int>(found.size());
}
int CHU_DBoundaryMesh::GetAllSelectedPolygonIDs(std::vector<int>& ids, int type, int setId) const {
  const std::vector<int> found = CollectIDs(Kind::Polygon, type, setId, true);
  ids.insert(ids.end(), found.begin(), found.end());
  return static_cast<int>(found.size());
}

bool CHU_DBoundaryMesh::GetLastSelectedVertexPosition(CHU_DPoint& position) const {
  const CHU_DBoundaryMeshVertex* vertex = m_vertices.Find(m_lastSelectedVertex);
  if (vertex == nullptr) return false;
  position = vertex->GetPosition();
  return true;
}

bool CHU_DBoundaryMesh::SnapToElement(const CHU_DBoundaryMeshElement* element, CHU_DPoint& result,
                                      const CHU_DPoint& position, double tolerance) const {
  if (const auto* point = dynamic_cast<const CHU_DBoundaryMeshPoint*>(element)) {
    if (!HU_VertexIndex::InBox(point->GetVertex()->GetPosition(), position, tolerance)) return false;
    result = point->GetVertex()->GetPosition();
    return true;
  }
  CHU_DPolygon ring;
  CHU_DPolyLine line;
  const bool isRing = GetPolygon(element->GetID(), &ring);
  if (!isRing && !GetPolyline(element->GetID(), &line)) return false;
  const CHU_DPolyLine& chain = isRing ? static_cast<const CHU_DPolyLine&>(ring) : line;
  CHU_DPoint start, end;
  if (!chain.PtOnPoly(position, tolerance, &start, &end)) return false;
  CHU_DPoint corner;
  if (chain.PtOnVertex(position, tolerance, corner) >= 0) {
    result = corner;
    return true;
  }
  double x = 0.0, y = 0.0;
  HU_Math::ClosestPointOnSegment(position, start, end, x, y);
  const double length = std::hypot(end.x - start.x, end.y - start.y);
  const double t = length > 0.0 ? std::hypot(x - start.x, y - start.y) / length : 0.0;
  const bool zSet = start.z != CHU_DPoint::C_NULL_VALL && end.z != CHU_DPoint::C_NULL_VALL;
  result.SetPt(x, y, zSet ? start.z + t * (end.z - start.z) : CHU_DPoint::C_NULL_VALL);
  return true;
}

bool CHU_DBoundaryMesh::Snap(CHU_DPoint& result, const CHU_DPoint& position, double tolerance, int type, int setId,
                             bool elementMode) const {
  if (!(tolerance >= 0.0)) return false;
  if (!elementMode) {
    for (const CHU_DBoundaryMeshVertex* vertex : VerticesNear(position, tolerance)) {
      if (!vertex->IsAttachedToElementOfType(type, setId)) continue;
      result = vertex->GetPosition();
      return true;
    }
    return false;
  }
  for (const auto& entry : m_elements) {
    if (Accepts(entry.object, Kind::Any, type, setId) && SnapToElement(entry.object, result, position, tolerance)) {
      return true;
    }
  }
  return false;
}
