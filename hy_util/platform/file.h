#pragma once
// CHU_StdioFile: the buffered file the library's readers are built on. A thin owner
// of a C stream with 64-bit positions; failures of Open are reported by its result,
// and read errors by CHU_FileException where a reader asks for it.

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <stdexcept>
#include <string>

// Open flags. Share modes exist so that callers can say what they mean; this
// platform has no mandatory file locking, so they are accepted and ignored.
enum HU_OpenFlags : unsigned int {
  HU_modeRead = 0x0000,
  HU_modeWrite = 0x0001,
  HU_modeReadWrite = 0x0002,
  HU_modeCreate = 0x1000,
  HU_modeNoTruncate = 0x2000,
  HU_shareDenyNone = 0x0040,
  HU_shareDenyWrite = 0x0020,
  HU_shareExclusive = 0x0010,
  HU_typeText = 0x4000,
  HU_typeBinary = 0x8000,
};

// A failed file operation, carrying the C runtime's error number.
class CHU_FileException : public std::runtime_error {
 public:
  CHU_FileException(int errorNumber, const std::string& path);
  int ErrorNumber() const { return errorNumber_; }

 private:
  int errorNumber_;
};

class CHU_StdioFile {
 public:
  CHU_StdioFile() = default;
  virtual ~CHU_StdioFile();
  CHU_StdioFile(const CHU_StdioFile&) = delete;
  CHU_StdioFile& operator=(const CHU_StdioFile&) = delete;

  // Opens with the flags; false (and errno set) when the file cannot be opened.
  bool Open(const std::string& path, unsigned int flags);
  void Close();
  bool IsOpen() const { return stream_ != nullptr; }

  // Raw reads: the number of bytes read (less than asked at end of file or on error).
  std::size_t Read(void* buffer, std::size_t count);
  // One line including its line feed, as fgets; nullptr at end of file or on error.
  char* ReadLineRaw(char* buffer, int size);
  bool AtEnd() const;
  bool HasError() const;

  bool Seek(std::int64_t offset, int origin);
  std::int64_t GetPosition() const;
  std::int64_t GetLength() const;

  const std::string& GetFilePath() const { return path_; }
  std::FILE* Stream() const { return stream_; }

 private:
  std::FILE* stream_ = nullptr;
  std::string path_;
};
