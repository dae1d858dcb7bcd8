#pragma once

#include "model/altitude_estimates.h"
#include "paint/canvas_fonts.h"
#include "view/map_window.h"
#include "view/view_transform.h"

#include <QImage>
#include <QTimer>
#include <QWidget>

#include <memory>
#include <optional>
#include <string_view>

class QGestureEvent;
class QNativeGestureEvent;

namespace orvane {

class MapNote;

/// The map in a window: paints a `MapWindow` through an off-screen image and moves it by keys,
/// wheel, mouse and touch pad. The record counts in device pixels, so that lines and letters are
/// sharp on every screen; each event's position is converted once, here.
///
/// Keys: "+" and "-" double and halve the scale and centre on the place under the pointer; the
/// arrows move by a tenth of the view, with control by a thirtieth, with shift by a hundredth;
/// Escape ends a rubber band, transect mode, and the box around the area for the printer. The left
/// button draws a rubber band, any other drags the map, a double click zooms in. The wheel and a
/// pinch zoom about the pointer; two fingers and a wheel to the side move the map.
class MapView final : public QWidget {
  Q_OBJECT

 public:
  /// \param map  must outlive the widget
  MapView(Map& map, QWidget* parent);
  ~MapView() override;

  MapWindow& View() { return view_; }
  const MapWindow& View() const { return view_; }

  /// The view of an earlier run, used at the first placing if it belongs to this map.
  void TakeSavedView(const SavedView& saved) { savedView_ = saved; }

  /// After any change of the view or of the map: it is drawn anew, once, however many changes
  /// come before the next paint event.
  void RequestRepaint();
  /// The same after a move of the view alone: what is known about the map stays good.
  void ShowMoved();

  /// Shows what a text means (`FindInMap`); its mark goes after a second.
  /// \return false if the text means nothing, which a message has told
  bool Find(std::string_view text);

  /// From now on a click gives a position to `target`, and the cursor is a cross; null ends that.
  /// The window comes to the front.
  /// \param target  must live until it is taken back
  void SetInputTarget(InputTarget* target);

  /// The next rubber band is a transect, or is no longer one.
  void SetTransectMode(bool on);

  /// The altitudes of the map, found out when they are first asked for after a `RequestRepaint`.
  const AltitudeEstimates& Altitudes();

  /// The fonts of the map on its screen; null before it was first shown.
  const CanvasFonts* Fonts() const { return fonts_.get(); }

  /// True while the note with the credits of the map is up.
  bool IsNoteShown() const { return note_ != nullptr; }

  QSize sizeHint() const override;

 Q_SIGNALS:
  /// The view looks elsewhere, or is drawn anew for another reason.
  void viewChanged();
  /// The pointer stands elsewhere, or a drag has begun or ended.
  void pointerMoved();
  /// A transect was drawn: it runs along `View().selection`. While nothing is connected to this,
  /// transect mode ends with each drag.
  void transectDrawn();
  /// The map has got the keyboard.
  void focusIn();
  /// The key for printing this view.
  void printRequested();

 protected:
  bool event(QEvent* event) override;
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void keyReleaseEvent(QKeyEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void mouseDoubleClickEvent(QMouseEvent* event) override;
  void wheelEvent(QWheelEvent* event) override;
  void leaveEvent(QEvent* event) override;
  void focusInEvent(QFocusEvent* event) override;

 private:
  Pixel DevicePixel(QPointF position) const;
  void FitToWidget();
  void DrawBuffer();
  /// \param asLine  a line from `begin` to `end`, or else the box around both
  void PaintBand(QPainter& painter, Pixel begin, Pixel end, bool asLine) const;
  void PaintHint(QPainter& painter) const;
  bool StepByKey(const QKeyEvent& event);
  void CenterPointer();
  void ShowCursor();
  void ZoomAbout(QPointF position, double factor);
  /// \param way  pixels of the widget, right and down
  void PanAlong(QPointF way);
  bool PinchByTouchPad(const QNativeGestureEvent& event);
  bool PinchByTouch(QGestureEvent& event);
  void EndFind();
  void FollowNotes();

  MapWindow view_;
  std::optional<SavedView> savedView_;
  std::optional<AltitudeEstimates> altitudes_;
  std::unique_ptr<CanvasFonts> fonts_;
  QImage buffer_;             ///< what the map looks like, in device pixels
  bool bufferOld_ = true;     ///< the map must be drawn again before it is shown
  bool wasPainted_ = false;   ///< the first painting has been
  bool controlHeld_ = false;  ///< during a drag: the band is going to be a transect
  QPointF panRest_;           ///< of `PanAlong`: less than a device pixel each way
  QTimer findTimer_;          ///< ends the mark of Find
  QTimer notesTimer_;         ///< shows the note, then ends it
  MapNote* note_ = nullptr;   ///< while it is up
};

/// \return true if the map, or one that it rests on, has any point
bool HasPoints(const Map& map);

}  // namespace orvane
