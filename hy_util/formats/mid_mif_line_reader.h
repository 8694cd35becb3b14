#pragma once
// CHU_MIDMIFLineReader: the line source of the MapInfo Interchange reader.
//
// Reads a narrow text file one line at a time without any encoding guess (MID
// values are in the file's own code page, which a leading high byte must not turn
// into 16-bit text); a UTF-8 byte-order mark before the first line is dropped.
// LF and CR LF both end a line and are removed. A line longer
// than kMaxLineBytes is refused: reading stops there and Failed() tells why, so a
// damaged file without line ends cannot claim all memory.

#include <cstdint>
#include <cstdio>
#include <memory>
#include <string>

class CHU_MIDMIFLineReader {
 public:
  static constexpr std::size_t kMaxLineBytes = std::size_t{64} << 20;

  bool Open(const std::string& path);
  void Close() { stream_.reset(); }
  bool IsOpen() const { return stream_ != nullptr; }

  // The next line without its line end; false at the end of the file or after a
  // refused line.
  bool ReadLine(std::string& line);
  // Number of the line returned last (1-based); 0 before the first.
  std::int64_t LineNumber() const { return lineNumber_; }
  // True once a line was refused for its length or a read error occurred.
  bool Failed() const { return failed_; }
  std::int64_t Position() const;
  std::int64_t Length() const { return length_; }

 private:
  struct Closer {
    void operator()(std::FILE* f) const { std::fclose(f); }
  };
  std::unique_ptr<std::FILE, Closer> stream_;
  std::int64_t lineNumber_ = 0;
  std::int64_t length_ = 0;
  bool failed_ = false;
};
