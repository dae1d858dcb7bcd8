#include "mapfile/reread_maps.h"

#include "base/file_identity.h"
#include "mapfile/basis_points.h"
#include "mapfile/open_map.h"
#include "mapfile/reader.h"
#include "mapfile/writer.h"
#include "model/map_chain.h"
#include "model/workspace.h"

#include <algorithm>
#include <map>

namespace orvane {
namespace {

/// The state of a map that is not in its file.
constexpr std::uint32_t KeptFlags = MapDirty | MapUntitled | MapUnlikeFile;

bool IsTied(const std::vector<Map*>& maps, const Map& map) {
  return std::any_of(maps.begin(), maps.end(), [&](const Map* each) {
    return each == &map || each->basis == &map || map.basis == each;
  });
}

int DepthOf(const Map& map) {
  int depth = 0;
  for (const Map* each = map.basis; each != nullptr; each = each->basis) ++depth;
  return depth;
}

/// Sorts each basis before the maps above it.
void SortByDepth(std::vector<Map*>& maps) {
  std::stable_sort(maps.begin(), maps.end(),
                   [](const Map* a, const Map* b) { return DepthOf(*a) < DepthOf(*b); });
}

/// True if the file of a map, with the files that it includes, has the content of the map.
bool SaysWhatItsFileSays(const Map& map) {
  if ((map.flags & (MapDirty | MapUnlikeFile)) != 0 || !map.fileMark) return false;
  return MarkOfFile(map.fileName) == map.fileMark &&
         std::all_of(map.includedFiles.begin(), map.includedFiles.end(),
                     [](const auto& file) { return MarkOfFile(file.first) == file.second; });
}

/// A map as a save would write it, without the line for its basis.
std::string TextOf(Map& map) {
  std::string text = MapFileText(map, map.fileName, true);
  if (map.basis != nullptr) text.erase(0, text.find('\n') + 1);
  return text;
}

/// Passes on the messages about some maps and drops the others.
class ChosenMessages final : public Messages {
 public:
  explicit ChosenMessages(Messages& messages) : messages_(messages) {}

  void Post(Severity severity, const std::string& text) override {
    if (quiet) return;
    if (Origin() == nullptr) return messages_.Post(severity, text);
    OriginScope origin(messages_, Origin()->file, Origin()->point);
    origin.GoToLine(Origin()->line);
    messages_.Post(severity, text);
  }
  int Ask(const std::string& title, const std::vector<std::string>& buttons,
          const std::string& text) override {
    return messages_.Ask(title, buttons, text);
  }
  std::optional<std::string> Prompt(const TextPrompt& prompt) override {
    return messages_.Prompt(prompt);
  }

  bool quiet = false;

 private:
  Messages& messages_;
};

/// What a map is read from.
struct Source {
  const std::string* text = nullptr;  ///< its content in memory; null for its file
  bool basisChanged = false;          ///< a map of its basis chain has changed
  bool isQuiet = false;               ///< drops all messages
};

/// Maps that are read again beside the old ones, in a separate workspace.
class Rereading {
 public:
  explicit Rereading(Workspace& old) : old_(old), messages_(old.messages), fresh_(messages_) {
    fresh_.progress = old.progress;
    fresh_.preferences = old.preferences;
    fresh_.today = old.today;
    fresh_.lastLatitude = old.lastLatitude;
    fresh_.lastLongitude = old.lastLongitude;
    fresh_.solverWalks = old.solverWalks;
    fresh_.contourCounts = old.contourCounts;
    fresh_.continuousContourCounts = old.continuousContourCounts;
  }

  /// Makes a map that is read later. Until then it counts as being read, so it can't be a basis.
  void Await(Map& old) {
    freshOf_[&old] = &MakeMap(fresh_, old.fileName);
    awaited_.push_back({.path = old.fileName, .shownName = old.shownName});
  }

  /// Reads one map. If its basis is also read again, that comes first.
  /// \return false if the file can't be read
  bool Read(Map& old, const Source& source) {
    const auto made = freshOf_.find(&old);
    Map& map = made == freshOf_.end() ? MakeMap(fresh_, old.fileName) : *made->second;
    freshOf_[&old] = &map;
    // The name as typed, if it still leads to the file.
    map.shownName = WholePath(old.shownName) == old.fileName ? old.shownName : old.fileName;
    awaited_.erase(
        std::remove_if(awaited_.begin(), awaited_.end(),
                       [&](const OpenedFile& file) { return file.path == old.fileName; }),
        awaited_.end());
    fresh_.reading.openFiles = awaited_;
    // The messages about content in memory were shown before.
    messages_.quiet = source.isQuiet || source.text != nullptr;
    const OriginScope origin(messages_, map.shownName);
    if (source.text != nullptr) {
      if (old.basis != nullptr) map.basis = freshOf_.at(old.basis);
      fresh_.reading.openFiles.push_back({.path = old.fileName, .shownName = map.shownName});
      BasisPoints basis(map.basis);
      ReadMapText(map, *source.text);
      if (source.basisChanged) {
        basis.TakeBackAll();
      } else {
        basis.TakeBackRepeats();
      }
      TakeTabsFromNotes(map);
    } else if (!ReadMapFile(map, map.shownName)) {
      return false;
    }
    FinishMap(map);
    return true;
  }

