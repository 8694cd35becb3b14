#pragma once
// CHU_ScreenPoint: an integer device (pixel) position, the counterpart of a world
// CHU_DPoint on screen or paper. Device y grows downwards.

class CHU_ScreenPoint {
 public:
  int x = 0;
  int y = 0;

  CHU_ScreenPoint() = default;
  CHU_ScreenPoint(int px, int py) : x(px), y(py) {}
};
