#pragma once

#include "base/messages.h"
#include "mapfile/open_map.h"
#include "mapfile/reader.h"
#include "model/map.h"
#include "model/point_names.h"
#include "model/workspace.h"

#include <gtest/gtest.h>
#include <iterator>
#include <string>
#include <string_view>
#include <vector>

namespace orvane {

/// Reads a map from the text of a file, and finishes it as a file that was opened.
inline Map& MapFromText(Workspace& workspace, std::string_view text,
                        std::string_view name = "test.map") {
  Map& map = MakeMap(workspace, name);
  ReadMapText(map, text);
  FinishMap(map);
  return map;
}

/// A workspace of its own for each test, and short ways to ask for what was read.
struct MapFixture : testing::Test {
  using Texts = std::vector<std::string>;

  RecordedMessages messages;
  Workspace workspace{messages};

  /// Reads without finishing: nothing is solved.
  Map& Read(std::string_view text, std::string_view name = "test.map") {
    Map& map = MakeMap(workspace, name);
    ReadMapText(map, text);
    return map;
  }
  Map& Open(std::string_view text, std::string_view name = "test.map") {
    return MapFromText(workspace, text, name);
  }

  /// The texts of all messages so far.
  Texts Said() const {
    Texts texts;
    for (const auto& entry : messages.Entries()) texts.push_back(entry.text);
    return texts;
  }
  /// The point of an ordinary name; the test fails if there is none.
  static Point& Named(const Map& map, std::string_view name) {
    Point* point = FindPointByName(map, nullptr, name);
    static Point none;
    EXPECT_NE(point, nullptr) << name;
    return point == nullptr ? none : *point;
  }
  static std::vector<const Measurement*> Readings(const Point& point) {
    std::vector<const Measurement*> readings;
    for (const Measurement& reading : point.measurements) readings.push_back(&reading);
    return readings;
  }
  static Texts NamesOf(const Trail& trail) {
    Texts names;
    for (const Point* point : trail.points) names.push_back(point->name);
    return names;
  }
  /// The names of the map's trails in list order.
  static Texts TrailNamesOf(const Map& map) {
    Texts names;
    for (const Trail& trail : map.trails) names.push_back(trail.name.value_or("<none>"));
    return names;
  }
  template <typename List>
  static long Length(const List& list) {
    return static_cast<long>(std::distance(list.begin(), list.end()));
  }
};

}  // namespace orvane
