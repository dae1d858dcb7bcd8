#include "survey/survey_network.h"

#include "geo/earth.h"
#include "model/listed_points.h"

#include <algorithm>
#include <cmath>
#include <unordered_map>
#include <utility>

namespace orvane {

namespace {

/// Below this the rest of the network says nothing of a part: it hangs on it.
constexpr double LeastFreedom = 1e-9;

/// A pair of points with the mean of its shots.
struct Leg {
  size_t from = 0;
  size_t to = 0;
  SurveyStep way;  ///< from `from` to `to`
  double length = 0;
  double weight = 0;
  std::vector<NetworkReading> readings;  ///< shares by the direction from `from` to `to`
  bool used = false;
};

struct Node {
  const Point* point = nullptr;
  std::vector<size_t> legs;
  std::vector<NetworkReading> fixes;
  LatLon fix;  ///< the mean of the fixes, with the altitude of the point's readings
  double fixWeight = 0;
  double altitudeSum = 0;
  double altitudeWeight = 0;
  bool visited = false;
  bool isJunction = false;
  size_t column = 0;

  bool TiesMore() const { return fixWeight > 0 || altitudeWeight > 0 || legs.size() > 2; }
};

/// A symmetric matrix, whose inverse it can become.
class Square {
 public:
  explicit Square(size_t size) : size_(size), cells_(size * size) {}

  double& At(size_t row, size_t column) { return cells_[row * size_ + column]; }
  double At(size_t row, size_t column) const { return cells_[row * size_ + column]; }

  /// Gauss-Jordan without a search for pivots: the matrix is positive definite.
  void Invert() {
    for (size_t i = 0; i < size_; ++i) {
      const double pivot = At(i, i);
      At(i, i) = 1;
      for (size_t j = 0; j < size_; ++j) At(i, j) /= pivot;
      for (size_t k = 0; k < size_; ++k) {
        const double factor = At(k, i);
        if (k == i || factor == 0) continue;
        At(k, i) = 0;
        for (size_t j = 0; j < size_; ++j) At(k, j) -= factor * At(i, j);
      }
    }
  }

  std::vector<double> Times(const std::vector<double>& vector) const {
    std::vector<double> result(size_);
    for (size_t i = 0; i < size_; ++i) {
      for (size_t j = 0; j < size_; ++j) result[i] += At(i, j) * vector[j];
    }
    return result;
  }

 private:
  size_t size_;
  std::vector<double> cells_;
};

/// Least squares for one direction: the value of each column, and how each part depends on it.
class Direction {
 public:
  Direction(const NetworkRegion& region, double SurveyStep::*axis)
      : axis_(axis), normal_(region.junctions), sums_(region.junctions) {}

  void Add(const NetworkPart& part) {
    if (part.isFix) {
      normal_.At(part.start, part.start) += 1;
      sums_[part.start] += part.says.*axis_;
      anchored_ = true;
    } else if (part.start != part.end) {
      normal_.At(part.start, part.start) += 1;
      normal_.At(part.end, part.end) += 1;
      normal_.At(part.start, part.end) -= 1;
      normal_.At(part.end, part.start) -= 1;
      sums_[part.end] += part.says.*axis_;
      sums_[part.start] -= part.says.*axis_;
    }
  }
  void Solve() {
    if (!anchored_) normal_.At(0, 0) += 1;  // anywhere will do
    normal_.Invert();
    places_ = normal_.Times(sums_);
  }
  /// \return how free the rest of the network leaves it, from 0 to 1
  double Freedom(const NetworkPart& part) const {
    if (part.isFix) return 1 - normal_.At(part.start, part.start);
    return 1 - (normal_.At(part.start, part.start) + normal_.At(part.end, part.end) -
                2 * normal_.At(part.start, part.end));
  }
  /// \return what the part says minus what the rest says
  std::optional<double> Error(const NetworkPart& part) const {
    const double freedom = Freedom(part);
    if (freedom < LeastFreedom) return std::nullopt;
    const double solved =
        part.isFix ? places_[part.start] : places_[part.end] - places_[part.start];
    return (part.says.*axis_ - solved) / freedom;
  }

 private:
  double SurveyStep::*axis_;
  Square normal_;
  std::vector<double> sums_;
  std::vector<double> places_;
  bool anchored_ = false;
};

/// Collects the readings of a map as nodes and legs, and cuts them into regions and parts.
class Builder {
 public:
  explicit Builder(const Map& map) : map_(map) {}

  SurveyNetwork Build() {
    for (const Map* level = &map_; level != nullptr; level = level->basis) {
      for (const Point* point : ListedPoints(*level)) AddReadings(*point, *level);
    }
    FinishNodes();
    for (size_t i = 0; i < nodes_.size(); ++i) {
      if (!nodes_[i].visited && !nodes_[i].legs.empty()) AddRegion(i);
    }
    return std::move(network_);
  }

