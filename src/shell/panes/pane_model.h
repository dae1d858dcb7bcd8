#pragma once

#include "base/colors.h"

#include <QAbstractItemModel>
#include <QColor>
#include <QItemSelection>
#include <QString>

#include <vector>

namespace orvane {

/// What a pane paints of a row.
struct PaneRowLook {
  QString text;
  QColor color;
  int depth = 0;  ///< groups above the row
  bool hasTriangle = false;
  bool open = false;
  bool visible = false;
  bool selected = false;
  bool fixed = false;  ///< the row "New"
};

/// The rows of a pane as the toolkit sees them. The rows themselves belong to a `MapWindow`, and
/// functions over that record change them; after that, one of these two must be called.
class PaneModel : public QAbstractItemModel {
  Q_OBJECT

 public:
  using QAbstractItemModel::QAbstractItemModel;

  /// Rows came, went or moved: takes them all again. Call it before anything else looks at the
  /// model, which until then points to the rows of before.
  virtual void Rebuild() = 0;
  /// Rows look different: notifies the views. Says nothing of rows in groups that are not open.
  virtual void Refresh() = 0;

  virtual PaneRowLook LookOf(const QModelIndex& index) const = 0;
  /// As in `LookOf`, without the text.
  virtual bool IsSelected(const QModelIndex& index) const = 0;
  /// All selected rows.
  virtual QItemSelection Selected() const = 0;
  /// The rows that have rows below them, each after those above it.
  virtual std::vector<QModelIndex> Groups() const = 0;
  virtual bool IsOpen(const QModelIndex& index) const = 0;
  /// \param row  `QModelIndex::internalPointer` of some time before; the row may be gone
  /// \return an invalid index if it is
  virtual QModelIndex IndexOfPointer(const void* row) const = 0;

  int columnCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& index, int role) const override;
  Qt::ItemFlags flags(const QModelIndex& index) const override;

 protected:
  /// Adds the selected rows of one level to a selection, in ranges.
  /// \param selected  of each row of the level
  template <typename Rows, typename IsRowSelected>
  void AddSelected(const Rows& rows, const QModelIndex& parent, const IsRowSelected& selected,
                   QItemSelection& selection) const {
    int first = -1;
    const int count = static_cast<int>(rows.size());
    for (int row = 0; row <= count; ++row) {
      const bool inRange = row < count && selected(*rows[static_cast<size_t>(row)]);
      if (inRange && first < 0) first = row;
      if (inRange || first < 0) continue;
      selection.append(QItemSelectionRange(index(first, 0, parent), index(row - 1, 0, parent)));
      first = -1;
    }
  }
};

/// The colour that a pane paints a row's colour in.
QColor PaneColor(Color color);

}  // namespace orvane
