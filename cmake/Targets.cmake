# SPDX-License-Identifier: GPL-3.0-or-later
# The flags of the project, once, and the three kinds of target that it is made of.

add_library(tm_options INTERFACE)
target_compile_options(tm_options INTERFACE
  -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wold-style-cast -Wnon-virtual-dtor
  -Woverloaded-virtual -Werror -Wno-missing-field-initializers)
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
  target_compile_options(tm_options INTERFACE -Wsuggest-override)
endif()
target_include_directories(tm_options INTERFACE ${PROJECT_SOURCE_DIR}/src)
if(TM_SANITIZE)
  # Undefined behaviour ends the program: a report that scrolls by is a report nobody reads.
  target_compile_options(tm_options INTERFACE -fsanitize=address,undefined
                         -fno-sanitize-recover=all -fno-omit-frame-pointer)
  target_link_options(tm_options INTERFACE -fsanitize=address,undefined)
endif()

# tm_add_library(NAME SOURCES file... DEPENDS target...): static library tm::NAME of the folder.
# Every header among the sources is compiled alone by the target all_verify_interface_header_sets.
function(tm_add_library name)
  cmake_parse_arguments(PARSE_ARGV 1 arg "" "" "SOURCES;DEPENDS")
  set(headers ${arg_SOURCES})
  list(FILTER headers INCLUDE REGEX "[.]h$")
  list(FILTER arg_SOURCES EXCLUDE REGEX "[.]h$")
  add_library(tm_${name} STATIC ${arg_SOURCES} ${headers})
  target_sources(tm_${name} PUBLIC FILE_SET HEADERS BASE_DIRS ${PROJECT_SOURCE_DIR}/src
                 FILES ${headers})
  add_library(tm::${name} ALIAS tm_${name})
  target_link_libraries(tm_${name} PUBLIC tm_options ${arg_DEPENDS})
endfunction()

# tm_add_test(NAME SOURCES file... DEPENDS target...): test program tests_NAME, each TEST known to
# ctest. WINDOWS gives it the offscreen platform and a QApplication.
function(tm_add_test name)
  cmake_parse_arguments(PARSE_ARGV 1 arg "WINDOWS" "" "SOURCES;DEPENDS")
  add_executable(tests_${name} ${arg_SOURCES})
  target_include_directories(tests_${name} PRIVATE ${PROJECT_SOURCE_DIR}/tests)
  if(arg_WINDOWS)
    target_sources(tests_${name} PRIVATE ${PROJECT_SOURCE_DIR}/tests/support/window_main.cpp)
    target_link_libraries(tests_${name} PRIVATE tm_options ${arg_DEPENDS} GTest::gtest GTest::gmock)
    set(environment "QT_QPA_PLATFORM=offscreen")
  else()
    target_link_libraries(tests_${name} PRIVATE tm_options ${arg_DEPENDS} GTest::gtest_main GTest::gmock)
    set(environment "LC_ALL=C.UTF-8")
  endif()
  target_compile_definitions(tests_${name} PRIVATE TM_SOURCE_DIR="${PROJECT_SOURCE_DIR}"
                             TM_BINARY_DIR="${PROJECT_BINARY_DIR}")
  # Most of a build is compiling tests: they are not optimised, what they test is.
  target_compile_options(tests_${name} PRIVATE -O0)
  gtest_discover_tests(tests_${name} DISCOVERY_TIMEOUT 60
                       PROPERTIES ENVIRONMENT "${environment}" TIMEOUT 120)
endfunction()
