#include "entry/sheet_draft.h"

#include "entry/import_edits.h"
#include "mapfile/writer.h"
#include "support/map_from_text.h"

#include <gtest/gtest.h>

namespace orvane {
namespace {

constexpr const char* Rows =
    "Rains of 2004\n"
    "DATE\tGROUP\tFOCAL\tTIME\tPLACE\tACT\tfruit\n"
    "3/5/2004\tOru\tPim\t800\tCamp\trest\t2\n"
    "3/5/2004\tOru\tPim\t830\tNowhere\trest\t\n"
    "3/5/2004\tOru\tPim\t900\toos\trest\t\n"
    "25/5/2004\tOru\tPim\tsoon\tHut\trest\t\n";

struct SheetDraftTest : MapFixture {
  Map& map = Open("Z\tfruit\nT\tMain\tTrail\nG\tCamp\tN1\tE115\nG\tHut\tN1.01\tE115\n");
  FollowSheet sheet{Rows};

  /// As the window does it.
  static void Read(Map& map, SheetDraft& draft) {
    EditHistory history(*map.workspace);
    EXPECT_FALSE(history.Apply(SheetPreviewEdit(map, draft)));
  }
  static Texts States(const SheetDraft& draft) {
    Texts states;
    for (const PreviewRow& row : draft.Page().first.rows) {
      states.push_back(std::to_string(row.row) + " " + std::string(row.state));
    }
    return states;
  }
};

TEST_F(SheetDraftTest, GuessesBlankFieldsByTheCaptions) {
  const SheetDraft draft(map, sheet, "a.txt", {});
  const SheetFields& fields = draft.Fields();
  EXPECT_EQ(fields[SheetSkip], "2");
  EXPECT_EQ(fields[SheetDate], "A");
  EXPECT_EQ(fields[SheetSpecies], "B");
  EXPECT_EQ(fields[SheetFocal], "C");
  EXPECT_EQ(fields[SheetTime], "D");
  EXPECT_EQ(fields[SheetLocation], "E");
  EXPECT_EQ(fields[SheetActivity], "F");
  EXPECT_EQ(fields[SheetSm1], "G");
}

TEST_F(SheetDraftTest, KeepsWhatIsTyped) {
  SheetFields typed;
  typed[SheetSkip] = "1";
  typed[SheetSpeciesAlways] = "Tamu";
  typed[SheetTime] = "B";
  const SheetDraft draft(map, sheet, "a.txt", typed);
  EXPECT_EQ(draft.Fields(), typed);  // no captions in line 1
  typed[SheetSkip] = "2";
  const SheetDraft second(map, sheet, "a.txt", typed);
  EXPECT_EQ(second.Fields()[SheetTime], "B");
  EXPECT_EQ(second.Fields()[SheetSpecies], "");
  EXPECT_EQ(second.Fields()[SheetSpeciesAlways], "Tamu");
  EXPECT_EQ(second.Fields()[SheetDate], "A");
}

TEST_F(SheetDraftTest, GuessesADateOfThreeColumns) {
  sheet.text = "day\tmonth\tyear\ttime\tplace\n";
  EXPECT_EQ(SheetDraft(map, sheet, "a.txt", {}).Fields()[SheetDate], "B/A/C");
  workspace.preferences.europeanDates = true;
  SheetDraft draft(map, sheet, "a.txt", {});
  EXPECT_EQ(draft.Fields()[SheetDate], "A/B/C");
  sheet.text += "3\t5\t2004\t800\tCamp\n";
  Read(map, draft);
  EXPECT_EQ(draft.Chosen(), (std::vector<int>{4, 4, 4, 1, 2}));
}

TEST_F(SheetDraftTest, ShowsRowsCountsAndTheDatesThatDecide) {
  const std::string before = MapFileText(map, map.fileName, true);
  SheetDraft draft(map, sheet, "a.txt", {});
  Read(map, draft);
  const PreviewPage& page = draft.Page();
  EXPECT_EQ(page.first.captions,
            (Texts{"DATE", "GROUP", "FOCAL", "TIME", "PLACE", "ACT", "fruit"}));
  EXPECT_EQ(States(draft), (Texts{"3 used", "4 unknown place", "5 used", "6 bad time"}));
  EXPECT_EQ(page.counts, "4 rows: 2 used, 1 unknown place and 1 bad time");
  EXPECT_EQ(
      page.warning,
      "The date in row 3 can be read in two ways. It is read with the month first; row 6 shows "
      "that this is wrong: change European Date Format in the menu View.");
  EXPECT_EQ(
      page.leftOut,
      "row\tstate\treason\tDATE\tGROUP\tFOCAL\tTIME\tPLACE\tACT\tfruit\n"
      "4\tunknown place\tthe map has no place Nowhere\t3/5/2004\tOru\tPim\t830\tNowhere\trest\t\n"
      "6\tbad time\tsoon is not a time\t25/5/2004\tOru\tPim\tsoon\tHut\trest\t\n");
  EXPECT_EQ(draft.Chosen(), (std::vector<int>{4, 3, 5, 1, 2, 6, 7}));
  EXPECT_EQ(draft.Choices().back(), "fruit");
  // Nothing has entered the map.
  EXPECT_EQ(MapFileText(map, map.fileName, true), before);
  EXPECT_EQ(map.flags & MapDirty, 0U);
  EXPECT_TRUE(messages.Entries().empty());
}

TEST_F(SheetDraftTest, SaysWhatIsMissingAndShowsTheRowsAllTheSame) {
  SheetDraft draft(map, sheet, "a.txt", {});
  Read(map, draft);
  draft.Assign(3, 0);
  Read(map, draft);
  EXPECT_EQ(draft.Page().counts, "You must specify a column in which to find the time");
  EXPECT_EQ(States(draft), (Texts{"3 ", "4 ", "5 ", "6 "}));
  EXPECT_EQ(draft.Page().leftOut, "");
  // A column that gets the meaning of another takes it over.
  draft.Assign(4, 1);
  Read(map, draft);
  EXPECT_EQ(draft.Fields()[SheetTime], "E");
  EXPECT_EQ(draft.Fields()[SheetLocation], "");
  draft.Assign(3, 2);
  draft.Assign(4, 1);
  Read(map, draft);
  EXPECT_EQ(draft.Fields()[SheetLocation], "D");
  EXPECT_EQ(draft.Chosen(), (std::vector<int>{4, 3, 5, 2, 1, 6, 7}));
}

/// The choices that the arrow keys pass over took the columns of other fields away.
TEST_F(SheetDraftTest, GoingThroughTheChoicesTakesNothingAway) {
  SheetDraft draft(map, sheet, "a.txt", {});
  Read(map, draft);
  const SheetFields before = draft.Fields();
  for (const size_t choice : {1U, 2U, 3U, 0U, 2U}) {
    draft.Assign(4, choice);
    Read(map, draft);
  }
  EXPECT_EQ(draft.Fields(), before);
}

TEST_F(SheetDraftTest, OnlyTheFirstRowsAreShownAndAllAreCounted) {
  sheet.text = "date\tgroup\ttime\tplace\n";
  for (int i = 0; i < 600; ++i) sheet.text += "2004-5-3\tOru\t900\tCamp\n";
  sheet.text += "2004-5-3\tOru\t900\tNowhere\n";
  SheetDraft draft(map, sheet, "a.txt", {});
  Read(map, draft);
  EXPECT_EQ(draft.Page().first.rows.size(), MostPreviewRows);
  EXPECT_EQ(draft.Page().counts, "601 rows: 600 used and 1 unknown place; the first 500 are shown");
  EXPECT_EQ(draft.Page().warning, "");
  EXPECT_NE(draft.Page().leftOut.find("602\tunknown place"), std::string::npos);
}

TEST_F(SheetDraftTest, ALongRowHasColumnsThatNoFieldCanName) {
  sheet.text = "date\tgroup\ttime\tplace\n2004-5-3\tOru\t900\tCamp" + std::string(40, '\t') + "x\n";
  SheetDraft draft(map, sheet, "a.txt", {});
  Read(map, draft);
  EXPECT_EQ(draft.Chosen().size(), 44U);
  EXPECT_EQ(draft.Page().first.captions[4], "E");
  EXPECT_EQ(draft.Page().first.captions[43], "AR");
  draft.Assign(43, 1);
  EXPECT_EQ(draft.Fields()[SheetTime], "C");
}

TEST(DateOrderWarning, NamesTheRowsThatDecide) {
  const auto warning = [](std::vector<std::string> dates, bool dayFirst) {
    Preview all;
    for (size_t i = 0; i < dates.size(); ++i) all.rows.push_back({i + 1, "used", "", {dates[i]}});
    return DateOrderWarning(all, 0, dayFirst);
  };
  EXPECT_EQ(warning({"2004-5-3", "25/5/2004", "4/4/2004", "", "3 May"}, false), "");
  EXPECT_EQ(
      warning({"2004-5-3", "3/5/2004"}, true),
      "The date in row 2 can be read in two ways. It is read with the day first; no row shows "
      "whether that is right.");
  EXPECT_EQ(
      warning({"5/25/2004", "3.5.2004 12:00"}, false),
      "The date in row 2 can be read in two ways. It is read with the month first; row 1 shows "
      "that this is right.");
  EXPECT_EQ(warning({"\"3/5/2004\"", "5/25/2004"}, true),
            "The date in row 1 can be read in two ways. It is read with the day first; row 2 shows "
            "that this is wrong: change European Date Format in the menu View.");
}

}  // namespace
}  // namespace orvane
