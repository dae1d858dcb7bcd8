# add_module(geo SOURCES sphere.cpp HEADERS sphere.h USES base [LIBRARIES Qt6::Gui])
#
# One folder below src/ is one static library. A folder may include only the folders that it USES
# and those that these use: the layering test compares every #include line with the table that
# these calls fill, and with the table in docs/ARCHITECTURE.md. LIBRARIES are those that come from
# outside.
function(add_module name)
  cmake_parse_arguments(M "" "" "SOURCES;HEADERS;USES;LIBRARIES" ${ARGN})
  add_library(${name} STATIC ${M_SOURCES})
  target_sources(${name} PUBLIC FILE_SET HEADERS BASE_DIRS ${PROJECT_SOURCE_DIR}/src
                                FILES ${M_HEADERS})
  target_include_directories(${name} PUBLIC ${PROJECT_SOURCE_DIR}/src)
  target_link_libraries(${name} PUBLIC ${M_USES} ${M_LIBRARIES} PRIVATE module_options)
  note_module(${name} "${M_USES}")
  note_headers(${M_HEADERS})
  if(NOT M_LIBRARIES MATCHES "Qt6::")
    target_precompile_headers(${name} REUSE_FROM std_headers)
  endif()
endfunction()

# add_program(cli NAME orvane-cli SOURCES main.cpp [HEADERS ...] USES mapfile view
#             [LIBRARIES CLI11::CLI11])
#
# A folder below src/ that is a program: build/<preset>/bin/NAME.
function(add_program folder)
  cmake_parse_arguments(P "" "NAME" "SOURCES;HEADERS;USES;LIBRARIES" ${ARGN})
  add_executable(${P_NAME} ${P_SOURCES} ${P_HEADERS})
  if(P_HEADERS)
    # Only the headers of libraries are checked one by one.
    add_library(${folder}_headers INTERFACE)
    target_sources(${folder}_headers INTERFACE FILE_SET HEADERS
                   BASE_DIRS ${PROJECT_SOURCE_DIR}/src FILES ${P_HEADERS})
    target_link_libraries(${folder}_headers INTERFACE ${P_USES} ${P_LIBRARIES})
    note_headers(${P_HEADERS})
  endif()
  target_include_directories(${P_NAME} PRIVATE ${PROJECT_SOURCE_DIR}/src)
  target_link_libraries(${P_NAME} PRIVATE ${P_USES} ${P_LIBRARIES} module_options)
  note_module(${folder} "${P_USES}")
endfunction()

# Enters a folder in the table of the layering test, as `name:use,use`.
function(note_module name uses)
  list(JOIN uses "," joined)
  set_property(GLOBAL APPEND PROPERTY ORVANE_MODULES "${name}:${joined}")
endfunction()

# Enters headers of the current folder in the list of those that are checked one by one.
function(note_headers)
  foreach(header IN LISTS ARGN)
    cmake_path(ABSOLUTE_PATH header BASE_DIRECTORY ${CMAKE_CURRENT_SOURCE_DIR})
    set_property(GLOBAL APPEND PROPERTY ORVANE_HEADERS ${header})
  endforeach()
endfunction()
