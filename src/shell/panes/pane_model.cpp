#include "shell/panes/pane_model.h"

namespace orvane {

int PaneModel::columnCount(const QModelIndex& /*parent*/) const { return 1; }

QVariant PaneModel::data(const QModelIndex& index, int role) const {
  if (!index.isValid()) return {};
  const PaneRowLook look = LookOf(index);
  switch (role) {
    case Qt::DisplayRole:
      return look.text;
    case Qt::CheckStateRole:
      if (look.fixed) return {};
      return look.visible ? Qt::Checked : Qt::Unchecked;
    case Qt::AccessibleDescriptionRole:
      if (look.fixed) return {};
      return look.hasTriangle ? (look.open ? QStringLiteral("Level %1, open")
                                           : QStringLiteral("Level %1, closed"))
                                    .arg(look.depth + 1)
                              : QStringLiteral("Level %1").arg(look.depth + 1);
    default:
      return {};
  }
}

Qt::ItemFlags PaneModel::flags(const QModelIndex& index) const {
  if (!index.isValid()) return {};
  const Qt::ItemFlags usual = Qt::ItemIsEnabled | Qt::ItemIsSelectable;
  return LookOf(index).fixed ? usual : usual | Qt::ItemIsUserCheckable;
}

QColor PaneColor(Color color) {
  return color == NoColor ? QColor(Qt::black) : QColor::fromRgb(static_cast<QRgb>(color));
}

}  // namespace orvane
