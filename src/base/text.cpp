#include "base/text.h"

#include <algorithm>

namespace orvane {

namespace {

bool IsHidingMark(char c) { return c == '_' || c == '@'; }

unsigned char AsByte(char c) { return static_cast<unsigned char>(c); }

}  // namespace

std::string FoldedText(std::string_view text) {
  std::string folded(text);
  std::transform(folded.begin(), folded.end(), folded.begin(), FoldByte);
  return folded;
}

int CompareNames(std::string_view a, std::string_view b) {
  const size_t shared = std::min(a.size(), b.size());
  for (size_t i = 0; i < shared; ++i) {
    const int difference = AsByte(FoldByte(a[i])) - AsByte(FoldByte(b[i]));
    if (difference != 0) return difference;
  }
  if (a.size() == b.size()) return 0;
  return a.size() < b.size() ? -1 : 1;
}

int CompareNamesN(std::string_view a, std::string_view b, size_t n) {
  return CompareNames(a.substr(0, n), b.substr(0, n));
}

bool SameName(std::string_view a, std::string_view b) {
  return a.size() == b.size() && CompareNames(a, b) == 0;
}

size_t FindTextFolded(std::string_view text, std::string_view sub) {
  const auto found = std::search(text.begin(), text.end(), sub.begin(), sub.end(),
                                 [](char a, char b) { return FoldByte(a) == FoldByte(b); });
  // An empty `sub` is at the front of any text, also of an empty one.
  if (found == text.end() && !sub.empty()) return std::string_view::npos;
  return static_cast<size_t>(found - text.begin());
}

bool IsHiddenName(std::string_view name) { return !name.empty() && IsHidingMark(name.front()); }

int CompareHiddenName(std::string_view text, std::string_view name) {
  size_t marks = 0;
  while (marks < text.size() && IsHidingMark(text[marks])) ++marks;
  // A typed name can have some of the marks. Names agree only if they have the same length, so
  // there is just one number of marks to try.
  if (text.size() >= name.size()) {
    const size_t leftOut = text.size() - name.size();
    if (leftOut <= marks && SameName(text.substr(leftOut), name)) return 0;
  }
  return CompareNames(text.substr(marks), name);
}

size_t FindAnyOf(std::string_view text, std::string_view set) { return text.find_first_of(set); }

std::optional<std::string_view> StartsWith(std::string_view prefix, std::string_view text) {
  if (!text.starts_with(prefix)) return std::nullopt;
  return text.substr(prefix.size());
}

std::string EscapedControls(std::string_view text) {
  constexpr std::string_view Digits = "0123456789ABCDEF";
  constexpr unsigned char Blank = 0x20;
  constexpr unsigned char Delete = 0x7F;
  std::string escaped;
  for (const char c : text) {
    const unsigned char byte = AsByte(c);
    if (byte >= Blank && byte != Delete) {
      escaped += c;
      continue;
    }
    escaped += "\\x";
    escaped += Digits[byte >> 4U];
    escaped += Digits[byte & 0xFU];
  }
  return escaped;
}

std::string AppendNote(const std::optional<std::string>& note, std::string_view text) {
  if (!note) return std::string(text);
  std::string both = *note;
  both += ' ';
  both += text;
  return both;
}

}  // namespace orvane
