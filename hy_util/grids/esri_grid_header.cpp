#include "hy_util/grids/esri_grid_header.h"

#include <charconv>
#include <cmath>
#include <vector>

#include "hy_util/core/string_manager.h"
#include "hy_util/grids/grid_text_number.h"
#include "hy_util/platform/application.h"

namespace {

// "%.3f" in the C locale's format, whatever the process locale is.
std::string Fixed3(double value) {
  char buffer[400];
  const auto result = std::to_chars(buffer, buffer + sizeof buffer, value, std::chars_format::fixed, 3);
  return std::string(buffer, result.ptr);
}

bool PutLine(std::FILE* stream, const char* keyword, const std::string& value) {
  const std::string line = std::string(keyword) + value + "\n";
  return std::fwrite(line.data(), 1, line.size(), stream) == line.size();
}

}  // namespace

CHU_File_EsriGridHeader::CHU_File_EsriGridHeader(const char* path, unsigned int flags)
    : CHU_File(path, " \t", flags), path_(path ? path : "") {}

void CHU_File_EsriGridHeader::Reset() {
  ncols_ = nrows_ = -1;
  xllcenter_ = yllcenter_ = xllcorner_ = yllcorner_ = cellsize_ = 0.0;
  nodata_ = kDefaultNoData;
  seenNcols_ = seenNrows_ = seenCellSize_ = false;
  seenXCenter_ = seenYCenter_ = seenXCorner_ = seenYCorner_ = false;
  progressStarted_ = false;
}

CHU_File_EsriGridHeader::Keyword CHU_File_EsriGridHeader::Lookup(const std::string& word) {
  if (word == "ncols") return Keyword::Ncols;
  if (word == "nrows") return Keyword::Nrows;
  if (word == "xllcenter") return Keyword::XllCenter;
  if (word == "yllcenter") return Keyword::YllCenter;
  if (word == "xllcorner") return Keyword::XllCorner;
  if (word == "yllcorner") return Keyword::YllCorner;
  if (word == "cellsize") return Keyword::CellSize;
  if (word == "NODATA_value") return Keyword::NoData;
  return Keyword::None;
}

bool CHU_File_EsriGridHeader::Apply(Keyword keyword, const std::string& value, int& progressRow) {
  switch (keyword) {
    case Keyword::Ncols:
      return seenNcols_ = HU_ParseGridInteger(value, ncols_);
    case Keyword::Nrows:
      if (!HU_ParseGridInteger(value, nrows_)) return false;
      seenNrows_ = true;
      progressRow = 0;
      if (nrows_ > 0 && nrows_ <= kMaxDimension) {
        HU_GetApplication().ProgressStart(CStringManager::GetStr("HYSTR_PROGRESS_READING_GRID_FILE"), nrows_);
        progressStarted_ = true;
      }
      return true;
    case Keyword::XllCenter:
      return seenXCenter_ = HU_ParseGridNumber(value, xllcenter_);
    case Keyword::YllCenter:
      return seenYCenter_ = HU_ParseGridNumber(value, yllcenter_);
    case Keyword::XllCorner:
      return seenXCorner_ = HU_ParseGridNumber(value, xllcorner_);
    case Keyword::YllCorner:
      return seenYCorner_ = HU_ParseGridNumber(value, yllcorner_);
    case Keyword::CellSize:
      return seenCellSize_ = HU_ParseGridNumber(value, cellsize_);
    case Keyword::NoData:
      return HU_ParseGridNumber(value, nodata_);
    case Keyword::None:
      break;
  }
  return false;
}

bool CHU_File_EsriGridHeader::IsComplete() const {
  return seenNcols_ && seenNrows_ && seenCellSize_ && (seenXCenter_ || seenXCorner_) &&
         (seenYCenter_ || seenYCorner_);
}

bool CHU_File_EsriGridHeader::HasSaneValues() const {
  return ncols_ >= 1 && ncols_ <= kMaxDimension && nrows_ >= 1 && nrows_ <= kMaxDimension &&
         std::isfinite(cellsize_) && cellsize_ > 0.0 && std::isfinite(xllcenter_) &&
         std::isfinite(yllcenter_) && std::isfinite(xllcorner_) && std::isfinite(yllcorner_);
}

void CHU_File_EsriGridHeader::DeriveCentres() {
  if (!seenXCenter_) xllcenter_ = xllcorner_ + 0.5 * cellsize_;
  if (!seenYCenter_) yllcenter_ = yllcorner_ + 0.5 * cellsize_;
}

bool CHU_File_EsriGridHeader::Finish() {
  if (!IsComplete() || !HasSaneValues()) return Fail();
  DeriveCentres();
  return std::isfinite(xllcenter_) && std::isfinite(yllcenter_) ? true : Fail();
}

bool CHU_File_EsriGridHeader::Fail() {
  // A progress display started for this header must not be left showing.
  if (progressStarted_) HU_GetApplication().ProgressStop();
  progressStarted_ = false;
  return false;
}

bool CHU_File_EsriGridHeader::Read(int& progressRow) { return Read(*this, progressRow); }

bool CHU_File_EsriGridHeader::Read(CHU_File& source, int& progressRow) {
  Reset();
  std::vector<std::string> tokens;
  for (;;) {
    int charsRead = 0;
    if (!source.ReadLine(tokens, charsRead)) return Finish();  // end of file
    if (tokens.empty()) continue;
    const Keyword keyword = tokens.size() == 2 ? Lookup(tokens[0]) : Keyword::None;
    if (keyword == Keyword::None) {
      // Not a header line: when the header is complete it is the first data line,
      // given back to the data reader.
      if (!IsComplete()) return Fail();
      const std::int64_t lineStart = source.GetLineStart();
      if (lineStart < 0 || !source.Seek(lineStart, SEEK_SET)) return Fail();
      return Finish();
    }
    if (!Apply(keyword, tokens[1], progressRow)) return Fail();
    if (keyword == Keyword::NoData && IsComplete()) return Finish();
  }
}

bool CHU_File_EsriGridHeader::Write(std::FILE* stream) const {
  if (stream == nullptr) return false;
  return PutLine(stream, "ncols           ", std::to_string(ncols_)) &&
         PutLine(stream, "nrows           ", std::to_string(nrows_)) &&
         PutLine(stream, "xllcenter       ", Fixed3(xllcenter_)) &&
         PutLine(stream, "yllcenter       ", Fixed3(yllcenter_)) &&
         PutLine(stream, "cellsize        ", Fixed3(cellsize_)) &&
         PutLine(stream, "NODATA_value    ", Fixed3(nodata_));
}

bool CHU_File_EsriGridHeader::Write() const {
  if (path_.empty()) return false;
  std::FILE* stream = std::fopen(path_.c_str(), "wb");
  if (stream == nullptr) return false;
  const bool written = Write(stream);
  return (std::fclose(stream) == 0) && written;
}
