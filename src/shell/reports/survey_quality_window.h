#pragma once

#include "reports/survey_quality.h"
#include "shell/reports/lines_window.h"

class QCheckBox;
class QComboBox;

namespace orvane {

class ShownTable;

/// The Survey Quality of a map. Above the list are filters by kind and trail, and the tick "Colour
/// by Error". The current line is shown on the map in the colour of its error; a double click or
/// Return brings it into the middle of the view.
class SurveyQualityWindow final : public LinesWindow {
  Q_OBJECT

 public:
  SurveyQualityWindow(Shell& shell, MapWindowWidget& mapWindow);
  ~SurveyQualityWindow() override;

  std::unique_ptr<PrintedPages> MakePages(const ReportPageFrame& frame) override;

 protected:
  void FollowMap() override;
  void DropMap() override;
  std::optional<ReportFile> FileToSave() override;
  void closeEvent(QCloseEvent* event) override;

 private:
  SurveyQualityWindow(Shell& shell, MapWindowWidget& mapWindow, std::unique_ptr<ShownTable> report);

  void MakeBar();
  void ShowTrails();
  void ShowRows();
  void ShowOnMap();
  void CenterOnLine(int line);
  void ClearMap();

  ShownTable& shown_;
  SurveyQuality quality_;
  std::vector<size_t> rows_;  ///< the rows of `quality_` that are shown
  QComboBox* kinds_ = nullptr;
  QComboBox* trails_ = nullptr;
  QCheckBox* allLegs_ = nullptr;
};

}  // namespace orvane
