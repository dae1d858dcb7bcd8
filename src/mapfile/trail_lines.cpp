#include "base/text.h"
#include "mapfile/field_cursor.h"
#include "mapfile/line_context.h"
#include "mapfile/trail_words.h"
#include "model/point_names.h"

#include <algorithm>
#include <span>

// The lines that open a trail (`T`) and a range (`R`), and the search keys of a range (`K`).

namespace orvane {

namespace {

constexpr int FillPatternMask = 7;

std::optional<std::string> TextOrNone(std::string_view text) {
  if (text.empty()) return std::nullopt;
  return std::string(text);
}

/// Skips the tag and the tab that should follow it. Another byte is reported and skipped too.
FieldCursor BehindTag(const LineContext& context, std::string_view line, std::string_view format) {
  FieldCursor cursor(line);
  cursor.Skip(1);
  if (!cursor.At('\t')) NoteError(context.messages, format, {line});
  cursor.Skip(1);
  return cursor;
}

// --- Trails ---------------------------------------------------------------------------------

Trail& FindOrMakeNamedTrail(LineContext& context, std::string_view name) {
  if (!name.empty()) {
    if (Trail* trail = context.trailNames.Find(name)) {
      trail->name = std::string(name);
      return *trail;
    }
  }
  Trail& trail = context.map.trails.emplace_front();
  trail.name = TextOrNone(name);
  if (trail.name) context.trailNames.Add(trail);
  return trail;
}

/// The value of a word: its place in `words`, without regard to case, or `ifUnknown`.
template <typename Style>
Style WordValue(std::span<const std::string_view> words, std::string_view word, Style ifUnknown) {
  for (size_t i = 0; i < words.size(); ++i) {
    if (SameName(words[i], word)) return StyleOf<Style>(static_cast<int>(i));
  }
  return ifUnknown;
}

std::string_view FirstWord(std::string_view part) {
  return part.substr(0, FindAnyOf(part, " \t\n\v\f\r"));
}

/// Walks over the parts of a style list: `Take` gives each part in turn.
class StyleParts {
 public:
  explicit StyleParts(std::string_view field) : rest_(field) {}

  /// Removes a last part "n", in any case, that follows a comma. \return true if there was one
  bool TakeHidden() {
    const size_t comma = rest_.rfind(',');
    if (comma == std::string_view::npos) return false;
    if (!SameName(WithoutSpace(rest_.substr(comma + 1)), "n")) return false;
    rest_ = rest_.substr(0, comma);
    return true;
  }

  /// \return the next part, without white space at its ends; empty if it is missing
  std::string_view Take() {
    const size_t comma = rest_.find(',');
    const std::string_view part = rest_.substr(0, comma);
    rest_ = comma == std::string_view::npos ? std::string_view() : rest_.substr(comma + 1);
    return WithoutSpace(part);
  }
  /// As `Take`, but a word ends at white space.
  std::string_view TakeWord() { return FirstWord(Take()); }

 private:
  static std::string_view WithoutSpace(std::string_view text) {
    while (!text.empty() && IsSpace(text.front())) text.remove_prefix(1);
    while (!text.empty() && IsSpace(text.back())) text.remove_suffix(1);
    return text;
  }

