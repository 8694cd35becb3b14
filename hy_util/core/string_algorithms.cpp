#include "hy_util/core/string_algorithms.h"

namespace HyUtility {

std::size_t CStringAlgorithms::Recognised(Recognizer recognizer, const std::string& text,
                                          std::size_t position, void* context) {
  if (recognizer == nullptr || position >= text.size()) return 0;
  std::size_t end = position;
  if (!recognizer(text, end, context) || end < position) return 0;
  // A recognizer may not claim characters beyond the text.
  if (end >= text.size()) end = text.size() - 1;
  return end - position + 1;
}

std::size_t CStringAlgorithms::IsToken(const std::string& text, std::size_t position,
                                       const Recognizers& r) {
  return Recognised(r.token, text, position, r.context);
}

std::size_t CStringAlgorithms::IsOpeningQ(const std::string& text, std::size_t position,
                                          const Recognizers& r) {
  return Recognised(r.opening, text, position, r.context);
}

std::size_t CStringAlgorithms::IsClosingQ(const std::string& text, std::size_t position,
                                          const Recognizers& r) {
  return Recognised(r.closing, text, position, r.context);
}

bool CStringAlgorithms::MoveToNextToken(const std::string& text, std::size_t& position,
                                        Recognizer isToken, Recognizer isOpeningQuote,
                                        Recognizer isClosingQuote, void* context) {
  const Recognizers r{isToken, isOpeningQuote, isClosingQuote, context};
  for (; position < text.size(); ++position) {
    if (IsOpeningQ(text, position, r) > 0 || IsToken(text, position, r) > 0) return true;
  }
  position = text.size();
  return false;
}

std::string CStringAlgorithms::ReadToken(const std::string& text, std::size_t& position,
                                         const Recognizers& r) {
  const std::size_t opening = IsOpeningQ(text, position, r);
  if (opening == 0) {
    const std::size_t length = IsToken(text, position, r);
    std::string token = text.substr(position, length);
    // Recognizers that answer differently on a second call must not stall the loop.
    position += length > 0 ? length : 1;
    return token;
  }
  const std::size_t start = position + opening;
  for (std::size_t i = start; i < text.size(); ++i) {
    const std::size_t closing = IsClosingQ(text, i, r);
    if (closing > 0) {
      position = i + closing;
      return text.substr(start, i - start);
    }
  }
  position = text.size();
  return text.substr(start);
}

std::vector<std::string> CStringAlgorithms::Split(const std::string& text, Recognizer isToken,
                                                  Recognizer isOpeningQuote,
                                                  Recognizer isClosingQuote, void* context) {
  const Recognizers r{isToken, isOpeningQuote, isClosingQuote, context};
  std::vector<std::string> tokens;
  std::size_t position = 0;
  while (MoveToNextToken(text, position, isToken, isOpeningQuote, isClosingQuote, context)) {
    tokens.push_back(ReadToken(text, position, r));
  }
  return tokens;
}

}  // namespace HyUtility
