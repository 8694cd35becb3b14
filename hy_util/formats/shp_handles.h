#pragma once
// Owners of shapelib's handles: each closes or destroys what it holds exactly once,
// whatever path a function leaves by.

#include <shapefil.h>

#include <memory>

struct HU_SHPHandleCloser {
  void operator()(SHPHandle handle) const noexcept { SHPClose(handle); }
};
struct HU_DBFHandleCloser {
  void operator()(DBFHandle handle) const noexcept { DBFClose(handle); }
};
struct HU_SHPObjectDestroyer {
  void operator()(SHPObject* object) const noexcept { SHPDestroyObject(object); }
};

// The handle types point at shapelib's info structures, so unique_ptr holds them as
// they are.
using HU_SHPHandlePtr = std::unique_ptr<SHPInfo, HU_SHPHandleCloser>;
using HU_DBFHandlePtr = std::unique_ptr<DBFInfo, HU_DBFHandleCloser>;
using HU_SHPObjectPtr = std::unique_ptr<SHPObject, HU_SHPObjectDestroyer>;
