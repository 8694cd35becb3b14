#include "hy_util/core/text_file.h"

#include <sys/types.h>

#include <cerrno>
#include <climits>
#include <cstdio>
#include <cstdlib>
#include <memory>

namespace {

constexpr const char* kWhiteSpace = " \t\n\v\f\r";

void TrimWhiteSpace(std::string& text) {
  const std::size_t first = text.find_first_not_of(kWhiteSpace);
  if (first == std::string::npos) {
    text.clear();
    return;
  }
  const std::size_t last = text.find_last_not_of(kWhiteSpace);
  text.erase(last + 1);
  text.erase(0, first);
}

void RemoveLineEnd(std::string& line) {
  if (!line.empty() && line.back() == '\n') line.pop_back();
  if (!line.empty() && line.back() == '\r') line.pop_back();
}

// Cuts the line at any of the separators, dropping the empty pieces between
// consecutive separators.
void Tokenize(const std::string& line, const std::string& separators,
              std::vector<std::string>& tokens) {
  std::size_t pos = line.find_first_not_of(separators);
  while (pos != std::string::npos) {
    const std::size_t end = line.find_first_of(separators, pos);
    tokens.push_back(line.substr(pos, end == std::string::npos ? std::string::npos : end - pos));
    pos = end == std::string::npos ? end : line.find_first_not_of(separators, end);
  }
}

struct FreeDeleter {
  void operator()(char* p) const { std::free(p); }
};

}  // namespace

CHU_File::CHU_File(const char* path, unsigned int flags) : filePath_(path ? path : "") {
  if (!filePath_.empty()) opened_ = Open(filePath_, flags);
}

CHU_File::CHU_File(const char* path, const std::string& separators, unsigned int flags)
    : CHU_File(path, flags) {
  separators_ = separators;
  commentMarkers_.clear();
}

CHU_File::~CHU_File() { Close(); }

void CHU_File::Close() {
  if (!opened_) return;
  CHU_StdioFile::Close();
  opened_ = false;
}

bool CHU_File::ReadLine(std::string& line, bool skipComments) {
  if (!opened_ || !IsOpen()) return false;
  return GetNextLine(line, skipComments);
}

bool CHU_File::ReadLine(std::vector<std::string>& tokens, int& charsRead) {
  tokens.clear();
  if (!opened_ || !IsOpen()) return false;
  std::string line;
  if (!GetNextLine(line, true)) return false;

  const std::int64_t total =
      static_cast<std::int64_t>(charsRead) + static_cast<std::int64_t>(line.size());
  charsRead = total > INT_MAX ? INT_MAX : static_cast<int>(total);

  if (separators_.empty()) {
    tokens.push_back(line);
  } else {
    Tokenize(line, separators_, tokens);
  }
  return true;
}

bool CHU_File::GetNextLine(std::string& line, bool skipComments) {
  for (;;) {
    if (!ReadRawLine(line)) return false;
    if (!skipComments) return true;
    TrimWhiteSpace(line);
    if (!IsCommentLine(line)) return true;
  }
}

bool CHU_File::ReadRawLine(std::string& line) {
  lineStart_ = GetPosition();
  switch (encodingMode_) {
    case kNarrow: return ReadString(line);
    case kWide: return Read_UCS2(line);
    default: return CheckFileType(line);
  }
}

bool CHU_File::IsCommentLine(const std::string& line) const {
  return !line.empty() && !commentMarkers_.empty() &&
         commentMarkers_.find(line.front()) != std::string::npos;
}

bool CHU_File::CheckFileType(std::string& line) {
  unsigned char first = 0;
  if (Read(&first, 1) != 1) return false;

  if (first < 0x80) {
    encodingMode_ = kNarrow;
    if (first == '\r') {
      // A first line that is only a line end: take its LF along if there is one.
      const int next = std::getc(Stream());
      if (next != '\n' && next != EOF) std::ungetc(next, Stream());
      line.clear();
      return true;
    }
    // Put the byte back so the first line is read whole by the narrow reader.
    std::ungetc(first, Stream());
    return ReadString(line);
  }

  unsigned char second = 0;
  if (Read(&second, 1) != 1) return false;
  encodingMode_ = kWide;
  lineStart_ = GetPosition();
  return Read_UCS2(line);
}

bool CHU_File::ReadString(std::string& line) {
  line.clear();
  if (!IsOpen()) return false;

  // getline copes with embedded NUL bytes and grows its buffer geometrically,
  // so a line of many megabytes is read in linear time.
  char* raw = nullptr;
  std::size_t capacity = 0;
  errno = 0;
  const ssize_t count = getline(&raw, &capacity, Stream());
  const int error = errno;
  std::unique_ptr<char, FreeDeleter> buffer(raw);

  if (count <= 0) {
    if (!AtEnd()) throw CHU_FileException(error != 0 ? error : EIO, filePath_);
    return false;
  }
  line.assign(buffer.get(), static_cast<std::size_t>(count));
  RemoveLineEnd(line);
  return true;
}

bool CHU_File::Read_UCS2(std::string& line) {
  line.clear();
  unsigned char unit[2];
  while (Read(unit, 2) == 2) {
    const char c = static_cast<char>(unit[0]);  // the high byte is dropped
    if (c == '\n') return true;
    if (c == '\r') {
      // Swallow the LF of a CR LF pair; anything else is put back for the next line.
      const std::size_t got = Read(unit, 2);
      if (got > 0 && !(got == 2 && unit[0] == '\n')) Seek(-static_cast<std::int64_t>(got), SEEK_CUR);
      return true;
    }
    line.push_back(c);
  }
  return !line.empty();
}
