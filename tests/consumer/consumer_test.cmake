# Packs the build as Debian packages, unpacks the runtime and -dev packages into a fresh
# root, and builds a host against that root twice, as a host developer would: once with
# CMake's find_package and once with pkg-config and a plain compiler command. Runs each.
# Expects BUILD_DIR, SOURCE_DIR, WORK_DIR, CPACK, CXX and optionally LAUNCHER, and PRELOAD
# for a sanitizer build: its runtime, which must be the first library of the host's process.
file(REMOVE_RECURSE ${WORK_DIR})

function(run what)
  execute_process(COMMAND ${ARGN} RESULT_VARIABLE result OUTPUT_VARIABLE output ERROR_VARIABLE output)
  if(result)
    message(FATAL_ERROR "${what} failed (${result}):\n${output}")
  endif()
endfunction()

run("packing" ${CPACK} -G DEB -B ${WORK_DIR}/packages --config ${BUILD_DIR}/CPackConfig.cmake)
file(GLOB runtime_deb ${WORK_DIR}/packages/libtamsel3-[0-9]*.deb)
file(GLOB dev_deb ${WORK_DIR}/packages/libtamsel3-dev_*.deb)
if(NOT runtime_deb OR NOT dev_deb)
  file(GLOB made ${WORK_DIR}/packages/*)
  message(FATAL_ERROR "expected a runtime and a -dev package, got: ${made}")
endif()

# Each package holds its own part: the runtime no headers, the -dev no shared objects.
function(expect_contents deb)
  cmake_parse_arguments(ARG "" "" "HAS;LACKS" ${ARGN})
  execute_process(COMMAND dpkg-deb -c ${deb} OUTPUT_VARIABLE listing)
  foreach(pattern IN LISTS ARG_HAS)
    if(NOT listing MATCHES "${pattern}")
      message(FATAL_ERROR "${deb} lacks ${pattern}:\n${listing}")
    endif()
  endforeach()
  foreach(pattern IN LISTS ARG_LACKS)
    if(listing MATCHES "${pattern}")
      message(FATAL_ERROR "${deb} should not hold ${pattern}:\n${listing}")
    endif()
  endforeach()
endfunction()
expect_contents(${runtime_deb} HAS "/usr/lib/libtamsel3\\.so\\.0" "/usr/lib/libkorvat2\\.so\\.0"
  "/usr/share/tamsel3/tamsel3\\.dat" "/usr/share/tamsel3/catalogs/tamsel/en\\.po"
  LACKS "/usr/include/" "libtamsel3\\.so " "\\.cmake" "\\.pc")
expect_contents(${dev_deb} HAS "/usr/include/tamsel3/tamsel3\\.h" "/usr/include/tamsel3/export\\.h"
  "/usr/include/tamsel3/version\\.h" "/usr/lib/cmake/tamsel3/tamsel3Config\\.cmake"
  "/usr/lib/pkgconfig/tamsel3\\.pc" "/usr/lib/libtamsel3\\.so "
  LACKS "\\.so\\.0\\.[0-9]" "tamsel3\\.dat")
execute_process(COMMAND dpkg-deb -f ${runtime_deb} Depends OUTPUT_VARIABLE runtime_depends)
execute_process(COMMAND dpkg-deb -f ${dev_deb} Depends OUTPUT_VARIABLE dev_depends)
if(NOT runtime_depends MATCHES "libwxgtk3\\.2" OR NOT dev_depends MATCHES "libtamsel3-0 ")
  message(FATAL_ERROR "package dependencies: runtime '${runtime_depends}', dev '${dev_depends}'")
endif()

set(root ${WORK_DIR}/root)
run("unpacking the runtime package" dpkg-deb -x ${runtime_deb} ${root})
run("unpacking the -dev package" dpkg-deb -x ${dev_deb} ${root})

# The CMake files name wx through its imported target, never the build machine's flags or
# folders, and ask a host only for what the public headers need.
file(GLOB cmake_files ${root}/usr/lib/cmake/tamsel3/*.cmake)
foreach(file IN LISTS cmake_files)
  file(READ ${file} text)
  foreach(pattern "-lwx_" "-L/" "-pthread" "/wx-3" "WXUSINGDLL" "pugixml" "log4cplus" "regex")
    string(FIND "${text}" "${pattern}" at)
    if(NOT at EQUAL -1)
      message(FATAL_ERROR "${file} names ${pattern}")
    endif()
  endforeach()
endforeach()

# The installed library must find its installed resources, with no help from the build tree.
set(run_env ${CMAKE_COMMAND} -E env --unset=TAMSEL3_RESOURCE_DIR)
if(PRELOAD)
  list(APPEND run_env LD_PRELOAD=${PRELOAD})
endif()

if(LAUNCHER)
  set(launcher -DCMAKE_CXX_COMPILER_LAUNCHER=${LAUNCHER})
endif()
run("configuring the CMake host" ${CMAKE_COMMAND} -S ${SOURCE_DIR} -B ${WORK_DIR}/cmake-host -G Ninja
    -DCMAKE_PREFIX_PATH=${root}/usr ${launcher})
run("building the CMake host" ${CMAKE_COMMAND} --build ${WORK_DIR}/cmake-host)
run("the CMake host" ${run_env} ${WORK_DIR}/cmake-host/consumer)
run("the CMake console host" ${run_env} ${WORK_DIR}/cmake-host/console)

execute_process(COMMAND ${CMAKE_COMMAND} -E env PKG_CONFIG_PATH=${root}/usr/lib/pkgconfig
                        pkg-config --cflags --libs tamsel3
                OUTPUT_VARIABLE flags OUTPUT_STRIP_TRAILING_WHITESPACE RESULT_VARIABLE result)
if(result OR NOT flags MATCHES "-I${root}/usr/lib/pkgconfig/../../include")
  message(FATAL_ERROR "pkg-config does not know tamsel3 in the unpacked root: '${flags}'")
endif()
separate_arguments(flags UNIX_COMMAND "${flags}")
file(MAKE_DIRECTORY ${WORK_DIR}/pkg-config-host)
run("building the pkg-config host" ${LAUNCHER} ${CXX} -std=c++17 ${SOURCE_DIR}/main.cpp ${flags}
    -o ${WORK_DIR}/pkg-config-host/consumer)
run("the pkg-config host" ${run_env} LD_LIBRARY_PATH=${root}/usr/lib ${WORK_DIR}/pkg-config-host/consumer)
