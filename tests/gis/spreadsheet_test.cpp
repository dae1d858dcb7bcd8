#include "entry/fix_import.h"
#include "entry/sheet_file.h"
#include "formats/format_module.h"
#include "support/map_from_text.h"
#include "support/spreadsheet_files.h"
#include "support/temporary_folder.h"

#include <gtest/gtest.h>

namespace orvane {
namespace {

/// Spreadsheets written here, read through the module.
struct Spreadsheets : MapFixture {
  TemporaryFolder folder;

  void SetUp() override {
    if (ORVANE_WITH_GDAL == 0) GTEST_SKIP() << "built without GDAL";
    ASSERT_NE(LoadFormatModule().module, nullptr) << LoadFormatModule().fault;
  }
  std::string TextOf(const std::string& name, const SheetChooser& choose = {}) {
    const auto sheet = ReadSheet(messages, folder.Path(name), choose);
    return sheet ? sheet->text : "none";
  }
  std::string TextOfFile(const std::string& name, const std::string& bytes) {
    folder.Write(name, bytes);
    return TextOf(name);
  }
  /// What is said of each `.xls` file that is read.
  std::string NoteOfXls(const std::string& name) const {
    return "Cells of " + folder.Path(name) +
           " with formulas are read as empty, those with errors as 1; save it as .xlsx if it has "
           "any";
  }
  /// The text that a fault makes.
  void ExpectRefused(const std::string& name, const std::string& bytes, const std::string& fault) {
    messages.Clear();
    EXPECT_EQ(TextOfFile(name, bytes), "none") << fault;
    EXPECT_EQ(Said(), Texts{"Can't read spreadsheet " + folder.Path(name) + ": " + fault});
  }
};

std::string Cell(const std::string& place, const std::string& value, int style = 0,
                 const std::string& kind = "n") {
  return "<c r=\"" + place + "\" s=\"" + std::to_string(style) + "\" t=\"" + kind + "\"><v>" +
         value + "</v></c>";
}

std::string Row(int number, const std::string& cells) {
  return "<row r=\"" + std::to_string(number) + "\">" + cells + "</row>";
}

TEST_F(Spreadsheets, OfXlsxBecomeLinesOfCells) {
  const std::string rows =
      Row(1, Cell("A1", "0", 0, "s") + Cell("B1", "1", 0, "s") + Cell("D1", "2", 0, "s")) +
      Row(3, R"(<c r="A3" t="inlineStr"><is><t>in line</t></is></c>)" + Cell("B3", "1", 0, "b") +
                 Cell("C3", "#N/A", 0, "e") + Cell("D3", "shown", 0, "str")) +
      Row(4, "<c><v>7</v></c><c/><c><v>0.10000000000000001</v></c>") +
      Row(5, R"(<c r="A5" s="1"/>)") + Row(7, Cell("AA7", "x", 0, "str")) + Row(9, "");
  const std::string text = TextOfFile(
      "a.xlsx",
      XlsxOf({{"One", rows}}, {"<t>Time</t>", "<r><t>M\xC3\xBChle, </t></r><r><t>by\tit</t></r>",
                               "<t>na\nme</t><rPh sb=\"0\" eb=\"1\"><t>spoken</t></rPh>"}));
  EXPECT_EQ(text,
            "Time\tM\xC3\xBChle, by it\t\tna me\n\nin line\tTRUE\t#N/A\tshown\n7\t\t0.1\n\n\n" +
                std::string(26, '\t') + "x\n");
  EXPECT_EQ(Said(), Texts{});
}

TEST_F(Spreadsheets, OfXlsxHaveDatesAndTimesAsTheirFormatsShowThem) {
  const std::string rows =
      Row(1, Cell("A1", "37684.75", 1) + Cell("B1", "37684.336805555555", 2) +
                 Cell("C1", "37684.336805555555", 3) + Cell("D1", "1.5", 4)) +
      Row(2, Cell("A2", "37684", 5) + Cell("B2", "37684", 6) + Cell("C2", "0.33715", 7) +
                 Cell("D2", "37684.5", 8)) +
      Row(3,
          Cell("A3", "59", 1) + Cell("B3", "61", 1) + Cell("C3", "0.25", 6) + Cell("D3", "-1", 1)) +
      Row(4, Cell("A4", "37684.999999999", 3) + Cell("B4", "soon", 1) + Cell("C4", "1e9", 1));
  EXPECT_EQ(TextOfFile("a.xlsx", XlsxOf({{"One", rows}})),
            "2003-03-04\t08:05\t2003-03-04 08:05\t36:00\n"
            "2003-03-04\t2003-03-04 00:00\t08:05\t37684.5\n"
            "1900-02-28\t1900-03-01\t06:00\t-1\n"
            "2003-03-05 00:00\tsoon\t1000000000\n");
  EXPECT_EQ(TextOfFile("b.xlsx",
                       XlsxOf({{"One", Row(1, Cell("A1", "36222.5", 3))}}, {}, "date1904=\"1\"")),
            "2003-03-04 12:00\n");
}

TEST_F(Spreadsheets, OfXlsxHaveDatesAndTimesThatAreWrittenOut) {
  const auto cell = [](const char* value, int style = 0) { return Cell("", value, style, "d"); };
  const std::string rows =
      Row(1, cell("2003-09-04T06:10:00") + cell("2003-09-04") + cell("06:10:29.4")) +
      Row(2, cell("2003-09-04T06:10:00", 1) + cell("2003-09-04T06:10", 2) +
                 cell("2003-09-04T00:00:00Z", 3) + cell("2003-09-04", 3)) +
      Row(3, cell("2003-12-31T23:59:59.9+08:00") + cell("2003-12-31T24:00:00")) +
      Row(4, cell("2003-02-29") + cell("2003-09-04 06:10") + cell("2003-09-04T6:10") +
                 cell("06:60") + cell("soon"));
  EXPECT_EQ(TextOfFile("a.xlsx", XlsxOf({{"One", rows}})),
            "2003-09-04 06:10\t2003-09-04\t06:10\n"
            "2003-09-04\t06:10\t2003-09-04 00:00\t2003-09-04 00:00\n"
            "2004-01-01 00:00\t2004-01-01 00:00\n"
            "2003-02-29\t2003-09-04 06:10\t2003-09-04T6:10\t06:60\tsoon\n");
}

TEST_F(Spreadsheets, OfXlsxHaveTheSameDayInDatesAndTimesJustBeforeMidnight) {
  const std::string number = "38000.9999999";
  EXPECT_EQ(
      TextOfFile("a.xlsx", XlsxOf({{"One", Row(1, Cell("A1", number, 1) + Cell("B1", number, 2) +
                                                      Cell("C1", number, 3))}})),
      "2004-01-15\t00:00\t2004-01-15 00:00\n");
}

TEST_F(Spreadsheets, OfXlsxHaveTheDatesOfEastAsia) {
  std::string rows;
  std::string expected;
  for (int style = 9; style < 24; ++style) {
    rows += Row(style, Cell("", "38000", style) + Cell("", "38000.25", style));
    const int format = style < 19 ? style + 18 : style + 31;
    const bool isTime = format == 32 || format == 33;
    const bool isEither = (format >= 34 && format <= 35) || (format >= 52 && format <= 53);
    expected += isTime ? "00:00\t06:00\n" : "2004-01-14\t";
    if (!isTime) expected += isEither ? "06:00\n" : "2004-01-14\n";
  }
  EXPECT_EQ(TextOfFile("a.xlsx", XlsxOf({{"One", rows}})), std::string(8, '\n') + expected);
}

TEST_F(Spreadsheets, OfXlsxHaveTheCharactersThatEscapesName) {
  const std::string rows =
      Row(1, Cell("A1", "0", 0, "s") + Cell("B1", "_x00FC__x20AC_", 0, "str") +
                 R"(<c r="C1" t="inlineStr"><is><t>_xD83D__xDE00_</t></is></c>)") +
      Row(2, Cell("A2", "_x005F_x0041_", 0, "str") + Cell("B2", "_x41_ _xZZZZ_ _x0041", 0, "str") +
                 Cell("C2", "a_x0000__xD83D_b_xDE00_", 0, "str"));
  EXPECT_EQ(TextOfFile("a.xlsx", XlsxOf({{"One", rows}}, {"<t>Sleep1_x000D_</t>"})),
            "Sleep1 \t\xC3\xBC\xE2\x82\xAC\t\xF0\x9F\x98\x80\n"
            "_x0041_\t_x41_ _xZZZZ_ _x0041\tab\n");
}

/// A number of days has 15 digits in the file, so a minute is not exact.
TEST_F(Spreadsheets, OfXlsxHaveEachMinuteOfTheDay) {
  std::string rows;
  std::string expected;
  for (int minute = 0; minute < 1440; ++minute) {
    char number[64];
    std::snprintf(number, sizeof number, "%.15g", 37684 + minute / 1440.0);
    rows += Row(minute + 1, Cell("A" + std::to_string(minute + 1), number, 2));
    std::snprintf(number, sizeof number, "%02d:%02d\n", minute / 60, minute % 60);
    expected += number;
  }
  EXPECT_EQ(TextOfFile("a.xlsx", XlsxOf({{"One", rows}})), expected);
}

std::string OdsCell(const std::string& attributes, const std::string& content = "") {
  return "<table:table-cell " + attributes + ">" + content + "</table:table-cell>";
}

TEST_F(Spreadsheets, OfOdsBecomeLinesOfCells) {
  const std::string rows =
      "<table:table-row>" +
      OdsCell("office:value-type=\"string\"",
              "<office:annotation><text:p>a note</text:p></office:annotation>"
              "<text:p>M\xC3\xBChle,<text:s text:c=\"2\"/>by<text:tab/><text:span>it</text:span>"
              "</text:p><text:p>two</text:p>") +
      OdsCell(R"(office:value-type="date" office:date-value="2003-03-04")",
              "<text:p>04/03/03</text:p>") +
      OdsCell(R"(table:style-name="both" office:value-type="date" office:date-value="2003-03-04")",
              "<text:p>04/03/03 12:00 AM</text:p>") +
      OdsCell(R"(office:value-type="date" office:date-value="2003-03-04T08:04:59.9999999")") +
      OdsCell(R"(office:value-type="time" office:time-value="PT08H05M29.9S")") +
      OdsCell(R"(office:value-type="time" office:time-value="PT36H00M00S")") +
      "</table:table-row><table:table-row table:number-rows-repeated=\"2\">" +
      OdsCell("table:number-columns-repeated=\"3\"") +
      OdsCell(
          "office:value-type=\"float\" office:value=\"1.50\" "
          "table:number-columns-repeated=\"2\"",
          "<text:p>1,50</text:p>") +
      "<table:covered-table-cell/>" +
      OdsCell(R"(office:value-type="boolean" office:boolean-value="true")") +
      OdsCell("table:number-columns-repeated=\"16000\"") +
      "</table:table-row><table:table-row table:number-rows-repeated=\"1048000\">" +
      OdsCell("table:number-columns-repeated=\"16384\"") + "</table:table-row>";
  EXPECT_EQ(TextOfFile("a.ODS", OdsOf({{"One", rows}})),
            "M\xC3\xBChle,  by it two\t2003-03-04\t2003-03-04 00:00\t2003-03-04 08:05\t08:05\t"
            "36:00\n\t\t\t1.5\t1.5\t\tTRUE\n\t\t\t1.5\t1.5\t\tTRUE\n");
  EXPECT_EQ(Said(), Texts{});
}

TEST_F(Spreadsheets, OfOdsHaveDatesAndTimesAsTheirStylesShowThem) {
  const auto date = [](const std::string& value, const std::string& style) {
    return OdsCell((style.empty() ? "" : "table:style-name=\"" + style + "\" ") +
                   R"(office:value-type="date" office:date-value=")" + value + "\"");
  };
  const auto row = [](const std::string& cells, const std::string& style = "") {
    return "<table:table-row table:default-cell-style-name=\"" + style + "\">" + cells +
           "</table:table-row>";
  };
  const std::string noon = "2003-09-04T12:00:00";
  const std::string columns = R"(<table:table-column table:number-columns-repeated="2"/>)"
                              R"(<table:table-column table:default-cell-style-name="date"/>)"
                              R"(<table:table-column table:default-cell-style-name="time"/>)";
  const std::string rows =
      columns +
      row(date(noon, "date") + date(noon, "time") + date(noon, "both") + date(noon, "child")) +
      row(date("2003-09-04", "child") + date(noon, "") + date(noon, "") + date(noon, "") +
          date(noon, "")) +
      row(date(noon, "other") + date(noon, "") + date(noon, ""), "both") +
      row(date("2003-09-04T08:05", "") + date("2003-09-04T08:05:00Z", "") + date("2003-02-29", "") +
          date("soon", "both"));
  EXPECT_EQ(TextOfFile("a.ods", OdsOf({{"One", rows}})),
            "2003-09-04\t12:00\t2003-09-04 12:00\t2003-09-04 12:00\n"
            "2003-09-04 00:00\t2003-09-04 12:00\t2003-09-04\t12:00\t2003-09-04 12:00\n"
            "2003-09-04 12:00\t2003-09-04 12:00\t2003-09-04 12:00\n"
            "2003-09-04 08:05\t2003-09-04 08:05\t2003-02-29\tsoon\n");
}

TEST_F(Spreadsheets, OfOdsHaveDurationsInAllForms) {
  const auto rowOf = [](const std::string& style, const Texts& values) {
    std::string cells;
    for (const std::string& value : values) {
      cells += OdsCell("table:style-name=\"" + style + "\" office:value-type=\"time\" " +
                       "office:time-value=\"" + value + "\"");
    }
    return "<table:table-row>" + cells + "</table:table-row>";
  };
  const Texts values = {"PT6H10M", "PT90M", "P1DT2H", "P1D", "PT911006H15M00S", "PT23H59M59.9S"};
  const std::string rows = rowOf("time", values) + rowOf("elapsed", values) + rowOf("", values) +
                           rowOf("time", {"-PT01H00M", "P", "PT", "P1DT", "PT6", "PT6H10", "T6H"});
  EXPECT_EQ(TextOfFile("a.ods", OdsOf({{"One", rows}})),
            "06:10\t01:30\t02:00\t00:00\t14:15\t00:00\n"
            "06:10\t01:30\t26:00\t24:00\t911006:15\t24:00\n"
            "06:10\t01:30\t26:00\t24:00\t911006:15\t00:00\n"
            "-PT01H00M\tP\tPT\tP1DT\tPT6\tPT6H10\tT6H\n");
}

TEST_F(Spreadsheets, OfXlsBecomeLinesOfCells) {
  const std::string bytes = XlsOf({{"One",
                                    {{0, 0, "Time"},
                                     {0, 2, "Place"},
                                     {2, 0, "", 37684.336805555555, 3},
                                     {2, 1, "", 0.33680555555555552, 2},
                                     {2, 2, "", 37684, 1},
                                     {2, 3, "", 1.5, 0}}}});
  EXPECT_EQ(TextOfFile("a.xls", bytes),
            "Time\t\tPlace\n\n2003-03-04 08:05\t08:05\t2003-03-04\t1.5\n");
  EXPECT_EQ(Said(), Texts{NoteOfXls("a.xls")});
}

TEST_F(Spreadsheets, OfSeveralSheetsGiveTheOneChosen) {
  const std::string one = Row(1, Cell("A1", "1"));
  const std::string two = Row(1, Cell("A1", "2"));
  folder.Write("a.xlsx", XlsxOf({{"One", one}, {"Two &amp; 3", two}}));
  folder.Write("a.xls", XlsOf({{"One", {{0, 0, "1"}}}, {"Two & 3", {{0, 0, "2"}}}}));
  const auto row = [](const std::string& number) {
    return "<table:table-row>" +
           OdsCell(R"(office:value-type="float" office:value=")" + number + "\"") +
           "</table:table-row>";
  };
  folder.Write("a.ods", OdsOf({{"One", row("1")}, {"Two &amp; 3", row("2")}}));
  for (const char* name : {"a.xlsx", "a.xls", "a.ods"}) {
    Texts said = {"Reading sheet One, the first of 2"};
    if (SpreadsheetKindOf(name) == SpreadsheetKind::Xls) said.push_back(NoteOfXls(name));
    messages.Clear();
    EXPECT_EQ(TextOf(name), "1\n") << name;
    EXPECT_EQ(Said(), said) << name;
    EXPECT_EQ(TextOf(name, ChooseNamed("Two & 3")), "2\n") << name;
    EXPECT_EQ(TextOf(name, [](const Texts& names) { return names.back(); }), "2\n") << name;
    messages.Clear();
    EXPECT_EQ(TextOf(name, [](const Texts&) { return std::nullopt; }), "none") << name;
    EXPECT_EQ(Said(), Texts{}) << name;
    EXPECT_EQ(TextOf(name, ChooseNamed("Three")), "none") << name;
    EXPECT_EQ(Said(), Texts{"Can't find sheet Three in " + folder.Path(name)}) << name;
  }
}

