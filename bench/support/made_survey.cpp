#include "support/made_survey.h"

#include "base/number_text.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <random>
#include <utility>
#include <vector>

namespace orvane {

namespace {

constexpr double DegreesPerRadian = 57.29577951308232;
constexpr double MetersPerDegree = 111120;
constexpr double FullCircle = 360;

class SurveyMaker {
 public:
  explicit SurveyMaker(const SurveySize& size) : size_(size) {}

  std::string Make() {
    MakeTrails();
    text_ += "T\n";
    MakeLoops();
    for (int i = 0; i < size_.fixes; ++i) PutFix(Below(static_cast<int>(stations_.size())));
    return std::move(text_);
  }

 private:
  struct Station {
    std::string name;
    double north;
    double east;
  };
  using Box = std::pair<int, int>;

  int Below(int n) { return static_cast<int>(random_() % static_cast<unsigned>(n)); }
  double Between(double low, double high) {
    return low + (high - low) * static_cast<double>(random_()) / 4294967296.0;
  }
  /// Errors of reading: near enough to a bell of this width.
  double Error(double width) {
    double sum = 0;
    for (int i = 0; i < 12; ++i) sum += Between(-0.5, 0.5);
    return sum * width;
  }

  void PutLeg(const Station& from, const Station& base, double bearingError, double inclination) {
    const double north = base.north - from.north;
    const double east = base.east - from.east;
    const double bearing = std::atan2(east, north) * DegreesPerRadian + bearingError;
    text_ += "C\t" + from.name + "\t" + base.name + "\t" + FormatFixed(std::hypot(north, east), 1) +
             "\t" + FormatFixed(std::fmod(bearing + FullCircle, FullCircle), 1) + "\t" +
             FormatFixed(inclination, 0) + "\n";
  }
  void PutFix(int index) {
    const Station& station = stations_[static_cast<size_t>(index)];
    const auto angle = [](double degrees) {
      const double whole = std::trunc(degrees);
      return FormatFixed(whole, 0) + " " + FormatFixed((degrees - whole) * 60, 5) + "'";
    };
    text_ += "G\t" + station.name + "\tN" + angle(4.4 + station.north / MetersPerDegree) + "\tE" +
             angle(22.1667 + station.east / MetersPerDegree) + "\t300\n";
  }

  void MakeTrails() {
    constexpr int perTrail = 100;
    constexpr int branchWithin = 3000;
    double heading = 0;
    int from = -1;
    for (int i = 0; i < size_.stations; ++i) {
      const int trail = i / perTrail;
      if (i % perTrail == 0) {
        text_ += "T\tT" + std::to_string(trail) + "\tTrail\n";
        if (i > 0) from = i - 1 - Below(std::min(branchWithin, i));
        heading = Between(0, 2 * 3.14159);
      }
      Station station{"T" + std::to_string(trail) + "_" + std::to_string(i % perTrail * 25), 0, 0};
      if (from < 0) {
        stations_.push_back(station);
        PutFix(0);
      } else {
        heading += Between(-0.3, 0.3);
        const double distance = Between(10, 40);
        const Station& base = stations_[static_cast<size_t>(from)];
        station.north = base.north + distance * std::cos(heading);
        station.east = base.east + distance * std::sin(heading);
        PutLeg(station, base, Error(1), Error(5));
        stations_.push_back(station);
      }
      from = i;
    }
  }

  static Box BoxOf(const Station& station) {
    constexpr double side = 60;
    return {static_cast<int>(std::floor(station.north / side)),
            static_cast<int>(std::floor(station.east / side))};
  }
  void MakeLoops() {
    constexpr int nearest = 5;
    std::map<Box, std::vector<int>> boxes;
    for (size_t i = 0; i < stations_.size(); ++i) {
      boxes[BoxOf(stations_[i])].push_back(static_cast<int>(i));
    }
    for (int made = 0; made < size_.loops;) {
      const int from = Below(static_cast<int>(stations_.size()));
      Box box = BoxOf(stations_[static_cast<size_t>(from)]);
      box.first += Below(3) - 1;
      box.second += Below(3) - 1;
      const auto found = boxes.find(box);
      if (found == boxes.end()) continue;
      const int to =
          found->second[static_cast<size_t>(Below(static_cast<int>(found->second.size())))];
      if (std::abs(from - to) < nearest) continue;
      PutLeg(stations_[static_cast<size_t>(from)], stations_[static_cast<size_t>(to)], 0, 0);
      ++made;
    }
  }

  SurveySize size_;
  std::mt19937 random_{5};
  std::string text_;
  std::vector<Station> stations_;
};

}  // namespace

std::string MadeSurvey(const SurveySize& size) { return SurveyMaker(size).Make(); }

std::string MadePlaces(int count) {
  constexpr int placeDecimals = 10;
  std::string text;
  for (int i = 0; i < count; ++i) {
    if (i % 100 == 0) text += "T\tTrail" + std::to_string(i / 100) + "\tTrail\n";
    text += "L\tS" + std::to_string(i) + "\t" + FormatFixed(4 + i * 1.23456789e-6, placeDecimals) +
            "\t" + FormatFixed(22 + i * 0.98765432e-6, placeDecimals) + "\t" +
            std::to_string(300 + i % 100) + "\n";
  }
  return text;
}

}  // namespace orvane
