#pragma once
// CHU_DPolyLine: the open vertex chain of the library (alignments, breaklines,
// boundary lines, polylines of exchange files); CHU_DPolygon derives from it and
// joins the last vertex back to the first.
//
// The chain owns its points: each vertex is a heap CHU_DPoint, created when it is
// added and freed when it is removed, when the chain is emptied or destroyed, so a
// pointer from GetAt(int) stays valid until that vertex is removed. Item data is
// owned by the caller. Lengths and distances are plan values (x and y); z and the
// point attributes travel with the vertices. Index arguments out of range are
// ignored (nothing changes) rather than trusted.
//
// Walks along the chain (GetAtPercent, GetPosAlongPolyline, GetCenter,
// GetConnectedVertices) visit the stored segments from the first vertex to the
// last; their targets come from the virtual GetLength, so on a polygon they scale
// with the perimeter while still walking only the stored segments.

#include <memory>
#include <vector>

#include "hy_util/geometry/point.h"
#include "hy_util/geometry/rect.h"
#include "hy_util/platform/copyable_array.h"
#include "hy_util/platform/object.h"

class CHU_DPolygon;

class CHU_DPolyLine : public CHU_Object {
  HU_DECLARE_DYNCREATE(CHU_DPolyLine)

 public:
  CHU_DPolyLine() = default;
  // Deep copies: new heap points, the same data value and item data.
  CHU_DPolyLine(const CHU_DPolyLine& other);
  explicit CHU_DPolyLine(const CHU_DPolyLine* other);
  ~CHU_DPolyLine() override;
  // Replaces the vertices by deep copies and copies data value and item data.
  virtual CHU_DPolyLine& operator=(const CHU_DPolyLine& other);

  // True for rings whose last vertex joins the first; CHU_DPolygon answers true.
  // The relations to other shapes use it to include the other shape's closing edge.
  virtual bool IsClosed() const { return false; }

  // ---- Vertex storage ----
  // Appends a heap copy of p (coordinates and every attribute).
  virtual void AddPt(const CHU_DPoint& p);
  // Appends a point with colour components 255, packed colour 0xFFFFFF, no item
  // data and symbol -1.
  virtual void AddPt(double x, double y, double z);
  // Inserts a copy of p directly after the first vertex equal to after in x, y and z
  // (exact); nothing happens when no vertex matches. unused is not read.
  virtual void AddPt(const CHU_DPoint& p, const CHU_DPoint& after, const CHU_DPoint& unused);
  // A copy of p gets index index (0..GetCount()).
  virtual void InsertAt(int index, const CHU_DPoint& p);
  // Frees the point at index and stores a copy of p there.
  virtual void SetAt(int index, const CHU_DPoint& p);
  virtual void RemoveAt(int index);
  virtual void RemoveAll();
  // Reverses the vertex order by swapping the owned pointers; no point is copied.
  virtual void ReverseOrder();

  int GetCount() const { return static_cast<int>(m_vertices.size()); }
  // The stored point, or null for an index out of range.
  CHU_DPoint* GetAt(int index) const {
    return index >= 0 && index < GetCount() ? m_vertices[static_cast<std::size_t>(index)].get()
                                            : nullptr;
  }
  // Copies the vertex into out by point assignment; false for an index out of range.
  bool GetAt(int index, CHU_DPoint& out) const;
  CHU_CopyableArray<CHU_DPoint> GetCopyOfVertices() const;

  // Capacity management. The chain never holds empty slots, so SetSize only drops
  // (frees) trailing vertices or reserves room; it never adds vertices.
  void InitialNumberOfPoints(int count);
  void SetSize(int count);
  void Grow(int extra);
  void Cleanup();

  virtual void SetItemData(void* itemData) { m_itemData = itemData; }
  virtual void* GetItemData() const { return m_itemData; }
  virtual void SetDataVal(double value) { m_dataVal = value; }
  virtual double GetDataVal() const { return m_dataVal; }

  // ---- Measures and positions ----
  // Sum of the plan lengths of the stored segments (a polygon adds its closing edge).
  virtual double GetLength() const;
  // Smallest rectangle holding every vertex (left, top = max y, right, bottom = min
  // y); false and untouched for an empty chain or a null rectangle.
  virtual bool GetExtent(CHU_DRect* rect) const;
  // The point at half of GetLength(), with the results of GetPosAlongPolyline.
  virtual int GetCenter(CHU_DPoint* out) const;
  // Point at a distance along the chain (not clamped). Results: i when the distance
  // equals the cumulative length at vertex i exactly (out gets that vertex's x, y);
  // i - 2 when it falls inside the segment ending at vertex i (out interpolated), so
  // any distance on the first segment, 0.0 included, returns -1 with out set; -1 with
  // out untouched beyond the end or for fewer than two vertices. Check out, not the
  // result, to learn whether a point was found.
  virtual int GetPosAlongPolyline(double distance, CHU_DPoint* out) const;
  // As above with the distance n * GetLength() (n is a multiple of the length, not a
  // percentage): only 0 and 1 address points on the chain.
  virtual int GetPosAlongPolyline(int n, CHU_DPoint* out) const;
  // Point at fraction p (clamped to [0, 1]) of GetLength(). Returns the index of the
  // start vertex of the segment holding it (out interpolated, z may be unset), or
  // the segment ending at an exactly hit vertex (out gets its x, y only); -1 when
  // not found or for fewer than two vertices.
  virtual int GetAtPercent(double p, CHU_DPoint* out) const;
  // As above with a percentage clamped to [0, 100].
  virtual int GetAtPercent(int percent, CHU_DPoint* out) const;
  // Distance along the chain to the place nearest p, measured at the first segment
  // within tol of p (the whole length when none is). -1.0 for an empty chain, 0.0
  // for one vertex. When p lies exactly on the line of that segment (equal slopes
  // from its start) the foot point stays the null point (-99999, -99999) and the
  // distance to it is added: such points do not measure correctly, and callers
  // rely on it staying so. A zero-length stopping segment gives the distance to its
  // start.
  virtual double GetLengthToPoint(CHU_DPoint p, double tol) const;
  // Start and end (x, y) of the segment holding a distance along the chain, and the
  // distance left over from its start. False for an empty chain, a distance beyond
  // GetLength() or fewer than two vertices.
  virtual bool GetConnectedVertices(double distance, CHU_DPoint* a, CHU_DPoint* b,
                                    double& remainder) const;
  // The segment search of this chain's PtOnPoly, with a and b as outputs.
  virtual bool GetConnectedVertices(const CHU_DPoint* p, CHU_DPoint* a, CHU_DPoint* b,
                                    double tol) const;

