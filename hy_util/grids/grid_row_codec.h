#pragma once
// Compression of one grid row into the zlib stream stored in a binary grid file.
//
// Beyond the grid readers' own behaviour, a converter may choose its codec: zlib
// (level 9, the reference output) or libdeflate, which is several times faster
// and also writes standard zlib streams, so any reader inflates either. One
// compressor object belongs to one thread at a time.
//
// A compressor keeps its codec state between rows: the zlib stream is reset
// rather than set up and torn down per row (what compress2 does, and a quarter
// of a megabyte of allocation each time), which gives the same bytes as compress2
// at level 9; the libdeflate compressor is allocated once.

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

enum class HU_GridCodec {
  Zlib,        // zlib compress2 at level 9: byte-identical to the classic converter
  Libdeflate,  // libdeflate's zlib wrapper at the compressor's level
};

// Parses "zlib" or "libdeflate"; false for anything else.
bool HU_ParseGridCodec(const std::string& text, HU_GridCodec& codec);
const char* HU_GridCodecName(HU_GridCodec codec);

class CHU_GridRowCompressor {
 public:
  // The level applies to libdeflate (1..12); zlib always uses level 9.
  explicit CHU_GridRowCompressor(HU_GridCodec codec, int libdeflateLevel = kDefaultLibdeflateLevel);
  ~CHU_GridRowCompressor();
  CHU_GridRowCompressor(const CHU_GridRowCompressor&) = delete;
  CHU_GridRowCompressor& operator=(const CHU_GridRowCompressor&) = delete;

  static constexpr int kDefaultLibdeflateLevel = 6;

  // Compresses size bytes into out (resized to the compressed length).
  // False only when the codec fails, which a bound-sized buffer never should.
  bool Compress(const void* data, std::size_t size, std::vector<std::uint8_t>& out);

  HU_GridCodec Codec() const { return codec_; }

 private:
  struct LibdeflateDeleter {
    void operator()(struct libdeflate_compressor* c) const;
  };
  struct ZlibStream;
  struct ZlibDeleter {
    void operator()(ZlibStream* stream) const;
  };

  bool CompressLibdeflate(const void* data, std::size_t size, std::vector<std::uint8_t>& out);
  bool CompressZlib(const void* data, std::size_t size, std::vector<std::uint8_t>& out);

  HU_GridCodec codec_;
  std::unique_ptr<struct libdeflate_compressor, LibdeflateDeleter> deflater_;
  std::unique_ptr<ZlibStream, ZlibDeleter> zlib_;
};
