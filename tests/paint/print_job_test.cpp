#include "paint/print_job.h"

#include "geo/earth.h"
#include "pages/map_pages.h"
#include "pages/print_dialog.h"
#include "paint/pdf_drawing.h"
#include "support/counted_progress.h"
#include "support/small_map.h"

#include <QPageSize>
#include <QRectF>

#include <algorithm>
#include <cmath>
#include <gtest/gtest.h>
#include <regex>
#include <string>
#include <vector>

namespace orvane {
namespace {

constexpr double PointsPerMillimeter = 72 / 25.4;

struct Sheet {
  std::string paper;
  QPageLayout::Orientation orientation = QPageLayout::Portrait;
  int resolution = 300;
  float rotation = 0;
};

/// A kilometre of red trail to the north, and one of blue trail to the east.
struct PrintJobTest : testing::Test {
  SmallMap map;
  PrintSettings settings;

  PrintJobTest() {
    const double degree = std::cos(Pi / 180);
    Point& start = map.AddPoint("Start", -500, -500 / degree);
    Point& north = map.AddPoint("", 500, -500 / degree);
    Point& east = map.AddPoint("", -500, 500 / degree);
    map.AddTrail("Up", {&start, &north}, 0xFF0000).labelMode = LabelMode::None;
    map.AddTrail("Right", {&start, &east}, 0x0000FF).labelMode = LabelMode::None;
  }

