#include "hy_util/core/localization.h"

#include <langinfo.h>

#include <cstdio>
#include <cstdlib>

namespace {

locale_t NewUserDefaultLocale() {
  locale_t locale = newlocale(LC_ALL_MASK, "", static_cast<locale_t>(0));
  if (locale == static_cast<locale_t>(0)) {
    locale = newlocale(LC_ALL_MASK, "C", static_cast<locale_t>(0));
  }
  return locale;
}

// Owns the chosen locale for one call and frees it when it was created here.
class ChosenLocale {
 public:
  explicit ChosenLocale(locale_t given) {
    CHU_Localization::ChooseLocaleToUse(given, locale_, created_);
  }
  ~ChosenLocale() {
    if (created_ && locale_ != static_cast<locale_t>(0)) freelocale(locale_);
  }
  ChosenLocale(const ChosenLocale&) = delete;
  ChosenLocale& operator=(const ChosenLocale&) = delete;

  locale_t get() const { return locale_; }

 private:
  locale_t locale_ = static_cast<locale_t>(0);
  bool created_ = false;
};

// Makes the locale current for the calling thread while it lives.
class ThreadLocaleScope {
 public:
  explicit ThreadLocaleScope(locale_t locale)
      : previous_(locale != static_cast<locale_t>(0) ? uselocale(locale)
                                                     : static_cast<locale_t>(0)) {}
  ~ThreadLocaleScope() {
    if (previous_ != static_cast<locale_t>(0)) uselocale(previous_);
  }
  ThreadLocaleScope(const ThreadLocaleScope&) = delete;
  ThreadLocaleScope& operator=(const ThreadLocaleScope&) = delete;

 private:
  locale_t previous_;
};

}  // namespace

void CHU_Localization::ChooseLocaleToUse(locale_t locale, locale_t& chosen, bool& created) {
  created = locale == static_cast<locale_t>(0);
  chosen = created ? NewUserDefaultLocale() : locale;
}

std::string CHU_Localization::GetSystemDecimalSymbol() {
  const ChosenLocale locale(static_cast<locale_t>(0));
  if (locale.get() == static_cast<locale_t>(0)) return ".";
  return nl_langinfo_l(RADIXCHAR, locale.get());
}

std::string CHU_Localization::DoubleToString_l(double value, locale_t locale) {
  const ChosenLocale chosen(locale);
  const ThreadLocaleScope scope(chosen.get());
  // "%f" of the largest double is 317 characters; the room left covers a decimal
  // separator of several bytes.
  char buffer[400];
  const int length = std::snprintf(buffer, sizeof buffer, "%f", value);
  if (length < 0 || static_cast<std::size_t>(length) >= sizeof buffer) return {};
  return std::string(buffer, static_cast<std::size_t>(length));
}

double CHU_Localization::StringToDouble_l(const std::string& text, locale_t locale) {
  const ChosenLocale chosen(locale);
  if (chosen.get() == static_cast<locale_t>(0)) return std::strtod(text.c_str(), nullptr);
  return strtod_l(text.c_str(), nullptr, chosen.get());
}
