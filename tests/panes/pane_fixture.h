#pragma once

#include "base/text.h"
#include "editing/edit_history.h"
#include "panes/follow_edit.h"
#include "panes/range_list.h"
#include "panes/trail_tree.h"
#include "support/map_from_text.h"
#include "view/map_window.h"

#include <gtest/gtest.h>

namespace orvane {

/// A view on a map with its panes, which follow each edit.
struct PaneFixture : MapFixture {
  MapWindow view;
  EditHistory history{workspace};

  PaneFixture() {
    history.Listen([this](const EditNews& news) { FollowEdit(view, news); });
  }

  Map& Show(std::string_view text) {
    Map& map = Open(text);
    view.map = &map;
    BuildTrailRows(view);
    BuildRangeRows(view);
    return map;
  }
  TrailPanelRow& Row(std::string_view text) {
    for (TrailPanelRow* row : TrailRowsInOrder(view.trailViews)) {
      if (SameName(row->text, text)) return *row;
    }
    ADD_FAILURE() << "no row " << text;
    return view.trailViews.back();
  }
  RangePanelRow& RangeRow(std::string_view text) {
    for (RangePanelRow& row : view.rangeViews) {
      if (row.text && SameName(*row.text, text)) return row;
    }
    ADD_FAILURE() << "no row " << text;
    return view.rangeViews.back();
  }
  Texts RangeTexts() const {
    Texts texts;
    for (const RangePanelRow& row : view.rangeViews) texts.push_back(row.text.value_or("-"));
    return texts;
  }
};

constexpr char TwoGroupsText[] =
    "T\tPath\tTrail\nG\tA\tS20 0\tE47 0\n"
    "T\t\tPapio\tAna\t2020-3-1\nG\t8:00\tS20 0\tE47 0\nG\t8:30\tS20 0.2\tE47 0\n"
    "G\t9:00\tS20 0\tE47 0.2\n"
    "T\t\tPapio\t\t2020-3-2\nG\t8:00\tS20 0.1\tE47 0\nG\t8:30\tS20 0.3\tE47 0.1\n"
    "G\t9:00\tS20 0\tE47 0.3\n"
    "T\t\tCebus\t\t2020-3-1\nG\t8:00\tS20 0\tE47 0.05\nG\t8:30\tS20 0.2\tE47 0.1\n"
    "G\t9:00\tS20 0.1\tE47 0.3\n";

}  // namespace orvane
