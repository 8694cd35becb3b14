#include "hy_util/mesh/boundary_mesh_element.h"

#include <algorithm>
#include <cstddef>

#include "hy_util/mesh/boundary_mesh_vertex.h"

int CHU_DBoundaryMeshElement::GetConnectedVertices(const CHU_DBoundaryMeshVertex*,
                                                   std::vector<CHU_DBoundaryMeshVertex*>&) const {
  return 0;
}

int CHU_DBoundaryMeshElement::InsertVertexBetween(CHU_DBoundaryMeshVertex*, const CHU_DBoundaryMeshVertex*,
                                                  const CHU_DBoundaryMeshVertex*) {
  return -1;
}

void CHU_DBoundaryMeshElement::OnVertexRemove(const CHU_DBoundaryMeshVertex*, std::vector<int>&) {}

void CHU_DBoundaryMeshElement::OnVertexSplit(const CHU_DBoundaryMeshVertex*, CHU_DBoundaryMeshVertex*) {}

int CHU_DBoundaryMeshElement::OnVertexWeld(const CHU_DBoundaryMeshVertex*, CHU_DBoundaryMeshVertex*) {
  return -1;
}

// ---- Point ----

void CHU_DBoundaryMeshPoint::GetVertexIDList(std::vector<int>& ids) const {
  if (m_vertex != nullptr) ids.push_back(m_vertex->GetID());
}

void CHU_DBoundaryMeshPoint::OnVertexRemove(const CHU_DBoundaryMeshVertex* vertex,
                                            std::vector<int>& removedIndices) {
  if (m_vertex == nullptr || m_vertex != vertex) return;
  m_vertex = nullptr;
  removedIndices.push_back(0);
}

void CHU_DBoundaryMeshPoint::OnVertexSplit(const CHU_DBoundaryMeshVertex* oldVertex,
                                           CHU_DBoundaryMeshVertex* newVertex) {
  if (m_vertex == oldVertex) m_vertex = newVertex;
}

int CHU_DBoundaryMeshPoint::OnVertexWeld(const CHU_DBoundaryMeshVertex* oldVertex,
                                         CHU_DBoundaryMeshVertex* survivor) {
  if (m_vertex == oldVertex) m_vertex = survivor;
  return -1;
}

// ---- Polyline ----

void CHU_DBoundaryMeshPolyline::GetVertexIDList(std::vector<int>& ids) const {
  for (const CHU_DBoundaryMeshVertex* vertex : m_vertices) ids.push_back(vertex->GetID());
}

int CHU_DBoundaryMeshPolyline::GetConnectedVertices(const CHU_DBoundaryMeshVertex* vertex,
                                                    std::vector<CHU_DBoundaryMeshVertex*>& out) const {
  int added = 0;
  for (std::size_t i = 0; i < m_vertices.size(); ++i) {
    if (m_vertices[i] != vertex) continue;
    if (i > 0) out.push_back(m_vertices[i - 1]), ++added;
    if (i + 1 < m_vertices.size()) out.push_back(m_vertices[i + 1]), ++added;
  }
  return added;
}

int CHU_DBoundaryMeshPolyline::InsertVertexBetween(CHU_DBoundaryMeshVertex* newVertex,
                                                   const CHU_DBoundaryMeshVertex* a,
                                                   const CHU_DBoundaryMeshVertex* b) {
  if (newVertex == nullptr) return -1;
  for (std::size_t i = 1; i < m_vertices.size(); ++i) {
    const bool forward = m_vertices[i - 1] == a && m_vertices[i] == b;
    const bool backward = m_vertices[i - 1] == b && m_vertices[i] == a;
    if (forward || backward) {
      m_vertices.insert(m_vertices.begin() + static_cast<std::ptrdiff_t>(i), newVertex);
      return static_cast<int>(i);
    }
  }
  return -1;
}

void CHU_DBoundaryMeshPolyline::OnVertexRemove(const CHU_DBoundaryMeshVertex* vertex,
                                               std::vector<int>& removedIndices) {
  std::size_t kept = 0;
  for (std::size_t i = 0; i < m_vertices.size(); ++i) {
    if (m_vertices[i] == vertex) {
      removedIndices.push_back(static_cast<int>(i));
    } else {
      m_vertices[kept++] = m_vertices[i];
    }
  }
  m_vertices.resize(kept);
}

void CHU_DBoundaryMeshPolyline::OnVertexSplit(const CHU_DBoundaryMeshVertex* oldVertex,
                                              CHU_DBoundaryMeshVertex* newVertex) {
  std::replace(m_vertices.begin(), m_vertices.end(), const_cast<CHU_DBoundaryMeshVertex*>(oldVertex), newVertex);
}

