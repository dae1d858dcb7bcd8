#pragma once

#include "editing/map_delta.h"
#include "model/former_contents.h"
#include "model/map.h"
#include "model/workspace.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <new>
#include <string>
#include <vector>

namespace orvane {

/// What must follow a change of the records. The change asks for it, and `EditHistory` does it.
struct EditFollowUp {
  /// Positions and all ranges, by `SolveEdited` on the map of the edit.
  bool solve = false;
  /// Ranges of that map, to be analysed in this order; `solve` does it anyway.
  std::vector<Range*> ranges;
  /// The change itself has solved the map and analysed its ranges.
  bool solved = false;
  /// Trails whose rows take the colour that they now have.
  std::vector<const Trail*> recolored;
  /// Maps of the edit that are unlike their files without being marked as changed
  /// (`MapUnlikeFile`).
  std::vector<const Map*> unlikeFile;
  /// Windows forget what their rows of trails and ranges looked like.
  bool freshRows = false;
  /// The same for the rows of trails only.
  bool freshTrailRows = false;
  /// The change has found nothing to do, so no map becomes dirty, whatever `Edit::marksDirty` says.
  bool marksNothing = false;
};

/// A change of a map that is ready to be made: what every editor, import and command passes to
/// `EditHistory::Apply`.
struct Edit {
  std::string name;            ///< what Undo takes back, as "Edit of Trail Kana"
  Map* map = nullptr;          ///< the map that the change is about; becomes dirty
  std::vector<Map*> others{};  ///< further maps that become dirty
  bool marksDirty = true;      ///< false for a change that the file of the map does not hold

  /// Changes the records. It may change any open map, and may open others.
  /// \return false to give up: all maps are then as they were before
  std::function<bool(EditFollowUp& followUp)> change{};
};

/// What listeners of an `EditHistory` learn after each edit, undo and redo.
struct EditNews {
  /// `TakenBack`: memory ran out, or the edit gave up half way. The maps are as before, but their
  /// overlaps can be other records. If this was an undo or a redo, its step is still there.
  enum class Kind { Applied, Undone, Redone, TakenBack };

  Kind kind = Kind::Applied;
  std::uint64_t step = 0;             ///< number of the step, the same when it is undone and redone
  const std::string* name = nullptr;  ///< of the edit
  Map* map = nullptr;                 ///< the map of the edit
  const MapDelta* delta = nullptr;    ///< what changed, map by map
  const EditFollowUp* followUp = nullptr;  ///< what followed; null unless `kind` is `Applied`
  /// What whole maps have exchanged; null unless they were read again. Nothing may point into it
  /// after the step was dropped.
  const FormerContents* contents = nullptr;

  /// \return the maps in which something changed; that of the edit if it only marked it
  std::vector<Map*> Maps() const;
  /// \return true if `map` is one of these
  bool Concerns(const Map& other) const;
};

/// A listener ran out of memory. The edit, undo or redo is made and recorded, and all other listeners
/// have followed it.
struct ListenerWithoutMemory : std::bad_alloc {};

/// Follows an `EditHistory` until it is removed.
class EditListener {
 public:
  virtual ~EditListener() = default;

  /// Called before each edit, undo and redo.
  virtual void BeforeEdit() = 0;
  /// Called instead if maps are read again, or this is undone or redone: all pointers to what they
  /// hold change. If reading fails, no call of `AfterEdit` follows.
  virtual void BeforeReread() { BeforeEdit(); }
  virtual void AfterEdit(const EditNews& news) = 0;
  /// The step can't be undone or redone any more.
  virtual void StepDropped(std::uint64_t step) = 0;
};

/// The only way to change a map after it was read. It applies edits, undoes and redoes them, and
/// keeps `MapDirty` right. Code that shows a map, or keeps a copy of it, listens here.
///
/// An edit is recorded as the difference that it makes, so an edit needs no code for its undo, and
/// an undo restores the former map to the last bit.
///
/// Steps that changed the same maps are undone in reverse order; so are those that changed the surveys
/// of a map and of its basis. Other steps in several maps are independent.
///
/// Reading maps again is a step too (`Reread`). It keeps the former contents whole, so the steps before
/// it stay valid: they lead on from there once it is undone.
class EditHistory {
 public:
  using Listener = std::function<void(const EditNews&)>;

  /// Steps are dropped once all together take more than this: the oldest first, but after an undo
  /// those that would be redone last.
  static constexpr size_t MostBytes = size_t{256} << 20;

  /// \param workspace  must outlive the history
  /// \param mostBytes  as `MostBytes`; smaller in tests
  explicit EditHistory(Workspace& workspace, size_t mostBytes = MostBytes)
      : workspace_(workspace), mostBytes_(mostBytes) {}

  EditHistory(const EditHistory&) = delete;
  EditHistory& operator=(const EditHistory&) = delete;

  /// Changes the bound, from the next edit on.
  void SetMostBytes(size_t bytes) { mostBytes_ = bytes; }

  /// Notifies `follower` of each edit until it is removed, which can happen at any time.
  void Add(EditListener& follower) { followers_.push_back(&follower); }
  void Remove(EditListener& follower);
  /// Those who point to records from outside the maps.
  RecordHolders& Holders() { return workspace_.holders; }
  /// Calls `listener` after each edit, undo and redo, in the order of these calls and after all that
  /// were added by `Add`.
  void Listen(Listener listener) { listeners_.push_back(std::move(listener)); }
  /// Calls `listener` when other steps can be undone or redone than before: after all listeners have
  /// followed an edit, and when steps are forgotten.
  void ListenToSteps(std::function<void()> listener) {
    stepListeners_.push_back(std::move(listener));
  }

