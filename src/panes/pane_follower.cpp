#include "panes/pane_follower.h"

#include "base/text.h"
#include "panes/estimate_lines.h"
#include "panes/follow_edit.h"

#include <algorithm>
#include <iterator>
#include <tuple>
#include <utility>

namespace orvane {
namespace {

/// Gives `row` the fields of `wanted` that differ from those of `other`.
template <typename Fields, typename Const, size_t... Index>
void TakeChanges(Fields row, const Const& wanted, const Const& other,
                 std::index_sequence<Index...> /*all*/) {
  const auto take = [](auto& field, const auto& value, const auto& otherValue) {
    if (value != otherValue) field = value;
  };
  (take(std::get<Index>(row), std::get<Index>(wanted), std::get<Index>(other)), ...);
}

template <typename Fields, typename Const>
void TakeChanges(Fields row, const Const& wanted, const Const& other) {
  TakeChanges(row, wanted, other, std::make_index_sequence<std::tuple_size_v<Fields>>());
}

template <typename Map, typename Key>
const typename Map::mapped_type* Find(const Map& map, const Key& key) {
  const auto found = map.find(key);
  return found == map.end() ? nullptr : &found->second;
}

/// Counts rows of equal text that follow each other.
template <typename Row>
class RankCounter {
 public:
  int RankOf(const Row& row, bool isSame) {
    rank_ = last_ != nullptr && isSame ? rank_ + 1 : 0;
    last_ = &row;
    return rank_;
  }
  const Row* Last() const { return last_; }

