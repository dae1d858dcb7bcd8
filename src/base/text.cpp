#include "base/text.h"

#include <algorithm>

namespace orvane {

namespace {

bool IsHidingMark(char c) { return c == '_' || c == '@'; }

unsigned char AsByte(char c) { return static_cast<unsigned char>(c); }

/// One set of a glob, from its opening bracket.
struct GlobSet {
  bool closed = false;   ///< false if the pattern ends inside the set
  bool matches = false;  ///< the byte belongs to the set, or to its complement with `^`
  size_t length = 0;     ///< length of the set in the pattern, with both brackets
};

GlobSet MatchSet(std::string_view pattern, char c) {
  GlobSet set;
  size_t at = 1;
  const bool complement = at < pattern.size() && pattern[at] == '^';
  if (complement) ++at;
  const size_t afterMark = complement ? at : pattern.npos;
  bool found = false;
  for (; at < pattern.size(); ++at) {
    if (pattern[at] == ']' && at != afterMark) {
      set.closed = true;
      set.matches = found != complement;
      set.length = at + 1;
      return set;
    }
    const char first = pattern[at];
    char last = first;
    if (at + 2 < pattern.size() && pattern[at + 1] == '-' && pattern[at + 2] != ']') {
      last = pattern[at + 2];
      at += 2;
    }
    found = found || (AsByte(first) <= AsByte(c) && AsByte(c) <= AsByte(last));
  }
  return set;
}

/// \return the length of the part of the pattern that matches `c`; 0 if the pattern does not match
///         it
size_t MatchOneByte(std::string_view pattern, char c) {
  if (pattern.empty()) return 0;
  if (pattern.front() == '?') return 1;
  if (pattern.front() == '[') {
    const GlobSet set = MatchSet(pattern, c);
    return set.closed && set.matches ? set.length : 0;
  }
  return pattern.front() == c ? 1 : 0;
}

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

// After a mismatch only the last star needs to be tried again, with one byte more: any text that an
// earlier star could match instead, the last one can match as well.
bool MatchGlob(std::string_view pattern, std::string_view text) {
  size_t p = 0;
  size_t t = 0;
  size_t afterStar = std::string_view::npos;
  size_t starTakesTo = 0;
  while (t < text.size()) {
    if (p < pattern.size() && pattern[p] == '*') {
      afterStar = ++p;
      starTakesTo = t;
      continue;
    }
    const size_t used = MatchOneByte(pattern.substr(p), text[t]);
    if (used > 0) {
      p += used;
      ++t;
    } else if (afterStar != std::string_view::npos) {
      p = afterStar;
      t = ++starTakesTo;
    } else {
      return false;
    }
  }
  while (p < pattern.size() && pattern[p] == '*') ++p;
  return p == pattern.size();
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
