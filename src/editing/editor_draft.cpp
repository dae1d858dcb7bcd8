#include "editing/editor_draft.h"

#include "base/dates.h"
#include "base/number_text.h"
#include "base/text.h"
#include "model/point_names.h"
#include "model/workspace.h"

#include <algorithm>
#include <cstdint>
#include <initializer_list>
#include <unordered_set>

namespace orvane {
namespace {

constexpr std::string_view FormKey = "form=";
constexpr std::string_view KindKey = "kind=";
constexpr std::string_view NewKey = "new=";
constexpr std::string_view MapKey = "map=";
constexpr std::string_view DatesKey = "europeanDates=";
constexpr std::string_view RangeKey = "range=";
constexpr std::string_view ModeKey = "mode=";
constexpr std::string_view FieldKey = "field=";
constexpr std::string_view RowKey = "row=";
constexpr std::string_view CellKey = "cell=";
constexpr std::string_view OriginKey = "origin=";
constexpr std::string_view PlaceKey = "place=";
constexpr std::string_view MarkKey = "mark=";
constexpr std::string_view EndKey = "end=";

/// The number of this form. The first one had no number.
constexpr int Form = 2;

/// A text without tabs and line ends: those and "%" become "%t", "%n", "%r" and "%%".
std::string Escaped(std::string_view text) {
  std::string escaped;
  for (const char c : text) {
    switch (c) {
      case '%':
        escaped += "%%";
        break;
      case '\t':
        escaped += "%t";
        break;
      case '\n':
        escaped += "%n";
        break;
      case '\r':
        escaped += "%r";
        break;
      default:
        escaped += c;
    }
  }
  return escaped;
}

std::string Unescaped(std::string_view text) {
  std::string plain;
  for (size_t i = 0; i < text.size(); ++i) {
    if (text[i] != '%' || i + 1 == text.size()) {
      plain += text[i];
      continue;
    }
    const char c = text[++i];
    plain += c == 't' ? '\t' : c == 'n' ? '\n' : c == 'r' ? '\r' : c;
  }
  return plain;
}

/// Writes the fields of a row with tabs between.
class RowWriter {
 public:
  void Text(std::string_view text) { Put(Escaped(text)); }
  /// A missing text is not an empty one.
  void Optional(const std::optional<std::string>& text) { Put(text ? "+" + Escaped(*text) : "-"); }
  void Number(double value) { Put(FormatShortest(value)); }
  void Whole(int value) { Put(std::to_string(value)); }
  void Mark(const FileMark& mark) {
    Put(std::to_string(mark.size));
    Put(std::to_string(mark.hash));
  }
  void Flags(std::initializer_list<bool> flags) {
    std::string text;
    for (const bool flag : flags) text += flag ? '1' : '0';
    Put(text);
  }
  std::string Line(std::string_view key = RowKey) const { return std::string(key) + text_ + '\n'; }

 private:
  void Put(const std::string& field) {
    if (!first_) text_ += '\t';
    first_ = false;
    text_ += field;
  }
  std::string text_;
  bool first_ = true;
};

/// Reads them back; what is missing has its default.
class RowReader {
 public:
  explicit RowReader(std::string_view text) : rest_(text) {}

  void Text(std::string& text) { text = Unescaped(Next()); }
  void Optional(std::optional<std::string>& text) {
    const std::string_view field = Next();
    text.reset();
    if (!field.empty() && field.front() == '+') text = Unescaped(field.substr(1));
  }
  template <typename Real>
  void Number(Real& value) {
    value = static_cast<Real>(ReadReal(Next()).value);
  }
  void Whole(int& value) { value = ReadInt32(Next()); }
  void Mark(FileMark& mark) {
    mark.size = Unsigned(Next());
    mark.hash = Unsigned(Next());
  }
  template <typename Enum>
  void Choice(Enum& choice, Enum last) {
    int number = 0;
    Whole(number);
    choice = static_cast<Enum>(std::clamp(number, 0, static_cast<int>(last)));
  }
  void Flags(std::initializer_list<bool*> flags) {
    std::string_view field = Next();
    for (bool* flag : flags) {
      *flag = !field.empty() && field.front() == '1';
      if (!field.empty()) field.remove_prefix(1);
    }
  }

