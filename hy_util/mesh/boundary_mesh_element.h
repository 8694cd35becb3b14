#pragma once
// The elements of a boundary mesh: points, polylines and polygons whose corners
// are shared CHU_DBoundaryMeshVertex objects owned by the mesh. The kind of an
// element is its class; the integer type is a separate code the host assigns
// (11 marks flow-constriction lines, whose per-vertex data the mesh keeps in step).
//
// Elements hold non-owning vertex pointers. The editing hooks (InsertVertexBetween,
// OnVertexRemove, OnVertexSplit, OnVertexWeld) change only the element's own vertex
// list; the mesh updates the vertices' attached maps and its counts around them.

#include <vector>

class CHU_DBoundaryMeshVertex;

class CHU_DBoundaryMeshElement {
 public:
  explicit CHU_DBoundaryMeshElement(int id) : m_id(id) {}
  CHU_DBoundaryMeshElement(const CHU_DBoundaryMeshElement&) = delete;
  CHU_DBoundaryMeshElement& operator=(const CHU_DBoundaryMeshElement&) = delete;
  virtual ~CHU_DBoundaryMeshElement() = default;

  int GetID() const { return m_id; }
  void SetID(int id) { m_id = id; }
  int GetType() const { return m_type; }
  void SetType(int type) { m_type = type; }
  int GetSetID() const { return m_setId; }
  void SetSetID(int setId) { m_setId = setId; }
  bool IsSelected() const { return m_selected; }
  void SetSelected(bool selected) { m_selected = selected; }

  virtual bool IsValid() const { return false; }
  // Appends the IDs of the element's vertex references in stored order.
  virtual void GetVertexIDList(std::vector<int>& ids) const { (void)ids; }
  // Appends the vertices next to each occurrence of vertex; returns how many.
  virtual int GetConnectedVertices(const CHU_DBoundaryMeshVertex* vertex,
                                   std::vector<CHU_DBoundaryMeshVertex*>& out) const;
  // Puts newVertex between neighbouring references a and b (either order) and
  // returns its index, or -1 when a and b are not neighbours here.
  virtual int InsertVertexBetween(CHU_DBoundaryMeshVertex* newVertex, const CHU_DBoundaryMeshVertex* a,
                                  const CHU_DBoundaryMeshVertex* b);
  // Drops every reference to vertex, appending each dropped entry's original index.
  virtual void OnVertexRemove(const CHU_DBoundaryMeshVertex* vertex, std::vector<int>& removedIndices);
  // Replaces every reference to oldVertex by newVertex.
  virtual void OnVertexSplit(const CHU_DBoundaryMeshVertex* oldVertex, CHU_DBoundaryMeshVertex* newVertex);
  // Merges oldVertex into survivor. Returns the index of the first entry deleted as
  // a repeat, -1 when none was, or -2 when the element refuses the weld.
  virtual int OnVertexWeld(const CHU_DBoundaryMeshVertex* oldVertex, CHU_DBoundaryMeshVertex* survivor);

 private:
  int m_id;
  int m_type = -1;
  int m_setId = -1;
  bool m_selected = false;
};

// A single vertex reference; valid once the reference is set.
class CHU_DBoundaryMeshPoint : public CHU_DBoundaryMeshElement {
 public:
  using CHU_DBoundaryMeshElement::CHU_DBoundaryMeshElement;

  bool IsValid() const override { return m_vertex != nullptr; }
  void GetVertexIDList(std::vector<int>& ids) const override;
  void OnVertexRemove(const CHU_DBoundaryMeshVertex* vertex, std::vector<int>& removedIndices) override;
  void OnVertexSplit(const CHU_DBoundaryMeshVertex* oldVertex, CHU_DBoundaryMeshVertex* newVertex) override;
  int OnVertexWeld(const CHU_DBoundaryMeshVertex* oldVertex, CHU_DBoundaryMeshVertex* survivor) override;

  virtual void AddVertex(CHU_DBoundaryMeshVertex* vertex) { m_vertex = vertex; }
  virtual void RemoveVertex() { m_vertex = nullptr; }
  virtual CHU_DBoundaryMeshVertex* GetVertex() const { return m_vertex; }

 private:
  CHU_DBoundaryMeshVertex* m_vertex = nullptr;
};

// An ordered chain of vertex references (a vertex may appear more than once);
// valid with two or more references, even when they are the same vertex.
class CHU_DBoundaryMeshPolyline : public CHU_DBoundaryMeshElement {
 public:
  using CHU_DBoundaryMeshElement::CHU_DBoundaryMeshElement;

  bool IsValid() const override { return m_vertices.size() >= 2; }
  void GetVertexIDList(std::vector<int>& ids) const override;
  int GetConnectedVertices(const CHU_DBoundaryMeshVertex* vertex,
                           std::vector<CHU_DBoundaryMeshVertex*>& out) const override;
  int InsertVertexBetween(CHU_DBoundaryMeshVertex* newVertex, const CHU_DBoundaryMeshVertex* a,
                          const CHU_DBoundaryMeshVertex* b) override;
  void OnVertexRemove(const CHU_DBoundaryMeshVertex* vertex, std::vector<int>& removedIndices) override;
  void OnVertexSplit(const CHU_DBoundaryMeshVertex* oldVertex, CHU_DBoundaryMeshVertex* newVertex) override;
  // A type-11 line that already holds survivor refuses (-2): it would revisit it.
  // Otherwise every oldVertex becomes survivor and each survivor entry that follows
  // an equal entry is deleted.
  int OnVertexWeld(const CHU_DBoundaryMeshVertex* oldVertex, CHU_DBoundaryMeshVertex* survivor) override;

  virtual int GetVertexCount() const { return static_cast<int>(m_vertices.size()); }
  // Null outside 0..count-1.
  virtual CHU_DBoundaryMeshVertex* GetVertexAt(int index) const;
  virtual void PreallocateVertexStorage(int n);
  // Appends; a null vertex is ignored.
  virtual void AddVertex(CHU_DBoundaryMeshVertex* vertex);
  virtual void RemoveAllVertices() { m_vertices.clear(); }

  const std::vector<CHU_DBoundaryMeshVertex*>& GetVertices() const { return m_vertices; }
  bool ContainsVertex(const CHU_DBoundaryMeshVertex* vertex) const;

 protected:
  std::vector<CHU_DBoundaryMeshVertex*> m_vertices;
};

// A closed ring stored with its first vertex repeated as the last entry; valid with
// at least three entries and three distinct vertices. Every edit re-closes it.
class CHU_DBoundaryMeshPolygon : public CHU_DBoundaryMeshPolyline {
 public:
  using CHU_DBoundaryMeshPolyline::CHU_DBoundaryMeshPolyline;

  bool IsValid() const override;
  // The neighbours around the ring: the closing repeat is not a separate corner.
  int GetConnectedVertices(const CHU_DBoundaryMeshVertex* vertex,
                           std::vector<CHU_DBoundaryMeshVertex*>& out) const override;
  void OnVertexRemove(const CHU_DBoundaryMeshVertex* vertex, std::vector<int>& removedIndices) override;
  void OnVertexSplit(const CHU_DBoundaryMeshVertex* oldVertex, CHU_DBoundaryMeshVertex* newVertex) override;
  int OnVertexWeld(const CHU_DBoundaryMeshVertex* oldVertex, CHU_DBoundaryMeshVertex* survivor) override;

  // Appends the first entry when there are more than two entries and the last
  // differs from it; then, while two or three entries remain and the first equals
  // the last, drops the last (a ring that collapsed to a back-and-forth).
  virtual void EnforceClosure();
};
