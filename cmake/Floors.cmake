# SPDX-License-Identifier: GPL-3.0-or-later
# The floors of src/, from below; tests/ has a folder for each. tests/lint/layers.cmake says which
# may include which.

set(tm_floors core files store run audio platform tracks views editing library playback net)
set(tm_ui_floors kit windows panes shell)

# tm_add_floors(folder...): add_subdirectory of each. What is named nowhere would be left out of the
# program, or of the tests, in silence: a folder beside them that is not named is an error, and so is
# a source of theirs that no target has.
function(tm_add_floors)
  file(GLOB beside RELATIVE ${CMAKE_CURRENT_SOURCE_DIR} CONFIGURE_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/*)
  foreach(name IN LISTS beside)
    if(IS_DIRECTORY ${CMAKE_CURRENT_SOURCE_DIR}/${name} AND NOT name IN_LIST ARGN)
      message(FATAL_ERROR "${CMAKE_CURRENT_SOURCE_DIR}/${name} is in no list of folders")
    endif()
  endforeach()
  foreach(name IN LISTS ARGN)
    add_subdirectory(${name})
    tm_check_sources(${CMAKE_CURRENT_SOURCE_DIR}/${name})
  endforeach()
endfunction()

function(tm_check_sources folder)
  if(NOT TM_WINDOWS)
    return()  # then what needs them is in no list on purpose
  endif()
  get_property(targets DIRECTORY ${folder} PROPERTY BUILDSYSTEM_TARGETS)
  set(named "")
  foreach(target IN LISTS targets)
    get_target_property(sources ${target} SOURCES)
    list(APPEND named ${sources})
  endforeach()
  file(GLOB_RECURSE there RELATIVE ${folder} CONFIGURE_DEPENDS ${folder}/*.cpp ${folder}/*.ui)
  foreach(source IN LISTS there)
    if(targets AND NOT source IN_LIST named AND NOT ${folder}/${source} IN_LIST named)
      message(FATAL_ERROR "${folder}/${source} is in no list of sources")
    endif()
  endforeach()
endfunction()
