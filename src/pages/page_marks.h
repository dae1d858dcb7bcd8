#pragma once

#include "pages/print_map_window.h"

namespace orvane {

/// Draws marks in the corners of a page, by which several pages are joined by hand: an L with arms
/// of half an inch along the edges of the printable area. The outer corners of a job that another
/// page does not need have none, so a job of one page has no mark at all. Which corners have one is
/// in docs/compatibility.md.
void DrawPageMarks(const PrintMapWindow& view, PagePlace page);

}  // namespace orvane