  /// True if a map read from its file differs from what it was.
  bool HasChanged(const Map& old) const {
    const Map& fresh = *freshOf_.at(const_cast<Map*>(&old));
    return (old.flags & (MapDirty | MapUnlikeFile)) != 0 || fresh.fileMark != old.fileMark ||
           fresh.includedFiles != old.includedFiles;
  }

  /// True if the new map has the same basis as before.
  bool RestsAsBefore(const Map& old) const {
    const Map* basis = freshOf_.at(const_cast<Map*>(&old))->basis;
    if (old.basis == nullptr || basis == nullptr) return old.basis == basis;
    return freshOf_.at(old.basis) == basis;
  }

  /// \return a map of the old workspace that was opened again as a new basis, and must be read
  ///         again with the others; null if there is none
  Map* TwiceOpened() {
    for (const Map& map : fresh_.maps) {
      Map* old = FindOpenMap(old_, map.fileName);
      if (old != nullptr && !IsCounterpart(map) && freshOf_.find(old) == freshOf_.end()) return old;
    }
    return nullptr;
  }

  /// Moves the new content into the old maps, and adds new bases.
  /// \param reread  gets `flags` as its flags; the others keep theirs
  /// \param former  gets the old content
  void Commit(const Map& reread, std::uint32_t flags, const std::vector<const Map*>& fromText,
              FormerContents& former) {
    std::map<const Map*, Map*> oldOf;
    for (const auto& [old, fresh] : freshOf_) oldOf[fresh] = old;
    former.Reserve(oldOf.size());  // from here on nothing may fail
    for (Map& map : fresh_.maps) {
      const auto basis = oldOf.find(map.basis);
      if (basis != oldOf.end()) map.basis = basis->second;
    }
    for (const auto& [old, fresh] : freshOf_) {
      const std::uint32_t kept = (old == &reread ? flags : old->flags) & KeptFlags;
      SwapContents(*old, *fresh);
      old->flags = (old->flags & ~std::uint32_t{KeptFlags}) | kept;
      // Read from memory: the files that it was read from before are still what it knows.
      const bool readText = std::find(fromText.begin(), fromText.end(), old) != fromText.end();
      if (readText) {
        old->fileMark = fresh->fileMark;
        old->includedFiles.swap(fresh->includedFiles);
      }
    }
    MoveMaps(oldOf, former);
    old_.lastLatitude = fresh_.lastLatitude;
    old_.lastLongitude = fresh_.lastLongitude;
    old_.solverWalks = fresh_.solverWalks;
    old_.contourCounts.swap(fresh_.contourCounts);
    old_.continuousContourCounts.swap(fresh_.continuousContourCounts);
    old_.reading = {};  // its pointers are invalid now
  }

 private:
  bool IsCounterpart(const Map& fresh) const {
    return std::any_of(freshOf_.begin(), freshOf_.end(),
                       [&](const auto& pair) { return pair.second == &fresh; });
  }

  /// New bases stay open; all other maps have the old content now.
  void MoveMaps(const std::map<const Map*, Map*>& oldOf, FormerContents& former) {
    const auto before = fresh_.maps.before_begin();
    auto last = old_.maps.before_begin();
    while (!fresh_.maps.empty()) {
      Map& map = fresh_.maps.front();
      const auto old = oldOf.find(&map);
      if (old != oldOf.end()) {
        former.Take(*old->second, fresh_.maps, before);
        continue;
      }
      map.workspace = &old_;
      old_.maps.splice_after(last, fresh_.maps, before);
      ++last;
    }
  }

