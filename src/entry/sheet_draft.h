#pragma once

#include "entry/preview.h"
#include "entry/sheet_fields.h"
#include "entry/sheet_file.h"

#include <optional>
#include <string>
#include <vector>

namespace orvane {

/// The preview of a follow sheet without its window: what each row becomes with the fields of the
/// dialog "SpreadSheet Data", which its columns can fill in.
class SheetDraft {
 public:
  /// Fills in blank fields of columns by the captions of the sheet. If the lines to skip are blank and
  /// one of the first lines has captions, they end with it.
  /// \param map, sheet  must outlive this
  SheetDraft(Map& map, const FollowSheet& sheet, std::string fileName, SheetFields fields);

  const SheetFields& Fields() const { return fields_; }

  /// What a column can mean: "(not used)", "Time" ...
  std::vector<std::string> Choices() const;
  /// \return for each column, the index of its meaning in `Choices`
  std::vector<int> Chosen() const;
  /// Gives a column, from 0, a meaning. Another column that had it has none. The next call for the same
  /// column takes the effects of this one back.
  void Assign(size_t column, size_t choice);

  /// Reads the sheet with the fields as they are. The map gets the trails of the rows: call this in an
  /// edit that gives up (`SheetPreviewEdit`).
  void Read();
  /// What `Read` found.
  const PreviewPage& Page() const { return page_; }

 private:
  std::vector<SheetField> MeaningsOfColumns() const;
  void Guess();
  std::vector<std::string> CaptionsOf(size_t line) const;
  Preview PlainRows() const;

  Map& map_;
  const FollowSheet& sheet_;
  std::string fileName_;
  SheetFields fields_;
  std::optional<size_t> assigned_;  ///< the column of the last `Assign`
  SheetFields beforeAssigned_;      ///< before the first `Assign` in a row of this column
  size_t columns_ = 0;              ///< of the longest of the rows that are shown
  PreviewPage page_;
};

}  // namespace orvane
