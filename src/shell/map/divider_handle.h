#pragma once

#include "panes/pane_layout.h"

#include <QWidget>

namespace orvane {

/// A divider between the panes, for the keyboard: Tab reaches it after the map, the arrow keys move
/// it by `DividerStep` pixels, with shift by one, and Enter or Escape returns to the map. While it
/// has the focus it has the colour of a selection and a focus rectangle. Mouse events go through to
/// the panes.
class DividerHandle final : public QWidget {
  Q_OBJECT

 public:
  DividerHandle(PaneDivider divider, const QString& name, QWidget* parent);

 Q_SIGNALS:
  /// \param pixels  positive to the right, or down
  void stepRequested(int pixels);
  /// The user wants to return to the map.
  void leaveRequested();

 protected:
  void keyPressEvent(QKeyEvent* event) override;
  void paintEvent(QPaintEvent* event) override;
  void focusInEvent(QFocusEvent* event) override;
  void focusOutEvent(QFocusEvent* event) override;

 private:
  bool movesAcross_;  ///< left and right if true, else up and down
};

}  // namespace orvane
