#include "hy_util/platform/file.h"

#include <cerrno>
#include <cstring>
#include <sys/types.h>

CHU_FileException::CHU_FileException(int errorNumber, const std::string& path)
    : std::runtime_error(path + ": " + std::strerror(errorNumber)), errorNumber_(errorNumber) {}

CHU_StdioFile::~CHU_StdioFile() { Close(); }

namespace {

const char* ModeString(unsigned int flags) {
  const bool binary = (flags & HU_typeBinary) != 0;
  if (flags & HU_modeReadWrite) {
    if (flags & HU_modeCreate) return (flags & HU_modeNoTruncate) ? (binary ? "a+b" : "a+") : (binary ? "w+b" : "w+");
    return binary ? "r+b" : "r+";
  }
  if (flags & HU_modeWrite) {
    if (flags & HU_modeNoTruncate) return binary ? "ab" : "a";
    return binary ? "wb" : "w";
  }
  return binary ? "rb" : "r";
}

}  // namespace

bool CHU_StdioFile::Open(const std::string& path, unsigned int flags) {
  Close();
  path_ = path;
  stream_ = std::fopen(path.c_str(), ModeString(flags));
  return stream_ != nullptr;
}

void CHU_StdioFile::Close() {
  if (stream_ != nullptr) {
    std::fclose(stream_);
    stream_ = nullptr;
  }
}

std::size_t CHU_StdioFile::Read(void* buffer, std::size_t count) {
  if (stream_ == nullptr || count == 0) return 0;
  return std::fread(buffer, 1, count, stream_);
}

char* CHU_StdioFile::ReadLineRaw(char* buffer, int size) {
  if (stream_ == nullptr) return nullptr;
  return std::fgets(buffer, size, stream_);
}

bool CHU_StdioFile::AtEnd() const { return stream_ == nullptr || std::feof(stream_) != 0; }

bool CHU_StdioFile::HasError() const { return stream_ != nullptr && std::ferror(stream_) != 0; }

bool CHU_StdioFile::Seek(std::int64_t offset, int origin) {
  return stream_ != nullptr && fseeko(stream_, static_cast<off_t>(offset), origin) == 0;
}

std::int64_t CHU_StdioFile::GetPosition() const {
  return stream_ == nullptr ? -1 : static_cast<std::int64_t>(ftello(stream_));
}

std::int64_t CHU_StdioFile::GetLength() const {
  if (stream_ == nullptr) return -1;
  const off_t here = ftello(stream_);
  if (here < 0 || fseeko(stream_, 0, SEEK_END) != 0) return -1;
  const off_t end = ftello(stream_);
  fseeko(stream_, here, SEEK_SET);
  return static_cast<std::int64_t>(end);
}
