#pragma once

#include <QLabel>
#include <QTimer>

#include <string>
#include <vector>

namespace orvane {

/// Gives a label the look of a note: lines of plain text in the colours of tool tips.
void DressAsNote(QLabel& label);

/// Wraps the lines of a note if they are too wide.
/// \return its size, at most `room`
QSize FitNote(QLabel& label, QSize room);

/// A small note in the middle of its parent. The mouse passes through it.
class MapNote final : public QLabel {
  Q_OBJECT

 public:
  MapNote(const std::vector<std::string>& lines, QWidget* parent);

  /// Puts it in the middle of its parent.
  void Center();
};

/// A note at the lower edge of its parent, for results that need no answer. It disappears after some
/// seconds, or when it is clicked.
class ResultNote final : public QLabel {
  Q_OBJECT

 public:
  explicit ResultNote(QWidget* parent);

  /// Replaces the lines that are shown.
  void ShowLines(const QStringList& lines);

  bool eventFilter(QObject* watched, QEvent* event) override;

 Q_SIGNALS:
  void clicked();

 protected:
  void mousePressEvent(QMouseEvent* event) override;

 private:
  void Place();

  QTimer hideTimer_;
};

}  // namespace orvane
