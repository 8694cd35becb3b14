// Intersections of a vertex chain with a segment or with another chain.
//
// Every segment of this chain is met against the other shape's segments with
// HU_Math::GetIntersectionOfLines (this chain's segment as the first operand, so a
// collinear overlap comes back in this chain's direction). Hits on one segment are
// sorted by their fraction along it, and a hit that repeats the previous one (same
// chain parameter or same point: a vertex reached from both adjacent segments, a
// run of repeated vertices, or a ring's first vertex met again by its closing
// edge) is dropped.

#include <algorithm>
#include <cmath>
#include <vector>

#include "hy_util/geometry/math.h"
#include "hy_util/geometry/polyline.h"

namespace {

// Two chain parameters closer than this name the same place.
constexpr double kSameParam = 1e-9;

struct Hit {
  double x;
  double y;
  double t;  // fraction along this chain's segment
};

struct Segment {
  const CHU_DPoint* start;
  const CHU_DPoint* end;
};

bool IsZeroLength(const Segment& s) {
  return std::fabs(s.end->x - s.start->x) <= 1e-10 && std::fabs(s.end->y - s.start->y) <= 1e-10;
}

// Bounding boxes of the two segments are apart by more than the intersection
// tolerances could bridge. NaN coordinates never prune (the helper rejects them).
bool ClearlyApart(const Segment& a, const Segment& b) {
  const double margin = 1e-9 * (1.0 + std::fabs(a.start->x) + std::fabs(a.start->y) +
                                std::fabs(b.start->x) + std::fabs(b.start->y));
  return std::max(a.start->x, a.end->x) + margin < std::min(b.start->x, b.end->x) ||
         std::max(b.start->x, b.end->x) + margin < std::min(a.start->x, a.end->x) ||
         std::max(a.start->y, a.end->y) + margin < std::min(b.start->y, b.end->y) ||
         std::max(b.start->y, b.end->y) + margin < std::min(a.start->y, a.end->y);
}

double FractionAlong(const Segment& s, double x, double y) {
  CHU_DPoint at(x, y);
  const double t = HU_LIB::HU_Math::GetFractionalDistance(at, *s.start, *s.end);
  return std::isnan(t) ? 0.0 : std::clamp(t, 0.0, 1.0);
}

// Adds the places where segment mine meets segment other. A zero-length segment of
// this chain is tested as a point on the other segment (roles swapped, so the
// point's own parameter is used).
void MeetSegments(const Segment& mine, const Segment& other, std::vector<Hit>& hits) {
  if (ClearlyApart(mine, other)) return;
  CHU_DPoint first, second;
  const bool met = IsZeroLength(mine)
      ? HU_LIB::HU_Math::GetIntersectionOfLines(*other.start, *other.end, *mine.start, *mine.end,
                                                first, second, false)
      : HU_LIB::HU_Math::GetIntersectionOfLines(*mine.start, *mine.end, *other.start, *other.end,
                                                first, second, false);
  if (!met) return;
  hits.push_back({first.x, first.y, FractionAlong(mine, first.x, first.y)});
  if (first.x != second.x || first.y != second.y) {
    hits.push_back({second.x, second.y, FractionAlong(mine, second.x, second.y)});
  }
}

std::vector<Segment> SegmentsOf(const CHU_DPolyLine& chain, bool closed) {
  std::vector<Segment> segments;
  const int n = chain.GetCount();
  for (int i = 1; i < n; ++i) segments.push_back({chain.GetAt(i - 1), chain.GetAt(i)});
  if (closed && n >= 2) segments.push_back({chain.GetAt(n - 1), chain.GetAt(0)});
  return segments;
}

class HitCollector {
 public:
  explicit HitCollector(CHU_CopyableArray<double>* params) : m_params(params) {}

  void AddSegmentHits(int segment, std::vector<Hit>& hits) {
    std::stable_sort(hits.begin(), hits.end(), [](const Hit& a, const Hit& b) { return a.t < b.t; });
    for (const Hit& hit : hits) Add(hit, segment + hit.t);
  }

  // Drops a last hit that is the ring's first vertex met again at the end.
  void CloseRing(double ringLength) {
    if (m_points.GetSize() < 2) return;
    if (std::fabs(m_paramsSeen.back() - ringLength - m_paramsSeen.front()) <= kSameParam) {
      m_points.pop_back();
      m_paramsSeen.pop_back();
    }
  }

  CHU_CopyableArray<CHU_DPoint> Finish() {
    if (m_params != nullptr) m_params->assign(m_paramsSeen.begin(), m_paramsSeen.end());
    return std::move(m_points);
  }

 private:
  void Add(const Hit& hit, double param) {
    if (!m_paramsSeen.empty()) {
      const CHU_DPoint& last = m_points.back();
      if (std::fabs(param - m_paramsSeen.back()) <= kSameParam || (last.x == hit.x && last.y == hit.y)) return;
    }
    m_points.Add(CHU_DPoint(hit.x, hit.y));
    m_paramsSeen.push_back(param);
  }

  CHU_CopyableArray<double>* m_params;
  CHU_CopyableArray<CHU_DPoint> m_points;
  std::vector<double> m_paramsSeen;
};

CHU_CopyableArray<CHU_DPoint> Intersect(const CHU_DPolyLine& chain, bool closed,
                                        const std::vector<Segment>& others,
                                        CHU_CopyableArray<double>* params) {
  HitCollector collector(params);
  const std::vector<Segment> mine = SegmentsOf(chain, closed);
  std::vector<Hit> hits;
  for (std::size_t i = 0; i < mine.size(); ++i) {
    hits.clear();
    for (const Segment& other : others) MeetSegments(mine[i], other, hits);
    collector.AddSegmentHits(static_cast<int>(i), hits);
  }
  if (closed) collector.CloseRing(static_cast<double>(mine.size()));
  return collector.Finish();
}

}  // namespace

CHU_CopyableArray<CHU_DPoint> CHU_DPolyLine::GetIntersectionsWithLine(
    const CHU_DPoint& a, const CHU_DPoint& b, CHU_CopyableArray<double>* params) const {
  return GetIntersectionsWithLine(a, b, IsClosed(), params);
}

CHU_CopyableArray<CHU_DPoint> CHU_DPolyLine::GetIntersectionsWithPoly(
    const CHU_DPolyLine& other, CHU_CopyableArray<double>* params) const {
  return GetIntersectionsWithPoly(other, IsClosed(), params);
}

CHU_CopyableArray<CHU_DPoint> CHU_DPolyLine::GetIntersectionsWithLine(
    const CHU_DPoint& a, const CHU_DPoint& b, bool closed, CHU_CopyableArray<double>* params) const {
  return Intersect(*this, closed, {Segment{&a, &b}}, params);
}

CHU_CopyableArray<CHU_DPoint> CHU_DPolyLine::GetIntersectionsWithPoly(
    const CHU_DPolyLine& other, bool closed, CHU_CopyableArray<double>* params) const {
  return Intersect(*this, closed, SegmentsOf(other, other.IsClosed()), params);
}
