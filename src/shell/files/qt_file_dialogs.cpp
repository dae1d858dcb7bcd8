#include "shell/files/qt_file_dialogs.h"

#include "base/file_names.h"
#include "paint/display_text.h"
#include "shell/files/local_files.h"

#include <QApplication>
#include <QCoreApplication>
#include <QFileDialog>

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
    return {QStringLiteral("Tables and GPS files (*.txt *.tsv *.csv *.xlsx *.xls *.ods *.gpx *.kml)"),
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

FileAnswer Ask(QFileDialog& dialog, FileSpecification& file) {
  dialog.setObjectName(QStringLiteral("fileDialog"));
  dialog.setNameFilters(FiltersOf(file, dialog.acceptMode() == QFileDialog::AcceptSave));
  if (dialog.exec() != QDialog::Accepted) return FileAnswer::Canceled;
  const QStringList chosen = dialog.selectedFiles();
  if (chosen.isEmpty() || chosen.front().isEmpty()) return FileAnswer::Failed;
  // A name that was offered and left as it is keeps its bytes, which may be Latin-1.
  const std::string offered = PathOf(file);
  const bool isOffered = !file.name.empty() && chosen.front() == LocalFileName(offered);
  const std::string path = isOffered ? offered : PathOfLocalFile(chosen.front());
  file.directory = DirectoryName(path);
  file.name = BaseName(path);
  return FileAnswer::Chosen;
}

}  // namespace

FileAnswer QtFileDialogs::AskOpen(const std::string& title, FileSpecification& file) {
  QFileDialog dialog(QApplication::activeWindow(), DisplayText(title),
                     LocalFileName(file.directory));
  dialog.setFileMode(QFileDialog::ExistingFile);
  return Ask(dialog, file);
}

FileAnswer QtFileDialogs::AskSave(const std::string& title, FileSpecification& file) {
  QFileDialog dialog(QApplication::activeWindow(), DisplayText(title),
                     LocalFileName(file.directory));
  dialog.setAcceptMode(QFileDialog::AcceptSave);
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
  return Ask(dialog, file);
}

}  // namespace orvane
