# Compiler settings of all targets, and the functions that create modules and tests.

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
set(CMAKE_INTERPROCEDURAL_OPTIMIZATION OFF)

find_program(KTRV_CCACHE ccache)
if(KTRV_CCACHE)
  # By default ccache does not cache compilations that use a precompiled header.
  set(CMAKE_CXX_COMPILER_LAUNCHER
    "${CMAKE_COMMAND}" -E env CCACHE_SLOPPINESS=pch_defines,time_macros "${KTRV_CCACHE}")
  set(CMAKE_C_COMPILER_LAUNCHER "${KTRV_CCACHE}")
endif()

add_library(ktrv_options INTERFACE)
target_include_directories(ktrv_options INTERFACE "${PROJECT_SOURCE_DIR}")
target_compile_options(ktrv_options INTERFACE
  -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wnon-virtual-dtor -Woverloaded-virtual -Werror)
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
  # GCC 12 reports false overlaps in its own std::basic_string at -O3.
  target_compile_options(ktrv_options INTERFACE -Wno-restrict)
endif()
if(CMAKE_UNITY_BUILD)
  # A source of a batch is an included file, and the warning is about included files.
  target_compile_options(ktrv_options INTERFACE -Wno-subobject-linkage)
endif()
if(WIN32)
  target_compile_definitions(ktrv_options INTERFACE UNICODE _UNICODE WIN32_LEAN_AND_MEAN NOMINMAX)
  # So that the linker can remove unused functions and data from what is shipped, by --gc-sections.
  # The tests link in three quarters of the time without it.
  target_compile_options(ktrv_options INTERFACE -ffunction-sections -fdata-sections)
  # COM interfaces have no virtual destructors. The native builds keep this warning.
  target_compile_options(ktrv_options INTERFACE -Wno-non-virtual-dtor)
else()
  find_package(Threads REQUIRED)
  target_link_libraries(ktrv_options INTERFACE Threads::Threads)
endif()

if(KTRV_SANITIZE)
  add_compile_options(-fsanitize=${KTRV_SANITIZE} -fno-omit-frame-pointer -fno-sanitize-recover=all)
  add_link_options(-fsanitize=${KTRV_SANITIZE})
endif()

# ktrv_module(NAME [DEPENDS lib...]): a library of all sources in the current folder; static unless
# BUILD_SHARED_LIBS is set.
function(ktrv_module name)
  cmake_parse_arguments(PARSE_ARGV 1 arg "" "" "DEPENDS")
  file(GLOB sources CONFIGURE_DEPENDS "${CMAKE_CURRENT_SOURCE_DIR}/*.cpp")
  if(NOT sources)
    # Headers only.
    add_library(${name} INTERFACE)
    target_link_libraries(${name} INTERFACE ktrv_options ${arg_DEPENDS})
    return()
  endif()
  add_library(${name} ${sources})
  target_link_libraries(${name} PUBLIC ktrv_options ${arg_DEPENDS})
endfunction()

# Precompiles the headers that all tests include, with the first test program. The other programs
# have the same options and reuse the result.
function(ktrv_precompile_test_headers name)
  get_property(first GLOBAL PROPERTY ktrv_precompiled_test)
  if(first)
    target_precompile_headers(${name} REUSE_FROM ${first})
    return()
  endif()
  set_property(GLOBAL PROPERTY ktrv_precompiled_test ${name})
  target_precompile_headers(${name} PRIVATE <gmock/gmock.h> <gtest/gtest.h>)
endfunction()

# Properties of a test with windows. Windows on one desktop share the input focus, so such tests run
# one after another; they start first, so that the others run beside them.
set(ktrv_with_windows RESOURCE_LOCK desktop COST 1000)

