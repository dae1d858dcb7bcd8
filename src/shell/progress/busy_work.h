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

/// For as long as it lives, work goes on that may take its time: messages wait (`MessageBatch`), and
/// once half a second has passed a box shows how far the work is and offers to call it off. What
/// runs in the middle of such work stands under the outer one's box.
///
/// The box is served from within the work, and nothing but the box: until the work is done no
/// window takes keys, clicks or files, none is painted and none of their timers runs, for they show
/// what the work is about to change.
class BusyWork final : public Progress {
 public:
  /// Time in milliseconds from any beginning.
  using Clock = std::function<std::chrono::milliseconds()>;

  /// No box comes before this.
  static constexpr std::chrono::milliseconds Patience{500};
  /// The box is served as often as this.
  static constexpr std::chrono::milliseconds Beat{50};

  /// \param occasion  what goes on, for titles: "Opening site.map"
  /// \param clock     the time; that of the machine if empty
  BusyWork(Workspace& workspace, BoxMessages& boxes, const QString& occasion, Clock clock = {});
  ~BusyWork() override;

  void Reach(WorkStage stage, size_t done, size_t of) override;

  /// Cancels the work, as the button of the box does.
  void Stop();

 private:
  void ShowBox();
  void HideBox();
  void Serve();

  MessageBatch batch_;  // ends last, when the box is gone
  Workspace& workspace_;
  QString occasion_;
  Clock clock_;
  std::chrono::milliseconds began_;
  std::chrono::milliseconds served_{0};
  bool isOutermost_;
  std::unique_ptr<ProgressBox> box_;
  std::unique_ptr<QObject> guard_;  ///< keeps events from the windows
  std::vector<QPointer<QWidget>> unpainted_;
};

}  // namespace orvane
