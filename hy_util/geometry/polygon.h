#pragma once
// CHU_DPolygon: one closed ring (model boundaries, regions, clip areas). It is a
// CHU_DPolyLine whose last vertex joins back to the first; every operation here
// visits that closing edge. There are no holes: callers keep several polygons.
//
// A ring may store its first vertex again at the end ("first vertex doubled");
// the closing edge then has zero length and adds nothing to area or centroid.
// PolygonIsFirstVertexDoubled tests object identity of the first and last stored
// points, not their coordinates. Since the chain owns each point separately,
// copies made by the conversions below are never recognised as doubled; callers
// rely on this identity rule, so converting twice with an "IfNeeded" form adds a
// second closing vertex.
//
// The minimum-area rectangle is cached. Only AddPt (all three forms, and so the
// appending assignment) marks the cache invalid; SetAt, InsertAt, RemoveAt,
// RemoveAll and ReverseOrder keep the old rectangle, and callers that edit a
// polygon that way get the rectangle of the old ring.

#include <memory>
#include <vector>

#include "hy_util/geometry/point.h"
#include "hy_util/geometry/polyline.h"
#include "hy_util/platform/copyable_array.h"

enum VertexOrder { VO_CLOCKWISE = 0, VO_ANTICLOCKWISE = 1 };

class CHU_DPolygon;
// Polygons handed to a caller, who owns them.
using CHU_DPolygonArray = std::vector<std::unique_ptr<CHU_DPolygon>>;

class CHU_DPolygon : public CHU_DPolyLine {
  HU_DECLARE_DYNCREATE(CHU_DPolygon)

 public:
  CHU_DPolygon() = default;
  // Copies the ring (deep, with data value and item data); the rectangle cache
  // starts invalid.
  CHU_DPolygon(const CHU_DPolygon& other);
  ~CHU_DPolygon() override = default;
  // Appends, without emptying this polygon first: one AddPt(x, y, z) per source
  // vertex (only the coordinates travel), then copies the source's rectangle
  // cache. Assigning to a non-empty polygon concatenates the rings; call RemoveAll
  // first for a plain copy. Callers rely on this.
  CHU_DPolygon& operator=(const CHU_DPolygon& other);
  // Assignment from a plain chain replaces the ring (the chain's rule) and, not
  // being AddPt, keeps the rectangle cache.
  using CHU_DPolyLine::operator=;

  // Empties destination and appends a full copy of every source vertex; data value
  // and item data are not copied.
  static void CopyPolygon(const CHU_DPolygon& source, CHU_DPolygon& destination);

  bool IsClosed() const override { return true; }

  // Mark the rectangle cache invalid, then add as the chain does.
  void AddPt(const CHU_DPoint& p) override;
  void AddPt(double x, double y, double z) override;
  void AddPt(const CHU_DPoint& p, const CHU_DPoint& after, const CHU_DPoint& unused) override;

  // ---- Measures ----
  // Shoelace area, positive for anticlockwise rings (y up); 0.0 when empty. Area
  // and centroid are summed relative to the first vertex, so map coordinates keep
  // their precision.
  double GetSignedArea() const;
  double GetArea() const;
  // Perimeter: the stored edges plus the closing edge; 0.0 below two vertices.
  double GetLength() const override;
  // Area centroid (x and y of out only). A ring of exactly zero signed area
  // (one vertex, collinear vertices) gives the mean of its stored vertices.
  // False when empty or out is null.
  bool GetCentroid(CHU_DPoint* out) const;
  // Copy the vertex with the largest x (largest y, smallest x, smallest y) into out
  // by point assignment and return its index; the first one wins on ties. -1 with
  // out untouched for an empty polygon.
  int GetPt_MaxX(CHU_DPoint& out) const;
  int GetPt_MaxY(CHU_DPoint& out) const;
  int GetPt_MinX(CHU_DPoint& out) const;
  int GetPt_MinY(CHU_DPoint& out) const;

  // ---- Minimum-area enclosing rectangle (computed on first use, cached) ----
  // Corners c0..c3 run anticlockwise; c0 -> c1 lies along a hull edge. Vertices with
  // non-finite coordinates are left out. With no usable vertex the area is 0.0 and
  // the corners are null points.
  void CalcMinimumAreaRect();
  double GetMinimunAreaRectangleArea();
  // atan((c3.y - c0.y) / (c3.x - c0.x)) in radians; +-pi/2 for a vertical side and
  // NaN when c3 == c0 (a rectangle of zero width).
  double GetMinimunAreaRectangleAngleHorz();
  // atan((c1.y - c0.y) / (c1.x - c0.x)), as above.
  double GetMinimunAreaRectangleAngleVert();
  // Empties out and stores the four corners in it; false when out is null.
  bool GetMinimunAreaRectangle(CHU_DPolygon* out);

