#include "hy_util/geometry/math.h"

#include <algorithm>
#include <cmath>

namespace HU_LIB {

namespace {

constexpr double kZero = 1e-10;
constexpr double kParamLow = -1e-12;
constexpr double kParamHigh = 1.000000000001;

bool IsZero(double v) { return v >= -kZero && v <= kZero; }
bool OnSegment(double t) { return t >= kParamLow && t <= kParamHigh; }
double Sign(double v) { return v > 0.0 ? 1.0 : -1.0; }

void SetXY(CHU_DPoint& out, double x, double y) {
  out.x = x;
  out.y = y;
}

// Parameter of p along the line origin + t * (dx, dy), from x unless the direction
// is vertical.
double ParamAlong(const CHU_DPoint& p, const CHU_DPoint& origin, double dx, double dy) {
  return !IsZero(dx) ? (p.x - origin.x) / dx : (p.y - origin.y) / dy;
}

// Zero when the offset (ox, oy) from a point of a line with direction (dx, dy) runs
// along it; compared per component, as the parameters along each axis.
double OffLine(double ox, double oy, double dx, double dy) {
  if (!IsZero(dx) && !IsZero(dy)) return ox / dx - oy / dy;
  return !IsZero(dx) ? oy : ox;
}

bool BothDegenerate(const CHU_DPoint& a1, const CHU_DPoint& b1, CHU_DPoint& out1, CHU_DPoint& out2) {
  if (!IsZero(b1.x - a1.x) || !IsZero(b1.y - a1.y)) return false;
  SetXY(out1, a1.x, a1.y);
  SetXY(out2, a1.x, a1.y);
  return true;
}

// a1 is a point and b a segment. The parameter is measured from a1 to b1, i.e. it
// is the negated parameter of a1 along b; callers depend on that sign.
bool PointOnSegmentA(const CHU_DPoint& a1, const CHU_DPoint& b1, const CHU_DPoint& b2,
                     CHU_DPoint& out1, CHU_DPoint& out2, bool extend) {
  const double dbx = b2.x - b1.x, dby = b2.y - b1.y;
  if (!IsZero(OffLine(a1.x - b1.x, a1.y - b1.y, dbx, dby))) return false;
  const double t = !IsZero(dbx) ? (b1.x - a1.x) / dbx : (b1.y - a1.y) / dby;
  if (!OnSegment(t) && !extend) return false;
  SetXY(out1, a1.x, a1.y);
  SetXY(out2, a1.x, a1.y);
  return true;
}

// b1 is a point and a a segment.
bool PointOnSegmentB(const CHU_DPoint& a1, const CHU_DPoint& a2, const CHU_DPoint& b1,
                     CHU_DPoint& out1, CHU_DPoint& out2, bool extend) {
  const double dax = a2.x - a1.x, day = a2.y - a1.y;
  if (!IsZero(OffLine(b1.x - a1.x, b1.y - a1.y, dax, day))) return false;
  if (!OnSegment(ParamAlong(b1, a1, dax, day)) && !extend) return false;
  SetXY(out1, b1.x, b1.y);
  SetXY(out2, b1.x, b1.y);
  return true;
}

bool ParallelSegments(const CHU_DPoint& a1, const CHU_DPoint& a2, const CHU_DPoint& b1,
                      const CHU_DPoint& b2, CHU_DPoint& out1, CHU_DPoint& out2, bool extend) {
  const double dax = a2.x - a1.x, day = a2.y - a1.y;
  if (!IsZero(OffLine(b1.x - a1.x, b1.y - a1.y, dax, day))) return false;
  const double t0 = ParamAlong(b1, a1, dax, day);
  const double t1 = ParamAlong(b2, a1, dax, day);
  const double lo = std::min(t0, t1);
  const double hi = std::max(t0, t1);
  double from = 0.0;
  double to = 0.0;
  if (extend) {
    from = std::min(lo, 0.0);
    to = std::max(hi, 1.0);
  } else {
    const bool overlap = (lo <= 1e-12 && hi >= 0.999999999999) || OnSegment(lo) || OnSegment(hi);
    if (!overlap) return false;
    from = std::clamp(lo, 0.0, 1.0);
    to = std::clamp(hi, 0.0, 1.0);
  }
  SetXY(out1, a1.x + from * dax, a1.y + from * day);
  SetXY(out2, a1.x + to * dax, a1.y + to * day);
  return true;
}

}  // namespace

void HU_Math::InterpolatePtTri(double d, const CHU_DPoint* p, const CHU_DPoint* q, CHU_DPoint* out) {
  if (p == nullptr || q == nullptr || out == nullptr) return;
  const double px = p->x, py = p->y;
  const double dx = q->x - px;
  const double dy = q->y - py;
  if (dx == 0.0) {
    out->x = px;
    out->y = py + Sign(dy) * d;
    out->z = CHU_DPoint::C_NULL_VALL;
  } else if (dy == 0.0) {
    out->x = px + Sign(dx) * d;
    out->y = py;
    out->z = CHU_DPoint::C_NULL_VALL;
  } else {
    const double angle = std::fabs(std::atan(dy / dx));
    out->y = py + std::sin(angle) * d * Sign(dy);
    out->x = px + std::cos(angle) * d * Sign(dx);
  }
}

double HU_Math::GetFractionalDistance(const CHU_DPoint& x, const CHU_DPoint& a, const CHU_DPoint& b) {
  const double dx = b.x - a.x;
  const double dy = b.y - a.y;
  if (!IsZero(dx)) return (x.x - a.x) / dx;
  if (IsZero(dy)) return 0.0;
  return (x.y - a.y) / dy;
}

bool HU_Math::GetIntersectionOfLines(const CHU_DPoint& a1, const CHU_DPoint& a2, const CHU_DPoint& b1,
                                     const CHU_DPoint& b2, CHU_DPoint& out1, CHU_DPoint& out2,
                                     bool extend) {
  const double dax = a2.x - a1.x, day = a2.y - a1.y;
  const double dbx = b2.x - b1.x, dby = b2.y - b1.y;
  const bool aDegenerate = IsZero(dax) && IsZero(day);
  const bool bDegenerate = IsZero(dbx) && IsZero(dby);
  if (aDegenerate && bDegenerate) return BothDegenerate(a1, b1, out1, out2);
  if (aDegenerate) return PointOnSegmentA(a1, b1, b2, out1, out2, extend);
  if (bDegenerate) return PointOnSegmentB(a1, a2, b1, out1, out2, extend);

  const double den = dbx * day - dby * dax;
  if (IsZero(den)) return ParallelSegments(a1, a2, b1, b2, out1, out2, extend);
  const double d0x = b1.x - a1.x, d0y = b1.y - a1.y;
  const double s = (d0y * dax - d0x * day) / den;
  const double t = !IsZero(dax) ? (s * dbx + d0x) / dax : (s * dby + d0y) / day;
  if ((!OnSegment(s) || !OnSegment(t)) && !extend) return false;
  SetXY(out1, b1.x + s * dbx, b1.y + s * dby);
  SetXY(out2, b1.x + s * dbx, b1.y + s * dby);
  return true;
}

}  // namespace HU_LIB
