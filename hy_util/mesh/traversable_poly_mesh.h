#pragma once
// IHU_TraversablePolyMesh: what a traversal needs from a mesh of shared vertices:
// find a vertex by position, find the lines and rings that use given vertices, and
// step from a vertex to its neighbours within one element.

#include <vector>

#include "hy_util/geometry/point.h"

class IHU_TraversablePolyMesh {
 public:
  virtual ~IHU_TraversablePolyMesh() = default;
  // The first vertex exactly at position (x, y and z) attached to an element of
  // the type (-1 = any), or -1.
  virtual int FindVertex(const CHU_DPoint& position, int type) const = 0;
  // IDs of the polylines and polygons that have a vertex exactly at every one of
  // the points.
  virtual int FindPolygonsAndPolylinesWithGivenVertices(const std::vector<CHU_DPoint>& points,
                                                        std::vector<int>& ids) const = 0;
  // Positions of the neighbours, within the element, of its vertices at position.
  virtual int GetConnectedVerticesInElement(int elementId, const CHU_DPoint& position,
                                            std::vector<CHU_DPoint>& positions, bool uniqueOnly) const = 0;
};
