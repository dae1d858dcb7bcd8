#pragma once

#include "geo/angle_text.h"
#include "reports/point_index.h"
#include "reports/report_view.h"

#include <string>

namespace orvane {

/// The Point Index as it is drawn: as many groups of columns side by side as fit, entries along the
/// line and then down.
struct PointIndexView : ReportView {
  const PointIndex* index = nullptr;  ///< not owned
  CoordinateDisplay display = CoordinateDisplay::Minutes;
  int nameWidth = 0;
  int positionWidth = 0;
  int altitudeWidth = 0;  ///< 0 if no entry has one; the next two likewise
  int gridWidth = 0;
  int metersWidth = 0;
  int columnGap = 0;
  int groupGap = 0;
  int groupWidth = 0;  ///< with the gap after it
  int groupsAcross = 1;
};

/// Works out the columns in the fonts of a canvas, and holds the scroll.
void LayoutPointIndex(PointIndexView& view, Canvas& canvas);
/// The first step of that: the widths of the columns. It measures every text.
void MeasurePointIndex(PointIndexView& view, Canvas& canvas);
/// The second step: as many groups as fit the view.
void PlacePointIndex(PointIndexView& view);

/// The texts of an entry in the columns that are shown, with a tab between them.
std::string PointIndexLine(const PointIndexView& view, const PointIndexEntry& entry);

/// How many lines the entries take.
int PointIndexLines(const PointIndexView& view);

/// Draws captions and lines on a canvas whose clip is what has to be drawn.
void DrawPointIndex(const PointIndexView& view, Canvas& canvas);

}  // namespace orvane
