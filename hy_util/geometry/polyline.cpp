#include "hy_util/geometry/polyline.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "hy_util/geometry/line.h"
#include "hy_util/geometry/math.h"

HU_IMPLEMENT_DYNCREATE(CHU_DPolyLine)

namespace {

// Capacity hints larger than this are not reserved up front; the chain still grows
// to any size as vertices are added. Keeps a bad count from a file from reserving
// gigabytes.
constexpr int kMaxReserveHint = 1 << 22;

std::vector<std::unique_ptr<CHU_DPoint>> DeepCopy(const std::vector<std::unique_ptr<CHU_DPoint>>& source) {
  std::vector<std::unique_ptr<CHU_DPoint>> copy;
  copy.reserve(source.size());
  for (const auto& point : source) copy.push_back(std::make_unique<CHU_DPoint>(*point));
  return copy;
}

}  // namespace

CHU_DPolyLine::CHU_DPolyLine(const CHU_DPolyLine& other)
    : CHU_Object(other), m_vertices(DeepCopy(other.m_vertices)), m_dataVal(other.m_dataVal),
      m_itemData(other.m_itemData) {}

CHU_DPolyLine::CHU_DPolyLine(const CHU_DPolyLine* other) {
  if (other != nullptr) CHU_DPolyLine::operator=(*other);
}

CHU_DPolyLine::~CHU_DPolyLine() = default;

CHU_DPolyLine& CHU_DPolyLine::operator=(const CHU_DPolyLine& other) {
  if (this == &other) return *this;
  m_vertices = DeepCopy(other.m_vertices);
  m_dataVal = other.m_dataVal;
  m_itemData = other.m_itemData;
  return *this;
}

// ---- Vertex storage ----

void CHU_DPolyLine::AddPt(const CHU_DPoint& p) { m_vertices.push_back(std::make_unique<CHU_DPoint>(p)); }

void CHU_DPolyLine::AddPt(double x, double y, double z) {
  auto point = std::make_unique<CHU_DPoint>(x, y, z);
  CHU_Colour* colour = point->GetColour();
  colour->red = colour->green = colour->blue = colour->alpha = 255;
  colour->packed = 0xFFFFFFu;
  m_vertices.push_back(std::move(point));
}

void CHU_DPolyLine::AddPt(const CHU_DPoint& p, const CHU_DPoint& after, const CHU_DPoint& /*unused*/) {
  for (int i = 0; i < GetCount(); ++i) {
    if (*GetAt(i) == after) {
      InsertAt(i + 1, p);
      return;
    }
  }
}

void CHU_DPolyLine::InsertAt(int index, const CHU_DPoint& p) {
  if (index < 0 || index > GetCount()) return;
  m_vertices.insert(m_vertices.begin() + index, std::make_unique<CHU_DPoint>(p));
}

void CHU_DPolyLine::SetAt(int index, const CHU_DPoint& p) {
  if (index < 0 || index >= GetCount()) return;
  m_vertices[static_cast<std::size_t>(index)] = std::make_unique<CHU_DPoint>(p);
}

void CHU_DPolyLine::RemoveAt(int index) {
  if (index < 0 || index >= GetCount()) return;
  m_vertices.erase(m_vertices.begin() + index);
}

void CHU_DPolyLine::RemoveAll() { m_vertices.clear(); }

void CHU_DPolyLine::ReverseOrder() { std::reverse(m_vertices.begin(), m_vertices.end()); }

bool CHU_DPolyLine::GetAt(int index, CHU_DPoint& out) const {
  const CHU_DPoint* point = GetAt(index);
  if (point == nullptr) return false;
  out = *point;
  return true;
}

CHU_CopyableArray<CHU_DPoint> CHU_DPolyLine::GetCopyOfVertices() const {
  CHU_CopyableArray<CHU_DPoint> copy;
  copy.reserve(m_vertices.size());
  for (const auto& point : m_vertices) copy.push_back(*point);
  return copy;
}

void CHU_DPolyLine::InitialNumberOfPoints(int count) {
  if (count > 0) m_vertices.reserve(static_cast<std::size_t>(std::min(count, kMaxReserveHint)));
}

