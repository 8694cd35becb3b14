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

// A deflate stream at level 9 with zlib's defaults (the settings of compress2),
// set up once and reset for every row.
struct CHU_GridRowCompressor::ZlibStream {
  z_stream stream{};
  bool ready = false;
};

void CHU_GridRowCompressor::ZlibDeleter::operator()(ZlibStream* zs) const {
  if (zs->ready) deflateEnd(&zs->stream);
  delete zs;
}

void CHU_GridRowCompressor::LibdeflateDeleter::operator()(libdeflate_compressor* c) const {
  libdeflate_free_compressor(c);
}

CHU_GridRowCompressor::CHU_GridRowCompressor(HU_GridCodec codec, int libdeflateLevel) : codec_(codec) {
  if (codec_ == HU_GridCodec::Libdeflate) {
    const int level = libdeflateLevel < 1 ? 1 : (libdeflateLevel > 12 ? 12 : libdeflateLevel);
    deflater_.reset(libdeflate_alloc_compressor(level));
  } else {
    zlib_.reset(new ZlibStream);
    zlib_->ready = deflateInit(&zlib_->stream, 9) == Z_OK;
  }
}

CHU_GridRowCompressor::~CHU_GridRowCompressor() = default;

bool CHU_GridRowCompressor::Compress(const void* data, std::size_t size, std::vector<std::uint8_t>& out) {
  return codec_ == HU_GridCodec::Libdeflate ? CompressLibdeflate(data, size, out) : CompressZlib(data, size, out);
}

bool CHU_GridRowCompressor::CompressLibdeflate(const void* data, std::size_t size, std::vector<std::uint8_t>& out) {
  if (!deflater_) return false;
  out.resize(libdeflate_zlib_compress_bound(deflater_.get(), size));
  const std::size_t n = libdeflate_zlib_compress(deflater_.get(), data, size, out.data(), out.size());
  out.resize(n);
  return n != 0;
}

// One deflate call with all input and a bound-sized output, finishing the stream:
// the same single call that compress2 makes on a fresh stream.
bool CHU_GridRowCompressor::CompressZlib(const void* data, std::size_t size, std::vector<std::uint8_t>& out) {
  out.clear();
  if (!zlib_->ready || size > 0xFFFFFFFFu || deflateReset(&zlib_->stream) != Z_OK) return false;
  z_stream& stream = zlib_->stream;
  out.resize(deflateBound(&stream, static_cast<uLong>(size)));
  stream.next_in = const_cast<Bytef*>(static_cast<const Bytef*>(data));
  stream.avail_in = static_cast<uInt>(size);
  stream.next_out = out.data();
  stream.avail_out = static_cast<uInt>(out.size());
  const int rc = deflate(&stream, Z_FINISH);
  out.resize(rc == Z_STREAM_END ? stream.total_out : 0);
  return rc == Z_STREAM_END;
}