 private:
  const Row* last_ = nullptr;
  int rank_ = 0;
};

bool HaveOneText(const TrailPanelRow& a, const TrailPanelRow& b) {
  return SameName(a.text, b.text);
}

bool HaveOneText(const RangePanelRow& a, const RangePanelRow& b) {
  return (a.intersection == nullptr) == (b.intersection == nullptr) &&
         SameName(a.text.value_or(""), b.text.value_or(""));
}

/// Calls `visit` for each row of a level but "New", with its rank.
template <typename Row, typename Visit>
void ForEachRank(std::list<Row>& rows, const Visit& visit) {
  RankCounter<Row> counter;
  for (Row& row : rows) {
    const bool isSame = counter.Last() != nullptr && HaveOneText(*counter.Last(), row);
    const int rank = counter.RankOf(row, isSame);
    if (!row.fixed) visit(row, rank);
  }
}

template <typename Row>
using Ranks = std::unordered_map<const Row*, int>;

/// Sorts rows of equal text by rank.
template <typename Row>
void SortByRank(std::list<Row>& rows, const Ranks<Row>& ranks) {
  for (auto first = rows.begin(); first != rows.end();) {
    auto last = std::next(first);
    while (last != rows.end() && HaveOneText(*first, *last)) ++last;
    if (std::next(first) != last) {
      std::list<Row> run;
      run.splice(run.begin(), rows, first, last);
      const auto rankOf = [&](const Row& row) {
        const int* rank = Find(ranks, &row);
        return rank == nullptr ? 0 : *rank;
      };
      run.sort([&](const Row& a, const Row& b) { return rankOf(a) < rankOf(b); });
      rows.splice(last, run);
    }
    first = last;
  }
}

void SortTreeByRank(std::list<TrailPanelRow>& rows, const Ranks<TrailPanelRow>& ranks) {
  SortByRank(rows, ranks);
  for (TrailPanelRow& row : rows) SortTreeByRank(row.children, ranks);
}

std::array<const Range*, 2> KeyOf(const RangePanelRow& row) {
  if (row.intersection != nullptr) return row.overlapOf;
  return {row.range, nullptr};
}

bool IsOverlap(const std::array<const Range*, 2>& key) { return key[1] != nullptr; }

/// The looks that one kind of row can get back.
template <typename Looks>
struct Sources {
  const Looks& were;    ///< before the undo
  const Looks& gone;    ///< when the step, or its undo, removed them
  const Looks& wanted;  ///< of the state that comes back, where the step changed them
  const Looks& other;   ///< of the state that goes
};

}  // namespace

// Each list of fields is written once; it serves to copy and to compare.
template <typename Row>
auto PaneFollower::FieldsOf(Row& row) {
  if constexpr (requires { row.lineStyle; }) {
    return std::tuple_cat(std::tie(row.text, row.visible, row.open, row.selected), StyleOf(row));
  } else {
    return std::tuple_cat(std::tie(row.visible, row.selected, row.shading, row.drawMode,
                                   row.clusterMask, row.estimateMask),
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

/// Calls `visit(row, rank, path)` for each row of the tree; the path of a trail is empty.
template <typename Visit>
void PaneFollower::VisitLevel(std::list<TrailPanelRow>& rows, const std::string& above,
                              const Visit& visit) {
  ForEachRank(rows, [&](TrailPanelRow& row, int rank) {
    const std::string path = row.trail == nullptr ? above + '\n' + FoldedText(row.text) : "";
    visit(row, rank, path);
    VisitLevel(row.children, path, visit);
  });
}

PaneFollower::PaneFollower(MapWindow& view, EditHistory& history) : view_(view), history_(history) {
  history_.Add(*this);
  kept_ = history_.Holders().Add([this](UnusedRecords& records) { KeepRecords(records); });
}

PaneFollower::~PaneFollower() { history_.Remove(*this); }

void PaneFollower::KeepRecords(UnusedRecords& records) const {
  records.Keep(view_.selectedTrail);
  // Rows that could not follow an edit, for lack of memory, can show what is gone.
  for (const TrailPanelRow* row : TrailRowsInOrder(view_.trailViews)) records.Keep(row->trail);
  for (const RangePanelRow& row : view_.rangeViews) {
    records.Keep(row.range);
    for (const Range* range : row.overlapOf) records.Keep(range);
  }
  for (const auto& [number, step] : steps_) {
    for (const Looks* looks : {&step.gone, &step.before, &step.after}) {
      for (const auto& [trail, look] : looks->trails) records.Keep(trail);
      for (const auto& [ranges, look] : looks->ranges) {
        for (const Range* range : ranges) records.Keep(range);
      }
    }
  }
}

PaneFollower::Looks PaneFollower::LooksNow() {
  Looks looks;
  VisitLevel(view_.trailViews, "", [&](TrailPanelRow& row, int rank, const std::string& path) {
    TrailLook& look = row.trail != nullptr ? looks.trails[row.trail] : looks.groups[path];
    FieldsOf(look) = FieldsOf(std::as_const(row));
    look.rank = rank;
  });
  ForEachRank(view_.rangeViews, [&](RangePanelRow& row, int rank) {
    RangeLook& look = looks.ranges[KeyOf(row)];
    FieldsOf(look) = FieldsOf(std::as_const(row));
    look.rank = rank;
  });
  return looks;
}

void PaneFollower::NoteGone(const Looks& now, Looks& gone) const {
  const auto note = [](const auto& were, const auto& are, auto& noted) {
    for (const auto& [key, look] : were) {
      if (!are.contains(key)) noted[key] = look;
    }
  };
  note(before_.trails, now.trails, gone.trails);
  note(before_.groups, now.groups, gone.groups);
  note(before_.ranges, now.ranges, gone.ranges);
}

void PaneFollower::NoteChanged(const Looks& now, StepLooks& step) const {
  const auto note = [](const auto& were, const auto& are, auto& before, auto& after,
                       const auto& wasMade) {
    for (const auto& [key, was] : were) {
      const auto* is = Find(are, key);
      if (is == nullptr) continue;
      const bool differs =
          wasMade(key) ? FieldsOf(was) != FieldsOf(*is) : StyleOf(was) != StyleOf(*is);
      if (!differs && was.rank == is->rank) continue;
      before[key] = was;
      after[key] = *is;
    }
  };
  const auto madeTrails = [&](const auto& /*key*/) { return step.madeTrails; };
  note(before_.trails, now.trails, step.before.trails, step.after.trails, madeTrails);
  note(before_.groups, now.groups, step.before.groups, step.after.groups, madeTrails);
  note(before_.ranges, now.ranges, step.before.ranges, step.after.ranges,
       [&](const RangeKey& key) { return step.madeRanges || IsOverlap(key); });
}

void PaneFollower::BringBack(const StepLooks& step, bool undone) {
  const Looks& wanted = undone ? step.before : step.after;
  const Looks& other = undone ? step.after : step.before;
  // Gives a row its look. \return its rank
  const auto bringBack = [](const auto& key, auto& row, int rank, bool wasMade,
                            const auto& sources) {
    const auto* was = Find(sources.were, key);
    const auto* look = was != nullptr ? was : Find(sources.gone, key);
    if (look != nullptr) {
      FieldsOf(row) = FieldsOf(*look);
      rank = look->rank;
    }
    const auto* target = Find(sources.wanted, key);
    if (was == nullptr || target == nullptr) return rank;
    const auto& source = sources.other.at(key);
    if (wasMade) {
      TakeChanges(FieldsOf(row), FieldsOf(*target), FieldsOf(source));
    } else {
      TakeChanges(StyleOf(row), StyleOf(*target), StyleOf(source));
    }
    return target->rank != source.rank ? target->rank : rank;
  };
  const Sources<decltype(before_.trails)> trails{before_.trails, step.gone.trails, wanted.trails,
                                                 other.trails};
  const Sources<decltype(before_.groups)> groups{before_.groups, step.gone.groups, wanted.groups,
                                                 other.groups};
  const Sources<decltype(before_.ranges)> ranges{before_.ranges, step.gone.ranges, wanted.ranges,
                                                 other.ranges};
  Ranks<TrailPanelRow> trailRanks;
  VisitLevel(view_.trailViews, "", [&](TrailPanelRow& row, int rank, const std::string& path) {
    trailRanks[&row] = row.trail != nullptr
                           ? bringBack(row.trail, row, rank, step.madeTrails, trails)
                           : bringBack(path, row, rank, step.madeTrails, groups);
  });
  SortTreeByRank(view_.trailViews, trailRanks);
  Ranks<RangePanelRow> rangeRanks;
  ForEachRank(view_.rangeViews, [&](RangePanelRow& row, int rank) {
    const RangeKey key = KeyOf(row);
    rangeRanks[&row] = bringBack(key, row, rank, step.madeRanges || IsOverlap(key), ranges);
  });
  SortByRank(view_.rangeViews, rangeRanks);
}

void PaneFollower::BeforeEdit() { before_ = LooksNow(); }

void PaneFollower::BeforeReread() { memory_ = RememberRows(view_); }

void PaneFollower::FollowReread(const EditNews& news) {
  RowMemory rows = std::exchange(memory_, RowMemory());
  showsChange_ = news.Concerns(*view_.map);
  if (!showsChange_) return;
  // Before anything that can fail: the former contents may go at any time from now on.
  view_.trailViews.clear();
  view_.rangeViews.clear();
  view_.selectedTrail = nullptr;
  RowMemory& kept = steps_[news.step].rows;
  // What is there now counts; rows that come back are as they were when they went.
  rows.trails.merge(kept.trails);
  rows.ranges.merge(kept.ranges);
  RebuildRows(view_, rows);
  kept = std::move(rows);
}

void PaneFollower::FollowRows(const EditNews& news) {
  if (news.contents != nullptr) {
    FollowReread(news);
    return;
  }
  showsChange_ = FollowEdit(view_, news);
  if (!showsChange_) return;
  if (news.kind == EditNews::Kind::TakenBack) {
    BringBack({}, true);
  } else if (news.kind == EditNews::Kind::Applied) {
    StepLooks& step = steps_[news.step];
    step.madeRanges = news.followUp->freshRows;
    step.madeTrails = step.madeRanges || news.followUp->freshTrailRows;
    const Looks now = LooksNow();
    NoteGone(now, step.gone);
    NoteChanged(now, step);
  } else {
    StepLooks& step = steps_[news.step];
    BringBack(step, news.kind == EditNews::Kind::Undone);
    NoteGone(LooksNow(), step.gone);
  }
  before_ = {};
}

void PaneFollower::AfterEdit(const EditNews& news) {
  FollowRows(news);
  if (showsChange_) UpdateEstimateLines(view_, nullptr);
}

}  // namespace orvane
