#include "shell/files/qt_file_dialogs.h"

#include "base/file_names.h"
#include "paint/display_text.h"
#include "shell/files/local_files.h"
#include "shell/files/shown_folders.h"
#include "shell/plain_texts.h"

#include <QApplication>
#include <QDir>
#include <QFileDialog>
#include <QLineEdit>
#include <QMessageBox>
#include <QSignalBlocker>

#include <filesystem>
#include <system_error>
#include <utility>

namespace orvane {
namespace {

/// Those of the exports, by their ending.
constexpr std::pair<const char*, const char*> ExportFilters[] = {
    {"gpkg", "GeoPackages (*.gpkg)"}, {"kml", "KML (*.kml)"},
    {"gpx", "GPX (*.gpx)"},           {"fgb", "FlatGeobuf (*.fgb)"},
    {"csv", "Tables (*.csv)"},        {"geojson", "GeoJSON (*.geojson *.json)"}};

/// The kinds of file that a dialog offers, its own type first.
QStringList FiltersOf(const FileSpecification& file, bool saving) {
  const std::string& type = file.type;
  const QString all = QStringLiteral("All files (*)");
  if (type == "map") return {QStringLiteral("Maps (*.map)"), all};
  const QString table = QStringLiteral("Table of numbers (*.txt)");
  const bool isText = type == "txt" && !file.withTable;
  if (isText && saving) return {QStringLiteral("Text files (*.txt)"), all};
  if (isText) {
    return {
        QStringLiteral("Tables and GPS files (*.txt *.tsv *.csv *.xlsx *.xls *.ods *.gpx *.kml)"),
        all};
  }
  if (type == "shp") return {QStringLiteral("Shapefiles (*.shp)"), all};
  for (const auto& [ending, filter] : ExportFilters) {
    if (type == ending) return {QString::fromLatin1(filter), all};
  }
  if (type == "qch") return {QStringLiteral("Help files (*.qch)"), all};
  QStringList pictures{QStringLiteral("PNG picture (*.png)"), QStringLiteral("SVG drawing (*.svg)"),
                       QStringLiteral("PDF page (*.pdf)")};
  if (file.withTable) pictures.append(table);
  for (const QString& filter : std::as_const(pictures)) {
    if (!filter.contains(QStringLiteral("*.") + DisplayText(type))) continue;
    QStringList filters{filter};
    for (const QString& other : std::as_const(pictures)) {
      if (other != filter) filters.append(other);
    }
    return filters;
  }
  return {all};
}

bool IsFolder(const std::string& path) {
  std::error_code error;
  return std::filesystem::is_directory(path, error);
}

bool Exists(const std::string& path) {
  std::error_code error;
  return std::filesystem::exists(path, error);
}

/// The toolkit's dialog, which knows only names in UTF-8, for files and folders of any name. It has no
/// `Q_OBJECT`: with a meta-object of its own the toolkit would not use the dialog of the platform.
class FileBox final : public QFileDialog {
 public:
  FileBox(const std::string& title, const FileSpecification& file, AcceptMode mode);

  FileAnswer Ask(FileSpecification& file);

 protected:
  void accept() override;

 private:
  std::string PathOf(const QString& chosen) const;
  bool MayReplace(const QString& chosen);
  void EnterFolder(const std::string& folder);

