#include "geo/utm.h"

#include "base/number_text.h"
#include "base/text.h"

#include <GeographicLib/Constants.hpp>
#include <GeographicLib/MGRS.hpp>
#include <GeographicLib/TransverseMercator.hpp>
#include <GeographicLib/UTMUPS.hpp>
#include <algorithm>
#include <cmath>

namespace orvane {

namespace {

/// The bands from 80 S to 84 N, 8 degrees each but the last, which has 12.
constexpr std::string_view Bands = "CDEFGHJKLMNPQRSTUVWX";
constexpr double SouthernEnd = -80;
constexpr double NorthernEnd = 84;
constexpr double BandHeight = 8;

constexpr int LastZone = 60;
constexpr double FalseEasting = 500000;
constexpr double FalseNorthing = 10000000;

/// The northings, in metres, at which the letter S means its band.
constexpr double LeastNorthingOfBandS = 3500000;
constexpr double LargestNorthingOfBandS = 4500000;

char Upper(char letter) {
  return letter >= 'a' && letter <= 'z' ? static_cast<char>(letter - 'a' + 'A') : letter;
}

bool IsLetter(char c) { return FoldByte(c) >= 'a' && FoldByte(c) <= 'z'; }

double CentralMeridian(int zone) { return 6.0 * zone - 183; }

char BandOf(double lat) {
  const double band = std::floor((lat - SouthernEnd) / BandHeight);
  return Bands[static_cast<size_t>(std::clamp(band, 0.0, double{Bands.size() - 1}))];
}

/// Reads the parts of a text one after the other. Past the end every byte is 0.
class PartReader {
 public:
  explicit PartReader(std::string_view text) : text_(text) {}

  char Next() const { return at_ < text_.size() ? text_[at_] : '\0'; }
  bool AtEnd() const { return at_ == text_.size(); }
  void SkipSpace() {
    while (IsSpace(Next())) ++at_;
  }
  /// \return the next letter, or 0
  char Letter() {
    if (!IsLetter(Next())) return '\0';
    return text_[at_++];
  }
  std::string_view Digits() {
    const size_t begin = at_;
    while (IsDigit(Next())) ++at_;
    return text_.substr(begin, at_ - begin);
  }
  /// Decimal digits with an optional point between or after them.
  std::optional<double> Meters() {
    const size_t begin = at_;
    if (Digits().empty()) return std::nullopt;
    if (Next() == '.') {
      ++at_;
      Digits();
    }
    return ReadReal(text_.substr(begin, at_ - begin)).value;
  }
  /// White space, with at most one comma in it. \return true if there was any
  bool StepOverSeparator() {
    const size_t begin = at_;
    SkipSpace();
    if (Next() == ',') ++at_;
    SkipSpace();
    return at_ > begin;
  }

