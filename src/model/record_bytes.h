#pragma once

#include "model/records.h"

#include <cstddef>

namespace orvane {

/// \return the memory that a record takes with all that it owns, in bytes, close to the truth
size_t BytesOf(const Point& point);
size_t BytesOf(const Trail& trail);
size_t BytesOf(const Range& range);
size_t BytesOf(const Grid& grid);
size_t BytesOf(const GridShade& shade);

}  // namespace orvane
