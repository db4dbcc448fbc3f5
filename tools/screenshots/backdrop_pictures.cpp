#include "tools/screenshots/backdrop_pictures.h"

#include <QDir>
#include <QLinearGradient>
#include <QPainter>

namespace quillet {
namespace {

// A sunset over hills, taller than the window so that cropping shows.
QImage Sunset() {
  constexpr QSize kSize(1600, 1600);
  QImage image(kSize, QImage::Format_RGB32);
  QPainter painter(&image);
  painter.setRenderHint(QPainter::Antialiasing);
  QLinearGradient sky(0, 0, 0, kSize.height());
  sky.setColorAt(0, QColor(0x24, 0x3B, 0x6B));
  sky.setColorAt(0.5, QColor(0xE0, 0x7A, 0x5F));
  sky.setColorAt(0.7, QColor(0xF6, 0xD3, 0x65));
  painter.fillRect(image.rect(), sky);
  painter.setPen(Qt::NoPen);
  painter.setBrush(QColor(0xFF, 0xF3, 0xC4));
  painter.drawEllipse(QPointF(1150, 760), 150, 150);
  const QColor hills[] = {QColor(0x8E, 0x5A, 0x6B), QColor(0x5E, 0x42, 0x5F), QColor(0x33, 0x2E, 0x4A)};
  double top = 950;
  for (const QColor& hill : hills) {
    painter.setBrush(hill);
    for (int x = -200; x < kSize.width(); x += 420)
      painter.drawEllipse(QRectF(x + top / 7, top, 760, 900));
    top += 190;
  }
  return image;
}

// The picture reaches the window's corner.
bool ShowsBackdrop(const CQuillView& view) {
  return view.Surface().Picture().pixelColor(1, 1) != QColor(Qt::black);
}

struct Style {
  BackdropStyle value;
  const char* name;
};

constexpr Style kStyles[] = {{BackdropStyle::kStretch, "stretch"},
                             {BackdropStyle::kCrop, "crop"},
                             {BackdropStyle::kMovingCrop, "moving-crop"}};

void ShootLists(DemoRun& run) {
  for (const Style style : kStyles) {
    run.Set(&Settings::backgroundPictureStyle, style.value);
    run.Save(QStringLiteral("backdrop-%1-list").arg(style.name));
  }
}

void ShootArticles(DemoRun& run) {
  for (const Style style : kStyles) {
    run.Set(&Settings::backgroundPictureStyle, style.value);
    run.Press({NamedKey(Qt::Key_Home)}, ArticleRests(0, 1));
    run.Save(QStringLiteral("backdrop-%1-article").arg(style.name));
    run.Press({NamedKey(Qt::Key_End)}, ArticleRestsAtEnd);
    run.Save(QStringLiteral("backdrop-%1-article-end").arg(style.name));
  }
}

}  // namespace

void ShootBackdropPictures(DemoRun& run) {
  const QString file = QDir(run.ScratchFolder()).filePath("sunset.png");
  if (!Sunset().save(file)) return run.Fail(QStringLiteral("\"%1\" cannot be written.").arg(file));
  run.LogIn();
  run.GoToBoard("Cats");
  run.Set(&Settings::backgroundPicture, file.toStdU16String());
  run.Await("the background picture", [&] { return ShowsBackdrop(run.View()); });
  ShootLists(run);
  run.Read(u"最奇怪"_qs);
  ShootArticles(run);
  run.LeaveArticle();
  run.GoToBoard("AsciiArt");
  run.Read(u"夜景"_qs);
  run.Save("backdrop-art");
  run.Set(&Settings::darkColor, true);
  run.Save("backdrop-art-dim");
}

}  // namespace quillet