 private:
  static std::uint64_t Unsigned(std::string_view text) {
    std::uint64_t number = 0;
    constexpr std::uint64_t Ten = 10;
    for (const char c : text) {
      if (IsDigit(c)) number = number * Ten + static_cast<std::uint64_t>(c - '0');
    }
    return number;
  }
  std::string_view Next() {
    const size_t end = std::min(rest_.find('\t'), rest_.size());
    const std::string_view field = rest_.substr(0, end);
    rest_.remove_prefix(std::min(end + 1, rest_.size()));
    return field;
  }
  std::string_view rest_;
};

std::string RowLine(const TrailRow& row) {
  RowWriter line;
  line.Text(row.name);
  line.Flags({row.isGps, row.isAltitude, row.isAbsolute, row.showsNear, row.isRepeat});
  for (const double value : {row.gps.lat, row.gps.lon, double{row.gps.altitude}, row.bearing,
                             row.distance, row.inclination, row.scale}) {
    line.Number(value);
  }
  for (const int value : {row.altitude, row.weight, row.sm[0], row.sm[1], row.sm[2]}) {
    line.Whole(value);
  }
  line.Optional(row.nearName);
  line.Optional(row.comment);
  line.Optional(row.basePoint);
  line.Whole(row.mark.shape);
  line.Flags({row.mark.filled});
  line.Whole(row.mark.size);
  return line.Line();
}

/// \return the shape of a number; none for a damaged one
std::uint8_t MarkShapeOf(int number) {
  const bool isShape = number == PointMarkCircle || number == PointMarkSquare;
  return static_cast<std::uint8_t>(isShape ? number : 0);
}

TrailRow TrailRowOf(std::string_view text) {
  TrailRow row;
  RowReader line(text);
  line.Text(row.name);
  line.Flags({&row.isGps, &row.isAltitude, &row.isAbsolute, &row.showsNear, &row.isRepeat});
  line.Number(row.gps.lat);
  line.Number(row.gps.lon);
  line.Number(row.gps.altitude);
  line.Number(row.bearing);
  line.Number(row.distance);
  line.Number(row.inclination);
  line.Number(row.scale);
  line.Whole(row.altitude);
  line.Whole(row.weight);
  for (int& value : row.sm) line.Whole(value);
  line.Optional(row.nearName);
  line.Optional(row.comment);
  line.Optional(row.basePoint);
  int shape = PointMarkNone;
  line.Whole(shape);
  row.mark.shape = MarkShapeOf(shape);
  line.Flags({&row.mark.filled});
  line.Whole(row.mark.size);
  return row;
}

std::string RowLine(const RangeRow& row) {
  RowWriter line;
  line.Optional(row.type);
  line.Optional(row.focalAnimal);
  for (const int value : {row.timeFrom, row.timeTo, row.dateFrom, row.dateTo}) {
    line.Whole(value);
  }
  return line.Line();
}

RangeRow RangeRowOf(std::string_view text) {
  RangeRow row;
  RowReader line(text);
  line.Optional(row.type);
  line.Optional(row.focalAnimal);
  line.Whole(row.timeFrom);
  line.Whole(row.timeTo);
  line.Whole(row.dateFrom);
  line.Whole(row.dateTo);
  return row;
}

/// Identity and looks of a trail. Size and width are fields of the form.
std::string OriginLine(const Trail& trail) {
  RowWriter line;
  line.Optional(trail.name);
  line.Text(trail.type);
  line.Optional(trail.focalAnimal);
  line.Whole(trail.date);
  line.Flags({IsContour(trail), IsHidden(trail), trail.filled});
  line.Whole(static_cast<int>(trail.lineStyle));
  line.Whole(static_cast<int>(trail.labelMode));
  line.Whole(static_cast<int>(trail.markStyle));
  line.Whole(trail.fillPattern);
  line.Whole(trail.color);
  line.Optional(trail.note);
  return line.Line(OriginKey);
}

void ReadOrigin(std::string_view text, Trail& trail) {
  RowReader line(text);
  bool isContour = false;
  bool isHidden = false;
  line.Optional(trail.name);
  line.Text(trail.type);
  line.Optional(trail.focalAnimal);
  line.Whole(trail.date);
  line.Flags({&isContour, &isHidden, &trail.filled});
  line.Choice(trail.lineStyle, LineStyle::Dashed);
  line.Choice(trail.labelMode, LabelMode::Auto);
  line.Choice(trail.markStyle, MarkStyle::Unknown);
  line.Whole(trail.fillPattern);
  line.Whole(trail.color);
  line.Optional(trail.note);
  if (isContour) trail.flags |= TrailContour;
  if (isHidden) trail.flags |= TrailHidden;
}

std::string OriginLine(const RangeOrigin& range) {
  RowWriter line;
  line.Optional(range.name);
  line.Optional(range.note);
  return line.Line(OriginKey);
}

void ReadOrigin(std::string_view text, RangeOrigin& range) {
  RowReader line(text);
  line.Optional(range.name);
  line.Optional(range.note);
}

std::string EqualsText(const EqualRecords& equals) {
  RowWriter place;
  place.Whole(static_cast<int>(equals.place));
  std::string text = place.Line(PlaceKey);
  for (const FileMark& mark : equals.marks) {
    RowWriter line;
    line.Mark(mark);
    text += line.Line(MarkKey);
  }
  return text;
}

/// The last line of a draft.
std::string EndLine(std::string_view lines) {
  RowWriter line;
  line.Mark(MarkOf(lines));
  return line.Line(EndKey);
}

const std::string& FieldOf(const EditorDraft& draft, TrailField field) {
  return draft.fields[static_cast<size_t>(field)];
}

// --- Drafts of the first form -------------------------------------------------------------------

/// \return how many points of the trail have the name of a row
long SharedNames(const Trail& trail, const std::unordered_set<std::string>& names) {
  return std::count_if(trail.points.begin(), trail.points.end(),
                       [&](const Point* point) { return names.contains(FoldedText(point->name)); });
}

/// The trail whose form the draft shows, cut as it is; of several the one with most of the points.
Trail* TrailOfForm(Map& map, const EditorDraft& draft) {
  std::unordered_set<std::string> names;
  for (const TrailRow& row : draft.trailRows) {
    names.insert(FoldedText(std::string_view(row.name).substr(0, row.name.find('='))));
  }
  Trail* best = nullptr;
  long most = -1;
  for (Map* level = &map; level != nullptr; level = level->basis) {
    for (Trail& trail : level->trails) {
      const TrailForm form(trail);
      const bool fits = std::all_of(
          IdentityFields.begin(), IdentityFields.end(),
          [&](TrailField field) { return SameName(form.Text(field), FieldOf(draft, field)); });
      const long shared = fits ? SharedNames(trail, names) : -1;
      if (shared <= most) continue;
      most = shared;
      best = &trail;
    }
  }
  return best;
}

/// The content that the trail or range had is not known.
constexpr FileMark UnknownMark{};

TrailOrigin OriginOfForm(Map& map, const EditorDraft& draft) {
  if (const Trail* trail = TrailOfForm(map, draft)) {
    TrailOrigin origin = OriginOf(map, *trail);
    origin.equals.Own() = UnknownMark;
    return origin;
  }
  TrailOrigin origin{.trail = {}, .equals = {.marks = {UnknownMark}}};
  const std::string& name = FieldOf(draft, TrailField::Name);
  const std::string& focal = FieldOf(draft, TrailField::Focal);
  if (!name.empty()) origin.trail.name = name;
  if (!focal.empty()) origin.trail.focalAnimal = focal;
  origin.trail.type = FieldOf(draft, TrailField::Type);
  // A trail shows its date in the form that is the same everywhere.
  origin.trail.date = ParseDate(FieldOf(draft, TrailField::Date), false).date;
  return origin;
}

RangeOrigin OriginOfRange(Map& map, const EditorDraft& draft) {
  if (draft.range) return *draft.range;
  if (const Range* range = FindRange(map, draft.rangeName)) {
    RangeOrigin origin = OriginOf(map, *range);
    origin.equals.Own() = UnknownMark;
    return origin;
  }
  return {.name = draft.rangeName, .note = {}, .equals = {.marks = {UnknownMark}}};
}

// ------------------------------------------------------------------------------------------------

void TakeMap(const Map& map, EditorDraft& draft) {
  draft.mapFile = map.fileName;
  draft.europeanDates = map.workspace->preferences.europeanDates;
}

/// Takes the lines of a draft one by one. Single values that can't be read have their defaults.
class DraftReader {
 public:
  void TakeLine(std::string_view line) {
    if (const auto form = StartsWith(FormKey, line)) {
      form_ = ReadInt32(*form);
    } else if (const auto kind = StartsWith(KindKey, line)) {
      hasKind_ = *kind == "range" || *kind == "trail";
      draft_.ofTrail = *kind != "range";
    } else if (const auto isNew = StartsWith(NewKey, line)) {
      draft_.isNew = *isNew != "0";
    } else if (const auto mapFile = StartsWith(MapKey, line)) {
      draft_.mapFile = Unescaped(*mapFile);
    } else if (const auto dates = StartsWith(DatesKey, line)) {
      draft_.europeanDates = *dates == "1";
    } else if (const auto range = StartsWith(RangeKey, line)) {
      draft_.rangeName = Unescaped(*range);
    } else if (const auto mode = StartsWith(ModeKey, line)) {
      const int number = std::clamp(ReadInt32(*mode), 0, static_cast<int>(EntryMode::Mixture));
      draft_.mode = static_cast<EntryMode>(number);
    } else if (const auto field = StartsWith(FieldKey, line); field && fields_ < TrailFields) {
      draft_.fields[fields_++] = Unescaped(*field);
    } else if (const auto cell = StartsWith(CellKey, line)) {
      RowReader reader(*cell);
      draft_.openCell.emplace();
      reader.Whole(draft_.openCell->row);
      reader.Whole(draft_.openCell->column);
      reader.Text(draft_.openCell->text);
    } else if (const auto row = StartsWith(RowKey, line)) {
      if (draft_.ofTrail) draft_.trailRows.push_back(TrailRowOf(*row));
      if (!draft_.ofTrail) draft_.rangeRows.push_back(RangeRowOf(*row));
    } else {
      TakeOriginLine(line);
    }
  }

