target_sources(hy_util PRIVATE
  core/text_file.cpp
)
