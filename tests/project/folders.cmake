# Each folder of src/ has tests, and each header is in a list of those that are compiled one by one.
#   cmake -D SOURCE_DIR=<tree> -D HEADERS=<headers.cmake> -P folders.cmake
cmake_minimum_required(VERSION 3.25)

include(${HEADERS})  # sets `headers`

# The window program has only a main; project.install runs it as it is installed.
set(without_tests app)

set(faults "")
file(GLOB lists RELATIVE ${SOURCE_DIR}/src ${SOURCE_DIR}/src/*/CMakeLists.txt)
if(NOT lists)
  list(APPEND faults "no folders below ${SOURCE_DIR}/src")
endif()
if(EXISTS ${SOURCE_DIR}/tests/CMakeLists.txt)
  file(READ ${SOURCE_DIR}/tests/CMakeLists.txt entered)
else()
  set(entered "")
endif()
foreach(list IN LISTS lists)
  cmake_path(GET list PARENT_PATH folder)
  if(folder IN_LIST without_tests)
    continue()
  endif()
  file(GLOB_RECURSE tests ${SOURCE_DIR}/tests/${folder}/*_test.cpp)
  if(NOT tests)
    list(APPEND faults "tests/${folder} has no tests for src/${folder}")
  elseif(NOT entered MATCHES "add_subdirectory\\(${folder}\\)")
    list(APPEND faults "tests/CMakeLists.txt does not add ${folder}")
  endif()
endforeach()

file(GLOB_RECURSE found ${SOURCE_DIR}/src/*.h)
foreach(header IN LISTS found)
  if(NOT header IN_LIST headers)
    list(APPEND faults "${header} is not among the HEADERS of its folder")
  endif()
endforeach()

if(faults)
  list(JOIN faults "\n" text)
  message("${text}")
  message(FATAL_ERROR "A folder lacks tests, or a header its check.")
endif()
message("Each folder has tests.")