  /// \return nothing if what every draft has is missing
  std::optional<EditorDraft> Result() {
    const bool isWhole = hasKind_ && !draft_.mapFile.empty() && fields_ == TrailFields;
    const bool hasOrigin = draft_.isNew || form_ == 0 || draft_.trail || draft_.range;
    const bool isKnown = form_ == 0 || form_ == Form;
    if (!isWhole || !hasOrigin || !isKnown) return std::nullopt;
    const bool hasPlace = equals_.place < equals_.marks.size();
    if ((draft_.trail || draft_.range) && !hasPlace) return std::nullopt;
    if (draft_.trail) draft_.trail->equals = std::move(equals_);
    if (draft_.range) draft_.range->equals = std::move(equals_);
    return std::move(draft_);
  }

 private:
  void TakeOriginLine(std::string_view line) {
    if (const auto origin = StartsWith(OriginKey, line)) {
      if (draft_.ofTrail) ReadOrigin(*origin, draft_.trail.emplace().trail);
      if (!draft_.ofTrail) ReadOrigin(*origin, draft_.range.emplace());
    } else if (const auto place = StartsWith(PlaceKey, line)) {
      equals_.place = static_cast<size_t>(std::max(ReadInt32(*place), 0));
    } else if (const auto mark = StartsWith(MarkKey, line)) {
      RowReader(*mark).Mark(equals_.marks.emplace_back());
    }
  }

