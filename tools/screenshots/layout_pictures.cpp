#include "tools/screenshots/layout_pictures.h"

namespace quillet {
namespace {

void ShootArticle(DemoRun& run, const QString& name) {
  run.Save(name + "-list");
  run.Read(u"最奇怪"_qs);
  run.Save(name + "-article");
  run.Press({NamedKey(Qt::Key_End)}, ArticleRestsAtEnd);
  run.Save(name + "-article-end");
  run.LeaveArticle();
}

}  // namespace

void ShootLayoutPictures(DemoRun& run) {
  run.LogIn();
  run.GoToBoard("Cats");
  run.View().Commands().Run(Command::kFittedLayout);
  ShootArticle(run, "layout-fitted");
  run.Resize({1600, 720});
  ShootArticle(run, "layout-fitted-wide");
  run.Resize({1280, 720});
  run.View().Commands().Run(Command::kOrdinaryLayout);
  run.Resize({1600, 720});
  ShootArticle(run, "layout-usual-wide");
  run.Resize({800, 900});
  ShootArticle(run, "layout-usual-tall");
  run.View().Commands().Run(Command::kNarrowLayout);
  run.Resize({528, 128});
  ShootArticle(run, "layout-small");
}

}  // namespace quillet
