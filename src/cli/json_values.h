#pragma once

#include <nlohmann/json.hpp>
#include <optional>

namespace orvane {

/// \return the value, or null if there is none
template <typename Value>
nlohmann::ordered_json ValueOrNull(const std::optional<Value>& value) {
  return value ? nlohmann::ordered_json(*value) : nlohmann::ordered_json(nullptr);
}

}  // namespace orvane
