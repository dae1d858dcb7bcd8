#include "shell/reports/range_estimates_window.h"

#include "estimates/kernel.h"
#include "estimates/range_fixes.h"
#include "model/map.h"
#include "pages/estimate_pages.h"
#include "paint/canvas_fonts.h"
#include "paint/display_text.h"
#include "paint/qt_canvas.h"
#include "shell/map_window_widget.h"
#include "shell/progress/busy_work.h"
#include "shell/reports/report_area.h"
#include "shell/shell.h"
#include "view/map_window.h"

#include <QAbstractItemView>
#include <QComboBox>
#include <QDoubleSpinBox>
#include <QLabel>
#include <QPainter>
#include <QPushButton>
#include <QScopedValueRollback>
#include <QSignalBlocker>
#include <QSplitter>
#include <QToolBar>

#include <utility>

namespace orvane {
namespace {

constexpr QSize FirstSize(980, 700);
constexpr QSize LeastChart(480, 200);

/// The charts as a picture of their own, in pixels.
constexpr QSize ChartPicture(1200, 400);
constexpr Color PaperColor = 0xFFFFFF;

/// \return charts of all estimates; fewer if it was cancelled
std::vector<EstimateCharts> ChartsOfAll(const std::vector<RangeEstimate>& estimates, double factor,
                                        Progress& progress) {
  ProgressSteps steps(&progress, WorkStage::Analyzing, estimates.size());
  std::vector<EstimateCharts> charts;
  for (const RangeEstimate& estimate : estimates) {
    if (!steps.Next()) break;
    charts.push_back(ChartsOf(estimate, factor));
  }
  return charts;
}

}  // namespace

/// Paints the charts.
class RangeEstimatesWindow::ChartArea final : public QWidget {
 public:
  explicit ChartArea(QWidget* parent) : QWidget(parent) {
    setObjectName(QStringLiteral("estimateCharts"));
    setAccessibleName(QStringLiteral("Charts"));
    setMinimumSize(std::max(LeastChart.width(), WidthOfTexts()), LeastChart.height());
  }

  void Show(const EstimateCharts* charts) {
    charts_ = charts;
    update();
  }

 protected:
  void paintEvent(QPaintEvent* /*event*/) override {
    const double ratio = devicePixelRatioF();
    const QSize size = (QSizeF(this->size()) * ratio).toSize();
    QImage picture(size, QImage::Format_RGB32);
    picture.fill(Qt::white);
    if (charts_ != nullptr) {
      const CanvasFonts fonts(logicalDpiY() * ratio);
      const PixelRect place{0, 0, size.width(), size.height()};
      QPainter painter(&picture);
      QtCanvas canvas(painter, fonts, place, {.antialias = true});
      DrawEstimateCharts(*charts_, place, EstimateChartCount, canvas);
    }
    picture.setDevicePixelRatio(ratio);
    QPainter(this).drawImage(0, 0, picture);
  }

 private:
  /// Charts that are narrower would write over each other.
  int WidthOfTexts() const {
    const CanvasFonts fonts(logicalDpiY());
    QImage unused(1, 1, QImage::Format_RGB32);
    QPainter painter(&unused);
    return EstimateChartCount * EstimateChartWidth(QtCanvas(painter, fonts, {0, 0, 1, 1}));
  }

