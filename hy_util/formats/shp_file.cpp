#include "hy_util/formats/shp_file.h"

#include <charconv>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <memory>
#include <string_view>
#include <system_error>

#include "hy_util/platform/application.h"

HU_IMPLEMENT_DYNCREATE(CHU_SHP)

namespace {

constexpr const char* kInvalidData = "Invalid/Undefined Data";
constexpr std::uint64_t kShapefileHeaderSize = 100;
constexpr std::uint64_t kRecordHeaderSize = 8;

void ShowStop(const std::string& text) { HU_GetApplication().ShowMessage(text, HU_MessageKind::Stop); }

// The path with everything from its last "." replaced by the extension; empty when
// the path has no ".".
std::string ReplaceExtension(const std::string& path, const char* extension) {
  const auto dot = path.rfind('.');
  if (dot == std::string::npos) return {};
  return path.substr(0, dot) + extension;
}

// The path without its extension, where shapelib also cuts it: a "." only counts
// when no directory separator follows it.
std::string BaseName(const std::string& path) {
  const auto dot = path.rfind('.');
  const auto slash = path.find_last_of("/\\");
  if (dot == std::string::npos || (slash != std::string::npos && slash > dot)) return path;
  return path.substr(0, dot);
}

// Size of the companion file shapelib would open (lower-case extension first), or
// false when neither spelling exists.
bool CompanionSize(const std::string& base, const char* lower, const char* upper, std::uint64_t& size) {
  for (const char* extension : {lower, upper}) {
    std::error_code ec;
    const auto bytes = std::filesystem::file_size(base + extension, ec);
    if (!ec) {
      size = bytes;
      return true;
    }
  }
  return false;
}

std::uint32_t ReadBigEndian32(std::FILE* file, long offset) {
  unsigned char b[4] = {0, 0, 0, 0};
  if (std::fseek(file, offset, SEEK_SET) != 0 || std::fread(b, 1, 4, file) != 4) return 0;
  return (std::uint32_t{b[0]} << 24) | (std::uint32_t{b[1]} << 16) | (std::uint32_t{b[2]} << 8) | b[3];
}

// shapelib sizes its record table from the length the .shx header declares. A
// declared length beyond the real file can only be damage, and would make it
// allocate for records that are not there, so such a pair is refused before it
// reaches shapelib.
bool IndexLengthFits(const std::string& base, std::uint64_t shxSize) {
  if (shxSize < kShapefileHeaderSize) return false;
  for (const char* extension : {".shx", ".SHX"}) {
    std::unique_ptr<std::FILE, int (*)(std::FILE*)> file(std::fopen((base + extension).c_str(), "rb"), &std::fclose);
    if (!file) continue;
    const std::uint64_t declared = std::uint64_t{ReadBigEndian32(file.get(), 24)} * 2;
    return declared <= shxSize;
  }
  return false;
}

bool HasZ(int shapeType) {
  return shapeType == SHPT_POINTZ || shapeType == SHPT_ARCZ || shapeType == SHPT_POLYGONZ ||
         shapeType == SHPT_MULTIPOINTZ || shapeType == SHPT_MULTIPATCH;
}

// Integer and double texts as dBASE stores them: blanks around, an optional sign.
// Text that holds no number reads as 0, as atoi and atof would.
std::string_view TrimNumber(std::string_view text) {
  while (!text.empty() && (text.front() == ' ' || text.front() == '\t')) text.remove_prefix(1);
  while (!text.empty() && (text.back() == ' ' || text.back() == '\t')) text.remove_suffix(1);
  if (!text.empty() && text.front() == '+') text.remove_prefix(1);
  return text;
}

long long ParseInteger(std::string_view text) {
  text = TrimNumber(text);
  long long value = 0;
  if (std::from_chars(text.data(), text.data() + text.size(), value).ec != std::errc()) return 0;
  return value;
}

double ParseDouble(std::string_view text) {
  text = TrimNumber(text);
  double value = 0.0;
  if (std::from_chars(text.data(), text.data() + text.size(), value).ec != std::errc()) return 0.0;
  return value;
}

// Calls add(first, end) for each part's vertex run; a shape without part starts is
// one run over all its vertices.
template <typename AddPart>
void ForEachPart(const SHPObject& shape, AddPart add) {
  if (shape.nParts <= 0) {
    add(0, shape.nVertices);
    return;
  }
  for (int i = 0; i < shape.nParts; ++i) {
    const int end = i + 1 < shape.nParts ? shape.panPartStart[i + 1] : shape.nVertices;
    add(shape.panPartStart[i], end);
  }
}

template <typename Chain, typename Array>
int AppendParts(const SHPObject& shape, bool withZ, Array& out) {
  int made = 0;
  ForEachPart(shape, [&](int first, int end) {
    auto chain = std::make_unique<Chain>();
    chain->InitialNumberOfPoints(end - first);
    for (int v = first; v < end; ++v)
      chain->AddPt(shape.padfX[v], shape.padfY[v], withZ ? shape.padfZ[v] : CHU_DPoint::C_NULL_VALL);
    out.push_back(std::move(chain));
    ++made;
  });
  return made;
}

}  // namespace

