target_sources(hy_util PRIVATE
  platform/application.cpp
  platform/file.cpp
  platform/object.cpp
)
