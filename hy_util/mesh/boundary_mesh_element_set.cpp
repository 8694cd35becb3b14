#include "hy_util/mesh/boundary_mesh_element_set.h"

#include "hy_util/mesh/boundary_mesh_element.h"

int* CHU_DBoundaryMeshElementSet::KindCounter(const CHU_DBoundaryMeshElement* element) {
  if (dynamic_cast<const CHU_DBoundaryMeshPolygon*>(element) != nullptr) return &m_polygonCount;
  if (dynamic_cast<const CHU_DBoundaryMeshPolyline*>(element) != nullptr) return &m_polylineCount;
  if (dynamic_cast<const CHU_DBoundaryMeshPoint*>(element) != nullptr) return &m_pointCount;
  return nullptr;
}

bool CHU_DBoundaryMeshElementSet::AddElement(CHU_DBoundaryMeshElement* element) {
  if (element == nullptr || !m_members.Insert(element->GetID(), element)) return false;
  if (int* counter = KindCounter(element)) ++*counter;
  return true;
}

bool CHU_DBoundaryMeshElementSet::RemoveElement(const CHU_DBoundaryMeshElement* element) {
  if (element == nullptr || m_members.Find(element->GetID()) != element) return false;
  m_members.Erase(element->GetID());
  if (int* counter = KindCounter(element)) --*counter;
  return true;
}

int CHU_DBoundaryMeshElementSet::GetElementCount(int type) const {
  if (type == -1) return static_cast<int>(m_members.Size());
  int count = 0;
  for (const auto& entry : m_members) count += entry.object->GetType() == type ? 1 : 0;
  return count;
}
