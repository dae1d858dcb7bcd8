#include "editing/trail_form.h"

#include "base/field_text.h"
#include "base/number_text.h"
#include "base/utf8.h"

#include <algorithm>

namespace orvane {

bool IsIdentity(TrailField field) {
  return std::find(IdentityFields.begin(), IdentityFields.end(), field) != IdentityFields.end();
}

std::string ColorFieldText(Color color) {
  if (color == NoColor) return {};
  if (const char* name = ColorName(color)) return name;
  constexpr char Digits[] = "0123456789abcdef";
  std::string text = "#";
  for (int shift = 20; shift >= 0; shift -= 4) text += Digits[(color >> shift) & 15];
  return text;
}

TrailForm::TrailForm() {
  At(TrailField::Size).text = "1";
  ApplyRules();
}

TrailForm::TrailForm(const Trail& trail) : isNew_(false) {
  At(TrailField::Type).text = trail.type;
  At(TrailField::Name).text = trail.name.value_or("");
  At(TrailField::Focal).text = trail.focalAnimal.value_or("");
  At(TrailField::Date).text = FormatDate(trail.date);
  for (const TrailField field : IdentityFields) {
    At(field).text = std::string(CutText(At(field).text, MostFieldBytes));
    Enable(field, false);
  }
  At(TrailField::LineColor).text = ColorFieldText(trail.color);
  At(TrailField::Size).text = std::to_string(trail.groupSize);
  if (trail.width != 0) At(TrailField::Width).text = FormatGeneral(trail.width);
}

void TrailForm::SetText(TrailField field, std::string_view text) {
  const std::string typed = FieldText(text);
  At(field).text = IsIdentity(field) ? std::string(CutText(typed, MostFieldBytes)) : typed;
  if (isNew_ && IsIdentity(field)) ApplyRules();
}

void TrailForm::ApplyRules() {
  const auto isGiven = [this](TrailField field) { return !Text(field).empty(); };
  const auto enableIdentity = [this](bool enabled) {
    for (const TrailField field : {TrailField::Name, TrailField::Date, TrailField::Focal}) {
      Enable(field, enabled);
    }
  };
  if (!isGiven(TrailField::Type)) {
    enableIdentity(false);
    hadType_ = false;
    return;
  }
  if (!hadType_) {
    hadType_ = true;
    enableIdentity(true);
    hadName_ = false;
    hadDate_ = false;
  }
  if (isGiven(TrailField::Name)) {
    Enable(TrailField::Date, false);
    Enable(TrailField::Focal, false);
    Enable(TrailField::Size, false);
  } else if (hadName_) {
    Enable(TrailField::Date, true);
    Enable(TrailField::Focal, true);
    if (!isGiven(TrailField::Focal)) Enable(TrailField::Size, true);
  }
  hadName_ = isGiven(TrailField::Name);
  if (isGiven(TrailField::Date)) {
    Enable(TrailField::Name, false);
  } else if (hadDate_) {
    Enable(TrailField::Name, true);
  }
  hadDate_ = isGiven(TrailField::Date);
  if (isGiven(TrailField::Focal)) {
    At(TrailField::Size).text = "1";
    Enable(TrailField::Size, false);
  } else if (hadFocal_) {
    Enable(TrailField::Size, true);
  }
  hadFocal_ = isGiven(TrailField::Focal);
}

}  // namespace orvane
