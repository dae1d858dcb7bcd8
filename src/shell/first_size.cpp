#include "shell/first_size.h"

#include <QEvent>
#include <QScreen>
#include <QStyle>
#include <QTimer>
#include <QWidget>

#include <algorithm>

namespace orvane {
namespace {

/// Watches a window until it was shown, and then fits its frame into the screen. Owned by the
/// window.
class FrameFitter final : public QObject {
 public:
  explicit FrameFitter(QWidget& window) : QObject(&window), window_(window), given_(window.size()) {
    window.installEventFilter(this);
  }

  bool eventFilter(QObject* watched, QEvent* event) override {
    if (watched == &window_ && event->type() == QEvent::Show) {
      window_.removeEventFilter(this);
      // The window manager puts the frame around the window a little later.
      constexpr int Milliseconds = 200;
      QTimer::singleShot(Milliseconds, this, [this] { Fit(); });
    }
    return false;
  }

 private:
  void Fit() {
    // Someone maximized it or gave it another size meanwhile: keep that.
    const bool isAsGiven =
        (window_.windowState() & ~Qt::WindowActive) == 0 && window_.size() == given_;
    const QRect frame = window_.frameGeometry();
    const QRect fitted = WithinRoom(frame, window_.screen()->availableGeometry());
    if (isAsGiven && fitted != frame) {
      const QSize border = frame.size() - window_.size();
      window_.resize(fitted.size() - border);
      window_.move(fitted.topLeft());
    }
    deleteLater();
  }

  QWidget& window_;
  QSize given_;
};

}  // namespace

QRect WithinRoom(const QRect& frame, const QRect& room) {
  QRect fitted(frame.topLeft(), frame.size().boundedTo(room.size()));
  fitted.moveLeft(std::clamp(fitted.left(), room.left(), room.right() - fitted.width() + 1));
  fitted.moveTop(std::clamp(fitted.top(), room.top(), room.bottom() - fitted.height() + 1));
  return fitted;
}

void GiveFirstSize(QWidget& window) {
  const QStyle& style = *window.style();
  const int side = style.pixelMetric(QStyle::PM_MdiSubWindowFrameWidth, nullptr, &window);
  const int title = style.pixelMetric(QStyle::PM_TitleBarHeight, nullptr, &window);
  const QSize border(2 * side, title + side);
  window.resize(FirstWindowSize.boundedTo(window.screen()->availableSize() - border));
  new FrameFitter(window);
}

}  // namespace orvane
