#pragma once

#include <string>
#include <vector>

namespace orvane {

struct Map;

/// How long after its first drawing a map shows its notes, and for how long.
constexpr int NotesDelayMilliseconds = 10;
constexpr int NotesMilliseconds = 3000;

/// The lines of the note that a map shows when it is opened: its credit lines without the sign in
/// front and a blank after it, each of at most 199 bytes; none for a map without credits.
std::vector<std::string> NoteLines(const Map& map);

}  // namespace orvane
