#include "shell/editors/cell_table_view.h"

#include "paint/display_text.h"
#include "shell/editors/cell_colors.h"
#include "shell/editors/cell_item_model.h"
#include "shell/editors/hint_header.h"
#include "shell/editors/row_handles.h"
#include "shell/panes/hint_box.h"

#include <QApplication>
#include <QClipboard>
#include <QContextMenuEvent>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMenu>
#include <QMouseEvent>
#include <QPainter>
#include <QScrollBar>
#include <QSignalBlocker>
#include <QStyledItemDelegate>

#include <algorithm>
#include <memory>

namespace orvane {
namespace {

/// Pixels between the left edge of a cell and its text.
constexpr int TextMargin = 2;
/// A body of no more pixels is hidden.
constexpr int LeastBody = 10;
/// Pixels from the ascent of the letters to the baseline of the captions.
constexpr int CaptionDrop = 5;

/// Paints the cells. A selected row has the inverse colours.
class CellPainter final : public QStyledItemDelegate {
 public:
  CellPainter(const CellTableView& view, QObject* parent)
      : QStyledItemDelegate(parent), view_(view) {}

  void paint(QPainter* painter, const QStyleOptionViewItem& option,
             const QModelIndex& index) const override {
    const bool selected = view_.Table().SelectedRow() == static_cast<size_t>(index.row());
    const QRect& cell = option.rect;
    painter->save();
    painter->setClipRect(cell);
    if (selected) painter->fillRect(cell, InvertedCellBackground);
    painter->setPen(selected ? InvertedCellInk : CellInk);
    painter->setFont(view_.font());
    const QFontMetrics metrics = painter->fontMetrics();
    const int baseline =
        metrics.ascent() + (cell.height() - 1 - metrics.ascent() - metrics.descent()) / 2;
    painter->drawText(cell.left() + TextMargin, cell.top() + baseline, index.data().toString());
    painter->drawLine(cell.topLeft(), cell.topRight());
    painter->drawLine(cell.topLeft(), cell.bottomLeft());
    painter->restore();
  }

 private:
  const CellTableView& view_;
};

bool IsReturn(const QKeyEvent& event) {
  return event.key() == Qt::Key_Return || event.key() == Qt::Key_Enter;
}

/// Ctrl and Alt with these keys are for the window.
bool IsPlain(const QKeyEvent& event) {
  return (event.modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier)) == 0;
}

}  // namespace

CellTableView::CellTableView(CellModel& model, std::vector<int>& widths, QWidget* parent)
    : QTableView(parent),
      model_(model),
      table_(model),
      widths_(&widths),
      items_(new CellItemModel(model, this)) {
  setObjectName(QStringLiteral("cellTable"));
  setAccessibleName(QStringLiteral("Table"));
  setFont(QFont(QStringLiteral("helvetica"), 12));
  QPalette gray = palette();
  // The scroll bars and their corner too, with arrows that show on a dark desktop.
  for (const auto role : {QPalette::Base, QPalette::Button, QPalette::Window}) {
    gray.setColor(role, CellBackground);
  }
  for (const auto role : {QPalette::Text, QPalette::ButtonText, QPalette::WindowText}) {
    gray.setColor(role, CellInk);
  }
  setPalette(gray);
  MakeEditField();
  MakeHeaders();
  setModel(items_);
  setItemDelegate(new CellPainter(*this, this));
  setShowGrid(false);
  setFrameShape(NoFrame);
  setCornerButtonEnabled(false);
  setTabKeyNavigation(false);
  setEditTriggers(NoEditTriggers);
  setSelectionMode(SingleSelection);
  setSelectionBehavior(SelectRows);
  setAutoScroll(false);  // a press must not move the cell under the pointer
  setWordWrap(false);
  setVerticalScrollMode(ScrollPerItem);
  setHorizontalScrollMode(ScrollPerPixel);
  setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
  setMinimumHeight(rowHeight_);
  viewport()->setMouseTracking(true);
  FillWidths();
  LayOutColumns();
}

