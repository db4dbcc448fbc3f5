#include "tools/screenshots/layout_pictures.h"

#include <QAction>

namespace quillet {
namespace {

void Choose(DemoRun& run, const QString& menuText) {
  for (QAction* const action : run.Frame().findChildren<QAction*>())
    if (action->text().contains(menuText)) return action->trigger();
  run.Fail(QStringLiteral("There is no menu item \"%1\".").arg(menuText));
}

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
  Choose(run, u"填滿視窗"_qs);
  ShootArticle(run, "layout-fitted");
  run.Resize({1600, 720});
  ShootArticle(run, "layout-fitted-wide");
  run.Resize({1280, 720});
  Choose(run, u"一般版面"_qs);
  run.Resize({1600, 720});
  ShootArticle(run, "layout-usual-wide");
  run.Resize({800, 900});
  ShootArticle(run, "layout-usual-tall");
  Choose(run, u"迷你視窗"_qs);
  run.Resize({528, 128});
  ShootArticle(run, "layout-small");
}

}  // namespace quillet
