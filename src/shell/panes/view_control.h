#pragma once

namespace orvane {

class MapWindowWidget;
class Shell;

/// Shows the dialog of the looks of the selected trails and changes them on OK.
void AskTrailVisibility(Shell& shell, MapWindowWidget& window);
/// The same for the selected ranges and overlaps.
void AskRangeVisibility(Shell& shell, MapWindowWidget& window);

/// The command "View Control": one of the two, by the pane that has the keyboard.
void ViewControl(Shell& shell, MapWindowWidget& window);

}  // namespace orvane
