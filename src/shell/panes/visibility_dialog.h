#pragma once

#include <QDialog>

#include <string>

class QCheckBox;
class QDialogButtonBox;
class QFormLayout;
class QLineEdit;

namespace orvane {

/// What the dialogs of trails and of ranges have in common: the check "Visible", a colour, and
/// buttons of which OK gives the values to the rows.
class VisibilityDialog : public QDialog {
  Q_OBJECT

 public:
  void accept() override;

 protected:
  /// \param color  as typed
  VisibilityDialog(bool visible, const std::string& color, QWidget* parent);

  /// Gives the values to the rows.
  /// \return false, after a message, if a value can't be used; the dialog then stays
  virtual bool ApplyValues() = 0;

  bool IsVisibleChecked() const;
  std::string ColorTyped() const;
  /// The first two fields, for the layout of the dialog.
  QFormLayout* MakeFirstFields();
  QDialogButtonBox* MakeButtons();

 private:
  QCheckBox* visible_;
  QLineEdit* color_;
};

}  // namespace orvane
