#pragma once
// CHU_DLine: an infinite straight line in slope/intercept form that also keeps the
// two points it was made from (null points when it was made otherwise).
//
// For a vertical line the slope is only a marker and the intercept holds the line's
// x value. Several rules are kept on purpose because callers depend on them:
//  - SetLine computes the intercept as p1.y - slope * p1.y (y in both places),
//    while the two-point constructor uses p1.y - slope * p1.x;
//  - the (slope, intercept) constructor marks every line whose slope is not exactly
//    0.0 as vertical;
//  - OnLine on a vertical line compares the point's x with its y and ignores the
//    intercept.

#include <memory>

#include "hy_util/geometry/point.h"

class CHU_DLine {
 public:
  // Slope 0, intercept 0, null points, not vertical.
  CHU_DLine() = default;
  CHU_DLine(const CHU_DPoint& p1, const CHU_DPoint& p2);
  // Through p with the given slope; p is not kept, the stored points stay null.
  CHU_DLine(const CHU_DPoint& p, double slope);
  // A vertical line at x: slope is the marker -99999999999.0, the flag is stored as given.
  CHU_DLine(int vertical, double x);
  // Vertical whenever slope is not exactly 0.0 (NaN included).
  CHU_DLine(double slope, double intercept);
  CHU_DLine(const CHU_DLine& other) = default;
  // Copies slope, intercept and flag; the points are copied by point assignment, so
  // their packed colour values stay as they were.
  CHU_DLine& operator=(const CHU_DLine& other);

  // The two-point constructor's rule with the intercept p1.y * (1 - slope); null
  // pointers leave the line unchanged.
  void SetLine(const CHU_DPoint* p1, const CHU_DPoint* p2);

  double Slope() const { return m_slope; }
  double Y0() const { return m_intercept; }
  bool IsVertical() const { return m_vertical != 0; }
  const CHU_DPoint& FirstPoint() const { return m_first; }
  const CHU_DPoint& SecondPoint() const { return m_second; }

  // slope * x + intercept; x itself for a vertical line.
  double Val(double x) const;
  double DistFromPoint(const CHU_DPoint& p) const;
  // |Val(p.x) - p.y| < 0.001 (strict).
  bool OnLine(const CHU_DPoint& p) const;

  // New lines through p, parallel or perpendicular to this one; null when they
  // cannot be allocated.
  std::unique_ptr<CHU_DLine> Parallel(const CHU_DPoint& p) const;
  std::unique_ptr<CHU_DLine> Vertical(const CHU_DPoint& p) const;

  // Intersection of the segment first point -> second point (with z) and the plane
  // through a, b and c. out is written whenever the segment is not parallel to the
  // plane (|n . d| >= 0.001); the result is true only when the intersection lies on
  // the segment. A degenerate plane gives NaN, not a failure.
  bool IntersectPlane(const CHU_DPoint& a, const CHU_DPoint& b, const CHU_DPoint& c,
                      CHU_DPoint* out) const;

  // Plan distance between two points (z ignored).
  static double SegmentLength(const CHU_DPoint& a, const CHU_DPoint& b);

  // Intersection of segments p1-p2 and p3-p4:
  //  0  they meet (end points included); out.x, out.y receive the point, out.z is
  //     set to -99999.0, other fields of out are untouched;
  //  1  the lines cross outside at least one segment;
  //  2  parallel (|denominator| <= 0.001, absolute) and collinear;
  //  3  parallel, not collinear.
  // Lines crossing at a very small angle therefore count as parallel.
  static int LineSegmentIntersect(const CHU_DPoint& p1, const CHU_DPoint& p2,
                                  const CHU_DPoint& p3, const CHU_DPoint& p4, CHU_DPoint& out);

 private:
  void SetFromPoints(const CHU_DPoint& p1, const CHU_DPoint& p2);

  double m_slope = 0.0;
  double m_intercept = 0.0;
  CHU_DPoint m_first;
  CHU_DPoint m_second;
  int m_vertical = 0;
};
