target_sources(hy_util PRIVATE
  ${CMAKE_CURRENT_LIST_DIR}/mid_mif_file.cpp
  ${CMAKE_CURRENT_LIST_DIR}/mid_mif_line_reader.cpp
  ${CMAKE_CURRENT_LIST_DIR}/mid_mif_text.cpp
  ${CMAKE_CURRENT_LIST_DIR}/mif_export.cpp
  ${CMAKE_CURRENT_LIST_DIR}/mif_import.cpp
  ${CMAKE_CURRENT_LIST_DIR}/shp_export.cpp
  ${CMAKE_CURRENT_LIST_DIR}/shp_file.cpp
)
