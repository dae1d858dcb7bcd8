#include "shell/messages/text_viewer.h"

#include "base/file_names.h"
#include "base/files.h"
#include "paint/display_text.h"
#include "shell/files/local_files.h"

#include <QFontDatabase>
#include <QLabel>
#include <QLocale>
#include <QPlainTextEdit>
#include <QShortcut>
#include <QTextBlock>
#include <QVBoxLayout>

namespace orvane {
namespace {

/// The text with line feeds alone, so that the lines of the view are those of the reader: old
/// files end a line by a carriage return, or by this byte.
std::string WithLineFeeds(const std::string& text) {
  constexpr char OldEnd = '\xFF';
  std::string lines;
  lines.reserve(text.size());
  for (size_t i = 0; i < text.size(); ++i) {
    const char c = text[i];
    if (c == '\r' && i + 1 < text.size() && text[i + 1] == '\n') continue;
    const bool ends = c == '\r' || c == OldEnd;
    // A byte of zero would end the text for the view.
    lines += ends ? '\n' : c == '\0' ? ' ' : c;
  }
  return lines;
}

}  // namespace

TextViewer::TextViewer(QWidget* parent)
    : QWidget(parent, Qt::Window), text_(new QPlainTextEdit(this)), place_(new QLabel(this)) {
  setObjectName(QStringLiteral("textViewer"));
  text_->setObjectName(QStringLiteral("viewedText"));
  text_->setReadOnly(true);
  text_->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
  text_->setLineWrapMode(QPlainTextEdit::NoWrap);
  text_->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
  text_->setTabStopDistance(8.0 * text_->fontMetrics().horizontalAdvance(QLatin1Char(' ')));
  text_->setAccessibleName(tr("Text of the file"));
  place_->setObjectName(QStringLiteral("viewedPlace"));
  place_->setTextFormat(Qt::PlainText);
  place_->setContentsMargins(8, 4, 8, 4);

  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->setSpacing(0);
  layout->addWidget(text_);
  layout->addWidget(place_);
  for (const QKeySequence& key :
       {QKeySequence(Qt::Key_Escape), QKeySequence(QKeySequence::Close)}) {
    connect(new QShortcut(key, this), &QShortcut::activated, this, &QWidget::close);
  }
  resize(760, 480);
}

void TextViewer::ShowLine(const std::string& file, size_t line) {
  setWindowTitle(DisplayText(BaseName(file)));
  text_->clear();
  show();  // now, so that the line can come to the middle
  const auto content = ReadWholeFile(file);
  if (!content) {
    place_->setText(tr("%1 can't be read").arg(LocalFileName(file)));
  } else if (content->size() > LargestShown) {
    place_->setText(tr("%1 is too large to be shown").arg(LocalFileName(file)));
  } else {
    text_->setPlainText(DisplayText(WithLineFeeds(*content)));
    place_->setText(line == 0 ? LocalFileName(file)
                              : tr("Line %1 of %2")
                                    .arg(QLocale().toString(static_cast<qulonglong>(line)),
                                         LocalFileName(file)));
    Mark(line);
  }
  raise();
  activateWindow();
  text_->setFocus();
}

void TextViewer::Mark(size_t line) {
  QList<QTextEdit::ExtraSelection> marks;
  const QTextBlock block = text_->document()->findBlockByNumber(static_cast<int>(line) - 1);
  if (line > 0 && block.isValid()) {
    QTextEdit::ExtraSelection mark;
    mark.cursor = QTextCursor(block);
    QColor color = palette().color(QPalette::Highlight);
    color.setAlphaF(0.3F);
    mark.format.setBackground(color);
    mark.format.setProperty(QTextFormat::FullWidthSelection, true);
    marks.append(mark);
    text_->setTextCursor(mark.cursor);
    text_->centerCursor();
  }
  text_->setExtraSelections(marks);
}

}  // namespace orvane