  QPageLayout LayoutOf(const Sheet& sheet) {
    return PdfLayout(FindPaper(sheet.paper).value_or(Paper{}), sheet.orientation);
  }
  MapPages PagesOn(const Sheet& sheet, const MapWindow& window, const std::string& distance,
                   const std::string& ratio, const std::string& label = "") {
    PrintMapWindow view = MakePrintView(window, DeviceOf(LayoutOf(sheet), sheet.resolution));
    PrintDialog dialog = OpenPrintDialog(view, settings);
    dialog.mode = PrintMode::AroundPoint;
    dialog.vertical = distance;
    dialog.horizontal = distance;
    dialog.pointScale = "1:" + ratio;
    dialog.rotation = std::to_string(sheet.rotation);
    dialog.label = label;
    EXPECT_FALSE(AcceptPrintDialog(dialog, view, settings));
    return MapPages(std::move(view));
  }
  std::vector<std::string> Print(const Sheet& sheet, PrintedPages& pages) {
    const auto pdf = PdfOf(pages, LayoutOf(sheet), sheet.resolution);
    EXPECT_TRUE(pdf);
    return PdfPages(pdf.value_or(""));
  }
};

/// From one end of a set of strokes to the other.
double Span(const std::vector<SheetLine>& lines) {
  double longest = 0;
  for (const SheetLine& a : lines) {
    for (const SheetLine& b : lines) {
      longest = std::max(longest, std::hypot(a.from.x - b.to.x, a.from.y - b.to.y));
    }
  }
  return longest;
}

TEST_F(PrintJobTest, PrintsAKilometerAt10000As100Millimeters) {
  struct Case {
    const char* paper;
    const char* scale;
    double millimeters;
  };
  for (const Case& each : {Case{"A4", "10000", 100}, Case{"Letter", "10000", 100},
                           Case{"A3", "10000", 100}, Case{"A4", "20000", 50}}) {
    for (const auto orientation : {QPageLayout::Portrait, QPageLayout::Landscape}) {
      for (const int resolution : {300, 600}) {
        for (const float rotation : {0.0F, 33.0F}) {
          const Sheet sheet{each.paper, orientation, resolution, rotation};
          MapWindow window = map.View(800, 600);
          MapPages pages = PagesOn(sheet, window, "1m", each.scale);
          ASSERT_EQ(pages.Count(), 1);
          const std::vector<std::string> drawn = Print(sheet, pages);
          ASSERT_EQ(drawn.size(), 1U);
          const PdfPageLines lines(drawn.front());
          const double pixel = 25.4 / resolution;
          EXPECT_NEAR(Span(lines.OfColor("1 0 0")) / PointsPerMillimeter, each.millimeters,
                      1.5 * pixel)
              << each.paper << resolution << rotation;
          EXPECT_NEAR(Span(lines.OfColor("0 0 1")) / PointsPerMillimeter, each.millimeters,
                      1.5 * pixel)
              << each.paper << resolution << rotation;
        }
      }
    }
  }
}

TEST_F(PrintJobTest, ContinuesALineOnTheNextPage) {
  Point& west = map.AddPoint("", -400, -1900);
  Point& east = map.AddPoint("", 500, 1900);
  map.AddTrail("Across", {&west, &east}, 0x00FF00).labelMode = LabelMode::None;
  for (const char* paper : {"A4", "Letter"}) {
    for (const float rotation : {0.0F, -70.0F, 21.0F}) {
      const int resolution = rotation == 0 ? 600 : 300;
      const Sheet sheet{paper, QPageLayout::Portrait, resolution, rotation};
      MapWindow window = map.View(800, 600);
      MapPages pages = PagesOn(sheet, window, "3.5km", "10000");
      const std::vector<std::string> drawn = Print(sheet, pages);
      ASSERT_EQ(static_cast<int>(drawn.size()), pages.Count());
      const PageDevice device = DeviceOf(LayoutOf(sheet), sheet.resolution);
      const double width = device.width * 72.0 / sheet.resolution;
      const double height = device.height * 72.0 / sheet.resolution;
      constexpr size_t Across = 2;
      ASSERT_EQ(drawn.size(), 2 * Across);
      // Put side by side, the strokes of all pages lie on one straight line.
      std::vector<SheetPoint> ends;
      for (size_t page = 0; page < drawn.size(); ++page) {
        for (const SheetLine& line : PdfPageLines(drawn[page]).OfColor("0 1 0")) {
          const size_t row = page / Across;
          const double right = static_cast<double>(page % Across) * width;
          const double down = static_cast<double>(row) * height;
          ends.push_back({line.from.x + right, line.from.y - down});
          ends.push_back({line.to.x + right, line.to.y - down});
        }
      }
      ASSERT_GE(ends.size(), 4U);
      const auto [low, high] = std::minmax_element(
          ends.begin(), ends.end(),
          [](const auto& a, const auto& b) { return std::pair(a.x, a.y) < std::pair(b.x, b.y); });
      const double dx = high->x - low->x;
      const double dy = high->y - low->y;
      for (const SheetPoint& end : ends) {
        const double off =
            std::abs((end.x - low->x) * dy - (end.y - low->y) * dx) / std::hypot(dx, dy);
        EXPECT_LT(off / PointsPerMillimeter, 0.1) << paper << rotation;
      }
    }
  }
}

TEST_F(PrintJobTest, SegmentsOfTheScaleBarHaveTheLengthThatTheyState) {
  struct Case {
    const char* scale;
    double ratio;
    double meters;  // of a segment
  };
  for (const Case& each : {Case{"10000", 10000, 100}, Case{"25000", 25000, 200},
                           Case{"2000", 2000, 20}, Case{"123456", 123456, 1000}}) {
    for (const int resolution : {300, 600}) {
      const Sheet sheet{"A4", QPageLayout::Portrait, resolution, 0};
      MapWindow window = map.View(800, 600);
      MapPages pages = PagesOn(sheet, window, "1m", each.scale, "Rains");
      const std::vector<std::string> drawn = Print(sheet, pages);
      ASSERT_EQ(drawn.size(), 1U);
      const PdfPageLines lines(drawn.front());
      // The box of the legend comes first.
      const std::vector<SheetRect>& rects = lines.Rects();
      ASSERT_GE(rects.size(), 3U) << each.scale;
      const double onPaper = each.meters / each.ratio * 1000;
      const double inch = 25.4;
      EXPECT_EQ(rects.size() - 1, static_cast<size_t>(inch / onPaper)) << each.scale;
      for (size_t i = 1; i < rects.size(); ++i) {
        EXPECT_NEAR(rects[i].Width() / PointsPerMillimeter, onPaper, 0.6 * inch / resolution)
            << each.scale;
        EXPECT_NEAR(rects[i].Height() / PointsPerMillimeter, inch / 12, inch / resolution);
        EXPECT_EQ(rects[i].fill, i % 2 == 1 ? "1 1 1" : "0 0 0");
        EXPECT_EQ(rects[i].color, "0 0 0");
        if (i == 1) continue;
        EXPECT_NEAR(rects[i].corner.x, rects[i - 1].opposite.x, 0.01) << "neighbors share an edge";
      }
    }
  }
}

TEST_F(PrintJobTest, MarksTheCornersWherePagesAreJoined) {
  const Sheet sheet{"A4"};
  MapWindow window = map.View(800, 600);
  MapPages pages = PagesOn(sheet, window, "3.5km", "10000");
  const std::vector<std::string> drawn = Print(sheet, pages);
  ASSERT_EQ(drawn.size(), 4U);
  const QRectF paintable = LayoutOf(sheet).paintRect(QPageLayout::Point);
  const double height = LayoutOf(sheet).fullRect(QPageLayout::Point).height();
  const auto marked = [&](const std::string& page) {
    std::string corners;
    const std::vector<SheetLine> black = PdfPageLines(page).OfColor("0 0 0");
    for (const bool top : {false, true}) {
      for (const bool right : {false, true}) {
        // A sheet counts from its bottom.
        const SheetPoint corner{right ? paintable.right() : paintable.left(),
                                height - (top ? paintable.top() : paintable.bottom())};
        const auto arms = std::count_if(black.begin(), black.end(), [&](const SheetLine& line) {
          return std::hypot(line.from.x - corner.x, line.from.y - corner.y) < 1 &&
                 std::abs(line.Length() - 36) < 0.3;  // half an inch
        });
        EXPECT_TRUE(arms == 0 || arms == 2) << arms;
        if (arms == 2) corners += std::string(top ? "T" : "B") + (right ? "R " : "L ");
      }
    }
    return corners;
  };
  EXPECT_EQ(marked(drawn[0]), "BR TL TR ");
  EXPECT_EQ(marked(drawn[1]), "BL TL TR ");
  EXPECT_EQ(marked(drawn[2]), "BL BR TR ");
  EXPECT_EQ(marked(drawn[3]), "BL BR TL ");
}

TEST_F(PrintJobTest, MakesTheSameFileTwiceButForTheDate) {
  const Sheet sheet{"A4"};
  MapWindow window = map.View(800, 600);
  const auto file = [&] {
    MapPages pages = PagesOn(sheet, window, "1km", "10000");
    std::string pdf = PdfOf(pages, LayoutOf(sheet), 300).value_or("");
    // The date, and the identifier that is made from it.
    for (const char* word : {"/CreationDate (D:", "<xmp:CreateDate>", "<xmp:ModifyDate>",
                             "<xmp:MetadataDate>", "/ID [ <"}) {
      const size_t at = pdf.find(word);
      if (at != std::string::npos) pdf.erase(at, std::string_view(word).size() + 20);
    }
    return pdf;
  };
  const std::string first = file();
  EXPECT_GT(first.size(), 1000U);
  EXPECT_EQ(first, file());
}

/// Dots of lines a pixel or two wide were twice as long at 600 pixels to the inch as at 300, or far
/// shorter, and thin lines below 300 were wider.
TEST_F(PrintJobTest, LinesLookTheSameAtEachResolution) {
  for (Trail& trail : map.TheMap().trails) trail.lineStyle = LineStyle::Dotted;
  for (const double width : {0.0, 0.8}) {  // metres; 0.8 are two pixels at 600 to the inch
    for (Trail& trail : map.TheMap().trails) trail.width = static_cast<float>(width);
    for (const int resolution : {72, 150, 300, 600, 1200}) {
      const Sheet sheet{"A4", QPageLayout::Portrait, resolution, 0};
      MapWindow window = map.View(800, 600);
      MapPages pages = PagesOn(sheet, window, "1m", "10000");
      const std::vector<std::string> drawn = Print(sheet, pages);
      ASSERT_EQ(drawn.size(), 1U);
      // Width, ends and corners of a line, then its dots and gaps.
      const std::regex dotted(R"((\S+) w 0 J 1 j \[(\S+) (\S+) \])");
      std::smatch found;
      ASSERT_TRUE(std::regex_search(drawn.front(), found, dotted)) << resolution;
      const double point = resolution / 72.0;
      EXPECT_NEAR(std::stod(found[1]) / point, 72 / 300.0, 0.05) << resolution;
      EXPECT_NEAR(std::stod(found[2]) / point, 72 / 96.0, 0.01) << resolution << ' ' << width;
      EXPECT_NEAR(std::stod(found[3]) / point, 144 / 96.0, 0.01) << resolution << ' ' << width;
    }
  }
}

/// Cancels after some pages.
class Impatient : public Progress {
 public:
  explicit Impatient(size_t pages) : pages_(pages) {}
  void Reach(WorkStage stage, size_t done, size_t of) override {
    EXPECT_EQ(stage, WorkStage::Printing);
    EXPECT_LT(done, of);
    if (done >= pages_) Cancel();
    last = done;
  }
  size_t last = 0;