  const EstimateCharts* charts_ = nullptr;
};

RangeEstimatesWindow::RangeEstimatesWindow(Shell& shell, MapWindowWidget& mapWindow)
    : RangeEstimatesWindow(shell, mapWindow, std::make_unique<ShownTable>()) {}

RangeEstimatesWindow::RangeEstimatesWindow(Shell& shell, MapWindowWidget& mapWindow,
                                           std::unique_ptr<ShownTable> report)
    : LinesWindow(shell, mapWindow, WindowKind::RangeEstimates, QStringLiteral("rangeEstimates"),
                  QStringLiteral("Range Estimates"), std::move(report), {}),
      shown_(static_cast<ShownTable&>(Report())) {
  ShowTitle("Range Estimates");
  MakeBar();
  auto* split = new QSplitter(Qt::Vertical, this);
  split->addWidget(takeCentralWidget());
  chartArea_ = new ChartArea(split);
  split->addWidget(chartArea_);
  split->setChildrenCollapsible(false);
  setCentralWidget(split);
  Area().setFocus();
  resize(FirstSize);
  split->setSizes({FirstSize.height() * 3 / 5, FirstSize.height() * 2 / 5});
  FollowMap();
  ShowMenu();
}

void RangeEstimatesWindow::MakeBar() {
  auto* bar = new QToolBar(QStringLiteral("Settings"), this);
  bar->setMovable(false);
  bar->setContextMenuPolicy(Qt::PreventContextMenu);
  auto* factorLabel = new QLabel(QStringLiteral(" &Bandwidth factor "), bar);
  factor_ = new QDoubleSpinBox(bar);
  factor_->setObjectName(QStringLiteral("bandwidthFactor"));
  factor_->setAccessibleName(QStringLiteral("Bandwidth factor"));
  factor_->setRange(LeastBandwidthFactor, LargestBandwidthFactor);
  factor_->setSingleStep(LeastBandwidthFactor);
  factor_->setDecimals(2);
  factor_->setValue(1);
  factor_->setKeyboardTracking(false);
  factor_->setLocale(QLocale::c());
  factorLabel->setBuddy(factor_);
  auto* rangeLabel = new QLabel(QStringLiteral("  &Charts of "), bar);
  ranges_ = new QComboBox(bar);
  ranges_->setObjectName(QStringLiteral("chartRange"));
  ranges_->setAccessibleName(QStringLiteral("Charts of"));
  ranges_->view()->setAccessibleName(QStringLiteral("Charts of"));
  ranges_->setSizeAdjustPolicy(QComboBox::AdjustToContents);
  rangeLabel->setBuddy(ranges_);
  again_ = new QPushButton(QStringLiteral("Estimate &Again"), bar);
  again_->setObjectName(QStringLiteral("estimateAgain"));
  for (QWidget* each : {static_cast<QWidget*>(factorLabel), static_cast<QWidget*>(factor_),
                        static_cast<QWidget*>(rangeLabel), static_cast<QWidget*>(ranges_)}) {
    bar->addWidget(each);
  }
  bar->addWidget(new QLabel(QStringLiteral("   "), bar));
  bar->addWidget(again_);
  addToolBar(bar);
  connect(factor_, &QDoubleSpinBox::valueChanged, this, [this] { FollowMap(); });
  connect(ranges_, &QComboBox::currentIndexChanged, this, &RangeEstimatesWindow::ShowCharts);
  connect(again_, &QPushButton::clicked, this, [this] {
    input_ = {};
    canceled_ = false;
    FollowMap();
  });
}

RangeEstimatesWindow::Input RangeEstimatesWindow::InputNow() {
  Input input;
  input.ranges = SelectedRangesOnly(TheMapWindow().Shown().rangeViews);
  input.factor = factor_->value();
  for (const Range* range : input.ranges) {
    input.names.push_back(RangeName(*range));
    std::vector<double>& fixes = input.fixes.emplace_back();
    for (const RangeFix& fix : FixesOf(*range)) {
      fixes.insert(fixes.end(), {fix.lat, fix.lon, static_cast<double>(fix.day)});
    }
  }
  return input;
}

void RangeEstimatesWindow::FollowMap() {
  if (working_ || MapSide() == nullptr) return;
  shown_.View().background = TheMapWindow().Shown().background;
  Input input = InputNow();
  if (input != input_ || input.ranges.empty()) {
    input_ = std::move(input);
    Estimate();
    Area().ClearSelection();
  }
  ShowEstimates();
}

void RangeEstimatesWindow::Estimate() {
  const QScopedValueRollback<bool> work(working_, true);
  EstimateSettings settings;
  settings.bandwidthFactor = input_.factor;
  BusyWork busy(TheShell().TheWorkspace(), TheShell().Boxes(), QStringLiteral("Estimating ranges"),
                TheShell().Clock());
  estimates_ = EstimateRanges(input_.ranges, settings, &busy);
  charts_ = ChartsOfAll(estimates_, input_.factor, busy);
  if (charts_.size() < estimates_.size()) estimates_.clear();
  canceled_ = estimates_.empty() && !input_.ranges.empty();
}

void RangeEstimatesWindow::ShowEstimates() {
  TableReport table = EstimatesTable(estimates_);
  if (canceled_) table.notes = {"The estimates were cancelled."};
  shown_.Show(std::move(table));
  {
    const QSignalBlocker quiet(ranges_);
    const QString chosen = ranges_->currentText();
    ranges_->clear();
    for (const RangeEstimate& estimate : estimates_) {
      ranges_->addItem(DisplayText(RangeName(*estimate.range)));
    }
    ranges_->setCurrentIndex(std::max(0, ranges_->findText(chosen)));
    ranges_->setEnabled(ranges_->count() > 0);
  }
  Area().ShowLines();
  ShowCharts();
}

void RangeEstimatesWindow::ShowCharts() {
  chartArea_->Show(ShownCharts());
  ShowMenu();
}

const EstimateCharts* RangeEstimatesWindow::ShownCharts() const {
  const auto place = static_cast<size_t>(std::max(0, ranges_->currentIndex()));
  return place < charts_.size() ? &charts_[place] : nullptr;
}

void RangeEstimatesWindow::DropMap() {
  estimates_.clear();
  input_ = {};
  charts_.clear();
  chartArea_->Show(nullptr);
  LinesWindow::DropMap();
}

ReportMenuFacts RangeEstimatesWindow::MenuFacts() const {
  return {.picture = "Charts", .hasPicture = ShownCharts() != nullptr};
}

std::optional<ReportFile> RangeEstimatesWindow::FileToSave() {
  return ReportFile{
      .title = "Save range estimates as...", .name = "untitled.txt", .text = shown_.FileText()};
}

std::optional<ReportPicture> RangeEstimatesWindow::PictureToSave() {
  if (ShownCharts() == nullptr) return std::nullopt;
  const auto charts = std::make_shared<const EstimateCharts>(*ShownCharts());
  ReportPicture picture;
  picture.name = charts->rangeName;
  picture.numbers = EstimateChartNumbers(*charts);
  picture.drawing = {.width = ChartPicture.width(),
                     .height = ChartPicture.height(),
                     .draw =
                         [charts](Canvas& canvas) {
                           canvas.Clear(PaperColor);
                           DrawEstimateCharts(*charts,
                                              {0, 0, ChartPicture.width(), ChartPicture.height()},
                                              EstimateChartCount, canvas);
                         },
                     .fonts = {}};
  return picture;
}

std::unique_ptr<PrintedPages> RangeEstimatesWindow::MakePages(const ReportPageFrame& frame) {
  return std::make_unique<EstimatePages>(frame, shown_.Table(), charts_);
}

}  // namespace orvane
