#pragma once
// CHU_DBoundaryMesh: the editable boundary model of a 2D flood-model domain. Points,
// polylines (breaklines) and polygons (boundaries, regions) share their corner
// vertices, so the editing operations (insert, weld, split, snap, move, remove)
// keep the topology the mesh generator later needs. Elements are grouped into
// numbered, named sets.
//
// Ownership: the mesh owns its vertices, elements and sets. Element pointers and
// vertex pointers never leave it except through the protected accessors; callers
// work with IDs. Vertex selection flags belong to the mesh (SelectVertex,
// DeselectAllVertices): a subclass that sets them on a vertex directly must clear
// them itself. IDs are signed 32-bit; -1 means "none" in results and "any" in
// type and set arguments. Vertices, elements and sets are visited in insertion
// order (see HU_OrderedIdMap), so every answer is deterministic.
//
// Searches: exact-position searches go through a hash of (x, y, z); square-box
// searches (|dx| <= tol and |dy| <= tol, z ignored) through an R-tree. Both give
// the same answers as a scan of the vertex map in map order.
//
// Flow-constriction lines (type 11) carry per-vertex data lists in the host's
// attribute store (SetAttributeStore); every edit that adds or removes one of
// their vertices rewrites the lists (see HU_FlowConstrictionList). Without a store
// those steps do nothing.
//
// Choices where the model leaves room:
// - Element selection by position: a point is a candidate within the square box
//   of the tolerance, a polyline when a segment lies within the tolerance
//   (distance <= tol), a polygon when the position is inside it (PtInPoly) or
//   within the tolerance of its boundary. The candidate nearest the position wins
//   (points by centre distance, lines and polygons by distance to the boundary, so
//   of nested polygons the one whose edge is closest); ties go to the first in
//   element-map order. Selecting adds to the selection; it never clears it.
// - Selection by rectangle selects the elements whose vertices all lie inside
//   (edges included) and returns how many it newly selected.
// - Element-mode Snap accepts a polyline or polygon when PtOnPoly finds a segment
//   within the tolerance; the result is then a corner within the tolerance box
//   (PtOnVertex) when there is one, else the nearest point of that segment, with z
//   interpolated along it (unset when a corner's z is unset).
// - GetAllConnectedVertices gives the positions of the neighbours of every vertex
//   exactly at the position, over all elements attached to them; uniqueOnly drops
//   positions already given. GetConnectedVerticesInElement does the same within one
//   element.
// - GetPolyline and GetPolygon fill the geometry object with the vertex positions;
//   a polygon's closing repeat is left out (the geometry ring closes itself).
//   GetElementVertexIDList gives the stored entries, closing repeat included.
// - SetPolyline reuses the line's own vertices where a new corner sits exactly on
//   one of them, creates the others, and drops vertices left orphaned. A type-11
//   line's data lists are trimmed or extended at the end to the new vertex count.
// - The public AddPoint always makes a new vertex (it has no weld mode); the
//   protected AddPoint(vertexId, ...) puts a point on an existing vertex.
// - RemoveVertex drops the vertex from every element that uses it (a ring closes
//   again), deletes its entries from type-11 data lists, and removes the elements
//   left invalid. RemoveElement leaves the host's record of the element alone, so
//   the host can restore it on undo.
// - EnsureElementsHaveAssignedSet uses the first set with the name; when none
//   exists it is created as soon as an element needs it. -1 when no set has the
//   name and no element needed one.

#include <cstdint>
#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

#include "hy_util/geometry/point.h"
#include "hy_util/geometry/polygon.h"
#include "hy_util/geometry/polyline.h"
#include "hy_util/geometry/rect.h"
#include "hy_util/mesh/attribute_store.h"
#include "hy_util/mesh/boundary_mesh_element.h"
#include "hy_util/mesh/boundary_mesh_element_set.h"
#include "hy_util/mesh/boundary_mesh_vertex.h"
#include "hy_util/mesh/flow_constriction_list.h"
#include "hy_util/mesh/id_iterators.h"
#include "hy_util/mesh/traversable_poly_mesh.h"
#include "hy_util/mesh/vertex_index.h"
#include "hy_util/platform/object.h"

