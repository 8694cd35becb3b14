#pragma once
// The host application as the library sees it.
//
// The library is passive and has no main loop; a few operations need things that
// belong to the host: the application directory (language files), settings by
// section and entry, global values by name ("Units", "F_TUFLOW_UNIT_SELECTED"),
// message boxes, a progress display and the screen's resolution. A host implements
// IHU_Application and installs it with HU_SetApplication; without a host, a default
// instance answers (settings from an in-memory store, messages to standard error,
// silent progress, a 96 pixels-per-inch screen).

#include <map>
#include <string>

enum class HU_MessageKind {
  Ok,     // plain box with an OK button
  Error,  // error icon
  Stop,   // stop icon
};

class IHU_Application {
 public:
  virtual ~IHU_Application() = default;

  virtual std::string GetAppDirectory() const = 0;
  virtual std::string GetProfileString(const std::string& section, const std::string& entry,
                                       const std::string& defaultValue) const = 0;
  virtual int GetGlobalInt(const std::string& name, int defaultValue) const = 0;
  virtual bool GetGlobalFlag(const std::string& name, bool defaultValue) const = 0;

  virtual void ShowMessage(const std::string& text, HU_MessageKind kind) = 0;

  virtual void ProgressStart(const std::string& caption, int steps) = 0;
  virtual void ProgressSetPos(int position) = 0;
  virtual void ProgressStop() = 0;

  // Logical pixels per inch of the screen, horizontally and vertically.
  virtual void GetScreenResolution(int& pixelsPerInchX, int& pixelsPerInchY) const = 0;
};

// The default application: values are kept in memory and may be set by a host or a
// test; the application directory starts as the directory of the running program.
class CHU_DefaultApplication : public IHU_Application {
 public:
  CHU_DefaultApplication();

  std::string GetAppDirectory() const override { return appDirectory_; }
  std::string GetProfileString(const std::string& section, const std::string& entry,
                               const std::string& defaultValue) const override;
  int GetGlobalInt(const std::string& name, int defaultValue) const override;
  bool GetGlobalFlag(const std::string& name, bool defaultValue) const override;

  // Writes "<kind>: <text>" to standard error.
  void ShowMessage(const std::string& text, HU_MessageKind kind) override;

  void ProgressStart(const std::string&, int) override {}
  void ProgressSetPos(int) override {}
  void ProgressStop() override {}

  // 96 x 96 until a host sets its screen's values.
  void GetScreenResolution(int& pixelsPerInchX, int& pixelsPerInchY) const override {
    pixelsPerInchX = screenPpiX_;
    pixelsPerInchY = screenPpiY_;
  }

  void SetAppDirectory(std::string directory) { appDirectory_ = std::move(directory); }
  void SetProfileString(const std::string& section, const std::string& entry, std::string value);
  void SetGlobalInt(const std::string& name, int value) { ints_[name] = value; }
  void SetGlobalFlag(const std::string& name, bool value) { flags_[name] = value; }
  void SetScreenResolution(int pixelsPerInchX, int pixelsPerInchY) {
    screenPpiX_ = pixelsPerInchX;
    screenPpiY_ = pixelsPerInchY;
  }

 private:
  std::string appDirectory_;
  std::map<std::pair<std::string, std::string>, std::string> profile_;
  std::map<std::string, int> ints_;
  std::map<std::string, bool> flags_;
  int screenPpiX_ = 96;
  int screenPpiY_ = 96;
};

// The current application: the installed host, or the process's default instance.
IHU_Application& HU_GetApplication();

// Installs a host (not owned; it must outlive its installation). Passing nullptr
// restores the default instance. Returns the previously installed host, or nullptr
// when the default was current.
IHU_Application* HU_SetApplication(IHU_Application* application);

// The process's default instance, for hosts that only want to set a few values.
CHU_DefaultApplication& HU_GetDefaultApplication();
