// What must hold whenever the program waits for its user.

#include "shell/command_menu.h"
#include "shell/map/map_view.h"
#include "shell/map_window_widget.h"
#include "shell/monkey.h"
#include "shell/task_window.h"

#include <QAction>
#include <QApplication>
#include <QDialog>

#include <algorithm>
#include <array>
#include <cmath>
#include <filesystem>
#include <gtest/gtest.h>
#include <iterator>
#include <memory>

namespace orvane {
namespace {

/// True if Save has something to do for a window of the map: it, a map made before it, or one that
/// is based on has changed.
bool MaySave(const Workspace& workspace, const Map& map) {
  const auto own = std::find_if(workspace.maps.begin(), workspace.maps.end(),
                                [&](const Map& each) { return &each == &map; });
  if (std::any_of(own, workspace.maps.end(), IsDirty)) return true;
  const Map* below = map.basis;
  while (below != nullptr && !IsDirty(*below)) below = below->basis;
  return below != nullptr;
}

/// The state of commands that is always the same in a map window.
enum class Offer { Always, Never, Elsewhere };

Offer OfferOf(CommandId id) {
  switch (id) {
    case CommandCut:
    case CommandCopy:
    case CommandPaste:
    case CommandGraphicalInput:
      return Offer::Never;
    case CommandSave:
    case CommandOpenBasis:
    case CommandSetBasis:
    case CommandAdd:
    case CommandDelete:
    case CommandViewControl:
    case CommandCheckTrails:
    case CommandElevation:
    case CommandReload:
    case CommandUndo:
    case CommandRedo:
      return Offer::Elsewhere;
    default:
      return Offer::Always;
  }
}

/// True for what the window without a map does not offer.
bool NeedsMap(CommandId id) {
  static constexpr std::array Ids{
      CommandOpenBasis,      CommandPrint,         CommandDeviation,      CommandViewControl,
      CommandHideInfo,       CommandSetBasis,      CommandGraphicalInput, CommandFind,
      CommandImportGis,      CommandElevation,     CommandTrailSummary,   CommandImportSpreadsheet,
      CommandPointIndex,     CommandDelete,        CommandCloseMap,       CommandSave,
      CommandSaveAs,         CommandAdd,           CommandImportSubmap,   CommandCheckTrails,
      CommandZoomOut,        CommandChangeZoom,    CommandRangeStats,     CommandSaveSimplyAs,
      CommandZoomIn,         CommandCopyImage,     CommandSavePicture,    CommandShowWholeMap,
      CommandReload,         CommandUndo,          CommandRedo,           CommandPrintPreview,
      CommandRangeEstimates, CommandSurveyQuality, CommandExport,         CommandImportFixes};
  return std::find(Ids.begin(), Ids.end(), id) != Ids.end();
}

bool IsFinite(const LatLon& place) { return std::isfinite(place.lat) && std::isfinite(place.lon); }

}  // namespace

void Monkey::Check() {
  const testing::ScopedTrace trace(__FILE__, __LINE__, LastEvents());
  CheckWindows();
  for (MapWindowWidget* window : shell_.Windows().All()) {
    CheckMenu(*window);
    CheckView(*window);
  }
  CheckFiles();
  CheckChanges();
}

void Monkey::CheckWindows() {
  const std::vector<MapWindowWidget*>& open = shell_.Windows().All();
  size_t mapWindows = 0;
  size_t taskWindows = 0;
  for (QWidget* widget : Windows()) {
    if (auto* window = qobject_cast<MapWindowWidget*>(widget)) {
      ++mapWindows;
      EXPECT_EQ(std::count(open.begin(), open.end(), window), 1);
    }
    if (auto* window = qobject_cast<TaskWindow*>(widget)) {
      ++taskWindows;
      CheckStartMenu(*window);
    }
    if (auto* dialog = qobject_cast<QDialog*>(widget)) {
      EXPECT_FALSE(dialog->isModal());
    }
  }
  EXPECT_EQ(mapWindows, open.size());
  EXPECT_EQ(taskWindows, open.empty() ? 1U : 0U);
  for (MapWindowWidget* window : open) {
    const Map& map = window->TheMap();
    EXPECT_EQ(window->Shown().map, &map);
    EXPECT_EQ(std::count_if(workspace_.maps.begin(), workspace_.maps.end(),
                            [&](const Map& each) { return &each == &map; }),
              1);
    EXPECT_EQ(window->isWindowModified(), IsDirty(map));
    for (ProgramWindow* dependent : window->Dependents()) {
      EXPECT_EQ(dependent->MapSide(), window);
      EXPECT_NE(dependent->Kind(), WindowKind::Map);
    }
  }
}

void Monkey::CheckStartMenu(TaskWindow& window) {
  for (const CommandInfo& command : AllCommands()) {
    if (IsSubmenu(command.id)) continue;
    const QAction& action = window.Commands().ActionOf(command.id);
    EXPECT_EQ(action.isEnabled(), !NeedsMap(command.id) && shell_.Commands().IsPlugged(command.id))
        << command.text;
    const bool checked =
        (command.id == CommandEuropeanDates && workspace_.preferences.europeanDates) ||
        (command.id == CommandSmoothLines && workspace_.preferences.smoothLines) ||
        (command.id == CommandFullScreen && window.isFullScreen());
    EXPECT_EQ(action.isChecked(), checked) << command.text;
  }
}

void Monkey::CheckMenu(MapWindowWidget& window) {
  const Map& map = window.TheMap();
  const MapWindow& view = window.Shown();
  const FocusPlace place = window.Focus();
  const auto action = [&](CommandId id) -> QAction& { return window.Commands().ActionOf(id); };
  const auto expect = [&](CommandId id, bool enabled) {
    EXPECT_EQ(action(id).isEnabled(), enabled && shell_.Commands().IsPlugged(id))
        << FindCommand(id)->text << " of " << map.fileName;
  };
  for (const CommandInfo& command : AllCommands()) {
    if (IsSubmenu(command.id) || OfferOf(command.id) == Offer::Elsewhere) continue;
    expect(command.id, OfferOf(command.id) == Offer::Always);
  }
  expect(CommandSave, MaySave(workspace_, map));
  expect(CommandOpenBasis, map.basis != nullptr);
  expect(CommandSetBasis, map.basis == nullptr);
  expect(CommandReload, !IsUntitled(map) || map.fileMark.has_value());
  expect(CommandUndo, shell_.History().UndoName(map) != nullptr);
  expect(CommandRedo, shell_.History().RedoName(map) != nullptr);
  const bool overList = place == FocusPlace::TrailList || place == FocusPlace::RangeList;
  expect(CommandAdd, overList);
  if (!overList) {
    expect(CommandDelete, false);
    expect(CommandViewControl, false);
  }
  if (place == FocusPlace::RangeList) {
    expect(CommandCheckTrails, false);
    expect(CommandElevation, false);
  }
  if (place == FocusPlace::MapView) expect(CommandCheckTrails, true);
  if (place == FocusPlace::TrailList) expect(CommandElevation, true);
  const char* what = place == FocusPlace::TrailList   ? "Delete Trail"
                     : place == FocusPlace::RangeList ? "Delete Range"
                                                      : "Delete Trail/Range";
  EXPECT_EQ(action(CommandDelete).text().remove(QLatin1Char('&')).toStdString(), what);
  const auto checked = [&](CommandId id, bool is) {
    EXPECT_EQ(action(id).isChecked(), is) << FindCommand(id)->text << " of " << map.fileName;
  };
  checked(CommandDegrees, view.coordinateDisplay == CoordinateDisplay::Degrees);
  checked(CommandMinutes, view.coordinateDisplay == CoordinateDisplay::Minutes);
  checked(CommandSeconds, view.coordinateDisplay == CoordinateDisplay::Seconds);
  checked(CommandUtm, view.coordinateDisplay == CoordinateDisplay::Utm);
  checked(CommandEuropeanDates, workspace_.preferences.europeanDates);
  checked(CommandSmoothLines, workspace_.preferences.smoothLines);
  checked(CommandHideGrids, (view.flags & MapWindowGridsHidden) != 0);
  checked(CommandHideInfo, (view.flags & (MapWindowInfoShown | MapWindowInfoWaits)) == 0);
  checked(CommandFullScreen, window.isFullScreen());
}

void Monkey::CheckView(MapWindowWidget& window) {
  const MapWindow& view = window.Shown();
  for (const double number : {view.top, view.bottom, view.left, view.right}) {
    EXPECT_TRUE(std::isfinite(number))
        << number << " in the view of " << view.map->fileName << " at scale " << view.scale
        << " about " << view.centralLongitude;
  }
  EXPECT_TRUE(std::isfinite(view.rotation));
  EXPECT_GE(static_cast<double>(view.scale), SmallestScale * 0.999);
  EXPECT_LE(static_cast<double>(view.scale), LargestScale * 1.001);
  EXPECT_GE(view.centralLongitude, -180);
  EXPECT_LT(view.centralLongitude, 180);
  EXPECT_EQ(view.target, nullptr);
  EXPECT_EQ(view.longitudeWrap, 0);
  if ((view.flags & MapWindowPlaced) == 0) return;  // it has never had a size
  EXPECT_GE(view.clientWidth, 1);
  EXPECT_GE(view.clientHeight, 1);
  EXPECT_TRUE(IsFinite(ScreenToMap(view, {view.centerColumn, view.centerRow})));
  for (const TrailPanelRow& row : view.trailViews) {
    if (row.trail == nullptr) continue;
    bool known = false;
    for (const Map* map = view.map; map != nullptr && !known; map = map->basis) {
      known = std::any_of(map->trails.begin(), map->trails.end(),
                          [&](const Trail& trail) { return &trail == row.trail; });
    }
    EXPECT_TRUE(known);
  }
}

std::map<std::string, std::string> Monkey::ReadAllFiles() const {
  std::map<std::string, std::string> files;
  for (const auto& entry : std::filesystem::recursive_directory_iterator(folder_.Path())) {
    if (!entry.is_regular_file()) continue;
    const std::string name = entry.path().lexically_relative(folder_.Path()).string();
    files[name] = folder_.Read(name);
  }
  return files;
}

void Monkey::CheckChanges() {
  const auto maps =
      static_cast<size_t>(std::distance(workspace_.maps.begin(), workspace_.maps.end()));
  // A map that is read can add readings to points of its basis.
  if (!mayDiffer_ && maps == knownMaps_) {
    const MapChange change = known_->TakeDelta().Change();
    EXPECT_FALSE(change.trails || change.points || change.positions || change.ranges ||
                 change.style || change.settings)
        << "without an edit a map has other " << (change.trails ? "trails " : "")
        << (change.points ? "points " : "") << (change.positions ? "positions " : "")
        << (change.ranges ? "ranges " : "") << (change.style ? "styles " : "")
        << (change.settings ? "settings" : "") << '\n'
        << LastEvents();
  }
  known_ = std::make_unique<MapSnapshot>(workspace_);
  knownMaps_ = maps;
  mayDiffer_ = false;
}

void Monkey::CheckFiles() {
  // Shapefiles are written beside the one that was named, with their own names.
  const bool shapes =
      writable_.contains(std::filesystem::canonical(folder_.Path("")).string() + "/points.shp");
  const auto isShape = [](const std::string& name) {
    const std::string ending = std::filesystem::path(name).extension().string();
    return ending == ".shp" || ending == ".shx" || ending == ".dbf";
  };
  std::map<std::string, std::string> now = ReadAllFiles();
  for (const auto& [name, text] : files_) {
    EXPECT_EQ(now.count(name), 1U) << name << " is gone";
  }
  const std::string folder = std::filesystem::canonical(folder_.Path("")).string();
  for (const auto& [name, text] : now) {
    const auto before = files_.find(name);
    if (before != files_.end() && before->second == text) continue;
    EXPECT_TRUE(writable_.contains(folder + "/" + name) || (shapes && isShape(name)))
        << name << " was written without a save";
  }
  files_ = std::move(now);
  writable_.clear();
}

}  // namespace orvane
