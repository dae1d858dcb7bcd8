#pragma once

#include "panes/hint_place.h"

#include <QPointer>
#include <QStringList>
#include <QWidget>

namespace orvane {

/// A small box of text lines over a window: the tip of a row, the hint of a column. There is one at
/// most; showing another, or clicking it, removes it.
class HintBox final : public QWidget {
  Q_OBJECT

 public:
  /// Shows lines of text.
  /// \param parent  the widget around the box
  /// \param from    the widget that `at` counts from, in pixels; below `parent`
  static void Show(QWidget& parent, const QWidget& from, QPoint at, const QStringList& lines,
                   HintPlacement placement = HintPlacement::Under);
  static void Hide();
  /// \return the box that is up, or null
  static HintBox* Shown();

  const QStringList& Lines() const { return lines_; }

 protected:
  void paintEvent(QPaintEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void mouseDoubleClickEvent(QMouseEvent* event) override;

 private:
  HintBox(QWidget& parent, const QStringList& lines);
  void Place(Pixel anchor, HintPlacement placement);

  QStringList lines_;
};

/// A text as lines for `HintBox::Show`: cut at line ends, each line at most 199 characters.
QStringList HintLines(const QString& text);

}  // namespace orvane
