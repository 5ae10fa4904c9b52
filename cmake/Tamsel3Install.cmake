include(CMakePackageConfigHelpers)
get_property(TAMSEL3_EXPORT_SETS GLOBAL PROPERTY TAMSEL3_EXPORT_SETS)
configure_package_config_file(cmake/tamsel3Config.cmake.in
  ${PROJECT_BINARY_DIR}/tamsel3Config.cmake
  INSTALL_DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/tamsel3)
write_basic_package_version_file(${PROJECT_BINARY_DIR}/tamsel3ConfigVersion.cmake
  COMPATIBILITY SameMajorVersion)
install(FILES ${PROJECT_BINARY_DIR}/tamsel3Config.cmake ${PROJECT_BINARY_DIR}/tamsel3ConfigVersion.cmake
  ${PROJECT_SOURCE_DIR}/cmake/tamsel3WxTarget.cmake
  DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/tamsel3 COMPONENT dev)

# pkg-config: wx has no .pc file on Debian, so wx-config's answer goes in as it is; it
# names the system's own wx folders, the same on the host as on the build machine.
file(RELATIVE_PATH TAMSEL3_PC_PREFIX ${CMAKE_INSTALL_FULL_LIBDIR}/pkgconfig ${CMAKE_INSTALL_PREFIX})
string(REGEX REPLACE "/$" "" TAMSEL3_PC_PREFIX "${TAMSEL3_PC_PREFIX}")
# Every library a host may call, the ones its headers reach included; ylvane is only
# ever linked by the libraries themselves.
set(TAMSEL3_PC_LIBS -ltamsel3 -lombrelgrid -lombrelc -lplaxi1 -lHALLIN_2_13 -lpelit2 -lquern2 -ldrumlin2
    -lfathel2 -lkorvat2 -lzandor)
list(JOIN TAMSEL3_PC_LIBS " " TAMSEL3_PC_LIBS)
get_target_property(_wx_flags wxWidgets::wxWidgets INTERFACE_COMPILE_OPTIONS)
get_target_property(_wx_defs wxWidgets::wxWidgets INTERFACE_COMPILE_DEFINITIONS)
get_target_property(_wx_dirs wxWidgets::wxWidgets INTERFACE_INCLUDE_DIRECTORIES)
get_target_property(_wx_libs wxWidgets::wxWidgets INTERFACE_LINK_LIBRARIES)
list(TRANSFORM _wx_defs PREPEND -D)
list(TRANSFORM _wx_dirs PREPEND -I)
list(JOIN _wx_libs " " TAMSEL3_PC_WX_LIBS)
string(JOIN " " TAMSEL3_PC_WX_CFLAGS ${_wx_dirs} ${_wx_defs} ${_wx_flags})
configure_file(cmake/tamsel3.pc.in ${PROJECT_BINARY_DIR}/tamsel3.pc @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/tamsel3.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig COMPONENT dev)

# Debian packages (cpack -G DEB in the build folder): the shared libraries with their
# resource archive and catalogs, and the -dev package with what a host builds with.
set(CPACK_PACKAGE_NAME tamsel3)
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "${PROJECT_DESCRIPTION}")
set(CPACK_PACKAGE_CONTACT "tamsel3 developers <tamsel3@localhost>")
set(CPACK_PACKAGE_DIRECTORY ${PROJECT_BINARY_DIR}/packages)
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_GENERATOR DEB)
set(CPACK_COMPONENTS_ALL runtime dev)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(_runtime_package libtamsel3-${PROJECT_VERSION_MAJOR})
set(CPACK_DEBIAN_RUNTIME_PACKAGE_NAME ${_runtime_package})
set(CPACK_DEBIAN_RUNTIME_PACKAGE_SECTION libs)
# dpkg-shlibdeps finds the system libraries the shared objects need; the package's own
# libraries need each other and are found in the build tree.
set(CPACK_DEBIAN_RUNTIME_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS ${PROJECT_BINARY_DIR}/lib)
set(CPACK_DEBIAN_DEV_PACKAGE_NAME libtamsel3-dev)
set(CPACK_DEBIAN_DEV_PACKAGE_SECTION libdevel)
# The headers include wx's and Boost's; pkg-config is for the .pc file.
set(CPACK_DEBIAN_DEV_PACKAGE_DEPENDS
    "${_runtime_package} (= ${PROJECT_VERSION}), libwxgtk3.2-dev, libboost-thread-dev (>= 1.74), pkgconf | pkg-config")
include(CPack)
