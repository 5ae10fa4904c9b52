# Build options shared by every target of the project, as interface targets that
# are linked privately and never exported.
add_library(tamsel3_warnings INTERFACE)
if(TAMSEL3_WARNINGS)
  target_compile_options(tamsel3_warnings INTERFACE -Wall -Wextra -Wno-unused-parameter)
  if(TAMSEL3_WERROR)
    target_compile_options(tamsel3_warnings INTERFACE -Werror)
  endif()
endif()

add_library(tamsel3_sanitizers INTERFACE)
if(TAMSEL3_SANITIZE STREQUAL "address")
  set(_san -fsanitize=address,undefined -fno-sanitize-recover=undefined -fno-omit-frame-pointer)
elseif(TAMSEL3_SANITIZE STREQUAL "thread")
  set(_san -fsanitize=thread -fno-omit-frame-pointer)
elseif(NOT TAMSEL3_SANITIZE STREQUAL "")
  message(FATAL_ERROR "TAMSEL3_SANITIZE must be empty, address or thread")
endif()
# The fuzzing build instruments every library for libFuzzer's coverage, not just the targets.
option(TAMSEL3_FUZZ_COVERAGE "Instrument every target for libFuzzer (Clang only)" OFF)
if(TAMSEL3_FUZZ_COVERAGE)
  list(APPEND _san -fsanitize=fuzzer-no-link)
endif()
if(_san)
  target_compile_options(tamsel3_sanitizers INTERFACE ${_san})
  target_link_options(tamsel3_sanitizers INTERFACE ${_san})
  # GCC links its sanitizer runtime into shared libraries; Clang only into programs, which
  # would leave the installed libraries needing a host linked with the same flags. Every
  # target takes Clang's shared runtime instead, found where Clang keeps it.
  if(CMAKE_CXX_COMPILER_ID MATCHES "Clang")
    target_link_options(tamsel3_sanitizers INTERFACE -shared-libsan)
    execute_process(COMMAND ${CMAKE_CXX_COMPILER} -print-file-name=libclang_rt.asan-x86_64.so
                    OUTPUT_VARIABLE _san_runtime OUTPUT_STRIP_TRAILING_WHITESPACE)
    get_filename_component(TAMSEL3_SANITIZER_RUNTIME_DIR ${_san_runtime} DIRECTORY)
    list(APPEND CMAKE_BUILD_RPATH ${TAMSEL3_SANITIZER_RUNTIME_DIR})
  endif()
endif()

# Applies the project's defaults to one of its own targets.
function(tamsel3_target_defaults target)
  target_link_libraries(${target} PRIVATE
    $<BUILD_INTERFACE:tamsel3_warnings> $<BUILD_INTERFACE:tamsel3_sanitizers>)
endfunction()

# A library of the project: sources, public include folder, alias ns::name, install export.
# An IMPLEMENTATION_ONLY library, which the others only link privately, installs no header,
# and its exported target carries none of its own dependencies, which never reach a host.
function(tamsel3_add_library name)
  cmake_parse_arguments(ARG "IMPLEMENTATION_ONLY" "NAMESPACE;INCLUDE_DIR" "SOURCES;PUBLIC_DEPS;PRIVATE_DEPS" ${ARGN})
  add_library(${name} ${ARG_SOURCES})
  add_library(${ARG_NAMESPACE}::${name} ALIAS ${name})
  # Installed libraries find each other in their own folder.
  set_target_properties(${name} PROPERTIES EXPORT_NAME ${name} VERSION ${PROJECT_VERSION}
    SOVERSION ${PROJECT_VERSION_MAJOR} INSTALL_RPATH "$ORIGIN")
  if(TAMSEL3_SANITIZER_RUNTIME_DIR)
    set_property(TARGET ${name} APPEND PROPERTY INSTALL_RPATH ${TAMSEL3_SANITIZER_RUNTIME_DIR})
  endif()
  target_include_directories(${name} PUBLIC
    $<BUILD_INTERFACE:${ARG_INCLUDE_DIR}> $<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}>)
  if(ARG_IMPLEMENTATION_ONLY)
    # What it needs is linked into the shared object and stays out of its installed interface.
    set(ARG_PUBLIC_DEPS $<BUILD_INTERFACE:${ARG_PUBLIC_DEPS}>)
  endif()
  target_link_libraries(${name} PUBLIC ${ARG_PUBLIC_DEPS} PRIVATE ${ARG_PRIVATE_DEPS})
  tamsel3_target_defaults(${name})
  # The shared objects go to the runtime component; what a host builds with (headers,
  # the unversioned link, CMake's export sets) to the development one.
  install(TARGETS ${name} EXPORT ${name}Targets
    LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT runtime NAMELINK_COMPONENT dev
    ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT dev
    RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT runtime)
  if(NOT ARG_IMPLEMENTATION_ONLY)
    install(DIRECTORY ${ARG_INCLUDE_DIR}/ DESTINATION ${CMAKE_INSTALL_INCLUDEDIR} COMPONENT dev)
  endif()
  # One export set per library, so that each keeps its own namespace once installed.
  install(EXPORT ${name}Targets NAMESPACE ${ARG_NAMESPACE}:: DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/tamsel3
    COMPONENT dev)
  set_property(GLOBAL APPEND PROPERTY TAMSEL3_EXPORT_SETS ${name}Targets)
endfunction()
