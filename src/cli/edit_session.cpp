#include "cli/edit_session.h"

#include "panes/range_list.h"
#include "panes/trail_tree.h"
#include "view/view_transform.h"

namespace orvane {

MapWindow NewView(Map& map) {
  constexpr int Width = 1024;
  constexpr int Height = 768;
  MapWindow view;
  view.map = &map;
  BuildTrailRows(view);
  BuildRangeRows(view);
  SizeView(view, Width, Height);
  return view;
}

EditSession::EditSession(Map& mapToEdit, LineMessages& messagesToUse)
    : map(mapToEdit),
      messages(messagesToUse),
      view(NewView(mapToEdit)),
      history(*mapToEdit.workspace),
      follower(view, history) {}

CellModel* EditSession::Table() const {
  if (trailEditor) return trailEditor.get();
  return rangeEditor.get();
}

bool EditSession::HasChanges() const {
  if (trailEditor) return trailEditor->IsChanged();
  return rangeEditor && rangeEditor->IsChanged();
}

void EditSession::CloseEditor() {
  trailEditor.reset();
  rangeEditor.reset();
}

}  // namespace orvane
