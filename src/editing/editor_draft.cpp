#include "editing/editor_draft.h"

#include "base/dates.h"
#include "base/number_text.h"
#include "base/text.h"
#include "model/point_names.h"
#include "model/workspace.h"

#include <algorithm>
#include <initializer_list>

namespace orvane {
namespace {

constexpr std::string_view KindKey = "kind=";
constexpr std::string_view NewKey = "new=";
constexpr std::string_view MapKey = "map=";
constexpr std::string_view DatesKey = "europeanDates=";
constexpr std::string_view RangeKey = "range=";
constexpr std::string_view ModeKey = "mode=";
constexpr std::string_view FieldKey = "field=";
constexpr std::string_view RowKey = "row=";
constexpr std::string_view CellKey = "cell=";

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
  void Flags(std::initializer_list<bool*> flags) {
    std::string_view field = Next();
    for (bool* flag : flags) {
      *flag = !field.empty() && field.front() == '1';
      if (!field.empty()) field.remove_prefix(1);
    }
  }

 private:
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

const std::string& FieldOf(const EditorDraft& draft, TrailField field) {
  return draft.fields[static_cast<size_t>(field)];
}

Trail* TrailOf(Map& map, const EditorDraft& draft) {
  if (draft.isNew) return nullptr;
  if (!FieldOf(draft, TrailField::Name).empty()) {
    return FindTrail(map, FieldOf(draft, TrailField::Name));
  }
  // A trail shows its date in the form that is the same everywhere.
  const DatePrefix date = ParseDate(FieldOf(draft, TrailField::Date), false);
  return FindTrailByDate(map, FieldOf(draft, TrailField::Type), date.date,
                         FieldOf(draft, TrailField::Focal));
}

void TakeMap(const Map& map, EditorDraft& draft) {
  draft.mapFile = map.fileName;
  draft.europeanDates = map.workspace->preferences.europeanDates;
}

}  // namespace

EditorDraft DraftOf(const TrailEditor& editor) {
  EditorDraft draft;
  draft.isNew = editor.Edited() == nullptr;
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
  TakeMap(editor.WindowMap(), draft);
  if (editor.Edited() != nullptr) draft.rangeName = editor.Edited()->name.value_or("");
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
  put(KindKey, draft.ofTrail ? "trail" : "range");
  put(NewKey, draft.isNew ? "1" : "0");
  put(MapKey, draft.mapFile);
  put(DatesKey, draft.europeanDates ? "1" : "0");
  put(RangeKey, draft.rangeName);
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
  return text;
}

std::optional<EditorDraft> ParseDraft(std::string_view text) {
  EditorDraft draft;
  size_t fields = 0;
  while (!text.empty()) {
    const size_t end = std::min(text.find('\n'), text.size());
    const std::string_view line = text.substr(0, end);
    text.remove_prefix(std::min(end + 1, text.size()));
    if (const auto kind = StartsWith(KindKey, line)) {
      draft.ofTrail = *kind != "range";
    } else if (const auto isNew = StartsWith(NewKey, line)) {
      draft.isNew = *isNew != "0";
    } else if (const auto mapFile = StartsWith(MapKey, line)) {
      draft.mapFile = Unescaped(*mapFile);
    } else if (const auto dates = StartsWith(DatesKey, line)) {
      draft.europeanDates = *dates == "1";
    } else if (const auto range = StartsWith(RangeKey, line)) {
      draft.rangeName = Unescaped(*range);
    } else if (const auto mode = StartsWith(ModeKey, line)) {
      const int number = std::clamp(ReadInt32(*mode), 0, static_cast<int>(EntryMode::Mixture));
      draft.mode = static_cast<EntryMode>(number);
    } else if (const auto field = StartsWith(FieldKey, line); field && fields < TrailFields) {
      draft.fields[fields++] = Unescaped(*field);
    } else if (const auto cell = StartsWith(CellKey, line)) {
      RowReader reader(*cell);
      draft.openCell.emplace();
      reader.Whole(draft.openCell->row);
      reader.Whole(draft.openCell->column);
      reader.Text(draft.openCell->text);
    } else if (const auto row = StartsWith(RowKey, line)) {
      if (draft.ofTrail) draft.trailRows.push_back(TrailRowOf(*row));
      if (!draft.ofTrail) draft.rangeRows.push_back(RangeRowOf(*row));
    }
  }
  if (draft.mapFile.empty()) return std::nullopt;
  return draft;
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
  auto editor = std::make_unique<TrailEditor>(map, TrailOf(map, draft));
  for (size_t i = 0; i < TrailFields; ++i) {
    const auto field = static_cast<TrailField>(i);
    if (editor->Form().Text(field) != draft.fields[i]) editor->SetField(field, draft.fields[i]);
  }
  editor->SetMode(draft.mode);
  editor->RestoreRows(draft.trailRows);
  return editor;
}

Range* RangeOf(Map& map, const EditorDraft& draft) {
  return draft.isNew ? nullptr : FindRange(map, draft.rangeName);
}

std::unique_ptr<RangeEditor> RangeEditorOf(Map& map, const EditorDraft& draft, Color color) {
  auto editor = std::make_unique<RangeEditor>(map, RangeOf(map, draft), color);
  editor->SetName(draft.fields[0]);
  editor->SetColorText(draft.fields[1]);
  editor->RestoreRows(draft.rangeRows);
  return editor;
}

}  // namespace orvane
