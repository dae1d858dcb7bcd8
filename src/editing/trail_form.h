#pragma once

#include "model/records.h"

#include <array>
#include <string>
#include <string_view>

namespace orvane {

/// The fields above the table of the trail editor.
enum class TrailField { Type, Date, Focal, Name, LineColor, Size, Width };
constexpr size_t TrailFields = 7;
/// The fields of the identity.
inline constexpr std::array IdentityFields = {TrailField::Type, TrailField::Name, TrailField::Focal,
                                              TrailField::Date};
bool IsIdentity(TrailField field);

/// Bytes that the fields of a name, type, date, focal animal or range take; the rest is dropped.
constexpr size_t MostFieldBytes = 29;

/// What the form of the trail editor holds, and which of its fields can be typed in. A trail is
/// known by a name or else by type, date and focal animal, so those fields exclude each other.
class TrailForm {
 public:
  /// The form of a new trail.
  TrailForm();
  /// The form of an existing trail, whose identity can't be typed over. A longer identity is shown
  /// cut.
  explicit TrailForm(const Trail& trail);

  const std::string& Text(TrailField field) const { return At(field).text; }
  bool IsEnabled(TrailField field) const { return At(field).enabled; }

  /// A text was typed; a field of the identity takes its first `MostFieldBytes`. A tab or line end
  /// that was pasted becomes a blank. Enables and disables the fields that it rules; a focal animal sets the size to 1.
  void SetText(TrailField field, std::string_view text);

 private:
  struct Field {
    std::string text;
    bool enabled = true;
  };
  const Field& At(TrailField field) const { return fields_[static_cast<size_t>(field)]; }
  Field& At(TrailField field) { return fields_[static_cast<size_t>(field)]; }
  void Enable(TrailField field, bool enabled) { At(field).enabled = enabled; }
  void ApplyRules();

  std::array<Field, TrailFields> fields_;
  bool isNew_ = true;
  // What the rules found when they were applied last.
  bool hadType_ = false;
  bool hadName_ = false;
  bool hadDate_ = false;
  bool hadFocal_ = false;
};

/// A colour in a field: its name, or "#rrggbb" if it has none; empty for no colour.
std::string ColorFieldText(Color color);

}  // namespace orvane
