#pragma once
// CHU_ScreenRect: an integer device (pixel) rectangle, the counterpart of a world
// CHU_DRect on screen or paper. Device y grows downwards, so top is normally the
// smaller value; the fields are stored as given and never reordered.

class CHU_ScreenRect {
 public:
  int left = 0;
  int top = 0;
  int right = 0;
  int bottom = 0;

  CHU_ScreenRect() = default;
  CHU_ScreenRect(int l, int t, int r, int b) : left(l), top(t), right(r), bottom(b) {}

  int Width() const { return right - left; }
  int Height() const { return bottom - top; }
};
