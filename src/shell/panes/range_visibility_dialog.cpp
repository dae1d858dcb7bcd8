#include "shell/panes/range_visibility_dialog.h"

#include "paint/display_text.h"
#include "shell/messages/title_width.h"
#include "shell/panes/radio_box.h"
#include "view/fills.h"

#include <QCheckBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QGridLayout>
#include <QLabel>
#include <QListWidget>
#include <QRadioButton>

#include <utility>

namespace orvane {
namespace {

constexpr int LevelStep = 5;
constexpr int MostLevel = 100;

QString SmName(const std::optional<std::string>& name) { return DisplayText(name.value_or("")); }

}  // namespace

RangeVisibilityDialog::RangeVisibilityDialog(
    const RangeVisibility& values, const RangeControls& controls,
    const std::array<std::optional<std::string>, 3>& smNames, Apply apply, QWidget* parent)
    : VisibilityDialog(values.visible, values.color, parent),
      apply_(std::move(apply)),
      shading_(new RadioBox(QStringLiteral("Shading Patterns"),
                            {{FillRising, QStringLiteral("//")},
                             {FillFalling, QStringLiteral("\\")},
                             {FillHorizontal, QStringLiteral("==")},
                             {FillVertical, QStringLiteral("||")},
                             {FillDiagonals, QStringLiteral("xx")},
                             {FillCross, QStringLiteral("++")},
                             {NoShading, QStringLiteral("None")}},
                            this)),
      drawMode_(new RadioBox(QStringLiteral("Draw Range"),
                             {{NumberOf(RangeDrawMode::Clear), QStringLiteral("Clear")},
                              {NumberOf(RangeDrawMode::Hash), QStringLiteral("Hash")},
                              {NumberOf(RangeDrawMode::CoreGrid), QStringLiteral("Core Grid")},
                              {NumberOf(RangeDrawMode::Sm1), SmName(smNames[0])},
                              {NumberOf(RangeDrawMode::Sm2), SmName(smNames[1])},
                              {NumberOf(RangeDrawMode::Sm3), SmName(smNames[2])}},
                             this)),
      points_(new QGroupBox(QStringLiteral("Show Points"), this)),
      clusters_(new QListWidget(this)),
      estimates_(MakeEstimates()) {
  setObjectName(QStringLiteral("rangeVisibilityDialog"));
  setWindowTitle(QStringLiteral("Range Visibility"));
  auto* points = new QVBoxLayout(points_);
  for (size_t i = 0; i < showSm_.size(); ++i) {
    QString name = SmName(smNames[i]);
    showSm_[i] = new QCheckBox(name.replace(QLatin1Char('&'), QStringLiteral("&&")), this);
    showSm_[i]->setAccessibleName(QStringLiteral("Show Points: %1").arg(SmName(smNames[i])));
    points->addWidget(showSm_[i]);
  }
  auto* clusterLabel = new QLabel(QStringLiteral("Show Cluster Contours"), this);
  clusterLabel->setBuddy(clusters_);
  clusters_->setAccessibleName(clusterLabel->text());
  clusters_->setSelectionMode(QAbstractItemView::MultiSelection);
  for (int row = 0; row < ClusterListRows; ++row) {
    clusters_->addItem(QStringLiteral("%1%").arg(MostLevel - LevelStep * row));
  }
  auto* layout = new QGridLayout(this);
  layout->addLayout(MakeFirstFields(), 0, 0, 1, 2);
  layout->addWidget(shading_, 1, 0, 2, 1);
  layout->addWidget(drawMode_, 1, 1);
  layout->addWidget(points_, 2, 1);
  layout->addWidget(clusterLabel, 0, 2, Qt::AlignBottom);
  layout->addWidget(clusters_, 1, 2, 2, 1);
  layout->addWidget(estimates_, 3, 0, 1, 3);
  layout->addWidget(MakeButtons(), 4, 0, 1, 3);
  ShowControls(controls);
  ShowValues(values);
  WidenToTitle(*this);
}

QWidget* RangeVisibilityDialog::MakeEstimates() {
  constexpr int Columns = 2;
  auto* box = new QGroupBox(QStringLiteral("Show Estimates"), this);
  auto* layout = new QGridLayout(box);
  for (size_t i = 0; i < showEstimate_.size(); ++i) {
    const QString caption = QString::fromStdString(OutlineCaption(OfferedOutlines[i]));
    showEstimate_[i] = new QCheckBox(caption, box);
    showEstimate_[i]->setAccessibleName(QStringLiteral("Show Estimates: %1").arg(caption));
    const int place = static_cast<int>(i);
    layout->addWidget(showEstimate_[i], place % Columns, place / Columns);
  }
  return box;
}

void RangeVisibilityDialog::ShowControls(const RangeControls& controls) {
  for (const int pattern : {0, 1, 2, 3, 4, 5, NoShading}) {
    shading_->Button(pattern).setEnabled(controls.shading[static_cast<size_t>(pattern)]);
  }
  for (size_t mode = 0; mode < controls.drawMode.size(); ++mode) {
    drawMode_->Button(static_cast<int>(mode)).setVisible(controls.drawMode[mode]);
  }
  bool anyPoints = false;
  for (size_t i = 0; i < showSm_.size(); ++i) {
    showSm_[i]->setVisible(controls.showSm[i]);
    anyPoints = anyPoints || controls.showSm[i];
  }
  points_->setVisible(anyPoints);
  clusters_->setEnabled(controls.clusters);
  estimates_->setVisible(controls.estimates);
}

void RangeVisibilityDialog::ShowValues(const RangeVisibility& values) {
  shading_->SetValue(values.shading);
  drawMode_->SetValue(NumberOf(values.drawMode));
  for (size_t i = 0; i < showSm_.size(); ++i) showSm_[i]->setChecked(values.showSm[i]);
  for (int row = 0; row < ClusterListRows; ++row) {
    clusters_->item(row)->setSelected((values.clusterMask >> row & 1U) != 0);
  }
  for (size_t i = 0; i < showEstimate_.size(); ++i) {
    showEstimate_[i]->setChecked((values.estimateMask >> i & 1U) != 0);
  }
}

RangeVisibility RangeVisibilityDialog::Values() const {
  RangeVisibility values{.visible = IsVisibleChecked(),
                         .color = ColorTyped(),
                         .shading = shading_->Value(),
                         .drawMode = StyleOf<RangeDrawMode>(drawMode_->Value())};
  for (size_t i = 0; i < showSm_.size(); ++i) values.showSm[i] = showSm_[i]->isChecked();
  for (int row = 0; row < ClusterListRows; ++row) {
    if (clusters_->item(row)->isSelected()) values.clusterMask |= 1U << row;
  }
  for (size_t i = 0; i < showEstimate_.size(); ++i) {
    if (showEstimate_[i]->isChecked()) values.estimateMask |= 1U << i;
  }
  return values;
}

}  // namespace orvane
