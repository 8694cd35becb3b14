#include "hy_util/grids/esri_grid.h"

#include <algorithm>
#include <cstdio>

#include "hy_util/grids/binary_grid_writer.h"
#include "hy_util/grids/grid_row_codec.h"
#include "hy_util/grids/grid_text_number.h"
#include "hy_util/platform/application.h"

namespace {

const char* const kConvertPrefix = "CHU_File_EsriGrid::ConvertToHYBinaryGridFile(): ";

}  // namespace

CHU_File_EsriGrid::CHU_File_EsriGrid(const char* path, unsigned int flags) : CHU_File(path, " \t", flags) {}

CHU_File_EsriGrid::~CHU_File_EsriGrid() = default;

bool CHU_File_EsriGrid::IsValidToken(const std::string& token) {
  double value = 0.0;
  return HU_ParseGridNumber(token, value);
}

std::int32_t CHU_File_EsriGrid::GetColCount() const { return header_ ? header_->GetColCount() : -1; }
std::int32_t CHU_File_EsriGrid::GetRowCount() const { return header_ ? header_->GetRowCount() : -1; }
double CHU_File_EsriGrid::GetXllCenter() const { return header_ ? header_->GetXllCenter() : 0.0; }
double CHU_File_EsriGrid::GetYllCenter() const { return header_ ? header_->GetYllCenter() : 0.0; }
double CHU_File_EsriGrid::GetCellSize() const { return header_ ? header_->GetCellSize() : 0.0; }
double CHU_File_EsriGrid::GetNoDataValue() const {
  return header_ ? header_->GetNoDataValue() : CHU_File_EsriGridHeader::kDefaultNoData;
}

CHU_File_EsriGridHeader& CHU_File_EsriGrid::CreateHeader() {
  header_ = std::make_unique<CHU_File_EsriGridHeader>(IsSingleFile() ? "" : HeaderPath().c_str(),
                                                      HU_modeWrite | HU_modeCreate | HU_typeText);
  return *header_;
}

bool CHU_File_EsriGrid::IsSingleFile() const { return true; }

std::string CHU_File_EsriGrid::HeaderPath() const {
  const std::string& path = GetFilePath();
  if (IsSingleFile()) return path;
  const std::size_t slash = path.find_last_of('/');
  const std::size_t dot = path.find_last_of('.');
  if (dot == std::string::npos || (slash != std::string::npos && dot < slash)) return path + ".hdr";
  return path.substr(0, dot) + ".hdr";
}

bool CHU_File_EsriGrid::ReadHeader() {
  row_ = 0;
  pointsRead_ = 0;
  bool read = false;
  if (IsSingleFile()) {
    header_ = std::make_unique<CHU_File_EsriGridHeader>("");
    read = FileOpened() && header_->Read(*this, progressRow_);
  } else {
    header_ = std::make_unique<CHU_File_EsriGridHeader>(HeaderPath().c_str());
    read = header_->FileOpened() && header_->Read(progressRow_);
  }
  if (!read) header_.reset();
  return read;
}

double CHU_File_EsriGrid::CurrentRowY() const {
  return GetYllCenter() + (GetRowCount() - 1) * GetCellSize() - row_ * GetCellSize();
}

bool CHU_File_EsriGrid::IsNoData(double value) const {
  // Exact comparison in double: with a "nan" no-data value, NaN values still
  // differ from it and give points.
  return value == GetNoDataValue();
}

void CHU_File_EsriGrid::AddPoint(HU_GridPointArray& points, double x, double y, double value) {
  if (IsNoData(value)) return;
  auto point = std::make_unique<CHU_DPoint>();
  point->SetPt(x, y, value);
  points.push_back(std::move(point));
}

void CHU_File_EsriGrid::AdvanceRow() {
  ++row_;
  const int nrows = GetRowCount();
  if (row_ > nrows) return;
  if (row_ - progressRow_ >= (nrows + 99) / 100) {
    HU_GetApplication().ProgressSetPos(row_);
    progressRow_ = row_;
  }
}

