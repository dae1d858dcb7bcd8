#pragma once

#include "panes/visibility.h"

#include <QDialog>

#include <functional>

class QCheckBox;
class QLineEdit;
class QRadioButton;

namespace orvane {

class RadioBox;

/// The dialog "Trail Visibility": how the selected rows of the trail pane are drawn.
class TrailVisibilityDialog final : public QDialog {
  Q_OBJECT

 public:
  /// Gives the values to the rows.
  /// \return false, after a message, if a value can't be used; the dialog then stays
  using Apply = std::function<bool(const TrailVisibility&)>;

  TrailVisibilityDialog(const TrailVisibility& values, Apply apply, QWidget* parent);

  void accept() override;

 private:
  TrailVisibility Values() const;
  void EnableControls();

  Apply apply_;
  QCheckBox* visible_;
  QLineEdit* color_;
  RadioBox* lines_;
  QCheckBox* filled_;
  RadioBox* patterns_;
  QRadioButton* solidFill_;
  RadioBox* labels_;
  RadioBox* marks_;
};

}  // namespace orvane
