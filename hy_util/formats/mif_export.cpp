#include "hy_util/formats/mif_export.h"

#include <algorithm>
#include <utility>

#include "hy_util/core/str_num_conversion.h"
#include "hy_util/core/strings.h"
#include "hy_util/formats/mid_mif_text.h"

using HU_LIB::HU_StrNumConversion;
using HU_LIB::HU_Strings;

namespace {
constexpr std::size_t kMaxQuotedLength = HU_LIB::HU_QUOTE_BUFFER_SIZE - 1;
constexpr std::size_t kStreamBuffer = 1 << 16;
}  // namespace

CHU_MIDMIFFileExport::CHU_MIDMIFFileExport(std::string midPath, std::string mifPath, int unitFlagA,
                                           int unitFlagB)
    : m_midPath(std::move(midPath)), m_mifPath(std::move(mifPath)), m_unitFlagA(unitFlagA), m_unitFlagB(unitFlagB) {}

CHU_MIDMIFFileExport::~CHU_MIDMIFFileExport() { CloseFiles(); }

bool CHU_MIDMIFFileExport::OpenFiles() {
  CloseFiles();
  if (m_midPath.empty() || m_mifPath.empty()) return false;
  m_writeFailed = false;
  m_mid.reset(std::fopen(m_midPath.c_str(), "w"));
  if (m_mid) m_mif.reset(std::fopen(m_mifPath.c_str(), "w"));
  if (!m_mid || !m_mif) {
    CloseFiles();
    return false;
  }
  std::setvbuf(m_mid.get(), nullptr, _IOFBF, kStreamBuffer);
  std::setvbuf(m_mif.get(), nullptr, _IOFBF, kStreamBuffer);
  return true;
}

bool CHU_MIDMIFFileExport::CloseFiles() {
  bool ok = !m_writeFailed;
  for (FilePtr* file : {&m_mid, &m_mif}) {
    if (*file && std::fclose(file->release()) != 0) ok = false;
  }
  m_writeFailed = false;
  return ok;
}

void CHU_MIDMIFFileExport::SetHeader(const std::string& version, const std::string& charset,
                                     const std::string& delimiter, const std::string& coordSys,
                                     const CHU_DRect& bounds) {
  m_version = version;
  m_charset = charset;
  m_delimiter = delimiter;
  m_coordSys = coordSys;
  m_bounds = bounds;
  AdjustUnitsDRect(m_bounds);
}

bool CHU_MIDMIFFileExport::ExHeader() {
  if (!m_mif) return false;
  std::string out = "Version " + m_version + "\n";
  out += "Charset " + Quoted(m_charset) + "\n";
  out += "Delimiter " + Quoted(m_delimiter) + "\n";
  out += "CoordSys " + m_coordSys + " Bounds (";
  hu_mif::AppendFixed(out, m_bounds.Left(), 6);
  out += ", ";
  hu_mif::AppendFixed(out, m_bounds.Bottom(), 6);
  out += ")(";
  hu_mif::AppendFixed(out, m_bounds.Right(), 6);
  out += ", ";
  hu_mif::AppendFixed(out, m_bounds.Top(), 6);
  out += ")\n";
  out += "Columns " + std::to_string(m_columns.size()) + "\n";
  for (const CHU_MIDMIFData& column : m_columns) {
    out += "  " + column.GetName() + " " + GetDataTypeName(column.GetType());
    if (column.GetType() == CHU_MIDMIFData::kChar) out += "(" + std::to_string(column.GetSize()) + ")";
    out += "\n";
  }
  out += "Data\n";
  OutStringMIF(out);
  return true;
}

bool CHU_MIDMIFFileExport::ExPoint(const CHU_DPoint& point, const std::vector<std::string>& values) {
  CHU_DPoint p(point);
  AdjustUnitsPt(p);
  std::string out = "Point ";
  AppendXY(out, p.x, p.y);
  const int symbol = point.GetSymbol() > 0 ? point.GetSymbol() : 34;
  out += "    Symbol (" + std::to_string(symbol) + ", 65280,5)\n";
  OutStringMIF(out);
  if (values.size() != m_columns.size()) return false;
  OutStringMID(FormatRow(values, true));
  return true;
}

bool CHU_MIDMIFFileExport::ExPline(const CHU_DPolyLine& line, const std::vector<std::string>& values) {
  const int n = line.GetCount();
  if (n == 0) return false;
  std::string out = "\nPline " + std::to_string(n) + "\n";
  AppendSection(out, line);
  out += "    Pen (1,2,0)\n";
  OutStringMIF(out);
  OutDataMID(values);
  return true;
}

bool CHU_MIDMIFFileExport::ExPline(const CHU_DPolyLineArray& sections, const std::vector<std::string>& values) {
  std::vector<const CHU_DPolyLine*> kept;
  for (const auto& section : sections) {
    if (section && section->GetCount() > 0) kept.push_back(section.get());
  }
  if (kept.empty()) return false;
  if (kept.size() == 1) return ExPline(*kept.front(), values);
  std::string out = "\nPline Multiple " + std::to_string(kept.size()) + "\n";
  for (const CHU_DPolyLine* section : kept) {
    out += std::to_string(section->GetCount()) + "\n";
    AppendSection(out, *section);
  }
  out += "    Pen (1,2,0)\n";
  OutStringMIF(out);
  OutDataMID(values);
  return true;
}

