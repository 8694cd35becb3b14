#pragma once
// Shapefiles for the tests, written through shapelib directly so that the reader is
// tried on shapes the library's writer does not make (several parts, multipoints).

#include <shapefil.h>

#include <string>
#include <vector>

#include "hy_util/formats/shp_file.h"
#include "hy_util/formats/shp_handles.h"

namespace hytest {

struct TestShape {
  std::vector<int> partStarts;
  std::vector<double> x, y, z;
};

// Writes base.shp/.shx and, when names is not empty, base.dbf with one string field
// "NAME" holding names[i] for shape i.
inline void WriteShapes(const std::string& base, int shapeType, const std::vector<TestShape>& shapes,
                        const std::vector<std::string>& names = {}) {
  HU_SHPHandlePtr shp(SHPCreate(base.c_str(), shapeType));
  for (const TestShape& s : shapes) {
    // A shape without vertices is written as a null shape (shapelib cannot write an
    // empty point).
    HU_SHPObjectPtr object(SHPCreateObject(s.x.empty() ? SHPT_NULL : shapeType, -1, static_cast<int>(s.partStarts.size()), s.partStarts.data(),
                                           nullptr, static_cast<int>(s.x.size()), s.x.data(), s.y.data(),
                                           s.z.empty() ? nullptr : s.z.data(), nullptr));
    SHPWriteObject(shp.get(), -1, object.get());
  }
  if (names.empty()) return;
  HU_DBFHandlePtr dbf(DBFCreate(base.c_str()));
  DBFAddField(dbf.get(), "NAME", FTString, 12, 0);
  for (std::size_t i = 0; i < names.size(); ++i)
    DBFWriteStringAttribute(dbf.get(), static_cast<int>(i), 0, names[i].c_str());
}

// The type names of the first count attribute fields.
inline std::vector<std::string> DataTypes(const CHU_SHP& shp, int count) {
  std::vector<std::string> types(static_cast<std::size_t>(count));
  for (int f = 0; f < count; ++f) shp.GetDataType(f, types[static_cast<std::size_t>(f)]);
  return types;
}

// A square outer ring (clockwise, closed) around a square hole (anticlockwise, closed).
inline TestShape SquareWithHole() {
  return {{0, 5},
          {0, 0, 10, 10, 0, 2, 4, 4, 2, 2},
          {0, 10, 10, 0, 0, 2, 2, 4, 4, 2},
          {1, 2, 3, 4, 5, 6, 7, 8, 9, 10}};
}

}  // namespace hytest
