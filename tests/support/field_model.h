#pragma once

#include "support/temporary_folder.h"

#include <bit>
#include <cstdint>
#include <string>
#include <string_view>

namespace orvane {

/// Writes models of the magnetic field as small as they can be: a dipole, in the format that
/// GeographicLib reads.
class FieldModelWriter {
 public:
  /// \param north  nT at the equator
  /// \param east   nT at the equator in longitude 0
  /// \param turn   nT a year by which the east part grows from the first year on
  static void Write(const TemporaryFolder& folder, const std::string& name, int firstYear,
                    int lastYear, double north, double east, double turn = 0) {
    folder.Write(name + ".wmm", "WMMF-1\nName " + name + "\nDescription Dipole\nRadius 6371200\n" +
                                    "NumModels 1\nEpoch " + std::to_string(firstYear) +
                                    "\nDeltaEpoch 5\nMinTime " + std::to_string(firstYear) +
                                    "\nMaxTime " + std::to_string(lastYear) +
                                    "\nMinHeight -1000\nMaxHeight 600000\nID DIPOLE00\n");
    std::string file = "DIPOLE00";
    AddTerms(file, -north, -east);
    AddTerms(file, 0, -turn);
    folder.Write(name + ".wmm.cof", file);
  }

 private:
  template <typename Value>
  static void AddBytes(std::string& file, Value value) {
    for (size_t i = 0; i < sizeof value; ++i) {
      file += static_cast<char>(static_cast<unsigned char>(value >> (8 * i)));
    }
  }
  static void AddReal(std::string& file, double value) {
    AddBytes(file, std::bit_cast<std::uint64_t>(value));
  }
  /// Terms to degree 1: C00, C10, C11, S11.
  static void AddTerms(std::string& file, double axial, double acrossEast) {
    AddBytes(file, std::uint32_t{1});
    AddBytes(file, std::uint32_t{1});
    for (const double term : {0.0, axial, 0.0, acrossEast}) AddReal(file, term);
  }
};

}  // namespace orvane
