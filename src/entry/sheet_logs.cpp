#include "entry/sheet_logs.h"

#include <algorithm>
#include <array>

namespace orvane {

namespace {

constexpr const char* UnknownLocationsFile = "unknownlocs.txt";
constexpr const char* WeatherFile = "badweather.txt";

bool IsAboutWeather(std::string_view text) {
  static constexpr std::array<std::string_view, 8> Words = {"sun",  "rain",  "cloud",   "dry",
                                                            "warm", "clear", "same as", "cool"};
  return std::any_of(Words.begin(), Words.end(), [&](std::string_view word) {
    return FindTextFolded(text, word) != std::string_view::npos;
  });
}

void WriteOrTell(const SideFileWriter& write, const std::string& name, std::string_view text,
                 std::vector<std::string>& unwritten) {
  if (write(name, text) != WriteResult::Done) unwritten.push_back(name);
}

}  // namespace

WriteResult WriteSideFile(const std::string& name, std::string_view text) {
  return WriteFileAtomically(name, text);
}

bool NoteBadLocation(SheetLogs& logs, std::string_view text, PackedDate date,
                     std::string_view timeText) {
  if (!IsAboutWeather(text)) {
    logs.unknownLocations.emplace(text);
    return false;
  }
  const DateParts parts = UnpackDate(date);
  std::string& weather = logs.weather ? *logs.weather : logs.weather.emplace();
  weather += std::to_string(parts.day) + '-' + std::to_string(parts.month) + '-' +
             std::to_string(parts.year) + ' ';
  weather += timeText;
  weather += ": ";
  weather += text;
  weather += '\n';
  return true;
}

std::vector<std::string> FinishImportLogs(SheetLogs& logs, const SideFileWriter& write) {
  std::vector<std::string> unwritten = LeaveImportLogs(logs, write);
  std::string lines;
  for (const std::string& location : logs.unknownLocations) {
    lines += location;
    lines += '\n';
  }
  WriteOrTell(write, UnknownLocationsFile, lines, unwritten);
  logs = {};
  return unwritten;
}

std::vector<std::string> LeaveImportLogs(const SheetLogs& logs, const SideFileWriter& write) {
  std::vector<std::string> unwritten;
  if (logs.weather) WriteOrTell(write, WeatherFile, *logs.weather, unwritten);
  return unwritten;
}

}  // namespace orvane
