// Feeds arbitrary bytes to the ESRI float grid readers: the input up to its first
// NUL byte is the ".hdr" header, the rest the ".flt" data. Header, rows, the whole
// grid, the data check, the classic conversion and the fast converter must all end
// without a crash, a hang or a huge allocation, whatever the header claims.

#include <stdlib.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <string>

#include "hy_util/grids/esri_grid_binary.h"

#include "fuzz_esri_convert.h"

namespace {

void ReadGrid(const std::string& path) {
  CHU_File_EsriGridBinary grid(path.c_str());
  if (!grid.ReadHeader()) return;
  HU_GridPointArray points;
  for (int i = 0; i < 64 && grid.ReadLine(points, nullptr); ++i) {
  }
  int blocks = 0;
  grid.CheckData(&blocks);
  grid.ReadData(points, nullptr);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::uint8_t* split = std::find(data, data + size, std::uint8_t{0});
  const std::size_t headerSize = static_cast<std::size_t>(split - data);
  const std::size_t dataStart = std::min(size, headerSize + 1);
  const std::string& dir = hyfuzz::ScratchDirectory();
  if (!hyfuzz::WriteFile(dir + "/grid.hdr", data, headerSize) ||
      !hyfuzz::WriteFile(dir + "/grid.flt", data + dataStart, size - dataStart)) {
    return 0;
  }
  ReadGrid(dir + "/grid.flt");
  hyfuzz::ConvertBothWays<CHU_File_EsriGridBinary>(dir + "/grid.flt");
  return 0;
}
