#include "hy_util/formats/mif_import.h"

#include <algorithm>
#include <cmath>
#include <initializer_list>
#include <limits>
#include <utility>

#include "hy_util/core/str_num_conversion.h"
#include "hy_util/core/string_manager.h"
#include "hy_util/formats/mid_mif_text.h"
#include "hy_util/platform/application.h"
#include "hy_util/units/units_convert.h"

using hu_mif::EqualsNoCase;
using hu_mif::SplitBlanks;
using hu_mif::TrimBlanks;

namespace {

struct Keyword {
  const char* name;
  int code;
};

constexpr Keyword kObjectKeywords[] = {
    {"Point", MIF_POINT},         {"Line", MIF_LINE},        {"Pline", MIF_PLINE},
    {"Region", MIF_REGION},       {"Ellipse", MIF_ELLIPSE},  {"Rect", MIF_RECT},
    {"RoundRect", MIF_ROUNDRECT}, {"Multiple", MIF_MULTIPLE}, {"Collection", MIF_COLLECTION},
    {"Collections", MIF_COLLECTION}, {"Text", MIF_TEXT},    {"Arc", MIF_ARC},
    {"MultiPoint", MIF_MULTIPOINT},
};

int ObjectCode(std::string_view token) {
  for (const Keyword& keyword : kObjectKeywords) {
    if (EqualsNoCase(token, keyword.name)) return keyword.code;
  }
  return MIF_END_OF_FILE;
}

// The classic reading of a count: the C runtime's atoi (0 when not a number).
int CountOf(std::string_view token) { return HU_LIB::HU_StrNumConversion::StringToInt(std::string(token), 0); }

// The text after the first token of a line, without surrounding blanks.
std::string_view RestAfterFirstToken(std::string_view line) {
  line = TrimBlanks(line);
  std::size_t i = 0;
  while (i < line.size() && !hu_mif::IsBlank(line[i])) ++i;
  return TrimBlanks(line.substr(i));
}

// The first two blank-separated numbers of a vertex line; anything after them is
// ignored.
bool ParseXY(std::string_view line, double& x, double& y) {
  double values[2];
  std::size_t i = 0;
  for (double& value : values) {
    while (i < line.size() && hu_mif::IsBlank(line[i])) ++i;
    const std::size_t start = i;
    while (i < line.size() && !hu_mif::IsBlank(line[i])) ++i;
    if (!hu_mif::ParseDouble(line.substr(start, i - start), value)) return false;
  }
  x = values[0];
  y = values[1];
  return true;
}

// Vertex storage is reserved from a file's count only up to this many.
constexpr int kReserveLimit = 4096;

bool IsHeaderKeyword(std::string_view token) {
  for (const char* keyword : {"Version", "Charset", "Delimiter", "CoordSys", "Columns", "Data", "Index", "Unique",
                              "Transform"}) {
    if (EqualsNoCase(token, keyword)) return true;
  }
  return false;
}

}  // namespace

CHU_MIDMIFFileImport::CHU_MIDMIFFileImport(std::string midPath, std::string mifPath, int unitFlagA, int unitFlagB)
    : m_midPath(std::move(midPath)), m_mifPath(std::move(mifPath)), m_unitFlagA(unitFlagA), m_unitFlagB(unitFlagB) {}

bool CHU_MIDMIFFileImport::OpenFiles() {
  CloseFiles();
  if (!m_mif.Open(m_mifPath)) {
    m_lastError = "Unable to open the MIF file " + m_mifPath;
    return false;
  }
  m_mid.Open(m_midPath);
  return true;
}

void CHU_MIDMIFFileImport::CloseFiles() {
  m_mif.Close();
  m_mid.Close();
  m_givenBack = false;
  m_collectionMembersLeft = 0;
  m_inCollectionMember = false;
}

// ---- Header ----

std::string CHU_MIDMIFFileImport::Unquote(std::string_view text) {
  if (text.empty() || text.front() != '"') return std::string(text);
  std::string out;
  for (std::size_t i = 1; i < text.size(); ++i) {
    if (text[i] != '"') {
      out += text[i];
    } else if (i + 1 < text.size() && text[i + 1] == '"') {
      out += '"';
      ++i;
    } else {
      break;
    }
  }
  return out;
}

void CHU_MIDMIFFileImport::SetHeaderError(const std::string& what) {
  m_lastError = m_mifPath + ", line " + std::to_string(m_mif.LineNumber()) + ": " + what;
}

