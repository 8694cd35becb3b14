include(CMakePackageConfigHelpers)

set(HY_INSTALL_CMAKEDIR ${CMAKE_INSTALL_LIBDIR}/cmake/hy_util)
set(HY_INSTALL_LANGDIR ${CMAKE_INSTALL_DATADIR}/hy_util/lang)

install(TARGETS hy_util hy_util_flags EXPORT hy_utilTargets
  ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR}
  LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
  RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
install(DIRECTORY hy_util/ DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/hy_util
  FILES_MATCHING PATTERN "*.h")
install(FILES lang/en-US.xml DESTINATION ${HY_INSTALL_LANGDIR})

install(EXPORT hy_utilTargets NAMESPACE hy_util:: DESTINATION ${HY_INSTALL_CMAKEDIR})
configure_package_config_file(cmake/hy_utilConfig.cmake.in
  ${PROJECT_BINARY_DIR}/hy_utilConfig.cmake
  INSTALL_DESTINATION ${HY_INSTALL_CMAKEDIR}
  PATH_VARS HY_INSTALL_LANGDIR)
write_basic_package_version_file(${PROJECT_BINARY_DIR}/hy_utilConfigVersion.cmake
  COMPATIBILITY SameMajorVersion)
install(FILES
  ${PROJECT_BINARY_DIR}/hy_utilConfig.cmake
  ${PROJECT_BINARY_DIR}/hy_utilConfigVersion.cmake
  cmake/hy_util_deps.cmake
  DESTINATION ${HY_INSTALL_CMAKEDIR})

# The .pc file finds its prefix relative to itself, so it stays right whatever
# prefix `cmake --install --prefix` is given.
file(RELATIVE_PATH HY_PC_TO_PREFIX "/p/${CMAKE_INSTALL_LIBDIR}/pkgconfig" "/p")
string(REGEX REPLACE "/$" "" HY_PC_TO_PREFIX "${HY_PC_TO_PREFIX}")
configure_file(cmake/hy_util.pc.in ${PROJECT_BINARY_DIR}/hy_util.pc @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/hy_util.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
