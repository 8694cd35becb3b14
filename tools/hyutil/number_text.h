#pragma once
// Numbers as the tool reads and writes them: parsed with std::from_chars (the whole
// text must be the number) and written as the shortest text that reads back to the
// same double.

#include <charconv>
#include <string>
#include <string_view>
#include <system_error>

namespace hyutil {

inline bool ParseDouble(std::string_view text, double& value) {
  const char* end = text.data() + text.size();
  const auto [ptr, ec] = std::from_chars(text.data(), end, value);
  return ec == std::errc() && ptr == end && !text.empty();
}

inline std::string ShortestText(double value) {
  char text[64];
  const auto result = std::to_chars(text, text + sizeof text, value);
  return std::string(text, result.ptr);
}

// The text with control and non-ASCII bytes written as \xNN, for messages that quote
// what a user typed; a very long text is cut short with "...".
inline std::string Printable(std::string_view text) {
  static constexpr char kHex[] = "0123456789ABCDEF";
  static constexpr std::size_t kLongest = 80;
  std::string out;
  for (const char c : text) {
    if (out.size() >= kLongest) return out + "...";
    const auto byte = static_cast<unsigned char>(c);
    if (byte >= 0x20 && byte < 0x7F) {
      out += c;
    } else {
      out += "\\x";
      out += kHex[byte >> 4];
      out += kHex[byte & 0xF];
    }
  }
  return out;
}

}  // namespace hyutil