void CHU_MIDMIFFileImport::ResetHeader() {
  Cleanup();
  m_columnTypes.clear();
  m_version.clear();
  m_charset.clear();
  m_delimiter.clear();
  m_delimiterChar = ',';
  m_coordSys.clear();
  m_boundsRead = false;
  m_minX = m_minY = m_maxX = m_maxY = 0.0;
}

bool CHU_MIDMIFFileImport::FinishHeader(const std::string& coordClause) {
  ParseCoordSys(coordClause);
  if (!m_columns.empty() && !m_mid.IsOpen()) {
    m_lastError = m_mifPath + " has " + std::to_string(m_columns.size()) + " attribute columns, but their file " +
                  m_midPath + " cannot be opened";
    return false;
  }
  return true;
}

bool CHU_MIDMIFFileImport::ReadHeader() {
  ResetHeader();
  if (!m_mif.IsOpen()) {
    m_lastError = "The MIF file " + m_mifPath + " is not open";
    return false;
  }
  std::string coordClause;
  bool inCoordSys = false;
  while (NextLine()) {
    const auto tokens = SplitBlanks(m_line);
    if (tokens.empty()) continue;
    const std::string_view keyword = tokens[0];
    const std::string rest(RestAfterFirstToken(m_line));
    if (!IsHeaderKeyword(keyword)) {
      // A coordinate system clause may continue on the following lines.
      if (inCoordSys) coordClause += " " + std::string(TrimBlanks(m_line));
      continue;
    }
    inCoordSys = false;
    if (EqualsNoCase(keyword, "Version")) {
      m_version = rest;
    } else if (EqualsNoCase(keyword, "Charset")) {
      m_charset = rest;
    } else if (EqualsNoCase(keyword, "Delimiter")) {
      m_delimiter = rest;
      const std::string inner = Unquote(rest);
      if (!inner.empty()) m_delimiterChar = inner.front();
    } else if (EqualsNoCase(keyword, "CoordSys")) {
      coordClause = rest;
      inCoordSys = true;
    } else if (EqualsNoCase(keyword, "Columns")) {
      const int count = tokens.size() > 1 ? CountOf(tokens[1]) : 0;
      if (count < 0) {
        SetHeaderError("the column count " + std::string(tokens[1]) + " is negative");
        return false;
      }
      if (!ReadColumns(count)) return false;
    } else if (EqualsNoCase(keyword, "Data")) {
      return FinishHeader(coordClause);
    }
  }
  if (!m_mif.Failed()) m_lastError = m_mifPath + ": the header does not end with a \"Data\" line";
  return false;
}

void CHU_MIDMIFFileImport::ParseCoordSys(const std::string& clause) {
  const std::size_t bounds = hu_mif::FindNoCase(clause, "Bounds");
  if (bounds == std::string::npos) {
    m_coordSys = std::string(TrimBlanks(clause));
    return;
  }
  m_coordSys = std::string(TrimBlanks(std::string_view(clause).substr(0, bounds)));
  double numbers[4];
  std::size_t at = bounds;
  for (int pair = 0; pair < 2; ++pair) {
    const std::size_t open = clause.find('(', at);
    const std::size_t comma = open == std::string::npos ? open : clause.find(',', open);
    const std::size_t close = comma == std::string::npos ? comma : clause.find(')', comma);
    if (close == std::string::npos) return;
    const std::string_view text(clause);
    if (!hu_mif::ParseDouble(TrimBlanks(text.substr(open + 1, comma - open - 1)), numbers[2 * pair]) ||
        !hu_mif::ParseDouble(TrimBlanks(text.substr(comma + 1, close - comma - 1)), numbers[2 * pair + 1])) {
      return;
    }
    at = close + 1;
  }
  m_minX = AdjustUnit(numbers[0]);
  m_minY = AdjustUnit(numbers[1]);
  m_maxX = AdjustUnit(numbers[2]);
  m_maxY = AdjustUnit(numbers[3]);
  m_boundsRead = true;
}

