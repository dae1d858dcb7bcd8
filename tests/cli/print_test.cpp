#include "cli/command_line.h"
#include "cli/rich_site.h"
#include "support/pdf_reader.h"

#include <cstdlib>
#include <regex>
#include <set>
#include <sstream>
#include <string>
#include <vector>

namespace orvane {
namespace {

#ifdef ORVANE_DRAWS

/// The sheets of a PDF file.
int Sheets(const std::string& pdf) {
  constexpr std::string_view Mark = "/Type /Page\n";
  int count = 0;
  for (size_t at = pdf.find(Mark); at != std::string::npos; at = pdf.find(Mark, at + 1)) ++count;
  return count;
}

struct PrintCommandTest : CommandLine {
  Outcome Printed(std::vector<std::string> options) {
    options.insert(options.begin(), {"print", "site.map", "-o", "site.pdf"});
    return Do(options);
  }
  int SheetsOf(const std::vector<std::string>& options) {
    const Outcome run = Printed(options);
    EXPECT_EQ(run.status, 0) << run.err;
    EXPECT_EQ(run.err, "");
    EXPECT_EQ(run.out, "");
    return Sheets(folder.Read("site.pdf"));
  }

  /// What another program makes of the file.
  std::string Read(const std::string& command) {
    const std::string line = "cd " + Quoted(folder.Path()) + " && " + command + " >read";
    EXPECT_EQ(std::system(line.c_str()), 0) << line;
    return folder.Read("read");
  }
  std::vector<std::string> PagesAsText() const { return PdfPagesAsText(folder, "site.pdf"); }
  /// The lines of a list of fonts that don't say that the font is in the file.
  std::string FontsThatAreNotEmbedded() {
    std::istringstream list(Read("pdffonts site.pdf"));
    // Columns: embedded, in part, with the letters of its signs.
    const std::regex embedded(" yes +(yes|no) +yes ");
    std::string others;
    int number = 0;
    for (std::string line; std::getline(list, line); ++number) {
      if (number >= 2 && !std::regex_search(line, embedded)) others += line + '\n';
    }
    EXPECT_GT(number, 2) << "no fonts";
    return others;
  }
};

TEST_F(PrintCommandTest, FillsOnePage) {
  EXPECT_EQ(SheetsOf({}), 1);
  const std::string pdf = folder.Read("site.pdf");
  EXPECT_TRUE(pdf.starts_with("%PDF-"));
  EXPECT_NE(pdf.find("/MediaBox [0 0 595.000000 842.000000]"), std::string::npos);
  const Outcome piped = Do({"print", "site.map", "-o", "-", "--paper", "letter", "--landscape"});
  EXPECT_EQ(piped.status, 0);
  EXPECT_NE(piped.out.find("/MediaBox [0 0 792.000000 612.000000]"), std::string::npos);
}

TEST_F(PrintCommandTest, CutsAnAreaAndAPlaceIntoPages) {
  // 2226 m each way; an A4 page shows 1.9 by 2.77 km.
  EXPECT_EQ(SheetsOf({"--area", "N0.01", "S0.01", "E0.01", "W0.01", "--scale", "1:10000"}), 2);
  EXPECT_EQ(SheetsOf({"--around", "N0", "E0", "--vertical", "3km", "--horizontal", "3km", "--scale",
                      "1:10000", "--rotate", "45", "--label", "Rains", "--point-size", "9",
                      "--grid-color", "#c0c0c0", "--dpi", "150"}),
            4);
}

TEST_F(PrintCommandTest, ReportsTheFirstBadField) {
  const std::vector<std::string> area = {"--area", "N1", "S1", "E1", "W1"};
  const auto saidOf = [&](std::vector<std::string> options) {
    options.insert(options.begin(), area.begin(), area.end());
    const Outcome run = Printed(options);
    EXPECT_EQ(run.status, 1);
    EXPECT_EQ(folder.Read("site.pdf"), "");
    return run.err;
  };
  EXPECT_EQ(saidOf({"--scale", "5000"}), "error: Bad scale (must be 1:<some number>)\n");
  EXPECT_EQ(saidOf({"--point-size", "73"}), "error: Bad point size\n");
  EXPECT_EQ(saidOf({"--grid-color", "green"}), "error: Bad color\n");
  EXPECT_EQ(saidOf({"--scale", "1:100"}), "error: Too many pages (93754474)\n");
}

TEST_F(PrintCommandTest, AsksBeforeALongJob) {
  const std::vector<std::string> options = {"--around", "N0",         "E0",  "--scale",
                                            "1:1000",   "--vertical", "4km", "--horizontal",
                                            "4km",      "--dpi",      "36"};
  std::vector<std::string> canceled = {"--answer", "2", "print", "site.map", "-o", "site.pdf"};
  canceled.insert(canceled.end(), options.begin(), options.end());
  const Outcome run = Do(canceled);
  EXPECT_EQ(run.status, 1);
  EXPECT_EQ(folder.Read("site.pdf"), "");
  const Outcome all = Printed(options);
  EXPECT_EQ(all.status, 0);
  const int pages = Sheets(folder.Read("site.pdf"));
  EXPECT_GT(pages, 100);
  const std::string question =
      "question: This makes " + std::to_string(pages) + " pages. Print them all? [";
  EXPECT_EQ(all.err, question + "Print]\n");
  EXPECT_EQ(run.err, question + "Cancel]\n");
}

TEST_F(PrintCommandTest, PrintsReports) {
  const auto titleOf = [this](const std::vector<std::string>& options) {
    EXPECT_EQ(SheetsOf(options), 1);
    const std::string pdf = folder.Read("site.pdf");
    const size_t begin = pdf.find("/Title (");
    std::string title;  // of 16 bits a letter
    for (size_t i = begin + 8; begin != std::string::npos && pdf[i] != ')'; ++i) {
      if (pdf[i] >= ' ' && pdf[i] <= '~') title += pdf[i];
    }
    return title;
  };
  EXPECT_EQ(titleOf({"--report", "trails"}), "Trail Summary");
  EXPECT_EQ(titleOf({"--report", "trails", "--trail", "main", "--trail", "Odd"}), "Trail Summary");
  EXPECT_EQ(titleOf({"--report", "index", "--format", "seconds", "--paper", "A5"}),
            "Point Summary");
  EXPECT_EQ(titleOf({"--report", "ranges", "--measure", "2"}), "Range Stats");
  EXPECT_EQ(titleOf({"--report", "profile", "--trail", "Main"}), "Main");
  EXPECT_EQ(titleOf({"--report", "profile", "--transect", "Camp", "Ridge", "--landscape"}),
            "Transect");
}

/// Without the date, and the identifier that is made from it.
std::string Undated(std::string pdf) {
  for (const char* word : {"/CreationDate (D:", "<xmp:CreateDate>", "<xmp:ModifyDate>",
                           "<xmp:MetadataDate>", "/ID [ <"}) {
    const size_t at = pdf.find(word);
    if (at != std::string::npos) pdf.erase(at, std::string_view(word).size() + 20);
  }
  return pdf;
}

TEST_F(PrintCommandTest, EachRunMakesTheSameFile) {
  for (const char* report : {"trails", "index", "ranges"}) {
    std::set<std::string> files;
    for (int run = 0; run < 6; ++run) {
      ASSERT_EQ(Printed({"--report", report}).status, 0);
      files.insert(Undated(folder.Read("site.pdf")));
    }
    EXPECT_EQ(files.size(), 1U) << report;
  }
}

TEST_F(PrintCommandTest, TextIsTextInFontsOfTheFile) {
  ASSERT_EQ(Printed({"--label", "Rains"}).status, 0);
  const std::string map = PagesAsText().front();
  for (const char* text : {"Rains", "Scale: 1:", "Centered on: ", "Camp", "Ridge"}) {
    EXPECT_NE(map.find(text), std::string::npos) << text << '\n' << map;
  }
  EXPECT_EQ(FontsThatAreNotEmbedded(), "");
  ASSERT_EQ(Printed({"--report", "index"}).status, 0);
  EXPECT_EQ(FontsThatAreNotEmbedded(), "");
}

TEST_F(PrintCommandTest, TheLegendHasItsLinesInOrder) {
  folder.Write("site.map", "\xC2\xA9 Surveyed by the club\nM\t1\n" + std::string(Site));
  ASSERT_EQ(Printed({"--around", "N0", "E0", "--scale", "1:10000", "--label", "Rains",
                     "--point-size", "12", "--rotate", "0"})
                .status,
            0);
  const std::string page = PagesAsText().back();
  size_t at = 0;
  for (const char* line : {"Surveyed by the club", "Rains", "100m", "Scale: 1:10000", "200m",
                           "Centered on: N0", "North vertical at center", "Magnetic deviation: "}) {
    const size_t found = page.find(line, at);
    ASSERT_NE(found, std::string::npos) << line << '\n' << page;
    at = found;
  }
}

TEST_F(PrintCommandTest, PagesOfReportsRepeatTheHeadingsAndCountThemselves) {
  std::string many = Site;
  for (int i = 100; i < 400; ++i) many += "L\tP" + std::to_string(i) + "\t1\t1\n";
  folder.Write("site.map", many);
  ASSERT_EQ(Printed({"--report", "index", "--format", "degrees"}).status, 0);
  const std::vector<std::string> pages = PagesAsText();
  ASSERT_GT(pages.size(), 2U);
  size_t names = 0;
  for (size_t page = 0; page < pages.size(); ++page) {
    const std::string& text = pages[page];
    EXPECT_NE(text.find("Lat/Lon"), std::string::npos) << text;
    const std::string foot =
        "page " + std::to_string(page + 1) + " of " + std::to_string(pages.size());
    EXPECT_NE(text.find(foot), std::string::npos) << text;
    EXPECT_NE(text.find("site.map"), std::string::npos) << text;
    for (int i = 100; i < 400; ++i) {
      if (text.find("P" + std::to_string(i)) != std::string::npos) ++names;
    }
  }
  EXPECT_EQ(names, 300U) << "no line is cut or printed twice";
}

TEST_F(PrintCommandTest, ReportsTakeTheirFormatAndMeasure) {
  ASSERT_EQ(Printed({"--report", "index", "--format", "seconds"}).status, 0);
  EXPECT_NE(PagesAsText().front().find("36.0"), std::string::npos) << PagesAsText().front();
  ASSERT_EQ(Printed({"--report", "index"}).status, 0);
  EXPECT_NE(PagesAsText().front().find("0.600'"), std::string::npos) << PagesAsText().front();
}

TEST_F(PrintCommandTest, ChartsOfRangesShowTheChosenMeasure) {
  folder.Write("site.map", RichSite);
  const auto chartTitle = [this](const char* measure) {
    EXPECT_EQ(Printed({"--report", "ranges", "--range", "Oru range", "--measure", measure}).status,
              0);
    std::istringstream lines(PagesAsText().front());
    for (std::string line; std::getline(lines, line);) {
      const size_t at = line.find("Hourly");
      if (at != std::string::npos) return line.substr(at);
    }
    return std::string();
  };
  EXPECT_EQ(chartTitle("0"), "Hourly Travel");
  EXPECT_EQ(chartTitle("1"), "Hourly activity of fruit");
  EXPECT_EQ(chartTitle("2"), "Hourly activity of leaf");
  EXPECT_EQ(chartTitle("3"), "Hourly activity of rest");
}

TEST_F(PrintCommandTest, NotesThatThePaperCutsColumns) {
  const auto isCut = [this](const char* report, const char* paper) {
    const Outcome run = Printed({"--report", report, "--paper", paper});
    EXPECT_EQ(run.status, 0);
    return run.err.find("note: The paper is too narrow: columns at the right are cut\n") !=
           std::string::npos;
  };
  folder.Write("site.map", RichSite);
  for (const char* report : {"trails", "ranges"}) {
    EXPECT_FALSE(isCut(report, "A4")) << report;
    EXPECT_TRUE(isCut(report, "A6")) << report;
  }
  folder.Write("site.map", "T\tMain\nG\t" + std::string(30, 'W') + "\tN0\tE0\n");
  EXPECT_FALSE(isCut("index", "A4"));
  EXPECT_TRUE(isCut("index", "A6"));
}

TEST_F(PrintCommandTest, AsksBeforeALongReport) {
  std::string many = Site;
  for (int i = 0; i < 9000; ++i) many += "L\tP" + std::to_string(i) + "\t1\t1\n";
  folder.Write("site.map", many);
  const std::vector<std::string> options = {"--report", "index", "--paper", "A5"};
  std::vector<std::string> canceled = {"--answer", "2", "print", "site.map", "-o", "site.pdf"};
  canceled.insert(canceled.end(), options.begin(), options.end());
  const Outcome run = Do(canceled);
  EXPECT_EQ(run.status, 1);
  EXPECT_EQ(folder.Read("site.pdf"), "");
  EXPECT_TRUE(run.err.starts_with("question: This makes ")) << run.err;
  EXPECT_TRUE(run.err.ends_with(" pages. Print them all? [Cancel]\n")) << run.err;
}

TEST_F(PrintCommandTest, NamesInLatin1AreFoundByUtf8) {
  folder.Write("site.map",
               "T\tCaf\xE9\tTrail\nG\tCamp\tN0\tE0\nG\tR\xEDo\tN0\tE0.01\nR\tCaf\xE9\n");
  EXPECT_EQ(Printed({"--report", "profile", "--trail", "Caf\xC3\xA9"}).status, 0);
  EXPECT_EQ(Printed({"--report", "ranges", "--range", "Caf\xC3\xA9"}).status, 0);
  EXPECT_EQ(Do({"trails", "site.map", "--trail", "CAF\xC3\xA9"}).status, 0);
  EXPECT_EQ(Do({"check", "site.map", "--trail", "Caf\xC3\xA9"}).status, 0);
  EXPECT_EQ(Do({"locate", "site.map", "R\xC3\xADo"}).status, 0);
  EXPECT_EQ(Do({"locate", "site.map", "R\xC3\xA9o"}).err, "error: Can't find R\xC3\xA9o\n");
  EXPECT_EQ(Do({"estimates", "site.map", "--range", "Caf\xC3\xA9"}).status, 0);
}

TEST_F(PrintCommandTest, ReportsNamesThatItCannotFind) {
  EXPECT_EQ(Printed({"--report", "trails", "--trail", "Nowhere"}).err,
            "error: Can't find Nowhere\n");
  EXPECT_EQ(Printed({"--report", "ranges", "--range", "Nowhere"}).err,
            "error: Can't find Nowhere\n");
  EXPECT_EQ(Printed({"--report", "profile", "--trail", "Nowhere"}).err,
            "error: Can't find Nowhere\n");
  const Outcome run = Printed({"--report", "profile", "--transect", "Camp", "Nowhere"});
  EXPECT_EQ(run.err, "error: Can't find Nowhere\n");
  EXPECT_EQ(run.status, 1);
  EXPECT_EQ(folder.Read("site.pdf"), "");
}

TEST_F(PrintCommandTest, RefusesOptionsThatDoNotGoTogether) {
  const auto expectWrong = [this](std::vector<std::string> options, const std::string& said) {
    options.insert(options.begin(), {"print", "site.map", "-o", "site.pdf"});
    ExpectWrongUsage(options, said);
    EXPECT_EQ(folder.Read("site.pdf"), "");
  };
  expectWrong({"--area", "N1", "S1", "E1", "W1", "--around", "N0", "E0"}, "--area excludes");
  expectWrong({"--scale", "1:5000"}, "--scale requires");
  expectWrong({"--area", "N1", "S1", "E1", "W1", "--rotate", "3"}, "--rotate requires");
  expectWrong({"--area", "N1", "S1", "E1", "W1", "--vertical", "3m"}, "--vertical requires");
  expectWrong({"--horizontal", "3m"}, "--horizontal requires");
  expectWrong({"--paper", "papyrus"}, "papyrus is not one of A4, Letter");
  expectWrong({"--dpi", "0"}, "--dpi");
  expectWrong({"--dpi", "1200", "--paper", "A0"}, "more than 32000 pixels");
  expectWrong({"--area", "N1"}, "--area");
  expectWrong({"--report", "profile"}, "requires one --trail or --transect");
  expectWrong({"--report", "profile", "--trail", "Main", "--trail", "Odd"}, "requires one --trail");
  expectWrong({"--report", "ranges", "--measure", "4"}, "--measure");
  expectWrong({"--report", "trails", "--measure", "1"}, "--measure requires");
  expectWrong({"--report", "ranges", "--trail", "Main"}, "--trail requires");
  expectWrong({"--report", "trails", "--format", "degrees"}, "--format requires");
  expectWrong({"--report", "index", "--label", "x"}, "--label requires");
  expectWrong({"--report", "map"}, "--report");
  expectWrong({"--trail", "Main"}, "--trail requires");
}

#endif

}  // namespace
}  // namespace orvane
