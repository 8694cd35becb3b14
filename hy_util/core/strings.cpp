#include "hy_util/core/strings.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string_view>
#include <utility>

namespace HU_LIB {

namespace {

constexpr std::size_t kMaxQuotedLength = HU_QUOTE_BUFFER_SIZE - 1;

std::string_view View(const char* text) { return text ? std::string_view(text) : std::string_view(); }

bool IsBlank(char c) {
  return c == ' ' || c == '\t' || c == '\n' || c == '\v' || c == '\f' || c == '\r';
}

bool IsDigit(char c) { return c >= '0' && c <= '9'; }

// A cursor over the text for the classifiers.
struct Scanner {
  std::string_view text;
  std::size_t pos = 0;

  bool AtEnd() const { return pos == text.size(); }
  void SkipBlanks() {
    while (!AtEnd() && IsBlank(text[pos])) ++pos;
  }
  bool Accept(char a, char b) {
    if (AtEnd() || (text[pos] != a && text[pos] != b)) return false;
    ++pos;
    return true;
  }
  std::size_t Digits() {
    const std::size_t start = pos;
    while (!AtEnd() && IsDigit(text[pos])) ++pos;
    return pos - start;
  }
  bool BlanksToEnd() {
    SkipBlanks();
    return AtEnd();
  }
};

bool IntText(std::string_view text) {
  Scanner s{text};
  s.SkipBlanks();
  const bool signed_ = s.Accept('+', '-');
  const std::size_t digits = s.Digits();
  if (!s.BlanksToEnd()) return false;
  return !signed_ || digits > 0;
}

bool RealText(std::string_view text) {
  Scanner s{text};
  s.SkipBlanks();
  s.Accept('+', '-');
  std::size_t mantissaDigits = s.Digits();
  const bool point = s.Accept('.', '.');
  mantissaDigits += s.Digits();
  bool exponent = false;
  if (s.Accept('e', 'E')) {
    exponent = true;
    s.Accept('+', '-');
    if (s.Digits() == 0) return false;
  }
  if (!s.BlanksToEnd()) return false;
  return mantissaDigits > 0 && (point || exponent);
}

[[noreturn]] void QuotedTextTooLong(const char* function, std::size_t length) {
  std::fprintf(stderr,
               "hy_util: %s: the quoted text needs %zu characters but at most %zu fit; "
               "stopping\n",
               function, length, kMaxQuotedLength);
  std::abort();
}

std::string Replaced(std::string_view text, char separator, std::string_view suffix) {
  const std::size_t at = text.rfind(separator);
  std::string result(text.substr(0, at == std::string_view::npos ? text.size() : at));
  result += suffix;
  return result;
}

std::size_t TrailZeroStart(std::string_view text) {
  std::size_t end = text.size();
  while (end > 0 && text[end - 1] == '0') --end;
  return end;
}

}  // namespace

bool HU_Strings::IsStringInt(const char* text) { return IntText(View(text)); }
bool HU_Strings::IsStringInt(const std::string& text) { return IntText(text); }
bool HU_Strings::IsStringReal(const char* text) { return RealText(View(text)); }
bool HU_Strings::IsStringReal(const std::string& text) { return RealText(text); }

bool HU_Strings::IsNumericString(const char* text) {
  return IsStringInt(text) || IsStringReal(text);
}
bool HU_Strings::IsNumericString(const std::string& text) {
  return IsStringInt(text) || IsStringReal(text);
}

bool HU_Strings::IsNullString(const char* text) { return text == nullptr || *text == '\0'; }
bool HU_Strings::IsNullString(const std::string& text) { return text.empty(); }

bool HU_Strings::NewSuffix(char* buffer, std::size_t capacity, char separator,
                           const char* suffix) {
  if (buffer == nullptr) return false;
  const std::string result = Replaced(buffer, separator, View(suffix));
  if (result.size() + 1 > capacity) return false;
  std::memcpy(buffer, result.c_str(), result.size() + 1);
  return true;
}

void HU_Strings::NewSuffix(std::string& text, char separator, const std::string& suffix) {
  text = Replaced(text, separator, suffix);
}

void HU_Strings::_QuoteString(char* buffer, bool addQuotes, char quote, char escape,
                              int blankIfEmpty) {
  const std::string_view text = View(buffer);
  std::string result;
  if (addQuotes) result += quote;
  for (const char c : text) {
    if (c == quote) result += escape;
    result += c;
  }
  if (text.empty() && blankIfEmpty == 0) result += ' ';
  if (addQuotes) result += quote;
  if (result.size() > kMaxQuotedLength) QuotedTextTooLong("_QuoteString", result.size());
  if (buffer != nullptr) std::memcpy(buffer, result.c_str(), result.size() + 1);
}

void HU_Strings::QuoteString(std::string& text) {
  std::string result = "\"";
  for (const char c : text) {
    if (c == '\\') {
      result += "\\\\";
    } else {
      if (c == '"') result += '\\';
      result += c;
    }
  }
  result += '"';
  if (result.size() > kMaxQuotedLength) QuotedTextTooLong("QuoteString", result.size());
  text = std::move(result);
}

void HU_Strings::RemoveTrailZero(std::string& text) { text.resize(TrailZeroStart(text)); }

void HU_Strings::RemoveTrailZero(char* buffer) {
  if (buffer != nullptr) buffer[TrailZeroStart(buffer)] = '\0';
}

bool HU_Strings::ContainsAnyCharacterFromSet(const std::string& text, const std::string& set) {
  return text.find_first_of(set) != std::string::npos;
}

std::string HU_Strings::ReplaceInvalidCharactersHex(const std::string& text,
                                                    const std::string& set) {
  std::string result;
  result.reserve(text.size());
  for (const char c : text) {
    if (set.find(c) == std::string::npos) {
      result += c;
      continue;
    }
    char hex[4];
    std::snprintf(hex, sizeof hex, "%x", static_cast<unsigned>(static_cast<unsigned char>(c)));
    result += hex;
  }
  return result;
}

}  // namespace HU_LIB
