// Feeds arbitrary bytes to the MIF/MID importer. The bytes up to the first NUL are
// the ".mif" file and the bytes after it its ".mid" companion (without a NUL both
// files get all the bytes). Header, every object reader, elevations and the bulk
// point reader must end without a crash, a hang or a huge allocation; what was
// read is written back out through the exporter.

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>

#include "hy_util/formats/mif_export.h"
#include "hy_util/formats/mif_import.h"

#include "fuzz_support.h"

namespace {

void ReadObject(CHU_MIDMIFFileImport& in, int code, CHU_MIDMIFFileExport& out) {
  CHU_DPointArray points;
  CHU_DPolyLineArray lines;
  CHU_DPolygonArray rings;
  CHU_DRect rect;
  std::string text;
  std::vector<std::string> row = in.GetMIDRow();
  row.resize(static_cast<std::size_t>(in.GetNumDataItems()));
  switch (code) {
    case MIF_POINT:
      if (in.ReadPoint(points)) out.ExPoint(*points[0], row);
      break;
    case MIF_MULTIPOINT:
      in.ReadMultiPoint(points);
      break;
    case MIF_LINE:
      if (in.ReadLine(lines)) out.ExPline(*lines[0], row);
      break;
    case MIF_PLINE:
      if (in.ReadPLineSections(lines)) out.ExPline(lines, row);
      break;
    case MIF_REGION:
      if (in.ReadRegion(rings)) out.ExRegion(rings, row);
      break;
    case MIF_RECT:
    case MIF_ROUNDRECT:
      in.ReadRect(rect);
      break;
    case MIF_TEXT:
      in.ReadText(text, rect);
      break;
    default:
      break;
  }
}

void ReadAll(const std::string& mid, const std::string& mif, const std::string& scratch) {
  CHU_MIDMIFFileImport in(mid, mif, 0, 1);
  if (!in.OpenFiles() || !in.ReadHeader()) return;
  in.SetElevationColumn(0);
  // Files are removed rather than truncated: rewriting a truncated file makes
  // the file system flush it on close, which slows every run down to disk speed.
  std::remove((scratch + "/out.mid").c_str());
  std::remove((scratch + "/out.mif").c_str());
  CHU_MIDMIFFileExport out(scratch + "/out.mid", scratch + "/out.mif", 0, 0);
  out.OpenFiles();
  for (int i = 0; i < in.GetNumDataItems(); ++i) out.AddDataItem(*in.GetDataItem(i));
  out.SetHeader(in.GetVersion(), in.GetCharset(), in.GetDelimiter(), in.GetCoordSys(), CHU_DRect());
  out.ExHeader();
  for (int code = in.ReadNextDataType(); code != MIF_END_OF_FILE; code = in.ReadNextDataType()) {
    ReadObject(in, code, out);
  }
  out.CloseFiles();
}

void ReadPointsOnly(const std::string& mid, const std::string& mif) {
  CHU_MIDMIFFileImport in(mid, mif, 1, 0);
  if (!in.OpenFiles() || !in.ReadHeader()) return;
  CHU_DPointArray points;
  in.ReadPoints(points, true);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string& scratch = hyfuzz::ScratchDirectory();
  const std::string mif = scratch + "/in.mif";
  const std::string mid = scratch + "/in.mid";
  const std::uint8_t* nul = static_cast<const std::uint8_t*>(std::memchr(data, 0, size));
  const std::size_t mifSize = nul ? static_cast<std::size_t>(nul - data) : size;
  const std::uint8_t* midData = nul ? nul + 1 : data;
  const std::size_t midSize = nul ? size - mifSize - 1 : size;
  std::remove(mif.c_str());
  std::remove(mid.c_str());
  if (!hyfuzz::WriteFile(mif, data, mifSize) || !hyfuzz::WriteFile(mid, midData, midSize)) return 0;
  ReadAll(mid, mif, scratch);
  ReadPointsOnly(mid, mif);
  return 0;
}