# ktrv_test(NAME [DEPENDS lib...] LABELS label [ON_SERVERS filter] [NEEDS_SERVERS filter]
# [LARGE filter] [EACH_CASE] [SIDE_BY_SIDE number]): a GoogleTest program of all sources in the current
# folder. Cases that match ON_SERVERS also run on each database server, those of NEEDS_SERVERS only
# there; both have the label `servers`. The program is one CTest test, because starting it costs more
# than most cases. Natively, cases of LARGE, with much data, are another one with the label `large`;
# with EACH_CASE, for cases that take long, each is one test, discovered when ctest runs; with
# SIDE_BY_SIDE, for cases that mostly wait, the one test runs so many at a time.
function(ktrv_test name)
  cmake_parse_arguments(PARSE_ARGV 1 arg "EACH_CASE"
    "LABELS;ON_SERVERS;NEEDS_SERVERS;LARGE;SIDE_BY_SIDE" "DEPENDS")
  file(GLOB sources CONFIGURE_DEPENDS "${CMAKE_CURRENT_SOURCE_DIR}/*.cpp")
  if(NOT sources)
    return()
  endif()
  add_executable(${name} ${sources})
  target_link_libraries(${name} PRIVATE ktrv_options ${arg_DEPENDS} GTest::gmock_main)
  ktrv_precompile_test_headers(${name})
  if(WIN32)
    add_test(NAME ${name} COMMAND ${name})
    set_tests_properties(${name} PROPERTIES LABELS "${arg_LABELS}" TIMEOUT 300)
    if(arg_LABELS STREQUAL "wine")
      set_tests_properties(${name} PROPERTIES ${ktrv_with_windows})
      target_link_libraries(${name} PRIVATE ktrv_desktop_for_tests ktrv_desktop)
    endif()
  elseif(arg_SIDE_BY_SIDE)
    add_test(NAME ${name} COMMAND "${PROJECT_SOURCE_DIR}/tools/side-by-side" ${arg_SIDE_BY_SIDE}
      "$<TARGET_FILE:${name}>")
    set_tests_properties(${name} PROPERTIES LABELS "${arg_LABELS}" TIMEOUT 300 PROCESSORS 2)
  elseif(arg_EACH_CASE)
    ktrv_discover_tests(${name} ${arg_LABELS})
  else()
    if(arg_NEEDS_SERVERS)
      ktrv_add_program(${name}.servers ${name} servers "--gtest_filter=${arg_NEEDS_SERVERS}")
    endif()
    if(arg_LARGE)
      ktrv_add_program(${name}.large ${name} large "--gtest_filter=${arg_LARGE}")
    endif()
    ktrv_add_program(${name} ${name} ${arg_LABELS}
      "--gtest_filter=-${arg_NEEDS_SERVERS}:${arg_LARGE}")
  endif()
  if(arg_ON_SERVERS)
    ktrv_test_on_servers(${name} "${arg_ON_SERVERS}")
  endif()
endfunction()

# ktrv_add_program(TEST PROGRAM LABEL [ARG...]): the program with these arguments is one CTest test.
function(ktrv_add_program test program label)
  add_test(NAME ${test} COMMAND ${program} --gtest_brief=1 ${ARGN})
  set_tests_properties(${test} PROPERTIES LABELS ${label} TIMEOUT 600)
endfunction()

# ktrv_discover_tests(NAME LABEL [FILTER filter] [SUFFIX suffix] [TIMEOUT seconds]
# [ENVIRONMENT setting]): each case of a GoogleTest program is one CTest test.
function(ktrv_discover_tests name label)
  cmake_parse_arguments(PARSE_ARGV 2 arg "" "FILTER;SUFFIX;TIMEOUT;ENVIRONMENT" "")
  set(properties LABELS ${label} TIMEOUT 120)
  if(arg_TIMEOUT)
    list(APPEND properties TIMEOUT ${arg_TIMEOUT})
  endif()
  if(arg_ENVIRONMENT)
    list(APPEND properties ENVIRONMENT ${arg_ENVIRONMENT})
  endif()
  # With pretty values the names of parameterised cases would contain addresses, which change with
  # each build.
  gtest_discover_tests(${name} TEST_FILTER "${arg_FILTER}" TEST_SUFFIX "${arg_SUFFIX}"
    DISCOVERY_MODE PRE_TEST DISCOVERY_TIMEOUT 120 NO_PRETTY_VALUES PROPERTIES ${properties})
endfunction()

function(ktrv_test_on_servers name filter)
  if(KTRV_SANITIZE STREQUAL "thread")
    return()  # what has threads there is the contract's
  endif()
  foreach(engine mariadb postgresql)
    if(WIN32)
      add_test(NAME ${name}.${engine}
        COMMAND "${PROJECT_SOURCE_DIR}/tools/with-servers" "${CMAKE_BINARY_DIR}/servers"
          ${CMAKE_CROSSCOMPILING_EMULATOR} "$<TARGET_FILE:${name}>" "--gtest_filter=${filter}")
      set_tests_properties(${name}.${engine} PROPERTIES LABELS servers TIMEOUT 300
        ENVIRONMENT KTRV_TEST_ENGINE=${engine})
    else()
      ktrv_add_program(${name}.${engine} ${name} servers "--gtest_filter=${filter}")
      set_tests_properties(${name}.${engine} PROPERTIES ENVIRONMENT KTRV_TEST_ENGINE=${engine})
    endif()
  endforeach()
endfunction()
