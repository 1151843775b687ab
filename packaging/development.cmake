# For programs of others: CMake's find_package(qrb), pkg-config, examples.
include(CMakePackageConfigHelpers)

set(package_folder ${CMAKE_INSTALL_LIBDIR}/cmake/qrb)
configure_package_config_file(qrb-config.cmake.in ${CMAKE_CURRENT_BINARY_DIR}/qrb-config.cmake
  INSTALL_DESTINATION ${package_folder} NO_SET_AND_CHECK_MACRO NO_CHECK_REQUIRED_COMPONENTS_MACRO)
# As the soname has it: up to version 1 functions may change with each minor version.
write_basic_package_version_file(${CMAKE_CURRENT_BINARY_DIR}/qrb-config-version.cmake
  COMPATIBILITY SameMinorVersion)
install(EXPORT qrb NAMESPACE qrb:: FILE qrb-targets.cmake DESTINATION ${package_folder}
  COMPONENT development)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/qrb-config.cmake
    ${CMAKE_CURRENT_BINARY_DIR}/qrb-config-version.cmake
  DESTINATION ${package_folder} COMPONENT development)

# Paths from the place of the .pc file, so that the whole can be moved.
set(pkgconfig_folder ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
file(RELATIVE_PATH to_prefix /${pkgconfig_folder} /)
string(REGEX REPLACE "/$" "" to_prefix "${to_prefix}")
foreach(name qrb qrb-layer)
  configure_file(${name}.pc.in ${CMAKE_CURRENT_BINARY_DIR}/${name}.pc @ONLY)
  install(FILES ${CMAKE_CURRENT_BINARY_DIR}/${name}.pc DESTINATION ${pkgconfig_folder}
    COMPONENT development)
endforeach()

set(documents ${CMAKE_INSTALL_DATADIR}/doc/libqrb-dev)
install(FILES ${CMAKE_SOURCE_DIR}/docs/file-format.md DESTINATION ${documents}
  COMPONENT development)
install(DIRECTORY ${CMAKE_SOURCE_DIR}/examples DESTINATION ${documents} COMPONENT development)
