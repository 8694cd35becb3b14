#pragma once
// HU_LIB::HU_Math: segment helpers on which the chain and polygon operations rest.
// They use x and y only. Differences within +-1e-10 count as zero and a segment
// parameter within [-1e-12, 1 + 1e-12] counts as on its segment, except where a
// function says otherwise.

#include "hy_util/geometry/point.h"

namespace HU_LIB {

class HU_Math {
 public:
  // Places out at distance d from p towards q. Axis-parallel directions are tested
  // exactly: dx == 0 moves along y, dy == 0 along x, and both set out.z to -99999.0;
  // otherwise out.z is left alone. A zero difference counts as negative, so p == q
  // moves out d downwards in y. Null pointers are ignored.
  static void InterpolatePtTri(double d, const CHU_DPoint* p, const CHU_DPoint* q, CHU_DPoint* out);

  // Fraction along a->b at which x lies, from x alone (or y when the segment is
  // vertical); 0.0 for a zero-length segment. x need not lie on the segment.
  static double GetFractionalDistance(const CHU_DPoint& x, const CHU_DPoint& a, const CHU_DPoint& b);

  // Intersection of segments a1-a2 and b1-b2 (x and y of the outputs only).
  // Crossing: both outputs get the crossing point. Collinear overlap: out1 and out2
  // are the ends of the shared stretch, in order along a. With extend the limits are
  // dropped: the segments act as infinite lines, and collinear ones give the union
  // of the two spans along a. A zero-length a counts as on b only when it sits at
  // b1 (or anywhere on b's line with extend); both zero-length meet when equal.
  static bool GetIntersectionOfLines(const CHU_DPoint& a1, const CHU_DPoint& a2,
                                     const CHU_DPoint& b1, const CHU_DPoint& b2,
                                     CHU_DPoint& out1, CHU_DPoint& out2, bool extend);

  // Nearest point (x, y) of segment s-e to p. A segment whose squared length lies
  // within +-1e-10 counts as its start point.
  static void ClosestPointOnSegment(const CHU_DPoint& p, const CHU_DPoint& s, const CHU_DPoint& e,
                                    double& x, double& y) {
    const double dx = e.x - s.x;
    const double dy = e.y - s.y;
    const double len2 = dx * dx + dy * dy;
    if (len2 >= -1e-10 && len2 <= 1e-10) {
      x = s.x;
      y = s.y;
      return;
    }
    double t = ((p.x - s.x) * dx + (p.y - s.y) * dy) / len2;
    t = t < 0.0 ? 0.0 : (t > 1.0 ? 1.0 : t);
    x = s.x + t * dx;
    y = s.y + t * dy;
  }

  // Squared plan distance from p to segment s-e, by ClosestPointOnSegment.
  static double SquaredDistanceToSegment(const CHU_DPoint& p, const CHU_DPoint& s, const CHU_DPoint& e) {
    double x = 0.0;
    double y = 0.0;
    ClosestPointOnSegment(p, s, e, x, y);
    return (p.x - x) * (p.x - x) + (p.y - y) * (p.y - y);
  }
};

}  // namespace HU_LIB
