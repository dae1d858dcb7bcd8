// Reads any bytes as a file of a GPS unit, takes its first track, skips the second and takes all
// the others into a small map with a basis, and reads what is then saved. Nothing may
// crash, hang or be undefined, whatever is in the file.
//
// If there is a line with only a form feed, the lines before it are the fields of the window,
// a line each: type, date, focal animal, size, width, colour, step, minimum distance.

#include "entry/gis_import.h"
#include "mapfile/open_map.h"
#include "mapfile/reader.h"
#include "mapfile/writer.h"
#include "model/workspace.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace {

constexpr std::string_view Basis = "T\tMain\nG\tCamp\tN1\tE115\t20\nG\tHut\tN1\tE116\n";
constexpr std::string_view Above = "B\tbasis.map\nR\tAll\nK\tTrail\nG\tFig\tN1\tE115\n";

orvane::Map& Open(orvane::Workspace& workspace, std::string_view name, std::string_view text) {
  orvane::Map& map = orvane::MakeMap(workspace, name);
  orvane::ReadMapText(map, text);
  orvane::FinishMap(map);
  return map;
}

orvane::GisTrailFields FieldsOf(std::string_view lines) {
  orvane::GisTrailFields fields;
  for (std::string* field :
       {&fields.type, &fields.date, &fields.focalAnimal, &fields.size, &fields.width, &fields.color,
        &fields.subSample, &fields.minimumDistance}) {
    const std::size_t end = lines.find('\n');
    *field = lines.substr(0, end);
    if (end == std::string_view::npos) break;
    lines.remove_prefix(end + 1);
  }
  return fields;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  constexpr std::string_view Separator = "\n\f\n";
  const std::string input(data, data + size);
  std::string_view text = input;
  orvane::GisTrailFields fields;
  if (const std::size_t cut = text.find(Separator); cut != std::string_view::npos) {
    fields = FieldsOf(text.substr(0, cut));
    text.remove_prefix(cut + Separator.size());
  }
  fields.boxes.keepAltitude = size % 2 == 1;

  orvane::RecordedMessages messages;
  orvane::Workspace workspace(messages);
  Open(workspace, "basis.map", Basis);
  orvane::Map& map = Open(workspace, "input.map", Above);
  auto import = orvane::StartGisImportOfText(map, text, "gps.txt", fields.boxes);
  if (!import) return 0;
  orvane::NextFields(*import, fields);
  if (orvane::TakeTrack(*import, fields) != orvane::GisField::None) {
    fields.date.clear();
    orvane::TakeTrack(*import, fields);
  }
  orvane::SkipTrack(*import);
  orvane::NextFields(*import, fields);
  orvane::TakeAllTracks(*import, fields);
  Open(workspace, "again.map", orvane::MapFileText(map, "again.map", true));
  return 0;
}
