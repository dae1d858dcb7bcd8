#pragma once

#include <QWidget>

namespace orvane {

class PaneModel;
class PaneView;

/// A pane beside the map: rows under a title bar.
class TitledPane : public QWidget {
  Q_OBJECT

 public:
  PaneView& Rows() { return *rows_; }

 Q_SIGNALS:
  /// The rows that are drawn on the map are other ones, or look different.
  void visibilityChanged();
  /// Other rows are selected.
  void selectionChanged();
  /// The dialog of the selected rows' looks is wanted.
  void controlRequested();
  /// The selected rows are to be deleted.
  void deleteRequested();
  /// The menu key was pressed.
  /// \param global  where the menu opens
  void menuRequested(QPoint global);

 protected:
  /// \param model  is given this as parent
  TitledPane(const QString& title, PaneModel& model, QWidget* parent);

 private:
  PaneView* rows_;
};

}  // namespace orvane