class CHU_DBoundaryMesh : public CHU_Object, public IHU_TraversablePolyMesh {
  HU_DECLARE_DYNCREATE(CHU_DBoundaryMesh)

 public:
  using ElevationSet = CHU_FlowConstrictionElevationSet;
  // 0: each corner reuses a vertex exactly at its position; anything else always
  // creates new vertices.
  enum WeldVerticesEnum { WELD_EXISTING = 0, NO_WELD = 1 };
  static constexpr int kFlowConstrictionType = 11;

  CHU_DBoundaryMesh();
  CHU_DBoundaryMesh(const CHU_DBoundaryMesh&) = delete;
  CHU_DBoundaryMesh& operator=(const CHU_DBoundaryMesh&) = delete;
  ~CHU_DBoundaryMesh() override;

  // ---- Life ----
  // Frees all vertices, elements and sets and resets the ID counters.
  void Cleanup();
  // Clear the mesh if it is not empty, then size the map's hash table for n.
  void PreallocateElementStorage(int n);
  void PreallocateVertexStorage(int n);
  // The host's attribute store for flow-constriction data (not owned; may be null).
  void SetAttributeStore(IHU_ElementAttributeStore* store) { m_store = store; }
  IHU_ElementAttributeStore* GetAttributeStore() const { return m_store; }

  // ---- Element sets ----
  int AddElementSet(const std::string& name);
  // Deletes the set; its members are removed (removeElements) or left in no set.
  bool RemoveElementSet(int id, bool removeElements);
  bool IsValidElementSetID(int id) const { return m_sets.Contains(id); }
  int GetElementSetCount() const { return static_cast<int>(m_sets.Size()); }
  int GetElementSetID(int elementId) const;
  // Moves the element to the set (created as "Unnamed" when missing); -1 = no set.
  bool SetElementSetID(int elementId, int setId);
  std::string GetElementSetName(int setId) const;
  bool SetElementSetName(int setId, const std::string& name);
  int GetElementSetType(int setId) const;
  bool SetElementSetType(int setId, int type);
  int EnsureElementsHaveAssignedSet(int type, const std::string& name);
  CHU_DBoundaryMesh_ElementSetIDIterator GetElementSetIDIterator(int type = -1) const;

  // ---- Adding ----
  // Each returns the new element ID, or -1 when the element would be invalid.
  // A point always gets a new vertex.
  int AddPoint(const CHU_DPoint& point, int type);
  int AddPolyline(const CHU_DPolyLine* polyline, int type, WeldVerticesEnum weld);
  int AddPolygon(const CHU_DPolygon* polygon, int type, WeldVerticesEnum weld);
  int AddPolygonUsingVertices(const std::vector<int>& vertexIds, int type);
  // Replaces a polyline's corners (see the header note); false for an unknown ID,
  // a polygon, a null polyline or fewer than two points.
  bool SetPolyline(int id, const CHU_DPolyLine* polyline);

