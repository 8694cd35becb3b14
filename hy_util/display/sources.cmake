target_sources(hy_util PRIVATE
  ${CMAKE_CURRENT_LIST_DIR}/scale_info.cpp
  ${CMAKE_CURRENT_LIST_DIR}/transformation_matrix.cpp
)