  // ---- Searches ----
  // True when p lies within tol (inclusive) of a segment; the first such segment
  // wins even when a later one is closer, and its end points are copied (point
  // assignment) into the non-null outputs. False for fewer than two vertices.
  virtual bool PtOnPoly(const CHU_DPoint& p, double tol, CHU_DPoint* segStart,
                        CHU_DPoint* segEnd) const;
  // Index of the first vertex equal to p in x, y and z, or within the square box
  // |dx| <= tol, |dy| <= tol; copied into out by point assignment. -1 when none.
  virtual int PtOnVertex(const CHU_DPoint& p, double tol, CHU_DPoint& out) const;
  virtual bool PtOnVertex(const CHU_DPoint& p, double tol) const;

  // ---- Relations to other shapes ----
  // Points where the segment a-b meets this chain (with its closing edge when
  // IsClosed()), in order along the chain;
  // collinear overlaps give both ends of the shared stretch. A point met by two
  // adjacent segments (at a vertex) is reported once. When params is not null it
  // receives, for each point, its chain parameter: segment index plus the fraction
  // along that segment (so vertex i has parameter i). Intersections use
  // HU_Math::GetIntersectionOfLines with its tolerances.
  virtual CHU_CopyableArray<CHU_DPoint> GetIntersectionsWithLine(
      const CHU_DPoint& a, const CHU_DPoint& b, CHU_CopyableArray<double>* params = nullptr) const;
  // Points where another chain (with its closing edge when other.IsClosed()) meets
  // this one (with this chain's closing edge when IsClosed()), in order along this
  // chain, with chain parameters as above. A chain of one vertex has no segments and
  // meets nothing.
  virtual CHU_CopyableArray<CHU_DPoint> GetIntersectionsWithPoly(
      const CHU_DPolyLine& other, CHU_CopyableArray<double>* params = nullptr) const;

  // Defined with the polygon predicates (polyline_relations.cpp). The chain's
  // segments (with the closing edge when IsClosed()) are cut where they meet the
  // polygon's boundary; each vertex and each part between cuts is judged with the
  // polygon's PtInPoly (a part by its midpoint). tol is an absolute distance to
  // the polygon's boundary, inclusive. An empty chain answers false to all four.
  // Inside: the polygon has vertices and every vertex and part is inside.
  virtual bool IsInsidePolygon(const CHU_DPolygon& polygon) const;
  // Some vertex or part is inside, or this is a ring that encloses the polygon's
  // first vertex.
  virtual bool IsPartiallyInsidePolygon(const CHU_DPolygon& polygon) const;
  // Some vertex or part is outside and farther than tol from the boundary.
  virtual bool IsPartiallyOutsidePolygon(const CHU_DPolygon& polygon, double tol) const;
  // No vertex is inside, no segment comes within tol of the boundary, and (for a
  // ring) the polygon's first vertex is not enclosed.
  virtual bool IsCompletelyOutsidePolygon(const CHU_DPolygon& polygon, double tol) const;
  // Some point of the chain lies in the rectangle (edges included), or this is a
  // ring that encloses the rectangle's centre. A rectangle with left > right or
  // bottom > top (the default one) is empty and gives false.
  virtual bool RectOnPoly(const CHU_DRect& rect) const;

 protected:
  // The intersection searches; closed adds this chain's closing edge (last vertex
  // back to the first), which is how CHU_DPolygon answers for its ring.
  virtual CHU_CopyableArray<CHU_DPoint> GetIntersectionsWithLine(
      const CHU_DPoint& a, const CHU_DPoint& b, bool closed, CHU_CopyableArray<double>* params) const;
  virtual CHU_CopyableArray<CHU_DPoint> GetIntersectionsWithPoly(
      const CHU_DPolyLine& other, bool closed, CHU_CopyableArray<double>* params) const;

  // Index of the vertex with the largest y, smallest y, smallest x, largest x (the
  // first on ties); -1 for an empty chain.
  int TopId() const;
  int BottomId() const;
  int MostLeftId() const;
  int MostRightId() const;

 private:
  // Walk of the stored segments to a target distance; see GetPosAlongPolyline.
  int WalkTo(double target, CHU_DPoint* out, int hitOffset, int insideOffset) const;
  int ExtremeId(bool (*better)(const CHU_DPoint&, const CHU_DPoint&)) const;

  std::vector<std::unique_ptr<CHU_DPoint>> m_vertices;
  double m_dataVal = 0.0;
  void* m_itemData = nullptr;
};

// Polylines handed to a caller, who owns them.
using CHU_DPolyLineArray = std::vector<std::unique_ptr<CHU_DPolyLine>>;
