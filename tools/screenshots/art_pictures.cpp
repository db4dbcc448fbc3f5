#include "tools/screenshots/art_pictures.h"

namespace quillet {
namespace {

struct Drawing {
  const char* name;
  const char16_t* titleWords;
};

// Blocks and a moon; shades and mountains; lines, waves and triangles.
constexpr Drawing kDrawings[] = {
    {"skyline", u"夜景"}, {"sunrise", u"五點四十一分"}, {"fishtank", u"公司魚缸"}};

// The second leaves pixels over in both directions.
constexpr QSize kSizes[] = {{800, 450}, {1111, 667}, {1280, 720}};

void ShootAllSizes(DemoRun& run, const char* name) {
  const qreal scale = run.View().devicePixelRatioF();
  const QString suffix = scale == 1 ? QString() : QStringLiteral("@%1").arg(scale);
  for (const QSize size : kSizes) {
    run.Resize(size);
    run.Save(QStringLiteral("art-%1-%2x%3").arg(name).arg(size.width()).arg(size.height()) + suffix);
  }
}

}  // namespace

void ShootArtPictures(DemoRun& run) {
  run.LogIn();
  run.GoToBoard("AsciiArt");
  for (const Drawing& drawing : kDrawings) {
    run.Read(QString::fromUtf16(drawing.titleWords));
    ShootAllSizes(run, drawing.name);
    run.LeaveArticle();
  }
}

}  // namespace quillet
