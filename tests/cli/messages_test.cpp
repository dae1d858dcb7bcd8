#include "cli/command_line.h"

#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace orvane {
namespace {

// The sanitizer reserves far more memory than any limit leaves it.
#if defined(__has_feature)
#if __has_feature(address_sanitizer)
#define ORVANE_RESERVES_MEMORY
#endif
#elif defined(__SANITIZE_ADDRESS__)
#define ORVANE_RESERVES_MEMORY
#endif

const std::vector<std::string> Import = {"import", "site.map",      "sheet.txt", "-o",
                                         "-",      "--date-always", "2003-5-31", "--time",
                                         "A",      "--location",    "B",         "--species-always",
                                         "Oru"};

std::vector<std::string> With(std::vector<std::string> before,
                              const std::vector<std::string>& after) {
  before.insert(before.end(), after.begin(), after.end());
  return before;
}

TEST_F(CommandLine, ANumberThatIsRefusedSaysWhatIsWanted) {
  const std::string wanted = "--answer: many is not a whole number from 1 to 3";
  ExpectWrongUsage({"--answer", "many", "dump", "site.map"}, wanted);
  for (const std::string number : {"0", "4", "1.5", " 1", "1 ", "0x1", "99999999999999999999"}) {
    ExpectWrongUsage({"--answer", number, "dump", "site.map"}, number + " is not a whole number");
  }
  ExpectWrongUsage({"--answer=", "dump", "site.map"}, "--answer: \"\" is not a whole number");
  ExpectWrongUsage({"contours", "site.map", "--interval", "0"},
                   "--interval: 0 is not a whole number of metres from 1 on");
  ExpectWrongUsage({"profile", "site.map", "--trail", "Main", "--width", "1"},
                   "--width: 1 is not a whole number of pixels from 2 to 32000");
  ExpectWrongUsage({"profile", "site.map", "--trail", "Main", "--width", "32001"}, "32001 is not");
  for (const std::string number : {"0.0999", "2.0001", "0", "-1", "nan", "1e400", "half"}) {
    ExpectWrongUsage({"estimates", "site.map", "--bandwidth-factor=" + number},
                     "--bandwidth-factor: " + number + " is not a number from 0.1 to 2");
  }
  for (const std::string number : {"-1", "1.0", "18446744073709551616", "one", " 1"}) {
    ExpectWrongUsage({"estimates", "site.map", "--seed=" + number},
                     "--seed: " + number + " is not a whole number from 0 to 18446744073709551615");
  }
  for (const std::string number : {"-1", "0.5", "many", "1 "}) {
    ExpectWrongUsage({"residuals", "site.map", "--worst=" + number},
                     "--worst: " + number + " is not a whole number from 0 on");
  }
  ExpectWrongUsage({"save", "site.map", "-", "--simple=maybe"}, "only true and false");
#ifdef ORVANE_DRAWS
  for (const std::string number : {"nan", "inf", "-1", "0", "1m", "1e400"}) {
    ExpectWrongUsage({"render", "site.map", "-o", "x.png", "--scale", number},
                     "--scale: " + number + " is not a number of metres above 0");
  }
  for (const std::string number : {"nan", "-inf", "north", "1e400"}) {
    ExpectWrongUsage({"render", "site.map", "-o", "x.png", "--rotate=" + number},
                     "--rotate: " + number + " is not a number of degrees");
  }
  EXPECT_EQ(folder.Read("x.png"), "");
  EXPECT_EQ(Do({"render", "site.map", "-o", "a.svg", "--rotate", "-90"}).status, 0);
  EXPECT_EQ(Do({"render", "site.map", "-o", "b.svg", "--rotate", "-810"}).status, 0);
  EXPECT_EQ(folder.Read("a.svg"), folder.Read("b.svg"));
#endif
}

TEST_F(CommandLine, AQuestionIsShownWithTheButtonThatAnsweredIt) {
  folder.Write("sheet.txt", "800\tCamp\n830\tthe creek\n840\tRidge\n");
  const std::string question =
      "question: Bad location specification the creek, Do you want to continue? ";
  EXPECT_EQ(Do(Import).err.find(question + "[Yes]\n"), 0U) << Do(Import).err;
  for (const std::string answer : {"2", "3"}) {
    // There is no third button: the last one is taken.
    const Outcome run = Do(With({"--answer", answer}, Import));
    EXPECT_EQ(run.status, 1);
    EXPECT_EQ(run.err.find(question + "[No]\n"), 0U) << run.err;
  }
}

TEST_F(CommandLine, WherePutsFileAndLineBeforeMessagesThatHaveThem) {
  folder.Write("faults.map", "T\tW\nG\tCamp\tN0\tE0\nC\tA\tCamp\t5cm\t0\nP\tLost\n");
  EXPECT_EQ(Do({"--where", "locate", "faults.map", "Camp"}).err,
            "faults.map:3: error: Bad distance for point A\n"
            "warning: No position found for point Lost\n");
  EXPECT_EQ(Do({"locate", "faults.map", "Camp"}).err,
            "error: Bad distance for point A\nwarning: No position found for point Lost\n");
  folder.Write("sheet.txt", "800\tCamp\n\n930x\tCamp\n");
  EXPECT_EQ(
      Do(With({"--where"}, Import)).err.find("sheet.txt:3: question: Bad time specification 930x"),
      0U);
}

TEST_F(CommandLine, ASaveSucceedsWhateverMessagesItsMapGives) {
  folder.Write("faults.map", "T\tW\nG\tCamp\tN0\tE0\nC\tA\tCamp\t5cm\t0\n");
  const Outcome saved = Do({"save", "faults.map", "saved.map"});
  EXPECT_EQ(saved.status, 0);
  EXPECT_EQ(saved.err, "error: Bad distance for point A\n");
  EXPECT_TRUE(std::ifstream(folder.Path("saved.map")));
  const Outcome failed = Do({"save", "faults.map", "nowhere/saved.map"});
  EXPECT_EQ(failed.status, 1);
}

/// The commands that write to standard output.
std::vector<std::vector<std::string>> PrintingCommands() {
  return {{"--help"},
          {"--version"},
          {"dump", "site.map"},
          {"save", "site.map", "-"},
          {"locate", "site.map", "Camp"},
          {"check", "site.map"},
          {"trails", "site.map"},
          {"index", "site.map"},
          {"ranges", "site.map"},
          {"contours", "site.map", "--interval", "10"},
          {"profile", "site.map", "--trail", "Main"},
          {"export", "site.map", "--geojson", "-"},
          {"import-gis", "site.map", "gps.txt", "-o", "-"},
          {"edit", "site.map", "show.txt"},
#ifdef ORVANE_DRAWS
          {"render", "site.map", "-o", "-"},
#endif
          Import};
}

TEST_F(CommandLine, EachCommandReportsThatStandardOutputCannotBeWritten) {
  if (!std::ifstream("/dev/full")) GTEST_SKIP() << "no /dev/full here";
  folder.Write("site.map", Site + std::string("R\tHome\nF\tMain\n"));
  folder.Write("gps.txt", "name,time,a,b,lat,lon\nA,,,,1,1\nA,,,,1,2\n");
  folder.Write("sheet.txt", "800\tCamp\n");
  folder.Write("show.txt", "show\tpanes\n");
  for (const auto& arguments : PrintingCommands()) {
    const Outcome run = Do(arguments, ">/dev/full");
    EXPECT_EQ(run.status, 1) << arguments.front();
    const std::string said = "error: Can't write to standard output\n";
    EXPECT_TRUE(run.err.ends_with(said)) << arguments.front() << ": " << run.err;
    EXPECT_EQ(run.err.find("Can't"), run.err.rfind("Can't")) << run.err;
    EXPECT_EQ(Do(arguments).status, 0) << arguments.front() << ": " << Do(arguments).err;
  }
}

#ifndef ORVANE_RESERVES_MEMORY
TEST_F(CommandLine, RunningOutOfMemoryIsAFatalMessage) {
  std::string map = "T\tMain\n";
  for (int i = 0; i < 60000; ++i) {
    map += "G\tp" + std::to_string(i) + "\tN0 " + std::to_string(i / 2000.0) + "\tE0\n";
  }
  folder.Write("big.map", map);
  for (const std::string command : {"check", "dump", "index"}) {
    const Outcome run = Do({command, "big.map"}, ">out", "ulimit -v 40000 && ");
    EXPECT_EQ(run.status, 3) << command;
    EXPECT_EQ(run.err, "fatal: out of memory\n") << command;
  }
  EXPECT_EQ(Do({"check", "site.map"}, ">out", "ulimit -v 40000 && ").status, 0);
}
#endif

TEST_F(CommandLine, ControlCharactersInMessagesAreEscaped) {
  folder.Write("odd.map", "E\t\x1B[31mred\x7F\n");
  const std::string text = "error: Unparseable input: E\\x09\\x1B[31mred\\x7F\n";
  EXPECT_EQ(Do({"locate", "odd.map", "x"}).err, text + "error: Can't find x\n");
  EXPECT_EQ(Do({"locate", "odd.map", "a\nb\tc"}).err, text + "error: Can't find a\\nb\\x09c\n");
}

}  // namespace
}  // namespace orvane
