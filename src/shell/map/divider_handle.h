#pragma once

#include "view/pane_layout.h"

#include <QWidget>

namespace orvane {

/// A divider between the panes, for the keyboard: Tab comes to it behind the map, the arrow keys
/// move it by `DividerStep` pixels, with shift by one, and Enter or Escape leads back to the map.
/// While it has the keyboard it is filled with the colour of what is selected, within a focus
/// rectangle. The mouse goes through it to what lies below.
class DividerHandle final : public QWidget {
  Q_OBJECT

 public:
  DividerHandle(PaneDivider divider, const QString& name, QWidget* parent);

 Q_SIGNALS:
  /// \param pixels  to the right, or down, above 0
  void stepRequested(int pixels);
  /// The user is done with it.
  void leaveRequested();

 protected:
  void keyPressEvent(QKeyEvent* event) override;
  void paintEvent(QPaintEvent* event) override;
  void focusInEvent(QFocusEvent* event) override;
  void focusOutEvent(QFocusEvent* event) override;

 private:
  bool movesAcross_;  ///< left and right, or else up and down
};

}  // namespace orvane
