#include "shell/progress/busy_work.h"

#include "model/workspace.h"
#include "shell/progress/progress_box.h"

#include <QApplication>
#include <QKeyEvent>
#include <QTimer>
#include <QWindow>

#include <utility>

namespace orvane {
namespace {

std::chrono::milliseconds Now() {
  using std::chrono::duration_cast;
  return duration_cast<std::chrono::milliseconds>(
      std::chrono::steady_clock::now().time_since_epoch());
}

bool IsInput(QEvent::Type type) {
  switch (type) {
    case QEvent::KeyPress:
    case QEvent::KeyRelease:
    case QEvent::ShortcutOverride:
    case QEvent::Shortcut:
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonRelease:
    case QEvent::MouseButtonDblClick:
    case QEvent::MouseMove:
    case QEvent::Wheel:
    case QEvent::NativeGesture:
    case QEvent::Gesture:
    case QEvent::TouchBegin:
    case QEvent::TouchUpdate:
    case QEvent::TouchEnd:
    case QEvent::TabletPress:
    case QEvent::TabletMove:
    case QEvent::TabletRelease:
    case QEvent::ContextMenu:
    case QEvent::DragEnter:
    case QEvent::DragMove:
    case QEvent::Drop:
    case QEvent::Close:
      return true;
    default:
      return false;
  }
}

/// Lets only the box have input and timers, or a question that the work asks. A timer that is held
/// back runs later.
class EventGuard final : public QObject {
 public:
  EventGuard() { QCoreApplication::instance()->installEventFilter(this); }

  bool eventFilter(QObject* watched, QEvent* event) override {
    if (event->type() == QEvent::Timer) return IsTimerOfProgram(*watched) && !IsOfBox(*watched);
    if (!IsInput(event->type())) return false;
    if (IsOfBox(*watched) && !IsCallForHelp(*event)) return false;
    event->ignore();
    return true;
  }

 private:
  /// Help must not open in the middle of the work.
  static bool IsCallForHelp(const QEvent& event) {
    return (event.type() == QEvent::KeyPress || event.type() == QEvent::ShortcutOverride) &&
           static_cast<const QKeyEvent&>(event).key() == Qt::Key_F1;
  }
  /// The toolkit has timers of its own, for example for animations in the box.
  static bool IsTimerOfProgram(const QObject& watched) {
    return watched.isWidgetType() || qobject_cast<const QTimer*>(&watched) != nullptr ||
           watched.inherits("QSingleShotTimer");
  }
  /// The box is modal, and so is a question over it.
  static bool IsOfBox(const QObject& watched) {
    const QWidget* box = QApplication::activeModalWidget();
    if (box == nullptr) return false;
    if (watched.isWindowType()) return &watched == box->windowHandle();
    const QObject* each = &watched;
    while (each != nullptr && each != box) each = each->parent();
    return each != nullptr;
  }
};

}  // namespace

BusyWork::BusyWork(Workspace& workspace, BoxMessages& boxes, const QString& occasion, Clock clock)
    : batch_(boxes, occasion),
      workspace_(workspace),
      occasion_(occasion),
      clock_(clock ? std::move(clock) : Clock(Now)),
      began_(clock_()),
      isOutermost_(workspace.progress == nullptr) {
  if (!isOutermost_) return;
  workspace_.progress = this;
  guard_ = std::make_unique<EventGuard>();
}

BusyWork::~BusyWork() {
  if (isOutermost_) workspace_.progress = nullptr;
  guard_.reset();
  if (box_) HideBox();
}

void BusyWork::HideBox() {
  for (const auto& window : unpainted_) {
    if (window.isNull()) continue;
    window->setUpdatesEnabled(true);
    // Parts that were to be painted meanwhile are still marked, but do not ask again.
    QCoreApplication::postEvent(window, new QEvent(QEvent::UpdateRequest));
  }
  box_.reset();
}

void BusyWork::ShowBox() {
  const QWidgetList windows = QApplication::topLevelWidgets();
  for (QWidget* window : windows) {
    if (!window->isVisible() || !window->updatesEnabled()) continue;
    window->setUpdatesEnabled(false);
    unpainted_.emplace_back(window);
  }
  box_ = std::make_unique<ProgressBox>(occasion_, QApplication::activeWindow());
  QObject::connect(box_.get(), &ProgressBox::cancelRequested, box_.get(), [this] { Stop(); });
  box_->show();
}

void BusyWork::Stop() {
  Cancel();
  if (box_) box_->ShowStopping();
}

void BusyWork::Serve() {
  QCoreApplication::processEvents();
  served_ = clock_();
}

void BusyWork::Reach(WorkStage stage, size_t done, size_t of) {
  const std::chrono::milliseconds now = clock_();
  if (!box_) {
    if (now - began_ < Patience) return;
    ShowBox();
  } else if (now - served_ < Beat) {
    return;
  }
  box_->ShowStage(stage, done, of, MayCancel());
  Serve();
}

}  // namespace orvane
