#include "shell/panes/titled_pane.h"

#include "shell/panes/pane_model.h"
#include "shell/panes/pane_view.h"

#include <QLabel>
#include <QVBoxLayout>

namespace orvane {

TitledPane::TitledPane(const QString& title, PaneModel& model, QWidget* parent)
    : QWidget(parent), rows_(new PaneView(model, title, this)) {
  model.setParent(this);
  auto* heading = new QLabel(title, this);
  heading->setTextFormat(Qt::PlainText);
  heading->setMargin(3);
  heading->setBuddy(rows_);
  heading->setMinimumWidth(1);  // a narrow pane cuts its title
  QFont bold = heading->font();
  bold.setBold(true);
  heading->setFont(bold);
  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->setSpacing(0);
  layout->addWidget(heading);
  layout->addWidget(rows_, 1);
  connect(rows_, &PaneView::controlRequested, this, &TitledPane::controlRequested);
  connect(rows_, &PaneView::deleteRequested, this, &TitledPane::deleteRequested);
  connect(rows_, &PaneView::menuRequested, this, &TitledPane::menuRequested);
}

}  // namespace orvane
