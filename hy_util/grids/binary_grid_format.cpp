#include "hy_util/grids/binary_grid_format.h"

#include <bit>
#include <cmath>
#include <cstdarg>
#include <cstdio>
#include <libdeflate.h>
#include <zlib.h>

std::string HU_HYBGFormat(const char* format, ...) {
  std::va_list args;
  va_start(args, format);
  std::va_list copy;
  va_copy(copy, args);
  const int length = std::vsnprintf(nullptr, 0, format, copy);
  va_end(copy);
  std::string text(length > 0 ? static_cast<std::size_t>(length) : 0, '\0');
  if (length > 0) std::vsnprintf(text.data(), text.size() + 1, format, args);
  va_end(args);
  return text;
}

// Row values are inflated straight into float arrays: the file's little-endian
// float32 is the host's own layout.
static_assert(std::endian::native == std::endian::little, "big-endian hosts need a byte swap of rows");

namespace {

std::uint32_t LittleEndian32(const unsigned char* b) {
  return static_cast<std::uint32_t>(b[0]) | (static_cast<std::uint32_t>(b[1]) << 8) |
         (static_cast<std::uint32_t>(b[2]) << 16) | (static_cast<std::uint32_t>(b[3]) << 24);
}

std::uint64_t LittleEndian64(const unsigned char* b) {
  return static_cast<std::uint64_t>(LittleEndian32(b)) |
         (static_cast<std::uint64_t>(LittleEndian32(b + 4)) << 32);
}

bool ReadU32(CHU_StdioFile& file, std::uint32_t& value) {
  unsigned char bytes[4];
  if (file.Read(bytes, 4) != 4) return false;
  value = LittleEndian32(bytes);
  return true;
}

bool ReadI32(CHU_StdioFile& file, std::int32_t& value) {
  std::uint32_t raw = 0;
  if (!ReadU32(file, raw)) return false;
  value = static_cast<std::int32_t>(raw);
  return true;
}

bool ReadF64(CHU_StdioFile& file, double& value) {
  unsigned char bytes[8];
  if (file.Read(bytes, 8) != 8) return false;
  value = std::bit_cast<double>(LittleEndian64(bytes));
  return true;
}

bool ReadF32(CHU_StdioFile& file, float& value) {
  std::uint32_t raw = 0;
  if (!ReadU32(file, raw)) return false;
  value = std::bit_cast<float>(raw);
  return true;
}

bool Fail(std::string& error, const char* format, const std::string& fileName) {
  error = HU_HYBGFormat(format, fileName.c_str());
  return false;
}

bool ReadMagicAndVersion(CHU_StdioFile& file, const std::string& name, std::string& error) {
  std::uint32_t magic = 0;
  if (!ReadU32(file, magic))
    return Fail(error, "Couldn't read magic number from header of grid file '%s'.", name);
  if (magic != HYBG_FILE_MAGIC) {
    error = HU_HYBGFormat(
        "File '%s' is not an HY binary grid file or has been corrupted: first 4 bytes are 0x%X.",
        name.c_str(), magic);
    return false;
  }
  std::int32_t version = 0;
  if (!ReadI32(file, version))
    return Fail(error, "Couldn't read version number from header of grid file '%s'.", name);
  if (version != HYBG_FILE_VERSION) {
    error = HU_HYBGFormat("HY binary grid file '%s' is a different version (%d) to expected (%d).",
                          name.c_str(), version, HYBG_FILE_VERSION);
    return false;
  }
  return true;
}

bool ReadFields(CHU_StdioFile& file, const std::string& name, HU_HYBGHeader& h, std::string& error) {
  if (!ReadI32(file, h.ncols))
    return Fail(error, "Couldn't read number of columns from header of grid file '%s'.", name);
  if (!ReadI32(file, h.nrows))
    return Fail(error, "Couldn't read number of rows from header of grid file '%s'.", name);
  if (!ReadF64(file, h.xllcenter))
    return Fail(error, "Couldn't read lower-left X coordinate from header of grid file '%s'.", name);
  if (!ReadF64(file, h.yllcenter))
    return Fail(error, "Couldn't read lower-left Y coordinate from header of grid file '%s'.", name);
  if (!ReadF64(file, h.cellSize))
    return Fail(error, "Couldn't read cell size from header of grid file '%s'.", name);
  if (!ReadF32(file, h.noData))
    return Fail(error, "Couldn't read no-data value from header of grid file '%s'.", name);
  return true;
}

// A grid the queries can work on: at least one node each way, a row small enough
// to inflate from a file of this size, and a positive cell size with a finite extent.
bool ShapeIsUsable(const HU_HYBGHeader& h, std::int64_t fileSize) {
  if (h.ncols < 1 || h.ncols > HYBG_MAX_COLUMNS || h.nrows < 1) return false;
  if (static_cast<std::int64_t>(h.ncols) * 4 > fileSize * HYBG_MAX_INFLATE_RATIO) return false;
  if (!std::isfinite(h.cellSize) || !(h.cellSize > 0.0)) return false;
  const double xmax = h.xllcenter + (h.ncols - 1) * h.cellSize;
  const double ymax = h.yllcenter + (h.nrows - 1) * h.cellSize;
  return std::isfinite(h.xllcenter) && std::isfinite(h.yllcenter) && std::isfinite(xmax) &&
         std::isfinite(ymax);
}

bool ReadOffsetTable(CHU_StdioFile& file, std::int64_t fileSize, const std::string& name,
                     std::int32_t nrows, std::vector<std::uint32_t>& offsets, std::string& error) {
  offsets.clear();
  const std::int64_t tableBytes = static_cast<std::int64_t>(nrows) * 4;
  const char* message = "Couldn't read array of row offsets from header of grid file '%s'.";
  if (tableBytes > fileSize - static_cast<std::int64_t>(HYBG_HEADER_SIZE)) return Fail(error, message, name);
  std::vector<unsigned char> raw(static_cast<std::size_t>(tableBytes));
  if (file.Read(raw.data(), raw.size()) != raw.size()) return Fail(error, message, name);
  offsets.resize(static_cast<std::size_t>(nrows));
  for (std::size_t i = 0; i < offsets.size(); ++i) offsets[i] = LittleEndian32(raw.data() + 4 * i);
  return true;
}

}  // namespace

