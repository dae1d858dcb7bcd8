#include "survey/blunders.h"

#include "base/number_text.h"
#include "geo/earth.h"

#include <algorithm>
#include <cmath>
#include <string>
#include <utility>

namespace orvane {

namespace {

constexpr double FullTurn = 360;
constexpr double HalfTurn = 180;
constexpr double QuarterTurn = 90;
constexpr double MetersPerFoot = 0.3048;
constexpr double MinutesPerDegree = 60;
constexpr int TensStep = 10;

/// A region is not searched for more; one with more faults needs other help than this.
constexpr int MostBlunders = 8;

/// A number that a reading may have had, and why.
struct Change {
  BlunderKind kind;
  BlunderField field;
  double written;
  double likely;
};

/// Digits with zeros in front, so that these can be swapped too.
std::string Padded(std::string text, size_t wholeDigits) {
  const size_t point = std::min(text.find('.'), text.size());
  if (point < wholeDigits) text.insert(0, wholeDigits - point, '0');
  return text;
}

/// Collects the changes to one number.
class Changes {
 public:
  Changes(BlunderField field, double written) : field_(field), written_(written) {}

  void Add(BlunderKind kind, double likely) {
    if (likely == written_) return;
    list_.push_back({kind, field_, written_, likely});
  }
  std::vector<Change> Take() { return std::move(list_); }

