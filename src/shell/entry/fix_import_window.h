#pragma once

#include "entry/fix_draft.h"

#include <QDialog>
#include <QTimer>

#include <string>
#include <utility>
#include <vector>

class QCheckBox;
class QComboBox;
class QGridLayout;
class QLabel;
class QLineEdit;
class QPushButton;

namespace orvane {

class PreviewTable;
class ProgramWindow;
class Shell;

/// The window "Import Fixes": what a table of fixes will become, with the fields that decide it. Each
/// change of a field is shown in the rows and counts soon. The map changes only after OK, by the caller.
class FixImportWindow final : public QDialog {
  Q_OBJECT

 public:
  /// Fields are planned this long after the last key.
  static constexpr int Patience = 300;  // milliseconds

  /// \param draft       is planned; must outlive the window
  /// \param remembered  what the fields hold at first; keeps it after OK
  /// \param owner       the window of the map
  FixImportWindow(Shell& shell, FixDraft& draft, FixForm& remembered, ProgramWindow& owner,
                  QWidget* parent);

  void accept() override;

 private:
  QLineEdit* AddField(QGridLayout& grid, int row, int column, const QString& label,
                      std::string FixForm::*text, FixFormField field);
  void AddClock(QGridLayout& grid, int row);
  QCheckBox* AddBox(const QString& label, bool FixForm::*box);
  QGridLayout* MakeFields();
  QLabel* AddLine(const QString& name);
  QLayout* MakeButtons();

  /// Plans with the fields as they are and shows the result. \return the field that can't be read
  FixFormField Show();
  void SaveLeftOutRows();

  Shell& shell_;
  FixDraft& draft_;
  FixForm& remembered_;
  FixForm form_;
  ProgramWindow& owner_;
  QTimer timer_;
  std::vector<std::pair<FixFormField, QLineEdit*>> fields_;
  QComboBox* clock_ = nullptr;
  QLabel* reason_ = nullptr;
  PreviewTable* table_ = nullptr;
  QLabel* warning_ = nullptr;
  QLabel* counts_ = nullptr;
  QPushButton* save_ = nullptr;
  QPushButton* ok_ = nullptr;
};

}  // namespace orvane
