#include "hy_util/display/transformation_matrix.h"

#include <cstddef>
#include <new>

#include "hy_util/display/pixel_math.h"
#include "hy_util/units/units_setting.h"

using HU_PixelMath::Div;
using HU_PixelMath::Trunc;

namespace {

constexpr int kFeet = 1;
constexpr double kMMPerFoot = 12 * 25.4;
constexpr double kUnsetZ = CHU_DPoint::C_NULL_VALL;

}  // namespace

CHU_TransformationMatrix::CHU_TransformationMatrix()
    : m_display(std::make_unique<CHU_ScaleInfo>()),
      m_view(m_display.get()),
      m_current(m_display.get()),
      m_projectUnits(HU_GetUnitsSetting()) {}

CHU_TransformationMatrix::CHU_TransformationMatrix(const CHU_TransformationMatrix& other)
    : m_display(std::make_unique<CHU_ScaleInfo>()), m_view(m_display.get()) {
  CopyFrom(other);
}

CHU_TransformationMatrix& CHU_TransformationMatrix::operator=(const CHU_TransformationMatrix& other) {
  if (this != &other) CopyFrom(other);
  return *this;
}

CHU_TransformationMatrix::~CHU_TransformationMatrix() = default;

void CHU_TransformationMatrix::CopyFrom(const CHU_TransformationMatrix& other) {
  m_currentOriginX = other.m_currentOriginX;
  m_currentOriginY = other.m_currentOriginY;
  m_displayOriginX = other.m_displayOriginX;
  m_displayOriginY = other.m_displayOriginY;
  m_worldOriginX = other.m_worldOriginX;
  m_worldOriginY = other.m_worldOriginY;
  m_projectUnits = other.m_projectUnits;
  m_scaleX = other.m_scaleX;
  m_scaleY = other.m_scaleY;
  *m_display = *other.m_display;
  if (other.m_printer) {
    m_printer = std::make_unique<CHU_ScaleInfo>(*other.m_printer);
    m_current = m_printer.get();
  } else {
    m_current = m_display.get();
  }
}

double CHU_TransformationMatrix::K(const CHU_ScaleInfo& densities, bool horizontal) const {
  if (m_projectUnits == kFeet) {
    return (horizontal ? densities.GetResolutionX() : densities.GetResolutionY()) * 12.0;
  }
  return (horizontal ? densities.GetPixelsPerMMX() : densities.GetPixelsPerMMY()) * 1000.0;
}

void CHU_TransformationMatrix::D2W2V(const CHU_DPoint& world, CHU_ScreenPoint& device) const {
  if (!m_current) return;
  device.x = HU_PixelMath::Add(m_currentOriginX,
                               Div(world.x - m_worldOriginX, m_scaleX) * K(*m_current, true));
  device.y = HU_PixelMath::Sub(m_currentOriginY,
                               Div(world.y - m_worldOriginY, m_scaleY) * K(*m_current, false));
}

void CHU_TransformationMatrix::D2W2V(const CHU_DPoint* world, CHU_ScreenPoint* device) const {
  if (world && device) D2W2V(*world, *device);
}

void CHU_TransformationMatrix::D2W2V(const CHU_DRect& world, CHU_ScreenRect& device) const {
  if (!m_current) return;
  CHU_ScreenPoint topLeft, bottomRight;
  D2W2V(CHU_DPoint(world.Left(), world.Top()), topLeft);
  D2W2V(CHU_DPoint(world.Right(), world.Bottom()), bottomRight);
  device = CHU_ScreenRect(topLeft.x, topLeft.y, bottomRight.x, bottomRight.y);
}

void CHU_TransformationMatrix::D2W2VLength(const CHU_DPoint& length, CHU_ScreenPoint& pixels) const {
  if (!m_current) return;
  pixels.x = Trunc(K(*m_current, true) * Div(length.x, m_scaleX));
  pixels.y = Trunc(K(*m_current, false) * Div(length.y, m_scaleY));
}

int CHU_TransformationMatrix::D2W2VLengthX(double length) const {
  if (!m_current) return 0;
  return Trunc(Div(length, m_scaleX) * K(*m_current, true));
}

void CHU_TransformationMatrix::DeviceToWorld(const CHU_ScaleInfo& densities, int originX,
                                             int originY, double deviceX, double deviceY,
                                             double& worldX, double& worldY) const {
  worldX = Div(deviceX - originX, K(densities, true)) * m_scaleX + m_worldOriginX;
  worldY = m_worldOriginY - Div(deviceY - originY, K(densities, false)) * m_scaleY;
}

