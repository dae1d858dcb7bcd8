#pragma once

#include "base/file_mark.h"
#include "base/files.h"
#include "commands/recovery_timing.h"
#include "mapfile/recovery_folder.h"
#include "shell/keepers.h"

#include <QObject>
#include <QTimer>

#include <functional>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace orvane {

class EditorDrafts;
class Shell;
struct Map;

/// Keeps recovery copies of changed maps while a shell runs, and offers the copies of earlier runs
/// when it starts. `RecoveryTiming` decides when a copy is written. A copy is deleted when the map is
/// saved, or when the user closes its last window without saving.
///
/// Nothing is written while a file is read, a dialog is open or a mouse button is held, because the
/// map may be in the middle of a change. The user's files are never touched.
class MapRecovery final : public QObject, public CopyKeeper {
  Q_OBJECT

 public:
  /// \param shell   must outlive this
  /// \param system  writes the copies; tests make its calls fail
  MapRecovery(Shell& shell, const std::string& directory, FileSystem system = SystemFiles());
  ~MapRecovery() override;

  std::optional<std::vector<Map*>> OfferCopies() override;
  void WriteAll() override;

  /// Writes each copy that is due.
  void WriteWhatIsDue();
  EditorDrafts& Drafts() { return *drafts_; }

  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  /// The state of a map that was ever changed.
  struct Kept {
    RecoveryTiming timing;
    std::string slot;              ///< empty while there is no copy
    std::optional<FileMark> mark;  ///< of the copy, if this run wrote it
  };

  void NoteEdited(const Map& map);
  void NoteDiscarded(const Map& map);
  void NoteWindows();
  void Settle(const Map& map);
  bool MayWriteNow() const;
  void WriteCopy(Map& map, Kept& kept);
  void WriteText(const Map& map, Kept& kept, const std::string& text);
  void TellOfFailure(const Map& map);
  void Schedule();

  Shell& shell_;
  std::function<RecoveryTiming::Time()> clock_;
  RecoveryFolder folder_;
  EditorDrafts* drafts_;
  std::map<const Map*, Kept> kept_;
  QTimer timer_;
  std::optional<RecoveryTiming::Time> lastInput_;
  bool failureShown_ = false;  ///< a message was shown since the last copy was written
};

}  // namespace orvane
