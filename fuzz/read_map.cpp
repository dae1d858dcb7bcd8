// Reads any bytes as a map file, solves the map, writes it in both forms, and reads and solves what
// was written. Nothing may crash, hang or be undefined, whatever is in the file.
//
// A line that holds only a form feed divides an input into two maps. The first is `basis.map`, which
// the second may name in a `B` line, so that points of another map occur without a file on the disk.

#include "mapfile/open_map.h"
#include "mapfile/reader.h"
#include "mapfile/writer.h"
#include "model/workspace.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace {

/// A workspace with the basis opened already. Nobody reads its messages.
struct Bench {
  orvane::RecordedMessages messages;
  orvane::Workspace workspace{messages};

  orvane::Map& Open(std::string_view name, std::string_view text) {
    orvane::Map& map = orvane::MakeMap(workspace, name);
    orvane::ReadMapText(map, text);
    orvane::FinishMap(map);
    return map;
  }
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  constexpr std::string_view Separator = "\n\f\n";
  const std::string input(data, data + size);
  std::string_view text = input;
  std::string_view basis;
  if (const std::size_t cut = text.find(Separator); cut != std::string_view::npos) {
    basis = text.substr(0, cut);
    text.remove_prefix(cut + Separator.size());
  }

  Bench first;
  first.Open("basis.map", basis);
  orvane::Map& map = first.Open("input.map", text);
  for (const bool full : {true, false}) {
    const std::string written = orvane::MapFileText(map, "input.map", full);
    Bench second;
    second.Open("basis.map", basis);
    orvane::Map& again = second.Open("input.map", written);
    orvane::MapFileText(again, "input.map", full);
  }
  return 0;
}
