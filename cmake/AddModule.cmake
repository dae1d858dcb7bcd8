# One folder below src/ is one static library. A folder may include only the folders that it USES
# and those that these use: the layering test compares every #include line with this table, which
# the calls below fill.
function(add_module name)
  cmake_parse_arguments(M "" "" "SOURCES;HEADERS;USES;LIBRARIES" ${ARGN})
  add_library(${name} STATIC ${M_SOURCES})
  target_sources(${name} PUBLIC FILE_SET HEADERS BASE_DIRS ${PROJECT_SOURCE_DIR}/src FILES ${M_HEADERS})
  target_include_directories(${name} PUBLIC ${PROJECT_SOURCE_DIR}/src)
  target_link_libraries(${name} PUBLIC ${M_USES} ${M_LIBRARIES} PRIVATE project_options)
  set_property(GLOBAL APPEND PROPERTY ORVANE_MODULES "${name}:${M_USES}")
endfunction()
