#pragma once

#include "base/messages.h"
#include "shell/files/file_state.h"

#include <QAbstractTableModel>
#include <QString>

#include <functional>
#include <unordered_map>
#include <vector>

namespace orvane {

/// One message, as shown.
struct LoggedMessage {
  size_t number = 0;  ///< counted over the whole run, from 1
  Severity severity = Severity::Warning;
  QString text;          ///< of an internal error with "Internal Error: " in front
  MessageOrigin origin;  ///< without a file if the message came from none
  FileState fileState;   ///< of the origin's file when the message came
};

/// All messages of the run, oldest first, as the rows of a table.
class MessageLog final : public QAbstractTableModel {
  Q_OBJECT

 public:
  enum Column { TextColumn, FileColumn, LineColumn, ColumnCount };

  /// So many are kept: the first, since later faults often follow from them.
  static constexpr size_t MostKept = 100000;

  /// \param origin  null if the message comes from no file
  /// \return the number of the message
  size_t Add(Severity severity, const QString& text, const MessageOrigin* origin);
  void Clear();

  const LoggedMessage& At(int row) const { return messages_[static_cast<size_t>(row)]; }
  /// \return the line that the message of a row came from, or else, for a message about a point, the
  ///         first line that names it in the file as it is now (`FirstLineOfPoint`); 0 if there is none
  size_t LineOf(int row) const;
  /// \return true if the message of a row leads to a line, or to the place of its point on a map. For a
  ///         message about a point this reads the file, once for each state of it.
  bool Leads(int row) const;
  /// \return true if the origin's point has a place on an open map. Empty for a program without maps.
  std::function<bool(const MessageOrigin& origin)> hasPlace;
  /// \return the row of a message by its number; the last row if the message is not kept
  int RowOf(size_t number) const;
  /// How many messages came when the log was full.
  size_t NotKept() const { return notKept_; }

  int rowCount(const QModelIndex& parent = {}) const override;
  int columnCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& index, int role) const override;
  QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

 Q_SIGNALS:
  /// The log is full, and a message was not kept.
  void messageDropped();

 private:
  /// Where a file named a point.
  struct PointLine {
    FileState fileState;
    size_t line = 0;
  };

  std::vector<LoggedMessage> messages_;
  mutable std::unordered_map<size_t, PointLine> pointLines_;  ///< by the number of the message
  size_t lastNumber_ = 0;
  size_t notKept_ = 0;
};

}  // namespace orvane
