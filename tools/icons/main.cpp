// quillet_make_icons DRAWING FOLDER|FILE.ico: the program's icon from its drawing (SVG). As the sizes that
// desktops look for: FOLDER/<size>x<size>/apps/quillet.png, which the build runs; or as the one file of
// several sizes that Windows wants: packaging/windows/quillet.ico. The same drawing gives the same bytes.
#include <cstdio>

#include <QBuffer>
#include <QDataStream>
#include <QDir>
#include <QFile>
#include <QImage>
#include <QPainter>
#include <QString>
#include <QSvgRenderer>

namespace {

constexpr int kSizes[] = {16, 22, 24, 32, 48, 64, 96, 128, 192, 256, 512};
// Small and large icons at 100, 125, 150 and 200 %, and what Explorer shows as tiles.
constexpr int kIcoSizes[] = {16, 20, 24, 32, 40, 48, 64, 256};
constexpr int kIcoHeader = 6;
constexpr int kIcoEntry = 16;

QImage Rendered(QSvgRenderer& drawing, int size) {
  QImage picture(size, size, QImage::Format_ARGB32_Premultiplied);
  picture.fill(Qt::transparent);
  QPainter painter(&picture);
  painter.setRenderHint(QPainter::Antialiasing);
  drawing.render(&painter);
  painter.end();
  return picture.convertToFormat(QImage::Format_ARGB32);
}

bool WriteIcon(QSvgRenderer& drawing, int size, const QString& folder) {
  const QString place = QStringLiteral("%1/%2x%2/apps").arg(folder).arg(size);
  return QDir().mkpath(place) && Rendered(drawing, size).save(place + "/quillet.png", "PNG");
}

bool WriteIcons(QSvgRenderer& drawing, const QString& folder) {
  for (const int size : kSizes)
    if (!WriteIcon(drawing, size, folder)) return false;
  return true;
}

QByteArray PngOf(const QImage& picture) {
  QByteArray bytes;
  QBuffer buffer(&bytes);
  buffer.open(QIODevice::WriteOnly);
  picture.save(&buffer, "PNG");
  return bytes;
}

// A head, an entry for each picture, and the pictures, which may be PNG files.
bool WriteIco(QSvgRenderer& drawing, const QString& name) {
  QFile file(name);
  if (!file.open(QIODevice::WriteOnly)) return false;
  QDataStream head(&file);
  head.setByteOrder(QDataStream::LittleEndian);
  head << quint16{0} << quint16{1} << static_cast<quint16>(std::size(kIcoSizes));
  QByteArray pictures;
  const auto start = static_cast<quint32>(kIcoHeader + kIcoEntry * static_cast<int>(std::size(kIcoSizes)));
  for (const int size : kIcoSizes) {
    const QByteArray picture = PngOf(Rendered(drawing, size));
    const auto side = static_cast<quint8>(size);  // 0 stands for 256
    // No palette; one plane of 32 bits a pixel.
    head << side << side << quint8{0} << quint8{0} << quint16{1} << quint16{32}
         << static_cast<quint32>(picture.size()) << start + static_cast<quint32>(pictures.size());
    pictures += picture;
  }
  return head.status() == QDataStream::Ok && file.write(pictures) == pictures.size() && file.flush();
}

}  // namespace

int main(int count, char** arguments) {
  if (count != 3) {
    std::fputs("usage: quillet_make_icons DRAWING FOLDER|FILE.ico\n", stderr);
    return 2;
  }
  QSvgRenderer drawing;
  if (!drawing.load(QString::fromLocal8Bit(arguments[1]))) {
    std::fprintf(stderr, "quillet_make_icons: cannot read %s\n", arguments[1]);
    return 1;
  }
  const QString target = QString::fromLocal8Bit(arguments[2]);
  if (!(target.endsWith(".ico") ? WriteIco(drawing, target) : WriteIcons(drawing, target))) {
    std::fprintf(stderr, "quillet_make_icons: cannot write to %s\n", arguments[2]);
    return 1;
  }
  return 0;
}
