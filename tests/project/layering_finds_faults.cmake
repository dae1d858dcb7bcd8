# Shows that layering.cmake accepts a sound tree and rejects each kind of fault: a check that finds
# nothing looks the same as a check that does not work.
#   cmake -D LAYERING=<layering.cmake> -D WORK_DIR=<scratch> -P layering_finds_faults.cmake
cmake_minimum_required(VERSION 3.25)

# Writes a tree of three modules with one more line in one source, and runs the check on it.
function(expect result_wanted words source line)
  cmake_parse_arguments(PARSE_ARGV 4 X "" "TABLE;DOCUMENT" "")
  file(REMOVE_RECURSE ${WORK_DIR})
  file(WRITE ${WORK_DIR}/src/low/low.h "#pragma once\n#include <string>\n")
  file(WRITE ${WORK_DIR}/src/middle/middle.h "#pragma once\n#include \"low/low.h\"\n")
  file(WRITE ${WORK_DIR}/src/high/high.h "#pragma once\n#include \"low/low.h\"\n")
  file(WRITE ${WORK_DIR}/src/paint/paint.h "#pragma once\n#include <QPainter>\n")
  file(APPEND ${WORK_DIR}/src/${source} "${line}\n")
  set(table "low:;middle:low;high:middle;paint:high")
  if(X_TABLE)
    set(table "${X_TABLE}")
  endif()
  file(WRITE ${WORK_DIR}/modules.cmake "set(modules \"${table}\")\n")
  if(X_DOCUMENT)
    file(WRITE ${WORK_DIR}/docs/ARCHITECTURE.md "${X_DOCUMENT}")
  endif()
  execute_process(
    COMMAND ${CMAKE_COMMAND} -D SOURCE_DIR=${WORK_DIR} -D TABLE=${WORK_DIR}/modules.cmake
            -P ${LAYERING}
    RESULT_VARIABLE result OUTPUT_VARIABLE output ERROR_VARIABLE output)
  if(result EQUAL 0)
    set(result passes)
  else()
    set(result fails)
  endif()
  # CMake breaks the lines of its messages.
  string(REGEX REPLACE "[ \n]+" " " output "${output}")
  string(FIND "${output}" "${words}" found)
  if(NOT result STREQUAL result_wanted OR found EQUAL -1)
    message(SEND_ERROR "\"${line}\" in ${source}: ${result}, with:\n${output}")
  endif()
endfunction()

expect(passes "sources keep" high/high.h "#include \"high/other.h\"")
expect(passes "sources keep" paint/paint.h "#include \"paint.moc\"")
expect(fails "low may not use it" low/low.h "#include \"middle/middle.h\"")
expect(fails "middle may not use it" middle/middle.h "  #  include \"high/high.h\"")
expect(fails "without its folder" middle/middle.h "#include \"other.h\"")
expect(fails "must not use" low/low.h "#include <QString>")
expect(fails "must not use" low/low.h "#include <QtCore/QString>")
expect(fails "not in the table" extra/extra.h "#pragma once")
expect(fails "does not come before it" low/low.h "" TABLE "low:;middle:high;high:low;paint:high")

set(rows "| `low` | | x |\n| `middle` | `low` | x |\n| `high` | `middle` | x |\n")
expect(passes "sources keep" low/low.h "" DOCUMENT "${rows}| `paint` | `high` | x |\n")
expect(fails "no row for paint" low/low.h "" DOCUMENT "${rows}")
expect(fails "which the build does not know" low/low.h ""
  DOCUMENT "${rows}| `paint` | `high` | x |\n| `gone` | | x |\n")
expect(fails "paint uses \"low\" there" low/low.h "" DOCUMENT "${rows}| `paint` | `low` | x |\n")
