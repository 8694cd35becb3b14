#pragma once
// CHU_DeviceContext: what the library needs to know of an output device (the
// screen or a printer): its logical pixels per inch, horizontally and vertically.
// A host that prints builds one from its printer's values.

#include "hy_util/platform/application.h"

class CHU_DeviceContext {
 public:
  CHU_DeviceContext(int pixelsPerInchX, int pixelsPerInchY)
      : pixelsPerInchX_(pixelsPerInchX), pixelsPerInchY_(pixelsPerInchY) {}

  // The screen, as the application reports it.
  static CHU_DeviceContext Screen() {
    int x = 0;
    int y = 0;
    HU_GetApplication().GetScreenResolution(x, y);
    return {x, y};
  }

  int GetPixelsPerInchX() const { return pixelsPerInchX_; }
  int GetPixelsPerInchY() const { return pixelsPerInchY_; }

 private:
  int pixelsPerInchX_;
  int pixelsPerInchY_;
};
