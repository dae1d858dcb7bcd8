#include "editing/edit_history.h"

#include "editing/solve_edited.h"
#include "model/map_chain.h"
#include "ranges/analysis.h"

#include <algorithm>
#include <new>
#include <utility>

namespace orvane {
namespace {

/// The state of no map: what is saved of a map that was dirty before its first edit.
constexpr std::uint64_t NeverReached = ~std::uint64_t{0};

constexpr size_t NoStep = ~size_t{0};

bool IsIn(const std::vector<Map*>& maps, const Map& map) {
  return std::find(maps.begin(), maps.end(), &map) != maps.end();
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
    for (Map* map : maps) marks_.emplace_back(map, map->flags & Marks);
  }
  /// Needs no memory.
  void Restore() const {
    for (const auto& [map, mark] : marks_) {
      map->flags = (map->flags & ~Marks) | mark;
    }
  }

 private:
  static constexpr std::uint32_t Marks = MapDirty | MapUnlikeFile;

  std::vector<std::pair<Map*, std::uint32_t>> marks_;
};

/// Takes so much memory and gives it back: half of an exchange can't be taken back, so a lack of
/// memory must show before.
void ExpectMemory(size_t bytes) { ::operator delete(::operator new(bytes)); }

/// What a map knows of its file.
struct FileFacts {
  std::optional<FileMark> mark;
  std::map<std::string, std::optional<FileMark>> included;

  /// Needs no memory.
  bool AreOf(const Map& map) const { return mark == map.fileMark && included == map.includedFiles; }
};

}  // namespace

std::vector<Map*> EditNews::Maps() const {
  std::vector<Map*> maps = contents != nullptr ? contents->Maps() : delta->Maps();
  if (!IsIn(maps, *map)) maps.push_back(map);
  return maps;
}

bool EditNews::Concerns(const Map& other) const {
  if (map == &other) return true;
  return contents != nullptr ? contents->Holds(other) : delta->Touches(other);
}

/// The maps whose records the step changed; if there are none, those that it marked.
std::vector<Map*> EditHistory::Step::Maps() const {
  std::vector<Map*> maps = contents ? contents->Maps() : delta.Maps();
  if (!maps.empty()) return maps;
  for (const Passage& each : passages) maps.push_back(each.map);
  return maps;
}

size_t EditHistory::Step::AllBytes() const { return bytes + delta.RemovedBytes(); }

bool EditHistory::Step::Touches(const Map& map) const { return IsIn(Maps(), map); }

bool EditHistory::Step::ChangesSurvey(const Map& map) const {
  return contents ? contents->Holds(map) : delta.ChangeOf(map).survey;
}

/// True if the later of two steps can't stay without the earlier one: they changed one map, or the
/// surveys of two maps of which one is in the basis chain of the other.
bool EditHistory::AreTied(const Step& a, const Step& b) {
  const std::vector<Map*> others = b.Maps();
  for (const Map* map : a.Maps()) {
    for (const Map* other : others) {
      if (map == other) return true;
      if ((RestsOn(*map, *other) || RestsOn(*other, *map)) && a.ChangesSurvey(*map) &&
          b.ChangesSurvey(*other)) {
        return true;
      }
    }
  }
  return false;
}

/// The step that has to go first before `map` can leave its last step. A later step that is
/// tied to it blocks it: its delta was taken on top.
/// \return an index, or `NoStep`
size_t EditHistory::NextStepOf(const StepList& steps, const Map& map) {
  // In the map, or in one of its basis chain.
  const auto reaches = [&](const Step& step) {
    const Map* each = &map;
    while (each != nullptr && !step.Touches(*each)) each = each->basis;
    return each != nullptr;
  };
  size_t found = NoStep;
  for (size_t i = steps.size(); i-- > 0 && found == NoStep;) {
    if (reaches(steps[i])) found = i;
  }
  if (found == NoStep) return NoStep;
  for (size_t later = found + 1; later < steps.size(); ++later) {
    if (AreTied(steps[later], steps[found])) found = later;
  }
  return found;
}

