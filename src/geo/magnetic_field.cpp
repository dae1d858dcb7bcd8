#include "geo/magnetic_field.h"

#include <GeographicLib/MagneticModel.hpp>
#include <algorithm>
#include <cmath>
#include <exception>
#include <filesystem>
#include <system_error>
#include <vector>

namespace orvane {

namespace {

/// A date as a year with a fraction. The months count as equally long, which is exact enough for a
/// field that turns by minutes of arc in a year.
double YearOf(PackedDate date) {
  constexpr double Months = 12;
  constexpr double DaysOfMonth = 31;
  const DateParts parts = UnpackDate(date);
  return parts.year + (parts.month - 1 + (parts.day - 1) / DaysOfMonth) / Months;
}

/// The names of the models in a folder: the default one first, the others in their order.
std::vector<std::string> ModelsIn(const std::string& folder) {
  std::vector<std::string> names;
  std::error_code error;
  std::filesystem::directory_iterator file(folder, error);
  for (; !error && file != std::filesystem::directory_iterator(); file.increment(error)) {
    if (file->path().extension() == ".wmm") names.push_back(file->path().stem().string());
  }
  std::sort(names.begin(), names.end());
  const auto byDefault =
      std::find(names.begin(), names.end(), GeographicLib::MagneticModel::DefaultMagneticName());
  if (byDefault != names.end()) std::rotate(names.begin(), byDefault, byDefault + 1);
  return names;
}

/// \return nothing if the model can't be read or does not cover the year
std::optional<double> AskModel(const std::string& name, const std::string& folder, double year,
                               const LatLon& place) {
  try {
    const GeographicLib::MagneticModel model(name, folder);
    if (!(year >= model.MinTime() && year <= model.MaxTime())) return std::nullopt;
    double east = 0;
    double north = 0;
    double up = 0;
    model(year, place.lat, place.lon, 0, east, north, up);
    double horizontal = 0;
    double total = 0;
    double declination = 0;
    double inclination = 0;
    GeographicLib::MagneticModel::FieldComponents(east, north, up, horizontal, total, declination,
                                                  inclination);
    if (!std::isfinite(declination)) return std::nullopt;
    return declination;
  } catch (const std::exception&) {  // a damaged file also makes the library run out of memory
    return std::nullopt;
  }
}

}  // namespace

std::string FieldModelFolder() { return GeographicLib::MagneticModel::DefaultMagneticPath(); }

std::optional<FieldDeclination> DeclinationAt(const LatLon& place, PackedDate date,
                                              const std::string& folder) {
  if (!std::isfinite(place.lat) || !std::isfinite(place.lon)) return std::nullopt;
  for (std::string& name : ModelsIn(folder)) {
    const auto degrees = AskModel(name, folder, YearOf(date), place);
    if (degrees) return FieldDeclination{*degrees, std::move(name)};
  }
  return std::nullopt;
}

}  // namespace orvane
