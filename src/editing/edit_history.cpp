#include "editing/edit_history.h"

#include "editing/solve_edited.h"
#include "ranges/analysis.h"

#include <algorithm>
#include <new>
#include <utility>

namespace orvane {
namespace {

/// The state of a map that was read and never edited.
constexpr std::uint64_t AsRead = 0;
/// The state of no map: what is saved of a map that was dirty before its first edit.
constexpr std::uint64_t NeverReached = ~std::uint64_t{0};

constexpr size_t NoStep = ~size_t{0};

/// \return the maps whose records the step changed; if there are none, those that it marked
template <typename Step>
std::vector<Map*> MapsOf(const Step& step) {
  std::vector<Map*> maps = step.delta.Maps();
  if (!maps.empty()) return maps;
  for (const auto& each : step.passages) maps.push_back(each.map);
  return maps;
}

template <typename Step>
bool Touches(const Step& step, const Map& map) {
  const std::vector<Map*> maps = MapsOf(step);
  return std::find(maps.begin(), maps.end(), &map) != maps.end();
}

template <typename Step>
bool ShareMaps(const Step& a, const Step& b) {
  const std::vector<Map*> maps = MapsOf(a);
  return std::any_of(maps.begin(), maps.end(), [&](const Map* map) { return Touches(b, *map); });
}

/// \return true if the step changed `map` or a map in its basis chain
template <typename Step>
bool Reaches(const Step& step, const Map& map) {
  for (const Map* each = &map; each != nullptr; each = each->basis) {
    if (Touches(step, *each)) return true;
  }
  return false;
}

/// The step that has to go first before `map` can leave its last step. A later step that shares
/// maps with it blocks it: its delta was taken on top.
/// \return an index, or `NoStep`
template <typename Steps>
size_t NextStepOf(const Steps& steps, const Map& map) {
  size_t found = NoStep;
  for (size_t i = steps.size(); i-- > 0 && found == NoStep;) {
    if (Reaches(steps[i], map)) found = i;
  }
  if (found == NoStep) return NoStep;
  for (size_t later = found + 1; later < steps.size(); ++later) {
    if (ShareMaps(steps[later], steps[found])) found = later;
  }
  return found;
}

void Follow(Map& map, const EditFollowUp& followUp) {
  if (followUp.solve) {
    SolveEdited(map);
    return;
  }
  for (Range* range : followUp.ranges) AnalyzeOneRange(*range, map);
}

/// Which maps are marked as changed: a change can mark them before it gives up.
class DirtyMarks {
 public:
  explicit DirtyMarks(const std::vector<Map*>& maps) {
    for (Map* map : maps) marks_.emplace_back(map, map->flags & MapDirty);
  }
  /// Needs no memory.
  void Restore() const {
    for (const auto& [map, mark] : marks_) {
      map->flags = (map->flags & ~std::uint32_t{MapDirty}) | mark;
    }
  }

