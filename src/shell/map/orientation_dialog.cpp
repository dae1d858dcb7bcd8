#include "shell/map/orientation_dialog.h"

#include "shell/messages/title_width.h"
#include "shell/surroundings.h"
#include "view/map_window.h"

#include <QApplication>
#include <QDialogButtonBox>
#include <QGridLayout>
#include <QLineEdit>
#include <QRadioButton>

namespace orvane {
namespace {

constexpr int ButtonsOfColumn = 4;

}  // namespace

OrientationDialog::OrientationDialog(MapWindow& view, Surroundings& surroundings, QWidget* parent)
    : QDialog(parent), view_(view), surroundings_(surroundings), field_(new QLineEdit(this)) {
  setObjectName(QStringLiteral("orientationDialog"));
  setWindowTitle(QStringLiteral("Orientation"));
  auto* layout = new QGridLayout(this);
  const double deviation = view.map->magneticDeviation;
  for (size_t i = 0; i < OrientationTexts.size(); ++i) {
    const auto orientation = static_cast<Orientation>(i);
    auto* button = new QRadioButton(QLatin1String(OrientationTexts[i]), this);
    button->setAccessibleName(button->text());
    if (IsCompassOrientation(orientation)) button->setEnabled(deviation != 0);
    buttons_.push_back(button);
    const int index = static_cast<int>(i);
    layout->addWidget(button, index % ButtonsOfColumn + (orientation == Orientation::Free ? 4 : 0),
                      orientation == Orientation::Free ? 0 : index / ButtonsOfColumn);
    connect(button, &QRadioButton::clicked, this, [this, orientation] { Pick(orientation); });
  }
  field_->setAccessibleName(QStringLiteral("Rotation of the map in degrees"));
  field_->setText(QString::fromStdString(RotationText(static_cast<double>(view.rotation))));
  layout->addWidget(field_, ButtonsOfColumn, 1);
  connect(field_, &QLineEdit::textEdited, this,
          [this] { Button(Orientation::Free).setChecked(true); });
  Button(OrientationOf(view.rotation, deviation)).setChecked(true);

  auto* box = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
  connect(box, &QDialogButtonBox::accepted, this, &OrientationDialog::accept);
  connect(box, &QDialogButtonBox::rejected, this, &OrientationDialog::reject);
  layout->addWidget(box, ButtonsOfColumn + 1, 0, 1, 2);
  WidenToTitle(*this);
  layout->setSizeConstraint(QLayout::SetFixedSize);
  // Typing replaces the number at once.
  field_->setFocus();
  field_->selectAll();
}

QRadioButton& OrientationDialog::Button(Orientation orientation) {
  return *buttons_[static_cast<size_t>(orientation)];
}

void OrientationDialog::Pick(Orientation orientation) {
  if (orientation == Orientation::Free) {
    field_->setFocus();
    field_->selectAll();
    return;
  }
  const double rotation = RotationOf(orientation, view_.map->magneticDeviation);
  field_->setText(QString::fromStdString(RotationText(rotation)));
}

void OrientationDialog::accept() {
  const auto rotation = ParseRotation(field_->text().toStdString());
  if (!rotation) {
    surroundings_.Beep();
    field_->setFocus();
    field_->selectAll();
    return;
  }
  SetOrientation(view_, *rotation);
  QDialog::accept();
}

}  // namespace orvane
