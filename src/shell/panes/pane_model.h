#pragma once

#include "base/colors.h"

#include <QAbstractItemModel>
#include <QColor>
#include <QString>

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
  /// Rows look different: notifies the views.
  virtual void Refresh() = 0;

  virtual PaneRowLook LookOf(const QModelIndex& index) const = 0;
  /// As in `LookOf`, without the text.
  virtual bool IsSelected(const QModelIndex& index) const = 0;
  virtual bool IsOpen(const QModelIndex& index) const = 0;
  /// \param row  `QModelIndex::internalPointer` of some time before; the row may be gone
  /// \return an invalid index if it is
  virtual QModelIndex IndexOfPointer(const void* row) const = 0;

  int columnCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& index, int role) const override;
  Qt::ItemFlags flags(const QModelIndex& index) const override;
};

/// The colour that a pane paints a row's colour in.
QColor PaneColor(Color color);

}  // namespace orvane
