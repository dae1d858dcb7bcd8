#pragma once

#include <string>
#include <string_view>

namespace orvane {

struct Map;

/// A file to open or to save, as a file dialog receives and returns it. There is one for each
/// purpose, so each dialog begins where it ended the last time.
struct FileSpecification {
  std::string directory;   ///< empty until it is first used
  std::string type;        ///< extension without the dot, such as "map"
  std::string name;        ///< name without its directory; for saving, what is offered
  bool withTable = false;  ///< beside pictures, a table of numbers is offered
};

/// What the program remembers between its file dialogs.
struct FileSpecifications {
  FileSpecification maps;
  FileSpecification savedMaps;
  FileSpecification spreadsheets;
  FileSpecification gisFiles;
  FileSpecification fixTables;  ///< tables of timestamped fixes
  FileSpecification shapefiles;
  FileSpecification exports;
  FileSpecification pictures;
  FileSpecification charts;   ///< pictures of charts and profiles, and their numbers
  FileSpecification reports;  ///< texts of reports
};

enum class FileAnswer { Chosen, Canceled, Failed };

/// The boxes that ask for a file. The window program uses those of the platform; a test answers
/// itself.
class FileDialogs {
 public:
  virtual ~FileDialogs() = default;
  /// Asks for a file that exists. `file` says where to begin, and receives the choice.
  virtual FileAnswer AskOpen(const std::string& title, FileSpecification& file) = 0;
  /// Asks where to save, and before an existing file is replaced.
  virtual FileAnswer AskSave(const std::string& title, FileSpecification& file) = 0;
};

/// Where a dialog begins on first use.
struct DialogStart {
  std::string mapFolder;         ///< of the map of the window; empty without one
  std::string defaultDirectory;  ///< if neither this nor the dialog for maps has a folder
};

/// \return the folder of a map's file; empty if it has none yet
std::string FolderOf(const Map& map);

/// Prepares a specification for its dialog. On first use it gets the type and a folder: that of the
/// map, else that of the dialog for maps, else the default one.
void PrepareSpecification(FileSpecification& file, const FileSpecification& maps,
                          const DialogStart& start, std::string_view type);

/// \return the path of the file
std::string PathOf(const FileSpecification& file);

}  // namespace orvane
