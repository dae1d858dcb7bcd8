#pragma once

#include "estimates/exact_hull.h"
#include "estimates/kernel.h"

#include <span>
#include <vector>

namespace orvane {

/// The outline of the set in which a density is at least `level`: straight from edge to edge of the
/// lattice, where the density is linear between two nodes.
/// \param level  per square metre, as `KernelDensity::SetOf` gives it; above what the density has at
///               the ends of its lattice
/// \return rings of open corners in metres. With north up and east to the right, the set is to the
///         left: outer rings go counterclockwise, holes clockwise.
std::vector<std::vector<PlanePlace>> RingsAtLevel(const KernelDensity& density, double level);

/// The area inside a ring.
/// \return square metres, negative for a hole
double SignedArea(std::span<const PlanePlace> ring);

}  // namespace orvane
