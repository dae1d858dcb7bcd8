#include "base/utf8.h"
#include "cli/edit_session.h"

#include <nlohmann/json.hpp>
#include <unordered_map>

namespace orvane {
namespace {

using Json = nlohmann::ordered_json;
using TrailNumbers = std::unordered_map<const Trail*, size_t>;

Json TextOrNull(const std::optional<std::string>& text) {
  return text ? Json(ToUtf8(*text)) : Json(nullptr);
}

/// Each trail of the chain by its place in the list of its own map.
TrailNumbers NumberTrails(const Map& top) {
  TrailNumbers numbers;
  for (const Map* map = &top; map != nullptr; map = map->basis) {
    size_t number = 0;
    for (const Trail& trail : map->trails) numbers.emplace(&trail, number++);
    for (const auto* contours : {&map->contourTrails, &map->continuousContours}) {
      number = 0;
      for (const Trail& trail : *contours) numbers.emplace(&trail, number++);
    }
  }
  return numbers;
}

Json TrailRowsJson(const std::list<TrailPanelRow>& rows, const TrailNumbers& numbers) {
  Json list = Json::array();
  for (const TrailPanelRow& row : rows) {
    const auto number = numbers.find(row.trail);
    list.push_back({{"text", ToUtf8(row.text)},
                    {"visible", row.visible},
                    {"open", row.open},
                    {"selected", row.selected},
                    {"fixed", row.fixed},
                    {"filled", row.filled},
                    {"lineStyle", NumberOf(row.lineStyle)},
                    {"labelMode", NumberOf(row.labelMode)},
                    {"fillPattern", row.fillPattern},
                    {"markStyle", NumberOf(row.markStyle)},
                    {"color", row.color},
                    {"trail", number == numbers.end() ? Json(nullptr) : Json(number->second)},
                    {"children", TrailRowsJson(row.children, numbers)}});
  }
  return list;
}

Json RangeRowsJson(const MapWindow& view) {
  std::unordered_map<const Range*, size_t> numbers;
  size_t number = 0;
  for (const Range& range : view.map->ranges) numbers.emplace(&range, number++);
  Json list = Json::array();
  for (const RangePanelRow& row : view.rangeViews) {
    const auto found = numbers.find(row.range);
    list.push_back({{"text", TextOrNull(row.text)},
                    {"visible", row.visible},
                    {"selected", row.selected},
                    {"fixed", row.fixed},
                    {"shading", row.shading},
                    {"showSm", {row.showSm[0], row.showSm[1], row.showSm[2]}},
                    {"drawMode", NumberOf(row.drawMode)},
                    {"clusterMask", row.clusterMask},
                    {"color", row.color},
                    {"range", found == numbers.end() ? Json(nullptr) : Json(found->second)},
                    {"intersection", row.intersection != nullptr}});
  }
  return list;
}

Json FieldJson(const std::string& text, bool enabled) {
  return {{"text", ToUtf8(text)}, {"enabled", enabled}};
}

Json RowsJson(const CellModel& table) {
  Json rows = Json::array();
  for (size_t row = 0; row < table.RowCount(); ++row) {
    Json cells = Json::array();
    for (size_t column = 0; column < table.Columns().size(); ++column) {
      cells.push_back(ToUtf8(table.GetCell(row, column)));
    }
    rows.push_back(std::move(cells));
  }
  return rows;
}

Json TitlesJson(const CellModel& table) {
  Json titles = Json::array();
  for (const CellColumn& column : table.Columns()) titles.push_back(ToUtf8(column.title));
  return titles;
}

Json TrailEditorJson(const TrailEditor& editor) {
  Json fields = Json::object();
  for (const auto& [name, field] : TrailFieldWords) {
    fields[name] = FieldJson(editor.Form().Text(field), editor.Form().IsEnabled(field));
  }
  Json mode;
  Json enabled = Json::array();
  for (const auto& [name, value] : EntryModeWords) {
    if (value == editor.Mode()) mode = name;
    if (editor.IsModeEnabled(value)) enabled.push_back(name);
  }
  return {{"kind", "trail"},
          {"title", ToUtf8(editor.Title())},
          {"changed", editor.IsChanged()},
          {"fields", std::move(fields)},
          {"mode", std::move(mode)},
          {"enabledModes", std::move(enabled)},
          {"columns", TitlesJson(editor)},
          {"readOnly", editor.IsReadOnly()},
          {"rows", RowsJson(editor)}};
}

Json RangeEditorJson(const RangeEditor& editor) {
  return {
      {"kind", "range"},
      {"title", ToUtf8(editor.Title())},
      {"changed", editor.IsChanged()},
      {"fields",
       {{"name", FieldJson(editor.Name(), true)}, {"color", FieldJson(editor.ColorText(), true)}}},
      {"mode", nullptr},
      {"enabledModes", Json::array()},
      {"columns", TitlesJson(editor)},
      {"readOnly", editor.IsReadOnly()},
      {"rows", RowsJson(editor)}};
}

}  // namespace

std::string PanesJson(const EditSession& session) {
  const Json panes = {{"trails", TrailRowsJson(session.view.trailViews, NumberTrails(session.map))},
                      {"ranges", RangeRowsJson(session.view)}};
  return panes.dump();
}

std::string EditorJson(const EditSession& session) {
  if (session.trailEditor) return TrailEditorJson(*session.trailEditor).dump();
  if (session.rangeEditor) return RangeEditorJson(*session.rangeEditor).dump();
  return "null";
}

}  // namespace orvane
