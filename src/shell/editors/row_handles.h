#pragma once

#include <QHeaderView>

namespace orvane {

/// The strip left of a cell table by which rows are selected and dragged. It only passes on what the
/// mouse does there.
class RowHandles final : public QHeaderView {
  Q_OBJECT

 public:
  /// \param rowHeight  in pixels
  RowHandles(int rowHeight, QWidget* parent);

 Q_SIGNALS:
  /// \param y  in the body of the table
  void rowClicked(int y);
  void rowDragged(int y, bool isDown);
  void rowDropped(int y);

 protected:
  void paintSection(QPainter* painter, const QRect& rect, int logicalIndex) const override;
  void paintEvent(QPaintEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void mouseDoubleClickEvent(QMouseEvent* event) override;
};

}  // namespace orvane