void CHU_DPolyLine::SetSize(int count) {
  if (count < 0) count = 0;
  if (count < GetCount()) {
    m_vertices.resize(static_cast<std::size_t>(count));
  } else {
    InitialNumberOfPoints(count);
  }
}

void CHU_DPolyLine::Grow(int extra) {
  if (extra > 0) InitialNumberOfPoints(GetCount() + std::min(extra, kMaxReserveHint));
}

void CHU_DPolyLine::Cleanup() { m_vertices.shrink_to_fit(); }

// ---- Measures and positions ----

double CHU_DPolyLine::GetLength() const {
  double total = 0.0;
  for (int i = 1; i < GetCount(); ++i) total = total + CHU_DLine::SegmentLength(*GetAt(i - 1), *GetAt(i));
  return total;
}

bool CHU_DPolyLine::GetExtent(CHU_DRect* rect) const {
  if (rect == nullptr || m_vertices.empty()) return false;
  double left = m_vertices.front()->x, right = left;
  double bottom = m_vertices.front()->y, top = bottom;
  for (const auto& point : m_vertices) {
    left = std::min(left, point->x);
    right = std::max(right, point->x);
    bottom = std::min(bottom, point->y);
    top = std::max(top, point->y);
  }
  rect->SetRect(left, top, right, bottom);
  return true;
}

// Walks the stored segments, accumulating their lengths in the same order as
// GetLength so that a target equal to the length hits the last vertex exactly.
// An exact hit of vertex i returns i + hitOffset with out at that vertex (x, y);
// a target inside the segment ending at vertex i returns i + insideOffset with out
// interpolated; otherwise -1 and out untouched.
int CHU_DPolyLine::WalkTo(double target, CHU_DPoint* out, int hitOffset, int insideOffset) const {
  double before = 0.0;
  for (int i = 1; i < GetCount(); ++i) {
    const CHU_DPoint& start = *GetAt(i - 1);
    const CHU_DPoint& end = *GetAt(i);
    const double after = before + CHU_DLine::SegmentLength(start, end);
    if (after == target) {
      if (out != nullptr) {
        out->x = end.x;
        out->y = end.y;
      }
      return i + hitOffset;
    }
    if (target < after) {
      HU_LIB::HU_Math::InterpolatePtTri(target - before, &start, &end, out);
      return i + insideOffset;
    }
    before = after;
  }
  return -1;
}

int CHU_DPolyLine::GetCenter(CHU_DPoint* out) const { return WalkTo(GetLength() * 0.5, out, 0, -2); }

int CHU_DPolyLine::GetPosAlongPolyline(double distance, CHU_DPoint* out) const {
  return WalkTo(distance, out, 0, -2);
}

int CHU_DPolyLine::GetPosAlongPolyline(int n, CHU_DPoint* out) const {
  return WalkTo(n * GetLength(), out, 0, -2);
}

int CHU_DPolyLine::GetAtPercent(double p, CHU_DPoint* out) const {
  const double fraction = p < 0.0 ? 0.0 : (p > 1.0 ? 1.0 : p);
  return WalkTo(fraction * GetLength(), out, -1, -1);
}

int CHU_DPolyLine::GetAtPercent(int percent, CHU_DPoint* out) const {
  const int clamped = std::clamp(percent, 0, 100);
  return WalkTo(GetLength() * clamped * 0.01, out, -1, -1);
}

namespace {

// Distance from s to the foot of p on segment s-e. When p lies exactly on the
// segment's line the foot stays the null point and the distance to it is returned.
double DistanceToFoot(const CHU_DPoint& p, const CHU_DPoint& s, const CHU_DPoint& e) {
  CHU_DPoint foot;
  if ((s.y - p.y) / (s.x - p.x) == (s.y - e.y) / (s.x - e.x)) return CHU_DLine::SegmentLength(s, foot);
  const double a = CHU_DLine::SegmentLength(s, e);
  if (a == 0.0) return 0.0;
  const double b = CHU_DLine::SegmentLength(s, p);
  const double c = CHU_DLine::SegmentLength(e, p);
  const double d = (b * b + a * a - c * c) / (2.0 * a);
  HU_LIB::HU_Math::InterpolatePtTri(d, &s, &e, &foot);
  return CHU_DLine::SegmentLength(s, foot);
}

}  // namespace

