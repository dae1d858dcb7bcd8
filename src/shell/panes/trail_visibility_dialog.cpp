#include "shell/panes/trail_visibility_dialog.h"

#include "paint/display_text.h"
#include "shell/messages/title_width.h"
#include "shell/panes/radio_box.h"
#include "view/fills.h"

#include <QCheckBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QRadioButton>

#include <utility>

namespace orvane {

TrailVisibilityDialog::TrailVisibilityDialog(const TrailVisibility& values, Apply apply,
                                             QWidget* parent)
    : QDialog(parent),
      apply_(std::move(apply)),
      visible_(new QCheckBox(tr("Visible"), this)),
      color_(new QLineEdit(DisplayText(values.color), this)),
      lines_(new RadioBox(
          tr("Line Style"),
          {{LineSolid, tr("Solid")}, {LineDotted, tr("Dotted")}, {LineDashed, tr("Dashed")}},
          this)),
      filled_(new QCheckBox(tr("Filled"), this)),
      patterns_(new RadioBox(tr("Fill Pattern"),
                             {{FillRising, QStringLiteral("//")},
                              {FillFalling, QStringLiteral("\\")},
                              {FillHorizontal, QStringLiteral("==")},
                              {FillVertical, QStringLiteral("||")},
                              {FillDiagonals, QStringLiteral("xx")},
                              {FillCross, QStringLiteral("++")}},
                             this)),
      solidFill_(new QRadioButton(tr("Solid"), this)),
      labels_(new RadioBox(tr("Show Point Labels"),
                           {{LabelNone, tr("None")},
                            {LabelFirstLast, tr("First & Last")},
                            {LabelAll, tr("All")},
                            {LabelAuto, tr("Auto")}},
                           this)),
      marks_(new RadioBox(tr("Point Marks"),
                          {{MarkNone, tr("None")},
                           {MarkCircle, tr("Circle")},
                           {MarkCross, tr("Cross")},
                           {MarkTick, tr("Tick")},
                           {MarkRect, tr("Rect")},
                           {MarkPlus, tr("Plus")}},
                          this)) {
  setObjectName(QStringLiteral("trailVisibilityDialog"));
  setWindowTitle(tr("Trail Visibility"));
  visible_->setAccessibleName(visible_->text());
  color_->setAccessibleName(tr("Color"));
  filled_->setAccessibleName(filled_->text());
  // The solid fill can be chosen whether "Filled" is on or off, so it is not in the box.
  solidFill_->setAccessibleName(tr("Fill Pattern: Solid"));
  patterns_->Adopt(*solidFill_, FillSolid);
  auto* top = new QFormLayout;
  top->addRow(visible_);
  top->addRow(tr("Color:"), color_);
  auto* fill = new QVBoxLayout;
  fill->addWidget(filled_);
  fill->addWidget(patterns_);
  fill->addWidget(solidFill_);
  fill->addStretch();
  auto* layout = new QGridLayout(this);
  layout->addLayout(top, 0, 0, 1, 2);
  layout->addWidget(lines_, 1, 0);
  layout->addLayout(fill, 1, 1, 2, 1);
  layout->addWidget(labels_, 2, 0);
  layout->addWidget(marks_, 1, 2, 2, 1);
  auto* box = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
  connect(box, &QDialogButtonBox::accepted, this, &TrailVisibilityDialog::accept);
  connect(box, &QDialogButtonBox::rejected, this, &TrailVisibilityDialog::reject);
  layout->addWidget(box, 3, 0, 1, 3);
  visible_->setChecked(values.visible);
  filled_->setChecked(values.filled);
  lines_->SetValue(values.lineStyle);
  patterns_->SetValue(values.fillPattern);
  labels_->SetValue(values.labelMode);
  marks_->SetValue(values.markStyle);
  connect(filled_, &QCheckBox::toggled, this, [this] { EnableControls(); });
  EnableControls();
  WidenToTitle(*this);
  layout->setSizeConstraint(QLayout::SetFixedSize);
}

void TrailVisibilityDialog::EnableControls() {
  const TrailVisibility values = Values();
  patterns_->setEnabled(values.filled);
  for (int pattern = FillRising; pattern <= FillCross; ++pattern) {
    patterns_->Button(pattern).setEnabled(IsFillPatternEnabled(values, pattern));
  }
  solidFill_->setEnabled(IsFillPatternEnabled(values, FillSolid));
  for (const int style : {LineSolid, LineDotted, LineDashed}) {
    lines_->Button(style).setEnabled(IsLineStyleEnabled(values, style));
  }
}

TrailVisibility TrailVisibilityDialog::Values() const {
  return {.visible = visible_->isChecked(),
          .color = color_->text().toStdString(),
          .lineStyle = lines_->Value(),
          .filled = filled_->isChecked(),
          .fillPattern = patterns_->Value(),
          .labelMode = labels_->Value(),
          .markStyle = marks_->Value()};
}

void TrailVisibilityDialog::accept() {
  if (apply_(Values())) {
    QDialog::accept();
    return;
  }
  color_->setFocus();
  color_->selectAll();
}

}  // namespace orvane
