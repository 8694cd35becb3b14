#pragma once
// Builders shared by the MIF/MID tests: shapes from coordinate lists, shapes read
// back as coordinates, and the test data folder.

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "hy_util/geometry/polygon.h"

namespace miftest {

using XY = std::pair<double, double>;
using XYs = std::vector<XY>;

template <class Shape = CHU_DPolyLine>
std::unique_ptr<Shape> Make(const XYs& xy) {
  auto shape = std::make_unique<Shape>();
  for (auto [x, y] : xy) shape->AddPt(x, y, 0.0);
  return shape;
}

inline XYs Coords(const CHU_DPolyLine& shape) {
  XYs out;
  for (int i = 0; i < shape.GetCount(); ++i) out.emplace_back(shape.GetAt(i)->x, shape.GetAt(i)->y);
  return out;
}

inline std::string DataFile(const std::string& name) { return std::string(HY_TEST_DATA_DIR) + "/mif/" + name; }

}  // namespace miftest
