#include "shell/messages/built_box.h"

#include "base/utf8.h"
#include "paint/display_text.h"
#include "shell/messages/title_width.h"
#include "shell/plain_texts.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QComboBox>
#include <QFontMetrics>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScreen>
#include <QScrollArea>
#include <QStyle>
#include <QTextLayout>

#include <algorithm>
#include <utility>

namespace orvane {
namespace {

/// Escape and the close button of the frame count as the second button.
constexpr int ClosingAnswer = 2;

/// Room around a box for the frame that the platform adds.
constexpr QSize FrameRoom(24, 64);

QRect RectOf(const BoxPlace& place) { return {place.x, place.y, place.width, place.height}; }

/// Wraps one line of text to lines of at most `width`.
QStringList Wrapped(const QString& line, const QFont& font, int width) {
  if (QFontMetrics(font).horizontalAdvance(line) <= width) return {line};
  QTextLayout layout(line, font);
  QTextOption option;
  option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
  layout.setTextOption(option);
  layout.beginLayout();
  QStringList lines;
  for (QTextLine part = layout.createLine(); part.isValid(); part = layout.createLine()) {
    part.setLineWidth(width);
    lines.append(line.mid(part.textStart(), part.textLength()).trimmed());
  }
  layout.endLayout();
  return lines;
}

/// The width to which the text after the fourth line is wrapped. One long line across the whole
/// screen is hard to read.
int WidthOfRest(const QStringList& lines, const QFont& font) {
  constexpr int GoodLineLength = 60;
  const QFontMetrics metrics(font);
  int width = GoodLineLength * metrics.averageCharWidth();
  for (const QString& line : lines) width = std::max(width, metrics.horizontalAdvance(line));
  return width;
}

/// The lines of a message as the box shows them.
QStringList ShownLines(const std::string& text, const QFont& font, int widest) {
  QStringList lines;
  for (const std::string& broken : BreakMessage(text)) {
    int width = widest;
    if (lines.size() >= static_cast<qsizetype>(MostMessageLines)) {
      width = std::min(width, WidthOfRest(lines, font));
    }
    // The last one may contain line feeds.
    const QStringList parts = DisplayText(broken).split(QLatin1Char('\n'));
    for (const QString& part : parts) lines.append(Wrapped(part, font, width));
  }
  return lines;
}

/// A button's text with Qt's mark before its letter.
QString MarkedText(const BoxButton& button) {
  QString text = DisplayText(button.text);
  qsizetype letter = -1;
  if (button.mnemonic) {
    const std::string before = button.text.substr(0, *button.mnemonic);
    letter = IsValidUtf8(button.text) ? DisplayText(before).size()
                                      : static_cast<qsizetype>(before.size());
  }
  QString marked;
  for (qsizetype i = 0; i < text.size(); ++i) {
    if (i == letter) marked += QLatin1Char('&');
    marked += text[i];
    if (text[i] == QLatin1Char('&')) marked += text[i];
  }
  return marked;
}

BoxPlace RoomOf(const QScreen& screen) {
  const QRect room = screen.availableGeometry();
  return {.x = room.x(), .y = room.y(), .width = room.width(), .height = room.height()};
}

}  // namespace

BuiltBox::BuiltBox(const QString& title, const std::string& text,
                   const std::vector<std::string>& buttons, QWidget* parent)
    : QDialog(parent) {
  setObjectName(QStringLiteral("questionBox"));
  setWindowTitle(PlainTitle(title));
  Fill(text, buttons);
}

BuiltBox::BuiltBox(const TextPrompt& prompt, QWidget* parent) : QDialog(parent) {
  setObjectName(QStringLiteral("promptBox"));
  setWindowTitle(PlainTitle(DisplayText(prompt.title)));
  MakeField(prompt);
  Fill(prompt.message, {"OK", "Cancel"});
  field_->setAccessibleName(accessibleDescription());
  fieldWidget_->setAccessibleName(accessibleDescription());
}

void BuiltBox::Fill(const std::string& text, const std::vector<std::string>& buttons) {
  const QWidget* over = parentWidget();
  const BoxPlace screen = RoomOf(*(over != nullptr ? over->screen() : this->screen()));
  const int widest = screen.width - FrameRoom.width();
  const int highest = screen.height - FrameRoom.height();

  const QFontMetrics metrics(font());
  BoxMeasures measures;
  // The layout keeps this much of the box's width from the text.
  constexpr int TextMargins = 72;
  const QStringList lines = ShownLines(text, font(), widest - TextMargins);
  for (const QString& line : lines) measures.lineWidths.push_back(metrics.horizontalAdvance(line));
  measures.lineHeight = metrics.lineSpacing();
  const std::vector<BoxButton> row = ButtonRow(buttons);
  for (const BoxButton& button : row) {
    measures.buttonWidths.push_back(metrics.horizontalAdvance(DisplayText(button.text)));
  }
  measures.buttonHeight = QPushButton(QStringLiteral("X")).sizeHint().height();
  if (fieldWidget_ != nullptr) {
    measures.editHeight = fieldWidget_->sizeHint().height();
    measures.editWidth = fieldWidget_->minimumWidth();
  }
  measures.titleWidth = TitleWidth(windowTitle(), over != nullptr ? *over : *this);

  const BoxLayout layout = LayOutBox(measures, widest, highest);
  MakePicture();
  MakeText(lines, layout.text);
  if (fieldWidget_ != nullptr) fieldWidget_->setGeometry(RectOf(layout.edit));
  MakeButtons(row, layout.buttons);
  setFixedSize(layout.width, layout.height);
  const BoxPlace place = PlaceBox(layout.width, layout.height, screen);
  move(place.x, place.y);
}

void BuiltBox::MakePicture() {
  auto* picture = new QLabel(this);
  const QIcon icon = style()->standardIcon(QStyle::SP_MessageBoxQuestion, nullptr, this);
  picture->setPixmap(icon.pixmap(QSize(BoxPictureSize, BoxPictureSize)));
  picture->setGeometry(BoxPictureAt, BoxPictureAt, BoxPictureSize, BoxPictureSize);
}

void BuiltBox::MakeText(const QStringList& lines, const BoxPlace& place) {
  const QString all = lines.join(QLatin1Char('\n'));
  auto* text = new QLabel(this);
  text->setObjectName(QStringLiteral("boxText"));
  // Names that users typed may look like markup.
  text->setTextFormat(Qt::PlainText);
  text->setAlignment(Qt::AlignLeft | Qt::AlignTop);
  text->setText(all);
  setAccessibleDescription(all);
  const bool fits = lines.size() * fontMetrics().lineSpacing() <= place.height;
  if (fits) {
    text->setGeometry(RectOf(place));
    return;
  }
  auto* area = new QScrollArea(this);
  area->setObjectName(QStringLiteral("boxScroll"));
  area->setAccessibleName(all);
  area->setFrameShape(QFrame::NoFrame);
  area->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  area->setWidget(text);
  text->adjustSize();
  // The bar is in the margin of the box, so that it covers no text.
  area->setGeometry(RectOf(place).adjusted(
      0, 0, style()->pixelMetric(QStyle::PM_ScrollBarExtent, nullptr, this), 0));
}

void BuiltBox::MakeField(const TextPrompt& prompt) {
  if (prompt.earlier.empty()) {
    field_ = new QLineEdit(this);
    fieldWidget_ = field_;
  } else {
    auto* list = new QComboBox(this);
    list->setObjectName(QStringLiteral("earlierTexts"));
    list->setEditable(true);
    list->setInsertPolicy(QComboBox::NoInsert);
    // "Pde2" must not become "Pde20" because the user searched for that before.
    list->setCompleter(nullptr);
    list->setDuplicatesEnabled(true);  // else "camp" becomes the "Camp" of the list
    list->view()->setAccessibleName(QStringLiteral("Earlier texts"));
    for (const std::string& text : prompt.earlier) list->addItem(DisplayText(text));
    field_ = list->lineEdit();
    fieldWidget_ = list;
  }
  field_->setObjectName(QStringLiteral("boxField"));
  const int frame = 2 * fieldWidget_->sizeHint().height();  // and the arrow of a list
  fieldWidget_->setMinimumWidth(prompt.columns * fontMetrics().averageCharWidth() + frame);
  field_->setText(DisplayText(prompt.text));
  LimitField(prompt.size, prompt.text);
  field_->selectAll();
  firstFocus_ = fieldWidget_;
}

/// The limit counts bytes, the field counts characters. Neither may be exceeded.
void BuiltBox::LimitField(size_t size, const std::string& before) {
  if (size == 0) return;
  const size_t most = std::max<size_t>(size - 1, 1);
  field_->setMaxLength(static_cast<int>(most));
  connect(field_, &QLineEdit::textEdited, this, [this, most, before](const QString& typed) {
    QString text = typed;
    while (StoredText(text, before).size() > most) {
      const bool isPair = text.size() > 1 && text.back().isLowSurrogate();
      text.chop(isPair ? 2 : 1);
    }
    if (text.size() == typed.size()) return;
    const int cursor = field_->cursorPosition();
    field_->setText(text);
    field_->setCursorPosition(cursor);
  });
}

void BuiltBox::MakeButtons(const std::vector<BoxButton>& row, const std::vector<BoxPlace>& places) {
  for (size_t i = 0; i < row.size(); ++i) {
    auto* button = new QPushButton(MarkedText(row[i]), this);
    button->setObjectName(QStringLiteral("boxButton%1").arg(row[i].answer));
    button->setAccessibleName(DisplayText(row[i].text));
    button->setGeometry(RectOf(places[i]));
    button->setDefault(i == 0);
    connect(button, &QPushButton::clicked, this, [this, answer = row[i].answer] { done(answer); });
    if (firstFocus_ == nullptr) firstFocus_ = button;
  }
}

int BuiltBox::Run() {
  if (firstFocus_ != nullptr) firstFocus_->setFocus();
  return exec();
}

QString BuiltBox::FieldText() const { return field_ == nullptr ? QString() : field_->text(); }

void BuiltBox::reject() { done(ClosingAnswer); }

}  // namespace orvane
