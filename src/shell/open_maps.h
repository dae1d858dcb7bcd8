#pragma once

#include "commands/save_map.h"
#include "editing/edit_history.h"
#include "model/workspace.h"

#include <QObject>
#include <QString>

#include <string>
#include <vector>

namespace orvane {

class BoxMessages;
class MapWindows;
struct Settings;
class Surroundings;

/// The maps of the program: opens them, changes them through the edit history, saves them, and
/// notifies the windows and all listeners.
class OpenMaps final : public QObject {
  Q_OBJECT

 public:
  /// All parameters must outlive this.
  OpenMaps(Workspace& workspace, BoxMessages& boxes, Surroundings& surroundings,
           const Settings& settings, MapWindows& windows);

  /// Opens a map file, or finds the map if it is already open. If the file can't be read, a message
  /// says so, and there is an empty map of that name.
  /// \return null if the user cancelled; no map is left then
  Map* Read(const std::string& path);
  /// Makes a map without a file.
  Map& New();

  /// The only way to change an open map: every window on it follows, and so do the recovery copies.
  EditHistory& History() { return history_; }

  /// What saving a map needs, and what follows it.
  SaveContext Saving();
  /// What file dialogs remember.
  FileSpecifications& Files() { return files_; }

  /// The maps opened or saved last, newest first.
  const std::vector<std::string>& Recent() const { return recent_; }
  /// Reads them from the program's own directory.
  void ReadRecent();
  /// True if such a map can be opened. If its file is gone, offers to take it from the list.
  bool AskForRecent(const std::string& path);

 Q_SIGNALS:
  void mapDirtyChanged(orvane::Map* map);
  /// Undo and Redo have other steps than before.
  void stepsChanged();
  /// The map was changed; sent for every change, not only the first since the last save.
  void mapEdited(const orvane::Map* map);
  void mapSaved(orvane::Map* map, const QString& path);
  /// The map was read again from its file, or this was undone or redone, and the windows show it:
  /// what it held before can go at any time.
  void mapReread(orvane::Map* map);
  /// The user closed a window with "Don't Save".
  void changesDiscarded(orvane::Map* map);

 private:
  Map* ReadUnlessCanceled(const std::string& path, bool& readable);
  void Follow(const EditNews& news);
  void AnnounceDirty(const std::vector<Map*>& maps);
  std::string NameOf(const std::string& path) const;
  void NoteRecent(const std::string& path);
  void WriteRecent() const;

  Workspace& workspace_;
  BoxMessages& boxes_;
  Surroundings& surroundings_;
  const Settings& settings_;
  MapWindows& windows_;
  EditHistory history_;
  FileSpecifications files_;
  std::vector<std::string> recent_;
};

}  // namespace orvane