 private:
  size_t NodeOf(const Point& point) {
    const auto [entry, isNew] = numbers_.try_emplace(&point, nodes_.size());
    if (isNew) {
      nodes_.emplace_back().point = &point;
      // A point of a basis stays where it is.
      if (point.map != &map_) AddPlace(nodes_.back(), point.geo, 1);
    }
    return entry->second;
  }

  static void AddPlace(Node& node, const LatLon& place, double weight) {
    node.fix.lat += weight * place.lat;
    node.fix.lon += weight * place.lon;
    node.fixWeight += weight;
    AddAltitude(node, place.altitude, weight);
  }

  static void AddAltitude(Node& node, float altitude, double weight) {
    if (!HasAltitude(altitude)) return;
    node.altitudeSum += weight * double{altitude};
    node.altitudeWeight += weight;
  }

  void AddReadings(const Point& point, const Map& level) {
    if (point.map != &level || !IsPlaced(point)) return;
    for (const Measurement& reading : point.measurements) {
      const bool isOwn = &level == &map_;
      if ((reading.flags & MeasureCompass) != 0) {
        AddShot(point, reading);
      } else if (isOwn && (reading.flags & MeasureGps) != 0) {
        Node& node = nodes_[NodeOf(point)];
        AddPlace(node, reading.position, reading.count);
        node.fixes.push_back({&point, &reading, double(reading.count)});
      }
      if (isOwn) AddAltitude(nodes_[NodeOf(point)], reading.altitude, reading.count);
    }
  }

  void AddShot(const Point& point, const Measurement& shot) {
    const Point* base = shot.base;
    if (shot.distance == 0 || base == nullptr || base == &point || !IsPlaced(*base)) return;
    if (point.map != &map_ && base->map != &map_) return;
    const size_t from = NodeOf(point);
    const size_t to = NodeOf(*base);
    const auto [entry, isNew] =
        legNumbers_.try_emplace({std::min(from, to), std::max(from, to)}, legs_.size());
    if (isNew) {
      Leg& added = legs_.emplace_back();
      added.from = from;
      added.to = to;
      nodes_[from].legs.push_back(entry->second);
      nodes_[to].legs.push_back(entry->second);
    }
    Leg& leg = legs_[entry->second];
    const double sign = leg.from == from ? 1 : -1;
    const double weight = shot.count;
    leg.way = leg.way + StepOfShot(shot, point.map->magneticDeviation) * (sign * weight);
    leg.length += weight * std::abs(shot.distance);
    leg.weight += weight;
    leg.readings.push_back({&point, &shot, sign * weight});
  }

  /// Turns sums into means.
  void FinishNodes() {
    for (Leg& leg : legs_) {
      leg.way = leg.way * (1 / leg.weight);
      leg.length /= leg.weight;
      for (NetworkReading& reading : leg.readings) reading.share /= leg.weight;
    }
    for (Node& node : nodes_) {
      if (node.fixWeight > 0) {
        node.fix.lat /= node.fixWeight;
        node.fix.lon /= node.fixWeight;
      }
      for (NetworkReading& fix : node.fixes) fix.share /= node.fixWeight;
    }
  }

  size_t FarEnd(size_t leg, size_t node) const {
    return legs_[leg].from == node ? legs_[leg].to : legs_[leg].from;
  }

  std::vector<size_t> NodesAround(size_t first) {
    std::vector<size_t> found{first};
    nodes_[first].visited = true;
    for (size_t i = 0; i < found.size(); ++i) {
      const Node& node = nodes_[found[i]];
      for (const size_t leg : node.legs) {
        const size_t far = FarEnd(leg, found[i]);
        if (nodes_[far].visited) continue;
        nodes_[far].visited = true;
        found.push_back(far);
      }
    }
    return found;
  }

  void AddRegion(size_t first) {
    const std::vector<size_t> around = NodesAround(first);
    NetworkRegion region;
    std::vector<size_t> junctions;
    for (const size_t i : around) {
      if (nodes_[i].TiesMore()) junctions.push_back(i);
    }
    if (junctions.empty()) junctions.push_back(around.front());
    for (const size_t i : junctions) nodes_[i].column = region.junctions++;
    for (const size_t i : junctions) nodes_[i].isJunction = true;
    for (const size_t i : junctions) {
      for (const size_t leg : nodes_[i].legs) FollowLegs(region, i, leg);
    }
    AddFixes(region, junctions);
    MeasureRegion(region);
    network_.regions.push_back(std::move(region));
  }