TEST_F(Spreadsheets, WithHiddenSheetsShowTheOthersFirst) {
  folder.Write("a.xlsx", XlsxOf({{R"(Lists" state="veryHidden)", Row(1, Cell("A1", "1"))},
                                 {"Follows", Row(1, Cell("A1", "2"))}}));
  EXPECT_EQ(TextOf("a.xlsx"), "2\n");
  EXPECT_EQ(TextOf("a.xlsx", ChooseNamed("Lists")), "1\n");
  EXPECT_EQ(Said(), Texts{"Reading sheet Follows, the first of 2"});
}

TEST_F(Spreadsheets, WithUnpackedSizesAboveTheLimitAreRefused) {
  std::string bomb = XlsxOf({{"One", Row(1, Cell("A1", "1"))}});
  const size_t entry = bomb.find("PK\x01\x02");
  bomb.replace(entry + 24, 4, std::string("\0\0\0\x20", 4));
  ExpectRefused("bomb.xlsx", bomb, "it is larger than 256 MiB unpacked");
}

TEST_F(Spreadsheets, WithEntitiesAreRefused) {
  const std::string entities =
      R"(<!DOCTYPE a [<!ENTITY a "ha"><!ENTITY b "&a;&a;&a;&a;&a;&a;&a;&a;">]>)";
  ExpectRefused("a.ods",
                OdsOf({{"One", "<table:table-row>" +
                                   OdsCell("office:value-type=\"string\"", "<text:p>&b;</text:p>") +
                                   "</table:table-row>"}},
                      entities),
                "it declares entities");
}

