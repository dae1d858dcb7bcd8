#include "mapfile/reader.h"

#include "base/file_identity.h"
#include "base/file_names.h"
#include "base/files.h"
#include "base/line_reader.h"
#include "base/text.h"
#include "base/utf8.h"
#include "mapfile/field_cursor.h"
#include "mapfile/line_context.h"
#include "mapfile/open_map.h"
#include "model/point_names.h"
#include "model/time_names.h"

#include <algorithm>

// A file is cut into lines, and the first letter of a line selects its parser. What the lines share
// (the current trail, the last point) is in `ReadingState`; an included file is read in the middle
// of the outer one, and so is a basis.

namespace orvane {

namespace {

constexpr std::string_view CannotOpen = "Can't open file %s";
constexpr size_t LongestBasisName = 1000;
/// The most lines that name a file, in everything that is read with the outermost one. Without this
/// limit, files that include each other in turns would be read without end.
constexpr int MostFilesNamed = 10000;
/// Lines between two checks for a cancel.
constexpr unsigned LinesOfStep = 512;
bool ReadFileInto(LineContext& context, const std::string& path);

void CloseTrailAndRange(ReadingState& state) {
  state.currentTrail = nullptr;
  state.currentRange = nullptr;
}

std::string_view SkipSpace(std::string_view text) {
  while (!text.empty() && IsSpace(text.front())) text.remove_prefix(1);
  return text;
}

/// \param path  from the root
bool IsBeingRead(const ReadingState& state, const std::string& path) {
  return std::any_of(state.openFiles.begin(), state.openFiles.end(),
                     [&](const OpenedFile& file) { return file.path == path; });
}

/// True while another named file can be opened. Counts the calls.
bool MayOpenAnother(ReadingState& state) {
  return state.openFiles.size() < DeepestNesting && ++state.filesNamed <= MostFilesNamed;
}

void ReadIncludeLine(LineContext& context, std::string_view line) {
  const std::string path(SkipSpace(line.substr(1)));
  if (!MayOpenAnother(context.state) || IsBeingRead(context.state, WholePath(path))) {
    NoteError(context.messages, CannotOpen, {path});
  } else {
    ReadFileInto(context, path);
  }
  CloseTrailAndRange(context.state);
}

/// True if `map` is in the basis chain of `basis`, or can still be: `basis` is being read.
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
              {map.shownName, map.basis->shownName, name});
  }
  if (DirectoryName(name).empty()) name = JoinPath(DirectoryName(map.shownName), name);
  const bool mayOpen = name.size() <= LongestBasisName && MayOpenAnother(context.state);
  const Map* opened = mayOpen ? FindOpenMap(context.workspace, name) : nullptr;
  if (!mayOpen || WouldCloseCircle(context, opened)) {
    NoteError(context.messages, CannotOpen, {name});
  } else {
    // Lines for points and trails of the basis change the basis; if it was open before, they can't
    // be undone.
    Progress* progress = context.workspace.progress;
    if (progress != nullptr && opened != nullptr) progress->Commit();
    Map* basis = OpenMapUnlessCanceled(context.workspace, name);
    if (basis != nullptr) map.basis = basis;
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
  if (!cursor.At('\t')) NoteError(context.messages, "Bad origin spec: %s", {line});
  cursor.Skip(1);
  if (context.map.origin != nullptr) {
    NoteError(context.messages, "Map has two (or more) origins, second one ignored");
    return;
  }
  const std::string_view name = cursor.TakeField();
  context.map.origin = ResolvePointName(context.map, nullptr, name);
  context.trailTimes.Forget();  // the line can give a point of the trail a time as synonym
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
  if (CreditTagLength(line) > 0) {
    context.map.credits.emplace_back(line);
    return;
  }
  switch (FoldByte(line.front())) {
    case '#':
      context.map.comments.emplace_back(line);
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
      break;  // the date of the last save is ignored: `Map::date` stays 0
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

void ReadTextInto(LineContext& context, std::string_view text) {
  Map& map = context.map;
  ReadingState& state = context.state;
  if (state.depth == 0) state.filesNamed = 0;
  ++state.depth;
  const bool warnedBefore = state.warnedOnce;
  state.warnedOnce = false;
  CloseTrailAndRange(state);
  const std::string file =
      state.openFiles.empty() ? map.shownName : state.openFiles.back().shownName;
  OriginScope origin(context.messages, file);
  if (text.find('\0') != std::string_view::npos) {
    NoteError(context.messages, "File %s holds bytes that are not text; it may be damaged", {file});
  }
  if (text.starts_with(Utf8Mark)) text.remove_prefix(Utf8Mark.size());
  LineReader lines(text, LongestMapLine);
  ProgressSteps steps(context.workspace.progress, WorkStage::Reading, text.size(), LinesOfStep);
  const char* end = nullptr;
  while (const auto line = lines.Next()) {
    if (!steps.Next(static_cast<size_t>(line->data() - text.data()))) break;
    // If the line before had no end, this is the rest of a line that was too long.
    if (line->data() != end) origin.NextLine();
    end = line->data() + line->size();
    ReadMapLine(context, *line);
  }
  if ((map.flags & MapHasDeviation) == 0 && map.basis != nullptr &&
      (map.basis->flags & MapHasDeviation) != 0) {
    map.magneticDeviation = map.basis->magneticDeviation;
    map.flags |= MapHasDeviation;
  }
  // New trails were put in front. An included file reverses the trails of the outer one so far; see
  // docs/compatibility.md.
  map.trails.reverse();
  context.trailNames.NoteReversed();
  state.warnedOnce = warnedBefore;
  --state.depth;
}

bool IsUtf16(std::string_view text) {
  const std::string_view mark = text.substr(0, 2);
  return mark == "\xFF\xFE" || mark == "\xFE\xFF";
}

bool ReadFileInto(LineContext& context, const std::string& path) {
  const auto text = ReadWholeFile(path);
  const std::string whole = WholePath(path);
  const std::string own = WholePath(context.map.fileName);
  const auto mark = text ? std::optional(MarkOf(*text)) : std::nullopt;
  if (whole != own && IsBeingRead(context.state, own)) context.map.includedFiles[whole] = mark;
  if (!text) {
    NoteError(context.messages, CannotOpen, {path});
    return false;
  }
  if (IsUtf16(*text)) {
    NoteError(context.messages, "File %s is in UTF-16, which can't be read; save it as plain text",
              {path});
    return false;
  }
  if (whole == own) context.map.fileMark = mark;
  context.state.openFiles.push_back({.path = whole, .shownName = path});
  ReadTextInto(context, *text);
  context.state.openFiles.pop_back();
  return true;
}

}  // namespace

void LineContext::NoteOnce(std::string_view format, std::string_view argument) {
  if (state.warnedOnce) return;
  state.warnedOnce = true;
  NoteError(messages, format, {argument});
}

Point* LineContext::ResolveOnTrail(std::string_view spec) {
  Trail* trail = state.currentTrail;
  if (trail == nullptr) return ResolvePointName(map, nullptr, spec);
  if (IsTimeName(spec)) {
    Point* point = trailTimes.Find(*trail, spec);
    // The name is new, so skip the second lookup.
    return point != nullptr ? point : ResolvePointName(map, nullptr, spec);
  }
  Point* point = ResolvePointName(map, trail, spec);
  for (size_t at = spec.find('='); point != nullptr && at != std::string_view::npos;) {
    spec.remove_prefix(at + 1);
    at = spec.find('=');
    if (const auto part = spec.substr(0, at); IsTimeName(part)) trailTimes.AddName(*point, part);
  }
  return point;
}

void ReadMapText(Map& map, std::string_view text) {
  LineContext context(map);
  ReadTextInto(context, text);
}

bool ReadMapFile(Map& map, const std::string& path) {
  LineContext context(map);
  return ReadFileInto(context, path);
}

}  // namespace orvane
