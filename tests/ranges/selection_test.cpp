#include "ranges/selection.h"

#include "ranges/range_case.h"

#include <algorithm>
#include <chrono>
#include <gtest/gtest.h>
#include <string>

namespace orvane {
namespace {

using Names = std::vector<std::string>;

/// Templates as they were first written down: step by step, trying each place for a star.
namespace literal {

bool Match(const std::string& pattern, size_t p, const std::string& text, size_t t);

/// Takes one character by the set after `p`. \return where the template continues, or npos
size_t TakeBySet(const std::string& pattern, size_t p, char c) {
  const auto at = [&](size_t i) { return i < pattern.size() ? pattern[i] : '\0'; };
  const auto byte = [](char value) { return static_cast<unsigned char>(value); };
  bool negated = false;
  if (at(p) == '^' && at(p + 1) != ']') {
    negated = true;
    ++p;
  }
  bool found = false;
  while (at(p) != ']') {
    if (p >= pattern.size()) return std::string::npos;
    if (at(p + 1) == '-' && p + 2 < pattern.size() && at(p + 2) != ']') {
      if (byte(at(p)) <= byte(c) && byte(c) <= byte(at(p + 2))) found = true;
      p += 3;
    } else {
      if (at(p) == c) found = true;
      ++p;
    }
  }
  if (found == negated) return std::string::npos;
  return std::min(p + (negated ? 3 : 1), pattern.size());
}

bool Match(const std::string& pattern, size_t p, const std::string& text, size_t t) {
  while (p < pattern.size() && t < text.size()) {
    if (pattern[p] == '*') {
      while (p < pattern.size() && pattern[p] == '*') ++p;
      if (p == pattern.size()) return true;
      for (; t < text.size(); ++t) {
        if (Match(pattern, p, text, t)) return true;
      }
      return false;
    }
    if (pattern[p] == '[') {
      p = TakeBySet(pattern, p + 1, text[t]);
      if (p == std::string::npos) return false;
    } else if (pattern[p] == '?' || pattern[p] == text[t]) {
      ++p;
    } else {
      return false;
    }
    ++t;
  }
  while (p < pattern.size() && pattern[p] == '*') ++p;
  return p == pattern.size() && t == text.size();
}

}  // namespace literal

TEST(WildcardMatch, TakesPlainTextWithRegardToCase) {
  EXPECT_TRUE(WildcardMatch("Pde", "Pde"));
  EXPECT_FALSE(WildcardMatch("Pde", "pde"));
  EXPECT_FALSE(WildcardMatch("Pde", "Pde1"));
  EXPECT_FALSE(WildcardMatch("Pde1", "Pde"));
  EXPECT_TRUE(WildcardMatch("", ""));
  EXPECT_FALSE(WildcardMatch("", "a"));
}

TEST(WildcardMatch, TakesAnyRunForAStar) {
  EXPECT_TRUE(WildcardMatch("*", ""));
  EXPECT_TRUE(WildcardMatch("*", "abc"));
  EXPECT_TRUE(WildcardMatch("***", "abc"));
  EXPECT_TRUE(WildcardMatch("P*e", "Pde"));
  EXPECT_TRUE(WildcardMatch("P*e", "Pe"));
  EXPECT_TRUE(WildcardMatch("*ab*ab", "abxabxab"));
  EXPECT_FALSE(WildcardMatch("P*e", "Pdex"));
}

TEST(WildcardMatch, TakesOneCharacterForAQuestionMark) {
  EXPECT_TRUE(WildcardMatch("P?e", "Pde"));
  EXPECT_FALSE(WildcardMatch("P?e", "Pe"));
  EXPECT_FALSE(WildcardMatch("?", ""));
  EXPECT_TRUE(WildcardMatch("?*", "a"));
}

TEST(WildcardMatch, TakesOneCharacterOfASet) {
  EXPECT_TRUE(WildcardMatch("P[abd]e", "Pde"));
  EXPECT_TRUE(WildcardMatch("P[a-f]e", "Pde"));
  EXPECT_TRUE(WildcardMatch("P[a-cd-e]e", "Pee"));
  EXPECT_FALSE(WildcardMatch("P[a-c]e", "Pde"));
  EXPECT_FALSE(WildcardMatch("[f-a]", "c"));
  EXPECT_FALSE(WildcardMatch("[]a", "a"));
}

TEST(WildcardMatch, TakesAHyphenAtTheEndOfASetForItself) {
  EXPECT_TRUE(WildcardMatch("[a-]", "-"));
  EXPECT_TRUE(WildcardMatch("[a-]", "a"));
  EXPECT_FALSE(WildcardMatch("[a-]", "b"));
}

TEST(WildcardMatch, ContinuesTwoCharactersAfterAComplement) {
  // The two skipped characters may be anything; see docs/compatibility.md.
  EXPECT_TRUE(WildcardMatch("[^a]xyz", "bz"));
  EXPECT_FALSE(WildcardMatch("[^a]z", "bz"));
  EXPECT_FALSE(WildcardMatch("[^a]xyz", "az"));
  EXPECT_TRUE(WildcardMatch("[^a-c]**z", "dz"));
  EXPECT_TRUE(WildcardMatch("[^a][]z", "bz"));
}

TEST(WildcardMatch, EndsWhereAComplementSkipsPastTheEnd) {
  EXPECT_TRUE(WildcardMatch("[^a]", "b"));
  EXPECT_TRUE(WildcardMatch("[^a]x", "b"));
  EXPECT_FALSE(WildcardMatch("[^a]", "a"));
  EXPECT_FALSE(WildcardMatch("[^a]", "bc"));
  EXPECT_TRUE(WildcardMatch("*[^a]", "aab"));
}

TEST(WildcardMatch, TakesACaretBeforeABracketForItself) {
  EXPECT_TRUE(WildcardMatch("[^]a", "^a"));
  EXPECT_FALSE(WildcardMatch("[^]a", "ba"));
}

TEST(WildcardMatch, FailsOnASetThatIsNeverClosed) {
  for (const char* pattern : {"[", "[a", "[a-", "[a-b", "[^", "[^a", "a[", "*[a", "[^]["}) {
    for (const char* text : {"", "a", "b", "^", "aa", "[", "[a"}) {
      EXPECT_FALSE(WildcardMatch(pattern, text)) << pattern << " " << text;
    }
  }
}

TEST(WildcardMatch, AgreesWithTheLiteralWayOnRandomTemplates) {
  constexpr std::uint64_t seed = 20;
  Dice dice(seed);
  const std::string letters = "aabb*?[]^-c*";
  int fits = 0;
  for (int i = 0; i < 200000; ++i) {
    std::string pattern;
    for (int n = dice.Int(0, 10); n > 0; --n) {
      pattern += letters[static_cast<size_t>(dice.Int(0, static_cast<int>(letters.size())))];
    }
    std::string text;
    for (int n = dice.Int(0, 7); n > 0; --n) {
      text += "abc^-"[static_cast<size_t>(dice.Int(0, 5))];
    }
    const bool expected = literal::Match(pattern, 0, text, 0);
    fits += expected ? 1 : 0;
    ASSERT_EQ(WildcardMatch(pattern, text), expected)
        << "seed " << seed << " template " << pattern << " text " << text;
  }
  EXPECT_GT(fits, 1000);
}

TEST(WildcardMatch, EndsSoonWithTenThousandStars) {
  std::string pattern;
  for (int i = 0; i < 10000; ++i) pattern += "*a";
  const std::string text(20000, 'a');
  EXPECT_TRUE(WildcardMatch(pattern, text));
  EXPECT_FALSE(WildcardMatch(pattern + "b", text));
  EXPECT_TRUE(WildcardMatch(std::string(10000, '*') + "b", text + "b"));
}

// --- Keys -----------------------------------------------------------------------------------

struct TrailMatchesKeyTest : testing::Test {
  Trail trail;
  SearchKey key;
  TrailMatchesKeyTest() {
    trail.type = "Blue Monkey";
    trail.focalAnimal = "Ana";
    trail.date = 1000;
    key.type = "blue monkey";
  }
};

TEST_F(TrailMatchesKeyTest, ComparesTypeAndAnimalInAnyCase) {
  EXPECT_TRUE(TrailMatchesKey(trail, key));
  key.focalAnimal = "ANA";
  EXPECT_TRUE(TrailMatchesKey(trail, key));
  key.focalAnimal = "Anna";
  EXPECT_FALSE(TrailMatchesKey(trail, key));
  key.focalAnimal.reset();
  key.type = "Blue";
  EXPECT_FALSE(TrailMatchesKey(trail, key));
}

TEST_F(TrailMatchesKeyTest, AsksForAnAnimalIfTheKeyHasOne) {
  key.focalAnimal = "Ana";
  trail.focalAnimal.reset();
  EXPECT_FALSE(TrailMatchesKey(trail, key));
}

TEST_F(TrailMatchesKeyTest, TakesBothLimitsOfTheDates) {
  key.dateFrom = 1000;
  key.dateTo = 1000;
  EXPECT_TRUE(TrailMatchesKey(trail, key));
  key.dateTo = 1001;
  key.dateFrom = 1001;
  EXPECT_FALSE(TrailMatchesKey(trail, key));
  key.dateFrom = 998;
  key.dateTo = 999;
  EXPECT_FALSE(TrailMatchesKey(trail, key));
}

TEST_F(TrailMatchesKeyTest, MatchesNothingWithOnlyAFirstDate) {
  key.dateFrom = 900;
  EXPECT_FALSE(TrailMatchesKey(trail, key));
}

TEST_F(TrailMatchesKeyTest, MatchesAnyDateWithoutAFirstOne) {
  key.dateTo = 1;
  EXPECT_TRUE(TrailMatchesKey(trail, key));
}

TEST_F(TrailMatchesKeyTest, DoesNotLookAtTimes) {
  key.timeFrom = 10;
  key.timeTo = 20;
  EXPECT_TRUE(TrailMatchesKey(trail, key));
}

TEST_F(TrailMatchesKeyTest, TakesATemplateForATypeThatIsSpelledLikeIt) {
  key.type = "points:P*";
  EXPECT_FALSE(TrailMatchesKey(trail, key));
  trail.type = "Points:P*";
  EXPECT_TRUE(TrailMatchesKey(trail, key));
}

// --- Follows and points ---------------------------------------------------------------------

struct SelectionTest : testing::Test, RangeCase {
  Names Collect(const std::vector<SearchKey>& keyList) {
    const std::forward_list<SearchKey> keys(keyList.begin(), keyList.end());
    return NamesOf(CollectRangePoints(map, SelectFollows(map, keys), keys));
  }
};

TEST_F(SelectionTest, SelectsFollowsInReverseOrder) {
  const Trail& first = AddFollow("Blue", 1, {{0, 0, 480, 10}});
  AddFollow("Red", 2, {{0, 0, 480, 10}});
  const Trail& last = AddFollow("BLUE", 3, {{0, 0, 480, 10}});
  const std::vector<Trail*> follows = SelectFollows(map, {KeyOf("blue")});
  ASSERT_EQ(follows.size(), 2U);
  EXPECT_EQ(follows[0], &last);
  EXPECT_EQ(follows[1], &first);
}

TEST_F(SelectionTest, SelectsAFollowOnceForSeveralKeys) {
  AddFollow("Blue", 1, {{0, 0, 480, 10}});
  EXPECT_EQ(SelectFollows(map, {KeyOf("blue"), KeyOf("BLUE")}).size(), 1U);
}

TEST_F(SelectionTest, SelectsNothingOfTheBasis) {
  AddFollow("Blue", 1, {{0, 0, 480, 10}});
  Map& above = MakeMap(workspace, "above.map");
  above.basis = &map;
  EXPECT_TRUE(SelectFollows(above, {KeyOf("Blue")}).empty());
}

TEST_F(SelectionTest, SelectsTypeAndAnimalInAnyMixOfCapitals) {
  AddFollow("Blue", 1, {{0, 0, 480, 10}}).focalAnimal = "aNa";
  AddFollow("Blue", 2, {{0, 0, 490, 10}}).focalAnimal = "Bob";
  SearchKey key = KeyOf("bLUE");
  key.focalAnimal = "AnA";
  EXPECT_EQ(Collect({key}), (Names{"0800"}));
}

TEST_F(SelectionTest, CollectsAllPointsNewestFirst) {
  AddFollow("Blue", 1, {{0, 0, 480, 10}, {0, 9, 500, 10}});
  AddFollow("Blue", 2, {{0, 0, 600, 10}, {0, 9, 620, 10}});
  // The last follow comes first, so the end of the first follow is the newest point.
  EXPECT_EQ(Collect({KeyOf("blue")}), (Names{"0820", "0800", "1020", "1000"}));
}

TEST_F(SelectionTest, KeepsPointsThatAreOnATrailTwice) {
  Trail& trail = AddFollow("Blue", 1, {{0, 0, 480, 10}});
  trail.points.push_back(trail.points.front());
  EXPECT_EQ(Collect({KeyOf("blue")}), (Names{"0800", "0800"}));
}

TEST_F(SelectionTest, TakesPointsWithinTheTimesOfAKey) {
  AddFollow("Blue", 1,
            {{0, 0, 470, 10}, {0, 1, 480, 10}, {0, 2, 540, 10}, {0, 3, 600, 10}, {0, 4, 601, 10}});
  EXPECT_EQ(Collect({KeyOf("Blue", 480, 600)}), (Names{"1000", "0900", "0800"}));
}

TEST_F(SelectionTest, CountsASpanByItsStart) {
  Trail& trail = AddFollow("Blue", 1, {{0, 0, 510, 45}});
  trail.points[0]->name = "0830-0915";
  EXPECT_EQ(Collect({KeyOf("Blue", 500, 510)}), (Names{"0830-0915"}));
  EXPECT_TRUE(Collect({KeyOf("Blue", 511, 600)}).empty());
}

TEST_F(SelectionTest, DropsPointsWithoutATimeNameInATimeWindow) {
  Trail& trail = AddFollow("Blue", 1, {{0, 0, 480, 10}});
  trail.points.push_back(&At("Camp", 0, 0));
  EXPECT_EQ(Collect({KeyOf("Blue", 0, 1440)}), (Names{"0800"}));
  EXPECT_EQ(Collect({KeyOf("Blue")}), (Names{"Camp", "0800"}));
}

TEST_F(SelectionTest, TakesAllPointsIfAnyMatchingKeyHasNoTimes) {
  AddFollow("Blue", 1, {{0, 0, 480, 10}, {0, 0, 900, 10}});
  EXPECT_EQ(Collect({KeyOf("Blue", 480, 600), KeyOf("Blue")}), (Names{"1500", "0800"}));
  // A key without times that fits another type does not open this one.
  EXPECT_EQ(Collect({KeyOf("Blue", 480, 600), KeyOf("Red")}), (Names{"0800"}));
}

TEST_F(SelectionTest, TakesAPointOnceForTwoWindows) {
  AddFollow("Blue", 1, {{0, 0, 480, 10}});
  EXPECT_EQ(Collect({KeyOf("Blue", 400, 500), KeyOf("Blue", 450, 600)}), (Names{"0800"}));
}

TEST_F(SelectionTest, TakesNothingForAKeyWithOnlyAFirstDate) {
  AddFollow("Blue", 5, {{0, 0, 480, 10}});
  SearchKey key = KeyOf("Blue");
  key.dateFrom = 1;
  EXPECT_TRUE(Collect({key}).empty());
}

TEST_F(SelectionTest, AddsNamedPointsByTemplate) {
  Named("Pde1", 0, 0);
  Named("Pde2", 0, 0);
  Named("Main1", 0, 0);
  for (const char* type : {"points:Pde*", "POINTS:Pde*", "Point:Pde*"}) {
    Names names = Collect({KeyOf(type)});
    std::sort(names.begin(), names.end());
    EXPECT_EQ(names, (Names{"Pde1", "Pde2"})) << type;
  }
}

TEST_F(SelectionTest, TakesATemplateAsItIs) {
  Named("Pde1", 0, 0);
  Named(" Pde2", 0, 0);
  EXPECT_EQ(Collect({KeyOf("points: Pde*")}), (Names{" Pde2"}));
  EXPECT_TRUE(Collect({KeyOf("points:pde*")}).empty());
  EXPECT_TRUE(Collect({KeyOf("point")}).empty());
  EXPECT_TRUE(Collect({KeyOf("points:[^")}).empty());
  // The template of "points::P" begins after the first colon.
  EXPECT_TRUE(Collect({KeyOf("points::Pde*")}).empty());
}

TEST_F(SelectionTest, AddsAPointOncePerEntryInTheBuckets) {
  Point& point = Named("Pde1", 0, 0);
  point.synonyms.push_front("Camp");
  AddPointName(map, point, "Camp");
  EXPECT_EQ(Collect({KeyOf("points:Pde1")}), (Names{"Pde1", "Pde1"}));
  EXPECT_EQ(Collect({KeyOf("points:Ca*")}), (Names{"Pde1", "Pde1"}));
  EXPECT_EQ(Collect({KeyOf("points:*")}), (Names{"Pde1", "Pde1"}));
}

TEST_F(SelectionTest, ComparesThePointsOfManySynonymsOnce) {
  Point& point = Named("Camp", 0, 0);
  constexpr int Synonyms = 50000;
  for (int i = 0; i < Synonyms; ++i) {
    point.synonyms.push_front("s" + std::to_string(i));
    AddPointName(map, point, point.synonyms.front());
  }
  const auto begin = std::chrono::steady_clock::now();
  EXPECT_TRUE(Collect({KeyOf("points:Pde*")}).empty());
  EXPECT_EQ(Collect({KeyOf("points:s49999")}).size(), size_t{Synonyms} + 1);
  EXPECT_LT(std::chrono::steady_clock::now() - begin, std::chrono::seconds(15));
}

TEST_F(SelectionTest, PutsPointsOfTemplatesBeforeThoseOfFollows) {
  AddFollow("Blue", 1, {{0, 0, 480, 10}});
  Named("Pde1", 0, 0);
  EXPECT_EQ(Collect({KeyOf("points:Pde1"), KeyOf("Blue")}), (Names{"Pde1", "0800"}));
}

TEST_F(SelectionTest, WalksTheBucketsInOrder) {
  const std::vector<std::string> names = {"a", "b", "A", "`", "ab", "ba"};
  for (const std::string& name : names) Named(name, 0, 0);
  std::vector<Point*> expected;
  for (const auto& bucket : map.pointHash)
    expected.insert(expected.end(), bucket.begin(), bucket.end());
  std::vector<Point*> points;
  AddPointsByTemplate(map, "*", points);
  EXPECT_EQ(points, expected);
}

}  // namespace
}  // namespace orvane
