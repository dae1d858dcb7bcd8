#include "editing/save_trail.h"

#include "base/messages.h"
#include "base/number_text.h"
#include "base/text.h"
#include "base/utf8.h"
#include "editing/detach_trail.h"
#include "editing/edit_history.h"
#include "model/point_names.h"
#include "model/time_names.h"
#include "model/workspace.h"

#include <algorithm>
#include <cstdint>
#include <utility>

namespace orvane {
namespace {

constexpr size_t QuestionPlaceBytes = 60;
constexpr size_t QuestionPointBytes = 30;

/// What the form says.
struct TrailInput {
  std::string type;
  std::string name;
  std::string focal;
  PackedDate date = 0;
  int groupSize = 1;
  double width = 0;
  Color color = NoColor;
};

/// \return a message if the field can't be read
const char* ReadDate(const TrailForm& form, bool europeanDates, TrailInput& input) {
  const std::string& text = form.Text(TrailField::Date);
  const DatePrefix read = ParseDate(text, europeanDates);
  input.date = read.date;
  return read.length == text.size() ? nullptr : "Sorry, Date is in a bad format";
}

const char* ReadSize(const TrailForm& form, TrailInput& input) {
  const std::string& text = form.Text(TrailField::Size);
  size_t length = 0;
  input.groupSize = std::max(ReadInt32(text, &length), 1);
  return length == text.size() ? nullptr
                               : "Sorry, Troop size is in a bad format (must be an integer)";
}

const char* ReadWidth(const TrailForm& form, TrailInput& input) {
  const std::string_view text = form.Text(TrailField::Width);
  const RealPrefix read = ReadReal(text);
  const std::string_view rest = text.substr(read.length);
  input.width = read.value;
  return rest.empty() || rest == "m" || rest == "M"
             ? nullptr
             : "Sorry, Trail Width is in a bad format (must be an integer, a number of meters)";
}

const char* ReadColor(const TrailForm& form, TrailInput& input) {
  const std::string& text = form.Text(TrailField::LineColor);
  input.color = ParseColor(text);
  return input.color != NoColor || text.empty() ? nullptr : "Sorry, I don't know that color";
}

/// The trail as the form names it, or as it is where the form can't be typed over.
bool IsFoundElsewhere(Map& map, const TrailInput& input, const Trail* trail) {
  const bool byName = !input.name.empty() && FindTrail(map, input.name) != trail;
  const bool byDate =
      input.date != 0 && FindTrailByDate(map, input.type, input.date, input.focal) != trail;
  return byName || byDate;
}

/// What is asked before the map is changed.
class Questions {
 public:
  Questions(const TrailEditor& editor, Map& map)
      : editor_(editor), map_(map), messages_(map.workspace->messages) {}

  /// \return true if the user stays in the window, or has to
  bool StopAtIdentity(const TrailInput& input) {
    Trail* trail = editor_.Edited();
    if (trail == nullptr) {
      const bool exists = editor_.Deleted() != nullptr ? ExistsAgain() : Exists(input);
      if (exists) NoteError(messages_, "Sorry, this trail already exists");
      return exists;
    }
    const TrailInput own = {.type = trail->type,
                            .name = trail->name.value_or(""),
                            .focal = trail->focalAnimal.value_or(""),
                            .date = trail->date};
    return IsFoundElsewhere(map_, own, trail) &&
           AskUser(messages_, "Rename trail", "Yes", "Cancel", "",
                   "Do you want to rename this trail?") != 1;
  }

  /// Contours are made again with the elevations, and not saved.
  bool StopAtMissingContour() {
    if (HoldsTrail(map_, *editor_.Edited())) return false;
    NoteError(messages_, "This contour is not on the map now. Make the contours again first");
    return true;
  }

  /// A trail can be deleted while its editor is open.
  bool StopAtDeletedTrail() {
    return AskUser(messages_, "Trail deleted", "Yes", "Cancel", "",
                   "This trail was deleted.  Do you want to make it again?") != 1;
  }

  bool StopWithoutIdentity(const TrailInput& input) {
    return input.date == 0 && input.name.empty() &&
           AskUser(messages_, "No trail", "Yes", "No", "",
                   "You have not specified a name or date. You are not creating a trail, but these "
                   "points will be drawn.  Is that what you want?") != 1;
  }

  /// A near place can't be typed, so the reading that holds it would be lost.
  bool StopAtNearPlace() {
    for (const TrailRow& row : editor_.Rows()) {
      if (!row.showsNear || !IsVisit(row) || !IsKept(row)) continue;
      const std::string place = row.nearName.value_or("");
      return AskUser(messages_, "Place", "OK", "Cancel", "",
                     "The place \"%s\" of %s can't be kept by this editor.",
                     {CutText(place, QuestionPlaceBytes), CutText(row.name, QuestionPointBytes)}) !=
             1;
    }
    return false;
  }

