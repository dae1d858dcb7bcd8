#pragma once

#include "model/records.h"

#include <array>
#include <optional>
#include <string>

namespace orvane {

/// The lines of text with the figures of a range or an overlap, in tips and reports. Ask from line
/// 0 on until there is none.

/// The user's names of SM1, SM2 and SM3, as the map has them.
using MeasureNames = std::array<std::optional<std::string>, 3>;

/// One line of the report of a range: areas, daily path, two hours of travel a line, and clusters
/// from 100 % down. A range without travel continues with the clusters at once.
std::optional<std::string> RangeReportLine(const Range& range, int line);

/// One line of the report of an overlap. The first measure without a name ends it.
std::optional<std::string> IntersectionReportLine(const RangeIntersection& record,
                                                  const MeasureNames& names, int line);

/// One line of the tip of a range.
/// \param clusterMask  bit i shows the cluster line of (100 - 5 i) %; after the lines of the mask
///                     further lines repeat that of 5 %, up to line 24
std::optional<std::string> RangeTipLine(const Range& range, std::uint32_t clusterMask, int line);

/// One line of the tip, and of the saved text, of an overlap.
std::optional<std::string> RangeTipLine(const RangeIntersection& record, const MeasureNames& names,
                                        int line);

/// The one line of the tip of the row that makes a new range.
std::optional<std::string> NewRangeTipLine(int line);

}  // namespace orvane
