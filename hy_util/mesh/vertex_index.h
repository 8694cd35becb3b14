#pragma once
// HU_VertexIndex: the two position indexes of a boundary mesh's vertices. An exact
// index (hash of x, y and z) answers "which vertices sit exactly here", and an
// R-tree on x and y answers square-box searches (|dx| <= tol and |dy| <= tol).
// Both hand back vertices in vertex-map order, so callers apply the same
// first-match or nearest rules as a linear scan of the map would, with the same
// answers.
//
// The mesh inserts a vertex after setting its position and removes it before the
// position changes. The R-tree is kept lazily: its entries name vertex IDs, and a
// search drops entries whose vertex is gone or has moved, so removing or moving
// a vertex costs no tree surgery. New entries wait in a short list until a box
// search needs them; large batches (an import) are bulk-loaded, as is the whole
// tree once stale entries outnumber live ones. Building a mesh thus never pays
// for incremental R-tree insertion, and the first box search after a large
// import pays for one bulk load. A vertex with a NaN coordinate is never exactly at any
// position and stays out of the exact index; one with a non-finite x or y stays
// out of the R-tree (FindInBox then declines searches that could reach it).

#include <cstddef>
#include <memory>
#include <vector>

#include "hy_util/geometry/point.h"
#include "hy_util/mesh/id_iterators.h"

class HU_VertexIndex {
 public:
  // The index resolves the IDs in its tree through the mesh's vertex map.
  explicit HU_VertexIndex(const HU_VertexMap& vertices);
  ~HU_VertexIndex();
  HU_VertexIndex(const HU_VertexIndex&) = delete;
  HU_VertexIndex& operator=(const HU_VertexIndex&) = delete;

  void Insert(CHU_DBoundaryMeshVertex* vertex);
  void Remove(CHU_DBoundaryMeshVertex* vertex);
  void Clear();
  void Reserve(std::size_t n);

  // Vertices whose x, y and z all equal the position's, in map order.
  void FindExact(const CHU_DPoint& position, std::vector<CHU_DBoundaryMeshVertex*>& out) const;
  // The first of those in map order, or null; allocates nothing.
  CHU_DBoundaryMeshVertex* FindFirstExact(const CHU_DPoint& position) const;
  // Vertices with |dx| <= tolerance and |dy| <= tolerance, in map order. Returns
  // false (out untouched) when the position or tolerance is not finite: the caller
  // then scans the map, which also covers vertices at infinity.
  bool FindInBox(const CHU_DPoint& position, double tolerance,
                 std::vector<CHU_DBoundaryMeshVertex*>& out) const;

  // The exact box rule shared by the index and the scans.
  static bool InBox(const CHU_DPoint& vertex, const CHU_DPoint& position, double tolerance);

 private:
  struct Impl;
  std::unique_ptr<Impl> m_impl;
};
