#include "mapfile/recovery_differences.h"

#include "base/files.h"
#include "mapfile/open_map.h"
#include "model/workspace.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <filesystem>
#include <iterator>
#include <string_view>
#include <system_error>
#include <unordered_set>

namespace orvane {
namespace {

MapCounts CountsOf(const Map& map) {
  MapCounts counts;
  for (const Trail& trail : map.trails) {
    const bool follow = trail.date != 0 || trail.focalAnimal.has_value();
    ++(follow ? counts.follows : counts.trails);
  }
  std::unordered_set<const Point*> points;
  ForEachPoint(map, [&](const Point& point) { points.insert(&point); });
  counts.points = static_cast<int>(points.size());
  counts.ranges = static_cast<int>(std::distance(map.ranges.begin(), map.ranges.end()));
  counts.grids = static_cast<int>(std::distance(map.grids.begin(), map.grids.end()));
  return counts;
}

/// The part of a line that comes from the user.
std::string_view UsersPart(std::string_view line) {
  if (line.starts_with("D\t")) return {};
  if (!line.starts_with("L\t")) return line;
  // A solved place moves with every reading near it.
  return line.substr(0, line.find('\t', 2));
}

std::vector<std::string_view> LinesOf(std::string_view text) {
  std::vector<std::string_view> lines;
  while (!text.empty()) {
    const size_t end = text.find('\n');
    const std::string_view line = UsersPart(text.substr(0, end));
    if (!line.empty()) lines.push_back(line);
    text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
  }
  return lines;
}

void CompareLines(std::string_view copyText, std::string_view fileText,
                  RecoveryDifferences& differences) {
  std::vector<std::string_view> copy = LinesOf(copyText);
  std::vector<std::string_view> file = LinesOf(fileText);
  const bool sameOrder = copy == file;
  std::sort(copy.begin(), copy.end());
  std::sort(file.begin(), file.end());
  std::vector<std::string_view> only;
  std::set_difference(copy.begin(), copy.end(), file.begin(), file.end(), std::back_inserter(only));
  differences.linesInCopy = static_cast<int>(only.size());
  only.clear();
  std::set_difference(file.begin(), file.end(), copy.begin(), copy.end(), std::back_inserter(only));
  differences.linesInFile = static_cast<int>(only.size());
  differences.orderDiffers =
      !sameOrder && differences.linesInCopy == 0 && differences.linesInFile == 0;
}

std::string Counted(int count, std::string_view one, std::string_view many) {
  return std::to_string(count) + " " + std::string(count == 1 ? one : many);
}

/// "a", "a and b", "a, b and c".
std::string Listed(const std::vector<std::string>& parts) {
  std::string text;
  for (size_t i = 0; i < parts.size(); ++i) {
    if (i > 0) text += i + 1 == parts.size() ? " and " : ", ";
    text += parts[i];
  }
  return text;
}

struct CountedKind {
  int MapCounts::*count;
  std::string_view one, many;
};

constexpr std::array Kinds{CountedKind{&MapCounts::trails, "trail", "trails"},
                           CountedKind{&MapCounts::follows, "follow", "follows"},
                           CountedKind{&MapCounts::points, "point", "points"},
                           CountedKind{&MapCounts::ranges, "home range", "home ranges"},
                           CountedKind{&MapCounts::grids, "grid", "grids"}};

/// "2 follows and 31 points more than in the file."
/// \param sign  1 for what the copy has in addition, -1 for what it lacks
std::string CountsText(const RecoveryDifferences& differences, int sign) {
  std::vector<std::string> parts;
  for (const CountedKind& kind : Kinds) {
    const int more = (differences.copy.*kind.count - differences.file.*kind.count) * sign;
    if (more > 0) parts.push_back(Counted(more, kind.one, kind.many));
  }
  if (parts.empty()) return {};
  return Listed(parts) + (sign > 0 ? " more" : " fewer") + " than in the file.";
}

/// "3 trails, 2 follows and 90 points."
std::string ContentText(const MapCounts& counts) {
  std::vector<std::string> parts;
  for (const CountedKind& kind : Kinds) {
    if (counts.*kind.count > 0) parts.push_back(Counted(counts.*kind.count, kind.one, kind.many));
  }
  return parts.empty() ? "The map is empty." : "The copy holds " + Listed(parts) + ".";
}

std::string LinesText(const RecoveryDifferences& differences) {
  const int inCopy = differences.linesInCopy;
  const int inFile = differences.linesInFile;
  if (inCopy > 0 && inFile > 0) {
    return Counted(inCopy, "line", "lines") + " new or changed, in place of " +
           Counted(inFile, "line", "lines") + " of the file.";
  }
  if (inCopy > 0) return Counted(inCopy, "line is", "lines are") + " new.";
  if (inFile > 0) {
    return Counted(inFile, "line of the file is", "lines of the file are") + " gone.";
  }
  return differences.orderDiffers ? "The same lines, in another order." : std::string();
}

}  // namespace

RecoveryDifferences CompareWithFile(const RecoveryCopy& copy) {
  RecoveryDifferences differences;
  // A separate workspace for each, so that neither finds the other's points.
  RecordedMessages unheard;
  Workspace copySpace(unheard);
  copySpace.preferences.europeanDates = copy.record.europeanDates;
  Map* copied = OpenRecoveryCopy(copySpace, copy);
  if (copied != nullptr) differences.copy = CountsOf(*copied);

  differences.neverSaved = copy.record.untitled && !copy.record.original;
  if (differences.neverSaved) return differences;
  const auto content = ReadWholeFile(copy.record.fileName);
  if (!content) {
    std::error_code error;
    differences.fileUnreadable = std::filesystem::exists(copy.record.fileName, error);
    differences.fileMissing = !differences.fileUnreadable;
    return differences;
  }
  differences.fileChanged = copy.record.original != MarkOf(*content);
  Workspace fileSpace(unheard);
  fileSpace.preferences.europeanDates = copy.record.europeanDates;
  Map& file = OpenMap(fileSpace, copy.record.fileName);
  differences.file = CountsOf(file);
  const auto copyText = ReadWholeFile(RecoveryCopyPath(copy.slot));
  if (copyText) CompareLines(*copyText, RecoveryText(file), differences);
  return differences;
}

std::vector<std::string> DifferenceTexts(const RecoveryDifferences& differences) {
  if (differences.neverSaved) {
    return {"The map was never saved.", ContentText(differences.copy)};
  }
  if (differences.fileMissing) {
    return {"The file is no longer there.", ContentText(differences.copy)};
  }
  if (differences.fileUnreadable) {
    return {"The file can't be read.", ContentText(differences.copy)};
  }
  std::vector<std::string> texts;
  if (differences.fileChanged) {
    texts.emplace_back("The file was changed by something else since it was opened.");
  }
  for (std::string text :
       {CountsText(differences, 1), CountsText(differences, -1), LinesText(differences)}) {
    if (!text.empty()) texts.push_back(std::move(text));
  }
  if (SaysTheSame(differences)) texts.emplace_back("The copy says the same as the file.");
  return texts;
}

bool SaysTheSame(const RecoveryDifferences& differences) {
  const bool compared =
      !differences.neverSaved && !differences.fileMissing && !differences.fileUnreadable;
  return compared && !differences.fileChanged && differences.linesInCopy == 0 &&
         differences.linesInFile == 0 && !differences.orderDiffers;
}

}  // namespace orvane
