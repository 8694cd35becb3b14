#pragma once
// Helpers shared by the boundary-mesh tests: a mesh subclass that opens the
// protected operations, and short ways to write chains.

#include <initializer_list>
#include <vector>

#include "hy_util/geometry/point.h"
#include "hy_util/geometry/polygon.h"
#include "hy_util/geometry/polyline.h"
#include "hy_util/mesh/boundary_mesh.h"

class TestMesh : public CHU_DBoundaryMesh {
 public:
  using CHU_DBoundaryMesh::AddElementSet;
  using CHU_DBoundaryMesh::AddElementToSet;
  using CHU_DBoundaryMesh::AddPoint;
  using CHU_DBoundaryMesh::AddVertex;
  using CHU_DBoundaryMesh::DeleteVertexData;
  using CHU_DBoundaryMesh::GetElement;
  using CHU_DBoundaryMesh::GetElementSet;
  using CHU_DBoundaryMesh::GetVertex;
  using CHU_DBoundaryMesh::InsertVertexData;
  using CHU_DBoundaryMesh::ProtectedAddPolygon;
  using CHU_DBoundaryMesh::ProtectedAddPolyline;

  std::vector<int> VertexIDs() const {
    std::vector<int> ids;
    for (auto it = GetVertexIDIterator(); it.HasNext();) ids.push_back(it.Next());
    return ids;
  }
  std::vector<int> ElementIDs(int type = -1, int setId = -1) const {
    std::vector<int> ids;
    for (auto it = GetElementIDIterator(type, setId); it.HasNext();) ids.push_back(it.Next());
    return ids;
  }
  std::vector<int> VertexList(int elementId) const {
    std::vector<int> ids;
    GetElementVertexIDList(elementId, ids);
    return ids;
  }
};

inline CHU_DPoint P(double x, double y, double z = 0.0) { return CHU_DPoint(x, y, z); }

inline CHU_DPolyLine Line(std::initializer_list<CHU_DPoint> points) {
  CHU_DPolyLine line;
  for (const CHU_DPoint& p : points) line.AddPt(p);
  return line;
}

inline CHU_DPolygon Ring(std::initializer_list<CHU_DPoint> points) {
  CHU_DPolygon ring;
  for (const CHU_DPoint& p : points) ring.AddPt(p);
  return ring;
}
