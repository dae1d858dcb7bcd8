#include "commands/menu_state.h"

#include "base/utf8.h"
#include "commands/map_facts.h"
#include "editing/cell_table.h"
#include "editing/edit_history.h"
#include "model/workspace.h"
#include "view/map_window.h"

#include <cassert>
#include <initializer_list>

namespace orvane {
namespace {

// Without a map these commands have nothing to work on.
constexpr CommandId DisabledAtStart[] = {
    CommandOpenBasis, CommandPrint, CommandDeviation, CommandViewControl, CommandHideInfo,
    CommandSetBasis, CommandGraphicalInput, CommandFind, CommandImportGis, CommandElevation,
    CommandTrailSummary, CommandImportSpreadsheet, CommandPointIndex, CommandDelete,
    CommandCloseMap, CommandSave, CommandSaveAs, CommandImportSubmap, CommandCheckTrails,
    CommandZoomOut, CommandChangeZoom, CommandRangeStats, CommandSaveSimplyAs, CommandAdd,
    CommandZoomIn,
    // Likewise, of the later commands.
    CommandSavePicture, CommandCopyImage, CommandShowWholeMap, CommandReload, CommandUndo,
    CommandRedo, CommandPrintPreview, CommandRangeEstimates, CommandSurveyQuality, CommandExport,
    CommandImportFixes};

MenuState AllEnabled() {
  MenuState menu;
  for (const CommandInfo& command : AllCommands()) {
    menu.states.push_back({.enabled = true, .checked = false, .text = std::string(command.text)});
  }
  return menu;
}

struct FocusTitles {
  const char* add;
  const char* remove;
  const char* viewControl;
};

void SetTitles(MenuState& menu, const FocusTitles& titles) {
  menu.At(CommandAdd).text = titles.add;
  menu.At(CommandDelete).text = titles.remove;
  menu.At(CommandViewControl).text = titles.viewControl;
}

/// "Undo" with the name of the step.
/// \param name  null if there is none
void OfferStep(MenuState& menu, CommandId id, const std::string* name) {
  constexpr size_t MostBytes = 60;
  std::string text(FindCommand(id)->text);
  if (name != nullptr) {
    const std::string whole = ToUtf8(*name);
    const std::string_view shown = CutText(whole, MostBytes);
    text += ' ';
    for (const char letter : shown) {
      text += letter == '\t' ? ' ' : letter;  // a menu reads it as the start of a key
      if (letter == '&') text += '&';
    }
    if (shown.size() < whole.size()) text += "...";
  }
  menu.At(id).text = text;
  menu.At(id).enabled = name != nullptr;
}

void Enable(MenuState& menu, std::initializer_list<CommandId> ids, bool enabled) {
  for (const CommandId id : ids) menu.At(id).enabled = enabled;
}

void TakePreferences(MenuState& menu, const Preferences& preferences) {
  menu.At(CommandEuropeanDates).checked = preferences.europeanDates;
  menu.At(CommandSmoothLines).checked = preferences.smoothLines;
}

/// The menu of a window that belongs to a map window: what needs the map window itself stays
/// disabled.
MenuState SideMenu(const Map& map) {
  MenuState menu = StartMenu(map.workspace->preferences);
  Enable(menu, {CommandCloseMap, CommandDeviation, CommandFind}, true);
  Enable(menu,
         {CommandSaveAsArcView, CommandOrientation, CommandHideGrids, CommandDegrees,
          CommandMinutes, CommandSeconds, CommandUtm},
         false);
  menu.At(CommandSave).enabled = SaveIsOffered(map);
  menu.At(CommandReload).enabled = HasFile(map);
  return menu;
}

}  // namespace

CommandState& MenuState::At(CommandId id) {
  return const_cast<CommandState&>(static_cast<const MenuState&>(*this).At(id));
}

const CommandState& MenuState::At(CommandId id) const {
  const CommandInfo* command = FindCommand(id);
  assert(command != nullptr);
  return states[static_cast<size_t>(command - AllCommands().data())];
}

MenuState StartMenu(const Preferences& preferences) {
  MenuState menu = AllEnabled();
  for (const CommandId id : DisabledAtStart) menu.At(id).enabled = false;
  for (const CommandId id : {CommandCut, CommandCopy, CommandPaste}) menu.At(id).enabled = true;
  TakePreferences(menu, preferences);
  return menu;
}

MenuState NewMapMenu(const MapWindow& view) {
  MenuState menu = AllEnabled();
  menu.At(CommandSave).enabled = SaveIsOffered(*view.map);
  for (const CommandId id : {CommandUndo, CommandRedo}) menu.At(id).enabled = false;
  RefreshMapMenu(menu, view);
  FollowFocus(menu, FocusPlace::Neither, false);
  return menu;
}

void RefreshMapMenu(MenuState& menu, const MapWindow& view) {
  menu.At(CommandOpenBasis).enabled = view.map->basis != nullptr;
  menu.At(CommandSetBasis).enabled = view.map->basis == nullptr;
  for (const CommandId id :
       {CommandCut, CommandCopy, CommandPaste, CommandDelete, CommandAdd, CommandGraphicalInput}) {
    menu.At(id).enabled = false;
  }
  menu.At(CommandCheckTrails).enabled = true;
  menu.At(CommandDegrees).checked = view.coordinateDisplay == CoordinateDisplay::Degrees;
  menu.At(CommandMinutes).checked = view.coordinateDisplay == CoordinateDisplay::Minutes;
  menu.At(CommandSeconds).checked = view.coordinateDisplay == CoordinateDisplay::Seconds;
  menu.At(CommandUtm).checked = view.coordinateDisplay == CoordinateDisplay::Utm;
  menu.At(CommandReload).enabled = HasFile(*view.map);
  TakePreferences(menu, view.map->workspace->preferences);
  menu.At(CommandHideGrids).checked = (view.flags & MapWindowGridsHidden) != 0;
  // A panel that waits for the first size of the window counts as shown.
  menu.At(CommandHideInfo).checked = (view.flags & (MapWindowInfoShown | MapWindowInfoWaits)) == 0;
}

void FollowFocus(MenuState& menu, FocusPlace place, bool selected) {
  switch (place) {
    case FocusPlace::TrailList:
      for (const CommandId id :
           {CommandAdd, CommandElevation, CommandTrailSummary, CommandPointIndex}) {
        menu.At(id).enabled = true;
      }
      for (const CommandId id : {CommandDelete, CommandViewControl, CommandCheckTrails}) {
        menu.At(id).enabled = selected;
      }
      SetTitles(menu, {"Add Trail", "Delete Trail", "Trail View Control..."});
      break;
    case FocusPlace::RangeList:
      menu.At(CommandAdd).enabled = true;
      menu.At(CommandElevation).enabled = false;
      menu.At(CommandCheckTrails).enabled = false;
      menu.At(CommandDelete).enabled = selected;
      menu.At(CommandViewControl).enabled = selected;
      SetTitles(menu, {"Add Range", "Delete Range", "Range View Control..."});
      break;
    case FocusPlace::MapView:
    case FocusPlace::Neither:
      for (const CommandId id : {CommandAdd, CommandDelete, CommandViewControl}) {
        menu.At(id).enabled = false;
      }
      SetTitles(menu, {"Add Trail/Range", "Delete Trail/Range", "View Control..."});
      break;
  }
}

MenuState ReportMenu(const Map& map, const ReportMenuFacts& facts) {
  MenuState menu = SideMenu(map);
  Enable(menu,
         {CommandPrint, CommandPrintPreview, CommandTrailSummary, CommandPointIndex,
          CommandRangeStats, CommandRangeEstimates, CommandSurveyQuality},
         true);
  Enable(menu, {CommandCut, CommandPaste}, false);
  Enable(menu, {CommandSaveAs, CommandSaveSimplyAs}, facts.isSaved);
  Enable(menu, {CommandCopy, CommandAdd}, facts.hasLines);
  if (facts.hasLines) menu.At(CommandAdd).text = "Select &All";
  Enable(menu, {CommandCopyImage, CommandSavePicture}, facts.hasPicture);
  if (!facts.picture.empty()) {
    menu.At(CommandCopyImage).text = "Copy " + std::string(facts.picture) + " as &Image";
    menu.At(CommandSavePicture).text = "Save Pict&ure of " + std::string(facts.picture) + "...";
  }
  return menu;
}

MenuState ElevationMenu(const Map& map, bool infoShown) {
  MenuState menu = ReportMenu(
      map, {.isSaved = false, .hasLines = false, .picture = "Profile", .hasPicture = true});
  Enable(menu,
         {CommandCopy, CommandZoomIn, CommandZoomOut, CommandHideInfo, CommandShowWholeMap,
          CommandPrintPreview},
         true);
  menu.At(CommandHideInfo).checked = !infoShown;
  menu.At(CommandShowWholeMap).text = "Show &Whole Line";
  return menu;
}

MenuState EditorMenu(const Map& map, const EditorMenuFacts& facts) {
  MenuState menu = SideMenu(map);
  menu.At(CommandPageSetup).enabled = false;
  const bool editing = facts.table == CellTableState::Editing;
  const bool selected = facts.table == CellTableState::RowSelected;
  menu.At(CommandCut).enabled = editing;
  menu.At(CommandCopy).enabled = editing || (selected && facts.canCopyRow);
  menu.At(CommandPaste).enabled = editing;
  menu.At(CommandAdd).enabled = selected && !facts.isReadOnly;
  menu.At(CommandDelete).enabled = selected && !facts.isReadOnly;
  menu.At(CommandGraphicalInput).enabled = facts.takesClicks;
  const bool ofTrail = facts.kind == EditorKind::Trail;
  menu.At(CommandAdd).text = ofTrail ? "Add Measurement" : "Add Search Criterion";
  menu.At(CommandDelete).text = ofTrail ? "Delete Measurement" : "Delete Search Criterion";
  return menu;
}

void FollowSteps(MenuState& menu, const EditHistory& history, const Map& map) {
  OfferStep(menu, CommandUndo, history.UndoName(map));
  OfferStep(menu, CommandRedo, history.RedoName(map));
}

bool SaveIsOffered(const Map& map) {
  bool reached = false;  // the newest map is first
  for (const Map& each : map.workspace->maps) {
    reached = reached || &each == &map;
    if (reached && IsDirty(each)) return true;
  }
  // A basis that was opened for the map is newer than the map.
  for (const Map* each = map.basis; each != nullptr; each = each->basis) {
    if (IsDirty(*each)) return true;
  }
  return false;
}

}  // namespace orvane
