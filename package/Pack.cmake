# What `cpack` makes: Debian packages of the installed components. dpkg-shlibdeps finds out what they
# depend on.

set(interface ${PROJECT_VERSION_MAJOR}.${PROJECT_VERSION_MINOR})

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME yqrtclui)
set(CPACK_PACKAGE_CONTACT "The yqrtClui maintainers <maintainers@yqrtclui.example.org>" CACHE STRING
    "Name and address of the maintainer of the Debian packages")
set(CPACK_PACKAGE_DIRECTORY ${PROJECT_BINARY_DIR}/packages)
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
    OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
set(CPACK_PRE_BUILD_SCRIPTS ${CMAKE_CURRENT_LIST_DIR}/debian/Stage.cmake)
set(CPACK_POST_BUILD_SCRIPTS ${CMAKE_CURRENT_LIST_DIR}/debian/Repack.cmake)
set(CPACK_COMPONENTS_GROUPING IGNORE)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)

# A package of a component: its name, its section, its description and what it needs of the others.
# The first line of a description is the summary.
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "")
set(CPACK_COMPONENTS_ALL)
macro(clui_pack component name section description)
  string(TOUPPER ${component} upper)
  list(APPEND CPACK_COMPONENTS_ALL ${component})
  set(CPACK_DEBIAN_${upper}_PACKAGE_NAME ${name})
  set(CPACK_DEBIAN_${upper}_PACKAGE_SECTION ${section})
  set(CPACK_DEBIAN_${upper}_DESCRIPTION "${description}")
  set(depends ${ARGN})
  list(TRANSFORM depends APPEND " (= ${PROJECT_VERSION})")
  list(JOIN depends ", " CPACK_DEBIAN_${upper}_PACKAGE_DEPENDS)
endmacro()

set(libraries)
if(BUILD_SHARED_LIBS)
  set(libraries libyqrtclui${interface})
  clui_pack(library libyqrtclui${interface} libs
"command-line user interface engine
A host passes texts to the library, which splits them into words,
matches them against a syntax and runs the commands of that syntax.
The line editor for hosts with a terminal is included.")
endif()
if(BUILD_SHARED_LIBS AND TARGET yqrtyse)
  clui_pack(engine libyqrtyse${interface} libs
"script engine of yqrtClui on GNU Guile
With this library a host of the command-line user interface engine
yqrtClui runs scripts in Scheme, which declare words, syntax and
commands." ${libraries})
  list(APPEND libraries libyqrtyse${interface})
endif()
clui_pack(development libyqrtclui-dev libdevel
"development files of yqrtClui
Headers, a CMake package and pkg-config files for hosts of the
command-line user interface engine yqrtClui." ${libraries})
if(TARGET clui)
  clui_pack(program yqrtclui interpreters
"program that reads command lines in a language of its own
The program clui loads a language, which a script in Scheme sets up,
and reads command lines in it: from files, from a pipe, or typed, with
completion and history." ${libraries})
endif()
clui_pack(documentation yqrtclui-doc doc
"manuals and examples of yqrtClui
How to type in a language of the command-line user interface engine
yqrtClui, how to write one, and how to put the library into an
application. The examples are two languages of real size and two hosts.")

foreach(component LIBRARY ENGINE PROGRAM)
  set(CPACK_DEBIAN_${component}_PACKAGE_SHLIBDEPS ON)
endforeach()
foreach(component LIBRARY ENGINE)
  set(CPACK_DEBIAN_${component}_PACKAGE_CONTROL_EXTRA ${CMAKE_CURRENT_LIST_DIR}/debian/triggers)
endforeach()
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS ON)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS_POLICY ">=")
foreach(target yqrtClui yqrtyui yqrtyse yqrtcluiterm)
  if(TARGET ${target} AND BUILD_SHARED_LIBS)
    get_target_property(folder ${target} BINARY_DIR)
    list(APPEND CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS ${folder})
  endif()
endforeach()
set(CPACK_DEBIAN_DOCUMENTATION_PACKAGE_ARCHITECTURE all)

include(CPack)
