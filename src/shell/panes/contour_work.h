#pragma once

#include "elevation/contours_work.h"

#include <functional>

namespace orvane {

class Shell;

/// Does work of a pane that may make contours. If it takes long, a box shows how far it is and offers
/// to cancel it; the standard output gets a line for each step.
void RunContourWork(Shell& shell, const std::function<void(const ContourProgress&)>& work);

}  // namespace orvane
