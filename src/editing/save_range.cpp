#include "editing/save_range.h"

#include "base/colors.h"
#include "base/messages.h"
#include "editing/edit_history.h"
#include "model/workspace.h"

#include <iterator>

namespace orvane {
namespace {

/// The keys in the order of the table; a row without a type is left out.
std::forward_list<SearchKey> KeysOf(const std::vector<RangeRow>& rows) {
  std::forward_list<SearchKey> keys;
  auto last = keys.before_begin();
  for (const RangeRow& row : rows) {
    if (!row.type) continue;
    last = keys.insert_after(last, {.type = *row.type,
                                    .focalAnimal = row.focalAnimal,
                                    .timeFrom = row.timeFrom,
                                    .timeTo = row.timeTo,
                                    .dateFrom = row.dateFrom,
                                    .dateTo = row.dateTo});
  }
  return keys;
}

}  // namespace

SaveOutcome SaveRangeEditor(RangeEditor& editor, EditHistory& history,
                            const std::function<void(Range& range, Color color)>& show) {
  editor.FollowReread();  // what was lost may be there again
  Map* holder = MapOfRange(editor.WindowMap(), editor.Edited());
  Map& map = holder == nullptr ? editor.WindowMap() : *holder;
  Messages& messages = map.workspace->messages;
  const auto refuse = [&](const char* refusal) {
    NoteError(messages, refusal);
    return SaveOutcome::Stays;
  };
  const std::string& name = editor.Name();
  const std::string& colorText = editor.ColorText();
  const Color color = ParseColor(colorText);
  if (color == NoColor && !colorText.empty()) return refuse("Sorry, I don't know that color");
  if (name.empty()) return refuse("You must supply a name");
  if (editor.Rows().empty()) return refuse("Put something in the range first");
  if (holder != nullptr && editor.WasChangedElsewhere() &&
      AskUser(messages, "Range changed", "Yes", "Cancel", "",
              "This range was changed elsewhere.  Do you want to replace it?") != 1) {
    return SaveOutcome::Stays;
  }
  if (editor.Edited() != nullptr && holder == nullptr) {
    if (AskUser(messages, "Range deleted", "Yes", "Cancel", "",
                "This range was deleted.  Do you want to make it again?") != 1) {
      return SaveOutcome::Stays;
    }
    editor.MakeAgain();
  }
  const bool isNew = editor.Edited() == nullptr;
  history.Apply({.name = (isNew ? "New Range " : "Edit of Range ") + name,
                 .map = &map,
                 .change = [&](EditFollowUp& followUp) {
                   Range& range = isNew ? map.ranges.emplace_front() : *editor.Edited();
                   if (isNew) range.note = editor.KeptNote();
                   range.name = name;
                   if (editor.IsChanged()) {
                     range.keys = KeysOf(editor.Rows());
                     followUp.ranges.push_back(&range);
                   }
                   show(range, color);
                   return true;
                 }});
  return SaveOutcome::Closes;
}

}  // namespace orvane