int CHU_DBoundaryMeshPolyline::OnVertexWeld(const CHU_DBoundaryMeshVertex* oldVertex,
                                            CHU_DBoundaryMeshVertex* survivor) {
  if (GetType() == 11 && ContainsVertex(survivor)) return -2;
  std::replace(m_vertices.begin(), m_vertices.end(), const_cast<CHU_DBoundaryMeshVertex*>(oldVertex), survivor);
  int firstDeleted = -1;
  std::size_t kept = 0;
  for (std::size_t i = 0; i < m_vertices.size(); ++i) {
    const bool repeat = i > 0 && m_vertices[i] == survivor && m_vertices[i - 1] == survivor;
    if (repeat) {
      if (firstDeleted < 0) firstDeleted = static_cast<int>(i);
    } else {
      m_vertices[kept++] = m_vertices[i];
    }
  }
  m_vertices.resize(kept);
  return firstDeleted;
}

CHU_DBoundaryMeshVertex* CHU_DBoundaryMeshPolyline::GetVertexAt(int index) const {
  if (index < 0 || index >= GetVertexCount()) return nullptr;
  return m_vertices[static_cast<std::size_t>(index)];
}

void CHU_DBoundaryMeshPolyline::PreallocateVertexStorage(int n) {
  if (n > 0) m_vertices.reserve(static_cast<std::size_t>(n));
}

void CHU_DBoundaryMeshPolyline::AddVertex(CHU_DBoundaryMeshVertex* vertex) {
  if (vertex != nullptr) m_vertices.push_back(vertex);
}

bool CHU_DBoundaryMeshPolyline::ContainsVertex(const CHU_DBoundaryMeshVertex* vertex) const {
  return std::find(m_vertices.begin(), m_vertices.end(), vertex) != m_vertices.end();
}

// ---- Polygon ----

bool CHU_DBoundaryMeshPolygon::IsValid() const {
  if (m_vertices.size() < 3) return false;
  // Three distinct vertices among the entries; stop counting at three.
  const CHU_DBoundaryMeshVertex* first = m_vertices[0];
  const CHU_DBoundaryMeshVertex* second = nullptr;
  for (const CHU_DBoundaryMeshVertex* vertex : m_vertices) {
    if (vertex == first || vertex == second) continue;
    if (second == nullptr) {
      second = vertex;
    } else {
      return true;
    }
  }
  return false;
}

int CHU_DBoundaryMeshPolygon::GetConnectedVertices(const CHU_DBoundaryMeshVertex* vertex,
                                                   std::vector<CHU_DBoundaryMeshVertex*>& out) const {
  std::size_t corners = m_vertices.size();
  if (corners >= 2 && m_vertices.front() == m_vertices.back()) --corners;
  if (corners < 2) return 0;
  int added = 0;
  for (std::size_t i = 0; i < corners; ++i) {
    if (m_vertices[i] != vertex) continue;
    out.push_back(m_vertices[(i + corners - 1) % corners]);
    out.push_back(m_vertices[(i + 1) % corners]);
    added += 2;
  }
  return added;
}

void CHU_DBoundaryMeshPolygon::OnVertexRemove(const CHU_DBoundaryMeshVertex* vertex,
                                              std::vector<int>& removedIndices) {
  CHU_DBoundaryMeshPolyline::OnVertexRemove(vertex, removedIndices);
  EnforceClosure();
}

void CHU_DBoundaryMeshPolygon::OnVertexSplit(const CHU_DBoundaryMeshVertex* oldVertex,
                                             CHU_DBoundaryMeshVertex* newVertex) {
  CHU_DBoundaryMeshPolyline::OnVertexSplit(oldVertex, newVertex);
  EnforceClosure();
}

int CHU_DBoundaryMeshPolygon::OnVertexWeld(const CHU_DBoundaryMeshVertex* oldVertex,
                                           CHU_DBoundaryMeshVertex* survivor) {
  const int result = CHU_DBoundaryMeshPolyline::OnVertexWeld(oldVertex, survivor);
  if (result != -2) EnforceClosure();
  return result;
}

void CHU_DBoundaryMeshPolygon::EnforceClosure() {
  if (m_vertices.size() > 2 && m_vertices.front() != m_vertices.back()) m_vertices.push_back(m_vertices.front());
  while ((m_vertices.size() == 2 || m_vertices.size() == 3) && m_vertices.front() == m_vertices.back()) {
    m_vertices.pop_back();
  }
}
