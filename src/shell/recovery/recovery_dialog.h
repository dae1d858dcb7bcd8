#pragma once

#include "mapfile/recovery.h"

#include <QDialog>
#include <QStringList>

#include <string>
#include <vector>

class QButtonGroup;
class QRadioButton;
class QVBoxLayout;

namespace orvane {

/// A recovery copy as it is offered to the user.
struct RecoveryOffer {
  RecoveryCopy copy;
  std::vector<std::string> differences;  ///< from the user's file, a sentence each
  bool saysTheSame = false;              ///< the file holds all of it
};

/// What is to become of a copy.
enum class RecoveryChoice { Recover, Discard, Later };

/// Offers the copies that an earlier run has left, each with what tells it from the user's file.
/// Closing the dialog puts all of them off.
class RecoveryDialog final : public QDialog {
  Q_OBJECT

 public:
  RecoveryDialog(const std::vector<RecoveryOffer>& offers, QWidget* parent);

  /// What was chosen, in the order of the offers; `Later` for all if the dialog was closed.
  std::vector<RecoveryChoice> Choices() const;

  QRadioButton& Button(size_t offer, RecoveryChoice choice);

 private:
  QWidget* MakeOffer(const RecoveryOffer& offer);

  std::vector<QButtonGroup*> groups_;
};

}  // namespace orvane
