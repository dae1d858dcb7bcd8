#include "reports/survey_quality.h"

#include "base/number_text.h"
#include "geo/angle_text.h"
#include "geo/earth.h"
#include "model/listed_points.h"
#include "trails/trail_names.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <set>
#include <unordered_map>
#include <unordered_set>
#include <utility>

namespace orvane {

namespace {

constexpr double PerCent = 100;

/// From blue to red, distinct also without red and green.
constexpr std::array<ErrorScale, 5> Scale = {{{0x2B6CB0, 0.5},
                                              {0x2FA38F, 1},
                                              {0xD4A900, 2},
                                              {0xE0701A, 5},
                                              {0xC21E2A, std::numeric_limits<double>::infinity()}}};
constexpr Color UncheckedColor = 0x8C8C8C;

/// An error that rounds to zero has no sign.
std::string OptionalText(std::optional<double> value, int decimals) {
  if (!value) return {};
  std::string text = FormatFixed(*value, decimals);
  if (text.find_first_not_of("-0.") == std::string::npos && text.starts_with('-')) text.erase(0, 1);
  return text;
}

QualityKind KindOf(ResidualKind kind) {
  if (kind == ResidualKind::Compass) return QualityKind::Leg;
  return kind == ResidualKind::Gps ? QualityKind::Fix : QualityKind::Altitude;
}

std::string_view WordOf(QualityKind kind) {
  switch (kind) {
    case QualityKind::Leg:
      return "leg";
    case QualityKind::Fix:
      return "fix";
    case QualityKind::Altitude:
      return "altitude";
    default:
      return "chain";
  }
}

/// The readings that the rest of the survey checks.
std::unordered_set<const Measurement*> CheckedReadings(const SurveyNetwork& network) {
  std::unordered_set<const Measurement*> checked;
  for (const NetworkRegion& region : network.regions) {
    for (const NetworkPart& part : region.parts) {
      // Of a region that was too large it is only known that its chains are closed.
      if (!part.north && !(region.tooLarge && !part.isFix)) continue;
      for (const NetworkReading& reading : part.readings) checked.insert(reading.reading);
    }
  }
  return checked;
}

QualityRow RowOf(const ReadingResidual& residual) {
  QualityRow row;
  row.kind = KindOf(residual.kind);
  row.point = residual.point;
  row.reading = residual.reading;
  row.other = residual.base;
  row.trail = residual.point->trail;
  row.north = residual.north;
  row.east = residual.east;
  row.up = residual.up;
  row.meters = residual.meters;
  row.ground = SizeOfError(residual.north, residual.east, std::nullopt);
  row.percent = residual.percent;
  row.degrees = residual.degrees;
  if (row.kind == QualityKind::Fix) row.fix = residual.reading->position;
  return row;
}

QualityRow RowOf(const ClosedChain& chain) {
  QualityRow row;
  row.kind = QualityKind::Chain;
  row.point = chain.from;
  row.other = chain.to;
  row.trail = chain.from->trail;
  row.north = chain.north;
  row.east = chain.east;
  row.up = chain.up;
  row.meters = SizeOfError(chain.north, chain.east, chain.up);
  row.ground = SizeOfError(chain.north, chain.east, std::nullopt);
  row.percent = row.meters / chain.length * PerCent;
  return row;
}

/// The rows of all readings and chains as they come, all taken as checked.
std::vector<QualityRow> MeasuredRows(const Map& map) {
  std::vector<const Point*> points;
  for (const Map* level = &map; level != nullptr; level = level->basis) {
    const std::vector<const Point*> own = ListedPoints(*level);
    points.insert(points.end(), own.begin(), own.end());
  }
  std::vector<QualityRow> rows;
  for (const ReadingResidual& residual : ReadingResiduals(map, points)) {
    rows.push_back(RowOf(residual));
  }
  for (const ClosedChain& chain : map.closedChains) rows.push_back(RowOf(chain));
  return rows;
}

/// Finds the parts of a network that are chains by a point on them.
class ChainFinder {
 public:
  explicit ChainFinder(const SurveyNetwork& network) {
    for (const NetworkRegion& region : network.regions) {
      for (const NetworkPart& part : region.parts) {
        if (part.isFix) continue;
        for (const NetworkReading& reading : part.readings) {
          Add(*reading.point, part);
          Add(*reading.reading->base, part);
        }
      }
    }
  }