bool EditHistory::Apply(const Edit& edit) {
  Map& map = *edit.map;
  AnnounceEdit(false);
  std::vector<Map*> maps = edit.others;
  maps.insert(maps.begin(), &map);
  // Before the change, which may mark a map itself.
  for (const Map* each : maps) NoteUnsavedStart(*each);
  const DirtyMarks marks(maps);
  MapSnapshot before(workspace_);
  EditFollowUp followUp;
  Step step{.name = edit.name, .number = newestStep_ + 1, .passages = {{.map = &map}}};
  bool done = false;
  bool marksDirty = false;
  try {
    done = edit.change(followUp);
    if (done) {
      Follow(map, followUp);
      marksDirty = edit.marksDirty && !followUp.marksNothing;
      step.delta = before.TakeDelta();
      Weigh(step);
      step.passages = PassagesOf(maps, followUp, marksDirty);
      done_.reserve(done_.size() + 1);
    }
  } catch (const std::bad_alloc&) {
    marks.Restore();
    if (step.delta.IsEmpty()) step.delta = before.TakeDelta();
    TakeBack(std::move(step));
    throw;
  }
  if (!done) {
    marks.Restore();
    step.delta = before.TakeDelta();
    if (!step.delta.IsEmpty()) TakeBack(std::move(step));
    return false;
  }
  for (const Passage& each : step.passages) {
    if (each.before != each.after) EnterState(*each.map, each.after);
  }
  // An edit that leaves the records as they were can have changed rows of the panes.
  if (marksDirty || step.delta.Change().Any()) {
    Record(std::move(step), followUp);
  } else {
    newestStep_ = step.number;
    const bool isFollowed = Tell(step, EditNews::Kind::Applied, &followUp);
    for (EditListener* follower : followers_) follower->StepDropped(step.number);
    if (!isFollowed) throw ListenerWithoutMemory();
  }
  return true;
}

/// Makes the entries of the maps in the tables too, so that entering the states needs no memory.
std::vector<EditHistory::Passage> EditHistory::PassagesOf(const std::vector<Map*>& maps,
                                                          const EditFollowUp& followUp,
                                                          bool marksDirty) {
  std::vector<Passage> passages;
  for (Map* each : maps) {
    State after = StateOf(*each);
    if (marksDirty) after.marked = ++newestState_;
    const auto& unlike = followUp.unlikeFile;
    if (std::find(unlike.begin(), unlike.end(), each) != unlike.end())
      after.unlike = ++newestState_;
    passages.push_back({.map = each, .before = StateOf(*each), .after = after});
    if (passages.back().before != after) states_.try_emplace(each);
  }
  return passages;
}

bool EditHistory::Reread(Map& map, const std::string& name,
                         const std::function<bool(FormerContents& former)>& read) {
  FreeDroppedIfAny();
  AnnounceEdit(true);
  NoteUnsavedStart(map);
  const FileFacts facts{.mark = map.fileMark, .included = map.includedFiles};
  Step step{.name = name,
            .number = newestStep_ + 1,
            .passages = {{.map = &map, .before = StateOf(map)}},
            .contents = std::make_unique<FormerContents>()};
  // What is read must not get lost, so what follows needs no memory.
  done_.reserve(done_.size() + 1);
  states_.try_emplace(&map);
  saved_.try_emplace(&map);
  if (!read(*step.contents)) return false;
  State& after = step.passages.front().after;
  after = SavedOf(map);
  // With other bytes in its file, no earlier state is the saved one.
  if (!facts.AreOf(map) || after.marked == NeverReached || after.unlike == NeverReached) {
    after = {.marked = ++newestState_, .unlike = ++newestState_};
  }
  saved_[&map] = after;
  EnterState(map, after);
  Weigh(step);
  Record(std::move(step), {});
  return true;
}

/// Brings back the state from before something failed.
void EditHistory::SwapBack(MapDelta& changes) {
  changes.Swap();
  try {
    RefreshAfterSwap(changes, workspace_);
  } catch (const std::bad_alloc&) {
    // Ranges lack figures until the next solve. The listeners must know all the same: rows that
    // they keep can point to overlaps that are gone.
  }
}

/// Brings back the state before an edit that failed.
void EditHistory::TakeBack(Step step) {
  newestStep_ = step.number;
  SwapBack(step.delta);
  const bool isFollowed = Tell(step, EditNews::Kind::TakenBack, nullptr);
  DropTakenBack(std::move(step));
  if (!isFollowed) throw std::bad_alloc();
}

/// What the edit has made serves nobody any more.
void EditHistory::DropTakenBack(Step step) {
  try {
    Weigh(step);
    droppedBytes_ += step.delta.RemovedBytes();
    step.delta = MapDelta();
    Trim(EditNews::Kind::TakenBack);
  } catch (const std::bad_alloc&) {
    // It is freed with what is dropped later.
  }
}

/// A map may be dirty before its first edit, as one that was recovered: no step leads back to what
/// its file holds.
void EditHistory::NoteUnsavedStart(const Map& map) {
  if (states_.contains(&map)) return;
  if (IsDirty(map)) saved_[&map].marked = NeverReached;
  if ((map.flags & MapUnlikeFile) != 0) saved_[&map].unlike = NeverReached;
}