CHU_SHP::CHU_SHP(const std::string& path) : m_path(path) {
  OpenGeometry(path);
  OpenTable(path);
}

void CHU_SHP::OpenGeometry(const std::string& path) {
  const std::string base = BaseName(path);
  std::uint64_t shxSize = 0;
  if (CompanionSize(base, ".shp", ".SHP", m_shpFileSize) && m_shpFileSize >= kShapefileHeaderSize &&
      CompanionSize(base, ".shx", ".SHX", shxSize) && IndexLengthFits(base, shxSize))
    m_hSHP.reset(SHPOpen(path.c_str(), "rb"));
  if (!m_hSHP) {
    const std::string index = ReplaceExtension(path, ".shx");
    if (index.empty()) {
      ShowStop("Invalid Shape Index filename");
    } else {
      char text[2048];
      std::snprintf(text, sizeof text, "Unable to open: %s and/or %s", path.c_str(), index.c_str());
      ShowStop(text);
    }
    return;
  }
  SHPGetInfo(m_hSHP.get(), &m_nShapes, &m_nShapeType, m_adfMinBound, m_adfMaxBound);
}

void CHU_SHP::OpenTable(const std::string& path) {
  if (!m_hSHP) return;
  const std::string table = ReplaceExtension(path, ".dbf");
  if (table.empty()) {
    ShowStop("Invalid Shape file DBF name");
    return;
  }
  m_hDBF.reset(DBFOpen(table.c_str(), "rb"));
  if (!m_hDBF) {
    ShowStop("Invalid Shape file DBF");
    return;
  }
  m_nFields = DBFGetFieldCount(m_hDBF.get());
}

void CHU_SHP::GetBounds(double& minX, double& minY, double& maxX, double& maxY) const {
  minX = m_adfMinBound[0];
  minY = m_adfMinBound[1];
  maxX = m_adfMaxBound[0];
  maxY = m_adfMaxBound[1];
}

HU_SHPObjectPtr CHU_SHP::ReadObject(int index) const {
  if (!m_hSHP || index < 0 || index >= m_nShapes) return nullptr;
  const SHPInfo& info = *m_hSHP;
  // shapelib allocates the size the index gives before it reads the record.
  const std::uint64_t offset = info.panRecOffset[index];
  const std::uint64_t size = info.panRecSize[index];
  if (offset < kShapefileHeaderSize || offset + kRecordHeaderSize + size > m_shpFileSize) return nullptr;
  HU_SHPObjectPtr shape(SHPReadObject(m_hSHP.get(), index));
  if (!shape || shape->nVertices < 0 || shape->nParts < 0) return nullptr;
  if (shape->nVertices > 0 && (!shape->padfX || !shape->padfY || !shape->padfZ)) return nullptr;
  if (shape->nParts > 0 && !shape->panPartStart) return nullptr;
  for (int i = 0; i < shape->nParts; ++i) {
    const int start = shape->panPartStart[i];
    const int previous = i > 0 ? shape->panPartStart[i - 1] : 0;
    if (start < previous || start > shape->nVertices) return nullptr;
  }
  return shape;
}

int CHU_SHP::GetObjectType(int index) const {
  const HU_SHPObjectPtr shape = ReadObject(index);
  return shape ? shape->nSHPType : 0;
}

bool CHU_SHP::GetPoint(int index, CHU_DPoint& point) const {
  const HU_SHPObjectPtr shape = ReadObject(index);
  if (!shape || shape->nVertices < 1) return false;
  point.x = shape->padfX[0];
  point.y = shape->padfY[0];
  if (HasZ(shape->nSHPType)) point.z = shape->padfZ[0];
  return true;
}

int CHU_SHP::GetMultiPoint(int index, CHU_DPointArray& points) const {
  const HU_SHPObjectPtr shape = ReadObject(index);
  if (!shape) return 0;
  const bool withZ = HasZ(shape->nSHPType);
  for (int v = 0; v < shape->nVertices; ++v)
    points.push_back(std::make_unique<CHU_DPoint>(shape->padfX[v], shape->padfY[v],
                                                  withZ ? shape->padfZ[v] : CHU_DPoint::C_NULL_VALL));
  return shape->nVertices;
}

int CHU_SHP::GetPolyLine(int index, CHU_DPolyLineArray& lines) const {
  const HU_SHPObjectPtr shape = ReadObject(index);
  if (!shape || (shape->nSHPType != SHPT_ARC && shape->nSHPType != SHPT_ARCZ)) return 0;
  return AppendParts<CHU_DPolyLine>(*shape, shape->nSHPType == SHPT_ARCZ, lines);
}

int CHU_SHP::GetPolygon(int index, CHU_DPolygonArray& polygons) const {
  const HU_SHPObjectPtr shape = ReadObject(index);
  if (!shape || (shape->nSHPType != SHPT_POLYGON && shape->nSHPType != SHPT_POLYGONZ)) return 0;
  return AppendParts<CHU_DPolygon>(*shape, shape->nSHPType == SHPT_POLYGONZ, polygons);
}