bool CHU_MIDMIFFileImport::ReadColumns(int count) {
  for (int i = 0; i < count;) {
    if (!NextLine()) {
      if (!m_mif.Failed()) SetHeaderError("the file ends inside the column list");
      return false;
    }
    const auto tokens = SplitBlanks(m_line);
    if (tokens.empty()) continue;
    if (EqualsNoCase(tokens[0], "Data")) {
      // Fewer columns than announced: the table has the ones listed.
      GiveBack();
      return true;
    }
    const auto typeTokens = hu_mif::SplitAny(RestAfterFirstToken(m_line), " \t()");
    const int type = typeTokens.empty() ? CHU_MIDMIFData::kUndefined : GetDataType(std::string(typeTokens[0]));
    int size = -1;
    if (type == CHU_MIDMIFData::kChar) size = typeTokens.size() > 1 ? CountOf(typeTokens[1]) : 0;
    AddDataItem(std::string(tokens[0]), type, size);
    m_columnTypes.emplace_back(TrimBlanks(RestAfterFirstToken(m_line)));
    ++i;
  }
  return true;
}

bool CHU_MIDMIFFileImport::GetBounds(double& minX, double& minY, double& maxX, double& maxY) const {
  minX = m_minX;
  minY = m_minY;
  maxX = m_maxX;
  maxY = m_maxY;
  return m_boundsRead;
}

// ---- Objects ----

bool CHU_MIDMIFFileImport::NextLine() {
  if (m_givenBack) {
    m_givenBack = false;
    return true;
  }
  if (m_mif.ReadLine(m_line)) return true;
  if (m_mif.Failed()) {
    m_lastError = m_mifPath + ", line " + std::to_string(m_mif.LineNumber() + 1) +
                  ": the line cannot be read or is longer than " +
                  std::to_string(CHU_MIDMIFLineReader::kMaxLineBytes >> 20) + " MiB; reading stops there";
  }
  return false;
}

int CHU_MIDMIFFileImport::ReadNextDataType(std::string* pointRest) {
  m_inCollectionMember = false;
  while (NextLine()) {
    const auto tokens = SplitBlanks(m_line);
    if (tokens.empty()) continue;
    const int code = ObjectCode(tokens[0]);
    if (code == MIF_END_OF_FILE) continue;
    m_numParts = tokens.size() > 1 ? CountOf(tokens[1]) : 1;
    if (code == MIF_PLINE && tokens.size() > 1 && EqualsNoCase(tokens[1], "Multiple")) {
      m_numParts = tokens.size() > 2 ? CountOf(tokens[2]) : 1;
    }
    if (code == MIF_POINT && pointRest != nullptr) *pointRest = std::string(RestAfterFirstToken(m_line));
    if (m_collectionMembersLeft > 0) {
      --m_collectionMembersLeft;
      m_inCollectionMember = true;
    } else {
      ReadMIDData();
    }
    if (code == MIF_COLLECTION) m_collectionMembersLeft = std::max(0, m_numParts);
    return code;
  }
  return MIF_END_OF_FILE;
}

bool CHU_MIDMIFFileImport::CurrentKeywordIs(std::initializer_list<const char*> keywords) const {
  // A line given back belongs to the next object, which ReadNextDataType must reach first.
  if (m_givenBack) return false;
  const std::string_view line = TrimBlanks(m_line);
  const std::string_view first = line.substr(0, std::min(line.size(), line.find_first_of(" \t")));
  return std::any_of(keywords.begin(), keywords.end(), [&](const char* k) { return EqualsNoCase(first, k); });
}

bool CHU_MIDMIFFileImport::ReadVertex(double& x, double& y) {
  if (!NextLine()) return false;
  if (!ParseXY(m_line, x, y)) {
    GiveBack();
    return false;
  }
  x = AdjustUnit(x);
  y = AdjustUnit(y);
  return true;
}

bool CHU_MIDMIFFileImport::ReadCount(int& count) {
  if (!NextLine()) return false;
  const auto tokens = SplitBlanks(m_line);
  if (tokens.empty() || !hu_mif::ParseInt(tokens[0], count) || count < 0) {
    GiveBack();
    return false;
  }
  return true;
}

