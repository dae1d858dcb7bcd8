#include "base/field_text.h"

#include <algorithm>

namespace orvane {

std::string FieldText(std::string_view text) {
  std::string field(text);
  std::replace_if(
      field.begin(), field.end(), [](char c) { return c == '\t' || c == '\r' || c == '\n'; }, ' ');
  return field;
}

}  // namespace orvane
