# What every target is compiled with. Results must be the same on every machine: no contraction
# into fused multiply-add and no fast-math, whatever the build type.
add_library(project_options INTERFACE)
target_compile_options(project_options INTERFACE
  -ffp-contract=off
  -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wsign-conversion -Wdouble-promotion
  -Wold-style-cast -Wnon-virtual-dtor)
if(WARNINGS_AS_ERRORS)
  target_compile_options(project_options INTERFACE -Werror)
endif()
if(SANITIZE)
  add_compile_options(-fsanitize=${SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer)
  add_link_options(-fsanitize=${SANITIZE})
endif()
