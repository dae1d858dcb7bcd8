#include "editing/trail_columns.h"

#include <array>

namespace orvane {
namespace {

/// A column of all three sets. A width of 0: the set does not have it.
struct ColumnInfo {
  const char* title;
  const char* relativeTitle;
  const char* hint;
  int mixtureWidth;
  int gpsWidth;
  int relativeWidth;
  const char* widest = "";  ///< shows whole in the first width
};

// The byte 0xB0 is the degree sign of old maps. The hint on bearings has the byte 0xA1.
constexpr std::array<ColumnInfo, ColumnFirstSm> FixedColumns = {{
    {"Name/Time", "Name/Time",
     "You should enter either a name\n(as in A100, or Fianaransoa)\nor a time (as 14:34)\n"
     "in this field. If you\nare tracking animals,\nenter the time they\narrived at this site",
     70, 70, 70},
    {"Lat", "Lat",
     "Enter a Latitude.\nIt may look like:\n S21.25\xB0  or\n S21\xB0 15.720'  or\n"
     " S21\xB0 15' 43.2\"\n(the degree, minute and\nsecond signs are not\nrequired. Spaces are.\n"
     "You may not specify both\na compass bearing and a\nGPS reading.",
     70, 70, 0, "S89\xB0 59.999'"},
    {"Lon", "Lon",
     "Enter a Lontitude.\nIt may look like:\n E47.42\xB0  or\n E47\xB0 25.384'  or\n"
     " E47\xB0 25' 23\"\n(the degree, minute and\nsecond signs are not\nrequired. Spaces are.\n"
     "You may not specify both\na compass bearing and a\nGPS reading.",
     70, 70, 0, "W179\xB0 59.999'"},
    {"Point", "Point",
     "Enter the name of\nanother point from\nwhich a bearing has\nbeen taken\n(ie. A100, 7:34). "
     "You\n"
     "may not specify\nboth a compass\nbearing and a GPS\nreading.",
     50, 0, 60},
    {"Distance", "Distance",
     "Enter the distance\nbetween this point\nand the other point\n(previous column)\nin meters.",
     50, 0, 70},
    {"Azimuth", "Bearing",
     "Enter the compass\nazimuth (from north)\nor bearing from the\nother point to this\none.  May "
     "be\n"
     "expressed as\n 34.2\xB0  or\n 34\xB0 12'\n  or N34\xA1 12'E.\n(If the compass bearing\n"
     "is absolute, ie. is\nalready corrected for\nmagnetic deviance,\nprecede it with an\n\"A\", "
     "as "
     "A35\xB0)",
     50, 0, 70},
    {"Inclination", "Inclination",
     "Enter the inclination\nfrom this point\nto the other.  May\nbe expressed as\n 34.2\xB0  or\n"
     " 34\xB0 12'.",
     50, 0, 70},
    {"Alt", "Alt", "Enter the altitude in\nmeters.  May be omitted.", 35, 45, 45},
    {"Weight", "Weight", "Enter the number of\nobservations on\nwhich this value\nis based.", 60,
     60, 60},
    {"Scale", "Scale",
     "Enter the map scale\nabove which this point's\nname should not be\ndrawn. (enter 1km\n"
     "if you don't want the\npoint shown when the\nscale is more than\n 1pixel=1km).",
     50, 50, 50},
}};

constexpr int SmWidth = 100;
constexpr int CommentWidth = 100;

int WidthIn(EntryMode mode, const ColumnInfo& column) {
  switch (mode) {
    case EntryMode::Relative:
      return column.relativeWidth;
    case EntryMode::Gps:
      return column.gpsWidth;
    case EntryMode::Mixture:
      break;
  }
  return column.mixtureWidth;
}

}  // namespace

size_t SmColumnsOf(const Map& map) {
  size_t count = 0;
  while (count < map.smName.size() && map.smName[count]) ++count;
  return count;
}

size_t TrailColumnOf(EntryMode mode, size_t shown) {
  switch (mode) {
    case EntryMode::Relative:
      return shown < ColumnLat ? shown : shown + 2;
    case EntryMode::Gps:
      return shown < ColumnPoint ? shown : shown + 4;
    case EntryMode::Mixture:
      break;
  }
  return shown;
}

std::vector<CellColumn> TrailColumns(EntryMode mode, const Map& map) {
  std::vector<CellColumn> columns;
  for (const ColumnInfo& column : FixedColumns) {
    const int width = WidthIn(mode, column);
    if (width == 0) continue;
    const char* title = mode == EntryMode::Relative ? column.relativeTitle : column.title;
    columns.push_back(
        {.title = title, .hint = column.hint, .width = width, .widest = column.widest});
  }
  for (size_t i = 0; i < SmColumnsOf(map); ++i) {
    columns.push_back({.title = *map.smName[i], .hint = "Enter an integer", .width = SmWidth});
  }
  columns.push_back({.title = "Comments",
                     .hint = "Enter whatever comments\nyou deem desirable",
                     .width = CommentWidth});
  return columns;
}

}  // namespace orvane
