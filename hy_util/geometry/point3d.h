#pragma once
// CHU_DPoint3D: a bare three-dimensional point without attributes. Unlike
// CHU_DPoint, the default is the origin (0, 0, 0), not the unset value.

#include "hy_util/platform/object.h"

class CHU_DPoint3D : public CHU_Object {
  HU_DECLARE_DYNCREATE(CHU_DPoint3D)

 public:
  double x = 0.0;
  double y = 0.0;
  double z = 0.0;

  CHU_DPoint3D() = default;
  CHU_DPoint3D(double px, double py, double pz) : x(px), y(py), z(pz) {}
  CHU_DPoint3D(const CHU_DPoint3D& other) = default;
  // A null pointer gives the origin.
  explicit CHU_DPoint3D(const CHU_DPoint3D* other);
  ~CHU_DPoint3D() override = default;
  CHU_DPoint3D& operator=(const CHU_DPoint3D& other) = default;

  void SetPt(double px, double py, double pz) {
    x = px;
    y = py;
    z = pz;
  }
  // Exact equality of all three coordinates; false for a null pointer.
  bool operator==(const CHU_DPoint3D* other) const;
  bool operator==(const CHU_DPoint3D& other) const { return *this == &other; }
};
