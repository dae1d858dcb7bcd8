#include "entry/separated_table.h"

#include "base/utf8.h"

#include <algorithm>
#include <array>

namespace orvane {

namespace {

constexpr std::string_view LineEnds = "\r\n";
constexpr std::string_view Separators = "\t;,";

constexpr char32_t Replacement = 0xFFFD;
constexpr char32_t HighSurrogates = 0xD800;
constexpr char32_t LowSurrogates = 0xDC00;
constexpr char32_t AfterSurrogates = 0xE000;
constexpr char32_t FirstSupplementary = 0x10000;

void AppendUtf8(std::string& text, char32_t code) {
  const auto put = [&](char32_t byte) { text += static_cast<char>(byte); };
  const auto putContinuing = [&](unsigned shift) { put(0x80U | ((code >> shift) & 0x3FU)); };
  if (code < 0x80) {
    put(code);
  } else if (code < 0x800) {
    put(0xC0U | (code >> 6U));
    putContinuing(0);
  } else if (code < FirstSupplementary) {
    put(0xE0U | (code >> 12U));
    putContinuing(6);
    putContinuing(0);
  } else {
    put(0xF0U | (code >> 18U));
    putContinuing(12);
    putContinuing(6);
    putContinuing(0);
  }
}

/// Reads UTF-16 unit by unit.
class Utf16Reader {
 public:
  Utf16Reader(std::string_view bytes, bool isBigEndian)
      : bytes_(bytes), isBigEndian_(isBigEndian) {}

  std::string ReadAll() {
    std::string text;
    while (!bytes_.empty()) AppendUtf8(text, NextCode());
    return text;
  }

 private:
  char32_t Unit() const {
    const auto first = static_cast<unsigned char>(bytes_[0]);
    const auto second = static_cast<unsigned char>(bytes_[1]);
    return isBigEndian_ ? char32_t{first} << 8U | second : char32_t{second} << 8U | first;
  }

  char32_t NextCode() {
    if (bytes_.size() < 2) {
      bytes_ = {};
      return Replacement;
    }
    const char32_t unit = Unit();
    bytes_.remove_prefix(2);
    if (unit < HighSurrogates || unit >= AfterSurrogates) return unit;
    if (unit >= LowSurrogates || bytes_.size() < 2) return Replacement;
    const char32_t low = Unit();
    if (low < LowSurrogates || low >= AfterSurrogates) return Replacement;
    bytes_.remove_prefix(2);
    return FirstSupplementary + ((unit - HighSurrogates) << 10U) + (low - LowSurrogates);
  }

  std::string_view bytes_;
  bool isBigEndian_;
};

/// Puts U+FFFD in place of each byte that is not UTF-8.
std::string WithValidUtf8(std::string_view bytes) {
  if (IsValidUtf8(bytes)) return std::string(bytes);
  constexpr size_t LongestCharacter = 4;
  std::string text;
  while (!bytes.empty()) {
    size_t length = 1;
    while (length <= LongestCharacter && !IsValidUtf8(bytes.substr(0, length))) ++length;
    const bool isValid = length <= LongestCharacter;
    if (isValid) {
      text += bytes.substr(0, length);
    } else {
      AppendUtf8(text, Replacement);
    }
    bytes.remove_prefix(isValid ? length : 1);
  }
  return text;
}

size_t CountLineEnds(std::string_view text) {
  size_t count = 0;
  for (size_t i = 0; i < text.size(); ++i) {
    if (text[i] == '\r' || (text[i] == '\n' && (i == 0 || text[i - 1] != '\r'))) ++count;
  }
  return count;
}

bool IsIn(std::string_view set, char c) { return set.find(c) != std::string_view::npos; }

}  // namespace

std::string TableText(std::string bytes) {
  const std::string_view all = bytes;
  if (all.starts_with("\xFF\xFE")) return Utf16Reader(all.substr(2), false).ReadAll();
  if (all.starts_with("\xFE\xFF")) return Utf16Reader(all.substr(2), true).ReadAll();
  if (all.starts_with(Utf8Mark)) return WithValidUtf8(all.substr(Utf8Mark.size()));
  // A large table is not copied.
  if (IsValidUtf8(bytes)) return bytes;
  return ToUtf8(bytes);
}

bool TableRows::Next(TableRow& row) {
  if (rest_.empty()) return false;
  row.line = line_;
  size_t count = 0;
  const auto takeNext = [&] {
    if (count == row.cells.size()) row.cells.emplace_back();
    TakeCell(row.cells[count++]);
  };
  takeNext();
  while (!rest_.empty() && rest_.front() == separator_) {
    rest_.remove_prefix(1);
    takeNext();
  }
  row.cells.resize(count);
  TakeLineEnd();
  return true;
}

/// Removes a cell from the text, up to its separator or the end of the row.
void TableRows::TakeCell(std::string& cell) {
  const bool isQuoted = rest_.starts_with('"');
  if (isQuoted) TakeQuoted(cell);
  size_t end = 0;
  while (end < rest_.size() && rest_[end] != separator_ && rest_[end] != '\n' && rest_[end] != '\r')
    ++end;
  if (!isQuoted) cell.assign(rest_, 0, end);
  rest_.remove_prefix(end);
}

/// Removes a quoted cell, with both quotes.
void TableRows::TakeQuoted(std::string& cell) {
  cell.clear();
  rest_.remove_prefix(1);
  while (true) {
    const size_t end = std::min(rest_.find('"'), rest_.size());
    const std::string_view part = rest_.substr(0, end);
    cell += part;
    line_ += CountLineEnds(part);
    endsInQuote_ = end == rest_.size();
    rest_.remove_prefix(std::min(end + 1, rest_.size()));
    if (!rest_.starts_with('"')) return;
    cell += '"';
    rest_.remove_prefix(1);
  }
}

void TableRows::TakeLineEnd() {
  if (rest_.empty()) return;
  rest_.remove_prefix(rest_.starts_with("\r\n") ? 2 : 1);
  ++line_;
}

char SeparatorOf(std::string_view text) {
  text.remove_prefix(std::min(text.find_first_not_of(" \r\n"), text.size()));
  std::array<size_t, Separators.size()> counts{};
  bool isQuoted = false;
  bool beginsCell = true;
  for (const char c : text) {
    // A doubled quote within quotes closes and opens again.
    if (c == '"' && (beginsCell || isQuoted)) {
      isQuoted = !isQuoted;
      beginsCell = !isQuoted;
      continue;
    }
    if (isQuoted) continue;
    if (IsIn(LineEnds, c)) break;
    beginsCell = IsIn(Separators, c);
    if (beginsCell) ++counts[Separators.find(c)];
  }
  const auto most = std::max_element(counts.begin(), counts.end());
  return Separators[static_cast<size_t>(most - counts.begin())];
}

std::string_view SeparatorName(char separator) {
  static constexpr std::string_view Names[] = {"tabs", "semicolons", "commas"};
  return Names[std::min(Separators.find(separator), Separators.size() - 1)];
}

}  // namespace orvane
