#include "base/text.h"
#include "entry/gis_file.h"
#include "entry/gis_values.h"
#include "geo/positions.h"

#include <algorithm>
#include <array>
#include <unordered_map>
#include <utility>

// The comma-separated form. Only the second fix decides whether a file has tracks or waypoints, so
// the first one is kept as a waypoint until then.

namespace orvane {

namespace {

constexpr size_t UsedColumns = 7;
enum Column : size_t {
  NameColumn = 0,
  DateColumn = 1,
  LatColumn = 4,
  LonColumn = 5,
  AltColumn = 6
};

/// The used columns of one line. A field is a view into the line, or into a store of its own if it
/// had a doubled quote.
class LineFields {
 public:
  void Split(std::string_view line) {
    fields_ = {};
    for (size_t column = 0; column < UsedColumns; ++column) {
      fields_[column] = Take(line, stores_[column]);
      if (line.empty()) break;
      line.remove_prefix(1);  // the comma
    }
  }
  std::string_view operator[](Column column) const { return fields_[column]; }

 private:
  /// Removes one field from the line, up to its comma or the end.
  static std::string_view Take(std::string_view& line, std::string& store) {
    const size_t start = line.find_first_not_of(' ');
    if (start != std::string_view::npos && line[start] == '"') {
      line.remove_prefix(start + 1);
      return TakeQuoted(line, store);
    }
    const size_t end = std::min(line.find(','), line.size());
    const std::string_view field = TrimSpace(line.substr(0, end));
    line.remove_prefix(end);
    return field;
  }

  /// Removes a field whose opening quote is already removed. Two quotes are one. Without a closing
  /// quote the field takes in the rest of the line; text after a closing quote is skipped.
  static std::string_view TakeQuoted(std::string_view& line, std::string& store) {
    size_t end = std::min(line.find('"'), line.size());
    std::string_view field = line.substr(0, end);
    if (line.substr(end).starts_with("\"\"")) {
      store.clear();
      while (line.substr(end).starts_with("\"\"")) {
        store.append(line.substr(0, end + 1));
        line.remove_prefix(end + 2);
        end = std::min(line.find('"'), line.size());
      }
      store.append(line.substr(0, end));
      field = store;
    }
    line.remove_prefix(std::min(line.find(',', end), line.size()));
    return field;
  }

  std::array<std::string_view, UsedColumns> fields_;
  std::array<std::string, UsedColumns> stores_;
};

/// Removes a line from the text. Lines end with LF, CR or CR LF.
std::string_view TakeLine(std::string_view& text) {
  const size_t end = std::min(text.find_first_of("\n\r"), text.size());
  const std::string_view line = text.substr(0, end);
  text.remove_prefix(text.substr(end).starts_with("\r\n") ? end + 2
                                                          : std::min(end + 1, text.size()));
  return line;
}

/// \return the text before the first blank
std::string DateOf(std::string_view field) {
  return CleanName(field.substr(0, std::min(field.find(' '), field.size())));
}

GisCells CellsOf(const LineFields& fields) {
  GisCells cells;
  constexpr Column Columns[] = {NameColumn, DateColumn, LatColumn, LonColumn, AltColumn};
  for (size_t i = 0; i < cells.size(); ++i) cells[i] = fields[Columns[i]];
  return cells;
}

/// Collects fixes as a file is read.
class Collector {
 public:
  void Add(std::string_view name, std::string_view date, const GisFix& fix) {
    if (fixes_ == 1) isTrackFile_ = SameName(CleanName(name), file_.waypoints.front().name);
    if (fixes_ == 1 && isTrackFile_) TurnIntoTrack();
    ++fixes_;
    if (isTrackFile_) {
      AddToTrack(name, date, fix);
    } else {
      file_.waypoints.push_back({CleanName(name), fix});
      if (fixes_ == 1) firstDate_ = DateOf(date);
    }
  }
  GisFile Finish() { return std::move(file_); }

 private:
  /// The first fix was read as a waypoint.
  void TurnIntoTrack() {
    const GisWaypoint first = std::move(file_.waypoints.front());
    file_.waypoints.clear();
    AddToTrack(first.name, firstDate_, first.fix);
  }

  void AddToTrack(std::string_view name, std::string_view date, const GisFix& fix) {
    if (file_.tracks.empty() || name != lastName_) {
      lastName_ = name;
      std::string clean = CleanName(name);
      const auto [known, isNew] = trackOf_.try_emplace(FoldedText(clean), file_.tracks.size());
      current_ = known->second;
      if (isNew) file_.tracks.push_back({std::move(clean), DateOf(date), {}});
    }
    file_.tracks[current_].fixes.push_back(fix);
  }

  GisFile file_;
  size_t fixes_ = 0;
  bool isTrackFile_ = false;
  std::string firstDate_;
  std::string lastName_;                             ///< of the fix before, as in the file
  size_t current_ = 0;                               ///< its track
  std::unordered_map<std::string, size_t> trackOf_;  ///< by folded name
};

}  // namespace

GisFile ReadGisLines(std::string_view text, std::string_view name, Messages& messages,
                     Progress* progress, GisCellTaker* taker) {
  OriginScope origin(messages, std::string(name));
  NoteDamage(text, name, messages);
  Collector collector;
  LineFields fields;
  LeftOutLines leftOut;
  std::vector<BadGisFix> badFixes;
  std::uint32_t number = 0;
  constexpr unsigned LinesOfStep = 512;
  const size_t size = text.size();
  ProgressSteps steps(progress, WorkStage::Reading, size, LinesOfStep);
  for (size_t lineNumber = 1; !text.empty(); ++lineNumber) {
    if (!steps.Next(size - text.size())) return collector.Finish();
    origin.NextLine();
    const std::string_view line = TakeLine(text);
    if (TrimSpace(line).empty()) continue;
    fields.Split(line);
    auto fix = FixOf(fields[LatColumn], fields[LonColumn], fields[AltColumn]);
    const auto line32 = static_cast<std::uint32_t>(lineNumber);
    if (lineNumber > 1 && taker != nullptr && taker->cells.size() < taker->most) {
      taker->cells.push_back(CellsOf(fields));
    }
    if (lineNumber == 1) {
      if (fix) {
        NoteWarning(messages, "%s has a position in its first line, which is taken as the header",
                    {name});
      }
    } else if (fix) {
      fix->line = line32;
      fix->number = number++;
      collector.Add(fields[NameColumn], fields[DateColumn], *fix);
    } else {
      leftOut.Add(lineNumber);
      badFixes.push_back({line32, number++});
    }
  }
  origin.GoToLine(leftOut.firstLine);
  NoteLeftOut(leftOut, name, messages);
  GisFile file = collector.Finish();
  file.leftOut = leftOut;
  file.badFixes = std::move(badFixes);
  return file;
}

}  // namespace orvane
