#include "shell/reports/point_index_window.h"

#include "base/file_names.h"
#include "base/latin1.h"
#include "base/messages.h"
#include "commands/map_facts.h"
#include "model/map.h"
#include "model/map_chain.h"
#include "model/workspace.h"
#include "reports/point_index_search.h"
#include "reports/shown_point_index.h"
#include "shell/bring_to_front.h"
#include "shell/map/map_view.h"
#include "shell/map_window_widget.h"
#include "shell/reports/report_area.h"
#include "shell/shell.h"

#include <QKeyEvent>

#include <utility>

namespace orvane {
namespace {

constexpr QSize FirstSize(800, 560);

}  // namespace

PointIndexWindow::PointIndexWindow(Shell& shell, MapWindowWidget& mapWindow)
    : PointIndexWindow(shell, mapWindow, std::make_unique<ShownPointIndex>()) {}

PointIndexWindow::PointIndexWindow(Shell& shell, MapWindowWidget& mapWindow,
                                   std::unique_ptr<ShownPointIndex> report)
    : LinesWindow(shell, mapWindow, WindowKind::PointIndex, QStringLiteral("pointIndex"),
                  QStringLiteral("Point Index"), std::move(report), {}),
      shown_(static_cast<ShownPointIndex&>(Report())) {
  ShowTitle("Point Index");
  typeTimer_.setSingleShot(true);
  typeTimer_.setInterval(TypingMilliseconds);
  connect(&typeTimer_, &QTimer::timeout, this, [this] { typed_.clear(); });
  Area().takeKey = [this](const QKeyEvent& event) { return TakeKey(event); };
  connect(&Area(), &ReportArea::openRequested, this, &PointIndexWindow::ShowOnMap);
  connect(&mapWindow.View(), &MapView::viewChanged, this, &PointIndexWindow::FollowMap);
  connect(&shell.Maps(), &OpenMaps::mapReread, this, [this](const Map* map) {
    if (MapSide() != nullptr && RestsOn(TheMapWindow().TheMap(), *map)) TakeSnapshot();
  });
  resize(FirstSize);
  TakeSnapshot();
  ShowMenu();
}

void PointIndexWindow::TakeSnapshot() {
  const MapWindow& view = TheMapWindow().Shown();
  shown_.View().background = view.background;
  shown_.Show(BuildPointIndex(*view.map, view.centralLongitude));
  shown_.SetDisplay(view.coordinateDisplay);
  Area().ClearSelection();
  Area().ShowLines();
}

void PointIndexWindow::FollowMap() {
  // The view changes with each step of a pan, the form of angles hardly ever.
  if (shown_.SetDisplay(TheMapWindow().Shown().coordinateDisplay)) Area().ShowLines();
}

std::unique_ptr<PrintedPages> PointIndexWindow::MakePages(const ReportPageFrame& frame) {
  return std::make_unique<PointIndexPages>(frame, shown_.Index(),
                                           TheMapWindow().Shown().coordinateDisplay);
}

std::optional<ReportFile> PointIndexWindow::FileToSave() {
  const Map& map = TheMapWindow().TheMap();
  const std::string_view name = HasFile(map) ? BaseName(map.fileName) : std::string_view();
  return ReportFile{.title = "Save Point summary as...",
                    .name = PointIndexFileName(name),
                    .text = shown_.FileText()};
}

bool PointIndexWindow::TakeKey(const QKeyEvent& event) {
  const Qt::KeyboardModifiers held = event.modifiers() & ~Qt::KeypadModifier;
  const bool isSideways = event.key() == Qt::Key_Left || event.key() == Qt::Key_Right;
  if (isSideways && held == Qt::NoModifier) {
    shown_.StepSideways(event.key() == Qt::Key_Right ? 1 : -1);
    Area().ShowScroll();
    return true;
  }
  const QString text = event.text();
  constexpr char16_t AfterAscii = 128;
  if ((held & ~Qt::ShiftModifier) != 0 || text.size() != 1 || text.front() >= AfterAscii) {
    return false;
  }
  const char character = text.front().toLatin1();
  // Return, Escape and their like are not for the search.
  constexpr char FirstPrinting = 32;
  if (character < FirstPrinting && event.key() != Qt::Key_Backspace) return false;
  Type(character);
  return true;
}

void PointIndexWindow::Type(char character) {
  switch (TypeCharacter(typed_, character)) {
    case TypingOutcome::Ignored:
      return;
    case TypingOutcome::Full:
      TheShell().Beep();
      return;
    case TypingOutcome::Changed:
      break;
  }
  const int entry = EntryFrom(shown_.Index(), typed_);
  if (entry >= 0) BringToView(entry);
  typeTimer_.start();
}

void PointIndexWindow::BringToView(int entry) {
  if (!shown_.BringEntryToView(entry)) {
    TheShell().Beep();
    return;
  }
  Area().ShowScroll();
  Area().SelectOnly(entry);
}

bool PointIndexWindow::Find() {
  const auto name = TheShell().FindDialog().Ask(TheShell().TheWorkspace().messages);
  if (name) FindInPointIndex(*name);
  return true;
}

void PointIndexWindow::FindInPointIndex(const std::string& name) {
  int entry = EntryNamed(shown_.Index(), name);
  if (entry < 0) entry = EntryNamed(shown_.Index(), AsLatin1(name));
  if (entry < 0) {
    NoteWarning(TheShell().TheWorkspace().messages, "Can't find %s", {name});
    return;
  }
  BringToView(entry);
}

void PointIndexWindow::ShowOnMap(int entry) {
  const std::string name = shown_.Index().entries[static_cast<size_t>(entry)].name;
  MapWindowWidget& map = TheMapWindow();
  BringToFront(map);
  map.View().Find(name);
}

}  // namespace orvane
