#pragma once

#include <atomic>
#include <cstddef>

namespace orvane {

/// What a long piece of work is at.
enum class WorkStage { Reading, Solving, Analyzing, Importing, Writing };

/// Is told by long work how far it has come, and may call it off. The work asks at grains so coarse
/// that it is not slower for it, and so fine that a user who waits is answered within a blink.
///
/// Work that is called off comes back soon. It leaves undone what was not begun, says nothing of
/// what it could not do, and whoever began it takes away what is half done.
class Progress {
 public:
  virtual ~Progress() = default;

  /// True once the work is called off, but where it has to be finished; see `MustFinish`. Threads
  /// that help with the work may ask too.
  bool Cancelled() const { return cancelled_ && mustFinish_ == 0; }

  /// From now on the work can't be called off: it changes what stays.
  void Commit() { ++mustFinish_; }

  /// Called now and then while work goes on, by the thread that began it. It may show that, but
  /// changes no map.
  /// \param done  how much of the stage is behind; from 0 to `of`
  /// \param of    the whole of it, in whatever the work counts; 0 where it does not know
  virtual void Reach(WorkStage stage, size_t done, size_t of) = 0;

 protected:
  void Cancel() { cancelled_ = true; }
  bool MayCancel() const { return mustFinish_ == 0; }

 private:
  friend class MustFinish;
  std::atomic<bool> cancelled_ = false;
  int mustFinish_ = 0;
};

/// \return true once the work is called off; `progress` may be null for work that nobody watches
inline bool IsCancelled(const Progress* progress) {
  return progress != nullptr && progress->Cancelled();
}

/// For as long as it lives the work can't be called off: what has been begun on a map that stays
/// has to be brought to its end.
class MustFinish {
 public:
  /// \param progress  may be null
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

/// One loop of long work, which tells of every so many of its steps.
class ProgressSteps {
 public:
  /// \param progress  may be null; then this costs next to nothing
  /// \param of        as for `Progress::Reach`
  /// \param stride    tells of each so many steps, from 1
  ProgressSteps(Progress* progress, WorkStage stage, size_t of, unsigned stride = 1)
      : progress_(progress), stage_(stage), of_(of), stride_(stride) {}

  /// Called before each step.
  /// \param done  as for `Progress::Reach`
  /// \return false if the loop is to end, and so from then on
  bool Next(size_t done) {
    if (progress_ == nullptr) return true;
    if (--left_ == 0) {
      left_ = stride_;
      if (goesOn_) progress_->Reach(stage_, done, of_);
    }
    // Also where it was called off in a loop within this one.
    goesOn_ = goesOn_ && !progress_->Cancelled();
    return goesOn_;
  }
  /// The same where the steps themselves are counted.
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
