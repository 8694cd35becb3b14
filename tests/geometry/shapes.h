#pragma once
// Builders shared by the geometry tests: chains and rings from coordinate lists,
// points and rings read back as coordinates, and the headers the tests compare with.

#include <array>
#include <cmath>
#include <initializer_list>
#include <tuple>
#include <utility>
#include <vector>

#include "hy_util/geometry/polygon.h"

using XY = std::pair<double, double>;
using XYs = std::vector<XY>;

template <class Shape = CHU_DPolyLine>
Shape Make(std::initializer_list<XY> xy) {
  Shape shape;
  for (auto [x, y] : xy) shape.AddPt(x, y, 0.0);
  return shape;
}

inline CHU_DPolyLine Chain(std::initializer_list<XY> xy) { return Make(xy); }
inline CHU_DPolygon Ring(std::initializer_list<XY> xy) { return Make<CHU_DPolygon>(xy); }
inline CHU_DPolygon UnitSquare() { return Ring({{0, 0}, {1, 0}, {1, 1}, {0, 1}}); }

inline XY At(const CHU_DPoint& p) { return {p.x, p.y}; }

inline XYs Coords(const CHU_DPolyLine& shape) {
  XYs out;
  for (int i = 0; i < shape.GetCount(); ++i) out.push_back(At(*shape.GetAt(i)));
  return out;
}
