#pragma once

#include "editing/editor_draft.h"
#include "mapfile/recovery_folder.h"
#include "shell/recovery/recovery_dialog.h"

#include <QObject>
#include <QTimer>

#include <map>
#include <string>
#include <vector>

namespace orvane {

class EditorWindow;
class Shell;
struct Map;

/// Keeps what is typed in open editors in the recovery folder, each editor in a file of its own, and
/// opens the editors of earlier runs again. A file is written soon after a change, and when the map
/// is saved under another name, and removed when its editor is closed.
class EditorDrafts final : public QObject {
  Q_OBJECT

 public:
  /// Milliseconds from a change to the writing of its file.
  static constexpr int Delay = 2000;

  /// \param folder  must outlive this
  EditorDrafts(Shell& shell, RecoveryFolder& folder, QObject* parent);

  /// Takes the drafts of earlier runs; call it after `RecoveryFolder::TakeAbandoned`. A damaged one is
  /// set aside, with a message.
  /// \return an offer for each
  std::vector<RecoveryOffer> TakeAbandoned();
  /// Opens the editor of an offer once the program has started.
  /// \param offer  index in what `TakeAbandoned` returned
  /// \param maps   that will get windows; the map of the editor is added if it is not among them
  void OpenSoon(size_t offer, std::vector<Map*>& maps);
  void Discard(size_t offer);

  /// Writes the drafts that have changed.
  void WriteAll();

 private:
  struct Kept {
    std::string path;       ///< empty before it is first written
    bool isNew = true;      ///< changed since it was written
    std::string mapFile{};  ///< of the map, as last written
  };
  struct Abandoned {
    EditorDraft draft;
    std::string path;
  };
  struct Waiting {
    Map* map = nullptr;
    Abandoned editor;
  };

  void NoteEdited(EditorWindow* editor);
  void Watch(EditorWindow& editor);
  void Forget(EditorWindow* editor);
  void OpenWaiting();

  Shell& shell_;
  RecoveryFolder& folder_;
  std::map<EditorWindow*, Kept> kept_;
  std::vector<Abandoned> abandoned_;
  std::vector<Waiting> waiting_;
  QTimer timer_;
};

}  // namespace orvane
