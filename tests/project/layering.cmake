# Compares every #include of src/ with the table of modules.
#   cmake -D SOURCE_DIR=<tree> -D TABLE=<modules.cmake> -P layering.cmake
#
# Faults that it finds: a folder that includes one outside of what it uses, directly or through
# what it uses; a module that uses one which stands behind it in the table; a folder that is in no
# table; an #include without its folder; Qt in a folder that must do without; and a table in
# docs/ARCHITECTURE.md that tells something else than the build does.
cmake_minimum_required(VERSION 3.25)

include(${TABLE})  # sets `modules`

# The only folders that may include Qt. The batch tool needs it for pictures alone.
set(qt_folders paint shell app cli)

set(faults "")
set(names "")
foreach(row IN LISTS modules)
  string(REGEX MATCH "^([^:]+):(.*)$" matched "${row}")
  set(name ${CMAKE_MATCH_1})
  string(REPLACE "," ";" uses "${CMAKE_MATCH_2}")
  set(direct_${name} ${uses})
  # The rows before this one are complete, so one step makes the closure.
  set(reach_${name} ${name})
  foreach(use IN LISTS uses)
    if(NOT use IN_LIST names)
      list(APPEND faults "src/${name} uses ${use}, which does not stand before it in the table")
    endif()
    list(APPEND reach_${name} ${reach_${use}})
  endforeach()
  list(REMOVE_DUPLICATES reach_${name})
  list(APPEND names ${name})
endforeach()

file(GLOB_RECURSE sources RELATIVE ${SOURCE_DIR}/src ${SOURCE_DIR}/src/*.h ${SOURCE_DIR}/src/*.cpp)
list(LENGTH sources count)
if(count EQUAL 0)
  list(APPEND faults "no sources below ${SOURCE_DIR}/src")
endif()
foreach(source IN LISTS sources)
  string(REGEX REPLACE "/.*" "" folder "${source}")
  if(NOT folder IN_LIST names)
    # A build without Qt has no rows for the folders that need it.
    if(NOT folder IN_LIST qt_folders)
      list(APPEND faults "src/${folder} is not in the table: its CMakeLists.txt needs add_module")
    endif()
    continue()
  endif()
  file(STRINGS ${SOURCE_DIR}/src/${source} includes REGEX "^[ \t]*#[ \t]*include")
  foreach(include IN LISTS includes)
    if(include MATCHES "\"([^\"/]+)/[^\"]*\"")
      if(NOT CMAKE_MATCH_1 IN_LIST reach_${folder})
        list(APPEND faults "src/${source} includes from ${CMAKE_MATCH_1}: ${folder} may not use it")
      endif()
    elseif(include MATCHES "\"([^\"]*)\"")
      if(NOT CMAKE_MATCH_1 MATCHES "\\.moc$")
        list(APPEND faults "src/${source} includes \"${CMAKE_MATCH_1}\" without its folder")
      endif()
    elseif(include MATCHES "<(Q[A-Za-z]+[/>])")
      if(NOT folder IN_LIST qt_folders)
        list(APPEND faults "src/${source} includes Qt, and ${folder} must do without")
      endif()
    endif()
  endforeach()
endforeach()

# Rows of the document: | `name` | `use`, `use` | subject |
set(document ${SOURCE_DIR}/docs/ARCHITECTURE.md)
if(EXISTS ${document})
  set(documented "")
  file(STRINGS ${document} rows REGEX "^\\| `[a-z]+` \\|")
  foreach(row IN LISTS rows)
    string(REGEX MATCH "^\\| `([a-z]+)` \\|([^|]*)\\|" matched "${row}")
    set(name ${CMAKE_MATCH_1})
    string(REGEX MATCHALL "[a-z]+" uses "${CMAKE_MATCH_2}")
    list(APPEND documented ${name})
    if(name IN_LIST names AND NOT "${uses}" STREQUAL "${direct_${name}}")
      list(APPEND faults
        "docs/ARCHITECTURE.md: ${name} uses \"${uses}\" there and \"${direct_${name}}\" in the build")
    endif()
  endforeach()
  foreach(name IN LISTS names)
    if(NOT name IN_LIST documented)
      list(APPEND faults "docs/ARCHITECTURE.md: no row for ${name}")
    endif()
  endforeach()
  foreach(name IN LISTS documented)
    if(NOT name IN_LIST names AND NOT name IN_LIST qt_folders)
      list(APPEND faults "docs/ARCHITECTURE.md: a row for ${name}, which the build does not know")
    endif()
  endforeach()
endif()

if(faults)
  list(JOIN faults "\n" text)
  message("${text}")
  message(FATAL_ERROR "The layers are broken.")
endif()
message("${count} sources keep to the table of modules.")
