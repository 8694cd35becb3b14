target_sources(hy_util PRIVATE
  ${CMAKE_CURRENT_LIST_DIR}/cubic_spline.cpp
  ${CMAKE_CURRENT_LIST_DIR}/line.cpp
  ${CMAKE_CURRENT_LIST_DIR}/math.cpp
  ${CMAKE_CURRENT_LIST_DIR}/min_area_rect.cpp
  ${CMAKE_CURRENT_LIST_DIR}/point.cpp
  ${CMAKE_CURRENT_LIST_DIR}/point3d.cpp
  ${CMAKE_CURRENT_LIST_DIR}/polygon.cpp
  ${CMAKE_CURRENT_LIST_DIR}/polygon_clip.cpp
  ${CMAKE_CURRENT_LIST_DIR}/polyline.cpp
  ${CMAKE_CURRENT_LIST_DIR}/polyline_intersections.cpp
  ${CMAKE_CURRENT_LIST_DIR}/polyline_relations.cpp
  ${CMAKE_CURRENT_LIST_DIR}/rect.cpp
)
