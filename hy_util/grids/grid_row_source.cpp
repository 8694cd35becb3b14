#include "hy_util/grids/grid_row_source.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <string_view>
#include <vector>

#include "hy_util/grids/esri_grid_ascii.h"
#include "hy_util/grids/esri_grid_binary.h"
#include "hy_util/grids/esri_grid_helper.h"
#include "hy_util/grids/grid_text_number.h"

namespace {

struct FileCloser {
  void operator()(std::FILE* file) const { std::fclose(file); }
};
using FilePtr = std::unique_ptr<std::FILE, FileCloser>;

// The path in single quotes, for messages.
std::string Quoted(const std::string& path) {
  std::string quoted(1, '\'');
  quoted += path;
  quoted += '\'';
  return quoted;
}

// Blank, tab, CR and LF, tested with one comparison and a bit mask.
bool IsSeparator(char ch) {
  constexpr std::uint64_t kMask = (1ull << ' ') | (1ull << '\t') | (1ull << '\r') | (1ull << '\n');
  const auto code = static_cast<unsigned char>(ch);
  return code <= ' ' && ((kMask >> code) & 1u) != 0;
}

// Whitespace-separated tokens of a text file, read through one large buffer.
class TextTokenStream {
 public:
  explicit TextTokenStream(FilePtr file) : file_(std::move(file)), buffer_(kBufferSize) {}

  enum class TokenKind { Number, Word, End };

  // The next token and whether it is the first of its line; false at end of
  // file or on failure (see Failed).
  bool Next(std::string_view& token, bool& firstOnLine) {
    while (FindToken()) {
      const char* const start = buffer_.data() + pos_;
      const char* const end = buffer_.data() + end_;
      const char* stop = start;
      while (stop != end && !IsSeparator(*stop)) ++stop;
      if (stop == end && !eof_) {  // the token may go on in the next block
        if (pos_ == 0 && end_ == buffer_.size()) return Fail("a token longer than 1 MiB");
        Refill();
        continue;
      }
      token = std::string_view(start, static_cast<std::size_t>(stop - start));
      TakeToken(stop, firstOnLine);
      return true;
    }
    return false;
  }

  // The next token read as a number (Number, with value set) or not (Word). A
  // plain decimal that ends inside the buffer is parsed in place, in one pass;
  // any other token goes through Next and the full parser.
  TokenKind NextValue(double& value, bool& firstOnLine) {
    if (!FindToken()) return TokenKind::End;
    const char* const end = buffer_.data() + end_;
    const char* const stop = HU_ScanPlainDecimal(buffer_.data() + pos_, end, value);
    if (stop != nullptr && stop != end && IsSeparator(*stop)) {
      TakeToken(stop, firstOnLine);
      return TokenKind::Number;
    }
    std::string_view token;
    if (!Next(token, firstOnLine)) return TokenKind::End;
    return HU_ParseGridNumber(token, value) ? TokenKind::Number : TokenKind::Word;
  }

  // Passes over the rest of the current line.
  void SkipLine() {
    for (;;) {
      const char* nl = static_cast<const char*>(std::memchr(buffer_.data() + pos_, '\n', end_ - pos_));
      if (nl != nullptr) {
        pos_ = static_cast<std::size_t>(nl - buffer_.data());
        return;
      }
      pos_ = end_;
      if (!Refill()) return;
    }
  }

  bool Failed() const { return !failure_.empty(); }
  const std::string& Failure() const { return failure_; }
  // Line ends passed so far: the token taken last is on line NewlinesPassed() + 1
  // of the text read.
  std::int64_t NewlinesPassed() const { return newlines_; }

 private:
  static constexpr std::size_t kBufferSize = 1 << 20;

  // Moves to the start of the next token, noting line ends passed and refilling
  // the buffer as needed; false at end of file or on failure.
  bool FindToken() {
    for (;;) {
      const char* const end = buffer_.data() + end_;
      const char* start = buffer_.data() + pos_;
      bool lineStart = lineStart_;
      for (; start != end && IsSeparator(*start); ++start) {
        lineStart |= *start == '\n';
        newlines_ += *start == '\n';
      }
      pos_ = static_cast<std::size_t>(start - buffer_.data());
      lineStart_ = lineStart;
      if (start != end) return true;
      if (!Refill()) return false;
    }
  }

