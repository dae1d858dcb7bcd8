#include "shell/entry/preview_table.h"

#include "paint/display_text.h"
#include "shell/plain_texts.h"

#include <QColor>
#include <QComboBox>
#include <QEvent>
#include <QGuiApplication>
#include <QPalette>
#include <QScrollBar>

#include <algorithm>
#include <utility>

namespace orvane {
namespace {

constexpr int Margin = 3;           ///< between a box and the edges of its column, in pixels
constexpr int WidestAtFirst = 320;  ///< of a column, in pixels
constexpr int RowsMeasured = 50;    ///< for the first width of a column

QString OwnCaption(int column) {
  static const QString captions[] = {QStringLiteral("Row"), QStringLiteral("State"),
                                     QStringLiteral("Reason")};
  return captions[column];
}

/// \return the text of a cell; empty for the number of the row, which is not a text
QString TextOf(const PreviewRow& row, int column) {
  switch (column) {
    case 0:
      return {};
    case 1:
      return DisplayText(std::string(row.state));
    case 2:
      return DisplayText(row.reason);
    default:
      break;
  }
  const auto cell = static_cast<size_t>(column - PreviewModel::OwnColumns);
  return cell < row.cells.size() ? DisplayText(row.cells[cell]) : QString();
}

/// Paler than the other rows, and still easy to read.
QColor LeftOutColor() {
  constexpr double Paler = 0.45;
  const QPalette palette = QGuiApplication::palette();
  const QColor text = palette.color(QPalette::Text);
  const QColor base = palette.color(QPalette::Base);
  const auto mixed = [&](int from, int to) { return static_cast<int>(from + (to - from) * Paler); };
  return {mixed(text.red(), base.red()), mixed(text.green(), base.green()),
          mixed(text.blue(), base.blue())};
}

}  // namespace

void PreviewModel::Set(Preview preview) {
  beginResetModel();
  preview_ = std::move(preview);
  size_t columns = preview_.captions.size();
  for (const PreviewRow& row : preview_.rows) columns = std::max(columns, row.cells.size());
  fileColumns_ = static_cast<int>(columns);
  endResetModel();
}

int PreviewModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(preview_.rows.size());
}

int PreviewModel::columnCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : OwnColumns + fileColumns_;
}

QVariant PreviewModel::data(const QModelIndex& index, int role) const {
  const PreviewRow& row = preview_.rows[static_cast<size_t>(index.row())];
  if (role == Qt::ForegroundRole && !row.state.empty() && row.state != "used") {
    return LeftOutColor();
  }
  if (role == Qt::TextAlignmentRole && index.column() == 0) {
    return QVariant::fromValue(Qt::Alignment(Qt::AlignRight | Qt::AlignVCenter));
  }
  if (role == Qt::ToolTipRole) return PlainTip(TextOf(row, index.column()));
  if (role != Qt::DisplayRole) return {};
  if (index.column() == 0) return static_cast<qulonglong>(row.row);
  return TextOf(row, index.column());
}

QString PreviewModel::CaptionOf(int section) const {
  if (section < OwnColumns) return OwnCaption(section);
  const auto column = static_cast<size_t>(section - OwnColumns);
  if (column < preview_.captions.size()) return DisplayText(preview_.captions[column]);
  return QStringLiteral("Column %1").arg(column + 1);
}

QVariant PreviewModel::headerData(int section, Qt::Orientation orientation, int role) const {
  if (orientation != Qt::Horizontal) return {};
  if (role == Qt::TextAlignmentRole) {
    return QVariant::fromValue(Qt::Alignment(Qt::AlignLeft | Qt::AlignTop));
  }
  if (role == Qt::ToolTipRole) return PlainTip(CaptionOf(section));
  return role == Qt::DisplayRole ? CaptionOf(section) : QVariant();
}

ChoiceHeader::ChoiceHeader(QWidget* parent) : QHeaderView(Qt::Horizontal, parent) {
  setSectionsMovable(false);
  setHighlightSections(false);
  connect(this, &QHeaderView::sectionResized, this, &ChoiceHeader::PlaceBoxes);
}

int ChoiceHeader::BoxHeight() const {
  return boxes_.empty() ? 0 : boxes_.front()->sizeHint().height();
}

QSize ChoiceHeader::sizeHint() const {
  QSize size = QHeaderView::sizeHint();
  if (!boxes_.empty()) size.rheight() += BoxHeight() + Margin;
  return size;
}

QComboBox* ChoiceHeader::BoxAt(int column) const {
  const int box = column - first_;
  return box >= 0 && box < static_cast<int>(boxes_.size()) ? boxes_[static_cast<size_t>(box)]
                                                           : nullptr;
}

void ChoiceHeader::NameBox(int box) {
  const QString caption =
      model()->headerData(first_ + box, Qt::Horizontal, Qt::DisplayRole).toString();
  QComboBox& named = *boxes_[static_cast<size_t>(box)];
  named.setAccessibleName(QStringLiteral("Meaning of column %1").arg(caption));
  named.view()->setAccessibleName(named.accessibleName());
}

