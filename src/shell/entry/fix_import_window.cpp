#include "shell/entry/fix_import_window.h"

#include "base/file_names.h"
#include "commands/save_report.h"
#include "model/workspace.h"
#include "paint/display_text.h"
#include "shell/entry/preview_table.h"
#include "shell/files/dialog_start.h"
#include "shell/plain_texts.h"
#include "shell/progress/busy_work.h"
#include "shell/shell.h"

#include <QAbstractItemView>
#include <QCheckBox>
#include <QComboBox>
#include <QCompleter>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTimeZone>
#include <QVBoxLayout>

#include <utility>

namespace orvane {
namespace {

constexpr int WidthAtFirst = 1000;  // pixels
constexpr int HeightAtFirst = 680;
constexpr int FieldWidth = 12;  // characters
constexpr int RightLabels = 3;  // the column of the grid with the labels at the right

/// \return a label as it is read out
QString Spoken(QString label) { return label.remove(QLatin1Char('&')).remove(QLatin1Char(':')); }

QStringList RoleNames() {
  QStringList names{QStringLiteral("(not used)")};
  for (size_t i = 1; i < FixRoleCount; ++i) {
    names.append(DisplayText(std::string(FixRoleName(static_cast<FixRole>(i)))));
  }
  return names;
}

}  // namespace

FixImportWindow::FixImportWindow(Shell& shell, FixDraft& draft, FixForm& remembered,
                                 ProgramWindow& owner, QWidget* parent)
    : QDialog(parent),
      shell_(shell),
      draft_(draft),
      remembered_(remembered),
      form_(remembered),
      owner_(owner),
      table_(new PreviewTable(this)) {
  setObjectName(QStringLiteral("fixImport"));
  setWindowTitle(PlainTitle(QStringLiteral("Import Fixes: %1")
                                .arg(DisplayText(std::string(BaseName(draft.FileName()))))));
  auto* layout = new QVBoxLayout(this);
  layout->addLayout(MakeFields());
  layout->addSpacing(4);
  layout->addWidget(table_, 1);
  table_->SetChoices(RoleNames());
  warning_ = AddLine(QStringLiteral("dateWarning"));
  counts_ = AddLine(QStringLiteral("counts"));
  layout->addLayout(MakeButtons());
  timer_.setSingleShot(true);
  timer_.setInterval(Patience);
  connect(&timer_, &QTimer::timeout, this, &FixImportWindow::Show);
  connect(table_, &PreviewTable::assignmentChanged, this, [this](int column, int choice) {
    draft_.Assign(static_cast<size_t>(column), static_cast<FixRole>(choice));
    Show();
  });
  resize(WidthAtFirst, HeightAtFirst);
  Show();
  clock_->setFocus();
  clock_->lineEdit()->selectAll();
}

QLineEdit* FixImportWindow::AddField(QGridLayout& grid, int row, int column, const QString& label,
                                     std::string FixForm::*text, FixFormField field) {
  auto* edit = new QLineEdit(DisplayText(form_.*text), this);
  edit->setAccessibleName(Spoken(label));
  edit->setMinimumWidth(FieldWidth * edit->fontMetrics().averageCharWidth());
  auto* caption = new QLabel(label, this);
  caption->setBuddy(edit);
  grid.addWidget(caption, row, column);
  grid.addWidget(edit, row, column + 1);
  connect(edit, &QLineEdit::textChanged, this, [this, edit, text] {
    form_.*text = StoredText(edit->text(), form_.*text);
    timer_.start();
  });
  fields_.emplace_back(field, edit);
  return edit;
}

/// The offsets are chosen from a list or typed.
void FixImportWindow::AddClock(QGridLayout& grid, int row) {
  const QString label = QStringLiteral("Offset from &UTC:");
  clock_ = new QComboBox(this);
  clock_->setEditable(true);
  clock_->setInsertPolicy(QComboBox::NoInsert);
  clock_->addItem(QStringLiteral("auto"));
  const QList<QByteArray> zones = QTimeZone::availableTimeZoneIds();
  for (const QByteArray& zone : zones) {
    if (zone.contains('/')) clock_->addItem(QString::fromLatin1(zone));
  }
  clock_->setEditText(DisplayText(form_.clock));
  // A part of a name finds its zones.
  clock_->completer()->setCompletionMode(QCompleter::PopupCompletion);
  clock_->completer()->setFilterMode(Qt::MatchContains);
  clock_->setAccessibleName(Spoken(label));
  clock_->view()->setAccessibleName(clock_->accessibleName());
  clock_->setToolTip(QStringLiteral("auto, an offset such as +08:00, or a time zone"));
  auto* caption = new QLabel(label, this);
  caption->setBuddy(clock_);
  grid.addWidget(caption, row, 0);
  grid.addWidget(clock_, row, 1);
  connect(clock_, &QComboBox::editTextChanged, this, [this](const QString& text) {
    form_.clock = text.toStdString();
    timer_.start();
  });
  fields_.emplace_back(FixFormField::Clock, clock_->lineEdit());
}

QCheckBox* FixImportWindow::AddBox(const QString& label, bool FixForm::*box) {
  auto* check = new QCheckBox(label, this);
  check->setAccessibleName(Spoken(label));
  check->setChecked(form_.*box);
  connect(check, &QCheckBox::toggled, this, [this, box](bool isChecked) {
    form_.*box = isChecked;
    Show();
  });
  return check;
}

QGridLayout* FixImportWindow::MakeFields() {
  auto* grid = new QGridLayout;
  AddClock(*grid, 0);
  reason_ = new QLabel(this);
  reason_->setObjectName(QStringLiteral("clockReason"));
  grid->addWidget(reason_, 1, 1);
  QLineEdit* type = AddField(*grid, 2, 0, QStringLiteral("&Type of the trails:"), &FixForm::type,
                             FixFormField::None);
  type->setPlaceholderText(QStringLiteral("the species"));
  AddField(*grid, 0, RightLabels, QStringLiteral("Take &every n-th fix:"), &FixForm::every,
           FixFormField::Every);
  AddField(*grid, 1, RightLabels, QStringLiteral("Least &minutes between fixes:"),
           &FixForm::minMinutes, FixFormField::MinMinutes);
  AddField(*grid, 2, RightLabels, QStringLiteral("&Least metres between fixes:"),
           &FixForm::minMeters, FixFormField::MinMeters);
  QLineEdit* speed = AddField(*grid, 3, RightLabels, QStringLiteral("Fastest &km/h to believe:"),
                              &FixForm::maxSpeed, FixFormField::MaxSpeed);
  speed->setPlaceholderText(QStringLiteral("no limit"));
  auto* boxes = new QVBoxLayout;
  boxes->addWidget(
      AddBox(QStringLiteral("Leave out fixes marked as &outliers"), &FixForm::leavesOutliers));
  boxes->addWidget(AddBox(QStringLiteral("Make a &range for each animal"), &FixForm::makesRanges));
  grid->addLayout(boxes, 3, 0, 2, 2);
  constexpr int Gap = 24;  // pixels
  grid->setColumnMinimumWidth(2, Gap);
  grid->setColumnStretch(1, 1);
  grid->setColumnStretch(RightLabels + 1, 1);
  return grid;
}

QLabel* FixImportWindow::AddLine(const QString& name) {
  auto* line = new QLabel(this);
  line->setObjectName(name);
  line->setWordWrap(true);
  line->setTextInteractionFlags(Qt::TextSelectableByMouse);
  layout()->addWidget(line);
  return line;
}

QLayout* FixImportWindow::MakeButtons() {
  auto* layout = new QHBoxLayout;
  const auto add = [&](const QString& label) {
    auto* button = new QPushButton(label, this);
    button->setAutoDefault(false);
    button->setAccessibleName(Spoken(label));
    layout->addWidget(button);
    return button;
  };
  save_ = add(QStringLiteral("&Save Left-out Rows..."));
  connect(save_, &QPushButton::clicked, this, &FixImportWindow::SaveLeftOutRows);
  layout->addStretch(1);
  ok_ = add(QStringLiteral("OK"));
  ok_->setDefault(true);
  connect(ok_, &QPushButton::clicked, this, &QDialog::accept);
  connect(add(QStringLiteral("Cancel")), &QPushButton::clicked, this, &QDialog::reject);
  return layout;
}

FixFormField FixImportWindow::Show() {
  timer_.stop();
  FixFormField bad = FixFormField::None;
  shell_.Guard().Run([&] {
    const BusyWork busy(shell_.TheWorkspace(), shell_.Boxes(), QStringLiteral("Reading fixes"),
                        shell_.Clock());
    bad = draft_.Plan(form_);
  });
  const bool isGood = bad == FixFormField::None;
  std::vector<int> chosen;
  for (const FixRole role : draft_.Roles()) chosen.push_back(static_cast<int>(role));
  table_->ShowPreview(draft_.FirstRows(), chosen);
  reason_->setText(isGood ? DisplayText(draft_.ClockReason()) : QString());
  const std::string warning = draft_.DateWarning();
  warning_->setText(warning.empty() ? QStringLiteral("No date can be read in two ways.")
                                    : DisplayText(warning));
  warning_->setVisible(!warning.empty());
  counts_->setText(DisplayText(isGood ? draft_.CountsText() : FixFormFault(bad)));
  save_->setEnabled(draft_.LeavesOut());
  ok_->setEnabled(!isGood || draft_.CanImport());
  return bad;
}

void FixImportWindow::accept() {
  const FixFormField bad = Show();
  for (const auto& [field, edit] : fields_) {
    if (bad == FixFormField::None || field != bad) continue;
    shell_.Beep();
    edit->setFocus();
    edit->selectAll();
    return;
  }
  if (!draft_.CanImport()) return;
  remembered_ = form_;
  QDialog::accept();
}

void FixImportWindow::SaveLeftOutRows() {
  if (timer_.isActive()) Show();
  FileSpecifications& files = shell_.Maps().Files();
  PrepareSpecification(files.reports, files.maps, StartOfDialogs(shell_, owner_), "txt");
  SaveReport({"Save Left-out Rows...", draft_.LeftOutName(), draft_.LeftOutText()},
             shell_.Dialogs(), files.reports, shell_.TheWorkspace().messages);
}

}  // namespace orvane
