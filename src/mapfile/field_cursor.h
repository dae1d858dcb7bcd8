#pragma once

#include "base/number_text.h"

#include <string_view>

namespace orvane {

/// Walks over the tab-separated fields of one line. The cursor is at a byte, a tab or the end; no
/// number is read past the end of its field.
class FieldCursor {
 public:
  explicit FieldCursor(std::string_view text) : rest_(text) {}

  bool AtEnd() const { return rest_.empty(); }
  /// True at a tab and at the end of the line: nothing is left of this field.
  bool AtFieldEnd() const { return rest_.empty() || rest_.front() == '\t'; }
  bool At(char c) const { return !rest_.empty() && rest_.front() == c; }
  bool AtDigit() const { return !rest_.empty() && IsDigit(rest_.front()); }
  /// The byte here; NUL at the end.
  char Peek() const { return rest_.empty() ? '\0' : rest_.front(); }

  /// All that is left of the line.
  std::string_view Rest() const { return rest_; }
  /// What is left of this field.
  std::string_view Field() const { return rest_.substr(0, rest_.find('\t')); }

  void Skip(size_t bytes) { rest_.remove_prefix(bytes < rest_.size() ? bytes : rest_.size()); }
  /// Skips `c` if it is here. \return true if it did
  bool SkipByte(char c) {
    if (!At(c)) return false;
    rest_.remove_prefix(1);
    return true;
  }
  /// Skips a byte of `set` if one is here. \return true if it did
  bool SkipAnyOf(std::string_view set) {
    if (rest_.empty() || set.find(rest_.front()) == std::string_view::npos) return false;
    rest_.remove_prefix(1);
    return true;
  }
  void SkipTab() { SkipByte('\t'); }
  /// Goes to the end of this field, before its tab.
  void SkipField() { Skip(Field().size()); }

  /// \return what is left of this field; the cursor is then at its end
  std::string_view TakeField() {
    const std::string_view field = Field();
    Skip(field.size());
    return field;
  }
  /// \return the real number here, 0 if there is none
  double TakeReal() {
    const RealPrefix read = ReadReal(Field());
    Skip(read.length);
    return read.value;
  }
  /// \return the whole number here, 0 if there is none
  int TakeInteger() {
    size_t length = 0;
    const int value = ReadInt32(Field(), &length);
    Skip(length);
    return value;
  }

 private:
  std::string_view rest_;
};

}  // namespace orvane
