#include "shell/editors/range_editor_window.h"

#include "paint/display_text.h"
#include "panes/open_editors.h"
#include "shell/editors/cell_table_view.h"
#include "shell/map/map_view.h"
#include "shell/map_window_widget.h"
#include "shell/shell.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>

namespace orvane {

RangeEditorWindow::RangeEditorWindow(Shell& shell, MapWindowWidget& mapWindow,
                                     std::unique_ptr<RangeEditor> editor, std::vector<int>& widths)
    : EditorWindow(shell, mapWindow, WindowKind::RangeEditor, widths, std::move(editor)),
      editor_(static_cast<RangeEditor&>(Cells().Table().Model())),
      name_(new QLineEdit(DisplayText(editor_.Name()), this)),
      color_(new QLineEdit(DisplayText(editor_.ColorText()), this)) {
  setObjectName(QStringLiteral("rangeEditor"));
  MakeForm();
  TakeFirstSize();
  Refresh();
}

void RangeEditorWindow::MakeForm() {
  auto* form = new QHBoxLayout;
  form->addWidget(MakeLabel(QStringLiteral("&Name:"), *name_));
  form->addWidget(name_, 2);
  form->addWidget(MakeLabel(QStringLiteral("&Color:"), *color_));
  form->addWidget(color_, 1);
  SetForm(form);
  SetOrder({name_, color_});
  // More than is read can't be typed.
  connect(name_, &QLineEdit::textEdited, this, [this](const QString& text) {
    editor_.SetName(StoredText(text, editor_.Name()));
    if (const QString read = DisplayText(editor_.Name()); read != text) name_->setText(read);
    fieldsEdited_ = true;
    Q_EMIT contentEdited();
  });
  connect(color_, &QLineEdit::textEdited, this, [this](const QString& text) {
    editor_.SetColorText(text.toStdString());
    if (const QString read = DisplayText(editor_.ColorText()); read != text) {
      color_->setText(read);
    }
    fieldsEdited_ = true;
    Q_EMIT contentEdited();
  });
}

bool RangeEditorWindow::IsChanged() const { return editor_.IsChanged() || fieldsEdited_; }

QString RangeEditorWindow::Title() const { return DisplayText(editor_.Title()); }

SaveOutcome RangeEditorWindow::Save() {
  const SaveOutcome outcome =
      SaveRangeEditor(editor_, TheMapWindow().View().Shown(), TheShell().History());
  // A colour that only a row has changes no record.
  if (outcome == SaveOutcome::Closes) TheMapWindow().ShowRows();
  return outcome;
}

SaveOutcome RangeEditorWindow::RequestClose() {
  const SaveOutcome outcome = RequestCloseRangeEditor(editor_, TheMapWindow().View().Shown(),
                                                      TheShell().History(), &Cells().Table());
  if (outcome == SaveOutcome::Closes) TheMapWindow().ShowRows();
  return outcome;
}

}  // namespace orvane
