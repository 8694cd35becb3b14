target_sources(hy_util PRIVATE
  formats/file_2dm.cpp
  formats/tuflow_summary.cpp
)
