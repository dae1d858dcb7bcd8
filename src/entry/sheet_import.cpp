#include "entry/sheet_import.h"

#include "base/dates.h"
#include "base/number_text.h"
#include "base/times.h"
#include "entry/sheet_summary.h"
#include "geo/earth.h"
#include "model/name_index.h"
#include "model/point_names.h"
#include "model/workspace.h"
#include "places/resolve_location.h"
#include "ranges/analysis.h"
#include "survey/positions.h"
#include "survey/solver.h"

#include <algorithm>
#include <limits>
#include <unordered_map>

namespace orvane {

namespace {

constexpr int NoStop = -1;
constexpr int MinutesInHour = 60;

/// Times and counts of a stop are kept in 16 bits.
int CutTo16Bits(std::int64_t value) { return static_cast<std::int16_t>(value); }

/// Whether the import continues after a row.
enum class RowResult { GoOn, Abandon };

/// The current stop. It has a location as long as `end` is not `NoStop`.
struct PendingStop {
  std::string location;  ///< as typed
  LatLon position;
  int start = 0;     ///< minutes after midnight
  int end = NoStop;  ///< minutes after midnight of the last row that belongs to it

  bool IsPending() const { return end != NoStop; }
};

/// The texts of a row that decide on its trail.
struct TrailTexts {
  std::string species;
  std::string date;
  std::optional<std::string> focal;
};

/// The cells of a row that decide on its stop.
struct StopTexts {
  std::string_view time;
  std::string_view location;
  std::string_view activity;
  bool outOfSight = false;  ///< "oos": nobody saw where the animal was
  int minutes = 0;          ///< `ParseTime` of `time`
};

/// True if another trail continues a trail: its name ends in "'".
bool HasTrailsInParts(const Map& map) {
  for (const Map* level = &map; level != nullptr; level = level->basis) {
    for (const Trail& trail : level->trails) {
      if (trail.name && trail.name->ends_with('\'')) return true;
    }
  }
  return false;
}

/// True if the text may contain a place "left of" or "right of" a mark.
bool MayTellSides(std::string_view text) {
  for (size_t of = text.find("of"); of != std::string_view::npos; of = text.find("of", of + 1)) {
    const std::string_view before = text.substr(0, text.substr(0, of).find_last_not_of(' ') + 1);
    for (const std::string_view side : {"left", "right", "l", "r"}) {
      if (before.ends_with(side)) return true;
    }
  }
  return false;
}

/// Finds places by text. A sheet names the same few hundred places again and again.
class LocationFinder {
 public:
  LocationFinder(Map& map, std::string_view sheet)
      : map_(map), names_(map), planesCount_(MayTellSides(sheet) || HasTrailsInParts(map)) {}

  /// \return nothing if the text means nothing
  std::optional<LatLon> Find(std::string_view text) {
    if (!MeansTheSameAgain(text)) return Resolve(text);
    const auto [entry, isNew] = known_.try_emplace(std::string(text));
    if (isNew) entry->second = Resolve(text);
    return entry->second;
  }

 private:
  bool MeansTheSameAgain(std::string_view text) const {
    // A text with one of these may mean a follow by its date, also one that was imported just now.
    if (text.find_first_of(".:") != std::string_view::npos) return false;
    return !planesCount_ || FindPointByName(map_, nullptr, text) != nullptr;
  }

  std::optional<LatLon> Resolve(std::string_view text) {
    const auto location = ResolveLocation(map_, text);
    if (!location) return std::nullopt;
    return location->place;
  }

  Map& map_;
  NameIndexScope names_;  ///< the trails of the import have no names
  /// A place "left of" a mark, or between two trails, depends on the planes in which earlier texts
  /// left the points, so such a text must be looked up each time.
  bool planesCount_;
  std::unordered_map<std::string, std::optional<LatLon>> known_;
};

/// One import under way.
class SheetImport {
 public:
  /// \param fates  if not null, receives what becomes of each row, and nothing is asked or posted
  /// \param most   rows that it receives at most; no more are read
  SheetImport(const ImportSpec& spec, SheetLogs& logs, std::vector<SheetRowFate>* fates = nullptr,
              size_t most = 0)
      : spec_(spec),
        logs_(logs),
        fates_(fates),
        mostFates_(most),
        map_(*spec.map),
        workspace_(*spec.map->workspace),
        locations_(*spec.map, spec.sheet->text) {}

