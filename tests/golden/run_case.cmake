# Runs one golden case and compares what came out with the files beside the map; see
# add_golden_case. With RENEW_GOLDEN in the environment it writes those files instead: `renew` sets
# it, and the change is to be read before it is committed.
cmake_minimum_required(VERSION 3.25)

set(here ${CMAKE_CURRENT_LIST_DIR}/${SUBCOMMAND})
set(out ${OUTPUT_DIR}/${CASE}.out)
set(err ${OUTPUT_DIR}/${CASE}.err)
set(saved ${OUTPUT_DIR}/${CASE}.saved)
file(MAKE_DIRECTORY ${OUTPUT_DIR})
file(REMOVE ${out} ${err} ${saved})

set(folder ${here})
set(files "")
if(SUBCOMMAND STREQUAL "save")
  set(files ${saved})
elseif(SUBCOMMAND STREQUAL "import-gis")
  set(files ${CASE}.gps -o ${saved})
elseif(SUBCOMMAND STREQUAL "edit")
  set(files ${CASE}.script -o ${saved})
elseif(SUBCOMMAND STREQUAL "import")
  # It writes files of fixed names where it runs.
  set(folder ${OUTPUT_DIR}/${CASE}.run)
  file(REMOVE_RECURSE ${folder})
  file(MAKE_DIRECTORY ${folder})
  file(COPY ${here}/${CASE}.map ${here}/${CASE}.sheet DESTINATION ${folder})
  set(files ${CASE}.sheet -o ${saved})
endif()
execute_process(
  COMMAND ${CLI} ${GLOBAL} ${SUBCOMMAND} ${CASE}.map ${files} ${ARGS}
  WORKING_DIRECTORY ${folder}
  OUTPUT_FILE ${out} ERROR_FILE ${err} RESULT_VARIABLE status)

# The ending of the file for standard output follows from what is there, or else from the command.
set(ending txt)
if(EXISTS ${here}/${CASE}.json OR
   (SUBCOMMAND MATCHES "^(contours|dump|locate)$" AND NOT EXISTS ${here}/${CASE}.txt))
  set(ending json)
endif()

# Compares the file `actual` with `expected`, where a missing file is an empty one, or renews it.
function(check expected actual)
  set(size 0)
  if(EXISTS ${actual})
    file(SIZE ${actual} size)
  endif()
  if(DEFINED ENV{RENEW_GOLDEN})
    set(different 1)
    if(EXISTS ${expected} AND size GREATER 0)
      execute_process(COMMAND ${COMPARE} ${expected} ${actual} RESULT_VARIABLE different
                      OUTPUT_QUIET)
    endif()
    if(size EQUAL 0)
      file(REMOVE ${expected})
    elseif(NOT different EQUAL 0)
      # What differs in nothing but a last digit or today's date stays as it is.
      file(COPY_FILE ${actual} ${expected})
    endif()
    return()
  endif()
  if(NOT EXISTS ${expected})
    if(size GREATER 0)
      execute_process(COMMAND ${CMAKE_COMMAND} -E cat ${actual})
      message(SEND_ERROR "Output above, and there is no ${expected}")
    endif()
    return()
  endif()
  if(NOT EXISTS ${actual})
    message(SEND_ERROR "${expected} is not empty, and nothing came out")
    return()
  endif()
  execute_process(COMMAND ${COMPARE} ${expected} ${actual} RESULT_VARIABLE different)
  if(NOT different EQUAL 0)
    message(SEND_ERROR "${actual} is not as ${expected} tells")
  endif()
endfunction()

if(NOT status STREQUAL STATUS)
  execute_process(COMMAND ${CMAKE_COMMAND} -E cat ${err})
  message(SEND_ERROR "Exit status ${status}, not ${STATUS}")
endif()
check(${here}/${CASE}.${ending} ${out})
check(${here}/${CASE}.err ${err})
check(${here}/${CASE}.saved ${saved})
if(SUBCOMMAND STREQUAL "import")
  check(${here}/${CASE}.unknownlocs ${folder}/unknownlocs.txt)
  check(${here}/${CASE}.badweather ${folder}/badweather.txt)
endif()
