#pragma once
// Switching the process locale by the names the language files ask for.
//
// Language files name Windows locales ("Japanese_Japan.932" and the like). On this
// platform those names rarely exist, so each known Windows name is paired with the
// POSIX UTF-8 locale of the same language, which is tried second. When neither
// exists the process locale is left as it was.

#include <string>

// The POSIX locale name paired with a Windows locale name: "ja_JP.UTF-8" for
// "Japanese_Japan.932", "zh_CN.UTF-8" for "Chinese-Simplified_China.936",
// "ko_KR.UTF-8" for "Korean_Korea.949"; empty for any other name.
std::string HU_PosixLocaleFor(const std::string& windowsName);

// Sets the locale for all categories: the Windows name first, then its POSIX pair.
// Returns the name that was set, or an empty string when the locale was left alone.
std::string HU_SetProcessLocale(const std::string& windowsName);
