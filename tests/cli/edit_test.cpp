// Scripts of the command `edit`: which lines end a run, and what the others do.

#include "command_line.h"
#include "rich_site.h"
#include "support/spreadsheet_files.h"

namespace orvane {
namespace {

struct EditScripts : CommandLine {
  EditScripts() { folder.Write("rich.map", RichSite); }

  /// Runs a script, given as lines, on the site.
  Outcome Run(const std::vector<std::string>& lines) { return RunOn("rich.map", lines); }
  Outcome RunOn(const std::string& map, const std::vector<std::string>& lines) {
    std::string script;
    for (const std::string& line : lines) script += line + '\n';
    folder.Write("script", script);
    return Do({"edit", map, "script", "-o", "saved.map"});
  }
  /// The script ends at its last line, and nothing is saved.
  void ExpectFault(const std::vector<std::string>& lines, const std::string& why) {
    const Outcome run = Run(lines);
    EXPECT_EQ(run.status, 2) << why;
    const std::string fault = "script " + std::to_string(lines.size()) + ": " + why + "\n";
    EXPECT_TRUE(run.err.ends_with(fault)) << run.err << "should end with\n" << fault;
    EXPECT_EQ(folder.Read("saved.map"), "") << why;
  }
  void ExpectSaved(const std::vector<std::string>& parts) const {
    const std::string saved = folder.Read("saved.map");
    for (const std::string& part : parts) {
      EXPECT_NE(saved.find(part), std::string::npos) << part << "\nis missing in\n" << saved;
    }
  }
};

TEST_F(EditScripts, UnknownWordsAndWrongNumbersOfFieldsAreFaults) {
  ExpectFault({"nonsense"}, "unknown word nonsense");
  for (const std::string word : {"select", "answer", "show", "save", "import", "import-gis"}) {
    ExpectFault({"# a comment", "", word}, "wrong number of fields for " + word);
  }
  for (const std::string word : {"drop", "triangle", "tick\ttrails", "tick\tranges"}) {
    ExpectFault({word}, "there is no row ");  // of an empty text
  }
  ExpectFault({"new-trail", "click\t1\t2"}, "wrong number of fields for click");
  ExpectFault({"answer\tno"}, "an answer is a whole number from 1");
  ExpectFault({"answer\t0"}, "an answer is a whole number from 1");
  ExpectFault({"show\tnothing"}, "there is no thing to show, nothing");
}

TEST_F(EditScripts, RowsThatAreNotThereAreFaults) {
  ExpectFault({"select\tfoo"}, "there is no pane foo");
  for (const std::string line : {"select\ttrails", "add-select\ttrails", "tick\ttrails", "triangle",
                                 "select\tranges", "tick\tranges"}) {
    ExpectFault({line + "\tNone"}, "there is no row None");
  }
  ExpectFault({"select\ttrails\tTrail\tNone"}, "there is no row None");
}

TEST_F(EditScripts, LinesForAnEditorNeedOne) {
  for (const std::string line : {"field\tname\tx", "cell\t0\t0\tx", "insert\t0", "delete\t0",
                                 "move\t0\t1", "paste\t0\t0\tx", "ok", "cancel", "close"}) {
    ExpectFault({line}, "no editor is open");
  }
  ExpectFault({"mode\tgps"}, "no trail editor is open");
  ExpectFault({"new-range", "mode\tgps"}, "no trail editor is open");
}

TEST_F(EditScripts, WhatAnEditorDoesNotHaveIsAFault) {
  const std::vector<std::pair<std::string, std::string>> faults = {
      {"field\tfoo\tx", "there is no field foo"},
      {"field\tname", "the field name is disabled"},
      {"mode\tfoo", "there is no mode foo"},
      {"cell\t5\t0\tx", "there is no row 5"},
      {"cell\t0\t99\tx", "there is no column 99"},
      {"cell\tx\t0\tx", "a row and a column are whole numbers"},
      {"insert\t9", "there is no row 9"},
      {"move\t0\t9", "there is no row 9"},
      {"paste\t0\t99\tx", "there is no column 99"},
      {"click\t1\t2\t3", "graphical input is disabled"},
  };
  for (const auto& [line, why] : faults) ExpectFault({"new-trail", line}, why);
  ExpectFault({"new-trail", "cell\t0\t0\tx", "new-range"}, "the open editor has changes");
}

TEST_F(EditScripts, ControlsOfVisibilityTakeOnlyTheirValues) {
  ExpectFault({"trail-visibility"}, "the command trail-visibility is disabled");
  for (const std::string setting :
       {"visible=maybe", "lineStyle=99", "lineStyle=x", "labelMode=7", "markStyle=99"}) {
    const std::string name = setting.substr(0, setting.find('='));
    ExpectFault({"select\ttrails\tTrail", "trail-visibility\t" + setting},
                name + " can't be set to " + setting.substr(name.size() + 1));
  }
  for (const std::string setting :
       {"shading=9", "drawMode=9", "clusterMask=99999999", "showSm=true", "shading=x"}) {
    const std::string name = setting.substr(0, setting.find('='));
    ExpectFault({"select\tranges\tOru range", "range-visibility\t" + setting},
                name + " can't be set to " + setting.substr(name.size() + 1));
  }
  ExpectFault({"select\ttrails\tTrail", "trail-visibility\tfoo=1"}, "there is no control foo");
  ExpectFault({"select\tranges\tOru range", "range-visibility\tfoo=1"}, "there is no control foo");
}

TEST_F(EditScripts, ChecksOfCountsWithoutANameCanNotBeSet) {
  std::string nameless = RichSite;
  nameless.erase(nameless.find("fruit,leaf,rest"), std::string("fruit,leaf,rest").size());
  folder.Write("rich.map", nameless);
  ExpectFault({"select\tranges\tOru range", "range-visibility\tshowSm=false,false,false"},
              "showSm can't be set to false,false,false");
}

TEST_F(EditScripts, VisibilityShowsInTheRowsOfThePanes) {
  const Outcome run = Run(
      {"select\ttrails\tTrail",
       "trail-visibility\tvisible=true\tcolor=red\tlabelMode=2\tmarkStyle=5",
       "select\tranges\tOru range",
       "range-visibility\tvisible=true\tshading=2\tcolor=#123456\tclusterMask=3", "show\tpanes"});
  EXPECT_EQ(run.status, 0) << run.err;
  EXPECT_NE(run.out.find(R"("text":"Trail","visible":true)"), std::string::npos) << run.out;
  EXPECT_NE(run.out.find(R"("labelMode":2)"), std::string::npos) << run.out;
  EXPECT_NE(run.out.find(R"("shading":2)"), std::string::npos) << run.out;
  EXPECT_NE(run.out.find(R"("clusterMask":3)"), std::string::npos) << run.out;
}

TEST_F(EditScripts, ATrailIsTypedInEachModeAndSaved) {
  const Outcome run =
      Run({"new-trail", "field\ttype\tPath", "field\tname\tFerns", "mode\tgps", "cell\t0\t0\tFern0",
           "cell\t0\t1\tN0.002", "cell\t0\t2\tE0.003", "mode\tmixture", "cell\t1\t0\tFern50",
           "cell\t1\t3\tFern0", "cell\t1\t4\t50", "cell\t1\t5\t90", "field\tcolor\tnavy",
           "field\twidth\t2m", "show\teditor", "ok"});
  EXPECT_EQ(run.status, 0) << run.err;
  EXPECT_NE(run.out.find(R"("kind":"trail")"), std::string::npos) << run.out;
  EXPECT_NE(run.out.find(R"("mode":"mixture")"), std::string::npos) << run.out;
  ExpectSaved({"T\tFerns\tPath\t", "\nG\tFern0\t", "\nC\tFern50\tFern0\t50"});
}

TEST_F(EditScripts, ARangeIsMadeOfFollowsAndCorrected) {
  const Outcome run = Run({"select\ttrails\tFen", "drop\tNew", "select\tranges\tFen", "open-range",
                           "field\tname\tFen of June", "cell\t0\t4\t6:00", "cell\t0\t5\t11:15",
                           "show\teditor", "ok"});
  EXPECT_EQ(run.status, 0) << run.err;
  EXPECT_NE(run.out.find(R"("kind":"range")"), std::string::npos) << run.out;
  EXPECT_NE(run.out.find(R"("mode":null,"enabledModes":[])"), std::string::npos) << run.out;
  ExpectSaved({"R\tFen of June\n", "\nR\tOru range\n"});
}

/// A trail without a type is in a group without a name.
TEST_F(EditScripts, AnEmptyTextIsTheRowOfThatName) {
  folder.Write("untyped.map", "T\tSolo\nG\tSolo1\tS20\tE47\n");
  const Outcome run = RunOn("untyped.map", {"select\ttrails\t", "drop\tNew", "select\ttrails",
                                            "tick\ttrails", "triangle", "show\tpanes"});
  EXPECT_EQ(run.status, 0) << run.err;
  EXPECT_NE(run.out.find(R"("open":true)"), std::string::npos) << run.out;
}

TEST_F(EditScripts, AnswersAreTakenInTurn) {
  // The first answer keeps the editor open, the second closes it without saving.
  const Outcome run =
      Run({"select\ttrails\tTrail\tMain", "open-trail", "cell\t1\t0\tSummit", "answer\t3",
           "answer\t2", "close", "show\teditor", "close", "show\teditor"});
  EXPECT_EQ(run.status, 0) << run.err;
  EXPECT_TRUE(run.out.starts_with(R"({"kind":"trail")")) << run.out;
  EXPECT_TRUE(run.out.ends_with("\nnull\n")) << run.out;
  EXPECT_EQ(folder.Read("saved.map").find("Summit"), std::string::npos);
}

TEST_F(EditScripts, RowsOfATableAreInsertedMovedAndDeleted) {
  const Outcome run = Run({"select\ttrails\tTrail\tMain", "open-trail", "move\t0\t2", "delete\t0",
                           "paste\t2\t0\tNew tree\t\t\tCamp\t25\t180", "show\teditor", "ok"});
  EXPECT_EQ(run.status, 0) << run.err;
  EXPECT_NE(run.out.find("New tree"), std::string::npos) << run.out;
}

/// Measuring the trails projected the points of the map in place, so a second document held other
/// metres.
TEST_F(EditScripts, ShowingTheMapLeavesItAsItWas) {
  const Outcome run = Run({"show\tmap", "show\tmap"});
  ASSERT_EQ(run.status, 0) << run.err;
  const size_t half = run.out.size() / 2;
  EXPECT_EQ(run.out.substr(0, half), run.out.substr(half));
}

/// A plot that is no longer closed kept the mark of a closed one.
TEST_F(EditScripts, APlotThatIsOpenedAgainHasNoArea) {
  const Outcome run = Run({"show\tmap", "select\ttrails\tArea\tPlot", "open-trail", "show\teditor",
                           "delete\t4", "ok", "show\tmap"});
  ASSERT_EQ(run.status, 0) << run.err;
  const size_t last = run.out.rfind("{\"fileName\"");
  EXPECT_NE(run.out.find(R"("closed":true)"), std::string::npos) << run.out;
  EXPECT_EQ(run.out.find(R"("closed":true)", last), std::string::npos) << run.out;
}

TEST_F(EditScripts, FieldsThatDoNotFitArePointedOut) {
  const std::string site = "select\ttrails\tTrail";
  const std::string range = "select\tranges\tOru range";
  const std::vector<std::pair<std::vector<std::string>, std::string>> faults = {
      {{"select\tranges\tOru range\tmore"}, "there is no row more"},
      {{"tick\tfoo\tx"}, "there is no pane foo"},
      {{"tick\tranges\ta\tb"}, "there is no row b"},
      {{"triangle\tTrail\tMain"}, "the row Main has no triangle"},
      {{"drop\tNone"}, "there is no row None"},
      {{site, "trail-visibility\tfilled=maybe"}, "filled can't be set to maybe"},
      {{site, "trail-visibility\tfillPattern=99"}, "fillPattern can't be set to 99"},
      {{site, "trail-visibility\tlabelMode=0"}, "labelMode can't be set to 0"},
      {{site, "trail-visibility\tmarkStyle=x"}, "markStyle can't be set to x"},
      {{site, "trail-visibility\tvisible"}, "there is no control visible"},
      {{range, "range-visibility\tvisible=x"}, "visible can't be set to x"},
      {{range, "range-visibility\tvisible"}, "there is no control visible"},
      {{range, "range-visibility\tdrawMode=x"}, "drawMode can't be set to x"},
      {{range, "range-visibility\tclusterMask=x"}, "clusterMask can't be set to x"},
      {{range, "range-visibility\tshowSm=true,false"}, "showSm can't be set to true,false"},
      {{range, "range-visibility\tshowSm=a,b,c"}, "showSm can't be set to a,b,c"},
      {{range, "range-visibility\tshowSm=true,true,true,"},
       "showSm can't be set to true,true,true,"},
      {{"select\tranges\tIntersection of Fen range and Oru range", "range-visibility\tshading=1"},
       "shading can't be set to 1"},
      {{range, "open-range", "field\tfoo"}, "there is no field foo"},
      {{"new-trail", "mode\tgps", "cell\t0\t0\tA", "cell\t0\t1\tN0", "cell\t0\t2\tE0",
        "mode\trelative"},
       "the button relative is disabled"},
      {{"new-trail", "insert\tx"}, "a row is a whole number"},
      {{"new-trail", "insert\t1x"}, "a row is a whole number"},
      {{"new-trail", "delete\tx"}, "a row is a whole number"},
      {{"new-trail", "delete\t9"}, "there is no row 9"},
      {{"new-trail", "move\tx\t0"}, "a row is a whole number"},
      {{"new-trail", "move\t0\tx"}, "a row is a whole number"},
      {{"new-trail", "move\t9\t0"}, "there is no row 9"},
      {{"new-trail", "cell\t0\tx"}, "a row and a column are whole numbers"},
      {{"new-trail", "paste\tx\t0\ta"}, "a row and a column are whole numbers"},
      {{"new-trail", "paste\t0\tx\ta"}, "a row and a column are whole numbers"},
      {{"click\t1\t2\t3"}, "no trail editor is open"},
      {{"import\tsheet\tfoo"}, "there is no option foo"},
      {{"import\tsheet\t--nope=1"}, "there is no option --nope"},
      {{"import-gis\tnone.gpx\tfoo"}, "there is no option foo"},
      {{"import-gis\tnone.gpx\t--nope=1"}, "there is no option --nope"},
  };
  for (const auto& [lines, why] : faults) ExpectFault(lines, why);
}

TEST_F(EditScripts, AClickLiesOnTheEarth) {
  for (const std::string place :
       {"91\t2\t3", "-91\t2\t3", "x\t2\t3", "1\t541\t3", "1\t-541\t3", "1\t2\t3x"}) {
    ExpectFault({"new-trail", "mode\tgps", "click\t" + place},
                "a click needs latitude, longitude and altitude");
  }
  const Outcome run = Run(
      {"new-trail", "mode\tgps", "click\t0.001\t0.002\t12", "click\t-90\t540\t-3", "show\teditor"});
  EXPECT_EQ(run.status, 0) << run.err;
  EXPECT_NE(run.out.find(R"(["","N0° 0.060'","E0° 0.120'","12m")"), std::string::npos) << run.out;
}

TEST_F(EditScripts, CommandsWithoutASelectionAreDisabled) {
  for (const std::string command : {"delete-selected", "check", "undo", "redo"}) {
    ExpectFault({command}, "the command " + command + " is disabled");
  }
  for (const std::string nothing : {"select\ttrails", "select\tranges"}) {
    ExpectFault({"select\ttrails\tTrail", nothing, "delete-selected"},
                "the command delete-selected is disabled");
  }
  // Where the window shows a message, the script goes on.
  const Outcome run = Run({"open-trail", "open-range", "range-visibility"});
  EXPECT_EQ(run.status, 0);
  EXPECT_TRUE(
      run.err.ends_with("error: No trail selected\nerror: No range selected\n"
                        "error: Select a range first\n"))
      << run.err;
}

TEST_F(EditScripts, RowsAreTickedFoldedCheckedAndDeleted) {
  const Outcome shown =
      Run({"select\ttrails\tTrail", "add-select\ttrails\tArea", "check", "triangle\tTrail",
           "tick\ttrails\tTrail", "tick\tranges\tOru range", "show\tpanes"});
  EXPECT_EQ(shown.status, 0) << shown.err;
  EXPECT_NE(shown.out.find(R"("text":"Oru range","visible":false)"), std::string::npos)
      << shown.out;

  const Outcome run = Run({"select\tranges\tOru range", "delete-selected", "select\ttrails\tFen",
                           "delete-selected", "undo", "undo", "redo"});
  EXPECT_EQ(run.status, 0) << run.err;
  EXPECT_NE(run.err.find("note: 1 trail and 4 points deleted."), std::string::npos) << run.err;
  const std::string saved = folder.Read("saved.map");
  EXPECT_EQ(saved.find("R\tOru range\n"), std::string::npos) << saved;
  EXPECT_NE(saved.find("T\t\tFen\t"), std::string::npos) << saved;
}

TEST_F(EditScripts, VisibilityTakesEachControl) {
  const Outcome run =
      Run({"select\ttrails\tArea",
           "trail-visibility\tvisible=false\tfilled=true\tfillPattern=1"
           "\tlineStyle=2\tmarkStyle=1\tlabelMode=4",
           "select\tranges\tOru range",
           "range-visibility\tvisible=false\tshowSm=true,false,true\tdrawMode=1", "show\tpanes"});
  EXPECT_EQ(run.status, 0) << run.err;
  EXPECT_NE(run.out.find(R"("showSm":[true,false,true],"drawMode":1)"), std::string::npos)
      << run.out;
  ExpectSaved({"T\tPlot\tArea\t"});
}

TEST_F(EditScripts, AnEditorIsGivenUpOnlyWithoutChanges) {
  const std::string otherTrail = "select\ttrails\tArea";
  const std::string otherRange = "select\tranges\tFen range";
  const std::vector<std::string> trail = {"select\ttrails\tTrail\tMain", "open-trail"};
  const std::vector<std::string> range = {"select\tranges\tOru range", "open-range"};
  const auto with = [](std::vector<std::string> lines, const std::vector<std::string>& more) {
    lines.insert(lines.end(), more.begin(), more.end());
    return lines;
  };
  const std::string why = "the open editor has changes";
  ExpectFault(with(trail, {"cell\t1\t0\tX", otherTrail, "open-trail"}), why);
  ExpectFault(with(trail, {"cell\t1\t0\tX", otherRange, "open-range"}), why);
  ExpectFault(with(trail, {"cell\t1\t0\tX", "new-trail"}), why);
  ExpectFault(with(range, {"cell\t0\t4\t6:00", otherRange, "open-range"}), why);
  ExpectFault(with(range, {"cell\t0\t4\t6:00", "new-range"}), why);

  const Outcome run = Run(with(trail, {"open-trail", otherTrail, "open-trail", "show\teditor"}));
  EXPECT_EQ(run.status, 0) << run.err;
  EXPECT_NE(run.out.find("\"Top\""), std::string::npos) << run.out;
  const Outcome other = Run(with(
      range, {"open-range", otherRange, "open-range", "show\teditor", "cancel", "show\teditor"}));
  EXPECT_EQ(other.status, 0) << other.err;
  EXPECT_NE(other.out.find("Fen range"), std::string::npos) << other.out;
  EXPECT_TRUE(other.out.ends_with("\nnull\n")) << other.out;
}

TEST_F(EditScripts, AnEditorStaysOpenUntilItIsRight) {
  const Outcome nameless = Run({"new-range", "ok", "show\teditor"});
  EXPECT_EQ(nameless.status, 0);
  EXPECT_TRUE(nameless.err.ends_with("error: You must supply a name\n")) << nameless.err;
  EXPECT_TRUE(nameless.out.starts_with(R"({"kind":"range","title":"New Range")")) << nameless.out;

  const Outcome closed =
      Run({"select\tranges\tOru range", "open-range", "field\tcolor\tred", "field\tname\tZ",
           "answer\t2", "close", "show\teditor", "new-range", "close", "show\teditor"});
  EXPECT_EQ(closed.out, "null\nnull\n") << closed.err;
  ExpectSaved({"R\tOru range\n"});
}

TEST_F(EditScripts, RowsOfATableTakeCellsBesideEachOtherAndBelow) {
  const Outcome run = Run({"new-trail", "field\ttype\tPath", "insert\t0", "insert\t1",
                           "paste\t0\t0\tFern\tCamp\t\\n\tHill\tFern", "paste\t1\t2", "move\t1\t1",
                           "move\t1\t0", "cell\t1\t3", "delete\t1", "show\teditor"});
  EXPECT_EQ(run.status, 0) << run.err;
  EXPECT_TRUE(run.out.starts_with("beep\n")) << run.out;  // a row is inserted only at the top
  EXPECT_NE(run.out.find(R"("rows":[["Hill","Fern")"), std::string::npos) << run.out;
}

TEST_F(EditScripts, AScriptImportsAndSaves) {
  folder.Write("sheet.txt", "h\n6/2/2004\t0900\tCamp\tAteles\n6/2/2004\t1000\tRidge\tAteles\n");
  folder.Write("track.txt", "Track\tOne\nTrackpoint\tN0.001 E0.001\t6/2/2004 10:00:00\n");
  const Outcome run =
      Run({"import\tsheet.txt\t--skip=1\t--date=A\t--time=B\t--location=C"
           "\t--species=D",
           "import\tnone.txt\t--time=A", "import-gis\tnone.gpx\t--keep-altitude",
           "import-gis\ttrack.txt\t--type=Path", "save\tother.map"});
  EXPECT_EQ(run.status, 0) << run.err;
  EXPECT_NE(run.err.find("error: Can not open none.txt\n"), std::string::npos) << run.err;
  EXPECT_NE(run.err.find("error: Can't open file none.gpx\n"), std::string::npos) << run.err;
  ExpectSaved({"T\t\tAteles\t"});
  EXPECT_NE(folder.Read("other.map").find("T\t\tAteles\t"), std::string::npos);
}

TEST_F(EditScripts, AScriptImportsASheetOfASpreadsheet) {
  if (ORVANE_WITH_GDAL == 0) GTEST_SKIP() << "built without GDAL";
  const std::string row =
      "<row><c s=\"1\"><v>38049</v></c><c s=\"2\"><v>0.375</v></c><c "
      "t=\"str\"><v>Camp</v></c></row>";
  folder.Write("sheet.xlsx", XlsxOf({{"One", "<row/>"}, {"Two", row}}));
  const std::string options = "\t--date=A\t--time=B\t--location=C\t--species-always=Ateles";
  const Outcome run = Run({"import\tsheet.xlsx\t--sheet=None" + options,
                           "import\tsheet.xlsx\t--sheet=Two" + options, "save\tother.map"});
  EXPECT_EQ(run.status, 0) << run.err;
  EXPECT_NE(run.err.find("error: Can't find sheet None in sheet.xlsx\n"), std::string::npos)
      << run.err;
  ExpectSaved({"T\t\tAteles\t\t2004-3-3"});
}

TEST_F(EditScripts, AScriptIsReadFromAFileOrStandardInput) {
  folder.Write("script", "# lines that end in CR LF\r\n\r\nselect\ttrails\tTrail\r\ncheck\r\n");
  EXPECT_EQ(Do({"edit", "rich.map", "script"}).status, 0);
  EXPECT_EQ(Do({"edit", "rich.map", "-"}).status, 0);
  const Outcome run = Do({"edit", "rich.map", "nowhere"});
  EXPECT_EQ(run.status, 1);
  EXPECT_TRUE(run.err.ends_with("error: Can't open file nowhere\n")) << run.err;
}

}  // namespace
}  // namespace orvane
