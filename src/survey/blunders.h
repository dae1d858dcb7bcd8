#pragma once

#include "survey/survey_network.h"

#include <string>
#include <vector>

namespace orvane {

/// Looks for readings that were likely written down wrong: one change to one reading explains the
/// error of its part of the survey. The part is left out of the solve, since the solve spreads a
/// blunder over the whole loop.

/// What may have happened to a reading.
enum class BlunderKind {
  BackwardBearing,  ///< read from the wrong end of the needle
  SwappedDigits,    ///< two digits side by side
  MisreadTens,      ///< another digit of the tens of degrees, or of the tens of minutes of a fix
  WrongSign,        ///< up for down, or the wrong hemisphere of a fix
  DoubledDistance,  ///< written twice
  HalvedDistance,   ///< only half was written
  Feet              ///< written in feet
};

/// The number of a reading that a change is about.
enum class BlunderField { Bearing, Distance, Inclination, Latitude, Longitude };

/// A change to one reading that explains an error.
struct Blunder {
  const Point* point = nullptr;  ///< holds the reading
  const Measurement* reading = nullptr;
  BlunderKind kind = BlunderKind::BackwardBearing;
  BlunderField field = BlunderField::Bearing;
  double written = 0;  ///< degrees or metres
  double likely = 0;   ///< likewise
  double before = 0;   ///< metres: the error of the chain or fix against all the rest
  double after = 0;    ///< metres: the same with the change
};

/// The change that explains most, and others that would explain the same error.
struct LikelyBlunder {
  Blunder best;
  std::vector<Blunder> others;  ///< best first; at most `MostOthers`
  size_t moreOthers = 0;        ///< that were left out of `others`
};

constexpr size_t MostOthers = 3;

/// Only errors above both are tried, and a change must bring them below `EnoughOfError`.
constexpr double LeastTriedMeters = 1;
constexpr double LeastTriedShare = 0.02;  ///< of the length of the chain
constexpr double EnoughOfError = 0.25;

/// Looks for blunders one after the other, each in the survey with those before it corrected.
/// \param network  is changed: what is found is corrected in it
/// \return the worst first in each region
std::vector<LikelyBlunder> FindBlunders(SurveyNetwork& network);

/// Numbers from which one comes by swapping two digits side by side.
/// \param text  decimal digits with an optional point
std::vector<double> WithDigitsSwapped(const std::string& text);

}  // namespace orvane
