#pragma once

#include "commands/file_dialogs.h"
#include "commands/recovery_timing.h"
#include "editing/map_delta.h"
#include "shell/messages/box_messages.h"
#include "shell/program.h"
#include "shell/random_map.h"
#include "shell/scripted_surroundings.h"
#include "support/temporary_folder.h"
#include "support/working_folder.h"

#include <QObject>
#include <QPointer>

#include <chrono>
#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <vector>

class QPointingDevice;
class QWidget;

namespace orvane {

class MapRecovery;
class MapView;
class SheetDialog;
class TaskWindow;

/// Somebody who knows nothing of the program and does everything to it: keys, mouse, wheel, two
/// fingers, menus, sizes, focus, closing, dropped files, and any answer to any box. All follows
/// from a seed.
class Monkey final : public QObject {
 public:
  explicit Monkey(std::uint64_t seed);
  ~Monkey() override;

  /// Does one thing and all that follows from it, until the program waits again.
  void Act();
  /// Tests what must hold whenever the program waits.
  void Check();
  /// What was done last, oldest first.
  std::string LastEvents() const;

 private:
  class Dialogs;

  // What it does.
  void StartUp();
  void PressKey();
  void UseMouse();
  void TurnWheel();
  void Pinch();
  void PickCommand();
  void PickListEntry();
  void RunByNumber();
  void Resize();
  void MoveFocus();
  void CloseWindow();
  void DropFiles();
  void Edit();
  void LetOthersWrite();
  void LetTimePass();
  std::chrono::milliseconds WatchWork();
  void ChangeWindowState();
  void timerEvent(QTimerEvent* event) override;
  void AnswerBox();
  void AnswerField(QWidget& box);
  void FillInColumns(SheetDialog& dialog);
  void AfterEvent();

  // What it finds.
  std::vector<QWidget*> Windows();
  std::vector<QWidget*> ControlsOf(QWidget& window) const;
  QWidget* AnyWindow();
  MapWindowWidget* AnyMapWindow();
  MapView* AnyMapView();
  QPoint AnyPointOf(const QWidget& widget);
  Qt::KeyboardModifiers AnyModifiers();
  std::string AnyFile();
  std::string AnyNewFile();

  // What it tests.
  void CheckWindows();
  void CheckStartMenu(TaskWindow& window);
  void CheckMenu(MapWindowWidget& window);
  void CheckView(MapWindowWidget& window);
  void CheckFiles();
  /// No map has changed but by an edit of the history, or by being read.
  void CheckChanges();
  std::map<std::string, std::string> ReadAllFiles() const;

  void Note(const std::string& event);
  void AllowWriting(const std::string& path);

  std::uint64_t seed_;
  Dice dice_;
  RandomMap maps_;
  TemporaryFolder folder_;  ///< the user's
  TemporaryFolder own_;     ///< the program's
  TemporaryFolder lists_;   ///< for what imports write into the current folder
  WorkingFolder working_{lists_.Path()};
  ScriptedSurroundings around_;
  BoxMessages boxes_{around_};
  Workspace workspace_;
  std::unique_ptr<FileDialogs> dialogs_;
  Program program_;
  Shell& shell_ = program_.TheShell();
  QPointingDevice* fingers_;
  std::deque<std::string> events_;
  std::map<std::string, std::string> files_;  ///< of the user's folder, as last seen
  std::set<std::string> writable_;            ///< what a save action has been given since then
  std::unique_ptr<MapSnapshot> known_;        ///< the maps when they were looked at last
  size_t knownMaps_ = 0;
  bool mayDiffer_ = true;  ///< maps were edited or read since then
  MapRecovery* recovery_ = nullptr;
  RecoveryTiming::Time time_{};
  std::chrono::milliseconds workTime_{0};
  bool watching_ = false;  ///< in `WatchWork`
  int boxSteps_ = 0;       ///< answers since the last event
  bool isAnswerDue_ = false;
  int windowsSeen_ = 0;
  bool ended_ = false;
};

}  // namespace orvane
