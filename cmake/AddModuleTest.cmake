include(GoogleTest)

# add_module_test(geometry SOURCES hull_test.cpp [LIBRARIES ...])
#
# Builds geometry_test from the sources of this folder; its cases are the tests geometry.*. It
# links the module alone, so a test also shows what the module needs.
function(add_module_test name)
  cmake_parse_arguments(T "" "" "SOURCES;LIBRARIES" ${ARGN})
  add_executable(${name}_test ${T_SOURCES})
  target_link_libraries(${name}_test PRIVATE ${name} ${T_LIBRARIES} test_support project_options
                                             GTest::gtest_main)
  set_target_properties(${name}_test PROPERTIES RUNTIME_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR}/tests)
  # The cases are listed when the tests run, not in the build: a test program that cannot start
  # then fails as a test and does not stop the build of the others.
  gtest_discover_tests(${name}_test TEST_PREFIX ${name}. DISCOVERY_TIMEOUT 60
                       DISCOVERY_MODE PRE_TEST)
endfunction()
