#pragma once
// HyUtility::CStringAlgorithms: a tokenizer driven by the caller's recognizers.
//
// The caller supplies three recognizers: one for a token, one for an opening quote
// and one for a closing quote. A recognizer is called with the text and a position;
// when something it accepts starts there it returns true and leaves the position on
// the LAST character it accepted (so a one-character token leaves it unchanged), and
// when nothing starts there it returns false. The context pointer is passed through
// untouched.
//
// Tokenizing rule, tried at each position from left to right:
//   1. an opening quote starts a quoted token; its text runs up to the first place
//      where the closing-quote recognizer accepts, and excludes both quotes (an
//      unclosed quote runs to the end of the text; "" gives an empty token);
//   2. otherwise a recognised token is taken as it stands;
//   3. otherwise the character is skipped: whatever no recognizer claims separates
//      tokens.
// A recognizer that reports no progress (a position before where it started) is
// treated as not having recognised anything, so a faulty recognizer cannot stall
// the loop.

#include <cstddef>
#include <string>
#include <vector>

namespace HyUtility {

class CStringAlgorithms {
 public:
  using Recognizer = bool (*)(const std::string& text, std::size_t& position, void* context);

  CStringAlgorithms() = delete;

  static std::vector<std::string> Split(const std::string& text, Recognizer isToken,
                                        Recognizer isOpeningQuote, Recognizer isClosingQuote,
                                        void* context);

  // Moves the position forward to where the next token (or quoted token) starts,
  // leaving it alone when one starts there already. False, with the position at the
  // end of the text, when no token is left.
  static bool MoveToNextToken(const std::string& text, std::size_t& position,
                              Recognizer isToken, Recognizer isOpeningQuote,
                              Recognizer isClosingQuote, void* context);

 private:
  struct Recognizers {
    Recognizer token;
    Recognizer opening;
    Recognizer closing;
    void* context;
  };

  // Each adapter asks the caller's recognizer at `position` and gives the length of
  // what it accepted (new position - old position + 1), or 0 when nothing was.
  static std::size_t IsToken(const std::string& text, std::size_t position,
                             const Recognizers& r);
  static std::size_t IsOpeningQ(const std::string& text, std::size_t position,
                                const Recognizers& r);
  static std::size_t IsClosingQ(const std::string& text, std::size_t position,
                                const Recognizers& r);
  static std::size_t Recognised(Recognizer recognizer, const std::string& text,
                                std::size_t position, void* context);

  // Reads the token that starts at `position` and moves the position past it.
  static std::string ReadToken(const std::string& text, std::size_t& position,
                               const Recognizers& r);
};

}  // namespace HyUtility
