#include "shell/map/reload_bar.h"

#include "shell/plain_texts.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QToolTip>

namespace orvane {

ReloadBar::ReloadBar(QWidget* parent)
    : QFrame(parent),
      text_(new QLabel(this)),
      reload_(new QPushButton(QStringLiteral("Reload"), this)),
      decline_(new QPushButton(QStringLiteral("Not Now"), this)) {
  setObjectName(QStringLiteral("reloadBar"));
  setAccessibleName(QStringLiteral("File on the disk has changed"));
  setPalette(QToolTip::palette());
  setForegroundRole(QPalette::ToolTipText);
  setBackgroundRole(QPalette::ToolTipBase);
  setAutoFillBackground(true);
  text_->setObjectName(QStringLiteral("reloadText"));
  text_->setTextFormat(Qt::PlainText);
  text_->setForegroundRole(QPalette::ToolTipText);
  text_->setMinimumWidth(1);  // a narrow window cuts it
  for (QPushButton* button : {reload_, decline_}) button->setAccessibleName(button->text());
  reload_->setToolTip(QStringLiteral("Read the file again"));
  decline_->setToolTip(QStringLiteral("Keep what is open"));
  connect(reload_, &QPushButton::clicked, this, &ReloadBar::reloadRequested);
  connect(decline_, &QPushButton::clicked, this, &ReloadBar::declined);
  auto* layout = new QHBoxLayout(this);
  constexpr int Margin = 4;
  layout->setContentsMargins(2 * Margin, Margin, 2 * Margin, Margin);
  layout->addWidget(text_, 1);
  layout->addWidget(reload_);
  layout->addWidget(decline_);
  hide();
}

void ReloadBar::Show(const QString& text) {
  text_->setText(text);
  text_->setToolTip(PlainTip(text));
  setAccessibleDescription(text);
  setVisible(!text.isEmpty());
}

}  // namespace orvane
