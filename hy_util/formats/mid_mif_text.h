#pragma once
// Text helpers shared by the MapInfo Interchange reader and writer: blank-separated
// tokens of MIF lines, numbers read and written without the process's locale (a
// host may run with a decimal comma, the files never use one), and the MID row
// splitter.

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace hu_mif {

inline bool IsBlank(char c) { return c == ' ' || c == '\t' || c == '\r' || c == '\f' || c == '\v'; }

// The blank-separated tokens of a line; never empty tokens.
std::vector<std::string_view> SplitBlanks(std::string_view line);
// The tokens separated by any character of separators; never empty tokens.
std::vector<std::string_view> SplitAny(std::string_view text, std::string_view separators);
std::string_view TrimBlanks(std::string_view text);
bool EqualsNoCase(std::string_view a, std::string_view b);
// Position of needle in text ignoring letter case, or npos.
std::size_t FindNoCase(std::string_view text, std::string_view needle);

// The whole token is a number in the C syntax of strtod (optional sign, digits with
// an optional point, optional exponent).
bool ParseDouble(std::string_view token, double& value);
// strtod's reading of a value: leading blanks, then the longest number at the
// start; 0.0 when there is none.
double LeadingDouble(std::string_view text);
// The whole token is a decimal integer that fits an int.
bool ParseInt(std::string_view token, int& value);

// Appends the value with exactly `decimals` decimals, as printf's "%.*f" writes it
// in the C locale. Beyond 1074 decimals every further digit of a double is zero;
// those are not written.
void AppendFixed(std::string& out, double value, int decimals);

// Splits MID rows. A value is either plain text up to the next delimiter, or a
// double-quoted text in which a doubled quote stands for one quote; blanks before
// the opening quote and anything between the closing quote and the next delimiter
// are dropped. A quoted value may run over line ends, so rows are fed line by line
// until Feed answers true; the line end inside a value is kept as "\n".
// Values beyond maxValues are counted but not kept, so a hostile row of millions
// of delimiters costs no memory.
class MidRowSplitter {
 public:
  MidRowSplitter(char delimiter, std::size_t maxValues) : delimiter_(delimiter), maxValues_(maxValues) {}

  // Starts a new row.
  void Reset();
  // Adds one line of the row; true when the row is complete (no quote left open).
  bool Feed(std::string_view line);
  // Ends the row even with a quote still open (end of file, or a row grown too long).
  void Finish();

  std::vector<std::string>& Values() { return values_; }
  // Values seen in the row, kept or not.
  std::size_t ValueCount() const { return count_; }
  bool QuoteOpen() const { return state_ == State::kQuoted; }

 private:
  enum class State { kFieldStart, kPlain, kQuoted, kQuoteSeen, kAfterQuote };
  void EndValue();

  char delimiter_;
  std::size_t maxValues_;
  State state_ = State::kFieldStart;
  std::string current_;
  std::vector<std::string> values_;
  std::size_t count_ = 0;
};

}  // namespace hu_mif
