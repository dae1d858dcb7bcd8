#pragma once

#include <QHeaderView>
#include <QTimer>

namespace orvane {

/// The captions of a cell table. Where the pointer rests on one for half a second, its hint is wanted.
class HintHeader final : public QHeaderView {
  Q_OBJECT

 public:
  /// \param baseline  of the captions, in pixels from the top
  /// \param height    in pixels
  HintHeader(int baseline, int height, QWidget* parent);

  /// True while a button of the mouse is pressed, as it is while an edge is dragged.
  bool IsPressed() const { return isPressed_; }

 Q_SIGNALS:
  /// The button was released; an edge that it dragged stays where it is.
  void edgeDropped();
  /// \param at  where the pointer rests, in the viewport of the header
  void hintRequested(int column, QPoint at);

 protected:
  void paintSection(QPainter* painter, const QRect& rect, int logicalIndex) const override;
  void paintEvent(QPaintEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  bool viewportEvent(QEvent* event) override;

 private:
  void StopHint();
  void Release();

  int baseline_;
  QPoint hintPoint_;
  QTimer hintTimer_;
  bool isPressed_ = false;
};

}  // namespace orvane
