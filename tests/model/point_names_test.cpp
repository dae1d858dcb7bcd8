#include "model/point_names.h"

#include "model/name_index.h"
#include "model/workspace.h"

#include <algorithm>
#include <chrono>
#include <gtest/gtest.h>
#include <iterator>
#include <string>
#include <vector>

namespace orvane {
namespace {

struct PointNamesTest : testing::Test {
  RecordedMessages messages;
  Workspace workspace{messages};
  Map& map = MakeMap(workspace, "a.map");

  Map& MakeBasis() {
    Map& basis = MakeMap(workspace, "basis.map");
    map.basis = &basis;
    return basis;
  }
  Point* Resolve(std::string_view spec, Trail* trail = nullptr) {
    return ResolvePointName(map, trail, spec);
  }
  Point* Find(std::string_view name) { return FindPointByName(map, nullptr, name); }
  Trail& AddTrail(const char* name) {
    Trail& trail = map.trails.emplace_front();
    trail.name = name;
    return trail;
  }
  std::vector<std::string> Texts() const {
    std::vector<std::string> texts;
    for (const auto& entry : messages.Entries()) texts.push_back(entry.text);
    return texts;
  }
  static std::vector<std::string> Synonyms(const Point& point) {
    return {point.synonyms.begin(), point.synonyms.end()};
  }
  static size_t CountIn(const Map& owner, const Point* point) {
    size_t count = 0;
    for (const auto& bucket : owner.pointHash) {
      count += static_cast<size_t>(std::count(bucket.begin(), bucket.end(), point));
    }
    return count;
  }
};

TEST(NameBuckets, SumOfFoldedBytesModulo32) {
  EXPECT_EQ(NameBucket(""), 0U);
  EXPECT_EQ(NameBucket("a"), 'a' % 32U);
  EXPECT_EQ(NameBucket("A"), 'a' % 32U);
  EXPECT_EQ(NameBucket("Ab"), ('a' + 'b') % 32U);
  EXPECT_EQ(NameBucket("ba"), NameBucket("AB"));
  EXPECT_EQ(NameBucket("\xE9"), 0xE9 % 32U);
  EXPECT_EQ(NameBucket("\xFF\xFF"), (0xFFU + 0xFFU) % 32U);
}

// --- Finding ----------------------------------------------------------------------------------

TEST_F(PointNamesTest, NamesAreFoundWithoutRegardToCase) {
  Point* point = Resolve("Camp");
  EXPECT_EQ(Find("camp"), point);
  EXPECT_EQ(Find("CAMP"), point);
  EXPECT_EQ(Find("Camps"), nullptr);
  EXPECT_EQ(Find(""), nullptr);
}

TEST_F(PointNamesTest, BytesAboveAsciiAreNotFolded) {
  Point* point = Resolve(
      "\xC9"
      "cole");
  EXPECT_EQ(Find("\xC9"
                 "COLE"),
            point);
  EXPECT_EQ(Find("\xE9"
                 "cole"),
            nullptr);
}

TEST_F(PointNamesTest, MainNameBeatsASynonymInOneMap) {
  Point* first = Resolve("a");
  Point* second = Resolve("b");
  Resolve("a=b");  // b becomes a synonym of a, and stays its own point
  EXPECT_EQ(Find("b"), second);
  EXPECT_EQ(Find("a"), first);
}

TEST_F(PointNamesTest, ThisMapBeatsItsBasisEvenBySynonym) {
  Map& basis = MakeBasis();
  Point* below = ResolvePointName(basis, nullptr, "x");
  map.basis = nullptr;
  Point* above = Resolve("y=x");
  map.basis = &basis;
  EXPECT_EQ(Find("x"), above);
  EXPECT_EQ(FindPointByName(basis, nullptr, "x"), below);
}

TEST_F(PointNamesTest, BasisChainIsSearchedToItsEnd) {
  Map& basis = MakeBasis();
  Map& lowest = MakeMap(workspace, "lowest.map");
  basis.basis = &lowest;
  Point* deep = ResolvePointName(lowest, nullptr, "Deep");
  EXPECT_EQ(Find("deep"), deep);
  EXPECT_EQ(Resolve("deep"), deep);
  EXPECT_EQ(CountIn(map, deep), 0U);
}

TEST_F(PointNamesTest, TimeNamesAreFoundOnlyOnTheirTrail) {
  Trail& trail = AddTrail("t");
  Point* point = Resolve("0910", &trail);
  trail.points.push_back(point);
  EXPECT_EQ(FindPointByName(map, &trail, "0910"), point);
  EXPECT_EQ(FindPointByName(map, nullptr, "0910"), nullptr);
  Trail& other = AddTrail("u");
  EXPECT_EQ(FindPointByName(map, &other, "0910"), nullptr);
}

TEST_F(PointNamesTest, TimePointIsTheFirstWithTheNameOrSynonym) {
  Point a;
  a.name = "Camp";
  a.synonyms = {"8:30"};
  Point b;
  b.name = "8:30";
  EXPECT_EQ(FindTimePoint({&a, &b}, "8:30"), &a);
  EXPECT_EQ(FindTimePoint({&b, &a}, "8:30"), &b);
  EXPECT_EQ(FindTimePoint({&a, &b}, "camp"), &a);
  EXPECT_EQ(FindTimePoint({&a, &b}, "0830"), nullptr);
  EXPECT_EQ(FindTimePoint({}, "0830"), nullptr);
}

TEST_F(PointNamesTest, HiddenNamesAreFoundBareOnlyLoosely) {
  Point* camp = Resolve("_Camp");
  Point* both = Resolve("Hut=@_Aux");
  EXPECT_EQ(Find("Camp"), nullptr);
  EXPECT_EQ(Find("_camp"), camp);
  EXPECT_EQ(FindPointLoosely(map, "camp"), camp);
  EXPECT_EQ(FindPointLoosely(map, "_camp"), camp);
  EXPECT_EQ(FindPointLoosely(map, "aux"), both);
  EXPECT_EQ(FindPointLoosely(map, "hut"), both);
  EXPECT_EQ(FindPointLoosely(map, "nothing"), nullptr);
}

TEST_F(PointNamesTest, LooseSearchContinuesInTheBasis) {
  Map& basis = MakeBasis();
  Point* below = ResolvePointName(basis, nullptr, "@Spring");
  EXPECT_EQ(FindPointLoosely(map, "spring"), below);
  Point* above = Resolve("_Spring");
  EXPECT_EQ(FindPointLoosely(map, "spring"), above);
}

TEST_F(PointNamesTest, LooseSearchComparesThePointsOfManySynonymsOnce) {
  // Each of its entries had all its synonyms compared: a failed lookup took 20 s.
  Point* camp = Resolve("Camp");
  for (int i = 0; i < 50000; ++i) Resolve("Camp=s" + std::to_string(i));
  Point* hidden = Resolve("_Spring=_Pool");
  const auto begin = std::chrono::steady_clock::now();
  EXPECT_EQ(FindPointLoosely(map, "nothing"), nullptr);
  EXPECT_EQ(FindPointLoosely(map, "s49999"), camp);
  EXPECT_EQ(FindPointLoosely(map, "pool"), hidden);
  {
    const NameIndexScope scope(map);
    EXPECT_EQ(FindPointLoosely(map, "nothing"), nullptr);
    EXPECT_EQ(FindPointLoosely(map, "pool"), hidden);
  }
  EXPECT_LT(std::chrono::steady_clock::now() - begin, std::chrono::seconds(15));
}

// --- Resolving --------------------------------------------------------------------------------

TEST_F(PointNamesTest, EachNamelessMentionMakesANewPoint) {
  Point* first = Resolve("");
  Point* second = Resolve("");
  EXPECT_NE(first, second);
  EXPECT_EQ(first->name, "");
  EXPECT_EQ((std::vector<Point*>(map.namelessPoints.begin(), map.namelessPoints.end())),
            (std::vector<Point*>{second, first}));
  Trail& trail = AddTrail("t");
  Resolve("", &trail);
  EXPECT_EQ(std::distance(map.namelessPoints.begin(), map.namelessPoints.end()), 2);
  EXPECT_EQ(CountIn(map, first), 0U);
}

TEST_F(PointNamesTest, TimeNameWithoutATrailMakesANewPointAtEveryMention) {
  Point* first = Resolve("0910");
  Point* second = Resolve("0910");
  EXPECT_NE(first, second);
  EXPECT_EQ(first->name, "0910");
  EXPECT_EQ(CountIn(map, first), 0U);
  EXPECT_TRUE(map.namelessPoints.empty());
  EXPECT_TRUE(map.loosePoints.empty());
}

TEST_F(PointNamesTest, TimeNameReachesOnePointOnItsTrailAndAnotherOnAnother) {
  Trail& trail = AddTrail("t");
  Point* point = Resolve("0910", &trail);
  trail.points.push_back(point);
  EXPECT_EQ(Resolve("0910", &trail), point);
  EXPECT_EQ(point->flags & PointNamedTwice, 0U);
  Trail& other = AddTrail("u");
  EXPECT_NE(Resolve("0910", &other), point);
}

TEST_F(PointNamesTest, SecondMentionIsMarked) {
  Point* point = Resolve("Camp");
  EXPECT_EQ(point->flags & PointNamedTwice, 0U);
  EXPECT_EQ(Resolve("CAMP"), point);
  EXPECT_EQ(point->flags & PointNamedTwice, static_cast<unsigned>(PointNamedTwice));
  EXPECT_EQ(point->name, "Camp");
  EXPECT_EQ(CountIn(map, point), 1U);
}

TEST_F(PointNamesTest, SpecOnAFreshMapMakesOnePointWithSynonyms) {
  Point* point = Resolve("a=b=c");
  EXPECT_EQ(point->name, "a");
  EXPECT_EQ(Synonyms(*point), (std::vector<std::string>{"c", "b"}));
  for (const char* name : {"a", "b", "c"}) EXPECT_EQ(Find(name), point) << name;
  EXPECT_EQ(CountIn(map, point), 3U);
  EXPECT_EQ(point->flags & PointNamedTwice, 0U);
  EXPECT_TRUE(messages.Entries().empty());
}

TEST_F(PointNamesTest, SpecAddsOnlyThePartsThatThePointDoesNotHave) {
  Point* point = Resolve("a=b");
  EXPECT_EQ(Resolve("B=A=d=D"), point);
  EXPECT_EQ(point->name, "a");
  EXPECT_EQ(Synonyms(*point), (std::vector<std::string>{"d", "b"}));
  EXPECT_EQ(CountIn(map, point), 3U);
}

TEST_F(PointNamesTest, PointFoundByALaterPartTakesTheEarlierOnesAsSynonyms) {
  Point* point = Resolve("b");
  EXPECT_EQ(Resolve("a=b"), point);
  EXPECT_EQ(point->name, "b");
  EXPECT_EQ(Synonyms(*point), (std::vector<std::string>{"a"}));
}

TEST_F(PointNamesTest, TwoOldPointsGiveAMessageAndTheFirstIsKept) {
  Point* a = Resolve("a");
  Point* b = Resolve("b");
  EXPECT_EQ(Resolve("a=b"), a);
  EXPECT_EQ(Texts(),
            (std::vector<std::string>{"b declared as synonym to a after both have been used"}));
  EXPECT_EQ(Find("b"), b);
  EXPECT_EQ(b->flags & PointNamedTwice, 0U);
}

TEST_F(PointNamesTest, TimeNameInASpecGivesAMessageAndIsUsedAsAName) {
  Point* point = Resolve("Camp=0830");
  EXPECT_EQ(Texts(), (std::vector<std::string>{
                         "A time name should not be used in a <name>=<name> spec, use a relative "
                         "measurement with a distance of 0. Camp=0830"}));
  EXPECT_EQ(Synonyms(*point), (std::vector<std::string>{"0830"}));
  EXPECT_EQ(CountIn(map, point), 2U);
}

TEST_F(PointNamesTest, EmptyPartsAreLeftOut) {
  Point* point = Resolve("=a==b=");
  ASSERT_NE(point, nullptr);
  EXPECT_EQ(point->name, "a");
  EXPECT_EQ(Synonyms(*point), (std::vector<std::string>{"b"}));
  EXPECT_EQ(Resolve("="), nullptr);
  EXPECT_EQ(Resolve("==="), nullptr);
}

TEST_F(PointNamesTest, SynonymOfABasisPointIsInTheMapAbove) {
  Map& basis = MakeBasis();
  Point* below = ResolvePointName(basis, nullptr, "Spring");
  EXPECT_EQ(Resolve("Spring=Source"), below);
  EXPECT_EQ(CountIn(map, below), 1U);
  EXPECT_EQ(CountIn(basis, below), 1U);
  EXPECT_EQ(Find("source"), below);
  EXPECT_EQ(below->map, &basis);
}

// --- The lists --------------------------------------------------------------------------------

TEST_F(PointNamesTest, BucketsHoldTheNewestNameFirst) {
  Point* first = Resolve("ab");
  Point* second = Resolve("ba");
  Resolve("ab=AB");  // nothing new
  const auto& bucket = map.pointHash[NameBucket("ab")];
  EXPECT_EQ((std::vector<Point*>(bucket.begin(), bucket.end())),
            (std::vector<Point*>{second, first}));
}

TEST_F(PointNamesTest, PointWithTwoNamesOfOneBucketIsThereTwice) {
  Point* point = Resolve("ab=ba");
  const auto& bucket = map.pointHash[NameBucket("ab")];
  EXPECT_EQ((std::vector<Point*>(bucket.begin(), bucket.end())),
            (std::vector<Point*>{point, point}));
  RemovePointName(map, "ba", *point);
  EXPECT_EQ(std::distance(bucket.begin(), bucket.end()), 1);
  EXPECT_EQ(Find("ab"), point);
}

TEST_F(PointNamesTest, RemovedNameIsNotFoundAgain) {
  Point* point = Resolve("a=b");
  Point* other = Resolve("c");
  RemovePointName(map, "B", *point);
  EXPECT_EQ(Find("b"), nullptr);
  EXPECT_EQ(Find("a"), point);
  RemovePointName(map, "a", *other);  // not a name of it
  EXPECT_EQ(Find("a"), point);
  RemovePointName(map, "none", *point);
  EXPECT_EQ(CountIn(map, point), 1U);
}

TEST_F(PointNamesTest, AllNamesOfAPointAreRemovedFromOneMap) {
  Map& basis = MakeBasis();
  Point* point = ResolvePointName(basis, nullptr, "a=b");
  Resolve("a=c");
  RemovePointNames(basis, *point);
  EXPECT_EQ(CountIn(basis, point), 0U);
  EXPECT_EQ(CountIn(map, point), 1U) << "an entry in a map above stays";
  EXPECT_EQ(Find("c"), point);
  EXPECT_EQ(Find("a"), nullptr);
  RemovePointNames(map, *point);
  EXPECT_EQ(Find("c"), nullptr);
}

TEST_F(PointNamesTest, RemovesEveryNodeFromTheListOfThePoint) {
  Point& loose = MakePoint(map, "x");
  Point& other = MakePoint(map, "y");
  Point& nameless = MakePoint(map, "");
  map.loosePoints = {&loose, &other, &loose, &loose};
  map.namelessPoints = {&nameless, &loose};
  RemoveFromLists(map, loose);
  EXPECT_EQ(map.loosePoints, (PointList{&other}));
  EXPECT_EQ(map.namelessPoints, (PointList{&nameless, &loose}));
  RemoveFromLists(map, nameless);
  EXPECT_EQ(map.namelessPoints, (PointList{&loose}));
}

// --- Trails and ranges ------------------------------------------------------------------------

TEST_F(PointNamesTest, FindsTheFirstTrailOfAName) {
  Trail& old = AddTrail("Main");
  map.trails.emplace_front();  // nameless
  EXPECT_EQ(FindTrail(map, "MAIN"), &old);
  EXPECT_EQ(FindTrail(map, ""), nullptr);
  Trail& newer = AddTrail("main");
  EXPECT_EQ(FindTrail(map, "Main"), &newer);
}

TEST_F(PointNamesTest, TrailsOfTheBasisAreFoundLast) {
  Map& basis = MakeBasis();
  Trail& below = basis.trails.emplace_front();
  below.name = "Main";
  EXPECT_EQ(FindTrail(map, "main"), &below);
  EXPECT_EQ(MapOfTrail(map, below), &basis);
  Trail& above = AddTrail("Main");
  EXPECT_EQ(FindTrail(map, "main"), &above);
  EXPECT_EQ(MapOfTrail(map, above), &map);
  const Trail stranger;
  EXPECT_EQ(MapOfTrail(map, stranger), nullptr);
}

struct TrailFormsTest : PointNamesTest {
  Trail& AddFollow(Map& owner, const char* type, PackedDate date,
                   std::optional<std::string> focal) {
    Trail& trail = owner.trails.emplace_front();
    trail.type = type;
    trail.date = date;
    trail.focalAnimal = std::move(focal);
    return trail;
  }
};

TEST_F(TrailFormsTest, ContoursAreFoundAfterTrails) {
  Trail& contour = map.contourTrails.emplace_front();
  contour.name = "Main";
  EXPECT_EQ(FindTrailOrContour(map, "main"), &contour);
  EXPECT_EQ(FindTrail(map, "main"), nullptr);
  Trail& trail = AddTrail("Main");
  EXPECT_EQ(FindTrailOrContour(map, "main"), &trail);
}

TEST_F(TrailFormsTest, TypeAndDateFindAFollow) {
  const PackedDate date = PackDate(1999, 4, 3);
  Trail& plain = AddFollow(map, "Group I", date, std::nullopt);
  Trail& bo = AddFollow(map, "Group I", date, "Bo");
  AddFollow(map, "Group I", PackDate(1999, 4, 4), std::nullopt);
  for (const char* text :
       {"Group I.1999-4-3", "group i:1999-4-3", "Group I.99-4-3", "Group I.4/3/1999",
        "Group I.1999.4.3", "Group I.1999-4-3.", "Group I:1999-4-3:"}) {
    EXPECT_EQ(FindTrailOrContour(map, text), &plain) << text;
  }
  for (const char* text : {"Group I.1999-4-3.Bo", "Group I.1999-4-3:bo"}) {
    EXPECT_EQ(FindTrailOrContour(map, text), &bo) << text;
  }
  for (const char* text : {"Group I.1999-4-3.Al", "Group I:1999-4-3.Bo", "Group I.1999-4-3 Bo",
                           "Group I.1999-4-5", "Group.1999-4-3", "Group I", "Group I 1999-4-3"}) {
    EXPECT_EQ(FindTrailOrContour(map, text), nullptr) << text;
  }
}

TEST_F(TrailFormsTest, EuropeanDatesTurnTheFirstTwoNumbersRound) {
  Trail& follow = AddFollow(map, "G", PackDate(1999, 3, 2), std::nullopt);
  EXPECT_EQ(FindTrailOrContour(map, "G.2-3-99"), nullptr);
  workspace.preferences.europeanDates = true;
  EXPECT_EQ(FindTrailOrContour(map, "G.2-3-99"), &follow);
}

TEST_F(TrailFormsTest, FirstDotSeparatesEvenAfterAColon) {
  const PackedDate date = PackDate(1999, 4, 3);
  Trail& follow = AddFollow(map, "a:b", date, std::nullopt);
  EXPECT_EQ(FindTrailOrContour(map, "a:b.1999-4-3"), &follow);
}

TEST_F(TrailFormsTest, EmptyFocalTextCountsAsNone) {
  const PackedDate date = PackDate(1999, 4, 3);
  Trail& empty = AddFollow(map, "G", date, "");
  EXPECT_EQ(FindTrailByDate(map, "g", date, ""), &empty);
  Trail& none = AddFollow(map, "G", date, std::nullopt);
  EXPECT_EQ(FindTrailByDate(map, "g", date, ""), &none);
  EXPECT_EQ(FindTrailByDate(map, "g", date, "Bo"), nullptr);
}

TEST_F(TrailFormsTest, FollowsOfTheBasisAreFound) {
  Map& basis = MakeBasis();
  const PackedDate date = PackDate(2001, 12, 31);
  Trail& below = AddFollow(basis, "G", date, "Bo");
  EXPECT_EQ(FindTrailByDate(map, "G", date, "BO"), &below);
  EXPECT_EQ(FindTrailOrContour(map, "G.2001-12-31.bo"), &below);
}

TEST_F(PointNamesTest, OnlyRangesOfThisMapAreFound) {
  Map& basis = MakeBasis();
  basis.ranges.emplace_front().name = "Core";
  EXPECT_EQ(FindRange(map, "core"), nullptr);
  Range& old = map.ranges.emplace_front();
  old.name = "Core";
  map.ranges.emplace_front();
  EXPECT_EQ(FindRange(map, "CORE"), &old);
  EXPECT_EQ(FindRange(map, ""), nullptr);
}

TEST_F(PointNamesTest, FindsATrailThatHoldsAPoint) {
  Point& point = MakePoint(map, "p");
  Trail& first = AddTrail("1");
  Trail& second = AddTrail("2");
  first.points = {&point};
  second.points = {&point};
  EXPECT_EQ(FindTrailHolding(map, point, nullptr), &second);
  EXPECT_EQ(FindTrailHolding(map, point, &second), &first);
  first.points.clear();
  EXPECT_EQ(FindTrailHolding(map, point, &second), nullptr);
}

TEST_F(PointNamesTest, MakesATrailOfPeopleWhereNoneIs) {
  Trail& made = FindOrMakeTrail(map, "Path");
  EXPECT_EQ(made.name, "Path");
  EXPECT_EQ(made.type, "Human");
  EXPECT_EQ(made.groupSize, 1);
  EXPECT_EQ(made.color, 0);
  EXPECT_EQ(&map.trails.front(), &made);
  EXPECT_EQ(&FindOrMakeTrail(map, "PATH"), &made);
  EXPECT_EQ(std::distance(map.trails.begin(), map.trails.end()), 1);
}

}  // namespace
}  // namespace orvane
