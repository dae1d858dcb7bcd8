#pragma once

#include "shell/reports/lines_window.h"

class QKeyEvent;

namespace orvane {

class ShownRangeStats;
struct RangeStatsCounts;

/// Range Stats of the ranges and overlaps that are selected beside the map. The keys 0 to 3 choose
/// what the charts show.
class RangeStatsWindow final : public LinesWindow {
  Q_OBJECT

 public:
  /// \param counts  shared by all such windows; must outlive them
  RangeStatsWindow(Shell& shell, MapWindowWidget& mapWindow, RangeStatsCounts& counts);

  std::unique_ptr<PrintedPages> MakePages(const ReportPageFrame& frame) override;

 protected:
  ReportMenuFacts MenuFacts() const override;
  void FollowMap() override;
  std::optional<ReportFile> FileToSave() override;
  bool CopyLines() override;
  std::optional<ReportPicture> PictureToSave() override;

 private:
  RangeStatsWindow(Shell& shell, MapWindowWidget& mapWindow,
                   std::unique_ptr<ShownRangeStats> report);

  bool TakeKey(const QKeyEvent& event);

  ShownRangeStats& shown_;
};

}  // namespace orvane