  /// Makes an edit. One that changes no record is a step only if it marks the map.
  /// If memory runs out, it restores the maps, notifies the listeners and throws `std::bad_alloc`
  /// again. `Reread`, `Undo` and `Redo` change nothing then. If only a listener runs out of memory,
  /// all four go on to their end and throw `ListenerWithoutMemory`.
  /// \return false if the edit gave up
  bool Apply(const Edit& edit);

  /// Reads maps again from files, as one step.
  /// \param map   the map that then is as its file, and is no longer marked as changed
  /// \param read  reads; \return false if no map has changed
  /// \return the same
  bool Reread(Map& map, const std::string& name,
              const std::function<bool(FormerContents& former)>& read);

  /// \return the name of the edit that `Undo` takes back; null if there is none
  const std::string* UndoName(const Map& map) const;
  const std::string* RedoName(const Map& map) const;

  /// Undoes the newest edit that changed `map` or a map in its basis chain. A later edit that
  /// changed one of the same maps, such as the common basis, or a map based on one, is undone
  /// first. If memory runs out, the maps are as before, and `std::bad_alloc` is thrown.
  /// \return false if there is none
  bool Undo(const Map& map);
  /// Applies again what `Undo` took back last.
  bool Redo(const Map& map);

  /// Call after a map was saved: the present state is that of its file. Clears `MapDirty`.
  void NoteSaved(Map& map);

  /// Call after a map was changed without an edit, as when another map was opened that adds to it:
  /// drops each step that touches it, since these were taken from another state. Does not
  /// change `MapDirty`.
  void Forget(const Map& map);

  /// \return the number of steps that `Undo` can take back, over all maps
  size_t Steps() const { return done_.size(); }
  /// \return true if any step can be undone or redone
  bool HasSteps() const { return !done_.empty() || !undone_.empty(); }
  /// \return the memory of all steps, with the records that only they keep, and of such records that
  ///         wait to be freed, or that an open editor or the like holds; in bytes, close to the truth
  size_t Bytes() const;

 private:
  /// Names a state of one map: equal numbers are equal states.
  struct State {
    std::uint64_t marked = 0;  ///< changed by each edit that marks the map
    std::uint64_t unlike = 0;  ///< changed by each edit that only makes it unlike its file
    friend bool operator==(const State&, const State&) = default;
  };

  /// The states of a map that a step leads between.
  struct Passage {
    Map* map = nullptr;
    State before{};
    State after{};
  };
  struct Step {
    std::string name;
    std::uint64_t number = 0;
    std::vector<Passage> passages{};  ///< that of the edit's own map first
    MapDelta delta{};
    std::unique_ptr<FormerContents> contents{};  ///< in place of the delta, or null
    size_t bytes = 0;                            ///< what delta or contents take

    /// With the records that only this step keeps.
    size_t AllBytes() const;
    std::vector<Map*> Maps() const;
    bool Touches(const Map& map) const;
    bool ChangesSurvey(const Map& map) const;
  };
  using StepList = std::vector<Step>;

  static bool AreTied(const Step& a, const Step& b);
  static size_t NextStepOf(const StepList& steps, const Map& map);
  void NoteUnsavedStart(const Map& map);
  void Record(Step made, const EditFollowUp& followUp);
  static void Weigh(Step& step);
  void Trim(EditNews::Kind kind);
  bool LastRedoIsDropped() const;
  void FreeDropped();
  void FreeDroppedIfAny();
  void DropOldest();
  void DropWithTied(StepList& steps, const std::function<bool(const Step&)>& isDropped);
  void Exchange(StepList& from, StepList& to, size_t index, EditNews::Kind kind);
  std::vector<Passage> PassagesOf(const std::vector<Map*>& maps, const EditFollowUp& followUp,
                                  bool marksDirty);
  void SwapBack(MapDelta& changes);
  void TakeBack(Step step);
  void DropTakenBack(Step step);
  void Drop(StepList& steps, const std::function<bool(const Step&)>& isDropped);
  void AnnounceEdit(bool rereads) const;
  bool Tell(const Step& step, EditNews::Kind kind, const EditFollowUp* followUp) const;
  void TellSteps() const;
  bool IsFollowedBy(const EditListener* follower) const;
  State StateOf(const Map& map) const;
  State SavedOf(const Map& map) const;
  void EnterState(Map& map, State state);

  Workspace& workspace_;
  size_t mostBytes_;
  std::vector<EditListener*> followers_;
  std::vector<Listener> listeners_;
  std::vector<std::function<void()>> stepListeners_;
  StepList done_;            ///< oldest first
  StepList undone_;          ///< the one taken back last comes last
  size_t droppedBytes_ = 0;  ///< of records that only dropped steps have kept, still to be freed
  /// Of those that were not freed last time, because a holder from outside the maps kept them. When
  /// others are freed, it is found out again.
  size_t heldBytes_ = 0;
  std::uint64_t newestState_ = 0;
  std::uint64_t newestStep_ = 0;
  std::map<const Map*, State> states_;  ///< the present one; as read for those not named
  std::map<const Map*, State> saved_;   ///< the one that the file has; likewise
};

}  // namespace orvane
