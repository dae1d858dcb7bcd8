#include "shell/reload_commands.h"

#include "base/file_names.h"
#include "mapfile/reread_maps.h"
#include "paint/display_text.h"
#include "shell/files/local_files.h"
#include "shell/map/reload_bar.h"
#include "shell/map_window_widget.h"
#include "shell/progress/busy_work.h"
#include "shell/shell.h"

#include <QGuiApplication>
#include <QSet>

namespace orvane {
namespace {

/// Programs write a file in several steps.
constexpr int SettleMilliseconds = 300;

}  // namespace

bool ReloadMap(Shell& shell, Map& map) {
  if (!AskBeforeReloading(map)) return false;
  for (MapWindowWidget* window : shell.Windows().On(MapsTiedTo(map))) {
    if (!window->CloseBeforeReload()) return false;
  }
  const QString name = DisplayText(BaseName(map.fileName));
  const BusyWork busy(shell.TheWorkspace(), shell.Boxes(), QStringLiteral("Reloading %1").arg(name),
                      shell.Clock());
  return shell.History().Reread(map, "Reload from Disk", [&](FormerContents& former) {
    return RereadMap(map, &former) == RereadOutcome::Done;
  });
}

ReloadWatch::ReloadWatch(Shell& shell) : QObject(&shell), shell_(shell) {
  soon_.setSingleShot(true);
  soon_.setInterval(SettleMilliseconds);
  connect(&soon_, &QTimer::timeout, this, &ReloadWatch::Look);
  const auto lookSoon = [this] { soon_.start(); };
  connect(&files_, &QFileSystemWatcher::fileChanged, this, lookSoon);
  connect(&files_, &QFileSystemWatcher::directoryChanged, this, lookSoon);
  connect(&shell.Windows(), &MapWindows::windowsChanged, this, lookSoon);
  connect(&shell.Maps(), &OpenMaps::mapSaved, this, lookSoon);
  connect(&shell.Maps(), &OpenMaps::mapReread, this, &ReloadWatch::Look);
  connect(&shell.Windows(), &MapWindows::reloadAnswered, this, &ReloadWatch::TakeAnswer);
  connect(qApp, &QGuiApplication::applicationStateChanged, this, lookSoon);
}

void ReloadWatch::WatchFiles() {
  QSet<QString> wanted;
  const auto want = [&](const std::string& path) {
    // Only the folder of a file shows that it was replaced.
    const std::string folder(DirectoryName(path));
    wanted << LocalFileName(path) << LocalFileName(folder.empty() ? "." : folder);
  };
  for (MapWindowWidget* window : shell_.Windows().All()) {
    for (const Map* map = &window->TheMap(); map != nullptr; map = map->basis) {
      want(map->fileName);
      for (const auto& [path, mark] : map->includedFiles) want(path);
    }
  }
  const QStringList watched = files_.files() + files_.directories();
  for (const QString& path : watched) {
    if (!wanted.remove(path)) files_.removePath(path);
  }
  if (!wanted.isEmpty()) files_.addPaths(wanted.values());
}

ReloadWatch::News ReloadWatch::NewsFor(MapWindowWidget& window) {
  for (Map* map = &window.TheMap(); map != nullptr; map = map->basis) {
    const std::string file = news_.ChangedFileOf(*map);
    if (!file.empty()) return {.map = map, .file = file};
  }
  return {};
}

void ReloadWatch::TakeAnswer(MapWindowWidget* window, bool reload) {
  Map* changed = NewsFor(*window).map;
  if (changed != nullptr && reload) {
    shell_.Guard().Run([&] { ReloadMap(shell_, *changed); });
  } else if (changed != nullptr) {
    news_.Decline(*changed);
  }
  Look();
}

void ReloadWatch::Look() {
  // Maps are in the middle of a change.
  if (shell_.TheWorkspace().progress != nullptr) {
    soon_.start();
    return;
  }
  WatchFiles();
  for (MapWindowWidget* window : shell_.Windows().All()) {
    const News news = NewsFor(*window);
    window->Offer().Show(news.map == nullptr
                             ? QString()
                             : DisplayText(NewsText(window->TheMap(), *news.map, news.file)));
  }
}

void PlugReload(Shell& shell) {
  new ReloadWatch(shell);  // the shell frees it
  shell.Commands().PlugOnMapSide(
      CommandReload, [&shell](MapWindowWidget& window) { ReloadMap(shell, window.TheMap()); });
}

}  // namespace orvane
