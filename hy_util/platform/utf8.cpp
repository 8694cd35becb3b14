#include "hy_util/platform/utf8.h"

#include <cstddef>

namespace {

bool IsContinuation(unsigned char c) { return (c & 0xC0) == 0x80; }

// Length of the well-formed sequence starting at text[i], or 0 when it is not one.
// The allowed second bytes follow the table of well-formed UTF-8 byte sequences,
// which rules out overlong forms, surrogates and values above U+10FFFF.
std::size_t SequenceLength(std::string_view text, std::size_t i) {
  const auto at = [&](std::size_t k) { return static_cast<unsigned char>(text[i + k]); };
  const unsigned char lead = at(0);
  if (lead < 0x80) return 1;
  std::size_t length = 0;
  unsigned char low = 0x80;
  unsigned char high = 0xBF;
  if (lead >= 0xC2 && lead <= 0xDF) {
    length = 2;
  } else if (lead >= 0xE0 && lead <= 0xEF) {
    length = 3;
    if (lead == 0xE0) low = 0xA0;
    if (lead == 0xED) high = 0x9F;
  } else if (lead >= 0xF0 && lead <= 0xF4) {
    length = 4;
    if (lead == 0xF0) low = 0x90;
    if (lead == 0xF4) high = 0x8F;
  } else {
    return 0;
  }
  if (text.size() - i < length) return 0;
  if (at(1) < low || at(1) > high) return 0;
  for (std::size_t k = 2; k < length; ++k) {
    if (!IsContinuation(at(k))) return 0;
  }
  return length;
}

}  // namespace

bool HU_IsValidUtf8(std::string_view text) {
  std::size_t i = 0;
  while (i < text.size()) {
    const std::size_t length = SequenceLength(text, i);
    if (length == 0) return false;
    i += length;
  }
  return true;
}

bool HU_Utf8ToNarrow(std::string_view utf8, std::string& out) {
  if (!HU_IsValidUtf8(utf8)) return false;
  out.assign(utf8.data(), utf8.size());
  return true;
}
