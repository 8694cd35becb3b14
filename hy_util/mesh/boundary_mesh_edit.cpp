// Vertex edits and removal: the operations that change which vertices an element
// uses, keeping attached maps, counts, position indexes and flow-constriction
// lists in step.

#include <algorithm>
#include <functional>

#include "hy_util/mesh/boundary_mesh.h"

bool CHU_DBoundaryMesh::MoveVertex(int id, const CHU_DPoint& position) {
  CHU_DBoundaryMeshVertex* vertex = m_vertices.Find(id);
  if (vertex == nullptr) return false;
  m_index.Remove(vertex);
  vertex->SetPosition(position);
  m_index.Insert(vertex);
  return true;
}

int CHU_DBoundaryMesh::InsertVertex(const CHU_DPoint& position, const CHU_DPoint& a, const CHU_DPoint& b) {
  if (a == b) return -1;
  const std::vector<CHU_DBoundaryMeshVertex*> atA = VerticesAt(a), atB = VerticesAt(b);
  if (atA.empty() || atB.empty()) return -1;
  CHU_DBoundaryMeshVertex* created = CreateVertex(position);
  if (created == nullptr) return -1;
  for (CHU_DBoundaryMeshVertex* va : atA) {
    for (CHU_DBoundaryMeshVertex* vb : atB) {
      const HU_AttachedElementList attached = va->GetAttachedElements();
      for (const auto& [elementId, element] : attached) {
        const int index = element->InsertVertexBetween(created, va, vb);
        if (index < 0) continue;
        InsertVertexData(elementId, element->GetType(), index, true);
        created->OnElementAttach(element);
      }
    }
  }
  if (created->IsOrphaned()) {
    DestroyVertex(created);
    return -1;
  }
  return created->GetID();
}

bool CHU_DBoundaryMesh::RemoveVertex(int id) {
  CHU_DBoundaryMeshVertex* vertex = m_vertices.Find(id);
  if (vertex == nullptr) return false;
  std::vector<int> invalid;
  const HU_AttachedElementList attached = vertex->GetAttachedElements();
  for (const auto& [elementId, element] : attached) {
    std::vector<int> removed;
    element->OnVertexRemove(vertex, removed);
    // Later indexes first, so each deletion leaves the earlier ones in place.
    std::sort(removed.begin(), removed.end(), std::greater<int>());
    for (int index : removed) DeleteVertexData(elementId, element->GetType(), index);
    if (!element->IsValid()) {
      DeleteVertexData(elementId, element->GetType(), -1);
      invalid.push_back(elementId);
    }
  }
  vertex->ClearAttachedElements();
  DestroyVertex(vertex);
  for (int elementId : invalid) RemoveElement(elementId);
  return true;
}

int CHU_DBoundaryMesh::SplitVertex(int id) {
  CHU_DBoundaryMeshVertex* vertex = m_vertices.Find(id);
  if (vertex == nullptr) return 0;
  const HU_AttachedElementList attached = vertex->GetAttachedElements();
  int created = 0;
  for (std::size_t i = 1; i < attached.size(); ++i) {
    CHU_DBoundaryMeshVertex* copy = CreateVertex(vertex->GetPosition());
    if (copy == nullptr) break;
    CHU_DBoundaryMeshElement* element = attached[i].second;
    element->OnVertexSplit(vertex, copy);
    copy->OnElementAttach(element);
    vertex->OnElementDetach(element);
    ++created;
  }
  return created;
}

bool CHU_DBoundaryMesh::WeldVertices(const CHU_DPoint& position, double tolerance) {
  const std::vector<CHU_DBoundaryMeshVertex*> near = VerticesNear(position, tolerance);
  if (near.size() < 2) return false;
  CHU_DBoundaryMeshVertex* survivor = near.front();
  std::vector<int> invalid;
  for (std::size_t i = 1; i < near.size(); ++i) {
    CHU_DBoundaryMeshVertex* old = near[i];
    bool refused = false;
    const HU_AttachedElementList attached = old->GetAttachedElements();
    for (const auto& [elementId, element] : attached) {
      const int result = element->OnVertexWeld(old, survivor);
      if (result >= 0) DeleteVertexData(elementId, element->GetType(), result);
      if (result == -2) {
        refused = true;
        continue;
      }
      old->OnElementDetach(element);
      survivor->OnElementAttach(element);
      if (!element->IsValid() && std::find(invalid.begin(), invalid.end(), elementId) == invalid.end()) {
        DeleteVertexData(elementId, element->GetType(), -1);
        invalid.push_back(elementId);
      }
    }
    if (!refused) DestroyVertex(old);
  }
  for (int elementId : invalid) RemoveElement(elementId);
  return true;
}

