#pragma once

#include "base/messages.h"
#include "shell/messages/message_log.h"

#include <QString>

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace orvane {

class Surroundings;

/// Shows messages and questions as boxes over the active window, and keeps every message in a log.
/// Notes have no box.
///
/// While files are read (`BeginBatch`), messages wait: a box lets the windows paint, and the map is
/// incomplete. After the read, each message has its box. From the third on, the box has a check that
/// leaves the rest to the messages window, so that a file with 200 faults does not take 200 clicks.
/// Questions and fatal messages never wait. A fatal message first shows the messages that wait, and
/// ends the program after its own box.
class BoxMessages final : public Messages {
 private:
  MessageLog log_;  // first, so that it outlives what shows it

 public:
  /// The first boxes of a batch have no check.
  static constexpr size_t BoxesWithoutCheck = 2;
  /// No batch has more boxes than this; the rest is left to the messages window.
  static constexpr size_t MostBoxes = 1000;
  /// Exit status after a fatal message.
  static constexpr int FatalExit = 3;

  /// \param surroundings  end the program after a fatal message; must outlive this
  explicit BoxMessages(Surroundings& surroundings);

  void Post(Severity severity, const std::string& text) override;
  int Ask(const std::string& title, const std::vector<std::string>& buttons,
          const std::string& text) override;
  std::optional<std::string> Prompt(const TextPrompt& prompt) override;

  /// Makes messages wait. Batches nest; the outermost counts.
  /// \param occasion  what is going on, the title of the boxes: "Opening site.map"
  void BeginBatch(const QString& occasion);
  /// Shows the messages that came since the outermost `BeginBatch`.
  void EndBatch();
  /// True while messages wait: files are being read, and maps are incomplete.
  bool IsBatchOpen() const { return batchDepth_ > 0; }

  /// All messages of the run.
  MessageLog& Log() { return log_; }

  /// Opens the messages window at a row of the log. Empty if there is no such window.
  std::function<void(int row)> showInWindow;
  /// Shows a note without a box. Empty if notes are only logged.
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

  Surroundings& surroundings_;
  int batchDepth_ = 0;
  QString occasion_;
  std::vector<Waiting> waiting_;  ///< at most `MostBoxes` + 1
};

/// Makes messages wait until it is destroyed.
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
