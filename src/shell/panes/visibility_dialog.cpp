#include "shell/panes/visibility_dialog.h"

#include "paint/display_text.h"

#include <QCheckBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QLineEdit>

namespace orvane {

VisibilityDialog::VisibilityDialog(bool visible, const std::string& color, QWidget* parent)
    : QDialog(parent),
      visible_(new QCheckBox(QStringLiteral("Visible"), this)),
      color_(new QLineEdit(DisplayText(color), this)) {
  visible_->setAccessibleName(visible_->text());
  visible_->setChecked(visible);
  color_->setAccessibleName(QStringLiteral("Color"));
}

bool VisibilityDialog::IsVisibleChecked() const { return visible_->isChecked(); }

std::string VisibilityDialog::ColorTyped() const { return color_->text().toStdString(); }

QFormLayout* VisibilityDialog::MakeFirstFields() {
  auto* fields = new QFormLayout;
  fields->addRow(visible_);
  fields->addRow(QStringLiteral("Color:"), color_);
  return fields;
}

QDialogButtonBox* VisibilityDialog::MakeButtons() {
  auto* box = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
  connect(box, &QDialogButtonBox::accepted, this, &QDialog::accept);
  connect(box, &QDialogButtonBox::rejected, this, &QDialog::reject);
  return box;
}

void VisibilityDialog::accept() {
  if (ApplyValues()) {
    QDialog::accept();
    return;
  }
  color_->setFocus();
  color_->selectAll();
}

}  // namespace orvane
