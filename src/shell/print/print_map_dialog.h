#pragma once

#include "pages/print_dialog.h"

#include <QDialog>

#include <string>
#include <vector>

class QCheckBox;
class QComboBox;
class QGridLayout;
class QLineEdit;
class QRadioButton;

namespace orvane {

class Messages;

/// The dialog "Print" of a map: what is printed, at which scale, and how it looks. OK sets the view
/// that it was given, or says what is wrong and stays.
class PrintMapDialog final : public QDialog {
  Q_OBJECT

 public:
  /// \param print     of `MakePrintView`; set by OK. All three must outlive the dialog
  /// \param settings  what is remembered from job to job; set by OK
  PrintMapDialog(PrintMapWindow& print, PrintSettings& settings, Messages& messages,
                 QWidget* parent);

  /// What the fields hold now.
  const PrintDialog& Values() const { return values_; }

  void accept() override;

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  /// A field, the text of the record that it shows, and the choice that it belongs to.
  struct Field {
    QLineEdit* edit;
    std::string PrintDialog::*text;
    PrintMode mode;  ///< `FillPage` for a field of all choices
  };

  QLineEdit* AddField(const char* name, std::string PrintDialog::*text, PrintMode mode,
                      const char* widest);
  QWidget* MakeAreaFields();
  QWidget* MakePointFields();
  QWidget* MakeCommonFields();
  void ConnectField(const Field& field);
  void Choose(PrintMode mode);
  void ToggleLastSelection(bool checked);
  void ShowValues();
  /// Puts the focus on a field that is wrong.
  void GoTo(std::string PrintDialog::*text);

  PrintMapWindow& print_;
  PrintSettings& settings_;
  Messages& messages_;
  PrintDialog values_;
  std::vector<Field> fields_;
  QRadioButton* fillPage_;
  QRadioButton* area_;
  QRadioButton* point_;
  QCheckBox* lastSelection_;
  QComboBox* gridColor_ = nullptr;
};

}  // namespace orvane
