target_sources(hy_util PRIVATE
  ${CMAKE_CURRENT_LIST_DIR}/shp_export.cpp
  ${CMAKE_CURRENT_LIST_DIR}/shp_file.cpp
)