  /// \return what was met; the import was abandoned if it says at which line
  SheetCounts Run();

  bool HasMadeTrail() const { return trail_ != nullptr; }

 private:
  bool TrailCannotChange() const;
  TrailTexts ReadTrailTexts(std::string_view row) const;
  std::string SeriesDate(std::string_view row) const;
  bool ContinuesTrail(const TrailTexts& texts, PackedDate date) const;
  void BeginTrail(const TrailTexts& texts, PackedDate date);
  StopTexts ReadStopTexts(std::string_view row) const;
  void WarnOfTime(const StopTexts& texts);
  RowResult ReadRow(std::string_view row);
  RowResult ReadStop(std::string_view row);
  RowResult TakeSighting(std::string_view row, const StopTexts& texts);
  void TakeGoodRow(const StopTexts& texts, const std::optional<LatLon>& position);
  void BeginStop(const StopTexts& texts, const std::optional<LatLon>& position);
  RowResult TakeBadRow(std::string_view row, const StopTexts& texts);
  void LeaveOut(std::string_view row, std::string_view state, std::string reason);
  void NoteLostStop();
  void ListRest(SheetLines& lines);
  size_t LineOfFile(size_t number) const;
  void EndStop(int end);
  void Count(std::string_view row, const StopTexts& texts);
  bool Continues(const std::string& title, std::string_view question, std::string_view text);