 private:
  BlunderField field_;
  double written_;
  std::vector<Change> list_;
};

/// The value with each other digit of its tens; those next to it also across a hundred.
std::vector<double> WithOtherTens(double value) {
  std::vector<double> others;
  const double tens = std::fmod(std::floor(value / TensStep), TensStep);
  for (int digit = 0; digit < TensStep; ++digit) {
    if (digit != tens) others.push_back(value + (digit - tens) * TensStep);
  }
  if (tens == 0) others.push_back(value - TensStep);
  if (tens == TensStep - 1) others.push_back(value + TensStep);
  return others;
}

std::vector<Change> BearingChanges(const Measurement& shot) {
  const double written = shot.bearing;
  Changes changes(BlunderField::Bearing, written);
  changes.Add(BlunderKind::BackwardBearing,
              written >= HalfTurn ? written - HalfTurn : written + HalfTurn);
  if (written < 0 || written >= FullTurn) return changes.Take();
  constexpr size_t BearingDigits = 3;
  for (const double value : WithDigitsSwapped(Padded(FormatGeneral(written), BearingDigits))) {
    if (value < FullTurn) changes.Add(BlunderKind::SwappedDigits, value);
  }
  for (const double value : WithOtherTens(written)) {
    if (value >= 0 && value < FullTurn) changes.Add(BlunderKind::MisreadTens, value);
  }
  return changes.Take();
}

std::vector<Change> InclinationChanges(const Measurement& shot) {
  const double written = shot.inclination;
  Changes changes(BlunderField::Inclination, written);
  changes.Add(BlunderKind::WrongSign, -written);
  const double size = std::abs(written);
  const double sign = written < 0 ? -1 : 1;
  constexpr size_t InclinationDigits = 2;
  for (const double value : WithDigitsSwapped(Padded(FormatGeneral(size), InclinationDigits))) {
    if (value <= QuarterTurn) changes.Add(BlunderKind::SwappedDigits, sign * value);
  }
  for (const double value : WithOtherTens(size)) {
    if (value >= 0 && value <= QuarterTurn) changes.Add(BlunderKind::MisreadTens, sign * value);
  }
  return changes.Take();
}

std::vector<Change> DistanceChanges(const Measurement& shot) {
  const double written = shot.distance;
  Changes changes(BlunderField::Distance, written);
  changes.Add(BlunderKind::DoubledDistance, written / 2);
  changes.Add(BlunderKind::HalvedDistance, written * 2);
  changes.Add(BlunderKind::Feet, written * MetersPerFoot);
  if (written < 0) return changes.Take();
  constexpr size_t DistanceDigits = 2;
  for (const double value : WithDigitsSwapped(Padded(FormatGeneral(written), DistanceDigits))) {
    changes.Add(BlunderKind::SwappedDigits, value);
  }
  return changes.Take();
}

/// The changes to a latitude or longitude, in degrees. Digits are those of degrees and minutes with
/// three decimals, and of degrees with five.
std::vector<Change> PositionChanges(BlunderField field, double written) {
  Changes changes(field, written);
  changes.Add(BlunderKind::WrongSign, -written);
  const double size = std::abs(written);
  const double sign = written < 0 ? -1 : 1;
  const double whole = std::floor(size);
  const double minutes = (size - whole) * MinutesPerDegree;
  constexpr int MinuteDecimals = 3;
  constexpr size_t MinuteDigits = 2;
  const std::string minuteText = Padded(FormatFixed(minutes, MinuteDecimals), MinuteDigits);
  const double shown = ReadReal(minuteText).value;
  for (const double value : WithDigitsSwapped(minuteText)) {
    if (value >= MinutesPerDegree) continue;
    changes.Add(BlunderKind::SwappedDigits, written + sign * (value - shown) / MinutesPerDegree);
  }
  for (const double value : WithOtherTens(minutes)) {
    if (value < 0 || value >= MinutesPerDegree) continue;
    changes.Add(BlunderKind::MisreadTens, sign * (whole + value / MinutesPerDegree));
  }
  constexpr int DegreeDecimals = 5;
  const std::string degreeText = FormatFixed(size, DegreeDecimals);
  const double shownDegrees = ReadReal(degreeText).value;
  const double most = field == BlunderField::Latitude ? QuarterTurn : HalfTurn;
  for (const double value : WithDigitsSwapped(degreeText)) {
    if (value <= most)
      changes.Add(BlunderKind::SwappedDigits, written + sign * (value - shownDegrees));
  }
  return changes.Take();
}

std::vector<Change> ChangesTo(const Measurement& reading) {
  std::vector<Change> all;
  const auto add = [&](std::vector<Change> changes) {
    all.insert(all.end(), changes.begin(), changes.end());
  };
  if ((reading.flags & MeasureGps) != 0) {
    add(PositionChanges(BlunderField::Latitude, reading.position.lat));
    add(PositionChanges(BlunderField::Longitude, reading.position.lon));
  } else {
    add(BearingChanges(reading));
    add(DistanceChanges(reading));
    add(InclinationChanges(reading));
  }
  return all;
}

/// What a reading says after a change, minus what it said.
SurveyStep EffectOf(const Change& change, const NetworkReading& changed, double lat) {
  const double difference = change.likely - change.written;
  if (change.field == BlunderField::Latitude) return {DegreesToMeters(difference), 0, 0};
  if (change.field == BlunderField::Longitude) return {0, LatLonToMeters(lat, difference).east, 0};
  Measurement shot = *changed.reading;
  if (change.field == BlunderField::Bearing) shot.bearing = change.likely;
  if (change.field == BlunderField::Distance) shot.distance = change.likely;
  if (change.field == BlunderField::Inclination) shot.inclination = change.likely;
  const double deviation = changed.point->map->magneticDeviation;
  return StepOfShot(shot, deviation) - StepOfShot(*changed.reading, deviation);
}

/// The error of a part against all the rest, as far as it is known.
SurveyStep ErrorOf(const NetworkPart& part) {
  return {part.north.value_or(0), part.east.value_or(0), part.up.value_or(0)};
}

/// The length of an error, in the directions that the part knows.
double SizeOf(const NetworkPart& part, const SurveyStep& error) {
  const double up = part.up ? error.up : 0;
  return std::sqrt(error.north * error.north + error.east * error.east + up * up);
}

/// What an error adds to the sum of squares of the whole network.
double CostOf(const NetworkPart& part, const SurveyStep& error) {
  const double up = part.up ? error.up : 0;
  return part.groundWeight * (error.north * error.north + error.east * error.east) +
         part.upWeight * up * up;
}

bool IsTried(const NetworkPart& part) {
  if (!part.north) return false;
  const double size = SizeOf(part, ErrorOf(part));
  return size > LeastTriedMeters && size > LeastTriedShare * part.length;
}

/// A change that explains the error of its part.
struct Explanation {
  Blunder blunder;
  size_t part = 0;
  SurveyStep effect;  ///< on the part
  double gain = 0;    ///< by how much the sum of squares of the network falls
};

class RegionSearch {
 public:
  RegionSearch(NetworkRegion& region, std::vector<LikelyBlunder>& found)
      : region_(region), found_(found) {}

