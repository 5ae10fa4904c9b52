# Installs the build into a fresh prefix, builds the consumer against it and runs it.
# Expects BUILD_DIR, SOURCE_DIR and WORK_DIR.
file(REMOVE_RECURSE ${WORK_DIR})
execute_process(COMMAND ${CMAKE_COMMAND} --install ${BUILD_DIR} --prefix ${WORK_DIR}/prefix
                RESULT_VARIABLE result OUTPUT_QUIET)
if(result)
  message(FATAL_ERROR "install failed")
endif()
execute_process(COMMAND ${CMAKE_COMMAND} -S ${SOURCE_DIR} -B ${WORK_DIR}/build -G Ninja
                        -DCMAKE_PREFIX_PATH=${WORK_DIR}/prefix RESULT_VARIABLE result)
if(result)
  message(FATAL_ERROR "configuring the consumer failed")
endif()
execute_process(COMMAND ${CMAKE_COMMAND} --build ${WORK_DIR}/build RESULT_VARIABLE result)
if(result)
  message(FATAL_ERROR "building the consumer failed")
endif()
# The installed library must find its installed resources, with no help from the build tree.
execute_process(COMMAND ${CMAKE_COMMAND} -E env --unset=TAMSEL3_RESOURCE_DIR
                        ${WORK_DIR}/build/consumer RESULT_VARIABLE result)
if(result)
  message(FATAL_ERROR "the consumer failed")
endif()
