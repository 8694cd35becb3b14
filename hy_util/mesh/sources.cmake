target_sources(hy_util PRIVATE
  ${CMAKE_CURRENT_LIST_DIR}/attribute_store.cpp
  ${CMAKE_CURRENT_LIST_DIR}/boundary_mesh.cpp
  ${CMAKE_CURRENT_LIST_DIR}/boundary_mesh_edit.cpp
  ${CMAKE_CURRENT_LIST_DIR}/boundary_mesh_element.cpp
  ${CMAKE_CURRENT_LIST_DIR}/boundary_mesh_element_set.cpp
  ${CMAKE_CURRENT_LIST_DIR}/boundary_mesh_flow_data.cpp
  ${CMAKE_CURRENT_LIST_DIR}/boundary_mesh_select.cpp
  ${CMAKE_CURRENT_LIST_DIR}/boundary_mesh_vertex.cpp
  ${CMAKE_CURRENT_LIST_DIR}/element_filter.cpp
  ${CMAKE_CURRENT_LIST_DIR}/flow_constriction_list.cpp
  ${CMAKE_CURRENT_LIST_DIR}/id_iterators.cpp
  ${CMAKE_CURRENT_LIST_DIR}/mesh_gen_params.cpp
  ${CMAKE_CURRENT_LIST_DIR}/vertex_index.cpp
)
