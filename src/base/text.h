#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace orvane {

/// Text tools for 8-bit text. Case is folded for the letters A to Z alone, so that a result
/// depends neither on the locale nor on how a text was encoded.

/// \return `c` with an upper-case ASCII letter made lower case; any other byte as it is
constexpr char FoldByte(char c) {
  return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

/// \return `text` with every byte folded by `FoldByte`
std::string FoldedText(std::string_view text);

/// Folded comparison, the one by which all names are compared unless a function says "exactly".
/// \return negative, 0 or positive as `a` stands before, equals or stands behind `b`, by bytes
int CompareNames(std::string_view a, std::string_view b);

/// As `CompareNames`, for at most the first `n` bytes of each text.
int CompareNamesN(std::string_view a, std::string_view b, size_t n);

/// \return true if the two texts are equal by `CompareNames`
bool SameName(std::string_view a, std::string_view b);

/// \return the first place of `sub` in `text`, folded; npos if there is none
size_t FindTextFolded(std::string_view text, std::string_view sub);

/// \return true for a name that begins with `_` or `@`: stored and matched, but not drawn
bool IsHiddenName(std::string_view name);

/// Compares a stored name with a typed one, where the leading `_` and `@` of the stored name may
/// be left out.
/// \param text  the stored name
/// \param name  what was typed
/// \return 0 if they agree, else as `CompareNames` of the stripped `text` and `name`
int CompareHiddenName(std::string_view text, std::string_view name);

/// \return the first place in `text` of any byte of `set`; npos if there is none
size_t FindAnyOf(std::string_view text, std::string_view set);

/// Exactly, with regard to case.
/// \return the text behind `prefix`, or nothing if `text` does not begin with it
std::optional<std::string_view> StartsWith(std::string_view prefix, std::string_view text);

/// Case-sensitive glob: `*` any run, `?` any byte, `[a-z]` a set with ranges, `[^...]` its
/// complement; a `]` directly behind `^` belongs to the set. Takes at most the length of the
/// text times that of the pattern.
/// \return true if the whole of `text` fits `pattern`; an unclosed set fits nothing
bool MatchGlob(std::string_view pattern, std::string_view text);

/// Replaces each control character, U+0000 to U+001F and U+007F, by its code as "\x1B". What is not
/// seen could otherwise change a terminal, or pass for the end of a line.
std::string EscapedControls(std::string_view text);

/// Adds a further note behind an old one, with one blank between them.
/// \param note  the old note; null for none, and then `text` alone is the result
std::string AppendNote(const std::optional<std::string>& note, std::string_view text);

}  // namespace orvane