  // Moves past the token that ends at stop.
  void TakeToken(const char* stop, bool& firstOnLine) {
    firstOnLine = lineStart_;
    lineStart_ = false;
    pos_ = static_cast<std::size_t>(stop - buffer_.data());
  }

  // Keeps the unread part and appends the next block; false when nothing more came.
  bool Refill() {
    if (eof_) return false;
    std::memmove(buffer_.data(), buffer_.data() + pos_, end_ - pos_);
    end_ -= pos_;
    pos_ = 0;
    const std::size_t got = std::fread(buffer_.data() + end_, 1, buffer_.size() - end_, file_.get());
    end_ += got;
    if (got == 0) {
      eof_ = true;
      if (std::ferror(file_.get())) Fail(std::strerror(errno));
    }
    return got != 0;
  }

  bool Fail(const std::string& why) {
    failure_ = why;
    eof_ = true;
    pos_ = end_ = 0;
    return false;
  }

  FilePtr file_;
  std::vector<char> buffer_;
  std::size_t pos_ = 0;
  std::size_t end_ = 0;
  bool eof_ = false;
  bool lineStart_ = true;
  std::int64_t newlines_ = 0;
  std::string failure_;
};

HU_HYBGHeader HeaderOf(const CHU_File_EsriGrid& grid) {
  return {grid.GetColCount(), grid.GetRowCount(), grid.GetXllCenter(), grid.GetYllCenter(), grid.GetCellSize(),
          static_cast<float>(grid.GetNoDataValue())};
}

const char* const kHeaderHelp =
    "expected the keywords ncols, nrows, xllcorner or xllcenter, yllcorner or yllcenter and cellsize, "
    "with 1 to 1000000 columns and rows and a positive cell size";

class AsciiRowSource : public IHU_GridRowSource {
 public:
  AsciiRowSource(const HU_HYBGHeader& header, FilePtr data, std::string path, std::int64_t headerLines)
      : tokens_(std::move(data)), path_(std::move(path)), headerLines_(headerLines) {
    header_ = header;
  }

  // A line of more than ncols values gives its first ncols to the grid and drops
  // the rest, as the classic converter does; lines of up to ncols values are read
  // as one stream, so rows may wrap over several lines.

  bool ReadRow(float* row, std::size_t& valuesRead) override {
    const std::size_t ncols = static_cast<std::size_t>(header_.ncols);
    std::fill(row, row + ncols, header_.noData);
    for (valuesRead = 0; valuesRead < ncols;) {
      double value = 0.0;
      bool firstOnLine = false;
      const TextTokenStream::TokenKind kind = tokens_.NextValue(value, firstOnLine);
      if (kind == TextTokenStream::TokenKind::End) break;
      if (kind == TextTokenStream::TokenKind::Word) {
        if (firstOnLine) {  // not a data line
          tokens_.SkipLine();
          continue;
        }
        ++badTokens_;
        value = header_.noData;
      }
      if (DropsFromLongLine(firstOnLine, ncols)) continue;
      row[valuesRead++] = static_cast<float>(value);
    }
    if (tokens_.Failed()) error_ = "cannot read " + Quoted(path_) + ": " + tokens_.Failure();
    return !tokens_.Failed();
  }

  std::int64_t ExtraValues() override {
    const std::size_t ncols = static_cast<std::size_t>(header_.ncols);
    std::int64_t extra = 0;
    std::string_view token;
    for (bool firstOnLine = false; tokens_.Next(token, firstOnLine);)
      if (!DropsFromLongLine(firstOnLine, ncols)) ++extra;
    return extra;
  }

 private:
  bool DropsFromLongLine(bool firstOnLine, std::size_t ncols) {
    if (firstOnLine) lineValues_ = 0;
    if (++lineValues_ <= ncols) return false;
    if (longLineValues_++ == 0) firstLongLine_ = headerLines_ + tokens_.NewlinesPassed() + 1;
    return true;
  }

