#include "paint/render.h"

#include "support/small_map.h"

#include <QBuffer>
#include <QImage>
#include <QImageReader>
#include <QXmlStreamReader>

#include <cmath>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <regex>
#include <sstream>

namespace orvane {
namespace {

/// A red trail along the equator of the view, a blue one upwards, and a loose point.
class RenderMapTest : public testing::Test {
 protected:
  RenderMapTest() {
    Point& west = map_.AddPoint("West", 0, -80);
    Point& middle = map_.AddPoint("", 0, 0);
    Point& east = map_.AddPoint("East & <far>", 0, 80);
    Point& north = map_.AddPoint("N\xB0 1", 60, 0);
    map_.AddTrail("Ridge", {&west, &middle, &east}, 0xFF0000);
    map_.AddTrail("River", {&middle, &north}, 0x0000FF);
    map_.AddLoosePoint("Camp", -60, -40);
    map_.AddLoosePoint("bell\x07 \xEF\xBF\xBF\xE6\xA3\xAE", -60, 60);
  }

  std::string Rendered(PictureFormat format, const RenderOptions& options = {}) {
    MapWindow view = map_.View(240, 180);
    std::string error;
    const auto bytes = RenderMap(view, format, options, error);
    EXPECT_TRUE(bytes) << error;
    EXPECT_EQ(view.target, nullptr);
    return bytes.value_or("");
  }

  QImage Picture(const RenderOptions& options = {}) {
    return QImage::fromData(QByteArray::fromStdString(Rendered(PictureFormat::Png, options)));
  }

