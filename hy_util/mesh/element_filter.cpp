#include "hy_util/mesh/element_filter.h"

#include "hy_util/mesh/boundary_mesh_element.h"

bool CHU_DBoundaryMesh_ElementTypeFilter::AcceptElement(const CHU_DBoundaryMeshElement* element) const {
  return element != nullptr && element->GetType() == m_type;
}

IHU_DBoundaryMesh_ElementFilter* CHU_DBoundaryMesh_ElementTypeFilter::Clone() const {
  return new CHU_DBoundaryMesh_ElementTypeFilter(m_type);
}

bool CHU_DBoundaryMesh_ElementSetIDFilter::AcceptElement(const CHU_DBoundaryMeshElement* element) const {
  return element != nullptr && element->GetSetID() == m_setId;
}

IHU_DBoundaryMesh_ElementFilter* CHU_DBoundaryMesh_ElementSetIDFilter::Clone() const {
  return new CHU_DBoundaryMesh_ElementSetIDFilter(m_setId);
}

bool CHU_DBoundaryMesh_PointFilter::AcceptElement(const CHU_DBoundaryMeshElement* element) const {
  return dynamic_cast<const CHU_DBoundaryMeshPoint*>(element) != nullptr;
}

IHU_DBoundaryMesh_ElementFilter* CHU_DBoundaryMesh_PointFilter::Clone() const {
  return new CHU_DBoundaryMesh_PointFilter;
}

bool CHU_DBoundaryMesh_PolylineFilter::AcceptElement(const CHU_DBoundaryMeshElement* element) const {
  return dynamic_cast<const CHU_DBoundaryMeshPolyline*>(element) != nullptr &&
         dynamic_cast<const CHU_DBoundaryMeshPolygon*>(element) == nullptr;
}

IHU_DBoundaryMesh_ElementFilter* CHU_DBoundaryMesh_PolylineFilter::Clone() const {
  return new CHU_DBoundaryMesh_PolylineFilter;
}

bool CHU_DBoundaryMesh_PolygonFilter::AcceptElement(const CHU_DBoundaryMeshElement* element) const {
  return dynamic_cast<const CHU_DBoundaryMeshPolygon*>(element) != nullptr;
}

IHU_DBoundaryMesh_ElementFilter* CHU_DBoundaryMesh_PolygonFilter::Clone() const {
  return new CHU_DBoundaryMesh_PolygonFilter;
}

bool CHU_DBoundaryMesh_CompositeElementFilter::AcceptElement(const CHU_DBoundaryMeshElement* element) const {
  const bool a = m_first == nullptr || m_first->AcceptElement(element);
  const bool b = m_second == nullptr || m_second->AcceptElement(element);
  return BooleanOperation(a, b);
}

IHU_DBoundaryMesh_ElementFilter* CHU_DBoundaryMesh_CompositeElementFilter_Intersection::Clone() const {
  return new CHU_DBoundaryMesh_CompositeElementFilter_Intersection(CloneFirst(), CloneSecond());
}

IHU_DBoundaryMesh_ElementFilter* CHU_DBoundaryMesh_CompositeElementFilter_Union::Clone() const {
  return new CHU_DBoundaryMesh_CompositeElementFilter_Union(CloneFirst(), CloneSecond());
}
