#include "entry/fix_draft.h"

#include "support/map_from_text.h"

#include <gtest/gtest.h>

namespace orvane {
namespace {

const std::string Table =
    "time,lat,lon,id,alt,height\n"
    "2004-5-3 0:30,1.3,115.5,Kiki,5,7\n"
    "2004-5-3 0:30:20,1.3,115.5,Kiki,,\n"
    "soon,1.3,115.5,Kiki,,\n"
    "2004-5-3 1:30,1.4,115.5,Kiki,,\n";

struct FixDraftTest : MapFixture {
  Map& map = Open("T\tMain\tTrail\nG\tCamp\tN1\tE115\n");
  FixForm form;

  FixDraft DraftOf(const std::string& table) const { return {map, "/data/collar.csv", table}; }
  static Texts StatesOf(const FixDraft& draft) {
    Texts states;
    for (const PreviewRow& row : draft.FirstRows().rows) states.emplace_back(row.state);
    return states;
  }
};

TEST_F(FixDraftTest, ShowsWhatBecomesOfEachRow) {
  FixDraft draft = DraftOf(Table);
  EXPECT_FALSE(draft.CanImport());
  EXPECT_EQ(draft.Plan(form), FixFormField::None);
  EXPECT_EQ(StatesOf(draft), (Texts{"used", "repeat", "bad time", "used"}));
  EXPECT_EQ(draft.CountsText(),
            "4 fixes: 2 used, 1 bad time and 1 repeat; makes 1 trail and 1 range.");
  EXPECT_EQ(draft.ClockReason(), "UTC+08:00 is usual at the mean longitude 115.5");
  EXPECT_EQ(draft.DateWarning(), "");
  EXPECT_TRUE(draft.CanImport());
  EXPECT_TRUE(draft.LeavesOut());
  EXPECT_EQ(draft.LeftOutName(), "collar left out.txt");
  EXPECT_EQ(
      draft.LeftOutText(),
      "row\tstate\treason\ttime\tlat\tlon\tid\talt\theight\n"
      "3\trepeat\t08:30 of Kiki on 2004-5-3 is there before it\t2004-5-3 0:30:20\t1.3\t"
      "115.5\tKiki\t\t\n"
      "4\tbad time\t\"soon\" in column time is not a usable time\tsoon\t1.3\t115.5\tKiki\t\t\n");
  EXPECT_EQ(Said(), Texts{});
}

TEST_F(FixDraftTest, PlansAgainWithOtherFields) {
  FixDraft draft = DraftOf(Table);
  draft.Plan(form);
  form.maxSpeed = "0,5";
  form.clock = " Asia/Makassar ";
  form.makesRanges = false;
  EXPECT_EQ(draft.Plan(form), FixFormField::None);
  EXPECT_EQ(StatesOf(draft), (Texts{"used", "repeat", "bad time", "too fast"}));
  EXPECT_EQ(draft.ClockReason(), "");
  EXPECT_EQ(draft.CountsText(),
            "4 fixes: 1 used, 1 bad time, 1 repeat and 1 too fast; makes 1 trail and no ranges.");
  form.maxSpeed = "";
  form.clock = "-03:30";
  EXPECT_EQ(draft.Plan(form), FixFormField::None);
  EXPECT_EQ(StatesOf(draft), (Texts{"used", "repeat", "bad time", "used"}));
  EXPECT_EQ(draft.Import().plan.offsetMinutes, -210);
  EXPECT_EQ(draft.ClockReason(), "");
}

TEST_F(FixDraftTest, NamesTheFieldThatCannotBeRead) {
  FixDraft draft = DraftOf(Table);
  draft.Plan(form);
  const auto badWith = [&](std::string FixForm::*text, const char* typed) {
    FixForm typedForm = form;
    typedForm.*text = typed;
    return draft.Plan(typedForm);
  };
  EXPECT_EQ(badWith(&FixForm::clock, "+15:00"), FixFormField::Clock);
  EXPECT_EQ(badWith(&FixForm::clock, ""), FixFormField::Clock);
  EXPECT_EQ(badWith(&FixForm::every, "0"), FixFormField::Every);
  EXPECT_EQ(badWith(&FixForm::every, "2x"), FixFormField::Every);
  EXPECT_EQ(badWith(&FixForm::minMinutes, "-1"), FixFormField::MinMinutes);
  EXPECT_EQ(badWith(&FixForm::minMeters, "far"), FixFormField::MinMeters);
  EXPECT_EQ(badWith(&FixForm::maxSpeed, "0"), FixFormField::MaxSpeed);
  EXPECT_EQ(FixFormFault(FixFormField::None), "");
  for (const FixFormField field :
       {FixFormField::Clock, FixFormField::Every, FixFormField::MinMinutes, FixFormField::MinMeters,
        FixFormField::MaxSpeed}) {
    EXPECT_FALSE(FixFormFault(field).empty());
  }
  EXPECT_TRUE(draft.CanImport());  // with the plan before
}

TEST_F(FixDraftTest, AssignsColumnsThatTheirCaptionsDoNotShow) {
  FixDraft draft = DraftOf("\nZeit;Breite;Laenge;Tier\n2004-5-3 0:30;1,3;115,5;Kiki\n;;;\nsoon\n");
  EXPECT_EQ(draft.Plan(form), FixFormField::None);
  EXPECT_EQ(draft.CountsText(),
            "Choose the columns of the time and of the position in the heading.");
  EXPECT_FALSE(draft.CanImport());
  EXPECT_FALSE(draft.LeavesOut());
  EXPECT_EQ(draft.FirstRows().captions, (Texts{"Zeit", "Breite", "Laenge", "Tier"}));
  EXPECT_EQ(draft.FirstRows().rows[0].row, 3U);
  EXPECT_EQ(draft.Roles(), std::vector<FixRole>(4, FixRole::None));
  draft.Assign(0, FixRole::Time);
  draft.Assign(1, FixRole::Lat);
  draft.Assign(2, FixRole::Lon);
  draft.Assign(3, FixRole::Species);
  draft.Assign(3, FixRole::Animal);
  EXPECT_EQ(draft.Plan(form), FixFormField::None);
  EXPECT_EQ(draft.CountsText(), "2 fixes: 1 used and 1 bad time; makes 1 trail and 1 range.");
  EXPECT_EQ(draft.Roles(),
            (std::vector{FixRole::Time, FixRole::Lat, FixRole::Lon, FixRole::Animal}));
  EXPECT_EQ(draft.Import().table.animals[0].name, "Kiki");
  draft.Assign(0, FixRole::None);
  draft.Plan(form);
  EXPECT_FALSE(draft.CanImport());
  EXPECT_EQ(draft.FirstRows().rows.size(), 3U);
}

TEST_F(FixDraftTest, AnAssignedColumnComesBeforeTheOthersOfItsField) {
  FixDraft draft = DraftOf(Table);
  draft.Plan(form);
  EXPECT_EQ(draft.Import().plan.fixes[0].altitude, 5);
  draft.Assign(5, FixRole::Altitude);
  draft.Plan(form);
  EXPECT_EQ(draft.Import().plan.fixes[0].altitude, 7);
  EXPECT_EQ(draft.Roles()[4], FixRole::Altitude);
  draft.Assign(4, FixRole::Visible);
  EXPECT_EQ(draft.Roles()[4], FixRole::Visible);
}

TEST_F(FixDraftTest, WarnsOfDatesThatCanBeReadInTwoWays) {
  FixDraft draft = DraftOf("time,lat,lon\n3/5/2004 0:30,1,115\n");
  draft.Plan(form);
  EXPECT_EQ(draft.DateWarning(),
            "The date in row 2 can be read in two ways: no row shows which, and the month is first "
            "as European dates are off");
}

TEST_F(FixDraftTest, TablesWithoutUsableRowsImportNothing) {
  FixDraft draft = DraftOf("time,lat,lon\nsoon,1,115\n");
  draft.Plan(form);
  EXPECT_EQ(draft.CountsText(), "1 fix: none can be used.");
  EXPECT_FALSE(draft.CanImport());
  EXPECT_TRUE(draft.LeavesOut());
  draft.Plan(form);
  EXPECT_EQ(StatesOf(draft), Texts{"bad time"});
  FixDraft empty = DraftOf("");
  empty.Plan(form);
  EXPECT_TRUE(empty.FirstRows().rows.empty());
  EXPECT_TRUE(empty.Roles().empty());
}

TEST_F(FixDraftTest, IsEnteredAsPlanned) {
  FixDraft draft = DraftOf(Table);
  form.type = "Gibbon";
  draft.Plan(form);
  EnterFixes(map, draft.Import());
  const Trail& trail = *std::next(map.trails.begin());
  EXPECT_EQ(trail.type, "Gibbon");
  EXPECT_EQ(trail.points.size(), 2U);
  EXPECT_EQ(map.ranges.front().name, "Kiki");
}

}  // namespace
}  // namespace orvane
