#pragma once
// Smallest-area enclosing rectangle of a planar point set, of any orientation.
//
// The points' convex hull is built with Andrew's monotone chain (O(n log n)) and
// the rectangle is found with rotating calipers over the hull's edges (O(h)):
// one side of a minimum rectangle always lies along a hull edge, and the three
// other supporting vertices only move forward as the edge advances.
//
// Points with a non-finite coordinate (NaN or infinity) are ignored. Degenerate
// sets give a rectangle of zero area: one distinct point gives four equal
// corners; collinear points give c0 = c3 at one end and c1 = c2 at the other.

#include <vector>

namespace HU_LIB {

struct HU_PlanePt {
  double x;
  double y;
};

// Four corners in order around the rectangle (c0 -> c1 -> c2 -> c3, anticlockwise)
// and the rectangle's area. count is the number of hull vertices the rectangle
// was built from; when it is 0 (no finite point) the corners are not meaningful.
struct HU_RectCorners {
  HU_PlanePt corner[4];
  double area;
  int count;
};

class HU_MinAreaRect {
 public:
  // The convex hull, anticlockwise, without repeated or collinear vertices and
  // without non-finite points. Fewer than three points are returned as the
  // distinct points left.
  static std::vector<HU_PlanePt> ConvexHull(std::vector<HU_PlanePt> points);

  // The minimum-area rectangle enclosing the points. c0 -> c1 runs along the
  // hull edge that supports the rectangle.
  static HU_RectCorners Compute(std::vector<HU_PlanePt> points);

 private:
  static HU_RectCorners FromHull(const std::vector<HU_PlanePt>& hull);
};

}  // namespace HU_LIB