  /// Walks from a junction to the next one, or to a dead end.
  void FollowLegs(NetworkRegion& region, size_t start, size_t leg) {
    if (legs_[leg].used) return;
    NetworkPart chain;
    chain.start = nodes_[start].column;
    size_t at = start;
    while (true) {
      Leg& step = legs_[leg];
      step.used = true;
      const double sign = step.from == at ? 1 : -1;
      chain.says = chain.says + step.way * sign;
      chain.length += step.length;
      for (NetworkReading reading : step.readings) {
        reading.share *= sign;
        chain.readings.push_back(reading);
      }
      at = FarEnd(leg, at);
      if (nodes_[at].isJunction) break;
      if (nodes_[at].legs.size() == 1) {
        network_.deadEnds.insert(network_.deadEnds.end(), chain.readings.begin(),
                                 chain.readings.end());
        return;
      }
      leg = nodes_[at].legs[0] == leg ? nodes_[at].legs[1] : nodes_[at].legs[0];
    }
    chain.end = nodes_[at].column;
    region.parts.push_back(std::move(chain));
  }

  void AddFixes(NetworkRegion& region, const std::vector<size_t>& junctions) {
    const size_t chains = region.parts.size();
    const Node* origin = nullptr;
    bool with = false;
    bool without = false;
    for (const size_t i : junctions) {
      const Node& node = nodes_[i];
      if (origin == nullptr && node.fixWeight > 0) origin = &node;
      if (node.fixWeight > 0) (node.altitudeWeight > 0 ? with : without) = true;
      if (node.fixWeight == 0 && node.altitudeWeight > 0) with = true;
    }
    region.mixedAltitudes = with && without;
    for (const size_t i : junctions) {
      const Node& node = nodes_[i];
      if (node.fixWeight == 0 && node.altitudeWeight == 0) continue;
      NetworkPart fix;
      fix.isFix = true;
      fix.readings = node.fixes;
      fix.start = fix.end = node.column;
      fix.length = ShortestChainAt(region, chains, node.column);
      if (node.fixWeight > 0 && origin != nullptr) {
        fix.lat = origin->fix.lat;
        const Meters way = LatLonToMeters(origin->fix.lat, node.fix.lon - origin->fix.lon);
        fix.says = {DegreesToMeters(node.fix.lat - origin->fix.lat), way.east, 0};
      }
      fix.saysGround = node.fixWeight > 0;
      fix.saysUp = node.altitudeWeight > 0;
      if (fix.saysUp) fix.says.up = node.altitudeSum / node.altitudeWeight;
      region.parts.push_back(std::move(fix));
    }
  }

  static double ShortestChainAt(const NetworkRegion& region, size_t chains, size_t column) {
    double shortest = 0;
    for (size_t i = 0; i < chains; ++i) {
      const NetworkPart& chain = region.parts[i];
      if (chain.start != column && chain.end != column) continue;
      if (shortest == 0 || chain.length < shortest) shortest = chain.length;
    }
    return shortest;
  }

  struct PairHash {
    size_t operator()(const std::pair<size_t, size_t>& pair) const {
      constexpr size_t Spread = 1000003;
      return pair.first * Spread + pair.second;
    }
  };

  const Map& map_;
  std::vector<Node> nodes_;
  std::vector<Leg> legs_;
  std::unordered_map<const Point*, size_t> numbers_;
  std::unordered_map<std::pair<size_t, size_t>, size_t, PairHash> legNumbers_;
  SurveyNetwork network_;
};

}  // namespace

SurveyStep StepOfShot(const Measurement& shot, double deviation) {
  const bool isAbsolute = (shot.flags & MeasureAbsoluteBearing) != 0;
  const double bearing = (shot.bearing + (isAbsolute ? 0 : deviation)) * RadiansPerDegree;
  const double inclination = shot.inclination * RadiansPerDegree;
  const double ground = std::cos(inclination) * shot.distance;
  return {std::cos(bearing) * ground, std::sin(bearing) * ground,
          std::sin(inclination) * shot.distance};
}

void MeasureRegion(NetworkRegion& region) {
  region.tooLarge = region.junctions > MostJunctions;
  if (region.tooLarge) return;
  Direction north(region, &SurveyStep::north);
  Direction east(region, &SurveyStep::east);
  Direction up(region, &SurveyStep::up);
  for (const NetworkPart& part : region.parts) {
    if (part.saysGround) {
      north.Add(part);
      east.Add(part);
    }
    if (part.saysUp) up.Add(part);
  }
  north.Solve();
  east.Solve();
  up.Solve();
  for (NetworkPart& part : region.parts) {
    if (part.saysGround) {
      part.north = north.Error(part);
      part.east = east.Error(part);
      part.groundWeight = north.Freedom(part);
    }
    if (part.saysUp) {
      part.up = up.Error(part);
      part.upWeight = up.Freedom(part);
    }
  }
}

SurveyNetwork BuildSurveyNetwork(const Map& map) { return Builder(map).Build(); }

}  // namespace orvane
