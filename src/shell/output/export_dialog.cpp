#include "shell/output/export_dialog.h"

#include "model/workspace.h"
#include "paint/display_text.h"
#include "panes/trail_tree.h"
#include "shell/messages/title_width.h"

#include <QAbstractItemView>
#include <QCheckBox>
#include <QComboBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

#include <algorithm>
#include <utility>

namespace orvane {
namespace {

constexpr int LayersInRow = 3;
constexpr int NumberLetters = 10;

/// The texts of the ticks, in the order of `LayerNames`, and what each layer holds.
constexpr std::pair<const char*, const char*> LayerTexts[LayerCount] = {
    {"&Points", "Named points and the stops of follows"},
    {"&Trails", "Trails and follows, as lines with altitudes"},
    {"&Areas", "Filled trails"},
    {"&Grids", "The cells of all grids"},
    {"&Shades", "The shaded cells"},
    {"&Ranges", "The MCP of each home range"},
    {"&Clusters", "The hulls of clusters, level by level"},
    {"&Overlaps", "The overlaps of two ranges"},
    {"Co&ntours", "The contour lines of the map or of its basis"},
    {"Est&imates",
     "Outlines of each home range: MCP of 95 and 50 % of the fixes, kernels of 95 and "
     "50 % of the density"}};

QString PlainText(QString text) { return text.remove(QLatin1Char('&')); }

}  // namespace

ExportDialog::ExportDialog(Map& map, ExportFields& fields, const LoadedModule& loaded,
                           QWidget* parent)
    : QDialog(parent),
      map_(map),
      remembered_(fields),
      loaded_(loaded),
      format_(new QComboBox(this)),
      layerBox_(MakeLayers()),
      systemBox_(MakeSystems()) {
  setObjectName(QStringLiteral("exportDialog"));
  setWindowTitle(QStringLiteral("Export"));
  auto* layout = new QVBoxLayout(this);
  layout->addLayout(MakeFormatRow());
  if (loaded.module == nullptr) {
    auto* missing = new QLabel(DisplayText(MissingModuleText(loaded)), this);
    missing->setObjectName(QStringLiteral("missingModule"));
    missing->setWordWrap(true);
    missing->setMinimumWidth(systemBox_->sizeHint().width());
    layout->addWidget(missing);
  }
  layout->addWidget(layerBox_);
  layout->addWidget(systemBox_);
  layout->addStretch();
  layout->addLayout(MakeButtons());
  FollowFormat();
  WidenToTitle(*this);
  format_->setFocus();
}

QLayout* ExportDialog::MakeFormatRow() {
  auto* row = new QHBoxLayout;
  auto* label = new QLabel(QStringLiteral("&Format:"), this);
  label->setBuddy(format_);
  format_->setObjectName(QStringLiteral("format"));
  format_->setAccessibleName(QStringLiteral("Format"));
  format_->view()->setAccessibleName(QStringLiteral("Formats"));
  for (const ExportFormat format : ExportFormats) {
    if (LayerFormatOf(format) && loaded_.module == nullptr) continue;
    format_->addItem(DisplayText(ExportFormatText(format)), static_cast<int>(format));
  }
  const int chosen = format_->findData(static_cast<int>(remembered_.format));
  format_->setCurrentIndex(std::max(chosen, 0));
  connect(format_, &QComboBox::currentIndexChanged, this, &ExportDialog::FollowFormat);
  row->addWidget(label);
  row->addWidget(format_, 1);
  return row;
}

QGroupBox* ExportDialog::MakeLayers() {
  auto* box = new QGroupBox(QStringLiteral("Layers"), this);
  box->setObjectName(QStringLiteral("layers"));
  auto* grid = new QGridLayout(box);
  for (size_t i = 0; i < LayerCount; ++i) {
    const auto& [text, holds] = LayerTexts[i];
    auto* tick = new QCheckBox(QString::fromLatin1(text), box);
    tick->setObjectName(QString::fromLatin1(LayerNames[i].data()));
    tick->setAccessibleName(PlainText(tick->text()));
    tick->setAccessibleDescription(QString::fromLatin1(holds));
    tick->setToolTip(QString::fromLatin1(holds));
    offered_[i] = LayerNames[i] != "contours" || MapWithContours(&map_) != nullptr;
    tick->setEnabled(offered_[i]);
    tick->setChecked(offered_[i] && remembered_.layers[i]);
    const int place = static_cast<int>(i);
    grid->addWidget(tick, place / LayersInRow, place % LayersInRow);
    layers_[i] = tick;
  }
  auto* buttons = new QHBoxLayout;
  buttons->addStretch();
  for (const auto& [text, ticked] :
       {std::pair{QStringLiteral("Tick A&ll"), true}, {QStringLiteral("&Untick All"), false}}) {
    auto* button = new QPushButton(text, box);
    button->setAccessibleName(PlainText(text));
    button->setAutoDefault(false);
    connect(button, &QPushButton::clicked, this, [this, ticked = ticked] { TickAll(ticked); });
    buttons->addWidget(button);
  }
  grid->addLayout(buttons, grid->rowCount(), 0, 1, LayersInRow);
  return box;
}

QGroupBox* ExportDialog::MakeSystems() {
  auto* box = new QGroupBox(QStringLiteral("Coordinate system"), this);
  box->setObjectName(QStringLiteral("systems"));
  auto* grid = new QGridLayout(box);
  const auto add = [&](const QString& text, const char* name, ExportSystem system) {
    auto* button = new QRadioButton(text, box);
    button->setObjectName(QString::fromLatin1(name));
    button->setAccessibleName(PlainText(text));
    button->setChecked(remembered_.system == system);
    return button;
  };
  wgs84_ = add(QStringLiteral("&WGS 84: longitude and latitude in degrees"), "wgs84",
               ExportSystem::Wgs84);
  utm_ =
      add(DisplayText(UtmChoiceText(map_)).replace(QStringLiteral("UTM"), QStringLiteral("UT&M")),
          "utm", ExportSystem::Utm);
  epsg_ = add(QStringLiteral("&EPSG number:"), "epsg", ExportSystem::Number);
  number_ = new QLineEdit(DisplayText(remembered_.number), box);
  number_->setObjectName(QStringLiteral("number"));
  number_->setAccessibleName(QStringLiteral("EPSG number, such as 21096"));
  number_->setMaximumWidth(NumberLetters * number_->fontMetrics().averageCharWidth() +
                           number_->sizeHint().height());
  connect(number_, &QLineEdit::textEdited, epsg_, [this] { epsg_->setChecked(true); });
  grid->addWidget(wgs84_, 0, 0, 1, 3);
  grid->addWidget(utm_, 1, 0, 1, 3);
  grid->addWidget(epsg_, 2, 0);
  grid->addWidget(number_, 2, 1);
  grid->setColumnStretch(2, 1);
  return box;
}

QLayout* ExportDialog::MakeButtons() {
  auto* row = new QHBoxLayout;
  auto* write = new QPushButton(QStringLiteral("E&xport..."), this);
  write->setAccessibleName(QStringLiteral("Export..."));
  write->setDefault(true);
  connect(write, &QPushButton::clicked, this, &ExportDialog::accept);
  auto* cancel = new QPushButton(QStringLiteral("Cancel"), this);
  cancel->setAccessibleName(QStringLiteral("Cancel"));
  cancel->setAutoDefault(false);
  connect(cancel, &QPushButton::clicked, this, &ExportDialog::reject);
  row->addStretch();
  row->addWidget(write);
  row->addWidget(cancel);
  return row;
}

void ExportDialog::TickAll(bool ticked) {
  for (QCheckBox* tick : layers_) tick->setChecked(ticked && tick->isEnabled());
}

ExportFormat ExportDialog::Format() const {
  return static_cast<ExportFormat>(format_->currentData().toInt());
}

ExportFields ExportDialog::Fields() const {
  ExportFields fields = remembered_;
  fields.format = Format();
  // A layer that this map lacks keeps its tick for the next map.
  for (size_t i = 0; i < LayerCount; ++i) {
    if (offered_[i]) fields.layers[i] = layers_[i]->isChecked();
  }
  if (wgs84_->isChecked()) fields.system = ExportSystem::Wgs84;
  if (utm_->isChecked()) fields.system = ExportSystem::Utm;
  if (epsg_->isChecked()) fields.system = ExportSystem::Number;
  fields.number = StoredText(number_->text(), remembered_.number);
  return fields;
}

void ExportDialog::FollowFormat() {
  layerBox_->setEnabled(TakesLayers(Format()));
  systemBox_->setEnabled(TakesSystem(Format()));
}

void ExportDialog::GoTo(ExportField field) {
  if (field == ExportField::Format) format_->setFocus();
  if (field == ExportField::Layers) layers_.front()->setFocus();
  if (field == ExportField::System) utm_->setFocus();
  if (field != ExportField::Number) return;
  number_->setFocus();
  number_->selectAll();
}

void ExportDialog::accept() {
  const ExportFields fields = Fields();
  ExportReading reading = ReadExportFields(fields, offered_, map_, loaded_);
  if (reading.refused != ExportField::None) {
    GoTo(reading.refused);
    return;
  }
  remembered_ = fields;
  request_ = std::move(reading.request);
  QDialog::accept();
}

}  // namespace orvane
