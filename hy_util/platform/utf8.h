#pragma once
// UTF-8 to the library's narrow text.
//
// Narrow strings in this library are UTF-8 already, so the conversion of text read
// from a UTF-8 file is a validity check that copies the bytes unchanged. Invalid
// sequences (stray continuation bytes, truncated or overlong sequences, UTF-16
// surrogates, code points above U+10FFFF) make it fail, so that such bytes never
// reach the user interface.

#include <string>
#include <string_view>

// True when the text is well-formed UTF-8.
bool HU_IsValidUtf8(std::string_view text);

// Copies the UTF-8 text to out and returns true; returns false and leaves out
// unchanged when the text is not well-formed UTF-8.
bool HU_Utf8ToNarrow(std::string_view utf8, std::string& out);
