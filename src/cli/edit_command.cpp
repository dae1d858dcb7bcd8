// A script is a list of lines, each a word and its fields between tabs. One table says which words
// there are, how many fields each takes, and what it does.

#include "cli/edit_command.h"

#include "base/files.h"
#include "base/number_text.h"
#include "base/text.h"
#include "cli/commands.h"
#include "cli/dump.h"
#include "cli/edit_session.h"
#include "cli/exit_status.h"
#include "cli/import_command.h"
#include "cli/import_gis_command.h"
#include "cli/text_output.h"
#include "entry/import_edits.h"
#include "mapfile/writer.h"
#include "panes/delete_rows.h"
#include "panes/open_editors.h"
#include "panes/pane_clicks.h"
#include "panes/pane_selection.h"
#include "panes/range_drops.h"
#include "panes/range_list.h"
#include "panes/trail_tree.h"
#include "panes/visibility.h"
#include "trails/checks.h"

#include <algorithm>
#include <iostream>
#include <iterator>
#include <limits>
#include <optional>
#include <sstream>

namespace orvane {
namespace {

using Fields = std::vector<std::string>;
/// Why a line can't be carried out; nothing if it could.
using Fault = std::optional<std::string>;

constexpr size_t AnyNumber = std::numeric_limits<size_t>::max();
constexpr double Unlimited = std::numeric_limits<double>::infinity();

std::optional<size_t> ReadCount(const std::string& text) {
  const IntegerPrefix number = ReadDigits(text);
  if (number.length == 0 || number.length != text.size()) return std::nullopt;
  return static_cast<size_t>(number.value);
}

std::optional<double> ReadDegrees(const std::string& text, double most) {
  const RealPrefix number = ReadReal(text);
  if (number.length == 0 || number.length != text.size()) return std::nullopt;
  if (number.value < -most || number.value > most) return std::nullopt;
  return number.value;
}

std::optional<bool> ReadFlag(const std::string& text) {
  if (text == "true") return true;
  if (text == "false") return false;
  return std::nullopt;
}

Fault NoSuch(const char* what, const std::string& text) {
  return "there is no " + std::string(what) + " " + text;
}

Fault BadValue(const std::string& name, const std::string& value) {
  return name + " can't be set to " + value;
}

/// Splits "NAME=VALUE" in two. \return false without "="
bool SplitSetting(const std::string& text, std::string& name, std::string& value) {
  const size_t equals = text.find('=');
  if (equals == std::string::npos) return false;
  name = text.substr(0, equals);
  value = text.substr(equals + 1);
  return true;
}

template <typename Words>
auto ValueOfWord(const Words& words, const std::string& text) {
  const auto found = std::find_if(words.begin(), words.end(),
                                  [&](const auto& word) { return text == word.first; });
  return found == words.end() ? std::nullopt : std::optional(found->second);
}

/// Carries out the lines of one script.
class ScriptRun {
 public:
  ScriptRun(Map& map, LineMessages& messages) : session_(map, messages) {}

  Fault Run(const Fields& line);

 private:
  struct Word {
    const char* text;
    size_t least;  ///< fields after the word
    size_t most;
    Fault (ScriptRun::*run)(const Fields& fields);
    bool endsInText = false;  ///< the last of the least fields is a text; if missing, it is empty
  };
  static const std::vector<Word>& Words();

  // Panes.
  Fault Select(const Fields& fields) { return Click(fields, false); }
  Fault AddSelect(const Fields& fields) { return Click(fields, true); }
  Fault Click(const Fields& fields, bool shift);
  Fault Tick(const Fields& fields);
  Fault Triangle(const Fields& fields);
  Fault Drop(const Fields& fields);
  Fault Check(const Fields& fields);
  Fault DeleteSelected(const Fields& fields);
  Fault TrailVisibilityLine(const Fields& fields);
  Fault RangeVisibilityLine(const Fields& fields);
  TrailPanelRow* TrailRowAt(Fields::const_iterator first, Fields::const_iterator last);
  RangePanelRow* RangeRowAt(const std::string& text);

