#pragma once

#include "base/messages.h"
#include "shell/messages/message_log.h"

#include <QString>

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace orvane {

/// Shows messages and questions as boxes over the active window, and keeps every message in a log.
/// Notes have no box.
///
/// While files are read (`BeginBatch`) messages wait, since a box lets the windows paint, and the
/// map is only half there. Afterwards each has its box; from the third on the box has a check that
/// leaves the rest to the messages window, so that a file with 200 faults is not 200 clicks.
/// Questions and fatal messages never wait; a fatal one shows what has been waiting before it, and
/// then ends the program.
class BoxMessages final : public Messages {
 private:
  MessageLog log_;  // first, so that it outlives what shows it

 public:
  /// So many boxes of a batch have no check.
  static constexpr size_t BoxesWithoutCheck = 2;
  /// No batch has more boxes than this; the rest is left to the messages window.
  static constexpr size_t MostBoxes = 1000;
  /// Exit status after a fatal message.
  static constexpr int FatalExit = 3;

  BoxMessages();

  void Post(Severity severity, const std::string& text) override;
  int Ask(const std::string& title, const std::vector<std::string>& buttons,
          const std::string& text) override;
  std::optional<std::string> Prompt(const TextPrompt& prompt) override;

  /// From now on messages wait. Batches may stand in each other: the outermost counts.
  /// \param occasion  what is going on, the title of the boxes: "Opening site.map"
  void BeginBatch(const QString& occasion);
  /// Shows what has come since the outermost `BeginBatch`.
  void EndBatch();
  /// True while messages wait: files are being read, and maps are half there.
  bool IsBatchOpen() const { return batchDepth_ > 0; }

  /// All messages of the run.
  MessageLog& Log() { return log_; }

  /// What ends the program after a fatal message; `std::exit` unless a test puts in its own.
  std::function<void(int status)> endProgram;
  /// Shows the log from a row on, in a window; empty for none.
  std::function<void(int row)> showInWindow;
  /// Shows a note, which has no box; empty for the log only.
  /// \param number  of the message in the log
  std::function<void(size_t number, const QString& text)> showNote;

 private:
  struct Waiting {
    size_t number;  ///< in the log
    Severity severity;
    QString text;
  };

  void ShowWaiting();
  static bool ShowBox(const Waiting& message, const QString& occasion, bool withCheck);

  int batchDepth_ = 0;
  QString occasion_;
  std::vector<Waiting> waiting_;  ///< one more than `MostBoxes` at most
};

/// A batch for as long as it lives.
class MessageBatch {
 public:
  MessageBatch(BoxMessages& boxes, const QString& occasion) : boxes_(boxes) {
    boxes_.BeginBatch(occasion);
  }
  ~MessageBatch() { boxes_.EndBatch(); }
  MessageBatch(const MessageBatch&) = delete;
  MessageBatch& operator=(const MessageBatch&) = delete;

 private:
  BoxMessages& boxes_;
};

}  // namespace orvane
