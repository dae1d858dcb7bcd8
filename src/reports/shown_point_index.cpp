#include "reports/shown_point_index.h"

#include <algorithm>
#include <utility>

namespace orvane {

void ShownPointIndex::Show(PointIndex index) {
  index_ = std::move(index);
  measured_ = false;
}

bool ShownPointIndex::SetDisplay(CoordinateDisplay display) {
  if (view_.display == display) return false;
  view_.display = display;
  measured_ = false;
  return true;
}

void ShownPointIndex::LayOut(Canvas& canvas) {
  const int lineHeight = view_.lineHeight;
  TakeReportFont(view_, canvas);
  // Measuring takes long for many names, and a change of size doesn't change the widths.
  if (!measured_ || view_.lineHeight != lineHeight) MeasurePointIndex(view_, canvas);
  measured_ = true;
  PlacePointIndex(view_);
}

bool ShownPointIndex::BringEntryToView(int entry) {
  if (entry < 0 || entry >= LineCount()) return false;
  const PixelRect place = LinePlace(entry);
  const bool isInView = place.top >= view_.headerHeight && place.bottom <= view_.viewHeight;
  if (!isInView) {
    const int line = entry / view_.groupsAcross;
    view_.scrollY = std::max(0, line * view_.lineHeight - view_.lineHeight);
    HoldReportScroll(view_);
  }
  return true;
}

void ShownPointIndex::StepSideways(int groups) {
  view_.scrollY -= groups * view_.groupWidth;
  HoldReportScroll(view_);
}

PixelRect ShownPointIndex::LinePlace(int line) const {
  const int left = line % view_.groupsAcross * view_.groupWidth - view_.scrollX;
  const int top = view_.headerHeight + line / view_.groupsAcross * view_.lineHeight - view_.scrollY;
  return {left, top, left + view_.groupWidth, top + view_.lineHeight};
}

std::string ShownPointIndex::LineText(int line) const {
  return PointIndexLine(view_, index_.entries[static_cast<size_t>(line)]);
}

int ShownPointIndex::PageStep() const {
  return std::max(1, (view_.viewHeight - view_.headerHeight) * 7 / 8);
}

}  // namespace orvane
