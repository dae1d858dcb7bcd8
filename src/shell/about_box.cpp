#include "shell/about_box.h"

#include "commands/map_facts.h"
#include "paint/display_text.h"
#include "shell/messages/title_width.h"

#include <QCoreApplication>
#include <QDialogButtonBox>
#include <QFrame>
#include <QLabel>
#include <QPushButton>
#include <QScreen>
#include <QVBoxLayout>

namespace orvane {

AboutBox::AboutBox(const Map* map, QWidget* parent) : QDialog(parent) {
  setObjectName(QStringLiteral("aboutBox"));
  setWindowTitle(QStringLiteral("About Orvane"));
  auto* layout = new QVBoxLayout(this);
  layout->setSizeConstraint(QLayout::SetFixedSize);  // as wide and high as its lines

  auto* name = new QLabel(QStringLiteral("Orvane"), this);
  QFont large = name->font();
  large.setPointSizeF(large.pointSizeF() * 1.6);
  large.setBold(true);
  name->setFont(large);
  layout->addWidget(name);
  layout->addWidget(
      new QLabel(QStringLiteral("Version %1").arg(QCoreApplication::applicationVersion()), this));
  layout->addWidget(new QLabel(QStringLiteral("Maps and home ranges for field biologists"), this));
  if (map != nullptr) AddCredits(*map);

  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok, this);
  buttons->setCenterButtons(true);
  buttons->button(QDialogButtonBox::Ok)->setAccessibleName(QStringLiteral("OK"));
  connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
  layout->addSpacing(8);
  layout->addWidget(buttons);
  WidenToTitle(*this);
}

void AboutBox::AddCredits(const Map& map) {
  const std::vector<std::string> lines = CreditLines(map);
  if (lines.empty()) return;
  auto* rule = new QFrame(this);
  rule->setFrameShape(QFrame::HLine);
  rule->setFrameShadow(QFrame::Sunken);
  layout()->addWidget(rule);
  // The box grows with its lines, up to the size of the screen.
  const int room = screen()->availableSize().width() * 2 / 3;
  for (const std::string& line : lines) {
    auto* credit = new QLabel(DisplayText(line), this);
    credit->setObjectName(QStringLiteral("credit"));
    credit->setTextFormat(Qt::PlainText);
    if (credit->sizeHint().width() > room) {
      credit->setWordWrap(true);
      credit->setFixedWidth(room);
    }
    layout()->addWidget(credit);
  }
}

}  // namespace orvane
