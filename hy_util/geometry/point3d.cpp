#include "hy_util/geometry/point3d.h"

HU_IMPLEMENT_DYNCREATE(CHU_DPoint3D)

CHU_DPoint3D::CHU_DPoint3D(const CHU_DPoint3D* other) {
  if (other != nullptr) SetPt(other->x, other->y, other->z);
}

bool CHU_DPoint3D::operator==(const CHU_DPoint3D* other) const {
  return other != nullptr && x == other->x && y == other->y && z == other->z;
}
