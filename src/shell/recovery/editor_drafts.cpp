#include "shell/recovery/editor_drafts.h"

#include "base/messages.h"
#include "model/workspace.h"
#include "shell/editors/editor_commands.h"
#include "shell/map_window_widget.h"
#include "shell/messages/box_messages.h"
#include "shell/shell.h"

#include <algorithm>
#include <utility>

namespace orvane {
namespace {

/// The map that a draft is about, among those that are open or will be.
Map* MapOf(Shell& shell, const EditorDraft& draft, const std::vector<Map*>& maps) {
  const auto found = std::find_if(maps.begin(), maps.end(), [&](const Map* map) {
    return RecordOf(*map).fileName == draft.mapFile;
  });
  if (found != maps.end()) return *found;
  // A map that was never saved has no path.
  if (draft.mapFile.front() == '/') {
    // The preferences are not read yet.
    bool& european = shell.TheWorkspace().preferences.europeanDates;
    const bool before = std::exchange(european, draft.europeanDates);
    Map* map = shell.Maps().Read(draft.mapFile);
    european = before;
    return map;
  }
  return &shell.Maps().New();
}

std::string RowsText(size_t rows) {
  return rows == 1 ? "An open editor with 1 row."
                   : "An open editor with " + std::to_string(rows) + " rows.";
}

}  // namespace

EditorDrafts::EditorDrafts(Shell& shell, RecoveryFolder& folder, QObject* parent)
    : QObject(parent), shell_(shell), folder_(folder) {
  timer_.setSingleShot(true);
  timer_.setInterval(Delay);
  connect(&timer_, &QTimer::timeout, this, &EditorDrafts::WriteAll);
  connect(shell.findChild<Editors*>(), &Editors::draftEdited, this, &EditorDrafts::NoteEdited);
  connect(&shell.Maps(), &OpenMaps::mapSaved, this, &EditorDrafts::WriteAll);
}

std::vector<RecoveryOffer> EditorDrafts::TakeAbandoned() {
  std::vector<RecoveryOffer> offers;
  for (const RecoveryFolder::Draft& file : folder_.TakeDrafts()) {
    auto draft = ParseDraft(file.text);
    if (!draft) {
      NoteError(shell_.Boxes(),
                "What was typed in an editor can't be recovered: its copy is damaged. The copy is "
                "kept as %s",
                {folder_.SetDraftAside(file.path)});
      continue;
    }
    RecoveryOffer offer;
    offer.copy.record.fileName = draft->mapFile;
    offer.copy.written = file.written;
    offer.differences = {RowsText(draft->Rows())};
    offer.editor = DraftTitle(*draft);
    offers.push_back(std::move(offer));
    abandoned_.push_back({.draft = std::move(*draft), .path = file.path});
  }
  return offers;
}

void EditorDrafts::OpenSoon(size_t offer, std::vector<Map*>& maps) {
  Map* map = MapOf(shell_, abandoned_[offer].draft, maps);
  if (map == nullptr) return;  // the user cancelled; the draft is kept
  if (std::find(maps.begin(), maps.end(), map) == maps.end()) maps.push_back(map);
  waiting_.push_back({.map = map, .editor = abandoned_[offer]});
  QMetaObject::invokeMethod(this, &EditorDrafts::OpenWaiting, Qt::QueuedConnection);
}

void EditorDrafts::Discard(size_t offer) { folder_.RemoveDraft(abandoned_[offer].path); }

void EditorDrafts::OpenWaiting() {
  for (const Waiting& each : std::exchange(waiting_, {})) {
    const auto& windows = shell_.Windows().All();
    const auto found = std::find_if(windows.begin(), windows.end(), [&](MapWindowWidget* window) {
      return &window->TheMap() == each.map;
    });
    MapWindowWidget& window = found == windows.end() ? shell_.Windows().Open(*each.map) : **found;
    EditorWindow& editor = shell_.findChild<Editors*>()->Restore(window, each.editor.draft);
    Watch(editor);
    kept_[&editor] = {
        .path = each.editor.path, .isNew = false, .mapFile = each.editor.draft.mapFile};
  }
}

void EditorDrafts::Watch(EditorWindow& editor) {
  if (kept_.contains(&editor)) return;
  kept_[&editor] = {};
  connect(&editor, &EditorWindow::draftDiscarded, this,
          [this, window = &editor] { Forget(window); });
  // A window that is deleted without being closed keeps its file.
  connect(&editor, &QObject::destroyed, this, [this, window = &editor] { kept_.erase(window); });
}

void EditorDrafts::NoteEdited(EditorWindow* editor) {
  if (!editor->HasDraft()) return;
  Watch(*editor);
  kept_[editor].isNew = true;
  if (!timer_.isActive()) timer_.start();
}

void EditorDrafts::Forget(EditorWindow* editor) {
  const auto found = kept_.find(editor);
  if (found == kept_.end()) return;
  if (!found->second.path.empty()) folder_.RemoveDraft(found->second.path);
  kept_.erase(found);
}

void EditorDrafts::WriteAll() {
  bool failed = false;
  for (auto& [editor, kept] : kept_) {
    // The next start can be in another directory.
    const std::string mapFile = RecordOf(editor->MapSide()->TheMap()).fileName;
    if (!kept.isNew && mapFile == kept.mapFile) continue;
    if (kept.path.empty()) kept.path = folder_.NewDraft();
    EditorDraft draft = editor->Draft();
    draft.mapFile = mapFile;
    const bool written =
        !kept.path.empty() && folder_.WriteDraft(kept.path, DraftText(draft)) == WriteResult::Done;
    kept.isNew = !written;
    kept.mapFile = mapFile;
    failed = failed || !written;
  }
  if (failed) timer_.start();
}

}  // namespace orvane
