// The table of the editors, with keys, the mouse and the clipboard.

#include "shell/editors/cell_table_view.h"

#include "shell/editors/hint_header.h"
#include "shell/editors/row_handles.h"
#include "shell/panes/hint_box.h"
#include "shell/shell_case.h"

#include <QAbstractItemModelTester>
#include <QAccessible>
#include <QClipboard>
#include <QLineEdit>
#include <QMouseEvent>
#include <QScrollBar>
#include <QStyle>

namespace orvane {
namespace {

/// A table of texts that refuses "bad" with a message.
class CellsOfTest final : public CellModel {
 public:
  CellsOfTest(Messages& messages, size_t rows) : messages_(messages) {
    for (size_t i = 0; i < rows; ++i) cells.push_back({"r" + std::to_string(i), "", ""});
  }

  const std::vector<CellColumn>& Columns() const override { return columns; }
  size_t RowCount() const override { return cells.size(); }
  std::string GetCell(size_t row, size_t column) const override {
    return row < cells.size() ? cells[row][column] : std::string();
  }
  bool SetCell(size_t row, size_t column, std::string_view text) override {
    if (text == "bad") {
      NoteError(messages_, "Bad cell");
      return false;
    }
    if (row == cells.size()) cells.push_back({"", "", ""});
    cells[row][column] = text;
    return true;
  }
  bool InsertRow(size_t row) override {
    if (row == 0) cells.insert(cells.begin(), {"new", "", ""});
    return row == 0;
  }
  void DeleteRow(size_t row) override {
    if (row < cells.size()) cells.erase(cells.begin() + static_cast<std::ptrdiff_t>(row));
  }
  void MoveRow(size_t from, size_t to) override { MoveItem(cells, from, to); }
  bool IsReadOnly() const override { return readOnly; }

  std::vector<CellColumn> columns = {{.title = "Name", .hint = "One\nTwo", .width = 70},
                                     {.title = "Lat", .hint = "A latitude", .width = 60},
                                     {.title = "Alt", .hint = "An altitude", .width = 45}};
  std::vector<std::vector<std::string>> cells;
  bool readOnly = false;

 private:
  Messages& messages_;
};

class CellTableViewTest : public ShellCase {
 protected:
  void Show(size_t rows, QSize size = QSize(500, 300)) {
    window_.reset();
    model_ = std::make_unique<CellsOfTest>(messages_, rows);
    window_ = std::make_unique<QWidget>();
    window_->setWindowTitle(QStringLiteral("Cells"));
    view_ = new CellTableView(*model_, widths_, window_.get());
    tester_ = std::make_unique<QAbstractItemModelTester>(view_->model());
    QObject::connect(view_, &CellTableView::declined, view_, [this] { ++beeps_; });
    QObject::connect(view_, &CellTableView::stateChanged, view_,
                     [this](CellTableState state) { states_.push_back(state); });
    window_->resize(size);
    view_->setGeometry(QRect(QPoint(0, 0), size));
    window_->show();
    window_->activateWindow();
    EXPECT_TRUE(QTest::qWaitForWindowActive(window_.get()));
  }

