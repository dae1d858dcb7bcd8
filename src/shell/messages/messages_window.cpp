#include "shell/messages/messages_window.h"

#include "model/point_names.h"
#include "paint/display_text.h"
#include "shell/files/local_files.h"
#include "shell/map/map_view.h"
#include "shell/map_window_widget.h"
#include "shell/messages/box_messages.h"
#include "shell/messages/message_log.h"
#include "shell/messages/shown_notes.h"
#include "shell/messages/text_viewer.h"
#include "shell/shell.h"
#include "shell/window_keys.h"

#include <QApplication>
#include <QClipboard>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLocale>
#include <QMouseEvent>
#include <QPointer>
#include <QPushButton>
#include <QShortcut>
#include <QTreeView>
#include <QVBoxLayout>

#include <algorithm>
#include <utility>

namespace orvane {
namespace {

/// So many messages about points are looked up for the hint above the list: each reads its file.
constexpr size_t MostLookedUp = 20;

/// A message as a line of text, with its place in the form that compilers use.
QString LineOf(const LoggedMessage& message) {
  QString place;
  if (!message.origin.file.empty()) {
    place = LocalFileName(message.origin.file) + QLatin1Char(':');
    if (message.origin.line > 0) place += QString::number(message.origin.line) + QLatin1Char(':');
    place += QLatin1Char(' ');
  }
  return place + message.text;
}

QTreeView* MakeList(MessageLog& log, QWidget* parent) {
  auto* list = new QTreeView(parent);
  list->setObjectName(QStringLiteral("messageList"));
  list->setAccessibleName(QStringLiteral("Messages"));
  list->setModel(&log);
  list->setRootIsDecorated(false);
  list->setUniformRowHeights(true);
  list->setAlternatingRowColors(true);
  list->setAllColumnsShowFocus(true);
  list->setSelectionMode(QAbstractItemView::ExtendedSelection);
  list->setTabKeyNavigation(false);
  list->header()->setStretchLastSection(false);
  list->header()->setSectionResizeMode(MessageLog::TextColumn, QHeaderView::Stretch);
  list->header()->setSectionsMovable(false);
  list->setColumnWidth(MessageLog::FileColumn, 160);
  list->setColumnWidth(MessageLog::LineColumn, 60);
  return list;
}

QPushButton* MakeButton(const QString& text, const char* name, QWidget* parent) {
  auto* button = new QPushButton(text, parent);
  button->setObjectName(QLatin1String(name));
  button->setAutoDefault(false);
  return button;
}

}  // namespace

MessagesWindow::MessagesWindow(MessageLog& log, Surroundings& surroundings, QWidget* parent)
    : QWidget(parent, Qt::Window),
      log_(log),
      surroundings_(surroundings),
      count_(new QLabel(this)),
      list_(MakeList(log, this)),
      copy_(MakeButton(QStringLiteral("&Copy"), "copyMessages", this)),
      clear_(MakeButton(QStringLiteral("C&lear"), "clearMessages", this)) {
  setObjectName(QStringLiteral("messagesWindow"));
  setWindowTitle(QStringLiteral("Messages"));
  count_->setObjectName(QStringLiteral("messageCount"));
  count_->setBuddy(list_);
  auto* close = MakeButton(QStringLiteral("Cl&ose"), "closeMessages", this);

  auto* buttons = new QHBoxLayout;
  buttons->addWidget(copy_);
  buttons->addWidget(clear_);
  buttons->addStretch();
  buttons->addWidget(close);
  auto* layout = new QVBoxLayout(this);
  layout->addWidget(count_);
  layout->addWidget(list_);
  layout->addLayout(buttons);

  connect(list_, &QTreeView::clicked, this, &MessagesWindow::OpenText);
  connect(list_, &QTreeView::activated, this, &MessagesWindow::OpenText);
  connect(copy_, &QPushButton::clicked, this, &MessagesWindow::Copy);
  connect(clear_, &QPushButton::clicked, &log_, &MessageLog::Clear);
  connect(close, &QPushButton::clicked, this, &QWidget::close);
  connect(new QShortcut(QKeySequence::Copy, this), &QShortcut::activated, this,
          &MessagesWindow::Copy);
  AddWindowKeys(*this, [this] { Q_EMIT exitRequested(); });
  for (const auto& [key, step] : {std::pair{QKeySequence(Qt::Key_F8), 1},
                                  std::pair{QKeySequence(Qt::SHIFT | Qt::Key_F8), -1}}) {
    connect(new QShortcut(key, this), &QShortcut::activated, this,
            [this, step = step] { Step(step); });
  }
  connect(&log_, &MessageLog::rowsInserted, this,
          [this](const QModelIndex&, int first, int last) { Count(first, last); });
  connect(&log_, &MessageLog::messageDropped, this, &MessagesWindow::ShowCount);
  connect(&log_, &MessageLog::modelReset, this, [this] {
    withLine_ = 0;
    aboutPoints_.clear();
    ShowCount();
  });
  Count(0, log_.rowCount() - 1);
  list_->viewport()->setMouseTracking(true);
  list_->viewport()->installEventFilter(this);
  list_->setFocus();
  resize(760, 360);
}

MessagesWindow::~MessagesWindow() = default;

void MessagesWindow::ShowRow(int row) {
  show();
  raise();
  activateWindow();
  // Again when the current work is done: a map that was read is about to get its window.
  QMetaObject::invokeMethod(
      this,
      [this] {
        raise();
        activateWindow();
      },
      Qt::QueuedConnection);
  const QModelIndex index = log_.index(row, MessageLog::TextColumn);
  if (!index.isValid()) return;
  list_->setCurrentIndex(index);
  list_->scrollTo(index, QAbstractItemView::PositionAtTop);
}

void MessagesWindow::OpenText(const QModelIndex& index) {
  // A click that selects rows for copying opens nothing.
  if ((QApplication::keyboardModifiers() & (Qt::ControlModifier | Qt::ShiftModifier)) != 0) return;
  if (index.isValid() && log_.Leads(index.row())) OpenRow(index.row());
}

void MessagesWindow::OpenRow(int row) {
  const LoggedMessage& message = log_.At(row);
  const MessageOrigin& origin = message.origin;
  opened_ = message.number;
  const ViewedPlace place{.file = origin.file,
                          .line = log_.LineOf(row),
                          .message = message.text,
                          .fileState = message.fileState};
  if (place.line == 0) {
    if (showOnMap) showOnMap(origin);
    return;
  }
  TextViewer& viewer = Viewer();
  viewer.OfferSteps({.previous = RowFrom(row, -1) >= 0, .next = RowFrom(row, 1) >= 0});
  viewer.Show(place);
}

TextViewer& MessagesWindow::Viewer() {
  if (!viewer_) {
    viewer_ = std::make_unique<TextViewer>();
    connect(viewer_.get(), &TextViewer::stepRequested, this, &MessagesWindow::Step);
    connect(viewer_.get(), &TextViewer::exitRequested, this, &MessagesWindow::exitRequested);
  }
  return *viewer_;
}

int MessagesWindow::RowFrom(int row, int step) const {
  for (int next = row + step; next >= 0 && next < log_.rowCount(); next += step) {
    if (log_.Leads(next)) return next;
  }
  return -1;
}

void MessagesWindow::Step(int step) {
  const int current = list_->currentIndex().isValid() ? list_->currentIndex().row() : -1;
  // The first step leads to the message that is selected, the others away from it.
  const bool isOpened = current >= 0 && log_.At(current).number == opened_;
  const bool stays = current >= 0 && !isOpened && log_.Leads(current);
  const int row = stays ? current : RowFrom(current, step);
  if (row < 0) {
    surroundings_.Beep();
    return;
  }
  list_->setCurrentIndex(log_.index(row, MessageLog::TextColumn));
  OpenRow(row);
}

bool MessagesWindow::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::MouseMove) {
    const QPoint place = static_cast<QMouseEvent*>(event)->position().toPoint();
    const QModelIndex under = list_->indexAt(place);
    const bool leads = under.isValid() && log_.Leads(under.row());
    list_->viewport()->setCursor(leads ? Qt::PointingHandCursor : Qt::ArrowCursor);
  }
  return QWidget::eventFilter(watched, event);
}

