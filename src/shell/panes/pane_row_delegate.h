#pragma once

#include <QStyledItemDelegate>

#include <functional>

class QAbstractItemView;

namespace orvane {

class PaneModel;

/// Pixels left of the triangles of a pane.
constexpr int PaneMargin = 5;

/// Paints a row of a pane: the triangle of a group, the tick of a visible row, the text in the colour
/// of the row. A selected row has its text on that colour.
class PaneRowDelegate final : public QStyledItemDelegate {
  Q_OBJECT

 public:
  /// \param view        becomes the parent
  /// \param dropTarget  the row on which a drag would drop now; an invalid index if none
  PaneRowDelegate(PaneModel& model, QAbstractItemView& view,
                  std::function<QModelIndex()> dropTarget);

  void paint(QPainter* painter, const QStyleOptionViewItem& option,
             const QModelIndex& index) const override;
  QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;

 private:
  PaneModel& model_;
  QAbstractItemView& view_;
  std::function<QModelIndex()> dropTarget_;
};

}  // namespace orvane