 private:
  size_t pages_;
};

TEST_F(PrintJobTest, StopsWhenItIsCanceled) {
  const Sheet sheet{"A4"};
  MapWindow window = map.View(800, 600);
  MapPages pages = PagesOn(sheet, window, "5km", "10000");
  ASSERT_GT(pages.Count(), 2);
  Impatient progress(1);
  EXPECT_FALSE(PdfOf(pages, LayoutOf(sheet), 300, {.progress = &progress}));
  EXPECT_EQ(progress.last, 1U);
}

/// Only between pages was a job asked whether it goes on, so a single page could not be cancelled.
TEST_F(PrintJobTest, StopsWithinAPage) {
  for (int i = 0; i < 500; ++i) map.AddLoosePoint("P" + std::to_string(i), i, i);
  const Sheet sheet{"A4"};
  MapWindow window = map.View(800, 600);
  MapPages pages = PagesOn(sheet, window, "1m", "10000");
  ASSERT_EQ(pages.Count(), 1);
  CountedProgress progress(3);
  EXPECT_FALSE(PdfOf(pages, LayoutOf(sheet), 300, {.progress = &progress}));
  EXPECT_EQ(progress.stages.size(), 3U);
}

TEST(PrintDeviceTest, LeavesTenMillimetersAtEachEdge) {
  const QPageLayout upright = PdfLayout(*FindPaper("A4"), QPageLayout::Portrait);
  const QPageLayout turned = PdfLayout(*FindPaper("A4"), QPageLayout::Landscape);
  const PageDevice device = DeviceOf(upright, 300);
  // The margins are whole points.
  EXPECT_NEAR(device.width, 190 / 25.4 * 300, 4);
  EXPECT_NEAR(device.height, 277 / 25.4 * 300, 4);
  EXPECT_EQ(DeviceOf(turned, 300).width, device.height);
  EXPECT_EQ(DeviceOf(turned, 300).height, device.width);
}

}  // namespace
}  // namespace orvane
