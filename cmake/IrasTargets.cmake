# Helpers that keep the top-level build short: a library is the sources of one
# folder, a test program the *_test.cpp files of one folder under tests/.

function(iras_warnings target)
  target_compile_options(${target} PRIVATE -Wall -Wextra -Wpedantic -Wshadow
    -Wconversion -Wno-sign-conversion -Wnon-virtual-dtor -Woverloaded-virtual)
  if(IRAS_WERROR)
    target_compile_options(${target} PRIVATE -Werror)
  endif()
endfunction()

# iras_library(iras_common platform/common deps...) also makes the alias
# iras::common, by which the other targets link it.
function(iras_library name dir)
  string(REGEX REPLACE "^iras_" "" short ${name})
  # The platform, the returns and the runs also make up libiras_core.so.
  if(dir MATCHES "^(platform|submission|apps/run)")
    set_property(GLOBAL APPEND PROPERTY IRAS_CORE_LIBRARIES ${name})
  endif()
  file(GLOB sources CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/${dir}/*.cpp)
  if(NOT sources)
    # A folder whose code has not landed yet still yields a target to link.
    add_library(${name} INTERFACE)
    add_library(iras::${short} ALIAS ${name})
    target_include_directories(${name} INTERFACE ${CMAKE_SOURCE_DIR})
    target_link_libraries(${name} INTERFACE ${ARGN})
    return()
  endif()
  add_library(${name} STATIC ${sources})
  add_library(iras::${short} ALIAS ${name})
  # Which folder may include which is checked by tests/layering.
  target_include_directories(${name} PUBLIC ${CMAKE_SOURCE_DIR})
  target_link_libraries(${name} PUBLIC ${ARGN})
  target_compile_definitions(${name} PUBLIC
    IRAS_SOURCE_DATA_DIR="${CMAKE_SOURCE_DIR}/data")
  iras_warnings(${name})
endfunction()

# iras_tests(folder libraries... [WHOLE]): WHOLE makes the program one CTest
# test instead of one per test case, for a program whose set-up is costly and
# shared by all its tests (tests/postgres starts a server).
function(iras_tests folder)
  cmake_parse_arguments(PARSE_ARGV 1 arg "WHOLE" "" "")
  file(GLOB sources CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/tests/${folder}/*_test.cpp)
  if(NOT sources)
    return()
  endif()
  set(target tests_${folder})
  add_executable(${target} ${sources})
  target_link_libraries(${target} PRIVATE ${arg_UNPARSED_ARGUMENTS} GTest::gtest GTest::gtest_main GTest::gmock)
  target_include_directories(${target} PRIVATE ${CMAKE_SOURCE_DIR})
  target_compile_definitions(${target} PRIVATE
    IRAS_SOURCE_DATA_DIR="${CMAKE_SOURCE_DIR}/data"
    IRAS_SOURCE_ROOT="${CMAKE_SOURCE_DIR}"
    IRAS_TEST_FIXTURES_DIR="${CMAKE_SOURCE_DIR}/tests/fixtures")
  iras_warnings(${target})
  # A test is judged by its exit status alone: GoogleTest reports the tests
  # of a suite whose set-up failed as skipped, which must not pass as green.
  if(arg_WHOLE)
    add_test(NAME ${target} COMMAND ${target})
    set_tests_properties(${target} PROPERTIES ENVIRONMENT "TZ=Asia/Singapore")
    return()
  endif()
  gtest_discover_tests(${target} DISCOVERY_TIMEOUT 60
    PROPERTIES ENVIRONMENT "TZ=Asia/Singapore" SKIP_REGULAR_EXPRESSION "IRAS-NO-SKIP-PATTERN^")
endfunction()
