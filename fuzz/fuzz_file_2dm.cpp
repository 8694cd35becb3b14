// Feeds arbitrary bytes to the 2DM reader as a file, read on two threads and on
// one: both must give the same tables, and every query must stay inside them,
// whatever the cards say (huge or negative ids and grid sizes included). Some
// inputs are also repeated into a file large enough for the worker thread.

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <vector>
#include <string>

#include "hy_util/formats/file_2dm.h"

#include "fuzz_support.h"

namespace {

const std::string& ScratchPath() {
  static const std::string path = hyfuzz::ScratchDirectory() + "/mesh.2dm";
  return path;
}

void Query(const CHU_File2DM& mesh) {
  double x0, y0, x1, y1;
  int nodes[4];
  const int cells = mesh.GetCellCount();
  for (int k = -1; k <= cells && k < 64; ++k) {
    mesh.GetCellExtents(k, x0, y0, x1, y1);
    if (mesh.GetNodeIndices(k, nodes)) mesh.GetNodeFromIndex(nodes[0]);
  }
  const int nx = static_cast<int>(mesh.GetNbrCellsX());
  for (int j = -1; j < 3; ++j)
    for (int i = -1; i <= nx && i < 8; ++i) {
      mesh.GetCellIndex(i, j);
      mesh.GetNode(i, j);
    }
  for (int t = -1; t <= mesh.GetNbrTCells() && t < 16; ++t) {
    mesh.GetTCellID(t);
    mesh.GetTCellIndices(t, nodes);
  }
  mesh.GetExtents(x0, y0, x1, y1);
  mesh.GetMinElevation();
  mesh.GetMaxElevation();
}

// Equal bit for bit (NaN coordinates included).
bool SameBits(const std::vector<double>& a, const std::vector<double>& b) {
  return a.size() == b.size() && std::memcmp(a.data(), b.data(), a.size() * sizeof(double)) == 0;
}

// Reads the scratch file on two threads and on one; traps when they differ.
bool ReadBoth(CHU_File2DM& parallel, CHU_File2DM& serial) {
  serial.SetParallelRead(false);
  if (!parallel.Open(ScratchPath().c_str()) || !serial.Open(ScratchPath().c_str())) return false;
  const bool read = parallel.Read();
  if (read != serial.Read()) __builtin_trap();
  if (read && (!SameBits(parallel.GetX(), serial.GetX()) || !SameBits(parallel.GetZ(), serial.GetZ()) || parallel.GetCellCount() != serial.GetCellCount() ||
               parallel.GetNbrTCells() != serial.GetNbrTCells() || parallel.GetRefusedCount() != serial.GetRefusedCount() ||
               parallel.GetLineCount() != serial.GetLineCount() || parallel.GetSkippedCards() != serial.GetSkippedCards()))
    __builtin_trap();
  return read;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size >= 32 && data[0] % 8 == 0) {
    std::string repeated;
    while (repeated.size() < (std::size_t{72} << 10)) repeated.append(reinterpret_cast<const char*>(data), size);
    if (hyfuzz::WriteFile(ScratchPath(), reinterpret_cast<const std::uint8_t*>(repeated.data()), repeated.size())) {
      CHU_File2DM parallel, serial;
      ReadBoth(parallel, serial);
    }
  }
  if (!hyfuzz::WriteFile(ScratchPath(), data, size)) return 0;
  CHU_File2DM parallel, serial;
  if (ReadBoth(parallel, serial)) Query(parallel);
  return 0;
}
