#include "output/exported_map.h"
#include "support/counted_progress.h"

#include <atomic>
#include <cerrno>

namespace orvane {
namespace {

constexpr const char* NoPoints = "Can't open point datafiles for ArcView shapefiles\n";
constexpr const char* NoTrails = "Can't open trail or area datafiles for ArcView shapefiles\n";

struct ShapefileFailures : ExportFixture {
  FileSystem system = SystemFiles();

  bool ExportWith(Map& map) { return ExportShapefiles(map, folder.Path(), {}, system).complete; }
  /// Old files of the points, which must not change.
  void PutOldPoints() const {
    for (const char* ending : {"shp", "shx", "dbf"}) {
      folder.Write(std::string("points.") + ending, "old");
    }
  }
  void ExpectOldPoints() const {
    for (const char* ending : {"shp", "shx", "dbf"}) {
      EXPECT_EQ(folder.Read(std::string("points.") + ending), "old");
    }
  }
};

TEST_F(ShapefileFailures, ReportEachGroupThatDoesNotOpen) {
  Map& map = Open(SiteOfAllGroups);
  EXPECT_FALSE(ExportShapefiles(map, folder.Path("nowhere")));
  EXPECT_EQ(Said(), (Texts{NoPoints, NoTrails, NoTrails, NoTrails, NoPoints, NoPoints}));
  for (const auto& entry : messages.Entries()) {
    EXPECT_EQ(entry.severity, Severity::InternalError);
  }
}

TEST_F(ShapefileFailures, AreNotInTheSummary) {
  Map& map = Open(SiteOfAllGroups);
  EXPECT_EQ(ExportShapefiles(map, folder.Path("nowhere")).summary,
            "No files were written to " + folder.Path("nowhere"));
  std::filesystem::create_directory(folder.Path("points.dbf"));
  const ShapefileOutcome outcome = ExportShapefiles(map, folder.Path());
  EXPECT_FALSE(outcome.complete);
  EXPECT_EQ(outcome.summary, "Exported trails, trails3d, areas, grids and gridlins to " +
                                 folder.Path() + ": 15 files were written");
}

TEST_F(ShapefileFailures, OfOneFileSkipOnlyItsGroup) {
  Map& map = Open(SiteOfAllGroups);
  std::filesystem::create_directory(folder.Path("points.dbf"));
  EXPECT_FALSE(Export(map));
  EXPECT_EQ(Said(), Texts{NoPoints});
  EXPECT_FALSE(std::filesystem::exists(folder.Path("points.shp")));
  EXPECT_FALSE(std::filesystem::exists(folder.Path("points.shx")));
  EXPECT_EQ(FilesThere().size(), 5U * 3 + 1);
}

TEST_F(ShapefileFailures, OfAProtectedFileLeaveItAsItWas) {
  Map& map = Open(SiteOfAllGroups);
  PutOldPoints();
  // The system lets an administrator write anything, so the refusal is made.
  system.create = [this](const std::string& path, unsigned permissions) {
    static_cast<void>(permissions);
    errno = EACCES;
    return path.starts_with(folder.Path()) ? -1 : 0;
  };
  EXPECT_FALSE(ExportWith(map));
  EXPECT_EQ(Said().size(), 6U);
  ExpectOldPoints();
  EXPECT_EQ(FilesThere().size(), 3U);
}

TEST_F(ShapefileFailures, OfAFullDiskLeaveNothingHalfWritten) {
  Map& map = Open(SiteOfAllGroups);
  PutOldPoints();
  for (const long room : {0L, 1L, 200L, 900L}) {
    std::atomic<long> left = room;
    const auto write = SystemFiles().write;
    system.write = [&](int file, const char* bytes, size_t size) -> long {
      if (left.fetch_sub(static_cast<long>(size)) >= static_cast<long>(size)) {
        return write(file, bytes, size);
      }
      errno = ENOSPC;
      return -1;
    };
    messages.Clear();
    EXPECT_FALSE(ExportWith(map));
    ASSERT_GE(Said().size(), 1U);
    EXPECT_TRUE(Said()[0].starts_with("Error while writing " + folder.Path()));
    // What is there is whole, or old.
    for (const std::string name : {"trails", "trails3d", "areas", "grids", "gridlins"}) {
      const int files = static_cast<int>(std::filesystem::exists(folder.Path(name + ".shp"))) +
                        static_cast<int>(std::filesystem::exists(folder.Path(name + ".shx"))) +
                        static_cast<int>(std::filesystem::exists(folder.Path(name + ".dbf")));
      EXPECT_TRUE(files == 0 || files == 3) << name;
    }
    for (const std::string& name : FilesThere()) {
      EXPECT_FALSE(name.ends_with(".tmp")) << name;
    }
  }
}

TEST_F(ShapefileFailures, OfTheFlushLeaveTheOldFiles) {
  Map& map = Open(SiteOfAllGroups);
  PutOldPoints();
  system.flush = [](int) {
    errno = EIO;
    return -1;
  };
  EXPECT_FALSE(ExportWith(map));
  EXPECT_EQ(Said().size(), 6U);
  EXPECT_EQ(Said()[0], "Error while writing " + folder.Path("points.shp") +
                           "; its old files, if any, are unchanged");
  ExpectOldPoints();
  EXPECT_EQ(FilesThere().size(), 3U);
}

TEST_F(ShapefileFailures, OfTheLastStepLeaveNoSetThatLooksWhole) {
  Map& map = Open(SiteOfAllGroups);
  const auto rename = SystemFiles().rename;
  system.rename = [&](const std::string& from, const std::string& to) {
    errno = EIO;
    return to.ends_with("points.shp") ? -1 : rename(from, to);
  };
  EXPECT_FALSE(ExportWith(map));
  EXPECT_EQ(Said(), Texts{"Error while replacing " + folder.Path("points.shp") +
                          "; some of its files are missing"});
  EXPECT_EQ(FilesThere().size(), 5U * 3);
  EXPECT_FALSE(std::filesystem::exists(folder.Path("points.dbf")));
}

TEST_F(ShapefileFailures, OfAPathThatIsTooLong) {
  Map& map = Empty();
  Add(map, "A", 1, 2);
  const auto folderOfLength = [this](size_t length) {
    return folder.Path() + std::string(length - folder.Path().size() - 1, '/') + ".";
  };
  const size_t longest = LongestExportPath - std::string("/points.shp").size();
  EXPECT_TRUE(ExportShapefiles(map, folderOfLength(longest)));
  EXPECT_FALSE(ExportShapefiles(map, folderOfLength(longest + 1)));
  EXPECT_EQ(Said(), Texts{NoPoints});
}

TEST_F(ShapefileFailures, DoNotComeOfAQuestionMarkInTheFolder) {
  Map& map = Empty();
  Add(map, "A", 1, 2);
  std::filesystem::create_directory(folder.Path("what?"));
  EXPECT_TRUE(ExportShapefiles(map, folder.Path("what?")));
  EXPECT_TRUE(std::filesystem::exists(folder.Path("what?/points.shp")));
}

TEST_F(ShapefileFailures, DoNotComeFromACanceledExport) {
  Map& map = Open(SiteOfAllGroups);
  for (int i = 0; i < 200; ++i) Add(map, "more" + std::to_string(i), 1, 115 + i / 1000.0);
  PutOldPoints();
  const Texts before = FilesThere();
  CountedProgress whole;
  workspace.progress = &whole;
  {
    const TemporaryFolder other;
    EXPECT_TRUE(ExportShapefiles(map, other.Path()));
  }
  ASSERT_GT(whole.stages.size(), 5U);
  for (size_t at = 1; at <= whole.stages.size(); ++at) {
    CountedProgress progress(at);
    workspace.progress = &progress;
    const ShapefileOutcome outcome = ExportShapefiles(map, folder.Path());
    EXPECT_FALSE(outcome.complete);
    EXPECT_EQ(outcome.summary, "");
    EXPECT_EQ(FilesThere(), before) << at;
    ExpectOldPoints();
  }
  EXPECT_TRUE(Said().empty());
  workspace.progress = nullptr;
  EXPECT_TRUE(Export(map));
  EXPECT_GT(FilesThere().size(), before.size());
}

}  // namespace
}  // namespace orvane
