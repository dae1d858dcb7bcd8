#include "entry/gis_file.h"
#include "entry/gis_values.h"
#include "entry/xml_walk.h"

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

// GPX is XML of a fixed outline:
//
//     gpx ─┬─ wpt lat lon ─┬─ ele, time, name
//          ├─ rte ─ rtept  │
//          └─ trk ─┬─ name │
//                  └─ trkseg ─ trkpt lat lon ─ ele, time
//
// The walk keeps the kind of each open element on a stack, so that the name within an extension,
// for example, does not become that of the track around it.

namespace orvane {

namespace {

enum class Element : unsigned char {
  Other,
  Gpx,
  Waypoint,
  Route,
  Track,
  Segment,
  TrackPoint,
  Name,
  Elevation,
  Time
};

/// The elements that are read: their name and the element around them.
struct Place {
  std::string_view name;
  Element within;
  Element element;
};
constexpr Place Places[] = {
    {"wpt", Element::Gpx, Element::Waypoint},
    {"rte", Element::Gpx, Element::Route},
    {"trk", Element::Gpx, Element::Track},
    {"name", Element::Waypoint, Element::Name},
    {"ele", Element::Waypoint, Element::Elevation},
    {"time", Element::Waypoint, Element::Time},
    {"name", Element::Track, Element::Name},
    {"trkseg", Element::Track, Element::Segment},
    {"trkpt", Element::Segment, Element::TrackPoint},
    {"ele", Element::TrackPoint, Element::Elevation},
    {"time", Element::TrackPoint, Element::Time},
};

class GpxWalk final : private XmlWalk {
 public:
  GpxWalk(std::string_view fileName, Messages& messages, Progress* progress, GisCellTaker* taker)
      : XmlWalk(fileName, messages, progress), taker_(taker) {}

  GisFile Read(std::string_view text) {
    Walk(text);
    if (IsCanceledNow()) return std::move(file_);
    GoToLine(file_.leftOut.firstLine);
    NoteLeftOut(file_.leftOut, FileName(), Said());
    GoToLine(0);
    if (!isGpx_ && !IsBroken()) NoteError(Said(), "%s is not a GPX or KML file", {FileName()});
    GoToLine(routeLine_);
    if (routeLine_ > 0) NoteWarning(Said(), "%s: routes are left out", {FileName()});
    std::erase_if(file_.tracks, [](const GisTrack& track) { return track.fixes.empty(); });
    return std::move(file_);
  }

 private:
  /// The kind of an element, by its name and the element around it.
  Element KindOf(std::string_view name) const {
    if (open_.empty()) return name == "gpx" ? Element::Gpx : Element::Other;
    const auto* place = std::find_if(std::begin(Places), std::end(Places), [&](const Place& known) {
      return known.within == open_.back() && known.name == name;
    });
    return place == std::end(Places) ? Element::Other : place->element;
  }

  void Open(std::string_view name, const char** attributes) override {
    const Element kind = KindOf(name);
    open_.push_back(kind);
    KeepText(kind == Element::Name || kind == Element::Elevation || kind == Element::Time);
    if (kind == Element::Gpx) isGpx_ = true;
    if (kind == Element::Route && routeLine_ == 0) routeLine_ = Line();
    if (kind == Element::Track) file_.tracks.emplace_back();
    if (kind == Element::Waypoint || kind == Element::TrackPoint) OpenFix(attributes);
  }

  void OpenFix(const char** attributes) {
    lat_.clear();
    lon_.clear();
    altitude_.clear();
    time_.clear();
    name_.clear();
    fixLine_ = Line();
    for (; *attributes != nullptr; attributes += 2) {
      const std::string_view key(attributes[0]);
      if (key == "lat") lat_ = attributes[1];
      if (key == "lon") lon_ = attributes[1];
    }
  }

  void Close() override {
    const Element kind = open_.back();
    open_.pop_back();
    const Element parent = open_.empty() ? Element::Other : open_.back();
    if (kind == Element::Elevation) altitude_ = Text();
    if (kind == Element::Name) CloseName(parent);
    if (kind == Element::Time) {
      time_ = Text();
      const bool isOfTrack = parent == Element::TrackPoint;
      if (isOfTrack && file_.tracks.back().date.empty())
        file_.tracks.back().date = DateOfTime(time_);
    }
    if (kind == Element::Waypoint || kind == Element::TrackPoint) CloseFix(kind);
    KeepText(false);
  }

  void CloseName(Element parent) {
    std::string name = CleanName(TrimSpace(Text()));
    if (parent == Element::Waypoint) {
      name_ = std::move(name);
    } else {
      file_.tracks.back().name = std::move(name);
    }
  }

  void CloseFix(Element kind) {
    auto fix = FixOf(lat_, lon_, altitude_);
    const bool isWaypoint = kind == Element::Waypoint;
    if (taker_ != nullptr && taker_->cells.size() < taker_->most) {
      const std::string& name = isWaypoint ? name_ : file_.tracks.back().name;
      taker_->cells.push_back({name, time_, lat_, lon_, altitude_});
    }
    const auto line = static_cast<std::uint32_t>(fixLine_);
    const std::uint32_t number = fixes_++;
    if (!fix) {
      file_.leftOut.Add(fixLine_);
      file_.badFixes.push_back({line, number});
      return;
    }
    fix->line = line;
    fix->number = number;
    if (isWaypoint) {
      file_.waypoints.push_back({std::move(name_), *fix});
    } else {
      fix->utc = UtcOfTime(time_);
      file_.tracks.back().fixes.push_back(*fix);
    }
  }

  GisCellTaker* taker_;
  GisFile file_;
  bool isGpx_ = false;
  size_t routeLine_ = 0;  ///< of the first route; 0 for none

  std::vector<Element> open_;  ///< outermost first
  std::uint32_t fixes_ = 0;    ///< so far
  // The fix that is open.
  size_t fixLine_ = 0;
  std::string lat_;
  std::string lon_;
  std::string altitude_;
  std::string time_;
  std::string name_;
};

}  // namespace

GisFile ReadGpx(std::string_view text, std::string_view name, Messages& messages,
                Progress* progress, GisCellTaker* taker) {
  return GpxWalk(name, messages, progress, taker).Read(text);
}

}  // namespace orvane
