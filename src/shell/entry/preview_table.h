#pragma once

#include "entry/preview.h"

#include <QAbstractTableModel>
#include <QHeaderView>
#include <QStringList>
#include <QTableView>

#include <functional>
#include <vector>

class QComboBox;

namespace orvane {

/// The rows of a preview: number, state and reason, then the cells of the file.
class PreviewModel final : public QAbstractTableModel {
  Q_OBJECT

 public:
  /// The columns before those of the file.
  static constexpr int OwnColumns = 3;

  explicit PreviewModel(QObject* parent) : QAbstractTableModel(parent) {}

  void Set(Preview preview);
  int FileColumns() const { return fileColumns_; }

  int rowCount(const QModelIndex& parent = {}) const override;
  int columnCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& index, int role) const override;
  QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

 private:
  QString CaptionOf(int section) const;

  Preview preview_;
  int fileColumns_ = 0;
};

/// A heading whose captions have a box with a menu below them. Tab goes from box to box; the table
/// scrolls to the one with the focus.
class ChoiceHeader final : public QHeaderView {
  Q_OBJECT

 public:
  explicit ChoiceHeader(QWidget* parent);

  /// Sets the menu of all boxes.
  /// \param choices  the first is that of a column without a meaning
  void SetChoices(const QStringList& choices) { choices_ = choices; }
  /// Shows a box for each column from `first` on.
  /// \param chosen  what each box shows
  void ShowBoxes(int first, const std::vector<int>& chosen);
  /// \return the box of a column of the table, or null
  QComboBox* BoxAt(int column) const;

  QSize sizeHint() const override;

 Q_SIGNALS:
  /// The user has chosen.
  void choiceChanged(int box, int choice);
  void focusMoved(int column);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;
  void updateGeometries() override;
  void resizeEvent(QResizeEvent* event) override;

 public Q_SLOTS:
  void PlaceBoxes();

 private:
  int BoxHeight() const;
  void NameBox(int box);

  QStringList choices_;
  std::vector<QComboBox*> boxes_;
  int first_ = 0;
};

/// Shows what an import would do with each row of a file. Rows that are left out are grey. If columns can be
/// assigned to fields, each has a menu in the heading.
class PreviewTable final : public QTableView {
  Q_OBJECT

 public:
  explicit PreviewTable(QWidget* parent);

  /// Gives each column of the file a menu in the heading.
  /// \param choices  the first is that of a column without a meaning
  void SetChoices(const QStringList& choices);

  /// Shows a preview. Where the reader is in the table stays the same.
  /// \param chosen  for each column of the file, what its menu shows
  void ShowPreview(Preview preview, const std::vector<int>& chosen = {});

  ChoiceHeader& Heading() const { return *heading_; }

 Q_SIGNALS:
  /// The user has given a column of the file, from 0, another meaning.
  void assignmentChanged(int column, int choice);

 private:
  PreviewModel* model_;
  ChoiceHeader* heading_;
  bool isSized_ = false;
};

}  // namespace orvane