void ChoiceHeader::ShowBoxes(int first, const std::vector<int>& chosen) {
  first_ = first;
  while (boxes_.size() > chosen.size()) {
    delete boxes_.back();
    boxes_.pop_back();
  }
  while (boxes_.size() < chosen.size()) {
    auto* box = new QComboBox(viewport());
    box->addItems(choices_);
    box->setMaxVisibleItems(static_cast<int>(choices_.size()));
    box->installEventFilter(this);
    const int number = static_cast<int>(boxes_.size());
    connect(box, &QComboBox::activated, this,
            [this, number](int choice) { Q_EMIT choiceChanged(number, choice); });
    boxes_.push_back(box);
  }
  for (size_t i = 0; i < chosen.size(); ++i) {
    boxes_[i]->setCurrentIndex(chosen[i]);
    NameBox(static_cast<int>(i));
    boxes_[i]->show();
  }
  updateGeometry();
  PlaceBoxes();
}

void ChoiceHeader::PlaceBoxes() {
  const int height = BoxHeight();
  for (size_t i = 0; i < boxes_.size(); ++i) {
    const int column = first_ + static_cast<int>(i);
    if (column >= count()) return;
    boxes_[i]->setGeometry(sectionViewportPosition(column) + Margin,
                           this->height() - height - Margin, sectionSize(column) - 2 * Margin,
                           height);
  }
}

void ChoiceHeader::updateGeometries() {
  QHeaderView::updateGeometries();
  PlaceBoxes();
}

void ChoiceHeader::resizeEvent(QResizeEvent* event) {
  QHeaderView::resizeEvent(event);
  PlaceBoxes();
}

bool ChoiceHeader::eventFilter(QObject* watched, QEvent* event) {
  const auto box = std::find(boxes_.begin(), boxes_.end(), watched);
  if (box != boxes_.end()) {
    if (event->type() == QEvent::FocusIn) {
      Q_EMIT focusMoved(first_ + static_cast<int>(box - boxes_.begin()));
    }
    // The wheel scrolls the table and changes no meaning.
    if (event->type() == QEvent::Wheel) {
      event->ignore();
      return true;
    }
  }
  return QHeaderView::eventFilter(watched, event);
}

PreviewTable::PreviewTable(QWidget* parent)
    : QTableView(parent), model_(new PreviewModel(this)), heading_(new ChoiceHeader(this)) {
  setObjectName(QStringLiteral("previewTable"));
  setAccessibleName(QStringLiteral("Rows of the file"));
  setHorizontalHeader(heading_);
  setModel(model_);
  setEditTriggers(NoEditTriggers);
  setSelectionBehavior(SelectRows);
  setTabKeyNavigation(false);
  setWordWrap(false);
  setHorizontalScrollMode(ScrollPerPixel);
  setAlternatingRowColors(true);
  verticalHeader()->hide();
  verticalHeader()->setDefaultSectionSize(fontMetrics().height() + 6);
  connect(horizontalScrollBar(), &QScrollBar::valueChanged, heading_, &ChoiceHeader::PlaceBoxes);
  connect(heading_, &ChoiceHeader::choiceChanged, this, &PreviewTable::assignmentChanged);
  connect(heading_, &ChoiceHeader::focusMoved, this, [this](int column) {
    if (model_->rowCount() > 0) scrollTo(model_->index(rowAt(0), column));
  });
}

void PreviewTable::SetChoices(const QStringList& choices) { heading_->SetChoices(choices); }

void PreviewTable::ShowPreview(Preview preview, const std::vector<int>& chosen) {
  const QModelIndex current = currentIndex();
  const int row = current.isValid() ? current.row() : 0;
  const int column = current.isValid() ? current.column() : 0;
  const int across = horizontalScrollBar()->value();
  const int down = verticalScrollBar()->value();
  model_->Set(std::move(preview));
  std::vector<int> shown = chosen;
  if (!shown.empty()) shown.resize(static_cast<size_t>(model_->FileColumns()));
  heading_->ShowBoxes(PreviewModel::OwnColumns, shown);
  if (!isSized_ && model_->rowCount() > 0) {
    isSized_ = true;
    heading_->setResizeContentsPrecision(RowsMeasured);
    resizeColumnsToContents();
    for (int i = 0; i < model_->columnCount(); ++i) {
      const QComboBox* box = heading_->BoxAt(i);
      const int least = box == nullptr ? 0 : box->sizeHint().width() + 2 * Margin;
      setColumnWidth(i, std::clamp(columnWidth(i), std::min(least, WidestAtFirst), WidestAtFirst));
    }
  }
  updateGeometries();
  horizontalScrollBar()->setValue(across);
  verticalScrollBar()->setValue(down);
  if (model_->rowCount() > 0) {
    selectionModel()->setCurrentIndex(model_->index(std::min(row, model_->rowCount() - 1),
                                                    std::min(column, model_->columnCount() - 1)),
                                      QItemSelectionModel::NoUpdate);
  }
}

}  // namespace orvane
