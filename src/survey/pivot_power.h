#pragma once

namespace orvane {

/// The power of two near a pivot by which its row is divided: for a positive pivot the largest that
/// is not larger, for a negative one the nearest that is not smaller in size. 1 for a pivot that is
/// not finite.
double PivotPower(double pivot);

}  // namespace orvane
