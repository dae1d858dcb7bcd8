#include "shell/editors/trail_editor_window.h"

#include "paint/display_text.h"
#include "panes/open_editors.h"
#include "shell/editors/cell_table_view.h"
#include "shell/map/map_view.h"
#include "shell/map_window_widget.h"
#include "shell/shell.h"
#include "view/fit_to_map.h"

#include <QAbstractItemView>
#include <QButtonGroup>
#include <QComboBox>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QRadioButton>
#include <QSignalBlocker>

namespace orvane {
namespace {

/// The widest fields show so many letters.
constexpr int WideField = 20;

void SetTextOf(QLineEdit& edit, const QString& text) {
  if (edit.text() == text) return;
  const QSignalBlocker showing(edit);
  edit.setText(text);
  edit.setCursorPosition(0);  // a long text shows its start
}

}  // namespace

TrailEditorWindow::TrailEditorWindow(Shell& shell, MapWindowWidget& mapWindow,
                                     std::unique_ptr<TrailEditor> editor, TrailWidths& widths)
    // Braces: the mode is read before the editor is moved.
    : EditorWindow{shell, mapWindow, WindowKind::TrailEditor,
                   widths[static_cast<size_t>(editor->Mode())], std::move(editor)},
      editor_(static_cast<TrailEditor&>(Cells().Table().Model())),
      widths_(widths),
      modes_(new QButtonGroup(this)) {
  setObjectName(QStringLiteral("trailEditor"));
  MakeForm();
  TakeFirstSize();
  connect(&mapWindow.View(), &MapView::inputCanceled, this, [this] { BringToFront(); });
  Refresh();
}

TrailEditorWindow::~TrailEditorWindow() {
  if (MapSide() != nullptr) EndGraphicalInput();
}

// --- The form -----------------------------------------------------------------------------------

TrailEditorWindow::Field TrailEditorWindow::MakeField(TrailField field, const QString& label,
                                                      int letters) {
  auto* edit = new QLineEdit(this);
  edit->setMinimumWidth(edit->fontMetrics().averageCharWidth() * letters);
  connect(edit, &QLineEdit::textChanged, this, [this, field] { TakeField(field); });
  return {.widget = edit, .text = edit, .label = MakeLabel(label, *edit)};
}

TrailEditorWindow::Field TrailEditorWindow::MakeTypeField() {
  auto* box = new QComboBox(this);
  box->setEditable(true);
  box->setInsertPolicy(QComboBox::NoInsert);
  box->setCompleter(nullptr);  // it would put its own letters after those that were typed
  for (const std::string& type : OfferedTrailTypes(TheMapWindow().View().Shown())) {
    box->addItem(DisplayText(type));
  }
  box->setCurrentIndex(-1);
  box->clearEditText();
  box->setMinimumWidth(box->fontMetrics().averageCharWidth() * WideField);
  QLabel* label = MakeLabel(QStringLiteral("&Trail Type:"), *box);
  box->lineEdit()->setAccessibleName(box->accessibleName());
  box->view()->setAccessibleName(box->accessibleName());
  connect(box->lineEdit(), &QLineEdit::textChanged, this, [this] { TakeField(TrailField::Type); });
  return {.widget = box, .text = box->lineEdit(), .label = label};
}

QRadioButton* TrailEditorWindow::MakeModeButton(EntryMode mode, const QString& text) {
  auto* button = new QRadioButton(text, this);
  button->setObjectName(QString(text).remove(QLatin1Char('&')));
  modes_->addButton(button, static_cast<int>(mode));
  connect(button, &QRadioButton::clicked, this, [this, mode] { SetMode(mode); });
  return button;
}

void TrailEditorWindow::MakeForm() {
  constexpr int DateLetters = 12;
  constexpr int NumberLetters = 6;
  At(TrailField::Type) = MakeTypeField();
  At(TrailField::Date) = MakeField(TrailField::Date, QStringLiteral("&Date:"), DateLetters);
  At(TrailField::Focal) = MakeField(TrailField::Focal, QStringLiteral("Foca&l Animal:"), WideField);
  At(TrailField::Size) = MakeField(TrailField::Size, QStringLiteral("&Size:"), NumberLetters);
  At(TrailField::Name) = MakeField(TrailField::Name, QStringLiteral("&Name:"), WideField);
  QRadioButton* relative = MakeModeButton(EntryMode::Relative, QStringLiteral("&Relative"));
  QRadioButton* gps = MakeModeButton(EntryMode::Gps, QStringLiteral("&GPS"));
  QRadioButton* mixture = MakeModeButton(EntryMode::Mixture, QStringLiteral("Mi&xture"));
  At(TrailField::LineColor) =
      MakeField(TrailField::LineColor, QStringLiteral("&Color:"), DateLetters);
  At(TrailField::Width) = MakeField(TrailField::Width, QStringLiteral("W&idth:"), NumberLetters);
  auto* form = new QGridLayout;
  SetForm(form);
  int column = 0;
  for (const TrailField field :
       {TrailField::Type, TrailField::Date, TrailField::Focal, TrailField::Size}) {
    form->addWidget(At(field).label, 0, column++);
    form->addWidget(At(field).widget, 0, column++);
  }
  form->addWidget(At(TrailField::Name).label, 1, 0);
  form->addWidget(At(TrailField::Name).widget, 1, 1);
  auto* rest = new QHBoxLayout;
  for (QRadioButton* button : {relative, gps, mixture}) rest->addWidget(button);
  rest->setSpacing(form->horizontalSpacing());
  rest->addStretch();
  for (const TrailField field : {TrailField::LineColor, TrailField::Width}) {
    rest->addWidget(At(field).label);
    rest->addWidget(At(field).widget);
  }
  form->addLayout(rest, 1, 2, 1, column - 2);
  SetOrder({At(TrailField::Type).widget, At(TrailField::Date).widget, At(TrailField::Focal).widget,
            At(TrailField::Size).widget, At(TrailField::Name).widget, relative, gps, mixture,
            At(TrailField::LineColor).widget, At(TrailField::Width).widget});
}

void TrailEditorWindow::ShowForm() {
  for (size_t i = 0; i < fields_.size(); ++i) {
    const auto field = static_cast<TrailField>(i);
    SetTextOf(*fields_[i].text, DisplayText(editor_.Form().Text(field)));
    const bool enabled = editor_.Form().IsEnabled(field);
    fields_[i].widget->setEnabled(enabled);
    fields_[i].label->setEnabled(enabled);
  }
  for (const EntryMode mode : {EntryMode::Relative, EntryMode::Gps, EntryMode::Mixture}) {
    QAbstractButton* button = modes_->button(static_cast<int>(mode));
    button->setEnabled(editor_.IsModeEnabled(mode));
    if (editor_.Mode() == mode) button->setChecked(true);
  }
}

void TrailEditorWindow::TakeField(TrailField field) {
  const std::string before = editor_.Form().Text(field);
  const QString shown = At(field).text->text();
  editor_.SetField(field, StoredText(shown, before));
  const int cursor = At(field).text->cursorPosition();
  Refresh();
  At(field).text->setCursorPosition(cursor);
  Q_EMIT contentEdited();
}

void TrailEditorWindow::Refresh() {
  EditorWindow::Refresh();
  if (MapSide() != nullptr) ShowForm();
}

QString TrailEditorWindow::Title() const { return DisplayText(editor_.Title()); }

void TrailEditorWindow::SetMode(EntryMode mode) {
  if (editor_.Mode() == mode) return;
  editor_.SetMode(mode);
  Cells().ShowColumns(widths_[static_cast<size_t>(mode)]);
  if (!editor_.TakesClicks()) EndGraphicalInput();
  Refresh();
}

// --- Saving -------------------------------------------------------------------------------------

SaveOutcome TrailEditorWindow::ShowFirstPlaces(const std::function<SaveOutcome()>& save) {
  Map& map = TheMapWindow().TheMap();
  const bool wasEmpty = !HasDrawablePoints(map);
  const SaveOutcome outcome = save();
  if (wasEmpty) TheShell().Windows().ShowWhole(map);
  return outcome;
}

SaveOutcome TrailEditorWindow::Save() {
  return ShowFirstPlaces([this] { return SaveTrailEditor(editor_, TheShell().History()); });
}

SaveOutcome TrailEditorWindow::RequestClose() {
  return ShowFirstPlaces(
      [this] { return RequestCloseTrailEditor(editor_, TheShell().History(), &Cells().Table()); });
}

// --- Clicks on the map --------------------------------------------------------------------------

bool TrailEditorWindow::IsInputTarget() {
  return MapSide() != nullptr && TheMapWindow().View().Shown().inputTarget == this;
}

void TrailEditorWindow::StartGraphicalInput() {
  if (!editor_.TakesClicks()) {
    TheShell().Beep();
    return;
  }
  // An open cell of the blank row would be that of the first row that is clicked.
  if (!Cells().Leave()) return;
  TheMapWindow().View().SetInputTarget(this);
  TheMapWindow().activateWindow();
  TheMapWindow().View().setFocus();
}

void TrailEditorWindow::EndGraphicalInput() {
  if (IsInputTarget()) TheMapWindow().View().SetInputTarget(nullptr);
}

void TrailEditorWindow::TakePosition(const LatLon& place) {
  editor_.AddGpsRow(place);
  Cells().RowAdded();
}

void TrailEditorWindow::FollowTable(CellTableState state) {
  if (state == CellTableState::Editing) EndGraphicalInput();
}

bool TrailEditorWindow::EscapeMode() {
  if (!IsInputTarget()) return false;
  EndGraphicalInput();
  return true;
}

bool TrailEditorWindow::Answer(CommandId id) {
  if (id != CommandGraphicalInput) return EditorWindow::Answer(id);
  StartGraphicalInput();
  return true;
}

}  // namespace orvane