void CHU_TransformationMatrix::D2V2W(const CHU_ScreenPoint& device, CHU_DPoint& world) const {
  DeviceToWorld(*m_view, m_displayOriginX, m_displayOriginY, device.x, device.y, world.x, world.y);
  world.z = kUnsetZ;
}

void CHU_TransformationMatrix::D2V2W(const CHU_ScreenPoint* device, CHU_DPoint* world) const {
  if (device && world) D2V2W(*device, *world);
}

void CHU_TransformationMatrix::D2V2W(const CHU_ScreenRect& device, CHU_DRect& world) const {
  double left, top, right, bottom;
  DeviceToWorld(*m_view, m_displayOriginX, m_displayOriginY, device.left, device.top, left, top);
  DeviceToWorld(*m_view, m_displayOriginX, m_displayOriginY, device.right, device.bottom, right,
                bottom);
  world.SetRect(left, top, right, bottom);
}

void CHU_TransformationMatrix::D2V2W(const CHU_ScreenRect* device, CHU_DRect* world) const {
  if (device && world) D2V2W(*device, *world);
}

void CHU_TransformationMatrix::D2V2WLength(const CHU_ScreenPoint& pixels, CHU_DPoint& length) const {
  length.x = Div(pixels.x, K(*m_view, true)) * m_scaleX;
  length.y = Div(pixels.y, K(*m_view, false)) * m_scaleY;
}

double CHU_TransformationMatrix::D2V2WLengthX(int pixels) const {
  return Div(pixels, K(*m_view, true)) * m_scaleX;
}

void CHU_TransformationMatrix::D2P2W(const CHU_ScreenRect& device, CHU_DRect& world) const {
  if (!m_printer) return;
  double left, top, right, bottom;
  DeviceToWorld(*m_printer, m_printerOriginX, m_printerOriginY, device.left, device.top, left, top);
  DeviceToWorld(*m_printer, m_printerOriginX, m_printerOriginY, device.right, device.bottom, right,
                bottom);
  world.SetRect(left, top, right, bottom);
}

void CHU_TransformationMatrix::D2P2WLength(const CHU_ScreenPoint& pixels, CHU_DPoint& length) const {
  if (!m_printer) return;
  length.x = Div(pixels.x, K(*m_printer, true)) * m_scaleX;
  length.y = Div(pixels.y, K(*m_printer, false)) * m_scaleY;
}

int CHU_TransformationMatrix::MMtoSC(double millimetres) const {
  return m_current ? m_current->MMtoSC(millimetres) : 0;
}

double CHU_TransformationMatrix::SCtoMM(int pixels) const {
  return m_current ? m_current->SCtoMM(pixels) : 0.0;
}

void CHU_TransformationMatrix::MMtoSC(const CHU_DPoint* millimetres, CHU_ScreenPoint* device) const {
  if (m_current && millimetres && device) m_current->MMtoSC(*millimetres, *device);
}

void CHU_TransformationMatrix::MMtoSC(const CHU_DRect* millimetres, CHU_ScreenRect* device) const {
  if (!m_current || !millimetres || !device) return;
  device->left = Trunc(millimetres->Left() * m_current->GetPixelsPerMMX());
  device->right = Trunc(millimetres->Right() * m_current->GetPixelsPerMMX());
  device->top = Trunc(millimetres->Top() * m_current->GetPixelsPerMMY());
  device->bottom = Trunc(millimetres->Bottom() * m_current->GetPixelsPerMMY());
}

void CHU_TransformationMatrix::SCtoMM(const CHU_ScreenPoint* device, CHU_DPoint* millimetres) const {
  if (m_current && device && millimetres) m_current->SCtoMM(*device, *millimetres);
}

int CHU_TransformationMatrix::PointstoSC(float points) const {
  return m_current ? m_current->PointstoSC(points) : 0;
}

double CHU_TransformationMatrix::SCtoPoints(int pixels) const {
  return m_current ? m_current->SCtoPoints(pixels) : 0.0;
}

double CHU_TransformationMatrix::WCtoMM(double world) const {
  const double paper = Div(world, m_scaleX);
  return m_projectUnits == kFeet ? paper * 12.0 * 25.4 : paper * 1000.0;
}

