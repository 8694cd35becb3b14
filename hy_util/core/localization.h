#pragma once
// CHU_Localization: numbers formatted and read with the user's regional settings.
//
// The user's settings are the locale named by the environment (LANG, LC_ALL, ...),
// made as a separate locale object for all categories; when the environment names
// a locale that is not installed, the "C" locale stands in. Formatting and parsing
// switch only the calling thread to that object (uselocale) and back, so the
// process locale and other threads are never touched. Pass a locale_t of your own
// to use it instead; the operations free only the objects they created.

#include <locale.h>

#include <string>

class CHU_Localization {
 public:
  CHU_Localization() = delete;

  // Chooses `locale`, or creates the user-default locale when it is null; `created`
  // tells whether the caller must free the chosen object with freelocale.
  static void ChooseLocaleToUse(locale_t locale, locale_t& chosen, bool& created);

  // The user's decimal separator ("." or "," and the like).
  static std::string GetSystemDecimalSymbol();

  // The value written with "%f" under the locale (the user default when null).
  static std::string DoubleToString_l(double value, locale_t locale);

  // The C runtime's locale-aware strtod under the locale (the user default when
  // null): 0 when the text holds no number.
  static double StringToDouble_l(const std::string& text, locale_t locale);
};
