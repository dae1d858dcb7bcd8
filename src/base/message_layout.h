#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace orvane {

/// The layout of a box that asks a question: its text in lines, its buttons in a row below, and
/// between them a field for one line of text if the box is a prompt. All sizes are in pixels of the
/// window. The caller measures the texts.

/// The most lines that a message is broken into. The rest is one more line.
constexpr size_t MostMessageLines = 4;

/// Breaks a message into lines. A line ends at a line feed; once it is 60 bytes long, at its last
/// blank; without a blank, at 100 bytes. The blank or the line feed is dropped, and so is one line
/// feed at the end of the text. After four lines, all the rest is a fifth, whatever its length and
/// with its line feeds. A character of several bytes is not cut.
std::vector<std::string> BreakMessage(std::string_view text);

/// One button of a row.
struct BoxButton {
  int answer = 0;                  ///< the answer that it gives: its place in the list, from 1
  std::string text;                ///< as shown, without the mark of its letter
  std::optional<size_t> mnemonic;  ///< the byte of `text` whose letter presses the button
};

/// The buttons from left to right. Empty texts are left out, and the others keep their numbers; if
/// the first one is empty, the two others change places.
///
/// Each of the first five has a letter: the one after a `~` in its text, or else the first of its
/// text that no button has yet, without regard to case. A text of more than 28 bytes has none.
std::vector<BoxButton> ButtonRow(const std::vector<std::string>& texts);

struct BoxPlace {
  int x = 0;
  int y = 0;
  int width = 0;
  int height = 0;
};

/// What must be measured before a box can be laid out.
struct BoxMeasures {
  std::vector<int> lineWidths;    ///< of each line of the text
  int lineHeight = 0;             ///< of the box's font
  std::vector<int> buttonWidths;  ///< of each button's text, without its frame
  int buttonHeight = 0;
  int editHeight = 0;  ///< of the field; 0 for a box without one
  int editWidth = 0;   ///< the field is at least this wide
  int titleWidth = 0;  ///< the box is at least this wide, to show its whole title
};

/// The place of each part, from the upper left corner of the box.
struct BoxLayout {
  int width = 0;
  int height = 0;
  BoxPlace text;                  ///< all lines, one line height apart
  BoxPlace edit;                  ///< empty for a box without a field
  std::vector<BoxPlace> buttons;  ///< from left to right
};

/// The picture at the left of the text: its distance from the left and the upper edge, and its size.
constexpr int BoxPictureAt = 10;
constexpr int BoxPictureSize = 32;

/// Lays a box out. All buttons have one width; if the text, the title or the field is wider than
/// their row, they are spread over the box, and a single one is centred.
/// \param widest   the box is at most this wide; a wider text must be wrapped or scrolled
/// \param highest  the box is at most this high; a higher text must be scrolled
BoxLayout LayOutBox(const BoxMeasures& measures, int widest, int highest);

/// The place of a box on the screen: centred across, and a third of the way down.
/// \param screen  the part of the screen that windows may use
/// \return the box with its own size
BoxPlace PlaceBox(int width, int height, const BoxPlace& screen);

}  // namespace orvane
