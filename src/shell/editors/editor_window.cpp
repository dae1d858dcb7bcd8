#include "shell/editors/editor_window.h"

#include "model/map.h"
#include "paint/display_text.h"
#include "shell/bring_to_front.h"
#include "shell/command_menu.h"
#include "shell/editors/cell_table_view.h"
#include "shell/list_menus.h"
#include "shell/map_window_widget.h"
#include "shell/plain_texts.h"
#include "shell/shell.h"

#include <QCloseEvent>
#include <QComboBox>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScreen>
#include <QShortcut>
#include <QVBoxLayout>

#include <algorithm>
#include <utility>

namespace orvane {
namespace {

/// As much of a text as is selected in a field that Tab has reached.
constexpr int MostSelected = 100;
/// Pixels between the form and the table, and between the table and the buttons.
constexpr int UnderForm = 4;
constexpr int OverButtons = 6;
constexpr int Margin = 8;
/// Pixels between a label and its field, and between buttons.
constexpr int Spacing = 6;

QLineEdit* TextOf(QWidget& field) {
  if (auto* box = qobject_cast<QComboBox*>(&field)) return box->lineEdit();
  return qobject_cast<QLineEdit*>(&field);
}

/// Some platforms make it the key of a text field, but the menu shows it as that of Undo.
bool IsUndoKey(const QKeyEvent& key) {
  return key.key() == Qt::Key_Backspace && (key.modifiers() & Qt::AltModifier) != 0;
}

}  // namespace

EditorWindow::EditorWindow(Shell& shell, MapWindowWidget& mapWindow, WindowKind kind,
                           std::vector<int>& widths, std::unique_ptr<CellModel> model)
    : ProgramWindow(kind),
      shell_(shell),
      mapWindow_(&mapWindow),
      model_(std::move(model)),
      commands_(new CommandMenu(*this)) {
  setAttribute(Qt::WA_DeleteOnClose);
  auto* inside = new QWidget(this);
  layout_ = new QVBoxLayout(inside);
  layout_->setContentsMargins(0, 0, 0, 0);
  layout_->setSpacing(0);
  cells_ = new CellTableView(*model_, widths, inside);
  layout_->addWidget(cells_, 1);
  cells_->EditField().installEventFilter(this);
  MakeButtons(*layout_);
  setCentralWidget(inside);
  mapWindow.AddDependent(*this);
  // A map window may be deleted without being closed.
  connect(&mapWindow, &QObject::destroyed, this, &QObject::deleteLater);
  connect(commands_, &CommandMenu::picked, this, [this](int id) {
    shell_.Commands().Run(id, *this);
    Refresh();  // a command that did nothing has still toggled its check mark
  });
  PlugListMenus(shell_, *commands_);
  connect(&shell_.Maps(), &OpenMaps::mapReread, this, [this] { FollowReread(); });
  connect(&shell_.Maps(), &OpenMaps::stepsChanged, this, [this] { Refresh(); });
  connect(cells_, &CellTableView::declined, this, [this] { shell_.Beep(); });
  connect(cells_, &CellTableView::cellsChanged, this, [this] {
    Refresh();
    Q_EMIT contentEdited();
  });
  connect(cells_, &CellTableView::textEdited, this, &EditorWindow::contentEdited);
  connect(cells_, &CellTableView::stateChanged, this, [this](CellTableState state) {
    FollowTable(state);
    Refresh();
  });
  const auto onKey = [this](const QKeySequence& key, void (EditorWindow::*run)()) {
    connect(new QShortcut(key, this), &QShortcut::activated, this, run);
  };
  onKey(Qt::Key_F6, &EditorWindow::GoToFormOrTable);
  onKey(Qt::CTRL | Qt::Key_Return, &EditorWindow::Ok);
  onKey(Qt::CTRL | Qt::Key_Enter, &EditorWindow::Ok);
  connect(new QShortcut(Qt::Key_Escape, this), &QShortcut::activated, this, [this] {
    if (!EscapeMode()) close();
  });
}

EditorWindow::~EditorWindow() {
  if (mapWindow_) mapWindow_->RemoveDependent(*this);
  // The table looks at the model, which goes before the children of the window do.
  delete cells_;
}

MapWindowWidget* EditorWindow::MapSide() { return mapWindow_; }

MapWindowWidget& EditorWindow::TheMapWindow() { return *mapWindow_; }

void EditorWindow::MakeButtons(QVBoxLayout& layout) {
  auto* row = new QHBoxLayout;
  row->setContentsMargins(Margin, OverButtons, Margin, Margin);
  row->setSpacing(Spacing);
  row->addStretch();
  const auto add = [&](const QString& text, const QString& name) {
    auto* button = new QPushButton(text, this);
    button->setObjectName(name);
    button->setAutoDefault(true);
    row->addWidget(button);
    return button;
  };
  connect(add(QStringLiteral("&OK"), QStringLiteral("ok")), &QPushButton::clicked, this,
          &EditorWindow::Ok);
  connect(add(QStringLiteral("Cancel"), QStringLiteral("cancel")), &QPushButton::clicked, this,
          &EditorWindow::Close);
  layout.addLayout(row);
}

void EditorWindow::SetForm(QLayout* form) {
  form->setContentsMargins(Margin, Margin, Margin, UnderForm);
  form->setSpacing(Spacing);
  layout_->insertLayout(0, form);
}

void EditorWindow::SetOrder(std::vector<QWidget*> order) {
  order_ = std::move(order);
  for (size_t i = 0; i < order_.size(); ++i) {
    QWidget* field = order_[i];
    QLineEdit* text = TextOf(*field);
    field->installEventFilter(this);
    if (text != nullptr) text->installEventFilter(this);
    if (i > 0) setTabOrder(order_[i - 1], field);
  }
  setTabOrder(order_.back(), cells_);
  order_.front()->setFocus();
}

QLabel* EditorWindow::MakeLabel(const QString& text, QWidget& field) {
  auto* label = new QLabel(text, this);
  label->setBuddy(&field);
  const QString name = QString(text).remove(QLatin1Char('&')).chopped(1);
  field.setAccessibleName(name);
  field.setObjectName(QString(name).remove(QLatin1Char(' ')));
  return label;
}

// --- Keys ---------------------------------------------------------------------------------------

void EditorWindow::Step(const QWidget* from, bool forward) {
  const auto count = order_.size();
  const auto found = std::find_if(order_.begin(), order_.end(), [&](QWidget* field) {
    return field == from || TextOf(*field) == from;
  });
  auto at = static_cast<size_t>(found - order_.begin());
  for (size_t i = 0; i < count; ++i) {
    at = (at + (forward ? 1 : count - 1)) % count;
    if (!order_[at]->isEnabled()) continue;
    order_[at]->setFocus(forward ? Qt::TabFocusReason : Qt::BacktabFocusReason);
    if (QLineEdit* text = TextOf(*order_[at])) text->setSelection(0, MostSelected);
    return;
  }
}

bool EditorWindow::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::ShortcutOverride && IsUndoKey(*static_cast<QKeyEvent*>(event))) {
    event->ignore();
    return true;
  }
  // Other events also come while the window is destroyed, when the table is gone.
  const bool isInForm = event->type() == QEvent::KeyPress && watched != &cells_->EditField();
  if (!isInForm) return QMainWindow::eventFilter(watched, event);
  const auto& key = *static_cast<QKeyEvent*>(event);
  if ((key.modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier)) != 0) {
    return false;
  }
  switch (key.key()) {
    case Qt::Key_Tab:
    case Qt::Key_Return:
    case Qt::Key_Enter:
      Step(qobject_cast<QWidget*>(watched), true);
      return true;
    case Qt::Key_Backtab:
      Step(qobject_cast<QWidget*>(watched), false);
      return true;
    default:
      return false;
  }
}

