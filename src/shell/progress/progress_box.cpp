#include "shell/progress/progress_box.h"

#include "shell/messages/title_width.h"
#include "shell/plain_texts.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QVBoxLayout>

#include <algorithm>

namespace orvane {
namespace {

constexpr int BarWidth = 340;
constexpr int BarSteps = 1000;

QString TextOf(WorkStage stage) {
  switch (stage) {
    case WorkStage::Reading:
      return QStringLiteral("Reading the file");
    case WorkStage::Solving:
      return QStringLiteral("Calculating positions");
    case WorkStage::Analyzing:
      return QStringLiteral("Calculating home ranges");
    case WorkStage::Importing:
      return QStringLiteral("Adding the tracks");
    case WorkStage::Contouring:
      return QStringLiteral("Drawing contours");
    case WorkStage::Writing:
      return QStringLiteral("Writing the files");
    case WorkStage::Printing:
      return QStringLiteral("Drawing the pages");
  }
  return {};
}

}  // namespace

ProgressBox::ProgressBox(const QString& occasion, QWidget* parent)
    : QDialog(parent),
      stage_(new QLabel(this)),
      bar_(new QProgressBar(this)),
      cancel_(new QPushButton(QStringLiteral("Cancel"), this)) {
  setObjectName(QStringLiteral("progressBox"));
  setWindowTitle(PlainTitle(occasion));
  setWindowModality(Qt::ApplicationModal);
  stage_->setObjectName(QStringLiteral("progressStage"));
  bar_->setObjectName(QStringLiteral("progressBar"));
  bar_->setAccessibleName(QStringLiteral("Progress"));
  bar_->setTextVisible(false);
  bar_->setMinimumWidth(BarWidth);
  cancel_->setObjectName(QStringLiteral("progressCancel"));
  cancel_->setAccessibleName(cancel_->text());
  cancel_->setDefault(true);
  connect(cancel_, &QPushButton::clicked, this, &ProgressBox::reject);
  auto* layout = new QVBoxLayout(this);
  layout->addWidget(stage_);
  layout->addWidget(bar_);
  layout->addSpacing(4);
  auto* buttons = new QHBoxLayout;
  buttons->addStretch();
  buttons->addWidget(cancel_);
  layout->addLayout(buttons);
  WidenToTitle(*this);
  layout->setSizeConstraint(QLayout::SetFixedSize);
}

void ProgressBox::ShowStage(WorkStage stage, size_t done, size_t of, bool mayCancel) {
  if (stopping_) return;
  stage_->setText(TextOf(stage));
  // If the end is not known, the bar only shows that the work continues.
  bar_->setRange(0, of == 0 ? 0 : BarSteps);
  if (of != 0) {
    const double part = static_cast<double>(std::min(done, of)) / static_cast<double>(of);
    bar_->setValue(static_cast<int>(part * BarSteps));
  }
  cancel_->setEnabled(mayCancel);
}

void ProgressBox::ShowStopping() {
  stopping_ = true;
  stage_->setText(QStringLiteral("Stopping"));
  bar_->setRange(0, 0);
  cancel_->setEnabled(false);
}

void ProgressBox::reject() {
  if (!stopping_ && cancel_->isEnabled()) Q_EMIT cancelRequested();
}

}  // namespace orvane
