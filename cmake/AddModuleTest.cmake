include(GoogleTest)

# add_module_test(geometry SOURCES hull_test.cpp [LIBRARIES ...] [PRECOMPILED test_headers]
#                 [ALONE more_hulls_test.cpp])
#
# Builds geometry_test from the sources of this folder; its cases are the tests geometry.*. It
# links only its module and LIBRARIES, so it also shows what the module needs. PRECOMPILED names the
# compiled headers that fit its libraries, or NONE.
#
# With JOIN_TESTS several sources of a folder are compiled as one, which takes about half the time.
# Helpers of the same name then clash; rename one, or name its source under ALONE.
function(add_module_test name)
  cmake_parse_arguments(T "" "PRECOMPILED" "SOURCES;LIBRARIES;ALONE" ${ARGN})
  add_executable(${name}_test ${T_SOURCES})
  target_link_libraries(${name}_test PRIVATE ${name} ${T_LIBRARIES} test_support test_options
                                             GTest::gtest_main)
  if(NOT T_PRECOMPILED)
    set(T_PRECOMPILED test_headers)
  endif()
  if(NOT T_PRECOMPILED STREQUAL NONE)
    target_precompile_headers(${name}_test REUSE_FROM ${T_PRECOMPILED})
  endif()
  set_target_properties(${name}_test PROPERTIES RUNTIME_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR}/tests)
  if(JOIN_TESTS)
    set_target_properties(${name}_test PROPERTIES UNITY_BUILD ON UNITY_BUILD_BATCH_SIZE 8)
    set_source_files_properties(${T_ALONE} PROPERTIES SKIP_UNITY_BUILD_INCLUSION ON)
  endif()
  # The cases are listed when the tests run, not in the build: a test program that cannot start
  # then fails as a test and does not stop the build of the others.
  gtest_discover_tests(${name}_test TEST_PREFIX ${name}. DISCOVERY_TIMEOUT 60
                       DISCOVERY_MODE PRE_TEST)
endfunction()
