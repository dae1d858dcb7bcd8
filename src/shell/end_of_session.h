#pragma once

#include <QObject>

namespace orvane {

class Shell;
class Surroundings;

/// Writes the preferences, and recovery copies of all unsaved maps, at once and without a question:
/// the desktop session ends, or the system ends the program. During long work, maps may be
/// half way through a change; the work is asked to stop and no copies are written.
/// \return false in that case
bool WriteBeforeEnd(Shell& shell);

/// `WriteBeforeEnd` for the end of a desktop session; tries again until it succeeds.
void WriteAtEndOfSession(Shell& shell);

/// Ends the program well when the system asks for it by SIGTERM, SIGHUP or SIGINT: first
/// `WriteBeforeEnd`, then the signal's own effect. A signal that was ignored when the program
/// started, as under nohup, stays ignored. There is one of these at most.
class EndSignals final : public QObject {
  Q_OBJECT

 public:
  EndSignals(Shell& shell, Surroundings& surroundings);
  ~EndSignals() override;

 private:
  void Receive();

  Shell& shell_;
  Surroundings& surroundings_;
  int ends_[2] = {-1, -1};  ///< of a pipe: read here, written by the handler of the signals
};

}  // namespace orvane
