target_sources(hy_util PRIVATE
  platform/application.cpp
  platform/file.cpp
  platform/locale.cpp
  platform/object.cpp
  platform/process.cpp
  platform/utf8.cpp
)