void EditorWindow::GoToFormOrTable() {
  const QWidget* focus = focusWidget();
  const bool inTable = focus == cells_ || (focus != nullptr && cells_->isAncestorOf(focus));
  if (inTable) {
    Step(order_.back(), true);
  } else {
    cells_->Enter();
  }
}

// --- Commands -----------------------------------------------------------------------------------

bool EditorWindow::Answer(CommandId id) {
  switch (id) {
    case CommandAdd:
      cells_->InsertRow();
      return true;
    case CommandDelete:
      cells_->DeleteRow();
      return true;
    case CommandCut:
      cells_->Cut();
      return true;
    case CommandCopy:
      cells_->Copy();
      return true;
    case CommandPaste:
      cells_->Paste();
      return true;
    default:
      return false;
  }
}

void EditorWindow::Refresh() {
  if (!mapWindow_) return;
  setWindowTitle(PlainTitle(Title()));
  const CellTable& table = cells_->Table();
  const std::optional<size_t> row = table.SelectedRow();
  MenuState menu = EditorMenu(mapWindow_->TheMap(), {.kind = Kind(),
                                                     .table = table.State(),
                                                     .canCopyRow = row && *row < model_->RowCount(),
                                                     .isReadOnly = model_->IsReadOnly(),
                                                     .takesClicks = TakesClicks()});
  FollowSteps(menu, shell_.History(), mapWindow_->TheMap());
  menu.At(CommandFullScreen).checked = isFullScreen();
  commands_->Show(menu, [this](CommandId id) { return shell_.Commands().IsPlugged(id); });
}

