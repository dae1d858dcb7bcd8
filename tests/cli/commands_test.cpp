// What the commands do with options that change their result, and with input that they refuse.

#include "command_line.h"
#include "rich_site.h"
#include "support/spreadsheet_files.h"

namespace orvane {
namespace {

struct CommandsTest : CommandLine {
  CommandsTest() { folder.Write("rich.map", RichSite); }

  /// Runs a command that fails after its last message.
  void ExpectError(const std::vector<std::string>& arguments, const std::string& error) {
    const Outcome run = Do(arguments);
    EXPECT_EQ(run.status, 1) << error;
    EXPECT_EQ(run.out, "") << error;
    EXPECT_TRUE(run.err.ends_with("error: " + error + "\n")) << run.err;
  }
  std::string Print(const std::vector<std::string>& arguments) {
    const Outcome run = Do(arguments);
    EXPECT_EQ(run.status, 0) << run.err;
    return run.out;
  }
};

constexpr const char* Track =
    "<gpx><trk><name>One</name><trkseg>"
    "<trkpt lat=\"0.001\" lon=\"0.001\"><time>2004-06-02T10:00:00Z</time></trkpt>"
    "<trkpt lat=\"0.002\" lon=\"0.001\"><time>2004-06-02T10:05:00Z</time></trkpt>"
    "<trkpt lat=\"0.002\" lon=\"0.003\"><time>2004-06-02T10:10:00Z</time></trkpt>"
    "</trkseg></trk></gpx>\n";

TEST_F(CommandsTest, ImportGisRefusesEachBadField) {
  folder.Write("track.gpx", Track);
  const std::vector<std::pair<std::string, std::string>> faults = {
      {"--date=x", "Bad date for --date: x"},
      {"--size=x", "Bad number for --size: x"},
      {"--width=x", "Bad number for --width: x"},
      {"--subsample=x", "Bad number for --subsample: x"},
      {"--minimum-distance=x", "Bad number for --minimum-distance: x"}};
  for (const auto& [option, error] : faults) {
    ExpectError({"import-gis", "rich.map", "track.gpx", "-o", "out.map", option}, error);
  }
  ExpectError({"import-gis", "rich.map", "none.gpx", "-o", "out.map"}, "Can't open file none.gpx");
  EXPECT_EQ(folder.Read("out.map"), "");
}

TEST_F(CommandLine, ImportFixesRefusesWrongOptions) {
  folder.Write("a.csv", "time,lat,lon\n2004-5-3 0:30,1,2\n");
  const std::vector<std::pair<std::string, std::string>> wrong = {
      {"--utc-offset", "+14:01"},  {"--utc-offset", "Nowhere/City"},
      {"--utc-offset", ""},        {"--every", "0"},
      {"--every", "1.5"},          {"--min-minutes", "-1"},
      {"--min-metres", "1,5"},     {"--max-speed", "0"},
      {"--columns", "latitude=a"}, {"--columns", "lat"},
      {"--columns", "lat=a,"}};
  for (const auto& [option, text] : wrong) {
    ExpectWrongUsage({"import-fixes", "site.map", "a.csv", "-o", "out.map", option, text}, option);
    ExpectWrongUsage({"preview", "import-fixes", "site.map", "a.csv", option, text}, option);
  }
  EXPECT_EQ(folder.Read("out.map"), "");
}

TEST_F(CommandLine, ImportFixesTakesOffsetsWithASignAndColumnsInParts) {
  folder.Write("a.csv", "t,y1,lon,id,alt\n2004-5-3 0:30,1,2,Kiki,5\n");
  const Outcome run = Do({"import-fixes",
                          "site.map",
                          "a.csv",
                          "-o",
                          "-",
                          "--utc-offset",
                          "-00:30",
                          "--columns",
                          "time=T,lat=Y1",
                          "--columns",
                          "animal=alt",
                          "--no-ranges",
                          "--type",
                          "Ape",
                          "--every",
                          "1",
                          "--min-minutes",
                          "0",
                          "--min-metres",
                          "0.5",
                          "--max-speed",
                          "2.5",
                          "--keep-outliers"});
  EXPECT_EQ(run.status, 0) << run.err;
  EXPECT_NE(run.out.find("T\t\tApe\t5\t2004-5-3\nG\t00:00\t"), std::string::npos) << run.out;
  EXPECT_EQ(run.out.find("R\t"), std::string::npos);
  EXPECT_NE(run.err.find("note: Read 1 fix from a.csv: 1 taken; 1 trail and no ranges added"),
            std::string::npos)
      << run.err;
}

/// Two sheets: a heading, and rows of a follow or of fixes.
std::string SpreadsheetOf(const std::string& second) {
  return XlsxOf({{"Notes", R"(<row r="1"><c r="A1"><v>1</v></c></row>)"}, {"Follows", second}});
}

TEST_F(CommandLine, ImportsAndPreviewsReadASheetOfASpreadsheet) {
  folder.Write("follows.xlsx",
               SpreadsheetOf("<row><c s=\"1\"><v>38049</v></c><c s=\"2\"><v>0.375</v></c>"
                             "<c t=\"str\"><v>Camp</v></c></row>"));
  folder.Write("fixes.xlsx",
               SpreadsheetOf("<row><c t=\"str\"><v>time</v></c><c t=\"str\"><v>lat</v></c>"
                             "<c t=\"str\"><v>lon</v></c></row><row><c s=\"3\"><v>38049.375</v></c>"
                             "<c><v>1</v></c><c><v>2</v></c></row>"));
  const std::vector<std::string> sheet = {
      "site.map", "follows.xlsx",     "--date", "A", "--time", "B", "--location",
      "C",        "--species-always", "Oru"};
  const auto with = [](std::vector<std::string> first, const std::vector<std::string>& middle,
                       const std::vector<std::string>& last) {
    first.insert(first.end(), middle.begin(), middle.end());
    first.insert(first.end(), last.begin(), last.end());
    return first;
  };
  if (ORVANE_WITH_GDAL == 0) {
    const Outcome run = Do(with({"import"}, sheet, {"-o", "out.map"}));
    EXPECT_EQ(run.status, 1);
    EXPECT_EQ(run.err,
              "error: Reading spreadsheets needs the package orvane-gis: it is not installed\n");
    return;
  }
  Outcome run = Do(with({"import"}, sheet, {"-o", "out.map", "--sheet", "Follows"}));
  EXPECT_EQ(run.err, "note: Imported 1 follow with 1 stop from follows.xlsx\n");
  EXPECT_NE(folder.Read("out.map").find("T\t\tOru\t\t2004-3-3"), std::string::npos);
  run = Do(with({"preview", "import"}, sheet, {"--sheet", "Follows"}));
  EXPECT_EQ(run.out, "row\tstate\treason\n1\tused\t\t2004-03-03\t09:00\tCamp\n") << run.err;
  run = Do(with({"import"}, sheet, {"-o", "out.map", "--sheet", "None"}));
  EXPECT_EQ(run.status, 1);
  EXPECT_EQ(run.err, "error: Can't find sheet None in follows.xlsx\n");
  run = Do({"preview", "import-fixes", "site.map", "fixes.xlsx", "--sheet", "Follows"});
  EXPECT_EQ(run.out,
            "row\tstate\treason\ttime\tlat\tlon\n2\tused\t09:00 of fixes on 2004-3-3\t"
            "2004-03-03 09:00\t1\t2\n")
      << run.err;
  run = Do({"import-fixes", "site.map", "fixes.xlsx", "-o", "out.map"});
  EXPECT_EQ(run.status, 1);
  EXPECT_EQ(run.err,
            "note: Reading sheet Notes, the first of 2\n"
            "error: Can't find a heading with time and position in fixes.xlsx\n");
}

TEST_F(CommandLine, PreviewsSaveNothing) {
  folder.Write("a.csv", "time,lat,lon\n2004-5-3 0:30,1,2\nsoon,1,2\n");
  Outcome run = Do({"preview", "import-fixes", "site.map", "a.csv"});
  EXPECT_EQ(run.status, 0) << run.err;
  EXPECT_EQ(run.out,
            "row\tstate\treason\ttime\tlat\tlon\n2\tused\t00:30 of a on 2004-5-3\t2004-5-3 "
            "0:30\t1\t2\n3\tbad time\t\"soon\" in column time is not a usable time\tsoon\t1\t2\n");
  folder.Write("s.txt", "800\tCamp\n");
  run = Do({"preview", "import", "site.map", "s.txt", "--time", "A", "--location", "B",
            "--species-always", "Oru", "--date-always", "2004-5-3"});
  EXPECT_EQ(run.out, "row\tstate\treason\n1\tused\t\t800\tCamp\n") << run.err;
  EXPECT_EQ(folder.Read("unknownlocs.txt"), "");
  run = Do({"preview", "import", "site.map", "s.txt", "--time", "A"});
  EXPECT_EQ(run.status, 1);
  run = Do({"preview", "import", "site.map", "none.txt", "--time", "A"});
  EXPECT_EQ(run.status, 1);
  folder.Write("t.gpx",
               "<gpx><trk><trkseg><trkpt lat=\"1\" lon=\"2\"><time>2004-05-03T00:30:00Z</time>"
               "</trkpt></trkseg></trk></gpx>");
  run = Do({"preview", "import-gis", "site.map", "t.gpx", "--times"});
  EXPECT_EQ(run.out,
            "row\tstate\treason\tname\ttime\tlatitude\tlongitude\taltitude\n1\tused\t\tt 1\t"
            "2004-05-03T00:30:00Z\t1\t2\t\n")
      << run.err;
  run = Do({"preview", "import-gis", "site.map", "t.gpx", "--size", "many"});
  EXPECT_EQ(run.status, 1);
  EXPECT_EQ(run.err, "error: Bad number for --size: many\n");
  EXPECT_EQ(Do({"preview", "import-gis", "site.map", "none.gpx"}).status, 1);
  // Dates that can be read in two ways were said only for fixes.
  folder.Write("d.txt", "800\tCamp\t3/5/2004\n830\tCamp\t25/5/2004\n");
  run = Do({"preview", "import", "site.map", "d.txt", "--time", "A", "--location", "B",
            "--species-always", "Oru", "--date", "C"});
  EXPECT_EQ(run.err,
            "note: The date in row 1 can be read in two ways. It is read with the month first; row "
            "2 shows that this is wrong: use --european-dates.\n");
  folder.Write("g.txt", "name,time,a,b,lat,lon\nW,3/5/2004,,,1,2\nW,3/5/2004,,,1,2\n");
  run = Do({"--european-dates", "preview", "import-gis", "site.map", "g.txt"});
  EXPECT_EQ(run.err,
            "note: The date in row 2 can be read in two ways. It is read with the day first; no "
            "row shows whether that is right.\n");
  EXPECT_EQ(Do({"preview", "import-fixes", "site.map", "none.csv"}).status, 1);
  // Where no row can be used, each says why.
  folder.Write("bad.csv", "time,lat,lon\nsoon,1,2\n2004-5-3 0:30,91,2\n");
  run = Do({"preview", "import-fixes", "site.map", "bad.csv"});
  EXPECT_EQ(run.status, 1);
  EXPECT_EQ(run.err, "error: No usable fixes in bad.csv\n");
  EXPECT_EQ(
      run.out,
      "row\tstate\treason\ttime\tlat\tlon\n"
      "2\tbad time\t\"soon\" in column time is not a usable time\tsoon\t1\t2\n"
      "3\tunknown place\t\"91\" in column lat is not a usable position\t2004-5-3 0:30\t91\t2\n");
  ExpectWrongUsage({"preview"}, "required");
}

TEST_F(CommandsTest, ImportGisMakesATrailOfATrack) {
  folder.Write("track.gpx", Track);
  const Outcome run = Do({"import-gis", "rich.map", "track.gpx", "-o", "out.map", "--type=Path",
                          "--date=3/4/2005", "--minimum-distance=1"});
  EXPECT_EQ(run.status, 0) << run.err;
  EXPECT_NE(run.err.find("note: "), std::string::npos) << run.err;
  EXPECT_NE(folder.Read("out.map").find("T\tOne\tPath\t"), std::string::npos);
}

TEST_F(CommandsTest, ContoursNeedAnIntervalAndASensibleNumberOfLines) {
  ExpectError({"contours", "site.map"}, "No contour interval in site.map");
  folder.Write("wild.map", "G\tA\tN0\tE0\t10\nG\tB\tN0\tE9\t1000000\nG\tC\tN9\tE9\t10\n");
  ExpectError({"contours", "wild.map", "--interval", "1"},
              "Can't make contours: the levels are too close (100,000 between neighbours of the "
              "grid, 5,000,000 crossings in all)");
  folder.Write("top.map", "B\trich.map\n");  // the basis has the interval
  EXPECT_EQ(Print({"contours", "top.map"}), Print({"contours", "rich.map"}));
}

#ifdef ORVANE_DRAWS
TEST_F(CommandsTest, EachOptionOfRenderChangesThePicture) {
  const auto draw = [&](std::vector<std::string> options) {
    options.insert(options.begin(), {"render", "rich.map", "-o", "-", "--size", "120x90"});
    return Print(options);
  };
  const std::string plain = draw({});
  EXPECT_TRUE(plain.starts_with("\x89PNG"));
  for (const std::vector<std::string>& options :
       std::vector<std::vector<std::string>>{{"--scale", "2"},
                                             {"--fit"},
                                             {"--rotate", "30"},
                                             {"--center", "Ridge"},
                                             {"--antialias"},
                                             {"--hide-grids", "--scale", "8"},
                                             {"--classic-contours"},
                                             {"--contours"}}) {
    EXPECT_NE(draw(options), plain) << options[0];
  }
  EXPECT_NE(draw({"--hide-grids", "--scale", "8"}), draw({"--scale", "8"}));
  folder.Write("rich.map", "T\tHidden\tTrail\t\t\t,n\nG\tA\tN0\tE0\nG\tB\tN0.01\tE0.01\n");
  EXPECT_NE(draw({"--show-all-trails"}), draw({}));
}

TEST_F(CommandsTest, RenderSaysWhyThereIsNoPicture) {
  ExpectError({"render", "site.map", "-o", "x.png", "--classic-contours"},
              "No contour interval in site.map");
  ExpectError({"render", "rich.map", "-o", "x.png", "--center", "Nowhere"}, "Can't find Nowhere");
  const Outcome large = Do({"render", "rich.map", "-o", "-", "--size", "30000x30000"});
  EXPECT_EQ(large.status, 1);
  EXPECT_EQ(large.out, "");
  for (const char* size : {"0x5", "5x0", "33000x5", "5x33000", "5x5x", "5"}) {
    ExpectWrongUsage({"render", "rich.map", "-o", "x.png", "--size", size}, size);
  }
}

TEST_F(CommandsTest, PrintSaysWhyThereIsNoFile) {
  ExpectError({"print", "site.map", "-o", "none/x.pdf"}, "Can't open file none/x.pdf");
  const Outcome run = Do(
      {"print", "site.map", "-o", "x.pdf", "--area", "N5", "S5", "E5", "W5", "--scale", "1:100"});
  EXPECT_EQ(run.status, 1);
  EXPECT_NE(run.err.find("error: Too many pages ("), std::string::npos) << run.err;
  EXPECT_EQ(folder.Read("x.pdf"), "");
}
#endif

TEST_F(CommandsTest, EstimatesPrintsTheRangesThatAreNamed) {
  const std::string one = Print({"estimates", "rich.map", "--range", "oru RANGE"});
  EXPECT_TRUE(one.starts_with(R"([{"range":"Oru range")")) << one;
  EXPECT_EQ(one.find(R"({"range":"Fen range","fixes")"), std::string::npos) << one;
  const std::string both =
      Print({"estimates", "rich.map", "--range", "Fen range", "--range", "Oru range"});
  EXPECT_EQ(both, Print({"estimates", "rich.map"}));
}

TEST_F(CommandsTest, EstimatesOfRangesWithoutNameDateOrFixes) {
  folder.Write("bare.map",
               "T\t\tOru\nG\t0900\tN0.001\tE0.001\nG\t1000\tN0.005\tE0.001\nG\t1100\tN0\tE0.006\n"
               "R\t\nK\tOru\nR\tEmpty\nK\tNobody\n");
  const std::string printed = Print({"estimates", "bare.map"});
  EXPECT_TRUE(printed.starts_with(R"([{"range":null,"fixes":3,)")) << printed;
  EXPECT_NE(printed.find(R"("firstDate":null,"lastDate":null)"), std::string::npos) << printed;
  EXPECT_NE(printed.find(R"("kernel":null)"), std::string::npos) << printed;
}

TEST_F(CommandsTest, ResidualsOfEachKindAndOfClosedLoops) {
  folder.Write("loop.map",
               "T\tWay\tTrail\nG\tA\tN0\tE0\t10\nC\tB\tA\t100\t90\t2\nC\tC\tB\t100\t0\t1\n"
               "C\tD\tC\t100\t270\t0\nC\tA\tD\t104\t181\t0\nA\tB\t15\nG\tC\tN0.0009\tE0.0009\n"
               "C\tD\tA\t101\t1\t0\n");
  const std::string all = Print({"residuals", "loop.map"});
  for (const std::string kind : {"compass", "gps", "altitude"}) {
    EXPECT_NE(all.find("\"kind\":\"" + kind + "\""), std::string::npos) << all;
  }
  EXPECT_NE(all.find("\"legs\":"), std::string::npos) << all;
  const std::string worst = Print({"residuals", "loop.map", "--worst", "1"});
  EXPECT_LT(worst.size(), all.size());
  // More than there are is all of them.
  EXPECT_EQ(Print({"residuals", "loop.map", "--worst", "99999999999999999999999"}).size(),
            all.size());
}

TEST_F(CommandsTest, NumbersMayHaveASignAndNothingElse) {
  const std::string seven = Print({"estimates", "rich.map", "--seed", "7"});
  EXPECT_EQ(Print({"estimates", "rich.map", "--seed", "+7"}), seven);
  for (const char* seed : {"+", "", "7x", "-7", "18446744073709551616"}) {
    ExpectWrongUsage({"estimates", "rich.map", std::string("--seed=") + seed}, "--seed");
  }
  for (const char* factor : {"0x1", "1x", " 1", "0", "1e99", "nan"}) {
    ExpectWrongUsage({"estimates", "rich.map", std::string("--bandwidth-factor=") + factor},
                     "--bandwidth-factor");
  }
}

TEST_F(CommandsTest, AnglesArePrintedInEachForm) {
  std::vector<std::string> printed;
  for (const char* format : {"degrees", "minutes", "seconds", "utm"}) {
    printed.push_back(Print({"index", "rich.map", "--format", format}));
  }
  EXPECT_NE(printed[0], printed[1]);
  EXPECT_NE(printed[1], printed[2]);
  EXPECT_NE(printed[2].find('"'), std::string::npos);
  EXPECT_EQ(printed[3].rfind("Name\tUTM\t", 0), 0U) << printed[3];
}

TEST_F(CommandsTest, DumpOfATrailWithoutPointsHasNoMetrics) {
  folder.Write("empty.map", "T\tNothing\tTrail\n");
  EXPECT_NE(Print({"dump", "empty.map"}).find(R"("points":[],"metrics":null)"), std::string::npos);
}

TEST_F(CommandsTest, DumpListsClustersOfARange) {
  std::string map = "T\t\tOru\t\t2004-6-1\n";
  for (int i = 0; i < 40; ++i) {
    const int cluster = i % 3;
    map += "G\t" + std::to_string(1000 + i) + "\tN0.0" + std::to_string(cluster) +
           std::to_string(100 + i * 7 % 60) + "\tE0.0" + std::to_string(cluster) +
           std::to_string(100 + i * 11 % 60) + "\n";
  }
  folder.Write("clusters.map", map + "R\tOru range\nK\tOru\n");
  const std::string dump = Print({"dump", "clusters.map"});
  EXPECT_NE(dump.find(R"("madeAt":)"), std::string::npos);
  EXPECT_NE(dump.find(R"("mergedAt":null,"parent":null)"), std::string::npos);
}

}  // namespace
}  // namespace orvane
