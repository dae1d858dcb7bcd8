#pragma once

#include "paint/canvas_fonts.h"
#include "view/map_window.h"

#include <QImage>
#include <QWidget>

#include <memory>

namespace orvane {

/// The map in a window: paints a `MapWindow` through an off-screen image and moves it by keys,
/// wheel and mouse. The record counts in device pixels, so that lines and letters are sharp on
/// every screen; each event's position is converted once, here.
///
/// Keys: "+" and "-" double and halve the scale and centre on the place under the pointer; the
/// arrows move by a tenth of the view, with control by a thirtieth, with shift by a hundredth. The
/// wheel zooms about the pointer, the right button drags the map, a double click zooms in.
class MapView final : public QWidget {
  Q_OBJECT

 public:
  /// \param map  must outlive the widget
  MapView(Map& map, QWidget* parent);
  ~MapView() override;

  MapWindow& View() { return view_; }

  /// After any change of the view or of the map: it is drawn anew, once, however many changes
  /// come before the next paint event.
  void RequestRepaint();

  QSize sizeHint() const override;

 Q_SIGNALS:
  /// The view looks elsewhere, or is drawn anew for another reason.
  void viewChanged();
  /// The pointer stands elsewhere, or a drag has begun or ended.
  void pointerMoved();
  /// A transect was drawn: it runs along `View().selection`.
  void transectDrawn();
  /// The map has got the keyboard.
  void focusIn();

 protected:
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
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
  void PaintHint();
  bool StepByKey(const QKeyEvent& event);
  void CenterPointer();

  MapWindow view_;
  std::unique_ptr<CanvasFonts> fonts_;
  double pixelRatio_ = 1;  ///< device pixels to the widget's own, when the view was last fitted
  QImage buffer_;          ///< what the map looks like, in device pixels
  bool bufferOld_ = true;  ///< the map must be drawn again before it is shown
};

/// \return true if the map, or one that it rests on, has any point
bool HasPoints(const Map& map);

}  // namespace orvane
