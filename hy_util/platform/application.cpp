#include "hy_util/platform/application.h"

#include <cstdio>
#include <filesystem>
#include <system_error>

namespace {

IHU_Application* g_installed = nullptr;

std::string ProgramDirectory() {
  std::error_code ec;
  const std::filesystem::path exe = std::filesystem::read_symlink("/proc/self/exe", ec);
  if (ec || !exe.has_parent_path()) return ".";
  return exe.parent_path().string();
}

const char* KindWord(HU_MessageKind kind) {
  switch (kind) {
    case HU_MessageKind::Error: return "error";
    case HU_MessageKind::Stop: return "stop";
    case HU_MessageKind::Ok: break;
  }
  return "message";
}

}  // namespace

CHU_DefaultApplication::CHU_DefaultApplication() : appDirectory_(ProgramDirectory()) {}

std::string CHU_DefaultApplication::GetProfileString(const std::string& section,
                                                     const std::string& entry,
                                                     const std::string& defaultValue) const {
  const auto it = profile_.find({section, entry});
  return it == profile_.end() ? defaultValue : it->second;
}

void CHU_DefaultApplication::SetProfileString(const std::string& section,
                                              const std::string& entry, std::string value) {
  profile_[{section, entry}] = std::move(value);
}

int CHU_DefaultApplication::GetGlobalInt(const std::string& name, int defaultValue) const {
  const auto it = ints_.find(name);
  return it == ints_.end() ? defaultValue : it->second;
}

bool CHU_DefaultApplication::GetGlobalFlag(const std::string& name, bool defaultValue) const {
  const auto it = flags_.find(name);
  return it == flags_.end() ? defaultValue : it->second;
}

void CHU_DefaultApplication::ShowMessage(const std::string& text, HU_MessageKind kind) {
  std::fprintf(stderr, "%s: %s\n", KindWord(kind), text.c_str());
}

CHU_DefaultApplication& HU_GetDefaultApplication() {
  static CHU_DefaultApplication instance;
  return instance;
}

IHU_Application& HU_GetApplication() {
  return g_installed ? *g_installed : HU_GetDefaultApplication();
}

IHU_Application* HU_SetApplication(IHU_Application* application) {
  IHU_Application* previous = g_installed;
  g_installed = application;
  return previous;
}
