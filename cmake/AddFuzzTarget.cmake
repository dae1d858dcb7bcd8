# add_fuzz_target(read_map SOURCES read_map.cpp CORPUS corpus/read_map LIBRARIES mapfile)
#
# The sources define LLVMFuzzerTestOneInput. With WITH_FUZZERS that is linked with libFuzzer into
# build/<preset>/fuzz/read_map; otherwise with a main that runs it once on each file of the corpus,
# which is the test fuzz_replay.read_map. So the corpus is a test in every build, whatever the
# compiler.
function(add_fuzz_target name)
  cmake_parse_arguments(F "" "CORPUS" "SOURCES;LIBRARIES" ${ARGN})
  cmake_path(ABSOLUTE_PATH F_CORPUS BASE_DIRECTORY ${CMAKE_CURRENT_SOURCE_DIR})
  if(WITH_FUZZERS)
    if(NOT CMAKE_CXX_COMPILER_ID STREQUAL "Clang")
      message(FATAL_ERROR "WITH_FUZZERS needs Clang, not ${CMAKE_CXX_COMPILER_ID}")
    endif()
    set(target fuzz_${name})
    add_executable(${target} ${F_SOURCES})
    target_link_options(${target} PRIVATE -fsanitize=fuzzer)
    # A short run from the kept corpus; new inputs go to the build directory.
    add_custom_target(fuzz_smoke_${name}
      COMMAND ${CMAKE_COMMAND} -E make_directory ${PROJECT_BINARY_DIR}/fuzz/${name}.found
      COMMAND ${target} -max_total_time=15 -timeout=10 -rss_limit_mb=1024 -print_final_stats=1
              -artifact_prefix=${PROJECT_BINARY_DIR}/fuzz/ ${PROJECT_BINARY_DIR}/fuzz/${name}.found
              ${F_CORPUS}
      USES_TERMINAL)
    add_dependencies(fuzz_smoke fuzz_smoke_${name})
  else()
    set(target replay_${name})
    add_executable(${target} ${F_SOURCES} ${PROJECT_SOURCE_DIR}/fuzz/replay_main.cpp)
    add_test(NAME fuzz_replay.${name} COMMAND ${target} ${F_CORPUS})
    set_tests_properties(fuzz_replay.${name} PROPERTIES TIMEOUT 300)
  endif()
  target_link_libraries(${target} PRIVATE ${F_LIBRARIES} project_options)
  set_target_properties(${target} PROPERTIES RUNTIME_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR}/fuzz)
endfunction()
