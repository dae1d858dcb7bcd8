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

/// A recovery copy that is offered to the user.
struct RecoveryOffer {
  RecoveryCopy copy;
  std::vector<std::string> differences;  ///< from the user's file; one sentence each
  bool saysTheSame = false;              ///< the file already holds all of it
  std::string editor{};  ///< what an open editor was about; empty for the copy of a map
};

/// What to do with a copy.
enum class RecoveryChoice { Recover, Discard, Later };

/// Offers the copies that an earlier run left, each with its differences from the user's file.
/// Closing the dialog chooses `Later` for all of them.
class RecoveryDialog final : public QDialog {
  Q_OBJECT

 public:
  RecoveryDialog(const std::vector<RecoveryOffer>& offers, QWidget* parent);

  /// \return the choices, in the order of the offers; `Later` for all if the dialog was closed
  std::vector<RecoveryChoice> Choices() const;

  /// True if the user closed the dialog with the key of "Exit".
  bool ExitRequested() const { return exitRequested_; }

  QRadioButton& Button(size_t offer, RecoveryChoice choice);

 private:
  QWidget* MakeOffer(const RecoveryOffer& offer);

  std::vector<QButtonGroup*> groups_;
  bool exitRequested_ = false;
};

}  // namespace orvane
