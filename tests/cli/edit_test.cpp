// Scripts of the command `edit`: which lines end a run, and what the others do.

#include "command_line.h"
#include "rich_site.h"

namespace orvane {
namespace {

struct EditScripts : CommandLine {
  EditScripts() { folder.Write("rich.map", RichSite); }

  /// Runs a script, given as lines, on the site.
  Outcome Run(const std::vector<std::string>& lines) {
    std::string script;
    for (const std::string& line : lines) script += line + '\n';
    folder.Write("script", script);
    return Do({"edit", "rich.map", "script", "-o", "saved.map"});
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
  for (const std::string word :
       {"select", "drop", "answer", "show", "save", "import", "import-gis"}) {
    ExpectFault({"# a comment", "", word}, "wrong number of fields for " + word);
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

}  // namespace
}  // namespace orvane