  QLineEdit& Field() { return view_->EditField(); }
  QPoint At(int row, int column) {
    return view_->visualRect(view_->model()->index(row, column)).center();
  }
  void Click(int row, int column) {
    QTest::mouseClick(view_->viewport(), Qt::LeftButton, Qt::NoModifier, At(row, column));
  }
  /// Presses the right edge of a column in the body, moves it to each of the places and releases.
  void DragEdge(int column, const std::vector<int>& moves) {
    const QRect cell = view_->visualRect(view_->model()->index(0, column));
    const QPoint edge(cell.right(), cell.center().y());
    QTest::mousePress(view_->viewport(), Qt::LeftButton, Qt::NoModifier, edge);
    for (const int x : moves) QTest::mouseMove(view_->viewport(), edge + QPoint(x, 0));
    QTest::mouseRelease(view_->viewport(), Qt::LeftButton, Qt::NoModifier, edge);
  }
  QWidget& Handles() { return *view_->verticalHeader()->viewport(); }
  QPoint Handle(int row) { return {1, At(row, 0).y()}; }
  void ClickHandle(int row) {
    QTest::mouseClick(&Handles(), Qt::LeftButton, Qt::NoModifier, Handle(row));
  }
  void Key(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
    QWidget* focus = QApplication::focusWidget();
    QTest::keyClick(focus != nullptr ? focus : view_, key, modifiers);
  }
  void Type(const char* text) { QTest::keyClicks(&Field(), QLatin1String(text)); }
  /// The open cell as "row,column"; "-" if none is.
  std::string Open() {
    const CellTable& table = view_->Table();
    EXPECT_EQ(Field().isVisible(), table.State() == CellTableState::Editing);
    if (table.State() != CellTableState::Editing) return "-";
    return std::to_string(table.CurrentRow()) + "," + std::to_string(table.CurrentColumn());
  }
  std::string FirstColumn() const {
    std::string text;
    for (const auto& row : model_->cells) text += row[0] + " ";
    return text;
  }
  /// The colour of a pixel near the left end of a row's cell, beside its text.
  QColor Background(int row) {
    const QRect cell = view_->visualRect(view_->model()->index(row, 1));
    return view_->viewport()->grab().toImage().pixelColor(cell.center());
  }

