#include "shell/surroundings.h"

#include <QApplication>

namespace orvane {

void DesktopSurroundings::Beep() { QApplication::beep(); }

void DesktopSurroundings::EndProgram() { QCoreApplication::quit(); }

std::chrono::milliseconds DesktopSurroundings::Now() {
  using std::chrono::duration_cast;
  return duration_cast<std::chrono::milliseconds>(
      std::chrono::steady_clock::now().time_since_epoch());
}

}  // namespace orvane
