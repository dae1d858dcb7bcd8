#pragma once

#include "view/orientation.h"

#include <QDialog>

#include <vector>

class QLineEdit;
class QRadioButton;

namespace orvane {

class Surroundings;
struct MapWindow;

/// Asks which direction is up on the map: one of eight by name, or any other as a number.
class OrientationDialog final : public QDialog {
  Q_OBJECT

 public:
  /// \param view          sets what is chosen at first; "OK" turns it. Must outlive the dialog
  /// \param surroundings  beep at a text that is not a rotation
  OrientationDialog(MapWindow& view, Surroundings& surroundings, QWidget* parent);

  QRadioButton& Button(Orientation orientation);
  QLineEdit& Field() { return *field_; }

  void accept() override;

 private:
  void Pick(Orientation orientation);

  MapWindow& view_;
  Surroundings& surroundings_;
  std::vector<QRadioButton*> buttons_;  ///< in the order of `Orientation`
  QLineEdit* field_;
};

}  // namespace orvane
