#pragma once

#include "base/progress.h"

#include <QDialog>

#include <cstddef>

class QLabel;
class QProgressBar;
class QPushButton;

namespace orvane {

/// Shows the progress of long work and offers to cancel it. It stays until its owner closes it:
/// Escape and the close button of the frame only press its button.
class ProgressBox final : public QDialog {
  Q_OBJECT

 public:
  /// \param occasion  the work, as the title: "Opening site.map"
  ProgressBox(const QString& occasion, QWidget* parent);

  /// \param done, of   as for `Progress::Reach`
  /// \param mayCancel  false while the work must not be interrupted
  void ShowStage(WorkStage stage, size_t done, size_t of, bool mayCancel);
  /// Shows that the work is being cancelled, and nothing else from now on.
  void ShowStopping();

  void reject() override;

 Q_SIGNALS:
  void cancelRequested();

 private:
  QLabel* stage_;
  QProgressBar* bar_;
  QPushButton* cancel_;
  bool stopping_ = false;
};

}  // namespace orvane
