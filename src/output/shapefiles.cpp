#include "output/shapefiles.h"

#include "base/messages.h"
#include "base/parallel.h"
#include "model/workspace.h"
#include "output/shapefile_groups.h"

#include <atomic>
#include <utility>
#include <vector>

namespace orvane {

namespace {

/// Records, or rows of cells, after which the user can cancel.
constexpr unsigned RecordsOfStep = 32;

}  // namespace

ShapefileExport::ShapefileExport(Map& map, std::string directory, bool projection,
                                 const FileSystem& system)
    : map_(map),
      directory_(std::move(directory)),
      projection_(projection),
      system_(system),
      today_(map.workspace->Today()),
      steps_(map.workspace->progress, WorkStage::Writing, 0, RecordsOfStep) {}

ShapefileSet* ShapefileExport::Open(const std::string& name, std::string_view failure) {
  ShapefileSet& set = sets_.emplace_back(system_);
  if (set.Open(directory_, name, projection_)) return &set;
  sets_.pop_back();
  NoteInternalError(map_.workspace->messages, failure);
  done_ = false;
  return nullptr;
}

void ShapefileExport::NoteTooLarge(std::string_view what) {
  NoteError(map_.workspace->messages,
            "The grids have more than %s %s: no shapefiles are written of them",
            {std::to_string(MostExportedCells), what});
  done_ = false;
}

std::string ShapefileExport::Summary(const std::vector<ShapefileSet*>& written) const {
  if (written.empty()) {
    return done_ ? "Nothing to export: looked for named points, named trails and grids"
                 : "No files were written to " + directory_;
  }
  std::string names;
  size_t files = 0;
  for (const ShapefileSet* set : written) {
    if (!names.empty()) names += set == written.back() ? " and " : ", ";
    names += set->Name();
    files += set->FileCount();
  }
  return "Exported " + names + " to " + directory_ + ": " + std::to_string(files) +
         " files were written";
}

ShapefileOutcome ShapefileExport::Finish() {
  if (IsCanceled(map_.workspace->progress)) return {};
  // No file gets its name before every file is flushed to the disk. Flushing all at once is
  // fastest.
  std::vector<char> finished(sets_.size());
  std::atomic<size_t> next{0};
  RunInParallel(static_cast<unsigned>(sets_.size()), [&](unsigned) {
    for (size_t i = next++; i < sets_.size(); i = next++) finished[i] = sets_[i].Finish() ? 1 : 0;
  });
  std::vector<ShapefileSet*> whole;
  for (size_t i = 0; i < sets_.size(); ++i) {
    ShapefileSet& set = sets_[i];
    if (finished[i] != 0) {
      whole.push_back(&set);
      continue;
    }
    NoteError(map_.workspace->messages,
              "Error while writing %s; its old files, if any, are unchanged", {set.Path()});
    done_ = false;
  }
  steps_.Next(0);
  if (IsCanceled(map_.workspace->progress)) return {};
  std::vector<ShapefileSet*> written;
  for (ShapefileSet* set : whole) {
    if (set->TakeNames()) {
      written.push_back(set);
      continue;
    }
    NoteError(map_.workspace->messages, "Error while replacing %s; some of its files are missing",
              {set->Path()});
    done_ = false;
  }
  if (!whole.empty()) FlushDirectoryOf(whole.front()->Path());
  return {done_, Summary(written)};
}

ShapefileOutcome ExportShapefiles(Map& map, const std::string& directory,
                                  const ShapefileOptions& options) {
  return ExportShapefiles(map, directory, options, SystemFiles());
}

ShapefileOutcome ExportShapefiles(Map& map, const std::string& directory,
                                  const ShapefileOptions& options, const FileSystem& system) {
  ShapefileExport shapes(map, directory, options.projection, system);
  PutPointShapes(shapes);
  PutTrailShapes(shapes);
  PutTrailShapesWithAltitude(shapes);
  PutAreaShapes(shapes);
  PutGridShapes(shapes);
  return shapes.Finish();
}

}  // namespace orvane
