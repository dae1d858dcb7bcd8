#pragma once

#include "base/messages.h"

#include <QAbstractTableModel>
#include <QString>

#include <vector>

namespace orvane {

/// One message as it was shown.
struct LoggedMessage {
  size_t number = 0;  ///< counted over the whole run, from 1
  Severity severity = Severity::Warning;
  QString text;          ///< with "Internal Error: " in front where it is one
  MessageOrigin origin;  ///< no file if it came from none
};

/// All messages of the run, oldest first, as the rows of a table.
class MessageLog final : public QAbstractTableModel {
  Q_OBJECT

 public:
  enum Column { TextColumn, FileColumn, LineColumn, ColumnCount };

  /// More are not kept: the oldest go first.
  static constexpr size_t MostKept = 100000;

  /// \param origin  null if the message comes from no file
  const LoggedMessage& Add(Severity severity, const QString& text, const MessageOrigin* origin);
  void Clear();

  const LoggedMessage& At(int row) const { return messages_[static_cast<size_t>(row)]; }
  /// The row of a message by its number; the first row if the message is no longer kept.
  int RowOf(size_t number) const;

  int rowCount(const QModelIndex& parent = {}) const override;
  int columnCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& index, int role) const override;
  QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

 private:
  std::vector<LoggedMessage> messages_;
  size_t lastNumber_ = 0;
};

}  // namespace orvane