double CHU_DPolyLine::GetLengthToPoint(CHU_DPoint p, double tol) const {
  if (GetCount() == 0) return -1.0;
  const double tol2 = tol * tol;
  double before = 0.0;
  for (int i = 1; i < GetCount(); ++i) {
    const CHU_DPoint& start = *GetAt(i - 1);
    const CHU_DPoint& end = *GetAt(i);
    if (HU_LIB::HU_Math::SquaredDistanceToSegment(p, start, end) <= tol2) {
      return before + DistanceToFoot(p, start, end);
    }
    before = before + CHU_DLine::SegmentLength(start, end);
  }
  return before;
}

bool CHU_DPolyLine::GetConnectedVertices(double distance, CHU_DPoint* a, CHU_DPoint* b,
                                         double& remainder) const {
  if (GetCount() == 0 || distance > GetLength()) return false;
  double before = 0.0;
  for (int i = 1; i < GetCount(); ++i) {
    const CHU_DPoint& start = *GetAt(i - 1);
    const CHU_DPoint& end = *GetAt(i);
    const double after = before + CHU_DLine::SegmentLength(start, end);
    if (after >= distance) {
      if (a != nullptr) a->SetPt(start.x, start.y, a->z);
      if (b != nullptr) b->SetPt(end.x, end.y, b->z);
      remainder = distance - before;
      return true;
    }
    before = after;
  }
  return false;
}

bool CHU_DPolyLine::GetConnectedVertices(const CHU_DPoint* p, CHU_DPoint* a, CHU_DPoint* b,
                                         double tol) const {
  return p != nullptr && CHU_DPolyLine::PtOnPoly(*p, tol, a, b);
}

// ---- Searches ----

bool CHU_DPolyLine::PtOnPoly(const CHU_DPoint& p, double tol, CHU_DPoint* segStart,
                             CHU_DPoint* segEnd) const {
  const double tol2 = tol * tol;
  for (int i = 1; i < GetCount(); ++i) {
    const CHU_DPoint& start = *GetAt(i - 1);
    const CHU_DPoint& end = *GetAt(i);
    if (HU_LIB::HU_Math::SquaredDistanceToSegment(p, start, end) <= tol2) {
      if (segStart != nullptr) *segStart = start;
      if (segEnd != nullptr) *segEnd = end;
      return true;
    }
  }
  return false;
}

int CHU_DPolyLine::PtOnVertex(const CHU_DPoint& p, double tol, CHU_DPoint& out) const {
  for (int i = 0; i < GetCount(); ++i) {
    const CHU_DPoint& vertex = *GetAt(i);
    if (vertex == p || (std::fabs(vertex.x - p.x) <= tol && std::fabs(vertex.y - p.y) <= tol)) {
      out = vertex;
      return i;
    }
  }
  return -1;
}

bool CHU_DPolyLine::PtOnVertex(const CHU_DPoint& p, double tol) const {
  CHU_DPoint found;
  return CHU_DPolyLine::PtOnVertex(p, tol, found) >= 0;
}

// ---- Extremes ----

int CHU_DPolyLine::ExtremeId(bool (*better)(const CHU_DPoint&, const CHU_DPoint&)) const {
  if (m_vertices.empty()) return -1;
  int best = 0;
  for (int i = 1; i < GetCount(); ++i) {
    if (better(*GetAt(i), *GetAt(best))) best = i;
  }
  return best;
}

int CHU_DPolyLine::TopId() const {
  return ExtremeId([](const CHU_DPoint& a, const CHU_DPoint& b) { return a.y > b.y; });
}

int CHU_DPolyLine::BottomId() const {
  return ExtremeId([](const CHU_DPoint& a, const CHU_DPoint& b) { return a.y < b.y; });
}

int CHU_DPolyLine::MostLeftId() const {
  return ExtremeId([](const CHU_DPoint& a, const CHU_DPoint& b) { return a.x < b.x; });
}

int CHU_DPolyLine::MostRightId() const {
  return ExtremeId([](const CHU_DPoint& a, const CHU_DPoint& b) { return a.x > b.x; });
}
