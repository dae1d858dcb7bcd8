#pragma once

#include "editing/range_editor.h"
#include "editing/trail_editor.h"

#include <array>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace orvane {

/// A cell with a text that its editor has not taken yet.
struct OpenCell {
  int row = 0;
  int column = 0;
  std::string text;
};

/// What an open editor holds, apart from the map: enough to open it again after a crash.
struct EditorDraft {
  bool ofTrail = true;         ///< or of a range
  bool isNew = true;           ///< the trail or range does not exist yet
  std::string mapFile;         ///< of the map of the editor's window
  bool europeanDates = false;  ///< how the file of the map is read
  std::string rangeName;       ///< of the range when the editor was opened
  EntryMode mode = EntryMode::Relative;
  /// The form: by `TrailField`, or name and colour of a range.
  std::array<std::string, TrailFields> fields;
  std::vector<TrailRow> trailRows;
  std::vector<RangeRow> rangeRows;
  std::optional<OpenCell> openCell{};

  size_t Rows() const { return ofTrail ? trailRows.size() : rangeRows.size(); }
};

EditorDraft DraftOf(const TrailEditor& editor);
EditorDraft DraftOf(const RangeEditor& editor);

/// Lines of text, each a key and a value.
std::string DraftText(const EditorDraft& draft);
/// \return nothing for a text that names no map. Any other missing or damaged value has its default.
std::optional<EditorDraft> ParseDraft(std::string_view text);

/// What the user calls the editor: "New Trail Ridge", "Trail 2020-3-1 Ana", "Range Blue".
std::string DraftTitle(const EditorDraft& draft);

/// Makes the editor from a draft, with all its changes. If the map does not have the trail or the
/// range, it becomes a new one.
std::unique_ptr<TrailEditor> TrailEditorOf(Map& map, const EditorDraft& draft);
/// \param color  of the row of the range
std::unique_ptr<RangeEditor> RangeEditorOf(Map& map, const EditorDraft& draft, Color color);

/// \return the range of a draft; null for a new one, or if the map does not have it
Range* RangeOf(Map& map, const EditorDraft& draft);

}  // namespace orvane
