#include "paint/canvas_fonts.h"

#include "paint/display_text.h"
#include "paint/painted_picture.h"

#include <cmath>
#include <gtest/gtest.h>
#include <random>

namespace orvane {
namespace {

/// Draws only a text. \return where it left ink
PixelRect InkOf(std::string_view text, double pixelRatio = 1) {
  PaintedPicture picture(400, 100, {}, pixelRatio);
  picture.Paper().SetFont(CanvasFont::Label);
  picture.Paper().DrawText({100, 50}, text);
  return picture.MarkedBounds();
}

TEST(CanvasFonts, DrawsNoWiderThanItMeasures) {
  const CanvasFonts fonts(96);
  for (const std::string_view text :
       {"A", "mm", "Ridge 12", "WAVE To fill", "iiiii", "\xC9t\xE9 N\xB0 4", "\xC3\x89t\xC3\xA9",
        "\xE6\xA3\xAE\xE6\x9E\x97", "Gr\xC3\xBC\xC3\x9F \xE2\x82\xAC"}) {
    const int width = fonts.TextWidth(CanvasFont::Label, text);
    const PixelRect ink = InkOf(text);
    EXPECT_GE(ink.left, 98) << text;
    EXPECT_LE(ink.right, 100 + width + 2) << text;
    EXPECT_GE(ink.right, 100 + width - 4) << text;
    EXPECT_GE(ink.top, 50 - fonts.Ascent(CanvasFont::Label)) << text;
    EXPECT_LE(ink.bottom,
              50 - fonts.Ascent(CanvasFont::Label) + fonts.LineHeight(CanvasFont::Label))
        << text;
  }
}

TEST(CanvasFonts, WidthsOfPartsAddUp) {
  const CanvasFonts fonts(96);
  constexpr std::uint32_t Seed = 20240607;
  std::mt19937 random(Seed);
  for (int round = 0; round < 500; ++round) {
    std::string text;
    const size_t length = random() % 20;
    for (size_t i = 0; i < length; ++i) text.push_back(static_cast<char>(0x20 + random() % 95));
    const size_t cut = length == 0 ? 0 : random() % length;
    const int whole = fonts.TextWidth(CanvasFont::Label, text);
    const int first = fonts.TextWidth(CanvasFont::Label, std::string_view(text).substr(0, cut));
    const int second = fonts.TextWidth(CanvasFont::Label, std::string_view(text).substr(cut));
    EXPECT_LE(std::abs(first + second - whole), 1) << "seed " << Seed << ": " << text;
  }
}

TEST(CanvasFonts, TheSameTextInBothEncodingsIsEquallyWide) {
  const CanvasFonts fonts(96);
  EXPECT_EQ(fonts.TextWidth(CanvasFont::Small, "R\xEDo Peque\xF1o"),
            fonts.TextWidth(CanvasFont::Small, "R\xC3\xADo Peque\xC3\xB1o"));
  EXPECT_EQ(InkOf("R\xEDo Peque\xF1o"), InkOf("R\xC3\xADo Peque\xC3\xB1o"));
}

TEST(CanvasFonts, EmptyTextsAndControlCharactersLeaveNoInk) {
  const CanvasFonts fonts(96);
  EXPECT_EQ(fonts.TextWidth(CanvasFont::Label, ""), 0);
  PaintedPicture picture(100, 40);
  picture.Paper().DrawText({10, 20}, "");
  picture.Paper().DrawText({10, 20}, " \t\x01\x7F ");
  picture.Paper().DrawText({10, 20}, std::string_view("\0\0", 2));
  EXPECT_TRUE(picture.Marked().empty());
}

TEST(CanvasFonts, TheExtentOfATextHoldsAllOfItsInk) {
  std::vector<std::string> texts = {"jfQ", "Oru sleeping tree", "A\u030A\u0301\u0302g",
                                    "\xE6\xA3\xAE"};
  for (int c = 1; c < 256; ++c) texts.emplace_back(3, static_cast<char>(c));
  for (const double pixelRatio : {1.0, 1.25, 1.5, 1.75, 2.0, 3.0}) {
    const CanvasFonts fonts(96 * pixelRatio);
    for (const std::string& text : texts) {
      const PixelRect ink = InkOf(text, pixelRatio);
      if (ink.left >= ink.right) continue;
      const PixelRect extent = fonts.TextExtent(CanvasFont::Label, text);
      EXPECT_GE(ink.left, 100 + extent.left) << text;
      EXPECT_GE(ink.top, 50 + extent.top) << text;
      EXPECT_LE(ink.right, 100 + extent.right) << text;
      EXPECT_LE(ink.bottom, 50 + extent.bottom) << text;
    }
  }
}

TEST(CanvasFonts, TheExtentOfAPlainTextIsTight) {
  const CanvasFonts fonts(96);
  const PixelRect ink = InkOf("P123456");
  const PixelRect extent = fonts.TextExtent(CanvasFont::Label, "P123456");
  EXPECT_LE(ink.left - (100 + extent.left), 3);
  EXPECT_LE(ink.top - (50 + extent.top), 1);
  EXPECT_LE(100 + extent.right - ink.right, 3);
  EXPECT_LE(50 + extent.bottom - ink.bottom, 1);
}

TEST(CanvasFonts, KeepsMeasuringBeyondItsStore) {
  const CanvasFonts fonts(96);
  const int width = fonts.TextWidth(CanvasFont::Label, "\xCE\xB1 0");
  for (int i = 0; i < 60000; ++i) {
    fonts.TextWidth(CanvasFont::Label, "\xCE\xB1 " + std::to_string(i));
  }
  EXPECT_EQ(fonts.TextWidth(CanvasFont::Label, "\xCE\xB1 0"), width);
}

TEST(CanvasFonts, GrowsWithTheResolution) {
  const CanvasFonts coarse(96);
  const CanvasFonts fine(192);
  for (const CanvasFont font : {CanvasFont::Small, CanvasFont::Label}) {
    EXPECT_NEAR(fine.LineHeight(font), 2 * coarse.LineHeight(font), 3);
    EXPECT_NEAR(fine.Ascent(font), 2 * coarse.Ascent(font), 2);
    EXPECT_NEAR(fine.TextWidth(font, "Camp at the river"),
                2 * coarse.TextWidth(font, "Camp at the river"), 12);
  }
  EXPECT_GT(InkOf("Camp", 2).right - 100, (InkOf("Camp").right - 100) * 3 / 2);
}

TEST(CanvasFonts, TakesTheSizesOfTheView) {
  const CanvasFonts fonts(300, {.small = 6, .label = 12});
  EXPECT_GT(fonts.LineHeight(CanvasFont::Label), fonts.LineHeight(CanvasFont::Small));
  EXPECT_GT(fonts.TextWidth(CanvasFont::Label, "Ridge"),
            fonts.TextWidth(CanvasFont::Small, "Ridge"));
  EXPECT_GE(fonts.LineHeight(CanvasFont::Small), fonts.Ascent(CanvasFont::Small));
}

TEST(DisplayText, TakesValidUtf8AsSuchAndAnythingElseAsLatin1) {
  EXPECT_EQ(DisplayText("Ridge"), QStringLiteral("Ridge"));
  EXPECT_EQ(DisplayText("\xC3\xA9"), QStringLiteral("\u00E9"));
  EXPECT_EQ(DisplayText("\xE9"), QStringLiteral("\u00E9"));
  EXPECT_EQ(DisplayText("\xC3\xA9 \xE9"), QString::fromLatin1("\xC3\xA9 \xE9"));
  EXPECT_EQ(DisplayText("12\xB0"), QStringLiteral("12\u00B0"));
  EXPECT_EQ(DisplayText("cut \xE2\x82"), QString::fromLatin1("cut \xE2\x82"));
  EXPECT_EQ(DisplayText(""), QString());
}

TEST(DisplayText, GoesBackToTheEncodingItCameFrom) {
  EXPECT_EQ(StoredText(QStringLiteral("4\u00B0"), "3\xB0"), "4\xB0");
  EXPECT_EQ(StoredText(QStringLiteral("4\u00B0"), "3\xC2\xB0"), "4\xC2\xB0");
  EXPECT_EQ(StoredText(QStringLiteral("\u68EE"), "3\xB0"), "\xE6\xA3\xAE");
  EXPECT_EQ(StoredText(QStringLiteral("plain"), ""), "plain");
}

}  // namespace
}  // namespace orvane
