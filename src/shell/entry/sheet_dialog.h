#pragma once

#include "entry/sheet_fields.h"

#include <QDialog>

#include <array>
#include <cstddef>
#include <functional>
#include <optional>
#include <utility>

class QGridLayout;
class QLayout;
class QLineEdit;

namespace orvane {

/// The dialog "SpreadSheet Data": asks in which columns of a follow sheet to find what. It is modal.
class SheetDialog final : public QDialog {
  Q_OBJECT

 public:
  /// \param map         what is imported into
  /// \param remembered  what the fields begin with; OK keeps the fields here for the next time.
  ///                    Must outlive the dialog
  SheetDialog(Map& map, SheetFields& remembered, QWidget* parent);

  /// Shows what the rows of the sheet become. \return the fields as the user left them; nothing after
  /// Cancel
  using Previewer = std::function<std::optional<SheetFields>(const SheetFields& fields)>;
  /// Sets what "Preview..." does.
  void SetPreviewer(Previewer previewer) { previewer_ = std::move(previewer); }

  QLineEdit& Edit(SheetField field) { return *edits_[field]; }
  /// The settings of the import, without a sheet. Usable only after the dialog was accepted.
  const ImportSpec& Spec() const { return spec_; }

  /// OK: closes the dialog if the import can start; otherwise says why it can't.
  void accept() override;

 private:
  QLayout* MakeSkipRow();
  QGridLayout* MakeColumns();
  QWidget* MakeOptionalBox(const QGridLayout& above);
  QLayout* MakeButtons();
  void AddMeasure(QGridLayout& grid, std::size_t sm, const QString& codeLabel);
  /// Adds a field after its label.
  /// \param column  of the grid, for the label; the field is in the next one
  /// \param name    for screen readers
  void AddField(QGridLayout& grid, int row, int column, SheetField field, const QString& label,
                const QString& name);
  /// \param characters  its width
  QLineEdit& MakeEdit(SheetField field, const QString& name, int characters);
  void FollowChange(SheetField changed);
  void ShowPreview();

  Map& map_;
  SheetFields& remembered_;
  SheetFields fields_;  ///< what is in the fields
  ImportSpec spec_;
  Previewer previewer_;
  std::array<QLineEdit*, SheetFieldCount> edits_{};
};

}  // namespace orvane
