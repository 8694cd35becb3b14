#pragma once
// CHU_ScaleInfo: pixel densities of one output device (the screen or a printer),
// for converting between device pixels and physical lengths in millimetres and
// typographic points (72 to the inch, 25.4 millimetres to the inch).
//
// Conversions to pixels truncate toward zero, never round. Lengths use the mean of
// the horizontal and vertical densities; points use the mean of the resolutions,
// with the division by 72 done in single precision. A device that reports a zero
// resolution converts everything to 0 instead of dividing by zero.

#include "hy_util/display/device_context.h"
#include "hy_util/geometry/point.h"
#include "hy_util/geometry/screen_point.h"

class CHU_ScaleInfo {
 public:
  // The screen's densities, from the application.
  CHU_ScaleInfo();
  // The given device's densities (a printer when printing).
  explicit CHU_ScaleInfo(const CHU_DeviceContext& device);

  CHU_ScaleInfo(const CHU_ScaleInfo&) = default;
  CHU_ScaleInfo& operator=(const CHU_ScaleInfo&) = default;

  double GetPixelsPerMMX() const { return m_pixelsPerMMX; }
  double GetPixelsPerMMY() const { return m_pixelsPerMMY; }
  double GetResolutionX() const { return m_resolutionX; }
  double GetResolutionY() const { return m_resolutionY; }

  // Each axis with its own density.
  void SCtoMM(const CHU_ScreenPoint& device, CHU_DPoint& millimetres) const;
  void MMtoSC(const CHU_DPoint& millimetres, CHU_ScreenPoint& device) const;

  // Lengths, with the mean density of the two axes.
  int MMtoSC(double millimetres) const;
  double SCtoMM(int pixels) const;
  double SCtoPoints(int pixels) const;
  int PointstoSC(float points) const;

 private:
  double MeanPixelsPerMM() const { return (m_pixelsPerMMX + m_pixelsPerMMY) * 0.5; }
  double MeanResolution() const { return (m_resolutionX + m_resolutionY) * 0.5; }

  double m_pixelsPerMMX;
  double m_pixelsPerMMY;
  double m_resolutionX;
  double m_resolutionY;
};
