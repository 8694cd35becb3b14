#include "vector_layers.h"

#include <shapefil.h>

#include <algorithm>
#include <charconv>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <map>
#include <sstream>

#include "commands.h"
#include "hy_util/formats/mif_export.h"
#include "hy_util/formats/mif_import.h"
#include "hy_util/formats/shp_export.h"
#include "hy_util/formats/shp_file.h"
#include "hy_util/platform/application.h"

namespace hyutil {
namespace {

namespace fs = std::filesystem;

std::string LowerExtension(const std::string& path) {
  std::string extension = fs::path(path).extension().string();
  std::transform(extension.begin(), extension.end(), extension.begin(),
                 [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
  return extension;
}

// The companion of a MIF or MID file: the same name with the other extension,
// in the same letter case.
std::string Companion(const std::string& path, const char* lower) {
  const std::string extension = fs::path(path).extension().string();
  const bool upper = !extension.empty() && std::isupper(static_cast<unsigned char>(extension.back()));
  std::string replaced = lower;
  if (upper) std::transform(replaced.begin(), replaced.end(), replaced.begin(), ::toupper);
  return fs::path(path).replace_extension(replaced).string();
}

// Without the blanks and tabs around it: dBASE pads values to their width, and
// MID files often align them.
std::string Trim(const std::string& text) {
  const auto first = text.find_first_not_of(" \t");
  if (first == std::string::npos) return {};
  return text.substr(first, text.find_last_not_of(" \t") - first + 1);
}

// Collects the message boxes a library class shows while it is installed.
class MessageCatcher : public CHU_DefaultApplication {
 public:
  MessageCatcher() : previous_(HU_SetApplication(this)) {}
  ~MessageCatcher() override { HU_SetApplication(previous_); }
  MessageCatcher(const MessageCatcher&) = delete;
  MessageCatcher& operator=(const MessageCatcher&) = delete;
  void ShowMessage(const std::string& text, HU_MessageKind) override { messages.push_back(text); }
  std::vector<std::string> messages;

 private:
  IHU_Application* previous_;
};

// ---- Shapefile ----

class ShapefileReader : public VectorReader {
 public:
  explicit ShapefileReader(const std::string& path) : path_(path) {
    {
      MessageCatcher catcher;
      shp_ = std::make_unique<CHU_SHP>(path);
      if (!shp_->GetSHPHandle())
        throw InputError{path + ": " + (catcher.messages.empty() ? "cannot open" : catcher.messages.front())};
      for (const std::string& m : catcher.messages)
        warnings.push_back(path + ": " + m + "; the objects are read without attributes");
    }
    DBFHandle dbf = shp_->GetDBFHandle();
    for (int f = 0; f < shp_->GetNumDataItems(); ++f) {
      char name[XBASE_FLDNAME_LEN_READ + 1] = {};
      int width = 0, decimals = 0;
      const DBFFieldType type = DBFGetFieldInfo(dbf, f, name, &width, &decimals);
      VectorColumn c{name, VectorColumn::Other, width, type == FTDouble ? decimals : -1, {}};
      c.type = type == FTString    ? VectorColumn::String
               : type == FTInteger ? VectorColumn::Integer
               : type == FTDouble  ? VectorColumn::Double
                                   : VectorColumn::Other;
      c.fileType = std::string(1, DBFGetNativeFieldType(dbf, f)) + "(" + std::to_string(width) +
                   (decimals > 0 ? "," + std::to_string(decimals) : "") + ")";
      columns_.push_back(c);
    }
    records_ = shp_->GetNumRecords();
    std::error_code ec;
    const fs::path prj = fs::path(path).replace_extension(".prj");
    if (fs::is_regular_file(prj, ec) && fs::file_size(prj, ec) < (1u << 20)) {
      std::ifstream in(prj, std::ios::binary);
      std::getline(in, coordSys_, '\0');
      while (!coordSys_.empty() && std::isspace(static_cast<unsigned char>(coordSys_.back()))) coordSys_.pop_back();
    }
  }

  std::string Format() const override {
    return std::string("ESRI shapefile (") + SHPTypeName(shp_->GetShapeType()) + ")";
  }
  const std::vector<VectorColumn>& Columns() const override { return columns_; }
  std::optional<std::array<double, 4>> HeaderBounds() const override {
    std::array<double, 4> b{};
    shp_->GetBounds(b[0], b[1], b[2], b[3]);
    return b;
  }
  std::string CoordSys() const override { return coordSys_; }
  double Progress() const override {
    return shp_->GetNumObjects() > 0 ? static_cast<double>(next_) / shp_->GetNumObjects() : 1.0;
  }

  bool Next(VectorFeature& f) override {
    if (next_ >= shp_->GetNumObjects()) return false;
    const int index = next_++;
    f.parts.clear();
    f.container = false;
    f.values.assign(columns_.size(), std::string());
    f.where = path_ + ": shape " + std::to_string(index);
    f.hasZ = false;
    const HU_SHPObjectPtr shape = shp_->ReadObject(index);
    if (!shape) {
      f.kind = VectorKind::Skipped;
      f.kindName = "unreadable";
      warnings.push_back(f.where + ": the record cannot be read; passed over");
      return true;
    }
    f.kindName = SHPTypeName(shape->nSHPType);
    const int t = shape->nSHPType;
    f.hasZ = t == SHPT_POINTZ || t == SHPT_ARCZ || t == SHPT_POLYGONZ || t == SHPT_MULTIPOINTZ;
    switch (t) {
      case SHPT_NULL: f.kind = VectorKind::Null; break;
      case SHPT_POINT: case SHPT_POINTZ: case SHPT_POINTM: f.kind = VectorKind::Point; break;
      case SHPT_MULTIPOINT: case SHPT_MULTIPOINTZ: case SHPT_MULTIPOINTM: f.kind = VectorKind::MultiPoint; break;
      case SHPT_ARC: case SHPT_ARCZ: case SHPT_ARCM: f.kind = VectorKind::Polyline; break;
      case SHPT_POLYGON: case SHPT_POLYGONZ: case SHPT_POLYGONM: f.kind = VectorKind::Polygon; break;
      default: f.kind = VectorKind::Skipped; break;
    }
    if (f.kind != VectorKind::Null && f.kind != VectorKind::Skipped && shape->nVertices == 0) f.kind = VectorKind::Null;
    const double noZ = CHU_DPoint::C_NULL_VALL;
    auto addRun = [&](int first, int end, bool ring) {
      std::unique_ptr<CHU_DPolyLine> chain = ring ? std::make_unique<CHU_DPolygon>() : std::make_unique<CHU_DPolyLine>();
      chain->InitialNumberOfPoints(end - first);
      for (int v = first; v < end; ++v) chain->AddPt(shape->padfX[v], shape->padfY[v], f.hasZ ? shape->padfZ[v] : noZ);
      f.parts.push_back(std::move(chain));
    };
    const bool points = f.kind == VectorKind::Point || f.kind == VectorKind::MultiPoint;
    const bool chains = f.kind == VectorKind::Polyline || f.kind == VectorKind::Polygon;
    f.partCount = points ? 1 : chains ? static_cast<std::size_t>(std::max(shape->nParts, 1)) : 0;
    f.vertexCount = f.kind == VectorKind::Point ? 1 : points || chains ? shape->nVertices : 0;
    if (verticesWanted_ && points) {
      addRun(0, f.kind == VectorKind::Point ? 1 : shape->nVertices, false);
    } else if (verticesWanted_ && chains) {
      const bool ring = f.kind == VectorKind::Polygon;
      if (shape->nParts <= 0) addRun(0, shape->nVertices, ring);
      for (int p = 0; p < shape->nParts; ++p)
        addRun(shape->panPartStart[p], p + 1 < shape->nParts ? shape->panPartStart[p + 1] : shape->nVertices, ring);
    }
    if (index < records_)
      for (std::size_t c = 0; c < columns_.size(); ++c) shp_->GetSHPData(index, static_cast<int>(c), f.values[c]);
    for (std::string& v : f.values) v = Trim(v);
    return true;
  }


 private:
  std::string coordSys_;
  std::string path_;
  std::unique_ptr<CHU_SHP> shp_;
  std::vector<VectorColumn> columns_;
  int records_ = 0;
  int next_ = 0;
};

// Parses a whole text as a number of type T; false when it is not one.
template <typename T>
bool ParseWhole(const std::string& text, T& value) {
  const char* begin = text.data();
  const char* end = text.data() + text.size();
  if (begin != end && *begin == '+') ++begin;
  const auto [ptr, ec] = std::from_chars(begin, end, value);
  return ec == std::errc() && ptr == end && begin != end;
}

class ShapefileWriter : public VectorWriter {
 public:
  ShapefileWriter(const std::string& path, const VectorReader& source)
      : base_(fs::path(path).replace_extension().string()), columns_(source.Columns()) {
    // dBASE field names hold 10 characters: longer names are cut, and a cut name
    // that repeats an earlier one ends in "_1", "_2", ... instead.
    std::vector<std::string> used;
    for (VectorColumn& c : columns_) {
      std::string name = c.name.substr(0, 10);
      for (int n = 1; std::find(used.begin(), used.end(), name) != used.end(); ++n) {
        const std::string suffix = "_" + std::to_string(n);
        name = c.name.substr(0, 10 - suffix.size()) + suffix;
      }
      if (name != c.name) warnings.push_back("column " + c.name + " is named " + name + " in the shapefile");
      used.push_back(name);
      c.name = name;
    }
  }

  void Write(VectorFeature& f) override {
    if (f.container) return;
    if (f.kind == VectorKind::Null || f.kind == VectorKind::Skipped || f.parts.empty()) {
      ++notWritten_[f.kindName.empty() ? "no geometry" : f.kindName];
      return;
    }
    Group& g = GroupFor(f);
    const int id = g.count;
    bool written = false;
    std::vector<const CHU_DPolyLine*> parts;
    for (const auto& p : f.parts) parts.push_back(p.get());
    switch (f.kind) {
      case VectorKind::Point: written = g.out->CreatePoint(id, f.parts[0]->GetAt(0)); break;
      case VectorKind::MultiPoint: written = g.out->CreateMultiPoint(id, *f.parts[0]); break;
      case VectorKind::Polygon: written = g.out->CreatePolygonRings(id, parts); break;
      default: written = g.out->CreatePolylineParts(id, parts); break;
    }
    if (!written) {
      warnings.push_back(f.where + ": " + f.kindName + " with too few vertices for a shapefile; not written");
      return;
    }
    ++g.count;
    WriteRow(g, id, f.values);
  }

  std::vector<std::string> Finish() override {
    std::vector<std::string> written;
    for (auto& [name, g] : groups_) g.out.reset();
    // A layer of one kind takes the output name itself; several kinds keep their
    // suffixed names.
    if (groups_.size() == 1) {
      Group& g = groups_.begin()->second;
      for (const char* extension : {".shp", ".shx", ".dbf"}) {
        std::error_code ec;
        fs::rename(g.base + extension, base_ + extension, ec);
        if (ec) throw InputError{"cannot rename '" + g.base + extension + "': " + ec.message()};
      }
      g.base = base_;
    }
    for (auto& [name, g] : groups_) {
      const std::string kind = g.count == 1 ? name.substr(0, name.size() - 1) : name;  // "1 point"
      written.push_back(g.base + ".shp (" + std::to_string(g.count) + " " + kind + ")");
    }
    for (const auto& [kind, count] : notWritten_)
      warnings.push_back(std::to_string(count) + " object" + (count == 1 ? "" : "s") + " of kind " + kind +
                         " not written: shapefiles hold points, multipoints, lines and polygons");
    if (groups_.empty()) warnings.push_back("no object could be written, so no shapefile was made");
    return written;
  }

 private:
  struct Group {
    std::string base;
    std::unique_ptr<CHU_SHPExport> out;
    int count = 0;
    bool fidColumn = false;
  };

  Group& GroupFor(const VectorFeature& f) {
    const char* name = f.kind == VectorKind::Point        ? "points"
                       : f.kind == VectorKind::MultiPoint ? "multipoints"
                       : f.kind == VectorKind::Polygon    ? "polygons"
                                                          : "lines";
    auto found = groups_.find(name);
    if (found != groups_.end()) return found->second;
    Group& g = groups_[name];
    g.base = base_ + "_" + name;
    int type = f.kind == VectorKind::Point        ? SHPT_POINT
               : f.kind == VectorKind::MultiPoint ? SHPT_MULTIPOINT
               : f.kind == VectorKind::Polygon    ? SHPT_POLYGON
                                                  : SHPT_ARC;
    if (f.hasZ) type += 10;
    g.out = std::make_unique<CHU_SHPExport>(g.base);
    g.out->SetShapeType(type);
    if (!g.out->CreateFiles()) throw InputError{"cannot create '" + g.base + ".shp'"};
    for (const VectorColumn& c : columns_) {
      bool added = false;
      switch (c.type) {
        case VectorColumn::Integer: added = g.out->AddIntField(c.name, c.width > 0 ? std::min(c.width, 9) : 9); break;
        case VectorColumn::Double:
          added = g.out->AddDoubleField(c.name, c.width > 0 ? c.width : 24, c.decimals >= 0 ? c.decimals : 15);
          break;
        default: added = g.out->AddStringField(c.name, c.width > 0 ? std::min(c.width, 254) : 254); break;
      }
      if (!added) throw InputError{"cannot add the column '" + c.name + "' to '" + g.base + ".dbf'"};
    }
    // A table without columns would hold no records; the object number keeps one
    // row per shape, as other programs expect.
    if (columns_.empty()) {
      g.out->AddIntField("FID", 9);
      g.fidColumn = true;
    }
    return g;
  }

  void WriteRow(Group& g, int id, const std::vector<std::string>& values) {
    if (g.fidColumn) {
      g.out->CreateRecord(id, 0, id);
      return;
    }
    for (std::size_t c = 0; c < columns_.size(); ++c) {
      const int field = static_cast<int>(c);
      const std::string& v = c < values.size() ? values[c] : std::string();
      bool ok = false;
      if (v.empty()) {
        ok = DBFWriteNULLAttribute(g.out->GetDBFHandle(), id, field) != 0;
      } else if (columns_[c].type == VectorColumn::Integer) {
        int number = 0;
        ok = ParseWhole(v, number) && g.out->CreateRecord(id, field, number);
      } else if (columns_[c].type == VectorColumn::Double) {
        double number = 0.0;
        ok = ParseWhole(v, number) && g.out->CreateRecord(id, field, number);
      } else {
        ok = g.out->CreateRecord(id, field, v);
      }
      if (!ok) {
        // The record must exist before the next one can be written.
        DBFWriteNULLAttribute(g.out->GetDBFHandle(), id, field);
        if (!v.empty() && badValues_++ < 10)
          warnings.push_back("value '" + v + "' of column " + columns_[c].name + " (object " + std::to_string(id) +
                             ") does not fit the shapefile column; left empty");
      }
    }
  }

  std::string base_;
  std::vector<VectorColumn> columns_;
  std::map<std::string, Group> groups_;
  std::map<std::string, int> notWritten_;
  int badValues_ = 0;
};

// ---- MIF/MID ----

class MifReader : public VectorReader {
 public:
  explicit MifReader(const std::string& path)
      : mif_(IsMifExtension(path) ? path : Companion(path, ".mif")),
        mid_(Companion(mif_, ".mid")),
        in_(mid_, mif_, 0, 0) {
    if (!in_.OpenFiles()) throw InputError{in_.GetLastError()};
    if (!in_.ReadHeader()) throw InputError{in_.GetLastError()};
    for (int i = 0; i < in_.GetNumDataItems(); ++i) {
      const CHU_MIDMIFData* d = in_.GetDataItem(i);
      VectorColumn c{d->GetName(), VectorColumn::Other, 0, -1, {}};
      switch (d->GetType()) {
        case CHU_MIDMIFData::kInteger: c.type = VectorColumn::Integer; break;
        case CHU_MIDMIFData::kChar: c.type = VectorColumn::String, c.width = d->GetSize(); break;
        case CHU_MIDMIFData::kFloat:
        case CHU_MIDMIFData::kDouble: c.type = VectorColumn::Double, c.decimals = d->GetSize() >= 0 ? d->GetSize() : -1; break;
        default: break;
      }
      std::string declared;
      in_.GetDataStr(i, declared);
      c.fileType = declared.substr(std::min(declared.size(), d->GetName().size() + 1));
      columns_.push_back(c);
    }
    RefineUndefinedColumns();
  }

  static bool IsMifExtension(const std::string& path) { return LowerExtension(path) == ".mif"; }

  std::string Format() const override { return "MapInfo MIF/MID"; }
  const std::vector<VectorColumn>& Columns() const override { return columns_; }
  std::optional<std::array<double, 4>> HeaderBounds() const override {
    std::array<double, 4> b{};
    if (!in_.GetBounds(b[0], b[1], b[2], b[3])) return std::nullopt;
    return b;
  }
  std::string CoordSys() const override { return in_.GetCoordSys(); }
  // The MIF reader does not tell its file position; objects are small against the
  // file, so progress is told by objects read instead (see the command).
  double Progress() const override { return -1.0; }

  bool Next(VectorFeature& f) override {
    const int code = in_.ReadNextDataType();
    if (code == MIF_END_OF_FILE) return false;
    f.parts.clear();
    f.hasZ = false;
    f.container = code == MIF_COLLECTION;
    f.where = mif_ + ":" + std::to_string(in_.GetLineNumber());
    f.values = in_.GetMIDRow();
    f.values.resize(columns_.size());
    for (std::string& v : f.values) v = Trim(v);
    bool read = true;
    switch (code) {
      case MIF_POINT:
      case MIF_MULTIPOINT: {
        CHU_DPointArray points;
        read = code == MIF_POINT ? in_.ReadPoint(points) : in_.ReadMultiPoint(points);
        auto chain = std::make_unique<CHU_DPolyLine>();
        for (const auto& p : points) chain->AddPt(p->x, p->y, p->z);
        f.parts.push_back(std::move(chain));
        f.kind = code == MIF_POINT ? VectorKind::Point : VectorKind::MultiPoint;
        f.kindName = code == MIF_POINT ? "Point" : "MultiPoint";
        break;
      }
      case MIF_LINE:
        read = in_.ReadLine(f.parts);
        f.kind = VectorKind::Line;
        f.kindName = "Line";
        break;
      case MIF_PLINE:
        read = in_.ReadPLineSections(f.parts);
        f.kind = VectorKind::Polyline;
        f.kindName = "Pline";
        break;
      case MIF_REGION: {
        CHU_DPolygonArray rings;
        read = in_.ReadRegion(rings);
        for (auto& r : rings) f.parts.push_back(std::move(r));
        f.kind = VectorKind::Polygon;
        f.kindName = "Region";
        break;
      }
      default:
        f.kind = VectorKind::Skipped;
        f.kindName = KindName(code);
        break;
    }
    if (!read) {
      warnings.push_back(f.where + ": " + f.kindName + " object cannot be read; passed over");
      f.parts.clear();
      f.kind = VectorKind::Skipped;
      f.kindName = "unreadable " + f.kindName;
    } else if (f.kind != VectorKind::Skipped && f.parts.empty()) {
      f.kind = VectorKind::Null;
    }
    f.partCount = f.parts.size();
    f.vertexCount = 0;
    for (const auto& p : f.parts) f.vertexCount += p->GetCount();
    return true;
  }

 private:
  static std::string KindName(int code) {
    switch (code) {
      case MIF_ELLIPSE: return "Ellipse";
      case MIF_RECT: return "Rect";
      case MIF_ROUNDRECT: return "RoundRect";
      case MIF_MULTIPLE: return "Multiple";
      case MIF_COLLECTION: return "Collection";
      case MIF_TEXT: return "Text";
      case MIF_ARC: return "Arc";
      default: return "object " + std::to_string(code);
    }
  }

  // The importer reads the MapInfo types it does not convert (Decimal, Smallint,
  // Logical, Date, ...) as text; their declarations in the header still say what
  // the values are, so the header's column lines are read again here to carry
  // numbers over as numbers.
  void RefineUndefinedColumns() {
    std::ifstream in(mif_);
    std::string line;
    std::size_t column = 0, count = 0;
    bool inColumns = false;
    while (std::getline(in, line) && column < columns_.size()) {
      std::replace_if(line.begin(), line.end(), [](char ch) { return ch == '(' || ch == ')' || ch == ',' || ch == '\r' || ch == '\t'; }, ' ');
      std::istringstream tokens(line);
      std::string first, type;
      tokens >> first;
      if (!inColumns) {
        if (Lower(first) == "data") return;
        if (Lower(first) == "columns" && (tokens >> count)) inColumns = true;
        continue;
      }
      if (first.empty()) continue;
      if (column >= count) return;
      VectorColumn& c = columns_[column++];
      tokens >> type;
      type = Lower(type);
      if (c.type != VectorColumn::Other) continue;
      int width = 0, decimals = 0;
      if (type == "decimal" && (tokens >> width >> decimals)) {
        c.type = VectorColumn::Double, c.width = width, c.decimals = decimals;
        c.fileType = "Decimal(" + std::to_string(width) + "," + std::to_string(decimals) + ")";
      } else if (type == "smallint") {
        c.type = VectorColumn::Integer, c.fileType = "Smallint";
      } else if (type == "largeint") {  // 64-bit: kept whole as a real without decimals
        c.type = VectorColumn::Double, c.width = 20, c.decimals = 0, c.fileType = "LargeInt";
      } else if (type == "logical") {
        c.type = VectorColumn::String, c.width = 1, c.fileType = "Logical";
      } else if (type == "date") {
        c.type = VectorColumn::String, c.width = 10, c.fileType = "Date";
      }
    }
  }

  static std::string Lower(std::string text) {
    std::transform(text.begin(), text.end(), text.begin(), [](unsigned char ch) { return static_cast<char>(std::tolower(ch)); });
    return text;
  }

  std::string mif_, mid_;
  mutable CHU_MIDMIFFileImport in_;
  std::vector<VectorColumn> columns_;
};

// MapInfo names the coordinate system of a layer in its own terms; a shapefile's
// .prj is WKT. Geographic WKT maps to MapInfo's longitude/latitude on WGS 84,
// everything else to a plain plane in metres.
std::string MifCoordSysFor(const VectorReader& source) {
  const std::string text = source.CoordSys();
  if (dynamic_cast<const MifReader*>(&source)) return text.empty() ? "NonEarth Units \"m\"" : text;
  if (text.rfind("GEOGCS", 0) == 0) return "Earth Projection 1, 104";
  return "NonEarth Units \"m\"";
}

class MifWriter : public VectorWriter {
 public:
  MifWriter(const std::string& path, const VectorReader& source, const std::array<double, 4>& bounds)
      : mif_(MifReader::IsMifExtension(path) ? path : Companion(path, ".mif")),
        mid_(Companion(mif_, ".mid")),
        out_(mid_, mif_, 0, 0),
        columns_(source.Columns()) {
    for (const VectorColumn& c : columns_) {
      switch (c.type) {
        case VectorColumn::Integer: out_.AddDataItem(c.name, CHU_MIDMIFData::kInteger, 0); break;
        case VectorColumn::Double: out_.AddDataItem(c.name, CHU_MIDMIFData::kFloat, c.decimals); break;
        default: out_.AddDataItem(c.name, CHU_MIDMIFData::kChar, c.width > 0 ? c.width : 254); break;
      }
    }
    if (!out_.OpenFiles()) throw InputError{"cannot create '" + mif_ + "' and '" + mid_ + "'"};
    // The bounds rectangle: left, top, right, bottom with y up.
    out_.SetHeader("300", "WindowsLatin1", ",", MifCoordSysFor(source),
                   CHU_DRect(bounds[0], bounds[3], bounds[2], bounds[1]));
    out_.ExHeader();
  }

  void Write(VectorFeature& f) override {
    if (f.container) return;
    f.values.resize(columns_.size());
    switch (f.kind) {
      case VectorKind::Point:
      case VectorKind::MultiPoint:
        if (f.kind == VectorKind::MultiPoint && f.parts[0]->GetCount() > 1) ++splitMultipoints_;
        for (int i = 0; i < f.parts[0]->GetCount(); ++i) {
          CHU_DPoint p(f.parts[0]->GetAt(i)->x, f.parts[0]->GetAt(i)->y);
          out_.ExPoint(p, f.values);
          ++count_;
        }
        return;
      case VectorKind::Line:
      case VectorKind::Polyline:
        if (f.parts.size() == 1 ? out_.ExPline(*f.parts[0], f.values) : out_.ExPline(f.parts, f.values)) ++count_;
        else ++notWritten_["empty " + f.kindName];
        return;
      case VectorKind::Polygon: {
        // The writer repeats each ring's first vertex to close it, so a ring that is
        // already closed gives up its closing vertex first.
        CHU_DPolygonArray rings;
        for (auto& part : f.parts) {
          auto* ring = static_cast<CHU_DPolygon*>(part.release());
          const int n = ring->GetCount();
          if (n > 1 && ring->GetAt(0)->x == ring->GetAt(n - 1)->x && ring->GetAt(0)->y == ring->GetAt(n - 1)->y)
            ring->RemoveAt(n - 1);
          rings.emplace_back(ring);
        }
        f.parts.clear();
        if (rings.size() == 1 ? out_.ExRegion(*rings[0], f.values) : out_.ExRegion(rings, f.values)) ++count_;
        else ++notWritten_["empty " + f.kindName];
        return;
      }
      default:
        ++notWritten_[f.kindName.empty() ? "no geometry" : f.kindName];
        return;
    }
  }

  std::vector<std::string> Finish() override {
    if (!out_.CloseFiles()) throw InputError{"cannot write '" + mif_ + "' and '" + mid_ + "'"};
    if (splitMultipoints_ > 0)
      warnings.push_back(std::to_string(splitMultipoints_) + " multipoint" + (splitMultipoints_ == 1 ? "" : "s") +
                         " written as separate points, each with its object's row");
    for (const auto& [kind, count] : notWritten_)
      warnings.push_back(std::to_string(count) + " object" + (count == 1 ? "" : "s") + " of kind " + kind +
                         " not written");
    return {mif_ + " and " + mid_ + " (" + std::to_string(count_) + " objects)"};
  }

 private:
  std::string mif_, mid_;
  CHU_MIDMIFFileExport out_;
  std::vector<VectorColumn> columns_;
  int count_ = 0;
  int splitMultipoints_ = 0;
  std::map<std::string, int> notWritten_;
};

}  // namespace

bool IsShapefilePath(const std::string& path) { return LowerExtension(path) == ".shp"; }
bool IsMifPath(const std::string& path) {
  const std::string e = LowerExtension(path);
  return e == ".mif" || e == ".mid";
}

std::unique_ptr<VectorReader> OpenVectorReader(const std::string& path) {
  if (IsShapefilePath(path)) return std::make_unique<ShapefileReader>(path);
  if (IsMifPath(path)) return std::make_unique<MifReader>(path);
  throw InputError{"'" + path + "' is neither a shapefile (.shp) nor a MIF/MID file (.mif, .mid)"};
}

std::unique_ptr<VectorWriter> CreateVectorWriter(const std::string& path, const VectorReader& source,
                                                 const std::array<double, 4>& bounds) {
  if (IsShapefilePath(path)) return std::make_unique<ShapefileWriter>(path, source);
  if (IsMifPath(path)) return std::make_unique<MifWriter>(path, source, bounds);
  throw InputError{"'" + path + "': the output must end in .shp, .mif or .mid"};
}

}  // namespace hyutil
