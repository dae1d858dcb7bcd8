#include "shell/map/list_pane.h"

#include <QLabel>
#include <QListWidget>
#include <QVBoxLayout>

namespace orvane {

ListPane::ListPane(const QString& title, QWidget* parent)
    : QWidget(parent), list_(new QListWidget(this)) {
  auto* heading = new QLabel(title, this);
  heading->setTextFormat(Qt::PlainText);
  heading->setMargin(3);
  heading->setBuddy(list_);
  heading->setMinimumWidth(1);  // a narrow pane cuts off its title
  QFont bold = heading->font();
  bold.setBold(true);
  heading->setFont(bold);
  list_->setAccessibleName(title);
  list_->setMinimumSize(1, 1);
  list_->setFrameShape(QFrame::NoFrame);
  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->setSpacing(0);
  layout->addWidget(heading);
  layout->addWidget(list_, 1);
}

}  // namespace orvane
