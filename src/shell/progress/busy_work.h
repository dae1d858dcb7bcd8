#pragma once

#include "base/progress.h"
#include "shell/messages/box_messages.h"

#include <QPointer>
#include <QString>
#include <QWidget>

#include <chrono>
#include <functional>
#include <memory>
#include <vector>

class QObject;

namespace orvane {

class ProgressBox;
struct Workspace;

/// Lives as long as a piece of work that may be long. Messages wait (`MessageBatch`), and after half
/// a second a box shows the progress and offers to cancel. Work within such work has no box of its
/// own.
///
/// The work itself handles the events of the box, and only those. Until it is done, no window takes
/// keys, clicks or files and none of their timers runs, because the work changes what they show; and
/// none is painted as long as the box is there. A question that the work asks takes keys and clicks.
class BusyWork final : public Progress {
 public:
  /// Milliseconds since any fixed moment.
  using Clock = std::function<std::chrono::milliseconds()>;

  /// The box appears after this time.
  static constexpr std::chrono::milliseconds Patience{500};
  /// The time between two looks at the events of the box.
  static constexpr std::chrono::milliseconds Beat{50};

  /// \param occasion  the work, for titles: "Opening site.map"
  /// \param clock     empty for the clock of the machine
  BusyWork(Workspace& workspace, BoxMessages& boxes, const QString& occasion, Clock clock = {});
  ~BusyWork() override;

  void Reach(WorkStage stage, size_t done, size_t of) override;

  /// Cancels the work, as the button of the box does.
  void Stop();

 private:
  void ShowBox();
  void HideBox();
  void Serve();

  MessageBatch batch_;  // ends last, after the box is closed
  Workspace& workspace_;
  QString occasion_;
  Clock clock_;
  std::chrono::milliseconds began_;
  std::chrono::milliseconds served_{0};
  bool isOutermost_;
  std::unique_ptr<ProgressBox> box_;
  std::unique_ptr<QObject> guard_;  ///< holds back events for other windows
  std::vector<QPointer<QWidget>> unpainted_;
};

}  // namespace orvane
