#include "base/number_text.h"
#include "entry/gis_file.h"
#include "entry/gis_values.h"
#include "entry/xml_walk.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <string>
#include <utility>
#include <vector>

// Placemarks are anywhere among the folders of a KML file, and each has a name and shapes:
//
//     Placemark ─┬─ name
//                ├─ TimeStamp ─ when, TimeSpan ─ begin
//                ├─ Point, LineString ─ altitudeMode, coordinates "lon,lat,alt lon,lat,alt"
//                ├─ gx:Track ─ altitudeMode, when ..., gx:coord "lon lat alt" ...
//                └─ MultiGeometry, gx:MultiTrack ─ any of these
//
// What belongs to a placemark waits until it ends, because its name can be the last thing in it.

namespace orvane {

namespace {

enum class KmlElement : unsigned char {
  Other,
  Placemark,
  Name,
  Span,  ///< of time, or a moment
  Moment,
  Several,
  Point,
  Line,
  Track,
  OtherShape,
  Coordinates,
  AltitudeMode,
  TrackMoment,
  TrackPlace
};

/// The elements that are read within another.
struct KmlPart {
  std::string_view name;
  KmlElement within;
  KmlElement element;
};
constexpr KmlPart KmlParts[] = {
    {"name", KmlElement::Placemark, KmlElement::Name},
    {"TimeStamp", KmlElement::Placemark, KmlElement::Span},
    {"TimeSpan", KmlElement::Placemark, KmlElement::Span},
    {"when", KmlElement::Span, KmlElement::Moment},
    {"begin", KmlElement::Span, KmlElement::Moment},
    {"coordinates", KmlElement::Point, KmlElement::Coordinates},
    {"altitudeMode", KmlElement::Point, KmlElement::AltitudeMode},
    {"coordinates", KmlElement::Line, KmlElement::Coordinates},
    {"altitudeMode", KmlElement::Line, KmlElement::AltitudeMode},
    {"when", KmlElement::Track, KmlElement::TrackMoment},
    {"coord", KmlElement::Track, KmlElement::TrackPlace},
    {"altitudeMode", KmlElement::Track, KmlElement::AltitudeMode},
};

/// Shapes, within a placemark or among several.
struct KmlShape {
  std::string_view name;
  KmlElement element;
};
constexpr KmlShape KmlShapes[] = {
    {"Point", KmlElement::Point},           {"LineString", KmlElement::Line},
    {"Track", KmlElement::Track},           {"MultiGeometry", KmlElement::Several},
    {"MultiTrack", KmlElement::Several},    {"Polygon", KmlElement::OtherShape},
    {"LinearRing", KmlElement::OtherShape}, {"Model", KmlElement::OtherShape},
};

bool IsShapeToRead(KmlElement kind) {
  return kind == KmlElement::Point || kind == KmlElement::Line || kind == KmlElement::Track;
}

/// The texts of a place: longitude, latitude, altitude.
using PlaceTexts = std::array<std::string_view, 3>;

PlaceTexts SplitPlace(std::string_view text, std::string_view separators) {
  PlaceTexts parts;
  for (std::string_view& part : parts) {
    while (!text.empty() && IsSpace(text.front())) text.remove_prefix(1);
    const size_t end = std::min(text.find_first_of(separators), text.size());
    part = text.substr(0, end);
    text.remove_prefix(std::min(end + 1, text.size()));
  }
  return parts;
}

class KmlWalk final : private XmlWalk {
 public:
  KmlWalk(std::string_view fileName, Messages& messages, Progress* progress, GisCellTaker* taker)
      : XmlWalk(fileName, messages, progress), taker_(taker) {}

  GisFile Read(std::string_view text) {
    Walk(text);
    if (IsCanceledNow()) return std::move(file_);
    if (IsBroken()) CloseWhatIsOpen();
    GoToLine(file_.leftOut.firstLine);
    NoteLeftOut(file_.leftOut, FileName(), Said());
    GoToLine(0);
    if (otherShapes_ > 0) {
      PostNote(Said(), "%s: shapes other than points, lines and tracks are left out: %s",
               {FileName(), std::to_string(otherShapes_)});
    }
    return std::move(file_);
  }

