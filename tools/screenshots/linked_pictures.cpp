#include "tools/screenshots/linked_pictures.h"

#include <algorithm>

namespace quillet {
namespace {

// Those that are in sight have come.
void AwaitPictures(DemoRun& run) {
  run.Await(u"the pictures in sight"_qs, [&] {
    const std::vector<FramePicture>& pictures = run.View().Frame().pictures;
    return !pictures.empty() &&
           std::none_of(pictures.begin(), pictures.end(),
                        [](const FramePicture& picture) { return picture.image.isNull(); });
  });
}

void ShootPage(DemoRun& run, const QString& name) {
  AwaitPictures(run);
  run.Save(name);
}

void ShootSizes(DemoRun& run) {
  run.Read(u"沿著海走"_qs);
  for (const auto& [size, name] :
       {std::pair{PictureSize::kThumbnail, "thumbnail"}, std::pair{PictureSize::kNormal, "natural"},
        std::pair{PictureSize::kFullWidth, "wide"}}) {
    run.Set(&Settings::contentPic, size);
    run.Press({NamedKey(Qt::Key_Home)}, ArticleRests(0, 1));
    ShootPage(run, QStringLiteral("linked-%1").arg(name));
  }
  run.Press({NamedKey(Qt::Key_PageDown)}, ArticleRests(1, kRows));
  ShootPage(run, "linked-next-page");
  run.Set(&Settings::darkColor, true);
  ShootPage(run, "linked-dim");
  run.Set(&Settings::darkColor, false);
  run.Press({NamedKey(Qt::Key_End)}, ArticleRestsAtEnd);
  run.Save("linked-end");
  run.LeaveArticle();
}

void ShootKinds(DemoRun& run) {
  run.Set(&Settings::contentPic, PictureSize::kNormal);
  for (const auto& [title, name] :
       {std::pair{u"會動的貓"_qs, "moving"}, std::pair{u"慢慢看的影片"_qs, "videos"},
        std::pair{u"貼圖量"_qs, "charts"}, std::pair{u"一人一張窗外"_qs, "pushes"}}) {
    run.Read(title);
    ShootPage(run, QStringLiteral("linked-%1").arg(name));
    run.Press({NamedKey(Qt::Key_End)}, ArticleRestsAtEnd);
    run.Save(QStringLiteral("linked-%1-end").arg(name));
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
