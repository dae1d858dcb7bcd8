#pragma once

#include "panes/visibility.h"
#include "shell/panes/visibility_dialog.h"

#include <functional>

class QCheckBox;
class QRadioButton;

namespace orvane {

class RadioBox;

/// The dialog "Trail Visibility": how the selected rows of the trail pane are drawn.
class TrailVisibilityDialog final : public VisibilityDialog {
  Q_OBJECT

 public:
  /// Gives the values to the rows.
  /// \return false, after a message, if a value can't be used; the dialog then stays
  using Apply = std::function<bool(const TrailVisibility&)>;

  TrailVisibilityDialog(const TrailVisibility& values, Apply apply, QWidget* parent);

 private:
  bool ApplyValues() override { return apply_(Values()); }
  TrailVisibility Values() const;
  void EnableControls();

  Apply apply_;
  RadioBox* lines_;
  QCheckBox* filled_;
  RadioBox* patterns_;
  QRadioButton* solidFill_;
  RadioBox* labels_;
  RadioBox* marks_;
};

}  // namespace orvane
