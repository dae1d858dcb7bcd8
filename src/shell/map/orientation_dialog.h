#pragma once

#include "view/orientation.h"

#include <QDialog>

#include <vector>

class QLineEdit;
class QRadioButton;

namespace orvane {

struct MapWindow;

/// Asks which direction is up on the map: one of eight by name, or any other as a number.
class OrientationDialog final : public QDialog {
  Q_OBJECT

 public:
  /// \param view  sets what is chosen at first; "OK" turns it. Must outlive the dialog
  OrientationDialog(MapWindow& view, QWidget* parent);

  QRadioButton& Button(Orientation orientation);
  QLineEdit& Field() { return *field_; }

  void accept() override;

 private:
  void Pick(Orientation orientation);

  MapWindow& view_;
  std::vector<QRadioButton*> buttons_;  ///< in the order of `Orientation`
  QLineEdit* field_;
};

}  // namespace orvane