  // ---- Orientation ----
  // Reverses the ring when its orientation differs from order; a ring of zero
  // area counts as anticlockwise.
  void ReorderVertices(VertexOrder order);

  // ---- Predicates ----
  // Crossing-number test with a half-open rule: an edge counts when
  // min(a.y, b.y) < p.y <= max(a.y, b.y), p.x <= max(a.x, b.x), the edge is not
  // horizontal, and p lies on or left of it. So of an axis-aligned rectangle the
  // right and top edges are inside, the left and bottom edges outside. No
  // tolerance (use PtOnPoly for the boundary); false for an empty polygon.
  virtual bool PtInPoly(const CHU_DPoint& p) const;
  // PtOnPoly of the chain with the closing edge included; a one-vertex polygon
  // tests the distance to that vertex.
  bool PtOnPoly(const CHU_DPoint& p, double tol, CHU_DPoint* segStart,
                CHU_DPoint* segEnd) const override;
  // True when every vertex of other passes PtInPoly (edges are not tested); true
  // when other is empty.
  virtual bool PolyInPoly(const CHU_DPolygon& other) const;
  // Clips segment a-b to the ring. The end points that pass PtInPoly are held
  // first (a before b); then the points where a-b meets the edges, in edge order
  // with the closing edge last, until two are held (a point already held is not
  // taken again; a collinear overlap gives both of its ends). The first point
  // held goes to outA, the second to outB, by point assignment; an output with
  // no point is left untouched. Null outputs are skipped. Always true.
  virtual bool ClipLineToPoly(const CHU_DPoint& a, const CHU_DPoint& b, CHU_DPoint* outA,
                              CHU_DPoint* outB) const;
  // Intersection of this ring with clip (Boost.Geometry overlay). Each piece is
  // appended to pieces as a new anticlockwise polygon, first vertex not doubled,
  // z unset, carrying this polygon's data value and item data. Returns the number
  // of pieces (0 when the rings do not overlap or one has no area), or -1 when
  // pieces or clip is null, a ring holds a non-finite coordinate or crosses or
  // touches itself (a spike included); pieces is then unchanged.
  virtual int ClipToPolygon(CHU_DPolygonArray* pieces, const CHU_DPolygon* clip) const;

  // The chain's intersection searches with this ring's closing edge included.
  CHU_CopyableArray<CHU_DPoint> GetIntersectionsWithLine(
      const CHU_DPoint& a, const CHU_DPoint& b,
      CHU_CopyableArray<double>* params = nullptr) const override;
  CHU_CopyableArray<CHU_DPoint> GetIntersectionsWithPoly(
      const CHU_DPolyLine& other, CHU_CopyableArray<double>* params = nullptr) const override;

  // ---- First-vertex doubling (source unchanged, destination emptied first) ----
  // At least four vertices and the first and last stored points are one object.
  static bool PolygonIsFirstVertexDoubled(const CHU_DPolygon& polygon);
  // Copies of all source vertices, then one more copy of the first.
  static void PolygonConvertToFirstVertexDoubled(const CHU_DPolygon& source,
                                                 CHU_DPolygon& destination);
  // Copies of all source vertices but the last, whatever it is.
  static void PolygonConvertToNotFirstVertexDoubled(const CHU_DPolygon& source,
                                                    CHU_DPolygon& destination);
  // CopyPolygon when the source is doubled, else PolygonConvertToFirstVertexDoubled.
  static void PolygonConvertToFirstVertexDoubledIfNeeded(const CHU_DPolygon& source,
                                                         CHU_DPolygon& destination);
  // PolygonConvertToNotFirstVertexDoubled when the source is doubled, else CopyPolygon.
  static void PolygonConvertToNotFirstVertexDoubledIfNeeded(const CHU_DPolygon& source,
                                                            CHU_DPolygon& destination);

 private:
  void ShoelaceSums(double& twiceArea, double& sx, double& sy) const;
  int ExtremeVertex(bool (*better)(const CHU_DPoint&, const CHU_DPoint&), CHU_DPoint& out) const;
  static void CopyFirstVertices(const CHU_DPolygon& source, int count, bool doubleFirst,
                                CHU_DPolygon& destination);

  int m_minRectValid = 0;
  CHU_DPoint m_minRect[4];
  double m_minRectArea = 0.0;
};
