#pragma once
// CHU_DBoundaryMeshVertex: a corner shared by the elements of a boundary mesh. It
// knows which elements use it (its attached map, in attachment order), so the mesh
// can find an element's neighbours and orphaned vertices without a search.
//
// Inside a mesh, move a vertex with CHU_DBoundaryMesh::MoveVertex, which keeps the
// mesh's position indexes in step; SetPosition alone does not.

#include <cstdint>

#include "hy_util/geometry/point.h"
#include "hy_util/mesh/id_iterators.h"

class CHU_DBoundaryMeshVertex {
 public:
  explicit CHU_DBoundaryMeshVertex(int id) : m_id(id) {}
  CHU_DBoundaryMeshVertex(const CHU_DBoundaryMeshVertex&) = delete;
  CHU_DBoundaryMeshVertex& operator=(const CHU_DBoundaryMeshVertex&) = delete;

  int GetID() const { return m_id; }
  void SetID(int id) { m_id = id; }
  const CHU_DPoint& GetPosition() const { return m_position; }
  void SetPosition(const CHU_DPoint& position) { m_position = position; }
  bool IsSelected() const { return m_selected; }
  void SetSelected(bool selected) { m_selected = selected; }

  // Attaching an element already attached changes nothing; null is ignored.
  void OnElementAttach(CHU_DBoundaryMeshElement* element);
  void OnElementDetach(const CHU_DBoundaryMeshElement* element);
  void ClearAttachedElements() { m_attached.clear(); }
  bool IsAttachedToElement(int elementId) const;
  bool IsAttachedToElement(const CHU_DBoundaryMeshElement* element) const;
  // Some attached element has the type and is in the set (-1 = any for either).
  bool IsAttachedToElementOfType(int type, int setId) const;
  // Some attached element of the type (-1 = any) is selected.
  bool IsAttachedToSelectedElement(int type) const;
  bool IsOrphaned() const { return m_attached.empty(); }

  const HU_AttachedElementList& GetAttachedElements() const { return m_attached; }

  CHU_DBoundaryMesh_ElementIDIterator GetElementIDIterator() const;
  CHU_DBoundaryMesh_ElementIDIterator GetPointIDIterator() const;
  CHU_DBoundaryMesh_ElementIDIterator GetPolylineIDIterator() const;
  CHU_DBoundaryMesh_ElementIDIterator GetPolygonIDIterator() const;

 private:
  friend class CHU_DBoundaryMesh;
  friend class HU_VertexIndex;

  int m_id;
  bool m_selected = false;
  CHU_DPoint m_position;
  HU_AttachedElementList m_attached;
  // Place in the owning mesh's vertex map: smaller is earlier.
  std::uint64_t m_mapOrder = 0;
};
