#pragma once

#include <atomic>
#include <cstddef>

namespace orvane {

/// The stages of long work.
enum class WorkStage { Reading, Solving, Analyzing, Importing, Contouring, Writing, Printing };

/// Receives progress from long work and can cancel it. The work checks rarely enough not to become
/// slower, and often enough that a cancel seems immediate to the user.
///
/// Cancelled work returns soon. It does not start anything new and posts no message about what is
/// missing; the caller removes what is half done.
class Progress {
 public:
  virtual ~Progress() = default;

  /// True after the work was cancelled, unless it must be finished; see `MustFinish`. Can be called
  /// from threads that help with the work.
  bool Canceled() const { return canceled_ && mustFinish_ == 0; }

  /// From now on the work can't be cancelled: it changes what remains afterwards.
  void Commit() { ++mustFinish_; }

  /// Called from time to time during work, by the thread that started it. It can show the progress,
  /// but must not change a map.
  /// \param done  how much of the stage is done, from 0 to `of`
  /// \param of    the whole stage, in the units of the work; 0 if unknown
  virtual void Reach(WorkStage stage, size_t done, size_t of) = 0;

 protected:
  void Cancel() { canceled_ = true; }
  bool MayCancel() const { return mustFinish_ == 0; }

 private:
  friend class MustFinish;
  std::atomic<bool> canceled_ = false;
  int mustFinish_ = 0;
};

/// \return true after the work was cancelled; `progress` can be null for work without progress
inline bool IsCanceled(const Progress* progress) {
  return progress != nullptr && progress->Canceled();
}

/// While it exists, the work can't be cancelled: changes of a map that stays open must be
/// completed.
class MustFinish {
 public:
  /// \param progress  can be null
  explicit MustFinish(Progress* progress) : progress_(progress) {
    if (progress_ != nullptr) ++progress_->mustFinish_;
  }
  ~MustFinish() {
    if (progress_ != nullptr) --progress_->mustFinish_;
  }
  MustFinish(const MustFinish&) = delete;
  MustFinish& operator=(const MustFinish&) = delete;

 private:
  Progress* progress_;
};

/// One loop of long work, which reports its progress every few steps.
class ProgressSteps {
 public:
  /// \param progress  can be null; then this costs almost nothing
  /// \param of        as for `Progress::Reach`
  /// \param stride    steps from one report to the next, at least 1
  ProgressSteps(Progress* progress, WorkStage stage, size_t of, unsigned stride = 1)
      : progress_(progress), stage_(stage), of_(of), stride_(stride) {}

  /// Called before each step.
  /// \param done  as for `Progress::Reach`
  /// \return false if the loop must end, and at each later call
  bool Next(size_t done) {
    if (progress_ == nullptr) return true;
    if (--left_ == 0) {
      left_ = stride_;
      if (goesOn_) progress_->Reach(stage_, done, of_);
    }
    // Also if it was cancelled in a loop inside this one.
    goesOn_ = goesOn_ && !progress_->Canceled();
    return goesOn_;
  }
  /// The same with the number of calls as `done`.
  bool Next() { return Next(count_++); }

 private:
  Progress* progress_;
  WorkStage stage_;
  size_t of_;
  unsigned stride_;
  unsigned left_ = 1;
  bool goesOn_ = true;
  size_t count_ = 0;
};

}  // namespace orvane