bool CHU_MIDMIFFileImport::ReadNumbers(std::size_t wanted, std::vector<double>& numbers) {
  numbers.clear();
  auto tokens = SplitBlanks(m_line);
  // The keyword line itself is never given back: the caller already holds its object.
  for (std::size_t i = 1; i < tokens.size() && numbers.size() < wanted; ++i) {
    double value = 0.0;
    if (!hu_mif::ParseDouble(tokens[i], value)) return false;
    numbers.push_back(value);
  }
  while (numbers.size() < wanted) {
    if (!NextLine()) return false;
    tokens = SplitBlanks(m_line);
    for (std::size_t i = 0; i < tokens.size() && numbers.size() < wanted; ++i) {
      double value = 0.0;
      if (!hu_mif::ParseDouble(tokens[i], value)) {
        GiveBack();
        return false;
      }
      numbers.push_back(value);
    }
  }
  for (double& value : numbers) value = AdjustUnit(value);
  return true;
}

bool CHU_MIDMIFFileImport::ReadPoint(double& x, double& y) {
  if (!CurrentKeywordIs({"Point"})) return false;
  std::vector<double> numbers;
  if (!ReadNumbers(2, numbers)) return false;
  x = numbers[0];
  y = numbers[1];
  return true;
}

bool CHU_MIDMIFFileImport::ReadPoint(CHU_DPointArray& points) {
  double x = 0.0, y = 0.0;
  if (!ReadPoint(x, y)) return false;
  points.push_back(std::make_unique<CHU_DPoint>(x, y, ElevationFor(0, CHU_DPoint::C_NULL_VALL)));
  return true;
}

bool CHU_MIDMIFFileImport::ReadPoint(CHU_CopyableArray<CHU_DPoint>& points) {
  double x = 0.0, y = 0.0;
  if (!ReadPoint(x, y)) return false;
  points.Add(CHU_DPoint(x, y, ElevationFor(0, CHU_DPoint::C_NULL_VALL)));
  return true;
}

bool CHU_MIDMIFFileImport::ReadMultiPoint(CHU_DPointArray& points) {
  if (!CurrentKeywordIs({"MultiPoint"})) return false;
  const auto tokens = SplitBlanks(m_line);
  int count = tokens.size() > 1 ? CountOf(tokens[1]) : 0;
  if (tokens.size() < 2 && !ReadCount(count)) return false;
  if (count < 0) return false;
  CHU_DPointArray read;
  read.reserve(static_cast<std::size_t>(std::min(count, kReserveLimit)));
  for (int i = 0; i < count; ++i) {
    double x = 0.0, y = 0.0;
    if (!ReadVertex(x, y)) return false;
    read.push_back(std::make_unique<CHU_DPoint>(x, y, ElevationFor(i, CHU_DPoint::C_NULL_VALL)));
  }
  std::move(read.begin(), read.end(), std::back_inserter(points));
  return true;
}

bool CHU_MIDMIFFileImport::ReadLine(CHU_DPolyLineArray& lines) {
  if (!CurrentKeywordIs({"Line"})) return false;
  std::vector<double> numbers;
  if (!ReadNumbers(4, numbers)) return false;
  auto line = std::make_unique<CHU_DPolyLine>();
  line->AddPt(numbers[0], numbers[1], ElevationFor(0, kNoElevation));
  line->AddPt(numbers[2], numbers[3], ElevationFor(1, kNoElevation));
  lines.push_back(std::move(line));
  return true;
}

bool CHU_MIDMIFFileImport::ReadLine(CHU_DPolyLine& line) {
  CHU_DPolyLineArray read;
  if (!ReadLine(read)) return false;
  line = *read.front();
  return true;
}

bool CHU_MIDMIFFileImport::ReadSection(int count, CHU_DPolyLine& line) {
  line.InitialNumberOfPoints(std::min(count, kReserveLimit));
  for (int i = 0; i < count; ++i) {
    double x = 0.0, y = 0.0;
    if (!ReadVertex(x, y)) return false;
    line.AddPt(x, y, kNoElevation);
  }
  return true;
}

bool CHU_MIDMIFFileImport::ReadPLine(CHU_DPolyLineArray& lines) {
  if (!CurrentKeywordIs({"Pline"})) return false;
  const auto tokens = SplitBlanks(m_line);
  auto line = std::make_unique<CHU_DPolyLine>();
  if (tokens.size() > 1 && EqualsNoCase(tokens[1], "Multiple")) {
    lines.push_back(std::move(line));
    return true;
  }
  int count = tokens.size() > 1 ? CountOf(tokens[1]) : 0;
  if (tokens.size() < 2 && !ReadCount(count)) return false;
  if (count < 0 || !ReadSection(count, *line)) return false;
  int vertex = 0;
  ApplyElevations(*line, vertex, kNoElevation);
  lines.push_back(std::move(line));
  return true;
}

