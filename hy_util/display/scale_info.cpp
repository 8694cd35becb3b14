#include "hy_util/display/scale_info.h"

#include "hy_util/display/pixel_math.h"

using HU_PixelMath::Div;
using HU_PixelMath::Trunc;

CHU_ScaleInfo::CHU_ScaleInfo() : CHU_ScaleInfo(CHU_DeviceContext::Screen()) {}

CHU_ScaleInfo::CHU_ScaleInfo(const CHU_DeviceContext& device)
    : m_pixelsPerMMX(device.GetPixelsPerInchX() / 25.4),
      m_pixelsPerMMY(device.GetPixelsPerInchY() / 25.4),
      m_resolutionX(device.GetPixelsPerInchX()),
      m_resolutionY(device.GetPixelsPerInchY()) {}

void CHU_ScaleInfo::SCtoMM(const CHU_ScreenPoint& device, CHU_DPoint& millimetres) const {
  millimetres.x = Div(device.x, m_pixelsPerMMX);
  millimetres.y = Div(device.y, m_pixelsPerMMY);
}

void CHU_ScaleInfo::MMtoSC(const CHU_DPoint& millimetres, CHU_ScreenPoint& device) const {
  device.x = Trunc(millimetres.x * m_pixelsPerMMX);
  device.y = Trunc(millimetres.y * m_pixelsPerMMY);
}

int CHU_ScaleInfo::MMtoSC(double millimetres) const {
  return Trunc(millimetres * MeanPixelsPerMM());
}

double CHU_ScaleInfo::SCtoMM(int pixels) const { return Div(pixels, MeanPixelsPerMM()); }

double CHU_ScaleInfo::SCtoPoints(int pixels) const {
  return Div(pixels * 72.0, MeanResolution());
}

int CHU_ScaleInfo::PointstoSC(float points) const {
  const float inches = points / 72.0f;  // single precision, as drawing code has always sized text
  return Trunc(inches * MeanResolution());
}