 private:
  std::vector<std::pair<Map*, std::uint32_t>> marks_;
};

}  // namespace

bool EditHistory::Apply(const Edit& edit) {
  Map& map = *edit.map;
  AnnounceEdit();
  std::vector<Map*> maps = edit.others;
  maps.insert(maps.begin(), &map);
  // Before the change, which may mark a map itself.
  for (const Map* each : maps) NoteUnsavedStart(*each);
  const DirtyMarks marks(maps);
  MapSnapshot before(workspace_);
  EditFollowUp followUp;
  bool done = false;
  try {
    done = edit.change(followUp);
    if (done) Follow(map, followUp);
  } catch (const std::bad_alloc&) {
    marks.Restore();
    TakeBack(edit, before.TakeDelta());
    throw;
  }
  if (!done) {
    marks.Restore();
    MapDelta changes = before.TakeDelta();
    if (!changes.IsEmpty()) TakeBack(edit, std::move(changes));
    return false;
  }
  Step step{.name = edit.name, .number = ++newestStep_, .delta = before.TakeDelta()};
  const bool marksDirty = edit.marksDirty && !followUp.marksNothing;
  for (Map* each : maps) {
    const StateNumber state = StateOf(*each);
    step.passages.push_back(
        {.map = each, .before = state, .after = marksDirty ? ++newestState_ : state});
    if (marksDirty) EnterState(*each, step.passages.back().after);
  }
  // An edit that leaves the records as they were can have changed rows of the panes.
  const bool isStep = marksDirty || step.delta.Change().Any();
  Tell(step, EditNews::Kind::Applied, &followUp);
  if (isStep) {
    Record(std::move(step));
    TellSteps();
  }
  return true;
}

/// Brings back the state before an edit that failed.
void EditHistory::TakeBack(const Edit& edit, MapDelta changes) {
  changes.Swap();
  try {
    RefreshAfterSwap(changes, workspace_);
  } catch (const std::bad_alloc&) {
    // Ranges lack figures until the next solve. The listeners must know all the same: rows that
    // they keep can point to overlaps that are gone.
  }
  Tell({.name = edit.name,
        .number = ++newestStep_,
        .passages = {{.map = edit.map}},
        .delta = std::move(changes)},
       EditNews::Kind::TakenBack, nullptr);
}

/// A map may be dirty before its first edit, as one that was recovered: no step leads back to what
/// its file holds.
void EditHistory::NoteUnsavedStart(const Map& map) {
  const bool isDirty = IsDirty(map);
  if (isDirty && states_.find(&map) == states_.end()) saved_[&map] = NeverReached;
}

void EditHistory::Record(Step step) {
  Drop(undone_, [&](const Step& each) { return ShareMaps(each, step); });
  done_.push_back(std::move(step));
  size_t bytes = Bytes();
  if (bytes <= mostBytes_) return;
  Drop(done_, [&](const Step& oldest) {
    const bool isTooMuch = bytes > mostBytes_;
    if (isTooMuch) bytes -= oldest.delta.Bytes();
    return isTooMuch;
  });
}

/// Drops steps for good.
void EditHistory::Drop(StepList& steps, const std::function<bool(const Step&)>& isDropped) {
  const auto end = std::remove_if(steps.begin(), steps.end(), [&](const Step& step) {
    if (!isDropped(step)) return false;
    for (EditListener* follower : followers_) follower->StepDropped(step.number);
    return true;
  });
  steps.erase(end, steps.end());
}

const std::string* EditHistory::UndoName(const Map& map) const {
  const size_t index = NextStepOf(done_, map);
  return index == NoStep ? nullptr : &done_[index].name;
}

const std::string* EditHistory::RedoName(const Map& map) const {
  const size_t index = NextStepOf(undone_, map);
  return index == NoStep ? nullptr : &undone_[index].name;
}

bool EditHistory::Undo(const Map& map) {
  const size_t index = NextStepOf(done_, map);
  if (index == NoStep) return false;
  Exchange(done_, undone_, index, EditNews::Kind::Undone);
  return true;
}

bool EditHistory::Redo(const Map& map) {
  const size_t index = NextStepOf(undone_, map);
  if (index == NoStep) return false;
  Exchange(undone_, done_, index, EditNews::Kind::Redone);
  return true;
}

void EditHistory::Exchange(StepList& from, StepList& to, size_t index, EditNews::Kind kind) {
  AnnounceEdit();
  Step step = std::move(from[index]);
  from.erase(from.begin() + static_cast<std::ptrdiff_t>(index));
  step.delta.Swap();
  RefreshAfterSwap(step.delta, workspace_);
  for (const Passage& each : step.passages) {
    if (each.before == each.after) continue;
    EnterState(*each.map, kind == EditNews::Kind::Undone ? each.before : each.after);
  }
  to.push_back(std::move(step));
  Tell(to.back(), kind, nullptr);
  TellSteps();
}

void EditHistory::NoteSaved(Map& map) {
  map.flags &= ~std::uint32_t{MapDirty};
  saved_[&map] = StateOf(map);
}

void EditHistory::Forget(const Map& map) {
  for (StepList* steps : {&done_, &undone_}) {
    Drop(*steps, [&](const Step& step) { return Touches(step, map); });
  }
  states_.erase(&map);
  saved_.erase(&map);
  TellSteps();
}

size_t EditHistory::Bytes() const {
  size_t bytes = 0;
  for (const StepList* steps : {&done_, &undone_}) {
    for (const Step& step : *steps) bytes += step.delta.Bytes();
  }
  return bytes;
}

void EditHistory::Tell(const Step& step, EditNews::Kind kind, const EditFollowUp* followUp) const {
  const EditNews news{.kind = kind,
                      .step = step.number,
                      .name = &step.name,
                      .map = step.passages.front().map,
                      .delta = &step.delta,
                      .followUp = followUp};
  // A listener can close a window, which then removes its own.
  for (EditListener* follower : std::vector(followers_)) {
    if (IsFollowedBy(follower)) follower->AfterEdit(news);
  }
  for (const Listener& listener : listeners_) listener(news);
}

void EditHistory::AnnounceEdit() const {
  for (EditListener* follower : followers_) follower->BeforeEdit();
}

void EditHistory::TellSteps() const {
  for (const auto& listener : stepListeners_) listener();
}

bool EditHistory::IsFollowedBy(const EditListener* follower) const {
  return std::find(followers_.begin(), followers_.end(), follower) != followers_.end();
}

void EditHistory::Remove(EditListener& follower) {
  followers_.erase(std::remove(followers_.begin(), followers_.end(), &follower), followers_.end());
}

EditHistory::StateNumber EditHistory::StateOf(const Map& map) const {
  const auto found = states_.find(&map);
  return found == states_.end() ? AsRead : found->second;
}

void EditHistory::EnterState(Map& map, StateNumber state) {
  states_[&map] = state;
  const auto saved = saved_.find(&map);
  if (state == (saved == saved_.end() ? AsRead : saved->second)) {
    map.flags &= ~std::uint32_t{MapDirty};
  } else {
    map.flags |= MapDirty;
  }
}

}  // namespace orvane
