#include "shell/shell.h"

#include "base/messages.h"
#include "shell/files/local_files.h"

#include <QDir>
#include <QWidget>

#include <string>

namespace orvane {

Shell::Shell(Workspace& workspace, BoxMessages& boxes, Surroundings& surroundings,
             WindowMaker& maker)
    : workspace_(workspace),
      boxes_(boxes),
      surroundings_(surroundings),
      guard_(workspace, keepers_),
      commands_(surroundings, guard_),
      windows_(maker),
      maps_(workspace, boxes, surroundings, settings_, windows_) {
  settings_.dialogDirectory = PathOfLocalFile(QDir::currentPath());
}

Shell::~Shell() = default;

std::function<std::chrono::milliseconds()> Shell::Clock() {
  return [this] { return surroundings_.Now(); };
}

MapWindowWidget* Shell::OpenFile(const std::string& path) {
  Map* map = maps_.Read(path);
  return map == nullptr ? nullptr : &windows_.Open(*map);
}

void Shell::OpenRecentFile(const std::string& path) {
  if (maps_.AskForRecent(path)) OpenFile(path);
}

MapWindowWidget& Shell::NewMap() { return windows_.Open(maps_.New()); }

bool Shell::MapWinClose(ProgramWindow& window) {
  switch (window.Kind()) {
    case WindowKind::Map:
    case WindowKind::TrailEditor:
    case WindowKind::RangeEditor:
    case WindowKind::Elevation:
    case WindowKind::TrailSummary:
    case WindowKind::PointIndex:
    case WindowKind::RangeStats:
    case WindowKind::SurveyQuality:
    case WindowKind::RangeEstimates:
      return window.TryClose();
    case WindowKind::Task:
      break;
  }
  NoteInternalError(workspace_.messages, "Unknown window type %s in MapWinClose",
                    {std::to_string(static_cast<int>(window.Kind()))});
  window.Widget().close();
  return true;
}

bool Shell::ExitFlow() {
  if (exiting_) return false;
  if (keepers_.preferences) keepers_.preferences->Write();
  exiting_ = true;
  bool allClosed = true;
  while (allClosed && !windows_.Bases().empty()) allClosed = MapWinClose(*windows_.Bases().front());
  exiting_ = false;
  if (allClosed) surroundings_.EndProgram();
  return allClosed;
}

}  // namespace orvane
