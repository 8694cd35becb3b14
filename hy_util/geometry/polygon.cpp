#include "hy_util/geometry/polygon.h"

#include <cmath>

#include "hy_util/geometry/math.h"
#include "hy_util/geometry/min_area_rect.h"

HU_IMPLEMENT_DYNCREATE(CHU_DPolygon)

using HU_LIB::HU_Math;

CHU_DPolygon::CHU_DPolygon(const CHU_DPolygon& other) : CHU_DPolyLine(other) {}

CHU_DPolygon& CHU_DPolygon::operator=(const CHU_DPolygon& other) {
  const int n = other.GetCount();  // fixed first: other may be this polygon
  for (int i = 0; i < n; ++i) {
    const CHU_DPoint* p = other.GetAt(i);
    AddPt(p->x, p->y, p->z);
  }
  m_minRectValid = other.m_minRectValid;
  for (int c = 0; c < 4; ++c) m_minRect[c] = other.m_minRect[c];
  m_minRectArea = other.m_minRectArea;
  return *this;
}

void CHU_DPolygon::AddPt(const CHU_DPoint& p) {
  m_minRectValid = 0;
  CHU_DPolyLine::AddPt(p);
}

void CHU_DPolygon::AddPt(double x, double y, double z) {
  m_minRectValid = 0;
  CHU_DPolyLine::AddPt(x, y, z);
}

void CHU_DPolygon::AddPt(const CHU_DPoint& p, const CHU_DPoint& after, const CHU_DPoint& unused) {
  m_minRectValid = 0;
  CHU_DPolyLine::AddPt(p, after, unused);
}

// ---- Measures ----

// Shoelace sums over every edge, closing edge included, with coordinates taken
// relative to the first vertex: the result is the same as with absolute
// coordinates, without losing the digits that map coordinates (1e5..1e7) would
// cancel. twiceArea is twice the signed area; sx, sy are the centroid sums.
void CHU_DPolygon::ShoelaceSums(double& twiceArea, double& sx, double& sy) const {
  twiceArea = sx = sy = 0.0;
  const int n = GetCount();
  if (n == 0) return;
  const double ox = GetAt(0)->x;
  const double oy = GetAt(0)->y;
  for (int i = 1; i <= n; ++i) {  // i == n is the closing edge
    const CHU_DPoint* a = GetAt(i - 1);
    const CHU_DPoint* b = GetAt(i % n);
    const double ax = a->x - ox, ay = a->y - oy, bx = b->x - ox, by = b->y - oy;
    const double c = ax * by - bx * ay;
    twiceArea += c;
    sx += (ax + bx) * c;
    sy += (ay + by) * c;
  }
}

double CHU_DPolygon::GetSignedArea() const {
  double twiceArea = 0.0, sx = 0.0, sy = 0.0;
  ShoelaceSums(twiceArea, sx, sy);
  return twiceArea * 0.5;
}

double CHU_DPolygon::GetArea() const { return std::fabs(GetSignedArea()); }

double CHU_DPolygon::GetLength() const {
  const int n = GetCount();
  if (n < 2) return 0.0;
  double length = CHU_DPolyLine::GetLength();
  const CHU_DPoint* last = GetAt(n - 1);
  const CHU_DPoint* first = GetAt(0);
  return length + std::sqrt((first->x - last->x) * (first->x - last->x) +
                            (first->y - last->y) * (first->y - last->y));
}

bool CHU_DPolygon::GetCentroid(CHU_DPoint* out) const {
  const int n = GetCount();
  if (n == 0 || out == nullptr) return false;
  double twiceArea = 0.0, sx = 0.0, sy = 0.0;
  ShoelaceSums(twiceArea, sx, sy);
  const double area = twiceArea * 0.5;
  if (area != 0.0) {
    out->x = GetAt(0)->x + sx / (6.0 * area);
    out->y = GetAt(0)->y + sy / (6.0 * area);
    return true;
  }
  double cx = 0.0;
  double cy = 0.0;
  for (int i = 0; i < n; ++i) {
    cx += GetAt(i)->x;
    cy += GetAt(i)->y;
  }
  out->x = cx / n;
  out->y = cy / n;
  return true;
}

int CHU_DPolygon::ExtremeVertex(bool (*better)(const CHU_DPoint&, const CHU_DPoint&),
                                CHU_DPoint& out) const {
  const int n = GetCount();
  if (n == 0) return -1;
  int best = 0;
  for (int i = 1; i < n; ++i) {
    if (better(*GetAt(i), *GetAt(best))) best = i;
  }
  out = *GetAt(best);
  return best;
}

