#include "hy_util/grids/binary_grid_file.h"

#include <algorithm>

#include "hy_util/geometry/point.h"
#include "hy_util/geometry/polygon.h"
#include "hy_util/geometry/rect.h"
#include "hy_util/grids/binary_grid_lookup.h"
#include "hy_util/platform/file.h"

CHU_HYBinaryGridFile::CHU_HYBinaryGridFile(const std::string& fileName) : m_fileName(fileName) {}

bool CHU_HYBinaryGridFile::ReadHeader() {
  if (m_headerLoaded) return true;
  CHU_StdioFile file;
  if (!file.Open(m_fileName, HU_modeRead | HU_typeBinary)) {
    m_lastError = HU_HYBGOpenMessage(m_fileName);
    return false;
  }
  if (!HU_ReadHYBGHeader(file, m_fileName, m_header, m_rowOffsets, m_lastError)) {
    m_rowOffsets.clear();
    return false;
  }
  m_headerLoaded = true;
  return true;
}

bool CHU_HYBinaryGridFile::OpenForQuery(CHU_StdioFile& file, std::int64_t& fileSize) {
  if (!file.Open(m_fileName, HU_modeRead | HU_typeBinary)) {
    m_lastError = HU_HYBGOpenMessage(m_fileName);
    return false;
  }
  fileSize = file.GetLength();
  return true;
}

bool CHU_HYBinaryGridFile::ReadValuesFromRow(CHU_StdioFile& file, std::int64_t fileSize, int row, int c0,
                                             int c1, float* out) {
  std::vector<float> values(static_cast<std::size_t>(m_header.ncols));
  CHU_HYBGRowReader reader(m_fileName, m_header, m_rowOffsets, HU_HYBGInflater::Zlib);
  if (!reader.ReadRow(file, fileSize, row, values.data(), m_lastError)) return false;
  std::copy(values.begin() + c0, values.begin() + c1 + 1, out);
  return true;
}

bool CHU_HYBinaryGridFile::PerformBilinearInterpolation(float zUL, float zUR, float zLL, float zLR, double x,
                                                        double y, double x0, double y0, double x1, double y1,
                                                        float& result) {
  HU_HYBGCell cell;
  cell.x0 = x0;
  cell.y0 = y0;
  cell.x1 = x1;
  cell.y1 = y1;
  return HU_HYBGInterpolate(zUL, zUR, zLL, zLR, m_header.noData, m_header.cellSize, x, y, cell, result);
}

HYBG_ResultCode CHU_HYBinaryGridFile::GetZValue(double x, double y, float& value,
                                                HYBG_ValueInterpolationMethod method) {
  if (!ReadHeader()) return HYBG_ERROR;
  const HU_HYBGBounds bounds = HU_HYBGGetBounds(m_header);
  if (!HU_HYBGContains(bounds, x, y)) {
    m_lastError = HU_HYBGPointOutsideMessage(m_fileName, x, y, bounds);
    return HYBG_NO_DATA;
  }
  CHU_StdioFile file;
  std::int64_t fileSize = 0;
  if (!OpenForQuery(file, fileSize)) return HYBG_ERROR;
  const HU_HYBGCell cell = HU_HYBGLocate(m_header, bounds, x, y);
  if (method == HYBG_BILINEAR && !HU_HYBGIsOnUpperLeftNode(cell, x, y))
    return BilinearValue(file, fileSize, x, y, value);
  if (method == HYBG_NEAREST || method == HYBG_BILINEAR) return NearestValue(file, fileSize, x, y, value);
  m_lastError = HU_HYBGPointNoDataMessage(m_fileName, x, y);
  return HYBG_NO_DATA;
}