TEST_F(Spreadsheets, WithEndlessRowsAndColumnsAreRefused) {
  const auto cell = [](const std::string& repeats) {
    return "<table:table-row table:number-rows-repeated=\"" + repeats + "\">" +
           OdsCell(R"(office:value-type="float" office:value="1")") + "</table:table-row>";
  };
  const std::string tooMany = "it has more than 1048576 rows";
  ExpectRefused("a.ods", OdsOf({{"One", cell("1048577")}}), tooMany);
  ExpectRefused("a.ods", OdsOf({{"One", cell("18446744073709551615")}}), tooMany);
  ExpectRefused("a.ods", OdsOf({{"One", cell("2") + cell("1048575")}}), tooMany);
  ExpectRefused("a.xlsx", XlsxOf({{"One", Row(1048577, Cell("A1", "1"))}}), tooMany);
  ExpectRefused("a.xlsx", XlsxOf({{"One", Row(2, Cell("A2", "1")) + Row(1, Cell("A1", "1"))}}),
                "its rows are not in order");
  const std::string tooWide = "a row has more than 16384 columns";
  ExpectRefused("a.xlsx", XlsxOf({{"One", Row(1, Cell("XFE1", "1"))}}), tooWide);
  ExpectRefused("a.xlsx", XlsxOf({{"One", Row(1, Cell("ZZZZZZZZZZZZZZZZZZ1", "1"))}}), tooWide);
  ExpectRefused("a.ods",
                OdsOf({{"One", "<table:table-row>" +
                                   OdsCell("office:value-type=\"float\" office:value=\"1\" "
                                           "table:number-columns-repeated=\"1000000\"") +
                                   "</table:table-row>"}}),
                tooWide);
  // Each text is short, but all together are gigabytes.
  const std::string wide =
      "<table:table-row table:number-rows-repeated=\"1000000\">" +
      OdsCell(R"(office:value-type="string" table:number-columns-repeated="2000")",
              "<text:p>" + std::string(20000, 'x') + "</text:p>") +
      "</table:table-row>";
  ExpectRefused("a.ods", OdsOf({{"One", wide}}), "it is larger than 256 MiB unpacked");
}

