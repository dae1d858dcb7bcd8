#include "base/number_text.h"
#include "entry/fix_cells.h"
#include "entry/gis_file.h"
#include "entry/gis_values.h"
#include "geo/positions.h"

#include <algorithm>
#include <expat.h>
#include <memory>
#include <string>
#include <type_traits>
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
// for example, does not become that of the track around it. GPX files declare no entities; one
// that does is read up to there, since a few lines of entities can expand to gigabytes.

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

/// The part after the prefix of a namespace.
std::string_view LocalName(const char* name) {
  const std::string_view whole(name);
  const size_t colon = whole.rfind(':');
  return colon == std::string_view::npos ? whole : whole.substr(colon + 1);
}

/// Removes leading white space, which XML does not allow before its declaration.
/// \return the number of lines that end in it
size_t TakeBlankLines(std::string_view& text) {
  size_t lines = 0;
  for (char before = 0; !text.empty() && IsSpace(text.front()); text.remove_prefix(1)) {
    const char c = text.front();
    if (c == '\r' || (c == '\n' && before != '\r')) ++lines;
    before = c;
  }
  return lines;
}

/// The date of "2004-02-18T08:00:00Z".
std::string DateOf(std::string_view time) {
  time = TrimSpace(time);
  return CleanName(time.substr(0, std::min(time.find_first_of("T "), time.size())));
}

/// The moment of "2004-02-18T08:00:00Z"; without a zone it is UTC as well.
std::optional<std::int64_t> UtcOf(std::string_view time) {
  const MomentReading read = ReadMoment(TrimSpace(time), {});
  if (read.fault != MomentFault::None) return std::nullopt;
  return UtcOf(read.moment, false);
}

struct FreeParser {
  void operator()(XML_Parser parser) const { XML_ParserFree(parser); }
};

class GpxWalk {
 public:
  GpxWalk(std::string_view fileName, Messages& messages, Progress* progress, GisCellTaker* taker)
      : parser_(XML_ParserCreate(nullptr)),
        fileName_(fileName),
        messages_(messages),
        progress_(progress),
        taker_(taker),
        origin_(messages, std::string(fileName)) {}

  GisFile Read(std::string_view text) {
    if (parser_ == nullptr) return {};  // no memory
    XML_SetUserData(parser_.get(), this);
    XML_SetElementHandler(parser_.get(), &GpxWalk::OnStart, &GpxWalk::OnEnd);
    XML_SetCharacterDataHandler(parser_.get(), &GpxWalk::OnText);
    XML_SetEntityDeclHandler(parser_.get(), &GpxWalk::OnEntity);
    linesBefore_ = TakeBlankLines(text);
    Parse(text);
    if (IsCanceled(progress_)) return std::move(file_);
    origin_.GoToLine(file_.leftOut.firstLine);
    NoteLeftOut(file_.leftOut, fileName_, messages_);
    origin_.GoToLine(0);
    if (!isGpx_ && !isBroken_) NoteError(messages_, "%s is not a GPX file", {fileName_});
    origin_.GoToLine(routeLine_);
    if (routeLine_ > 0) NoteWarning(messages_, "%s: routes are left out", {fileName_});
    std::erase_if(file_.tracks, [](const GisTrack& track) { return track.fixes.empty(); });
    return std::move(file_);
  }

 private:
  static void XMLCALL OnStart(void* walk, const XML_Char* name, const XML_Char** attributes) {
    static_cast<GpxWalk*>(walk)->Open(name, attributes);
  }
  static void XMLCALL OnEnd(void* walk, const XML_Char* /*name*/) {
    static_cast<GpxWalk*>(walk)->Close();
  }
  static void XMLCALL OnText(void* walk, const XML_Char* text, int length) {
    auto& self = *static_cast<GpxWalk*>(walk);
    if (self.keepsText_) self.text_.append(text, static_cast<size_t>(length));
  }
  static void XMLCALL OnEntity(void* walk, const XML_Char* /*name*/, int /*isParameter*/,
                               const XML_Char* /*value*/, int /*length*/, const XML_Char* /*base*/,
                               const XML_Char* /*systemId*/, const XML_Char* /*publicId*/,
                               const XML_Char* /*notation*/) {
    XML_StopParser(static_cast<GpxWalk*>(walk)->parser_.get(), XML_FALSE);
  }

  void Parse(std::string_view text) {
    constexpr size_t MostAtOnce = 1 << 20;  // bytes; then the user can cancel
    const size_t whole = text.size();
    ProgressSteps steps(progress_, WorkStage::Reading, whole);
    for (bool isLast = false; !isLast && steps.Next(whole - text.size());) {
      const std::string_view part = text.substr(0, MostAtOnce);
      text.remove_prefix(part.size());
      isLast = text.empty();
      const auto size = static_cast<int>(part.size());
      if (XML_Parse(parser_.get(), part.data(), size, isLast ? 1 : 0) != XML_STATUS_OK) {
        NoteBreak();
        return;
      }
    }
  }

  void NoteBreak() {
    isBroken_ = true;
    const XML_Error error = XML_GetErrorCode(parser_.get());
    origin_.GoToLine(Line());
    NoteError(messages_, "%s can't be read from line %s on: %s",
              {fileName_, std::to_string(Line()),
               error == XML_ERROR_ABORTED ? "it declares entities" : XML_ErrorString(error)});
  }

  size_t Line() const {
    return linesBefore_ + static_cast<size_t>(XML_GetCurrentLineNumber(parser_.get()));
  }

  /// The kind of an element, by its name and the element around it.
  Element KindOf(std::string_view name) const {
    if (open_.empty()) return name == "gpx" ? Element::Gpx : Element::Other;
    const auto* place = std::find_if(std::begin(Places), std::end(Places), [&](const Place& known) {
      return known.within == open_.back() && known.name == name;
    });
    return place == std::end(Places) ? Element::Other : place->element;
  }

  void Open(const char* name, const char** attributes) {
    const Element kind = KindOf(LocalName(name));
    open_.push_back(kind);
    keepsText_ = kind == Element::Name || kind == Element::Elevation || kind == Element::Time;
    text_.clear();
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

  void Close() {
    const Element kind = open_.back();
    open_.pop_back();
    const Element parent = open_.empty() ? Element::Other : open_.back();
    if (kind == Element::Elevation) altitude_ = text_;
    if (kind == Element::Name) CloseName(parent);
    if (kind == Element::Time) {
      time_ = text_;
      const bool isOfTrack = parent == Element::TrackPoint;
      if (isOfTrack && file_.tracks.back().date.empty()) file_.tracks.back().date = DateOf(text_);
    }
    if (kind == Element::Waypoint || kind == Element::TrackPoint) CloseFix(kind);
    keepsText_ = false;
  }

  void CloseName(Element parent) {
    std::string name = CleanName(TrimSpace(text_));
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
      fix->utc = UtcOf(time_);
      file_.tracks.back().fixes.push_back(*fix);
    }
  }

  std::unique_ptr<std::remove_pointer_t<XML_Parser>, FreeParser> parser_;
  std::string_view fileName_;
  Messages& messages_;
  Progress* progress_;
  GisCellTaker* taker_;
  OriginScope origin_;
  size_t linesBefore_ = 0;  ///< those that the parser does not see
  GisFile file_;
  bool isGpx_ = false;
  bool isBroken_ = false;
  size_t routeLine_ = 0;  ///< of the first route; 0 for none

  std::vector<Element> open_;  ///< outermost first
  bool keepsText_ = false;
  std::string text_;         ///< of the innermost element that keeps it
  std::uint32_t fixes_ = 0;  ///< so far
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
