#include "mapfile/reader.h"

#include "base/file_names.h"
#include "base/files.h"
#include "base/line_reader.h"
#include "base/text.h"
#include "mapfile/field_cursor.h"
#include "mapfile/line_context.h"
#include "mapfile/open_map.h"
#include "model/point_names.h"

#include <algorithm>

// A file is cut into lines, and each line goes by its first letter to the parser of its kind. What
// the lines share (the current trail, the last point) stands in `ReadingState`; an included file
// is read in the middle of the outer one, and so is a basis.

namespace orvane {

namespace {

constexpr std::string_view CannotOpen = "Can't open file %s";
constexpr size_t LongestBasisName = 1000;
constexpr char CreditTag = '\xA9';

void CloseTrailAndRange(ReadingState& state) {
  state.currentTrail = nullptr;
  state.currentRange = nullptr;
}

std::string_view SkipSpace(std::string_view text) {
  while (!text.empty() && IsSpace(text.front())) text.remove_prefix(1);
  return text;
}

bool IsBeingRead(const ReadingState& state, const std::string& path) {
  return std::find(state.openFiles.begin(), state.openFiles.end(), path) != state.openFiles.end();
}

void ReadIncludeLine(LineContext& context, std::string_view line) {
  const std::string path(SkipSpace(line.substr(1)));
  if (IsBeingRead(context.state, path) || context.state.openFiles.size() >= DeepestNesting) {
    NoteError(context.messages, CannotOpen, {path});
  } else {
    ReadMapFile(context.map, path);
  }
  context.trailNames.Forget();
  CloseTrailAndRange(context.state);
}

/// True if `basis` rests on `map`, or is still being read and so may come to.
bool WouldCloseCircle(const LineContext& context, const Map* basis) {
  for (const Map* level = basis; level != nullptr; level = level->basis) {
    if (level == &context.map || IsBeingRead(context.state, level->fileName)) return true;
  }
  return false;
}

void ReadBasisLine(LineContext& context, std::string_view line) {
  Map& map = context.map;
  FieldCursor cursor(line);
  cursor.Skip(1);
  cursor.SkipTab();
  std::string name(cursor.Rest());
  if (map.basis != nullptr) {
    NoteError(context.messages, "This map (%s) has two bases %s and %s",
              {map.fileName, map.basis->fileName, name});
  }
  if (DirectoryName(name).empty()) name = JoinPath(DirectoryName(map.fileName), name);
  if (name.size() > LongestBasisName || context.state.openFiles.size() >= DeepestNesting ||
      WouldCloseCircle(context, FindMap(context.workspace, name))) {
    NoteError(context.messages, CannotOpen, {name});
  } else {
    map.basis = &OpenMap(context.workspace, name);
  }
  context.trailNames.Forget();
  CloseTrailAndRange(context.state);
}

void ReadDeviationLine(LineContext& context, std::string_view line) {
  context.map.magneticDeviation = ReadReal(SkipSpace(line.substr(1))).value;
  context.map.flags |= MapHasDeviation;
  CloseTrailAndRange(context.state);
}

void ReadOriginLine(LineContext& context, std::string_view line) {
  if (line.size() == 1) return;
  FieldCursor cursor(line);
  cursor.Skip(1);
  if (!cursor.Stands('\t')) NoteError(context.messages, "Bad origin spec: %s", {line});
  cursor.Skip(1);
  if (context.map.origin != nullptr) {
    NoteError(context.messages, "Map has two (or more) origins, second one ignored");
    return;
  }
  const std::string_view name = cursor.TakeField();
  context.map.origin = ResolvePointName(context.map, nullptr, name);
  if (context.map.origin == nullptr) {
    NoteError(context.messages, "Bad pointname in origin %s", {name});
  }
}

void ReadSettingsLine(LineContext& context, std::string_view line) {
  Map& map = context.map;
  FieldCursor cursor(line);
  cursor.Skip(1);
  cursor.SkipTab();
  for (size_t i = 0; i < map.smName.size(); ++i) {
    const std::string_view name = cursor.Field().substr(0, cursor.Field().find(','));
    if (!name.empty()) map.smName[i] = std::string(name);
    cursor.Skip(name.size());
    if (i + 1 < map.smName.size() && !cursor.SkipByte(',')) break;
  }
  cursor.SkipField();
  if (!cursor.SkipByte('\t')) return;
  map.contourEnabled = cursor.TakeInteger();
  if (cursor.SkipByte(',')) map.contourInterval = cursor.TakeInteger();
}

void ReadMapLine(LineContext& context, std::string_view line) {
  line = SkipSpace(line);
  if (line.empty()) return;
  switch (FoldByte(line.front())) {
    case '#':
      context.map.comments.emplace_back(line);
      break;
    case CreditTag:
      context.map.credits.emplace_back(line);
      break;
    case 'a':
    case 'c':
    case 'g':
    case 'l':
    case 'n':
    case 'p':
      ReadPointLine(context, line);
      break;
    case 'b':
      ReadBasisLine(context, line);
      break;
    case 'd':
      break;  // the date of the last save is not taken: a map's own date stays 0
    case 'h':
      if (line.size() > 1 && FoldByte(line[1]) == 's') {
        ReadShadeLine(context, line);
      } else {
        ReadGridLine(context, line);
      }
      break;
    case 'i':
      ReadIncludeLine(context, line);
      break;
    case 'k':
      ReadKeyLine(context, line);
      break;
    case 'm':
      ReadDeviationLine(context, line);
      break;
    case 'o':
      ReadOriginLine(context, line);
      break;
    case 'r':
      ReadRangeLine(context, line);
      break;
    case 't':
      ReadTrailLine(context, line);
      break;
    case 'z':
      ReadSettingsLine(context, line);
      break;
    default:
      context.NoteOnce("Unparseable input: %s", line);
      break;
  }
}

bool IsUtf16(std::string_view text) {
  const std::string_view mark = text.substr(0, 2);
  return mark == "\xFF\xFE" || mark == "\xFE\xFF";
}

}  // namespace

Trail* TrailNames::Find(std::string_view name) {
  if (!filled_) Fill();
  const auto found = byName_.find(FoldedText(name));
  return found == byName_.end() ? nullptr : found->second;
}

void TrailNames::Add(Trail& trail) {
  // A new trail stands in front of all others, so it is the one that is found.
  if (filled_) byName_[FoldedText(*trail.name)] = &trail;
}

void TrailNames::Fill() {
  byName_.clear();
  for (Map* level = &map_; level != nullptr; level = level->basis) {
    for (Trail& trail : level->trails) {
      if (trail.name) byName_.try_emplace(FoldedText(*trail.name), &trail);
    }
  }
  filled_ = true;
}

void LineContext::NoteOnce(std::string_view format, std::string_view argument) {
  if (state.warnedOnce) return;
  state.warnedOnce = true;
  NoteError(messages, format, {argument});
}

void ReadMapText(Map& map, std::string_view text) {
  LineContext context(map);
  ReadingState& state = context.state;
  const bool warnedBefore = state.warnedOnce;
  state.warnedOnce = false;
  CloseTrailAndRange(state);
  if (text.find('\0') != std::string_view::npos) {
    NoteError(context.messages, "File %s holds bytes that are no text; it may be damaged",
              {state.openFiles.empty() ? map.fileName : state.openFiles.back()});
  }
  LineReader lines(text, LongestMapLine);
  while (const auto line = lines.Next()) ReadMapLine(context, *line);
  if ((map.flags & MapHasDeviation) == 0 && map.basis != nullptr &&
      (map.basis->flags & MapHasDeviation) != 0) {
    map.magneticDeviation = map.basis->magneticDeviation;
    map.flags |= MapHasDeviation;
  }
  // New trails were put in front. An included file turns round what the outer one had so far, and
  // the order that comes of it is the order in which such maps have always stood.
  map.trails.reverse();
  state.warnedOnce = warnedBefore;
}

bool ReadMapFile(Map& map, const std::string& path) {
  Workspace& workspace = *map.workspace;
  const auto text = ReadWholeFile(path);
  if (!text) {
    NoteError(workspace.messages, CannotOpen, {path});
    return false;
  }
  if (IsUtf16(*text)) {
    NoteError(workspace.messages,
              "File %s is in UTF-16, which can't be read; save it as plain text", {path});
    return false;
  }
  workspace.reading.openFiles.push_back(path);
  ReadMapText(map, *text);
  workspace.reading.openFiles.pop_back();
  return true;
}

}  // namespace orvane
