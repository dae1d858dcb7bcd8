#pragma once

#include "reports/point_index_view.h"
#include "reports/shown_report.h"

#include <string>

namespace orvane {

/// The Point Index in its window. Each entry counts as a line, and several are side by side.
class ShownPointIndex final : public ShownReport {
 public:
  ShownPointIndex() { view_.index = &index_; }
  ShownPointIndex(const ShownPointIndex&) = delete;
  ShownPointIndex& operator=(const ShownPointIndex&) = delete;

  /// Takes the entries to show; the caller then lays out.
  void Show(PointIndex index);
  /// Sets the form of the coordinates; the caller then lays out.
  /// \return true if it is another one
  bool SetDisplay(CoordinateDisplay display);
  const PointIndex& Index() const { return index_; }

  /// Brings an entry into view: its line is the second one, if it was out of view. One out of range
  /// is refused.
  /// \return false for that
  bool BringEntryToView(int entry);
  /// The arrows to the left and right: the list moves up or down by the width of a group; see
  /// docs/compatibility.md.
  /// \param groups  1 to the right, -1 to the left
  void StepSideways(int groups);

  ReportView& View() override { return view_; }
  const ReportView& View() const override { return view_; }
  void LayOut(Canvas& canvas) override;
  void Draw(Canvas& canvas) const override { DrawPointIndex(view_, canvas); }
  int LineCount() const override { return static_cast<int>(index_.entries.size()); }
  int Across() const override { return view_.groupsAcross; }
  PixelRect LinePlace(int line) const override;
  std::string LineText(int line) const override;
  std::string FileText() const override { return PointIndexText(index_, view_.display); }
  int PageStep() const override;
  /// The entries are copies, so they stay.
  void Drop() override {}

 private:
  PointIndex index_;
  PointIndexView view_;
  bool measured_ = false;  ///< the columns have their widths
};

}  // namespace orvane
