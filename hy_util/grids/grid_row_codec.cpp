#include "hy_util/grids/grid_row_codec.h"

#include <libdeflate.h>
#include <zlib.h>

bool HU_ParseGridCodec(const std::string& text, HU_GridCodec& codec) {
  if (text == "zlib") {
    codec = HU_GridCodec::Zlib;
  } else if (text == "libdeflate") {
    codec = HU_GridCodec::Libdeflate;
  } else {
    return false;
  }
  return true;
}

const char* HU_GridCodecName(HU_GridCodec codec) {
  return codec == HU_GridCodec::Zlib ? "zlib" : "libdeflate";
}

void CHU_GridRowCompressor::LibdeflateDeleter::operator()(libdeflate_compressor* c) const {
  libdeflate_free_compressor(c);
}

CHU_GridRowCompressor::CHU_GridRowCompressor(HU_GridCodec codec, int libdeflateLevel) : codec_(codec) {
  if (codec_ == HU_GridCodec::Libdeflate) {
    const int level = libdeflateLevel < 1 ? 1 : (libdeflateLevel > 12 ? 12 : libdeflateLevel);
    deflater_.reset(libdeflate_alloc_compressor(level));
  }
}

CHU_GridRowCompressor::~CHU_GridRowCompressor() = default;

bool CHU_GridRowCompressor::Compress(const void* data, std::size_t size, std::vector<std::uint8_t>& out) {
  if (codec_ == HU_GridCodec::Libdeflate) {
    if (!deflater_) return false;
    out.resize(libdeflate_zlib_compress_bound(deflater_.get(), size));
    const std::size_t n = libdeflate_zlib_compress(deflater_.get(), data, size, out.data(), out.size());
    out.resize(n);
    return n != 0;
  }
  uLongf length = compressBound(static_cast<uLong>(size));
  out.resize(length);
  const int rc = compress2(out.data(), &length, static_cast<const Bytef*>(data), static_cast<uLong>(size), 9);
  out.resize(rc == Z_OK ? length : 0);
  return rc == Z_OK;
}
