#pragma once

#include "commands/focus_place.h"
#include "panes/pane_layout.h"

#include <QWidget>

class QRubberBand;

namespace orvane {

struct Map;
struct RangePanelRow;
class DividerHandle;
class MapArea;
class MapView;
class PaneView;
class RangePane;
class TrailPane;

/// The inside of a map window: the lists "Trails" and "Ranges" one above the other on the left, the
/// map on the right, and dividers of `DividerSize` pixels between them that the user can drag. While
/// a divider is dragged, a focus rectangle across the window shows its new place. For the keyboard
/// each divider has a `DividerHandle`.
class MapPanes final : public QWidget {
  Q_OBJECT

 public:
  /// \param map    must outlive the widget
  /// \param sizes  the initial sizes of the panes
  MapPanes(Map& map, const PaneSizes& sizes, QWidget* parent);

  MapArea& Area() { return *area_; }
  MapView& View();
  TrailPane& Trails() { return *trails_; }
  RangePane& Ranges() { return *ranges_; }
  /// Call after rows of the view came, went or moved.
  void ShowRows();
  /// Call after rows of the view look different.
  void ShowChangedRows();

  FocusPlace Focus() const { return focus_; }
  /// As they are laid out: 0 for a pane that is hidden.
  PaneSizes Sizes() const { return layout_.sizes; }
  void SetSizes(const PaneSizes& sizes);

 Q_SIGNALS:
  /// Sent only for a real change: while a menu or another window has the keyboard for a moment,
  /// `Focus` stays what it was.
  void focusPlaceChanged(orvane::FocusPlace place);
  /// A divider was dropped, or moved by a key. The preferences take the new width of the lists, or
  /// height of the upper one; the other size stays, even if this window has cut it.
  void dividerMoved(orvane::PaneDivider divider, int size);
  /// The selected trails were dropped on a row of the range pane, or sent there by the menu.
  void trailsDropped(orvane::RangePanelRow* row);

 protected:
  void resizeEvent(QResizeEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;
  void leaveEvent(QEvent* event) override;

 private:
  DividerHandle* MakeHandle(PaneDivider divider, const QString& name);
  void LayOut();
  void TakeSize(PaneDivider divider, const PaneSizes& sizes);
  void ShowFocusRectangle(QPoint at);
  void FollowFocus(QWidget* now);
  void FollowDrag(QPoint global, bool end);
  void EndDrag();

  MapArea* area_;
  TrailPane* trails_;
  RangePane* ranges_;
  DividerHandle* besideMap_;
  DividerHandle* betweenLists_;
  QRubberBand* focusRectangle_;
  QRubberBand* dragRectangle_;  ///< as high as a row and as wide as the lists; follows a drag
  PaneSizes wanted_;   ///< before they are cut to fit, so that a larger window restores them
  PaneLayout layout_;  ///< at the moment
  PaneDivider dragged_ = PaneDivider::None;
  FocusPlace focus_ = FocusPlace::Neither;
};

}  // namespace orvane
