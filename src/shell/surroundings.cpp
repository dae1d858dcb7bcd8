#include "shell/surroundings.h"

#include <QApplication>

#include <csignal>
#include <cstdlib>

namespace orvane {

void DesktopSurroundings::Beep() { QApplication::beep(); }

void DesktopSurroundings::EndProgram() { QCoreApplication::quit(); }

void DesktopSurroundings::EndAtOnce(int status) { std::exit(status); }

void DesktopSurroundings::EndBySignal(int signal) {
  std::signal(signal, SIG_DFL);
  std::raise(signal);
}

std::chrono::milliseconds DesktopSurroundings::Now() {
  using std::chrono::duration_cast;
  return duration_cast<std::chrono::milliseconds>(
      std::chrono::steady_clock::now().time_since_epoch());
}

}  // namespace orvane