bool CHU_SHP::IsSHPObjectInRect(const SHPObject* shape, const CHU_DRect& rect) const {
  if (!shape) return false;
  return rect.Left() <= shape->dfXMax && shape->dfXMin <= rect.Right() && shape->dfYMin <= rect.Top() &&
         rect.Bottom() <= shape->dfYMax;
}

// ---- Attributes ----

int CHU_SHP::GetNumRecords() const { return m_hDBF ? DBFGetRecordCount(m_hDBF.get()) : 0; }

DBFFieldType CHU_SHP::GetFieldInfo(int field, std::string* name, int* width, int* decimals) const {
  if (!m_hDBF || field < 0 || field >= m_nFields) return FTInvalid;
  char fieldName[XBASE_FLDNAME_LEN_READ + 1] = {};
  int fieldWidth = 0, fieldDecimals = 0;
  const DBFFieldType type = DBFGetFieldInfo(m_hDBF.get(), field, fieldName, &fieldWidth, &fieldDecimals);
  if (name) *name = fieldName;
  if (width) *width = fieldWidth;
  if (decimals) *decimals = fieldDecimals;
  return type;
}

void CHU_SHP::GetDataType(int field, std::string& text) const {
  switch (GetFieldInfo(field, nullptr, nullptr, nullptr)) {
    case FTString: text = "string"; break;
    case FTInteger: text = "int"; break;
    case FTDouble: text = "double"; break;
    default: text = kInvalidData; break;
  }
}

void CHU_SHP::GetDataStr(int field, std::string& text) const {
  std::string name;
  int width = 0;
  switch (GetFieldInfo(field, &name, &width, nullptr)) {
    case FTString: text = name + " (" + std::to_string(width) + " Char)"; break;
    case FTInteger: text = name + " (Integer)"; break;
    case FTDouble: text = name + " (Double)"; break;
    default: text = kInvalidData; break;
  }
}

void CHU_SHP::GetDataStrShort(int field, std::string& text) const {
  std::string name;
  const DBFFieldType type = GetFieldInfo(field, &name, nullptr, nullptr);
  text = type == FTString || type == FTInteger || type == FTDouble ? name : kInvalidData;
}

bool CHU_SHP::GetSHPData(int record, int field, std::string& text) const {
  if (!m_hDBF || record < 0 || record >= GetNumRecords() || field < 0 || field >= m_nFields) return false;
  const char* value = DBFReadStringAttribute(m_hDBF.get(), record, field);
  if (!value) return false;
  text = value;
  return true;
}

bool CHU_SHP::CompareShapeData(int record, int field, const std::string& value) const {
  std::string stored;
  if (!GetSHPData(record, field, stored)) return false;
  switch (GetFieldInfo(field, nullptr, nullptr, nullptr)) {
    case FTString: return stored == value;
    case FTInteger: return ParseInteger(stored) == ParseInteger(value);
    case FTDouble: return ParseDouble(stored) == ParseDouble(value);
    default: return false;
  }
}

// ---- Diagnostic dump ----

bool CHU_SHP::WriteData() const { return WriteData("shapef.txt"); }

bool CHU_SHP::WriteData(const std::string& path) const {
  std::unique_ptr<std::FILE, int (*)(std::FILE*)> out(std::fopen(path.c_str(), "w"), &std::fclose);
  if (!out) return false;
  std::FILE* f = out.get();
  std::fprintf(f, "Shapefile Type: %s   # of Shapes: %d\n\n", SHPTypeName(m_nShapeType), m_nShapes);
  std::fprintf(f, "File Bounds Min : (%12.3f,%12.3f,%lg,%lg)\n", m_adfMinBound[0], m_adfMinBound[1],
               m_adfMinBound[2], m_adfMinBound[3]);
  std::fprintf(f, "File Bounds Max : (%12.3f,%12.3f,%lg,%lg)\n", m_adfMaxBound[0], m_adfMaxBound[1],
               m_adfMaxBound[2], m_adfMaxBound[3]);
  for (int i = 0; i < m_nShapes; ++i) {
    const HU_SHPObjectPtr shape = ReadObject(i);
    if (!shape) {
      std::fprintf(f, "\nShape:%d (unreadable)\n", i);
      continue;
    }
    std::fprintf(f,
                 "\nShape:%d (%s)  nVertices=%d, nParts=%d\n  Bounds:(%12.3f,%12.3f, %lg, %lg)\n"
                 "      to (%12.3f,%12.3f, %lg, %lg)\n\n",
                 i, SHPTypeName(shape->nSHPType), shape->nVertices, shape->nParts, shape->dfXMin,
                 shape->dfYMin, shape->dfZMin, shape->dfMMin, shape->dfXMax, shape->dfYMax, shape->dfZMax,
                 shape->dfMMax);
  }
  return std::fflush(f) == 0 && !std::ferror(f);
}
