#include "tools/screenshots/article_pictures.h"

#include "bbs/page_flags.h"

namespace quillet {
namespace {

struct Look {
  const char* name;
  std::vector<SettingChange> changes;
};

const std::vector<Look> kLooks = {
    {"push-spacing-3", {{&Settings::pushLineSpacing, 3}}},
    {"line-spacing-5", {{&Settings::lineSpacing, 5}}},
    {"push-not-merged", {{&Settings::mergePush, false}}},
    {"push-no-ground", {{&Settings::grayBackgroundPush, false}}},
    {"push-not-lighter", {{&Settings::lighterPushLine, false}}},
    {"push-plain",
     {{&Settings::mergePush, false},
      {&Settings::grayBackgroundPush, false},
      {&Settings::lighterPushLine, false},
      {&Settings::colorMyId, false},
      {&Settings::showHighlight, false}}},
};

void ShootLook(DemoRun& run, const Look& look) {
  std::vector<SettingChange> usual;
  for (const SettingChange& change : look.changes)
    usual.emplace_back(*change.row, TextOf(*change.row, run.Doc().GetSettings().Fields()));
  run.Doc().GetSettings().Set(look.changes);
  run.Press({NamedKey(Qt::Key_Home)}, ArticleRests(0, 1));
  run.Save(QStringLiteral("%1-top").arg(look.name));
  run.Press({NamedKey(Qt::Key_End)}, ArticleRestsAtEnd);
  run.Save(QStringLiteral("%1-end").arg(look.name));
  run.Doc().GetSettings().Set(usual);
}

void ShootLongArticle(DemoRun& run) {
  constexpr int kPagesToMiddle = 12;
  run.GoToBoard("Typing");
  run.Read(u"手指上的"_qs);
  run.Save("long-top");
  for (int page = 0; page < kPagesToMiddle; ++page) {
    const int from = run.View().Article().TopRow();
    run.Press({NamedKey(Qt::Key_PageDown)}, ArticleRests(from + 1, from + kRows));
  }
  run.Save("long-middle");
  run.Press({NamedKey(Qt::Key_End)}, ArticleRestsAtEnd);
  run.Save("long-end");
  run.LeaveArticle();
}

// The titles of articles that have been read, and their list's cursor bar.
void ShootReadTitles(DemoRun& run) {
  run.LeaveArticle();
  run.Press({NamedKey(Qt::Key_Up)}, Is(PF_ARTICLE_LIST_CURSOR));
  run.Save("list-read-darker");
  run.Set(&Settings::darkerReadArticle, false);
  run.Set(&Settings::darkerUpdatedArticle, false);
  run.Set(&Settings::showHighlight, false);
  run.Save("list-plain");
}

}  // namespace

void ShootArticlePictures(DemoRun& run) {
  run.LogIn();
  ShootLongArticle(run);
  run.GoToBoard("Cats");
  run.Read(u"最奇怪"_qs);
  for (const Look& look : kLooks)
    ShootLook(run, look);
  ShootReadTitles(run);
}

}  // namespace quillet
