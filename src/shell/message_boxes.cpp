#include "shell/message_boxes.h"

#include "paint/display_text.h"

#include <QApplication>
#include <QCoreApplication>
#include <QDialog>
#include <QDialogButtonBox>
#include <QInputDialog>
#include <QLabel>
#include <QListWidget>
#include <QMessageBox>
#include <QPushButton>
#include <QStyle>
#include <QVBoxLayout>

#include <cstdlib>
#include <utility>

namespace orvane {
namespace {

QString Tr(const char* text) { return QCoreApplication::translate("MessageBoxes", text); }

QString WithCount(const char* text, size_t count) {
  return QCoreApplication::translate("MessageBoxes", text, nullptr, static_cast<int>(count));
}

QMessageBox::Icon BoxIcon(Severity severity) {
  return severity == Severity::Warning ? QMessageBox::Warning : QMessageBox::Critical;
}

QIcon ListIcon(Severity severity) {
  const auto pixmap =
      severity == Severity::Warning ? QStyle::SP_MessageBoxWarning : QStyle::SP_MessageBoxCritical;
  return QApplication::style()->standardIcon(pixmap);
}

QString ShownText(Severity severity, const std::string& text) {
  const QString shown = DisplayText(text);
  return severity == Severity::InternalError ? QStringLiteral("Internal Error: ") + shown : shown;
}

}  // namespace

BoxMessages::BoxMessages() : endProgram([](int status) { std::exit(status); }) {}

void BoxMessages::Post(Severity severity, const std::string& text) {
  const Waiting message{severity, ShownText(severity, text)};
  if (severity == Severity::Fatal) {
    ShowWaiting();
    ShowBox(message);
    endProgram(FatalExit);
    return;
  }
  if (batchDepth_ == 0) {
    ShowBox(message);
    return;
  }
  ++waitingCount_;
  if (waiting_.size() < MostListed) waiting_.push_back(message);
}

void BoxMessages::BeginBatch(const QString& occasion) {
  if (batchDepth_++ == 0) occasion_ = occasion;
}

void BoxMessages::EndBatch() {
  if (--batchDepth_ == 0) ShowWaiting();
}

void BoxMessages::ShowWaiting() {
  // A box runs its own event loop, from which more may come: they wait for their own turn.
  const std::vector<Waiting> messages = std::exchange(waiting_, {});
  const size_t count = std::exchange(waitingCount_, 0);
  if (count > MostSingleBoxes) {
    ShowList(messages, count);
    return;
  }
  for (const Waiting& message : messages) ShowBox(message);
}

void BoxMessages::ShowBox(const Waiting& message) {
  QMessageBox box(BoxIcon(message.severity), QApplication::applicationDisplayName(), message.text,
                  QMessageBox::Ok, QApplication::activeWindow());
  // Texts hold names that users typed, and these may look like markup.
  box.setTextFormat(Qt::PlainText);
  box.exec();
}

void BoxMessages::ShowList(const std::vector<Waiting>& messages, size_t count) const {
  QDialog dialog(QApplication::activeWindow());
  dialog.setWindowTitle(QApplication::applicationDisplayName());
  auto* layout = new QVBoxLayout(&dialog);

  auto* heading = new QLabel(&dialog);
  heading->setTextFormat(Qt::PlainText);
  heading->setWordWrap(true);
  heading->setText(Tr("There were %1 messages while %2:")
                       .arg(QLocale().toString(static_cast<qulonglong>(count)), occasion_));
  layout->addWidget(heading);

  auto* list = new QListWidget(&dialog);
  list->setAccessibleName(Tr("Messages"));
  list->setWordWrap(true);
  list->setSelectionMode(QAbstractItemView::ExtendedSelection);
  list->setUniformItemSizes(false);
  for (const Waiting& message : messages) {
    new QListWidgetItem(ListIcon(message.severity), message.text, list);
  }
  if (count > messages.size()) {
    auto* more = new QListWidgetItem(WithCount("and %n more", count - messages.size()), list);
    more->setFlags(Qt::NoItemFlags);
  }
  layout->addWidget(list);

  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok, &dialog);
  QObject::connect(buttons, &QDialogButtonBox::accepted, &dialog, &QDialog::accept);
  layout->addWidget(buttons);
  dialog.resize(560, 360);
  dialog.exec();
}

int BoxMessages::Ask(const std::string& title, const std::vector<std::string>& buttons,
                     const std::string& text) {
  QMessageBox box(QMessageBox::Question, DisplayText(title), DisplayText(text),
                  QMessageBox::NoButton, QApplication::activeWindow());
  box.setTextFormat(Qt::PlainText);
  std::vector<QAbstractButton*> made;
  for (const std::string& button : buttons) {
    const bool shown = !button.empty();
    // All in one role, so that no platform changes their order.
    made.push_back(shown ? box.addButton(DisplayText(button), QMessageBox::ActionRole) : nullptr);
  }
  // The first button is the default; closing the box counts as the second.
  if (!made.empty() && made[0] != nullptr) {
    box.setDefaultButton(qobject_cast<QPushButton*>(made[0]));
    box.setEscapeButton(made[0]);
  }
  if (made.size() > 1 && made[1] != nullptr) box.setEscapeButton(made[1]);
  box.exec();
  for (size_t i = 0; i < made.size(); ++i) {
    if (made[i] != nullptr && made[i] == box.clickedButton()) return static_cast<int>(i) + 1;
  }
  return made.size() > 1 && made[1] != nullptr ? 2 : 1;
}

std::optional<std::string> BoxMessages::Prompt(const std::string& title, const std::string& message,
                                               const std::string& text) {
  bool accepted = false;
  const QString answer =
      QInputDialog::getText(QApplication::activeWindow(), DisplayText(title), DisplayText(message),
                            QLineEdit::Normal, DisplayText(text), &accepted);
  if (!accepted) return std::nullopt;
  return StoredText(answer, text);
}

}  // namespace orvane
