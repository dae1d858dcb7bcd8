# add_fuzz_target(read_map SOURCES read_map.cpp CORPUS corpus/read_map LIBRARIES mapfile)
#
# The sources define LLVMFuzzerTestOneInput. With WITH_FUZZERS it is linked with libFuzzer into
# build/<preset>/fuzz/fuzz_read_map; otherwise with a main that runs it once on each file of the
# corpus. Either way the test fuzz_replay.read_map runs the corpus, so it is a test in every build,
# whatever the compiler.
function(add_fuzz_target name)
  cmake_parse_arguments(F "" "CORPUS" "SOURCES;LIBRARIES" ${ARGN})
  cmake_path(ABSOLUTE_PATH F_CORPUS BASE_DIRECTORY ${CMAKE_CURRENT_SOURCE_DIR})
  set(target fuzz_${name})
  add_executable(${target} ${F_SOURCES})
  if(WITH_FUZZERS)
    if(NOT CMAKE_CXX_COMPILER_ID STREQUAL "Clang")
      message(FATAL_ERROR "WITH_FUZZERS needs Clang, not ${CMAKE_CXX_COMPILER_ID}")
    endif()
    target_link_options(${target} PRIVATE -fsanitize=fuzzer)
    # A short run from the kept corpus; new inputs go to the build directory.
    add_custom_target(fuzz_smoke_${name}
      COMMAND ${CMAKE_COMMAND} -E make_directory ${PROJECT_BINARY_DIR}/fuzz/${name}.found
      COMMAND ${target} -max_total_time=${FUZZ_SMOKE_SECONDS} -timeout=30 -rss_limit_mb=1024
              -print_final_stats=1 -artifact_prefix=${PROJECT_BINARY_DIR}/fuzz/
              ${PROJECT_BINARY_DIR}/fuzz/${name}.found ${F_CORPUS})
    add_dependencies(fuzz_smoke fuzz_smoke_${name})
    # No new inputs: libFuzzer runs what the corpus has, and stops.
    set(replay -runs=0 -timeout=60)
  else()
    target_sources(${target} PRIVATE ${PROJECT_SOURCE_DIR}/fuzz/replay_main.cpp)
    set(replay "")
  endif()
  add_test(NAME fuzz_replay.${name} COMMAND ${target} ${replay} ${F_CORPUS})
  set_tests_properties(fuzz_replay.${name} PROPERTIES TIMEOUT 300)
  target_link_libraries(${target} PRIVATE ${F_LIBRARIES} module_options)
  target_precompile_headers(${target} REUSE_FROM std_headers)
  set_target_properties(${target} PROPERTIES RUNTIME_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR}/fuzz)
endfunction()