  // ---- Reading ----
  bool IsValidElementID(int id) const { return m_elements.Contains(id); }
  int GetElementType(int id) const;
  bool SetElementType(int id, int type);
  bool GetPoint(int id, CHU_DPoint& point) const;
  bool GetPolyline(int id, CHU_DPolyLine* polyline) const;
  bool GetPolygon(int id, CHU_DPolygon* polygon) const;
  // Extent of all vertex positions; false (rect untouched) when there are none.
  bool GetExtents(CHU_DRect& rect) const;
  int GetElementCount(int type = -1, int setId = -1) const;
  int GetPointCount(int type = -1, int setId = -1) const;
  int GetPolylineCount(int type = -1, int setId = -1) const;
  int GetPolygonCount(int type = -1, int setId = -1) const;
  CHU_DBoundaryMesh_ElementIDIterator GetElementIDIterator(int type = -1, int setId = -1) const;
  CHU_DBoundaryMesh_ElementIDIterator GetPointIDIterator(int type = -1, int setId = -1) const;
  CHU_DBoundaryMesh_ElementIDIterator GetPolylineIDIterator(int type = -1, int setId = -1) const;
  CHU_DBoundaryMesh_ElementIDIterator GetPolygonIDIterator(int type = -1, int setId = -1) const;
  // Elements of the type with a vertex exactly at point, in the order their
  // vertices and attachments are met; returns how many were appended.
  int GetAllElementIDsOfTypeAtPoint(const CHU_DPoint& point, std::vector<int>& ids, int type) const;
  int FindPolygonsAndPolylinesWithGivenVertices(const std::vector<CHU_DPoint>& points,
                                                std::vector<int>& ids) const override;

  // ---- Vertices ----
  int GetVertexCount() const { return static_cast<int>(m_vertices.Size()); }
  CHU_DBoundaryMesh_VertexIDIterator GetVertexIDIterator() const;
  bool IsValidVertexID(int id) const { return m_vertices.Contains(id); }
  // The vertex's position, or null for an unknown ID.
  const CHU_DPoint* GetVertexPosition(int id) const;
  int FindVertex(const CHU_DPoint& position, int type) const override;
  // IDs in vertex-map order: exactly at the position (x, y, z), or within the
  // square box of the tolerance (z ignored).
  std::vector<int> FindAllVerticesAtPosition(const CHU_DPoint& position) const;
  std::vector<int> FindAllVerticesNearPosition(const CHU_DPoint& position, double tolerance) const;
  bool MoveVertex(int id, const CHU_DPoint& position);
  // Puts a new vertex into every element edge between a vertex at a and one at b.
  int InsertVertex(const CHU_DPoint& position, const CHU_DPoint& a, const CHU_DPoint& b);
  // Drops the vertex from its elements, removing elements that become invalid.
  bool RemoveVertex(int id);
  int SplitVertex(int id);
  bool WeldVertices(const CHU_DPoint& position, double tolerance);
  bool IsVertexAttachedToElementOfType(int vertexId, int type, int setId) const;
  int GetAllConnectedVertices(const CHU_DPoint& position, std::vector<CHU_DPoint>& positions,
                              bool uniqueOnly) const;
  int GetConnectedVerticesInElement(int elementId, const CHU_DPoint& position,
                                    std::vector<CHU_DPoint>& positions, bool uniqueOnly) const override;

  // ---- Selection ----
  int SelectPoint(const CHU_DPoint& position, double tolerance, int type = -1, int setId = -1);
  int SelectPolyline(const CHU_DPoint& position, double tolerance, int type = -1, int setId = -1);
  int SelectPolygon(const CHU_DPoint& position, double tolerance, int type = -1, int setId = -1);
  int SelectPoint(const CHU_DRect& rect, int type = -1, int setId = -1);
  int SelectPolyline(const CHU_DRect& rect, int type = -1, int setId = -1);
  int SelectPolygon(const CHU_DRect& rect, int type = -1, int setId = -1);
  bool SelectVertex(const CHU_DPoint& position, double tolerance, bool selectedElementsOnly, int type = -1,
                    int setId = -1);
  bool DeselectElement(int id);
  int DeselectAllElementsOfType(int type = -1, int setId = -1);
  void DeselectAllVertices();
  bool IsElementSelected(int id) const;
  int GetSelectedPointCount(int type = -1, int setId = -1) const;
  int GetSelectedPolylineCount(int type = -1, int setId = -1) const;
  int GetSelectedPolygonCount(int type = -1, int setId = -1) const;
  // The first selected element of the kind in element-map order, or -1.
  int GetSelectedPointID(int type = -1, int setId = -1) const;
  int GetSelectedPolylineID(int type = -1, int setId = -1) const;
  int GetSelectedPolygonID(int type = -1, int setId = -1) const;
  // The selected element of the kind that position selection would pick, or -1.
  int GetSelectedPointIDAtPoint(const CHU_DPoint& position, double tolerance, int type = -1, int setId = -1) const;
  int GetSelectedPolylineIDAtPoint(const CHU_DPoint& position, double tolerance, int type = -1,
                                   int setId = -1) const;
  int GetSelectedPolygonIDAtPoint(const CHU_DPoint& position, double tolerance, int type = -1,
                                  int setId = -1) const;
  int GetAllSelectedPointIDs(std::vector<int>& ids, int type = -1, int setId = -1) const;
  int GetAllSelectedPolylineIDs(std::vector<int>& ids, int type = -1, int setId = -1) const;
  int GetAllSelectedPolygonIDs(std::vector<int>& ids, int type = -1, int setId = -1) const;
  int GetLastSelectedVertexID() const { return m_lastSelectedVertex; }
  bool GetLastSelectedVertexPosition(CHU_DPoint& position) const;

