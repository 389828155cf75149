# Installation: the shared library, the headers, the command-line tool, a
# CMake package (find_package(tmrdar) gives the target tmrdar::tmrdar) and a
# pkg-config file. Both package files find their prefix relative to their own
# place, so the installed tree may be moved as a whole.
include(GNUInstallDirs)
include(CMakePackageConfigHelpers)

set(TMRDAR_CMAKE_DIR ${CMAKE_INSTALL_LIBDIR}/cmake/tmrdar)

install(TARGETS tmrdar EXPORT tmrdarTargets
  LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
  RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
install(TARGETS tmrdar_cli RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
install(DIRECTORY include/tmrdar DESTINATION ${CMAKE_INSTALL_INCLUDEDIR})

install(EXPORT tmrdarTargets NAMESPACE tmrdar:: DESTINATION ${TMRDAR_CMAKE_DIR})
configure_package_config_file(cmake/tmrdarConfig.cmake.in ${PROJECT_BINARY_DIR}/tmrdarConfig.cmake
  INSTALL_DESTINATION ${TMRDAR_CMAKE_DIR})
write_basic_package_version_file(${PROJECT_BINARY_DIR}/tmrdarConfigVersion.cmake
  COMPATIBILITY SameMajorVersion)
install(FILES ${PROJECT_BINARY_DIR}/tmrdarConfig.cmake ${PROJECT_BINARY_DIR}/tmrdarConfigVersion.cmake
  DESTINATION ${TMRDAR_CMAKE_DIR})

file(RELATIVE_PATH TMRDAR_PC_TO_PREFIX /${CMAKE_INSTALL_LIBDIR}/pkgconfig /)
string(REGEX REPLACE "/$" "" TMRDAR_PC_TO_PREFIX "${TMRDAR_PC_TO_PREFIX}")
configure_file(cmake/tmrdar.pc.in ${PROJECT_BINARY_DIR}/tmrdar.pc @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/tmrdar.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