void CellTableView::MakeEditField() {
  edit_ = new QLineEdit(viewport());
  edit_->setObjectName(QStringLiteral("cellField"));
  edit_->setFrame(false);
  edit_->setMaxLength(static_cast<int>(MostCellBytes));
  edit_->setFont(font());
  QPalette white = edit_->palette();
  white.setColor(QPalette::Base, Qt::white);
  white.setColor(QPalette::Text, CellInk);
  edit_->setPalette(white);
  edit_->setAccessibleName(QStringLiteral("Cell"));
  edit_->hide();
  edit_->installEventFilter(this);
  connect(edit_, &QLineEdit::textChanged, this, [this](const QString& text) {
    HintBox::Hide();
    table_.SetText(StoredText(text, shownText_));
    Q_EMIT textEdited();
  });
  const QFontMetrics metrics = edit_->fontMetrics();
  rowHeight_ = std::max(edit_->sizeHint().height(), metrics.ascent() + metrics.descent() + 1);
  // A text stays in its place when its cell is opened. The size hint counts these too.
  edit_->setTextMargins(-1, 0, 0, 3);
}

void CellTableView::MakeHeaders() {
  header_ = new HintHeader(QFontMetrics(font()).ascent() + CaptionDrop, rowHeight_, this);
  header_->setMinimumSectionSize(LeastColumnWidth);
  setHorizontalHeader(header_);
  connect(header_, &HintHeader::hintRequested, this, [this](int column, QPoint at) {
    const std::string& hint = model_.Columns()[static_cast<size_t>(column)].hint;
    HintBox::Show(*window(), *header_->viewport(), at, HintLines(DisplayText(hint)));
  });
  connect(header_, &QHeaderView::sectionResized, this, [this](int column, int before, int now) {
    if (!layingOut_) FollowWidth(static_cast<size_t>(column), now - before);
  });
  connect(header_, &HintHeader::edgeDropped, this, &CellTableView::FitLastColumn);
  handles_ = new RowHandles(rowHeight_, this);
  auto* corner = new QWidget(this);
  corner->setAutoFillBackground(true);
  QPalette gray = corner->palette();
  gray.setColor(QPalette::Window, CellBackground);
  corner->setPalette(gray);
  corner->setGeometry(0, 0, RowHandleWidth, rowHeight_);
  cornerCover_ = corner;
  setVerticalHeader(handles_);
  connect(handles_, &RowHandles::rowClicked, this, &CellTableView::PressHandle);
  connect(handles_, &RowHandles::rowDragged, this, [this](int y, bool isDown) {
    HintBox::Hide();
    if (!rowDrag_) return;
    rowDrag_->now = y;
    if (!isDown) rowDrag_.reset();  // the release went to a box that came up
    viewport()->update();
  });
  connect(handles_, &RowHandles::rowDropped, this, &CellTableView::DropRowAt);
}

// --- Layout -------------------------------------------------------------------------------------

void CellTableView::FillWidths() {
  const std::vector<CellColumn>& columns = model_.Columns();
  const double digit = QFontMetricsF(font()).horizontalAdvance(QLatin1Char('0'));
  const QFontMetrics captions(header_->font());
  for (size_t i = widths_->size(); i < columns.size(); ++i) {
    const int caption = captions.horizontalAdvance(DisplayText(columns[i].title));
    widths_->push_back(
        std::max(WidthForLetters(columns[i].width, digit, caption), WidthOfCells(i)));
  }
}

int CellTableView::WidthOfCells(size_t column) const {
  constexpr size_t MostRows = 100;
  constexpr int Widest = 200;
  const QFontMetrics cells(font());
  int width = cells.horizontalAdvance(DisplayText(model_.Columns()[column].widest));
  for (size_t row = 0; row < std::min(model_.RowCount(), MostRows); ++row) {
    width = std::max(width, cells.horizontalAdvance(DisplayText(model_.GetCell(row, column))));
  }
  return std::min(width + 2 * TextMargin + 1, Widest);
}

std::vector<int> CellTableView::Edges() const {
  std::vector<int> edges = {RowHandleWidth};
  for (int i = 0; i < header_->count(); ++i) edges.push_back(edges.back() + columnWidth(i));
  return edges;
}

