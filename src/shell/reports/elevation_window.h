#pragma once

#include "elevation/profile.h"
#include "model/unused_records.h"
#include "shell/print/printable_window.h"
#include "shell/reports/report_window.h"

#include <memory>

class QScrollBar;

namespace orvane {

class ElevationPlot;

/// The profile of a trail, or of a straight transect across the map. A map window can have any
/// number of them. Each keeps its line and follows every change of it; a trail that is gone after
/// its map was read again closes the window.
///
/// Escape ends a drag, or else closes the window.
class ElevationWindow final : public ReportWindow, public PrintableWindow {
  Q_OBJECT

 public:
  /// \param view  a new profile, on the map of `mapWindow`
  ElevationWindow(Shell& shell, MapWindowWidget& mapWindow, ElevationView view);

  bool Answer(CommandId id) override;
  std::unique_ptr<PrintedPages> MakePages(const ReportPageFrame& frame) override;

  ElevationPlot& Plot() { return *plot_; }
  QScrollBar& Bar() { return *bar_; }

 protected:
  ReportMenuFacts MenuFacts() const override;
  MenuState MakeMenu(const Map& map) const override;
  void FollowMap() override;
  void DropMap() override {}
  bool CopyLines() override;
  std::optional<ReportPicture> PictureToSave() override;
  bool Find() override;

 private:
  void Connect(MapWindowWidget& mapWindow);
  void FollowLine();
  void ShowBar();
  void FollowAction(int action);

  ElevationPlot* plot_;
  QScrollBar* bar_;
  LineIdentity identity_;
  /// Keeps the line, also if its trail is deleted.
  std::shared_ptr<const RecordHolders::Keep> kept_;
};

}  // namespace orvane
