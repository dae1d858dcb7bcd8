# What every target is compiled with. Results must be the same on every machine: no contraction
# into fused multiply-add and no fast-math, whatever the build type.
add_library(project_options INTERFACE)
target_compile_options(project_options INTERFACE
  -ffp-contract=off
  -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wsign-conversion -Wold-style-cast
  -Wnon-virtual-dtor
  # Clang takes even `double{altitude}`, which says what it does, as a silent promotion.
  $<$<CXX_COMPILER_ID:GNU>:-Wdouble-promotion>)
if(WARNINGS_AS_ERRORS)
  target_compile_options(project_options INTERFACE -Werror)
endif()

# -O2, not the -O3 that CMake would give: the same speed here, and a smaller program. Asserts stay
# out of release builds and in all others.
set(CMAKE_CXX_FLAGS_RELEASE "-O2 -DNDEBUG")

if(SANITIZE)
  # The containers of the standard library check their indexes and iterators too.
  add_compile_definitions(_GLIBCXX_ASSERTIONS)
  add_compile_options(-fsanitize=${SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer)
  add_link_options(-fsanitize=${SANITIZE})
endif()

# For the sources of the programs.
add_library(module_options INTERFACE)
target_link_libraries(module_options INTERFACE project_options)
if(WITH_FUZZERS)
  # Reports to libFuzzer which branches were taken; without it these calls do nothing.
  target_compile_options(module_options INTERFACE -fsanitize=fuzzer-no-link)
endif()

# For the sources of the tests. Templates of googletest take most of the compiler's time, and
# optimizing them makes no test faster. What they test is compiled as it is shipped.
add_library(test_options INTERFACE)
target_link_libraries(test_options INTERFACE project_options)
if(NOT CMAKE_BUILD_TYPE STREQUAL "Debug" OR SANITIZE)
  target_compile_options(test_options INTERFACE -O0)
endif()
if(SANITIZE)
  # A report names the lines of src/, and the test by its function.
  target_compile_options(test_options INTERFACE -g0)
endif()

# The fastest linker that is here. The programs are the same with each.
include(CheckLinkerFlag)
foreach(linker mold lld)
  check_linker_flag(CXX -fuse-ld=${linker} LINKS_WITH_${linker})
  if(LINKS_WITH_${linker})
    add_link_options(-fuse-ld=${linker})
    break()
  endif()
endforeach()
