#pragma once
// HU_VertexIndex: the two position indexes of a boundary mesh's vertices. An exact
// index (hash of x, y and z) answers "which vertices sit exactly here", and an
// R-tree on x and y answers square-box searches (|dx| <= tol and |dy| <= tol).
// Both hand back vertices in vertex-map order, so callers apply the same
// first-match or nearest rules as a linear scan of the map would, with the same
// answers.
//
// The mesh inserts a vertex after setting its position and removes it before the
// position changes. A vertex with a NaN coordinate is never exactly at any
// position and stays out of the exact index; one with a non-finite x or y stays
// out of the R-tree (FindInBox then declines searches that could reach it).

#include <cstddef>
#include <memory>
#include <vector>

#include "hy_util/geometry/point.h"

class CHU_DBoundaryMeshVertex;

class HU_VertexIndex {
 public:
  HU_VertexIndex();
  ~HU_VertexIndex();
  HU_VertexIndex(const HU_VertexIndex&) = delete;
  HU_VertexIndex& operator=(const HU_VertexIndex&) = delete;

  void Insert(CHU_DBoundaryMeshVertex* vertex);
  void Remove(CHU_DBoundaryMeshVertex* vertex);
  void Clear();
  void Reserve(std::size_t n);

  // Vertices whose x, y and z all equal the position's, in map order.
  void FindExact(const CHU_DPoint& position, std::vector<CHU_DBoundaryMeshVertex*>& out) const;
  // Vertices with |dx| <= tolerance and |dy| <= tolerance, in map order. Returns
  // false (out untouched) when the position or tolerance is not finite: the caller
  // then scans the map, which also covers vertices at infinity.
  bool FindInBox(const CHU_DPoint& position, double tolerance,
                 std::vector<CHU_DBoundaryMeshVertex*>& out) const;

  // The exact box rule shared by the index and the scans.
  static bool InBox(const CHU_DPoint& vertex, const CHU_DPoint& position, double tolerance);
  static void SortByMapOrder(std::vector<CHU_DBoundaryMeshVertex*>& vertices);

 private:
  struct Impl;
  std::unique_ptr<Impl> m_impl;
};