void MessagesWindow::changeEvent(QEvent* event) {
  QWidget::changeEvent(event);
  // Meanwhile the file may have changed, or a point may have got its place.
  if (event->type() == QEvent::ActivationChange && isActiveWindow()) ShowCount();
}

void MessagesWindow::Copy() {
  QList<int> rows;
  const QModelIndexList selected = list_->selectionModel()->selectedRows();
  for (const QModelIndex& index : selected) rows.append(index.row());
  std::sort(rows.begin(), rows.end());
  QString text;
  for (const int row : rows) text += LineOf(log_.At(row)) + QLatin1Char('\n');
  if (!text.isEmpty()) QApplication::clipboard()->setText(text);
}

void MessagesWindow::Count(int first, int last) {
  for (int row = first; row <= last; ++row) {
    const MessageOrigin& origin = log_.At(row).origin;
    if (origin.file.empty()) continue;
    withLine_ += origin.line > 0 ? 1 : 0;
    const bool isAboutPoint = origin.line == 0 && !origin.point.empty();
    if (isAboutPoint && aboutPoints_.size() < MostLookedUp) aboutPoints_.push_back(row);
  }
  ShowCount();
}

void MessagesWindow::ShowCount() {
  const int count = log_.rowCount();
  copy_->setEnabled(count > 0);
  clear_->setEnabled(count > 0);
  const QLocale locale;
  QString text = QStringLiteral("No messages so far.");
  if (count == 1) text = QStringLiteral("1 message.");
  if (count > 1) text = QStringLiteral("%1 messages.").arg(locale.toString(count));
  if (log_.NotKept() > 0) {
    text += u' ' + QStringLiteral("%1 more were not kept.")
                       .arg(locale.toString(static_cast<qulonglong>(log_.NotKept())));
  }
  // A message about a point leads to its first line, or to the map where no line names it.
  const auto pointing = static_cast<int>(std::count_if(
      aboutPoints_.begin(), aboutPoints_.end(), [this](int row) { return log_.Leads(row); }));
  const int leading = withLine_ + pointing;
  const QString shown =
      pointing == 0 ? QStringLiteral("its line") : QStringLiteral("its line or place");
  if (leading == 1 && count == 1) {
    text += QStringLiteral(" Click it to see %1.").arg(shown);
  } else if (leading == count && count > 1) {
    text += QStringLiteral(" Click one to see %1.").arg(shown);
  } else if (leading > 0) {
    text += QStringLiteral(" Click one with an underlined file to see %1.").arg(shown);
  }
  count_->setText(text);
}

