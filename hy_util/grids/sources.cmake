target_sources(hy_util PRIVATE
  ${CMAKE_CURRENT_LIST_DIR}/batch_point_sampler.cpp
  ${CMAKE_CURRENT_LIST_DIR}/batch_polygon_averager.cpp
  ${CMAKE_CURRENT_LIST_DIR}/binary_grid_file.cpp
  ${CMAKE_CURRENT_LIST_DIR}/binary_grid_format.cpp
  ${CMAKE_CURRENT_LIST_DIR}/binary_grid_lookup.cpp
)
