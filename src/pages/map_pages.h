#pragma once

#include "pages/print_map_window.h"
#include "pages/printed_pages.h"

#include <string>

namespace orvane {

/// The pages of a map, from the top left one, row by row. The last one has the legend.
class MapPages final : public PrintedPages {
 public:
  /// \param view  of `AcceptPrintDialog`; its map must outlive the pages
  explicit MapPages(PrintMapWindow view) : view_(std::move(view)) {}

  /// The name of the map's file without its folder.
  std::string Title() const override;
  PageFonts Fonts() const override;
  int Count() const override;
  void DrawPage(int page, Canvas& canvas) override;

 private:
  PrintMapWindow view_;
};

}  // namespace orvane