bool CHU_MIDMIFFileImport::ReadPLine(CHU_DPolyLine& line) {
  CHU_DPolyLineArray read;
  if (!ReadPLine(read)) return false;
  line = *read.front();
  return true;
}

bool CHU_MIDMIFFileImport::ReadPLineSections(CHU_DPolyLineArray& lines) {
  if (!CurrentKeywordIs({"Pline"})) return false;
  const auto tokens = SplitBlanks(m_line);
  const bool multiple = tokens.size() > 1 && EqualsNoCase(tokens[1], "Multiple");
  if (!multiple) return ReadPLine(lines);
  int sections = tokens.size() > 2 ? CountOf(tokens[2]) : 0;
  if (tokens.size() < 3 && !ReadCount(sections)) return false;
  if (sections < 0) return false;
  CHU_DPolyLineArray read;
  int vertex = 0;
  for (int s = 0; s < sections; ++s) {
    int count = 0;
    auto line = std::make_unique<CHU_DPolyLine>();
    if (!ReadCount(count) || !ReadSection(count, *line)) return false;
    ApplyElevations(*line, vertex, kNoElevation);
    read.push_back(std::move(line));
  }
  std::move(read.begin(), read.end(), std::back_inserter(lines));
  return true;
}

bool CHU_MIDMIFFileImport::ReadRing(int count, CHU_DPolygon& ring) {
  if (!ReadSection(count - 1, ring)) return false;
  // The closing vertex repeats the first and is not kept. When it is missing the
  // line read is given back (the next ring's count, or the object's style).
  double x = 0.0, y = 0.0;
  if (count >= 1) ReadVertex(x, y);
  return true;
}

bool CHU_MIDMIFFileImport::ReadRegion(CHU_DPolygonArray& polygons) {
  if (!CurrentKeywordIs({"Region"})) return false;
  const auto tokens = SplitBlanks(m_line);
  const int rings = tokens.size() > 1 ? CountOf(tokens[1]) : 1;
  if (rings < 0) return false;
  CHU_DPolygonArray read;
  int vertex = 0;
  for (int r = 0; r < rings; ++r) {
    int count = 0;
    auto ring = std::make_unique<CHU_DPolygon>();
    if (!ReadCount(count) || !ReadRing(count, *ring)) return false;
    ApplyElevations(*ring, vertex, kNoElevation);
    read.push_back(std::move(ring));
  }
  std::move(read.begin(), read.end(), std::back_inserter(polygons));
  return true;
}

bool CHU_MIDMIFFileImport::ReadRegion(CHU_DPolygon& polygon) {
  if (!CurrentKeywordIs({"Region"})) return false;
  const auto tokens = SplitBlanks(m_line);
  if (tokens.size() > 1 && CountOf(tokens[1]) < 1) return false;
  int count = 0;
  CHU_DPolygon ring;
  if (!ReadCount(count) || !ReadRing(count, ring)) return false;
  int vertex = 0;
  ApplyElevations(ring, vertex, kNoElevation);
  polygon = ring;
  return true;
}

bool CHU_MIDMIFFileImport::ReadRect(CHU_DRect& rect) {
  if (!CurrentKeywordIs({"Rect", "RoundRect"})) return false;
  std::vector<double> numbers;
  if (!ReadNumbers(4, numbers)) return false;
  rect.SetRect(std::min(numbers[0], numbers[2]), std::max(numbers[1], numbers[3]), std::max(numbers[0], numbers[2]),
               std::min(numbers[1], numbers[3]));
  return true;
}

bool CHU_MIDMIFFileImport::ReadText(std::string& text, CHU_DRect& box) {
  if (!CurrentKeywordIs({"Text"})) return false;
  std::string_view rest = RestAfterFirstToken(m_line);
  std::string string;
  if (rest.empty()) {
    // The string stands on the next line.
    if (!NextLine()) return false;
    rest = TrimBlanks(m_line);
    if (rest.empty() || rest.front() != '"') {
      GiveBack();
      return false;
    }
  }
  string = Unquote(rest);
  // The box starts on the line after the string.
  m_line = "Text";
  std::vector<double> numbers;
  if (!ReadNumbers(4, numbers)) return false;
  text = std::move(string);
  box.SetRect(std::min(numbers[0], numbers[2]), std::max(numbers[1], numbers[3]), std::max(numbers[0], numbers[2]),
              std::min(numbers[1], numbers[3]));
  return true;
}

