#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace orvane {

/// Tables as spreadsheet programs save them: a row a line, cells between separators, cells that
/// hold a separator or a line end in double quotes.

/// \return the text of a file in UTF-8, without a byte order mark: UTF-16 or UTF-8 by that mark;
///         without one UTF-8 if all of it is valid, else Latin-1. Bytes after a mark that are
///         not a character become U+FFFD.
std::string TableText(std::string bytes);

struct TableRow {
  std::vector<std::string> cells;  ///< at least one; not trimmed
  size_t line = 0;                 ///< of the text, where the row begins, from 1
};

/// Cuts a text into rows. A row ends at LF, CR or CR LF. A cell that begins with a double quote
/// runs to the next single one and may hold separators and line ends; a doubled quote in it is one
/// quote, what follows it up to the separator is skipped, and without a closing quote it takes in
/// the rest of the text.
class TableRows {
 public:
  /// \param text  not copied, must outlive this
  TableRows(std::string_view text, char separator) : rest_(text), separator_(separator) {}

  /// Reads the next row into `row`, whose memory is used again. \return false at the end of the text
  bool Next(TableRow& row);
  /// \return true if a cell of the row that was read last has a quote that is never closed
  bool EndsInQuote() const { return endsInQuote_; }

 private:
  void TakeCell(std::string& cell);
  void TakeQuoted(std::string& cell);
  void TakeLineEnd();

  std::string_view rest_;
  char separator_;
  size_t line_ = 1;
  bool endsInQuote_ = false;
};

/// \return the one of tab, semicolon and comma that the first row that is not empty has most of
///         outside quotes; of equals the first in this order
char SeparatorOf(std::string_view text);

/// \return the name of a separator in the plural: "tabs", "semicolons" or "commas"
std::string_view SeparatorName(char separator);

}  // namespace orvane
