#pragma once

#include "estimates/range_estimates.h"
#include "reports/estimates_report.h"
#include "shell/reports/lines_window.h"

#include <map>

class QComboBox;
class QDoubleSpinBox;
class QPushButton;

namespace orvane {

class ShownTable;

/// The Range Estimates of the ranges that are selected beside the map: a table, and below it the
/// charts of one of them. Above are the factor of the bandwidth and the range of the charts. Work
/// that takes long shows its progress and can be cancelled; "Estimate Again" then restarts it.
class RangeEstimatesWindow final : public LinesWindow {
  Q_OBJECT

 public:
  RangeEstimatesWindow(Shell& shell, MapWindowWidget& mapWindow);

  std::unique_ptr<PrintedPages> MakePages(const ReportPageFrame& frame) override;

 protected:
  ReportMenuFacts MenuFacts() const override;
  void FollowMap() override;
  void DropMap() override;
  std::optional<ReportFile> FileToSave() override;
  std::optional<ReportPicture> PictureToSave() override;

 private:
  class ChartArea;

  /// What the figures depend on.
  struct Input {
    std::vector<const Range*> ranges;
    std::vector<std::vector<double>>
        fixes;  ///< of each range: places and days, one after the other
    std::vector<std::string> names;
    double factor = 1;

    friend bool operator==(const Input&, const Input&) = default;
  };

  RangeEstimatesWindow(Shell& shell, MapWindowWidget& mapWindow,
                       std::unique_ptr<ShownTable> report);

  void MakeBar();
  Input InputNow();
  void Estimate();
  void ShowEstimates();
  void ShowCharts();
  /// Null if there are none.
  const EstimateCharts* ShownCharts() const;

  ShownTable& shown_;
  Input input_;
  std::vector<RangeEstimate> estimates_;
  bool canceled_ = false;
  bool working_ = false;                ///< events that arrive meanwhile start no second estimate
  std::vector<EstimateCharts> charts_;  ///< of each of `estimates_`
  QDoubleSpinBox* factor_ = nullptr;
  QComboBox* ranges_ = nullptr;
  QPushButton* again_ = nullptr;
  ChartArea* chartArea_ = nullptr;
};

}  // namespace orvane