bool HU_ReadHYBGHeader(CHU_StdioFile& file, const std::string& fileName, HU_HYBGHeader& header,
                       std::vector<std::uint32_t>& rowOffsets, std::string& error) {
  const std::int64_t fileSize = file.GetLength();
  if (!ReadMagicAndVersion(file, fileName, error) || !ReadFields(file, fileName, header, error))
    return false;
  if (!ShapeIsUsable(header, fileSize)) {
    error = HU_HYBGFormat(
        "HY binary grid file '%s' has an unusable header: %d columns, %d rows, cell size %g, "
        "lower-left node (%g, %g).",
        fileName.c_str(), header.ncols, header.nrows, header.cellSize, header.xllcenter,
        header.yllcenter);
    return false;
  }
  return ReadOffsetTable(file, fileSize, fileName, header.nrows, rowOffsets, error);
}

void CHU_HYBGRowReader::DecompressorDeleter::operator()(libdeflate_decompressor* d) const {
  libdeflate_free_decompressor(d);
}

CHU_HYBGRowReader::CHU_HYBGRowReader(const std::string& fileName, const HU_HYBGHeader& header,
                                     const std::vector<std::uint32_t>& rowOffsets,
                                     HU_HYBGInflater inflater)
    : fileName_(fileName), header_(header), rowOffsets_(rowOffsets), inflater_(inflater) {
  if (inflater_ == HU_HYBGInflater::Libdeflate) decompressor_.reset(libdeflate_alloc_decompressor());
}

CHU_HYBGRowReader::~CHU_HYBGRowReader() = default;

bool CHU_HYBGRowReader::ReadRow(CHU_StdioFile& file, std::int64_t fileSize, int row, float* out,
                                std::string& error) {
  const char* name = fileName_.c_str();
  const std::uint32_t offset = rowOffsets_[static_cast<std::size_t>(row)];
  if (static_cast<std::int64_t>(offset) > fileSize || !file.Seek(offset, SEEK_SET)) {
    error = HU_HYBGFormat("HY binary grid file '%s' may be corrupt: could not seek to file offset %u (0x%X).",
                          name, offset, offset);
    return false;
  }
  std::uint32_t length = 0;
  if (!ReadU32(file, length)) {
    error = HU_HYBGFormat(
        "HY binary grid file '%s' may be corrupt: could not read length of compressed data for row #%d.",
        name, row);
    return false;
  }
  const std::int64_t available = fileSize - static_cast<std::int64_t>(offset) - 4;
  bool readOk = static_cast<std::int64_t>(length) <= available;
  if (readOk) {
    compressed_.resize(length);
    readOk = file.Read(compressed_.data(), length) == length;
  }
  if (!readOk) {
    error = HU_HYBGFormat(
        "HY binary grid file '%s' may be corrupt: could not read compressed data for row #%d.", name, row);
    return false;
  }
  return Inflate(out, row, error);
}

bool CHU_HYBGRowReader::Inflate(float* out, int row, std::string& error) {
  const std::size_t rowBytes = static_cast<std::size_t>(header_.ncols) * sizeof(float);
  std::size_t produced = 0;
  bool ok = false;
  if (inflater_ == HU_HYBGInflater::Libdeflate && decompressor_) {
    std::size_t consumed = 0;
    ok = libdeflate_zlib_decompress_ex(decompressor_.get(), compressed_.data(), compressed_.size(), out,
                                       rowBytes, &consumed, &produced) == LIBDEFLATE_SUCCESS;
  } else {
    uLongf destLen = static_cast<uLongf>(rowBytes);
    ok = uncompress(reinterpret_cast<Bytef*>(out), &destLen, compressed_.data(),
                    static_cast<uLong>(compressed_.size())) == Z_OK;
    produced = destLen;
  }
  if (!ok) {
    error = HU_HYBGFormat("HY binary grid file '%s' may be corrupt: could not decompress data for row #%d.",
                          fileName_.c_str(), row);
    return false;
  }
  for (std::size_t i = produced / sizeof(float); i < static_cast<std::size_t>(header_.ncols); ++i)
    out[i] = header_.noData;
  return true;
}