// A line's vertices, one "x y" line each, in the output units.
void CHU_MIDMIFFileExport::AppendSection(std::string& out, const CHU_DPolyLine& line) const {
  for (int i = 0; i < line.GetCount(); ++i) {
    CHU_DPoint p(*line.GetAt(i));
    AdjustUnitsPt(p);
    AppendXY(out, p.x, p.y);
  }
}

void CHU_MIDMIFFileExport::AppendRing(std::string& out, const CHU_DPolygon& ring) const {
  const int n = ring.GetCount();
  out += std::to_string(n + 1) + "\n";
  for (int i = 0; i < n; ++i) AppendXY(out, ring.GetAt(i)->x, ring.GetAt(i)->y);
  AppendXY(out, ring.GetAt(0)->x, ring.GetAt(0)->y);
}

bool CHU_MIDMIFFileExport::ExRegion(const CHU_DPolygon& polygon, const std::vector<std::string>& values) {
  if (polygon.GetCount() == 0) return false;
  std::string out = "\nRegion  1\n";
  AppendRing(out, polygon);
  out += "    Pen (1,2,0)\n    Brush (1,0,16777215)\n    Center ";
  CHU_DPoint centre;
  polygon.GetCentroid(&centre);
  AppendXY(out, centre.x, centre.y);
  OutStringMIF(out);
  OutDataMID(values);
  return true;
}

bool CHU_MIDMIFFileExport::ExRegion(const CHU_DPolygonArray& rings, const std::vector<std::string>& values) {
  std::vector<const CHU_DPolygon*> kept;
  for (const auto& ring : rings) {
    if (ring && ring->GetCount() > 0) kept.push_back(ring.get());
  }
  if (kept.empty()) return false;
  std::string out = "\nRegion  " + std::to_string(kept.size()) + "\n";
  for (const CHU_DPolygon* ring : kept) AppendRing(out, *ring);
  out += "    Pen (1,2,0)\n    Brush (1,0,16777215)\n    Center ";
  CHU_DPoint centre;
  kept.front()->GetCentroid(&centre);
  AppendXY(out, centre.x, centre.y);
  OutStringMIF(out);
  OutDataMID(values);
  return true;
}

bool CHU_MIDMIFFileExport::ExPoints(const CHU_DPointArray&, const std::vector<std::vector<std::string>>&) {
  return false;
}
bool CHU_MIDMIFFileExport::ExLines(const CHU_DPolyLineArray&, const std::vector<std::vector<std::string>>&) {
  return false;
}
bool CHU_MIDMIFFileExport::ExPolygons(const CHU_DPolygonArray&, const std::vector<std::vector<std::string>>&) {
  return false;
}

void CHU_MIDMIFFileExport::OutStringMIF(const std::string& text) {
  if (m_mif && std::fwrite(text.data(), 1, text.size(), m_mif.get()) != text.size()) m_writeFailed = true;
}

void CHU_MIDMIFFileExport::OutStringMID(const std::string& text) {
  if (m_mid && std::fwrite(text.data(), 1, text.size(), m_mid.get()) != text.size()) m_writeFailed = true;
}

bool CHU_MIDMIFFileExport::OutDataMID(const std::vector<std::string>& values) {
  if (values.size() != m_columns.size()) return false;
  OutStringMID(FormatRow(values, false));
  return true;
}

std::string CHU_MIDMIFFileExport::FormatRow(const std::vector<std::string>& values, bool adjustValues) const {
  std::string row;
  for (std::size_t i = 0; i < values.size(); ++i) {
    if (i > 0) row += ',';
    const CHU_MIDMIFData& column = m_columns[i];
    switch (column.GetType()) {
      case CHU_MIDMIFData::kInteger:
        row += std::to_string(HU_StrNumConversion::StringToInt(values[i], 0));
        break;
      case CHU_MIDMIFData::kFloat:
      case CHU_MIDMIFData::kDouble: {
        double value = hu_mif::LeadingDouble(values[i]);
        if (adjustValues && !column.GetUnits().empty()) AdjustUnitsVal(value, column.GetUnits());
        hu_mif::AppendFixed(row, value, column.GetSize() < 0 ? 3 : column.GetSize());
        break;
      }
      default:
        row += Quoted(values[i]);
        break;
    }
  }
  row += '\n';
  return row;
}

void CHU_MIDMIFFileExport::AppendXY(std::string& out, double x, double y) {
  hu_mif::AppendFixed(out, x, 2);
  out += ' ';
  hu_mif::AppendFixed(out, y, 2);
  out += '\n';
}

// HU_Strings::QuoteString quotes within the classic 255-character limit and stops
// the process beyond it; a long attribute value must not end a conversion, so such
// a value is quoted here by the same rule without the limit.
std::string CHU_MIDMIFFileExport::Quoted(const std::string& text) {
  const std::size_t escapes = static_cast<std::size_t>(std::count_if(
      text.begin(), text.end(), [](char c) { return c == '\\' || c == '"'; }));
  std::string quoted = text;
  if (text.size() + escapes + 2 <= kMaxQuotedLength) {
    HU_Strings::QuoteString(quoted);
    return quoted;
  }
  quoted = "\"";
  for (const char c : text) {
    if (c == '\\' || c == '"') quoted += '\\';
    quoted += c;
  }
  quoted += '"';
  return quoted;
}

bool CHU_MIDMIFFileExport::AdjustUnitsDRect(CHU_DRect&) const { return UnitConversionAsked(); }
bool CHU_MIDMIFFileExport::AdjustUnitsVal(double&, const std::string&) const { return UnitConversionAsked(); }
bool CHU_MIDMIFFileExport::AdjustUnitsPt(CHU_DPoint&) const { return UnitConversionAsked(); }
