#include "tools/screenshots/linked_pictures.h"

#include <algorithm>
#include <string>

#include "core/charset.h"

namespace quillet {
namespace {

bool IsWaiting(const PageRow& row) {
  std::string bytes;
  for (const PageCell& cell : row.cells)
    bytes += static_cast<char>(cell.byte);
  return FromBig5(bytes).find(u"載入中") != std::u16string::npos;
}

// Those that are in sight have come, or failed.
void AwaitPictures(DemoRun& run) {
  run.Await(u"the pictures in sight"_qs, [&] {
    const Page& page = run.View().Frame().page;
    return std::none_of(page.begin(), page.end(), IsWaiting);
  });
}

void SaveLinked(DemoRun& run, const QString& name) {
  const qreal scale = run.View().devicePixelRatioF();
  run.Save(u"linked-"_qs + name + (scale == 1 ? QString() : QStringLiteral("@%1").arg(scale)));
}

void ShootPage(DemoRun& run, const QString& name) {
  AwaitPictures(run);
  SaveLinked(run, name);
}

void ShootSizes(DemoRun& run) {
  run.Read(u"沿著海走"_qs);
  for (const auto& [size, name] :
       {std::pair{PictureSize::kThumbnail, "thumbnail"}, std::pair{PictureSize::kNormal, "natural"},
        std::pair{PictureSize::kFullWidth, "wide"}}) {
    run.Set(&Settings::contentPic, size);
    run.Press({NamedKey(Qt::Key_Home)}, ArticleRests(0, 1));
    ShootPage(run, name);
  }
  run.Press({NamedKey(Qt::Key_PageDown)}, ArticleRests(1, kRows));
  ShootPage(run, "next-page");
  run.Set(&Settings::darkColor, true);
  ShootPage(run, "dim");
  run.Set(&Settings::darkColor, false);
  run.Set(&Settings::work, true);
  SaveLinked(run, "disguise");
  run.Set(&Settings::work, false);
  run.Press({NamedKey(Qt::Key_End)}, ArticleRestsAtEnd);
  SaveLinked(run, "end");
  run.LeaveArticle();
}

void ShootKinds(DemoRun& run) {
  run.Set(&Settings::contentPic, PictureSize::kNormal);
  for (const auto& [title, name] :
       {std::pair{u"會動的貓"_qs, "moving"}, std::pair{u"慢慢看的影片"_qs, "videos"},
        std::pair{u"貼圖量"_qs, "charts"}, std::pair{u"一人一張窗外"_qs, "pushes"}}) {
    run.Read(title);
    ShootPage(run, name);
    run.Press({NamedKey(Qt::Key_End)}, ArticleRestsAtEnd);
    SaveLinked(run, QStringLiteral("%1-end").arg(name));
    run.LeaveArticle();
  }
}

}  // namespace

void ShootLinkedPictures(DemoRun& run) {
  run.LogIn();
  run.GoToBoard("Photo");
  ShootSizes(run);
  ShootKinds(run);
}

}  // namespace quillet
