#include "shell/messages/text_viewer.h"

#include "base/file_names.h"
#include "base/files.h"
#include "paint/display_text.h"
#include "shell/files/local_files.h"
#include "shell/messages/numbered_text.h"
#include "shell/plain_texts.h"
#include "shell/window_keys.h"

#include <QFontDatabase>
#include <QHBoxLayout>
#include <QLabel>
#include <QLocale>
#include <QPushButton>
#include <QShortcut>
#include <QToolTip>
#include <QVBoxLayout>

#include <algorithm>

namespace orvane {
namespace {

/// The bytes at which the reader ends a line; a carriage return may have a line feed after it.
bool EndsLine(char c) { return c == '\n' || c == '\r' || c == '\xFF'; }

/// A line as shown. A character that would end a line of the view, or the text, becomes a blank, so
/// that the view counts lines as the reader does.
QString ShownLine(std::string_view line) {
  constexpr QChar Blank(u' ');
  QString shown = DisplayText(line);
  for (const char16_t odd : {u'\0', u'\u2029', u'\uFDD0', u'\uFDD1'}) {
    shown.replace(QChar(odd), Blank);
  }
  return shown;
}

QString ShownText(std::string_view content) {
  QString text;
  text.reserve(static_cast<qsizetype>(content.size()));
  while (true) {
    const auto* const end = std::find_if(content.begin(), content.end(), EndsLine);
    const auto length = static_cast<size_t>(end - content.begin());
    text += ShownLine(content.substr(0, length));
    if (length == content.size()) return text;
    text += u'\n';
    content.remove_prefix(length + (content.substr(length).starts_with("\r\n") ? 2 : 1));
  }
}

QLabel* MakeLabel(const char* name, QWidget* parent) {
  auto* label = new QLabel(parent);
  label->setObjectName(QLatin1String(name));
  label->setTextFormat(Qt::PlainText);
  label->setContentsMargins(8, 4, 8, 4);
  return label;
}

}  // namespace

TextViewer::TextViewer(QWidget* parent)
    : QWidget(parent, Qt::Window),
      message_(MakeLabel("viewedMessage", this)),
      notice_(MakeLabel("viewedNotice", this)),
      text_(new NumberedText(this)),
      where_(MakeLabel("viewedPlace", this)),
      previous_(MakeStep(QStringLiteral("&Previous Message"), "previousMessage",
                         QKeySequence(Qt::SHIFT | Qt::Key_F8), -1)),
      next_(MakeStep(QStringLiteral("&Next Message"), "nextMessage", QKeySequence(Qt::Key_F8), 1)) {
  setObjectName(QStringLiteral("textViewer"));
  text_->setObjectName(QStringLiteral("viewedText"));
  text_->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
  text_->setTabStopDistance(8.0 * text_->fontMetrics().horizontalAdvance(QLatin1Char(' ')));
  text_->setAccessibleName(QStringLiteral("Text of the file"));
  message_->setWordWrap(true);
  notice_->setWordWrap(true);
  notice_->setText(
      QStringLiteral("The file has changed since Orvane read it. The lines may have moved."));
  notice_->setPalette(QToolTip::palette());
  notice_->setForegroundRole(QPalette::ToolTipText);
  notice_->setBackgroundRole(QPalette::ToolTipBase);
  notice_->setAutoFillBackground(true);
  notice_->hide();

  auto* bottom = new QHBoxLayout;
  bottom->setContentsMargins(0, 4, 8, 4);
  bottom->addWidget(where_, 1);
  bottom->addWidget(previous_);
  bottom->addWidget(next_);
  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->setSpacing(0);
  layout->addWidget(message_);
  layout->addWidget(notice_);
  layout->addWidget(text_, 1);
  layout->addLayout(bottom);
  AddWindowKeys(*this, [this] { Q_EMIT exitRequested(); });
  OfferSteps({});
  resize(860, 520);
}

QPushButton* TextViewer::MakeStep(const QString& text, const char* name, const QKeySequence& key,
                                  int step) {
  auto* button = new QPushButton(text, this);
  button->setObjectName(QLatin1String(name));
  button->setAutoDefault(false);
  button->setToolTip(key.toString(QKeySequence::NativeText));
  connect(button, &QPushButton::clicked, this, [this, step] { Q_EMIT stepRequested(step); });
  connect(new QShortcut(key, this), &QShortcut::activated, button, &QPushButton::click);
  return button;
}

void TextViewer::OfferSteps(const ViewerSteps& offered) {
  previous_->setEnabled(offered.previous);
  next_->setEnabled(offered.next);
}

void TextViewer::Show(const ViewedPlace& place) {
  place_ = place;
  setWindowTitle(PlainTitle(QStringLiteral("%1 (text)").arg(DisplayText(BaseName(place.file)))));
  message_->setText(place.message);
  message_->setVisible(!place.message.isEmpty());
  text_->clear();
  show();  // now, so that the line can be centred
  Read();
  raise();
  activateWindow();
  text_->setFocus();
}

void TextViewer::Read() {
  const QString name = LocalFileName(place_.file);
  shownState_ = StateOfFile(place_.file);
  notice_->hide();
  const auto content = ReadWholeFile(place_.file);
  if (!content) {
    text_->clear();
    where_->setText(QStringLiteral("%1 can't be read").arg(name));
    return;
  }
  if (content->size() > LargestShown) {
    text_->clear();
    where_->setText(QStringLiteral("%1 is too large to be shown").arg(name));
    return;
  }
  notice_->setVisible(shownState_ != place_.fileState);
  text_->setPlainText(ShownText(*content));
  const QString line = QLocale().toString(static_cast<qulonglong>(place_.line));
  where_->setText(place_.line == 0 ? name : QStringLiteral("Line %1 of %2").arg(line, name));
  text_->MarkLine(place_.line);
}

void TextViewer::changeEvent(QEvent* event) {
  QWidget::changeEvent(event);
  // The user may have changed the file in an editor.
  const bool returned = event->type() == QEvent::ActivationChange && isActiveWindow();
  if (returned && isVisible() && StateOfFile(place_.file) != shownState_) Read();
}

}  // namespace orvane
