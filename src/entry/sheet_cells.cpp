#include "entry/sheet_cells.h"

#include "base/number_text.h"
#include "base/text.h"

#include <algorithm>

namespace orvane {

namespace {

constexpr int LettersOfAlphabet = 26;

std::string_view WithoutBlanksInFront(std::string_view text) {
  return text.substr(std::min(text.find_first_not_of(' '), text.size()));
}

/// The text between the tabs.
std::string_view RawCell(std::string_view row, int column) {
  for (; column > 0; --column) {
    const size_t tab = row.find('\t');
    if (tab == std::string_view::npos) return {};
    row.remove_prefix(tab + 1);
  }
  return row.substr(0, row.find('\t'));
}

bool IsQuoted(std::string_view cell) {
  return cell.size() >= 2 && cell.front() == '"' && cell.back() == '"';
}

std::string_view WithoutQuotes(std::string_view cell) { return cell.substr(1, cell.size() - 2); }

/// Checks the minutes after the colon and the text after them.
bool ValidMinutes(std::string_view text) {
  constexpr long MostMinutes = 60;
  constexpr size_t MarkLength = 2;
  const IntegerPrefix minutes = ReadInteger(text);
  std::string_view rest = text.substr(minutes.length);
  // Digits that are left make a number too large to be read.
  if (minutes.length == 0 && !rest.empty() && IsDigit(rest.front())) return false;
  if (minutes.value > MostMinutes) return false;
  rest = WithoutBlanksInFront(rest);
  const std::string_view mark = rest.substr(0, MarkLength);
  if (SameName(mark, "am") || SameName(mark, "pm")) rest.remove_prefix(MarkLength);
  return rest.empty() || minutes.value >= 0;
}

}  // namespace

int ParseColumnRef(std::string_view text) {
  if (text.empty()) return ColumnBlank;
  size_t length = 0;
  int column = ReadInt32(text, &length);
  if (length < text.size()) {
    text = WithoutBlanksInFront(text);
    int number = 0;
    for (const char c : text) {
      const char letter = FoldByte(c);
      if (letter < 'a' || letter > 'z' || number > MostColumns) return ColumnMalformed;
      number = number * LettersOfAlphabet + (letter - 'a' + 1);
    }
    column = number - 1;
  }
  return column < 0 || column >= MostColumns ? ColumnMalformed : column;
}

std::string_view ColumnText(std::string_view row, int column) {
  std::string_view cell = RawCell(row, column);
  if (IsQuoted(cell)) return WithoutQuotes(cell);
  if (!cell.empty() && cell.back() == ' ') cell.remove_suffix(1);
  return cell;
}

int ColumnNumber(std::string_view row, int column) {
  std::string_view cell = RawCell(row, column);
  if (IsQuoted(cell)) cell = WithoutQuotes(cell);
  size_t length = 0;
  const int number = ReadInt32(cell, &length);
  return length == cell.size() ? number : 0;
}

bool ValidTimeText(std::string_view text) {
  constexpr long LastTime = 2400;
  constexpr long LastMinute = 59;
  constexpr long LastHour = 24;
  if (text.empty()) return false;
  const IntegerPrefix number = ReadInteger(text);
  if (number.length == text.size()) {
    return number.value >= 0 && number.value <= LastTime && number.value % 100 <= LastMinute;
  }
  if (text[number.length] != ':' || number.value < 0 || number.value > LastHour) return false;
  return ValidMinutes(text.substr(number.length + 1));
}

std::optional<std::string_view> SheetLines::Next() {
  if (rest_.empty()) return std::nullopt;
  std::string_view line = rest_.substr(0, LongestLine);
  if (const size_t end = line.find('\n'); end != std::string_view::npos) {
    line = line.substr(0, end + 1);
  }
  rest_.remove_prefix(line.size());
  if (endsLine_) ++number_;
  endsLine_ = line.back() == '\n';
  if (endsLine_) line.remove_suffix(1);
  if (!line.empty() && line.back() == '\r') line.remove_suffix(1);
  return line;
}

}  // namespace orvane
