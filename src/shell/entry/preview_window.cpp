#include "shell/entry/preview_window.h"

#include "base/file_names.h"
#include "commands/save_report.h"
#include "model/workspace.h"
#include "paint/display_text.h"
#include "shell/entry/preview_table.h"
#include "shell/plain_texts.h"
#include "shell/shell.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace orvane {
namespace {

constexpr int PreviewWidth = 900;  // pixels
constexpr int PreviewHeight = 520;

}  // namespace

PreviewWindow::PreviewWindow(Shell& shell, const Map& map, const std::string& path, Buttons buttons,
                             QWidget* parent)
    : QDialog(parent), shell_(shell), map_(map), path_(path), table_(new PreviewTable(this)) {
  setObjectName(QStringLiteral("previewWindow"));
  setWindowTitle(PlainTitle(QStringLiteral("Preview: %1").arg(DisplayText(BaseName(path)))));
  auto* layout = new QVBoxLayout(this);
  layout->addWidget(table_, 1);
  warning_ = AddLine(QStringLiteral("dateWarning"));
  counts_ = AddLine(QStringLiteral("counts"));
  layout->addLayout(MakeButtons(buttons));
  connect(table_, &PreviewTable::assignmentChanged, this, &PreviewWindow::assignmentChanged);
  resize(PreviewWidth, PreviewHeight);
  table_->setFocus();
}

QLabel* PreviewWindow::AddLine(const QString& name) {
  auto* line = new QLabel(this);
  line->setObjectName(name);
  line->setWordWrap(true);
  layout()->addWidget(line);
  return line;
}

QLayout* PreviewWindow::MakeButtons(Buttons buttons) {
  auto* row = new QHBoxLayout;
  const auto add = [&](const QString& label) {
    auto* button = new QPushButton(label, this);
    button->setAutoDefault(false);
    button->setAccessibleName(QString(label).remove(QLatin1Char('&')));
    row->addWidget(button);
    return button;
  };
  save_ = add(QStringLiteral("&Save Left-out Rows..."));
  connect(save_, &QPushButton::clicked, this, &PreviewWindow::SaveLeftOutRows);
  row->addStretch(1);
  const bool isChoice = buttons == Buttons::OkAndCancel;
  QPushButton* ok = add(isChoice ? QStringLiteral("OK") : QStringLiteral("Close"));
  ok->setDefault(true);
  connect(ok, &QPushButton::clicked, this, &QDialog::accept);
  if (!isChoice) return row;
  connect(add(QStringLiteral("Cancel")), &QPushButton::clicked, this, &QDialog::reject);
  return row;
}

void PreviewWindow::SetChoices(const std::vector<std::string>& choices) {
  QStringList names;
  for (const std::string& choice : choices) names.append(DisplayText(choice));
  table_->SetChoices(names);
}

void PreviewWindow::ShowPage(const PreviewPage& page, const std::vector<int>& chosen) {
  table_->ShowPreview(page.first, chosen);
  warning_->setText(DisplayText(page.warning));
  warning_->setVisible(!page.warning.empty());
  counts_->setText(DisplayText(page.counts));
  leftOut_ = page.leftOut;
  save_->setEnabled(!leftOut_.empty());
}

void PreviewWindow::SaveLeftOutRows() {
  FileSpecifications& files = shell_.Maps().Files();
  PrepareSpecification(files.reports, files.maps,
                       {FolderOf(map_), shell_.TheSettings().dialogDirectory}, "txt");
  const std::string_view name = BaseName(path_);
  SaveReport({"Save Left-out Rows...",
              std::string(name.substr(0, name.rfind('.'))) + " left out.txt", leftOut_},
             shell_.Dialogs(), files.reports, shell_.TheWorkspace().messages);
}

}  // namespace orvane
