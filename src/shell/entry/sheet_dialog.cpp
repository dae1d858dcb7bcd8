#include "shell/entry/sheet_dialog.h"

#include "base/messages.h"
#include "model/workspace.h"
#include "paint/display_text.h"
#include "shell/messages/title_width.h"

#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

#include <algorithm>
#include <utility>

namespace orvane {
namespace {

/// The columns of the grids that have a label; the field comes after it.
constexpr int ColumnAt = 0;
constexpr int TextAt = 2;

/// Widths of the fields, in characters.
constexpr int ColumnWidth = 7;
constexpr int TextWidth = 20;

/// The width of the longest label of a measure, in characters.
constexpr int LongestLabel = 40;

/// The width that the widgets in a column need.
int WidthOfColumn(const QGridLayout& grid, int column) {
  int width = 0;
  for (int row = 0; row < grid.rowCount(); ++row) {
    const QLayoutItem* item = grid.itemAtPosition(row, column);
    if (item != nullptr) width = std::max(width, item->sizeHint().width());
  }
  return width;
}

}  // namespace

SheetDialog::SheetDialog(Map& map, SheetFields& remembered, QWidget* parent)
    : QDialog(parent), map_(map), remembered_(remembered), fields_(remembered) {
  setObjectName(QStringLiteral("sheetDialog"));
  setWindowTitle(QStringLiteral("SpreadSheet Data"));
  auto* layout = new QVBoxLayout(this);
  layout->addWidget(new QLabel(QStringLiteral("Import data saved as 'tab seperated data'"), this));
  layout->addLayout(MakeSkipRow());
  QGridLayout* columns = MakeColumns();
  layout->addLayout(columns);
  layout->addWidget(MakeOptionalBox(*columns));
  layout->addSpacing(4);
  layout->addLayout(MakeButtons());
  WidenToTitle(*this);
  layout->setSizeConstraint(QLayout::SetFixedSize);
  Edit(SheetSkip).setFocus();
  Edit(SheetSkip).selectAll();
}

QLayout* SheetDialog::MakeSkipRow() {
  auto* row = new QHBoxLayout;
  QLineEdit& edit =
      MakeEdit(SheetSkip, QStringLiteral("Lines to skip (headers and such)"), ColumnWidth);
  auto* before = new QLabel(QStringLiteral("&Skip the first"), this);
  before->setBuddy(&edit);
  row->addWidget(before);
  row->addWidget(&edit);
  row->addWidget(new QLabel(QStringLiteral("lines (headers and such)"), this));
  row->addStretch();
  return row;
}

QGridLayout* SheetDialog::MakeColumns() {
  auto* grid = new QGridLayout;
  AddField(*grid, 0, ColumnAt, SheetTime, QStringLiteral("&Time in column:"),
           QStringLiteral("Time in column"));
  AddField(*grid, 1, ColumnAt, SheetLocation, QStringLiteral("T&rail in column:"),
           QStringLiteral("Trail in column"));
  AddField(*grid, 2, ColumnAt, SheetSpecies, QStringLiteral("S&pecies in column:"),
           QStringLiteral("Species in column"));
  AddField(*grid, 2, TextAt, SheetSpeciesAlways, QStringLiteral("or al&ways:"),
           QStringLiteral("Species, or always"));
  AddField(*grid, 3, ColumnAt, SheetDate, QStringLiteral("&Date in column:"),
           QStringLiteral("Date in column"));
  AddField(*grid, 3, TextAt, SheetDateAlways, QStringLiteral("or &always:"),
           QStringLiteral("Date, or always"));
  AddField(*grid, 4, ColumnAt, SheetFocal, QStringLiteral("&Focal animal in column:"),
           QStringLiteral("Focal animal in column"));
  AddField(*grid, 4, TextAt, SheetFocalAlways, QStringLiteral("or a&lways:"),
           QStringLiteral("Focal animal, or always"));
  grid->setColumnStretch(grid->columnCount(), 1);
  return grid;
}

QWidget* SheetDialog::MakeOptionalBox(const QGridLayout& above) {
  auto* box = new QGroupBox(QStringLiteral("Optional Data"), this);
  auto* grid = new QGridLayout(box);
  AddField(*grid, 0, ColumnAt, SheetActivity, QStringLiteral("Act&ivity in column:"),
           QStringLiteral("Activity in column"));
  const std::array codeLabels{QStringLiteral("&Code:"), QStringLiteral("Cod&e:"),
                              QStringLiteral("C&ode:")};
  for (size_t sm = 0; sm < codeLabels.size(); ++sm) AddMeasure(*grid, sm, codeLabels[sm]);
  grid->setColumnStretch(grid->columnCount(), 1);
  // The fields are under those above the box.
  const int inset = box->contentsMargins().left() + grid->contentsMargins().left();
  grid->setColumnMinimumWidth(ColumnAt, WidthOfColumn(above, ColumnAt) - inset);
  grid->setColumnMinimumWidth(TextAt, WidthOfColumn(above, TextAt));
  return box;
}

void SheetDialog::AddMeasure(QGridLayout& grid, size_t sm, const QString& codeLabel) {
  const QString label = DisplayText(SmColumnLabel(map_, sm));
  const QString name = label.chopped(1);
  // A map can have a name of any length.
  QString shown = fontMetrics().elidedText(label, Qt::ElideMiddle,
                                           LongestLabel * fontMetrics().averageCharWidth());
  shown.replace(QLatin1Char('&'), QStringLiteral("&&"));
  const int row = grid.rowCount();
  AddField(grid, row, ColumnAt, SmColumnFields[sm], shown, name);
  AddField(grid, row, TextAt, SmCodeFields[sm], codeLabel, name + QStringLiteral(", code"));
  for (int column = 0; column < grid.columnCount(); ++column) {
    grid.itemAtPosition(row, column)->widget()->setVisible(IsSmRowShown(map_, sm));
  }
}

void SheetDialog::AddField(QGridLayout& grid, int row, int column, SheetField field,
                           const QString& label, const QString& name) {
  QLineEdit& edit = MakeEdit(field, name, column == TextAt ? TextWidth : ColumnWidth);
  auto* caption = new QLabel(label, this);
  caption->setBuddy(&edit);
  grid.addWidget(caption, row, column);
  grid.addWidget(&edit, row, column + 1);
}

QLineEdit& SheetDialog::MakeEdit(SheetField field, const QString& name, int characters) {
  auto* edit = new QLineEdit(DisplayText(fields_[field]), this);
  edit->setAccessibleName(name);
  edit->setFixedWidth(characters * edit->fontMetrics().averageCharWidth() +
                      edit->sizeHint().height() / 2);
  connect(edit, &QLineEdit::textChanged, this, [this, field] { FollowChange(field); });
  edits_[field] = edit;
  return *edit;
}

QLayout* SheetDialog::MakeButtons() {
  auto* row = new QHBoxLayout;
  auto* take = new QPushButton(QStringLiteral("O&K"), this);
  take->setAccessibleName(QStringLiteral("OK"));
  take->setDefault(true);
  connect(take, &QPushButton::clicked, this, &SheetDialog::accept);
  auto* cancel = new QPushButton(QStringLiteral("Ca&ncel"), this);
  cancel->setAccessibleName(QStringLiteral("Cancel"));
  connect(cancel, &QPushButton::clicked, this, &SheetDialog::reject);
  auto* preview = new QPushButton(QStringLiteral("Pre&view..."), this);
  preview->setAccessibleName(QStringLiteral("Preview..."));
  preview->setAutoDefault(false);
  connect(preview, &QPushButton::clicked, this, &SheetDialog::ShowPreview);
  row->addWidget(take);
  row->addStretch();
  row->addWidget(preview);
  row->addStretch();
  row->addWidget(cancel);
  setTabOrder(take, preview);
  setTabOrder(preview, cancel);
  return row;
}

void SheetDialog::FollowChange(SheetField changed) {
  const std::string typed = StoredText(Edit(changed).text(), fields_[changed]);
  ChangeSheetField(fields_, changed, typed);
  for (size_t field = 0; field < edits_.size(); ++field) {
    if (field != changed) edits_[field]->setText(DisplayText(fields_[field]));
  }
}

void SheetDialog::ShowPreview() {
  if (!previewer_) return;
  const auto chosen = previewer_(fields_);
  if (!chosen) return;
  fields_ = *chosen;
  for (size_t field = 0; field < edits_.size(); ++field) {
    edits_[field]->setText(DisplayText(fields_[field]));
  }
}

void SheetDialog::accept() {
  SheetReading reading = ReadSheetFields(fields_, map_);
  if (reading.refusal) {
    NoteError(map_.workspace->messages, "%s", {reading.refusal->message});
    Edit(reading.refusal->focus).setFocus();
    Edit(reading.refusal->focus).selectAll();
    return;
  }
  RememberSheetFields(remembered_, fields_, map_);
  spec_ = std::move(reading.spec);
  QDialog::accept();
}

}  // namespace orvane
