#pragma once

#include "view/orientation.h"

#include <QDialog>

#include <vector>

class QLineEdit;
class QRadioButton;

namespace orvane {

struct MapWindow;

/// Asks which way up the map is to stand: eight ways by name, and any other as a number.
class OrientationDialog final : public QDialog {
  Q_OBJECT

 public:
  /// \param view  shows its present way up at first; turned by "OK"; must outlive the dialog
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
