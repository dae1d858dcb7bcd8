#pragma once

#include <initializer_list>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace orvane {

/// A note reports what was done or noticed; nothing is wrong.
enum class Severity { Note, Warning, Error, InternalError, Fatal };

/// A place in a text file that a message is about.
struct MessageOrigin {
  std::string file;   ///< the name under which it was opened
  size_t line = 0;    ///< from 1; 0 for the file as a whole
  std::string point;  ///< the point that it is about, where no line is known; empty for none
};

/// A question for one line of text, with the buttons "OK" and "Cancel".
struct TextPrompt {
  std::string title;
  std::string message;
  std::string text;                  ///< in the field at first
  size_t size = 0;                   ///< the answer has fewer bytes; 0 for any number
  int columns = 0;                   ///< the field shows at least so many characters
  std::vector<std::string> earlier;  ///< offered in a list, in this order
};

/// Receives messages and questions: boxes in the window program, lines on standard error in the
/// batch tool, a list in a test. The core reports and continues; nothing is thrown.
class Messages {
 public:
  /// A message is cut to this many bytes, between two characters, before it is shown.
  static constexpr size_t LongestMessage = 199;

  virtual ~Messages() = default;

  /// Shows one message. `text` is without "Internal Error: " and may hold line feeds.
  virtual void Post(Severity severity, const std::string& text) = 0;

  /// Asks a question with up to three buttons; an empty text means no button.
  /// \return 1, 2 or 3 for the button pressed
  virtual int Ask(const std::string& title, const std::vector<std::string>& buttons,
                  const std::string& text) = 0;

  /// Asks for one line of text. The answer may be longer than the prompt allows; `AskForText` cuts
  /// it.
  /// \return the text, or nothing if the user cancelled
  virtual std::optional<std::string> Prompt(const TextPrompt& prompt) = 0;

  /// The line that is being read now, for implementations of `Post`; null while nothing is read.
  /// See `OriginScope`.
  const MessageOrigin* Origin() const { return origin_; }

 private:
  friend class OriginScope;
  const MessageOrigin* origin_ = nullptr;
};

/// While it exists, a file is being read: messages posted meanwhile come from it. A file that is
/// read in the middle of another has its own scope inside the other's.
class OriginScope {
 public:
  /// \param messages  must outlive this
  /// \param point     the point of that file that the messages are about; empty if none
  OriginScope(Messages& messages, std::string file, std::string point = {})
      : messages_(messages),
        outer_(messages.origin_),
        origin_{std::move(file), 0, std::move(point)} {
    messages_.origin_ = &origin_;
  }
  ~OriginScope() { messages_.origin_ = outer_; }
  OriginScope(const OriginScope&) = delete;
  OriginScope& operator=(const OriginScope&) = delete;

  /// Goes to the next line: 1 at the first call.
  void NextLine() { ++origin_.line; }
  /// Goes to a line by its number, for a fault that is reported after later lines were read; 0 for
  /// the file as a whole.
  void GoToLine(size_t line) { origin_.line = line; }

 private:
  Messages& messages_;
  const MessageOrigin* outer_;
  MessageOrigin origin_;
};

/// A note, for which no box interrupts the user. Each "%s" of `format` is replaced by the next
/// argument.
void PostNote(Messages& messages, std::string_view format,
              std::initializer_list<std::string_view> arguments = {});
/// A warning: the user continues.
void NoteWarning(Messages& messages, std::string_view format,
                 std::initializer_list<std::string_view> arguments = {});
/// A fault in the user's data.
void NoteError(Messages& messages, std::string_view format,
               std::initializer_list<std::string_view> arguments = {});
/// A fault in the program, shown with "Internal Error: " in front.
void NoteInternalError(Messages& messages, std::string_view format,
                       std::initializer_list<std::string_view> arguments = {});
/// A fatal error: the front end stops the program after it.
void NoteFatal(Messages& messages, std::string_view format,
               std::initializer_list<std::string_view> arguments = {});

/// Asks a question of up to three buttons; an empty text leaves a button out, and the others keep
/// their numbers. Unlike a message, a question is not cut.
/// \return 1, 2 or 3 for the button pressed
int AskUser(Messages& messages, const std::string& title, const std::string& button1,
            const std::string& button2, const std::string& button3, std::string_view format,
            std::initializer_list<std::string_view> arguments = {});

/// Asks for one line of text of fewer than `prompt.size` bytes. A longer answer is cut between two
/// characters.
/// \return the text, or nothing if the user cancelled
std::optional<std::string> AskForText(Messages& messages, const TextPrompt& prompt);

/// As `AskForText`, for the common prompt of a text of fewer than `size` bytes.
/// \param buffer  the text in the field at first; receives the answer, emptied on cancel
/// \return true on "OK", false on "Cancel"
bool PromptForText(Messages& messages, const std::string& title, const std::string& message,
                   std::string& buffer, size_t size);

/// Keeps every message in a list and answers every question with one button; for tests and for
/// callers that show messages later. A prompt is answered with the text in its field, by the first
/// button, or cancelled.
class RecordedMessages : public Messages {
 public:
  struct Entry {
    Severity severity;
    std::string text;
  };

  /// A question that was asked. A prompt has the buttons "OK" and "Cancel".
  struct Question {
    std::string title;
    std::vector<std::string> buttons;
    std::string text;
  };

  /// \param answer  the button that answers every question, 1 to 3
  explicit RecordedMessages(int answer = 1) : answer_(answer) {}

  void Post(Severity severity, const std::string& text) override;
  int Ask(const std::string& title, const std::vector<std::string>& buttons,
          const std::string& text) override;
  std::optional<std::string> Prompt(const TextPrompt& prompt) override;

  /// In the order in which they were posted.
  const std::vector<Entry>& Entries() const { return entries_; }
  /// In the order in which they were asked.
  const std::vector<Question>& Questions() const { return questions_; }
  void Clear() {
    entries_.clear();
    questions_.clear();
  }

 private:
  int answer_;
  std::vector<Entry> entries_;
  std::vector<Question> questions_;
};

}  // namespace orvane
