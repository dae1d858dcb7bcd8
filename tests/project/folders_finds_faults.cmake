# Shows that folders.cmake accepts a sound tree and rejects each kind of fault.
#   cmake -D FOLDERS=<folders.cmake> -D WORK_DIR=<scratch> -P folders_finds_faults.cmake
cmake_minimum_required(VERSION 3.25)

# Writes a tree of one folder without the file `missing`, and runs the check on it.
function(expect result_wanted words missing entered)
  file(REMOVE_RECURSE ${WORK_DIR})
  file(WRITE ${WORK_DIR}/src/app/CMakeLists.txt "")
  file(WRITE ${WORK_DIR}/src/low/CMakeLists.txt "")
  file(WRITE ${WORK_DIR}/src/low/low.h "")
  file(WRITE ${WORK_DIR}/tests/CMakeLists.txt "${entered}\n")
  file(WRITE ${WORK_DIR}/tests/low/low_test.cpp "")
  file(WRITE ${WORK_DIR}/headers.cmake "set(headers ${WORK_DIR}/src/low/low.h)\n")
  if(missing STREQUAL "headers")
    file(WRITE ${WORK_DIR}/headers.cmake "set(headers \"\")\n")
  elseif(missing)
    file(REMOVE_RECURSE ${WORK_DIR}/${missing})
  endif()
  execute_process(
    COMMAND ${CMAKE_COMMAND} -D SOURCE_DIR=${WORK_DIR} -D HEADERS=${WORK_DIR}/headers.cmake
            -P ${FOLDERS}
    RESULT_VARIABLE result OUTPUT_VARIABLE output ERROR_VARIABLE output)
  if(result EQUAL 0)
    set(result passes)
  else()
    set(result fails)
  endif()
  string(FIND "${output}" "${words}" position)
  if(NOT result STREQUAL result_wanted OR position EQUAL -1)
    message(SEND_ERROR "without \"${missing}\": ${result}, with:\n${output}")
  endif()
endfunction()

expect(passes "has tests" "" "add_subdirectory(low)")
expect(fails "has no tests for" tests/low "add_subdirectory(low)")
expect(fails "has no tests for" tests/low/low_test.cpp "add_subdirectory(low)")
expect(fails "does not add low" "" "add_subdirectory(lower)")
expect(fails "is not among the HEADERS" headers "add_subdirectory(low)")
expect(fails "no folders below" src "")
