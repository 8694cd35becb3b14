# Third-party dependencies of hy_util, shared by the build and the installed package
# so that an outside project finds exactly what the library was linked with.
find_package(ZLIB REQUIRED)
find_package(Threads REQUIRED)
find_package(Boost 1.74 REQUIRED)

if(NOT TARGET hy_util::libdeflate)
  find_path(HY_LIBDEFLATE_INCLUDE_DIR libdeflate.h)
  find_library(HY_LIBDEFLATE_LIBRARY NAMES deflate)
  if(NOT HY_LIBDEFLATE_INCLUDE_DIR OR NOT HY_LIBDEFLATE_LIBRARY)
    message(FATAL_ERROR "libdeflate not found (Debian package libdeflate-dev)")
  endif()
  add_library(hy_util::libdeflate UNKNOWN IMPORTED)
  set_target_properties(hy_util::libdeflate PROPERTIES
    IMPORTED_LOCATION "${HY_LIBDEFLATE_LIBRARY}"
    INTERFACE_INCLUDE_DIRECTORIES "${HY_LIBDEFLATE_INCLUDE_DIR}")
endif()

if(NOT TARGET hy_util::shapelib)
  find_path(HY_SHAPELIB_INCLUDE_DIR shapefil.h)
  find_library(HY_SHAPELIB_LIBRARY NAMES shp)
  if(NOT HY_SHAPELIB_INCLUDE_DIR OR NOT HY_SHAPELIB_LIBRARY)
    message(FATAL_ERROR "shapelib not found (Debian package libshp-dev)")
  endif()
  add_library(hy_util::shapelib UNKNOWN IMPORTED)
  set_target_properties(hy_util::shapelib PROPERTIES
    IMPORTED_LOCATION "${HY_SHAPELIB_LIBRARY}"
    INTERFACE_INCLUDE_DIRECTORIES "${HY_SHAPELIB_INCLUDE_DIR}")
endif()
