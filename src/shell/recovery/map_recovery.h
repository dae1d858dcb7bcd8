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

/// Keeps recovery copies of changed maps while a shell runs, and offers those of earlier runs when
/// it starts. When a copy is written is told at `RecoveryTiming`; it goes when the map is saved, or
/// when the user closes the last window on it without saving.
///
/// Nothing is written while files are read, while a dialog waits or a mouse button is held: the map
/// may be in the middle of a change then. The user's files are never touched.
class MapRecovery final : public QObject {
  Q_OBJECT

 public:
  /// \param shell   owns this from now on
  /// \param system  what copies are written with; a test lets its calls fail
  MapRecovery(Shell& shell, const std::string& directory, FileSystem system = SystemFiles());
  ~MapRecovery() override;

  /// Asks what is to become of copies that earlier runs have left, if there are any.
  /// \return the maps that were recovered; they have no windows yet
  std::vector<Map*> OfferCopies();

  /// Writes each copy that is due by now.
  void WriteWhatIsDue();
  /// Writes a copy of each map with changes that no copy holds yet, due or not: the program is about
  /// to end, or memory has run out. What can't be written is passed over.
  void WriteAll();

  bool eventFilter(QObject* watched, QEvent* event) override;

  /// The time; a test puts in its own.
  std::function<RecoveryTiming::Time()> clock;

 private:
  /// What is kept for a map, as long as it has ever been changed.
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
  bool failureTold_ = false;  ///< since a copy was last written
};

/// Lets a shell keep recovery copies in its own directory, if it has one.
void PlugRecovery(Shell& shell);

}  // namespace orvane
