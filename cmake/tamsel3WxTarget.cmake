# wxWidgets as one imported target, wxWidgets::wxWidgets, filled from what FindwxWidgets
# found on this machine; newer CMake makes the same target itself. The libraries link wx
# through it, so that their installed interface names the target, and a host's own
# wx-config fills it in instead of the build machine's paths.
if(NOT TARGET wxWidgets::wxWidgets)
  add_library(wxWidgets::wxWidgets INTERFACE IMPORTED)
  # wx-config's answer has empty items that CMake would pass on.
  set(_tamsel3_wx_libraries ${wxWidgets_LIBRARIES})
  list(FILTER _tamsel3_wx_libraries EXCLUDE REGEX "^$")
  set_target_properties(wxWidgets::wxWidgets PROPERTIES
    INTERFACE_INCLUDE_DIRECTORIES "${wxWidgets_INCLUDE_DIRS}"
    INTERFACE_COMPILE_DEFINITIONS "${wxWidgets_DEFINITIONS}"
    INTERFACE_COMPILE_OPTIONS "${wxWidgets_CXX_FLAGS}"
    INTERFACE_LINK_LIBRARIES "${_tamsel3_wx_libraries}")
  unset(_tamsel3_wx_libraries)
endif()
