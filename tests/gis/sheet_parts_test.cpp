// Spreadsheets with parts and cells that other programs write in other ways, given to the module.

#include "formats/format_module.h"
#include "support/spreadsheet_files.h"
#include "support/temporary_folder.h"

#include <gtest/gtest.h>

namespace orvane {
namespace {

using Texts = std::vector<std::string>;

constexpr const char* Kinds =
    "http://schemas.openxmlformats.org/officeDocument/2006/relationships/";

std::string RelationTo(const std::string& id, const std::string& kind, const std::string& target) {
  return "<Relationship Id=\"" + id + "\" Type=\"" + Kinds + kind + "\" Target=\"" + target +
         "\"/>";
}

std::string RelationList(const std::string& list) {
  return "<Relationships>" + list + "</Relationships>";
}

struct SheetParts : testing::Test {
  void SetUp() override {
    if (ORVANE_WITH_GDAL == 0) GTEST_SKIP() << "built without GDAL";
    ASSERT_NE(LoadFormatModule().module, nullptr) << LoadFormatModule().fault;
  }

  /// \return the rows as lines of cells, with bars between; or the fault
  static std::string RowsOf(const std::string& bytes, SpreadsheetKind kind,
                            ClockForm clock = ClockForm::Minutes,
                            const std::string& sheet = "One") {
    std::string text;
    const std::string fault = LoadFormatModule().module->readSheet(
        {"", bytes, kind}, sheet, clock, [&](const Texts& cells) {
          for (size_t i = 0; i < cells.size(); ++i) text += (i > 0 ? "|" : "") + cells[i];
          text += '\n';
          return true;
        });
    return fault.empty() ? text : fault;
  }

