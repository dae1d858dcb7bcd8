#include "shell/entry/gis_trail_window.h"

#include "entry/import_edits.h"
#include "entry/preview.h"
#include "model/workspace.h"
#include "paint/display_text.h"
#include "shell/entry/after_import.h"
#include "shell/entry/preview_window.h"
#include "shell/progress/busy_work.h"
#include "shell/shell.h"
#include "shell/window_keys.h"

#include <QCheckBox>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

#include <limits>
#include <utility>

namespace orvane {
namespace {

/// \return a label as it is read out
QString WithoutMnemonic(QString label) { return label.remove(QLatin1Char('&')); }

}  // namespace

GisTrailWindow::GisTrailWindow(Shell& shell, GisImport import, GisBoxes& boxes, QWidget* parent,
                               bool wasEmpty)
    : QDialog(parent),
      shell_(shell),
      import_(std::move(import)),
      boxes_(boxes),
      wasEmpty_(wasEmpty),
      fields_(StartFields(import_, boxes)),
      progress_(new QLabel(this)) {
  setObjectName(QStringLiteral("gisTrail"));
  setWindowTitle(QStringLiteral("GIS Trail"));
  setAttribute(Qt::WA_DeleteOnClose);
  auto* layout = new QVBoxLayout(this);
  progress_->setObjectName(QStringLiteral("progress"));
  layout->addWidget(progress_);
  layout->addLayout(MakeFields());
  layout->addLayout(MakeBoxes());
  layout->addSpacing(4);
  layout->addLayout(MakeButtons());
  ShowFields();
  AddWindowKeys(*this, [this] { shell_.ExitFlow(); });
  connect(this, &QDialog::finished, this,
          [this] { ShowImported(shell_, *import_.map, false, GisSummary(import_)); });
}

void GisTrailWindow::AddRow(QGridLayout& layout, const QString& label,
                            std::string GisTrailFields::*text, GisField field) {
  auto* edit = new QLineEdit(this);
  edit->setAccessibleName(WithoutMnemonic(label).chopped(1));
  edit->setObjectName(edit->accessibleName().remove(QLatin1Char(' ')));
  auto* caption = new QLabel(label, this);
  caption->setBuddy(edit);
  const int row = layout.rowCount();
  layout.addWidget(caption, row, 0);
  layout.addWidget(edit, row, 1);
  rows_.push_back({edit, text, field});
}

QLayout* GisTrailWindow::MakeFields() {
  auto* layout = new QGridLayout;
  AddRow(*layout, QStringLiteral("Trail T&ype:"), &GisTrailFields::type);
  AddRow(*layout, QStringLiteral("Dat&e:"), &GisTrailFields::date, GisField::Date);
  AddRow(*layout, QStringLiteral("&Focal Animal:"), &GisTrailFields::focalAnimal);
  AddRow(*layout, QStringLiteral("Si&ze:"), &GisTrailFields::size, GisField::Size);
  AddRow(*layout, QStringLiteral("&Width:"), &GisTrailFields::width, GisField::Width);
  AddRow(*layout, QStringLiteral("N&ame:"), &GisTrailFields::name);
  AddRow(*layout, QStringLiteral("Colo&r:"), &GisTrailFields::color);
  AddRow(*layout, QStringLiteral("&SubSample by:"), &GisTrailFields::subSample,
         GisField::SubSample);
  AddRow(*layout, QStringLiteral("&Minimum Distance:"), &GisTrailFields::minimumDistance,
         GisField::MinimumDistance);
  return layout;
}

void GisTrailWindow::AddBox(QLayout& layout, const QString& label, bool GisBoxes::*box) {
  auto* check = new QCheckBox(label, this);
  check->setAccessibleName(WithoutMnemonic(label));
  check->setObjectName(check->accessibleName().remove(QLatin1Char(' ')));
  check->setChecked(boxes_.*box);
  connect(check, &QCheckBox::toggled, this, [this, box](bool checked) { boxes_.*box = checked; });
  layout.addWidget(check);
}

QLayout* GisTrailWindow::MakeBoxes() {
  auto* layout = new QHBoxLayout;
  AddBox(*layout, QStringLiteral("A&verage"), &GisBoxes::average);
  AddBox(*layout, QStringLiteral("Keep A&ltitude"), &GisBoxes::keepAltitude);
  AddBox(*layout, QStringLiteral("&Times"), &GisBoxes::times);
  return layout;
}

QPushButton* GisTrailWindow::AddButton(QLayout& layout, const QString& label) {
  auto* button = new QPushButton(label, this);
  button->setAutoDefault(false);
  button->setAccessibleName(WithoutMnemonic(label));
  layout.addWidget(button);
  return button;
}

QLayout* GisTrailWindow::MakeButtons() {
  auto* layout = new QHBoxLayout;
  QPushButton* take = AddButton(*layout, QStringLiteral("&OK"));
  take->setDefault(true);
  connect(take, &QPushButton::clicked, this, [this] { Take(false); });
  QPushButton* takeAll = AddButton(*layout, QStringLiteral("O&K to All"));
  connect(takeAll, &QPushButton::clicked, this, [this] { Take(true); });
  QPushButton* skip = AddButton(*layout, QStringLiteral("&No"));
  connect(skip, &QPushButton::clicked, this, [this] { Skip(); });
  QPushButton* preview = AddButton(*layout, QStringLiteral("&Preview..."));
  connect(preview, &QPushButton::clicked, this, [this] { ShowPreview(); });
  cancel_ = AddButton(*layout, QStringLiteral("&Cancel"));
  connect(cancel_, &QPushButton::clicked, this, &QWidget::close);
  return layout;
}

void GisTrailWindow::ShowFields() {
  progress_->setText(
      QStringLiteral("Track %1 of %2").arg(import_.current + 1).arg(import_.file.tracks.size()));
  for (const Row& row : rows_) row.edit->setText(DisplayText(fields_.*row.text));
  cancel_->setText(import_.taken == 0 ? QStringLiteral("&Cancel") : QStringLiteral("&Dismiss"));
  cancel_->setAccessibleName(WithoutMnemonic(cancel_->text()));
  rows_.front().edit->setFocus();
}

GisTrailFields GisTrailWindow::ReadFields() const {
  GisTrailFields typed = fields_;
  for (const Row& row : rows_) {
    typed.*row.text = StoredText(row.edit->text(), fields_.*row.text);
  }
  typed.boxes = boxes_;
  return typed;
}

void GisTrailWindow::Take(bool all) {
  const GisTrailFields typed = ReadFields();
  GisField bad = GisField::None;
  bool taken = false;
  shell_.Guard().Run([&] {
    const BusyWork busy(shell_.TheWorkspace(), shell_.Boxes(), QStringLiteral("Taking tracks"),
                        shell_.Clock());
    taken = shell_.History().Apply(TrackEdit(import_, typed, all, bad));
  });
  if (taken) {
    ShowImported(shell_, *import_.map, wasEmpty_, "");
    Advance(typed);
    return;
  }
  GoTo(bad);
}

void GisTrailWindow::GoTo(GisField bad) {
  for (const Row& row : rows_) {
    if (bad == GisField::None || row.field != bad) continue;
    shell_.Beep();
    row.edit->setFocus();
    row.edit->selectAll();
    return;
  }
}

void GisTrailWindow::ShowPreview() {
  const GisTrailFields typed = ReadFields();
  auto rows = PreviewGis(import_, typed, std::numeric_limits<size_t>::max());
  if (!rows) {
    GoTo(FindBadField(import_, typed));
    return;
  }
  const bool dayFirst = shell_.TheWorkspace().preferences.europeanDates;
  const std::string warning = DateOrderWarning(*rows, GisTimeColumn, dayFirst);
  PreviewPage page = PageOfPreview(std::move(*rows));
  page.warning = warning;
  PreviewWindow window(shell_, *import_.map, import_.fileName, PreviewWindow::Buttons::Close, this);
  window.ShowPage(page);
  window.exec();
}

void GisTrailWindow::Skip() {
  const GisTrailFields typed = ReadFields();
  SkipTrack(import_);
  Advance(typed);
}

void GisTrailWindow::Advance(const GisTrailFields& typed) {
  if (CurrentTrack(import_) == nullptr) {
    close();
    return;
  }
  fields_ = typed;
  NextFields(import_, fields_);
  ShowFields();
}

}  // namespace orvane