void CellTableView::LayOutColumns() {
  layingOut_ = true;
  const auto shown = static_cast<std::ptrdiff_t>(model_.Columns().size());
  const std::vector<int> edges = ColumnEdges({widths_->begin(), widths_->begin() + shown},
                                             viewport()->width() + RowHandleWidth);
  for (size_t i = 0; i + 1 < edges.size(); ++i) {
    header_->resizeSection(static_cast<int>(i), edges[i + 1] - edges[i]);
  }
  layingOut_ = false;
  PlaceEditField();
}

void CellTableView::FollowWidth(size_t column, int difference) {
  int& width = (*widths_)[column];
  width = std::max(width + difference, LeastColumnWidth);
  if (column + 1 == model_.Columns().size()) {
    PlaceEditField();
    FitLastColumn();
  } else {
    LayOutColumns();
  }
}

void CellTableView::FitLastColumn() {
  if (!header_->IsPressed() && header_->length() > viewport()->width()) LayOutColumns();
}

QSize CellTableView::sizeHint() const {
  int width = RowHandleWidth + verticalScrollBar()->sizeHint().width();
  for (size_t i = 0; i < model_.Columns().size(); ++i) width += (*widths_)[i];
  constexpr int Rows = 14;
  return {width, Rows * rowHeight_};
}

void CellTableView::resizeEvent(QResizeEvent* event) {
  QTableView::resizeEvent(event);
  // A dragged edge would jump: a scroll bar that comes up changes the size too.
  if (!header_->IsPressed()) LayOutColumns();
}

void CellTableView::updateGeometries() {
  QTableView::updateGeometries();
  if (cornerCover_ != nullptr) cornerCover_->raise();
  if (rowHeight_ > 0) {
    verticalScrollBar()->setPageStep(RowsOfPage(viewport()->height(), rowHeight_));
  }
}

void CellTableView::scrollContentsBy(int dx, int dy) {
  QTableView::scrollContentsBy(dx, dy);
  PlaceEditField();
}

void CellTableView::BringIntoView(size_t row) {
  const auto top = static_cast<size_t>(verticalScrollBar()->value());
  const size_t wanted =
      TopRowShowing(row, top, table_.ShownRows(), viewport()->height(), rowHeight_);
  verticalScrollBar()->setValue(static_cast<int>(wanted));
}

size_t CellTableView::RowAt(int y) const {
  return static_cast<size_t>(std::max(verticalScrollBar()->value() + y / rowHeight_, 0));
}

int CellTableView::TableX(int x) const { return x + header_->offset() + RowHandleWidth; }

// --- Following the table ------------------------------------------------------------------------

void CellTableView::Follow(bool accepted) {
  const bool rowsBefore = items_->rowCount() != static_cast<int>(table_.ShownRows());
  items_->ShowRows();
  if (rowsBefore) updateGeometries();
  FollowSelection();
  if (!accepted) {
    edit_->setFocus();
    Q_EMIT cellsChanged();
    return;
  }
  ShowOpenCell();
  if (table_.State() != shownState_) {
    shownState_ = table_.State();
    Q_EMIT stateChanged(shownState_);
  }
  Q_EMIT cellsChanged();
}

