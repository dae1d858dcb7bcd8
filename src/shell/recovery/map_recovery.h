#pragma once

#include "base/file_mark.h"
#include "base/files.h"
#include "commands/recovery_timing.h"
#include "mapfile/recovery_folder.h"

#include <QObject>
#include <QTimer>

#include <functional>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace orvane {

class Shell;
struct Map;

/// Keeps recovery copies of changed maps while a shell runs, and offers the copies of earlier runs
/// when it starts. `RecoveryTiming` decides when a copy is written. A copy is deleted when the map is
/// saved, or when the user closes its last window without saving.
///
/// Nothing is written while a file is read, a dialog is open or a mouse button is held, because the
/// map may be in the middle of a change. The user's files are never touched.
class MapRecovery final : public QObject {
  Q_OBJECT

 public:
  /// \param shell   owns this from now on
  /// \param system  writes the copies; tests make its calls fail
  MapRecovery(Shell& shell, const std::string& directory, FileSystem system = SystemFiles());
  ~MapRecovery() override;

  /// If earlier runs left copies, asks what to do with them.
  /// \return the recovered maps, which have no windows yet; nothing if the user wants to end the
  ///         program, and all copies are kept
  std::optional<std::vector<Map*>> OfferCopies();

  /// Writes each copy that is due.
  void WriteWhatIsDue();
  /// Writes a copy of each map with changes that no copy holds yet, due or not: the program is about
  /// to end, or memory has run out. Skips what can't be written.
  void WriteAll();

  bool eventFilter(QObject* watched, QEvent* event) override;

  /// The clock; tests set their own.
  std::function<RecoveryTiming::Time()> clock;

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
  RecoveryFolder folder_;
  std::map<const Map*, Kept> kept_;
  QTimer timer_;
  std::optional<RecoveryTiming::Time> lastInput_;
  bool failureTold_ = false;  ///< a message was shown since the last copy was written
};

/// Keeps recovery copies for a shell that has a directory of its own.
void PlugRecovery(Shell& shell);

}  // namespace orvane
