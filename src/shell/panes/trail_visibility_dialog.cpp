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
                          {{NumberOf(LineStyle::Solid), QStringLiteral("Solid")},
                           {NumberOf(LineStyle::Dotted), QStringLiteral("Dotted")},
                           {NumberOf(LineStyle::Dashed), QStringLiteral("Dashed")}},
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
                           {{NumberOf(LabelMode::None), QStringLiteral("None")},
                            {NumberOf(LabelMode::FirstLast), QStringLiteral("First & Last")},
                            {NumberOf(LabelMode::All), QStringLiteral("All")},
                            {NumberOf(LabelMode::Auto), QStringLiteral("Auto")}},
                           this)),
      marks_(new RadioBox(QStringLiteral("Point Marks"),
                          {{NumberOf(MarkStyle::None), QStringLiteral("None")},
                           {NumberOf(MarkStyle::Circle), QStringLiteral("Circle")},
                           {NumberOf(MarkStyle::Cross), QStringLiteral("Cross")},
                           {NumberOf(MarkStyle::Tick), QStringLiteral("Tick")},
                           {NumberOf(MarkStyle::Rect), QStringLiteral("Rect")},
                           {NumberOf(MarkStyle::Plus), QStringLiteral("Plus")}},
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
  lines_->SetValue(NumberOf(values.lineStyle));
  patterns_->SetValue(values.fillPattern);
  labels_->SetValue(NumberOf(values.labelMode));
  marks_->SetValue(NumberOf(values.markStyle));
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
  for (const LineStyle style : {LineStyle::Solid, LineStyle::Dotted, LineStyle::Dashed}) {
    lines_->Button(NumberOf(style)).setEnabled(IsLineStyleEnabled(values, style));
  }
}

TrailVisibility TrailVisibilityDialog::Values() const {
  return {.visible = IsVisibleChecked(),
          .color = ColorTyped(),
          .lineStyle = StyleOf<LineStyle>(lines_->Value()),
          .filled = filled_->isChecked(),
          .fillPattern = patterns_->Value(),
          .labelMode = StyleOf<LabelMode>(labels_->Value()),
          .markStyle = StyleOf<MarkStyle>(marks_->Value())};
}

}  // namespace orvane
