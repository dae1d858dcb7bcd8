#pragma once

#include "shell/reports/lines_window.h"

namespace orvane {

class ShownTrailSummary;

/// The Trail Summary of the trails that are selected beside the map.
class TrailSummaryWindow final : public LinesWindow {
  Q_OBJECT

 public:
  TrailSummaryWindow(Shell& shell, MapWindowWidget& mapWindow);

  std::unique_ptr<PrintedPages> MakePages(const ReportPageFrame& frame) override;

 protected:
  void FollowMap() override;
  std::optional<ReportFile> FileToSave() override;

 private:
  TrailSummaryWindow(Shell& shell, MapWindowWidget& mapWindow,
                     std::unique_ptr<ShownTrailSummary> report);

  ShownTrailSummary& shown_;
};

}  // namespace orvane
