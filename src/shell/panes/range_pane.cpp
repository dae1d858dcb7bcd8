#include "shell/panes/range_pane.h"

#include "paint/display_text.h"
#include "panes/pane_clicks.h"
#include "panes/pane_selection.h"
#include "panes/tips.h"
#include "shell/panes/hint_box.h"
#include "shell/panes/pane_view.h"
#include "shell/panes/range_list_model.h"

namespace orvane {

RangePane::RangePane(MapWindow& view, QWidget* parent)
    : RangePane(view, *new RangeListModel(view, nullptr), parent) {}

RangePane::RangePane(MapWindow& view, RangeListModel& model, QWidget* parent)
    : TitledPane(QStringLiteral("Ranges"), model, parent), view_(view), model_(model) {
  setObjectName(QStringLiteral("rangePane"));
  PaneView& rows = Rows();
  rows.setObjectName(QStringLiteral("rangeList"));
  connect(&rows, &PaneView::rowClicked, this,
          [this](const QModelIndex& index, PaneZone zone, bool shift) {
            RangePanelRow* row = model_.RowOf(index);
            const bool isTick = row != nullptr && zone == PaneZone::Tick;
            isTick ? ClickRangeTick(view_, *row) : ClickRangeRow(view_, row, shift);
            Rows().ShowChangedRows();
            if (isTick) Q_EMIT visibilityChanged();
            Q_EMIT selectionChanged();
          });
  connect(&rows, &PaneView::selectionExtended, this,
          [this](const QModelIndex& anchor, const QModelIndex& current) {
            SelectRangesBetween(view_, *model_.RowOf(anchor), *model_.RowOf(current));
            Rows().ShowChangedRows();
            Q_EMIT selectionChanged();
          });
  connect(&rows, &PaneView::selectAllRequested, this, [this] {
    SelectAllRanges(view_);
    Rows().ShowChangedRows();
    Q_EMIT selectionChanged();
  });
  connect(&rows, &PaneView::editRequested, this,
          [this](const QModelIndex& index) { Q_EMIT editRequested(model_.RowOf(index)); });
  connect(&rows, &PaneView::tipRequested, this, [this](const QModelIndex& index, QPoint at) {
    QStringList lines;
    for (const std::string& line : RangeTip(view_, *model_.RowOf(index))) {
      lines << DisplayText(line);
    }
    HintBox::Show(*window(), *Rows().viewport(), at, lines);
  });
}

RangePanelRow* RangePane::RowAtHeight(QPoint global) {
  if (!isVisible()) return nullptr;
  const QPoint at = Rows().viewport()->mapFromGlobal(global);
  // Beyond the edges the view would find rows that are scrolled out.
  if (at.y() < 0 || at.y() >= Rows().viewport()->height()) return nullptr;
  return model_.RowOf(Rows().indexAt({0, at.y()}));
}

void RangePane::SetDropTarget(const RangePanelRow* row) {
  Rows().SetDropTarget(model_.IndexOfPointer(row));
}

}  // namespace orvane
