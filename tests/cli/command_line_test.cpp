#include "cli/command_line.h"

#include <algorithm>
#include <filesystem>
#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace orvane {
namespace {

TEST_F(CommandLine, WrongUsageIsReportedInOneLine) {
  ExpectWrongUsage({}, "subcommand");
  ExpectWrongUsage({"frobnicate"}, "frobnicate: no such command");
  ExpectWrongUsage({"frob\nnicate", "site.map"}, "frob\\nnicate: no such command");
  ExpectWrongUsage({"dump"}, "MAP");
  ExpectWrongUsage({"dump", "site.map", "more"}, "more");
  ExpectWrongUsage({"dump", "site.map", "two\nlines"}, "two\\nlines");
  ExpectWrongUsage({"dump", "--sideways", "site.map"}, "--sideways");
  ExpectWrongUsage({"locate", "site.map"}, "TEXT");
  ExpectWrongUsage({"save", "site.map"}, "OUT");
  ExpectWrongUsage({"check", "site.map", "--trail"}, "--trail");
}

TEST_F(CommandLine, HelpAndVersionAreNoFailures) {
  for (const std::string command : {"dump", "save", "locate", "check"}) {
    const Outcome run = Do({command, "--help"});
    EXPECT_EQ(run.status, 0);
    EXPECT_NE(run.out.find("MAP"), std::string::npos);
    EXPECT_EQ(run.err, "");
    EXPECT_NE(Do({"--help"}).out.find(command), std::string::npos);
  }
  const Outcome run = Do({"--version"});
  EXPECT_EQ(run.status, 0);
  EXPECT_TRUE(run.out.starts_with("orvane-cli ")) << run.out;
}

TEST_F(CommandLine, AMapThatDoesNotOpenGivesItsMessageAndNoOutput) {
  for (const auto& arguments : {std::vector<std::string>{"dump", "none.map"},
                                {"save", "none.map", "saved.map"},
                                {"locate", "none.map", "Camp"},
                                {"check", "none.map"}}) {
    const Outcome run = Do(arguments);
    EXPECT_EQ(run.status, 1);
    EXPECT_EQ(run.out, "");
    EXPECT_EQ(run.err, "error: Can't open file none.map\n");
  }
  EXPECT_EQ(folder.Read("saved.map"), "");
  EXPECT_EQ(Do({"dump", "."}).status, 1);  // a directory
  EXPECT_EQ(Do({"dump", ""}).status, 1);
}

TEST_F(CommandLine, MessagesGoToStandardErrorWithTheirSeverity) {
  folder.Write("faults.map", "T\tW\nP\tLost\nG\tCamp\tN0\tE0\nC\tA\tB\t5cm\t0\n");
  const Outcome run = Do({"locate", "faults.map", "Camp"});
  EXPECT_EQ(run.status, 0);  // messages are not failures
  EXPECT_EQ(run.err,
            "error: Bad distance for point A\n"
            "warning: No absolute position found for connected region containing A in faults.map\n"
            "warning: No position found for point Lost\n");
  EXPECT_TRUE(run.out.starts_with("{\"lat\":0.0,")) << run.out;
  EXPECT_EQ(std::count(run.out.begin(), run.out.end(), '\n'), 1);
}

TEST_F(CommandLine, NotesGoToStandardErrorAndAreNotAmongTheMessages) {
  folder.Write("again.map", "T\tW\tTrail\nG\tCamp\tN0\tE0\nT\tW\tTrail\nG\tHill\tN0\tE1\n");
  const std::string note = "note: Trail W is given again; its earlier points are dropped\n";
  const Outcome dump = Do({"dump", "again.map"});
  EXPECT_EQ(dump.status, 0);
  EXPECT_EQ(dump.err, note);
  EXPECT_NE(dump.out.find("\"messages\": []"), std::string::npos) << dump.out;
  // In `check`, where messages are the result, too.
  const Outcome check = Do({"check", "again.map"});
  EXPECT_EQ(check.err, note);
  EXPECT_EQ(check.out.find("given again"), std::string::npos) << check.out;
}

TEST_F(CommandLine, SaveElsewhereNamesTheBasisSoThatItIsFound) {
  std::filesystem::create_directory(folder.Path("work"));
  std::filesystem::create_directory(folder.Path("work/sub"));
  std::filesystem::create_directory(folder.Path("x"));
  std::filesystem::create_directory_symlink(folder.Path("work"), folder.Path("x/link"));
  folder.Write("work/trails.map", "L\tCamp\t1\t10\n");
  folder.Write("work/season.map", "B\ttrails.map\nL\tHill\t1\t11\n");
  const std::string whole =
      "B\t" + std::filesystem::canonical(folder.Path("work")).string() + "/trails.map\n";
  const auto doIn = [&](const std::string& where, const std::vector<std::string>& arguments) {
    Outcome run = Do(arguments, ">../out", "cd " + where + " && ");
    run.err = folder.Read(where + "/err");
    return run;
  };
  for (const std::string name : {"season.map", "./season.map", "sub/../season.map"}) {
    EXPECT_EQ(doIn("work", {"save", name, "../x/y.map"}).status, 0);
    EXPECT_TRUE(folder.Read("x/y.map").starts_with(whole)) << folder.Read("x/y.map");
    EXPECT_EQ(doIn("x", {"locate", "y.map", "Camp"}).err, "") << "read from elsewhere";
    EXPECT_EQ(doIn("work", {"save", name, "../x/link/y.map"}).status, 0);
    EXPECT_TRUE(folder.Read("work/y.map").starts_with("B\ttrails.map\n")) << name;
    const std::string dump = doIn("work", {"dump", name}).out;
    EXPECT_TRUE(dump.starts_with("{\"fileName\": \"" + name + "\"")) << dump;
  }
}

TEST_F(CommandLine, LocatePrintsThePlaceAndWhatWasNamed) {
  const Outcome run = Do({"locate", "site.map", "Main:Camp"});
  EXPECT_EQ(run.out,
            "{\"lat\":0.0,\"lon\":0.0,\"altitude\":10.0,\"point\":\"Camp\",\"trail\":\"Main\","
            "\"range\":null}\n");
  EXPECT_EQ(Do({"locate", "site.map", "M\xFChle"}).out.find("M\xC3\xBChle") != std::string::npos,
            true);
}

TEST_F(CommandLine, LocateFailsOnATextThatNamesNothing) {
  Outcome run = Do({"locate", "site.map", "no\nwhere"});
  EXPECT_EQ(run.status, 1);
  EXPECT_EQ(run.out, "");
  EXPECT_EQ(run.err, "error: Can't find no\\nwhere\n");
  run = Do({"locate", "site.map", "M\xFC"});
  EXPECT_EQ(run.err, "error: Can't find M\xC3\xBC\n");
}

TEST_F(CommandLine, TwoDashesEndTheOptions) {
  EXPECT_EQ(Do({"locate", "site.map", "--", "-5m north of Camp"}).status, 0);
  EXPECT_EQ(Do({"locate", "--", "site.map", "-5m north of Camp"}).status, 0);
  EXPECT_EQ(Do({"locate", "site.map", "--", "--help"}).err, "error: Can't find --help\n");
}

TEST_F(CommandLine, SaveWritesToAFileOrToStandardOutput) {
  EXPECT_EQ(Do({"save", "site.map", "saved.map"}).status, 0);
  const std::string full = folder.Read("saved.map");
  EXPECT_NE(full.find("L\tOdd40"), std::string::npos) << full;
  Outcome run = Do({"save", "site.map", "-"});
  EXPECT_EQ(run.status, 0);
  EXPECT_EQ(run.out, full);
  EXPECT_EQ(run.err, "");
}

TEST_F(CommandLine, OptionsComeBeforeOrAfterArguments) {
  const Outcome before = Do({"save", "--simple", "site.map", "-"});
  EXPECT_EQ(before.status, 0);
  EXPECT_EQ(before.out.find("L\tOdd40"), std::string::npos);
  EXPECT_EQ(Do({"save", "site.map", "-", "--simple"}).out, before.out);
  EXPECT_EQ(Do({"save", "site.map", "--simple", "-"}).out, before.out);
  const Outcome check = Do({"check", "--trail", "Odd", "site.map"});
  EXPECT_EQ(Do({"check", "site.map", "--trail", "Odd"}).out, check.out);
  EXPECT_EQ(Do({"check", "site.map", "--trail=Odd"}).out, check.out);
}

TEST_F(CommandLine, SaveToNowhereFails) {
  const Outcome run = Do({"save", "site.map", "none/saved.map"});
  EXPECT_EQ(run.status, 1);
  EXPECT_EQ(run.err, "error: Can't open none/saved.map for writing\n");
}

TEST_F(CommandLine, CheckPrintsItsWarningsAsItsResult) {
  const Outcome run = Do({"check", "site.map"});
  EXPECT_EQ(run.status, 0);
  EXPECT_NE(run.out, "");
  EXPECT_EQ(run.out.find("warning: "), std::string::npos) << run.out;
  EXPECT_EQ(run.err, "");
  EXPECT_EQ(Do({"check", "site.map", "--trail", "Main"}).out, "");
  EXPECT_EQ(Do({"check", "site.map", "--trail", "Main", "--trail", "Odd"}).out, run.out);
}

TEST_F(CommandLine, CheckFailsOnATrailThatIsNotThere) {
  const Outcome run = Do({"check", "site.map", "--trail", "Nowhere"});
  EXPECT_EQ(run.status, 1);
  EXPECT_EQ(run.out, "");
  EXPECT_EQ(run.err, "error: Can't find Nowhere\n");
}

TEST_F(CommandLine, DumpIsOneDocumentWithALineFeed) {
  const Outcome run = Do({"dump", "site.map"});
  EXPECT_EQ(run.status, 0);
  EXPECT_TRUE(run.out.starts_with("{\"fileName\": \"site.map\"")) << run.out.substr(0, 80);
  EXPECT_TRUE(run.out.ends_with("}\n"));
  EXPECT_EQ(std::count(run.out.begin(), run.out.end(), '\n'), 1);
  EXPECT_NE(run.out.find("M\xC3\xBChle"), std::string::npos);
}

#ifdef ORVANE_DRAWS

constexpr std::string_view PngHead = "\x89PNG\r\n\x1A\n";

TEST_F(CommandLine, RenderDrawsInTheFormatThatTheExtensionNames) {
  EXPECT_EQ(Do({"render", "site.map", "-o", "site.png", "--size", "80x60"}).status, 0);
  EXPECT_TRUE(folder.Read("site.png").starts_with(PngHead));
  EXPECT_EQ(Do({"render", "-o", "site.pdf", "site.map", "--fit"}).status, 0);
  EXPECT_TRUE(folder.Read("site.pdf").starts_with("%PDF-"));
  EXPECT_EQ(Do({"render", "-o", "site.svg", "site.map", "--rotate", "30"}).status, 0);
  EXPECT_NE(folder.Read("site.svg").find("<svg"), std::string::npos);
}

TEST_F(CommandLine, RenderWritesAPngToStandardOutput) {
  const Outcome run = Do({"render", "site.map", "-o", "-", "--size", "40x30"});
  EXPECT_EQ(run.status, 0) << run.err;
  EXPECT_TRUE(run.out.starts_with(PngHead));
}

TEST_F(CommandLine, ContoursAreDrawnOnDemand) {
  folder.Write("hills.map",
               "Z\t\t1,10\nT\nG\ta\tN0\tE0\t10\nG\tb\tN0.01\tE0.01\t35\nG\tc\tN0.02\tE0\t64\n"
               "G\td\tN0.012\tE0.02\t15\n");
  const auto picture = [this](const std::vector<std::string>& options) {
    std::vector<std::string> arguments = {"render", "hills.map", "-o", "-", "--fit"};
    arguments.insert(arguments.end(), options.begin(), options.end());
    const Outcome run = Do(arguments);
    EXPECT_EQ(run.status, 0) << run.err;
    EXPECT_EQ(run.err, "");
    return run.out;
  };
  const std::string plain = picture({});
  const std::string whole = picture({"--contours"});
  const std::string classic = picture({"--classic-contours"});
  EXPECT_NE(whole, plain);
  EXPECT_NE(classic, plain);
  EXPECT_NE(classic, whole);
  const Outcome none = Do({"render", "site.map", "-o", "x.png", "--contours"});
  EXPECT_EQ(none.status, 1);
  EXPECT_EQ(none.err, "error: No contour interval in site.map\n");
}

TEST_F(CommandLine, RenderReportsWhatItCannotDraw) {
  EXPECT_EQ(Do({"render", "site.map", "-o", "site.bmp"}).status, 1);
  EXPECT_EQ(Do({"render", "site.map", "-o", "x.png", "--center", "the big tree"}).err,
            "error: Can't find the big tree\n");
  EXPECT_EQ(Do({"render", "nowhere.map", "-o", "x.png"}).status, 1);
  EXPECT_EQ(folder.Read("x.png"), "");
  ExpectWrongUsage({"render", "site.map", "-o", "x.png", "--size", "12"}, "--size");
  ExpectWrongUsage({"render", "site.map"}, "output");
}

#endif

TEST_F(CommandLine, EuropeanDatesReadTheDayFirst) {
  folder.Write("follow.map", "T\t\tGibbon\t\t2-3-1999\nG\t0800\tN0\tE0\n");
  const std::string march = Do({"--european-dates", "dump", "follow.map"}).out;
  const std::string february = Do({"dump", "follow.map"}).out;
  EXPECT_NE(march, february);
  EXPECT_EQ(Do({"--european-dates", "locate", "follow.map", "Gibbon.2-3-1999"}).status, 0);
  EXPECT_EQ(Do({"--european-dates", "locate", "follow.map", "Gibbon.3-2-1999"}).status, 1);
}

/// The usual fields for a sheet of date, group, time and place.
const std::vector<std::string> SheetOptions = {"--date", "A", "--species",  "B",
                                               "--time", "C", "--location", "D"};

std::vector<std::string> With(std::vector<std::string> arguments,
                              const std::vector<std::string>& more) {
  arguments.insert(arguments.end(), more.begin(), more.end());
  return arguments;
}

TEST_F(CommandLine, ImportTakesASheetAndLeavesItsListsInTheCurrentFolder) {
  folder.Write("sheet.txt",
               "2003-5-31\tOru\t700\train\n2003-5-31\tOru\t800\tCamp\n"
               "2003-5-31\tOru\t830\tthe creek\n2003-5-31\tOru\t900\toos\n");
  const Outcome run = Do(With({"import", "site.map", "sheet.txt", "-o", "out.map"}, SheetOptions));
  EXPECT_EQ(run.status, 0);
  EXPECT_EQ(run.out, "");
  EXPECT_EQ(run.err,
            "question: Bad location specification rain, Do you want to continue? [Yes]\n"
            "note: Imported 1 follow with 1 stop from sheet.txt; 1 place is unknown, listed in "
            "unknownlocs.txt; 1 note on the weather in badweather.txt; line 3 is left out\n");
  EXPECT_NE(folder.Read("out.map").find("\nT\t\tOru\t\t2003-5-31\nN\t08:00-09:00\tCamp\nL\t"),
            std::string::npos)
      << folder.Read("out.map");
  EXPECT_EQ(folder.Read("unknownlocs.txt"), "the creek\n");
  EXPECT_EQ(folder.Read("badweather.txt"), "31-5-2003 700: rain\n");
  EXPECT_EQ(Do(With({"import", "site.map", "sheet.txt", "-o", "-"}, SheetOptions)).out,
            folder.Read("out.map"));
}

TEST_F(CommandLine, ImportAnswersQuestionsAsAskedAndSavesWhatWasBuilt) {
  folder.Write("sheet.txt",
               "2003-5-31\tOru\t800\tCamp\n2003-5-31\tOru\t830\tRidge\n"
               "2003-5-31\tOru\t840\tthe creek\n2003-5-31\tOru\t900\tCamp\n");
  const Outcome run =
      Do(With({"--answer", "2", "import", "site.map", "sheet.txt", "-o", "out.map"}, SheetOptions));
  EXPECT_EQ(run.status, 1);
  EXPECT_NE(folder.Read("out.map").find("N\t08:00-08:30\tCamp\n"), std::string::npos);
  EXPECT_EQ(folder.Read("out.map").find("Ridge\nL"), std::string::npos);
  EXPECT_FALSE(std::ifstream(folder.Path("unknownlocs.txt")));
}

TEST_F(CommandLine, AnOptionTakesAnEmptyTextAfterAnEqualsSignToo) {
  folder.Write("sheet.txt", "2003-5-31\tOru\t800\tCamp\n");
  const auto arguments = With({"import", "site.map", "sheet.txt", "-o", "out.map"}, SheetOptions);
  const Outcome run = Do(With(arguments, {"--focal-always=", "--skip="}));
  EXPECT_EQ(run.status, 0) << run.err;
  EXPECT_NE(folder.Read("out.map").find("N\t08:00-08:00\tCamp\n"), std::string::npos);
}

TEST_F(CommandLine, ImportReportsWhatItRefusesAndWritesNothing) {
  folder.Write("sheet.txt", "2003-5-31\tOru\t800\tCamp\n");
  const auto arguments = With({"import", "site.map", "sheet.txt", "-o", "out.map"}, SheetOptions);
  Outcome run = Do(With(arguments, {"--skip", "31"}));
  EXPECT_EQ(run.status, 1);
  // With something else amiss the missing focal animal comes first.
  EXPECT_TRUE(
      run.err.starts_with("error: You must specify either a column number in which to find "
                          "a focal animal"))
      << run.err;
  run = Do(With(arguments, {"--skip", "31", "--focal-always", "Ulo"}));
  EXPECT_EQ(run.err, "error: Badly specified (or too large) skip count\n");
  run = Do(With({"import", "site.map", "none.txt", "-o", "out.map"}, SheetOptions));
  EXPECT_EQ(run.status, 1);
  EXPECT_EQ(run.err, "error: Can not open none.txt\n");
  EXPECT_FALSE(std::ifstream(folder.Path("out.map")));
  EXPECT_FALSE(std::ifstream(folder.Path("unknownlocs.txt")));
  ExpectWrongUsage({"import", "site.map", "sheet.txt"}, "output");
  ExpectWrongUsage({"import", "site.map", "-o", "out.map"}, "SHEET");
}

TEST_F(CommandLine, ImportReportsWhatItCannotWrite) {
  folder.Write("sheet.txt", "2003-5-31\tOru\t800\tCamp\n");
  Outcome run =
      Do(With({"import", "site.map", "sheet.txt", "-o", "no/such/out.map"}, SheetOptions));
  EXPECT_EQ(run.status, 1);
  const std::string note = "note: Imported 1 follow with 1 stop from sheet.txt\n";
  EXPECT_EQ(run.err, note + "error: Can't open no/such/out.map for writing\n");
  std::filesystem::remove(folder.Path("unknownlocs.txt"));
  std::filesystem::create_directory(folder.Path("unknownlocs.txt"));
  run = Do(With({"import", "site.map", "sheet.txt", "-o", "out.map"}, SheetOptions));
  EXPECT_EQ(run.status, 1);
  EXPECT_EQ(run.err, "error: Can't open unknownlocs.txt for writing\n" + note);
  EXPECT_NE(folder.Read("out.map").find("N\t08:00-08:00\tCamp\n"), std::string::npos);
}

TEST_F(CommandLine, ImportOfTheExampleSiteAsInTheGuide) {
  const std::string site = std::string(ORVANE_EXAMPLES) + "/site/";
  const Outcome run = Do({"import",
                          site + "rains.map",
                          site + "rains.txt",
                          "-o",
                          "follows.map",
                          "--skip",
                          "2",
                          "--date",
                          "A",
                          "--species",
                          "B",
                          "--focal",
                          "C",
                          "--time",
                          "D",
                          "--location",
                          "E",
                          "--activity",
                          "F",
                          "--sm1-code",
                          "fruit",
                          "--sm2-code",
                          "leaf",
                          "--sm3-code",
                          "rest"});
  EXPECT_EQ(run.status, 0);
  EXPECT_EQ(run.err,
            "question: Bad location specification same as yesterday, dry, Do you want to continue? "
            "[Yes]\nnote: Imported 12 follows with 151 stops from " +
                site + "rains.txt; 4 notes on the weather in badweather.txt\n");
  EXPECT_TRUE(std::ifstream(folder.Path("unknownlocs.txt")));
  EXPECT_EQ(folder.Read("unknownlocs.txt"), "");
  EXPECT_TRUE(folder.Read("badweather.txt").starts_with("4-9-2003 600: same as yesterday, dry\n"));
  const std::string report = Do({"ranges", "follows.map", "--range", "Oru in the rains"}).out;
  EXPECT_NE(report.find("MCP area: 7.1ha                          Grid area: 12ha\n"
                        "Mean daily path:   959m                 Mean follow:   737m (n=7, total "
                        "time: 25 hours)\n"),
            std::string::npos)
      << report;
}

TEST_F(CommandLine, ExportNeedsOneForm) {
  ExpectWrongUsage({"export", "site.map"}, "DIRECTORY or --geojson FILE");
  ExpectWrongUsage({"export", "site.map", ".", "--geojson", "a"}, "--geojson");
  ExpectWrongUsage({"export", "site.map", "--prj", "--geojson", "a"}, "--geojson");
}

TEST_F(CommandLine, ExportOfLayersChecksItsOptions) {
  ExpectWrongUsage({"export", "site.map", "--kml", "a", "--gpx", "b"}, "--kml excludes --gpx");
  ExpectWrongUsage({"export", "site.map", ".", "--csv", "a"}, "DIRECTORY excludes --csv");
  ExpectWrongUsage({"export", "site.map", "--geojson", "a", "--fgb", "b"}, "--geojson");
  ExpectWrongUsage({"export", "site.map", ".", "--layers", "points"}, "--layers: needs --gpkg");
  ExpectWrongUsage({"export", "site.map", "--geojson", "a", "--crs", "utm"}, "--crs: needs --gpkg");
  for (const char* names : {"point", "points,", "Points", ""}) {
    ExpectWrongUsage({"export", "site.map", "--csv", "a", std::string("--layers=") + names},
                     "--layers: no layer");
  }
  for (const char* system : {"utm36", "4326", "EPSG:", "EPSG:1x", ""}) {
    ExpectWrongUsage({"export", "site.map", "--csv", "a", std::string("--crs=") + system},
                     "--crs: must be wgs84, utm or EPSG:N");
  }
  ExpectWrongUsage({"export", "site.map", "--kml", "a", "--crs", "utm"}, "KML is always in wgs84");
  ExpectWrongUsage({"export", "site.map", "--gpx", "a", "--crs", "EPSG:32636"},
                   "GPX is always in wgs84");
  ExpectWrongUsage({"export", "site.map", "--csv", "-"}, "--layers: must name one layer");
  ExpectWrongUsage({"export", "site.map", "--gpkg="}, "FILE: must not be empty");
}

TEST_F(CommandLine, ExportWritesLayers) {
  if (ORVANE_WITH_GDAL == 0) {
    const Outcome missing = Do({"export", "site.map", "--gpkg", "site.gpkg"});
    EXPECT_EQ(missing.status, 1);
    EXPECT_EQ(missing.err,
              "error: Writing GeoPackage needs the package orvane-gis: it is not installed\n");
    return;
  }
  ExpectWrongUsage({"export", "site.map", "--gpkg", "a", "--crs", "EPSG:999999"},
                   "--crs: no coordinate system EPSG:999999");
  const Outcome done = Do({"export", "site.map", "--kml", "site.kml", "--layers",
                           "trails,points,trails", "--crs", "wgs84"});
  EXPECT_EQ(done.status, 0);
  EXPECT_EQ(done.err, "note: Exported points and trails to site.kml: 8 features in EPSG:4326\n");
  EXPECT_NE(folder.Read("site.kml").find("<name>M\xC3\xBChle</name>"), std::string::npos);
  const Outcome printed = Do({"export", "site.map", "--kml", "-", "--layers", "points,trails"});
  EXPECT_EQ(printed.status, 0);
  EXPECT_EQ(printed.err, "");
  EXPECT_EQ(printed.out, folder.Read("site.kml"));
  const Outcome failed = Do({"export", "site.map", "--gpkg", "nowhere/site.gpkg"});
  EXPECT_EQ(failed.status, 1);
  EXPECT_EQ(failed.err, "error: Can't open nowhere/site.gpkg for writing\n");
}

TEST_F(CommandLine, ExportMakesTheContoursOfItsLayer) {
  if (ORVANE_WITH_GDAL == 0) GTEST_SKIP() << "built without GDAL";
  // Without an interval there are none, unless they are asked for by name.
  EXPECT_EQ(Do({"export", "site.map", "--csv", "site.csv"}).status, 0);
  const Outcome failed = Do({"export", "site.map", "--csv", "one.csv", "--layers", "contours"});
  EXPECT_EQ(failed.status, 1);
  EXPECT_EQ(failed.err, "error: No contour interval in site.map\n");
  const std::string trails = std::string(ORVANE_EXAMPLES) + "/site/trails.map";
  const Outcome made = Do({"export", trails, "--csv", "-", "--layers", "contours"});
  EXPECT_EQ(made.status, 0);
  const Outcome printed = Do({"contours", trails});
  const auto count = [](const std::string& text, const std::string& word) {
    size_t found = 0;
    for (size_t at = text.find(word); at != text.npos; at = text.find(word, at + 1)) ++found;
    return found;
  };
  EXPECT_GT(count(made.out, ",classic,"), 100U);
  EXPECT_EQ(count(made.out, ",classic,"), count(printed.out, "LineString"));
}

TEST_F(CommandLine, ExportWritesShapefilesIntoAFolder) {
  const Outcome done = Do({"export", "site.map", ".", "--prj"});
  EXPECT_EQ(done.status, 0);
  EXPECT_EQ(done.err, "note: Exported points, trails and trails3d to .: 15 files were written\n");
  EXPECT_EQ(folder.Read("points.cpg"), "ISO-8859-1");
  EXPECT_FALSE(folder.Read("trails3d.shp").empty());
  EXPECT_EQ(folder.Read("areas.shp"), "");
  const Outcome failed = Do({"export", "site.map", "nowhere"});
  EXPECT_EQ(failed.status, 1);
  EXPECT_NE(failed.err.find("internal error: Can't open point datafiles"), std::string::npos);
}

TEST_F(CommandLine, ExportWritesGeoJsonToAFileOrStandardOutput) {
  const Outcome printed = Do({"export", "site.map", "--geojson", "-"});
  EXPECT_EQ(printed.status, 0);
  EXPECT_NE(printed.out.find("M\xC3\xBChle"), std::string::npos);
  EXPECT_EQ(printed.err, "");
  const Outcome written = Do({"export", "--geojson", "site.geojson", "site.map"});
  EXPECT_EQ(written.status, 0);
  EXPECT_EQ(written.err, "note: Exported everything to site.geojson\n");
  EXPECT_EQ(folder.Read("site.geojson"), printed.out);
  const Outcome failed = Do({"export", "--geojson", "nowhere/site.geojson", "site.map"});
  EXPECT_EQ(failed.status, 1);
  EXPECT_EQ(failed.err, "error: Can't open nowhere/site.geojson for writing\n");
}

}  // namespace
}  // namespace orvane
