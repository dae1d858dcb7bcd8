#include "shell/messages/box_messages.h"

#include "paint/display_text.h"
#include "shell/messages/built_box.h"
#include "shell/messages/title_width.h"
#include "shell/plain_texts.h"
#include "shell/surroundings.h"

#include <QApplication>
#include <QCheckBox>
#include <QCoreApplication>
#include <QMessageBox>

#include <cstdlib>
#include <utility>

namespace orvane {
namespace {

QMessageBox::Icon BoxIcon(Severity severity) {
  return severity == Severity::Warning ? QMessageBox::Warning : QMessageBox::Critical;
}

QString ShownText(Severity severity, const std::string& text) {
  const QString shown = DisplayText(text);
  return severity == Severity::InternalError ? QStringLiteral("Internal Error: ") + shown : shown;
}

/// Adds places where a path, or any other long word, may be broken, so that no box is wider than a
/// screen.
QString WithBreaks(const QString& text) {
  constexpr int LongestWord = 50;
  constexpr QChar BreakHere(0x200B);
  QString broken;
  int word = 0;
  for (const QChar c : text) {
    word = c.isSpace() ? 0 : word + 1;
    broken += c;
    if (word < LongestWord || c.isHighSurrogate()) continue;
    broken += BreakHere;
    word = 0;
  }
  return broken;
}

/// The lines that fit into a box. The messages window shows all of them.
QString FirstLines(const QString& text) {
  constexpr qsizetype MostLines = 12;
  constexpr QChar MoreFollows(0x2026);
  const QStringList lines = text.split(QLatin1Char('\n'));
  if (lines.size() <= MostLines) return text;
  return lines.first(MostLines).join(QLatin1Char('\n')) + QLatin1Char('\n') + MoreFollows;
}

}  // namespace

BoxMessages::BoxMessages(Surroundings& surroundings) : surroundings_(surroundings) {}

void BoxMessages::Post(Severity severity, const std::string& text) {
  const QString shown = ShownText(severity, text);
  const size_t number = log_.Add(severity, shown, Origin());
  if (severity == Severity::Note) {
    if (showNote) showNote(number, shown);
    return;
  }
  const Waiting message{.number = number, .severity = severity, .text = shown};
  if (severity == Severity::Fatal) {
    ShowWaiting();
    ShowBox(message, {}, false);
    surroundings_.EndAtOnce(FatalExit);
  } else if (batchDepth_ == 0) {
    ShowBox(message, {}, false);
  } else if (waiting_.size() <= MostBoxes) {
    waiting_.push_back(message);
  }
}

void BoxMessages::BeginBatch(const QString& occasion) {
  if (batchDepth_++ == 0) occasion_ = occasion;
}

void BoxMessages::EndBatch() {
  if (--batchDepth_ == 0) ShowWaiting();
}

void BoxMessages::ShowWaiting() {
  // A box runs its own event loop, so more messages may come. They wait for the next turn.
  const std::vector<Waiting> messages = std::exchange(waiting_, {});
  const QString occasion = occasion_;
  for (size_t i = 0; i < messages.size(); ++i) {
    const bool tooMany = i >= MostBoxes;
    const bool withCheck = i >= BoxesWithoutCheck;
    if (!tooMany && !ShowBox(messages[i], occasion, withCheck)) continue;
    const size_t rest = tooMany ? i : i + 1;
    if (rest < messages.size() && showInWindow) showInWindow(log_.RowOf(messages[rest].number));
    return;
  }
}

bool BoxMessages::ShowBox(const Waiting& message, const QString& occasion, bool withCheck) {
  const QString name = QApplication::applicationDisplayName();
  QMessageBox box(BoxIcon(message.severity), name, WithBreaks(FirstLines(message.text)),
                  QMessageBox::Ok, QApplication::activeWindow());
  box.setObjectName(QStringLiteral("messageBox"));
  if (!occasion.isEmpty()) box.setWindowTitle(PlainTitle(occasion));
  // Names that users typed may look like markup.
  box.setTextFormat(Qt::PlainText);
  QCheckBox* check = nullptr;
  if (withCheck) {
    check = new QCheckBox(QStringLiteral("&Show the rest in the messages window only"), &box);
    check->setObjectName(QStringLiteral("showRestInWindow"));
    box.setCheckBox(check);
  }
  WidenToTitle(box);  // a message box takes its size only from its layout
  box.exec();
  return check != nullptr && check->isChecked();
}

int BoxMessages::Ask(const std::string& title, const std::vector<std::string>& buttons,
                     const std::string& text) {
  BuiltBox box(DisplayText(title), text, buttons, QApplication::activeWindow());
  return box.Run();
}

std::optional<std::string> BoxMessages::Prompt(const TextPrompt& prompt) {
  BuiltBox box(prompt, QApplication::activeWindow());
  if (box.Run() != 1) return std::nullopt;
  return StoredText(box.FieldText(), prompt.text);
}

}  // namespace orvane