 private:
  /// A fix of the shape that is open.
  struct Pending {
    std::optional<GisFix> fix;
    std::uint32_t line = 0;
  };

  KmlElement Around() const { return open_.empty() ? KmlElement::Other : open_.back(); }

  /// The kind of an element, by its name and the element around it.
  KmlElement KindOf(std::string_view name) const {
    const KmlElement around = Around();
    if (name == "Placemark" && around == KmlElement::Other) return KmlElement::Placemark;
    if (around == KmlElement::Placemark || around == KmlElement::Several) {
      const auto* shape = std::find_if(std::begin(KmlShapes), std::end(KmlShapes),
                                       [&](const KmlShape& each) { return each.name == name; });
      if (shape != std::end(KmlShapes)) return shape->element;
    }
    const auto* part =
        std::find_if(std::begin(KmlParts), std::end(KmlParts),
                     [&](const auto& each) { return each.within == around && each.name == name; });
    return part == std::end(KmlParts) ? KmlElement::Other : part->element;
  }

  void Open(std::string_view name, const char** /*attributes*/) override {
    const KmlElement kind = KindOf(name);
    open_.push_back(kind);
    KeepText(kind == KmlElement::Name || kind == KmlElement::Moment ||
             kind == KmlElement::Coordinates || kind == KmlElement::AltitudeMode ||
             kind == KmlElement::TrackMoment || kind == KmlElement::TrackPlace);
    partLine_ = Line();
    if (kind == KmlElement::OtherShape) ++otherShapes_;
    if (kind == KmlElement::Placemark) firstCell_ = TakenCells();
    if (IsShapeToRead(kind)) altitudeMode_.clear();
  }

  void Close() override {
    const KmlElement kind = open_.back();
    open_.pop_back();
    switch (kind) {
      case KmlElement::Name:
        name_ = CleanName(TrimSpace(Text()));
        break;
      case KmlElement::Moment:
        time_ = Text();
        break;
      case KmlElement::Coordinates:
        ReadCoordinates(Text());
        break;
      case KmlElement::AltitudeMode:
        altitudeMode_ = TrimSpace(Text());
        break;
      case KmlElement::TrackMoment:
        ReadTrackMoment();
        break;
      case KmlElement::TrackPlace:
        Add(SplitPlace(Text(), " \t\r\n"), partLine_);
        break;
      case KmlElement::Placemark:
        ClosePlacemark();
        break;
      default:
        if (IsShapeToRead(kind)) CloseShape(kind);
    }
    KeepText(false);
  }

  void ReadCoordinates(std::string_view text) {
    size_t line = partLine_;
    while (true) {
      for (; !text.empty() && IsSpace(text.front()); text.remove_prefix(1)) {
        if (text.front() == '\n') ++line;
      }
      if (text.empty()) return;
      size_t end = 0;
      while (end < text.size() && !IsSpace(text[end])) ++end;
      Add(SplitPlace(text.substr(0, end), ","), line);
      text.remove_prefix(end);
    }
  }

  void ReadTrackMoment() {
    if (date_.empty()) date_ = DateOfTime(Text());
    moments_.push_back(UtcOfTime(Text()));
    if (taker_ != nullptr) momentTexts_.push_back(Text());
  }

  size_t TakenCells() const { return taker_ == nullptr ? 0 : taker_->cells.size(); }

  void Add(const PlaceTexts& texts, size_t line) {
    const auto& [lon, lat, altitude] = texts;
    pending_.push_back({FixOf(lat, lon, altitude), static_cast<std::uint32_t>(line)});
    if (taker_ == nullptr || taker_->cells.size() >= taker_->most) return;
    // The name is not known yet, nor the time of a fix of a track.
    taker_->cells.push_back({"", "", std::string(lat), std::string(lon), std::string(altitude)});
  }

