#pragma once

#include "base/messages.h"

#include <cstdio>
#include <deque>
#include <optional>
#include <string>
#include <vector>

namespace orvane {

/// Messages as lines: to standard error after the severity. All but notes are also kept
/// for `dump`. Questions are answered by one button, prompts are cancelled.
class LineMessages : public Messages {
 public:
  struct Entry {
    Severity severity;
    std::string text;
  };

  void Post(Severity severity, const std::string& text) override;
  int Ask(const std::string& title, const std::vector<std::string>& buttons,
          const std::string& text) override;
  std::optional<std::string> Prompt(const TextPrompt& prompt) override;

  /// From now on messages go to standard output, without a severity. Notes still go to standard
  /// error.
  void PrintAsResult() { asResult_ = true; }
  /// From now on messages go to standard error again.
  void PrintAsMessages() { asResult_ = false; }
  /// \param answer  the button, from 1, that answers every question; the last one if there are
  ///                fewer
  void SetAnswer(int answer) { answer_ = answer; }
  /// Answers one question to come in its own way, after those that were queued before.
  void QueueAnswer(int answer) { queuedAnswers_.push_back(answer); }
  /// From now on "FILE:LINE: " precedes each message and question on standard error that is about a
  /// line of a file.
  void ShowPlaces() { showsPlaces_ = true; }

  const std::vector<Entry>& Entries() const { return entries_; }

 private:
  void PrintToStandardError(const char* word, const std::string& text) const;

  bool asResult_ = false;
  bool showsPlaces_ = false;
  int answer_ = 1;
  std::deque<int> queuedAnswers_;
  std::vector<Entry> entries_;
};

/// "note", "warning", "error", "internal error" or "fatal".
const char* SeverityWord(Severity severity);

}  // namespace orvane
