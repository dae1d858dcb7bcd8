#include "shell/messages/message_log.h"

#include "base/file_names.h"
#include "paint/display_text.h"
#include "shell/files/local_files.h"

#include <QApplication>
#include <QIcon>
#include <QStyle>

namespace orvane {
namespace {

/// Rows that go at once when the log is full, so that they do not go one by one.
constexpr size_t DroppedAtOnce = MessageLog::MostKept / 10;

QStyle::StandardPixmap PictureOf(Severity severity) {
  switch (severity) {
    case Severity::Note:
      return QStyle::SP_MessageBoxInformation;
    case Severity::Warning:
      return QStyle::SP_MessageBoxWarning;
    default:
      return QStyle::SP_MessageBoxCritical;
  }
}

QIcon IconOf(Severity severity) { return QApplication::style()->standardIcon(PictureOf(severity)); }

QString TextOf(const LoggedMessage& message, int column) {
  switch (column) {
    case MessageLog::TextColumn:
      return message.text;
    case MessageLog::FileColumn:
      return DisplayText(BaseName(message.origin.file));
    case MessageLog::LineColumn:
      return message.origin.line > 0 ? QString::number(message.origin.line) : QString();
    default:
      return {};
  }
}

/// What a screen reader says: the severity stands in a picture.
QString SpokenText(const LoggedMessage& message) {
  switch (message.severity) {
    case Severity::Note:
      return MessageLog::tr("Note: %1").arg(message.text);
    case Severity::Warning:
      return MessageLog::tr("Warning: %1").arg(message.text);
    default:
      return MessageLog::tr("Error: %1").arg(message.text);
  }
}

}  // namespace

const LoggedMessage& MessageLog::Add(Severity severity, const QString& text,
                                     const MessageOrigin* origin) {
  if (messages_.size() >= MostKept) {
    beginRemoveRows({}, 0, static_cast<int>(DroppedAtOnce) - 1);
    messages_.erase(messages_.begin(), messages_.begin() + DroppedAtOnce);
    endRemoveRows();
  }
  const int row = rowCount();
  beginInsertRows({}, row, row);
  messages_.push_back({.number = ++lastNumber_,
                       .severity = severity,
                       .text = text,
                       .origin = origin == nullptr ? MessageOrigin() : *origin});
  endInsertRows();
  return messages_.back();
}

void MessageLog::Clear() {
  beginResetModel();
  messages_.clear();
  endResetModel();
}

int MessageLog::RowOf(size_t number) const {
  if (messages_.empty() || number <= messages_.front().number) return 0;
  return static_cast<int>(number - messages_.front().number);
}

int MessageLog::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(messages_.size());
}

int MessageLog::columnCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : ColumnCount;
}

QVariant MessageLog::data(const QModelIndex& index, int role) const {
  if (!index.isValid()) return {};
  const LoggedMessage& message = At(index.row());
  switch (role) {
    case Qt::DisplayRole:
      return TextOf(message, index.column());
    case Qt::ToolTipRole:
      return index.column() == FileColumn ? LocalFileName(message.origin.file)
                                          : TextOf(message, index.column());
    case Qt::DecorationRole:
      return index.column() == TextColumn ? IconOf(message.severity) : QVariant();
    case Qt::AccessibleTextRole:
      return index.column() == TextColumn ? SpokenText(message) : TextOf(message, index.column());
    case Qt::TextAlignmentRole:
      return index.column() == LineColumn ? QVariant(Qt::AlignRight | Qt::AlignVCenter)
                                          : QVariant();
    default:
      return {};
  }
}

QVariant MessageLog::headerData(int section, Qt::Orientation orientation, int role) const {
  if (orientation != Qt::Horizontal || role != Qt::DisplayRole) return {};
  switch (section) {
    case TextColumn:
      return tr("Message");
    case FileColumn:
      return tr("File");
    case LineColumn:
      return tr("Line");
    default:
      return {};
  }
}

}  // namespace orvane