bool CHU_File_EsriGrid::ReadDataTokens(std::vector<std::string>& tokens, int* skipped) {
  for (;;) {
    int charsRead = 0;
    if (!CHU_File::ReadLine(tokens, charsRead)) return false;
    if (!tokens.empty() && IsValidToken(tokens.front())) return true;
    if (skipped != nullptr) ++*skipped;
  }
}

bool CHU_File_EsriGrid::ReadRowData(float*) { return true; }

bool CHU_File_EsriGrid::ReadLine(HU_GridPointArray& points, int* skipped) {
  points.clear();
  if (!header_) return false;
  std::vector<std::string> tokens;
  if (!ReadDataTokens(tokens, skipped)) {
    if (skipped == nullptr) HU_GetApplication().ProgressStop();
    return false;
  }
  const double y = CurrentRowY();
  double x = GetXllCenter();
  const std::size_t count = std::min(static_cast<std::size_t>(GetColCount()), tokens.size());
  for (std::size_t c = 0; c < count; ++c) {
    double value = 0.0;
    ++pointsRead_;
    if (HU_ParseGridNumber(tokens[c], value)) AddPoint(points, x, y, value);
    x += GetCellSize();
  }
  AdvanceRow();
  return true;
}

bool CHU_File_EsriGrid::ReadData(HU_GridPointArray& points, int* skipped) {
  points.clear();
  if (!header_) return false;
  const int ncols = GetColCount();
  int column = 0;
  double x = GetXllCenter();
  std::vector<std::string> tokens;
  // Every value up to the end of the file is read; values past the last row give
  // points south of the grid, as the rows before them do.
  while (ReadDataTokens(tokens, skipped)) {
    for (std::size_t i = 0; i < tokens.size(); ++i) {
      double value = 0.0;
      ++pointsRead_;
      if (HU_ParseGridNumber(tokens[i], value)) AddPoint(points, x, CurrentRowY(), value);
      x += GetCellSize();
      if (++column == ncols) {
        column = 0;
        x = GetXllCenter();
        AdvanceRow();
      }
    }
  }
  HU_GetApplication().ProgressStop();
  return true;
}

bool CHU_File_EsriGrid::CheckData(int* blocks) {
  if (blocks != nullptr) *blocks = 0;
  return true;
}

bool CHU_File_EsriGrid::WriteHeader() { return header_ && Stream() != nullptr && header_->Write(Stream()); }

bool CHU_File_EsriGrid::WriteNextData(const std::string&) { return true; }

bool CHU_File_EsriGrid::WriteNextData(float) { return true; }

void CHU_File_EsriGrid::ShowConversionMessage(const std::string& text) {
  HU_GetApplication().ShowMessage(kConvertPrefix + text, HU_MessageKind::Ok);
}

bool CHU_File_EsriGrid::WriteCompressedRow(CHU_HYBinaryGridWriter& writer, int row, const float* values,
                                           std::size_t count, std::vector<std::uint8_t>& packed) {
  CHU_GridRowCompressor compressor(HU_GridCodec::Zlib);
  if (!compressor.Compress(values, count * sizeof(float), packed)) {
    ShowConversionMessage("error compressing row " + std::to_string(row) + "!");
    return false;
  }
  const HU_GridWriteStatus status = writer.WriteRow(row, packed.data(), static_cast<std::uint32_t>(packed.size()));
  if (status == HU_GridWriteStatus::TooLarge) {
    ShowConversionMessage("the output file would pass 4 GiB at row " + std::to_string(row) +
                          " (row offsets are 32-bit); conversion stopped!");
  } else if (status != HU_GridWriteStatus::Ok) {
    ShowConversionMessage("error writing row " + std::to_string(row) + "!");
  }
  return status == HU_GridWriteStatus::Ok;
}

