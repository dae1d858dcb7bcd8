#include "shell/messages/message_log.h"

#include "base/file_names.h"
#include "base/files.h"
#include "mapfile/point_search.h"
#include "paint/display_text.h"
#include "shell/files/local_files.h"
#include "shell/plain_texts.h"

#include <QApplication>
#include <QFont>
#include <QIcon>
#include <QStyle>

#include <algorithm>

namespace orvane {
namespace {

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

/// The text for a screen reader, which does not see the picture of the severity.
QString SpokenText(const LoggedMessage& message) {
  switch (message.severity) {
    case Severity::Note:
      return QStringLiteral("Note: %1").arg(message.text);
    case Severity::Warning:
      return QStringLiteral("Warning: %1").arg(message.text);
    default:
      return QStringLiteral("Error: %1").arg(message.text);
  }
}

/// The file and the line of a message that leads somewhere look like a link.
QFont LinkFont() {
  QFont font = QApplication::font("QAbstractItemView");
  font.setUnderline(true);
  return font;
}

}  // namespace

size_t MessageLog::Add(Severity severity, const QString& text, const MessageOrigin* origin) {
  const size_t number = ++lastNumber_;
  if (messages_.size() >= MostKept) {
    ++notKept_;
    Q_EMIT messageDropped();
    return number;
  }
  const int row = rowCount();
  beginInsertRows({}, row, row);
  messages_.push_back({.number = number,
                       .severity = severity,
                       .text = text,
                       .origin = origin == nullptr ? MessageOrigin() : *origin,
                       .fileState = origin == nullptr ? FileState() : StateOfFile(origin->file)});
  endInsertRows();
  return number;
}

void MessageLog::Clear() {
  beginResetModel();
  messages_.clear();
  pointLines_.clear();
  notKept_ = 0;
  endResetModel();
}

size_t MessageLog::LineOf(int row) const {
  const LoggedMessage& message = At(row);
  const MessageOrigin& origin = message.origin;
  if (origin.file.empty() || origin.line > 0 || origin.point.empty()) return origin.line;
  const FileState state = StateOfFile(origin.file);
  const auto known = pointLines_.find(message.number);
  if (known != pointLines_.end() && known->second.fileState == state) return known->second.line;
  const auto content = ReadWholeFile(origin.file);
  const size_t line = content ? FirstLineOfPoint(*content, origin.point) : 0;
  pointLines_[message.number] = {.fileState = state, .line = line};
  return line;
}

bool MessageLog::Leads(int row) const {
  const MessageOrigin& origin = At(row).origin;
  if (origin.file.empty()) return false;
  return LineOf(row) > 0 || (!origin.point.empty() && hasPlace && hasPlace(origin));
}

int MessageLog::RowOf(size_t number) const {
  if (messages_.empty() || number <= messages_.front().number) return 0;
  return static_cast<int>(std::min(number - messages_.front().number, messages_.size() - 1));
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
  const bool isText = index.column() == TextColumn;
  switch (role) {
    case Qt::DisplayRole:
      return TextOf(message, index.column());
    case Qt::ToolTipRole:
      return PlainTip(index.column() == FileColumn ? LocalFileName(message.origin.file)
                                                   : TextOf(message, index.column()));
    case Qt::DecorationRole:
      return isText ? IconOf(message.severity) : QVariant();
    case Qt::FontRole:
      return !isText && Leads(index.row()) ? LinkFont() : QVariant();
    case Qt::AccessibleTextRole:
      return isText ? SpokenText(message) : TextOf(message, index.column());
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
      return QStringLiteral("Message");
    case FileColumn:
      return QStringLiteral("File");
    case LineColumn:
      return QStringLiteral("Line");
    default:
      return {};
  }
}

}  // namespace orvane
