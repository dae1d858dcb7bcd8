#pragma once

#include "base/progress.h"

#include <QDialog>

#include <cstddef>

class QLabel;
class QProgressBar;
class QPushButton;

namespace orvane {

/// Tells of work that takes its time, and offers to call it off. It stays until its owner takes it
/// away: Escape and its frame mean its button.
class ProgressBox final : public QDialog {
  Q_OBJECT

 public:
  /// \param occasion  what goes on, the title: "Opening site.map"
  ProgressBox(const QString& occasion, QWidget* parent);

  /// \param done, of   as for `Progress::Reach`
  /// \param mayCancel  false while what has been begun must be finished
  void ShowStage(WorkStage stage, size_t done, size_t of, bool mayCancel);
  /// From now on it only tells that the work is being called off.
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