namespace {

/// \return a window on a map with the origin's point, if the point has a place; else null
MapWindowWidget* WindowWithPoint(const Shell& shell, const MessageOrigin& origin) {
  for (MapWindowWidget* window : shell.Windows().All()) {
    const Map& map = window->TheMap();
    const Map* level = &map;
    while (level != nullptr && level->fileName != origin.file) level = level->basis;
    if (level == nullptr) continue;
    const Point* point = FindPointByName(map, nullptr, origin.point);
    if (point != nullptr && IsPlaced(*point)) return window;
  }
  return nullptr;
}

void ShowPointOnMap(const Shell& shell, const MessageOrigin& origin) {
  MapWindowWidget* window = WindowWithPoint(shell, origin);
  if (window == nullptr) return;
  window->raise();
  window->activateWindow();
  window->View().Find(origin.point);
}

}  // namespace

void PlugMessagesWindow(Shell& shell) {
  // Created at the first use, and kept with the handler.
  const auto window = std::make_shared<std::unique_ptr<MessagesWindow>>();
  const auto show = [&shell, window](int row) {
    if (!*window) {
      *window = std::make_unique<MessagesWindow>(shell.Boxes().Log(), shell.Around());
      (*window)->showOnMap = [&shell](const MessageOrigin& origin) {
        ShowPointOnMap(shell, origin);
      };
      QObject::connect(window->get(), &MessagesWindow::exitRequested, &shell,
                       [&shell] { shell.ExitFlow(); });
    }
    (*window)->ShowRow(row);
  };
  shell.Commands().Plug(CommandMessages, [&shell, show](ProgramWindow&) {
    show(shell.Boxes().Log().rowCount() - 1);
  });
  shell.Boxes().showInWindow = show;
  shell.Boxes().Log().hasPlace = [&shell](const MessageOrigin& origin) {
    return WindowWithPoint(shell, origin) != nullptr;
  };
  const QPointer<ShownNotes> notes(new ShownNotes(shell));
  shell.Boxes().showNote = [notes](size_t number, const QString& text) {
    if (!notes.isNull()) notes->Add(number, text);
  };
}

}  // namespace orvane
