#pragma once
// CHU_DPoint: a planar world point (x, y) with an optional elevation or attribute z
// and drawing attributes (colour, caller-owned item data, symbol index).
//
// Unset coordinates hold -99999.0 (C_NULL_VALL); the default point has all three
// coordinates unset. Copy construction copies every field, but assignment (and
// SetPt from a point) leaves the destination's packed colour value as it was while
// copying the colour components: callers rely on this difference, so it is kept.
// Item data is never freed by the point.

#include <cstdint>
#include <memory>
#include <vector>

#include "hy_util/geometry/colour.h"
#include "hy_util/geometry/screen_point.h"
#include "hy_util/platform/object.h"

class CHU_DPoint : public CHU_Object {
  HU_DECLARE_DYNCREATE(CHU_DPoint)

 public:
  static constexpr std::int32_t C_NULL_VALL = -99999;
  static constexpr std::int32_t C_NULL_COLOR = -1;

  double x = C_NULL_VALL;
  double y = C_NULL_VALL;
  double z = C_NULL_VALL;

  CHU_DPoint() = default;
  // The colour is a packed 0x00BBGGRR value, split as SetColor does.
  CHU_DPoint(double px, double py, double pz = C_NULL_VALL, std::uint32_t colour = 0);
  CHU_DPoint(const CHU_DPoint& other) = default;
  // Copies every field of *other; a null pointer gives the default point.
  explicit CHU_DPoint(const CHU_DPoint* other);
  // x and y from the device point, z unset, other fields default.
  explicit CHU_DPoint(const CHU_ScreenPoint& screen);
  ~CHU_DPoint() override = default;

  // Copies coordinates, colour components, item data and symbol; keeps this
  // point's packed colour value.
  CHU_DPoint& operator=(const CHU_DPoint& other);
  void SetPt(double px, double py, double pz);
  void SetPt(const CHU_DPoint& other) { *this = other; }

  // Component-wise arithmetic on x, y and z; the results carry default attributes.
  CHU_DPoint operator+(const CHU_DPoint& other) const;
  CHU_DPoint operator-(const CHU_DPoint& other) const;
  CHU_DPoint operator*(double factor) const;
  double Dot(const CHU_DPoint& other) const;
  CHU_DPoint Cross(const CHU_DPoint& other) const;
  // Scales (x, y, z) to unit length in place; a zero vector becomes NaN.
  void Normalize();

  // Exact equality of x, y and z.
  bool operator==(const CHU_DPoint& other) const;
  bool IsEqual(const CHU_DPoint* other) const;
  // |dx| <= tolerance and |dy| <= tolerance, and |dz| too unless twoD.
  bool IsEqual(const CHU_DPoint* other, double tolerance, bool twoD) const;
  // IsEqual with the fixed tolerance 1e-10.
  bool IsApproxEqual(const CHU_DPoint* other, bool twoD) const;
  bool IsApproxEqual(const CHU_DPoint& other, bool twoD) const;

  // The packed value rebuilt from the components (not the stored packed field).
  std::uint32_t GetColor() const { return m_colour.Rebuilt(); }
  void SetColor(std::uint32_t packedColour) { m_colour.SetPacked(packedColour); }
  std::uint8_t GetColorR() const { return static_cast<std::uint8_t>(m_colour.red); }
  std::uint8_t GetColorG() const { return static_cast<std::uint8_t>(m_colour.green); }
  std::uint8_t GetColorB() const { return static_cast<std::uint8_t>(m_colour.blue); }
  CHU_Colour* GetColour() { return &m_colour; }
  const CHU_Colour* GetColour() const { return &m_colour; }

  std::int16_t GetSymbol() const { return m_symbol; }
  void SetSymbol(std::int16_t symbol) { m_symbol = symbol; }
  void* GetItemData() const { return m_itemData; }
  void SetItemData(void* itemData) { m_itemData = itemData; }

 private:
  CHU_Colour m_colour;
  void* m_itemData = nullptr;
  std::int16_t m_symbol = -1;
};

// Points handed to a caller, who owns them.
using CHU_DPointArray = std::vector<std::unique_ptr<CHU_DPoint>>;
