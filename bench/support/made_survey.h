#pragma once

#include <string>

namespace orvane {

/// How much of a survey is made up.
struct SurveySize {
  int stations = 0;
  int loops = 0;  ///< legs between two stations that are near each other
  int fixes = 0;  ///< GPS readings beside the one that the survey starts from
};

/// The text of a made-up survey, always the same for one size: trails of 100 stations, each
/// branching off an earlier station, with errors of reading; then the loops and the fixes.
std::string MadeSurvey(const SurveySize& size);

/// The text of `count` places that were solved already.
std::string MadePlaces(int count);

}  // namespace orvane
