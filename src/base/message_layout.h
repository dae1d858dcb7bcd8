#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace orvane {

/// How a box that asks a question is laid out: its text in lines, its buttons in a row below, and
/// between them a field for one line of text if the box is a prompt. All sizes are pixels of the
/// window; whoever shows the box measures its texts.

/// Lines that a message is broken into at most; what is left goes into one more.
constexpr size_t MostMessageLines = 4;

/// Breaks a message into lines. A line ends at a line feed; once it is 60 bytes long, at the last
/// blank in it; without a blank, at 100 bytes. The blank or the line feed is dropped, and one line
/// feed at the end of the text. Behind four lines stands all that is left as a fifth, whatever its
/// length, with its line feeds in it. A character of several bytes is not cut.
std::vector<std::string> BreakMessage(std::string_view text);

/// One button of a row.
struct BoxButton {
  int answer = 0;    ///< what pressing it answers: its place in the list it came in, from 1
  std::string text;  ///< as it is shown, without the mark of its letter
  std::optional<size_t> mnemonic;  ///< the byte of `text` whose letter presses the button
};

/// The buttons from left to right. Empty texts are left out, and the others keep their numbers; if
/// the first one is empty, the two others change places.
///
/// Each of the first five has a letter: the one behind a `~` in its text, or else the first of its
/// text that no button has yet, without regard to case. A text of more than 28 bytes has none.
std::vector<BoxButton> ButtonRow(const std::vector<std::string>& texts);

struct BoxPlace {
  int x = 0;
  int y = 0;
  int width = 0;
  int height = 0;
};

/// What has to be measured before a box can be laid out.
struct BoxMeasures {
  std::vector<int> lineWidths;    ///< of each line of the text
  int lineHeight = 0;             ///< of the box's font
  std::vector<int> buttonWidths;  ///< of each button's text, without its frame
  int buttonHeight = 0;
  int editHeight = 0;  ///< of the field; 0 for a box without one
  int editWidth = 0;   ///< the least for the field
  int titleWidth = 0;  ///< the least for a box whose title is to be read whole
};

/// Where everything stands, from the upper left corner of the box.
struct BoxLayout {
  int width = 0;
  int height = 0;
  BoxPlace text;                  ///< all lines, one line height apart
  BoxPlace edit;                  ///< empty for a box without a field
  std::vector<BoxPlace> buttons;  ///< from left to right
};

/// Left and above the text there is room for a picture of `BoxPictureSize` at `BoxPictureAt` to
/// both sides.
constexpr int BoxPictureAt = 10;
constexpr int BoxPictureSize = 32;

/// Lays a box out. All buttons have one width; if the text, the title or the field is wider than
/// their row, they are spread over the box, and a single one is centred.
/// \param widest   the box is at most this wide: the text then has to be wrapped or scrolled
/// \param highest  the box is at most this high: the text then has to be scrolled
BoxLayout LayOutBox(const BoxMeasures& measures, int widest, int highest);

/// Where a box stands on the screen: in the middle across, and a third of the way down.
/// \param screen  the part of the screen that windows may use
/// \return the box with its own size
BoxPlace PlaceBox(int width, int height, const BoxPlace& screen);

}  // namespace orvane
