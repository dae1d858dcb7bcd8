#pragma once

#include <cstddef>
#include <optional>
#include <string_view>

namespace orvane {

/// A follow sheet is tab-separated text: one row per line, cells between single tabs.

/// References to a column of a sheet: 0 is the first. Two more values mean that there is none.
constexpr int ColumnBlank = -1;      ///< the field was left empty
constexpr int ColumnMalformed = -2;  ///< the field names no column
constexpr int MostColumns = 31;      ///< columns from 0 to 30 can be referred to

/// Reads what a column field holds: a whole number, counted from 0, or letters in either case,
/// where A is the first column and AA follows Z. That numbers count from 0 and letters from A is on
/// purpose. Pinned by ParseColumnRef.CountsNumbersFromZeroAndLettersFromA.
/// \return 0 to 30, `ColumnBlank` for an empty text, else `ColumnMalformed`
int ParseColumnRef(std::string_view text);

/// The cell of a row. If it begins and ends with a double quote, both are removed; otherwise one
/// blank at its end, if there is one.
/// \param column  below 1 means the first, also where no column was given
/// \return a part of `row`; empty if the row has fewer columns
std::string_view ColumnText(std::string_view row, int column);

/// The whole number in a cell. Quotes are removed as in `ColumnText`, but not a blank at the end,
/// with which it is not a number.
/// \return 0 for a missing cell, and for one that is not a whole number of 32 bits
int ColumnNumber(std::string_view row, int column);

/// Whether the text is a time: "hmm" or "hhmm" up to 2400 with minutes up to 59, or "h:mm" with
/// hours up to 24 and minutes up to 60. After "h:mm" may come blanks and "am" or "pm", and in fact
/// any text unless the minutes are negative: a time may have a remark. Pinned by
/// ValidTimeText.RefusesTextAfterTheMinutesOnlyIfTheyAreNegative.
bool ValidTimeText(std::string_view text);

/// Cuts a sheet into its lines. A line ends at a line feed. A longer line than `LongestLine` is cut
/// there, and the rest is the next line: notes at the end of a long row become rows without a date
/// or a place. Pinned by SheetLines.GoOnWithTheRestOfALongLine.
class SheetLines {
 public:
  /// The largest number of bytes of a line, its line feed included.
  static constexpr size_t LongestLine = 399;

  /// \param text  the whole file; not copied, must outlive this
  explicit SheetLines(std::string_view text) : rest_(text) {}

  /// \return the next line, without a line feed and then a carriage return at its end; nothing at
  ///         the end of the text
  std::optional<std::string_view> Next();
  /// \return the number, from 1, of the line of the text that the last one came from, whole or a
  ///         part of it
  size_t Number() const { return number_; }

 private:
  std::string_view rest_;
  size_t number_ = 0;
  bool endsLine_ = true;  ///< the last one ended with a line feed
};

}  // namespace orvane