  /// \param parts  beside those of a workbook with the sheet "One"
  static std::string Book(const std::string& rows, std::vector<ZipPart> parts = {},
                          const std::string& relations = "") {
    parts.push_back(
        {"_rels/.rels", RelationList(RelationTo("a", "officeDocument", "xl/book.xml"))});
    parts.push_back({"xl/_rels/book.xml.rels",
                     RelationList(RelationTo("r1", "worksheet", "one.xml") + relations)});
    parts.push_back({"xl/book.xml",
                     "<workbook xmlns:r=\"r\"><sheets><sheet name=\"One\" r:id=\"r1\"/></sheets>"
                     "</workbook>"});
    parts.push_back({"xl/one.xml", "<worksheet><sheetData>" + rows + "</sheetData></worksheet>"});
    return ZipOf(parts);
  }
  static std::string XlsxRows(const std::string& rows, ClockForm clock = ClockForm::Minutes) {
    return RowsOf(Book(rows), SpreadsheetKind::Xlsx, clock);
  }
  /// A workbook with styles.
  static std::string StyledRows(const std::string& styles, const std::string& rows,
                                ClockForm clock = ClockForm::Minutes) {
    return RowsOf(Book(rows, {{"xl/styles.xml", "<styleSheet>" + styles + "</styleSheet>"}},
                       RelationTo("r2", "styles", "styles.xml")),
                  SpreadsheetKind::Xlsx, clock);
  }
  /// What a cell shows of a number in a format.
  static std::string Shown(const std::string& format, const std::string& number = "38000.25") {
    std::string code;
    for (const char c : format) code += c == '"' ? std::string("&quot;") : std::string(1, c);
    return StyledRows("<numFmts><numFmt numFmtId=\"200\" formatCode=\"" + code +
                          "\"/></numFmts><cellXfs><xf numFmtId=\"200\"/></cellXfs>",
                      "<row><c s=\"0\"><v>" + number + "</v></c></row>");
  }
  static std::string Content(const std::string& tables, const std::string& styles = "") {
    return "<office:document-content xmlns:office=\"o\" xmlns:table=\"t\" xmlns:text=\"x\" "
           "xmlns:style=\"s\" xmlns:number=\"n\">" +
           styles + "<office:body>" + tables + "</office:body></office:document-content>";
  }
  static std::string OdsRows(const std::string& rows, ClockForm clock = ClockForm::Minutes,
                             const std::string& styles = "") {
    return RowsOf(
        ZipOf({{"content.xml",
                Content("<table:table table:name=\"One\">" + rows + "</table:table>", styles)}}),
        SpreadsheetKind::Ods, clock);
  }
};

// --- .xlsx --------------------------------------------------------------------------------------

TEST_F(SheetParts, OfNumberFormatsShowDatesAndTimesOutsideOfLiterals) {
  const std::string number = "38000.25\n";
  EXPECT_EQ(Shown("yyyy"), "2004-01-14\n");
  EXPECT_EQ(Shown("DD/MM"), "2004-01-14\n");
  EXPECT_EQ(Shown("mm"), "2004-01-14\n");
  EXPECT_EQ(Shown("h:mm"), "06:00\n");
  EXPECT_EQ(Shown("ss"), "06:00\n");
  EXPECT_EQ(Shown("\"day\"0"), number);
  EXPECT_EQ(Shown("0\"day"), number);
  EXPECT_EQ(Shown("\\d0"), number);
  EXPECT_EQ(Shown("0_d"), number);
  EXPECT_EQ(Shown("0*d"), number);
  EXPECT_EQ(Shown("0\\"), number);
  EXPECT_EQ(Shown("0;yyyy"), number);
  EXPECT_EQ(Shown("0 AM/PM"), number);
  EXPECT_EQ(Shown("[Red]yyyy"), "2004-01-14\n");
  EXPECT_EQ(Shown("[]0"), number);
  EXPECT_EQ(Shown("[h]:mm"), "912006:00\n");
  EXPECT_EQ(Shown("[h"), "912006:00\n");
  EXPECT_EQ(Shown("[M]"), "912006:00\n");
  EXPECT_EQ(Shown(""), number);
}

TEST_F(SheetParts, OfFormatsWithNumbersShowTheirDatesAndTimes) {
  std::string styles;
  std::string cells;
  const int numbers[] = {1, 14, 17, 18, 21, 22, 23, 44, 45, 46, 47, 48, 49, 55, 56, 57, 58, 59};
  for (size_t i = 0; i < std::size(numbers); ++i) {
    styles += "<xf numFmtId=\"" + std::to_string(numbers[i]) + "\"/>";
    cells += "<row><c s=\"" + std::to_string(i) + "\"><v>38000.25</v></c></row>";
  }
  const std::string number = "38000.25\n";
  const std::string day = "2004-01-14\n";
  const std::string time = "06:00\n";
  EXPECT_EQ(StyledRows("<cellXfs>" + styles + "</cellXfs>", cells),
            number + day + day + time + time + "2004-01-14 06:00\n" + number + number + time +
                "912006:00\n" + time + number + number + time + time + day + day + number);
}

TEST_F(SheetParts, OfStylesThatAreMissingShowNumbers) {
  EXPECT_EQ(StyledRows("<cellXfs><xf numFmtId=\"x\"/></cellXfs><xf numFmtId=\"14\"/>",
                       "<row><c s=\"0\"><v>1.50</v></c><c s=\"1\"><v>2.50</v></c><c s=\"x\">"
                       "<v>3.50</v></c><c><v>4.50</v></c><c s=\"0x\"><v>5.50</v></c></row>"),
            "1.5|2.5|3.5|4.5|5.5\n");
}

TEST_F(SheetParts, OfNumbersThatAreNoMomentShowThemselves) {
  EXPECT_EQ(Shown("yyyy", "-1"), "-1\n");
  EXPECT_EQ(Shown("yyyy", "2958466"), "2958466\n");
  EXPECT_EQ(Shown("yyyy", "2958465"), "9999-12-31\n");
  EXPECT_EQ(Shown("yyyy", "12x"), "12x\n");
  EXPECT_EQ(Shown("yyyy", "soon"), "soon\n");
  EXPECT_EQ(Shown("0", "1.5x"), "1.5x\n");
  EXPECT_EQ(Shown("0", "x"), "x\n");
  EXPECT_EQ(Shown("0", "1e400"), "1e400\n");
  EXPECT_EQ(Shown("0", "-12345678901234567890"), "-12345678901234567890\n");
  EXPECT_EQ(Shown("yyyy h:mm", "0.25"), "06:00\n") << "a time without a day";
  EXPECT_EQ(Shown("yyyy", "0.25"), "1899-12-31\n");
}

TEST_F(SheetParts, OfTimesHaveSecondsIfAskedFor) {
  const std::string styles = "<cellXfs><xf numFmtId=\"21\"/></cellXfs>";
  const std::string cells =
      "<row><c s=\"0\"><v>0.25</v></c><c s=\"0\"><v>0.2503472222222222</v></c></row>";
  EXPECT_EQ(StyledRows(styles, cells, ClockForm::Seconds), "06:00|06:00:30\n");
  EXPECT_EQ(StyledRows(styles, cells), "06:00|06:00\n");
}

TEST_F(SheetParts, OfCellsWithoutAPlaceFollowEachOther) {
  EXPECT_EQ(XlsxRows("<row><c><v>1</v></c><c r=\"7\"><v>2</v></c><c r=\"c1\"><v>3</v></c>"
                     "<c r=\"D1\"><v>4</v></c><c><v>5</v></c></row><row><c><v>6</v></c></row>"),
            "3|||4|5\n6\n");
}

TEST_F(SheetParts, OfCellsOfEachKind) {
  EXPECT_EQ(XlsxRows("<row><c t=\"b\"><v>0</v></c><c t=\"b\"><v>1</v></c><c t=\"e\"><v>#DIV/0!</v>"
                     "</c><c t=\"n\"><v>1.0</v></c><c t=\"new\"><v>a</v></c><c t=\"n\"/>"
                     "<c t=\"s\"/><c t=\"str\"><v>b</v></c></row>"),
            "FALSE|TRUE|#DIV/0!|1|a|||b\n");
  EXPECT_EQ(XlsxRows("<row><c t=\"inlineStr\"><is><r><t>a</t></r><rPh><t>x</t></rPh><t>b</t></is>"
                     "</c></row>"),
            "ab\n");
}

TEST_F(SheetParts, OfDatesThatAreWrittenOutInAllForms) {
  const auto shown = [](const std::string& value, ClockForm clock = ClockForm::Minutes) {
    return XlsxRows("<row><c t=\"d\"><v>" + value + "</v></c></row>", clock);
  };
  EXPECT_EQ(shown("2003-09-04T06:10:00+02:00"), "2003-09-04 06:10\n");
  EXPECT_EQ(shown("2003-09-04T06:10:00-02:00"), "2003-09-04 06:10\n");
  EXPECT_EQ(shown("2003-09-04Z"), "2003-09-04\n");
  EXPECT_EQ(shown("2003-09-04T06:10:30", ClockForm::Seconds), "2003-09-04 06:10:30\n");
  for (const char* text : {"2003-13-04", "2003-09-04T06:10:00+2", "2003-09-04X", "25:00",
                           "06:10:61", "06:1", "06:10x", ""}) {
    EXPECT_EQ(shown(text), *text == '\0' ? "" : std::string(text) + "\n");
  }
}

TEST_F(SheetParts, OfEscapesThatAreNoPairsAreLeftOut) {
  const auto shown = [](const std::string& text) {
    return XlsxRows("<row><c t=\"str\"><v>" + text + ".</v></c></row>");
  };
  EXPECT_EQ(shown("_x00E9_"), "\xC3\xA9.\n");
  EXPECT_EQ(shown("_x6771_"), "\xE6\x9D\xB1.\n");
  EXPECT_EQ(shown("_xD83D__xDE00_"), "\xF0\x9F\x98\x80.\n");
  EXPECT_EQ(shown("_xD83D__x0041_"), "A.\n");
  EXPECT_EQ(shown("_xDE00__xDE00_"), ".\n");
  EXPECT_EQ(shown("_xD83D_"), ".\n");
  EXPECT_EQ(shown("_x00g0_ _x0041 _y0041_"), "_x00g0_ _x0041 _y0041_.\n");
}

TEST_F(SheetParts, EndWhenNoMoreRowsAreWanted) {
  for (const SpreadsheetKind kind :
       {SpreadsheetKind::Xlsx, SpreadsheetKind::Ods, SpreadsheetKind::Xls}) {
    const TemporaryFolder folder;
    std::string bytes;
    if (kind == SpreadsheetKind::Xlsx) {
      bytes = Book("<row><c><v>1</v></c></row><row><c><v>2</v></c></row><broken>");
    } else if (kind == SpreadsheetKind::Ods) {
      const std::string row =
          "<table:table-row table:number-rows-repeated=\"3\"><table:table-cell "
          "office:value-type=\"string\"><text:p>a</text:p></table:table-cell></table:table-row>";
      bytes = ZipOf({{"content.xml",
                      Content("<table:table table:name=\"One\">" + row + row + "</table:table>")}});
    } else {
      bytes = XlsOf({{"One", {{0, 0, "1"}, {1, 0, "2"}}}});
    }
    int rows = 0;
    const std::string path = folder.Write("a.xls", bytes);
    EXPECT_EQ(LoadFormatModule().module->readSheet({path, bytes, kind}, "One", ClockForm::Minutes,
                                                   [&](const Texts&) { return ++rows < 1; }),
              "");
    EXPECT_EQ(rows, 1);
  }
}

TEST_F(SheetParts, OfWorkbooksMayHavePrefixesAndWholePaths) {
  const std::string bytes =
      ZipOf({{"_rels/.rels",
              "<p:Relationships xmlns:p=\"p\"><p:Other/><p:Relationship Id=\"a\" "
              "Type=\"officeDocument\" Target=\"/book.xml\"/></p:Relationships>"},
             {"_rels/book.xml.rels", RelationList(RelationTo("r1", "worksheet", "/one.xml") +
                                                  RelationTo("r2", "chartsheet", "two.xml") +
                                                  RelationTo("r3", "styles", "missing.xml"))},
             {"book.xml",
              "<x:workbook xmlns:x=\"x\" xmlns:q=\"q\"><x:workbookPr date1904=\"true\"/><x:sheets>"
              "<x:sheet name=\"Chart\" q:id=\"r2\"/><x:sheet name=\"None\" q:id=\"r9\"/>"
              "<x:sheet name=\"One\" state=\"hidden\" sheetId=\"1\" "
              "q:id=\"r1\"/></x:sheets></x:workbook>"},
             {"one.xml",
              "<x:worksheet xmlns:x=\"x\"><x:row><x:c><x:v>1</x:v></x:c></x:row></x:worksheet>"}});
  const SheetList list = LoadFormatModule().module->listSheets({"", bytes, SpreadsheetKind::Xlsx});
  EXPECT_EQ(list.fault, "");
  EXPECT_EQ(list.names, Texts{"One"});
  EXPECT_EQ(RowsOf(bytes, SpreadsheetKind::Xlsx), "1\n");
  for (const char* name : {"Chart", "Two"}) {
    EXPECT_EQ(RowsOf(bytes, SpreadsheetKind::Xlsx, ClockForm::Minutes, name),
              std::string("it has no sheet ") + name);
  }
}

TEST_F(SheetParts, ThatAreMissingOrDamagedAreNamed) {
  const auto listed = [](const std::vector<ZipPart>& parts) {
    return LoadFormatModule().module->listSheets({"", ZipOf(parts), SpreadsheetKind::Xlsx}).fault;
  };
  const ZipPart top{"_rels/.rels", RelationList(RelationTo("a", "officeDocument", "xl/book.xml"))};
  EXPECT_EQ(listed({{"a", ""}}), "_rels/.rels is missing");
  EXPECT_EQ(listed({top}), "xl/book.xml is missing");
  EXPECT_EQ(listed({top, {"xl/book.xml", "<workbook/>"}}), "xl/_rels/book.xml.rels is missing");
  EXPECT_EQ(RowsOf(ZipOf({top}), SpreadsheetKind::Xlsx), "xl/book.xml is missing");
  EXPECT_TRUE(StyledRows("<cellXfs>", "").starts_with("xl/styles.xml, line 1: "));
  EXPECT_TRUE(
      RowsOf(Book("", {{"xl/texts.xml", "<sst>"}}, RelationTo("r2", "sharedStrings", "texts.xml")),
             SpreadsheetKind::Xlsx)
          .starts_with("xl/texts.xml, line "));
}

TEST_F(SheetParts, ThatAreTooManyAreRefused) {
  std::string relations;
  std::string sheets;
  for (std::uint64_t i = 0; i <= MostParts; ++i) {
    relations += RelationTo("a", "theme", "theme.xml");
    sheets += "<sheet name=\"a\"/>";
  }
  const auto listed = [](const std::string& list, const std::string& book) {
    return LoadFormatModule()
        .module
        ->listSheets({"",
                      ZipOf({{"_rels/.rels",
                              RelationList(RelationTo("a", "officeDocument", "book.xml") + list)},
                             {"book.xml", "<workbook>" + book + "</workbook>"}}),
                      SpreadsheetKind::Xlsx})
        .fault;
  };
  EXPECT_EQ(listed(relations, ""), "it has too many parts");
  EXPECT_EQ(listed("", sheets), "it has too many sheets");
}

// --- .ods ---------------------------------------------------------------------------------------

std::string OdsOne(const std::string& attributes, const std::string& content = "") {
  return "<table:table-row><table:table-cell " + attributes + ">" + content +
         "</table:table-cell></table:table-row>";
}

TEST_F(SheetParts, OfOdsHaveEachKindOfValue) {
  EXPECT_EQ(OdsRows(OdsOne(R"(office:value-type="percentage" office:value="0.250")")), "0.25\n");
  EXPECT_EQ(OdsRows(OdsOne(R"(office:value-type="currency" office:value="2.50")")), "2.5\n");
  EXPECT_EQ(OdsRows(OdsOne(R"(office:value-type="boolean" office:boolean-value="false")")),
            "FALSE\n");
  EXPECT_EQ(OdsRows(OdsOne(R"(office:value-type="string" office:string-value="hidden")")),
            "hidden\n");
  EXPECT_EQ(OdsRows(OdsOne(R"(office:value-type="string" office:string-value="hidden")",
                           "<text:p>a<text:s/>b<text:line-break/>c</text:p>")),
            "a b c\n");
  EXPECT_EQ(OdsRows(OdsOne(R"(office:value-type="date" office:date-value="08:05")")), "08:05\n");
  EXPECT_EQ(OdsRows(OdsOne("", "<text:h>no paragraph</text:h>")), "");
}

TEST_F(SheetParts, OfOdsAreThoseOfTheSheetItself) {
  const std::string cell =
      "<table:table-row><table:table-cell office:value-type=\"string\"><text:p>in</text:p>"
      "<table:table table:name=\"Inner\"><table:table-row><table:table-cell "
      "office:value-type=\"string\"><text:p>out</text:p></table:table-cell></table:table-row>"
      "</table:table></table:table-cell></table:table-row>";
  const std::string bytes =
      ZipOf({{"content.xml", Content("<table:table table:name=\"Other\">" + cell +
                                     "</table:table><table:table table:name=\"One\">" + cell +
                                     "</table:table><table:table table:name=\"One\">" + cell +
                                     "</table:table>")}});
  EXPECT_EQ(RowsOf(bytes, SpreadsheetKind::Ods), "in\n");
  EXPECT_EQ(LoadFormatModule().module->listSheets({"", bytes, SpreadsheetKind::Ods}).names,
            (Texts{"Other", "One", "One"}));
}

TEST_F(SheetParts, OfOdsRowsAndCellsCanBeRepeatedNoTimes) {
  EXPECT_EQ(OdsRows("<table:table-row table:number-rows-repeated=\"0\"><table:table-cell "
                    "office:value-type=\"float\" office:value=\"1\"/></table:table-row>" +
                    OdsOne(R"(office:value-type="float" office:value="2")")),
            "2\n");
  EXPECT_EQ(OdsRows("<table:table-row><table:table-cell table:number-columns-repeated=\"0\" "
                    "office:value-type=\"float\" office:value=\"1\"/><table:table-cell "
                    "office:value-type=\"float\" office:value=\"2\"/></table:table-row>"),
            "2\n");
}

TEST_F(SheetParts, OfOdsColumnsGiveTheirStyleAsFarAsTheyGo) {
  const std::string styles =
      "<number:date-style style:name=\"N1\"><number:text>d</number:text><number:day-of-week/>"
      "</number:date-style><number:number-style style:name=\"N9\"/>"
      "<style:style style:name=\"day\" style:data-style-name=\"N1\"/>"
      "<style:style style:name=\"plain\" style:data-style-name=\"N9\"/>";
  const std::string moment =
      "<table:table-cell office:value-type=\"date\" office:date-value=\"2003-09-04T06:10:00\"/>";
  const std::string row = "<table:table-row>" + moment + moment + moment + "</table:table-row>";
  const std::string column = "<table:table-column table:default-cell-style-name=\"day\"";
  EXPECT_EQ(OdsRows(column + "/>" + row, ClockForm::Minutes, styles),
            "2003-09-04|2003-09-04 06:10|2003-09-04 06:10\n");
  EXPECT_EQ(OdsRows(column + " table:number-columns-repeated=\"0\"/>" +
                        "<table:table-column table:number-columns-repeated=\"20000\"/>" + column +
                        "/>" + row,
                    ClockForm::Minutes, styles),
            "2003-09-04 06:10|2003-09-04 06:10|2003-09-04 06:10\n");
}

TEST_F(SheetParts, OfOdsTimesHaveSecondsIfAskedFor) {
  EXPECT_EQ(OdsRows(OdsOne(R"(office:value-type="time" office:time-value="PT08H05M30S")"),
                    ClockForm::Seconds),
            "08:05:30\n");
  EXPECT_EQ(OdsRows(OdsOne(R"(office:value-type="time" office:time-value="PT999999999H")")),
            "PT999999999H\n");
}

TEST_F(SheetParts, OfOdsWithDamagedStylesAreRefused) {
  EXPECT_TRUE(
      RowsOf(ZipOf({{"styles.xml", "<a>"}, {"content.xml", Content("")}}), SpreadsheetKind::Ods)
          .starts_with("styles.xml, line "));
}

// --- .xls ---------------------------------------------------------------------------------------

TEST_F(SheetParts, OfXlsNeedTheFileAndTheSheet) {
  const TemporaryFolder folder;
  const std::string bytes = XlsOf({{"One", {{0, 0, "a"}, {0, 1, "", 0.3368402777777778, 2}}}});
  const std::string path = folder.Write("a.xls", bytes);
  const auto& module = *LoadFormatModule().module;
  std::string text;
  const auto take = [&](const Texts& cells) {
    text += cells.at(0) + "|" + cells.at(1) + "\n";
    return true;
  };
  const SpreadsheetFile file{path, bytes, SpreadsheetKind::Xls};
  EXPECT_EQ(module.readSheet(file, "One", ClockForm::Seconds, take), "");
  EXPECT_EQ(module.readSheet(file, "One", ClockForm::Minutes, take), "");
  EXPECT_EQ(text, "a|08:05:03\na|08:05\n");
  EXPECT_EQ(module.readSheet(file, "Two", ClockForm::Minutes, take), "it can't be read");
  const SpreadsheetFile missing{folder.Path("none.xls"), bytes, SpreadsheetKind::Xls};
  EXPECT_NE(module.readSheet(missing, "One", ClockForm::Minutes, take), "");
  EXPECT_NE(module.listSheets(missing).fault, "");
}

TEST_F(SheetParts, OfCellsAtTheEdgesOfTheirForms) {
  EXPECT_EQ(XlsxRows("<row><c r=\"B\"><v>1</v></c></row>"), "|1\n") << "a place without a row";
  EXPECT_EQ(XlsxRows("<row><c t=\"str\"><v>_xE000_</v></c></row>"), "\xEE\x80\x80\n");
  const std::string endless = "06:10:00" + std::string(400, '9');
  for (const std::string& text : {endless, std::string("2003-0/-04")}) {
    EXPECT_EQ(XlsxRows("<row><c t=\"d\"><v>" + text + "</v></c></row>"), text + "\n");
  }
  EXPECT_EQ(StyledRows("<cellXfs><xf numFmtId=\"55\"/></cellXfs>",
                       "<row><c s=\"0\"><v>0</v></c><c s=\"0\"><v>38000</v></c></row>"),
            "00:00|2004-01-14\n");
}

TEST_F(SheetParts, OfALongTextInPiecesAreRefused) {
  const std::string text(5 * LongestCell, 'x');
  EXPECT_EQ(OdsRows(OdsOne(R"(office:value-type="string")", "<text:p>" + text + "</text:p>")),
            "the cell in row 1, column A has more than 128 KiB of text");
}

TEST_F(SheetParts, OfXlsShowWholeMinutesWithoutSeconds) {
  const TemporaryFolder folder;
  const std::string bytes = XlsOf({{"One", {{0, 0, "", 0.33680555555555552, 2}}}});
  const std::string path = folder.Write("a.xls", bytes);
  std::string text;
  EXPECT_EQ(LoadFormatModule().module->readSheet({path, bytes, SpreadsheetKind::Xls}, "One",
                                                 ClockForm::Seconds,
                                                 [&](const Texts& cells) {
                                                   text += cells.at(0);
                                                   return true;
                                                 }),
            "");
  EXPECT_EQ(text, "08:05");
}

}  // namespace
}  // namespace orvane
