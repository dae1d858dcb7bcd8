#pragma once

#include "editing/trail_rows.h"

#include <string>
#include <string_view>

namespace orvane {

/// What a cell of the trail editor shows.
/// \param column     a `TrailColumn`, or one of those that follow
/// \param smColumns  how many SM columns there are
std::string TrailCellText(const TrailRow& row, size_t column, size_t smColumns);

/// What a text in a cell does to its row.
struct TrailCellResult {
  const char* refusal = nullptr;  ///< the message, if the text can't be read; null if it could
  bool gps = false;               ///< a latitude or longitude was typed
  bool compass = false;           ///< the point of a compass reading was typed
};

/// Puts a typed text into a row. Leading white space is skipped, and in angles the degree sign of
/// UTF-8 counts as that of old maps. A UTM or MGRS text in the column of latitudes gives the
/// longitude as well.
/// \return with `refusal` the row is as it was
TrailCellResult SetTrailCellText(TrailRow& row, size_t column, size_t smColumns,
                                 std::string_view text);

}  // namespace orvane
