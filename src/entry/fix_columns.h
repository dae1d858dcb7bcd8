#pragma once

#include <array>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace orvane {

/// Which columns of a table of fixes mean what, by their captions.

/// What an import of fixes reads.
enum class FixField {
  Time,
  Date,
  Lat,
  Lon,
  Easting,
  Northing,
  Zone,
  Altitude,
  Animal,
  Species,
  Outlier
};
constexpr size_t FixFieldCount = 11;

/// \return the word for a field: "time", "lat" ...
std::string_view FixFieldName(FixField field);
/// \return the field of a word, exactly; nothing for any other word
std::optional<FixField> FindFixField(std::string_view name);

/// A column that the user has named for a field.
struct NamedFixColumn {
  FixField field = FixField::Time;
  std::string caption;
};

/// \return what counts when captions are compared: the ASCII letters and digits of a caption, in
///         lower case; all of a caption that has none
std::string CaptionKey(std::string_view caption);

/// The columns of each field, counted from 0; that whose value comes first has precedence.
struct FixColumns {
  std::array<std::vector<size_t>, FixFieldCount> of;
  std::vector<size_t> visible;  ///< say the opposite of an outlier

  const std::vector<size_t>& Of(FixField field) const { return of[static_cast<size_t>(field)]; }
  /// \return true if there is a column for it
  bool Has(FixField field) const { return !Of(field).empty(); }
};

/// Assigns columns to fields. A field with named columns has only these, in their order; any other
/// has those whose captions are known for it.
/// \param captions  the cells of the heading row, trimmed
FixColumns FindFixColumns(const std::vector<std::string>& captions,
                          const std::vector<NamedFixColumn>& named);

/// \return true if there are columns for a time and for a position
bool HasTimeAndPosition(const FixColumns& columns);

/// \return true if one of the captions is that of the column
bool HasCaption(const std::vector<std::string>& captions, const NamedFixColumn& column);

}  // namespace orvane
