target_sources(hy_util PRIVATE
  ${CMAKE_CURRENT_LIST_DIR}/batch_point_sampler.cpp
  ${CMAKE_CURRENT_LIST_DIR}/batch_polygon_averager.cpp
  ${CMAKE_CURRENT_LIST_DIR}/binary_grid_file.cpp
  ${CMAKE_CURRENT_LIST_DIR}/binary_grid_format.cpp
  ${CMAKE_CURRENT_LIST_DIR}/binary_grid_lookup.cpp
  ${CMAKE_CURRENT_LIST_DIR}/binary_grid_writer.cpp
  ${CMAKE_CURRENT_LIST_DIR}/esri_grid.cpp
  ${CMAKE_CURRENT_LIST_DIR}/esri_grid_ascii.cpp
  ${CMAKE_CURRENT_LIST_DIR}/esri_grid_binary.cpp
  ${CMAKE_CURRENT_LIST_DIR}/esri_grid_header.cpp
  ${CMAKE_CURRENT_LIST_DIR}/esri_grid_helper.cpp
  ${CMAKE_CURRENT_LIST_DIR}/grid_converter.cpp
  ${CMAKE_CURRENT_LIST_DIR}/grid_row_codec.cpp
  ${CMAKE_CURRENT_LIST_DIR}/grid_row_source.cpp
)