  SmallMap map_;
};

bool IsDark(QRgb color) { return qGray(color) < 128; }

int DarkPixels(const QImage& image, const QRect& rect) {
  int count = 0;
  for (int y = rect.top(); y <= rect.bottom(); ++y) {
    for (int x = rect.left(); x <= rect.right(); ++x) {
      if (IsDark(image.pixel(x, y))) ++count;
    }
  }
  return count;
}

TEST_F(RenderMapTest, PaintsTheMapIntoAPng) {
  const QImage image = Picture();
  ASSERT_EQ(image.size(), QSize(240, 180));
  // One metre is one pixel, and the middle of the view is (120, 90). A projected pixel may round
  // either way.
  const auto hasNear = [&image](int x, int y, QRgb color) {
    for (int dy = -1; dy <= 1; ++dy) {
      for (int dx = -1; dx <= 1; ++dx) {
        if ((image.pixel(x + dx, y + dy) & 0xFFFFFF) == color) return true;
      }
    }
    return false;
  };
  for (const int x : {45, 60, 80, 140, 160, 180}) EXPECT_TRUE(hasNear(x, 90, 0xFF0000)) << x;
  for (const int y : {40, 50, 60, 70, 80}) EXPECT_TRUE(hasNear(120, y, 0x0000FF)) << y;
  EXPECT_FALSE(hasNear(30, 90, 0xFF0000));
  EXPECT_FALSE(hasNear(120, 20, 0x0000FF));
  EXPECT_EQ(image.pixel(2, 2), 0xFFFFFFFF);
  EXPECT_EQ(image.pixel(237, 177), 0xFFFFFFFF);
  // The label of the camp is beside it.
  EXPECT_GT(DarkPixels(image, QRect(60, 130, 60, 35)), 20);
}

TEST_F(RenderMapTest, TheSamePictureComesOutTwice) {
  EXPECT_EQ(Rendered(PictureFormat::Png), Rendered(PictureFormat::Png));
  EXPECT_EQ(Rendered(PictureFormat::Svg), Rendered(PictureFormat::Svg));
}

TEST_F(RenderMapTest, SmoothsLinesWhenAsked) {
  Point& far = map_.AddPoint("", 50, 90);
  Point& near = map_.AddPoint("", 10, 10);
  map_.AddTrail("Slope", {&near, &far}, 0x000000);
  const auto grays = [](const QImage& image) {
    int count = 0;
    for (int y = 45; y < 78; ++y) {
      for (int x = 140; x < 195; ++x) {
        const int gray = qGray(image.pixel(x, y));
        if (gray > 40 && gray < 215) ++count;
      }
    }
    return count;
  };
  EXPECT_EQ(grays(Picture()), 0);
  EXPECT_GT(grays(Picture({.antialias = true})), 20);
}

TEST_F(RenderMapTest, GrowsItsFontsWithTheResolution) {
  const auto inkOf = [this](double pixelsPerInch) {
    return DarkPixels(Picture({.pixelsPerInch = pixelsPerInch}), QRect(60, 120, 120, 55));
  };
  EXPECT_GT(inkOf(192), inkOf(96) * 3 / 2);
}

TEST_F(RenderMapTest, WritesWellFormedSvgWithItsTextsAsText) {
  const std::string bytes = Rendered(PictureFormat::Svg, {.title = "A & B <1>"});
  QXmlStreamReader xml(QByteArray::fromStdString(bytes));
  QStringList texts;
  QString title;
  QString viewBox;
  int shapes = 0;
  while (!xml.atEnd()) {
    if (xml.readNext() != QXmlStreamReader::StartElement) continue;
    const QString name = xml.name().toString();
    if (name == QStringLiteral("svg")) viewBox = xml.attributes().value("viewBox").toString();
    if (name == QStringLiteral("title")) title = xml.readElementText();
    if (name == QStringLiteral("text")) {
      EXPECT_TRUE(xml.attributes()
                      .value("font-family")
                      .toString()
                      .endsWith(QStringLiteral("Helvetica, Arial, sans-serif")));
      texts.append(xml.readElementText().trimmed());
    }
    if (name == QStringLiteral("polyline") || name == QStringLiteral("path") ||
        name == QStringLiteral("line")) {
      ++shapes;
    }
  }
  EXPECT_FALSE(xml.hasError()) << xml.errorString().toStdString();
  EXPECT_EQ(viewBox, QStringLiteral("0 0 240 180"));
  EXPECT_EQ(title, QStringLiteral("A & B <1>"));
  EXPECT_TRUE(texts.contains(QStringLiteral("Camp"))) << texts.join('|').toStdString();
  EXPECT_TRUE(texts.contains(QStringLiteral("East & <far>")));
  EXPECT_TRUE(texts.contains(QStringLiteral("N\u00B0 1")));
  EXPECT_GE(shapes, 2);
}

TEST_F(RenderMapTest, WritesAPdfOfOnePageOfTheViewsSize) {
  const std::string bytes = Rendered(PictureFormat::Pdf, {.title = "Ridge"});
  EXPECT_EQ(bytes.substr(0, 5), "%PDF-");
  EXPECT_NE(bytes.find("%%EOF"), std::string::npos);
  const std::regex page(R"(/Type /Page\b(?!s))");
  EXPECT_EQ(
      std::distance(std::sregex_iterator(bytes.begin(), bytes.end(), page), std::sregex_iterator()),
      1);
  // 240 x 180 pixels at 96 to the inch, in points.
  std::smatch box;
  ASSERT_TRUE(
      std::regex_search(bytes, box, std::regex(R"(/MediaBox \[0 0 ([0-9.]+) ([0-9.]+)\])")));
  EXPECT_NEAR(std::atof(box[1].str().c_str()), 180, 0.6);
  EXPECT_NEAR(std::atof(box[2].str().c_str()), 135, 0.6);
}

TEST_F(RenderMapTest, WritesAFileInTheFormatOfItsExtension) {
  const std::filesystem::path directory =
      std::filesystem::temp_directory_path() / ("orvane-render-" + std::to_string(getpid()));
  std::filesystem::create_directories(directory);
  MapWindow view = map_.View(64, 48);
  std::string error;
  const auto begins = [](const std::filesystem::path& path, std::string_view start) {
    std::ifstream file(path, std::ios::binary);
    std::stringstream content;
    content << file.rdbuf();
    return content.str().starts_with(start);
  };
  EXPECT_TRUE(RenderMap(view, {}, directory / "a.PNG", error)) << error;
  EXPECT_TRUE(begins(directory / "a.PNG", "\x89PNG"));
  EXPECT_TRUE(RenderMap(view, {}, directory / "a.svg", error)) << error;
  EXPECT_TRUE(begins(directory / "a.svg", "<?xml"));
  EXPECT_TRUE(RenderMap(view, {}, directory / "a.b.pdf", error)) << error;
  EXPECT_TRUE(begins(directory / "a.b.pdf", "%PDF"));

  EXPECT_FALSE(RenderMap(view, {}, directory / "a.gif", error));
  EXPECT_NE(error.find("a.gif"), std::string::npos);
  error.clear();
  EXPECT_FALSE(RenderMap(view, {}, directory / "missing" / "a.png", error));
  EXPECT_NE(error.find("a.png"), std::string::npos);
  std::filesystem::remove_all(directory);
}

TEST_F(RenderMapTest, RefusesSizesThatNoPictureHas) {
  for (const auto& [width, height] :
       {std::pair{0, 10}, {10, 0}, {-5, 10}, {32001, 10}, {32000, 32000}}) {
    MapWindow view = map_.View(64, 48);
    view.clientWidth = width;
    view.clientHeight = height;
    std::string error;
    EXPECT_FALSE(RenderMap(view, PictureFormat::Png, {}, error)) << width << "x" << height;
    EXPECT_FALSE(error.empty());
  }
}

TEST(RenderDrawing, PaintsWhateverDrawsOnACanvas) {
  const Drawing drawing{60, 40, [](Canvas& canvas) {
                          EXPECT_EQ(canvas.Clip().right, 60);
                          EXPECT_EQ(canvas.Clip().bottom, 40);
                          canvas.Clear(0x00FF00);
                          canvas.SetPen({1, PenPattern::Solid, 0xFF0000});
                          canvas.DrawLine({0, 20}, {59, 20});
                        }};
  std::string error;
  const auto png = RenderDrawing(drawing, PictureFormat::Png, {}, error);
  ASSERT_TRUE(png) << error;
  const QImage picture = QImage::fromData(QByteArray::fromStdString(*png));
  EXPECT_EQ(picture.size(), QSize(60, 40));
  EXPECT_EQ(picture.pixel(30, 20), qRgb(255, 0, 0));
  EXPECT_EQ(picture.pixel(30, 30), qRgb(0, 255, 0));
  const auto svg = RenderDrawing(drawing, PictureFormat::Svg, {.title = "A & B"}, error);
  ASSERT_TRUE(svg) << error;
  EXPECT_NE(svg->find("A &amp; B"), std::string::npos);
  EXPECT_FALSE(RenderDrawing({0, 40, drawing.draw}, PictureFormat::Png, {}, error));
  EXPECT_EQ(error, "Can't make a picture of 0x40 pixels");
}

TEST(PictureFormatOf, KnowsThreeExtensionsInAnyCase) {
  EXPECT_EQ(PictureFormatOf("map.png"), PictureFormat::Png);
  EXPECT_EQ(PictureFormatOf("/tmp/a.b/map.SVG"), PictureFormat::Svg);
  EXPECT_EQ(PictureFormatOf("x.Pdf"), PictureFormat::Pdf);
  EXPECT_EQ(PictureFormatOf("png"), std::nullopt);
  EXPECT_EQ(PictureFormatOf("map.jpg"), std::nullopt);
  EXPECT_EQ(PictureFormatOf("a.png/map"), std::nullopt);
  EXPECT_EQ(PictureFormatOf(""), std::nullopt);
}

}  // namespace
}  // namespace orvane
