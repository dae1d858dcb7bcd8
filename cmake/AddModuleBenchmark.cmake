# add_module_benchmark(survey SOURCES survey_bench.cpp [LIBRARIES ...])
#
# Builds build/<preset>/bench/survey_bench, which you run by hand. The target `bench_smoke` runs every
# benchmark for a moment, to show that it still works. Its figures mean nothing, but it fails if a
# benchmark reports an error, as a `TimeLimit` of bench/support does.
function(add_module_benchmark name)
  cmake_parse_arguments(B "" "" "SOURCES;LIBRARIES" ${ARGN})
  add_executable(${name}_bench ${B_SOURCES})
  target_link_libraries(${name}_bench PRIVATE ${name} ${B_LIBRARIES} module_options
                                              benchmark::benchmark_main)
  # Benchmarks share bench/support, and tests/support with the tests.
  target_include_directories(${name}_bench PRIVATE ${PROJECT_SOURCE_DIR}/bench
                                                   ${PROJECT_SOURCE_DIR}/tests)
  set_target_properties(${name}_bench PROPERTIES
    RUNTIME_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR}/bench)
  add_custom_target(bench_smoke_${name}
    COMMAND ${CMAKE_COMMAND} -D PROGRAM=$<TARGET_FILE:${name}_bench>
            -P ${PROJECT_SOURCE_DIR}/cmake/RunBenchmarks.cmake)
  add_dependencies(bench_smoke bench_smoke_${name})
endfunction()