void CellTableView::FollowSelection() {
  const std::optional<size_t> row = table_.SelectedRow();
  if (!row) {
    selectionModel()->clearSelection();
  } else {
    selectionModel()->select(items_->index(static_cast<int>(*row), 0),
                             QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
  }
  const int column = static_cast<int>(table_.CurrentColumn());
  const int current = static_cast<int>(std::min(table_.CurrentRow(), table_.ShownRows() - 1));
  selectionModel()->setCurrentIndex(items_->index(current, row ? 0 : column),
                                    QItemSelectionModel::NoUpdate);
  viewport()->update();
  handles_->viewport()->update();
}

void CellTableView::ShowOpenCell() {
  if (!IsEditing()) {
    const bool hadFocus = edit_->hasFocus();
    edit_->hide();
    if (hadFocus) setFocus();
    return;
  }
  BringIntoView(table_.CurrentRow());
  scrollTo(currentIndex(), EnsureVisible);  // across, in a narrow window
  const CellColumn& column = model_.Columns()[table_.CurrentColumn()];
  edit_->setAccessibleName(
      QStringLiteral("%1, row %2").arg(DisplayText(column.title)).arg(table_.CurrentRow() + 1));
  edit_->setAccessibleDescription(DisplayText(column.hint));
  shownText_ = model_.GetCell(table_.CurrentRow(), table_.CurrentColumn());
  {
    const QSignalBlocker loading(edit_);
    edit_->setText(DisplayText(table_.Text()));
  }
  PlaceEditField();
  edit_->show();
  edit_->setFocus();
  edit_->selectAll();
}

void CellTableView::PlaceEditField() {
  if (edit_ == nullptr || !IsEditing()) return;
  QRect cell = visualRect(items_->index(static_cast<int>(table_.CurrentRow()),
                                        static_cast<int>(table_.CurrentColumn())));
  // The lines of the grid stay in view.
  edit_->setGeometry(cell.adjusted(1, 1, 0, 0));
}

bool CellTableView::Commit() {
  const bool accepted = table_.Commit();
  Follow(accepted);
  return accepted;
}

bool CellTableView::Leave() {
  if (!Commit()) return false;
  table_.Clear();
  Follow(true);
  return true;
}

void CellTableView::OpenCell(size_t row, size_t column) {
  table_.BeginEdit(row, column);
  Follow(true);
}

void CellTableView::Enter() {
  if (IsEditing()) {
    edit_->setFocus();
  } else if (model_.IsReadOnly()) {
    setFocus();
  } else {
    OpenCell(table_.CurrentRow(), table_.CurrentColumn());
  }
}

void CellTableView::ShowColumns(std::vector<int>& widths) {
  widths_ = &widths;
  table_.Clear();
  FillWidths();
  items_->ShowColumns();
  LayOutColumns();
  Follow(true);
}

void CellTableView::RowAdded() {
  items_->ShowRows();
  updateGeometries();
  BringIntoView(table_.ShownRows() - 1);
  PlaceEditField();
  Q_EMIT cellsChanged();
}

void CellTableView::InsertRow() {
  if (!table_.InsertRow()) Q_EMIT declined();
  Follow(true);
}

void CellTableView::DeleteRow() {
  if (!table_.DeleteRow()) Q_EMIT declined();
  Follow(true);
}

// --- Clipboard ----------------------------------------------------------------------------------

void CellTableView::Cut() {
  if (IsEditing()) edit_->cut();
}

void CellTableView::Copy() {
  if (IsEditing()) {
    edit_->copy();
    return;
  }
  const std::optional<size_t> row = table_.SelectedRow();
  if (!row || *row >= model_.RowCount()) return;
  // Cell by cell: one can be in Latin-1 beside another in UTF-8.
  QStringList cells;
  for (size_t column = 0; column < model_.Columns().size(); ++column) {
    cells << DisplayText(model_.GetCell(*row, column));
  }
  QApplication::clipboard()->setText(cells.join(QLatin1Char('\t')));
}

void CellTableView::Paste() {
  if (!IsEditing()) return;
  QString text = QApplication::clipboard()->text();
  // A spreadsheet puts a line end after a single cell too.
  while (text.endsWith(QLatin1Char('\n')) || text.endsWith(QLatin1Char('\r'))) text.chop(1);
  if (!text.contains(QLatin1Char('\n')) && !text.contains(QLatin1Char('\t'))) {
    edit_->insert(text);
    return;
  }
  const bool accepted = table_.Paste(text.toStdString());
  ShowOpenCell();
  Follow(accepted);
}

void CellTableView::ShowFieldMenu(QPoint global) {
  const std::unique_ptr<QMenu> menu(edit_->createStandardContextMenu());
  for (QAction* action : menu->actions()) {
    if (action->objectName() != QLatin1String("edit-paste")) continue;
    action->disconnect();
    connect(action, &QAction::triggered, this, &CellTableView::Paste);
  }
  menu->exec(global);
}

// --- Keys ---------------------------------------------------------------------------------------

bool CellTableView::event(QEvent* event) {
  if (event->type() == QEvent::ShortcutOverride) {
    const auto* key = static_cast<QKeyEvent*>(event);
    // Ends the selection before it closes the window.
    if (key->key() == Qt::Key_Escape && table_.SelectedRow()) {
      event->accept();
      return true;
    }
  }
  // A hidden body hears nothing of its size.
  if (event->type() == QEvent::Resize) {
    viewport()->setVisible(height() - header_->height() > LeastBody);
  }
  return QTableView::event(event);
}

bool CellTableView::eventFilter(QObject* watched, QEvent* event) {
  if (watched != edit_) return QTableView::eventFilter(watched, event);
  switch (event->type()) {
    case QEvent::FocusIn:
    case QEvent::FocusOut:
      HintBox::Hide();
      return false;
    case QEvent::ContextMenu:
      ShowFieldMenu(static_cast<QContextMenuEvent*>(event)->globalPos());
      return true;
    case QEvent::ShortcutOverride:
      if (static_cast<QKeyEvent*>(event)->key() != Qt::Key_Escape) return false;
      event->accept();
      return true;
    case QEvent::KeyPress:
      HintBox::Hide();
      return PressKeyInField(*static_cast<QKeyEvent*>(event));
    default:
      return false;
  }
}

bool CellTableView::PressKeyInField(const QKeyEvent& event) {
  if (event.matches(QKeySequence::Paste)) {
    Paste();
    return true;
  }
  if (!IsPlain(event)) return false;
  bool (CellTable::*go)() = nullptr;
  switch (event.key()) {
    case Qt::Key_Tab:
      go = &CellTable::NextCell;
      break;
    case Qt::Key_Backtab:
      go = &CellTable::PreviousCell;
      break;
    case Qt::Key_Return:
    case Qt::Key_Enter:
      go = &CellTable::EndLine;
      break;
    case Qt::Key_Up:
      go = &CellTable::CellAbove;
      break;
    case Qt::Key_Down:
      go = &CellTable::CellBelow;
      break;
    case Qt::Key_Escape:
      table_.Escape();
      Follow(true);
      return true;
    default:
      return false;
  }
  Follow((table_.*go)());
  return true;
}

void CellTableView::SelectNear(std::ptrdiff_t way) {
  const auto last = static_cast<std::ptrdiff_t>(table_.ShownRows()) - 1;
  const auto from = static_cast<std::ptrdiff_t>(table_.CurrentRow());
  const bool isSelected = table_.SelectedRow().has_value();
  // The first arrow selects the current row.
  const auto row =
      static_cast<size_t>(std::clamp<std::ptrdiff_t>(isSelected ? from + way : from, 0, last));
  table_.SelectRow(row);
  BringIntoView(row);
  Follow(true);
}

void CellTableView::MoveSelected(std::ptrdiff_t way) {
  const std::optional<size_t> row = table_.SelectedRow();
  const bool isTop = row == 0U && way < 0;
  const bool isLast = row && *row + 1 >= model_.RowCount() && way > 0;
  if (!row || isTop || isLast ||
      !table_.MoveRow(static_cast<size_t>(static_cast<std::ptrdiff_t>(*row) + way))) {
    Q_EMIT declined();
    return;
  }
  SelectNear(way);  // so that the key can be pressed again
}

bool CellTableView::PressKeyInTable(const QKeyEvent& event) {
  if (event.matches(QKeySequence::Copy)) {
    Copy();
    return true;
  }
  const bool isArrow = event.key() == Qt::Key_Up || event.key() == Qt::Key_Down;
  const std::ptrdiff_t way = event.key() == Qt::Key_Up ? -1 : 1;
  const bool alt = (event.modifiers() & ~Qt::KeypadModifier) == Qt::AltModifier;
  if (isArrow && alt) {
    MoveSelected(way);
    return true;
  }
  if (!IsPlain(event)) return false;
  if (isArrow) {
    SelectNear(way);
  } else if (event.key() == Qt::Key_Home || event.key() == Qt::Key_End) {
    const auto rows = static_cast<std::ptrdiff_t>(table_.ShownRows());
    SelectNear(0);
    SelectNear(event.key() == Qt::Key_Home ? -rows : rows);
  } else if (IsReturn(event) || event.key() == Qt::Key_F2) {
    Enter();
  } else if (event.key() == Qt::Key_Delete && table_.SelectedRow()) {
    DeleteRow();
  } else if (event.key() == Qt::Key_Escape && table_.SelectedRow()) {
    table_.Clear();
    Follow(true);
  } else {
    return false;
  }
  return true;
}

void CellTableView::keyPressEvent(QKeyEvent* event) {
  HintBox::Hide();
  // Without an open cell the arrows must not open another one, nor letters search.
  if (!PressKeyInTable(*event)) event->ignore();
}

// --- Mouse --------------------------------------------------------------------------------------

void CellTableView::FollowPress(CellPress press) {
  const bool beeps = press == CellPress::Refused || press == CellPress::OutOfRows;
  Follow(press != CellPress::Refused);
  if (beeps) Q_EMIT declined();
}

void CellTableView::mousePressEvent(QMouseEvent* event) {
  HintBox::Hide();
  if (event->button() != Qt::LeftButton) return;
  const QPoint at = event->position().toPoint();
  if (const auto column = ColumnEdgeAt(Edges(), TableX(at.x()))) {
    columnDrag_ = {.column = *column, .start = at.x(), .now = at.x()};
    viewport()->update();
    return;
  }
  FollowPress(table_.PressCell(RowAt(at.y()), ColumnAt(Edges(), TableX(at.x()))));
  if (!IsEditing()) setFocus();
}

void CellTableView::mouseMoveEvent(QMouseEvent* event) {
  HintBox::Hide();
  const QPoint at = event->position().toPoint();
  if (columnDrag_ && event->buttons() == Qt::NoButton) columnDrag_.reset();
  if (columnDrag_) {
    columnDrag_->now = at.x();
    viewport()->update();
    return;
  }
  const bool onEdge = ColumnEdgeAt(Edges(), TableX(at.x())).has_value();
  viewport()->setCursor(onEdge ? Qt::SplitHCursor : Qt::ArrowCursor);
}

void CellTableView::mouseReleaseEvent(QMouseEvent* event) {
  if (event->button() == Qt::LeftButton) EndResize();
}

void CellTableView::mouseDoubleClickEvent(QMouseEvent* event) { mousePressEvent(event); }

void CellTableView::EndResize() {
  if (!columnDrag_) return;
  const Drag drag = *columnDrag_;
  columnDrag_.reset();
  viewport()->setCursor(Qt::ArrowCursor);
  viewport()->update();
  const auto column = static_cast<int>(drag.column);
  const int wanted = columnWidth(column) + drag.now - drag.start;
  header_->resizeSection(column, std::max(wanted, LeastColumnWidth));
}

void CellTableView::PressHandle(int y) {
  HintBox::Hide();
  const CellPress press = table_.PressHandle(RowAt(y));
  if (press == CellPress::DragRow) {
    rowDrag_ = {.column = 0, .start = y, .now = y};
    viewport()->update();
    return;
  }
  FollowPress(press);
  if (!IsEditing()) setFocus();
}

void CellTableView::DropRowAt(int y) {
  if (!rowDrag_) return;
  rowDrag_.reset();
  const auto top = static_cast<size_t>(verticalScrollBar()->value());
  const size_t target = DropRow(y, top, table_.ShownRows(), rowHeight_);
  if (target != table_.SelectedRow() && !table_.MoveRow(target)) Q_EMIT declined();
  Follow(true);
}

// --- Painting -----------------------------------------------------------------------------------

void CellTableView::paintEvent(QPaintEvent* event) {
  QTableView::paintEvent(event);
  QPainter painter(viewport());
  painter.setPen(CellInk);
  const int end =
      (static_cast<int>(table_.ShownRows()) - verticalScrollBar()->value()) * rowHeight_;
  painter.drawLine(0, end, header_->length() - header_->offset() - 1, end);
  painter.setCompositionMode(QPainter::CompositionMode_Difference);
  painter.setPen(Qt::white);
  if (columnDrag_) painter.drawLine(columnDrag_->now, 0, columnDrag_->now, viewport()->height());
  if (!rowDrag_ || !table_.SelectedRow()) return;
  const int row = static_cast<int>(*table_.SelectedRow()) - verticalScrollBar()->value();
  painter.drawRect(0, row * rowHeight_ + rowDrag_->now - rowDrag_->start, viewport()->width() - 1,
                   rowHeight_ - 1);
}

QItemSelectionModel::SelectionFlags CellTableView::selectionCommand(const QModelIndex& /*index*/,
                                                                    const QEvent* /*event*/) const {
  return QItemSelectionModel::NoUpdate;
}

}  // namespace orvane