/// Keeps a step that was made, for which `done_` has room, and then notifies the listeners: one that
/// runs out of memory must not cost the step.
void EditHistory::Record(Step made, const EditFollowUp& followUp) {
  newestStep_ = made.number;
  done_.push_back(std::move(made));
  const bool isFollowed = Tell(done_.back(), EditNews::Kind::Applied, &followUp);
  try {
    const Step& step = done_.back();
    DropWithTied(undone_, [&](const Step& each) { return AreTied(each, step); });
  } catch (const std::bad_alloc&) {
    // Which of them are tied to it can't be found out, and none of those may stay.
    Drop(undone_, [](const Step&) { return true; });
  }
  Trim(EditNews::Kind::Applied);
  TellSteps();
  if (!isFollowed) throw ListenerWithoutMemory();
}

void EditHistory::Weigh(Step& step) {
  step.delta.Weigh();
  step.bytes = step.contents ? step.contents->Bytes() : step.delta.Bytes();
}

/// Keeps the bound of memory, and frees records to which only dropped steps led. To find these takes a
/// walk over all maps and steps, so it waits until it is worth while.
void EditHistory::Trim(EditNews::Kind kind) {
  constexpr size_t Share = 8;
  try {
    // Holders from outside can keep more than that.
    while (Bytes() > mostBytes_ && (droppedBytes_ > 0 || HasSteps())) {
      const size_t steps = done_.size() + undone_.size();
      const bool isEnough =
          droppedBytes_ >= mostBytes_ / Share || Bytes() - droppedBytes_ <= mostBytes_;
      if (droppedBytes_ > 0 && (steps < 2 || isEnough)) {
        FreeDropped();
      } else if (kind == EditNews::Kind::Undone && LastRedoIsDropped()) {
        const std::uint64_t last = undone_.front().number;
        DropWithTied(undone_, [last](const Step& each) { return each.number == last; });
      } else {
        DropOldest();
      }
    }
    size_t kept = Bytes() - heldBytes_;
    for (const Map& map : workspace_.maps) kept += map.pointStore.size() * sizeof(Point);
    if (droppedBytes_ > kept / Share) FreeDropped();
  } catch (const std::bad_alloc&) {
    // The edit is made and recorded. The next one goes on here.
  }
}

/// True if the step that would be redone last is to go before the oldest one. The one that was just
/// undone goes only if it leaves too little room for the others.
bool EditHistory::LastRedoIsDropped() const {
  if (undone_.size() != 1) return !undone_.empty();
  return undone_.front().AllBytes() > mostBytes_ / 2;
}

void EditHistory::FreeDropped() {
  UnusedRecords records(workspace_);
  for (const StepList* steps : {&done_, &undone_}) {
    for (const Step& step : *steps) {
      step.delta.Keep(records);
      if (step.contents) step.contents->KeepLeads(records);
    }
  }
  const size_t keptBySteps = records.KeptBytes();
  workspace_.holders.KeepAll(records);
  const size_t held = records.KeptBytes() - keptBySteps;
  records.Free();
  heldBytes_ = held;
  droppedBytes_ = 0;
}

/// Before maps exchange their contents: what waits to be freed would go into those that are kept.
void EditHistory::FreeDroppedIfAny() {
  if (droppedBytes_ == 0) return;
  try {
    FreeDropped();
  } catch (const std::bad_alloc&) {
    // It is freed with those contents.
  }
}

/// Drops the step that was made first. Those that were undone can't be redone without each other.
void EditHistory::DropOldest() {
  const auto oldest =
      std::min_element(undone_.begin(), undone_.end(),
                       [](const Step& a, const Step& b) { return a.number < b.number; });
  const bool isUndone =
      oldest != undone_.end() && (done_.empty() || oldest->number < done_.front().number);
  const std::uint64_t number = isUndone ? oldest->number : done_.front().number;
  const auto isOldest = [number](const Step& each) { return each.number == number; };
  isUndone ? DropWithTied(undone_, isOldest) : Drop(done_, isOldest);
}

/// Drops steps that were undone, and all that were made on top of them; or of those that were done,
/// also all below them: their deltas lead on from states to which nothing leads back any more.
void EditHistory::DropWithTied(StepList& steps, const std::function<bool(const Step&)>& isDropped) {
  std::vector<const Step*> dropped;
  for (auto step = steps.rbegin(); step != steps.rend(); ++step) {
    const bool isTied = std::any_of(dropped.begin(), dropped.end(),
                                    [&](const Step* each) { return AreTied(*each, *step); });
    if (isTied || isDropped(*step)) dropped.push_back(&*step);
  }
  Drop(steps, [&](const Step& step) {
    return std::find(dropped.begin(), dropped.end(), &step) != dropped.end();
  });
}

