#pragma once

#include <QLabel>
#include <QTimer>

#include <string>
#include <vector>

namespace orvane {

/// Gives a label the look of a note: lines of plain text in the colours of tool tips.
void DressAsNote(QLabel& label);

/// \return the size of a note that is at most as large as `room`; its lines are broken if they are
///         too wide
QSize FitNote(QLabel& label, QSize room);

/// A small note that floats in the middle of its parent: lines of text on the ground of tool tips.
/// It takes no part in what the mouse does.
class MapNote final : public QLabel {
  Q_OBJECT

 public:
  MapNote(const std::vector<std::string>& lines, QWidget* parent);

  /// Puts it in the middle of its parent.
  void Center();
};

/// A note at the lower edge of its parent, for results that need no answer. It goes after some
/// seconds, or when it is clicked.
class ResultNote final : public QLabel {
  Q_OBJECT

 public:
  explicit ResultNote(QWidget* parent);

  /// Shows lines in place of those that are shown now.
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