HYBG_ResultCode CHU_HYBinaryGridFile::BilinearValue(CHU_StdioFile& file, std::int64_t fileSize, double x,
                                                    double y, float& value) {
  const HU_HYBGCell cell = HU_HYBGLocate(m_header, HU_HYBGGetBounds(m_header), x, y);
  const float nd = m_header.noData;
  float upper[2] = {nd, nd};
  float lower[2] = {nd, nd};
  if (!ReadValuesFromRow(file, fileSize, cell.r0, cell.c0, cell.c1, upper) ||
      !ReadValuesFromRow(file, fileSize, cell.r1, cell.c0, cell.c1, lower))
    return HYBG_ERROR;
  if (cell.c1 == cell.c0) upper[1] = lower[1] = nd;
  if (cell.r1 == cell.r0) lower[0] = lower[1] = nd;
  float result = 0.0f;
  if (PerformBilinearInterpolation(upper[0], upper[1], lower[0], lower[1], x, y, cell.x0, cell.y0, cell.x1,
                                   cell.y1, result)) {
    value = result;
    return HYBG_OK;
  }
  m_lastError = HU_HYBGPointNoDataMessage(m_fileName, x, y);
  return HYBG_NO_DATA;
}

HYBG_ResultCode CHU_HYBinaryGridFile::NearestValue(CHU_StdioFile& file, std::int64_t fileSize, double x,
                                                   double y, float& value) {
  const HU_HYBGCell cell = HU_HYBGLocate(m_header, HU_HYBGGetBounds(m_header), x, y);
  int row = 0;
  int column = 0;
  HU_HYBGNearestNode(cell, x, y, row, column);
  float node = m_header.noData;
  if (!ReadValuesFromRow(file, fileSize, row, column, column, &node)) return HYBG_ERROR;
  if (node != m_header.noData) {
    value = node;
    return HYBG_OK;
  }
  m_lastError = HU_HYBGPointNoDataMessage(m_fileName, x, y);
  return HYBG_NO_DATA;
}

HYBG_ResultCode CHU_HYBinaryGridFile::GetAverageZValueOverPolygon(const CHU_DPolygon& polygon, float& average) {
  if (!ReadHeader()) return HYBG_ERROR;
  const HU_HYBGBounds bounds = HU_HYBGGetBounds(m_header);
  CHU_DRect extent;
  HU_HYBGPolygonRange range;
  if (!polygon.GetExtent(&extent) ||
      !HU_HYBGGetPolygonRange(m_header, bounds, extent.Left(), extent.Top(), extent.Right(), extent.Bottom(),
                              range)) {
    m_lastError = HU_HYBGPolygonOutsideMessage(m_fileName, bounds);
    return HYBG_NO_DATA;
  }
  CHU_StdioFile file;
  std::int64_t fileSize = 0;
  if (!OpenForQuery(file, fileSize)) return HYBG_ERROR;
  double sum = 0.0;
  std::int64_t count = 0;
  bool metNull = range.touchesEdge;
  if (SumInsideNodes(polygon, file, fileSize, range.c0, range.c1, range.r0, range.r1, sum, count, metNull) !=
      HYBG_OK)
    return HYBG_ERROR;
  if (count > 0) average = static_cast<float>(sum / static_cast<double>(count));
  if (!metNull) return HYBG_OK;
  m_lastError = HU_HYBGPolygonNullDataMessage(m_fileName, count == 0);
  return count == 0 ? HYBG_NO_DATA : HYBG_PARTIAL;
}

HYBG_ResultCode CHU_HYBinaryGridFile::SumInsideNodes(const CHU_DPolygon& polygon, CHU_StdioFile& file,
                                                     std::int64_t fileSize, int c0, int c1, int r0, int r1,
                                                     double& sum, std::int64_t& count, bool& metNull) {
  if (c1 < c0) return HYBG_OK;
  const HU_HYBGBounds bounds = HU_HYBGGetBounds(m_header);
  const double s = m_header.cellSize;
  std::vector<float> values(static_cast<std::size_t>(c1 - c0 + 1));
  for (int r = r0; r <= r1; ++r) {
    const double y = bounds.ymax - r * s;
    if (!ReadValuesFromRow(file, fileSize, r, c0, c1, values.data())) return HYBG_ERROR;
    for (int c = c0; c <= c1; ++c) {
      if (!polygon.PtInPoly(CHU_DPoint(bounds.xmin + c * s, y))) continue;
      const float v = values[static_cast<std::size_t>(c - c0)];
      if (v == m_header.noData) {
        metNull = true;
      } else {
        ++count;
        sum += v;
      }
    }
  }
  return HYBG_OK;
}
