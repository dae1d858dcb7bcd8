#pragma once

#include "shell/reports/lines_window.h"

#include <QTimer>

#include <string>

class QKeyEvent;

namespace orvane {

class ShownPointIndex;

/// The Point Index of a map: a snapshot, taken when the window opens and when the map is read again.
/// Typing goes to a name; a double click shows it on the map. The arrows to the left and right move
/// the list up and down, see docs/compatibility.md.
class PointIndexWindow final : public LinesWindow {
  Q_OBJECT

 public:
  PointIndexWindow(Shell& shell, MapWindowWidget& mapWindow);

  /// Brings the first entry of a name into view, or says that there is none.
  void FindInPointIndex(const std::string& name);
  /// What is typed now.
  const std::string& Typed() const { return typed_; }

  std::unique_ptr<PrintedPages> MakePages(const ReportPageFrame& frame) override;

 protected:
  void FollowMap() override;
  std::optional<ReportFile> FileToSave() override;
  bool Find() override;

 private:
  PointIndexWindow(Shell& shell, MapWindowWidget& mapWindow,
                   std::unique_ptr<ShownPointIndex> report);

  void TakeSnapshot();
  bool TakeKey(const QKeyEvent& event);
  void Type(char character);
  void BringToView(int entry);
  void ShowOnMap(int entry);

  ShownPointIndex& shown_;
  std::string typed_;
  QTimer typeTimer_;
};

}  // namespace orvane
