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

/// The map in a window: paints a `MapWindow` through an off-screen image and moves it with keys,
/// wheel, mouse and touch pad. The record counts device pixels, so that lines and letters are sharp
/// on every screen; this class converts the position of each event.
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

  /// What is shown, and where.
  MapWindow& Shown() { return shown_; }
  const MapWindow& Shown() const { return shown_; }

  /// Sets the view from an earlier run. The first layout uses it if it is for this map.
  void TakeSavedView(const SavedView& saved) { savedView_ = saved; }

  /// Call after any change of the view or the map. The next paint event redraws it once, however
  /// many changes there were.
  void RequestRepaint();
  /// The same if only the view has moved and the map is unchanged.
  void ShowMoved();

  /// Shows the place that a text names (`FindInMap`) and marks it for a second.
  /// \return false, after a message, if the text names nothing
  bool Find(std::string_view text);

  /// Sends the positions of clicks to `target`, shows a cross as the cursor and raises the window;
  /// null ends that.
  /// \param target  must live until then
  void SetInputTarget(InputTarget* target);

  /// What Escape does: ends a drag, transect mode and the box around the area for the printer, or
  /// else the input of clicks.
  /// \return false if there was nothing to end
  bool EndModes();

  /// Makes the next rubber band a transect, or an ordinary one again.
  void SetTransectMode(bool on);

  /// The altitudes of the map, computed on the first call after a `RequestRepaint`.
  const AltitudeEstimates& Altitudes();

  /// The fonts of the map on its screen; null before it is first shown.
  const CanvasFonts* Fonts() const { return fonts_.get(); }

  /// True while the note with the credits of the map is shown.
  bool IsNoteShown() const { return note_ != nullptr; }

  QSize sizeHint() const override;

 Q_SIGNALS:
  /// The view has moved, or is redrawn for another reason.
  void viewChanged();
  /// The pointer has moved, or a drag has begun or ended.
  void pointerMoved();
  /// A transect was drawn: it runs along `Shown().selection`. While nothing is connected to this,
  /// transect mode ends with each drag.
  void transectDrawn();
  /// Escape has ended the input of clicks.
  void inputCanceled();
  /// The map has the focus now.
  void focusIn();
  /// The user pressed the key for printing this view.
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

  MapWindow shown_;
  std::optional<SavedView> savedView_;
  std::optional<AltitudeEstimates> altitudes_;
  std::unique_ptr<CanvasFonts> fonts_;
  QImage buffer_;             ///< what the map looks like, in device pixels
  bool bufferOld_ = true;     ///< the map must be drawn again before it is shown
  bool wasPainted_ = false;   ///< it has been painted once
  bool controlHeld_ = false;  ///< during a drag: the band will be a transect
  QPointF panRest_;           ///< of `PanAlong`: less than a device pixel each way
  QTimer findTimer_;          ///< ends the mark of Find
  QTimer notesTimer_;         ///< shows the note, then ends it
  MapNote* note_ = nullptr;   ///< while it is shown
};

/// \return true if the map, or one in its basis chain, has any point
bool HasPoints(const Map& map);

}  // namespace orvane