void CHU_DBoundaryMesh::AppendPositions(const std::vector<CHU_DBoundaryMeshVertex*>& vertices,
                                        std::vector<CHU_DPoint>& positions, bool uniqueOnly) {
  for (const CHU_DBoundaryMeshVertex* vertex : vertices) {
    const CHU_DPoint& p = vertex->GetPosition();
    if (uniqueOnly && std::find(positions.begin(), positions.end(), p) != positions.end()) continue;
    positions.push_back(p);
  }
}

int CHU_DBoundaryMesh::GetAllConnectedVertices(const CHU_DPoint& position, std::vector<CHU_DPoint>& positions,
                                               bool uniqueOnly) const {
  const std::size_t start = positions.size();
  for (const CHU_DBoundaryMeshVertex* vertex : VerticesAt(position)) {
    std::vector<CHU_DBoundaryMeshVertex*> neighbours;
    for (const auto& entry : vertex->GetAttachedElements()) entry.second->GetConnectedVertices(vertex, neighbours);
    AppendPositions(neighbours, positions, uniqueOnly);
  }
  return static_cast<int>(positions.size() - start);
}

int CHU_DBoundaryMesh::GetConnectedVerticesInElement(int elementId, const CHU_DPoint& position,
                                                     std::vector<CHU_DPoint>& positions, bool uniqueOnly) const {
  const CHU_DBoundaryMeshElement* element = m_elements.Find(elementId);
  if (element == nullptr) return 0;
  const std::size_t start = positions.size();
  for (const CHU_DBoundaryMeshVertex* vertex : VerticesAt(position)) {
    if (!vertex->IsAttachedToElement(element)) continue;
    std::vector<CHU_DBoundaryMeshVertex*> neighbours;
    element->GetConnectedVertices(vertex, neighbours);
    AppendPositions(neighbours, positions, uniqueOnly);
  }
  return static_cast<int>(positions.size() - start);
}

bool CHU_DBoundaryMesh::RemoveElement(int id) {
  CHU_DBoundaryMeshElement* element = m_elements.Find(id);
  if (element == nullptr) return false;
  std::vector<CHU_DBoundaryMeshVertex*> vertices;
  if (auto* point = dynamic_cast<CHU_DBoundaryMeshPoint*>(element)) {
    if (point->GetVertex() != nullptr) vertices.push_back(point->GetVertex());
    point->RemoveVertex();
  } else if (auto* line = dynamic_cast<CHU_DBoundaryMeshPolyline*>(element)) {
    vertices = line->GetVertices();
    line->RemoveAllVertices();
  }
  std::sort(vertices.begin(), vertices.end());
  vertices.erase(std::unique(vertices.begin(), vertices.end()), vertices.end());
  for (CHU_DBoundaryMeshVertex* vertex : vertices) vertex->OnElementDetach(element);
  for (CHU_DBoundaryMeshVertex* vertex : vertices) {
    if (vertex->IsOrphaned()) DestroyVertex(vertex);
  }
  if (int* counter = KindCounter(element)) --*counter;
  if (CHU_DBoundaryMeshElementSet* set = m_sets.Find(element->GetSetID())) set->RemoveElement(element);
  m_elements.Erase(id);
  return true;
}

int CHU_DBoundaryMesh::RemoveElements(const std::vector<int>& ids) {
  int removed = 0;
  for (int id : ids) removed += RemoveElement(id) ? 1 : 0;
  return removed;
}

int CHU_DBoundaryMesh::RemovePoints(bool selectedOnly, int type, int setId) {
  return RemoveElements(CollectIDs(Kind::Point, type, setId, selectedOnly));
}

int CHU_DBoundaryMesh::RemovePolylines(bool selectedOnly, int type, int setId) {
  return RemoveElements(CollectIDs(Kind::Polyline, type, setId, selectedOnly));
}

int CHU_DBoundaryMesh::RemovePolygons(bool selectedOnly, int type, int setId) {
  return RemoveElements(CollectIDs(Kind::Polygon, type, setId, selectedOnly));
}
