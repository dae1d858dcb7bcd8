#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace orvane {

struct Map;

/// Keeps the preferences from one run to the next.
class PreferencesKeeper {
 public:
  virtual ~PreferencesKeeper() = default;
  /// \return the map to open; empty for none
  virtual std::string Read() = 0;
  virtual void Write() = 0;
};

/// Keeps recovery copies of changed maps.
class CopyKeeper {
 public:
  virtual ~CopyKeeper() = default;
  /// If earlier runs left copies, asks what to do with them.
  /// \return the recovered maps, which have no windows yet; nothing if the user wants to end the
  ///         program, and all copies are kept
  virtual std::optional<std::vector<Map*>> OfferCopies() = 0;
  /// Writes a copy of each map with changes that no copy holds yet, due or not: the program is about
  /// to end, or memory has run out. Skips what can't be written.
  virtual void WriteAll() = 0;
};

/// Both. Either may be null: the program then keeps nothing of the kind.
struct Keepers {
  std::unique_ptr<PreferencesKeeper> preferences;
  std::unique_ptr<CopyKeeper> copies;
};

}  // namespace orvane
