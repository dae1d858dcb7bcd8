#include "shell/reports/elevation_window.h"

#include "base/latin1.h"
#include "base/number_text.h"
#include "model/workspace.h"
#include "pages/report_pages.h"
#include "reports/profile_table.h"
#include "reports/profile_view.h"
#include "shell/map/map_view.h"
#include "shell/map_window_widget.h"
#include "shell/reports/elevation_plot.h"
#include "shell/shell.h"

#include <QScreen>
#include <QScrollBar>
#include <QShortcut>
#include <QSignalBlocker>
#include <QTimer>
#include <QVBoxLayout>

#include <algorithm>
#include <utility>

namespace orvane {
namespace {

constexpr int EighthsOfPage = 7;

/// The name of the line as the name of a file.
std::string FileNameOf(const ElevationView& view) {
  std::string name = view.trail != nullptr && view.trail->name ? *view.trail->name
                     : view.trail != nullptr                   ? view.trail->type
                                                               : "Transect";
  std::replace(name.begin(), name.end(), '/', '-');
  return name;
}

}  // namespace

ElevationWindow::ElevationWindow(Shell& shell, MapWindowWidget& mapWindow, ElevationView view)
    : ReportWindow(shell, mapWindow, WindowKind::Elevation, QStringLiteral("elevationWindow")),
      plot_(new ElevationPlot(std::move(view), mapWindow.Shown().background, this)),
      bar_(new QScrollBar(Qt::Horizontal, this)),
      identity_(IdentityOf(plot_->View())) {
  bar_->setAccessibleName(QStringLiteral("Move along the line"));
  bar_->setFocusPolicy(Qt::NoFocus);
  auto* inside = new QWidget(this);
  auto* layout = new QVBoxLayout(inside);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->setSpacing(0);
  layout->addWidget(plot_, 1);
  layout->addWidget(bar_);
  setCentralWidget(inside);
  plot_->SetDisplay(mapWindow.Shown().coordinateDisplay);
  plot_->setFocus();
  Connect(mapWindow);
  kept_ = shell.TheWorkspace().holders.Add([this](UnusedRecords& records) {
    const ElevationView& shown = plot_->View();
    records.Keep(shown.trail);
    for (const Point* point : shown.points) records.Keep(point);
  });
  ShowTitle(ElevationTitle(plot_->View()).value_or("Elevation"));
  ShowMenu();
  resize(sizeHint().boundedTo(screen()->availableSize()));
}

void ElevationWindow::Connect(MapWindowWidget& mapWindow) {
  connect(plot_, &ElevationPlot::viewChanged, this, &ElevationWindow::ShowBar);
  connect(bar_, &QScrollBar::actionTriggered, this, &ElevationWindow::FollowAction);
  connect(bar_, &QScrollBar::sliderReleased, this, &ElevationWindow::ShowBar);
  connect(new QShortcut(Qt::Key_Escape, this), &QShortcut::activated, this, [this] {
    if (!plot_->EndDrag()) close();
  });
  connect(&mapWindow.View(), &MapView::viewChanged, this,
          [this, &mapWindow] { plot_->SetDisplay(mapWindow.Shown().coordinateDisplay); });
  const OpenMaps& maps = TheShell().Maps();
  connect(&maps, &OpenMaps::mapEdited, this, [this](const Map* map) {
    const Map* each = plot_->View().map;
    while (each != nullptr && each != map) each = each->basis;
    if (each != nullptr) FollowLine();
  });
  connect(&maps, &OpenMaps::mapReread, this, &ElevationWindow::FollowLine);
  connect(&maps, &OpenMaps::mapDirtyChanged, this, &ElevationWindow::ShowMenu);
  connect(&TheShell().Windows(), &MapWindows::preferencesChanged, this, [this] {
    plot_->Redraw();
    ShowMenu();
  });
}

// --- What the map does --------------------------------------------------------------------------

void ElevationWindow::FollowMap() {
  // A selection changes nothing here, and edits are followed by their own signal. But after the map
  // was read again the trail must be found before anything is drawn.
  if (!IsLineThere(plot_->View())) FollowLine();
}

void ElevationWindow::FollowLine() {
  if (!plot_->Follow(identity_)) {
    // Until the map is read, no window takes a close, and there is nothing left to paint.
    setUpdatesEnabled(false);
    QTimer::singleShot(0, this, &QWidget::close);
    return;
  }
  identity_ = IdentityOf(plot_->View());
  ShowTitle(ElevationTitle(plot_->View()).value_or("Elevation"));
}

// --- The scroll bar -----------------------------------------------------------------------------

void ElevationWindow::ShowBar() {
  // A thumb that is held stays under the pointer.
  if (bar_->isSliderDown()) return;
  const ElevationScroll scroll = ElevationScrollBar(plot_->View());
  const QSignalBlocker quiet(bar_);  // to put the thumb somewhere is not to drag it there
  bar_->setRange(scroll.first, std::max(scroll.first, scroll.last - scroll.proportion));
  bar_->setPageStep(std::max(scroll.proportion, 1));
  // During an action the bar takes the slider's position afterwards, otherwise at once.
  bar_->setSliderPosition(scroll.position);
  bar_->setValue(scroll.position);
}

void ElevationWindow::FollowAction(int action) {
  const int position = bar_->sliderPosition();
  plot_->Change([&](ElevationView& view) {
    switch (action) {
      case QAbstractSlider::SliderSingleStepSub:
        return ShiftElevation(view, -1);
      case QAbstractSlider::SliderSingleStepAdd:
        return ShiftElevation(view, 1);
      case QAbstractSlider::SliderPageStepSub:
        return ShiftElevation(view, -EighthsOfPage);
      case QAbstractSlider::SliderPageStepAdd:
        return ShiftElevation(view, EighthsOfPage);
      case QAbstractSlider::SliderToMinimum:
        return ShowLineEnd(view, false);
      case QAbstractSlider::SliderToMaximum:
        return ShowLineEnd(view, true);
      case QAbstractSlider::SliderMove:
        return ScrollElevationTo(view, position);
      default:
        return;
    }
  });
}

// --- Commands -----------------------------------------------------------------------------------

ReportMenuFacts ElevationWindow::MenuFacts() const {
  return {.isSaved = false, .hasLines = false, .picture = "Profile", .hasPicture = true};
}

MenuState ElevationWindow::MakeMenu(const Map& map) const {
  return ElevationMenu(map, (plot_->View().flags & ElevationInfoShown) != 0);
}

bool ElevationWindow::Answer(CommandId id) {
  switch (id) {
    case CommandZoomIn:
    case CommandZoomOut:
      plot_->Change([id](ElevationView& view) { ZoomElevation(view, id == CommandZoomIn); });
      return true;
    case CommandShowWholeMap:
      plot_->Change(ShowWholeLine);
      return true;
    case CommandHideInfo:
      plot_->ToggleInfo();
      return true;
    default:
      return ReportWindow::Answer(id);
  }
}

std::unique_ptr<PrintedPages> ElevationWindow::MakePages(const ReportPageFrame& frame) {
  return std::make_unique<ProfilePages>(frame, CopyOf(plot_->View()), plot_->Display());
}

bool ElevationWindow::CopyLines() {
  CopyPicture(*PictureToSave());
  return true;
}

std::optional<ReportPicture> ElevationWindow::PictureToSave() {
  const ElevationView& view = plot_->FinishedView();
  const QSize size = plot_->DeviceSize();
  const auto draw = [this](Canvas& canvas) { plot_->DrawView(canvas); };
  return ReportPicture{.drawing = {size.width(), size.height(), draw},
                       .name = FileNameOf(view),
                       .numbers = ProfileTable(view, FormatShortest)};
}

bool ElevationWindow::Find() {
  Messages& messages = TheShell().TheWorkspace().messages;
  const auto text = TheShell().FindDialog().Ask(messages);
  if (!text) return true;
  plot_->Change([&](ElevationView& view) {
    const std::string latin1 = AsLatin1(*text);
    const bool isLatin1 = !IsOnLine(view, *text) && IsOnLine(view, latin1);
    ElevationFindPoint(view, isLatin1 ? latin1 : *text, messages);
  });
  return true;
}

}  // namespace orvane
