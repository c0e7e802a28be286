# SPDX-License-Identifier: GPL-3.0-or-later
# Runs each fuzz target over its corpus in an ordinary build, with any compiler: the tests
# fuzz_replay_NAME. Included by tests/CMakeLists.txt.
include(${CMAKE_CURRENT_LIST_DIR}/targets.cmake)

foreach(name IN LISTS tm_fuzz_targets)
  string(REPLACE "fuzz_" "fuzz_replay_" replay ${name})
  add_executable(${replay} ${CMAKE_CURRENT_LIST_DIR}/replay_main.cpp
                 ${CMAKE_CURRENT_LIST_DIR}/${name}.cpp)
  set_target_properties(${replay} PROPERTIES UNITY_BUILD OFF)
  target_include_directories(${replay} PRIVATE ${PROJECT_SOURCE_DIR} ${PROJECT_SOURCE_DIR}/tests)
  target_link_libraries(${replay} PRIVATE tm_options ${tm_fuzz_libraries})
  add_test(NAME ${replay} COMMAND ${replay} ${CMAKE_CURRENT_LIST_DIR}/corpus/${name})
  set_tests_properties(${replay} PROPERTIES TIMEOUT 120)
endforeach()
