#pragma once
// CHU_File: the line-oriented text file reader that the grid readers and the
// TUFLOW summary are built on.
//
// Format: plain text read one line at a time. The first byte of the file decides
// the encoding once: below 0x80 the file is narrow (single-byte) text; 0x80 or
// above means 16-bit little-endian text whose first two bytes (normally the
// byte-order mark FF FE) are skipped. In 16-bit text only the low byte of each
// character is kept, so characters above 255 come out as their low byte. A file
// starting with a UTF-8 byte-order mark is therefore read as 16-bit text; that is
// how this reader has always behaved and callers rely on it.
//
// Lines: the line end is removed. LF and CR LF both end a line in either
// encoding, whatever the text/binary open flag says (this platform's C runtime
// does not translate CR LF). Optionally lines are trimmed of white space and
// lines whose first character is one of the comment markers are skipped; an
// empty line is never a comment. The tokenizing ReadLine splits at any of the
// separator characters and never yields empty tokens.
//
// "Characters read" (the count of the tokenizing ReadLine) grows by the length of
// the trimmed line returned. A reader that wants to give a line back (the ESRI
// header reader hands the first data line to the data reader) seeks to
// GetLineStart() instead, which counts line ends and blanks correctly.
//
// Errors: a read error other than end of file in narrow text throws
// CHU_FileException with the C runtime's error number; nothing else throws.

#include <cstdint>
#include <string>
#include <vector>

#include "hy_util/platform/file.h"

class CHU_File : public CHU_StdioFile {
 public:
  // Opens the file with the flags unless the path is empty; a failure shows only
  // in FileOpened().
  CHU_File(const char* path, unsigned int flags);
  CHU_File(const char* path, const std::string& separators, unsigned int flags);
  ~CHU_File() override;

  bool FileOpened() const { return opened_; }
  void Close();

  void SetSeparators(const std::string& separators) { separators_ = separators; }
  void SetCommentMarkers(const char* markers) { commentMarkers_ = markers ? markers : ""; }

  // The next line without its line end; with skipComments the line is trimmed and
  // comment lines are passed over. False when the file is not open or at its end.
  bool ReadLine(std::string& line, bool skipComments);
  // The next non-comment line, trimmed and split at the separators (the whole line
  // is one token when there are none). Adds the trimmed line's length to
  // charsRead. True even when the line holds no token.
  bool ReadLine(std::vector<std::string>& tokens, int& charsRead);
  // File position of the first byte of the line returned last (comment lines
  // skipped before it excluded); -1 before the first read or when the position
  // cannot be told.
  std::int64_t GetLineStart() const { return lineStart_; }
  // One narrow-text line; throws CHU_FileException on a read error.
  bool ReadString(std::string& line);

 protected:
  bool GetNextLine(std::string& line, bool skipComments);
  // Reads the first line and decides the encoding from its first byte.
  bool CheckFileType(std::string& line);
  bool Read_UCS2(std::string& line);

 private:
  enum Encoding : int { kUnknown = 0, kNarrow = 1, kWide = 2 };

  bool ReadRawLine(std::string& line);
  bool IsCommentLine(const std::string& line) const;

  bool opened_ = false;
  int encodingMode_ = kUnknown;
  std::string filePath_;
  std::string separators_;
  std::string commentMarkers_;
  // File position of the first byte of the line read last (-1 when unknown).
  std::int64_t lineStart_ = -1;
};
