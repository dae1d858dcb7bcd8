#pragma once

#include "shell/editors/range_editor_window.h"
#include "shell/editors/trail_editor_window.h"

#include <QObject>

#include <memory>
#include <vector>

namespace orvane {

/// Opens the editors of a shell. There is one at most for each trail and range: a second one on it
/// brings the first to the front.
class Editors final : public QObject {
  Q_OBJECT

 public:
  /// \param shell  owns this from now on
  explicit Editors(Shell& shell);

  /// \param trail  null for a new one
  TrailEditorWindow& OpenTrail(MapWindowWidget& window, Trail* trail);
  /// \param row  of the range; null for a new one
  RangeEditorWindow& OpenRange(MapWindowWidget& window, const RangePanelRow* row);
  /// Opens an editor that a crash has ended.
  EditorWindow& Restore(MapWindowWidget& window, const EditorDraft& draft);

 Q_SIGNALS:
  /// Something was typed in an editor.
  void draftEdited(orvane::EditorWindow* editor);

 private:
  template <typename Window, typename Wanted>
  Window* Find(Wanted wanted) const;
  template <typename Window>
  Window& ShowNew(Window* window);

  Shell& shell_;
  TrailWidths trailWidths_;
  std::vector<int> rangeWidths_;
};

/// Opens the editor of a row of the trail pane, or says why there is none; "New" is a new trail.
void OpenTrailEditor(Shell& shell, MapWindowWidget& window, const TrailPanelRow& row);
/// The same for a row of the range pane.
void OpenRangeEditor(Shell& shell, MapWindowWidget& window, RangePanelRow& row);

/// Plugs in the commands that open editors. Those of an open editor are in its window.
void PlugEditors(Shell& shell);

}  // namespace orvane
