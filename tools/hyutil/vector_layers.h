#pragma once
// The layers behind "hyutil vector": a shapefile or a MIF/MID pair read object by
// object through the library's reader classes (CHU_SHP, CHU_MIDMIFFileImport) and
// written through its writers (CHU_SHPExport, CHU_MIDMIFFileExport). Only one
// object is held at a time, so memory follows the largest object, not the file.

#include <array>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "hy_util/geometry/polyline.h"

namespace hyutil {

enum class VectorKind { Null, Point, MultiPoint, Line, Polyline, Polygon, Skipped };

// An attribute column as both formats can carry it.
struct VectorColumn {
  enum Type { String, Integer, Double, Other };
  std::string name;
  Type type = String;
  int width = 0;      // characters; 0 when the file gives none
  int decimals = -1;  // -1 when the file gives none
  std::string fileType;  // the type as the file declares it ("Char(20)", "N(10,3)")
};

struct VectorFeature {
  VectorKind kind = VectorKind::Null;
  // The object's kind as its format names it ("Region", "Pline", "PolygonZ",
  // "Text", ...).
  std::string kindName;
  // The vertices: one chain per polygon ring (a CHU_DPolygon), per line section,
  // or one chain holding the points of a point or multipoint.
  CHU_DPolyLineArray parts;
  // Counts of the parts and vertices, also when the reader was told not to copy
  // the vertices (SetVerticesWanted).
  std::size_t partCount = 0;
  long long vertexCount = 0;
  bool hasZ = false;
  std::vector<std::string> values;
  // A MIF collection's own line: its members follow as objects of their own, each
  // with the collection's row.
  bool container = false;
  // Where the object starts, for messages: "FILE:LINE" or "FILE: shape N".
  std::string where;
};

class VectorReader {
 public:
  virtual ~VectorReader() = default;
  virtual std::string Format() const = 0;
  virtual const std::vector<VectorColumn>& Columns() const = 0;
  // The bounds the file's header gives, if it gives any.
  virtual std::optional<std::array<double, 4>> HeaderBounds() const = 0;
  virtual std::string CoordSys() const = 0;
  // The next object; false at the end of the file.
  virtual bool Next(VectorFeature& feature) = 0;
  // How far reading has got, 0 to 1; negative when the reader cannot tell.
  virtual double Progress() const = 0;
  // With false, readers that can count without copying leave parts empty (a
  // summary needs only the counts).
  void SetVerticesWanted(bool wanted) { verticesWanted_ = wanted; }
  // Problems met on the way that did not stop the reading.
  std::vector<std::string> warnings;

 protected:
  bool verticesWanted_ = true;
};

class VectorWriter {
 public:
  virtual ~VectorWriter() = default;
  // Writes one object (the writer may take its parts); what cannot be written is
  // counted and told in the warnings.
  virtual void Write(VectorFeature& feature) = 0;
  // Completes the files and answers the names of those written.
  virtual std::vector<std::string> Finish() = 0;
  std::vector<std::string> warnings;
};

bool IsShapefilePath(const std::string& path);
bool IsMifPath(const std::string& path);

// Throws InputError when the file cannot be opened or its header read.
std::unique_ptr<VectorReader> OpenVectorReader(const std::string& path);
// A writer for the output path (.shp, or .mif/.mid) with the reader's columns; a
// MIF header needs the layer's bounds (minimum x, minimum y, maximum x, maximum y)
// before the first object. Throws InputError when the files cannot be created.
std::unique_ptr<VectorWriter> CreateVectorWriter(const std::string& path, const VectorReader& source,
                                                 const std::array<double, 4>& bounds);

}  // namespace hyutil
