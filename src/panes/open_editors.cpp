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

bool HasTypedText(const CellTable* cells) { return cells != nullptr && cells->HasTypedText(); }

bool Commits(CellTable* cells) { return cells == nullptr || cells->Commit(); }

}  // namespace

Trail* TrailToEdit(Messages& messages, const TrailPanelRow* row) {
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

Trail* TrailToEdit(MapWindow& view) {
  return TrailToEdit(view.map->workspace->messages, FirstSelectedRow(view.trailViews));
}

RangePanelRow* RangeToEdit(Messages& messages, RangePanelRow* row) {
  if (row == nullptr) {
    NoteError(messages, "No range selected");
    return nullptr;
  }
  if (row->range != nullptr) return row;
  NoteError(messages, "You may not modify an intersection directly");
  return nullptr;
}

RangePanelRow* RangeToEdit(MapWindow& view) {
  return RangeToEdit(view.map->workspace->messages, FirstSelectedRow(view.rangeViews));
}

std::vector<std::string> OfferedTrailTypes(const MapWindow& view) {
  std::vector<std::string> types;
  for (const TrailPanelRow& row : view.trailViews) {
    if (!row.fixed && row.trail == nullptr && !ContourKindOf(row)) types.push_back(row.text);
  }
  return types;
}

SaveOutcome SaveRangeEditor(RangeEditor& editor, MapWindow& view, EditHistory& history) {
  return SaveRangeEditor(editor, history, [&](Range& range, Color color) {
    RangePanelRow* row = FindRangeRow(view, range);
    if (row == nullptr) row = &AddRangeRow(view, range);
    row->color = color;
  });
}

SaveOutcome RequestCloseTrailEditor(TrailEditor& editor, EditHistory& history, CellTable* cells) {
  if (!editor.IsChanged() && !HasTypedText(cells)) return SaveOutcome::Closes;
  return AskToClose(editor.WindowMap().workspace->messages, editor.Title(),
                    "You have made changes to this trail.  Do you want to save it?", [&] {
                      return Commits(cells) ? SaveTrailEditor(editor, history) : SaveOutcome::Stays;
                    });
}

SaveOutcome RequestCloseRangeEditor(RangeEditor& editor, MapWindow& view, EditHistory& history,
                                    CellTable* cells) {
  if (!editor.IsChanged() && !HasTypedText(cells)) return SaveOutcome::Closes;
  return AskToClose(
      editor.WindowMap().workspace->messages, editor.Title(),
      "You have made changes to this range.  Do you want to save it?",
      [&] { return Commits(cells) ? SaveRangeEditor(editor, view, history) : SaveOutcome::Stays; });
}

}  // namespace orvane
