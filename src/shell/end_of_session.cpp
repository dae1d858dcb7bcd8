#include "shell/end_of_session.h"

#include "model/workspace.h"
#include "shell/progress/busy_work.h"
#include "shell/shell.h"

#include <QSocketNotifier>
#include <QTimer>

#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <unistd.h>

namespace orvane {
namespace {

constexpr int Signals[] = {SIGTERM, SIGHUP, SIGINT};

/// The writing end of the pipe. A handler of signals can reach nothing else.
volatile sig_atomic_t writingEnd = -1;

/// All that may be done here is to write: the rest follows in the event loop.
void HandleSignal(int signal) {
  const int error = errno;
  const auto byte = static_cast<unsigned char>(signal);
  [[maybe_unused]] const ssize_t written = ::write(writingEnd, &byte, 1);
  errno = error;
}

}  // namespace

bool WriteBeforeEnd(Shell& shell) {
  const Keepers& keepers = shell.Kept();
  if (keepers.preferences) keepers.preferences->Write();
  if (auto* work = dynamic_cast<BusyWork*>(shell.TheWorkspace().progress)) {
    work->Stop();
    return false;
  }
  if (keepers.copies) keepers.copies->WriteAll();
  return true;
}

void WriteAtEndOfSession(Shell& shell) {
  if (WriteBeforeEnd(shell)) return;
  // Timers wait until the work has stopped.
  QTimer::singleShot(0, &shell, [&shell] { WriteAtEndOfSession(shell); });
}

EndSignals::EndSignals(Shell& shell, Surroundings& surroundings)
    : shell_(shell), surroundings_(surroundings) {
  if (::pipe2(ends_, O_CLOEXEC | O_NONBLOCK) != 0) return;
  writingEnd = ends_[1];
  auto* notifier = new QSocketNotifier(ends_[0], QSocketNotifier::Read, this);
  connect(notifier, &QSocketNotifier::activated, this, &EndSignals::Receive);
  for (const int signal : Signals) {
    struct sigaction action {};
    if (::sigaction(signal, nullptr, &action) != 0 || action.sa_handler == SIG_IGN) continue;
    action = {};
    action.sa_handler = HandleSignal;
    action.sa_flags = SA_RESTART;
    ::sigaction(signal, &action, nullptr);
  }
}

EndSignals::~EndSignals() {
  if (ends_[0] < 0) return;
  for (const int signal : Signals) {
    struct sigaction action {};
    const bool isOurs =
        ::sigaction(signal, nullptr, &action) == 0 && action.sa_handler == HandleSignal;
    if (isOurs) std::signal(signal, SIG_DFL);
  }
  writingEnd = -1;
  ::close(ends_[0]);
  ::close(ends_[1]);
}

void EndSignals::Receive() {
  // The byte is left, so that this is called again until the work has stopped.
  if (!WriteBeforeEnd(shell_)) return;
  unsigned char signal = 0;
  if (::read(ends_[0], &signal, 1) == 1) surroundings_.EndBySignal(signal);
}

}  // namespace orvane