TEST_F(Spreadsheets, WithEndlessCellsAreRefused) {
  const std::string longest(LongestCell, 'x');
  const std::string longer = longest + "x";
  const auto tooLong = [](const std::string& place) {
    return "the cell in " + place + " has more than 128 KiB of text";
  };
  const auto odsRow = [](const std::string& text) {
    return "<table:table-row>" + OdsCell("table:number-columns-repeated=\"27\"") +
           OdsCell("office:value-type=\"string\"", "<text:p>" + text + "</text:p>") +
           "</table:table-row>";
  };
  const auto xlsx = [](const std::string& cell, const std::string& shared) {
    return XlsxOf({{"One", Row(2, cell)}}, {"<t>" + shared + "</t>"});
  };
  const auto inLine = [](const std::string& text) {
    return R"(<c r="Z2" t="inlineStr"><is><t>)" + text + "</t></is></c>";
  };
  ExpectRefused("a.xlsx", xlsx(Cell("AA2", longer, 0, "str"), ""), tooLong("row 2, column AA"));
  ExpectRefused("a.xlsx", xlsx(inLine(longer), ""), tooLong("row 2, column Z"));
  ExpectRefused("a.xlsx", xlsx(Cell("XFD2", "0", 0, "s"), longer), tooLong("row 2, column XFD"));
  ExpectRefused("a.ods", OdsOf({{"One", odsRow("") + odsRow(longer)}}),
                tooLong("row 2, column AB"));
  messages.Clear();
  EXPECT_EQ(
      TextOfFile("a.xlsx", xlsx(Cell("A2", "0", 0, "s") + Cell("B2", longest, 0, "str"), longest)),
      "\n" + longest + "\t" + longest + "\n");
  EXPECT_EQ(TextOfFile("a.ods", OdsOf({{"One", odsRow(longest)}})),
            std::string(27, '\t') + longest + "\n");
  EXPECT_EQ(Said(), Texts{});

  std::string rows;
  for (int row = 1; row <= 611; ++row) {
    rows += Row(row, Cell("XFD" + std::to_string(row), "1"));
  }
  const std::string tooMany = "it has more than 10000000 cells, counted up to ";
  ExpectRefused("a.xlsx", XlsxOf({{"One", rows}}), tooMany + "row 611, column XFD");
  ExpectRefused("a.ods",
                OdsOf({{"One", "<table:table-row table:number-rows-repeated=\"1000000\">" +
                                   OdsCell("office:value-type=\"float\" office:value=\"1\" "
                                           "table:number-columns-repeated=\"11\"") +
                                   "</table:table-row>"}}),
                tooMany + "row 1, column K");
}

