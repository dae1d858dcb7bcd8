#pragma once

#include "output/export_fields.h"

#include <QDialog>

#include <array>

class QCheckBox;
class QComboBox;
class QGroupBox;
class QLabel;
class QLineEdit;
class QRadioButton;

namespace orvane {

/// The dialog "Export": the format, the layers and the coordinate system of an export. It is modal.
class ExportDialog final : public QDialog {
  Q_OBJECT

 public:
  /// \param fields  what it begins with; "Export..." keeps what was chosen there. All must outlive the
  ///                dialog
  ExportDialog(Map& map, ExportFields& fields, const LoadedModule& loaded, QWidget* parent);

  /// What to export, without a file. Usable only after the dialog was accepted.
  const LayerRequest& Request() const { return request_; }

  /// Closes the dialog if the export can start; otherwise says why it can't.
  void accept() override;

 private:
  QLayout* MakeFormatRow();
  QGroupBox* MakeLayers();
  QGroupBox* MakeSystems();
  QLayout* MakeButtons();
  void TickAll(bool ticked);
  ExportFormat Format() const;
  ExportFields Fields() const;
  void FollowFormat();
  void GoTo(ExportField field);

  Map& map_;
  ExportFields& remembered_;
  const LoadedModule& loaded_;
  LayerRequest request_;
  std::array<bool, LayerCount> offered_{};
  QComboBox* format_;
  std::array<QCheckBox*, LayerCount> layers_{};
  QRadioButton* wgs84_ = nullptr;
  QRadioButton* utm_ = nullptr;
  QRadioButton* epsg_ = nullptr;
  QLineEdit* number_ = nullptr;
  // Making these fills in what is above.
  QGroupBox* layerBox_;
  QGroupBox* systemBox_;
};

}  // namespace orvane
