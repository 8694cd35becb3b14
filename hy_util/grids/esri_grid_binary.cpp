#include "hy_util/grids/esri_grid_binary.h"

#include <algorithm>
#include <climits>

#include "hy_util/grids/binary_grid_writer.h"
#include "hy_util/platform/application.h"

CHU_File_EsriGridBinary::CHU_File_EsriGridBinary(const char* path, unsigned int flags)
    : CHU_File_EsriGrid(path, flags) {}

std::size_t CHU_File_EsriGridBinary::ReadRawRow(float* row) {
  const std::size_t ncols = static_cast<std::size_t>(GetColCount());
  return Read(row, ncols * sizeof(float)) / sizeof(float);
}

bool CHU_File_EsriGridBinary::ReadRowData(float* row) {
  if (header_ && row != nullptr) ReadRawRow(row);
  return true;
}

bool CHU_File_EsriGridBinary::ReadLine(HU_GridPointArray& points, int*) {
  points.clear();
  if (!header_) return false;
  const std::size_t ncols = static_cast<std::size_t>(GetColCount());
  rowBuffer_.resize(ncols);
  if (ReadRawRow(rowBuffer_.data()) < ncols) {
    HU_GetApplication().ProgressStop();
    progressRow_ = 0;
    return false;
  }
  const double y = CurrentRowY();
  for (std::size_t c = 0; c < ncols; ++c) {
    ++pointsRead_;
    AddPoint(points, GetXllCenter() + static_cast<double>(c) * GetCellSize(), y, rowBuffer_[c]);
  }
  AdvanceRow();
  return true;
}

bool CHU_File_EsriGridBinary::ReadData(HU_GridPointArray& points, int* skipped) {
  points.clear();
  if (!header_ || !Seek(0, SEEK_SET)) return false;
  row_ = 0;
  HU_GridPointArray rowPoints;
  // The read that ends the data (a short one) stops the progress display.
  while (ReadLine(rowPoints, skipped)) {
    for (auto& point : rowPoints) points.push_back(std::move(point));
  }
  return true;
}

bool CHU_File_EsriGridBinary::CheckData(int* blocks) {
  if (blocks != nullptr) *blocks = 0;
  if (!header_) return false;
  const std::int64_t here = GetPosition();
  if (!Seek(0, SEEK_SET)) return false;
  const std::uint64_t blockBytes = static_cast<std::uint64_t>(GetRowCount()) * GetColCount() * sizeof(float);
  std::vector<char> chunk(1 << 20);
  std::uint64_t inBlock = 0;
  std::uint64_t whole = 0;
  for (std::size_t got; (got = Read(chunk.data(), chunk.size())) > 0;) {
    inBlock += got;
    whole += inBlock / blockBytes;
    inBlock %= blockBytes;
  }
  Seek(here, SEEK_SET);
  if (blocks != nullptr) *blocks = static_cast<int>(std::min<std::uint64_t>(whole, INT_MAX));
  return whole > 0 && inBlock == 0;
}

bool CHU_File_EsriGridBinary::WriteNextData(const std::string&) { return true; }

bool CHU_File_EsriGridBinary::WriteNextData(float value) {
  return Stream() != nullptr && std::fwrite(&value, sizeof value, 1, Stream()) == 1;
}

bool CHU_File_EsriGridBinary::ConvertRows(CHU_HYBinaryGridWriter& writer, std::int64_t& valuesRead) {
  const std::size_t ncols = static_cast<std::size_t>(GetColCount());
  const std::int64_t expected = static_cast<std::int64_t>(GetRowCount()) * GetColCount();
  const std::int64_t present = GetLength() / 4;
  if (present < expected) {
    // Checked before writing: a header claiming more than the data file holds
    // must not make a large file of no-data.
    ShowConversionMessage("missing " + std::to_string(expected - present) + " of " + std::to_string(expected) +
                          " expected values!");
    return false;
  }
  if (!Seek(0, SEEK_SET)) return false;
  std::vector<float> row(ncols);
  std::vector<std::uint8_t> packed;
  for (int r = 0; r < GetRowCount(); ++r) {
    row.assign(ncols, static_cast<float>(GetNoDataValue()));
    valuesRead += static_cast<std::int64_t>(ReadRawRow(row.data()));
    if (!WriteCompressedRow(writer, r, row.data(), ncols, packed)) return false;
    AdvanceRow();
  }
  return true;
}