  bool StopAtForeignChange() {
    return editor_.WasChangedElsewhere() &&
           AskUser(messages_, "Trail changed", "Yes", "Cancel", "",
                   "This trail was changed elsewhere.  Do you want to replace it?") != 1;
  }

 private:
  bool Exists(const TrailInput& input) const {
    return (!input.name.empty() && FindTrail(map_, input.name) != nullptr) ||
           (input.date != 0 &&
            FindTrailByDate(map_, input.type, input.date, input.focal) != nullptr);
  }
  /// The deleted trail can have been one of several with the same identity.
  bool ExistsAgain() const {
    const Trail& deleted = *editor_.Deleted();
    return (deleted.name || deleted.date != 0) &&
           EqualTrails(map_, deleted).size() >= editor_.Origin()->equals.marks.size();
  }

  const TrailEditor& editor_;
  Map& map_;
  Messages& messages_;
};

/// Makes the points of a trail, or loose points without one, from the rows of the editor.
class TrailBuilder {
 public:
  TrailBuilder(Map& map, Trail* trail, const TrailDetacher* detached)
      : map_(map), trail_(trail), detached_(detached) {}

  /// \return the texts that can't be the name of a point, as "="
  std::vector<std::string> Build(const std::vector<TrailRow>& rows) {
    for (const TrailRow& row : rows) {
      if (IsKept(row)) AddRow(row);
    }
    if (trail_ != nullptr) FillPointTimes(*trail_);
    return std::move(refused_);
  }

 private:
  void AddRow(const TrailRow& row) {
    const Found found = PointOf(row.name);
    Point* point = found.point;
    if (point == nullptr) return Refuse(row.name);
    if (found.isNew && !found.hasMark) GiveMark(row.mark, *point);
    if (point != previous_) Place(*point);
    previous_ = point;
    if (row.scale != 0) point->labelLimit = row.scale;
    if (row.comment) point->note = AppendNote(point->note, *row.comment);
    for (size_t i = 0; i < row.sm.size(); ++i) {
      if (row.sm[i] != 0) point->sm[i] = row.sm[i];
    }
    if (!IsVisit(row)) AddReading(*point, row);
  }

  struct Found {
    Point* point = nullptr;  ///< null if the name is not one, as "="
    bool isNew = false;
    bool hasMark = false;  ///< a new point: of its name on the trail
  };

  /// Finds or makes the point of a name.
  Found PointOf(const std::string& name) {
    const size_t before = map_.pointStore.size();
    Point* point = ResolvePointName(map_, trail_, name);
    const bool isNew = point != nullptr && map_.pointStore.size() != before;
    const bool hasMark = isNew && detached_ != nullptr && detached_->RestoreMark(*point);
    return {.point = point, .isNew = isNew, .hasMark = hasMark};
  }

  /// The base of a reading. A new one is on no trail yet, so it goes on the list of loose points.
  Point* BaseOf(const std::string& name) {
    const Found base = PointOf(name);
    if (base.isNew && !base.point->name.empty()) map_.loosePoints.push_front(base.point);
    return base.point;
  }

  void Place(Point& point) {
    if (trail_ == nullptr) {
      const bool isListed = point.name.empty() || (point.flags & PointNamedTwice) != 0;
      if (!isListed) map_.loosePoints.push_front(&point);
      return;
    }
    if (point.trail == nullptr) {
      if ((point.flags & PointNamedTwice) != 0) RemoveFromLists(map_, point);
      point.trail = trail_;
    }
    trail_->points.push_back(&point);
  }

  void AddReading(Point& point, const TrailRow& row) {
    Measurement reading;
    reading.count = row.weight == 0 ? 1 : row.weight;
    reading.altitude = static_cast<float>(row.altitude);
    if (row.isAbsolute) reading.flags |= MeasureAbsoluteBearing;
    if (row.isGps) {
      reading.flags |= MeasureGps;
      reading.position = row.gps;
    } else {
      reading.bearing = row.bearing;
      reading.distance = row.distance;
      reading.inclination = row.inclination;
      const bool hasBase = row.basePoint && !row.basePoint->empty();
      if (hasBase) reading.base = BaseOf(*row.basePoint);
      if (hasBase && reading.base == nullptr) return Refuse(*row.basePoint);
      reading.flags |= hasBase ? MeasureCompass : MeasureAltitude;
    }
    point.measurements.push_front(std::move(reading));
  }

  void Refuse(const std::string& name) { refused_.push_back(name); }