double CHU_TransformationMatrix::MMtoWC(double millimetres) const {
  return m_projectUnits == kFeet ? m_scaleX * (millimetres / kMMPerFoot)
                                 : m_scaleX * (millimetres / 1000.0);
}

double CHU_TransformationMatrix::WCtoPoints(double world) const {
  const double paper = Div(world, m_scaleX);
  return m_projectUnits == kFeet ? paper * 12.0 * 72.0 : paper * 1000.0 * 72.0 / 25.4;
}

void CHU_TransformationMatrix::put_Scale(double scale) {
  m_scaleX = scale;
  m_scaleY = scale;
}

void CHU_TransformationMatrix::V2WMapping(int pixels, double worldLength) {
  const double paper = Div(pixels, K(*m_display, true));
  if (paper == 0.0) return;
  put_Scale(worldLength / paper);
}

void CHU_TransformationMatrix::V2WMapping(int pixelsX, int pixelsY, double worldX, double worldY) {
  // Both axes use the horizontal density: drawing code sized its views this way.
  const double k = K(*m_display, true);
  const double paperX = Div(pixelsX, k);
  const double paperY = Div(pixelsY, k);
  if (paperX != 0.0) m_scaleX = worldX / paperX;
  if (paperY != 0.0) m_scaleY = worldY / paperY;
}

void CHU_TransformationMatrix::SetWorldOrigin(double x, double y) {
  m_worldOriginX = x;
  m_worldOriginY = y;
}

void CHU_TransformationMatrix::TranslateWorldOrigin(double dx, double dy) {
  m_worldOriginX += dx;
  m_worldOriginY += dy;
}

void CHU_TransformationMatrix::GetWorldOrigin(double* x, double* y) const {
  if (x) *x = m_worldOriginX;
  if (y) *y = m_worldOriginY;
}

void CHU_TransformationMatrix::SetDisplayOrigin(int x, int y) {
  m_displayOriginX = x;
  m_displayOriginY = y;
  if (!m_printer) {
    m_currentOriginX = x;
    m_currentOriginY = y;
  }
}

void CHU_TransformationMatrix::SetPrinterOrigin(int x, int y) {
  m_printerOriginX = x;
  m_printerOriginY = y;
  if (m_printer) {
    m_currentOriginX = x;
    m_currentOriginY = y;
  }
}

void CHU_TransformationMatrix::GetDisplayOrigin(int* x, int* y) const {
  if (x) *x = m_displayOriginX;
  if (y) *y = m_displayOriginY;
}

void CHU_TransformationMatrix::GetPrinterOrigin(int* x, int* y) const {
  if (x) *x = m_printerOriginX;
  if (y) *y = m_printerOriginY;
}

void CHU_TransformationMatrix::SetPrinterScaleInfo(const CHU_DeviceContext* printer) {
  m_printer.reset();
  if (printer) {
    // Without memory the printer and current densities stay null; the conversions
    // that need them then answer 0 and leave their outputs alone.
    m_printer.reset(new (std::nothrow) CHU_ScaleInfo(*printer));
    m_current = m_printer.get();
    m_currentOriginX = m_printerOriginX;
    m_currentOriginY = m_printerOriginY;
  } else {
    m_current = m_display.get();
    m_currentOriginX = m_displayOriginX;
    m_currentOriginY = m_displayOriginY;
  }
}

void CHU_TransformationMatrix::Identity() {
  m_scaleX = 1.0;
  m_scaleY = 1.0;
  m_displayOriginX = m_displayOriginY = 0;
  m_printerOriginX = m_printerOriginY = 0;
  m_worldOriginX = m_worldOriginY = 0.0;
}

void CHU_TransformationMatrix::PushMatrix(bool reset) {
  if (m_savedCount >= kMaxSavedStates) return;
  auto saved = std::make_unique<CHU_TransformationMatrix>();
  *saved = *this;
  m_saved[static_cast<std::size_t>(m_savedCount++)] = std::move(saved);
  if (reset) Identity();
}

bool CHU_TransformationMatrix::PopMatrix() {
  if (m_savedCount == 0) return true;
  std::unique_ptr<CHU_TransformationMatrix>& saved = m_saved[static_cast<std::size_t>(--m_savedCount)];
  *this = *saved;
  saved.reset();
  return m_savedCount == 0;
}
