#pragma once

namespace orvane {

/// The power of two near a pivot, by which its row is divided: the largest that is at most a
/// positive pivot; for a negative one the nearest of larger or equal size. 1 for a pivot that is
/// no finite number.
double PivotPower(double pivot);

}  // namespace orvane
