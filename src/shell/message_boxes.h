#pragma once

#include "base/messages.h"

#include <QString>

#include <functional>
#include <optional>
#include <string>
#include <vector>

class QWidget;

namespace orvane {

/// Shows messages and questions as boxes over the active window.
///
/// While files are opened (`BeginBatch`) messages wait, so that a file with 200 faults is one box
/// with a list and not 200 boxes. Questions and fatal messages never wait; a fatal one shows what
/// has been waiting before it, and then ends the program.
class BoxMessages final : public Messages {
 public:
  /// As many waiting messages have a box each; more stand in one list.
  static constexpr size_t MostSingleBoxes = 2;
  /// A list shows this many; behind it stands how many more there were.
  static constexpr size_t MostListed = 1000;
  /// Exit status after a fatal message.
  static constexpr int FatalExit = 3;

  BoxMessages();

  void Post(Severity severity, const std::string& text) override;
  int Ask(const std::string& title, const std::vector<std::string>& buttons,
          const std::string& text) override;
  std::optional<std::string> Prompt(const std::string& title, const std::string& message,
                                    const std::string& text) override;

  /// From now on messages wait. Batches may stand in each other: the outermost counts.
  /// \param occasion  what is going on, for the heading of a list: "opening site.map"
  void BeginBatch(const QString& occasion);
  /// Shows what has come since the outermost `BeginBatch`.
  void EndBatch();

  /// What ends the program after a fatal message; `std::exit` unless a test puts in its own.
  std::function<void(int status)> endProgram;

 private:
  struct Waiting {
    Severity severity;
    QString text;
  };

  void ShowWaiting();
  static void ShowBox(const Waiting& message);
  void ShowList(const std::vector<Waiting>& messages, size_t count) const;

  int batchDepth_ = 0;
  QString occasion_;
  std::vector<Waiting> waiting_;  ///< at most `MostListed`
  size_t waitingCount_ = 0;       ///< all that have come
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
