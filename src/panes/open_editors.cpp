#include "panes/open_editors.h"

#include "base/messages.h"
#include "editing/save_range.h"
#include "model/workspace.h"
#include "panes/range_list.h"
#include "panes/trail_tree.h"

#include <functional>

namespace orvane {
namespace {

SaveOutcome AskToClose(Messages& messages, const std::string& title, const char* question,
                       const std::function<SaveOutcome()>& save) {
  switch (AskUser(messages, title, "OK", "No", "Cancel", question)) {
    case 1:
      return save();
    case 2:
      return SaveOutcome::Closes;
    default:
      return SaveOutcome::Stays;
  }
}

}  // namespace

Trail* TrailToEdit(MapWindow& view) {
  Messages& messages = view.map->workspace->messages;
  const TrailPanelRow* row = FirstSelectedRow(view.trailViews);
  if (row == nullptr) {
    NoteError(messages, "No trail selected");
    return nullptr;
  }
  if (row->trail == nullptr && row->children.size() == 1) row = &row->children.front();
  if (row->trail == nullptr) {
    NoteError(messages, "Please open this set of trails before double clicking");
  }
  return row->trail;
}

RangePanelRow* RangeToEdit(MapWindow& view) {
  Messages& messages = view.map->workspace->messages;
  RangePanelRow* row = FirstSelectedRow(view.rangeViews);
  if (row == nullptr) {
    NoteError(messages, "No range selected");
    return nullptr;
  }
  if (row->range != nullptr) return row;
  NoteError(messages, "You may not modify an intersection directly");
  return nullptr;
}

SaveOutcome SaveRangeEditor(RangeEditor& editor, MapWindow& view, EditHistory& history) {
  return SaveRangeEditor(editor, history, [&](Range& range, Color color) {
    RangePanelRow* row = FindRangeRow(view, range);
    if (row == nullptr) row = &AddRangeRow(view, &range, nullptr);
    row->color = color;
  });
}

SaveOutcome RequestCloseTrailEditor(TrailEditor& editor, EditHistory& history) {
  if (!editor.IsChanged()) return SaveOutcome::Closes;
  return AskToClose(editor.WindowMap().workspace->messages, editor.Title(),
                    "You have made changes to this trail.  Do you want to save it?",
                    [&] { return SaveTrailEditor(editor, history); });
}

SaveOutcome RequestCloseRangeEditor(RangeEditor& editor, MapWindow& view, EditHistory& history) {
  if (!editor.IsChanged()) return SaveOutcome::Closes;
  return AskToClose(editor.WindowMap().workspace->messages, editor.Title(),
                    "You have made changes to this range.  Do you want to save it?",
                    [&] { return SaveRangeEditor(editor, view, history); });
}

}  // namespace orvane
