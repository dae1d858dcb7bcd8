#pragma once

#include "base/messages.h"
#include "mapfile/open_map.h"
#include "mapfile/reader.h"
#include "model/workspace.h"
#include "panes/range_list.h"
#include "panes/trail_tree.h"
#include "view/map_window.h"
#include "view/view_transform.h"

#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

/// What several fuzz targets share.
namespace fuzz {

/// Ends the run as a finding where the program broke a promise without crashing.
inline void Require(bool kept) {
  if (!kept) std::abort();
}

/// An input in two parts, divided by a line that holds only a form feed. Without such a line the
/// whole input is the body.
struct Parts {
  std::string head;
  std::string body;
};
inline Parts PartsOf(const std::uint8_t* data, std::size_t size) {
  constexpr std::string_view Separator = "\n\f\n";
  Parts parts{{}, std::string(data, data + size)};
  if (const std::size_t cut = parts.body.find(Separator); cut != std::string::npos) {
    parts.head = parts.body.substr(0, cut);
    parts.body.erase(0, cut + Separator.size());
  }
  return parts;
}

/// A workspace for one input. Nobody reads its messages.
struct FuzzedMaps {
  orvane::RecordedMessages messages;
  orvane::Workspace workspace{messages};

  orvane::Map& Open(std::string_view text) {
    orvane::Map& map = orvane::MakeMap(workspace, "fuzzed.map");
    orvane::ReadMapText(map, text);
    orvane::FinishMap(map);
    return map;
  }
};

/// A view of a whole map with all its rows, as a new window has it.
inline orvane::MapWindow ViewOf(orvane::Map& map) {
  orvane::MapWindow view;
  view.map = &map;
  orvane::BuildTrailRows(view);
  orvane::BuildRangeRows(view);
  orvane::SizeView(view, 400, 300);
  return view;
}

}  // namespace fuzz
