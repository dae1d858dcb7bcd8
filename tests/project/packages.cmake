# The packages that README.md names for a build by hand are those that the script installs.
#   cmake -D SOURCE_DIR=<tree> -P packages.cmake
cmake_minimum_required(VERSION 3.25)

execute_process(COMMAND ${SOURCE_DIR}/scripts/install-packages list
                OUTPUT_VARIABLE wanted COMMAND_ERROR_IS_FATAL ANY)

separate_arguments(wanted UNIX_COMMAND "${wanted}")
file(READ ${SOURCE_DIR}/README.md readme)
if(NOT readme MATCHES "sudo apt install (g\\+\\+[^`]*)```")
  message(FATAL_ERROR "README.md does not name the packages")
endif()
string(REPLACE "\\\n" " " named "${CMAKE_MATCH_1}")
string(REGEX REPLACE "\n.*" "" named "${named}")
separate_arguments(named UNIX_COMMAND "${named}")
list(SORT wanted)
list(SORT named)
if(NOT named STREQUAL wanted)
  message(FATAL_ERROR "README.md names\n${named}\nbut a build needs\n${wanted}")
endif()
