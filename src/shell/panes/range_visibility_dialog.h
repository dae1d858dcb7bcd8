#pragma once

#include "panes/estimate_lines.h"
#include "panes/visibility.h"
#include "shell/panes/visibility_dialog.h"

#include <array>
#include <functional>
#include <optional>
#include <string>

class QCheckBox;
class QListWidget;

namespace orvane {

class RadioBox;

/// The dialog "Range Visibility": how the selected rows of the range pane are drawn.
class RangeVisibilityDialog final : public VisibilityDialog {
  Q_OBJECT

 public:
  /// Gives the values to the rows.
  /// \return false, after a message, if a value can't be used; the dialog then stays
  using Apply = std::function<bool(const RangeVisibility&)>;

  /// \param controls  what is shown, and what can be changed
  /// \param smNames   the map's names of SM1 to SM3
  RangeVisibilityDialog(const RangeVisibility& values, const RangeControls& controls,
                        const std::array<std::optional<std::string>, 3>& smNames, Apply apply,
                        QWidget* parent);

 private:
  bool ApplyValues() override { return apply_(Values()); }
  QWidget* MakeEstimates();
  void ShowControls(const RangeControls& controls);
  void ShowValues(const RangeVisibility& values);
  RangeVisibility Values() const;

  Apply apply_;
  RadioBox* shading_;
  RadioBox* drawMode_;
  QWidget* points_;
  std::array<QCheckBox*, 3> showSm_{};
  QListWidget* clusters_;
  std::array<QCheckBox*, OfferedOutlines.size()>
      showEstimate_{};  ///< before the box, which makes them
  QWidget* estimates_;
};

}  // namespace orvane