  // Editors.
  Fault NewTrail(const Fields& fields);
  Fault OpenTrail(const Fields& fields);
  Fault NewRange(const Fields& fields);
  Fault OpenRange(const Fields& fields);
  Fault GiveUpEditor();
  Fault Field(const Fields& fields);
  Fault Mode(const Fields& fields);
  Fault Cell(const Fields& fields);
  Fault Insert(const Fields& fields);
  Fault Delete(const Fields& fields);
  Fault Move(const Fields& fields);
  Fault ClickOnMap(const Fields& fields);
  Fault Paste(const Fields& fields);
  Fault Ok(const Fields& fields);
  Fault Cancel(const Fields& fields);
  Fault Close(const Fields& fields);
  Fault NeedsTable(size_t row, std::optional<size_t> column);

  // The rest.
  Fault Undo(const Fields& fields);
  Fault Redo(const Fields& fields);
  Fault Answer(const Fields& fields);
  Fault Import(const Fields& fields);
  Fault ImportGis(const Fields& fields);
  Fault Save(const Fields& fields);
  Fault Show(const Fields& fields);

  EditSession session_;
  enum class Pane { None, Trails, Ranges } pane_ = Pane::None;  ///< that was selected in last
};

const std::vector<ScriptRun::Word>& ScriptRun::Words() {
  static const std::vector<Word> allWords = {
      {"select", 1, AnyNumber, &ScriptRun::Select},
      {"add-select", 1, AnyNumber, &ScriptRun::AddSelect},
      {"tick", 2, AnyNumber, &ScriptRun::Tick, true},
      {"triangle", 1, AnyNumber, &ScriptRun::Triangle, true},
      {"drop", 1, 1, &ScriptRun::Drop, true},
      {"check", 0, 0, &ScriptRun::Check},
      {"new-trail", 0, 0, &ScriptRun::NewTrail},
      {"open-trail", 0, 0, &ScriptRun::OpenTrail},
      {"new-range", 0, 0, &ScriptRun::NewRange},
      {"open-range", 0, 0, &ScriptRun::OpenRange},
      {"field", 2, 2, &ScriptRun::Field, true},
      {"mode", 1, 1, &ScriptRun::Mode},
      {"cell", 3, 3, &ScriptRun::Cell, true},
      {"insert", 1, 1, &ScriptRun::Insert},
      {"delete", 1, 1, &ScriptRun::Delete},
      {"move", 2, 2, &ScriptRun::Move},
      {"click", 3, 3, &ScriptRun::ClickOnMap},
      {"paste", 3, AnyNumber, &ScriptRun::Paste, true},
      {"answer", 1, 1, &ScriptRun::Answer},
      {"ok", 0, 0, &ScriptRun::Ok},
      {"cancel", 0, 0, &ScriptRun::Cancel},
      {"close", 0, 0, &ScriptRun::Close},
      {"trail-visibility", 0, AnyNumber, &ScriptRun::TrailVisibilityLine},
      {"range-visibility", 0, AnyNumber, &ScriptRun::RangeVisibilityLine},
      {"delete-selected", 0, 0, &ScriptRun::DeleteSelected},
      {"undo", 0, 0, &ScriptRun::Undo},
      {"redo", 0, 0, &ScriptRun::Redo},
      {"import", 1, AnyNumber, &ScriptRun::Import},
      {"import-gis", 1, AnyNumber, &ScriptRun::ImportGis},
      {"save", 1, 1, &ScriptRun::Save},
      {"show", 1, 1, &ScriptRun::Show},
  };
  return allWords;
}

Fault ScriptRun::Run(const Fields& line) {
  for (const Word& word : Words()) {
    if (line.front() != word.text) continue;
    Fields fields(line.begin() + 1, line.end());
    if (word.endsInText && fields.size() + 1 == word.least) fields.emplace_back();
    if (fields.size() < word.least || fields.size() > word.most) {
      return "wrong number of fields for " + line.front();
    }
    return (this->*word.run)(fields);
  }
  return "unknown word " + line.front();
}

// --- Panes ------------------------------------------------------------------------------------

TrailPanelRow* ScriptRun::TrailRowAt(Fields::const_iterator first, Fields::const_iterator last) {
  std::list<TrailPanelRow>* level = &session_.view.trailViews;
  TrailPanelRow* found = nullptr;
  for (; first != last; ++first) {
    const auto row = std::find_if(level->begin(), level->end(), [&](const TrailPanelRow& each) {
      return SameName(each.text, *first);
    });
    if (row == level->end()) return nullptr;
    found = &*row;
    level = &row->children;
  }
  return found;
}

RangePanelRow* ScriptRun::RangeRowAt(const std::string& text) {
  for (RangePanelRow& row : session_.view.rangeViews) {
    if (row.text && SameName(*row.text, text)) return &row;
  }
  return nullptr;
}

Fault ScriptRun::Click(const Fields& fields, bool shift) {
  const bool isNone = fields.size() == 1;
  if (fields[0] == "trails") {
    TrailPanelRow* row = isNone ? nullptr : TrailRowAt(fields.begin() + 1, fields.end());
    if (row == nullptr && !isNone) return NoSuch("row", fields.back());
    ClickTrailRow(session_.view, row, shift);
    pane_ = Pane::Trails;
    return {};
  }
  if (fields[0] != "ranges") return NoSuch("pane", fields[0]);
  if (fields.size() > 2) return NoSuch("row", fields.back());
  RangePanelRow* row = isNone ? nullptr : RangeRowAt(fields[1]);
  if (row == nullptr && !isNone) return NoSuch("row", fields.back());
  ClickRangeRow(session_.view, row, shift);
  pane_ = Pane::Ranges;
  return {};
}

Fault ScriptRun::Tick(const Fields& fields) {
  if (fields[0] == "trails") {
    TrailPanelRow* row = TrailRowAt(fields.begin() + 1, fields.end());
    if (row == nullptr) return NoSuch("row", fields.back());
    ClickTrailTick(session_.view, *row);
    return {};
  }
  if (fields[0] != "ranges") return NoSuch("pane", fields[0]);
  RangePanelRow* row = fields.size() == 2 ? RangeRowAt(fields[1]) : nullptr;
  if (row == nullptr) return NoSuch("row", fields.back());
  ClickRangeTick(session_.view, *row);
  return {};
}

Fault ScriptRun::Triangle(const Fields& fields) {
  TrailPanelRow* row = TrailRowAt(fields.begin(), fields.end());
  if (row == nullptr) return NoSuch("row", fields.back());
  if (!HasTriangle(*row)) return "the row " + fields.back() + " has no triangle";
  ClickTriangle(session_.view, *row);
  return {};
}

Fault ScriptRun::Drop(const Fields& fields) {
  const RangePanelRow* row = RangeRowAt(fields[0]);
  if (row == nullptr) return NoSuch("row", fields[0]);
  DropSelection(session_.view, *row, session_.history);
  return {};
}

Fault ScriptRun::Check(const Fields&) {
  session_.messages.PrintAsResult();
  const bool any = CheckSelectedTrails(session_.view, session_.messages);
  session_.messages.PrintAsMessages();
  return any ? Fault() : "the command check is disabled";
}

Fault ScriptRun::DeleteSelected(const Fields&) {
  const bool any =
      pane_ == Pane::Ranges
          ? FirstSelectedRow(session_.view.rangeViews) != nullptr
          : pane_ == Pane::Trails && FirstSelectedRow(session_.view.trailViews) != nullptr;
  if (!any) return "the command delete-selected is disabled";
  if (pane_ == Pane::Trails) {
    DeleteSelectedTrails(session_.view, session_.history);
  } else {
    DeleteSelectedRanges(session_.view, session_.history);
  }
  return {};
}

/// Sets a control of the dialog "Trail Visibility".
Fault SetTrailControl(TrailVisibility& dialog, const std::string& name, const std::string& value) {
  if (name == "color") {
    dialog.color = value;
    return {};
  }
  if (name == "visible" || name == "filled") {
    const auto flag = ReadFlag(value);
    if (!flag) return BadValue(name, value);
    (name == "visible" ? dialog.visible : dialog.filled) = *flag;
    return {};
  }
  const auto number = ReadCount(value);
  const int chosen = number && *number < 100 ? static_cast<int>(*number) : -1;
  if (name == "lineStyle") {
    const auto style = StyleOf<LineStyle>(chosen);
    if (!IsLineStyleEnabled(dialog, style)) return BadValue(name, value);
    dialog.lineStyle = style;
  } else if (name == "fillPattern") {
    if (!IsFillPatternEnabled(dialog, chosen)) return BadValue(name, value);
    dialog.fillPattern = chosen;
  } else if (name == "labelMode") {
    const auto mode = StyleOf<LabelMode>(chosen);
    if (mode < LabelMode::None || mode > LabelMode::Auto) return BadValue(name, value);
    dialog.labelMode = mode;
  } else if (name == "markStyle") {
    const auto style = StyleOf<MarkStyle>(chosen);
    if (style < MarkStyle::None || style > MarkStyle::Plus) return BadValue(name, value);
    dialog.markStyle = style;
  } else {
    return NoSuch("control", name);
  }
  return {};
}

/// The three checks of "Show Points"; one that is not shown can't be changed, nor can all three be
/// set if none is.
Fault SetShowSm(RangeVisibility& dialog, const RangeControls& controls, const std::string& value) {
  const auto& shown = controls.showSm;
  if (std::none_of(shown.begin(), shown.end(), [](bool each) { return each; })) {
    return BadValue("showSm", value);
  }
  // A comma at the end begins one more part, which `getline` would drop.
  std::istringstream parts(value + ',');
  std::string part;
  std::array<bool, 3> wanted{};
  size_t count = 0;
  while (std::getline(parts, part, ',')) {
    const auto flag = ReadFlag(part);
    if (!flag || count == wanted.size()) return BadValue("showSm", value);
    wanted[count++] = *flag;
  }
  if (count != wanted.size()) return BadValue("showSm", value);
  for (size_t i = 0; i < wanted.size(); ++i) {
    if (wanted[i] != dialog.showSm[i] && !controls.showSm[i]) return BadValue("showSm", value);
  }
  dialog.showSm = wanted;
  return {};
}

/// Sets a control of the dialog "Range Visibility".
Fault SetRangeControl(RangeVisibility& dialog, const RangeControls& controls,
                      const std::string& name, const std::string& value) {
  if (name == "color") {
    dialog.color = value;
    return {};
  }
  if (name == "visible") {
    const auto flag = ReadFlag(value);
    if (!flag) return BadValue(name, value);
    dialog.visible = *flag;
    return {};
  }
  if (name == "showSm") return SetShowSm(dialog, controls, value);
  const auto number = ReadCount(value);
  if (name == "shading") {
    if (!number || *number >= controls.shading.size() || !controls.shading[*number]) {
      return BadValue(name, value);
    }
    dialog.shading = static_cast<int>(*number);
  } else if (name == "drawMode") {
    if (!number || *number >= controls.drawMode.size() || !controls.drawMode[*number]) {
      return BadValue(name, value);
    }
    dialog.drawMode = StyleOf<RangeDrawMode>(static_cast<int>(*number));
  } else if (name == "clusterMask") {
    if (!number || *number >> ClusterListRows != 0 || !controls.clusters) {
      return BadValue(name, value);
    }
    dialog.clusterMask = static_cast<std::uint32_t>(*number);
  } else {
    return NoSuch("control", name);
  }
  return {};
}

Fault ScriptRun::TrailVisibilityLine(const Fields& fields) {
  std::optional<TrailVisibility> dialog = OpenTrailVisibility(session_.view);
  if (!dialog) return "the command trail-visibility is disabled";
  for (const std::string& field : fields) {
    std::string name;
    std::string value;
    if (!SplitSetting(field, name, value)) return NoSuch("control", field);
    if (Fault fault = SetTrailControl(*dialog, name, value)) return fault;
  }
  ApplyTrailVisibility(session_.view, *dialog, session_.history);
  return {};
}

Fault ScriptRun::RangeVisibilityLine(const Fields& fields) {
  std::optional<RangeVisibility> dialog = OpenRangeVisibility(session_.view);
  if (!dialog) return {};
  const RangeControls controls = ControlsOfRange(session_.view);
  for (const std::string& field : fields) {
    std::string name;
    std::string value;
    if (!SplitSetting(field, name, value)) return NoSuch("control", field);
    if (Fault fault = SetRangeControl(*dialog, controls, name, value)) return fault;
  }
  ApplyRangeVisibility(session_.view, *dialog);
  return {};
}

// --- Editors ----------------------------------------------------------------------------------

/// An editor is given up for another one only if nothing is lost.
Fault ScriptRun::GiveUpEditor() {
  if (session_.HasChanges()) return "the open editor has changes";
  session_.CloseEditor();
  return {};
}

Fault ScriptRun::NewTrail(const Fields&) {
  if (Fault fault = GiveUpEditor()) return fault;
  session_.trailEditor = std::make_unique<TrailEditor>(session_.map, nullptr);
  return {};
}

Fault ScriptRun::OpenTrail(const Fields&) {
  Trail* trail = TrailToEdit(session_.view);
  if (trail == nullptr) return {};
  if (session_.trailEditor && session_.trailEditor->Edited() == trail) return {};
  if (Fault fault = GiveUpEditor()) return fault;
  session_.trailEditor = std::make_unique<TrailEditor>(session_.map, trail);
  return {};
}

Fault ScriptRun::NewRange(const Fields&) {
  if (Fault fault = GiveUpEditor()) return fault;
  session_.rangeEditor = std::make_unique<RangeEditor>(session_.map, nullptr, NoColor);
  return {};
}

Fault ScriptRun::OpenRange(const Fields&) {
  const RangePanelRow* row = RangeToEdit(session_.view);
  if (row == nullptr) return {};
  if (session_.rangeEditor && session_.rangeEditor->Edited() == row->range) return {};
  if (Fault fault = GiveUpEditor()) return fault;
  session_.rangeEditor = std::make_unique<RangeEditor>(session_.map, row->range, row->color);
  return {};
}

// NOLINTNEXTLINE(readability-make-member-function-const): it changes the open editor
Fault ScriptRun::Field(const Fields& fields) {
  const std::string& text = fields[1];
  if (session_.rangeEditor) {
    if (fields[0] == "name") {
      session_.rangeEditor->SetName(text);
    } else if (fields[0] == "color") {
      session_.rangeEditor->SetColorText(text);
    } else {
      return NoSuch("field", fields[0]);
    }
    return {};
  }
  if (!session_.trailEditor) return "no editor is open";
  const auto field = ValueOfWord(TrailFieldWords, fields[0]);
  if (!field) return NoSuch("field", fields[0]);
  if (!session_.trailEditor->Form().IsEnabled(*field)) {
    return "the field " + fields[0] + " is disabled";
  }
  session_.trailEditor->SetField(*field, text);
  return {};
}

// NOLINTNEXTLINE(readability-make-member-function-const): it changes the open editor
Fault ScriptRun::Mode(const Fields& fields) {
  if (!session_.trailEditor) return "no trail editor is open";
  const auto mode = ValueOfWord(EntryModeWords, fields[0]);
  if (!mode) return NoSuch("mode", fields[0]);
  if (!session_.trailEditor->IsModeEnabled(*mode)) {
    return "the button " + fields[0] + " is disabled";
  }
  session_.trailEditor->SetMode(*mode);
  return {};
}

/// \param row  may be one past the last row
Fault ScriptRun::NeedsTable(size_t row, std::optional<size_t> column) {
  const CellModel* table = session_.Table();
  if (table == nullptr) return "no editor is open";
  if (table->IsReadOnly()) return "the table is read-only";
  if (row > table->RowCount()) return NoSuch("row", std::to_string(row));
  if (column && *column >= table->Columns().size()) {
    return NoSuch("column", std::to_string(*column));
  }
  return {};
}

Fault ScriptRun::Cell(const Fields& fields) {
  const auto row = ReadCount(fields[0]);
  const auto column = ReadCount(fields[1]);
  if (!row || !column) return "a row and a column are whole numbers";
  if (Fault fault = NeedsTable(*row, *column)) return fault;
  CommitCell(*session_.Table(), *row, *column, fields[2]);
  return {};
}

Fault ScriptRun::Insert(const Fields& fields) {
  const auto row = ReadCount(fields[0]);
  if (!row) return "a row is a whole number";
  if (Fault fault = NeedsTable(*row, {})) return fault;
  if (!session_.Table()->InsertRow(*row)) Print("beep\n");
  return {};
}

Fault ScriptRun::Delete(const Fields& fields) {
  const auto row = ReadCount(fields[0]);
  if (!row) return "a row is a whole number";
  if (Fault fault = NeedsTable(*row, {})) return fault;
  session_.Table()->DeleteRow(*row);
  return {};
}

Fault ScriptRun::Move(const Fields& fields) {
  const auto from = ReadCount(fields[0]);
  const auto to = ReadCount(fields[1]);
  if (!from || !to) return "a row is a whole number";
  if (Fault fault = NeedsTable(*to, {})) return fault;
  CellModel& table = *session_.Table();
  if (*from >= table.RowCount()) return NoSuch("row", fields[0]);
  // A drag that ends on its own row moves nothing.
  if (*from != *to) table.MoveRow(*from, *to);
  return {};
}

// NOLINTNEXTLINE(readability-make-member-function-const): it changes the open editor
Fault ScriptRun::ClickOnMap(const Fields& fields) {
  constexpr double MostLatitude = 90;
  constexpr double MostLongitude = 540;
  if (!session_.trailEditor) return "no trail editor is open";
  if (!session_.trailEditor->TakesClicks()) return "graphical input is disabled";
  const auto lat = ReadDegrees(fields[0], MostLatitude);
  const auto lon = ReadDegrees(fields[1], MostLongitude);
  const auto altitude = ReadDegrees(fields[2], Unlimited);
  if (!lat || !lon || !altitude) return "a click needs latitude, longitude and altitude";
  session_.trailEditor->AddGpsRow(
      {.lat = *lat, .lon = *lon, .altitude = static_cast<float>(*altitude)});
  return {};
}

Fault ScriptRun::Paste(const Fields& fields) {
  const auto row = ReadCount(fields[0]);
  const auto column = ReadCount(fields[1]);
  if (!row || !column) return "a row and a column are whole numbers";
  if (Fault fault = NeedsTable(*row, *column)) return fault;
  std::vector<Fields> rows(1);
  for (size_t i = 2; i < fields.size(); ++i) {
    if (fields[i] == "\\n") {
      rows.emplace_back();
    } else {
      rows.back().push_back(fields[i]);
    }
  }
  PasteCells(*session_.Table(), *row, *column, rows);
  return {};
}

Fault ScriptRun::Ok(const Fields&) {
  SaveOutcome outcome = SaveOutcome::Stays;
  if (session_.trailEditor) {
    outcome = SaveTrailEditor(*session_.trailEditor, session_.history);
  } else if (session_.rangeEditor) {
    outcome = SaveRangeEditor(*session_.rangeEditor, session_.view, session_.history);
  } else {
    return "no editor is open";
  }
  if (outcome == SaveOutcome::Closes) session_.CloseEditor();
  return {};
}

Fault ScriptRun::Cancel(const Fields&) {
  if (session_.Table() == nullptr) return "no editor is open";
  session_.CloseEditor();
  return {};
}

Fault ScriptRun::Close(const Fields&) {
  SaveOutcome outcome = SaveOutcome::Stays;
  if (session_.trailEditor) {
    outcome = RequestCloseTrailEditor(*session_.trailEditor, session_.history);
  } else if (session_.rangeEditor) {
    outcome = RequestCloseRangeEditor(*session_.rangeEditor, session_.view, session_.history);
  } else {
    return "no editor is open";
  }
  if (outcome == SaveOutcome::Closes) session_.CloseEditor();
  return {};
}

// --- The rest -----------------------------------------------------------------------------------

Fault ScriptRun::Undo(const Fields&) {
  if (!session_.history.Undo(session_.map)) return "the command undo is disabled";
  return {};
}

Fault ScriptRun::Redo(const Fields&) {
  if (!session_.history.Redo(session_.map)) return "the command redo is disabled";
  return {};
}

Fault ScriptRun::Answer(const Fields& fields) {
  const auto answer = ReadCount(fields[0]);
  if (!answer || *answer < 1) return "an answer is a whole number from 1";
  session_.messages.QueueAnswer(static_cast<int>(std::min<size_t>(*answer, 99)));
  return {};
}

Fault ScriptRun::Import(const Fields& fields) {
  SheetFields sheet;
  SheetChooser choose;
  for (size_t i = 1; i < fields.size(); ++i) {
    std::string name;
    std::string value;
    if (!SplitSetting(fields[i], name, value)) return NoSuch("option", fields[i]);
    if (name == SheetNameOption) {
      choose = ChooseNamed(value);
      continue;
    }
    const auto& options = SheetOptions();
    const auto option = std::find_if(options.begin(), options.end(),
                                     [&](const SheetOption& each) { return name == each.option; });
    if (option == options.end()) return NoSuch("option", name);
    sheet[option->field] = value;
  }
  session_.history.Apply({.name = NameOfImport(fields[0]),
                          .map = &session_.map,
                          .change = [&](EditFollowUp& followUp) {
                            const auto outcome = ImportSheet(session_.map, session_.messages,
                                                             fields[0], sheet, choose);
                            if (!outcome) return false;
                            followUp.freshRows = true;
                            followUp.marksNothing = !outcome->changed;
                            return true;
                          }});
  return {};
}

Fault ScriptRun::ImportGis(const Fields& fields) {
  GisTrailFields gis;
  for (size_t i = 1; i < fields.size(); ++i) {
    if (fields[i] == GisKeepAltitudeOption) {
      gis.boxes.keepAltitude = true;
      continue;
    }
    if (fields[i] == GisTimesOption) {
      gis.boxes.times = true;
      continue;
    }
    std::string name;
    std::string value;
    if (!SplitSetting(fields[i], name, value)) return NoSuch("option", fields[i]);
    const auto& options = GisOptions();
    const auto option = std::find_if(options.begin(), options.end(),
                                     [&](const GisOption& each) { return name == each.option; });
    if (option == options.end()) return NoSuch("option", name);
    gis.*option->field = value;
  }
  session_.history.Apply({.name = NameOfImport(fields[0]),
                          .map = &session_.map,
                          .change = [&](EditFollowUp& followUp) {
                            followUp.solved = true;
                            return ImportGisFile(session_.map, session_.messages, fields[0], gis);
                          }});
  return {};
}

Fault ScriptRun::Save(const Fields& fields) {
  WriteMapFile(session_.map, fields[0], true);
  return {};
}

Fault ScriptRun::Show(const Fields& fields) {
  if (fields[0] == "panes") {
    Print(PanesJson(session_) + "\n");
  } else if (fields[0] == "editor") {
    Print(EditorJson(session_) + "\n");
  } else if (fields[0] == "map") {
    // No text of the document holds a line feed, so what is left is one line.
    std::ostringstream document;
    DumpMap(session_.map, session_.messages, document);
    std::string line = document.str();
    std::erase(line, '\n');
    Print(line + "\n");
  } else {
    return NoSuch("thing to show,", fields[0]);
  }
  return {};
}

// --- Reading the script -------------------------------------------------------------------------

std::optional<std::string> ReadScript(const std::string& path) {
  if (path != "-") return ReadWholeFile(path);
  return std::string(std::istreambuf_iterator<char>(std::cin), {});
}

Fields SplitLine(std::string_view line) {
  Fields fields;
  for (size_t start = 0; start <= line.size();) {
    const size_t end = std::min(line.find('\t', start), line.size());
    fields.emplace_back(line.substr(start, end - start));
    start = end + 1;
  }
  return fields;
}

Fault RunLine(ScriptRun& run, std::string_view line) {
  if (!line.empty() && line.back() == '\r') line.remove_suffix(1);
  if (line.empty() || line.front() == '#') return {};
  return run.Run(SplitLine(line));
}

}  // namespace

int EditCommand(Map& map, LineMessages& messages, const EditRequest& request) {
  const std::optional<std::string> script = ReadScript(request.script);
  if (!script) {
    NoteError(messages, "Can't open file %s", {request.script});
    return ExitFailed;
  }
  ScriptRun run(map, messages);
  size_t number = 0;
  for (size_t start = 0; start < script->size();) {
    const size_t end = std::min(script->find('\n', start), script->size());
    ++number;
    if (const Fault fault = RunLine(run, std::string_view(*script).substr(start, end - start))) {
      std::fprintf(stderr, "script %zu: %s\n", number, OneLine(*fault).c_str());
      return ExitUsage;
    }
    start = end + 1;
  }
  return request.output.empty() ? ExitDone : SaveCommand(map, request.output, request.simple);
}

}  // namespace orvane
