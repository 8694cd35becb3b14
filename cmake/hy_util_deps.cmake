# Third-party dependencies of hy_util, shared by the build and the installed package
# so that an outside project finds exactly what the library was linked with.
find_package(ZLIB REQUIRED)
find_package(Threads REQUIRED)
find_package(Boost 1.74 REQUIRED)

# An imported target for a library found by its header and library name, made
# once (the installed package may include this file again).
function(hy_import_library target header library debian_package)
  if(TARGET ${target})
    return()
  endif()
  string(TOUPPER "${library}" name)
  find_path(HY_${name}_INCLUDE_DIR ${header})
  find_library(HY_${name}_LIBRARY NAMES ${library})
  if(NOT HY_${name}_INCLUDE_DIR OR NOT HY_${name}_LIBRARY)
    message(FATAL_ERROR "${library} not found (Debian package ${debian_package})")
  endif()
  add_library(${target} UNKNOWN IMPORTED)
  set_target_properties(${target} PROPERTIES
    IMPORTED_LOCATION "${HY_${name}_LIBRARY}"
    INTERFACE_INCLUDE_DIRECTORIES "${HY_${name}_INCLUDE_DIR}")
endfunction()

hy_import_library(hy_util::libdeflate libdeflate.h deflate libdeflate-dev)
hy_import_library(hy_util::shapelib shapefil.h shp libshp-dev)