  void Run() {
    for (int i = 0; i < MostBlunders; ++i) {
      std::vector<Explanation> explanations = Explanations();
      if (explanations.empty()) return;
      const std::vector<NetworkPart> before = region_.parts;
      const Explanation& best = explanations.front();
      region_.parts[best.part].says = region_.parts[best.part].says + best.effect;
      MeasureRegion(region_);
      corrected_.push_back(best.blunder.reading);
      Report(explanations, before);
    }
  }

 private:
  /// All explanations of the present errors, the best first.
  std::vector<Explanation> Explanations() const {
    std::vector<Explanation> list;
    for (size_t i = 0; i < region_.parts.size(); ++i) {
      if (!IsTried(region_.parts[i])) continue;
      for (const NetworkReading& reading : region_.parts[i].readings) AddFor(i, reading, list);
    }
    std::stable_sort(list.begin(), list.end(),
                     [](const Explanation& a, const Explanation& b) { return a.gain > b.gain; });
    return list;
  }

  void AddFor(size_t number, const NetworkReading& reading, std::vector<Explanation>& list) const {
    const NetworkPart& part = region_.parts[number];
    const bool wasCorrected =
        std::find(corrected_.begin(), corrected_.end(), reading.reading) != corrected_.end();
    if (wasCorrected) return;
    const SurveyStep error = ErrorOf(part);
    const double before = SizeOf(part, error);
    for (const Change& change : ChangesTo(*reading.reading)) {
      const SurveyStep effect = EffectOf(change, reading, part.lat) * reading.share;
      const SurveyStep left = error + effect;
      const double after = SizeOf(part, left);
      if (!(after < EnoughOfError * before)) continue;
      Explanation explanation;
      explanation.blunder = {reading.point,  reading.reading, change.kind, change.field,
                             change.written, change.likely,   before,      after};
      explanation.part = number;
      explanation.effect = effect;
      explanation.gain = CostOf(part, error) - CostOf(part, left);
      list.push_back(explanation);
    }
  }

  /// Enters the best explanation, with those that are of no use once it is corrected.
  void Report(const std::vector<Explanation>& explanations,
              const std::vector<NetworkPart>& before) {
    LikelyBlunder likely{explanations.front().blunder, {}, 0};
    for (size_t i = 1; i < explanations.size(); ++i) {
      const Explanation& other = explanations[i];
      const NetworkPart& now = region_.parts[other.part];
      const double was = SizeOf(before[other.part], ErrorOf(before[other.part]));
      const bool isExplained = !IsTried(now) || SizeOf(now, ErrorOf(now)) < EnoughOfError * was;
      if (!isExplained) continue;
      if (likely.others.size() < MostOthers) {
        likely.others.push_back(other.blunder);
      } else {
        ++likely.moreOthers;
      }
    }
    found_.push_back(std::move(likely));
  }

  NetworkRegion& region_;
  std::vector<LikelyBlunder>& found_;
  std::vector<const Measurement*> corrected_;
};

}  // namespace

std::vector<double> WithDigitsSwapped(const std::string& text) {
  std::vector<double> values;
  for (size_t i = 0; i < text.size(); ++i) {
    size_t next = i + 1;
    if (next < text.size() && text[next] == '.') ++next;
    if (next >= text.size() || !IsDigit(text[i]) || !IsDigit(text[next])) continue;
    if (text[i] == text[next]) continue;
    std::string swapped = text;
    std::swap(swapped[i], swapped[next]);
    values.push_back(ReadReal(swapped).value);
  }
  return values;
}

std::vector<LikelyBlunder> FindBlunders(SurveyNetwork& network) {
  std::vector<LikelyBlunder> found;
  for (NetworkRegion& region : network.regions) {
    if (!region.tooLarge) RegionSearch(region, found).Run();
  }
  return found;
}

}  // namespace orvane
