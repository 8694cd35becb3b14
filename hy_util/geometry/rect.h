#pragma once
// CHU_DRect: an axis-aligned world rectangle, y pointing up (top is the larger y).
// Edges and corners count as inside.
//
// Values are stored as given: only SetRect(point, point) and Normalise() order
// them. The default rectangle (left 1, top 0, right 0, bottom 1) is inverted and
// empty; UnionRect does not skip it, so extents are accumulated starting from the
// first real rectangle or point.

#include "hy_util/geometry/point.h"
#include "hy_util/platform/object.h"

class CHU_DPolyLine;

class CHU_DRect : public CHU_Object {
  HU_DECLARE_DYNCREATE(CHU_DRect)

 public:
  CHU_DRect() = default;
  CHU_DRect(double left, double top, double right, double bottom)
      : m_left(left), m_top(top), m_right(right), m_bottom(bottom) {}
  CHU_DRect(const CHU_DRect& other) = default;
  // A null pointer gives the default rectangle.
  explicit CHU_DRect(const CHU_DRect* other);
  // left = first.x, top = first.y, right = second.x, bottom = second.y, unordered.
  CHU_DRect(const CHU_DPoint& first, const CHU_DPoint& second);
  ~CHU_DRect() override = default;
  CHU_DRect& operator=(const CHU_DRect& other) = default;

  double Left() const { return m_left; }
  double Top() const { return m_top; }
  double Right() const { return m_right; }
  double Bottom() const { return m_bottom; }
  double Width() const;
  double Height() const;
  // Midpoint of the stored values, z unset.
  CHU_DPoint CenterPoint() const;

  void SetRect(double left, double top, double right, double bottom);
  void SetRect(const CHU_DRect& other) { *this = other; }
  // Normalised rectangle spanning a and b. On equal x, left takes b.x and right a.x;
  // on equal y, top takes a.y and bottom b.y.
  void SetRect(const CHU_DPoint& a, const CHU_DPoint& b);
  void Normalise();

  void OffsetRect(double dx, double dy);
  // Grows a normalised rectangle outward by dx on each side and dy above and below.
  void InflateRect(double dx, double dy);

  // Field-wise union in place (min left, max top, max right, min bottom); neither
  // normalises nor ignores an empty operand.
  void UnionRect(const CHU_DRect& other);
  CHU_DRect& operator+(const CHU_DRect& other);
  // When the rectangles overlap or touch, becomes the overlap and returns true;
  // otherwise false and unchanged.
  bool IntersectRect(const CHU_DRect& other);
  // Separation code, 0 when the rectangles overlap or touch: 1 this lies wholly right
  // of other, 2 wholly left, 4 wholly below, 8 wholly above (bits combine).
  int InsideRect(const CHU_DRect& other) const;

  bool PtInRect(const CHU_DPoint& p) const;
  bool PtInRect(const CHU_DPoint* p) const;
  // True when any vertex lies in the rectangle; edges crossing it are not tested.
  bool PolyInRect(const CHU_DPolyLine* poly) const;

 private:
  double m_left = 1.0;
  double m_top = 0.0;
  double m_right = 0.0;
  double m_bottom = 1.0;
};