  // ---- Removing ----
  bool RemoveElement(int id);
  int RemoveElements(const std::vector<int>& ids);
  int RemovePoints(bool selectedOnly, int type = -1, int setId = -1);
  int RemovePolylines(bool selectedOnly, int type = -1, int setId = -1);
  int RemovePolygons(bool selectedOnly, int type = -1, int setId = -1);

  // ---- Snapping ----
  // Vertex mode: the first vertex in map order within the box and attached to an
  // element of the type and set (the first match, not the nearest). Element mode:
  // see the header note.
  bool Snap(CHU_DPoint& result, const CHU_DPoint& position, double tolerance, int type, int setId,
            bool elementMode) const;

  // ---- Export support ----
  // IDs in ascending order and each ID's place in that order.
  void CreatePointIDSequence(std::vector<int>& ids, std::unordered_map<int, int>& places) const;
  void CreatePolylineIDSequence(std::vector<int>& ids, std::unordered_map<int, int>& places) const;
  void CreatePolygonIDSequence(std::vector<int>& ids, std::unordered_map<int, int>& places) const;
  void CreateElementIDSequence(std::vector<int>& ids, std::unordered_map<int, int>& places) const;
  void CreateVertexIDSequence(std::vector<int>& ids, std::unordered_map<int, int>& places) const;
  bool GetElementVertexIDList(int elementId, std::vector<int>& ids) const;

  // The ID counters: each returns the counter's value and increments it (-1 once
  // the 32-bit range is used up).
  int NextVertexID();
  int NextElementID();
  int NextElementSetID();

 protected:
  int AddElementSet(int id, const std::string& name);
  // Puts the element into the set, creating a set named "Unnamed" with exactly
  // that ID when missing; nothing for a negative set ID.
  void AddElementToSet(CHU_DBoundaryMeshElement* element, int setId);
  int AddPoint(int vertexId, int type, int elementId);
  int AddPoint(const CHU_DPoint& point, int type, int elementId);
  int ProtectedAddPolyline(const std::vector<int>& vertexIds, int type, int elementId);
  int ProtectedAddPolyline(const CHU_DPolyLine* polyline, int type, int elementId, WeldVerticesEnum weld);
  int ProtectedAddPolygon(const std::vector<int>& vertexIds, int type, int elementId);
  int ProtectedAddPolygon(const CHU_DPolyLine* polygon, int type, int elementId, WeldVerticesEnum weld);
  // A new, unattached vertex at the position.
  int AddVertex(const CHU_DPoint& position);

  // Flow-constriction lists of a type-11 element (nothing for other types or
  // without a store). A non-forced insert is an append: at any index but the
  // vertex count it writes empty lists. Delete at -1 resets the whole record.
  void InsertVertexData(int elementId, int type, int index, bool forced);
  void DeleteVertexData(int elementId, int type, int index);

