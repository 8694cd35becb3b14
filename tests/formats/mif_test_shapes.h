#pragma once
// Builders shared by the MIF/MID tests: shapes from coordinate lists, shapes read
// back as coordinates, and the test data folder.

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "hy_util/formats/mif_import.h"
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

// The header's bounds as min x, min y, max x, max y; empty when it has none.
inline std::vector<double> Bounds(const CHU_MIDMIFFileImport& in) {
  double x0, y0, x1, y1;
  if (!in.GetBounds(x0, y0, x1, y1)) return {};
  return {x0, y0, x1, y1};
}

// The first count column descriptions of the header.
inline std::vector<std::string> Columns(const CHU_MIDMIFFileImport& in, int count) {
  std::vector<std::string> columns(static_cast<std::size_t>(count));
  for (int i = 0; i < count; ++i) in.GetDataStr(i, columns[static_cast<std::size_t>(i)]);
  return columns;
}

inline std::string DataFile(const std::string& name) { return std::string(HY_TEST_DATA_DIR) + "/mif/" + name; }

}  // namespace miftest
