// quillet_make_icons DRAWING FOLDER: the program's icon from its drawing (SVG), as the sizes that desktops
// look for: FOLDER/<size>x<size>/apps/quillet.png. The same drawing gives the same bytes. The build runs it.
#include <cstdio>

#include <QDir>
#include <QImage>
#include <QPainter>
#include <QString>
#include <QSvgRenderer>

namespace {

constexpr int kSizes[] = {16, 22, 24, 32, 48, 64, 96, 128, 192, 256, 512};

QImage Rendered(QSvgRenderer& drawing, int size) {
  QImage picture(size, size, QImage::Format_ARGB32_Premultiplied);
  picture.fill(Qt::transparent);
  QPainter painter(&picture);
  painter.setRenderHint(QPainter::Antialiasing);
  drawing.render(&painter);
  return picture;
}

bool WriteIcon(QSvgRenderer& drawing, int size, const QString& folder) {
  const QString place = QStringLiteral("%1/%2x%2/apps").arg(folder).arg(size);
  return QDir().mkpath(place) &&
         Rendered(drawing, size).convertToFormat(QImage::Format_ARGB32).save(place + "/quillet.png", "PNG");
}

}  // namespace

int main(int count, char** arguments) {
  if (count != 3) {
    std::fputs("usage: quillet_make_icons DRAWING FOLDER\n", stderr);
    return 2;
  }
  QSvgRenderer drawing;
  if (!drawing.load(QString::fromLocal8Bit(arguments[1]))) {
    std::fprintf(stderr, "quillet_make_icons: cannot read %s\n", arguments[1]);
    return 1;
  }
  const QString folder = QString::fromLocal8Bit(arguments[2]);
  for (const int size : kSizes)
    if (!WriteIcon(drawing, size, folder)) {
      std::fprintf(stderr, "quillet_make_icons: cannot write to %s\n", arguments[2]);
      return 1;
    }
  return 0;
}
