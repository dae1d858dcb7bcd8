#pragma once

#include <QByteArray>

#include <array>
#include <cmath>
#include <cstdint>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

namespace orvane {

/// A place on a sheet in points of 1/72 inch, from its bottom left corner.
struct SheetPoint {
  double x = 0;
  double y = 0;
};

/// A straight stroke on a sheet.
struct SheetLine {
  SheetPoint from;
  SheetPoint to;
  double Length() const { return std::hypot(to.x - from.x, to.y - from.y); }
};

/// A rectangle on a sheet with an outline, filled or not.
struct SheetRect {
  SheetPoint corner;
  SheetPoint opposite;
  /// The colour of its outline and the last colour that was set for filling.
  std::string color;
  std::string fill;
  double Width() const { return std::abs(opposite.x - corner.x); }
  double Height() const { return std::abs(opposite.y - corner.y); }
};

/// The strokes of one page of a PDF file, by the colour that they have in the file: "1 0 0" is red.
class PdfPageLines {
 public:
  explicit PdfPageLines(const std::string& content) { Read(content); }

  std::vector<SheetLine> OfColor(const std::string& color) const {
    std::vector<SheetLine> found;
    for (const auto& [stroke, lineColor] : lines_) {
      if (lineColor == color) found.push_back(stroke);
    }
    return found;
  }
  /// The rectangles with an outline, in the order in which they are drawn.
  const std::vector<SheetRect>& Rects() const { return rects_; }

 private:
  using Matrix = std::array<double, 6>;

  struct State {
    Matrix matrix{1, 0, 0, 1, 0, 0};
    std::string color;
    std::string fill;
  };

  static std::string ColorOf(const std::vector<double>& numbers) {
    std::ostringstream color;
    color << numbers[0] << ' ' << numbers[1] << ' ' << numbers[2];
    return color.str();
  }

  SheetPoint Placed(double x, double y) const {
    const Matrix& m = state_.matrix;
    return {m[0] * x + m[2] * y + m[4], m[1] * x + m[3] * y + m[5]};
  }

  void Concatenate(const std::vector<double>& n) {
    const Matrix& m = state_.matrix;
    state_.matrix = {n[0] * m[0] + n[1] * m[2],        n[0] * m[1] + n[1] * m[3],
                     n[2] * m[0] + n[3] * m[2],        n[2] * m[1] + n[3] * m[3],
                     n[4] * m[0] + n[5] * m[2] + m[4], n[4] * m[1] + n[5] * m[3] + m[5]};
  }

  void Read(const std::string& content) {
    std::istringstream words(content);
    std::vector<double> numbers;
    std::vector<SheetLine> path;
    std::vector<SheetRect> boxes;
    std::vector<State> saved;
    SheetPoint at;
    for (std::string word; words >> word;) {
      char* end = nullptr;
      const double number = std::strtod(word.c_str(), &end);
      if (*end == '\0') {
        numbers.push_back(number);
        continue;
      }
      if (word == "q") saved.push_back(state_);
      if (word == "Q" && !saved.empty()) {
        state_ = saved.back();
        saved.pop_back();
      }
      if (word == "cm" && numbers.size() == 6) Concatenate(numbers);
      if (word == "SCN" && numbers.size() == 3) state_.color = ColorOf(numbers);
      if (word == "scn" && numbers.size() == 3) state_.fill = ColorOf(numbers);
      if (word == "re" && numbers.size() == 4) {
        boxes.push_back({Placed(numbers[0], numbers[1]),
                         Placed(numbers[0] + numbers[2], numbers[1] + numbers[3]), state_.color,
                         state_.fill});
      }
      if (word == "m" && numbers.size() == 2) at = Placed(numbers[0], numbers[1]);
      if (word == "l" && numbers.size() == 2) {
        const SheetPoint next = Placed(numbers[0], numbers[1]);
        path.push_back({at, next});
        at = next;
      }
      if (word == "S") {
        for (const SheetLine& line : path) lines_.push_back({line, state_.color});
      }
      if (word == "S" || word == "B") rects_.insert(rects_.end(), boxes.begin(), boxes.end());
      if (word == "S" || word == "n" || word.starts_with('f') || word.starts_with('B')) {
        path.clear();
        boxes.clear();
      }
      numbers.clear();
    }
  }

  struct ColoredLine {
    SheetLine line;
    std::string color;
  };
  State state_;
  std::vector<ColoredLine> lines_;
  std::vector<SheetRect> rects_;
};

/// The drawing operators of each page of a PDF file.
inline std::vector<std::string> PdfPages(const std::string& pdf) {
  constexpr std::string_view Begin = "stream\n";
  constexpr std::string_view End = "endstream";
  std::vector<std::string> pages;
  for (size_t at = pdf.find(Begin); at != std::string::npos; at = pdf.find(Begin, at)) {
    at += Begin.size();
    const size_t end = pdf.find(End, at);
    if (end == std::string::npos) break;
    // The library wants the length of the result in front; it grows as needed.
    QByteArray packed(4, '\0');
    packed[2] = '\x10';
    packed += QByteArray::fromRawData(pdf.data() + at, static_cast<qsizetype>(end - at));
    const std::string content = qUncompress(packed).toStdString();
    if (content.find(" cm\n") != std::string::npos) pages.push_back(content);
    at = end + End.size();
  }
  return pages;
}

}  // namespace orvane