bool CHU_File_EsriGrid::ConvertRows(CHU_HYBinaryGridWriter& writer, std::int64_t& valuesRead) {
  const std::size_t ncols = static_cast<std::size_t>(GetColCount());
  // The buffer keeps the previous line's values where a line is short, as the
  // classic converter did; only the values of the line itself are compressed.
  std::vector<float> buffer(ncols, static_cast<float>(GetNoDataValue()));
  std::vector<std::string> tokens;
  std::vector<std::uint8_t> packed;
  for (int line = 0; ReadDataTokens(tokens, nullptr); ++line) {
    const std::size_t count = std::min(ncols, tokens.size());
    for (std::size_t c = 0; c < count; ++c) {
      double value = 0.0;
      buffer[c] = static_cast<float>(HU_ParseGridNumber(tokens[c], value) ? value : GetNoDataValue());
    }
    valuesRead += static_cast<std::int64_t>(count);
    if (!WriteCompressedRow(writer, line, buffer.data(), count, packed)) return false;
    AdvanceRow();
  }
  return true;
}

bool CHU_File_EsriGrid::WriteMissingValues(std::FILE* stream, std::int64_t missing, std::int64_t position,
                                           std::int64_t end) {
  // The classic converter pads with no-data doubles right after the offset table;
  // the padding stays within the file written so far.
  const std::int64_t room = (end - position) / 8;
  std::int64_t left = std::max<std::int64_t>(0, std::min(missing, room));
  const std::vector<double> chunk(65536, GetNoDataValue());
  while (left > 0) {
    const std::size_t n = static_cast<std::size_t>(std::min<std::int64_t>(left, 65536));
    if (std::fwrite(chunk.data(), sizeof(double), n, stream) != n) return false;
    left -= static_cast<std::int64_t>(n);
  }
  return true;
}

bool CHU_File_EsriGrid::ConvertToHYBinaryGridFile(std::FILE* stream) {
  if (stream == nullptr || !ReadHeader()) return false;
  CHU_HYBinaryGridWriter writer(stream, maxRowOffset_);
  const HU_GridWriteStatus headerStatus = writer.WriteHeader(
      {GetColCount(), GetRowCount(), GetXllCenter(), GetYllCenter(), GetCellSize(),
       static_cast<float>(GetNoDataValue())});
  if (headerStatus == HU_GridWriteStatus::InitialZerosFailed) {
    ShowConversionMessage("error writing initial zeros to row offset table in header!");
  }
  std::int64_t valuesRead = 0;
  bool converted = headerStatus == HU_GridWriteStatus::Ok && ConvertRows(writer, valuesRead);
  if (converted) {
    const HU_GridWriteStatus tableStatus = writer.WriteOffsetTable();
    if (tableStatus == HU_GridWriteStatus::SeekBackFailed) {
      ShowConversionMessage("error seeking back to row offset table in header!");
    } else if (tableStatus == HU_GridWriteStatus::OffsetTableFailed) {
      ShowConversionMessage("error writing overwriting row offsets in header!");
    }
    converted = tableStatus == HU_GridWriteStatus::Ok;
  }
  const std::int64_t expected = static_cast<std::int64_t>(GetRowCount()) * GetColCount();
  if (converted && valuesRead != expected) {
    const std::int64_t missing = expected - valuesRead;
    ShowConversionMessage("missing " + std::to_string(missing) + " of " + std::to_string(expected) +
                          " expected values!");
    if (missing > 0) {
      converted = WriteMissingValues(stream, missing, writer.TableEnd(),
                                     static_cast<std::int64_t>(writer.BytesWritten()));
    }
  }
  HU_GetApplication().ProgressStop();
  return converted;
}

bool CHU_File_EsriGrid::ConvertToHYBinaryGridFile(const std::string& path) {
  std::FILE* stream = std::fopen(path.c_str(), "wb");
  if (stream == nullptr) return false;
  bool converted = ConvertToHYBinaryGridFile(stream);
  if (std::fclose(stream) != 0) converted = false;
  if (!converted) std::remove(path.c_str());  // never leave a partial file behind
  return converted;
}
