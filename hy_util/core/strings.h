#pragma once
// HU_LIB::HU_Strings: classifying, quoting and cleaning narrow text.
//
// Each operation has a character-buffer form, as the library's older callers use,
// and a std::string form where that is natural. A null `const char*` is read as the
// empty text. Quoting works in fixed buffers of HU_QUOTE_BUFFER_SIZE bytes; a result
// longer than 255 characters cannot be represented, and rather than truncate text
// that is about to be written to a file, the process stops with a message on
// standard error.

#include <cstddef>
#include <string>

namespace HU_LIB {

inline constexpr std::size_t HU_QUOTE_BUFFER_SIZE = 256;

class HU_Strings {
 public:
  HU_Strings() = delete;

  // Optional sign, digits, surrounding white space. Without a sign no digit is
  // needed: an empty or blank text counts as an integer (callers check emptiness
  // with IsNullString).
  static bool IsStringInt(const char* text);
  static bool IsStringInt(const std::string& text);

  // A number with a decimal point or an exponent ("12." ".5" "1e5", not "12"),
  // with at least one digit in the mantissa and in the exponent if there is one.
  static bool IsStringReal(const char* text);
  static bool IsStringReal(const std::string& text);

  static bool IsNumericString(const char* text);
  static bool IsNumericString(const std::string& text);

  // A null pointer or an empty text.
  static bool IsNullString(const char* text);
  static bool IsNullString(const std::string& text);

  // Replaces everything from the last separator (inclusive) with the suffix, or
  // appends the suffix when there is no separator: NewSuffix("model.dat", '.', ".bak")
  // gives "model.bak". The buffer form returns false and leaves the buffer alone
  // when the result and its terminator do not fit in `capacity` bytes.
  static bool NewSuffix(char* buffer, std::size_t capacity, char separator, const char* suffix);
  static void NewSuffix(std::string& text, char separator, const std::string& suffix);

  // Rewrites the buffer (at least HU_QUOTE_BUFFER_SIZE bytes) in place: the quote
  // character around the text when addQuotes is set, the escape character before
  // every quote character inside, and one blank for an empty text unless
  // blankIfEmpty is non-zero. Stops the process when the result exceeds 255
  // characters.
  static void _QuoteString(char* buffer, bool addQuotes, char quote, char escape,
                           int blankIfEmpty);

  // Doubles every backslash, then encloses the text in double quotes with a
  // backslash before each double quote inside. Stops the process when the result
  // exceeds 255 characters.
  static void QuoteString(std::string& text);

  // Removes every trailing "0": "1.500" becomes "1.5" and "100" becomes "1".
  static void RemoveTrailZero(std::string& text);
  static void RemoveTrailZero(char* buffer);

  static bool ContainsAnyCharacterFromSet(const std::string& text, const std::string& set);

  // Every character of the text that is in the set is replaced by its code in
  // lower-case hexadecimal without prefix ("/" becomes "2f"); bytes above 127 give
  // two digits of their unsigned value.
  static std::string ReplaceInvalidCharactersHex(const std::string& text,
                                                 const std::string& set);
};

}  // namespace HU_LIB
