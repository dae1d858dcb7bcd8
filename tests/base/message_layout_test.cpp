#include "base/message_layout.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <random>

namespace orvane {
namespace {

using Lines = std::vector<std::string>;

std::string Words(int count) {
  std::string text;
  for (int i = 0; i < count; ++i) text += (i == 0 ? "" : " ") + std::string("ninechars");
  return text;
}

TEST(BreakMessage, KeepsALineThatIsShort) {
  EXPECT_EQ(BreakMessage("Find what?"), Lines{"Find what?"});
  EXPECT_EQ(BreakMessage(""), Lines{});
}

TEST(BreakMessage, EndsLinesAtLineFeedsAndDropsOneAtTheEnd) {
  EXPECT_EQ(BreakMessage("one\ntwo\n"), (Lines{"one", "two"}));
  EXPECT_EQ(BreakMessage("one\n\ntwo"), (Lines{"one", "", "two"}));
  EXPECT_EQ(BreakMessage("\n"), Lines{});
}

TEST(BreakMessage, EndsALineOf60BytesAtTheLastBlank) {
  // Ten bytes to the word, so that a blank is the 60th byte.
  EXPECT_EQ(BreakMessage(Words(8)), (Lines{Words(6), Words(2)}));
  EXPECT_EQ(BreakMessage(std::string(20, 'a') + " " + std::string(50, 'b')),
            (Lines{std::string(20, 'a'), std::string(50, 'b')}));
}

TEST(BreakMessage, ALineOfExactly60BytesThatEndsThereIsWhole) {
  const std::string line = std::string(30, 'a') + " " + std::string(29, 'b');
  ASSERT_EQ(line.size(), 60U);
  EXPECT_EQ(BreakMessage(line), Lines{line});
  EXPECT_EQ(BreakMessage(line + "\nmore"), (Lines{line, "more"}));
  EXPECT_EQ(BreakMessage(line + "b"), (Lines{std::string(30, 'a'), std::string(30, 'b')}));
}

TEST(BreakMessage, ABlankAfter60BytesEndsTheLineAtOnce) {
  EXPECT_EQ(BreakMessage(std::string(75, 'a') + " bb cc"), (Lines{std::string(75, 'a'), "bb cc"}));
}

TEST(BreakMessage, CutsAt100BytesWithoutABlankAndDropsNothing) {
  EXPECT_EQ(BreakMessage(std::string(100, 'a')), Lines{std::string(100, 'a')});
  EXPECT_EQ(BreakMessage(std::string(150, 'a')),
            (Lines{std::string(100, 'a'), std::string(50, 'a')}));
  EXPECT_EQ(BreakMessage(std::string(100, 'a') + " b"), (Lines{std::string(100, 'a'), "b"}));
}

TEST(BreakMessage, DoesNotCutACharacterInTwo) {
  std::string text = "a";
  for (int i = 0; i < 60; ++i) text += "\xC3\xA9";
  const Lines lines = BreakMessage(text);
  ASSERT_EQ(lines.size(), 2U);
  EXPECT_EQ(lines[0].size(), 99U);
  EXPECT_EQ(lines[1].substr(0, 2), "\xC3\xA9");
}

TEST(BreakMessage, BytesThatAreNoCharacterAreCutAllTheSame) {
  EXPECT_EQ(BreakMessage(std::string(150, '\x80'))[0].size(), 100U);
}

TEST(BreakMessage, LeavesAllThatIsLeftToAFifthLine) {
  EXPECT_EQ(BreakMessage("1\n2\n3\n4\n5\n6\n" + Words(30) + "\n"),
            (Lines{"1", "2", "3", "4", "5\n6\n" + Words(30)}));
  EXPECT_EQ(BreakMessage("1\n2\n3\n4\n"), (Lines{"1", "2", "3", "4"}));
}

TEST(BreakMessage, LosesNoWordOfAnyText) {
  constexpr unsigned Seed = 20050517;
  SCOPED_TRACE(Seed);
  std::mt19937 random(Seed);
  for (int run = 0; run < 500; ++run) {
    std::string text;
    const size_t size = random() % 700;
    for (size_t i = 0; i < size; ++i) text += "abcdefgh \n"[random() % 10];
    const Lines lines = BreakMessage(text);
    ASSERT_LE(lines.size(), MostMessageLines + 1);
    std::string joined;
    for (const std::string& line : lines) joined += line;
    for (const size_t i : {size_t{0}, size_t{1}, size_t{2}, size_t{3}}) {
      if (i < lines.size()) {
        EXPECT_LE(lines[i].size(), 100U);
        EXPECT_EQ(lines[i].find('\n'), std::string::npos);
      }
    }
    const auto isBlank = [](char c) { return c == ' ' || c == '\n'; };
    std::erase_if(joined, isBlank);
    std::erase_if(text, isBlank);
    EXPECT_EQ(joined, text);
  }
}

/// The buttons as text: the letter in brackets, then the answer.
std::string Shown(const std::vector<std::string>& texts) {
  std::string shown;
  for (const BoxButton& button : ButtonRow(texts)) {
    std::string text = button.text;
    if (button.mnemonic) {
      text.insert(*button.mnemonic + 1, "]");
      text.insert(*button.mnemonic, "[");
    }
    shown += text + "=" + std::to_string(button.answer) + " ";
  }
  return shown;
}

TEST(ButtonRow, GivesEachButtonItsFirstLetterThatIsFree) {
  EXPECT_EQ(Shown({"Save", "Cancel", "Don't Save"}), "[S]ave=1 [C]ancel=2 [D]on't Save=3 ");
  EXPECT_EQ(Shown({"Save", "Save As", "SAVE"}), "[S]ave=1 S[a]ve As=2 SA[V]E=3 ");
  EXPECT_EQ(Shown({"1. Open", "aa", "AA"}), "1. [O]pen=1 [a]a=2 AA=3 ");
}

TEST(ButtonRow, KeepsTheLetterAfterAMark) {
  EXPECT_EQ(Shown({"Save", "Di~scard", "Cancel"}), "S[a]ve=1 Di[s]card=2 [C]ancel=3 ");
  EXPECT_EQ(Shown({"Odd~", "OK", ""}), "[O]dd~=1 O[K]=2 ");
}

TEST(ButtonRow, OmitsLongTextsAndAllAfterTheFifth) {
  EXPECT_EQ(Shown({std::string(28, 'x'), std::string(29, 'y')}),
            "[x]" + std::string(27, 'x') + "=1 " + std::string(29, 'y') + "=2 ");
  EXPECT_EQ(Shown({"a", "b", "c", "d", "e", "f"}), "[a]=1 [b]=2 [c]=3 [d]=4 [e]=5 f=6 ");
}

TEST(ButtonRow, LeavesOutEmptyTextsAndKeepsTheNumbers) {
  EXPECT_EQ(Shown({"OK", "", ""}), "[O]K=1 ");
  EXPECT_EQ(Shown({"OK", "", "Help"}), "[O]K=1 [H]elp=3 ");
  EXPECT_EQ(Shown({}), "");
}

TEST(ButtonRow, AnEmptyFirstTextLetsTheOthersChangePlaces) {
  EXPECT_EQ(Shown({"", "Cancel", "Continue"}), "[C]ontinue=3 C[a]ncel=2 ");
  EXPECT_EQ(Shown({"", "Cancel", ""}), "[C]ancel=2 ");
}

constexpr int Anything = 100000;

BoxMeasures Measures(std::vector<int> lines, std::vector<int> buttons) {
  return {.lineWidths = std::move(lines),
          .lineHeight = 16,
          .buttonWidths = std::move(buttons),
          .buttonHeight = 24,
          .editHeight = 0,
          .editWidth = 0,
          .titleWidth = 0};
}

std::vector<int> Lefts(const BoxLayout& layout) {
  std::vector<int> lefts;
  for (const BoxPlace& button : layout.buttons) lefts.push_back(button.x);
  return lefts;
}

TEST(LayOutBox, IsAsWideAsTheTextAnd72OrAsTheRow) {
  EXPECT_EQ(LayOutBox(Measures({300}, {30}), Anything, Anything).width, 372);
  // Two buttons of 60 + 20.
  EXPECT_EQ(LayOutBox(Measures({10}, {60, 20}), Anything, Anything).width, 16 + 2 * (80 + 14));
}

TEST(LayOutBox, IsAsHighAsTheLinesOrThePictureAndTheRow) {
  EXPECT_EQ(LayOutBox(Measures({300}, {30}), Anything, Anything).height, 42 + 24 + 25);
  EXPECT_EQ(LayOutBox(Measures({300, 200, 100}, {30}), Anything, Anything).height,
            3 * 16 + 15 + 24 + 25);
  BoxMeasures prompt = Measures({300}, {30, 30});
  prompt.editHeight = 20;
  EXPECT_EQ(LayOutBox(prompt, Anything, Anything).height, 42 + 24 + 25 + 20 + 10);
}

TEST(LayOutBox, ASingleLineIsBesideThePicture) {
  const BoxLayout layout = LayOutBox(Measures({300}, {30}), Anything, Anything);
  EXPECT_EQ(layout.text.x, (372 - 62 - 300) / 2 + 42);
  EXPECT_EQ(layout.text.y, (32 - 16) / 2 + 10);
  EXPECT_EQ(layout.text.width, 310);
  // In a box that is wide for its buttons it is centred beside the picture.
  const BoxLayout wide = LayOutBox(Measures({100}, {100, 100, 100}), Anything, Anything);
  EXPECT_EQ(wide.width, 16 + 3 * 134);
  EXPECT_EQ(wide.text.x, (418 - 62 - 100) / 2 + 42);
}

TEST(LayOutBox, SeveralLinesFormAColumn) {
  const BoxLayout layout = LayOutBox(Measures({300, 200}, {30}), Anything, Anything);
  EXPECT_EQ(layout.text.x, 52);
  EXPECT_EQ(layout.text.y, 15);
  EXPECT_EQ(layout.text.width, 310);
  EXPECT_EQ(layout.text.height, 32);
}

TEST(LayOutBox, ButtonsHaveTheWidthOfTheWidestAnd20) {
  for (const BoxPlace& button :
       LayOutBox(Measures({500}, {30, 70, 50}), Anything, Anything).buttons) {
    EXPECT_EQ(button.width, 90);
    EXPECT_EQ(button.height, 24);
    EXPECT_EQ(button.y, 42 + 10);
  }
}

TEST(LayOutBox, ARowWiderThanTheTextHasFixedGaps) {
  EXPECT_EQ(Lefts(LayOutBox(Measures({10}, {60, 20}), Anything, Anything)),
            (std::vector<int>{15, 15 + 80 + 14}));
}

TEST(LayOutBox, AWiderTextSpreadsTheButtons) {
  EXPECT_EQ(Lefts(LayOutBox(Measures({300}, {30}), Anything, Anything)),
            (std::vector<int>{(372 - 50) / 2}));
  EXPECT_EQ(Lefts(LayOutBox(Measures({300}, {30, 30, 30}), Anything, Anything)),
            (std::vector<int>{15, (372 - 50) / 2, 372 - 15 - 50}));
}

TEST(LayOutBox, TheFieldSpansTheBoxBetweenTextAndButtons) {
  BoxMeasures prompt = Measures({300, 200}, {30, 30});
  prompt.editHeight = 20;
  const BoxLayout layout = LayOutBox(prompt, Anything, Anything);
  EXPECT_EQ(layout.edit.x, 15);
  EXPECT_EQ(layout.edit.y, 2 * 16 + 15 + 10);
  EXPECT_EQ(layout.edit.width, 372 - 30);
  EXPECT_EQ(layout.edit.height, 20);
  EXPECT_EQ(layout.buttons[0].y, layout.edit.y + 20 + 10);
}

TEST(LayOutBox, AWideTitleOrFieldWidensTheBoxAndSpreadsTheButtons) {
  BoxMeasures titled = Measures({10}, {30, 30});
  titled.titleWidth = 400;
  EXPECT_EQ(LayOutBox(titled, Anything, Anything).width, 400);
  EXPECT_EQ(Lefts(LayOutBox(titled, Anything, Anything)), (std::vector<int>{15, 400 - 15 - 50}));
  BoxMeasures prompt = Measures({10}, {30, 30});
  prompt.editHeight = 20;
  prompt.editWidth = 300;
  EXPECT_EQ(LayOutBox(prompt, Anything, Anything).edit.width, 300);
  EXPECT_EQ(LayOutBox(prompt, Anything, Anything).width, 330);
}

TEST(LayOutBox, NeverGrowsPastWhatItIsGiven) {
  constexpr unsigned Seed = 4711;
  SCOPED_TRACE(Seed);
  std::mt19937 random(Seed);
  const auto below = [&random](unsigned most) { return static_cast<int>(random() % most); };
  for (int run = 0; run < 500; ++run) {
    BoxMeasures measures;
    const int lines = below(200);
    for (int i = 0; i < lines; ++i) measures.lineWidths.push_back(below(2000));
    measures.lineHeight = 10 + below(20);
    for (int i = 1 + below(3); i > 0; --i) measures.buttonWidths.push_back(20 + below(100));
    measures.buttonHeight = 20 + below(10);
    measures.editHeight = below(2) * 24;
    measures.editWidth = below(2000);
    measures.titleWidth = below(2000);
    const BoxLayout layout = LayOutBox(measures, 640, 480);
    EXPECT_LE(layout.width, 640);
    EXPECT_LE(layout.height, 480);
    const BoxPlace& last = layout.buttons.back();
    EXPECT_LE(last.x + last.width, layout.width - 15);
    EXPECT_LT(last.y + last.height, layout.height);
    EXPECT_LE(layout.text.x + layout.text.width, layout.width);
    EXPECT_LE(layout.text.y + layout.text.height, layout.buttons[0].y);
    for (size_t i = 1; i < layout.buttons.size(); ++i) {
      EXPECT_GE(layout.buttons[i].x, layout.buttons[i - 1].x + layout.buttons[i - 1].width);
    }
  }
}

TEST(PlaceBox, CentersTheBoxAThirdOfTheWayDown) {
  const BoxPlace screen{.x = 100, .y = 30, .width = 1000, .height = 800};
  const BoxPlace place = PlaceBox(400, 200, screen);
  EXPECT_EQ(place.x, 100 + 300);
  EXPECT_EQ(place.y, 30 + 200);
  // A box that does not fit keeps its corner in sight.
  EXPECT_EQ(PlaceBox(2000, 900, screen).x, 100);
  EXPECT_EQ(PlaceBox(2000, 900, screen).y, 30);
}

}  // namespace
}  // namespace orvane
