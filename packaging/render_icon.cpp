// render_icon PICTURE.svg PIXELS PICTURE.png: makes one size of the icon, in the build.

#include <QImage>
#include <QPainter>
#include <QString>
#include <QSvgRenderer>

#include <cstdio>

int main(int argc, char** argv) {
  if (argc != 4) {
    std::fputs("usage: render_icon PICTURE.svg PIXELS PICTURE.png\n", stderr);
    return 2;
  }
  QSvgRenderer renderer(QString::fromLocal8Bit(argv[1]));
  bool isNumber = false;
  const int pixels = QString::fromLatin1(argv[2]).toInt(&isNumber);
  if (!renderer.isValid() || !isNumber || pixels < 1 || pixels > 1024) {
    std::fprintf(stderr, "render_icon: cannot draw %s at %s pixels\n", argv[1], argv[2]);
    return 1;
  }
  QImage image(pixels, pixels, QImage::Format_ARGB32_Premultiplied);
  image.fill(Qt::transparent);
  QPainter painter(&image);
  renderer.render(&painter);
  painter.end();
  if (!image.save(QString::fromLocal8Bit(argv[3]), "PNG")) {
    std::fprintf(stderr, "render_icon: cannot write %s\n", argv[3]);
    return 1;
  }
  return 0;
}
