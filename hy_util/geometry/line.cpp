#include "hy_util/geometry/line.h"

#include <cmath>
#include <new>

namespace {

constexpr double kRisingVerticalSlope = 9999999999.0;
constexpr double kVerticalMarkerSlope = -99999999999.0;
constexpr double kOnLineTolerance = 0.001;
constexpr double kParallelThreshold = 0.001;

}  // namespace

CHU_DLine::CHU_DLine(const CHU_DPoint& p1, const CHU_DPoint& p2) {
  SetFromPoints(p1, p2);
  if (!IsVertical()) m_intercept = p1.y - m_slope * p1.x;
}

CHU_DLine::CHU_DLine(const CHU_DPoint& p, double slope)
    : m_slope(slope), m_intercept(p.y - p.x * slope) {}

CHU_DLine::CHU_DLine(int vertical, double x)
    : m_slope(kVerticalMarkerSlope), m_intercept(x), m_vertical(vertical) {}

CHU_DLine::CHU_DLine(double slope, double intercept)
    : m_slope(slope), m_intercept(intercept), m_vertical(slope != 0.0 ? 1 : 0) {}

CHU_DLine& CHU_DLine::operator=(const CHU_DLine& other) {
  m_slope = other.m_slope;
  m_intercept = other.m_intercept;
  m_vertical = other.m_vertical;
  m_first = other.m_first;
  m_second = other.m_second;
  return *this;
}

void CHU_DLine::SetLine(const CHU_DPoint* p1, const CHU_DPoint* p2) {
  if (p1 == nullptr || p2 == nullptr) return;
  SetFromPoints(*p1, *p2);
  if (!IsVertical()) m_intercept = p1->y - m_slope * p1->y;
}

// Shared part of the two-point forms: points, direction and, for a vertical line,
// the intercept. The caller sets the intercept of a sloped line.
void CHU_DLine::SetFromPoints(const CHU_DPoint& p1, const CHU_DPoint& p2) {
  m_first = p1;
  m_second = p2;
  if (p1.x != p2.x) {
    m_vertical = 0;
    m_slope = (p2.y - p1.y) / (p2.x - p1.x);
  } else {
    m_vertical = 1;
    m_intercept = p1.x;
    m_slope = p1.y < p2.y ? kRisingVerticalSlope : -kRisingVerticalSlope;
  }
}

double CHU_DLine::Val(double x) const {
  return IsVertical() ? x : m_slope * x + m_intercept;
}

double CHU_DLine::DistFromPoint(const CHU_DPoint& p) const {
  if (IsVertical()) return std::fabs(p.x - m_intercept);
  return std::fabs(p.x * m_slope - p.y + m_intercept) / std::pow(m_slope * m_slope + 1.0, 0.5);
}

bool CHU_DLine::OnLine(const CHU_DPoint& p) const {
  return std::fabs(Val(p.x) - p.y) < kOnLineTolerance;
}

std::unique_ptr<CHU_DLine> CHU_DLine::Parallel(const CHU_DPoint& p) const {
  if (IsVertical()) return std::unique_ptr<CHU_DLine>(new (std::nothrow) CHU_DLine(1, p.x));
  return std::unique_ptr<CHU_DLine>(new (std::nothrow) CHU_DLine(p, m_slope));
}

std::unique_ptr<CHU_DLine> CHU_DLine::Vertical(const CHU_DPoint& p) const {
  if (IsVertical()) return std::unique_ptr<CHU_DLine>(new (std::nothrow) CHU_DLine(p, 0.0));
  if (m_slope == 0.0) return std::unique_ptr<CHU_DLine>(new (std::nothrow) CHU_DLine(1, p.x));
  return std::unique_ptr<CHU_DLine>(new (std::nothrow) CHU_DLine(p, -1.0 / m_slope));
}

bool CHU_DLine::IntersectPlane(const CHU_DPoint& a, const CHU_DPoint& b, const CHU_DPoint& c,
                               CHU_DPoint* out) const {
  CHU_DPoint normal = (b - a).Cross(c - a);
  normal.Normalize();
  const CHU_DPoint direction = m_second - m_first;
  const double denominator = normal.Dot(direction);
  if (std::fabs(denominator) < kParallelThreshold) return false;
  const double t = normal.Dot(a - m_first) / denominator;
  if (out != nullptr) {
    out->x = m_first.x + t * direction.x;
    out->y = m_first.y + t * direction.y;
    out->z = m_first.z + t * direction.z;
  }
  return t >= 0.0 && t <= 1.0;
}

double CHU_DLine::SegmentLength(const CHU_DPoint& a, const CHU_DPoint& b) {
  const double dx = b.x - a.x;
  const double dy = b.y - a.y;
  return std::sqrt(dx * dx + dy * dy);
}

int CHU_DLine::LineSegmentIntersect(const CHU_DPoint& p1, const CHU_DPoint& p2, const CHU_DPoint& p3,
                                    const CHU_DPoint& p4, CHU_DPoint& out) {
  const double d12x = p2.x - p1.x, d12y = p2.y - p1.y;
  const double d34x = p4.x - p3.x, d34y = p4.y - p3.y;
  const double d13x = p1.x - p3.x, d13y = p1.y - p3.y;
  const double denominator = d12x * d34y - d12y * d34x;
  const double numeratorA = d34x * d13y - d34y * d13x;
  const double numeratorB = d12x * d13y - d12y * d13x;
  if (std::fabs(denominator) <= kParallelThreshold) {
    return numeratorA == 0.0 || numeratorB == 0.0 ? 2 : 3;
  }
  const double ua = numeratorA / denominator;
  const double ub = numeratorB / denominator;
  // Written as the inside test so that NaN parameters fall through to "outside".
  if (ua >= 0.0 && ua <= 1.0 && ub >= 0.0 && ub <= 1.0) {
    out.x = p1.x + d12x * ua;
    out.y = p1.y + d12y * ua;
    out.z = CHU_DPoint::C_NULL_VALL;
    return 0;
  }
  return 1;
}
