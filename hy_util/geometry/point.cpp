#include "hy_util/geometry/point.h"

#include <cmath>

HU_IMPLEMENT_DYNCREATE(CHU_DPoint)

namespace {

constexpr double kApproxTolerance = 1e-10;

}  // namespace

CHU_DPoint::CHU_DPoint(double px, double py, double pz, std::uint32_t colour)
    : x(px), y(py), z(pz), m_colour(colour) {}

CHU_DPoint::CHU_DPoint(const CHU_DPoint* other) : CHU_DPoint(other != nullptr ? *other : CHU_DPoint()) {}

CHU_DPoint::CHU_DPoint(const CHU_ScreenPoint& screen)
    : x(static_cast<double>(screen.x)), y(static_cast<double>(screen.y)) {}

CHU_DPoint& CHU_DPoint::operator=(const CHU_DPoint& other) {
  if (this == &other) return *this;
  x = other.x;
  y = other.y;
  z = other.z;
  const std::uint32_t keptPacked = m_colour.packed;
  m_colour = other.m_colour;
  m_colour.packed = keptPacked;
  m_itemData = other.m_itemData;
  m_symbol = other.m_symbol;
  return *this;
}

void CHU_DPoint::SetPt(double px, double py, double pz) {
  x = px;
  y = py;
  z = pz;
}

CHU_DPoint CHU_DPoint::operator+(const CHU_DPoint& other) const {
  return CHU_DPoint(x + other.x, y + other.y, z + other.z);
}

CHU_DPoint CHU_DPoint::operator-(const CHU_DPoint& other) const {
  return CHU_DPoint(x - other.x, y - other.y, z - other.z);
}

CHU_DPoint CHU_DPoint::operator*(double factor) const {
  return CHU_DPoint(x * factor, y * factor, z * factor);
}

double CHU_DPoint::Dot(const CHU_DPoint& other) const {
  return x * other.x + y * other.y + z * other.z;
}

CHU_DPoint CHU_DPoint::Cross(const CHU_DPoint& other) const {
  return CHU_DPoint(y * other.z - z * other.y, z * other.x - x * other.z, x * other.y - y * other.x);
}

void CHU_DPoint::Normalize() {
  const double length = std::sqrt(x * x + y * y + z * z);
  x /= length;
  y /= length;
  z /= length;
}

bool CHU_DPoint::operator==(const CHU_DPoint& other) const {
  return x == other.x && y == other.y && z == other.z;
}

bool CHU_DPoint::IsEqual(const CHU_DPoint* other) const {
  return other != nullptr && *this == *other;
}

bool CHU_DPoint::IsEqual(const CHU_DPoint* other, double tolerance, bool twoD) const {
  if (other == nullptr) return false;
  if (!(std::fabs(x - other->x) <= tolerance) || !(std::fabs(y - other->y) <= tolerance)) return false;
  return twoD || std::fabs(z - other->z) <= tolerance;
}

bool CHU_DPoint::IsApproxEqual(const CHU_DPoint* other, bool twoD) const {
  return IsEqual(other, kApproxTolerance, twoD);
}

bool CHU_DPoint::IsApproxEqual(const CHU_DPoint& other, bool twoD) const {
  return IsEqual(&other, kApproxTolerance, twoD);
}
