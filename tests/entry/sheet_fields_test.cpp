#include "entry/sheet_fields.h"

#include "sheet_case.h"

#include <gtest/gtest.h>
#include <string>

namespace orvane {
namespace {

constexpr const char* NoDate =
    "You must specify either a column number in which to find a date (in the spreadsheet data), or "
    "an explicit date, or a series of colums in which to find day/month/year (A/B/C)";
constexpr const char* NoFocal =
    "You must specify either a column number in which to find a focal animal (in the spreadsheet "
    "data), or an explicit name";
constexpr const char* NoSpecies =
    "You must specify either a column number in which to find a species/group (in the spreadsheet "
    "data), or an explicit species";

struct SheetFieldsTest : SheetCase {
  Map& map = Open(Site);

  ImportSpec SpecOf(const SheetFields& fields) {
    const SheetReading reading = ReadSheetFields(fields, map);
    EXPECT_FALSE(reading.refusal) << reading.refusal->message;
    return reading.spec;
  }
  void ExpectRefused(const SheetFields& fields, const std::string& message, SheetField focus) {
    const SheetReading reading = ReadSheetFields(fields, map);
    ASSERT_TRUE(reading.refusal) << message;
    EXPECT_EQ(reading.refusal->message, message);
    EXPECT_EQ(reading.refusal->focus, focus) << message;
  }
};

TEST_F(SheetFieldsTest, AreReadIntoTheSpec) {
  SheetFields fields = Columns();
  fields[SheetSkip] = "2";
  const ImportSpec spec = SpecOf(fields);
  EXPECT_EQ(spec.map, &map);
  EXPECT_EQ(spec.skipCount, 2);
  EXPECT_EQ(spec.speciesColumn, 0);
  EXPECT_EQ(spec.focalColumn, 1);
  EXPECT_EQ(spec.dateColumn, 2);
  EXPECT_EQ(spec.timeColumn, 3);
  EXPECT_EQ(spec.locationColumn, 4);
  EXPECT_EQ(spec.activityColumn, 5);
  EXPECT_EQ(spec.yearColumn, ColumnBlank);
  EXPECT_EQ(spec.smColumn[0], ColumnBlank);
  EXPECT_FALSE(spec.speciesAlways || spec.focalAlways || spec.dateAlways || spec.smCode[0]);
}

TEST_F(SheetFieldsTest, BlankFieldsAreNotAFaultWhereATextIsGiven) {
  SheetFields fields;
  fields[SheetTime] = "0";
  fields[SheetLocation] = "1";
  fields[SheetSpeciesAlways] = "Oru\tnorth";  // as pasted
  fields[SheetDateAlways] = "2003-5-31";
  const ImportSpec spec = SpecOf(fields);
  EXPECT_EQ(spec.skipCount, ColumnBlank);
  EXPECT_EQ(spec.activityColumn, ColumnBlank);
  EXPECT_EQ(spec.speciesAlways, "Oru north");
  EXPECT_EQ(spec.dateAlways, "2003-5-31");
  EXPECT_FALSE(spec.focalAlways);  // a missing focal animal is not a fault either
}

TEST_F(SheetFieldsTest, TheSkipCountTakesLettersAsAColumnDoes) {
  EXPECT_EQ(SpecOf(With(SheetSkip, "B")).skipCount, 1);
  EXPECT_EQ(SpecOf(With(SheetSkip, "30")).skipCount, 30);
  ExpectRefused(With(SheetSkip, "31"), "Badly specified (or too large) skip count", SheetSkip);
  ExpectRefused(With(SheetSkip, "two lines"), "Badly specified (or too large) skip count",
                SheetSkip);
}

TEST_F(SheetFieldsTest, AreReadUpTo39Bytes) {
  EXPECT_EQ(SpecOf(With(SheetTime, std::string(38, ' ') + "DXX")).timeColumn, 3);
}

TEST_F(SheetFieldsTest, ASeriesOfColumnsFollowsTheOrderOfDates) {
  const SheetFields fields = With(SheetDate, "G/H.I");
  ImportSpec spec = SpecOf(fields);
  EXPECT_EQ(spec.dateColumn, ColumnMalformed);
  EXPECT_EQ(spec.monthColumn, 6);
  EXPECT_EQ(spec.dayColumn, 7);
  EXPECT_EQ(spec.yearColumn, 8);
  workspace.preferences.europeanDates = true;
  spec = SpecOf(fields);
  EXPECT_EQ(spec.dayColumn, 6);
  EXPECT_EQ(spec.monthColumn, 7);
  EXPECT_EQ(spec.yearColumn, 8);
}

TEST_F(SheetFieldsTest, ASeriesNeedsThreeColumns) {
  for (const char* text : {"A/B", "A/B/", "/B/C", "A//C", "A/B/C/D", "A/B/99", "Q9", "31"}) {
    ExpectRefused(With(SheetDate, text), NoDate, SheetDate);
    // A date for all rows lets any text pass.
    SheetFields fields = With(SheetDate, text);
    fields[SheetDateAlways] = "2003-5-31";
    EXPECT_EQ(SpecOf(fields).dateColumn, ColumnMalformed) << text;
  }
}

TEST_F(SheetFieldsTest, ABadDateIsReportedBeforeAllElse) {
  SheetFields fields;
  for (const char* text : {"soon", "2003-5-31x", "2003-5-31 ", "31 May"}) {
    fields[SheetDateAlways] = text;
    ExpectRefused(fields, "Bad date", SheetDateAlways);
  }
}

TEST_F(SheetFieldsTest, EachFaultHasItsMessageInTurn) {
  SheetFields fields;
  fields[SheetSkip] = "?";
  fields[SheetActivity] = "?";
  ExpectRefused(fields, NoDate, SheetDate);
  fields[SheetDate] = "C";
  ExpectRefused(fields, NoFocal, SheetFocal);
  fields[SheetFocalAlways] = "Ulo";
  ExpectRefused(fields, NoSpecies, SheetSpecies);
  fields[SheetSpeciesAlways] = "Oru";
  ExpectRefused(fields, "You must specify a column in which to find the time", SheetTime);
  fields[SheetTime] = "D";
  ExpectRefused(fields, "You must specify a column in which to find the location (trail mark)",
                SheetLocation);
  fields[SheetLocation] = "E";
  ExpectRefused(fields, "Badly specified (or too large) skip count", SheetSkip);
  fields[SheetSkip] = "";
  ExpectRefused(fields, "Badly specified column number", SheetActivity);
  fields[SheetActivity] = "";
  SpecOf(fields);
}

TEST_F(SheetFieldsTest, AMissingFocalAnimalIsReportedOnlyWithAnotherFault) {
  SheetFields fields = With(SheetFocal, "");
  SpecOf(fields);
  fields[SheetTime] = "";
  ExpectRefused(fields, NoFocal, SheetFocal);
}

TEST_F(SheetFieldsTest, AMalformedColumnIsRefusedEvenBesideATextForAllRows) {
  SheetFields fields = With(SheetSpecies, "Oru group");
  fields[SheetSpeciesAlways] = "Oru";
  ExpectRefused(fields, NoSpecies, SheetSpecies);
  fields = With(SheetFocal, "99");
  fields[SheetFocalAlways] = "Ulo";
  ExpectRefused(fields, NoFocal, SheetFocal);
  ExpectRefused(With(SheetTime, "99"), "You must specify a column in which to find the time",
                SheetTime);
  ExpectRefused(With(SheetLocation, "99"),
                "You must specify a column in which to find the location (trail mark)",
                SheetLocation);
}

TEST_F(SheetFieldsTest, MeasuresAreReadOnlyIfTheMapNamesTheFirst) {
  SheetFields fields = Columns();
  fields[SheetSm1] = "G";
  fields[SheetSm2] = "nowhere 1";
  fields[SheetSm2Code] = "feed";
  fields[SheetSm3] = "I";
  EXPECT_EQ(SpecOf(fields).smColumn[2], ColumnBlank);
  map.smName[1] = "leaf";  // the second is not enough
  EXPECT_EQ(SpecOf(fields).smColumn[1], ColumnBlank);
  map.smName = {"fruit", std::nullopt, std::nullopt};  // and the first is enough for all
  const ImportSpec spec = SpecOf(fields);
  EXPECT_EQ(spec.smColumn[0], 6);
  EXPECT_EQ(spec.smColumn[1], ColumnMalformed);  // not refused
  EXPECT_EQ(spec.smColumn[2], 8);
  EXPECT_FALSE(spec.smCode[0]);
  EXPECT_EQ(spec.smCode[1], "feed");
}

TEST_F(SheetFieldsTest, ARowOfAMeasureIsShownUnderItsName) {
  map.smName = {"fruit", std::nullopt, "rest"};
  EXPECT_TRUE(IsSmRowShown(map, 0));
  EXPECT_FALSE(IsSmRowShown(map, 1));
  EXPECT_EQ(SmColumnLabel(map, 0), "fruit Col:");
  EXPECT_EQ(SmColumnLabel(map, 1), "SM2 Col:");
  EXPECT_EQ(SmColumnLabel(map, 2), "rest Col:");
}

TEST(ChangeSheetField, EmptiesTheOtherOfAPair) {
  constexpr SheetField Pairs[][2] = {{SheetSpecies, SheetSpeciesAlways},
                                     {SheetDate, SheetDateAlways},
                                     {SheetFocal, SheetFocalAlways}};
  for (const auto& [column, always] : Pairs) {
    SheetFields fields;
    fields.fill("old");
    ChangeSheetField(fields, column, "A");
    EXPECT_EQ(fields[column], "A");
    EXPECT_EQ(fields[always], "");
    ChangeSheetField(fields, always, "Oru");
    EXPECT_EQ(fields[always], "Oru");
    EXPECT_EQ(fields[column], "");
    long others = 0;
    for (const std::string& text : fields) others += text == "old" ? 1 : 0;
    EXPECT_EQ(others, SheetFieldCount - 2);
  }
}

TEST(ChangeSheetField, OfTheActivityEmptiesTheSpeciesOfAllRows) {
  SheetFields fields;
  fields.fill("old");
  ChangeSheetField(fields, SheetActivity, "F");
  EXPECT_EQ(fields[SheetSpeciesAlways], "");
  EXPECT_EQ(fields[SheetSpecies], "old");
  ChangeSheetField(fields, SheetSpeciesAlways, "Oru");  // but not the other way round
  EXPECT_EQ(fields[SheetActivity], "F");
}

TEST(ChangeSheetField, ToTheSameTextIsNoChange) {
  SheetFields fields;
  fields[SheetSpecies] = "A";
  fields[SheetSpeciesAlways] = "Oru";
  ChangeSheetField(fields, SheetSpecies, "A");
  EXPECT_EQ(fields[SheetSpeciesAlways], "Oru");
  ChangeSheetField(fields, SheetSpecies, "");  // to empty it is one
  EXPECT_EQ(fields[SheetSpeciesAlways], "");
}

TEST_F(SheetFieldsTest, AreRememberedWithNineBytesEach) {
  SheetFields remembered;
  SheetFields fields = Columns();
  fields[SheetSpeciesAlways] = "Red colobus";
  fields[SheetSm1] = "G";
  RememberSheetFields(remembered, fields, map);
  EXPECT_EQ(remembered[SheetSpeciesAlways], "Red colob");
  EXPECT_EQ(remembered[SheetTime], "D");
  EXPECT_EQ(remembered[SheetSm1], "");  // this map names no measure
}

TEST_F(SheetFieldsTest, AreRememberedWithoutHalfACharacter) {
  SheetFields remembered;
  SheetFields fields = Columns();
  fields[SheetSpeciesAlways] = "Colobes \xC3\xA0 tail";
  fields[SheetFocalAlways] = "Colobes \xE0 tail";  // Latin-1
  RememberSheetFields(remembered, fields, map);
  EXPECT_EQ(remembered[SheetSpeciesAlways], "Colobes ");
  EXPECT_EQ(remembered[SheetFocalAlways], "Colobes \xE0");
}

TEST_F(SheetFieldsTest, OfMeasuresStayRememberedThroughAMapWithoutThem) {
  SheetFields remembered;
  SheetFields fields = Columns();
  fields[SheetSm1] = "G";
  fields[SheetSm3Code] = "resting alone";
  map.smName[0] = "fruit";
  RememberSheetFields(remembered, fields, map);
  EXPECT_EQ(remembered[SheetSm1], "G");
  EXPECT_EQ(remembered[SheetSm3Code], "resting a");
  map.smName[0].reset();
  RememberSheetFields(remembered, SheetFields{}, map);
  EXPECT_EQ(remembered[SheetTime], "");
  EXPECT_EQ(remembered[SheetSm1], "G");
}

}  // namespace
}  // namespace orvane
