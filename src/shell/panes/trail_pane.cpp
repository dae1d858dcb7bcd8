#include "shell/panes/trail_pane.h"

#include "paint/display_text.h"
#include "panes/pane_clicks.h"
#include "panes/pane_selection.h"
#include "panes/tips.h"
#include "shell/panes/hint_box.h"
#include "shell/panes/pane_view.h"
#include "shell/panes/trail_tree_model.h"

namespace orvane {

TrailPane::TrailPane(MapWindow& view, QWidget* parent)
    : TrailPane(view, *new TrailTreeModel(view, nullptr), parent) {}

TrailPane::TrailPane(MapWindow& view, TrailTreeModel& model, QWidget* parent)
    : TitledPane(QStringLiteral("Trails"), model, parent), view_(view), model_(model) {
  setObjectName(QStringLiteral("trailPane"));
  PaneView& rows = Rows();
  rows.setObjectName(QStringLiteral("trailList"));
  rows.SetRowsDraggable(true);
  connect(&rows, &PaneView::rowClicked, this,
          [this](const QModelIndex& index, PaneZone zone, bool shift) {
            Click(model_.RowOf(index), zone, shift);
          });
  connect(&rows, &PaneView::openRequested, this,
          [this](const QModelIndex& index) { Toggle(*model_.RowOf(index)); });
  connect(&rows, &PaneView::selectionExtended, this,
          [this](const QModelIndex& anchor, const QModelIndex& current) {
            SelectTrailsBetween(view_, *model_.RowOf(anchor), *model_.RowOf(current));
            Rows().ShowChangedRows();
            Q_EMIT selectionChanged();
          });
  connect(&rows, &PaneView::editRequested, this,
          [this](const QModelIndex& index) { Q_EMIT editRequested(model_.RowOf(index)); });
  connect(&rows, &PaneView::tipRequested, this, [this](const QModelIndex& index, QPoint at) {
    QStringList lines;
    for (const std::string& line : TrailTip(view_, *model_.RowOf(index))) {
      lines << DisplayText(line);
    }
    HintBox::Show(*window(), *Rows().viewport(), at, lines);
  });
  connect(&rows, &PaneView::rowDragged, this, &TrailPane::rowsDragged);
  connect(&rows, &PaneView::dragCanceled, this, &TrailPane::dragCanceled);
}

void TrailPane::Click(TrailPanelRow* row, PaneZone zone, bool shift) {
  if (row != nullptr && zone == PaneZone::Triangle && !row->fixed) {
    if (HasTriangle(*row)) Toggle(*row);
    return;
  }
  if (row != nullptr && zone == PaneZone::Tick) {
    const bool awaited = AwaitsContours(view_, *row);
    WithContours([&](const ContourProgress& progress) { ClickTrailTick(view_, *row, progress); });
    awaited ? Rows().ShowRows() : Rows().ShowChangedRows();
    Q_EMIT visibilityChanged();
  } else {
    ClickTrailRow(view_, row, shift);
    Rows().ShowChangedRows();
  }
  Q_EMIT selectionChanged();
}

void TrailPane::Toggle(TrailPanelRow& row) {
  const bool awaited = AwaitsContours(view_, row);
  WithContours([&](const ContourProgress& progress) { ClickTriangle(view_, row, progress); });
  awaited ? Rows().ShowRows() : Rows().ShowChangedRows();
  Q_EMIT selectionChanged();
}

void TrailPane::WithContours(const std::function<void(const ContourProgress&)>& work) {
  if (contourRunner_) {
    contourRunner_(work);
  } else {
    work({});
  }
}

}  // namespace orvane