  /// What is not a height above the sea is no altitude, nor the 0 that drawing programs write.
  bool HasAltitude(const GisFix& fix) const {
    if (altitudeMode_ == "absolute") return true;
    return (altitudeMode_.empty() || altitudeMode_ == "clampToGround") && fix.altitude != 0;
  }

  void CloseShape(KmlElement kind) {
    if (taker_ != nullptr) SetCellTimes(kind);
    for (size_t i = 0; i < pending_.size(); ++i) {
      auto& [fix, line] = pending_[i];
      const std::uint32_t number = fixes_++;
      if (!fix) {
        file_.leftOut.Add(line);
        file_.badFixes.push_back({line, number});
        continue;
      }
      if (!HasAltitude(*fix)) fix->altitude = NoAltitude;
      fix->line = line;
      fix->number = number;
      if (kind == KmlElement::Point) {
        waypoints_.push_back({"", *fix});
        continue;
      }
      if (kind == KmlElement::Track && i < moments_.size()) fix->utc = moments_[i];
      track_.fixes.push_back(*fix);
    }
    pending_.clear();
    moments_.clear();
    momentTexts_.clear();
  }

  /// The texts of the fixes of the shape are the last that were taken; those of its end can be missing.
  void SetCellTimes(KmlElement kind) {
    const size_t first = fixes_;
    for (size_t i = first; i < TakenCells(); ++i) {
      std::string& text = taker_->cells[i][1];
      if (kind != KmlElement::Track) {
        text = time_;
      } else if (i - first < momentTexts_.size()) {
        text = momentTexts_[i - first];
      }
    }
  }

  void ClosePlacemark() {
    for (size_t i = firstCell_; i < TakenCells(); ++i) taker_->cells[i][0] = name_;
    for (GisWaypoint& waypoint : waypoints_) {
      waypoint.name = name_;
      file_.waypoints.push_back(std::move(waypoint));
    }
    if (!track_.fixes.empty()) {
      track_.name = std::move(name_);
      track_.date = date_.empty() ? DateOfTime(time_) : std::move(date_);
      file_.tracks.push_back(std::move(track_));
    }
    waypoints_.clear();
    track_ = {};
    name_.clear();
    time_.clear();
    date_.clear();
  }

  /// Takes what was read of the placemark in which the file breaks off.
  void CloseWhatIsOpen() {
    if (Around() == KmlElement::Coordinates) {
      // The last place may lack digits.
      const size_t whole = Text().find_last_of(" \t\r\n");
      ReadCoordinates(std::string_view(Text()).substr(0, whole == std::string::npos ? 0 : whole));
    }
    while (!open_.empty() && !IsShapeToRead(open_.back())) open_.pop_back();
    if (!open_.empty()) CloseShape(open_.back());
    ClosePlacemark();
  }

  GisCellTaker* taker_;
  GisFile file_;
  std::vector<KmlElement> open_;  ///< outermost first
  size_t partLine_ = 0;           ///< of the element that was opened last
  std::uint32_t fixes_ = 0;       ///< so far, without those that are pending
  size_t otherShapes_ = 0;
  // The placemark that is open.
  std::string name_;
  std::string time_;
  std::string date_;      ///< of the first time of a track
  size_t firstCell_ = 0;  ///< of its texts among those taken
  std::vector<GisWaypoint> waypoints_;
  GisTrack track_;
  // The shape that is open.
  std::string altitudeMode_;
  std::vector<Pending> pending_;
  std::vector<std::optional<std::int64_t>> moments_;  ///< one for each place, in their order
  std::vector<std::string> momentTexts_;              ///< the same as texts, for the taker
};

}  // namespace

GisFile ReadKml(std::string_view text, std::string_view name, Messages& messages,
                Progress* progress, GisCellTaker* taker) {
  if (text.size() <= LargestKml) return KmlWalk(name, messages, progress, taker).Read(text);
  const OriginScope origin(messages, std::string(name));
  NoteError(messages, "%s is larger than %s MiB, which no KML file of a GPS unit is",
            {name, std::to_string(LargestKml >> 20U)});
  return {};
}

}  // namespace orvane
