// Whether the pictures in docs/pictures show what the programs draw now. MADE is the folder that
// scripts/make-pictures has just filled.

#include <QDir>
#include <QImage>
#include <QPainter>

#include <algorithm>
#include <cstdlib>
#include <gtest/gtest.h>
#include <string>

namespace {

/// Rounding may differ a little between processors, so small differences do not count.
constexpr int LeastDifference = 48;  ///< of a colour component, out of 255
constexpr int MostPixels = 8;        ///< with such a difference; a changed letter has more

int Difference(QRgb a, QRgb b) {
  return std::max({std::abs(qRed(a) - qRed(b)), std::abs(qGreen(a) - qGreen(b)),
                   std::abs(qBlue(a) - qBlue(b))});
}

/// \return what is wrong with the first picture, or an empty text
std::string FaultOf(const QImage& kept, const QImage& drawn) {
  if (drawn.isNull()) return "is not drawn any more";
  if (kept.isNull()) return "is missing";
  if (kept.size() != drawn.size()) return "has another size";
  const QImage a = kept.convertToFormat(QImage::Format_RGB32);
  const QImage b = drawn.convertToFormat(QImage::Format_RGB32);
  int count = 0;
  for (int row = 0; row < a.height(); ++row) {
    for (int column = 0; column < a.width(); ++column) {
      if (Difference(a.pixel(column, row), b.pixel(column, row)) >= LeastDifference) ++count;
    }
  }
  return count <= MostPixels ? std::string() : std::to_string(count) + " pixels differ";
}

QImage Kept(const QString& name) { return QImage(QDir(QStringLiteral(PICTURES)).filePath(name)); }

QImage Drawn(const QString& name) { return QImage(QDir(QStringLiteral(MADE)).filePath(name)); }

TEST(GuidePictures, ShowWhatTheProgramsDraw) {
  QStringList names = QDir(QStringLiteral(PICTURES)).entryList({QStringLiteral("*.png")});
  ASSERT_FALSE(names.isEmpty());
  names += QDir(QStringLiteral(MADE)).entryList({QStringLiteral("*.png")});
  names.removeDuplicates();
  for (const QString& name : names) {
    EXPECT_EQ(FaultOf(Kept(name), Drawn(name)), "")
        << name.toStdString() << " is stale; scripts/renew-pictures renews it";
  }
}

TEST(GuidePictures, AChangedLetterIsNoticed) {
  const QImage kept = Kept(QStringLiteral("question.png"));
  ASSERT_FALSE(kept.isNull());
  EXPECT_EQ(FaultOf(kept, kept), "");
  QImage drawn = kept;
  // A letter of ten pixels' height has at least this many dark pixels.
  for (int i = 0; i <= MostPixels; ++i) drawn.setPixelColor(60, 20 + i, Qt::red);
  EXPECT_EQ(FaultOf(kept, drawn), "9 pixels differ");
}

TEST(GuidePictures, SlightlyOtherColorsAreNot) {
  const QImage kept = Kept(QStringLiteral("question.png")).convertToFormat(QImage::Format_RGB32);
  QImage drawn = kept;
  QPainter painter(&drawn);
  painter.fillRect(drawn.rect(), QColor(255, 255, 255, 10));
  painter.end();
  EXPECT_NE(kept, drawn);
  EXPECT_EQ(FaultOf(kept, drawn), "");
}

TEST(GuidePictures, MissingPicturesAndOtherSizesAreNoticed) {
  const QImage kept = Kept(QStringLiteral("question.png"));
  EXPECT_EQ(FaultOf(kept, QImage()), "is not drawn any more");
  EXPECT_EQ(FaultOf(QImage(), kept), "is missing");
  EXPECT_EQ(FaultOf(kept, kept.copy(0, 0, kept.width() - 1, kept.height())), "has another size");
}

}  // namespace