  TextTokenStream tokens_;
  std::string path_;
  std::int64_t headerLines_;
  std::size_t lineValues_ = 0;
};

// Line ends in the first length bytes of the file (the header), so that data
// lines can be named by their number in the file.
std::int64_t CountNewlines(std::FILE* file, std::uint64_t length) {
  std::int64_t lines = 0;
  char block[4096];
  while (length > 0) {
    const std::size_t got = std::fread(block, 1, std::min<std::uint64_t>(length, sizeof block), file);
    if (got == 0) break;
    lines += std::count(block, block + got, '\n');
    length -= got;
  }
  return lines;
}

class FloatRowSource : public IHU_GridRowSource {
 public:
  explicit FloatRowSource(std::unique_ptr<CHU_File_EsriGridBinary> grid) : grid_(std::move(grid)) {
    header_ = HeaderOf(*grid_);
    grid_->Seek(0, SEEK_SET);
  }

  bool ReadRow(float* row, std::size_t& valuesRead) override {
    const std::size_t ncols = static_cast<std::size_t>(header_.ncols);
    std::fill(row, row + ncols, header_.noData);
    valuesRead = grid_->Read(row, ncols * sizeof(float)) / sizeof(float);
    if (valuesRead < ncols && grid_->HasError()) {
      error_ = "cannot read " + Quoted(grid_->GetFilePath()) + ": " + std::strerror(errno);
      return false;
    }
    return true;
  }

  std::int64_t ExtraValues() override {
    const std::int64_t here = grid_->GetPosition();
    const std::int64_t length = grid_->GetLength();
    return here >= 0 && length > here ? (length - here) / 4 : 0;
  }

 private:
  std::unique_ptr<CHU_File_EsriGridBinary> grid_;
};

std::unique_ptr<IHU_GridRowSource> OpenFloatSource(const std::string& path, std::string& error) {
  auto grid = std::make_unique<CHU_File_EsriGridBinary>(path.c_str());
  if (!grid->FileOpened()) {
    error = "cannot open " + Quoted(path) + ": " + std::strerror(errno);
    return nullptr;
  }
  if (!grid->ReadHeader()) {
    error = Quoted(grid->HeaderPath()) + " is missing or not a valid ESRI grid header: " + kHeaderHelp;
    return nullptr;
  }
  return std::make_unique<FloatRowSource>(std::move(grid));
}

std::unique_ptr<IHU_GridRowSource> OpenAsciiSource(const std::string& path, std::string& error) {
  FilePtr data(std::fopen(path.c_str(), "rb"));
  if (!data) {
    error = "cannot open " + Quoted(path) + ": " + std::strerror(errno);
    return nullptr;
  }
  const int first = std::fgetc(data.get());
  if (first >= 0x80) {
    error = Quoted(path) + " is 16-bit text, which the converter does not read; save it as plain text";
    return nullptr;
  }
  CHU_File_EsriGridASCII grid(path.c_str());
  if (!grid.FileOpened() || !grid.ReadHeader()) {
    error = Quoted(path) + " does not start with a valid ESRI grid header: " + kHeaderHelp;
    return nullptr;
  }
  std::rewind(data.get());
  const std::int64_t headerLines = CountNewlines(data.get(), static_cast<std::uint64_t>(grid.GetPosition()));
  if (fseeko(data.get(), static_cast<off_t>(grid.GetPosition()), SEEK_SET) != 0) {
    error = "cannot read " + Quoted(path) + ": " + std::strerror(errno);
    return nullptr;
  }
  return std::make_unique<AsciiRowSource>(HeaderOf(grid), std::move(data), path, headerLines);
}

}  // namespace

std::unique_ptr<IHU_GridRowSource> HU_OpenGridRowSource(const std::string& path, std::string& error) {
  return CHU_File_EsriGrid_Helper::isFltFile(path) ? OpenFloatSource(path, error) : OpenAsciiSource(path, error);
}
