# What an installation holds: the library with its headers, pkg-config file and CMake package, and the tools.
# All of it may be moved as one tree.
option(QM_INSTALL "Install what is built" ${PROJECT_IS_TOP_LEVEL})
add_library(qm_sdkDual::qm_sdkDual ALIAS qm_sdkDual)
if(NOT QM_INSTALL)
  return()
endif()
include(CMakePackageConfigHelpers)

set(qm_cmake_dir ${CMAKE_INSTALL_LIBDIR}/cmake/qm_sdkDual)
install(TARGETS qm_sdkDual EXPORT qm_sdkDualTargets
  LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
  PUBLIC_HEADER DESTINATION ${CMAKE_INSTALL_INCLUDEDIR})
install(FILES include/qm_sdk_dual.hpp DESTINATION ${CMAKE_INSTALL_INCLUDEDIR})
install(DIRECTORY include/qm_sdk_dual DESTINATION ${CMAKE_INSTALL_INCLUDEDIR} FILES_MATCHING PATTERN "*.hpp")
install(EXPORT qm_sdkDualTargets NAMESPACE qm_sdkDual:: DESTINATION ${qm_cmake_dir})

configure_package_config_file(cmake/qm_sdkDualConfig.cmake.in ${PROJECT_BINARY_DIR}/qm_sdkDualConfig.cmake
  INSTALL_DESTINATION ${qm_cmake_dir})
write_basic_package_version_file(${PROJECT_BINARY_DIR}/qm_sdkDualConfigVersion.cmake
  COMPATIBILITY SameMajorVersion)
install(FILES
  ${PROJECT_BINARY_DIR}/qm_sdkDualConfig.cmake
  ${PROJECT_BINARY_DIR}/qm_sdkDualConfigVersion.cmake
  DESTINATION ${qm_cmake_dir})

file(RELATIVE_PATH qm_prefix_from_pc
  ${CMAKE_INSTALL_FULL_LIBDIR}/pkgconfig ${CMAKE_INSTALL_PREFIX})
string(REGEX REPLACE "/$" "" qm_prefix_from_pc ${qm_prefix_from_pc})
configure_file(cmake/qm_sdkDual.pc.in ${PROJECT_BINARY_DIR}/qm_sdkDual.pc @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/qm_sdkDual.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)

if(QM_BUILD_TOOLS)
  file(RELATIVE_PATH qm_lib_from_bin ${CMAKE_INSTALL_FULL_BINDIR} ${CMAKE_INSTALL_FULL_LIBDIR})
  set_target_properties(qmctl PROPERTIES INSTALL_RPATH "$ORIGIN/${qm_lib_from_bin}")
  install(TARGETS qmctl qm_simulator RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
endif()
install(FILES LICENSE DESTINATION ${CMAKE_INSTALL_DOCDIR})
