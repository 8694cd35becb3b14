#include "hy_util/geometry/rect.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "hy_util/geometry/polyline.h"

HU_IMPLEMENT_DYNCREATE(CHU_DRect)

CHU_DRect::CHU_DRect(const CHU_DRect* other) : CHU_DRect(other != nullptr ? *other : CHU_DRect()) {}

CHU_DRect::CHU_DRect(const CHU_DPoint& first, const CHU_DPoint& second)
    : m_left(first.x), m_top(first.y), m_right(second.x), m_bottom(second.y) {}

double CHU_DRect::Width() const { return std::fabs(m_right - m_left); }

double CHU_DRect::Height() const { return std::fabs(m_top - m_bottom); }

CHU_DPoint CHU_DRect::CenterPoint() const {
  return CHU_DPoint(m_left + (m_right - m_left) * 0.5, m_top + (m_bottom - m_top) * 0.5);
}

void CHU_DRect::SetRect(double left, double top, double right, double bottom) {
  m_left = left;
  m_top = top;
  m_right = right;
  m_bottom = bottom;
}

void CHU_DRect::SetRect(const CHU_DPoint& a, const CHU_DPoint& b) {
  m_left = a.x < b.x ? a.x : b.x;
  m_right = a.x < b.x ? b.x : a.x;
  m_top = a.y < b.y ? b.y : a.y;
  m_bottom = a.y < b.y ? a.y : b.y;
}

void CHU_DRect::Normalise() {
  if (m_right < m_left) std::swap(m_left, m_right);
  if (m_top < m_bottom) std::swap(m_top, m_bottom);
}

void CHU_DRect::OffsetRect(double dx, double dy) {
  m_left += dx;
  m_right += dx;
  m_top += dy;
  m_bottom += dy;
}

void CHU_DRect::InflateRect(double dx, double dy) {
  m_left -= dx;
  m_right += dx;
  m_bottom -= dy;
  m_top += dy;
}

void CHU_DRect::UnionRect(const CHU_DRect& other) {
  m_left = std::min(m_left, other.m_left);
  m_top = std::max(m_top, other.m_top);
  m_right = std::max(m_right, other.m_right);
  m_bottom = std::min(m_bottom, other.m_bottom);
}

CHU_DRect& CHU_DRect::operator+(const CHU_DRect& other) {
  UnionRect(other);
  return *this;
}

bool CHU_DRect::IntersectRect(const CHU_DRect& other) {
  if (!(m_left <= other.m_right && other.m_left <= m_right && other.m_bottom <= m_top &&
        m_bottom <= other.m_top)) {
    return false;
  }
  m_left = std::max(m_left, other.m_left);
  m_top = std::min(m_top, other.m_top);
  m_right = std::min(m_right, other.m_right);
  m_bottom = std::max(m_bottom, other.m_bottom);
  return true;
}

int CHU_DRect::InsideRect(const CHU_DRect& other) const {
  int code = 0;
  if (m_left > other.m_right) code |= 1;
  if (m_right < other.m_left) code |= 2;
  if (m_top < other.m_bottom) code |= 4;
  if (m_bottom > other.m_top) code |= 8;
  return code;
}

bool CHU_DRect::PtInRect(const CHU_DPoint& p) const {
  return m_left <= p.x && p.x <= m_right && m_bottom <= p.y && p.y <= m_top;
}

bool CHU_DRect::PtInRect(const CHU_DPoint* p) const { return p != nullptr && PtInRect(*p); }

bool CHU_DRect::PolyInRect(const CHU_DPolyLine* poly) const {
  if (poly == nullptr) return false;
  for (int i = 0; i < poly->GetCount(); ++i) {
    if (PtInRect(poly->GetAt(i))) return true;
  }
  return false;
}
