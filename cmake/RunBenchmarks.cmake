# Runs each benchmark of a program for a moment. One that reports an error fails here; the program
# itself would end without one.
#   cmake -D PROGRAM=<program> -P RunBenchmarks.cmake
cmake_minimum_required(VERSION 3.25)

set(ENV{QT_QPA_PLATFORM} offscreen)
execute_process(COMMAND ${PROGRAM} --benchmark_min_time=0.01
                OUTPUT_VARIABLE results ECHO_OUTPUT_VARIABLE RESULT_VARIABLE status)
if(NOT status EQUAL 0 OR results MATCHES "ERROR OCCURRED")
  message(FATAL_ERROR "${PROGRAM} failed.")
endif()