  CHU_DBoundaryMeshElement* GetElement(int id) const { return m_elements.Find(id); }
  CHU_DBoundaryMeshVertex* GetVertex(int id) const { return m_vertices.Find(id); }
  CHU_DBoundaryMeshElementSet* GetElementSet(int id) const { return m_sets.Find(id); }
  const HU_VertexMap& GetVertexMap() const { return m_vertices; }
  const HU_ElementMap& GetElementMap() const { return m_elements; }

 private:
  enum class Kind { Any, Point, Polyline, Polygon };

  static int AllocateID(std::int64_t& counter, bool taken, int asked);
  static int TakeNext(std::int64_t& counter);
  IHU_DBoundaryMesh_ElementFilter* MakeFilter(Kind kind, int type, int setId) const;
  bool Accepts(const CHU_DBoundaryMeshElement* element, Kind kind, int type, int setId) const;
  std::vector<int> CollectIDs(Kind kind, int type, int setId, bool selectedOnly) const;
  int CountKind(Kind kind, int type, int setId, bool selectedOnly) const;
  int* KindCounter(const CHU_DBoundaryMeshElement* element);

  CHU_DBoundaryMeshVertex* CreateVertex(const CHU_DPoint& position);
  void DestroyVertex(CHU_DBoundaryMeshVertex* vertex);
  std::vector<CHU_DBoundaryMeshVertex*> VerticesAt(const CHU_DPoint& position) const;
  std::vector<CHU_DBoundaryMeshVertex*> VerticesNear(const CHU_DPoint& position, double tolerance) const;

  template <class Element>
  int AddChain(const std::vector<CHU_DBoundaryMeshVertex*>& corners, int type, int id);
  std::vector<CHU_DBoundaryMeshVertex*> CornersFor(const CHU_DPolyLine* chain, WeldVerticesEnum weld);
  std::vector<CHU_DBoundaryMeshVertex*> CornersFor(const std::vector<int>& vertexIds) const;
  bool StoreElement(std::unique_ptr<CHU_DBoundaryMeshElement> element);

  int FindByPosition(Kind kind, const CHU_DPoint& position, double tolerance, int type, int setId,
                     bool selectedOnly) const;
  int SelectByPosition(Kind kind, const CHU_DPoint& position, double tolerance, int type, int setId);
  // Squared distance that ranks the element for position selection; negative
  // when the element is not a candidate.
  double SelectionDistance(const CHU_DBoundaryMeshElement* element, const CHU_DPoint& position,
                           double tolerance) const;
  int SelectByRect(Kind kind, const CHU_DRect& rect, int type, int setId);
  bool SnapToElement(const CHU_DBoundaryMeshElement* element, CHU_DPoint& result, const CHU_DPoint& position,
                     double tolerance) const;
  void CreateSequence(Kind kind, std::vector<int>& ids, std::unordered_map<int, int>& places) const;
  static void AppendPositions(const std::vector<CHU_DBoundaryMeshVertex*>& vertices,
                              std::vector<CHU_DPoint>& positions, bool uniqueOnly);
  void RewriteDataLists(int elementId, const std::vector<std::string>& keys, int index, bool insert,
                        bool interpolate, bool forced);

  HU_VertexMap m_vertices{true};
  HU_ElementMap m_elements{true};
  HU_ElementSetMap m_sets{true};
  int m_polygonCount = 0;
  int m_polylineCount = 0;
  int m_pointCount = 0;
  std::int64_t m_nextVertexId = 0;
  std::int64_t m_nextElementId = 0;
  std::int64_t m_nextElementSetId = 0;
  int m_lastSelectedVertex = -1;
  // Vertices whose selected flag the mesh has set, so that clearing all flags
  // does not visit every vertex.
  std::vector<int> m_selectedVertices;

  HU_VertexIndex m_index{m_vertices};
  std::uint64_t m_nextMapOrder = 0;
  IHU_ElementAttributeStore* m_store = nullptr;
};