 private:
  std::string_view text_;
  size_t at_ = 0;
};

/// What comes after the letter of a zone: "501234 9876543".
std::optional<LatLon> ReadMeters(PartReader& reader, int zone, char letter) {
  const auto easting = reader.Meters();
  if (!easting || !reader.StepOverSeparator()) return std::nullopt;
  const auto northing = reader.Meters();
  if (!northing) return std::nullopt;
  const auto northern = IsUtmNorthern(letter, *northing);
  if (!northern) return std::nullopt;
  reader.SkipSpace();
  if (!reader.AtEnd()) return std::nullopt;
  const auto place = UtmToPosition(zone, *northern, *easting, *northing);
  // At its ends UTM is read back within the metre to which it is written.
  constexpr double MeterOfLatitude = 1e-5;
  const bool isCovered = place && place->lat >= SouthernEnd - MeterOfLatitude &&
                         place->lat <= NorthernEnd + MeterOfLatitude;
  return isCovered ? place : std::nullopt;
}

/// What comes after the letter of a zone: "TV1234567890".
std::optional<LatLon> ReadSquare(PartReader& reader, int zone, char letter) {
  std::string name = std::to_string(zone) + Upper(letter);
  name += Upper(reader.Letter());
  const char row = reader.Letter();
  if (row == '\0') return std::nullopt;
  name += Upper(row);
  reader.SkipSpace();
  const std::string_view east = reader.Digits();
  reader.SkipSpace();
  const std::string_view north = reader.Digits();
  reader.SkipSpace();
  if (!reader.AtEnd()) return std::nullopt;
  const size_t digits = east.size() + north.size();
  constexpr size_t MostDigits = 10;
  if (digits < 2 || digits > MostDigits || digits % 2 != 0) return std::nullopt;
  if (!north.empty() && north.size() != east.size()) return std::nullopt;
  name.append(east).append(north);
  try {
    int readZone = 0;
    int precision = 0;
    bool northern = false;
    double easting = 0;
    double northing = 0;
    GeographicLib::MGRS::Reverse(name, readZone, northern, easting, northing, precision);
    return UtmToPosition(readZone, northern, easting, northing);
  } catch (const GeographicLib::GeographicErr&) {
    return std::nullopt;
  }
}

}  // namespace

std::optional<bool> IsUtmNorthern(char letter, double northing) {
  const size_t band = Bands.find(Upper(letter));
  if (band == std::string_view::npos) return std::nullopt;
  if (Bands[band] == 'S') {
    return northing >= LeastNorthingOfBandS && northing <= LargestNorthingOfBandS;
  }
  return Bands[band] >= 'N';
}

std::optional<LatLon> UtmToPosition(int zone, bool northern, double easting, double northing) {
  if (zone < 1 || zone > LastZone) return std::nullopt;
  // Written so that a value that is not a number is refused as well.
  if (!(easting >= LeastUtmEasting && easting <= LargestUtmEasting)) return std::nullopt;
  if (!(northing >= 0 && northing <= LargestUtmNorthing)) return std::nullopt;
  LatLon place;
  GeographicLib::TransverseMercator::UTM().Reverse(CentralMeridian(zone), easting - FalseEasting,
                                                   northing - (northern ? 0 : FalseNorthing),
                                                   place.lat, place.lon);
  return place;
}

std::optional<UtmPlace> PositionToUtm(const LatLon& place) {
  if (!std::isfinite(place.lon)) return std::nullopt;
  if (!(place.lat >= SouthernEnd && place.lat <= NorthernEnd)) return std::nullopt;
  UtmPlace utm;
  utm.zone = GeographicLib::UTMUPS::StandardZone(
      std::min(place.lat, std::nextafter(NorthernEnd, 0)), place.lon, GeographicLib::UTMUPS::UTM);
  utm.band = BandOf(place.lat);
  GeographicLib::TransverseMercator::UTM().Forward(CentralMeridian(utm.zone), place.lat, place.lon,
                                                   utm.easting, utm.northing);
  utm.easting += FalseEasting;
  if (place.lat < 0) utm.northing += FalseNorthing;
  return utm;
}

std::optional<std::string> FormatUtm(const LatLon& place) {
  const auto utm = PositionToUtm(place);
  if (!utm) return std::nullopt;
  return std::to_string(utm->zone) + utm->band + ' ' + FormatFixed(utm->easting, 0) + ' ' +
         FormatFixed(utm->northing, 0);
}

std::optional<LatLon> ParseUtm(std::string_view text) {
  PartReader reader(text);
  reader.SkipSpace();
  const std::string_view digits = reader.Digits();
  if (digits.empty() || digits.size() > 2) return std::nullopt;
  const int zone = ReadInt32(digits);
  reader.SkipSpace();
  const char letter = reader.Letter();
  if (letter == '\0') return std::nullopt;
  reader.SkipSpace();
  return IsLetter(reader.Next()) ? ReadSquare(reader, zone, letter)
                                 : ReadMeters(reader, zone, letter);
}

}  // namespace orvane
