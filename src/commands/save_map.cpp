#include "commands/save_map.h"

#include "base/file_names.h"
#include "base/messages.h"
#include "mapfile/writer.h"
#include "model/workspace.h"

namespace orvane {
namespace {

constexpr std::string_view ShapefileName = "points.shp";

/// Writes a map to a file; the map bears its name from then on and is unchanged.
bool WriteUnder(Map& map, const std::string& path, bool full, const SaveContext& context) {
  if (context.mayWrite && !context.mayWrite(map, path)) return false;
  if (!WriteMapFile(map, path, full)) return false;
  const bool renamed = map.fileName != path;
  map.fileName = path;
  context.setDirty(map, false);
  if (renamed && context.renamed) context.renamed(map);
  if (context.written) context.written(map, path);
  return true;
}

/// \return the file name under which the map will stand; empty if the user cancelled
std::string AskMapName(const Map& map, const SaveContext& context) {
  Messages& messages = map.workspace->messages;
  FileSpecification& file = context.files.savedMaps;
  PrepareSpecification(file, context.files.maps, context.defaultDirectory, "map");
  file.type = "map";
  const std::string baseName(BaseName(map.fileName));
  file.name = baseName;
  const std::string title =
      (map.flags & MapUntitled) != 0 ? "Save untitled map as..." : "Save " + baseName + " as...";
  switch (context.dialogs.AskSave(title, file)) {
    case FileAnswer::Failed:
      NoteFileDialogFailure(messages);
      return {};
    case FileAnswer::Cancelled:
      return {};
    case FileAnswer::Chosen:
      break;
  }
  return PathOf(file);
}

enum BasisAnswer { BasisSave = 1, BasisDontSave = 2, BasisCancel = 3 };

/// Offers to save the basis beside the map.
/// \return false if the whole save is off
bool SaveBasisBeside(Map& basis, const std::string& path, bool full, const SaveContext& context) {
  if (SameDirectory(path, basis.fileName)) return true;
  const int answer =
      AskUser(basis.workspace->messages, "Save map basis?", "Save", "Don't Save", "Cancel",
              "Do you want to save the basis files into the same directory as the main map?");
  if (answer == BasisCancel) return false;
  if (answer == BasisDontSave) return true;
  return WriteUnder(basis, ReplaceBaseName(path, BaseName(basis.fileName)), full, context);
}

}  // namespace

bool SaveChangedMaps(Map& map, const SaveContext& context) {
  for (Map* each = &map; each != nullptr; each = each->basis) {
    if ((each->flags & MapDirty) == 0) continue;
    const bool saved = (each->flags & MapUntitled) != 0
                           ? SaveMapAs(*each, true, context)
                           : WriteUnder(*each, each->fileName, true, context);
    if (!saved) return false;
  }
  return true;
}

bool SaveMapAs(Map& map, bool full, const SaveContext& context) {
  const std::string path = AskMapName(map, context);
  if (path.empty()) return false;
  if (map.basis != nullptr && !SaveBasisBeside(*map.basis, path, full, context)) return false;
  return WriteUnder(map, path, full, context);
}

std::string AskShapefileFolder(Messages& messages, const SaveContext& context) {
  FileSpecification& file = context.files.shapefiles;
  PrepareSpecification(file, context.files.maps, context.defaultDirectory, "shp");
  for (;;) {
    file.name = ShapefileName;
    switch (context.dialogs.AskSave("Where should arcview files be placed?", file)) {
      case FileAnswer::Failed:
        NoteFileDialogFailure(messages);
        return {};
      case FileAnswer::Cancelled:
        return {};
      case FileAnswer::Chosen:
        break;
    }
    if (PathOf(file).find(ShapefileName) != std::string::npos) return file.directory;
    NoteError(messages, "Je m'excuse, mais il faut que le nom du ficheur soit \"points.shp\".");
  }
}

void NoteFileDialogFailure(Messages& messages) { NoteFatal(messages, "Error getting file name."); }

}  // namespace orvane
