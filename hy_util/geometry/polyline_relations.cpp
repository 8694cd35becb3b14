// Relations of a chain (or a polygon's ring) to a polygon and to a rectangle.
//
// Each segment of the chain is cut where it meets the polygon's boundary; every
// part between two cuts lies wholly inside or wholly outside, and is judged by its
// midpoint with PtInPoly. The vertices are judged the same way. Tolerances are
// absolute distances to the polygon's boundary, inclusive, as in PtOnPoly.

#include <algorithm>
#include <cmath>
#include <vector>

#include "hy_util/geometry/math.h"
#include "hy_util/geometry/polygon.h"
#include "hy_util/geometry/polyline.h"

using HU_LIB::HU_Math;

namespace {

// Calls visit(start, end) for each segment of the chain, closing edge included
// when the chain is closed; a single vertex is one zero-length segment. Stops and
// returns true as soon as visit does.
template <class Visit>
bool AnySegment(const CHU_DPolyLine& chain, Visit visit) {
  const int n = chain.GetCount();
  if (n == 1) return visit(*chain.GetAt(0), *chain.GetAt(0));
  const int segments = chain.IsClosed() ? n : n - 1;
  for (int i = 0; i < segments; ++i) {
    if (visit(*chain.GetAt(i), *chain.GetAt(i + 1 < n ? i + 1 : 0))) return true;
  }
  return false;
}

// Parameters along s-e (0 and 1 included, sorted) where the segment meets the
// polygon's boundary.
std::vector<double> CutParameters(const CHU_DPoint& s, const CHU_DPoint& e, const CHU_DPolygon& polygon) {
  std::vector<double> cuts{0.0, 1.0};
  auto add = [&](const CHU_DPoint& q) {
    const double t = HU_Math::GetFractionalDistance(q, s, e);
    if (!std::isnan(t)) cuts.push_back(std::clamp(t, 0.0, 1.0));
  };
  AnySegment(polygon, [&](const CHU_DPoint& c, const CHU_DPoint& d) {
    CHU_DPoint first;
    CHU_DPoint second;
    if (HU_Math::GetIntersectionOfLines(s, e, c, d, first, second, false)) {
      add(first);
      add(second);
    }
    return false;
  });
  std::sort(cuts.begin(), cuts.end());
  return cuts;
}

// True when test holds for a vertex of the chain or for the midpoint of a part of
// one of its segments between two cuts by the polygon's boundary.
template <class Test>
bool AnyPart(const CHU_DPolyLine& chain, const CHU_DPolygon& polygon, Test test) {
  for (int i = 0; i < chain.GetCount(); ++i) {
    if (test(*chain.GetAt(i))) return true;
  }
  return AnySegment(chain, [&](const CHU_DPoint& s, const CHU_DPoint& e) {
    const std::vector<double> cuts = CutParameters(s, e, polygon);
    for (std::size_t k = 0; k + 1 < cuts.size(); ++k) {
      if (cuts[k + 1] <= cuts[k]) continue;
      const double t = 0.5 * (cuts[k] + cuts[k + 1]);
      if (test(CHU_DPoint(s.x + t * (e.x - s.x), s.y + t * (e.y - s.y)))) return true;
    }
    return false;
  });
}

double Orientation(const CHU_DPoint& a, const CHU_DPoint& b, const CHU_DPoint& c) {
  return (b.x - a.x) * (c.y - a.y) - (b.y - a.y) * (c.x - a.x);
}

// The segments cross at a point inside both (each strictly separates the other's ends).
bool CrossProperly(const CHU_DPoint& a, const CHU_DPoint& b, const CHU_DPoint& c, const CHU_DPoint& d) {
  const double o1 = Orientation(a, b, c);
  const double o2 = Orientation(a, b, d);
  const double o3 = Orientation(c, d, a);
  const double o4 = Orientation(c, d, b);
  return ((o1 > 0 && o2 < 0) || (o1 < 0 && o2 > 0)) && ((o3 > 0 && o4 < 0) || (o3 < 0 && o4 > 0));
}

// The plan distance between segments a-b and c-d is at most tol.
bool SegmentsWithin(const CHU_DPoint& a, const CHU_DPoint& b, const CHU_DPoint& c, const CHU_DPoint& d,
                    double tol) {
  if (CrossProperly(a, b, c, d)) return true;
  const double nearest = std::min({HU_Math::SquaredDistanceToSegment(a, c, d),
                                   HU_Math::SquaredDistanceToSegment(b, c, d),
                                   HU_Math::SquaredDistanceToSegment(c, a, b),
                                   HU_Math::SquaredDistanceToSegment(d, a, b)});
  return nearest <= tol * tol;
}

// Liang-Barsky: some point of segment a-b lies in the rectangle, edges included.
bool SegmentMeetsRect(const CHU_DPoint& a, const CHU_DPoint& b, const CHU_DRect& rect) {
  if (!std::isfinite(a.x) || !std::isfinite(a.y) || !std::isfinite(b.x) || !std::isfinite(b.y)) {
    return false;
  }
  const double dx = b.x - a.x;
  const double dy = b.y - a.y;
  const double p[4] = {-dx, dx, -dy, dy};
  const double q[4] = {a.x - rect.Left(), rect.Right() - a.x, a.y - rect.Bottom(), rect.Top() - a.y};
  double t0 = 0.0;
  double t1 = 1.0;
  for (int k = 0; k < 4; ++k) {
    if (p[k] == 0.0) {
      if (q[k] < 0.0) return false;
      continue;
    }
    const double r = q[k] / p[k];
    if (p[k] < 0.0) {
      t0 = std::max(t0, r);
    } else {
      t1 = std::min(t1, r);
    }
    if (t0 > t1) return false;
  }
  return true;
}

// When this chain is a polygon's ring, whether it encloses the first vertex of other.
bool RingHoldsFirstVertex(const CHU_DPolyLine& chain, const CHU_DPolygon& other) {
  const auto* ring = dynamic_cast<const CHU_DPolygon*>(&chain);
  return ring != nullptr && other.GetCount() > 0 && ring->PtInPoly(*other.GetAt(0));
}

}  // namespace

