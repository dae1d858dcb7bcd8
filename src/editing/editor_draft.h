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
  EntryMode mode = EntryMode::Relative;
  /// The form: by `TrailField`, or name and colour of a range.
  std::array<std::string, TrailFields> fields;
  std::vector<TrailRow> trailRows;
  std::vector<RangeRow> rangeRows;
  std::optional<OpenCell> openCell{};
  /// What the editor was opened with; nothing for a new trail or range, and in drafts of the first
  /// form, which had only the fields and `rangeName`.
  std::optional<TrailOrigin> trail{};
  std::optional<RangeOrigin> range{};
  std::string rangeName{};  ///< only in drafts of the first form

  size_t Rows() const { return ofTrail ? trailRows.size() : rangeRows.size(); }
};

EditorDraft DraftOf(const TrailEditor& editor);
EditorDraft DraftOf(const RangeEditor& editor);

/// Lines of text, each a key and a value. The last is a mark of the others.
std::string DraftText(const EditorDraft& draft);
/// Reads this form and the first one, which had no mark at its end.
/// \return nothing for a text that is damaged or incomplete
std::optional<EditorDraft> ParseDraft(std::string_view text);

/// What the user calls the editor: "New Trail Ridge", "Trail 2020-3-1 Ana", "Range Blue".
std::string DraftTitle(const EditorDraft& draft);

/// Makes the editor from a draft, with all its changes. If nothing in the map is the trail or range
/// that it was opened with, it becomes the editor of a deleted one. Of a draft of the first form it
/// is not known what has changed since, so that OK asks.
std::unique_ptr<TrailEditor> TrailEditorOf(Map& map, const EditorDraft& draft);
/// \param color  of the row of the range
std::unique_ptr<RangeEditor> RangeEditorOf(Map& map, const EditorDraft& draft, Color color);

/// \return the range of a draft; null for a new one, or if the map does not have it
Range* RangeOf(Map& map, const EditorDraft& draft);

}  // namespace orvane
