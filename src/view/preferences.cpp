#include "view/preferences.h"

#include "base/file_names.h"
#include "base/line_reader.h"
#include "base/number_text.h"
#include "base/text.h"
#include "geo/earth.h"
#include "model/workspace.h"

#include <filesystem>
#include <optional>
#include <string_view>
#include <system_error>
#include <utility>

namespace orvane {
namespace {

constexpr size_t LongestLine = 999;

constexpr std::string_view TrailWidthKey = "TrailWidth=";
constexpr std::string_view TrailHeightKey = "TrailHeight=";
constexpr std::string_view DefaultMapKey = "DefaultMap=";
constexpr std::string_view CenterLonKey = "CenterLon=";
constexpr std::string_view CenterLatKey = "CenterLat=";
constexpr std::string_view ScaleKey = "Scale=";
constexpr std::string_view HideGridKey = "HideGrid=";
constexpr std::string_view RotateKey = "Rotate=";
constexpr std::string_view HiddenNamesKey = "ShowHiddenNames=";
constexpr std::string_view EuropeanDatesKey = "EuropeanDates=";
constexpr std::string_view SmoothLinesKey = "SmoothLines=";

double Real(std::string_view text) { return ReadReal(text).value; }

/// Reads a line whose value is not a map. \return false for any other line
bool TakeSetting(std::string_view line, Preferences& settings, WindowPreferences& preferences) {
  SavedView& view = preferences.savedView;
  if (const auto width = StartsWith(TrailWidthKey, line)) {
    preferences.trailWidth = ReadInt32(*width);
  } else if (const auto height = StartsWith(TrailHeightKey, line)) {
    preferences.trailHeight = ReadInt32(*height);
  } else if (const auto longitude = StartsWith(CenterLonKey, line)) {
    view.longitude = Real(*longitude);
  } else if (const auto latitude = StartsWith(CenterLatKey, line)) {
    view.latitude = Real(*latitude);
  } else if (const auto scale = StartsWith(ScaleKey, line)) {
    view.scale = Real(*scale);
  } else if (const auto hidden = StartsWith(HideGridKey, line)) {
    view.hideGrids = ReadInt32(*hidden) != 0;
  } else if (const auto rotation = StartsWith(RotateKey, line)) {
    view.rotation = Real(*rotation);
  } else if (const auto names = StartsWith(HiddenNamesKey, line)) {
    settings.showHiddenNames = ReadInt32(*names) != 0;
  } else if (const auto dates = StartsWith(EuropeanDatesKey, line)) {
    settings.europeanDates = ReadInt32(*dates) != 0;
  } else if (const auto smooth = StartsWith(SmoothLinesKey, line)) {
    settings.smoothLines = ReadInt32(*smooth) != 0;
  } else {
    return false;
  }
  return true;
}

void AddLine(std::string& text, std::string_view key, std::string_view value) {
  text += key;
  text += value;
  text += "\r\n";
}

void AddLine(std::string& text, std::string_view key, int value) {
  AddLine(text, key, std::to_string(value));
}

/// True if the line of a map gives its name again when it is read.
bool CanBeReadBack(std::string_view fileName) {
  return !fileName.empty() && DefaultMapKey.size() + fileName.size() <= LongestLine &&
         FindAnyOf(fileName, "\r\n\xFF") == std::string_view::npos;
}

void AddWindow(std::string& text, const MapWindow& view) {
  AddLine(text, DefaultMapKey, view.map->fileName);
  AddLine(text, CenterLonKey, FormatGeneral(view.centralLongitude));
  AddLine(text, CenterLatKey, FormatGeneral(MetersToDegrees((view.top + view.bottom) / 2)));
  AddLine(text, ScaleKey, FormatGeneral(static_cast<double>(LogicalScale(view))));
  AddLine(text, HideGridKey, (view.flags & MapWindowGridsHidden) != 0 ? 1 : 0);
  AddLine(text, RotateKey, FormatGeneral(static_cast<double>(view.rotation)));
}

}  // namespace

void ReadPreferences(Workspace& workspace, const std::string& path, WindowPreferences& preferences,
                     const std::function<void(const std::string& fileName)>& openMap) {
  const auto text = ReadWholeFile(path);
  if (!text) return;
  OriginScope origin(workspace.messages, path);
  LineReader lines(*text, LongestLine);
  std::string& defaultMap = preferences.savedView.fileName;
  while (const auto line = lines.Next()) {
    origin.NextLine();
    if (line->empty()) continue;
    if (const auto fileName = StartsWith(DefaultMapKey, *line)) {
      const std::string previous = std::exchange(defaultMap, std::string(*fileName));
      if (!previous.empty()) openMap(previous);
    } else if (!TakeSetting(*line, workspace.preferences, preferences)) {
      NoteInternalError(workspace.messages, "Unknown preference: %s", {*line});
    }
  }
}

std::string PreferencesText(const Workspace& workspace, const WindowPreferences& preferences,
                            const std::vector<const MapWindow*>& windows) {
  std::string text;
  if (workspace.preferences.showHiddenNames) AddLine(text, HiddenNamesKey, 1);
  AddLine(text, EuropeanDatesKey, workspace.preferences.europeanDates ? 1 : 0);
  if (!workspace.preferences.smoothLines) AddLine(text, SmoothLinesKey, 0);
  AddLine(text, TrailWidthKey, preferences.trailWidth);
  AddLine(text, TrailHeightKey, preferences.trailHeight);
  for (const MapWindow* view : windows) {
    const Map& map = *view->map;
    if (!IsUntitled(map) && CanBeReadBack(map.fileName)) AddWindow(text, *view);
  }
  return text;
}

void WritePreferences(const Workspace& workspace, const std::string& path,
                      const WindowPreferences& preferences,
                      const std::vector<const MapWindow*>& windows, const FileSystem& system) {
  if (path.empty()) return;
  WriteFileAtomically(path, PreferencesText(workspace, preferences, windows), system);
}

std::string DefaultDirectory(const std::string& home, const std::string& startDirectory,
                             const std::string& userDirectory) {
  if (!home.empty()) return home;
  std::error_code error;
  const bool isThere =
      std::filesystem::is_regular_file(JoinPath(startDirectory, PreferencesName), error);
  return isThere ? startDirectory : userDirectory;
}

}  // namespace orvane