  std::unique_ptr<CellsOfTest> model_;
  std::vector<int> widths_;
  std::unique_ptr<QWidget> window_;
  CellTableView* view_ = nullptr;
  std::unique_ptr<QAbstractItemModelTester> tester_;
  std::vector<CellTableState> states_;
};

TEST_F(CellTableViewTest, ATableIsTypedRowByRow) {
  Show(0);
  EXPECT_EQ(view_->model()->rowCount(), 1);
  view_->Enter();
  Type("Camp");
  Key(Qt::Key_Tab);
  EXPECT_EQ(Open(), "0,1");
  EXPECT_EQ(view_->model()->rowCount(), 2);
  Type("N1");
  Key(Qt::Key_Return);
  EXPECT_EQ(Open(), "1,0");
  Type("Hill");
  Key(Qt::Key_Return);
  EXPECT_EQ(Open(), "-");
  EXPECT_EQ(FirstColumn(), "Camp Hill ");
  EXPECT_EQ(model_->cells[0][1], "N1");
  EXPECT_EQ(states_, (std::vector{CellTableState::Editing, CellTableState::Idle}));
}

TEST_F(CellTableViewTest, TabWrapsAndSelectsTheText) {
  Show(1);
  Click(1, 2);
  Key(Qt::Key_Tab);
  EXPECT_EQ(Open(), "0,0");
  EXPECT_EQ(Field().selectedText(), QStringLiteral("r0"));
  EXPECT_TRUE(Field().hasFocus());
  Key(Qt::Key_Backtab, Qt::ShiftModifier);
  EXPECT_EQ(Open(), "0,2") << "the last row of the model";
  Key(Qt::Key_Down);
  EXPECT_EQ(Open(), "1,2");
  Key(Qt::Key_Up);
  EXPECT_EQ(Open(), "0,2");
}

TEST_F(CellTableViewTest, ARefusedTextKeepsItsCellOpen) {
  Show(2);
  Click(0, 1);
  Type("bad");
  Key(Qt::Key_Tab);
  EXPECT_EQ(Open(), "0,1");
  EXPECT_EQ(Field().text(), QStringLiteral("bad"));
  EXPECT_EQ(Texts(), std::vector<std::string>{"Bad cell"});
  EXPECT_EQ(beeps_, 0) << "the message is enough";
  Click(1, 0);
  EXPECT_EQ(Open(), "0,1");
  EXPECT_EQ(beeps_, 1);
  EXPECT_TRUE(Field().hasFocus());
  Key(Qt::Key_Escape);
  EXPECT_EQ(Open(), "0,1");
  EXPECT_EQ(Field().text(), QString());
  Key(Qt::Key_Escape);
  EXPECT_EQ(Open(), "-");
  EXPECT_TRUE(view_->hasFocus());
}

TEST_F(CellTableViewTest, AHandleSelectsItsRowAndTheRowLooksInverse) {
  Show(3);
  const QColor plain = Background(1);
  EXPECT_EQ(plain, QColor(0xC0, 0xC0, 0xC0));
  Click(0, 0);
  ClickHandle(1);
  EXPECT_EQ(Open(), "-");
  EXPECT_EQ(view_->Table().SelectedRow(), 1U);
  EXPECT_EQ(Background(1), QColor(0x3F, 0x3F, 0x3F));
  EXPECT_EQ(Background(2), plain);
  EXPECT_EQ(states_.back(), CellTableState::RowSelected);
  Click(2, 1);
  EXPECT_FALSE(view_->Table().SelectedRow());
  EXPECT_EQ(Background(1), plain);
}

TEST_F(CellTableViewTest, ASelectedRowIsDraggedByItsHandle) {
  Show(4);
  ClickHandle(3);
  QTest::mousePress(&Handles(), Qt::LeftButton, Qt::NoModifier, Handle(3));
  QTest::mouseMove(&Handles(), Handle(1));
  QTest::mouseRelease(&Handles(), Qt::LeftButton, Qt::NoModifier, Handle(0));
  EXPECT_EQ(FirstColumn(), "r3 r0 r1 r2 ");
  EXPECT_EQ(view_->Table().SelectedRow(), 3U) << "the selection does not move";
  ClickHandle(0);
  QTest::mousePress(&Handles(), Qt::LeftButton, Qt::NoModifier, Handle(0));
  QTest::mouseRelease(&Handles(), Qt::LeftButton, Qt::NoModifier, Handle(4));
  EXPECT_EQ(FirstColumn(), "r0 r1 r2 r3 ") << "the blank row is the end";
  EXPECT_EQ(beeps_, 0);
}

TEST_F(CellTableViewTest, UnderTheBlankRowAPressBeepsAndEndsEverything) {
  Show(1);
  Click(0, 0);
  QTest::mouseClick(view_->viewport(), Qt::LeftButton, Qt::NoModifier, QPoint(20, 200));
  EXPECT_EQ(Open(), "-");
  EXPECT_EQ(beeps_, 1);
  EXPECT_EQ(states_.back(), CellTableState::Idle);
}

TEST_F(CellTableViewTest, AColumnEdgeIsDraggedInTheBodyAndTheWidthIsKept) {
  Show(2);
  const std::vector<int> before = widths_;
  EXPECT_GE(before[0], 70);
  Click(0, 1);
  const QRect cell = view_->visualRect(view_->model()->index(1, 1));
  const QPoint edge(cell.left(), cell.center().y());
  QTest::mouseMove(view_->viewport(), edge + QPoint(-4, 0));
  EXPECT_EQ(view_->viewport()->cursor().shape(), Qt::ArrowCursor);
  QTest::mouseMove(view_->viewport(), edge);
  EXPECT_EQ(view_->viewport()->cursor().shape(), Qt::SplitHCursor);
  QTest::mousePress(view_->viewport(), Qt::LeftButton, Qt::NoModifier, edge);
  QTest::mouseMove(view_->viewport(), edge + QPoint(20, 0));
  QTest::mouseRelease(view_->viewport(), Qt::LeftButton, Qt::NoModifier, edge + QPoint(30, 0));
  EXPECT_EQ(widths_[0], before[0] + 20) << "where the pointer was last";
  EXPECT_EQ(widths_[1], before[1]);
  EXPECT_EQ(Field().x(), cell.left() + 21) << "the edit field follows";
  EXPECT_EQ(Open(), "0,1");
  // Another table of the same columns begins with it.
  Show(0);
  EXPECT_EQ(view_->columnWidth(0), before[0] + 20);
}

/// The smallest rectangle around the dark pixels of a part of a picture.
QRect InkIn(const QImage& image, const QRect& part) {
  QRect ink;
  for (int y = part.top(); y <= part.bottom(); ++y) {
    for (int x = part.left(); x <= part.right(); ++x) {
      constexpr int Dark = 90;
      if (image.pixelColor(x, y).lightness() < Dark) ink |= QRect(x, y, 1, 1);
    }
  }
  return ink;
}

TEST_F(CellTableViewTest, ATextStaysInItsPlaceWhenItsCellIsOpened) {
  Show(2);
  model_->cells[1][1] = "N8 fgH";
  const QRect cell = view_->visualRect(view_->model()->index(1, 1)).adjusted(2, 2, -1, -1);
  const QRect before = InkIn(view_->viewport()->grab().toImage(), cell);
  ASSERT_FALSE(before.isEmpty());
  Click(1, 1);
  Field().deselect();
  Field().clearFocus();  // hides the cursor
  EXPECT_EQ(InkIn(view_->viewport()->grab().toImage(), cell), before);
}

// They were white on light grey on a dark desktop.
TEST_F(CellTableViewTest, ArrowsOfScrollBarsShowOnADarkDesktop) {
  const QPalette before = QApplication::palette();
  const QString style = QApplication::style()->objectName();
  QApplication::setStyle(QStringLiteral("fusion"));
  QPalette dark(QColor(50, 50, 50));
  for (const auto role : {QPalette::ButtonText, QPalette::WindowText, QPalette::Text}) {
    dark.setColor(role, Qt::white);
  }
  QApplication::setPalette(dark);
  Show(40, QSize(140, 200));
  for (QScrollBar* bar : {view_->verticalScrollBar(), view_->horizontalScrollBar()}) {
    ASSERT_TRUE(bar->isVisible());
    const QImage image = bar->grab().toImage();
    const int side = std::min(image.width(), image.height());
    const QRect button = QRect(0, 0, side, side).adjusted(3, 3, -3, -3);
    EXPECT_FALSE(InkIn(image, button).isEmpty()) << bar->orientation();
    EXPECT_GT(image.pixelColor(button.topLeft()).lightness(), 150);
  }
  QApplication::setPalette(before);
  QApplication::setStyle(style);
}

TEST_F(CellTableViewTest, AnEdgeDraggedByNoPixelsChangesNothing) {
  Show(2);
  const std::vector<int> before = widths_;
  for (int column = 0; column < 3; ++column) {
    const int shown = view_->columnWidth(column);
    DragEdge(column, {});
    DragEdge(column, {12, -3, 0});
    EXPECT_EQ(view_->columnWidth(column), shown);
  }
  EXPECT_EQ(widths_, before);
  EXPECT_EQ(Open(), "-") << "an edge opens no cell";
}

TEST_F(CellTableViewTest, TheLastColumnReachesToTheEnd) {
  Show(1);
  EXPECT_EQ(view_->horizontalHeader()->length(), view_->viewport()->width());
  view_->resize(120, 200);
  EXPECT_EQ(view_->columnWidth(2), widths_[2]);
}

// The width was that of the stretched column, so a narrower table got a scroll bar.
TEST_F(CellTableViewTest, TheEdgeOfTheLastColumnAddsWhatItWasMovedToTheWidth) {
  Show(1);
  const int width = widths_[2];
  const int shown = view_->columnWidth(2);
  ASSERT_GT(shown, width + 50);
  DragEdge(2, {-10, -20});
  EXPECT_EQ(widths_[2], width - 20);
  EXPECT_EQ(view_->columnWidth(2), shown - 20) << "it shows where it was dropped";
  view_->resize(view_->width() + 10, view_->height());
  EXPECT_EQ(view_->horizontalHeader()->length(), view_->viewport()->width());
  DragEdge(2, {-200});
  EXPECT_EQ(widths_[2], LeastColumnWidth);
}

// Each move of the pointer over the captions added all that came before it once more.
TEST_F(CellTableViewTest, AnEdgeIsDraggedInTheCaptionsToo) {
  Show(1);
  const std::vector<int> before = widths_;
  QWidget* captions = view_->horizontalHeader()->viewport();
  for (const int column : {0, 2}) {
    const int shown = view_->columnWidth(column);
    const QPoint edge(view_->horizontalHeader()->sectionViewportPosition(column) + shown - 1, 5);
    QTest::mousePress(captions, Qt::LeftButton, Qt::NoModifier, edge);
    for (const int x : {-4, -8, -12}) QTest::mouseMove(captions, edge + QPoint(x, 0));
    QTest::mouseRelease(captions, Qt::LeftButton, Qt::NoModifier, edge - QPoint(12, 0));
    EXPECT_EQ(view_->columnWidth(column), shown - 12);
    EXPECT_EQ(widths_[static_cast<size_t>(column)], before[static_cast<size_t>(column)] - 12);
  }
}

TEST_F(CellTableViewTest, TheLastColumnGrowsByWhatItsEdgeWasMoved) {
  Show(1);
  const int width = widths_[2];
  const QHeaderView& header = *view_->horizontalHeader();
  const int shown = view_->columnWidth(2);
  const QPoint edge(header.sectionViewportPosition(2) + shown - 1, 5);
  QTest::mousePress(header.viewport(), Qt::LeftButton, Qt::NoModifier, edge);
  for (const int x : {4, 8, 12}) {
    QMouseEvent move(QEvent::MouseMove, edge + QPoint(x, 0), header.mapToGlobal(edge), Qt::NoButton,
                     Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(header.viewport(), &move);
    QTest::qWait(1);  // the table is laid out meanwhile
  }
  QTest::mouseRelease(header.viewport(), Qt::LeftButton, Qt::NoModifier, edge);
  EXPECT_EQ(widths_[2], width + 12);
  EXPECT_EQ(view_->columnWidth(2), shown) << "it need not be scrolled";
  DragEdge(2, {5});
  EXPECT_EQ(widths_[2], width + 17);
  EXPECT_EQ(view_->columnWidth(2), shown);
  EXPECT_FALSE(view_->horizontalScrollBar()->isVisible());
}

TEST_F(CellTableViewTest, ALowBodyIsHidden) {
  Show(1);
  view_->setMinimumHeight(0);
  view_->resize(300, view_->horizontalHeader()->height() + 10);
  EXPECT_FALSE(view_->viewport()->isVisible());
  view_->resize(300, view_->horizontalHeader()->height() + 40);
  EXPECT_TRUE(view_->viewport()->isVisible());
}

TEST_F(CellTableViewTest, AHintShowsWhereThePointerRestsOnACaption) {
  Show(1);
  QWidget* header = view_->horizontalHeader()->viewport();
  QTest::mouseMove(header, QPoint(30, 6));
  EXPECT_EQ(HintBox::Shown(), nullptr);
  ASSERT_TRUE(QTest::qWaitFor([] { return HintBox::Shown() != nullptr; }));
  EXPECT_EQ(HintBox::Shown()->Lines(), (QStringList{"One", "Two"}));
  QTest::mouseMove(header, QPoint(33, 8));
  EXPECT_NE(HintBox::Shown(), nullptr) << "less than ten pixels";
  QTest::mousePress(header, Qt::LeftButton, Qt::NoModifier, QPoint(33, 8));
  EXPECT_EQ(HintBox::Shown(), nullptr);
  QTest::mouseRelease(header, Qt::LeftButton, Qt::NoModifier, QPoint(33, 8));
}

TEST_F(CellTableViewTest, RowsAreSelectedMovedAndDeletedByKeys) {
  Show(3);
  view_->setFocus();
  Key(Qt::Key_Down);
  EXPECT_EQ(view_->Table().SelectedRow(), 0U);
  Key(Qt::Key_Down);
  Key(Qt::Key_Up, Qt::AltModifier);
  EXPECT_EQ(FirstColumn(), "r1 r0 r2 ");
  EXPECT_EQ(view_->Table().SelectedRow(), 0U);
  Key(Qt::Key_Up, Qt::AltModifier);
  EXPECT_EQ(beeps_, 1);
  Key(Qt::Key_End);
  EXPECT_EQ(view_->Table().SelectedRow(), 3U);
  Key(Qt::Key_Home);
  Key(Qt::Key_Delete);
  EXPECT_EQ(FirstColumn(), "r0 r2 ");
  Key(Qt::Key_Return);
  EXPECT_EQ(Open(), "0,0");
  Key(Qt::Key_Escape);
  Key(Qt::Key_Down);
  Key(Qt::Key_Escape);
  EXPECT_FALSE(view_->Table().SelectedRow());
}

TEST_F(CellTableViewTest, AddAndDeleteBeepWhereTheyCantBe) {
  Show(2);
  view_->InsertRow();
  view_->DeleteRow();
  EXPECT_EQ(beeps_, 2);
  ClickHandle(1);
  view_->InsertRow();
  EXPECT_EQ(beeps_, 3);
  ClickHandle(0);
  view_->InsertRow();
  EXPECT_EQ(FirstColumn(), "new r0 r1 ");
  view_->DeleteRow();
  EXPECT_EQ(FirstColumn(), "r0 r1 ");
  EXPECT_EQ(beeps_, 3);
}

TEST_F(CellTableViewTest, ASelectedRowIsCopiedWithTabs) {
  Show(2);
  model_->cells[1] = {"F\xC3\xB4ret", "N1\xB0 2'", ""};
  ClickHandle(1);
  Key(Qt::Key_C, Qt::ControlModifier);
  EXPECT_EQ(QApplication::clipboard()->text(), QString::fromUtf8("F\xC3\xB4ret\tN1\xC2\xB0 2'\t"));
}

TEST_F(CellTableViewTest, SeveralCellsArePastedFromTheOpenOneOn) {
  Show(1);
  QApplication::clipboard()->setText(QStringLiteral("A\tN1\tE2\r\nB\tN3\n"));
  Click(0, 0);
  Key(Qt::Key_V, Qt::ControlModifier);
  EXPECT_EQ(FirstColumn(), "A B ");
  EXPECT_EQ(model_->cells[0][2], "E2");
  EXPECT_EQ(Open(), "0,0");
  EXPECT_EQ(Field().text(), QStringLiteral("A"));
  // One cell goes into the text.
  QApplication::clipboard()->setText(QStringLiteral("amp\n"));
  Type("C");
  Key(Qt::Key_V, Qt::ControlModifier);
  EXPECT_EQ(Field().text(), QStringLiteral("Camp"));
}

TEST_F(CellTableViewTest, ARefusedPasteLeavesTheTextInItsCell) {
  Show(1);
  QApplication::clipboard()->setText(QStringLiteral("A\tbad\nB\tN3"));
  Click(1, 0);
  Key(Qt::Key_V, Qt::ControlModifier);
  EXPECT_EQ(Texts(), std::vector<std::string>{"Bad cell"});
  EXPECT_EQ(FirstColumn(), "r0 A ");
  EXPECT_EQ(Open(), "1,1");
  EXPECT_EQ(Field().text(), QStringLiteral("bad"));
}

TEST_F(CellTableViewTest, ALongTableScrollsToTheOpenCell) {
  Show(100, QSize(400, 200));
  Click(0, 0);
  for (int i = 0; i < 30; ++i) Key(Qt::Key_Down);
  EXPECT_EQ(Open(), "30,0");
  EXPECT_TRUE(view_->viewport()->rect().contains(Field().geometry()));
  EXPECT_EQ(Field().geometry().top(), At(30, 0).y() - view_->RowHeight() / 2 + 1);
  const QPoint before = Field().pos();
  view_->verticalScrollBar()->setValue(view_->verticalScrollBar()->value() + 1);
  EXPECT_EQ(Field().pos(), before - QPoint(0, view_->RowHeight()));
  EXPECT_EQ(view_->verticalScrollBar()->pageStep(),
            view_->viewport()->height() / view_->RowHeight() - 2);
}

TEST_F(CellTableViewTest, ANarrowTableScrollsAcrossToTheOpenCell) {
  Show(2, QSize(140, 200));
  Click(0, 0);
  Key(Qt::Key_Tab);
  Key(Qt::Key_Tab);
  EXPECT_EQ(Open(), "0,2");
  EXPECT_TRUE(view_->viewport()->rect().intersects(Field().geometry()));
  EXPECT_EQ(Field().geometry().left(), view_->visualRect(view_->model()->index(0, 2)).left() + 1);
}

TEST_F(CellTableViewTest, AReadOnlyTableShowsNoField) {
  Show(3);
  model_->readOnly = true;
  Click(0, 0);
  EXPECT_EQ(Open(), "-");
  ClickHandle(1);
  EXPECT_EQ(view_->Table().SelectedRow(), 1U);
  Key(Qt::Key_Return);
  EXPECT_EQ(Open(), "-");
}

TEST_F(CellTableViewTest, AReadOnlyTableScrollsResizesAndShowsHints) {
  Show(100, QSize(400, 200));
  model_->readOnly = true;
  QTest::keyClick(view_, Qt::Key_End);
  EXPECT_EQ(view_->Table().SelectedRow(), 100U);
  EXPECT_EQ(view_->verticalScrollBar()->value(), view_->verticalScrollBar()->maximum());
  view_->verticalScrollBar()->setValue(40);
  ClickHandle(42);
  EXPECT_EQ(view_->Table().SelectedRow(), 42U);
  const int width = widths_[1];
  const QRect cell = view_->visualRect(view_->model()->index(41, 1));
  QTest::mousePress(view_->viewport(), Qt::LeftButton, Qt::NoModifier,
                    {cell.right(), cell.center().y()});
  QTest::mouseMove(view_->viewport(), {cell.right() + 15, cell.center().y()});
  QTest::mouseRelease(view_->viewport(), Qt::LeftButton, Qt::NoModifier,
                      {cell.right() + 15, cell.center().y()});
  EXPECT_EQ(widths_[1], width + 15);
  QTest::mouseMove(view_->horizontalHeader()->viewport(), QPoint(30, 6));
  ASSERT_TRUE(QTest::qWaitFor([] { return HintBox::Shown() != nullptr; }));
  EXPECT_EQ(HintBox::Shown()->Lines(), (QStringList{"One", "Two"}));
  Key(Qt::Key_F2);
  EXPECT_EQ(Open(), "-");
  EXPECT_FALSE(Field().isVisible());
}

TEST_F(CellTableViewTest, OtherColumnsDropAnOpenText) {
  Show(1);
  Click(0, 1);
  Type("N9");
  model_->columns.erase(model_->columns.begin() + 1);
  std::vector<int> others;
  view_->ShowColumns(others);
  EXPECT_EQ(Open(), "-");
  EXPECT_EQ(model_->cells[0][1], "");
  EXPECT_EQ(view_->model()->columnCount(), 2);
  EXPECT_EQ(others.size(), 2U);
  EXPECT_EQ(states_.back(), CellTableState::Idle);
}

TEST_F(CellTableViewTest, AScreenReaderKnowsCellsAndWhatIsSelected) {
  Show(2);
  QAccessibleInterface* table = QAccessible::queryAccessibleInterface(view_);
  ASSERT_NE(table, nullptr);
  ASSERT_NE(table->tableInterface(), nullptr);
  EXPECT_EQ(table->tableInterface()->rowCount(), 3);
  EXPECT_EQ(table->tableInterface()->columnDescription(1), QStringLiteral("Lat"));
  EXPECT_EQ(table->tableInterface()->cellAt(1, 0)->text(QAccessible::Name), QStringLiteral("r1"));
  ClickHandle(1);
  EXPECT_TRUE(table->tableInterface()->isRowSelected(1));
  Click(0, 1);
  EXPECT_FALSE(table->tableInterface()->isRowSelected(1));
  EXPECT_EQ(Field().accessibleName(), QStringLiteral("Lat, row 1"));
  EXPECT_EQ(Field().accessibleDescription(), QStringLiteral("A latitude"));
}

}  // namespace
}  // namespace orvane
