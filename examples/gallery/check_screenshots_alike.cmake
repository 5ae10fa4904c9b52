# Writes the gallery's pictures under X11 (the display of the test run) and under a private
# headless Weston with the test seat (TAMSEL3_TEST_SEAT), and compares them picture by picture.
# cmake -DGALLERY=<program> -DCOMPARE=<tamsel3_compare_screenshots> -DWAYLAND_RUN=<tools/wayland-run.sh>
#       -DFOLDER=<folder> -P check_screenshots_alike.cmake
file(REMOVE_RECURSE "${FOLDER}")
execute_process(COMMAND ${CMAKE_COMMAND} -E env GDK_BACKEND=x11 "${GALLERY}" --screenshots "${FOLDER}/x11"
  RESULT_VARIABLE result TIMEOUT 120)
if(NOT result EQUAL 0)
  message(FATAL_ERROR "the gallery failed under X11: ${result}")
endif()
execute_process(COMMAND "${WAYLAND_RUN}" --seat "${GALLERY}" --screenshots "${FOLDER}/wayland"
  RESULT_VARIABLE result TIMEOUT 120)
if(NOT result EQUAL 0)
  message(FATAL_ERROR "the gallery failed under Wayland: ${result}")
endif()
# The ask dialog's size floor is a window size, which under Wayland holds the title bar that GTK
# draws into the window: its client area is shorter there, so its pictures can't match.
file(REMOVE "${FOLDER}/x11/ask_file.png")
execute_process(COMMAND "${COMPARE}" "${FOLDER}/x11" "${FOLDER}/wayland" RESULT_VARIABLE result)
if(NOT result EQUAL 0)
  message(FATAL_ERROR "the pictures under X11 and Wayland differ")
endif()
