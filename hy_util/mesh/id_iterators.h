#pragma once
// The ID iterators of the boundary mesh: value objects that hand out element,
// element-set and vertex IDs one at a time, in the insertion order of the map they
// walk (not ascending ID; use the mesh's Create...IDSequence for that).
//
// An element iterator owns its filter (null accepts everything) and gives each
// copy a clone of it. Iterators do not own the map they walk; removing entries
// from that map invalidates them, so collect IDs first and then remove.
// The mesh and the vertex hand iterators out; their constructors are private.

#include <boost/container/small_vector.hpp>

#include <cstddef>
#include <memory>
#include <utility>
#include <vector>

#include "hy_util/mesh/element_filter.h"
#include "hy_util/mesh/ordered_id_map.h"

class CHU_DBoundaryMesh;
class CHU_DBoundaryMeshElement;
class CHU_DBoundaryMeshElementSet;
class CHU_DBoundaryMeshVertex;

using HU_ElementMap = HU_OrderedIdMap<CHU_DBoundaryMeshElement>;
using HU_ElementSetMap = HU_OrderedIdMap<CHU_DBoundaryMeshElementSet>;
using HU_VertexMap = HU_OrderedIdMap<CHU_DBoundaryMeshVertex>;
// A vertex's attached elements in attachment order. Most vertices have one or
// two, which are kept inside the vertex without a separate allocation.
using HU_AttachedElementList = boost::container::small_vector<std::pair<int, CHU_DBoundaryMeshElement*>, 2>;

class CHU_DBoundaryMesh_ElementIDIterator {
 public:
  CHU_DBoundaryMesh_ElementIDIterator(const CHU_DBoundaryMesh_ElementIDIterator& other);
  CHU_DBoundaryMesh_ElementIDIterator& operator=(const CHU_DBoundaryMesh_ElementIDIterator& other);
  ~CHU_DBoundaryMesh_ElementIDIterator() = default;

  bool HasNext() const;
  // The next accepted ID, or -1 when exhausted.
  int Next();
  void Reset();

 private:
  friend class CHU_DBoundaryMesh;
  friend class CHU_DBoundaryMeshVertex;
  CHU_DBoundaryMesh_ElementIDIterator(const HU_ElementMap* map, IHU_DBoundaryMesh_ElementFilter* filter);
  CHU_DBoundaryMesh_ElementIDIterator(const HU_AttachedElementList* list,
                                      IHU_DBoundaryMesh_ElementFilter* filter);

  const CHU_DBoundaryMeshElement* Current() const;
  void Step();
  void AdvanceToAccepted();

  std::unique_ptr<IHU_DBoundaryMesh_ElementFilter> m_filter;
  // Exactly one of the two sources is set: the mesh's element map or a vertex's list.
  const HU_ElementMap* m_map = nullptr;
  HU_ElementMap::const_iterator m_position;
  const HU_AttachedElementList* m_list = nullptr;
  std::size_t m_index = 0;
};

class CHU_DBoundaryMesh_ElementSetIDIterator {
 public:
  bool HasNext() const;
  int Next();
  void Reset();

 private:
  friend class CHU_DBoundaryMesh;
  CHU_DBoundaryMesh_ElementSetIDIterator(const HU_ElementSetMap* map, int type);
  void AdvanceToAccepted();

  const HU_ElementSetMap* m_map;
  HU_ElementSetMap::const_iterator m_position;
  int m_type;
};

class CHU_DBoundaryMesh_VertexIDIterator {
 public:
  bool HasNext() const { return m_position != m_map->end(); }
  int Next();
  void Reset() { m_position = m_map->begin(); }

 private:
  friend class CHU_DBoundaryMesh;
  explicit CHU_DBoundaryMesh_VertexIDIterator(const HU_VertexMap* map) : m_map(map), m_position(map->begin()) {}

  const HU_VertexMap* m_map;
  HU_VertexMap::const_iterator m_position;
};
