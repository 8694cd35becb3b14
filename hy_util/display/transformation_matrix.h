#pragma once
// CHU_TransformationMatrix: the mapping of a map view between world coordinates
// (plan coordinates in metres or feet, y up) and device pixels (screen or printer,
// y down), and the conversions between world lengths, millimetres on paper,
// typographic points and pixels.
//
// The drawing scale is world length per paper length (500: 1 m on paper is 500 m
// in the world). The world origin is drawn at the device origin. Pixels per world
// unit on paper, k, are the axis's pixels per inch x 12 for feet (project units 1)
// and its pixels per millimetre x 1000 for metres (any other value; the constructor
// takes the host's "Units", and a host that never set it gets metres).
//
// Densities: the display densities come from the screen; printer densities exist
// only between SetPrinterScaleInfo(device) and SetPrinterScaleInfo(nullptr). While
// they exist, world-to-device and paper conversions use them and the printer origin
// (the "current" densities and origin); device-to-world conversions (D2V2W...)
// always use the display. Pixel results are truncated toward zero.
//
// Degenerate states are safe: a zero scale or density makes a conversion give 0
// instead of dividing by zero, pixel values saturate at the int limits (NaN gives
// 0), conversions that need densities that do not exist (printer conversions
// without a printer) leave their output untouched and return 0, a push beyond
// five saved states is ignored and a pop with none saved changes nothing. Null out
// pointers are ignored.
//
// Kept on purpose: the y scale of V2WMapping(px, py, wx, wy) uses the horizontal
// density; copies and assignments copy the densities and origins listed at their
// declarations only.

#include <array>
#include <memory>

#include "hy_util/display/device_context.h"
#include "hy_util/display/scale_info.h"
#include "hy_util/geometry/point.h"
#include "hy_util/geometry/rect.h"
#include "hy_util/geometry/screen_point.h"
#include "hy_util/geometry/screen_rect.h"

class CHU_TransformationMatrix {
 public:
  static constexpr int kMaxSavedStates = 5;

  CHU_TransformationMatrix();
  // Copies current and display origins, world origin, project units, scales and the
  // display density values; printer densities become a copy of the source's (and
  // current) when it has them. The printer origin and saved states are not copied.
  CHU_TransformationMatrix(const CHU_TransformationMatrix& other);
  // Copies what copy construction copies. When the source has no printer densities
  // the display densities become current and this matrix's printer densities, if
  // any, are kept.
  CHU_TransformationMatrix& operator=(const CHU_TransformationMatrix& other);
  ~CHU_TransformationMatrix();

  // World to device: current densities and current origin.
  void D2W2V(const CHU_DPoint& world, CHU_ScreenPoint& device) const;
  void D2W2V(const CHU_DPoint* world, CHU_ScreenPoint* device) const;
  // Each field on its own axis; no normalisation.
  void D2W2V(const CHU_DRect& world, CHU_ScreenRect& device) const;
  // A length vector: no origins, no y flip.
  void D2W2VLength(const CHU_DPoint& length, CHU_ScreenPoint& pixels) const;
  int D2W2VLengthX(double length) const;

  // Device to world on the display (display densities and display origin); z
  // becomes the unset value -99999, other point fields are untouched.
  void D2V2W(const CHU_ScreenPoint& device, CHU_DPoint& world) const;
  void D2V2W(const CHU_ScreenPoint* device, CHU_DPoint* world) const;
  void D2V2W(const CHU_ScreenRect& device, CHU_DRect& world) const;
  void D2V2W(const CHU_ScreenRect* device, CHU_DRect* world) const;
  void D2V2WLength(const CHU_ScreenPoint& pixels, CHU_DPoint& length) const;
  double D2V2WLengthX(int pixels) const;

  // Device to world on the printer (printer densities and printer origin).
  void D2P2W(const CHU_ScreenRect& device, CHU_DRect& world) const;
  void D2P2WLength(const CHU_ScreenPoint& pixels, CHU_DPoint& length) const;

  // Paper and type units with the current densities.
  int MMtoSC(double millimetres) const;
  double SCtoMM(int pixels) const;
  void MMtoSC(const CHU_DPoint* millimetres, CHU_ScreenPoint* device) const;
  void MMtoSC(const CHU_DRect* millimetres, CHU_ScreenRect* device) const;
  void SCtoMM(const CHU_ScreenPoint* device, CHU_DPoint* millimetres) const;
  int PointstoSC(float points) const;
  double SCtoPoints(int pixels) const;

  // World lengths on paper, by scale x and project units only.
  double WCtoMM(double world) const;
  double MMtoWC(double millimetres) const;
  double WCtoPoints(double world) const;

  // Both scales at once; get_Scale answers the x scale.
  void put_Scale(double scale);
  double get_Scale() const { return m_scaleX; }
  // Scale so that that many display pixels span that world length. A zero pixel
  // count or density leaves the scale as it was.
  void V2WMapping(int pixels, double worldLength);
  void V2WMapping(int pixelsX, int pixelsY, double worldX, double worldY);

  void SetWorldOrigin(double x, double y);
  void TranslateWorldOrigin(double dx, double dy);
  void GetWorldOrigin(double* x, double* y) const;
  // The current origin follows the display origin while there are no printer
  // densities and the printer origin while there are.
  void SetDisplayOrigin(int x, int y);
  void SetPrinterOrigin(int x, int y);
  void GetDisplayOrigin(int* x, int* y) const;
  void GetPrinterOrigin(int* x, int* y) const;

  // A device makes new printer densities current (with the printer origin); null
  // frees them and makes the display current again.
  void SetPrinterScaleInfo(const CHU_DeviceContext* printer);
  bool HasPrinterScaleInfo() const { return m_printer != nullptr; }

  int get_ProjectUnits() const { return m_projectUnits; }
  void put_ProjectUnits(int units) { m_projectUnits = units; }

  // Scales 1 and all three origins 0, except the current origin; densities stay.
  void Identity();

  // Saves a copy of this matrix (then resets it like Identity when asked).
  void PushMatrix(bool reset);
  // Restores the last saved copy; true when no saved states remain.
  bool PopMatrix();
  int GetSavedStateCount() const { return m_savedCount; }

 private:
  double K(const CHU_ScaleInfo& densities, bool horizontal) const;
  void CopyFrom(const CHU_TransformationMatrix& other);
  void DeviceToWorld(const CHU_ScaleInfo& densities, int originX, int originY,
                     double deviceX, double deviceY, double& worldX, double& worldY) const;

  std::array<std::unique_ptr<CHU_TransformationMatrix>, kMaxSavedStates> m_saved;
  int m_savedCount = 0;
  std::unique_ptr<CHU_ScaleInfo> m_display;
  std::unique_ptr<CHU_ScaleInfo> m_printer;
  const CHU_ScaleInfo* m_view = nullptr;     // always the display densities
  const CHU_ScaleInfo* m_current = nullptr;  // printer when present, else display
  double m_scaleX = 1.0;
  double m_scaleY = 1.0;
  int m_projectUnits = 0;
  double m_worldOriginX = 0.0;
  double m_worldOriginY = 0.0;
  int m_displayOriginX = 0;
  int m_displayOriginY = 0;
  int m_printerOriginX = 0;
  int m_printerOriginY = 0;
  int m_currentOriginX = 0;
  int m_currentOriginY = 0;
};
