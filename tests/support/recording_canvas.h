#pragma once

#include "view/canvas.h"

#include <algorithm>
#include <cstdio>
#include <string>
#include <string_view>
#include <vector>

namespace orvane {

/// A canvas that writes down every operation as a line of text. All letters of both fonts are
/// `LetterWidth` wide, so that places of text can be reckoned by hand.
class RecordingCanvas : public Canvas {
 public:
  static constexpr int LetterWidth = 6;
  static constexpr int SmallAscent = 8;
  static constexpr int SmallHeight = 10;
  static constexpr int LabelAscent = 9;
  static constexpr int LabelHeight = 12;

  RecordingCanvas(int width, int height) : clip_{0, 0, width, height} {}

  const std::vector<std::string>& Lines() const { return lines_; }
  void Forget() { lines_.clear(); }
  mutable int widthsAsked = 0;  ///< calls of `TextWidth`

  /// All operations, each with a line feed.
  std::string Text() const {
    std::string text;
    for (const std::string& line : lines_) text += line + "\n";
    return text;
  }
  /// The operations that begin with a word, such as "text".
  std::vector<std::string> Having(std::string_view word) const {
    std::vector<std::string> found;
    for (const std::string& line : lines_) {
      if (line.substr(0, line.find(' ')) == word) found.push_back(line);
    }
    return found;
  }
  int Count(std::string_view word) const { return static_cast<int>(Having(word).size()); }
  /// The place of the first operation that begins with `start`, or -1.
  int IndexOf(std::string_view start) const {
    for (size_t i = 0; i < lines_.size(); ++i) {
      if (lines_[i].substr(0, start.size()) == start) return static_cast<int>(i);
    }
    return -1;
  }

  void SetPen(const Pen& pen) override {
    static constexpr const char* Patterns[] = {"solid", "dotted", "dashed", "hollow"};
    Note("pen " + std::to_string(pen.width) + " " + Patterns[static_cast<int>(pen.pattern)] + " " +
         Hex(pen.color));
  }
  void SetBrush(const Brush& brush) override {
    Note(brush.solid ? "brush solid " + Hex(brush.color) : "brush hollow");
  }
  void SetForeColor(Color color) override { Note("fore " + Hex(color)); }
  void SetFont(CanvasFont font) override {
    static constexpr const char* Names[] = {"small", "label",  "legend title", "legend text",
                                            "bold",  "italic", "scale bar"};
    Note(std::string("font ") + Names[static_cast<int>(font)]);
  }
  void DrawLine(Pixel from, Pixel to) override { Note("line " + At(from) + " " + At(to)); }
  void DrawPolyline(const std::vector<Pixel>& points) override { Note("polyline" + All(points)); }
  void DrawPolygon(const std::vector<Pixel>& points) override { Note("polygon" + All(points)); }
  void DrawRect(const PixelRect& rect) override { Note("rect " + Box(rect)); }
  void DrawOval(const PixelRect& rect) override { Note("oval " + Box(rect)); }
  void DrawText(Pixel at, std::string_view text) override {
    Note("text " + At(at) + " " + std::string(text));
  }
  int TextWidth(std::string_view text) const override {
    ++widthsAsked;
    return static_cast<int>(text.size()) * LetterWidth;
  }
  /// The line from its top to its foot.
  PixelRect TextExtent(std::string_view text) const override {
    return {0, -LabelAscent, static_cast<int>(text.size()) * LetterWidth,
            LabelHeight - LabelAscent};
  }
  int Ascent(CanvasFont font) const override {
    return font == CanvasFont::Small ? SmallAscent : LabelAscent;
  }
  int LineHeight(CanvasFont font) const override {
    return font == CanvasFont::Small ? SmallHeight : LabelHeight;
  }
  PixelRect Clip() const override { return clip_; }
  void SetClip(const PixelRect& clip) override {
    clip_ = clip;
    Note("clip " + Box(clip));
  }
  void Clear(Color color) override { Note("clear " + Hex(color)); }

  /// The largest coordinate, to either side, that any operation was given.
  int Farthest() const { return farthest_; }

 private:
  void Note(std::string line) { lines_.push_back(std::move(line)); }
  static std::string Hex(Color color) {
    char text[16];
    std::snprintf(text, sizeof text, "%06x", static_cast<unsigned>(color));
    return text;
  }
  std::string At(Pixel p) {
    farthest_ = std::max({farthest_, p.x, -p.x, p.y, -p.y});
    return std::to_string(p.x) + "," + std::to_string(p.y);
  }
  std::string Box(const PixelRect& r) {
    return At({r.left, r.top}) + " " + At({r.right, r.bottom});
  }
  std::string All(const std::vector<Pixel>& points) {
    std::string text;
    for (const Pixel p : points) text += " " + At(p);
    return text;
  }

  PixelRect clip_;
  std::vector<std::string> lines_;
  int farthest_ = 0;
};

}  // namespace orvane
