# What all floors of the house have in common.

add_library(clui_options INTERFACE)
target_include_directories(clui_options INTERFACE ${PROJECT_SOURCE_DIR})
target_compile_options(clui_options INTERFACE -Wall -Wextra -Wpedantic -Wshadow -Werror
  # g++ 12 sees overlaps in concatenations of strings where there are none.
  $<$<CXX_COMPILER_ID:GNU>:-Wno-restrict>)
if(CLUI_FUZZ)
  if(NOT CMAKE_CXX_COMPILER_ID MATCHES Clang)
    message(FATAL_ERROR "CLUI_FUZZ needs clang++ as the compiler")
  endif()
  set(CLUI_SANITIZE ON)
  target_compile_options(clui_options INTERFACE -fsanitize=fuzzer-no-link)
endif()
if(CLUI_SANITIZE)
  target_compile_options(clui_options INTERFACE
    -fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer)
  target_link_options(clui_options INTERFACE -fsanitize=address,undefined)
endif()

# The library is optimised as a whole when it is linked, which g++ does for a fifth of its speed. The
# objects stay fit for a plain link beside it, so the tests of the floors do not pay for that.
include(CheckLinkerFlag)
set(CLUI_LINK_TIME OFF)
if(CMAKE_CXX_COMPILER_ID STREQUAL GNU AND CMAKE_BUILD_TYPE MATCHES "^Rel" AND NOT CLUI_SANITIZE)
  check_linker_flag(CXX -flto=auto CLUI_LINK_TIME_WORKS)
  set(CLUI_LINK_TIME ${CLUI_LINK_TIME_WORKS})
endif()

# A floor of the library: objects compiled as the library needs them.
#   clui_floor(lex SOURCES a.cc b.cc)
function(clui_floor name)
  cmake_parse_arguments(ARG "" "" "SOURCES" ${ARGN})
  add_library(clui_${name} OBJECT ${ARG_SOURCES})
  target_link_libraries(clui_${name} PUBLIC clui_options)
  # Nobody puts operations of their own in the place of the library's, so calls within a file may be
  # inlined although the objects are fit for a shared library.
  target_compile_options(clui_${name} PRIVATE -fno-exceptions -fno-semantic-interposition
    $<$<BOOL:${CLUI_LINK_TIME}>:-flto=auto -ffat-lto-objects>)
  target_compile_definitions(clui_${name} PRIVATE YSCM_IMPORT)
endfunction()

# The tests of a floor: one program, from the sources of tests/NAME and the objects of its floors.
#   clui_test(lex FLOORS foundation containers lex SOURCES a_test.cc)
# With ALLOCATIONS, the test can count and fail those that the floors make (tests/support/).
function(clui_test name)
  cmake_parse_arguments(ARG "ALLOCATIONS" "" "FLOORS;SOURCES;LIBRARIES" ${ARGN})
  add_executable(${name}_test ${ARG_SOURCES})
  foreach(floor ${ARG_FLOORS})
    target_sources(${name}_test PRIVATE $<TARGET_OBJECTS:clui_${floor}>)
  endforeach()
  # Without this g++ would see what the objects carry and optimise every test as a whole.
  target_link_options(${name}_test PRIVATE $<$<BOOL:${CLUI_LINK_TIME}>:-fno-lto>)
  if(ARG_ALLOCATIONS)
    target_sources(${name}_test PRIVATE ${PROJECT_SOURCE_DIR}/tests/support/allocations.cc)
    target_link_options(${name}_test PRIVATE
      -Wl,--wrap=malloc -Wl,--wrap=realloc -Wl,--wrap=calloc)
  endif()
  target_link_libraries(${name}_test PRIVATE clui_options GTest::gtest_main ${ARG_LIBRARIES})
  target_compile_definitions(${name}_test PRIVATE YSCM_IMPORT)
  # A test that hangs is a failure and does not hold up the others.
  gtest_discover_tests(${name}_test DISCOVERY_MODE PRE_TEST PROPERTIES TIMEOUT 300)
endfunction()