int CHU_DPolygon::GetPt_MaxX(CHU_DPoint& out) const {
  return ExtremeVertex([](const CHU_DPoint& a, const CHU_DPoint& b) { return a.x > b.x; }, out);
}

int CHU_DPolygon::GetPt_MaxY(CHU_DPoint& out) const {
  return ExtremeVertex([](const CHU_DPoint& a, const CHU_DPoint& b) { return a.y > b.y; }, out);
}

int CHU_DPolygon::GetPt_MinX(CHU_DPoint& out) const {
  return ExtremeVertex([](const CHU_DPoint& a, const CHU_DPoint& b) { return a.x < b.x; }, out);
}

int CHU_DPolygon::GetPt_MinY(CHU_DPoint& out) const {
  return ExtremeVertex([](const CHU_DPoint& a, const CHU_DPoint& b) { return a.y < b.y; }, out);
}

// ---- Minimum-area rectangle ----

void CHU_DPolygon::CalcMinimumAreaRect() {
  std::vector<HU_LIB::HU_PlanePt> points;
  points.reserve(static_cast<std::size_t>(GetCount()));
  for (int i = 0; i < GetCount(); ++i) points.push_back({GetAt(i)->x, GetAt(i)->y});
  const HU_LIB::HU_RectCorners rect = HU_LIB::HU_MinAreaRect::Compute(std::move(points));
  for (int c = 0; c < 4; ++c) {
    m_minRect[c] = rect.count == 0 ? CHU_DPoint() : CHU_DPoint(rect.corner[c].x, rect.corner[c].y);
  }
  m_minRectArea = rect.count == 0 ? 0.0 : rect.area;
  m_minRectValid = 1;
}

double CHU_DPolygon::GetMinimunAreaRectangleArea() {
  if (!m_minRectValid) CalcMinimumAreaRect();
  return m_minRectArea;
}

double CHU_DPolygon::GetMinimunAreaRectangleAngleHorz() {
  if (!m_minRectValid) CalcMinimumAreaRect();
  return std::atan((m_minRect[3].y - m_minRect[0].y) / (m_minRect[3].x - m_minRect[0].x));
}

double CHU_DPolygon::GetMinimunAreaRectangleAngleVert() {
  if (!m_minRectValid) CalcMinimumAreaRect();
  return std::atan((m_minRect[1].y - m_minRect[0].y) / (m_minRect[1].x - m_minRect[0].x));
}

bool CHU_DPolygon::GetMinimunAreaRectangle(CHU_DPolygon* out) {
  if (out == nullptr) return false;
  if (!m_minRectValid) CalcMinimumAreaRect();
  const CHU_DPoint corners[4] = {m_minRect[0], m_minRect[1], m_minRect[2], m_minRect[3]};
  out->RemoveAll();  // may be this polygon: the corners are read first
  for (const CHU_DPoint& corner : corners) out->AddPt(corner);
  return true;
}

// ---- Orientation ----

void CHU_DPolygon::ReorderVertices(VertexOrder order) {
  const int anticlockwise = GetSignedArea() >= 0.0 ? 1 : 0;
  if (anticlockwise != static_cast<int>(order)) ReverseOrder();
}

// ---- Predicates ----

bool CHU_DPolygon::PtInPoly(const CHU_DPoint& p) const {
  const int n = GetCount();
  const double px = p.x;
  const double py = p.y;
  bool inside = false;
  const CHU_DPoint* a = n > 0 ? GetAt(n - 1) : nullptr;  // the closing edge comes first
  for (int k = 0; k < n; ++k) {
    const CHU_DPoint* b = GetAt(k);
    // Exactly one end strictly below p.y: the half-open span min < p.y <= max,
    // which also rules out horizontal edges.
    if ((a->y < py) != (b->y < py)) {
      const double maxX = a->x > b->x ? a->x : b->x;
      if (px <= maxX &&
          (a->x == b->x || px <= a->x + (b->x - a->x) * (py - a->y) / (b->y - a->y))) {
        inside = !inside;
      }
    }
    a = b;
  }
  return inside;
}

bool CHU_DPolygon::PtOnPoly(const CHU_DPoint& p, double tol, CHU_DPoint* segStart,
                            CHU_DPoint* segEnd) const {
  const int n = GetCount();
  for (int i = 0; i < n; ++i) {
    const CHU_DPoint* s = GetAt(i);
    const CHU_DPoint* e = GetAt(i + 1 < n ? i + 1 : 0);
    if (HU_Math::SquaredDistanceToSegment(p, *s, *e) <= tol * tol) {
      if (segStart != nullptr) *segStart = *s;
      if (segEnd != nullptr) *segEnd = *e;
      return true;
    }
  }
  return false;
}

