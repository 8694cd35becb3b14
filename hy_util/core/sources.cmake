target_sources(hy_util PRIVATE
  core/localization.cpp
  core/str_num_conversion.cpp
  core/string_algorithms.cpp
  core/string_manager.cpp
  core/string_manager_helper.cpp
  core/strings.cpp
  core/date_time.cpp
  core/error_log.cpp
  core/text_file.cpp
)
