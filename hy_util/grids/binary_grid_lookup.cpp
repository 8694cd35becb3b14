#include "hy_util/grids/binary_grid_lookup.h"

#include <cmath>

namespace {

// trunc(q) for q >= 0, limited to [0, last] before the conversion to int.
int TruncatedIndex(double q, int last) {
  if (!(q > 0.0)) return 0;
  if (q >= static_cast<double>(last)) return last;
  return static_cast<int>(q);
}

struct Offsets {
  double dx0, dx1, dyt, dyb;
};

// The three-node cases: the plane through the valid nodes, inside their triangle.
bool Triangle(int mask, double zUL, double zUR, double zLL, double zLR, double s, const Offsets& d,
              double& r) {
  const double inv = 1.0 / s;
  switch (mask) {
    case 7:
      if (!(d.dx1 >= d.dyt)) return false;
      r = ((s - d.dx0 - d.dyt) * zUL + zUR * d.dx0 + zLL * d.dyt) * inv;
      return true;
    case 11:
      if (!(d.dx0 >= d.dyt)) return false;
      r = ((s - d.dx1 - d.dyt) * zUR + zUL * d.dx1 + zLR * d.dyt) * inv;
      return true;
    case 13:
      if (!(d.dx1 >= d.dyb)) return false;
      r = ((s - d.dx0 - d.dyb) * zLL + zLR * d.dx0 + zUL * d.dyb) * inv;
      return true;
    case 14:
      if (!(d.dx0 >= d.dyb)) return false;
      r = ((s - d.dx1 - d.dyb) * zLR + zLL * d.dx1 + zUR * d.dyb) * inv;
      return true;
    default:
      return false;
  }
}

// The two-node cases: the point must lie exactly on the side joining the nodes.
bool Side(int mask, double zUL, double zUR, double zLL, double zLR, double s, const Offsets& d, double& r) {
  const double inv = 1.0 / s;
  switch (mask) {
    case 3:
      if (d.dyt != 0.0) return false;
      r = (zUR * d.dx0 + zUL * d.dx1) * inv;
      return true;
    case 12:
      if (d.dyb != 0.0) return false;
      r = (zLR * d.dx0 + zLL * d.dx1) * inv;
      return true;
    case 5:
      if (d.dx0 != 0.0) return false;
      r = (zLL * d.dyt + zUL * d.dyb) * inv;
      return true;
    case 10:
      if (d.dx1 != 0.0) return false;
      r = (zLR * d.dyt + zUR * d.dyb) * inv;
      return true;
    default:
      return false;
  }
}

}  // namespace

HU_HYBGBounds HU_HYBGGetBounds(const HU_HYBGHeader& header) {
  HU_HYBGBounds b;
  b.xmin = header.xllcenter;
  b.ymin = header.yllcenter;
  b.xmax = b.xmin + (header.ncols - 1) * header.cellSize;
  b.ymax = b.ymin + (header.nrows - 1) * header.cellSize;
  return b;
}

bool HU_HYBGContains(const HU_HYBGBounds& b, double x, double y) {
  return x >= b.xmin && x <= b.xmax && y >= b.ymin && y <= b.ymax;
}

HU_HYBGCell HU_HYBGLocate(const HU_HYBGHeader& header, const HU_HYBGBounds& b, double x, double y) {
  const double s = header.cellSize;
  HU_HYBGCell cell;
  cell.c0 = TruncatedIndex((x - b.xmin) / s, header.ncols - 1);
  cell.c1 = cell.c0 == header.ncols - 1 ? cell.c0 : cell.c0 + 1;
  cell.r0 = TruncatedIndex((b.ymax - y) / s, header.nrows - 1);
  cell.r1 = cell.r0 == header.nrows - 1 ? cell.r0 : cell.r0 + 1;
  cell.x0 = b.xmin + cell.c0 * s;
  cell.x1 = b.xmin + cell.c1 * s;
  cell.y0 = b.ymax - cell.r0 * s;
  cell.y1 = b.ymax - cell.r1 * s;
  return cell;
}

void HU_HYBGNearestNode(const HU_HYBGCell& cell, double x, double y, int& row, int& column) {
  column = std::fabs(x - cell.x0) <= std::fabs(x - cell.x1) ? cell.c0 : cell.c1;
  row = std::fabs(y - cell.y0) <= std::fabs(y - cell.y1) ? cell.r0 : cell.r1;
}