  EditorDraft draft_;
  EqualRecords equals_;
  int form_ = 0;
  size_t fields_ = 0;
  bool hasKind_ = false;
};

}  // namespace

EditorDraft DraftOf(const TrailEditor& editor) {
  EditorDraft draft;
  draft.isNew = editor.Edited() == nullptr && editor.Deleted() == nullptr;
  if (!draft.isNew) draft.trail = editor.Origin();
  TakeMap(editor.WindowMap(), draft);
  draft.mode = editor.Mode();
  for (size_t i = 0; i < TrailFields; ++i) {
    draft.fields[i] = editor.Form().Text(static_cast<TrailField>(i));
  }
  draft.trailRows = editor.Rows();
  return draft;
}

EditorDraft DraftOf(const RangeEditor& editor) {
  EditorDraft draft;
  draft.ofTrail = false;
  draft.isNew = editor.Edited() == nullptr;
  if (!draft.isNew) draft.range = editor.Origin();
  TakeMap(editor.WindowMap(), draft);
  draft.fields[0] = editor.Name();
  draft.fields[1] = editor.ColorText();
  draft.rangeRows = editor.Rows();
  return draft;
}

std::string DraftText(const EditorDraft& draft) {
  std::string text;
  const auto put = [&](std::string_view key, std::string_view value) {
    text += key;
    text += Escaped(value);
    text += '\n';
  };
  put(FormKey, std::to_string(Form));
  put(KindKey, draft.ofTrail ? "trail" : "range");
  put(NewKey, draft.isNew ? "1" : "0");
  put(MapKey, draft.mapFile);
  put(DatesKey, draft.europeanDates ? "1" : "0");
  put(ModeKey, std::to_string(static_cast<int>(draft.mode)));
  for (const std::string& field : draft.fields) put(FieldKey, field);
  for (const TrailRow& row : draft.trailRows) text += RowLine(row);
  for (const RangeRow& row : draft.rangeRows) text += RowLine(row);
  if (draft.openCell) {
    RowWriter line;
    line.Whole(draft.openCell->row);
    line.Whole(draft.openCell->column);
    line.Text(draft.openCell->text);
    text += line.Line(CellKey);
  }
  if (draft.trail) text += OriginLine(draft.trail->trail) + EqualsText(draft.trail->equals);
  if (draft.range) text += OriginLine(*draft.range) + EqualsText(draft.range->equals);
  return text + EndLine(text);
}

std::optional<EditorDraft> ParseDraft(std::string_view text) {
  if (StartsWith(FormKey, text)) {
    const size_t end = text.rfind('\n', text.size() - 2);
    if (end == std::string_view::npos || EndLine(text.substr(0, end + 1)) != text.substr(end + 1)) {
      return std::nullopt;
    }
  } else if (!StartsWith(KindKey, text) || !text.ends_with('\n')) {
    return std::nullopt;
  }
  DraftReader reader;
  while (!text.empty()) {
    const size_t end = std::min(text.find('\n'), text.size());
    reader.TakeLine(text.substr(0, end));
    text.remove_prefix(std::min(end + 1, text.size()));
  }
  return reader.Result();
}

std::string DraftTitle(const EditorDraft& draft) {
  std::string title = draft.isNew ? "New " : "";
  title += draft.ofTrail ? "Trail" : "Range";
  if (!draft.ofTrail) return title + " " + draft.fields[0];
  for (const TrailField field : {TrailField::Name, TrailField::Date, TrailField::Focal}) {
    if (!FieldOf(draft, field).empty()) title += " " + FieldOf(draft, field);
  }
  return title;
}

std::unique_ptr<TrailEditor> TrailEditorOf(Map& map, const EditorDraft& draft) {
  std::optional<TrailOrigin> origin = draft.trail;
  if (!origin && !draft.isNew) origin = OriginOfForm(map, draft);
  auto editor = std::make_unique<TrailEditor>(map, origin ? FindAgain(map, *origin) : nullptr);
  if (origin) editor->TakeOrigin(*origin);
  for (size_t i = 0; i < TrailFields; ++i) {
    const auto field = static_cast<TrailField>(i);
    if (origin && IsIdentity(field)) continue;  // it is that of the trail, not cut
    if (editor->Form().Text(field) != draft.fields[i]) editor->SetField(field, draft.fields[i]);
  }
  editor->SetMode(draft.mode);
  editor->RestoreRows(draft.trailRows);
  return editor;
}

Range* RangeOf(Map& map, const EditorDraft& draft) {
  return draft.isNew ? nullptr : FindAgain(map, OriginOfRange(map, draft));
}

std::unique_ptr<RangeEditor> RangeEditorOf(Map& map, const EditorDraft& draft, Color color) {
  auto editor = std::make_unique<RangeEditor>(map, RangeOf(map, draft), color);
  if (!draft.isNew) editor->TakeOrigin(OriginOfRange(map, draft));
  editor->SetName(draft.fields[0]);
  editor->SetColorText(draft.fields[1]);
  editor->RestoreRows(draft.rangeRows);
  return editor;
}

}  // namespace orvane