void EditorWindow::changeEvent(QEvent* event) {
  QMainWindow::changeEvent(event);
  const bool resized = event->type() == QEvent::WindowStateChange;
  if (resized || (event->type() == QEvent::ActivationChange && isActiveWindow())) Refresh();
}

void EditorWindow::TakeFirstSize() {
  // All columns are in view if the screen has room for them.
  constexpr int ScreenParts = 10;
  constexpr int MostParts = 9;
  resize(sizeHint().boundedTo(screen()->availableSize() * MostParts / ScreenParts));
}

void EditorWindow::BringToFront() { orvane::BringToFront(*this); }

// --- Drafts -------------------------------------------------------------------------------------

EditorDraft EditorWindow::Draft() const {
  EditorDraft draft = DraftOfEditor();
  const CellTable& table = cells_->Table();
  if (table.HasTypedText()) {
    draft.openCell = {.row = static_cast<int>(table.CurrentRow()),
                      .column = static_cast<int>(table.CurrentColumn()),
                      .text = table.Text()};
  }
  return draft;
}

bool EditorWindow::HasDraft() const { return IsChanged() || cells_->Table().HasTypedText(); }

void EditorWindow::RestoreOpenCell(const EditorDraft& draft) {
  if (!draft.openCell || draft.openCell->row < 0 || draft.openCell->column < 0) return;
  cells_->OpenCell(static_cast<size_t>(draft.openCell->row),
                   static_cast<size_t>(draft.openCell->column));
  cells_->EditField().setText(DisplayText(draft.openCell->text));
}

// --- Closing ------------------------------------------------------------------------------------

void EditorWindow::Ok() {
  shell_.Guard().Run([this] {
    if (cells_->Commit() && Save() == SaveOutcome::Closes) {
      Close();
    } else {
      Refresh();
    }
  });
}

void EditorWindow::Close() {
  mayClose_ = true;
  close();
}

bool EditorWindow::TryClose() {
  close();
  return mayClose_;
}

void EditorWindow::closeEvent(QCloseEvent* event) {
  if (!mayClose_) {
    shell_.Guard().Run([this] {
      BringToFront();  // several editors may ask, one after the other
      mayClose_ = RequestClose() == SaveOutcome::Closes;
    });
  }
  event->setAccepted(mayClose_);
  if (!mayClose_) {
    Refresh();
    return;
  }
  Q_EMIT draftDiscarded();
  Leave();
  if (mapWindow_) mapWindow_->RemoveDependent(*this);
}

}  // namespace orvane
