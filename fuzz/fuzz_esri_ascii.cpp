// Feeds arbitrary bytes to the ESRI ASCII grid readers as a ".asc" file: header,
// row by row, the whole grid, the classic conversion and the fast converter must
// all end without a crash, a hang or a huge allocation, whatever the file says.

#include <stdlib.h>

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <string>
#include <vector>

#include "hy_util/grids/esri_grid_ascii.h"

#include "fuzz_esri_convert.h"

namespace {

void ReadRows(const std::string& path) {
  CHU_File_EsriGridASCII grid(path.c_str());
  if (!grid.ReadHeader()) return;
  HU_GridPointArray points;
  int skipped = 0;
  for (int i = 0; i < 64 && grid.ReadLine(points, &skipped); ++i) {
  }
  if (grid.GetColCount() <= 4096) {
    std::vector<float> row(static_cast<std::size_t>(grid.GetColCount()));
    for (int i = 0; i < 16 && grid.ReadRowData(row.data()); ++i) {
    }
  }
}

void ReadWholeGrid(const std::string& path) {
  CHU_File_EsriGridASCII grid(path.c_str());
  HU_GridPointArray points;
  int skipped = 0;
  if (grid.ReadHeader()) grid.ReadData(points, &skipped);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string path = hyfuzz::ScratchDirectory() + "/grid.asc";
  std::FILE* file = std::fopen(path.c_str(), "wb");
  if (file == nullptr) return 0;
  const bool written = std::fwrite(data, 1, size, file) == size;
  std::fclose(file);
  if (!written) return 0;
  ReadRows(path);
  ReadWholeGrid(path);
  hyfuzz::ConvertBothWays<CHU_File_EsriGridASCII>(path);
  return 0;
}
