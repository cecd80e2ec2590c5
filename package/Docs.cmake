# The target `docs`: API pages of the headers for hosts, in api/html of the build folder. `cmake
# --install` copies them when they are there. Needs Doxygen; a warning of Doxygen is an error.

find_program(DOXYGEN_PROGRAM doxygen)
if(NOT DOXYGEN_PROGRAM)
  message(STATUS "No doxygen: the target docs is not available")
  return()
endif()
# The one that only includes language/Language.h would be taken for it.
list(FILTER linked_headers EXCLUDE REGEX "/yqrtClui/Language\\.h$")
list(JOIN linked_headers "\" \"" docs_input)
configure_file(${CMAKE_CURRENT_LIST_DIR}/Doxyfile.in ${PROJECT_BINARY_DIR}/Doxyfile @ONLY)
add_custom_target(docs
  COMMAND ${CMAKE_COMMAND} -E rm -rf ${PROJECT_BINARY_DIR}/api
  COMMAND ${CMAKE_COMMAND} -E make_directory ${PROJECT_BINARY_DIR}/api
  COMMAND ${DOXYGEN_PROGRAM} ${PROJECT_BINARY_DIR}/Doxyfile
  COMMENT "API pages" VERBATIM)
