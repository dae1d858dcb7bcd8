#include "pages/map_pages.h"

#include "base/file_names.h"
#include "pages/legend.h"
#include "pages/page_marks.h"
#include "view/draw_map.h"

namespace orvane {

std::string MapPages::Title() const { return std::string(BaseName(view_.map->fileName)); }

PageFonts MapPages::Fonts() const { return LegendFonts(view_.pointSize); }

int MapPages::Count() const { return static_cast<int>(PageCount(view_)); }

void MapPages::DrawPage(int page, Canvas& canvas) {
  const PagePlace place{page / view_.pagesAcross, page % view_.pagesAcross};
  const PixelRect area{0, 0, view_.device.width, view_.device.height};
  PlacePage(view_, place);
  view_.target = &canvas;
  TakeFontMetrics(view_);
  // A whole number of pixels, so that lines have the same width on all pages and devices.
  const int penWidth = view_.labelHeight / view_.pointSize;
  view_.penWidthFactor = static_cast<float>(penWidth);
  DrawMap(view_, area);
  // The edge of the map must not cut the lines that run along it.
  const int room = view_.device.horizontalResolution / 36;
  const PixelRect withEdges{-room, -room, area.right + room, area.bottom + room};
  canvas.SetClip(withEdges);
  if (page + 1 == Count() && HasLegend(view_)) DrawLegend(view_);
  canvas.SetClip(withEdges);
  DrawPageMarks(view_, place);
  view_.target = nullptr;
}

}  // namespace orvane
