#pragma once

#include "elevation/profile.h"
#include "geo/angle_text.h"
#include "paint/canvas_fonts.h"
#include "view/canvas.h"
#include "view/info_panel.h"

#include <QImage>
#include <QTimer>
#include <QWidget>

#include <functional>
#include <memory>
#include <vector>

class QNativeGestureEvent;

namespace orvane {

/// The plot of a profile, with its info pane in the corner: paints an `ElevationView` and moves it
/// with keys, wheel and mouse. The view counts device pixels; this class converts the position of
/// each event.
///
/// Where estimates take long, the line is drawn coarse at first and gets finer while events are
/// handled in between.
///
/// Keys: "+" and "-" zoom about the middle; the arrows to the sides move the view by an eighth, the
/// page keys by seven; Home and End go to the ends of the line; with Ctrl the arrows move the column
/// that the info pane describes, with Shift too by ten. Any button but the first drags the line, a
/// double click and the wheel zoom about the pointer.
class ElevationPlot final : public QWidget {
  Q_OBJECT

 public:
  /// \param view        a new profile; what it points to must live until the plot goes or follows
  /// \param background  what the plot is cleared to
  ElevationPlot(ElevationView view, Color background, QWidget* parent);
  ~ElevationPlot() override;

  const ElevationView& View() const { return view_; }
  /// True once every column of the present view has its altitude.
  bool IsFilled() const { return !layoutOld_ && filling_.IsDone(); }
  /// What the info pane shows.
  const std::vector<InfoRow>& InfoPaneRows() const;

  /// Changes the view and shows it.
  void Change(const std::function<void(ElevationView& view)>& change);
  /// Brings the line up to date with its map, which was edited or read again.
  /// \return false if the line is not there any more; the plot is then of no use
  bool Follow(const LineIdentity& identity);
  /// Shows angles in another form.
  void SetDisplay(CoordinateDisplay display);
  CoordinateDisplay Display() const { return display_; }
  /// Draws again soon, after "Smooth Lines" was switched.
  void Redraw();
  /// Shows the info pane, or hides it.
  void ToggleInfo();

  /// Size in device pixels.
  QSize DeviceSize() const;
  /// The view once every column has its altitude, for what is not drawn bit by bit.
  const ElevationView& FinishedView();
  /// Draws the view as it is now.
  /// \param canvas  of `DeviceSize`
  void DrawView(Canvas& canvas) const;

  /// Ends a drag.
  /// \return false if there was none
  bool EndDrag();

  QSize sizeHint() const override;

 Q_SIGNALS:
  /// The view has moved, or has another size.
  void viewChanged();

 protected:
  bool event(QEvent* event) override;
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void mouseDoubleClickEvent(QMouseEvent* event) override;
  void wheelEvent(QWheelEvent* event) override;

 private:
  class InfoPane;

  int DeviceColumn(const QPointF& position) const;
  void LayOut();
  void DrawBuffer();
  void PaintMark(QPainter& painter) const;
  void RefreshInfo();
  bool MoveByKey(const QKeyEvent& event);
  bool StepByKey(const QKeyEvent& event);

  ElevationView view_;
  Color background_;
  CoordinateDisplay display_ = CoordinateDisplay::Minutes;
  std::unique_ptr<CanvasFonts> fonts_;
  GapFilling filling_;
  QTimer fillTimer_;          ///< goes on with the filling
  QTimer infoTimer_;          ///< shows the info pane once after many moves of the pointer
  QImage buffer_;             ///< what the plot looks like, in device pixels
  bool layoutOld_ = true;     ///< the samples are not those of the view
  bool bufferOld_ = true;     ///< the plot must be drawn again before it is shown
  bool columnByKey_ = false;  ///< keys have chosen the column of the info pane, and it is marked
  InfoPane* info_;
};

}  // namespace orvane
