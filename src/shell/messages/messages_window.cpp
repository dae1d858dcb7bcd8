#include "shell/messages/messages_window.h"

#include "paint/display_text.h"
#include "shell/files/local_files.h"
#include "shell/messages/box_messages.h"
#include "shell/messages/message_log.h"
#include "shell/messages/text_viewer.h"
#include "shell/shell.h"

#include <QApplication>
#include <QClipboard>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QShortcut>
#include <QTreeView>
#include <QVBoxLayout>

#include <algorithm>

namespace orvane {
namespace {

/// A message as a line of text, with its place as compilers write it.
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
  list->setAccessibleName(MessagesWindow::tr("Messages"));
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

MessagesWindow::MessagesWindow(MessageLog& log, QWidget* parent)
    : QWidget(parent, Qt::Window),
      log_(log),
      count_(new QLabel(this)),
      list_(MakeList(log, this)),
      copy_(MakeButton(tr("&Copy"), "copyMessages", this)),
      clear_(MakeButton(tr("C&lear"), "clearMessages", this)) {
  setObjectName(QStringLiteral("messagesWindow"));
  setWindowTitle(tr("Messages"));
  count_->setObjectName(QStringLiteral("messageCount"));
  count_->setBuddy(list_);
  auto* close = MakeButton(tr("Cl&ose"), "closeMessages", this);

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
  for (const QKeySequence& key :
       {QKeySequence(Qt::Key_Escape), QKeySequence(QKeySequence::Close)}) {
    connect(new QShortcut(key, this), &QShortcut::activated, this, &QWidget::close);
  }
  connect(&log_, &MessageLog::rowsInserted, this, &MessagesWindow::ShowCount);
  connect(&log_, &MessageLog::rowsRemoved, this, &MessagesWindow::ShowCount);
  connect(&log_, &MessageLog::modelReset, this, &MessagesWindow::ShowCount);
  ShowCount();
  list_->setFocus();
  resize(760, 360);
}

MessagesWindow::~MessagesWindow() = default;

void MessagesWindow::ShowRow(int row) {
  show();
  raise();
  activateWindow();
  // Once more when what goes on now is done: a map that was read is about to get its window.
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
  // A click that gathers rows to be copied opens nothing.
  if ((QApplication::keyboardModifiers() & (Qt::ControlModifier | Qt::ShiftModifier)) != 0) return;
  const MessageOrigin& origin = log_.At(index.row()).origin;
  if (origin.file.empty()) return;
  if (!viewer_) viewer_ = std::make_unique<TextViewer>();
  viewer_->ShowLine(origin.file, origin.line);
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

void MessagesWindow::ShowCount() {
  const int count = log_.rowCount();
  copy_->setEnabled(count > 0);
  clear_->setEnabled(count > 0);
  if (count == 0) {
    count_->setText(tr("No messages so far."));
  } else if (count == 1) {
    count_->setText(tr("1 message. Click it to see the line that it came from."));
  } else {
    count_->setText(tr("%1 messages. Click one to see the line that it came from.")
                        .arg(QLocale().toString(count)));
  }
}

void PlugMessagesWindow(Shell& shell) {
  // Made at its first use, and kept with the handler.
  const auto window = std::make_shared<std::unique_ptr<MessagesWindow>>();
  const auto show = [&shell, window](int row) {
    if (!*window) *window = std::make_unique<MessagesWindow>(shell.Boxes().Log());
    (*window)->ShowRow(row);
  };
  shell.Plug(CommandMessages,
             [&shell, show](ProgramWindow&) { show(shell.Boxes().Log().rowCount() - 1); });
  shell.Boxes().showInWindow = show;
}

}  // namespace orvane
