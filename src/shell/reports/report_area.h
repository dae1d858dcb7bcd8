#pragma once

#include "paint/canvas_fonts.h"
#include "reports/shown_report.h"

#include <QAbstractScrollArea>
#include <QImage>
#include <QString>

#include <functional>
#include <memory>
#include <string_view>

class QKeyEvent;

namespace orvane {

/// Lines of fields with tabs between them, as people see them. Fields may be in different encodings,
/// so each is decoded by itself (`DisplayText`).
QString DisplayFields(std::string_view text);

/// The lines of a report in a window: paints them, scrolls them and lets the user select some. The
/// report counts device pixels, as a map does.
///
/// Keys: the arrows, Page Up, Page Down, Home and End scroll. With Ctrl they select the line to
/// which they lead, with Shift all lines up to it, and with both they only go there; then Ctrl+Space
/// selects the line too, or no longer. Ctrl+Shift+A selects nothing. Return is a double click on the
/// current line. The mouse selects as in any list.
class ReportArea final : public QAbstractScrollArea {
  Q_OBJECT

 public:
  /// \param report  must outlive the widget
  /// \param fonts   sizes in points
  ReportArea(ShownReport& report, const FontSizes& fonts, QWidget* parent);
  ~ReportArea() override;

  /// Lays the report out again and shows it: its lines have changed.
  void ShowLines();
  /// Shows the report where it is scrolled to now.
  void ShowScroll();

  const ReportSelection& Selection() const { return selection_; }
  /// Selects no line.
  void ClearSelection();
  void SelectAll();
  /// Selects a line only, without bringing it into view.
  void SelectOnly(int line);

  /// Shown in the middle while the report has no line.
  QString emptyText;
  /// Handles a key before the area does.
  std::function<bool(const QKeyEvent& event)> takeKey;

 Q_SIGNALS:
  /// Other lines are selected, or another one is current.
  void selectionChanged();
  /// A line was double-clicked, or Return was pressed on it.
  void openRequested(int line);

 protected:
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void scrollContentsBy(int dx, int dy) override;
  void keyPressEvent(QKeyEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void mouseDoubleClickEvent(QMouseEvent* event) override;
  void focusInEvent(QFocusEvent* event) override;
  void focusOutEvent(QFocusEvent* event) override;
  void changeEvent(QEvent* event) override;

 private:
  void LayOut();
  void SetBars();
  void Redraw();
  void DrawBuffer();
  Pixel DevicePixel(QPointF position) const;
  int LineUnder(QPointF position) const;
  void Select(int line, SelectionMode mode);
  bool GoByKey(const QKeyEvent& event);
  bool ScrollByKey(const QKeyEvent& event);
  int FirstShownLine() const;
  void SpeakCurrentLine();

  ShownReport& report_;
  FontSizes sizes_;
  std::unique_ptr<CanvasFonts> fonts_;
  ReportSelection selection_;
  QImage buffer_;          ///< what is shown, in device pixels
  bool bufferOld_ = true;  ///< it must be drawn again
  bool dragging_ = false;  ///< the button went down on a line
};

}  // namespace orvane
