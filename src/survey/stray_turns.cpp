#include "survey/stray_turns.h"

#include <numeric>
#include <utility>

namespace orvane {

StrayTurns::StrayTurns(size_t strays) : eachPass_(strays), states_(strays, State::EachPass) {
  std::iota(eachPass_.begin(), eachPass_.end(), size_t{0});
}

std::optional<size_t> StrayTurns::Next() {
  if (at_ == eachPass_.size() && woken_.empty() && !BeginPass()) return std::nullopt;
  if (woken_.empty() || (at_ < eachPass_.size() && eachPass_[at_] < woken_.top())) {
    current_ = eachPass_[at_++];
  } else {
    current_ = woken_.top();
    woken_.pop();
  }
  states_[current_] = State::Done;
  return current_;
}

bool StrayTurns::BeginPass() {
  if (!std::exchange(gained_, false)) return false;
  eachPass_ = std::exchange(eachNext_, {});
  at_ = 0;
  for (const size_t stray : std::exchange(wokenNext_, {})) woken_.push(stray);
  return !eachPass_.empty() || !woken_.empty();
}

void StrayTurns::TryEachPass() {
  states_[current_] = State::EachPass;
  eachNext_.push_back(current_);
}

void StrayTurns::WaitFor(std::span<const Point* const> points) {
  states_[current_] = State::Waiting;
  for (const Point* point : points) waiting_[point].push_back(current_);
}

void StrayTurns::Wake(const Point& placed) {
  const auto waiting = waiting_.extract(&placed);
  if (waiting.empty()) return;
  for (const size_t stray : waiting.mapped()) {
    if (states_[stray] != State::Waiting) continue;
    states_[stray] = State::Woken;
    if (stray > current_) {
      woken_.push(stray);
    } else {
      wokenNext_.push_back(stray);
    }
  }
}

}  // namespace orvane
