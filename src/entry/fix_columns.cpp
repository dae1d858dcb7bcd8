#include "entry/fix_columns.h"

#include "base/number_text.h"
#include "base/text.h"

#include <algorithm>

namespace orvane {

namespace {

struct KnownField {
  std::string_view name;
  std::string_view captions;  ///< known ones, with blanks between; the first have precedence
};

const KnownField& Known(FixField field) {
  static constexpr KnownField Fields[FixFieldCount] = {
      {"time",
       "timestamp utcdatetime datetimeutc datetimegmt gmtdatetime gpsfixtime "
       "acquisitiontime fixtime datetime utctime timeutc timegmt gmttime gpstime "
       "time"},
      {"date", "utcdate dateutc dategmt gmtdate gpsdate date"},
      {"lat",
       "locationlat latitude lat gpslatitude latitudedeg latitudewgs84 latwgs84 "
       "decimallatitude y"},
      {"lon",
       "locationlong longitude long lon lng gpslongitude longitudedeg "
       "longitudewgs84 longwgs84 lonwgs84 decimallongitude x"},
      {"easting", "utmeasting easting gpsutmeasting utme utmx"},
      {"northing", "utmnorthing northing gpsutmnorthing utmn utmy"},
      {"zone", "utmzone gpsutmzone zone"},
      {"altitude",
       "heightabovemsl heightaboveellipsoid altitude altitudem alt altm elevation "
       "elevationm elev height heightm gpsaltitude mslaltitudem"},
      {"animal",
       "individuallocalidentifier individualid individual animalid animalname "
       "animal id name taglocalidentifier tagid collarid collar deviceid device"},
      {"species", "individualtaxoncanonicalname species taxon scientificname"},
      {"outlier", "manuallymarkedoutlier algorithmmarkedoutlier importmarkedoutlier outlier"},
  };
  return Fields[static_cast<size_t>(field)];
}
constexpr std::string_view VisibleCaption = "visible";

/// Appends the columns with that caption, from left to right.
void AppendColumns(const std::vector<std::string>& keys, std::string_view key,
                   std::vector<size_t>& columns) {
  for (size_t i = 0; i < keys.size(); ++i) {
    if (keys[i] == key) columns.push_back(i);
  }
}

std::vector<std::string> KeysOf(const std::vector<std::string>& captions) {
  std::vector<std::string> keys;
  keys.reserve(captions.size());
  for (const std::string& caption : captions) keys.push_back(CaptionKey(caption));
  return keys;
}

}  // namespace

std::string_view FixFieldName(FixField field) { return Known(field).name; }

std::optional<FixField> FindFixField(std::string_view name) {
  for (size_t i = 0; i < FixFieldCount; ++i) {
    const auto field = static_cast<FixField>(i);
    if (FixFieldName(field) == name) return field;
  }
  return std::nullopt;
}

std::string CaptionKey(std::string_view caption) {
  std::string key;
  for (const char c : caption) {
    const char folded = FoldByte(c);
    if (IsDigit(folded) || (folded >= 'a' && folded <= 'z')) key += folded;
  }
  return key.empty() ? std::string(caption) : key;
}

FixColumns FindFixColumns(const std::vector<std::string>& captions,
                          const std::vector<NamedFixColumn>& named) {
  const std::vector<std::string> keys = KeysOf(captions);
  FixColumns columns;
  for (size_t i = 0; i < FixFieldCount; ++i) {
    const auto field = static_cast<FixField>(i);
    bool isNamed = false;
    for (const NamedFixColumn& column : named) {
      if (column.field != field) continue;
      isNamed = true;
      AppendColumns(keys, CaptionKey(column.caption), columns.of[i]);
    }
    if (isNamed) continue;
    for (std::string_view rest = Known(field).captions; !rest.empty();) {
      const size_t end = std::min(rest.find(' '), rest.size());
      AppendColumns(keys, rest.substr(0, end), columns.of[i]);
      rest.remove_prefix(std::min(end + 1, rest.size()));
    }
    if (field == FixField::Outlier) AppendColumns(keys, VisibleCaption, columns.visible);
  }
  return columns;
}

bool HasTimeAndPosition(const FixColumns& columns) {
  const bool hasTime = columns.Has(FixField::Time) || columns.Has(FixField::Date);
  const bool hasDegrees = columns.Has(FixField::Lat) && columns.Has(FixField::Lon);
  const bool hasUtm = columns.Has(FixField::Easting) && columns.Has(FixField::Northing) &&
                      columns.Has(FixField::Zone);
  return hasTime && (hasDegrees || hasUtm);
}

bool HasCaption(const std::vector<std::string>& captions, const NamedFixColumn& column) {
  const std::string key = CaptionKey(column.caption);
  return std::any_of(captions.begin(), captions.end(),
                     [&](const std::string& caption) { return CaptionKey(caption) == key; });
}

}  // namespace orvane