bool CHU_DPolyLine::IsInsidePolygon(const CHU_DPolygon& polygon) const {
  if (GetCount() == 0 || polygon.GetCount() == 0) return false;
  return !AnyPart(*this, polygon, [&](const CHU_DPoint& p) { return !polygon.PtInPoly(p); });
}

bool CHU_DPolyLine::IsPartiallyInsidePolygon(const CHU_DPolygon& polygon) const {
  if (GetCount() == 0 || polygon.GetCount() == 0) return false;
  return AnyPart(*this, polygon, [&](const CHU_DPoint& p) { return polygon.PtInPoly(p); }) ||
         RingHoldsFirstVertex(*this, polygon);
}

bool CHU_DPolyLine::IsPartiallyOutsidePolygon(const CHU_DPolygon& polygon, double tol) const {
  if (GetCount() == 0) return false;
  return AnyPart(*this, polygon, [&](const CHU_DPoint& p) {
    return !polygon.PtInPoly(p) && !polygon.PtOnPoly(p, tol, nullptr, nullptr);
  });
}

bool CHU_DPolyLine::IsCompletelyOutsidePolygon(const CHU_DPolygon& polygon, double tol) const {
  if (GetCount() == 0) return false;
  for (int i = 0; i < GetCount(); ++i) {
    if (polygon.PtInPoly(*GetAt(i))) return false;
  }
  const bool near = AnySegment(*this, [&](const CHU_DPoint& a, const CHU_DPoint& b) {
    return AnySegment(polygon, [&](const CHU_DPoint& c, const CHU_DPoint& d) {
      return SegmentsWithin(a, b, c, d, tol);
    });
  });
  return !near && !RingHoldsFirstVertex(*this, polygon);
}

bool CHU_DPolyLine::RectOnPoly(const CHU_DRect& rect) const {
  if (GetCount() == 0 || rect.Left() > rect.Right() || rect.Bottom() > rect.Top()) return false;
  if (AnySegment(*this, [&](const CHU_DPoint& a, const CHU_DPoint& b) { return SegmentMeetsRect(a, b, rect); })) {
    return true;
  }
  const auto* ring = dynamic_cast<const CHU_DPolygon*>(this);
  return ring != nullptr && ring->PtInPoly(rect.CenterPoint());
}
