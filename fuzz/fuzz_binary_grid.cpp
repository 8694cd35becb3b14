// Arbitrary bytes as an HY binary grid file: the reader's point and polygon
// queries and both batch classes must neither crash nor overrun on any of them.

#include <unistd.h>

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <string>
#include <vector>

#include "hy_util/geometry/polygon.h"
#include "hy_util/grids/batch_point_sampler.h"
#include "hy_util/grids/batch_polygon_averager.h"
#include "hy_util/grids/binary_grid_file.h"
#include "hy_util/grids/binary_grid_format.h"

#include "fuzz_support.h"

namespace {

const std::string& ScratchPath() {
  static const std::string path = hyfuzz::ScratchDirectory() + "/grid.hybg";
  return path;
}

// Query positions spread over the grid the header describes (or over a default
// square when the header cannot be read), plus points on and beyond its edges.
std::vector<HU_HYBGPoint> Points(const HU_HYBGHeader& h, bool usable) {
  const double x0 = usable ? h.xllcenter : 0.0, y0 = usable ? h.yllcenter : 0.0;
  const double w = usable ? (h.ncols - 1) * h.cellSize : 10.0, ht = usable ? (h.nrows - 1) * h.cellSize : 10.0;
  std::vector<HU_HYBGPoint> points;
  for (double fx : {-0.1, 0.0, 0.37, 0.5, 1.0})
    for (double fy : {0.0, 0.41, 1.0, 1.2}) points.push_back({x0 + fx * w, y0 + fy * ht});
  points.push_back({NAN, y0});
  return points;
}

// Small polygons (a few cells) so that a huge declared grid stays cheap to average.
std::vector<CHU_DPolygon> Polygons(const std::vector<HU_HYBGPoint>& points, double cell) {
  const double s = std::isfinite(cell) && cell > 0.0 ? cell : 1.0;
  std::vector<CHU_DPolygon> polygons(points.size());
  for (std::size_t i = 0; i < points.size(); ++i) {
    const HU_HYBGPoint& p = points[i];
    polygons[i].AddPt(p.x - 1.5 * s, p.y - s, 0.0);
    polygons[i].AddPt(p.x + 2.0 * s, p.y - 0.5 * s, 0.0);
    polygons[i].AddPt(p.x, p.y, 0.0);
    polygons[i].AddPt(p.x + 0.5 * s, p.y + 2.0 * s, 0.0);
  }
  return polygons;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (!hyfuzz::WriteFile(ScratchPath(), data, size)) return 0;
  HU_HYBGHeader header;
  bool usable = false;
  {
    CHU_StdioFile file;
    std::vector<std::uint32_t> offsets;
    std::string error;
    usable = file.Open(ScratchPath(), HU_modeRead | HU_typeBinary) &&
             HU_ReadHYBGHeader(file, ScratchPath(), header, offsets, error);
  }
  const std::vector<HU_HYBGPoint> points = Points(header, usable);
  const std::vector<CHU_DPolygon> polygons = Polygons(points, usable ? header.cellSize : 1.0);

  CHU_HYBinaryGridFile reader(ScratchPath());
  float value = 0.0f;
  for (const HU_HYBGPoint& p : points) {
    reader.GetZValue(p.x, p.y, value, HYBG_NEAREST);
    reader.GetZValue(p.x, p.y, value, HYBG_BILINEAR);
  }
  for (const CHU_DPolygon& polygon : polygons) reader.GetAverageZValueOverPolygon(polygon, value);

  CHU_HYBGBatchPointSampler sampler(ScratchPath(), 1);
  sampler.Sample(points, HYBG_BILINEAR);
  std::vector<const CHU_DPolygon*> pointers;
  for (const CHU_DPolygon& polygon : polygons) pointers.push_back(&polygon);
  CHU_HYBGBatchPolygonAverager(ScratchPath(), 2).Average(pointers);
  return 0;
}