  Workspace& old_;
  ChosenMessages messages_;
  Workspace fresh_;
  std::map<Map*, Map*> freshOf_;
  std::vector<OpenedFile> awaited_;  ///< not read yet
};

/// How one map is read again.
struct Wanted {
  Map& map;
  const std::string* text;  ///< null to read the file
  std::uint32_t flags;
  bool isRestored;  ///< restored from a backup, without messages
  FormerContents& former;
};

/// Moves the maps above `map` after all others, so that any of these can become its basis.
void SortForReading(std::vector<Map*>& maps, const Map& map) {
  SortByDepth(maps);
  std::stable_partition(maps.begin(), maps.end(),
                        [&](const Map* each) { return !RestsOn(*each, map); });
}

/// One attempt to read all maps again.
class Attempt {
 public:
  Attempt(const Wanted& wanted, std::vector<Map*>& maps, std::vector<const Map*>& fromText)
      : wanted_(wanted), maps_(maps), fromText_(fromText), rereading_(*wanted.map.workspace) {}

  /// \return nothing if `maps` or `fromText` have grown, and everything starts again
  std::optional<RereadOutcome> Run() {
    bool reachedIt = false;
    for (Map* each : maps_) {
      if (each != &wanted_.map && RestsOn(*each, wanted_.map)) rereading_.Await(*each);
    }
    for (Map* each : maps_) {
      reachedIt = reachedIt || each == &wanted_.map;
      if (!Read(*each, !reachedIt)) return RereadOutcome::Unreadable;
      if (IsCanceled(wanted_.map.workspace->progress)) return RereadOutcome::Canceled;
      if (!IsFromText(*each) && each != &wanted_.map && !rereading_.RestsAsBefore(*each)) {
        fromText_.push_back(each);  // its basis was renamed after its file was written
        return std::nullopt;
      }
    }
    if (Map* another = rereading_.TwiceOpened()) {
      for (Map* each : MapsTiedTo(*another)) maps_.push_back(each);
      SortForReading(maps_, wanted_.map);
      return std::nullopt;
    }
    rereading_.Commit(wanted_.map, wanted_.flags, fromText_, wanted_.former);
    return RereadOutcome::Done;
  }

 private:
  bool IsFromText(const Map& map) const {
    return std::find(fromText_.begin(), fromText_.end(), &map) != fromText_.end();
  }

  bool Read(Map& map, bool quiet) {
    Source source{.isQuiet = quiet || wanted_.isRestored};
    const bool restsOnIt = &map != &wanted_.map && RestsOn(map, wanted_.map);
    source.basisChanged = restsOnIt && !wanted_.isRestored && rereading_.HasChanged(wanted_.map);
    std::string text;
    if (&map == &wanted_.map) {
      source.text = wanted_.text;
    } else {
      if (!IsFromText(map) && !SaysWhatItsFileSays(map)) fromText_.push_back(&map);
      if (IsFromText(map)) {
        text = TextOf(map);
        source.text = &text;
      }
    }
    return rereading_.Read(map, source);
  }

  const Wanted& wanted_;
  std::vector<Map*>& maps_;
  std::vector<const Map*>& fromText_;
  Rereading rereading_;
};

RereadOutcome RereadWith(const Wanted& wanted) {
  std::vector<Map*> maps = MapsTiedTo(wanted.map);
  SortForReading(maps, wanted.map);
  std::vector<const Map*> fromText;
  if (wanted.text != nullptr) fromText.push_back(&wanted.map);
  for (;;) {
    if (const auto outcome = Attempt(wanted, maps, fromText).Run()) return *outcome;
  }
}

}  // namespace

std::vector<Map*> MapsTiedTo(Map& map) {
  std::vector<Map*> tied{&map};
  for (size_t before = 0; before != tied.size();) {
    before = tied.size();
    for (Map& each : map.workspace->maps) {
      const bool isThere = std::find(tied.begin(), tied.end(), &each) != tied.end();
      if (!isThere && IsTied(tied, each)) tied.push_back(&each);
    }
  }
  SortByDepth(tied);
  return tied;
}

RereadOutcome RereadMap(Map& map, FormerContents* former) {
  FormerContents unwanted;
  return RereadWith({.map = map,
                     .text = nullptr,
                     .flags = 0,
                     .isRestored = false,
                     .former = former == nullptr ? unwanted : *former});
}

MapBackup BackUp(Map& map) {
  MapBackup backup{.text = std::nullopt, .basis = map.basis, .flags = map.flags};
  if (!SaysWhatItsFileSays(map)) backup.text = TextOf(map);
  return backup;
}

bool RestoreMap(Map& map, const MapBackup& backup) {
  const MustFinish whole(map.workspace->progress);
  map.basis = backup.basis;
  const std::string* text = backup.text ? &*backup.text : nullptr;
  FormerContents former;
  return RereadWith({.map = map,
                     .text = text,
                     .flags = backup.flags,
                     .isRestored = true,
                     .former = former}) == RereadOutcome::Done;
}

}  // namespace orvane
