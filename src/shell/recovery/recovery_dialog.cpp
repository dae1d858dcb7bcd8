#include "shell/recovery/recovery_dialog.h"

#include "base/file_names.h"
#include "paint/display_text.h"
#include "shell/quiet_text.h"
#include "shell/window_keys.h"

#include <QButtonGroup>
#include <QDateTime>
#include <QDialogButtonBox>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLocale>
#include <QPushButton>
#include <QRadioButton>
#include <QScreen>
#include <QScrollArea>
#include <QScrollBar>
#include <QVBoxLayout>

#include <utility>

namespace orvane {
namespace {

/// Longer lines of text are hard to read.
constexpr int LettersAcross = 66;

QLabel* MakeLabel(const QString& text, QWidget* parent) {
  auto* label = new QLabel(text, parent);
  // Names that users typed may look like markup.
  label->setTextFormat(Qt::PlainText);
  label->setWordWrap(true);
  return label;
}

/// A path may have no blanks to wrap at. It then wraps after a separator, and anywhere in a name
/// that is too long for a line.
QString BreakablePath(const std::string& path) {
  constexpr int LongestPiece = 30;
  const QString text = DisplayText(path);
  QString breakable;
  int piece = 0;
  for (const QChar letter : text) {
    breakable += letter;
    const bool ends = letter == QLatin1Char('/') || letter.isSpace();
    if (ends || (++piece >= LongestPiece && !letter.isHighSurrogate())) {
      breakable += QChar(0x200B);
      piece = 0;
    }
  }
  return breakable;
}

QString WhereAndWhen(const RecoveryCopy& copy) {
  const QDateTime time = QDateTime::fromSecsSinceEpoch(copy.written);
  // The month in letters, so that nobody takes it for the day.
  const QString when = QLocale().toString(time, QStringLiteral("d MMMM yyyy, h:mm"));
  const std::string folder(DirectoryName(copy.record.fileName));
  if (folder.empty()) return QStringLiteral("Copied %1").arg(when);
  return QStringLiteral("In %1\nCopied %2").arg(BreakablePath(folder), when);
}

}  // namespace

RecoveryDialog::RecoveryDialog(const std::vector<RecoveryOffer>& offers, QWidget* parent)
    : QDialog(parent) {
  setObjectName(QStringLiteral("recoveryDialog"));
  setWindowTitle(QStringLiteral("Unsaved Maps"));
  auto* layout = new QVBoxLayout(this);
  auto* head = MakeLabel(
      QStringLiteral("Orvane ended before these changes were saved. It has kept a copy of "
                     "each map; your own files are as you left them."),
      this);
  setAccessibleDescription(head->text());
  layout->addWidget(head);

  auto* list = new QWidget(this);
  auto* listLayout = new QVBoxLayout(list);
  listLayout->setContentsMargins(0, 0, 0, 0);
  for (const RecoveryOffer& offer : offers) listLayout->addWidget(MakeOffer(offer));
  listLayout->addStretch();
  auto* area = new QScrollArea(this);
  area->setObjectName(QStringLiteral("recoveryList"));
  area->setAccessibleName(QStringLiteral("Maps with unsaved changes"));
  area->setFrameShape(QFrame::NoFrame);
  area->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  area->setWidgetResizable(true);
  area->setWidget(list);
  layout->addWidget(area, 1);

  auto* box = new QDialogButtonBox(this);
  auto* ok = box->addButton(QDialogButtonBox::Ok);
  ok->setDefault(true);
  auto* later = box->addButton(QStringLiteral("Decide &Later"), QDialogButtonBox::RejectRole);
  later->setObjectName(QStringLiteral("recoveryLater"));
  later->setToolTip(QStringLiteral("Keep all copies and ask again at the next start"));
  connect(box, &QDialogButtonBox::accepted, this, &RecoveryDialog::accept);
  connect(box, &QDialogButtonBox::rejected, this, &RecoveryDialog::reject);
  layout->addWidget(box);
  AddWindowKeys(*this, [this] {
    exitRequested_ = true;
    reject();
  });

  const QMargins margins = layout->contentsMargins();
  const int width = LettersAcross * fontMetrics().averageCharWidth() +
                    area->verticalScrollBar()->sizeHint().width();
  const int listHeight = listLayout->heightForWidth(width);
  const int rest = head->heightForWidth(width) + box->sizeHint().height() + 2 * layout->spacing();
  const QSize wanted(width + margins.left() + margins.right(),
                     listHeight + rest + margins.top() + margins.bottom());
  constexpr int ScreenParts = 10;
  constexpr int MostParts = 8;
  const QSize room = screen()->availableSize() * MostParts / ScreenParts;
  resize(wanted.boundedTo(room));
  ok->setFocus();
}

QWidget* RecoveryDialog::MakeOffer(const RecoveryOffer& offer) {
  QString name = DisplayText(BaseName(offer.copy.record.fileName));
  if (!offer.editor.empty())
    name = QStringLiteral("%1, in %2").arg(DisplayText(offer.editor), name);
  const int widest = (LettersAcross - 8) * fontMetrics().averageCharWidth();
  QString title = fontMetrics().elidedText(name, Qt::ElideMiddle, widest);
  auto* frame = new QGroupBox(title.replace(QLatin1Char('&'), QStringLiteral("&&")), this);
  frame->setAccessibleName(name);
  auto* layout = new QVBoxLayout(frame);
  auto* place = MakeLabel(WhereAndWhen(offer.copy), frame);
  MakeTextQuiet(*place);
  layout->addWidget(place);
  QStringList texts;
  for (const std::string& text : offer.differences) texts.append(DisplayText(text));
  auto* differences = MakeLabel(texts.join(QLatin1Char('\n')), frame);
  differences->setObjectName(QStringLiteral("recoveryDifferences"));
  frame->setAccessibleDescription(place->text() + QLatin1Char('\n') + differences->text());
  layout->addWidget(differences);

  struct Choice {
    RecoveryChoice choice;
    QString text, tip;
  };
  const Choice choices[] = {
      {RecoveryChoice::Recover, QStringLiteral("Recover"),
       QStringLiteral("Open the map with its changes; your file stays as it is until you save")},
      {RecoveryChoice::Discard, QStringLiteral("Discard"),
       QStringLiteral("Delete the copy; your file stays as it is")},
      {RecoveryChoice::Later, QStringLiteral("Later"),
       QStringLiteral("Keep the copy and ask again at the next start")}};
  auto* group = new QButtonGroup(frame);
  auto* row = new QHBoxLayout;
  for (const Choice& each : choices) {
    auto* button = new QRadioButton(each.text, frame);
    button->setAccessibleName(QStringLiteral("%1 %2").arg(each.text, name));
    button->setAccessibleDescription(each.tip);
    button->setToolTip(each.tip);
    group->addButton(button, static_cast<int>(each.choice));
    row->addWidget(button);
  }
  row->addStretch();
  layout->addLayout(row);
  // If the file already holds everything, the copy is not needed.
  const auto first = offer.saysTheSame ? RecoveryChoice::Discard : RecoveryChoice::Recover;
  group->button(static_cast<int>(first))->setChecked(true);
  groups_.push_back(group);
  return frame;
}

std::vector<RecoveryChoice> RecoveryDialog::Choices() const {
  std::vector<RecoveryChoice> choices;
  for (const QButtonGroup* group : groups_) {
    choices.push_back(result() == Accepted ? static_cast<RecoveryChoice>(group->checkedId())
                                           : RecoveryChoice::Later);
  }
  return choices;
}

QRadioButton& RecoveryDialog::Button(size_t offer, RecoveryChoice choice) {
  return static_cast<QRadioButton&>(*groups_.at(offer)->button(static_cast<int>(choice)));
}

}  // namespace orvane
