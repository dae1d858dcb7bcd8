# Headers that many sources include are compiled once for all of them. No source depends on this:
# -DCMAKE_DISABLE_PRECOMPILE_HEADERS=ON turns it off, and clang-tidy reads each source without.
#
# A compiled header fits only sources with the same options, so there is one for each set of options.

# precompile_headers(std_headers HEADERS <string> <vector> LIBRARIES module_options)
#
# Makes the target that others name: target_precompile_headers(geo REUSE_FROM std_headers). It must
# link the same options and, for libraries that change macros, the same libraries.
function(precompile_headers name)
  cmake_parse_arguments(P "" "" "HEADERS;LIBRARIES" ${ARGN})
  set(source ${PROJECT_BINARY_DIR}/precompiled/${name}.cpp)
  file(CONFIGURE OUTPUT ${source} CONTENT "// Only carries the compiled headers.\n")
  add_library(${name} OBJECT ${source})
  target_link_libraries(${name} PRIVATE ${P_LIBRARIES})
  target_precompile_headers(${name} PRIVATE ${P_HEADERS})
endfunction()

set(standard_headers
  <algorithm> <array> <cmath> <cstddef> <cstdint> <cstdio> <cstring> <deque> <filesystem>
  <forward_list> <functional> <limits> <map> <memory> <optional> <span> <string> <string_view>
  <unordered_map> <utility> <vector>)

# For the sources of the windows and their tests.
set(window_headers
  <QAction> <QApplication> <QDialog> <QLabel> <QLayout> <QMenu> <QMessageBox> <QObject> <QPainter>
  <QPushButton> <QScreen> <QString> <QStringList> <QTimer> <QWidget>)

# For the folders without Qt, and for the programs and benchmarks made only of them.
precompile_headers(std_headers HEADERS ${standard_headers} LIBRARIES module_options)

if(WITH_TESTS)
  set(headers_of_tests ${standard_headers} <fstream> <iterator> <random> <set> <sstream>
                       <gtest/gtest.h>)
  precompile_headers(test_headers HEADERS ${headers_of_tests}
                                  LIBRARIES GTest::gtest test_options)
endif()