bool CHU_DPolygon::PolyInPoly(const CHU_DPolygon& other) const {
  for (int i = 0; i < other.GetCount(); ++i) {
    if (!PtInPoly(*other.GetAt(i))) return false;
  }
  return true;
}

bool CHU_DPolygon::ClipLineToPoly(const CHU_DPoint& a, const CHU_DPoint& b, CHU_DPoint* outA,
                                  CHU_DPoint* outB) const {
  CHU_DPoint held[2];
  int count = 0;
  if (PtInPoly(a)) held[count++] = a;
  if (PtInPoly(b)) held[count++] = b;
  const int n = GetCount();
  for (int i = 0; i < n && count < 2; ++i) {
    CHU_DPoint first;
    CHU_DPoint second;
    if (!HU_Math::GetIntersectionOfLines(a, b, *GetAt(i), *GetAt(i + 1 < n ? i + 1 : 0), first,
                                         second, false)) {
      continue;
    }
    for (const CHU_DPoint* q : {&first, &second}) {
      const bool known = (count > 0 && held[0].x == q->x && held[0].y == q->y) ||
                         (count > 1 && held[1].x == q->x && held[1].y == q->y);
      if (!known && count < 2) held[count++] = *q;
    }
  }
  if (count > 0 && outA != nullptr) *outA = held[0];
  if (count > 1 && outB != nullptr) *outB = held[1];
  return true;
}

CHU_CopyableArray<CHU_DPoint> CHU_DPolygon::GetIntersectionsWithLine(
    const CHU_DPoint& a, const CHU_DPoint& b, CHU_CopyableArray<double>* params) const {
  return CHU_DPolyLine::GetIntersectionsWithLine(a, b, true, params);
}

CHU_CopyableArray<CHU_DPoint> CHU_DPolygon::GetIntersectionsWithPoly(
    const CHU_DPolyLine& other, CHU_CopyableArray<double>* params) const {
  return CHU_DPolyLine::GetIntersectionsWithPoly(other, true, params);
}

// ---- First-vertex doubling ----

void CHU_DPolygon::CopyFirstVertices(const CHU_DPolygon& source, int count, bool doubleFirst,
                                     CHU_DPolygon& destination) {
  // Copy out first, so that source and destination may be the same polygon.
  std::vector<CHU_DPoint> copies;
  copies.reserve(static_cast<std::size_t>(count) + 1);
  for (int i = 0; i < count; ++i) copies.push_back(*source.GetAt(i));
  if (doubleFirst && count > 0) copies.push_back(*source.GetAt(0));
  destination.RemoveAll();
  for (const CHU_DPoint& p : copies) destination.AddPt(p);
}

void CHU_DPolygon::CopyPolygon(const CHU_DPolygon& source, CHU_DPolygon& destination) {
  CopyFirstVertices(source, source.GetCount(), false, destination);
}

bool CHU_DPolygon::PolygonIsFirstVertexDoubled(const CHU_DPolygon& polygon) {
  const int n = polygon.GetCount();
  return n >= 4 && polygon.GetAt(0) == polygon.GetAt(n - 1);
}

void CHU_DPolygon::PolygonConvertToFirstVertexDoubled(const CHU_DPolygon& source,
                                                      CHU_DPolygon& destination) {
  CopyFirstVertices(source, source.GetCount(), true, destination);
}

void CHU_DPolygon::PolygonConvertToNotFirstVertexDoubled(const CHU_DPolygon& source,
                                                         CHU_DPolygon& destination) {
  CopyFirstVertices(source, source.GetCount() > 0 ? source.GetCount() - 1 : 0, false, destination);
}

void CHU_DPolygon::PolygonConvertToFirstVertexDoubledIfNeeded(const CHU_DPolygon& source,
                                                              CHU_DPolygon& destination) {
  if (PolygonIsFirstVertexDoubled(source)) {
    CopyPolygon(source, destination);
  } else {
    PolygonConvertToFirstVertexDoubled(source, destination);
  }
}

void CHU_DPolygon::PolygonConvertToNotFirstVertexDoubledIfNeeded(const CHU_DPolygon& source,
                                                                 CHU_DPolygon& destination) {
  if (PolygonIsFirstVertexDoubled(source)) {
    PolygonConvertToNotFirstVertexDoubled(source, destination);
  } else {
    CopyPolygon(source, destination);
  }
}