  std::string_view rest_;
};

/// Reads a style list. The writer puts the mark of a trail without a fill one part early, and the
/// "n" of a hidden trail after the last part; see docs/compatibility.md.
void ReadTrailStyle(Trail& trail, std::string_view field) {
  StyleParts parts(field);
  const bool hidden = parts.TakeHidden();
  if (const auto part = parts.Take(); !part.empty()) trail.width = ReadReal(part).value;
  if (const auto part = parts.Take(); !part.empty()) trail.color = ParseColor(part);
  if (const auto word = parts.TakeWord(); !word.empty()) {
    trail.lineStyle = WordValue(LineStyleWords, word, LineStyle::Unset);
  }
  if (const auto word = parts.TakeWord(); !word.empty()) {
    trail.labelMode = WordValue(LabelModeWords, word, LabelMode::Unset);
  }
  if (const auto part = parts.Take(); !part.empty()) trail.filled = ReadInt32(part) != 0;
  const std::string_view pattern = parts.Take();
  const MarkStyle earlyMark = WordValue(MarkStyleWords, FirstWord(pattern), MarkStyle::Unknown);
  if (earlyMark != MarkStyle::Unknown) {
    trail.markStyle = earlyMark;
  } else {
    if (!pattern.empty()) trail.fillPattern = ReadInt32(pattern) & FillPatternMask;
    if (const auto word = parts.TakeWord(); !word.empty()) {
      trail.markStyle = WordValue(MarkStyleWords, word, MarkStyle::Unknown);
    }
  }
  if (const auto word = parts.TakeWord(); !word.empty()) {
    if (SameName(word, "v")) {
      trail.flags &= ~std::uint32_t{TrailHidden};
    } else {
      trail.flags |= TrailHidden;
    }
  }
  if (hidden) trail.flags |= TrailHidden;
}

void ReadTrailFields(const LineContext& context, FieldCursor& cursor, Trail& trail) {
  cursor.SkipTab();
  trail.type = cursor.TakeField();
  cursor.SkipTab();
  const std::string_view focal = cursor.Field().substr(0, cursor.Field().find(','));
  trail.focalAnimal = TextOrNone(focal);
  cursor.Skip(focal.size());
  if (cursor.SkipByte(',')) trail.groupSize = std::max(cursor.TakeInteger(), 1);
  cursor.SkipField();
  cursor.SkipTab();
  const std::string_view date = cursor.TakeField();
  trail.date = ParseDate(date, context.workspace.preferences.europeanDates).date;
  // If a trail without a date is only hidden or filled, the writer puts its style list here.
  if (date.starts_with(',')) ReadTrailStyle(trail, date);
  cursor.SkipTab();
  ReadTrailStyle(trail, cursor.TakeField());
  cursor.SkipTab();
  if (!cursor.AtEnd()) trail.note = std::string(cursor.Rest());
}

// --- Search keys ----------------------------------------------------------------------------

/// Two whole numbers, hours and minutes, with an optional colon between. Without a colon, a `-`
/// separates two times instead of being a sign.
int TakeClock(FieldCursor& cursor) {
  constexpr long MinutesPerHour = 60;
  const long hours = cursor.TakeInteger();
  long minutes = 0;
  if (cursor.SkipByte(':')) {
    minutes = cursor.TakeInteger();
  } else {
    while (cursor.At(' ')) cursor.Skip(1);
    if (!cursor.At('-')) minutes = cursor.TakeInteger();
  }
  const long total = hours * MinutesPerHour + minutes;
  return static_cast<int>(std::clamp(total, -0x7FFFFFFFL, 0x7FFFFFFFL));
}

void ReadKeyTimes(FieldCursor& cursor, SearchKey& key) {
  if (cursor.AtFieldEnd()) return;
  key.timeFrom = TakeClock(cursor);
  if (cursor.SkipAnyOf(" -")) key.timeTo = TakeClock(cursor);
  cursor.SkipField();
}

void ReadKeyDates(FieldCursor& cursor, SearchKey& key, bool europeanDates) {
  if (cursor.AtFieldEnd()) return;
  const DatePrefix from = ParseDate(cursor.Field(), europeanDates);
  key.dateFrom = from.date;
  cursor.Skip(from.length);
  if (cursor.SkipAnyOf(" :")) key.dateTo = ParseDate(cursor.Field(), europeanDates).date;
}

}  // namespace

void ReadTrailLine(LineContext& context, std::string_view line) {
  ReadingState& state = context.state;
  state.currentTrail = nullptr;
  state.trailHasTail = false;
  context.trailTimes.Forget();
  state.lastPoint = nullptr;
  state.currentRange = nullptr;
  if (line.size() == 1) return;
  FieldCursor cursor = BehindTag(context, line, "Bad trail spec: %s");
  Trail& trail = FindOrMakeNamedTrail(context, cursor.TakeField());
  ReadTrailFields(context, cursor, trail);
  state.currentTrail = &trail;
  state.trailLine = context.messages.Origin()->line;
}

void ReadRangeLine(LineContext& context, std::string_view line) {
  context.state.currentRange = nullptr;
  if (line.size() == 1) return;
  FieldCursor cursor = BehindTag(context, line, "Bad range spec: %s");
  Range& range = context.map.ranges.emplace_front();
  range.name = TextOrNone(cursor.TakeField());
  cursor.SkipTab();
  cursor.SkipField();
  cursor.SkipTab();
  range.note = TextOrNone(cursor.Rest());
  context.state.currentRange = &range;
  context.state.currentTrail = nullptr;
}

void ReadKeyLine(LineContext& context, std::string_view line) {
  if (context.state.currentRange == nullptr) {
    NoteError(context.messages, "Search key specified outside of range: %s", {line});
    return;
  }
  FieldCursor cursor = BehindTag(context, line, "Bad search key: %s");
  SearchKey& key = context.state.currentRange->keys.emplace_front();
  const std::string_view type = cursor.TakeField();
  key.type = type.empty() ? "!!Unknown!!" : type;
  cursor.SkipTab();
  key.focalAnimal = TextOrNone(cursor.TakeField());
  cursor.SkipTab();
  ReadKeyTimes(cursor, key);
  cursor.SkipTab();
  ReadKeyDates(cursor, key, context.workspace.preferences.europeanDates);
}

}  // namespace orvane
