#include "hy_util/formats/mid_mif_text.h"

#include <algorithm>
#include <cctype>
#include <charconv>
#include <cmath>
#include <system_error>

namespace hu_mif {

std::vector<std::string_view> SplitBlanks(std::string_view line) {
  std::vector<std::string_view> tokens;
  std::size_t i = 0;
  while (i < line.size()) {
    while (i < line.size() && IsBlank(line[i])) ++i;
    const std::size_t start = i;
    while (i < line.size() && !IsBlank(line[i])) ++i;
    if (i > start) tokens.push_back(line.substr(start, i - start));
  }
  return tokens;
}

std::vector<std::string_view> SplitAny(std::string_view text, std::string_view separators) {
  std::vector<std::string_view> tokens;
  std::size_t i = 0;
  while (i < text.size()) {
    i = text.find_first_not_of(separators, i);
    if (i == std::string_view::npos) break;
    const std::size_t end = std::min(text.find_first_of(separators, i), text.size());
    tokens.push_back(text.substr(i, end - i));
    i = end;
  }
  return tokens;
}

std::string_view TrimBlanks(std::string_view text) {
  while (!text.empty() && IsBlank(text.front())) text.remove_prefix(1);
  while (!text.empty() && IsBlank(text.back())) text.remove_suffix(1);
  return text;
}

static char Lower(char c) { return static_cast<char>(std::tolower(static_cast<unsigned char>(c))); }

bool EqualsNoCase(std::string_view a, std::string_view b) {
  return a.size() == b.size() &&
         std::equal(a.begin(), a.end(), b.begin(), [](char x, char y) { return Lower(x) == Lower(y); });
}

std::size_t FindNoCase(std::string_view text, std::string_view needle) {
  const auto it = std::search(text.begin(), text.end(), needle.begin(), needle.end(),
                              [](char x, char y) { return Lower(x) == Lower(y); });
  if (it == text.end() && !needle.empty()) return std::string_view::npos;
  return static_cast<std::size_t>(it - text.begin());
}

// from_chars does not take the '+' that strtod accepts.
static const char* ScanDouble(const char* first, const char* last, double& value) {
  const char* p = first;
  if (p != last && *p == '+') {
    ++p;
    if (p != last && *p == '-') return nullptr;
  }
  const auto result = std::from_chars(p, last, value, std::chars_format::general);
  if (result.ec == std::errc::invalid_argument) return nullptr;
  // Out of range still ends the number; strtod gives +-HUGE_VAL or 0 there.
  if (result.ec == std::errc::result_out_of_range) value = 0.0;
  return result.ptr;
}

bool ParseDouble(std::string_view token, double& value) {
  if (token.empty()) return false;
  const char* end = token.data() + token.size();
  double parsed = 0.0;
  const char* stop = ScanDouble(token.data(), end, parsed);
  if (stop != end) return false;
  value = parsed;
  return true;
}

double LeadingDouble(std::string_view text) {
  std::size_t i = 0;
  while (i < text.size() && (IsBlank(text[i]) || text[i] == '\n')) ++i;
  double value = 0.0;
  if (ScanDouble(text.data() + i, text.data() + text.size(), value) == nullptr) return 0.0;
  return value;
}

bool ParseInt(std::string_view token, int& value) {
  const char* first = token.data();
  const char* last = first + token.size();
  if (first != last && *first == '+') ++first;
  int parsed = 0;
  const auto result = std::from_chars(first, last, parsed);
  if (result.ec != std::errc() || result.ptr != last || token.empty()) return false;
  value = parsed;
  return true;
}

void AppendFixed(std::string& out, double value, int decimals) {
  constexpr int kMaxDecimals = 1074;
  decimals = std::clamp(decimals, 0, kMaxDecimals);
  // Sign, 309 integer digits, the point, the decimals.
  char buffer[320 + kMaxDecimals];
  const auto result = std::to_chars(buffer, buffer + sizeof buffer, value, std::chars_format::fixed, decimals);
  out.append(buffer, result.ptr);
}

void MidRowSplitter::Reset() {
  state_ = State::kFieldStart;
  current_.clear();
  values_.clear();
  count_ = 0;
}

void MidRowSplitter::EndValue() {
  if (count_ < maxValues_) values_.push_back(std::move(current_));
  ++count_;
  current_.clear();
  state_ = State::kFieldStart;
}

bool MidRowSplitter::Feed(std::string_view line) {
  for (const char c : line) {
    switch (state_) {
      case State::kFieldStart:
        if (c == delimiter_) {
          EndValue();
        } else if (c == '"') {
          current_.clear();
          state_ = State::kQuoted;
        } else {
          current_ += c;
          if (!IsBlank(c)) state_ = State::kPlain;
        }
        break;
      case State::kPlain:
        if (c == delimiter_) EndValue();
        else current_ += c;
        break;
      case State::kQuoted:
        if (c == '"') state_ = State::kQuoteSeen;
        else current_ += c;
        break;
      case State::kQuoteSeen:
        if (c == '"') {
          current_ += c;
          state_ = State::kQuoted;
        } else if (c == delimiter_) {
          EndValue();
        } else {
          state_ = State::kAfterQuote;
        }
        break;
      case State::kAfterQuote:
        if (c == delimiter_) EndValue();
        break;
    }
  }
  if (state_ == State::kQuoted) {
    current_ += '\n';
    return false;
  }
  EndValue();
  return true;
}

void MidRowSplitter::Finish() { EndValue(); }

}  // namespace hu_mif
