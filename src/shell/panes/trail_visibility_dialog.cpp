#include "shell/panes/trail_visibility_dialog.h"

#include "shell/messages/title_width.h"
#include "shell/panes/radio_box.h"
#include "view/fills.h"

#include <QCheckBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QGridLayout>
#include <QRadioButton>

#include <utility>

namespace orvane {

TrailVisibilityDialog::TrailVisibilityDialog(const TrailVisibility& values, Apply apply,
                                             QWidget* parent)
    : VisibilityDialog(values.visible, values.color, parent),
      apply_(std::move(apply)),
      lines_(new RadioBox(QStringLiteral("Line Style"),
                          {{LineSolid, QStringLiteral("Solid")},
                           {LineDotted, QStringLiteral("Dotted")},
                           {LineDashed, QStringLiteral("Dashed")}},
                          this)),
      filled_(new QCheckBox(QStringLiteral("Filled"), this)),
      patterns_(new RadioBox(QStringLiteral("Fill Pattern"),
                             {{FillRising, QStringLiteral("//")},
                              {FillFalling, QStringLiteral("\\")},
                              {FillHorizontal, QStringLiteral("==")},
                              {FillVertical, QStringLiteral("||")},
                              {FillDiagonals, QStringLiteral("xx")},
                              {FillCross, QStringLiteral("++")}},
                             this)),
      solidFill_(new QRadioButton(QStringLiteral("Solid"), this)),
      labels_(new RadioBox(QStringLiteral("Show Point Labels"),
                           {{LabelNone, QStringLiteral("None")},
                            {LabelFirstLast, QStringLiteral("First & Last")},
                            {LabelAll, QStringLiteral("All")},
                            {LabelAuto, QStringLiteral("Auto")}},
                           this)),
      marks_(new RadioBox(QStringLiteral("Point Marks"),
                          {{MarkNone, QStringLiteral("None")},
                           {MarkCircle, QStringLiteral("Circle")},
                           {MarkCross, QStringLiteral("Cross")},
                           {MarkTick, QStringLiteral("Tick")},
                           {MarkRect, QStringLiteral("Rect")},
                           {MarkPlus, QStringLiteral("Plus")}},
                          this)) {
  setObjectName(QStringLiteral("trailVisibilityDialog"));
  setWindowTitle(QStringLiteral("Trail Visibility"));
  filled_->setAccessibleName(filled_->text());
  // The solid fill can be chosen whether "Filled" is on or off, so it is not in the box.
  solidFill_->setAccessibleName(QStringLiteral("Fill Pattern: Solid"));
  patterns_->Adopt(*solidFill_, FillSolid);
  auto* fill = new QVBoxLayout;
  fill->addWidget(filled_);
  fill->addWidget(patterns_);
  fill->addWidget(solidFill_);
  fill->addStretch();
  auto* layout = new QGridLayout(this);
  layout->addLayout(MakeFirstFields(), 0, 0, 1, 2);
  layout->addWidget(lines_, 1, 0);
  layout->addLayout(fill, 1, 1, 2, 1);
  layout->addWidget(labels_, 2, 0);
  layout->addWidget(marks_, 1, 2, 2, 1);
  layout->addWidget(MakeButtons(), 3, 0, 1, 3);
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
  return {.visible = IsVisibleChecked(),
          .color = ColorTyped(),
          .lineStyle = lines_->Value(),
          .filled = filled_->isChecked(),
          .fillPattern = patterns_->Value(),
          .labelMode = labels_->Value(),
          .markStyle = marks_->Value()};
}

}  // namespace orvane
