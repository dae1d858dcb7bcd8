#include "shell/reports/survey_quality_window.h"

#include "model/map.h"
#include "pages/table_pages.h"
#include "paint/display_text.h"
#include "shell/bring_to_front.h"
#include "shell/map/map_view.h"
#include "shell/map_window_widget.h"
#include "shell/reports/report_area.h"
#include "view/map_window.h"
#include "view/view_transform.h"

#include <QAbstractItemView>
#include <QCheckBox>
#include <QCloseEvent>
#include <QComboBox>
#include <QLabel>
#include <QSignalBlocker>
#include <QToolBar>

#include <utility>

namespace orvane {
namespace {

constexpr QSize FirstSize(860, 520);

/// The entry of a list that lets all through.
constexpr int All = 0;

QString Caption(const char* text) { return QString::fromLatin1(text); }

}  // namespace

SurveyQualityWindow::SurveyQualityWindow(Shell& shell, MapWindowWidget& mapWindow)
    : SurveyQualityWindow(shell, mapWindow, std::make_unique<ShownTable>()) {}

SurveyQualityWindow::SurveyQualityWindow(Shell& shell, MapWindowWidget& mapWindow,
                                         std::unique_ptr<ShownTable> report)
    : LinesWindow(shell, mapWindow, WindowKind::SurveyQuality, QStringLiteral("surveyQuality"),
                  QStringLiteral("Survey Quality"), std::move(report), {}),
      shown_(static_cast<ShownTable&>(Report())) {
  ShowTitle("Survey Quality");
  MakeBar();
  connect(&Area(), &ReportArea::selectionChanged, this, &SurveyQualityWindow::ShowOnMap);
  connect(&Area(), &ReportArea::openRequested, this, &SurveyQualityWindow::CenterOnLine);
  resize(FirstSize);
  FollowMap();
  ShowMenu();
}

SurveyQualityWindow::~SurveyQualityWindow() { ClearMap(); }

void SurveyQualityWindow::MakeBar() {
  auto* bar = new QToolBar(QStringLiteral("Filters"), this);
  bar->setMovable(false);
  bar->setContextMenuPolicy(Qt::PreventContextMenu);
  const auto addList = [&](const char* label, const char* name) {
    auto* caption = new QLabel(Caption(label), bar);
    auto* list = new QComboBox(bar);
    list->setObjectName(Caption(name));
    list->setSizeAdjustPolicy(QComboBox::AdjustToContents);
    caption->setBuddy(list);
    list->setAccessibleName(caption->text().remove(QLatin1Char('&')).trimmed());
    list->view()->setAccessibleName(list->accessibleName());
    bar->addWidget(caption);
    bar->addWidget(list);
    return list;
  };
  kinds_ = addList(" &Kind ", "qualityKinds");
  for (const char* kind : {"All", "Legs", "Fixes", "Altitudes", "Chains"}) {
    kinds_->addItem(Caption(kind));
  }
  trails_ = addList("  T&rail ", "qualityTrails");
  allLegs_ = new QCheckBox(QStringLiteral("&Colour by Error"), bar);
  allLegs_->setObjectName(QStringLiteral("colourByError"));
  bar->addWidget(new QLabel(QStringLiteral("   "), bar));
  bar->addWidget(allLegs_);
  addToolBar(bar);
  connect(kinds_, &QComboBox::currentIndexChanged, this, &SurveyQualityWindow::ShowRows);
  connect(trails_, &QComboBox::currentIndexChanged, this, &SurveyQualityWindow::ShowRows);
  connect(allLegs_, &QCheckBox::toggled, this, &SurveyQualityWindow::ShowOnMap);
}

void SurveyQualityWindow::FollowMap() {
  const MapWindow& view = TheMapWindow().Shown();
  shown_.View().background = view.background;
  if (UpdateSurveyQuality(quality_, *view.map)) Area().ClearSelection();
  ShowTrails();
  ShowRows();
}

/// Fills the list of trails and keeps the choice, as far as it is still there.
void SurveyQualityWindow::ShowTrails() {
  const QSignalBlocker quiet(trails_);
  const QString chosen = trails_->currentText();
  trails_->clear();
  trails_->addItem(QStringLiteral("All"));
  for (const std::string& trail : QualityTrails(quality_)) {
    trails_->addItem(DisplayText(trail), QByteArray::fromStdString(trail));
  }
  const int place = trails_->findText(chosen);
  trails_->setCurrentIndex(place < 0 ? All : place);
}

void SurveyQualityWindow::ShowRows() {
  QualityFilter filter;
  if (kinds_->currentIndex() > All) {
    filter.kind = static_cast<QualityKind>(kinds_->currentIndex() - 1);
  }
  if (trails_->currentIndex() > All) {
    filter.trail = trails_->currentData().toByteArray().toStdString();
  }
  std::vector<size_t> rows = FilteredRows(quality_, filter);
  if (rows != rows_) Area().ClearSelection();
  rows_ = std::move(rows);
  shown_.Show(QualityTable(quality_, rows_));
  Area().ShowLines();
  ShowOnMap();
}

void SurveyQualityWindow::ShowOnMap() {
  MapWindowWidget* mapWindow = MapSide();
  if (mapWindow == nullptr) return;
  const ReportSelection& selection = Area().Selection();
  const auto line = static_cast<size_t>(selection.current);
  std::optional<size_t> current;
  if (!selection.lines.empty() && selection.current >= 0 && line < rows_.size()) {
    current = rows_[line];
  }
  mapWindow->Shown().errors = QualityOverlay(quality_, allLegs_->isChecked(), current);
  mapWindow->View().RequestRepaint();
}

void SurveyQualityWindow::CenterOnLine(int line) {
  MapWindowWidget* mapWindow = MapSide();
  if (mapWindow == nullptr) return;
  ShowOnMap();
  if (const auto place = MiddleOfRow(quality_.rows[rows_[static_cast<size_t>(line)]])) {
    CenterOn(mapWindow->Shown(), *place);
    mapWindow->View().ShowMoved();
  }
  BringToFront(*mapWindow);
}

void SurveyQualityWindow::ClearMap() {
  MapWindowWidget* mapWindow = MapSide();
  if (mapWindow == nullptr) return;
  mapWindow->Shown().errors = {};
  mapWindow->View().RequestRepaint();
}

void SurveyQualityWindow::DropMap() {
  quality_ = {};
  rows_.clear();
  LinesWindow::DropMap();
}

void SurveyQualityWindow::closeEvent(QCloseEvent* event) {
  ClearMap();
  LinesWindow::closeEvent(event);
}

std::optional<ReportFile> SurveyQualityWindow::FileToSave() {
  return ReportFile{
      .title = "Save survey quality as...", .name = "untitled.txt", .text = shown_.FileText()};
}

std::unique_ptr<PrintedPages> SurveyQualityWindow::MakePages(const ReportPageFrame& frame) {
  return std::make_unique<TablePages>(frame, "Survey Quality", shown_.Table());
}

}  // namespace orvane