  const ImportSpec& spec_;
  SheetLogs& logs_;
  std::vector<SheetRowFate>* fates_;
  size_t mostFates_;
  SheetRowFate fate_;              ///< of the current row
  std::vector<size_t> stopFates_;  ///< in `fates_`, of the rows that the current stop is made of
  Map& map_;
  Workspace& workspace_;
  LocationFinder locations_;
  Trail* trail_ = nullptr;
  PendingStop stop_;
  SmCounts smCount_{};
  int lastTime_ = 0;  ///< minutes after midnight of the row read last
  bool warnedBackwards_ = false;
  bool askedBadLocation_ = false;
  SheetCounts counts_;
  size_t line_ = 0;            ///< of the file, of the row read last
  bool isRestOfLine_ = false;  ///< the row is not the first part of its line
};

SheetCounts SheetImport::Run() {
  OriginScope origin(workspace_.messages, spec_.fileName);
  const std::string& text = spec_.sheet->text;
  SheetLines lines(text);
  constexpr unsigned RowsBetweenReports = 16;
  ProgressSteps steps(workspace_.progress, WorkStage::Reading,
                      static_cast<size_t>(std::count(text.begin(), text.end(), '\n')) + 1,
                      RowsBetweenReports);
  for (int i = 0; i < spec_.skipCount; ++i) lines.Next();
  for (size_t last = lines.Number(); const auto row = lines.Next(); last = lines.Number()) {
    if (!steps.Next(lines.Number())) break;
    isRestOfLine_ = lines.Number() == last;
    line_ = LineOfFile(lines.Number());
    origin.GoToLine(line_);
    if (row->empty()) continue;
    fate_ = {line_, *row};
    const RowResult result = ReadRow(*row);
    if (fates_ != nullptr) fates_->push_back(fate_);
    if (result == RowResult::Abandon) {
      NoteLostStop();
      counts_.abandonedAt = line_;
      if (fates_ != nullptr) ListRest(lines);
      break;
    }
    if (fates_ != nullptr && fates_->size() == mostFates_) break;
  }
  const bool isAtEnd = counts_.abandonedAt == 0 && !IsCanceled(workspace_.progress);
  if (isAtEnd && stop_.IsPending()) EndStop(lastTime_);
  counts_.unknownPlaces = logs_.unknownLocations.size();
  return counts_;
}

/// Lists the rows after the one at which the import ends.
void SheetImport::ListRest(SheetLines& lines) {
  while (fates_->size() < mostFates_) {
    const auto row = lines.Next();
    if (!row) return;
    if (row->empty()) continue;
    fates_->push_back({LineOfFile(lines.Number()), *row, "not used",
                       "the import ends at row " + std::to_string(counts_.abandonedAt)});
  }
}

size_t SheetImport::LineOfFile(size_t number) const {
  const std::vector<size_t>& lines = spec_.sheet->rowLines;
  return lines.empty() ? number : lines[number - 1];
}

/// Counts a row that gives no stop. A row without text, and the rest of a long line, do not count.
void SheetImport::LeaveOut(std::string_view row, std::string_view state, std::string reason) {
  fate_.state = state;
  fate_.reason = std::move(reason);
  if (isRestOfLine_ || row.find_first_not_of(" \t") == std::string_view::npos) return;
  counts_.leftOut.Add(line_);
}

/// An import that ends early loses the current stop, and so the rows that it is made of.
void SheetImport::NoteLostStop() {
  for (const size_t index : stopFates_) {
    (*fates_)[index].state = "not used";
    (*fates_)[index].reason = "the import ends before this stop does";
  }
}

/// With only fixed texts all rows belong to one trail.
bool SheetImport::TrailCannotChange() const {
  return spec_.speciesAlways && spec_.dateAlways && spec_.focalColumn == ColumnBlank &&
         trail_ != nullptr;
}

/// A series of columns gives a date like "2003/5/31". A cell without a number counts as 0.
std::string SheetImport::SeriesDate(std::string_view row) const {
  constexpr int FirstYearOf1900s = 81;
  constexpr int FirstFullYear = 100;
  std::int64_t year = ReadInt32(ColumnText(row, spec_.yearColumn));
  if (year < FirstYearOf1900s) {
    year += 2000;
  } else if (year < FirstFullYear) {
    year += 1900;
  }
  return std::to_string(year) + '/' +
         std::to_string(ReadInt32(ColumnText(row, spec_.monthColumn))) + '/' +
         std::to_string(ReadInt32(ColumnText(row, spec_.dayColumn)));
}

TrailTexts SheetImport::ReadTrailTexts(std::string_view row) const {
  TrailTexts texts{spec_.speciesAlways.value_or(""), spec_.dateAlways.value_or(""),
                   spec_.focalAlways};
  if (spec_.speciesColumn != ColumnBlank) texts.species = ColumnText(row, spec_.speciesColumn);
  if (spec_.focalColumn != ColumnBlank) texts.focal = ColumnText(row, spec_.focalColumn);
  if (spec_.dateColumn == ColumnMalformed && spec_.yearColumn >= 0) {
    texts.date = SeriesDate(row);
  } else if (spec_.dateColumn != ColumnBlank) {
    // A malformed field reads the first column, even if all rows have a fixed date.
    texts.date = ColumnText(row, spec_.dateColumn);
  }
  return texts;
}

/// Only the trail of the row before counts. Later rows with the same three values are a new follow.
bool SheetImport::ContinuesTrail(const TrailTexts& texts, PackedDate date) const {
  return trail_ != nullptr && trail_->date == date && trail_->type == texts.species &&
         (!texts.focal || texts.focal == trail_->focalAnimal);
}

void SheetImport::BeginTrail(const TrailTexts& texts, PackedDate date) {
  if (stop_.IsPending()) EndStop(stop_.end);
  if (trail_ == nullptr || !trail_->points.empty()) trail_ = &map_.trails.emplace_front();
  trail_->date = date;
  trail_->focalAnimal = texts.focal;
  trail_->type = texts.species;
  smCount_ = {};
  map_.flags |= MapDirty;
}

RowResult SheetImport::ReadRow(std::string_view row) {
  if (!TrailCannotChange()) {
    const TrailTexts texts = ReadTrailTexts(row);
    if (texts.species.empty() || texts.date.empty()) {
      LeaveOut(row, texts.date.empty() ? "bad date" : "no species",
               texts.date.empty() ? "no date" : "no species or group");
      return RowResult::GoOn;
    }
    const DatePrefix date = ParseDate(texts.date, workspace_.preferences.europeanDates);
    if (date.length < texts.date.size()) {
      fate_.state = "bad date";
      fate_.reason = "the import ends at " + texts.date;
      if (fates_ == nullptr) NoteError(workspace_.messages, "Bad date %s", {texts.date});
      return RowResult::Abandon;
    }
    if (!ContinuesTrail(texts, date.date)) BeginTrail(texts, date.date);
  }
  return ReadStop(row);
}

StopTexts SheetImport::ReadStopTexts(std::string_view row) const {
  constexpr std::string_view OutOfSight = "oos";
  StopTexts texts;
  texts.time = ColumnText(row, spec_.timeColumn);
  texts.location = ColumnText(row, spec_.locationColumn);
  // Without an activity column this is the first column, and "oos" there marks the row. Pinned by
  // SheetImportTest.WithoutAnActivityColumnTheFirstColumnIsTestedForOos.
  texts.activity = ColumnText(row, spec_.activityColumn);
  texts.outOfSight = SameName(texts.activity, OutOfSight) || SameName(texts.location, OutOfSight);
  texts.minutes = ParseTime(texts.time).minutes;
  return texts;
}

/// An empty time counts as midnight, so it can cause the warning.
void SheetImport::WarnOfTime(const StopTexts& texts) {
  if (!stop_.IsPending() || texts.minutes >= stop_.end || warnedBackwards_) return;
  fate_.reason = "the time is before that of the last row";
  if (fates_ != nullptr) return;
  const DateParts date = UnpackDate(trail_->date);
  NoteWarning(workspace_.messages, "Time runs backwards for %s (%s) at %s on %s",
              {trail_->type, trail_->focalAnimal.value_or(""), texts.time,
               std::to_string(date.year) + '-' + std::to_string(date.month) + '-' +
                   std::to_string(date.day)});
  warnedBackwards_ = true;
}

RowResult SheetImport::ReadStop(std::string_view row) {
  const StopTexts texts = ReadStopTexts(row);
  lastTime_ = texts.minutes;
  WarnOfTime(texts);
  if (texts.outOfSight) {
    fate_.reason = "out of sight";
    if (stop_.IsPending()) EndStop(texts.minutes);
  } else if (TakeSighting(row, texts) == RowResult::Abandon) {
    return RowResult::Abandon;
  }
  // A row with an unknown place counts for the current stop. Without one nothing is counted, and
  // the next stop starts at 0.
  if (stop_.IsPending()) Count(row, texts);
  return RowResult::GoOn;
}

RowResult SheetImport::TakeSighting(std::string_view row, const StopTexts& texts) {
  if (texts.time.empty()) {
    LeaveOut(row, "bad time", "no time");
    return RowResult::GoOn;
  }
  if (ValidTimeText(texts.time)) {
    std::optional<LatLon> position;
    if (!texts.location.empty()) position = locations_.Find(texts.location);
    if (position || (texts.location.empty() && stop_.IsPending())) {
      TakeGoodRow(texts, position);
      return RowResult::GoOn;
    }
  }
  return TakeBadRow(row, texts);
}

/// \param position  of the row's location; none if the cell is empty
void SheetImport::TakeGoodRow(const StopTexts& texts, const std::optional<LatLon>& position) {
  const bool moved = position && (!stop_.IsPending() || !SameName(texts.location, stop_.location));
  // With measures, a stop is cut when the hour of the clock changes, so that counts belong to an
  // hour.
  const bool hourEnds =
      map_.smName[0] && stop_.end / MinutesInHour != texts.minutes / MinutesInHour;
  if (moved || hourEnds) {
    BeginStop(texts, position);
  } else {
    stop_.end = texts.minutes;
  }
  if (fates_ != nullptr) stopFates_.push_back(fates_->size());  // where this row comes
}

/// Ends the current stop, if there is one.
/// \param position  of the new one; none for the place of the current one
void SheetImport::BeginStop(const StopTexts& texts, const std::optional<LatLon>& position) {
  PendingStop next = stop_;
  if (stop_.IsPending()) EndStop(texts.minutes);
  if (position) {
    next.location = texts.location;
    next.position = *position;
  }
  next.start = texts.minutes;
  next.end = texts.minutes;
  stop_ = std::move(next);
  smCount_ = {};
}

RowResult SheetImport::TakeBadRow(std::string_view row, const StopTexts& texts) {
  if (!ValidTimeText(texts.time)) {
    if (!Continues("Bad Time", "Bad time specification %s, Do you want to continue?", texts.time)) {
      return RowResult::Abandon;
    }
    LeaveOut(row, "bad time", std::string(texts.time) + " is not a time");
    return RowResult::GoOn;
  }
  if (texts.location.empty()) {
    LeaveOut(row, "unknown place", "no place, and none before it");
    return RowResult::GoOn;
  }
  if (!askedBadLocation_) {
    if (!Continues("Bad Location", "Bad location specification %s, Do you want to continue?",
                   texts.location)) {
      return RowResult::Abandon;
    }
    askedBadLocation_ = true;
  }
  if (NoteBadLocation(logs_, texts.location, trail_->date, texts.time)) {
    ++counts_.weatherNotes;
    fate_.state = "unknown place";
    fate_.reason = std::string(texts.location) + " is a note on the weather";
  } else {
    LeaveOut(row, "unknown place", "the map has no place " + std::string(texts.location));
  }
  return RowResult::GoOn;
}

/// Puts the current stop on the trail and ends it.
void SheetImport::EndStop(int end) {
  if (trail_->points.empty()) ++counts_.follows;
  ++counts_.stops;
  AddStopPoint(map_, *trail_, stop_.position, stop_.start, end, stop_.location, smCount_);
  stop_ = {};
  stopFates_.clear();
  smCount_ = {};
}

void SheetImport::Count(std::string_view row, const StopTexts& texts) {
  for (size_t i = 0; i < smCount_.size(); ++i) {
    // A malformed field of a measure is not refused and reads the first column.
    if (spec_.smColumn[i] != ColumnBlank) smCount_[i] += ColumnNumber(row, spec_.smColumn[i]);
    const auto& code = spec_.smCode[i];
    if (spec_.activityColumn != ColumnBlank && code && SameName(*code, texts.activity)) {
      ++smCount_[i];
    }
  }
}

bool SheetImport::Continues(const std::string& title, std::string_view question,
                            std::string_view text) {
  if (fates_ != nullptr) return true;
  return AskUser(workspace_.messages, title, "Yes", "No", "", question, {text}) == 1;
}

}  // namespace

SheetOutcome RunSpreadsheetImport(const ImportSpec& spec, SheetLogs& logs,
                                  const SideFileWriter& write) {
  SheetOutcome outcome;
  SheetCounts counts;
  {
    // Freed before the solver starts: both keep an index of names.
    SheetImport import(spec, logs);
    counts = import.Run();
    outcome.changed = import.HasMadeTrail();
  }
  Progress* const progress = spec.map->workspace->progress;
  outcome.canceled = IsCanceled(progress);
  if (outcome.canceled) return outcome;
  outcome.completed = counts.abandonedAt == 0;
  outcome.summary = SheetSummary(spec, counts);
  if (!outcome.completed) {
    outcome.unwritten = LeaveImportLogs(logs, write);
    return outcome;
  }
  outcome.unwritten = FinishImportLogs(logs, write);
  if (!outcome.changed) return outcome;
  const MustFinish finish(progress);
  ClearOwnPositions(*spec.map);
  SolveMap(*spec.map);
  AnalyzeAllRanges(*spec.map);
  return outcome;
}

std::vector<SheetRowFate> TrySpreadsheetImport(const ImportSpec& spec, size_t most) {
  std::vector<SheetRowFate> fates;
  SheetLogs logs;
  SheetImport(spec, logs, &fates, most).Run();
  return fates;
}

void NoteSheetOutcome(Messages& messages, const SheetOutcome& outcome) {
  for (const std::string& name : outcome.unwritten) {
    NoteError(messages, "Can't open %s for writing", {name});
  }
  messages.Post(Severity::Note, outcome.summary);
}

Point& AddStopPoint(Map& map, Trail& trail, const LatLon& position, int start, int end,
                    std::string_view locationText, const SmCounts& smCount) {
  constexpr int ScanMinutes = 5;
  const std::int64_t scans = (std::int64_t{end} - start) / ScanMinutes + 1;
  if (std::find(smCount.begin(), smCount.end(), scans) != smCount.end()) {
    end += std::min(ScanMinutes, std::numeric_limits<int>::max() - end);
  }
  Point& point = MakePoint(map, FormatTimeSpan(start, end));
  Measurement& near = point.measurements.emplace_front();
  near.flags = MeasureNear;
  near.nearName = locationText;
  point.geo = position;
  point.flags |= PointPlaced;
  point.projected = LatLonToMetersKeepingAltitude(position);
  point.timeOfDay = CutTo16Bits(start);
  point.duration = CutTo16Bits(std::int64_t{end} - start);
  for (size_t i = 0; i < smCount.size(); ++i) point.sm[i] = CutTo16Bits(smCount[i]);
  point.trail = &trail;
  trail.points.push_back(&point);
  return point;
}

}  // namespace orvane