int CHU_MIDMIFFileImport::ReadPoints(CHU_DPointArray& points, bool showProgress) {
  IHU_Application& app = HU_GetApplication();
  const std::int64_t length = std::max<std::int64_t>(GetMIFLength(), 1);
  if (showProgress) app.ProgressStart(CStringManager::GetStr("HYSTR_PROGRESS_READING_MIF_POINTS"), 100);
  const std::size_t before = points.size();
  int shown = -1;
  for (int code = ReadNextDataType(); code != MIF_END_OF_FILE; code = ReadNextDataType()) {
    if (code == MIF_POINT) ReadPoint(points);
    if (code == MIF_MULTIPOINT) ReadMultiPoint(points);
    if (!showProgress) continue;
    const int step = static_cast<int>(std::min<std::int64_t>(100, GetMIFPosition() * 100 / length));
    if (step != shown) app.ProgressSetPos(shown = step);
  }
  if (showProgress) app.ProgressStop();
  return static_cast<int>(points.size() - before);
}

// ---- Attributes ----

bool CHU_MIDMIFFileImport::ReadMIDData() {
  m_midRow.clear();
  m_midValueCount = 0;
  m_elevations.clear();
  if (!m_mid.IsOpen()) return false;
  hu_mif::MidRowSplitter splitter(m_delimiterChar, std::max<std::size_t>(m_columns.size(), 1));
  std::string line;
  std::size_t rowBytes = 0;
  bool any = false;
  bool complete = false;
  while (!complete && m_mid.ReadLine(line)) {
    any = true;
    rowBytes += line.size() + 1;
    complete = splitter.Feed(line);
    // An unterminated quote ends its row here rather than swallowing the file.
    if (!complete && rowBytes > kMaxRowBytes) break;
  }
  if (!any) return false;
  if (!complete) splitter.Finish();
  m_midRow = std::move(splitter.Values());
  m_midValueCount = splitter.ValueCount();
  BeginElevations();
  return true;
}

std::string CHU_MIDMIFFileImport::GetMIDValue(int column) const {
  if (column < 0 || static_cast<std::size_t>(column) >= m_midRow.size()) return std::string();
  return m_midRow[static_cast<std::size_t>(column)];
}

bool CHU_MIDMIFFileImport::SetElevationColumn(const std::string& name) {
  for (int i = 0; i < GetNumDataItems(); ++i) {
    if (EqualsNoCase(m_columns[static_cast<std::size_t>(i)].GetName(), name)) {
      m_elevationColumn = i;
      return true;
    }
  }
  return false;
}

// ---- Elevations and units ----

void CHU_MIDMIFFileImport::BeginElevations() {
  m_elevations.clear();
  if (m_elevationColumn < 0 || m_elevationColumn >= GetNumDataItems()) return;
  const std::string value = GetMIDValue(m_elevationColumn);
  for (const std::string_view token : SplitBlanks(value)) {
    double value = 0.0;
    m_elevations.push_back(hu_mif::ParseDouble(token, value) ? AdjustUnit(value) : kNoElevation);
  }
}

double CHU_MIDMIFFileImport::ElevationFor(int vertexIndex, double noValue) const {
  if (m_elevationColumn < 0 || m_elevationColumn >= GetNumDataItems()) return noValue;
  if (m_elevations.empty()) return kNoElevation;
  return m_elevations[static_cast<std::size_t>(vertexIndex) % m_elevations.size()];
}

void CHU_MIDMIFFileImport::ApplyElevations(CHU_DPolyLine& chain, int& vertexIndex, double noValue) const {
  for (int i = 0; i < chain.GetCount(); ++i) chain.GetAt(i)->z = ElevationFor(vertexIndex++, noValue);
}

double CHU_MIDMIFFileImport::AdjustUnit(double value) const {
  if (m_unitFlagA != 0 || m_unitFlagB != 1) return value;
  return CHU_UnitsConvert::UnitsConvert_Metric_To_US(value, "m");
}

std::string CHU_MIDMIFFileImport::GetColumnTypeText(int column) const {
  if (column < 0 || static_cast<std::size_t>(column) >= m_columnTypes.size()) return std::string();
  return m_columnTypes[static_cast<std::size_t>(column)];
}
