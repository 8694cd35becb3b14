#pragma once
// CHU_Colour: the drawing colour carried by a point. The four components are kept
// alongside the packed value 0x00BBGGRR (red in the low byte) because callers read
// both, and point assignment deliberately updates the components but not the
// packed value (see CHU_DPoint).

#include <cstdint>

class CHU_Colour {
 public:
  std::int32_t red = 0;
  std::int32_t green = 0;
  std::int32_t blue = 0;
  std::int32_t alpha = 255;
  std::uint32_t packed = 0;  // 0x00BBGGRR

  CHU_Colour() = default;
  // Splits a packed value as SetPacked does.
  explicit CHU_Colour(std::uint32_t packedColour) { SetPacked(packedColour); }

  // Takes red, green and blue from the low three bytes, sets alpha to 255 and stores
  // the packed value rebuilt from them, so the argument's high byte is dropped.
  void SetPacked(std::uint32_t packedColour) {
    red = static_cast<std::int32_t>(packedColour & 0xFFu);
    green = static_cast<std::int32_t>((packedColour >> 8) & 0xFFu);
    blue = static_cast<std::int32_t>((packedColour >> 16) & 0xFFu);
    alpha = 255;
    packed = Rebuilt();
  }

  // The packed value made from the components (red | green << 8 | blue << 16).
  std::uint32_t Rebuilt() const {
    return (static_cast<std::uint32_t>(red) & 0xFFu) |
           ((static_cast<std::uint32_t>(green) & 0xFFu) << 8) |
           ((static_cast<std::uint32_t>(blue) & 0xFFu) << 16);
  }
};
