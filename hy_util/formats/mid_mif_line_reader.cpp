#include "hy_util/formats/mid_mif_line_reader.h"

#include <cstring>

bool CHU_MIDMIFLineReader::Open(const std::string& path) {
  stream_.reset(path.empty() ? nullptr : std::fopen(path.c_str(), "rb"));
  lineNumber_ = 0;
  length_ = 0;
  failed_ = false;
  if (!stream_) return false;
  if (std::fseek(stream_.get(), 0, SEEK_END) == 0) length_ = std::ftell(stream_.get());
  std::rewind(stream_.get());
  return true;
}

bool CHU_MIDMIFLineReader::ReadLine(std::string& line) {
  line.clear();
  if (!stream_ || failed_) return false;
  char buffer[16384];
  bool any = false;
  while (std::fgets(buffer, sizeof buffer, stream_.get()) != nullptr) {
    any = true;
    const std::size_t n = std::strlen(buffer);
    line.append(buffer, n);
    if (line.size() > kMaxLineBytes) {
      failed_ = true;
      line.clear();
      return false;
    }
    if (n > 0 && buffer[n - 1] == '\n') break;
  }
  if (std::ferror(stream_.get())) failed_ = true;
  if (!any) return false;
  if (!line.empty() && line.back() == '\n') line.pop_back();
  if (!line.empty() && line.back() == '\r') line.pop_back();
  // Some writers start the file with a UTF-8 byte-order mark; it is not text.
  if (lineNumber_ == 0 && line.rfind("\xEF\xBB\xBF", 0) == 0) line.erase(0, 3);
  ++lineNumber_;
  return true;
}

std::int64_t CHU_MIDMIFLineReader::Position() const {
  return stream_ ? static_cast<std::int64_t>(std::ftell(stream_.get())) : 0;
}
