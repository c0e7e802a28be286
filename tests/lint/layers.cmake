# SPDX-License-Identifier: GPL-3.0-or-later
# cmake -DROOT=FOLDER -P layers.cmake: fails on an include below FOLDER/src that goes up or sideways
# between the floors, and on Qt outside ui/, main.cpp and platform's adapters (*_qt.*).

cmake_minimum_required(VERSION 3.25)

set(below_core "")
set(below_audio core)
set(below_platform core)
set(below_views core audio platform)
set(below_editing core audio platform views library)  # it fills a record as the import does
foreach(command IN ITEMS library playback reports tools)
  set(below_${command} core audio platform views)
endforeach()
set(below_ui core audio platform views library editing playback reports tools)
set(below_repairdb core)           # a program of its own
set(below_main ${below_ui} ui)     # files that stand in src/ itself
set(folders core audio platform views library editing playback reports tools ui)

function(report file line why)
  message(SEND_ERROR "src/${file}: ${line}\n  ${why}")
endfunction()

file(GLOB_RECURSE files RELATIVE ${ROOT}/src ${ROOT}/src/*.cpp ${ROOT}/src/*.h)
list(SORT files)
foreach(file IN LISTS files)
  if(file MATCHES "^([^/]+)/")
    set(folder ${CMAKE_MATCH_1})
  else()
    set(folder main)
  endif()
  if(NOT DEFINED below_${folder})
    report(${file} "" "the folder \"${folder}\" has no floor: give it one in tests/lint/layers.cmake")
    continue()
  endif()
  set(may_use_qt FALSE)
  if(folder STREQUAL "ui" OR file STREQUAL "main.cpp" OR file MATCHES "^platform/.*_qt[.]")
    set(may_use_qt TRUE)
  endif()

  file(STRINGS ${ROOT}/src/${file} includes REGEX "^[ \t]*#[ \t]*include")
  foreach(line IN LISTS includes)
    if(line MATCHES "\"([a-z0-9_]+)/" AND CMAKE_MATCH_1 IN_LIST folders)
      set(target ${CMAKE_MATCH_1})
      if(NOT target STREQUAL folder AND NOT target IN_LIST below_${folder})
        report(${file} "${line}" "${target}/ does not lie below ${folder}/")
      endif()
    elseif(line MATCHES "\"[^\"]*[.][.]/")
      report(${file} "${line}" "includes are named from src/, without \"..\"")
    elseif(NOT may_use_qt AND line MATCHES "<Q[A-Za-z]|<Qt[A-Za-z]*/|\"ui_[A-Za-z]")
      report(${file} "${line}" "Qt belongs in ui/, main.cpp and platform/*_qt.*")
    endif()
  endforeach()
endforeach()