  Map& map_;
  Trail* trail_;
  const TrailDetacher* detached_;
  Point* previous_ = nullptr;
  std::vector<std::string> refused_;
};

/// A new trail, or the deleted one of the editor again.
Trail& MakeTrail(const TrailEditor& editor, Map& map, const TrailInput& input) {
  if (editor.Deleted() != nullptr) {
    // Shared points come back with it, so that its rows replace what it had given to them.
    std::vector<Point*> held = PointsHeld(map, editor.DeletedPoints());
    Trail& again = map.trails.emplace_front(*editor.Deleted());
    again.points = std::move(held);
    again.flags &= std::uint32_t{TrailHidden};
    return again;
  }
  Trail& trail = map.trails.emplace_front();
  if (!input.name.empty()) trail.name = input.name;
  trail.type = input.type;
  trail.date = input.date;
  if (!input.focal.empty()) trail.focalAnimal = input.focal;
  return trail;
}

/// \return the texts that can't be the name of a point
std::vector<std::string> ChangeMap(const TrailEditor& editor, Map& map, const TrailInput& input,
                                   EditFollowUp& followUp) {
  followUp.solve = true;
  Trail* trail = editor.Edited();
  if (trail == nullptr && (!input.name.empty() || input.date != 0)) {
    trail = &MakeTrail(editor, map, input);
  }
  if (trail == nullptr) {
    return TrailBuilder(map, nullptr, nullptr).Build(editor.Rows());
  }
  // Rows keep what another window gave them meanwhile.
  if (input.color != NoColor && input.color != editor.OpenedColor()) {
    followUp.recolored.push_back(trail);
  }
  trail->color = input.color;
  trail->groupSize = input.groupSize;
  trail->width = input.width;
  // The vertices of a contour are no survey points, and its table can't be edited.
  if (editor.IsReadOnly()) return {};
  TrailDetacher detacher(map, {trail}, editor.Rows());
  detacher.KeepMarks(editor.DeletedPoints());
  detacher.Detach();
  return TrailBuilder(map, trail, &detacher).Build(editor.Rows());
}

/// A row without a name and a reading makes no point, even if it holds a comment.
void NoteRowsLeftOut(const TrailEditor& editor, Messages& messages) {
  const std::vector<TrailRow>& rows = editor.Rows();
  const auto leftOut = std::count_if(rows.begin(), rows.end(), [](const TrailRow& row) {
    return !IsKept(row) && HoldsAnything(row);
  });
  if (leftOut == 0 || editor.IsReadOnly()) return;
  PostNote(messages, "Rows with neither a name nor a reading were left out: %s",
           {std::to_string(leftOut)});
}

std::string EditName(const TrailEditor& editor, const TrailInput& input) {
  if (editor.Edited() != nullptr) return "Edit of Trail " + ShortNameOf(*editor.Edited());
  if (!input.name.empty()) return "New Trail " + input.name;
  if (input.date == 0) return "New Points";
  std::string name = "New Trail " + FormatDate(input.date);
  if (!input.focal.empty()) name += " " + input.focal;
  return name;
}

}  // namespace

SaveOutcome SaveTrailEditor(TrailEditor& editor, EditHistory& history) {
  Map& window = editor.WindowMap();
  Messages& messages = window.workspace->messages;
  editor.FollowReread();  // what was lost may be there again
  const Trail* edited = editor.Edited();
  Map* holder = edited == nullptr ? nullptr : MapOfTrail(window, *edited);
  const bool wasDeleted = edited != nullptr && holder == nullptr && !IsContour(*edited);
  if (!editor.IsChanged() && !wasDeleted) return SaveOutcome::Closes;
  Map& map = holder == nullptr ? window : *holder;
  const TrailForm& form = editor.Form();
  TrailInput input;
  input.name = form.Text(TrailField::Name);
  input.type = form.Text(TrailField::Type);
  input.focal = form.Text(TrailField::Focal);
  const auto refuse = [&](const char* refusal) {
    if (refusal != nullptr) NoteError(messages, refusal);
    return refusal != nullptr;
  };
  if (refuse(ReadDate(form, window.workspace->preferences.europeanDates, input)) ||
      refuse(ReadSize(form, input)) || refuse(ReadWidth(form, input))) {
    return SaveOutcome::Stays;
  }
  Questions questions(editor, map);
  if (editor.IsReadOnly() && questions.StopAtMissingContour()) return SaveOutcome::Stays;
  if (wasDeleted) {
    if (questions.StopAtDeletedTrail()) return SaveOutcome::Stays;
    editor.MakeAgain();
  }
  const bool isRefused = questions.StopAtIdentity(input) || questions.StopWithoutIdentity(input) ||
                         (editor.Rows().empty() &&
                          refuse("Sorry but there must be at least one point on your trail")) ||
                         refuse(ReadColor(form, input)) || questions.StopAtNearPlace() ||
                         questions.StopAtForeignChange();
  if (isRefused) {
    // An undo can bring the trail back before the next OK.
    if (wasDeleted) editor.LeaveDeleted();
    return SaveOutcome::Stays;
  }
  std::vector<std::string> badNames;
  history.Apply(
      {.name = EditName(editor, input), .map = &map, .change = [&](EditFollowUp& followUp) {
         badNames = ChangeMap(editor, map, input, followUp);
         return true;
       }});
  for (const std::string& name : badNames) NoteError(messages, "Bad pointname %s", {name});
  NoteRowsLeftOut(editor, messages);
  return SaveOutcome::Closes;
}

}  // namespace orvane
