#include "hy_util/geometry/min_area_rect.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace HU_LIB {
namespace {

double Cross(const HU_PlanePt& o, const HU_PlanePt& a, const HU_PlanePt& b) {
  return (a.x - o.x) * (b.y - o.y) - (a.y - o.y) * (b.x - o.x);
}

// Projections of hull points onto the frame of one hull edge: origin at the
// edge start, u along the edge, v to its left (towards the hull's inside).
struct EdgeFrame {
  HU_PlanePt origin;
  double ux;
  double uy;

  double U(const HU_PlanePt& p) const { return (p.x - origin.x) * ux + (p.y - origin.y) * uy; }
  double V(const HU_PlanePt& p) const { return (p.y - origin.y) * ux - (p.x - origin.x) * uy; }
  HU_PlanePt At(double u, double v) const {
    return {origin.x + u * ux - v * uy, origin.y + u * uy + v * ux};
  }
};

}  // namespace

std::vector<HU_PlanePt> HU_MinAreaRect::ConvexHull(std::vector<HU_PlanePt> points) {
  std::erase_if(points, [](const HU_PlanePt& p) { return !std::isfinite(p.x) || !std::isfinite(p.y); });
  std::sort(points.begin(), points.end(),
            [](const HU_PlanePt& a, const HU_PlanePt& b) { return a.x < b.x || (a.x == b.x && a.y < b.y); });
  points.erase(std::unique(points.begin(), points.end(),
                           [](const HU_PlanePt& a, const HU_PlanePt& b) { return a.x == b.x && a.y == b.y; }),
               points.end());
  const std::size_t n = points.size();
  if (n < 3) return points;

  std::vector<HU_PlanePt> hull(2 * n);
  std::size_t k = 0;
  for (std::size_t i = 0; i < n; ++i) {  // lower hull, left to right
    while (k >= 2 && Cross(hull[k - 2], hull[k - 1], points[i]) <= 0.0) --k;
    hull[k++] = points[i];
  }
  for (std::size_t i = n - 1, lower = k + 1; i-- > 0;) {  // upper hull, right to left
    while (k >= lower && Cross(hull[k - 2], hull[k - 1], points[i]) <= 0.0) --k;
    hull[k++] = points[i];
  }
  hull.resize(k - 1);  // the last point repeats the first
  return hull;
}

HU_RectCorners HU_MinAreaRect::Compute(std::vector<HU_PlanePt> points) {
  return FromHull(ConvexHull(std::move(points)));
}

HU_RectCorners HU_MinAreaRect::FromHull(const std::vector<HU_PlanePt>& hull) {
  HU_RectCorners best{};
  const std::size_t h = hull.size();
  best.count = static_cast<int>(h);
  if (h == 0) return best;
  if (h < 3) {
    const HU_PlanePt& a = hull.front();
    const HU_PlanePt& b = hull.back();
    best.corner[0] = a;
    best.corner[1] = b;
    best.corner[2] = b;
    best.corner[3] = a;
    best.area = 0.0;
    return best;
  }

  best.area = std::numeric_limits<double>::infinity();
  auto next = [h](std::size_t i) { return (i + 1) % h; };
  std::size_t right = 1, top = 1, left = 1;
  for (std::size_t i = 0; i < h; ++i) {
    const HU_PlanePt& a = hull[i];
    const HU_PlanePt& b = hull[next(i)];
    const double len = std::hypot(b.x - a.x, b.y - a.y);
    const EdgeFrame f{a, (b.x - a.x) / len, (b.y - a.y) / len};

    // Each caliper moves forward while the next hull vertex is further out;
    // the strict tests stop on ties, so each loop ends within h steps.
    if (i == 0) right = next(i);
    while (f.U(hull[next(right)]) > f.U(hull[right])) right = next(right);
    if (i == 0) top = right;
    while (f.V(hull[next(top)]) > f.V(hull[top])) top = next(top);
    if (i == 0) left = top;
    while (f.U(hull[next(left)]) < f.U(hull[left])) left = next(left);

    const double minU = f.U(hull[left]);
    const double maxU = f.U(hull[right]);
    const double height = f.V(hull[top]);
    const double area = (maxU - minU) * height;
    if (area < best.area) {
      best.area = area;
      best.corner[0] = f.At(minU, 0.0);
      best.corner[1] = f.At(maxU, 0.0);
      best.corner[2] = f.At(maxU, height);
      best.corner[3] = f.At(minU, height);
    }
  }
  return best;
}

}  // namespace HU_LIB