TEST_F(Spreadsheets, WithEndlessElementsAreRefused) {
  const auto nested = [](size_t depth) {
    std::string text;
    for (size_t i = 0; i < depth; ++i) text += "<text:a>";
    for (size_t i = 0; i < depth; ++i) text += "</text:a>";
    return OdsOf({{"One", text}});
  };
  messages.Clear();
  EXPECT_EQ(TextOfFile("a.ods", nested(250)), "");
  ExpectRefused("a.ods", nested(260),
                "content.xml has too many elements, or too many within each other");
  const std::vector<SheetContent> sheets(10001, {"One", ""});
  ExpectRefused("a.ods", OdsOf(sheets), "it has too many sheets");
}

TEST_F(Spreadsheets, ThatAreDamagedAreRefused) {
  const std::string damaged = "it is damaged, locked with a password, or not what its name says";
  ExpectRefused("a.xlsx", "no spreadsheet", damaged);
  ExpectRefused("a.xls", "no spreadsheet", damaged);
  ExpectRefused("a.ods", ZipOf({{"other.xml", "<a/>"}}), "content.xml is missing");
  ExpectRefused("a.xlsx", ZipOf({{"other.xml", "<a/>"}}), "_rels/.rels is missing");
  ExpectRefused("a.xlsx", XlsxOf({{"One", "<row>"}}),
                "xl/worksheets/sheet1.xml, line 2: mismatched tag");
  ExpectRefused("a.xlsx", XlsxOf({}), "it has no sheet");
  for (const char* number : {"1", "-1", "99999999999"}) {
    ExpectRefused("a.xlsx", XlsxOf({{"One", Row(1, Cell("A1", number, 0, "s"))}}, {"<t>a</t>"}),
                  "the text of the cell in row 1, column A is missing in the file");
  }
  messages.Clear();
  EXPECT_EQ(TextOf("missing.ods"), "none");
  EXPECT_EQ(Said(), Texts{"Can not open " + folder.Path("missing.ods")});
}

