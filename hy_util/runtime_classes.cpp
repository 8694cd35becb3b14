// The library's dynamically creatable classes. Listing them here (rather than
// registering from static initialisers) keeps them in a static link.
#include "hy_util/platform/object.h"
#include "hy_util/formats/shp_file.h"
#include "hy_util/geometry/point.h"
#include "hy_util/geometry/point3d.h"
#include "hy_util/geometry/polygon.h"
#include "hy_util/geometry/polyline.h"
#include "hy_util/geometry/rect.h"
#include "hy_util/mesh/boundary_mesh.h"

void HU_RegisterLibraryClasses() {
  CHU_DPoint::RegisterRuntimeClass();
  CHU_DPoint3D::RegisterRuntimeClass();
  CHU_DPolygon::RegisterRuntimeClass();
  CHU_DPolyLine::RegisterRuntimeClass();
  CHU_DRect::RegisterRuntimeClass();
  CHU_DBoundaryMesh::RegisterRuntimeClass();
  CHU_SHP::RegisterRuntimeClass();
}
