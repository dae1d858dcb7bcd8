#include "shell/panes/contour_work.h"

#include "shell/progress/busy_work.h"
#include "shell/shell.h"

#include <cstdio>

namespace orvane {

void RunContourWork(Shell& shell, const std::function<void(const ContourProgress&)>& work) {
  shell.Guard().Run([&] {
    BusyWork busy(shell.TheWorkspace(), shell.Boxes(), QStringLiteral("Drawing contours"),
                  shell.Clock());
    work([&](const char* stage, int percent) {
      if (stage == nullptr) return true;
      std::printf("Contour: %s %d%%        \r", stage, percent);
      std::fflush(stdout);
      busy.Reach(WorkStage::Contouring, static_cast<size_t>(percent), 100);
      return !busy.Canceled();
    });
  });
}

}  // namespace orvane
