#include "base/message_layout.h"

#include "base/text.h"
#include "base/utf8.h"

#include <algorithm>
#include <utility>

namespace orvane {
namespace {

constexpr size_t GoodLineLength = 60;
constexpr size_t LongestLine = 100;

constexpr size_t MostMnemonics = 5;
constexpr size_t LongestMnemonicText = 28;
constexpr char MnemonicMark = '~';

// Sizes of the box, in pixels.
constexpr int ButtonFrame = 20;      ///< a button is this much wider than its text
constexpr int ButtonGap = 14;        ///< between two buttons
constexpr int SideMargin = 15;       ///< left of the first button, right of the last
constexpr int TextMargins = 72;      ///< left and right of the text together
constexpr int TextLeft = 52;         ///< of several lines
constexpr int TextTop = 15;          ///< of several lines
constexpr int TextSpare = 10;        ///< the text has this much more room than its widest line
constexpr int LeastTextHeight = 42;  ///< room for the picture
constexpr int RowGap = 10;           ///< above the field and above the row of buttons
constexpr int RowMargins = 25;       ///< above and below the row of buttons

/// The length of the first line, and how much of the text it uses up.
std::pair<size_t, size_t> FirstLine(std::string_view text) {
  size_t blank = std::string_view::npos;
  for (size_t i = 0; i < text.size(); ++i) {
    if (text[i] == '\n') return {i, i + 1};
    if (text[i] == ' ') blank = i;
    if (i >= GoodLineLength && blank != std::string_view::npos) return {blank, blank + 1};
    if (i >= LongestLine) {
      const size_t cut = CutText(text, i).size();
      return {cut, cut};
    }
  }
  return {text.size(), text.size()};
}

bool IsLetter(char c) {
  const char folded = FoldByte(c);
  return folded >= 'a' && folded <= 'z';
}

/// Removes the mark from a button's text and remembers its place.
void TakeMark(BoxButton& button) {
  const size_t mark = button.text.find(MnemonicMark);
  if (mark == std::string::npos || mark + 1 >= button.text.size()) return;
  button.text.erase(mark, 1);
  button.mnemonic = mark;
}

/// Gives a letter to each button that has none.
void GiveMnemonics(std::vector<BoxButton>& buttons) {
  std::string taken;
  for (const BoxButton& button : buttons) {
    if (button.mnemonic) taken += FoldByte(button.text[*button.mnemonic]);
  }
  const size_t count = std::min(buttons.size(), MostMnemonics);
  for (size_t i = 0; i < count; ++i) {
    BoxButton& button = buttons[i];
    if (button.mnemonic || button.text.size() > LongestMnemonicText) continue;
    for (size_t at = 0; at < button.text.size() && !button.mnemonic; ++at) {
      const char letter = FoldByte(button.text[at]);
      if (!IsLetter(letter) || taken.find(letter) != std::string::npos) continue;
      button.mnemonic = at;
      taken += letter;
    }
  }
}

int Widest(const std::vector<int>& widths) {
  const auto widest = std::max_element(widths.begin(), widths.end());
  return widest == widths.end() ? 0 : *widest;
}

/// The buttons of a row from `SideMargin` on, at fixed gaps or spread over the box.
std::vector<BoxPlace> LayOutRow(int count, const BoxPlace& first, int boxWidth, bool spread) {
  std::vector<BoxPlace> places(static_cast<size_t>(count), first);
  if (count == 1 && spread) {
    places[0].x = (boxWidth - first.width) / 2;
    return places;
  }
  const int room = boxWidth - 2 * SideMargin - first.width;
  for (int i = 0; i < count; ++i) {
    const int offset = spread ? i * room / (count - 1) : i * (first.width + ButtonGap);
    places[static_cast<size_t>(i)].x = SideMargin + offset;
  }
  return places;
}

}  // namespace

std::vector<std::string> BreakMessage(std::string_view text) {
  if (text.ends_with('\n')) text.remove_suffix(1);
  std::vector<std::string> lines;
  while (!text.empty() && lines.size() < MostMessageLines) {
    const auto [length, used] = FirstLine(text);
    lines.emplace_back(text.substr(0, length));
    text.remove_prefix(used);
  }
  if (!text.empty()) lines.emplace_back(text);
  return lines;
}

std::vector<BoxButton> ButtonRow(const std::vector<std::string>& texts) {
  std::vector<BoxButton> buttons;
  int answer = 0;
  for (const std::string& text : texts) {
    ++answer;
    if (text.empty()) continue;
    BoxButton button{.answer = answer, .text = text, .mnemonic = std::nullopt};
    // A text that is too long has no mark, nor has one after the fifth.
    TakeMark(button);
    if (text.size() > LongestMnemonicText || buttons.size() >= MostMnemonics) {
      button.mnemonic.reset();
    }
    buttons.push_back(std::move(button));
  }
  if (!texts.empty() && texts.front().empty() && buttons.size() == 2) {
    std::swap(buttons[0], buttons[1]);
  }
  GiveMnemonics(buttons);
  return buttons;
}

BoxLayout LayOutBox(const BoxMeasures& measures, int widest, int highest) {
  const int count = static_cast<int>(measures.buttonWidths.size());
  const int lines = static_cast<int>(measures.lineWidths.size());
  const int textWidth = Widest(measures.lineWidths);
  const int buttonWidth = Widest(measures.buttonWidths) + ButtonFrame;
  const int textNeeds = textWidth + TextMargins;
  const int rowNeeds = count * (buttonWidth + ButtonGap) + 16;
  const int editNeeds = measures.editHeight > 0 ? measures.editHeight + RowGap : 0;
  const int wished =
      std::max({textNeeds, measures.titleWidth, measures.editWidth + 2 * SideMargin});

  BoxLayout layout;
  layout.width = std::max(rowNeeds, std::min(wished, widest));
  const int below = measures.buttonHeight + RowMargins + editNeeds;
  const int allLines = std::max(lines * measures.lineHeight + TextTop, LeastTextHeight);
  const int textBottom =
      std::clamp(allLines, LeastTextHeight, std::max(highest - below, LeastTextHeight));
  layout.height = textBottom + below;

  layout.text = {.x = TextLeft,
                 .y = TextTop,
                 .width = std::min(textWidth + TextSpare, layout.width - TextLeft - TextSpare),
                 .height = std::min(lines * measures.lineHeight, textBottom - TextTop)};
  if (lines == 1) {
    layout.text.x = std::max((layout.width - 62 - textWidth) / 2 + 42, 42);
    layout.text.y = (BoxPictureSize - measures.lineHeight) / 2 + BoxPictureAt;
    layout.text.height = measures.lineHeight;
  }
  int rowTop = textBottom + RowGap;
  if (measures.editHeight > 0) {
    layout.edit = {.x = SideMargin,
                   .y = rowTop,
                   .width = layout.width - 2 * SideMargin,
                   .height = measures.editHeight};
    rowTop += measures.editHeight + RowGap;
  }
  const BoxPlace first{
      .x = SideMargin, .y = rowTop, .width = buttonWidth, .height = measures.buttonHeight};
  layout.buttons = LayOutRow(count, first, layout.width, wished > rowNeeds);
  return layout;
}

BoxPlace PlaceBox(int width, int height, const BoxPlace& screen) {
  return {.x = screen.x + std::max((screen.width - width) / 2, 0),
          .y = screen.y + std::max((screen.height - height) / 3, 0),
          .width = width,
          .height = height};
}

}  // namespace orvane
