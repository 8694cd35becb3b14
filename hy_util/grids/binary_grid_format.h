#pragma once
// The HY binary grid file layout, shared by its reader, the batch query classes and
// the converters that write it.
//
// Format note. All numbers are little-endian. A 44-byte header: the magic "HYBG",
// int32 version (3), int32 ncols, int32 nrows, float64 x and y of the lower-left
// node, float64 cell size, float32 no-data value. Then nrows uint32 absolute file
// offsets of the row records, northernmost row first. A row record is a uint32
// length L followed by L bytes of one zlib stream whose content is the row's values
// as float32, west to east.
//
// Reading is defensive: the header's counts, cell size and corner are checked
// against the file size and sane limits before anything is allocated, and a row
// record's offset and length are checked before seeking and reading. A row whose
// stream inflates to fewer than ncols values is accepted; its missing values read as
// the no-data value (a converter writes such rows for short lines of its input).

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "hy_util/platform/file.h"

constexpr std::uint32_t HYBG_FILE_MAGIC = 0x47425948u;  // "HYBG" read as little-endian
constexpr std::int32_t HYBG_FILE_VERSION = 3;
constexpr std::size_t HYBG_HEADER_SIZE = 44;
// Largest column count accepted: one inflated row stays below 1 GiB.
constexpr std::int32_t HYBG_MAX_COLUMNS = 1 << 28;
// Deflate cannot expand data by more than this factor, so a row of ncols values
// needs at least ncols * 4 / ratio bytes of file.
constexpr std::int64_t HYBG_MAX_INFLATE_RATIO = 1032;

// The fixed header fields. Defaults are those of a reader that has read nothing.
struct HU_HYBGHeader {
  std::int32_t ncols = -1;
  std::int32_t nrows = -1;
  double xllcenter = 0.0;
  double yllcenter = 0.0;
  double cellSize = 0.0;
  float noData = -9999.0f;
};

// Reads and checks the header and row offset table of an open file. On failure the
// message naming fileName goes into error and false comes back; header and
// rowOffsets may then hold partial data.
bool HU_ReadHYBGHeader(CHU_StdioFile& file, const std::string& fileName, HU_HYBGHeader& header,
                       std::vector<std::uint32_t>& rowOffsets, std::string& error);

// Which inflater a row reader uses. Both accept the same intact streams; zlib is
// the reference, libdeflate is faster.
enum class HU_HYBGInflater { Zlib, Libdeflate };

// Reads row records of one grid file: seek, length, compressed bytes, inflate into
// exactly one row. Keeps its compressed-data buffer between rows. One reader
// belongs to one thread at a time.
class CHU_HYBGRowReader {
 public:
  CHU_HYBGRowReader(const std::string& fileName, const HU_HYBGHeader& header,
                    const std::vector<std::uint32_t>& rowOffsets, HU_HYBGInflater inflater);
  ~CHU_HYBGRowReader();
  CHU_HYBGRowReader(const CHU_HYBGRowReader&) = delete;
  CHU_HYBGRowReader& operator=(const CHU_HYBGRowReader&) = delete;

  // Inflates row (0 = north) of the open file, whose size is fileSize, into out,
  // which holds ncols floats. False with the row's message in error on failure.
  bool ReadRow(CHU_StdioFile& file, std::int64_t fileSize, int row, float* out, std::string& error);

 private:
  struct DecompressorDeleter {
    void operator()(struct libdeflate_decompressor* d) const;
  };

  bool Inflate(float* out, int row, std::string& error);

  const std::string& fileName_;
  const HU_HYBGHeader& header_;
  const std::vector<std::uint32_t>& rowOffsets_;
  HU_HYBGInflater inflater_;
  std::vector<unsigned char> compressed_;
  std::unique_ptr<struct libdeflate_decompressor, DecompressorDeleter> decompressor_;
};

// printf-style formatting into a std::string, for the grid messages.
std::string HU_HYBGFormat(const char* format, ...) __attribute__((format(printf, 1, 2)));
