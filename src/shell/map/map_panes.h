#pragma once

#include "view/focus_place.h"
#include "view/pane_layout.h"

#include <QWidget>

class QListWidget;
class QRubberBand;

namespace orvane {

struct Map;
class DividerHandle;
class ListPane;
class MapArea;
class MapView;

/// The inside of a map window: the lists "Trails" and "Ranges" one over the other at the left, the
/// map at the right, and dividers of `DividerSize` pixels between them that can be dragged. While
/// one is dragged, a focus rectangle across the window shows where it would come to stand. For the
/// keyboard each divider has a `DividerHandle`.
class MapPanes final : public QWidget {
  Q_OBJECT

 public:
  /// \param map    must outlive the widget
  /// \param sizes  how the panes begin
  MapPanes(Map& map, const PaneSizes& sizes, QWidget* parent);

  MapArea& Area() { return *area_; }
  MapView& View();
  QListWidget& TrailList();
  QListWidget& RangeList();

  FocusPlace Focus() const { return focus_; }
  /// As they are laid out: 0 where a pane has vanished.
  PaneSizes Sizes() const { return layout_.sizes; }
  void SetSizes(const PaneSizes& sizes);

 Q_SIGNALS:
  /// Also when a menu or another window takes the keyboard away only for a moment, `Focus` stays
  /// what it was: this is sent for a real change alone.
  void focusPlaceChanged(orvane::FocusPlace place);
  /// A divider was dropped, or moved by a key: the preferences take the width of the lists, or the
  /// height of the upper one. The other size stays, though this window may have cut it.
  void dividerMoved(orvane::PaneDivider divider, int size);

 protected:
  void resizeEvent(QResizeEvent* event) override;
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

  ListPane* trails_;
  ListPane* ranges_;
  MapArea* area_;
  DividerHandle* besideMap_;
  DividerHandle* betweenLists_;
  QRubberBand* focusRectangle_;
  PaneSizes wanted_;   ///< as asked for; cut to fit at each layout, so that room regained is used
  PaneLayout layout_;  ///< as it stands
  PaneDivider dragged_ = PaneDivider::None;
  FocusPlace focus_ = FocusPlace::Neither;
};

}  // namespace orvane
