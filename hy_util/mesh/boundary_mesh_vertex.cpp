#include "hy_util/mesh/boundary_mesh_vertex.h"

#include <algorithm>

#include "hy_util/mesh/boundary_mesh_element.h"

void CHU_DBoundaryMeshVertex::OnElementAttach(CHU_DBoundaryMeshElement* element) {
  if (element == nullptr || IsAttachedToElement(element->GetID())) return;
  m_attached.emplace_back(element->GetID(), element);
}

void CHU_DBoundaryMeshVertex::OnElementDetach(const CHU_DBoundaryMeshElement* element) {
  if (element == nullptr) return;
  const int id = element->GetID();
  const auto found = std::find_if(m_attached.begin(), m_attached.end(), [id](const auto& e) { return e.first == id; });
  if (found != m_attached.end()) m_attached.erase(found);
}

bool CHU_DBoundaryMeshVertex::IsAttachedToElement(int elementId) const {
  return std::any_of(m_attached.begin(), m_attached.end(), [elementId](const auto& e) { return e.first == elementId; });
}

bool CHU_DBoundaryMeshVertex::IsAttachedToElement(const CHU_DBoundaryMeshElement* element) const {
  return element != nullptr &&
         std::any_of(m_attached.begin(), m_attached.end(), [element](const auto& e) { return e.second == element; });
}

bool CHU_DBoundaryMeshVertex::IsAttachedToElementOfType(int type, int setId) const {
  return std::any_of(m_attached.begin(), m_attached.end(), [type, setId](const auto& e) {
    return (type == -1 || e.second->GetType() == type) && (setId == -1 || e.second->GetSetID() == setId);
  });
}

bool CHU_DBoundaryMeshVertex::IsAttachedToSelectedElement(int type) const {
  return std::any_of(m_attached.begin(), m_attached.end(), [type](const auto& e) {
    return (type == -1 || e.second->GetType() == type) && e.second->IsSelected();
  });
}

CHU_DBoundaryMesh_ElementIDIterator CHU_DBoundaryMeshVertex::GetElementIDIterator() const {
  return CHU_DBoundaryMesh_ElementIDIterator(&m_attached, nullptr);
}

CHU_DBoundaryMesh_ElementIDIterator CHU_DBoundaryMeshVertex::GetPointIDIterator() const {
  return CHU_DBoundaryMesh_ElementIDIterator(&m_attached, new CHU_DBoundaryMesh_PointFilter);
}

CHU_DBoundaryMesh_ElementIDIterator CHU_DBoundaryMeshVertex::GetPolylineIDIterator() const {
  return CHU_DBoundaryMesh_ElementIDIterator(&m_attached, new CHU_DBoundaryMesh_PolylineFilter);
}

CHU_DBoundaryMesh_ElementIDIterator CHU_DBoundaryMeshVertex::GetPolygonIDIterator() const {
  return CHU_DBoundaryMesh_ElementIDIterator(&m_attached, new CHU_DBoundaryMesh_PolygonFilter);
}
