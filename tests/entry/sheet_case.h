#pragma once

#include "entry/sheet_fields.h"
#include "entry/sheet_import.h"
#include "support/map_from_text.h"
#include "support/scripted_messages.h"

#include <initializer_list>
#include <map>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace orvane {

/// A made-up site with three marks and a camp, and imports into it. The columns of a sheet are
/// species, focal animal, date, time, place, activity, SM1, SM2, SM3 unless a test says otherwise.
struct SheetCase : testing::Test {
  using Texts = std::vector<std::string>;
  static constexpr const char* Site =
      "T\tMain\tTrail\nG\tMain0\tN1 0'\tE10 0'\t100\nG\tMain100\tN1 0'\tE10 0.1'\n"
      "G\tMain200=Camp\tN1 0'\tE10 0.2'\t120\n";
  static constexpr const char* MeasuredSite =
      "Z\tfruit,leaf,rest\nT\tMain\tTrail\nG\tMain0\tN1 0'\tE10 0'\t100\n"
      "G\tMain100\tN1 0'\tE10 0.1'\nG\tMain200=Camp\tN1 0'\tE10 0.2'\t120\n";

  ScriptedMessages messages;
  Workspace workspace{messages};
  SheetLogs logs;
  std::map<std::string, std::string> files;  ///< side files, by name
  bool folderIsClosed = false;               ///< no side file can be written

  Map& Open(std::string_view text) {
    Map& map = MakeMap(workspace, "site.map");
    ReadMapText(map, text);
    FinishMap(map);
    messages.Clear();
    return map;
  }

  static SheetFields Columns() {
    SheetFields fields;
    fields[SheetSpecies] = "A";
    fields[SheetFocal] = "B";
    fields[SheetDate] = "C";
    fields[SheetTime] = "D";
    fields[SheetLocation] = "E";
    fields[SheetActivity] = "F";
    return fields;
  }

  /// The usual columns with one field changed.
  static SheetFields With(SheetField field, const std::string& text) {
    SheetFields fields = Columns();
    fields[field] = text;
    return fields;
  }

  SheetOutcome Import(Map& map, std::string_view sheet, const SheetFields& fields = Columns()) {
    SheetReading reading = ReadSheetFields(fields, map);
    EXPECT_FALSE(reading.refusal) << reading.refusal->message;
    const FollowSheet read{.text = std::string(sheet)};
    reading.spec.sheet = &read;
    reading.spec.fileName = "follows.txt";
    return RunSpreadsheetImport(reading.spec, logs,
                                [&](const std::string& name, std::string_view text) {
                                  if (folderIsClosed) return WriteResult::CannotOpen;
                                  files[name] = text;
                                  return WriteResult::Done;
                                });
  }

  /// A row of the sheet with the species Oru, the animal Ulo and one date.
  static std::string Row(std::string_view time, std::string_view place,
                         std::string_view rest = {}) {
    std::string row = "Oru\tUlo\t2003-5-31\t";
    row.append(time).append("\t").append(place);
    if (!rest.empty()) row.append("\t").append(rest);
    return row + "\n";
  }

  /// Trails that an import made, as "type/focal/date: name@place+minutes ..." in list order.
  static Texts Follows(const Map& map) {
    Texts texts;
    for (const Trail& trail : map.trails) {
      if (trail.name) continue;
      std::string text = trail.type + "/" + trail.focalAnimal.value_or("<none>") + "/" +
                         FormatDate(trail.date) + ":";
      for (const Point* point : trail.points) {
        text += " " + point->name + "@" + point->measurements.front().nearName + "+" +
                std::to_string(point->duration);
      }
      texts.push_back(text);
    }
    return texts;
  }
  /// The trails that a sheet makes of a fresh site.
  Texts FollowsOf(std::string_view sheet, const SheetFields& fields = Columns()) {
    Map& map = Open(Site);
    Import(map, sheet, fields);
    return Follows(map);
  }
  /// The counts of the points of the newest follow, as "1,0,2".
  static Texts Counts(const Map& map) {
    Texts texts;
    for (const Point* point : map.trails.front().points) {
      texts.push_back(std::to_string(point->sm[0]) + "," + std::to_string(point->sm[1]) + "," +
                      std::to_string(point->sm[2]));
    }
    return texts;
  }
  /// All messages, as "warning: text".
  Texts Said() const {
    static constexpr const char* Words[] = {
        "note: ", "warning: ", "error: ", "internal error: ", "fatal: "};
    Texts texts;
    for (const auto& entry : messages.Entries()) {
      texts.push_back(Words[static_cast<int>(entry.severity)] + entry.text);
    }
    return texts;
  }
  /// All questions, as "title: text [button|button]".
  Texts Asked() const {
    Texts texts;
    for (const auto& question : messages.Questions()) {
      std::string text = question.title + ": " + question.text + " [";
      for (const std::string& button : question.buttons) {
        if (!button.empty()) text += button + "|";
      }
      text.back() = ']';
      texts.push_back(text);
    }
    return texts;
  }
};

}  // namespace orvane