TEST_F(Spreadsheets, OfFixesKeepSecondsAndRowNumbers) {
  const Map& map = Open("");
  const std::string rows =
      Row(2, Cell("A2", "timestamp", 0, "str") + Cell("B2", "lat", 0, "str") +
                 Cell("C2", "lon", 0, "str") + Cell("D2", "animal", 0, "str")) +
      Row(3, Cell("A3", "37684.33715277778", 3) + Cell("B3", "-5") + Cell("C3", "120") +
                 Cell("D3", "\"Ana\" the first", 0, "str")) +
      Row(5, Cell("A5", "soon", 0, "str") + Cell("B5", "-5") + Cell("C5", "120"));
  folder.Write("fixes.xlsx", XlsxOf({{"One", rows}}));
  const auto import = ReadFixImport(map, folder.Path("fixes.xlsx"), {});
  ASSERT_TRUE(import);
  ASSERT_EQ(import->plan.fixes.size(), 1U);
  EXPECT_EQ(import->plan.fixes[0].row, 3U);
  EXPECT_EQ(import->plan.fixes[0].utc % 60000, 30000);
  EXPECT_EQ(import->table.animals[0].name, "\"Ana\" the first");
  EXPECT_EQ(FixNotes(*import)[0],
            "Left out row 5: \"soon\" in column timestamp is not a usable time");
}

}  // namespace
}  // namespace orvane
