#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace orvane {

/// Tools for 8-bit text. Case is folded only for the letters A to Z, so that a result depends
/// neither on the locale nor on the encoding of a text.

/// \return an upper-case ASCII letter in lower case; any other byte unchanged
constexpr char FoldByte(char c) {
  return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

/// \return `text` with every byte folded by `FoldByte`
std::string FoldedText(std::string_view text);

/// Folded comparison, the one by which all names are compared unless a function says "exactly".
/// \return negative, 0 or positive if `a` is before, equal to or after `b`, by bytes
int CompareNames(std::string_view a, std::string_view b);

/// As `CompareNames`, for the first `n` bytes of each text at most.
int CompareNamesN(std::string_view a, std::string_view b, size_t n);

/// \return true if the two texts are equal by `CompareNames`
bool SameName(std::string_view a, std::string_view b);

/// \return the first place of `sub` in `text`, folded; npos if there is none
size_t FindTextFolded(std::string_view text, std::string_view sub);

/// \return true for a name that begins with `_` or `@`: stored and matched, but not drawn
bool IsHiddenName(std::string_view name);

/// Compares a stored name with a typed one, which may omit the leading `_` and `@` of the stored
/// name.
/// \param text  the stored name
/// \param name  what was typed
/// \return 0 if they agree, else as `CompareNames` of the stripped `text` and `name`
int CompareHiddenName(std::string_view text, std::string_view name);

/// \return the first place in `text` of any byte of `set`; npos if there is none
size_t FindAnyOf(std::string_view text, std::string_view set);

/// Exactly, with regard to case.
/// \return the text after `prefix`, or nothing if `text` does not begin with it
std::optional<std::string_view> StartsWith(std::string_view prefix, std::string_view text);

/// Replaces each control character, U+0000 to U+001F and U+007F, by its code, such as "\x1B".
/// Invisible characters could otherwise control a terminal or look like the end of a line.
std::string EscapedControls(std::string_view text);

/// Appends a note to an old one, with one blank between them.
/// \param note  the old note; null for none, and then the result is `text`
std::string AppendNote(const std::optional<std::string>& note, std::string_view text);

}  // namespace orvane
