#include "panes/pane_follower.h"

#include "base/text.h"
#include "panes/follow_edit.h"

#include <iterator>
#include <tuple>
#include <utility>

namespace orvane {
namespace {

/// Gives `row` the fields of `wanted` that differ from those of `other`.
template <typename Fields, typename Const, size_t... Index>
void TakeChanges(Fields row, Const wanted, Const other, std::index_sequence<Index...> /*all*/) {
  const auto take = [](auto& field, const auto& value, const auto& otherValue) {
    if (value != otherValue) field = value;
  };
  (take(std::get<Index>(row), std::get<Index>(wanted), std::get<Index>(other)), ...);
}

}  // namespace

// Each list of fields is written once; it serves to copy and to compare.
template <typename Row>
auto PaneFollower::FieldsOf(Row& row) {
  if constexpr (requires { row.lineStyle; }) {
    return std::tuple_cat(std::tie(row.visible, row.open, row.selected), StyleOf(row));
  } else {
    return std::tuple_cat(
        std::tie(row.visible, row.selected, row.shading, row.drawMode, row.clusterMask),
        std::tie(row.showSm[0], row.showSm[1], row.showSm[2]), StyleOf(row));
  }
}

template <typename Row>
auto PaneFollower::StyleOf(Row& row) {
  if constexpr (requires { row.lineStyle; }) {
    return std::tie(row.filled, row.lineStyle, row.labelMode, row.fillPattern, row.markStyle,
                    row.color);
  } else {
    return std::tie(row.color);
  }
}

template <typename Visit>
void PaneFollower::VisitTrails(std::list<TrailPanelRow>& rows, const std::string& above,
                               Visit visit) {
  for (TrailPanelRow& row : rows) {
    const std::string path = above + '\n' + FoldedText(row.text);
    visit(TrailKey{row.trail, row.trail == nullptr ? path : std::string()}, row);
    VisitTrails(row.children, path, visit);
  }
}

PaneFollower::RangeKey PaneFollower::KeyOf(const RangePanelRow& row) {
  return row.intersection == nullptr ? RangeKey{row.range, nullptr} : row.overlapOf;
}

PaneFollower::PaneFollower(MapWindow& view, EditHistory& history) : view_(view) {
  history.ListenBefore([this] { before_ = LooksNow(); });
  history.Listen([this](const EditNews& news) { Follow(news); });
}

PaneFollower::Looks PaneFollower::LooksNow() {
  Looks looks;
  VisitTrails(view_.trailViews, "", [&](const TrailKey& key, const TrailPanelRow& row) {
    FieldsOf(looks.trails[key]) = FieldsOf(row);
  });
  for (const RangePanelRow& row : view_.rangeViews) {
    FieldsOf(looks.ranges[KeyOf(row)]) = FieldsOf(row);
  }
  return looks;
}

void PaneFollower::NoteGone(const Looks& now, Looks& gone) const {
  for (const auto& [key, look] : before_.trails) {
    if (!now.trails.contains(key)) gone.trails[key] = look;
  }
  for (const auto& [key, look] : before_.ranges) {
    if (!now.ranges.contains(key)) gone.ranges[key] = look;
  }
}

void PaneFollower::NoteChanged(const Looks& now, StepLooks& step) const {
  const auto note = [](const auto& was, const auto& is, auto& before, auto& after) {
    for (const auto& [key, look] : was) {
      const auto found = is.find(key);
      if (found == is.end() || StyleOf(look) == StyleOf(found->second)) continue;
      before[key] = look;
      after[key] = found->second;
    }
  };
  note(before_.trails, now.trails, step.before.trails, step.after.trails);
  note(before_.ranges, now.ranges, step.before.ranges, step.after.ranges);
}

void PaneFollower::BringBack(const StepLooks& step, bool undone) {
  const Looks& wanted = undone ? step.before : step.after;
  const Looks& other = undone ? step.after : step.before;
  const auto bringBack = [](const auto& key, auto& row, const auto& were, const auto& gone,
                            const auto& wantedLooks, const auto& otherLooks, bool wasMadeAgain) {
    const auto was = were.find(key);
    const auto& source = was == were.end() ? gone : were;
    const auto look = source.find(key);
    if (look != source.end() && (was == were.end() || wasMadeAgain)) {
      FieldsOf(row) = FieldsOf(look->second);
    }
    const auto changed = wantedLooks.find(key);
    if (changed == wantedLooks.end() || wasMadeAgain) return;
    const auto style = StyleOf(row);
    TakeChanges(style, StyleOf(changed->second), StyleOf(otherLooks.at(key)),
                std::make_index_sequence<std::tuple_size_v<decltype(style)>>());
  };
  VisitTrails(view_.trailViews, "", [&](const TrailKey& key, TrailPanelRow& row) {
    bringBack(key, row, before_.trails, step.gone.trails, wanted.trails, other.trails, false);
  });
  // Rows of overlaps are made again by each undo.
  for (RangePanelRow& row : view_.rangeViews) {
    bringBack(KeyOf(row), row, before_.ranges, step.gone.ranges, wanted.ranges, other.ranges,
              row.intersection != nullptr);
  }
}

void PaneFollower::Follow(const EditNews& news) {
  FollowEdit(view_, news);
  StepLooks& step = steps_[news.step];
  if (news.kind == EditNews::Kind::Applied) {
    const Looks now = LooksNow();
    NoteGone(now, step.gone);
    NoteChanged(now, step);
  } else {
    BringBack(step, news.kind == EditNews::Kind::Undone);
    NoteGone(LooksNow(), step.gone);
  }
}

}  // namespace orvane