  ShownFolders folders_;
  std::string offered_;   ///< path that the box begins with; empty if it offers no name
  QString shownOffered_;  ///< the same as the toolkit names it
};

FileBox::FileBox(const std::string& title, const FileSpecification& file, AcceptMode mode)
    : QFileDialog(QApplication::activeWindow(), PlainTitle(DisplayText(title))) {
  setObjectName(QStringLiteral("fileDialog"));
  setAcceptMode(mode);
  setNameFilters(FiltersOf(file, mode == AcceptSave));
  const QString folder = folders_.NameOf(file.directory);
  if (!folder.isEmpty()) setDirectory(folder);
  if (!file.name.empty()) {
    offered_ = orvane::PathOf(file);
    shownOffered_ = QDir(folder).filePath(LocalFileName(file.name));
  }
  // A folder that is shown by a link has its own parent, not that of the link.
  connect(this, &QFileDialog::directoryEntered, this, [this](const QString& entered) {
    const QString shown = folders_.NameOf(folders_.PathOf(entered));
    if (shown != entered) setDirectory(shown);
  });
}

/// A name that was offered and left as it is keeps its bytes, which may be Latin-1.
std::string FileBox::PathOf(const QString& chosen) const {
  const bool isOffered = !offered_.empty() && chosen == shownOffered_;
  return isOffered ? offered_ : folders_.PathOf(chosen);
}

/// The question of the toolkit, which does not see the file.
bool FileBox::MayReplace(const QString& chosen) {
  QMessageBox box(QMessageBox::Warning, windowTitle(),
                  QStringLiteral("%1 already exists.\nDo you want to replace it?")
                      .arg(chosen.section(QLatin1Char('/'), -1)),
                  QMessageBox::Yes | QMessageBox::No, this);
  box.setTextFormat(Qt::PlainText);
  box.setDefaultButton(QMessageBox::No);
  return box.exec() == QMessageBox::Yes;
}

void FileBox::EnterFolder(const std::string& folder) {
  setDirectory(folders_.NameOf(folder));
  auto* field = findChild<QLineEdit*>(QStringLiteral("fileNameEdit"));
  // Where an empty field is seen, the toolkit selects the folder itself, and a name that is typed then
  // does not count.
  const QSignalBlocker blocker(field);
  if (field != nullptr) field->clear();
}

void FileBox::accept() {
  const QStringList chosen = selectedFiles();
  const std::string path = chosen.isEmpty() ? std::string() : PathOf(chosen.front());
  const bool isSaved = acceptMode() == AcceptSave;
  const bool exists = Exists(path);
  // The toolkit also says that a file to open is missing.
  if (path.empty() || path == PathOfLocalFile(chosen.front()) || (!exists && !isSaved)) {
    QFileDialog::accept();
  } else if (IsFolder(path)) {
    EnterFolder(path);
  } else if (!isSaved || !exists || MayReplace(chosen.front())) {
    done(Accepted);
  }
}

FileAnswer FileBox::Ask(FileSpecification& file) {
  if (exec() != Accepted) return FileAnswer::Canceled;
  const QStringList chosen = selectedFiles();
  if (chosen.isEmpty() || chosen.front().isEmpty()) return FileAnswer::Failed;
  const std::string path = PathOf(chosen.front());
  file.directory = DirectoryName(path);
  file.name = BaseName(path);
  return FileAnswer::Chosen;
}

}  // namespace

FileAnswer QtFileDialogs::AskOpen(const std::string& title, FileSpecification& file) {
  FileBox dialog(title, file, QFileDialog::AcceptOpen);
  dialog.setFileMode(QFileDialog::ExistingFile);
  return dialog.Ask(file);
}

FileAnswer QtFileDialogs::AskSave(const std::string& title, FileSpecification& file) {
  FileBox dialog(title, file, QFileDialog::AcceptSave);
  dialog.setFileMode(QFileDialog::AnyFile);
  dialog.setDefaultSuffix(DisplayText(file.type));
  dialog.selectFile(LocalFileName(file.name));
  // When the user picks another kind of file, its ending follows.
  QObject::connect(&dialog, &QFileDialog::filterSelected, &dialog, [&](const QString& filter) {
    const qsizetype star = filter.indexOf(QStringLiteral("*."));
    if (star < 0) return;
    QString suffix = filter.mid(star + 2);
    suffix.truncate(suffix.indexOf(QLatin1Char(')')));
    dialog.setDefaultSuffix(suffix);
  });
  return dialog.Ask(file);
}

}  // namespace orvane