  /// \return the legs of a chain; none if the network has no such chain
  std::vector<std::pair<const Point*, const Point*>> LegsOf(const ClosedChain& chain) const {
    constexpr double Rounding = 1e-9;
    const auto through = parts_.find(chain.from);
    if (through == parts_.end()) return {};
    std::vector<std::pair<const Point*, const Point*>> legs;
    for (const NetworkPart* part : through->second) {
      if (std::abs(part->length - chain.length) > Rounding * chain.length) continue;
      bool leadsThere = false;
      legs.clear();
      for (const NetworkReading& each : part->readings) {
        legs.emplace_back(each.point, each.reading->base);
        leadsThere = leadsThere || each.point == chain.to || each.reading->base == chain.to;
      }
      if (leadsThere) return legs;
    }
    return {};
  }

 private:
  void Add(const Point& point, const NetworkPart& part) {
    std::vector<const NetworkPart*>& there = parts_[&point];
    if (there.empty() || there.back() != &part) there.push_back(&part);
  }

  std::unordered_map<const Point*, std::vector<const NetworkPart*>> parts_;
};

/// What a row is sorted and coloured by, in metres.
double ErrorOf(const SurveyQuality& quality, const QualityRow& row) {
  const double meters = quality.mixedAltitudes ? row.ground : row.meters;
  return std::isnan(meters) ? -1 : meters;
}

std::string_view KindWord(BlunderKind kind) {
  switch (kind) {
    case BlunderKind::BackwardBearing:
      return "read backwards";
    case BlunderKind::SwappedDigits:
      return "written with two digits swapped";
    case BlunderKind::MisreadTens:
      return "misread in the tens";
    case BlunderKind::WrongSign:
      return "written with the wrong sign";
    case BlunderKind::DoubledDistance:
      return "doubled";
    case BlunderKind::HalvedDistance:
      return "halved";
    default:
      return "measured in feet";
  }
}

std::string_view FieldWord(BlunderField field) {
  switch (field) {
    case BlunderField::Bearing:
      return "bearing";
    case BlunderField::Distance:
      return "distance";
    case BlunderField::Inclination:
      return "inclination";
    case BlunderField::Latitude:
      return "latitude";
    default:
      return "longitude";
  }
}

bool IsPosition(BlunderField field) {
  return field == BlunderField::Latitude || field == BlunderField::Longitude;
}

std::string ValueText(BlunderField field, double value) {
  constexpr int PositionDecimals = 5;
  if (IsPosition(field)) return FormatFixed(value, PositionDecimals);
  return FormatGeneral(value);
}

/// "the bearing of A to B, 10, read backwards as 190"
std::string Description(const Blunder& blunder) {
  std::string text = "the " + std::string(FieldWord(blunder.field)) + " of ";
  if (blunder.reading->base != nullptr) {
    text +=
        "the leg from " + ShownName(*blunder.point) + " to " + ShownName(*blunder.reading->base);
  } else {
    text += "the fix of " + ShownName(*blunder.point);
  }
  text += ", " + ValueText(blunder.field, blunder.written) + ", was ";
  text += KindWord(blunder.kind);
  return text + "; it would be " + ValueText(blunder.field, blunder.likely);
}

std::vector<std::string> NotesOf(const SurveyQuality& quality) {
  std::vector<std::string> notes;
  if (quality.mixedAltitudes) {
    notes.emplace_back(
        "Some fixes of a connected part of this survey have altitudes and others none. Its "
        "altitudes "
        "can be tens of metres off, so the list is sorted by the error on the ground.");
  }
  for (const LikelyBlunder& blunder : quality.blunders) notes.push_back(BlunderSentence(blunder));
  if (quality.hasLargeRegion) {
    notes.emplace_back("A part of this survey is too large to look for blunders in it.");
  }
  if (quality.unchecked > 0) {
    notes.push_back(std::to_string(quality.unchecked) +
                    (quality.unchecked == 1 ? " leg is" : " legs are") +
                    " unchecked: nothing else says where a dead end leads.");
  }
  return notes;
}

ErrorLeg LegOf(const SurveyQuality& quality, const QualityRow& row, bool strong) {
  const LatLon& to = row.fix ? *row.fix : row.other->geo;
  return {row.point->geo, to, ErrorColorOf(quality, row), strong};
}

/// Adds the current row: a chain leg by leg.
void AddStrong(const SurveyQuality& quality, const QualityRow& row, ErrorOverlay& overlay) {
  if (row.legs.empty()) {
    overlay.legs.push_back(LegOf(quality, row, true));
    return;
  }
  for (const auto& [from, to] : row.legs) {
    overlay.legs.push_back({from->geo, to->geo, ErrorColorOf(quality, row), true});
  }
}

bool ShowsLine(const QualityRow& row) { return row.fix || row.other != nullptr; }

std::vector<ErrorClass> LegendOf() {
  std::vector<ErrorClass> legend;
  std::string from;
  for (const ErrorScale& step : Scale) {
    const bool isLast = std::isinf(step.below);
    const std::string to = isLast ? std::string() : FormatGeneral(step.below);
    std::string text = isLast ? "over " + from : from.empty() ? "under " + to : from + " to " + to;
    legend.push_back({step.color, std::move(text)});
    from = to;
  }
  legend.push_back({UncheckedColor, "unchecked"});
  return legend;
}

}  // namespace

bool UpdateSurveyQuality(SurveyQuality& quality, const Map& map) {
  std::vector<QualityRow> rows = MeasuredRows(map);
  if (rows == quality.unsorted) return false;
  quality = {};
  quality.unsorted = rows;
  SurveyNetwork network = BuildSurveyNetwork(map);
  for (const NetworkRegion& region : network.regions) {
    quality.mixedAltitudes = quality.mixedAltitudes || region.mixedAltitudes;
    quality.hasLargeRegion = quality.hasLargeRegion || region.tooLarge;
  }
  const auto checked = CheckedReadings(network);
  const ChainFinder chains(network);
  const size_t firstChain = rows.size() - map.closedChains.size();
  for (size_t i = 0; i < map.closedChains.size(); ++i) {
    rows[firstChain + i].legs = chains.LegsOf(map.closedChains[i]);
  }
  for (QualityRow& row : rows) {
    const bool isLeg = row.kind == QualityKind::Leg && row.reading->distance != 0;
    if (!isLeg && row.kind != QualityKind::Fix) continue;
    row.checked = checked.contains(row.reading);
    if (isLeg && !row.checked) ++quality.unchecked;
  }
  std::stable_sort(rows.begin(), rows.end(), [&](const QualityRow& a, const QualityRow& b) {
    return ErrorOf(quality, a) > ErrorOf(quality, b);
  });
  quality.rows = std::move(rows);
  quality.blunders = FindBlunders(network);
  return true;
}

std::string QualityTrailText(const QualityRow& row) {
  if (row.trail == nullptr) return "(no trail)";
  return row.trail->name ? *row.trail->name : row.trail->type;
}

std::vector<std::string> QualityTrails(const SurveyQuality& quality) {
  std::set<std::string> trails;
  for (const QualityRow& row : quality.rows) trails.insert(QualityTrailText(row));
  return {trails.begin(), trails.end()};
}

std::vector<size_t> FilteredRows(const SurveyQuality& quality, const QualityFilter& filter) {
  std::vector<size_t> rows;
  for (size_t i = 0; i < quality.rows.size(); ++i) {
    const QualityRow& row = quality.rows[i];
    if (filter.kind && row.kind != *filter.kind) continue;
    if (filter.trail && QualityTrailText(row) != *filter.trail) continue;
    rows.push_back(i);
  }
  return rows;
}

std::string BlunderSentence(const LikelyBlunder& blunder) {
  const Blunder& best = blunder.best;
  std::string text = "Likely blunder: " + Description(best) + ". The error would be " +
                     FormatDistance(best.after) + " instead of " + FormatDistance(best.before) +
                     ".";
  if (blunder.others.empty()) return text;
  text += " It could also be that ";
  for (size_t i = 0; i < blunder.others.size(); ++i) {
    if (i > 0) text += ", or that ";
    text += Description(blunder.others[i]);
  }
  if (blunder.moreOthers > 0) text += " (and " + std::to_string(blunder.moreOthers) + " more)";
  return text + ".";
}

TableReport QualityTable(const SurveyQuality& quality, const std::vector<size_t>& rows) {
  TableReport table;
  table.notes = NotesOf(quality);
  if (quality.rows.empty() && table.notes.empty()) {
    table.notes.emplace_back("No reading of this map can be compared with its position.");
  }
  if (!quality.rows.empty() && rows.empty()) {
    table.notes.emplace_back("Nothing in the survey is of this kind and trail.");
  }
  table.columns = {{"Kind"},
                   {"Point"},
                   {"To"},
                   {"Trail"},
                   {"Error m", true},
                   {"Error %", true},
                   {"Bearing \xC2\xB0", true},
                   {"North m", true},
                   {"East m", true},
                   {"Up m", true},
                   {"Check"}};
  for (const size_t i : rows) {
    const QualityRow& row = quality.rows[i];
    table.rows.push_back(
        {std::string(WordOf(row.kind)), ShownName(*row.point),
         row.other == nullptr ? std::string() : ShownName(*row.other), QualityTrailText(row),
         FormatFixed(quality.mixedAltitudes ? row.ground : row.meters, 2),
         OptionalText(row.percent, 1), OptionalText(row.degrees, 1), OptionalText(row.north, 2),
         OptionalText(row.east, 2), OptionalText(row.up, 2), row.checked ? "" : "unchecked"});
  }
  return table;
}

Color ErrorColorOf(const SurveyQuality& quality, const QualityRow& row) {
  if (!row.checked) return UncheckedColor;
  const double meters = ErrorOf(quality, row);
  double value = row.percent.value_or(meters);
  if (row.percent && quality.mixedAltitudes && row.meters > 0) value *= row.ground / row.meters;
  for (const ErrorScale& step : Scale) {
    if (value < step.below) return step.color;
  }
  return Scale.back().color;
}

ErrorOverlay QualityOverlay(const SurveyQuality& quality, bool allLegs,
                            std::optional<size_t> current) {
  ErrorOverlay overlay;
  if (allLegs) {
    // The worst are drawn last, over the others.
    for (size_t i = quality.rows.size(); i > 0; --i) {
      const QualityRow& row = quality.rows[i - 1];
      if (row.kind == QualityKind::Leg) overlay.legs.push_back(LegOf(quality, row, false));
    }
  }
  const bool showsCurrent = current && ShowsLine(quality.rows[*current]);
  if (showsCurrent) AddStrong(quality, quality.rows[*current], overlay);
  if (!allLegs && !showsCurrent) return overlay;
  const bool isFix = !allLegs && quality.rows[*current].fix.has_value();
  overlay.title = isFix ? "Error of the fix in metres" : "Error in % of the leg";
  overlay.legend = LegendOf();
  return overlay;
}

std::optional<LatLon> MiddleOfRow(const QualityRow& row) {
  if (row.fix || row.other == nullptr) return row.point->geo;
  return InterpolateLatLon(row.point->geo, row.other->geo, 0.5);
}

}  // namespace orvane
