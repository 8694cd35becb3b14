#include "hy_util/platform/locale.h"

#include <clocale>

namespace {

struct LocalePair {
  const char* windows;
  const char* posix;
};

constexpr LocalePair kPairs[] = {
    {"Japanese_Japan.932", "ja_JP.UTF-8"},
    {"Chinese-Simplified_China.936", "zh_CN.UTF-8"},
    {"Korean_Korea.949", "ko_KR.UTF-8"},
};

}  // namespace

std::string HU_PosixLocaleFor(const std::string& windowsName) {
  for (const LocalePair& pair : kPairs) {
    if (windowsName == pair.windows) return pair.posix;
  }
  return {};
}

std::string HU_SetProcessLocale(const std::string& windowsName) {
  if (!windowsName.empty() && std::setlocale(LC_ALL, windowsName.c_str()) != nullptr) {
    return windowsName;
  }
  const std::string posix = HU_PosixLocaleFor(windowsName);
  if (!posix.empty() && std::setlocale(LC_ALL, posix.c_str()) != nullptr) return posix;
  return {};
}
