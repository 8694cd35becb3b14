#pragma once
// Shared by the ESRI fuzz targets: both converters on one grid file, writing into
// the scratch directory. Output is kept small, so a damaged header cannot make the
// fuzzer write much.

#include <cstdint>
#include <string>

#include "fuzz_support.h"
#include "hy_util/grids/grid_converter.h"

namespace hyfuzz {

constexpr std::uint64_t kMaxRowOffset = 1 << 16;

template <class Grid>
void ConvertBothWays(const std::string& path) {
  const std::string& dir = ScratchDirectory();
  Grid grid(path.c_str());
  grid.SetMaxRowOffset(kMaxRowOffset);
  grid.ConvertToHYBinaryGridFile(dir + "/classic.hybg");
  CHU_GridConverter converter({.threads = 2, .maxRowOffset = kMaxRowOffset});
  converter.Convert(path, dir + "/fast.hybg");
}

}  // namespace hyfuzz
