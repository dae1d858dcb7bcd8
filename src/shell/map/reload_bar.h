#pragma once

#include <QFrame>

class QLabel;
class QPushButton;

namespace orvane {

/// A bar over the map that offers to read a file again. It asks nothing: work continues while it
/// is there.
class ReloadBar final : public QFrame {
  Q_OBJECT

 public:
  explicit ReloadBar(QWidget* parent);

  /// Shows what has changed; an empty text takes the bar away.
  void Show(const QString& text);

  QPushButton& ReloadButton() { return *reload_; }
  QPushButton& DeclineButton() { return *decline_; }

 Q_SIGNALS:
  void reloadRequested();
  void declined();

 private:
  QLabel* text_;
  QPushButton* reload_;
  QPushButton* decline_;
};

}  // namespace orvane
