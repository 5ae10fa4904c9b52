include(CMakePackageConfigHelpers)
get_property(TAMSEL3_EXPORT_SETS GLOBAL PROPERTY TAMSEL3_EXPORT_SETS)
configure_package_config_file(cmake/tamsel3Config.cmake.in
  ${PROJECT_BINARY_DIR}/tamsel3Config.cmake
  INSTALL_DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/tamsel3)
write_basic_package_version_file(${PROJECT_BINARY_DIR}/tamsel3ConfigVersion.cmake
  COMPATIBILITY SameMajorVersion)
install(FILES ${PROJECT_BINARY_DIR}/tamsel3Config.cmake ${PROJECT_BINARY_DIR}/tamsel3ConfigVersion.cmake
  DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/tamsel3)