/// Drops steps for good.
void EditHistory::Drop(StepList& steps, const std::function<bool(const Step&)>& isDropped) {
  const auto end = std::remove_if(steps.begin(), steps.end(), [&](const Step& step) {
    if (!isDropped(step)) return false;
    droppedBytes_ += step.delta.RemovedBytes();
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
  Step& exchanged = from[index];
  if (exchanged.contents) FreeDroppedIfAny();
  to.reserve(to.size() + 1);  // a step that was exchanged must not get lost
  ExpectMemory(exchanged.delta.SwapBytes());
  AnnounceEdit(exchanged.contents != nullptr);
  if (exchanged.contents) {
    exchanged.contents->Swap();
    workspace_.reading = {};  // its pointers lead to what the maps held before
    Weigh(exchanged);
  } else {
    exchanged.delta.Swap();
    try {
      RefreshAfterSwap(exchanged.delta, workspace_);
      Weigh(exchanged);
    } catch (const std::bad_alloc&) {
      SwapBack(exchanged.delta);
      Tell(exchanged, EditNews::Kind::TakenBack, nullptr);
      throw;
    }
  }
  to.push_back(std::move(exchanged));
  from.erase(from.begin() + static_cast<std::ptrdiff_t>(index));
  for (const Passage& each : to.back().passages) {
    if (each.before == each.after) continue;
    EnterState(*each.map, kind == EditNews::Kind::Undone ? each.before : each.after);
  }
  const bool isFollowed = Tell(to.back(), kind, nullptr);
  Trim(kind);
  TellSteps();
  if (!isFollowed) throw ListenerWithoutMemory();
}

void EditHistory::NoteSaved(Map& map) {
  map.flags &= ~std::uint32_t{MapDirty | MapUnlikeFile};
  saved_[&map] = StateOf(map);
}

void EditHistory::Forget(const Map& map) {
  const auto touches = [&](const Step& step) { return step.Touches(map); };
  DropWithTied(done_, touches);
  DropWithTied(undone_, touches);
  Trim(EditNews::Kind::Applied);
  states_.erase(&map);
  saved_.erase(&map);
  TellSteps();
}

size_t EditHistory::Bytes() const {
  size_t bytes = droppedBytes_ + heldBytes_;
  for (const StepList* steps : {&done_, &undone_}) {
    for (const Step& step : *steps) bytes += step.AllBytes();
  }
  return bytes;
}

/// Notifies all listeners. One that runs out of memory does not keep the news from the others.
/// \return false if one did
bool EditHistory::Tell(const Step& step, EditNews::Kind kind, const EditFollowUp* followUp) const {
  const EditNews news{.kind = kind,
                      .step = step.number,
                      .name = &step.name,
                      .map = step.passages.front().map,
                      .delta = &step.delta,
                      .followUp = followUp,
                      .contents = step.contents.get()};
  bool isFollowed = true;
  const auto tell = [&](const auto& follow) {
    try {
      follow();
    } catch (const std::bad_alloc&) {
      isFollowed = false;
    }
  };
  // A listener can close a window, which then removes its own.
  std::vector<EditListener*> followers;
  tell([&] { followers = followers_; });
  for (EditListener* follower : followers) {
    if (IsFollowedBy(follower)) tell([&] { follower->AfterEdit(news); });
  }
  for (const Listener& listener : listeners_) tell([&] { listener(news); });
  return isFollowed;
}

void EditHistory::AnnounceEdit(bool rereads) const {
  for (EditListener* follower : followers_) {
    rereads ? follower->BeforeReread() : follower->BeforeEdit();
  }
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

EditHistory::State EditHistory::StateOf(const Map& map) const {
  const auto found = states_.find(&map);
  return found == states_.end() ? State() : found->second;
}

EditHistory::State EditHistory::SavedOf(const Map& map) const {
  const auto found = saved_.find(&map);
  return found == saved_.end() ? State() : found->second;
}

void EditHistory::EnterState(Map& map, State state) {
  states_[&map] = state;
  const State saved = SavedOf(map);
  map.flags &= ~std::uint32_t{MapDirty | MapUnlikeFile};
  if (state.marked != saved.marked) map.flags |= MapDirty;
  if (state.unlike != saved.unlike) map.flags |= MapUnlikeFile;
}

}  // namespace orvane
