#include "hy_util/mesh/id_iterators.h"

#include "hy_util/mesh/boundary_mesh_element.h"
#include "hy_util/mesh/boundary_mesh_element_set.h"
#include "hy_util/mesh/boundary_mesh_vertex.h"

CHU_DBoundaryMesh_ElementIDIterator::CHU_DBoundaryMesh_ElementIDIterator(
    const HU_ElementMap* map, IHU_DBoundaryMesh_ElementFilter* filter)
    : m_filter(filter), m_map(map) {
  Reset();
}

CHU_DBoundaryMesh_ElementIDIterator::CHU_DBoundaryMesh_ElementIDIterator(
    const HU_AttachedElementList* list, IHU_DBoundaryMesh_ElementFilter* filter)
    : m_filter(filter), m_list(list) {
  Reset();
}

CHU_DBoundaryMesh_ElementIDIterator::CHU_DBoundaryMesh_ElementIDIterator(
    const CHU_DBoundaryMesh_ElementIDIterator& other)
    : m_filter(other.m_filter ? other.m_filter->Clone() : nullptr),
      m_map(other.m_map),
      m_position(other.m_position),
      m_list(other.m_list),
      m_index(other.m_index) {}

CHU_DBoundaryMesh_ElementIDIterator& CHU_DBoundaryMesh_ElementIDIterator::operator=(
    const CHU_DBoundaryMesh_ElementIDIterator& other) {
  if (this == &other) return *this;
  m_filter.reset(other.m_filter ? other.m_filter->Clone() : nullptr);
  m_map = other.m_map;
  m_position = other.m_position;
  m_list = other.m_list;
  m_index = other.m_index;
  return *this;
}

const CHU_DBoundaryMeshElement* CHU_DBoundaryMesh_ElementIDIterator::Current() const {
  if (m_map != nullptr) return m_position == m_map->end() ? nullptr : m_position->object;
  return m_index < m_list->size() ? (*m_list)[m_index].second : nullptr;
}

void CHU_DBoundaryMesh_ElementIDIterator::Step() {
  if (m_map != nullptr) {
    ++m_position;
  } else {
    ++m_index;
  }
}

void CHU_DBoundaryMesh_ElementIDIterator::AdvanceToAccepted() {
  for (const CHU_DBoundaryMeshElement* element = Current(); element != nullptr; element = Current()) {
    if (!m_filter || m_filter->AcceptElement(element)) return;
    Step();
  }
}

bool CHU_DBoundaryMesh_ElementIDIterator::HasNext() const { return Current() != nullptr; }

int CHU_DBoundaryMesh_ElementIDIterator::Next() {
  const CHU_DBoundaryMeshElement* element = Current();
  if (element == nullptr) return -1;
  const int id = m_map != nullptr ? m_position->id : (*m_list)[m_index].first;
  Step();
  AdvanceToAccepted();
  return id;
}

void CHU_DBoundaryMesh_ElementIDIterator::Reset() {
  if (m_map != nullptr) {
    m_position = m_map->begin();
  } else {
    m_index = 0;
  }
  AdvanceToAccepted();
}

CHU_DBoundaryMesh_ElementSetIDIterator::CHU_DBoundaryMesh_ElementSetIDIterator(const HU_ElementSetMap* map,
                                                                               int type)
    : m_map(map), m_type(type) {
  Reset();
}

void CHU_DBoundaryMesh_ElementSetIDIterator::AdvanceToAccepted() {
  while (m_position != m_map->end() && m_type != -1 && m_position->object->GetType() != m_type) ++m_position;
}

bool CHU_DBoundaryMesh_ElementSetIDIterator::HasNext() const { return m_position != m_map->end(); }

int CHU_DBoundaryMesh_ElementSetIDIterator::Next() {
  if (m_position == m_map->end()) return -1;
  const int id = m_position->id;
  ++m_position;
  AdvanceToAccepted();
  return id;
}

void CHU_DBoundaryMesh_ElementSetIDIterator::Reset() {
  m_position = m_map->begin();
  AdvanceToAccepted();
}

int CHU_DBoundaryMesh_VertexIDIterator::Next() {
  if (m_position == m_map->end()) return -1;
  return (m_position++)->id;
}
