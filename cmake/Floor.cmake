# Options and functions that all folders share.

add_library(clui_options INTERFACE)
target_include_directories(clui_options INTERFACE ${PROJECT_SOURCE_DIR})
if(CLUI_WARNINGS)
  target_compile_options(clui_options INTERFACE -Wall -Wextra -Wpedantic -Wshadow -Werror
    # g++ 12 sees overlaps in concatenations of strings where there are none.
    $<$<CXX_COMPILER_ID:GNU>:-Wno-restrict>)
endif()
if(CLUI_FUZZ)
  if(NOT CMAKE_CXX_COMPILER_ID MATCHES Clang)
    message(FATAL_ERROR "CLUI_FUZZ needs clang++ as the compiler")
  endif()
  set(CLUI_SANITIZE ON)
  target_compile_options(clui_options INTERFACE -fsanitize=fuzzer-no-link)
endif()
if(CLUI_SANITIZE_THREADS)
  target_compile_options(clui_options INTERFACE -fsanitize=thread -fno-omit-frame-pointer)
  target_link_options(clui_options INTERFACE -fsanitize=thread)
endif()
if(CLUI_SANITIZE)
  target_compile_options(clui_options INTERFACE
    -fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer)
  target_link_options(clui_options INTERFACE -fsanitize=address,undefined)
endif()

# The library is optimised at link time, which makes it a fifth faster with g++. The objects can
# also be linked without that, so the tests of single folders link quickly.
include(CheckLinkerFlag)
set(CLUI_LINK_TIME OFF)
if(BUILD_SHARED_LIBS AND NOT CLUI_SANITIZE AND NOT CLUI_SANITIZE_THREADS
    AND CMAKE_CXX_COMPILER_ID STREQUAL GNU AND CMAKE_BUILD_TYPE MATCHES "^Rel")
  check_linker_flag(CXX -flto=auto CLUI_LINK_TIME_WORKS)
  set(CLUI_LINK_TIME ${CLUI_LINK_TIME_WORKS})
endif()

# A floor of the library: one folder, compiled to objects of the shared library.
#   clui_floor(lex SOURCES a.cc b.cc)
function(clui_floor name)
  cmake_parse_arguments(ARG "" "" "SOURCES" ${ARGN})
  add_library(clui_${name} OBJECT ${ARG_SOURCES})
  target_link_libraries(clui_${name} PUBLIC clui_options)
  # Functions of the library are not meant to be replaced at load time, so calls within a file may
  # be inlined.
  target_compile_options(clui_${name} PRIVATE -fno-exceptions -fno-semantic-interposition
    $<$<BOOL:${CLUI_LINK_TIME}>:-flto=auto -ffat-lto-objects>)
  target_compile_definitions(clui_${name} PRIVATE YSCM_IMPORT
    $<$<NOT:$<BOOL:${BUILD_SHARED_LIBS}>>:YQRTCLUI_STATIC>)
endfunction()

# A library that hosts link, shared or static as BUILD_SHARED_LIBS says, with the alias target
# yqrtClui::NAME that an installation has too. Hosts include its headers from the folder that
# package/Install.cmake fills, and compile them as C++17 or later.
#   clui_library(yqrtcluiterm EXPORT_NAME terminal SOURCES a.cc b.cc)
function(clui_library name)
  cmake_parse_arguments(ARG "" "EXPORT_NAME" "SOURCES" ${ARGN})
  if(NOT ARG_EXPORT_NAME)
    set(ARG_EXPORT_NAME ${name})
  endif()
  add_library(${name} ${ARG_SOURCES})
  add_library(yqrtClui::${ARG_EXPORT_NAME} ALIAS ${name})
  target_link_libraries(${name} PRIVATE $<BUILD_INTERFACE:clui_options>)
  target_include_directories(${name} INTERFACE
    $<BUILD_INTERFACE:${CLUI_INCLUDE}/yqrtClui>
    $<BUILD_INTERFACE:${CLUI_INCLUDE}>)
  target_compile_features(${name} INTERFACE cxx_std_17)
  # Before 1.0 each minor version is an interface of its own. Headers of terminfo and Guile define
  # macros with common names, so these files are not joined even where a host joins its own.
  set_target_properties(${name} PROPERTIES
    EXPORT_NAME ${ARG_EXPORT_NAME}
    UNITY_BUILD OFF
    INSTALL_RPATH "$ORIGIN"
    VERSION ${PROJECT_VERSION}
    SOVERSION ${PROJECT_VERSION_MAJOR}.${PROJECT_VERSION_MINOR})
endfunction()

# Keeps instances of the standard library's templates inside a shared library.
function(clui_limit_exports name)
  set(exports ${PROJECT_SOURCE_DIR}/package/exports.map)
  target_link_options(${name} PRIVATE -Wl,--version-script=${exports})
  set_target_properties(${name} PROPERTIES LINK_DEPENDS ${exports})
endfunction()

# The tests of a floor: one program, from the given sources and the objects of the floors.
#   clui_test(lex FLOORS foundation containers lex SOURCES a_test.cc)
# With ENCODINGS, the tests run in Shift_JIS and once more in UTF-8, under names that end in .utf-8;
# CLUI_INSIDE in the environment is cp932 or utf-8. With SLOW, those in Shift_JIS have the label
# "slow", by which ./check leaves them out under the sanitizers.
# With ALLOCATIONS, the test can count allocations of the floors and make them fail
# (tests/support/).
function(clui_test name)
  cmake_parse_arguments(ARG "ALLOCATIONS;ENCODINGS;SLOW" "" "FLOORS;SOURCES;LIBRARIES" ${ARGN})
  add_executable(${name}_test ${ARG_SOURCES})
  foreach(floor ${ARG_FLOORS})
    target_sources(${name}_test PRIVATE $<TARGET_OBJECTS:clui_${floor}>)
  endforeach()
  # Without this g++ would optimise every test at link time.
  target_link_options(${name}_test PRIVATE $<$<BOOL:${CLUI_LINK_TIME}>:-fno-lto>)
  if(ARG_ALLOCATIONS)
    target_sources(${name}_test PRIVATE ${PROJECT_SOURCE_DIR}/tests/support/allocations.cc)
    target_link_options(${name}_test PRIVATE
      -Wl,--wrap=malloc -Wl,--wrap=realloc -Wl,--wrap=calloc)
  endif()
  target_link_libraries(${name}_test PRIVATE clui_options GTest::gtest_main ${ARG_LIBRARIES})
  target_compile_definitions(${name}_test PRIVATE YSCM_IMPORT)
  # A test that hangs fails instead of blocking the others.
  set(label)
  if(ARG_SLOW)
    set(label LABELS slow)
  endif()
  gtest_discover_tests(${name}_test DISCOVERY_MODE PRE_TEST
    PROPERTIES TIMEOUT 300 ENVIRONMENT CLUI_INSIDE=cp932 ${label})
  if(ARG_ENCODINGS)
    if(ARG_FLOORS OR ARG_LIBRARIES)
      target_sources(${name}_test PRIVATE ${PROJECT_SOURCE_DIR}/tests/support/inside.cc)
    endif()
    gtest_discover_tests(${name}_test DISCOVERY_MODE PRE_TEST TEST_SUFFIX .utf-8
      TEST_LIST ${name}_test_utf8_TESTS PROPERTIES TIMEOUT 300 ENVIRONMENT CLUI_INSIDE=utf-8)
  endif()
endfunction()