bool HU_HYBGIsOnUpperLeftNode(const HU_HYBGCell& cell, double x, double y) {
  return x == cell.x0 && y == cell.y0;
}

bool HU_HYBGInterpolate(float zUL, float zUR, float zLL, float zLR, float noData, double s, double x,
                        double y, const HU_HYBGCell& cell, float& result) {
  const int mask = (zUL != noData ? 1 : 0) | (zUR != noData ? 2 : 0) | (zLL != noData ? 4 : 0) |
                   (zLR != noData ? 8 : 0);
  const Offsets d{x - cell.x0, cell.x1 - x, cell.y0 - y, y - cell.y1};
  const double ul = zUL, ur = zUR, ll = zLL, lr = zLR;
  double r = 0.0;
  bool ok = false;
  if (mask == 15) {
    r = (ur * d.dx0 * d.dyb + ul * d.dx1 * d.dyb + ll * d.dx1 * d.dyt + lr * d.dx0 * d.dyt) * (1.0 / (s * s));
    ok = true;
  } else {
    ok = Triangle(mask, ul, ur, ll, lr, s, d, r) || Side(mask, ul, ur, ll, lr, s, d, r);
  }
  if (ok) result = static_cast<float>(r);
  return ok;
}

bool HU_HYBGGetPolygonRange(const HU_HYBGHeader& header, const HU_HYBGBounds& b, double left, double top,
                            double right, double bottom, HU_HYBGPolygonRange& range) {
  if (!std::isfinite(left) || !std::isfinite(top) || !std::isfinite(right) || !std::isfinite(bottom))
    return false;
  if (right < b.xmin || left > b.xmax || top < b.ymin || bottom > b.ymax) return false;
  const double s = header.cellSize;
  const int lastCol = header.ncols - 1;
  const int lastRow = header.nrows - 1;
  range.c0 = left > b.xmin ? TruncatedIndex((left - b.xmin) / s, lastCol) : 0;
  range.r0 = top < b.ymax ? TruncatedIndex((b.ymax - top) / s, lastRow) : 0;
  range.c1 = right < b.xmax ? TruncatedIndex((right - b.xmin) / s, lastCol - 1) + 1 : lastCol;
  range.r1 = bottom > b.ymin ? TruncatedIndex((b.ymax - bottom) / s, lastRow - 1) + 1 : lastRow;
  if (range.c1 > lastCol) range.c1 = lastCol;
  if (range.r1 > lastRow) range.r1 = lastRow;
  range.touchesEdge = left <= b.xmin || top >= b.ymax || right >= b.xmax || bottom <= b.ymin;
  return true;
}

std::string HU_HYBGOpenMessage(const std::string& fileName) {
  return HU_HYBGFormat("Couldn't open HY binary grid file '%s' for read access.", fileName.c_str());
}

std::string HU_HYBGPointOutsideMessage(const std::string& fileName, double x, double y, const HU_HYBGBounds& b) {
  return HU_HYBGFormat(
      "Given longitude, latitude coordinates (%.4lf, %.4lf) are outside bounds of grid (in file '%s'). "
      "Bounds of grid are (%.4lf, %.4lf) to (%.4lf, %.4lf).",
      x, y, fileName.c_str(), b.xmin, b.ymin, b.xmax, b.ymax);
}

std::string HU_HYBGPointNoDataMessage(const std::string& fileName, double x, double y) {
  return HU_HYBGFormat("Grid file '%s' contains no data for given longitude, latitude coordinates (%.4lf, %.4lf).",
                       fileName.c_str(), x, y);
}

std::string HU_HYBGPolygonOutsideMessage(const std::string& fileName, const HU_HYBGBounds& b) {
  return HU_HYBGFormat(
      "Polygon is outside bounds of grid (in file '%s'). Bounds of grid are (%.4lf, %.4lf) to (%.4lf, %.4lf).",
      fileName.c_str(), b.xmin, b.ymin, b.xmax, b.ymax);
}

std::string HU_HYBGPolygonNullDataMessage(const std::string& fileName, bool entirely) {
  return HU_HYBGFormat(entirely ? "Polygon entirely covers a null-data area of the grid (in file '%s')."
                                : "Polygon partially covers a null-data area of the grid (in file '%s').",
                       fileName.c_str());
}
