#include "shell/map_window_widget.h"

#include "base/file_names.h"
#include "commands/close_map.h"
#include "paint/display_text.h"
#include "panes/range_drops.h"
#include "panes/trail_tree.h"
#include "shell/command_menu.h"
#include "shell/files/dropped_files.h"
#include "shell/files/local_files.h"
#include "shell/first_size.h"
#include "shell/list_menus.h"
#include "shell/map/map_panes.h"
#include "shell/map/map_view.h"
#include "shell/map/reload_bar.h"
#include "shell/panes/contour_work.h"
#include "shell/panes/pane_menu.h"
#include "shell/panes/range_pane.h"
#include "shell/panes/trail_pane.h"
#include "shell/plain_texts.h"
#include "shell/progress/busy_work.h"
#include "shell/shell.h"
#include "view/fit_to_map.h"

#include <QAction>
#include <QCloseEvent>
#include <QDragEnterEvent>
#include <QDropEvent>
#include <QVBoxLayout>

#include <algorithm>

namespace orvane {
namespace {

bool IsEditor(const ProgramWindow& window) {
  return window.Kind() == WindowKind::TrailEditor || window.Kind() == WindowKind::RangeEditor;
}

}  // namespace

MapWindowWidget::MapWindowWidget(Shell& shell, Map& map)
    : shell_(shell),
      map_(map),
      number_(shell.Windows().FreeNumber(map)),
      commands_(new CommandMenu(*this)),
      offer_(new ReloadBar(this)),
      panes_(new MapPanes(map, {shell.TheSettings().trailWidth, shell.TheSettings().trailHeight},
                          this)),
      follower_(Shown(), shell.History()) {
  setObjectName(QStringLiteral("mapWindow"));
  setAttribute(Qt::WA_DeleteOnClose);
  auto* inside = new QWidget(this);
  auto* layout = new QVBoxLayout(inside);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->setSpacing(0);
  layout->addWidget(offer_);
  layout->addWidget(panes_, 1);
  setCentralWidget(inside);
  setAcceptDrops(true);
  View().TakeSavedView(shell.TheSettings().savedView);
  View().setFocus();
  GiveFirstSize(*this);
  menu_ = NewMapMenu(Shown());
  FollowSteps(menu_, shell.History(), map);
  connect(commands_, &CommandMenu::picked, this,
          [this](int id) { shell_.Commands().Run(id, *this); });
  connect(&shell_.Maps(), &OpenMaps::stepsChanged, this, [this] { RefreshMenu(); });
  connect(panes_, &MapPanes::focusPlaceChanged, this, [this] { RefreshMenu(); });
  connect(panes_, &MapPanes::dividerMoved, this, [this](PaneDivider divider, int size) {
    (divider == PaneDivider::BesideMap ? shell_.TheSettings().trailWidth
                                       : shell_.TheSettings().trailHeight) = size;
  });
  connect(&View(), &MapView::transectDrawn, this,
          [this] { Q_EMIT shell_.Windows().transectDrawn(this); });
  connect(&View(), &MapView::printRequested, this,
          [this] { Q_EMIT shell_.Windows().printDialogRequested(this); });
  connect(offer_, &ReloadBar::reloadRequested, this,
          [this] { Q_EMIT shell_.Windows().reloadAnswered(this, true); });
  connect(offer_, &ReloadBar::declined, this,
          [this] { Q_EMIT shell_.Windows().reloadAnswered(this, false); });
  ConnectPanes();
  PlugListMenus(shell_, *commands_);
  ShowTitle();
  ShowMenu();
}

MapWindowWidget::~MapWindowWidget() {
  // A window may be deleted without being closed, as at the end of a test.
  shell_.Windows().Forget(*this);
}

MapView& MapWindowWidget::View() { return panes_->View(); }

MapWindow& MapWindowWidget::Shown() { return View().Shown(); }

FocusPlace MapWindowWidget::Focus() const { return panes_->Focus(); }

void MapWindowWidget::ShowMenu() {
  commands_->Show(menu_, [this](CommandId id) { return shell_.Commands().IsPlugged(id); });
}

void MapWindowWidget::RefreshMenu() {
  MapWindow& view = Shown();
  const bool selected = Focus() == FocusPlace::RangeList
                            ? FirstSelectedRow(view.rangeViews) != nullptr
                            : FirstSelectedRow(view.trailViews) != nullptr;
  if (Focus() == FocusPlace::MapView) RefreshMapMenu(menu_, view);
  FollowFocus(menu_, Focus(), selected);
  FollowSteps(menu_, shell_.History(), map_);
  menu_.At(CommandSave).enabled = SaveIsOffered(map_);
  menu_.At(CommandFullScreen).checked = isFullScreen();
  ShowMenu();
}

void MapWindowWidget::RefreshMarks() {
  RefreshMapMenu(menu_, Shown());
  RefreshMenu();
}

QString MapWindowWidget::Name() const {
  const QString name = DisplayText(BaseName(map_.fileName));
  return shell_.Windows().CountOn(map_) > 1 ? QStringLiteral("%1:%2").arg(name).arg(number_) : name;
}

void MapWindowWidget::ShowTitle() {
  setWindowTitle(PlainTitle(Name()) + QStringLiteral("[*]"));
  setWindowModified(IsDirty(map_));
  setWindowFilePath(LocalFileName(map_.fileName));
}

void MapWindowWidget::FollowEdit(const EditNews& /*news*/) {
  if (!follower_.ShowsChange()) return;
  ShowRows();
  RefreshMarks();
}

void MapWindowWidget::ShowPreferences() {
  const Preferences& preferences = shell_.TheWorkspace().preferences;
  menu_.At(CommandEuropeanDates).checked = preferences.europeanDates;
  menu_.At(CommandSmoothLines).checked = preferences.smoothLines;
  RefreshMenu();
}

void MapWindowWidget::RequestRepaint() { View().RequestRepaint(); }

void MapWindowWidget::ShowWhole() {
  FitToMap(Shown());
  View().RequestRepaint();
}

void MapWindowWidget::ShowRows() {
  panes_->ShowRows();
  View().RequestRepaint();
  Q_EMIT rowsChanged();
}

void MapWindowWidget::ConnectPanes() {
  for (TitledPane* pane :
       {static_cast<TitledPane*>(&panes_->Trails()), static_cast<TitledPane*>(&panes_->Ranges())}) {
    connect(pane, &TitledPane::visibilityChanged, this, [this] { View().ShowMoved(); });
    connect(pane, &TitledPane::selectionChanged, this, [this] {
      RefreshMenu();
      Q_EMIT rowsChanged();
    });
    connect(pane, &TitledPane::controlRequested, this,
            [this] { shell_.Commands().Run(CommandViewControl, *this); });
    // As the entry of the menu, which is disabled without a selection.
    connect(pane, &TitledPane::deleteRequested, this,
            [this] { commands_->ActionOf(CommandDelete).trigger(); });
  }
  connect(&panes_->Trails(), &TrailPane::editRequested, this, [this](const TrailPanelRow* row) {
    Q_EMIT shell_.Windows().trailEditRequested(this, row);
  });
  connect(&panes_->Ranges(), &RangePane::editRequested, this,
          [this](RangePanelRow* row) { Q_EMIT shell_.Windows().rangeEditRequested(this, row); });
  connect(&panes_->Trails(), &TitledPane::menuRequested, this,
          [this](QPoint global) { OpenTrailMenu(*panes_, *commands_, global); });
  connect(&panes_->Ranges(), &TitledPane::menuRequested, this,
          [this](QPoint global) { OpenRangeMenu(*panes_, *commands_, global); });
  connect(panes_, &MapPanes::trailsDropped, this,
          [this](RangePanelRow* row) { AddSelectionToRange(*row); });
  panes_->Trails().SetContourRunner([this](const auto& work) { RunContourWork(shell_, work); });
}

/// Drops the selected trails on a row of the range pane.
void MapWindowWidget::AddSelectionToRange(RangePanelRow& row) {
  shell_.Guard().Run([&] {
    const BusyWork busy(shell_.TheWorkspace(), shell_.Boxes(),
                        QStringLiteral("Adding trails to a range"), shell_.Clock());
    DropSelection(Shown(), row, shell_.History());
  });
}

void MapWindowWidget::RemoveDependent(ProgramWindow& window) {
  dependents_.erase(std::remove(dependents_.begin(), dependents_.end(), &window),
                    dependents_.end());
}

bool MapWindowWidget::CloseDependents(bool editors) {
  // Each removes itself from the list as it closes.
  const std::vector<ProgramWindow*> windows = dependents_;
  for (ProgramWindow* window : windows) {
    if (IsEditor(*window) == editors && !window->TryClose()) return false;
  }
  return true;
}

bool MapWindowWidget::CloseBeforeReload() {
  const std::vector<ProgramWindow*> windows = dependents_;
  return std::all_of(windows.begin(), windows.end(), [](ProgramWindow* window) {
    return window->FollowsReload() || window->TryClose();
  });
}

bool MapWindowWidget::AskToClose() {
  if (!CloseDependents(true)) return false;
  switch (AskBeforeClosing(map_, shell_.Maps().Saving())) {
    case CloseAnswer::Refused:
      return false;
    case CloseAnswer::Discarded:
      Q_EMIT shell_.Maps().changesDiscarded(&map_);
      break;
    case CloseAnswer::Unchanged:
    case CloseAnswer::Saved:
      break;
  }
  CloseDependents(false);
  return true;
}

bool MapWindowWidget::TryClose() {
  if (!mayClose_ && !AskToClose()) return false;
  mayClose_ = true;
  close();
  return true;
}

void MapWindowWidget::closeEvent(QCloseEvent* event) {
  mayClose_ = mayClose_ || AskToClose();
  event->setAccepted(mayClose_);
  if (mayClose_) shell_.Windows().Forget(*this);
}

void MapWindowWidget::dragEnterEvent(QDragEnterEvent* event) { WelcomeFiles(*event); }

void MapWindowWidget::dropEvent(QDropEvent* event) { OpenDroppedFiles(shell_, *event); }

void MapWindowWidget::changeEvent(QEvent* event) {
  QMainWindow::changeEvent(event);
  // The platform may also turn full screen on or off.
  const bool resized = event->type() == QEvent::WindowStateChange;
  if (resized || (event->type() == QEvent::ActivationChange && isActiveWindow())) RefreshMenu();
}

}  // namespace orvane
