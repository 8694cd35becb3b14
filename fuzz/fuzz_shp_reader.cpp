// Feeds arbitrary bytes to the shapefile reader as a .shp/.shx/.dbf triple. The
// input starts with the lengths of the .shp and .shx parts (two little-endian
// 16-bit numbers); the rest after them is the .dbf. Opening, every per-object
// reader, the attribute calls, the dump and writing what was read back out must
// all end without a crash, a hang or a huge allocation, whatever the files say.

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>

#include "hy_util/formats/shp_export.h"
#include "hy_util/formats/shp_file.h"

#include "fuzz_support.h"

namespace {

constexpr int kObjectsTried = 64;

void ReadEverything(const CHU_SHP& shp, CHU_SHPExport& copy) {
  std::string text;
  for (int f = -1; f <= shp.GetNumDataItems(); ++f) {
    shp.GetDataType(f, text);
    shp.GetDataStr(f, text);
    shp.GetDataStrShort(f, text);
  }
  for (int i = -1; i < shp.GetNumObjects() && i < kObjectsTried; ++i) {
    shp.GetObjectType(i);
    CHU_DPoint point;
    shp.GetPoint(i, point);
    CHU_DPointArray points;
    shp.GetMultiPoint(i, points);
    CHU_DPolyLineArray lines;
    shp.GetPolyLine(i, lines);
    CHU_DPolygonArray polygons;
    shp.GetPolygon(i, polygons);
    for (const auto& p : polygons) copy.CreatePolygon(i < 0 ? 0 : i, p.get());
    for (int f = 0; f <= shp.GetNumDataItems(); ++f) {
      if (shp.GetSHPData(i, f, text)) shp.CompareShapeData(i, f, text);
    }
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string& dir = hyfuzz::ScratchDirectory();
  if (size < 4) return 0;
  std::size_t shpLength = data[0] | (std::size_t{data[1]} << 8);
  std::size_t shxLength = data[2] | (std::size_t{data[3]} << 8);
  data += 4;
  size -= 4;
  shpLength = std::min(shpLength, size);
  shxLength = std::min(shxLength, size - shpLength);
  const std::string base = dir + "/fuzz";
  if (!hyfuzz::WriteFile(base + ".shp", data, shpLength) ||
      !hyfuzz::WriteFile(base + ".shx", data + shpLength, shxLength) ||
      !hyfuzz::WriteFile(base + ".dbf", data + shpLength + shxLength, size - shpLength - shxLength))
    return 0;
  CHU_SHP shp(base + ".shp");
  CHU_SHPExport copy(dir + "/copy");
  copy.SetShapeType(SHPT_POLYGON);
  copy.CreateFiles();
  ReadEverything(shp, copy);
  shp.WriteData(dir + "/shapef.txt");
  return 0;
}
