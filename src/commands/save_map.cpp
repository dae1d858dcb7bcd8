#include "commands/save_map.h"

#include "base/file_identity.h"
#include "base/file_mark.h"
#include "base/file_names.h"
#include "base/messages.h"
#include "mapfile/reader.h"
#include "mapfile/writer.h"
#include "model/workspace.h"

#include <algorithm>
#include <filesystem>
#include <optional>
#include <string_view>
#include <system_error>

namespace orvane {
namespace {

constexpr std::string_view ShapefileName = "points.shp";

/// Warns of the first line that a reader would cut, such as that of a long comment.
void WarnOfLongLine(Messages& messages, const std::string& file, std::string_view text) {
  OriginScope origin(messages, file);
  while (!text.empty()) {
    origin.NextLine();
    const std::string_view line = text.substr(0, text.find('\n'));
    if (line.size() > LongestMapLine) {
      NoteWarning(messages,
                  "A line of %s is too long: what follows its first 399 bytes will be read as a "
                  "new line. Shorten the text",
                  {BaseName(file)});
      return;
    }
    text.remove_prefix(std::min(line.size() + 1, text.size()));
  }
}

/// Writes a map to a file. The map then has its name and is unchanged.
bool WriteUnder(Map& map, const std::string& path, bool full, const SaveContext& context) {
  const std::string whole = WholePath(path);
  const bool renamed = map.fileName != whole;
  const std::string shownName = renamed ? path : map.shownName;
  const std::string text = MapFileText(map, path, full);
  if (!WriteMapText(map.workspace->messages, path, shownName, text, context.system)) return false;
  map.fileName = whole;
  map.shownName = shownName;
  map.fileMark = MarkOf(text);
  map.includedFiles.clear();
  map.flags &= ~std::uint32_t{MapUnlikeFile};
  context.saved(map);
  if (renamed && context.renamed) context.renamed(map);
  if (context.written) context.written(map, path);
  WarnOfLongLine(map.workspace->messages, path, text);
  return true;
}

/// Asks for a name to save under.
/// \return false if the user cancelled, or the dialog failed
bool AskName(const std::string& title, FileSpecification& file, Messages& messages,
             const SaveContext& context) {
  return WasChosen(context.dialogs.AskSave(title, file), messages);
}

/// \return the new file name of the map; empty if the user cancelled
std::string AskMapName(const Map& map, const SaveContext& context) {
  FileSpecification& file = context.files.savedMaps;
  const std::string folder = FolderOf(map);
  PrepareSpecification(file, context.files.maps, {folder, context.defaultDirectory}, "map");
  if (!folder.empty()) file.directory = folder;
  file.type = "map";
  const std::string baseName(BaseName(map.fileName));
  file.name = baseName;
  const std::string title =
      IsUntitled(map) ? "Save untitled map as..." : "Save " + baseName + " as...";
  return AskName(title, file, map.workspace->messages, context) ? PathOf(file) : std::string();
}

enum ChangedFileAnswer { ChangedSaveAs = 1, ChangedCancel = 2, ChangedOverwrite = 3 };

/// True if the file there is not the one that the map was read from or written to.
bool HoldsOtherBytes(const Map& map, const std::string& path) {
  std::error_code error;
  if (!std::filesystem::exists(path, error)) return false;
  const std::optional<std::string> content = ReadWholeFile(path);
  return !content || !map.fileMark || MarkOf(*content) != *map.fileMark;
}

/// Asks about a file that has changed on the disk.
/// \return what to do: write, if it has not changed
ChangedFileAnswer AskAboutChange(const Map& map, const std::string& path) {
  if (!HasChangedOnDisk(map, path)) return ChangedOverwrite;
  // The Return key presses the first button, which destroys nothing.
  const int answer = AskUser(
      map.workspace->messages, "File Has Changed", "Save As...", "Cancel", "Overwrite",
      "%s on the disk is not what was opened here. Overwriting it destroys its present content.",
      {BaseName(path)});
  return static_cast<ChangedFileAnswer>(answer);
}

enum BasisAnswer { BasisSave = 1, BasisDontSave = 2, BasisCancel = 3 };

enum OtherBasisAnswer { OtherBasisDontSave = 1, OtherBasisCancel = 2, OtherBasisOverwrite = 3 };

/// The user did not choose the file to which the basis is written, so the file dialog has not asked
/// about replacing it.
/// \return what to do: write, if there is nothing to ask
OtherBasisAnswer AskAboutOtherBasis(const Map& basis, const std::string& path) {
  if (!HoldsOtherBytes(basis, path)) return OtherBasisOverwrite;
  const int answer =
      AskUser(basis.workspace->messages, "Basis File Exists", "Don't Save", "Cancel", "Overwrite",
              "There is another %s in that directory. Overwriting it destroys its present content.",
              {BaseName(path)});
  return static_cast<OtherBasisAnswer>(answer);
}

/// Offers to save the basis beside the map.
/// \return false if the whole save is cancelled
bool SaveBasisBeside(Map& basis, const std::string& path, bool full, const SaveContext& context) {
  if (InSameFolder(path, basis.fileName)) return true;
  const int answer =
      AskUser(basis.workspace->messages, "Save map basis?", "Save", "Don't Save", "Cancel",
              "Do you want to save the basis files into the same directory as the main map?");
  if (answer == BasisCancel) return false;
  if (answer == BasisDontSave) return true;
  const std::string beside = ReplaceBaseName(path, BaseName(basis.fileName));
  switch (AskAboutOtherBasis(basis, beside)) {
    case OtherBasisDontSave:
      return true;
    case OtherBasisCancel:
      return false;
    case OtherBasisOverwrite:
      break;
  }
  return WriteUnder(basis, beside, full, context);
}

}  // namespace

bool HasChangedOnDisk(const Map& map, const std::string& path) {
  return IsSameFile(path, map.fileName) && HoldsOtherBytes(map, path);
}

bool SaveChangedMaps(Map& map, const SaveContext& context) {
  for (Map* each = &map; each != nullptr; each = each->basis) {
    if (!IsDirty(*each)) continue;
    bool underNewName = IsUntitled(*each);
    if (!underNewName) {
      const ChangedFileAnswer answer = AskAboutChange(*each, each->fileName);
      if (answer == ChangedCancel) return false;
      underNewName = answer == ChangedSaveAs;
    }
    const bool saved = underNewName ? SaveMapAs(*each, true, context)
                                    : WriteUnder(*each, each->fileName, true, context);
    if (!saved) return false;
  }
  return true;
}

bool SaveMapAs(Map& map, bool full, const SaveContext& context) {
  for (;;) {
    const std::string path = AskMapName(map, context);
    if (path.empty()) return false;
    const ChangedFileAnswer answer = AskAboutChange(map, path);
    if (answer == ChangedCancel) return false;
    if (answer == ChangedSaveAs) continue;
    if (map.basis != nullptr && !SaveBasisBeside(*map.basis, path, full, context)) return false;
    return WriteUnder(map, path, full, context);
  }
}

std::string AskShapefileFolder(const Map& map, const SaveContext& context) {
  Messages& messages = map.workspace->messages;
  FileSpecification& file = context.files.shapefiles;
  PrepareSpecification(file, context.files.maps, {FolderOf(map), context.defaultDirectory}, "shp");
  for (;;) {
    file.name = ShapefileName;
    if (!AskName("Where should arcview files be placed?", file, messages, context)) return {};
    if (PathOf(file).find(ShapefileName) != std::string::npos) return file.directory;
    NoteError(messages, "Je m'excuse, mais il faut que le nom du ficheur soit \"points.shp\".");
  }
}

bool WasChosen(FileAnswer answer, Messages& messages) {
  if (answer == FileAnswer::Failed) NoteFatal(messages, "Error getting file name.");
  return answer == FileAnswer::Chosen;
}

}  // namespace orvane
