// CHU_DPolygon::ClipToPolygon: the overlay is Boost.Geometry's polygon
// intersection; this file only converts rings in and pieces out.

// Boost.Geometry 1.74's rescaling policy trips GCC's flow analysis inside its
// own headers once inlined here; the values are set before use.
#if defined(__GNUC__) && !defined(__clang__)
#pragma GCC diagnostic ignored "-Wmaybe-uninitialized"
#endif
#include <boost/geometry.hpp>
#include <boost/geometry/geometries/multi_polygon.hpp>
#include <boost/geometry/geometries/point_xy.hpp>
#include <boost/geometry/geometries/polygon.hpp>
#include <cmath>
#include <exception>

#include "hy_util/geometry/polygon.h"


namespace bg = boost::geometry;

namespace {

using BPoint = bg::model::d2::point_xy<double>;
// Anticlockwise, open rings: the library's own convention for the pieces.
using BPolygon = bg::model::polygon<BPoint, false, false>;
using BMultiPolygon = bg::model::multi_polygon<BPolygon>;

enum class RingState { Ok, NoArea, Invalid };

// The ring as a Boost polygon without repeated consecutive points or a doubled
// first vertex, oriented as the type requires.
RingState ToBoost(const CHU_DPolygon& polygon, BPolygon& out) {
  auto& ring = out.outer();
  for (int i = 0; i < polygon.GetCount(); ++i) {
    const CHU_DPoint* p = polygon.GetAt(i);
    if (!std::isfinite(p->x) || !std::isfinite(p->y)) return RingState::Invalid;
    if (!ring.empty() && ring.back().x() == p->x && ring.back().y() == p->y) continue;
    ring.push_back(BPoint(p->x, p->y));
  }
  while (ring.size() > 1 && ring.back().x() == ring.front().x() && ring.back().y() == ring.front().y()) {
    ring.pop_back();
  }
  if (ring.size() < 3) return RingState::NoArea;
  bg::correct(out);
  if (bg::is_valid(out)) return RingState::Ok;
  // Collinear rings are invalid but harmless; rings that cross or touch
  // themselves cannot be overlaid reliably.
  return bg::area(out) == 0.0 && !bg::intersects(out) ? RingState::NoArea : RingState::Invalid;
}

}  // namespace

int CHU_DPolygon::ClipToPolygon(CHU_DPolygonArray* pieces, const CHU_DPolygon* clip) const {
  if (pieces == nullptr || clip == nullptr) return -1;
  BPolygon subject;
  BPolygon mask;
  const RingState subjectState = ToBoost(*this, subject);
  const RingState maskState = ToBoost(*clip, mask);
  if (subjectState == RingState::Invalid || maskState == RingState::Invalid) return -1;
  if (subjectState == RingState::NoArea || maskState == RingState::NoArea) return 0;

  BMultiPolygon result;
  try {
    bg::intersection(subject, mask, result);
  } catch (const std::exception&) {
    return -1;
  }
  // The intersection of two rings without holes has no holes, so only the outer
  // rings are taken.
  for (const BPolygon& part : result) {
    auto piece = std::make_unique<CHU_DPolygon>();
    for (const BPoint& p : part.outer()) piece->AddPt(CHU_DPoint(p.x(), p.y()));
    piece->SetDataVal(GetDataVal());
    piece->SetItemData(GetItemData());
    pieces->push_back(std::move(piece));
  }
  return static_cast<int>(result.size());
}
