target_sources(hy_util PRIVATE
  ${CMAKE_CURRENT_LIST_DIR}/units_convert.cpp
)
